// Bytes of table files as other programs, or accidents, make them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {

struct RawField {
  std::string name;
  char type = 'C';
  int width = 10;
  int decimals = 0;
  int flags = 0;
};

struct RawTable {
  int version = 0x03;
  std::vector<RawField> fields = {};
  std::string rows = "";  // as they stand in the file, deletion bytes included
  int count = 0;
  int headerLength = -1;  // -1: what it is
  int recordLength = -1;  // -1: 1 and the sum of the widths
  int tableFlags = 0;
  int mark = 0x03;
  std::string terminator = "\r";
  std::string end = "\x1A";

  int trueRecordLength() const {
    int sum = 1;
    for (const RawField& field : fields) sum += field.width;
    return sum;
  }

  std::string bytes() const {
    std::string result(32, '\0');
    const std::size_t length = 32 + 32 * fields.size() + terminator.size();
    result[0] = static_cast<char>(version);
    result[1] = 95;
    result[2] = 7;
    result[3] = 26;
    putNumber(result, 4, count, 4);
    putNumber(result, 8, headerLength < 0 ? static_cast<int>(length) : headerLength, 2);
    putNumber(result, 10, recordLength < 0 ? trueRecordLength() : recordLength, 2);
    result[28] = static_cast<char>(tableFlags);
    result[29] = static_cast<char>(mark);
    for (const RawField& field : fields) result += descriptor(field);
    return result + terminator + rows + end;
  }

  static void putNumber(std::string& bytes, std::size_t at, int value, int count) {
    for (int i = 0; i < count; ++i) bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
  }

  static std::string descriptor(const RawField& field) {
    std::string result(32, '\0');
    result.replace(0, std::min<std::size_t>(11, field.name.size()), field.name, 0, 11);
    result[11] = field.type;
    result[16] = static_cast<char>(field.width);
    result[17] = static_cast<char>(field.decimals);
    result[18] = static_cast<char>(field.flags);
    return result;
  }
};

using Bytes = std::vector<unsigned char>;

inline Bytes recordOf(DbfFile& table, std::uint32_t number) {
  Bytes record(static_cast<std::size_t>(table.recordLength()));
  return table.readRecord(number, record.data()) ? record : Bytes();
}

inline Value valueOf(DbfFile& table, std::uint32_t number, std::string_view field) {
  const Bytes record = recordOf(table, number);
  if (record.empty()) throw RunTimeFailure(failure::recordDeleted, "there is no record " + std::to_string(number));
  return table.value(record.data(), static_cast<std::size_t>(table.fieldIndex(field)));
}

// A row of values in field order.
inline Bytes rowOf(DbfFile& table, const std::vector<Value>& values) {
  Bytes record = table.blankRecord();
  for (std::size_t i = 0; i < values.size(); ++i) table.put(record.data(), i, values[i]);
  return record;
}

inline std::uint32_t appendRow(DbfFile& table, const std::vector<Value>& values) {
  return table.append(rowOf(table, values).data());
}

// The failure that `work` ends with; number 0 where it ends well.
template <class Work>
RunTimeFailure failureOf(const Work& work) {
  try {
    work();
  } catch (const RunTimeFailure& failure) {
    return failure;
  }
  return {0, ""};
}

}  // namespace vantrelix::test

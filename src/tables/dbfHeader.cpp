#include "tables/dbfHeader.h"

#include <algorithm>

#include "platform/RunTimeFailure.h"
#include "tables/dbfDescriptors.h"

namespace vantrelix::dbf {

namespace {

constexpr int kReadable[] = {0x03, 0x30, 0x31, 0x32, 0x43, 0x63, 0x83, 0x8B, 0xCB, 0xF5, 0xFB};

struct Stranger {
  int version;
  const char* name;
};
constexpr Stranger kStrangers[] = {
    {0x02, "dBase II or FoxBASE"}, {0x04, "dBase 7"}, {0x8C, "dBase 7 with memo"}, {0xE5, "HiPer-Six with memo"}};

constexpr const char* kTakeACopy = "Take a sound copy of it, or mend it with the program that made it.";
constexpr const char* kTakeATable = "Choose a table, or save this one as dBase III or FoxPro.";

[[noreturn]] void damaged(const std::string& name, const std::string& fault, const char* remedy = kTakeACopy) {
  throw RunTimeFailure(failure::damagedTable, "The table " + name + " cannot be read: " + fault + ". " + remedy);
}

std::string hex(int byte) {
  constexpr const char* digits = "0123456789ABCDEF";
  return std::string("0x") + digits[byte >> 4 & 15] + digits[byte & 15];
}

void checkVersion(int version, const std::string& name) {
  if (isReadable(version)) return;
  for (const Stranger& stranger : kStrangers) {
    if (stranger.version != version) continue;
    damaged(name,
            std::string("it is a ") + stranger.name + " table (version " + hex(version) +
                "), a format that is not supported",
            kTakeATable);
  }
  damaged(name, "it is no dBase or FoxPro table (its first byte is " + hex(version) + ")", kTakeATable);
}

bool sizeFits(std::uint64_t fileSize, const Header& header, std::uint64_t recordLength) {
  const std::uint64_t rows = header.headerLength + recordLength * header.count;
  return header.count > 0 && (fileSize == rows || fileSize == rows + 1);
}

void settleWidths(Header& header, std::uint64_t fileSize) {
  const std::uint32_t plain = sumOfWidths(header.fields, false);
  if (plain == header.recordLength) return;
  if (sumOfWidths(header.fields, true) == header.recordLength) return takeLongTexts(header.fields);
  if (plain < header.recordLength) return;
  header.isLengthInDoubt = true;
  if (sizeFits(fileSize, header, plain) && !sizeFits(fileSize, header, header.recordLength))
    header.recordLength = plain;
}

void checkHeaderLength(std::string_view bytes, const Header& header, const std::string& name) {
  if (sumOfWidths(header.fields, false) == header.recordLength) return;
  if (sumOfWidths(header.fields, true) == header.recordLength) return;
  const Descriptors beyond = readDescriptors(bytes, bytes.size());
  if (!beyond.terminated || beyond.end + 1 <= header.headerLength) return;
  if (sumOfWidths(beyond.fields, false) != header.recordLength) return;
  damaged(name, "its header claims " + std::to_string(header.headerLength) +
                    " bytes, but its field descriptions reach to byte " + std::to_string(beyond.end));
}

void checkLengths(const Header& header, std::uint64_t fileSize, const std::string& name) {
  if (header.headerLength < kFixedHeader) {
    damaged(name,
            "its header claims a length of " + std::to_string(header.headerLength) + " bytes, less than a header has");
  }
  if (header.headerLength > fileSize) {
    damaged(name, "its header claims a length of " + std::to_string(header.headerLength) + " bytes, but the file has " +
                      std::to_string(fileSize));
  }
  if (header.recordLength == 0) damaged(name, "its header claims records of 0 bytes");
}

}  // namespace

std::uint32_t littleEndian(const unsigned char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i) value |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
  return value;
}

void putLittleEndian(unsigned char* bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(value >> (8 * i));
}

Header parseHeader(std::string_view bytes, std::uint64_t fileSize, const std::string& displayName) {
  if (bytes.empty()) damaged(displayName, "the file is empty");
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
  checkVersion(at[0], displayName);
  if (bytes.size() < kFixedHeader) {
    damaged(displayName, "the file has " + std::to_string(fileSize) + " bytes, less than a table's header");
  }
  Header header;
  header.version = at[0];
  header.count = littleEndian(at + 4, 4);
  header.headerLength = littleEndian(at + 8, 2);
  header.recordLength = littleEndian(at + 10, 2);
  header.structuralIndex = (at[28] & kTableFlagIndex) != 0;
  header.languageMark = at[29];
  // A text that happens to begin with one of the versions has letters where the date stands.
  if (at[2] > 12 && at[3] > 31)
    damaged(displayName, "it is no dBase or FoxPro table (there is no date in its header)", kTakeATable);
  checkLengths(header, fileSize, displayName);
  Descriptors found = readDescriptors(bytes, header.headerLength);
  if (found.fields.empty() && header.recordLength > 1) damaged(displayName, "its header describes no field");
  header.fields = std::move(found.fields);
  checkHeaderLength(bytes, header, displayName);
  settleWidths(header, fileSize);
  placeFields(header);
  if (isVisual(header.version)) placeNullBits(header, found.flags);
  return header;
}

std::uint32_t rowsWithin(std::uint64_t fileSize, const Header& header, std::uint32_t count) {
  if (fileSize < header.headerLength) return 0;
  return static_cast<std::uint32_t>(
      std::min<std::uint64_t>(count, (fileSize - header.headerLength) / header.recordLength));
}

bool isReadable(int version) {
  return std::find(std::begin(kReadable), std::end(kReadable), version) != std::end(kReadable);
}

bool isStranger(int version) {
  return std::any_of(std::begin(kStrangers), std::end(kStrangers),
                     [&](const Stranger& stranger) { return stranger.version == version; });
}

bool isVisual(int version) { return version >= 0x30 && version <= 0x32; }

MemoFormat memoFormatOf(int version) {
  switch (version) {
    case 0x83:
      return MemoFormat::dbase3;
    case 0x8B:
    case 0xCB:
      return MemoFormat::dbase4;
    case 0x30:
    case 0x31:
    case 0x32:
    case 0xF5:
    case 0xFB:
      return MemoFormat::foxpro;
    default:
      return MemoFormat::none;
  }
}

std::string newHeader(const std::vector<DbfNewField>& fields, const platform::DateTime& today,
                      unsigned char languageMark) {
  const std::size_t length = kFixedHeader + kDescriptor * fields.size() + 1;
  std::vector<unsigned char> bytes(length + 1, 0);
  bytes[0] = 0x03;
  bytes[1] = static_cast<unsigned char>(today.year - 1900);
  bytes[2] = static_cast<unsigned char>(today.month);
  bytes[3] = static_cast<unsigned char>(today.day);
  putLittleEndian(&bytes[8], static_cast<std::uint32_t>(length), 2);
  bytes[29] = languageMark;
  std::uint32_t offset = 1;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    unsigned char* at = &bytes[kFixedHeader + kDescriptor * i];
    std::copy(fields[i].name.begin(), fields[i].name.end(), at);
    at[11] = static_cast<unsigned char>(fields[i].type);
    putLittleEndian(at + 12, offset, 4);
    at[16] = static_cast<unsigned char>(fields[i].width);
    at[17] = static_cast<unsigned char>(fields[i].decimals);
    offset += static_cast<std::uint32_t>(fields[i].width);
    if (fields[i].type == 'M') bytes[0] = 0xF5;
  }
  putLittleEndian(&bytes[10], offset, 2);
  bytes[length - 1] = kHeaderEnd;
  bytes[length] = kFileEnd;
  return {bytes.begin(), bytes.end()};
}

}  // namespace vantrelix::dbf

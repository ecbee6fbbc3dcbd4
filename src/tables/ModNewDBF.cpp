#include <vector>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "tables/dbfCreate.h"
#include "tables/dbfOpening.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

// Places in the header and in a field's descriptor.
constexpr std::size_t kHeaderSize = 32;
constexpr std::size_t kDescriptorSize = 32;
constexpr std::size_t kRecordCount = 4;
constexpr std::size_t kRecordLength = 10;
constexpr std::size_t kNameLength = 11;
constexpr std::size_t kType = 11;
constexpr std::size_t kDisplacement = 12;
constexpr std::size_t kWidth = 16;
constexpr std::size_t kDecimals = 17;
constexpr unsigned char kTerminator = 0x0D;

struct DictionaryRow {
  std::string name;
  std::string foxType;
  int width = 0;
  int decimals = 0;

  bool isNumeric() const { return foxType == "N" || foxType == "F"; }
};

[[noreturn]] void refuse(const std::string& path, const std::string& reason) {
  throw RunTimeFailure(failure::damagedTable, "The header of " + displayPath(path) + " cannot be set: " + reason +
                                                  ". Compare the table with its rows in the dictionary.");
}

std::vector<DictionaryRow> dictionaryRows(const std::string& tableType) {
  const RecordsetPtr cursor = RSDataSm(dictionaryFilter(tableType));
  if (!cursor) {
    throw RunTimeFailure(failure::objectNotSet, "The dictionary has no rows for the table type \"" + tableType +
                                                    "\". Add them to QVDATASM.DBF.");
  }
  std::vector<DictionaryRow> rows;
  for (; !cursor->Eof(); cursor->MoveNext()) {
    DictionaryRow row;
    row.name = trim(cursor->value("FLD_NAME").asText());
    row.foxType = trim(ChkNulls(cursor->value("FOX_TYPE"), "", false).asText());
    row.width = static_cast<int>(cursor->value("FLD_WIDTH").asNumber());
    row.decimals = static_cast<int>(ChkNulls(cursor->value("FLD_DEC"), 0, true).asNumber());
    rows.push_back(row);
  }
  return rows;
}

std::string descriptorName(const unsigned char* descriptor) {
  std::string name(reinterpret_cast<const char*>(descriptor), kNameLength);
  return name.substr(0, name.find('\0'));
}

// The header's bytes up to the last descriptor, once it is sure that they describe a new, empty table of these fields.
std::vector<unsigned char> readHeader(platform::File& file, const std::string& path,
                                      const std::vector<DictionaryRow>& rows) {
  std::vector<unsigned char> header(kHeaderSize + kDescriptorSize * rows.size() + 1);
  if (file.readAt(0, header.data(), header.size()) != header.size()) refuse(path, "it holds fewer fields");
  if (header.back() != kTerminator) refuse(path, "its fields do not end where the dictionary's do");
  header.pop_back();
  for (std::size_t i = 0; i < 4; ++i) {
    if (header[kRecordCount + i] != 0) refuse(path, "the table is not empty");
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const unsigned char* descriptor = &header[kHeaderSize + kDescriptorSize * i];
    if (!equalIgnoringCase(descriptorName(descriptor), rows[i].name)) {
      refuse(path, "field " + std::to_string(i + 1) + " is not " + rows[i].name);
    }
    if (!rows[i].isNumeric() && descriptor[kWidth] != rows[i].width) {
      refuse(path, "the width of " + rows[i].name + " is not " + std::to_string(rows[i].width));
    }
  }
  return header;
}

void setNumber(unsigned char* descriptor, const DictionaryRow& row, const std::string& path) {
  if (!dbf::isNumberWidth(row.width, row.decimals)) {
    refuse(path, "the dictionary's width or decimals of " + row.name + " are out of range");
  }
  descriptor[kType] = static_cast<unsigned char>(row.foxType[0]);
  descriptor[kWidth] = static_cast<unsigned char>(row.width);
  descriptor[kDecimals] = static_cast<unsigned char>(row.decimals);
}

void setFields(std::vector<unsigned char>& header, const std::vector<DictionaryRow>& rows, const std::string& path) {
  unsigned displacement = 1;  // behind the deletion byte
  for (std::size_t i = 0; i < rows.size(); ++i) {
    unsigned char* descriptor = &header[kHeaderSize + kDescriptorSize * i];
    if (rows[i].isNumeric()) setNumber(descriptor, rows[i], path);
    for (unsigned byte = 0; byte < 4; ++byte) {
      descriptor[kDisplacement + byte] = static_cast<unsigned char>(displacement >> (8 * byte));
    }
    displacement += static_cast<unsigned>(rows[i].width);
  }
  if (displacement > 0xFFFF) refuse(path, "its record would be longer than 65535 bytes");
  header[kRecordLength] = static_cast<unsigned char>(displacement);
  header[kRecordLength + 1] = static_cast<unsigned char>(displacement >> 8);
}

void setHeader(const std::string& tableType, const std::string& path) {
  SetFlag(200);
  const std::vector<DictionaryRow> rows = dictionaryRows(tableType);
  SetFlag(300);
  // Whoever has it open would go on adding rows of the former length.
  bool readOnly = false;
  const auto file = dbf::openHeld(path, Sharing::exclusive, readOnly).file;
  std::vector<unsigned char> header = readHeader(*file, path, rows);
  SetFlag(400);
  setFields(header, rows, path);
  SetFlag(500);
  file->writeAt(kRecordLength, header.data() + kRecordLength, header.size() - kRecordLength);
}

}  // namespace

bool ModNewDBF(const std::string& tableType, const std::string& path) {
  Procedure guard(procedure::ModNewDBF);
  SetFlag(100);
  if (!getFileExistLEN(path, true)) {
    const std::string text = "ModNewDBF error on " + displayPath(path);
    wrtTechSupNoMak(text);
    showInformation("DataBase Creation Error", text);
    return false;
  }
  try {
    setHeader(tableType, path);
    return true;
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure);
  } catch (const std::exception& failure) {
    ErrHand(failure);
  }
  return false;
}

}  // namespace vantrelix

#include "tables/dbfDescriptors.h"

#include <algorithm>

namespace vantrelix::dbf {

namespace {

constexpr unsigned char kFlagSystem = 0x01;
constexpr unsigned char kFlagAutoIncrement = 0x0C;

// A name ends at its first NUL; what stands behind is of no meaning.
std::string fieldName(const unsigned char* descriptor) {
  const unsigned char* end = std::find(descriptor, descriptor + 11, 0);
  while (end != descriptor && end[-1] == ' ') --end;
  return {descriptor, end};
}

void add(Descriptors& found, const unsigned char* bytes) {
  DbfField field;
  field.name = fieldName(bytes);
  field.type = static_cast<char>(bytes[11]);
  field.width = bytes[16];
  field.decimals = bytes[17];
  found.fields.push_back(std::move(field));
  found.flags.push_back(bytes[18]);
  found.end += kDescriptor;
}

}  // namespace

bool isFieldType(unsigned char type) {
  return (type >= 'A' && type <= 'Z') || (type >= '0' && type <= '9') || type == '@' || type == '+';
}

Descriptors readDescriptors(std::string_view bytes, std::uint64_t limit) {
  Descriptors found;
  limit = std::min<std::uint64_t>(limit, bytes.size());
  while (found.end < limit) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data()) + found.end;
    found.terminated = *at == kHeaderEnd;
    // A blank name or a type that is none shows that the terminator is missing, not that there is one more field.
    if (found.terminated || found.end + kDescriptor > limit || *at == 0 || !isFieldType(at[11])) break;
    add(found, at);
  }
  return found;
}

std::uint32_t sumOfWidths(const std::vector<DbfField>& fields, bool longText) {
  std::uint32_t sum = 1;
  for (const DbfField& field : fields) {
    sum += static_cast<std::uint32_t>(field.width);
    if (longText && field.type == 'C') sum += static_cast<std::uint32_t>(field.decimals) * 256;
  }
  return sum;
}

// FoxPro and Clipper keep the high byte of a long text's width in the byte of the decimals.
void takeLongTexts(std::vector<DbfField>& fields) {
  for (DbfField& field : fields) {
    if (field.type != 'C') continue;
    field.width += field.decimals * 256;
    field.decimals = 0;
  }
}

// A field that does not lie in the record whole is left with what of it does.
void placeFields(Header& header) {
  int offset = 1;
  const int length = static_cast<int>(header.recordLength);
  for (DbfField& field : header.fields) {
    field.offset = std::min(offset, length);
    offset += field.width;
    field.width = std::max(0, std::min(field.width, length - field.offset));
  }
}

// Bits are dealt out in field order: a varying-length field takes one for its length, then a nullable field one for
// null.
void placeNullBits(Header& header, const std::vector<unsigned char>& flags) {
  int next = 0;
  for (std::size_t i = 0; i < header.fields.size(); ++i) {
    DbfField& field = header.fields[i];
    field.system = field.type == '0' || (flags[i] & kFlagSystem) != 0;
    if (field.type == '0') header.nullFlags = static_cast<int>(i);
    header.autoIncrement = header.autoIncrement || (flags[i] & kFlagAutoIncrement) == kFlagAutoIncrement;
    if (field.type == 'V' || field.type == 'Q') field.lengthBit = next++;
    if ((flags[i] & kFlagNullable) != 0) field.nullBit = next++;
  }
  const int bits = header.nullFlags < 0 ? 0 : header.fields[static_cast<std::size_t>(header.nullFlags)].width * 8;
  for (DbfField& field : header.fields) {
    if (field.nullBit >= bits) field.nullBit = -1;
    if (field.lengthBit >= bits) field.lengthBit = -1;
  }
}

}  // namespace vantrelix::dbf

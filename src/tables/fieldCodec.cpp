// What reading and writing a field both ask: where its memo stands, and its flags.
#include "tables/fieldCodec.h"

#include "tables/dbfNumber.h"
#include "tables/fieldBytes.h"

namespace vantrelix::dbf {

namespace {

constexpr int kLongestBlock = 10;  // digits

}  // namespace

bool isMemo(const DbfField& field, const FieldContext& context) {
  return field.type == 'M' || (field.type == 'B' && !context.visual && field.width != 8);
}

std::uint32_t memoBlock(const unsigned char* record, const DbfField& field) {
  if (field.width == kBinaryPointer) return littleEndian(record + field.offset, kBinaryPointer);
  const std::optional<double> block = parseNumber(bytesOf(record, field));
  if (!block || *block < 0 || *block > 4294967295.0) return 0;
  return static_cast<std::uint32_t>(*block);
}

bool holdsAnyBlock(const DbfField& field) { return field.width == kBinaryPointer || field.width >= kLongestBlock; }

void putMemoBlock(unsigned char* record, const DbfField& field, const FieldContext& context, std::uint32_t block) {
  if (field.width == kBinaryPointer) {
    putLittleEndian(record + field.offset, block, kBinaryPointer);
  } else {
    const std::string digits = std::to_string(block);
    putBytes(record, field, std::string(static_cast<std::size_t>(field.width) - digits.size(), ' ') + digits, ' ');
  }
  setFlag(record, field.nullBit, context, false);
}

bool isNullByFlag(const unsigned char* record, const DbfField& field, const FieldContext& context) {
  return flag(record, field.nullBit, context);
}

bool hasLength(const unsigned char* record, const DbfField& field, const FieldContext& context) {
  return flag(record, field.lengthBit, context);
}

}  // namespace vantrelix::dbf

#include "tables/FieldType.h"

#include "foundation/text.h"

namespace vantrelix {

namespace {

struct Word {
  std::string_view word;
  FieldType type;
};
constexpr Word kWords[] = {
    {"COUNTER", FieldType::longInteger}, {"TRUE/FALSE", FieldType::boolean},  {"BYTE", FieldType::byte},
    {"INTEGER", FieldType::integer},     {"LONG", FieldType::longInteger},    {"CURRENCY", FieldType::currency},
    {"SINGLE", FieldType::single},       {"DOUBLE", FieldType::doubleNumber}, {"DATE/TIME", FieldType::date},
    {"STRING", FieldType::text},         {"BINARY", FieldType::binary},       {"MEMO", FieldType::memo},
};

struct Stored {
  FieldType type;
  char letter;
  int width;
  int decimals;
};
// Numbers get room for every value of their type; the decimals of SINGLE and DOUBLE are what a field of 20 leaves
// beside a whole part of eleven digits.
constexpr Stored kStored[] = {
    {FieldType::boolean, 'L', 1, 0},       {FieldType::byte, 'N', 3, 0},      {FieldType::integer, 'N', 6, 0},
    {FieldType::longInteger, 'N', 11, 0},  {FieldType::currency, 'N', 20, 4}, {FieldType::single, 'N', 20, 8},
    {FieldType::doubleNumber, 'N', 20, 8}, {FieldType::date, 'D', 8, 0},      {FieldType::binary, 'M', 10, 0},
    {FieldType::memo, 'M', 10, 0},
};

}  // namespace

FieldType fieldTypeOfWord(std::string_view word) {
  const std::string wanted = trim(word);
  if (wanted.empty()) return FieldType::none;
  for (const Word& known : kWords) {
    if (equalIgnoringCase(known.word, wanted)) return known.type;
  }
  return FieldType::unknown;
}

FieldType fieldTypeOf(const DbfField& field) {
  switch (field.type) {
    case 'C':
    case 'V':
      return FieldType::text;
    case 'N':
    case 'F':
      return FieldType::doubleNumber;
    case 'B':
      return field.width == 8 ? FieldType::doubleNumber : FieldType::binary;
    case 'I':
      return FieldType::longInteger;
    case 'Y':
      return FieldType::currency;
    case 'L':
      return FieldType::boolean;
    case 'D':
    case 'T':
      return FieldType::date;
    case 'M':
      return FieldType::memo;
    case 'G':
    case 'P':
    case 'Q':
    case 'W':
      return FieldType::binary;
    default:
      return FieldType::unknown;
  }
}

DbfNewField engineField(std::string_view name, FieldType type, int size) {
  for (const Stored& stored : kStored) {
    if (stored.type == type) return {std::string(name), stored.letter, stored.width, stored.decimals};
  }
  return {std::string(name), 'C', size, 0};
}

}  // namespace vantrelix

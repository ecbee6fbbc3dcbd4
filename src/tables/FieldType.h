// The field types of the table engine and the words the dictionary has for them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tables/DbfFile.h"

namespace vantrelix {

// The numeric codes by which a field type is asked for.
enum class FieldType {
  none = -1,    // an empty word
  unknown = 0,  // a word that is no type
  boolean = 1,
  byte = 2,
  integer = 3,
  longInteger = 4,
  currency = 5,
  single = 6,
  doubleNumber = 7,
  date = 8,
  text = 10,
  binary = 11,
  memo = 12,
};

// The code of a VB_TYPE word ("COUNTER", "TRUE/FALSE", ...), trimmed, without regard to case.
FieldType fieldTypeOfWord(std::string_view word);
// The code of a field as it is stored.
FieldType fieldTypeOf(const DbfField& field);
// How the engine stores a field of that type when nothing but name, code and size is given: its own widths for numbers.
DbfNewField engineField(std::string_view name, FieldType type, int size);

// One field of a field list. The decimals ride along as text and are not used by the engine.
struct FieldDescription {
  std::string Name;
  int Size = 0;
  FieldType Type = FieldType::text;
  std::string ValidationText;
};
using FieldList = std::vector<FieldDescription>;

}  // namespace vantrelix

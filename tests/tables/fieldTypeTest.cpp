#include <gtest/gtest.h>

#include "tables/FieldType.h"

namespace vantrelix {
namespace {

TEST(FieldTypeWords, GiveTheCodesOfTheDictionary) {
  const std::pair<const char*, int> words[] = {{"COUNTER", 4},   {"TRUE/FALSE", 1}, {"BYTE", 2},    {"INTEGER", 3},
                                               {"LONG", 4},      {"CURRENCY", 5},   {"SINGLE", 6},  {"DOUBLE", 7},
                                               {"DATE/TIME", 8}, {"STRING", 10},    {"BINARY", 11}, {"MEMO", 12}};
  for (const auto& [word, code] : words) EXPECT_EQ(static_cast<int>(fieldTypeOfWord(word)), code) << word;
}

TEST(FieldTypeWords, AreTrimmedAndReadWithoutRegardToCase) {
  EXPECT_EQ(fieldTypeOfWord("  double "), FieldType::doubleNumber);
  EXPECT_EQ(fieldTypeOfWord("Date/Time"), FieldType::date);
}

TEST(FieldTypeWords, AnEmptyWordGivesMinusOneAndAnUnknownOneZero) {
  EXPECT_EQ(static_cast<int>(fieldTypeOfWord("")), -1);
  EXPECT_EQ(static_cast<int>(fieldTypeOfWord("   ")), -1);
  EXPECT_EQ(static_cast<int>(fieldTypeOfWord("STRINGS")), 0);
}

TEST(FieldTypeOf, NamesTheKindOfEveryStoredType) {
  const auto typeOf = [](char letter, int width) { return fieldTypeOf({.name = "X", .type = letter, .width = width}); };
  EXPECT_EQ(typeOf('C', 10), FieldType::text);
  EXPECT_EQ(typeOf('N', 10), FieldType::doubleNumber);
  EXPECT_EQ(typeOf('F', 10), FieldType::doubleNumber);
  EXPECT_EQ(typeOf('I', 4), FieldType::longInteger);
  EXPECT_EQ(typeOf('T', 8), FieldType::date);
  EXPECT_EQ(typeOf('B', 8), FieldType::doubleNumber);
  EXPECT_EQ(typeOf('B', 10), FieldType::binary);
  EXPECT_EQ(typeOf('M', 10), FieldType::memo);
  EXPECT_EQ(typeOf('7', 8), FieldType::unknown);
}

TEST(EngineField, HoldsTheWidestValueOfItsType) {
  EXPECT_EQ(engineField("A", FieldType::byte, 1).width, 3);
  EXPECT_EQ(engineField("A", FieldType::integer, 2).width, 6);
  EXPECT_EQ(engineField("A", FieldType::longInteger, 4).width, 11);
  EXPECT_EQ(engineField("A", FieldType::boolean, 5).type, 'L');
  EXPECT_EQ(engineField("A", FieldType::text, 12).width, 12);
}

// The antenna tables keep up to five decimals; a repair goes through the engine's own widths.
TEST(EngineField, KeepsTheDecimalsOfANumberOfAnAntennaTable) {
  const DbfNewField field = engineField("F_LOW", FieldType::doubleNumber, 14);
  EXPECT_EQ(field.type, 'N');
  EXPECT_GE(field.decimals, 5);
  EXPECT_GE(field.width - field.decimals - 1, 8);
}

}  // namespace
}  // namespace vantrelix

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::addDictionaryRow;
using test::DictionarySuite;
using ::testing::HasSubstr;

unsigned byteAt(const std::string& bytes, std::size_t offset) { return static_cast<unsigned char>(bytes.at(offset)); }

unsigned numberAt(const std::string& bytes, std::size_t offset, int count) {
  unsigned number = 0;
  for (int i = count; i-- > 0;) number = number * 256 + byteAt(bytes, offset + static_cast<std::size_t>(i));
  return number;
}

TEST(ModNewDBF, NumbersGetTheDictionarysWidthAndDecimalsInTheHeader) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AHDTADBASE"), path));
  ASSERT_TRUE(ModNewDBF("AHDTADBASE", path));
  const std::string bytes = suite.folder().read("AHDTEST1.DBF");
  EXPECT_EQ(byteAt(bytes, 32 + 32 + 11), static_cast<unsigned>('N'));
  EXPECT_EQ(byteAt(bytes, 32 + 32 + 16), 10u);
  EXPECT_EQ(byteAt(bytes, 32 + 32 + 17), 4u);
  EXPECT_EQ(byteAt(bytes, 32 + 64 + 16), 12u);
  EXPECT_EQ(byteAt(bytes, 32 + 64 + 17), 4u);
  EXPECT_EQ(byteAt(bytes, 32 + 16), 12u);
}

TEST(ModNewDBF, DisplacementsAndRecordLengthAddUpTheWidths) {
  DictionarySuite suite;
  const std::string path = suite.file("AMSTEST1.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AMSPDBASE"), path));
  ASSERT_TRUE(ModNewDBF("AMSPDBASE", path));
  const std::string bytes = suite.folder().read("AMSTEST1.DBF");
  EXPECT_EQ(numberAt(bytes, 32 + 12, 4), 1u);
  EXPECT_EQ(numberAt(bytes, 32 + 32 + 12, 4), 13u);
  EXPECT_EQ(numberAt(bytes, 32 + 8 * 32 + 12, 4), 1u + 12 + 60 + 12 + 5 + 14 + 14 + 5 + 12);
  EXPECT_EQ(numberAt(bytes, 10, 2), 1u + 12 + 60 + 12 + 5 + 14 + 14 + 5 + 12 + 5);
  test::addRow(path, {{"ATYPE_ID", "X"}, {"F_HIGH", 12345678.12345}});
  EXPECT_EQ(test::column(path, "F_HIGH"), std::vector<std::string>{"12345678.12345"});
}

TEST(ModNewDBF, AFloatFieldGetsItsTypeLetter) {
  DictionarySuite suite;
  addDictionaryRow(suite.dictionary, "FLOATS", 1, "LEVEL", 9, 3, "SINGLE", "F");
  const std::string path = suite.file("FLOATS.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("FLOATS"), path));
  ASSERT_TRUE(ModNewDBF("FLOATS", path));
  const DbfField field = DbfFile::open(path, true)->fields().at(0);
  EXPECT_EQ(field.type, 'F');
  EXPECT_EQ(field.width, 9);
  EXPECT_EQ(field.decimals, 3);
}

TEST(ModNewDBF, TheSiteTypeTakesTheRowsOfAllFiveTypes) {
  DictionarySuite suite;
  FieldList fields;
  int key = 9000;
  for (const char* type : {"FACDBASE", "FACTXDBASE", "FACRXDBASE", "FACRX1DBSE", "FACRX2DBSE"}) {
    const std::string name = "N" + std::to_string(++key);
    addDictionaryRow(suite.dictionary, type, key, name, 6, 1, "DOUBLE", "N");
    fields.push_back({name, 6, FieldType::doubleNumber, "1"});
  }
  const std::string path = suite.file("SITE.DBF");
  ASSERT_TRUE(NewTable(fields, path));
  ASSERT_TRUE(ModNewDBF("FACDBASE", path));
  const auto table = DbfFile::open(path, true);
  EXPECT_EQ(table->recordLength(), 31);
  EXPECT_EQ(table->fields().at(4).width, 6);
}

TEST(ModNewDBF, AMissingFileIsToldAndLogged) {
  DictionarySuite suite;
  EXPECT_FALSE(ModNewDBF("AMSPDBASE", suite.file("NONE.DBF")));
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "DataBase Creation Error");
  EXPECT_EQ(suite.messages[0].text, "ModNewDBF error on " + suite.folder().machine("NONE.DBF"));
  EXPECT_THAT(suite.log(), HasSubstr(suite.messages[0].text));
}

TEST(ModNewDBF, ATableOfOtherFieldsIsLeftAsItWas) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AHDTADBASE"), path));
  const std::string before = suite.folder().read("AHDTEST1.DBF");
  EXPECT_FALSE(ModNewDBF("AVDTADBASE", path));
  EXPECT_FALSE(ModNewDBF("AMSPDBASE", path));
  EXPECT_FALSE(ModNewDBF("NOSUCHTYPE", path));
  EXPECT_EQ(suite.folder().read("AHDTEST1.DBF"), before);
  EXPECT_EQ(suite.messages.size(), 3u);
  EXPECT_THAT(suite.log(), HasSubstr("field 2 is not VERT_ANGLE"));
}

TEST(ModNewDBF, ATextFieldOfAnotherWidthIsRefused) {
  DictionarySuite suite;
  FieldList fields = FieldsFromDataSum("AHDTADBASE");
  fields[0].Size = 15;
  const std::string path = suite.file("AHDTEST1.DBF");
  ASSERT_TRUE(NewTable(fields, path));
  EXPECT_FALSE(ModNewDBF("AHDTADBASE", path));
  EXPECT_THAT(suite.log(), HasSubstr("the width of ATYPE_ID is not 12"));
}

struct NumberWidth {
  int width;
  int decimals;
  bool fits;
};

class NumberWidths : public ::testing::TestWithParam<NumberWidth> {};

TEST_P(NumberWidths, AreThoseThatANewTableCanHave) {
  DictionarySuite suite;
  addDictionaryRow(suite.dictionary, "LEVELS", 1, "LEVEL", GetParam().width, GetParam().decimals, "DOUBLE", "N");
  const std::string path = suite.file("LEVELS.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("LEVELS"), path));
  const std::string before = suite.folder().read("LEVELS.DBF");
  EXPECT_EQ(ModNewDBF("LEVELS", path), GetParam().fits);
  EXPECT_EQ(suite.folder().read("LEVELS.DBF") == before, !GetParam().fits);
  if (GetParam().fits) return;
  EXPECT_THAT(suite.log(), HasSubstr("Error 3343"));
  EXPECT_THAT(suite.log(), HasSubstr("width or decimals of LEVEL are out of range"));
  const std::string other = suite.file("OTHER.DBF");
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum("LEVELS"), other, false, true, "LEVELS"), tableCode::headerError);
  EXPECT_FALSE(suite.folder().exists("OTHER.DBF"));
}

INSTANTIATE_TEST_SUITE_P(ModNewDBF, NumberWidths,
                         ::testing::Values(NumberWidth{1, 0, true}, NumberWidth{20, 0, true}, NumberWidth{20, 15, true},
                                           NumberWidth{8, 6, true}, NumberWidth{8, 7, false}, NumberWidth{2, 1, false},
                                           NumberWidth{0, 0, false}, NumberWidth{21, 0, false},
                                           NumberWidth{30, 2, false}, NumberWidth{20, 16, false},
                                           NumberWidth{6, -1, false}));

TEST(ModNewDBF, ATableWithRowsIsRefused) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AHDTADBASE"), path));
  test::addRow(path, {{"ATYPE_ID", "A"}});
  const std::string before = suite.folder().read("AHDTEST1.DBF");
  EXPECT_FALSE(ModNewDBF("AHDTADBASE", path));
  EXPECT_EQ(suite.folder().read("AHDTEST1.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("the table is not empty"));
}

// Whoever has it open would go on adding rows of the former length.
TEST(ModNewDBF, ATableThatAnotherHasOpenIsLeftAsItWas) {
  DictionarySuite suite;
  const std::string path = suite.file("AHDTEST1.DBF");
  ASSERT_TRUE(NewTable(FieldsFromDataSum("AHDTADBASE"), path));
  const std::string before = suite.folder().read("AHDTEST1.DBF");
  auto other = DbfFile::open(path);
  EXPECT_FALSE(ModNewDBF("AHDTADBASE", path));
  EXPECT_EQ(suite.folder().read("AHDTEST1.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3051"));
  other.reset();
  EXPECT_TRUE(ModNewDBF("AHDTADBASE", path));
}

}  // namespace
}  // namespace vantrelix

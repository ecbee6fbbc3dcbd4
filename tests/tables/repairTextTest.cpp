// What a repair makes of texts in other code pages than a new table's own: their bytes stay, and what names the page.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/DbfBytes.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::column;
using test::filesThatBegin;
using test::RawTable;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

constexpr const char* kTable = "ANT.DBF";
constexpr std::size_t kWidth = 16;

std::string padded(std::string text) {
  text.resize(kWidth, ' ');
  return text;
}

class RepairTexts : public ::testing::Test {
 protected:
  // A table of one text that lacks the field POWER.
  void write(int mark, const std::string& text, const std::string& pageName = "") {
    const RawTable raw{
        .fields = {{"SITE", 'C', kWidth}}, .rows = " " + padded(text) + "*" + padded("gone"), .count = 2, .mark = mark};
    suite.folder().write(kTable, raw.bytes());
    if (!pageName.empty()) suite.folder().write("ANT.CPG", pageName);
  }
  int repaired() { return RSTblValidRS(fields, path, true, false, ""); }
  std::string bytes() { return suite.folder().read(kTable); }
  // Of the one row's first field, as they stand in the file.
  std::string textBytes(std::size_t width = kWidth) { return bytes().substr(32 + 32 * fields.size() + 1 + 1, width); }
  int mark() { return static_cast<unsigned char>(bytes().at(29)); }

  test::TempSuite suite;
  const std::string path = suite.file(kTable);
  FieldList fields = {{"SITE", kWidth, FieldType::text, ""}, {"POWER", 12, FieldType::doubleNumber, "2"}};
};

struct MarkedText {
  int mark;
  const char* bytes;
  const char* text;
};

class RepairMarkedTexts : public RepairTexts, public ::testing::WithParamInterface<MarkedText> {};

TEST_P(RepairMarkedTexts, KeepTheirBytesAndTheirMark) {
  write(GetParam().mark, GetParam().bytes);
  ASSERT_THAT(column(path, "SITE"), ElementsAre(GetParam().text));
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(mark(), GetParam().mark);
  EXPECT_EQ(textBytes(), padded(GetParam().bytes));
  EXPECT_THAT(column(path, "SITE"), ElementsAre(GetParam().text));
  EXPECT_THAT(column(path, "POWER"), ElementsAre("(null)"));
}

INSTANTIATE_TEST_SUITE_P(Marks, RepairMarkedTexts,
                         ::testing::Values(MarkedText{0x01, "8\xF8 \xE3", "8° π"}, MarkedText{0x02, "\x9B", "ø"},
                                           MarkedText{0x64,
                                                      "\x9D\xA2"
                                                      "d\xAB",
                                                      "Łódź"},
                                           MarkedText{0x65, "\x82\xEB\xE8\xAA\xA0", "Вышка"},
                                           MarkedText{0xC8, "\xE8", "č"}, MarkedText{0xC9, "\xFF", "я"},
                                           MarkedText{0x03, "8\xB0 \x81", "8° \u0081"}, MarkedText{0xFF, "\xB0", "°"},
                                           MarkedText{0x7D, "\xF9\xEC\xE5\xED", "שלום"},
                                           MarkedText{0x6C, "\x8F", "§"}));

// Their page is the operating system's; bytes that it cannot decode are text as well.
TEST_F(RepairTexts, OfAPageOfTwoBytesKeepTheirBytes) {
  write(0x13, "\x93\xFA\x96\x7B \xFF\xFE");
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(mark(), 0x13);
  EXPECT_EQ(textBytes(), padded("\x93\xFA\x96\x7B \xFF\xFE"));
}

TEST_F(RepairTexts, InUtf8ByAFileBesideTheTableStayInUtf8) {
  write(0, "Łódź", "UTF-8");
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(mark(), 0);
  EXPECT_EQ(suite.folder().read("ANT.CPG"), "UTF-8");
  EXPECT_EQ(textBytes(), padded("Łódź"));
  EXPECT_THAT(column(path, "SITE"), ElementsAre("Łódź"));
}

TEST_F(RepairTexts, OfAPageNamedBesideTheTableAreReadFromTheDatedCopyToo) {
  write(0, "\xFF", "ANSI 1251");
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_THAT(column(path, "SITE"), ElementsAre("я"));
  const std::vector<std::string> kept = filesThatBegin(suite.folder(), "ANT_2");
  ASSERT_THAT(kept, SizeIs(2));
  EXPECT_THAT(kept[0], ::testing::EndsWith(".CPG"));
  EXPECT_THAT(column(suite.file(kept[1]), "SITE"), ElementsAre("я"));
}

TEST_F(RepairTexts, WithoutAMarkStayWithoutOne) {
  write(0, "8\xB0");
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(mark(), 0);
  EXPECT_EQ(textBytes(), padded("8\xB0"));
  EXPECT_THAT(filesThatBegin(suite.folder(), "ANT"), SizeIs(2));
}

TEST_F(RepairTexts, DoNotCareForAPageNamedBesideTheTemporaryTable) {
  test::StoppedClock clock(platform::current());
  const platform::Substitute substitute(clock);
  suite.folder().write("48111626.CPG", "1251");
  write(0, "8\xB0 \xFF", "UTF-8");
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_TRUE(clock.hasRenamed("48111626.DBF"));
  EXPECT_EQ(textBytes(), padded("8\xB0 \xFF"));
}

class RepairNamedInUtf8 : public RepairTexts {
 protected:
  // A table whose field names alone tell that it is written in UTF-8.
  RepairNamedInUtf8() {
    const RawTable raw{.fields = {{"SITE", 'C', kWidth}, {"НОМ", 'C', 2}},
                       .rows = " " + padded("Łódź ") + "я ",
                       .count = 1,
                       .mark = 0};
    suite.folder().write(kTable, raw.bytes());
  }
};

TEST_F(RepairNamedInUtf8, StayThatByNamesThatTheNewTableHas) {
  fields.push_back({"НОМ", 2, FieldType::text, ""});
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(mark(), 0);
  EXPECT_THAT(column(path, "SITE"), ElementsAre("Łódź"));
  EXPECT_THAT(column(path, "НОМ"), ElementsAre("я"));
  EXPECT_FALSE(suite.folder().exists("ANT.CPG"));
}

TEST_F(RepairNamedInUtf8, GetAFileThatTellsItWhereTheNewNamesDoNot) {
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(suite.folder().read("ANT.CPG"), "UTF-8");
  EXPECT_EQ(mark(), 0);
  EXPECT_THAT(column(path, "SITE"), ElementsAre("Łódź"));
}

TEST_F(RepairNamedInUtf8, AreLeftAsTheyAreWhereThatFileIsThereAndTellsNothing) {
  suite.folder().write("ANT.CPG", "what it was");
  const std::string before = bytes();
  EXPECT_EQ(repaired(), tableCode::unknown);
  EXPECT_EQ(bytes(), before);
  EXPECT_EQ(suite.folder().read("ANT.CPG"), "what it was");
  EXPECT_THAT(suite.log(), HasSubstr("names no code page"));
}

TEST_F(RepairTexts, NewFieldsHaveTheirNamesInTheTablesPage) {
  write(0x64, "\x9D");
  fields.push_back({"ŁAN", 4, FieldType::text, ""});
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_THAT(column(path, "ŁAN"), ElementsAre("(null)"));
  EXPECT_EQ(repaired(), tableCode::fine);
  EXPECT_THAT(filesThatBegin(suite.folder(), "ANT_2"), SizeIs(1));
}

TEST_F(RepairTexts, AFieldNameThatThePageDoesNotHaveIsRefused) {
  write(0x64, "\x9D");
  fields.push_back({"ЯН", 4, FieldType::text, ""});
  const std::string before = bytes();
  EXPECT_EQ(repaired(), tableCode::temporaryFileError);
  EXPECT_EQ(bytes(), before);
  EXPECT_THAT(suite.log(), HasSubstr("its code page does not have the characters of the field name"));
  EXPECT_THAT(filesThatBegin(suite.folder(), ""), ElementsAre(kTable, "QVTECSUP.TXT", "SYSTEM"));
}

// Eight characters of two bytes each: another page would have room for them.
TEST_F(RepairTexts, AreMeasuredInTheirOwnBytes) {
  write(0, "éééééééé", "UTF-8");
  fields[0].Size = 15;
  const std::string before = bytes();
  EXPECT_EQ(repaired(), tableCode::unknown);
  EXPECT_EQ(bytes(), before);
  EXPECT_THAT(suite.log(), HasSubstr("too small for a text of 16 bytes: its width is 15"));
}

TEST_F(RepairTexts, PaddingAndWhatStandsBehindANulNeedNoRoom) {
  write(0x64, std::string("\x9D\0behind it", 11));
  fields[0].Size = 3;
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(textBytes(3), "\x9D  ");
  write(0x64, std::string("\x9D\0\0\0", 4));
  fields.push_back({"MORE", 3, FieldType::text, ""});
  fields[0].Size = 20;
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(textBytes(20), std::string("\x9D\0\0\0                ", 20));
}

TEST_F(RepairTexts, OfVaryingLengthAndNullOnesComeAcross) {
  const RawTable raw{.version = 0x32,
                     .fields = {{"SITE", 'V', 6}, {"NOTE", 'C', 3, 0, 2}, {"_NullFlags", '0', 1, 0, 5}},
                     .rows = std::string(" \x9D\xA2  \x02\x02"  // two characters, counted
                                         "old\x03"              // and null
                                         " \x9D"
                                         "0012 "
                                         "\xABy \x00",
                                         22),
                     .count = 2,
                     .mark = 0x64};
  suite.folder().write(kTable, raw.bytes());
  fields.push_back({"NOTE", 3, FieldType::text, ""});
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(mark(), 0x64);
  EXPECT_THAT(column(path, "SITE"), ElementsAre("Łó", "Ł0012"));
  EXPECT_THAT(column(path, "NOTE"), ElementsAre("(null)", "źy"));
}

TEST_F(RepairTexts, BecomeNumbersByTheirOwnPage) {
  write(0x64, " 12.5");
  fields[0].Type = FieldType::doubleNumber;
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_THAT(column(path, "SITE"), ElementsAre("12.5"));
}

}  // namespace
}  // namespace vantrelix

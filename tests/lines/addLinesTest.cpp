#include "LineSuite.h"
#include "lines/addLines.h"
#include "lines/lineList.h"
#include "platform/FaultPlatform.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class AddingLines : public LineSuite {
 protected:
  static std::vector<LineType> twoLines() {
    return {{"F78", "7/8 in foam, 50 ohm", 2, {{30, 0.195, 2}, {450, 0.808, 3}}}, {"F12", "", 4, {{100, 0.661, 4}}}};
  }
  static std::vector<LineType> oneLine(const std::string& id, double freq = 100, double atten = 1) {
    return {{id, "another", 7, {{freq, atten, 7}, {1000, 5, 8}}}};
  }
  AddedLines add(const std::vector<LineType>& lines, const std::string& file = "LMSX0001") {
    faults.clear();
    return addLines(folder(), file, lines, faults);
  }
  std::vector<std::string> faultTexts() const {
    std::vector<std::string> texts;
    for (const LineFault& fault : faults) texts.push_back(std::to_string(fault.row) + ": " + fault.text);
    return texts;
  }
  static std::vector<std::string> files() { return platform::current().list(folder()); }

  std::vector<LineFault> faults;
};

TEST_F(AddingLines, ANewLibraryHasBothTables) {
  const AddedLines added = add(twoLines());
  EXPECT_THAT(faultTexts(), IsEmpty());
  EXPECT_EQ(added.lines, 2U);
  EXPECT_EQ(added.points, 3U);
  EXPECT_THAT(files(), ::testing::UnorderedElementsAre("LMSX0001.DBF", "LNDX0001.DBF"));
  const LineList list = readLineLibrary(folder(), "LMSX0001", {});
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].description, "7/8 in foam, 50 ohm");
  EXPECT_EQ(list[0].fMin, 30);
  EXPECT_EQ(list[0].fMax, 450);
  EXPECT_EQ(list[1].id, "F12");
  EXPECT_EQ(list[1].description, "");
}

TEST_F(AddingLines, TheTablesHaveTheFieldsOfALineLibrary) {
  add(twoLines());
  const auto master = DbfFile::open(tablePath("LMSX0001"), true);
  const auto points = DbfFile::open(tablePath("LNDX0001"), true);
  EXPECT_EQ(master->fields()[0].name + " " + std::to_string(master->fields()[0].width), "LTYPE_ID 10");
  EXPECT_EQ(master->fields()[1].name + " " + std::to_string(master->fields()[1].width), "LN_TYPE 75");
  EXPECT_EQ(points->fields()[1].name + points->fields()[1].type, "FREQN");
  EXPECT_EQ(points->fields()[2].name + points->fields()[2].type, "ATTENN");
}

TEST_F(AddingLines, WhatWasAddedIsWhatIsLost) {
  add(twoLines());
  EXPECT_DOUBLE_EQ(loss("LMSX0001", "F78", 100, "ft", 30).Loss, 0.195);
  EXPECT_DOUBLE_EQ(loss("LMSX0001", "F78", 100, "ft", 450).Loss, 0.808);
}

TEST_F(AddingLines, AFigurePerHundredMetresKeepsItsDigits) {
  add({{"M", "m", 2, {{100, 1.1931 * 0.3048, 2}, {200, 1, 3}}}});
  EXPECT_NEAR(loss("LMSX0001", "M", 100, "m", 100).Loss, 1.1931, 1e-12);
}

TEST_F(AddingLines, FurtherLinesGoBehindThoseThatAreThere) {
  add(twoLines());
  const AddedLines added = add(oneLine("NEW"), "lmsx0001.dbf");
  EXPECT_EQ(added.lines, 1U);
  EXPECT_EQ(added.points, 2U);
  const LineList list = readLineLibrary(folder(), "LMSX0001", {});
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[2].id, "NEW");
  EXPECT_EQ(list[0].fMax, 450);
}

TEST_F(AddingLines, ALibraryOfOtherWidthsAndFieldsTakesLinesToo) {
  makeLibrary("X0001");
  add(twoLines());
  EXPECT_THAT(faultTexts(), IsEmpty());
  EXPECT_DOUBLE_EQ(loss("LMSX0001", "F78", 100, "ft", 450).Loss, 0.808);
}

TEST_F(AddingLines, AnIdThatExistsIsRefusedByNameAndNothingIsAdded) {
  add(twoLines());
  const std::string master = bytesOf("LMSX0001");
  const std::string points = bytesOf("LNDX0001");
  std::vector<LineType> lines = oneLine("NEW");
  lines.push_back(oneLine("f78")[0]);
  const AddedLines added = add(lines);
  EXPECT_THAT(faultTexts(), ElementsAre("7: the library has a line \"f78\" already"));
  EXPECT_EQ(added.lines + added.points, 0U);
  EXPECT_EQ(bytesOf("LMSX0001"), master);
  EXPECT_EQ(bytesOf("LNDX0001"), points);
}

TEST_F(AddingLines, PointsWithoutTheirLineAreNotMixedWithNewOnes) {
  makeLibrary("X0001");
  addPoints("X0001", "LOST", {{5, 5}});
  add(oneLine("LOST"));
  EXPECT_THAT(faultTexts(),
              ElementsAre("7: the library has points of a line \"LOST\" already, without the line itself"));
}

TEST_F(AddingLines, ADeletedLineIsNoHindrance) {
  add(oneLine("A"));
  DbfFile::open(tablePath("LMSX0001"))->markDeleted(0);
  DbfFile::open(tablePath("LNDX0001"))->markDeleted(0);
  DbfFile::open(tablePath("LNDX0001"))->markDeleted(1);
  EXPECT_EQ(add(oneLine("A")).lines, 1U);
  EXPECT_THAT(faultTexts(), IsEmpty());
}

TEST_F(AddingLines, WhatTheFieldsCannotHoldIsAFaultAndMakesNoFile) {
  add({{"ABCDEFGHIJK", "d", 1, {}}, {"A", "\xE2\x84\xA6 line", 2, {{1e15, 1, 3}, {2e15, 1e16, 4}}}});
  EXPECT_THAT(faultTexts(), ElementsAre("1: \"ABCDEFGHIJK\" is longer than the field LType_ID of the library",
                                        "2: \"\xE2\x84\xA6 line\" holds characters that the library cannot",
                                        "3: 1E+15 is too large for the field Freq of the library",
                                        "4: 1E+16 is too large for the field Atten of the library",
                                        "4: 2E+15 is too large for the field Freq of the library"));
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(AddingLines, NumbersThatVanishOrBecomeOneInTheFieldAreFaults) {
  add(oneLine("A", 1e-7, 1e-9));
  EXPECT_THAT(faultTexts(), ElementsAre("7: 1E-09 becomes 0 in the field Atten of the library",
                                        "7: 1E-07 becomes 0 in the field Freq of the library"));
  add(oneLine("A", 1000 - 1e-8));
  EXPECT_THAT(faultTexts(), ElementsAre("8: 1000 becomes 1000 in the field Freq of the library"));
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(AddingLines, ANameThatNoLineLibraryBearsIsRefused) {
  for (const char* name : {"AMSX0001", "LMSX001", "LMSX00011", "LMS", "LMSX 001", "LMSX[001", "LMSX001]", ""}) {
    std::string text;
    EXPECT_EQ(failureOf([&] { add(twoLines(), name); }, &text), failure::internalError) << name;
    EXPECT_THAT(text, HasSubstr("as in LMSX0001"));
  }
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(AddingLines, ALibraryOfOneTableIsRefusedAndNamesTheOther) {
  makeMaster("X0001");
  std::string text;
  EXPECT_EQ(failureOf([&] { add(twoLines()); }, &text), failure::fileNotFound);
  EXPECT_THAT(text, HasSubstr(suite.folder().machine("LINES/LNDX0001.DBF") + " is missing"));
  makeLibrary("X0002");
  removeTable("LMSX0002");
  EXPECT_EQ(failureOf([&] { add(twoLines(), "LMSX0002"); }, &text), failure::fileNotFound);
  EXPECT_THAT(text, HasSubstr(suite.folder().machine("LINES/LMSX0002.DBF") + " is missing"));
  EXPECT_THAT(files(), ::testing::UnorderedElementsAre("LMSX0001.DBF", "LNDX0002.DBF"));
}

TEST_F(AddingLines, AFolderThatIsNotThereIsAFailure) {
  EXPECT_NE(failureOf([&] { addLines(suite.file("NOWHERE"), "LMSX0001", twoLines(), faults); }), 0);
  EXPECT_FALSE(suite.folder().exists("NOWHERE"));
}

TEST_F(AddingLines, AFileThatIsNoTableStaysAsItIs) {
  makeLibrary("X0001");
  suite.folder().write("LINES/LNDX0001.DBF", "this is no table");
  EXPECT_EQ(failureOf([&] { add(twoLines()); }), failure::damagedTable);
  EXPECT_EQ(bytesOf("LNDX0001"), "this is no table");
}

TEST_F(AddingLines, WhicheverWriteFailsANewLibraryIsWholeOrNotThere) {
  platform::FaultPlatform faulty(platform::operatingSystem());
  const platform::Substitute substitute(faulty);
  faulty.reset();
  add(twoLines());
  const int calls = faulty.calls();
  ASSERT_GT(calls, 6);
  for (int call = 1; call <= calls; ++call) {
    removeTable("LMSX0001");
    removeTable("LNDX0001");
    faulty.failAt(call, failure::deviceIO);
    const int number = failureOf([&] { add(twoLines()); });
    faulty.reset();
    if (number == 0 || suite.folder().exists("LINES/LMSX0001.DBF")) {
      EXPECT_EQ(readLineLibrary(folder(), "LMSX0001", {}).size(), 2U) << call;
      EXPECT_EQ(files().size(), 2U) << call;
    } else {
      EXPECT_THAT(files(), IsEmpty()) << call;
      add(twoLines());
    }
  }
}

TEST_F(AddingLines, WhicheverWriteFailsAnOldLibraryIsAsItWasOrHasAll) {
  makeLibrary("X0001");
  addLine("X0001", "OLD", "old");
  addPoints("X0001", "OLD", {{10, 1}, {20, 2}});
  const std::string master = bytesOf("LMSX0001");
  const std::string points = bytesOf("LNDX0001");
  platform::FaultPlatform faulty(platform::operatingSystem());
  const platform::Substitute substitute(faulty);
  faulty.reset();
  add(twoLines());
  const int calls = faulty.calls();
  ASSERT_GT(calls, 2);
  int failed = 0;
  for (int call = 1; call <= calls; ++call) {
    suite.folder().write("LINES/LMSX0001.DBF", master);
    suite.folder().write("LINES/LNDX0001.DBF", points);
    faulty.failAt(call, failure::deviceIO);
    const bool refused = failureOf([&] { add(twoLines()); }) != 0;
    failed += refused ? 1 : 0;
    faulty.reset();
    EXPECT_EQ(readLineLibrary(folder(), "LMSX0001", {}).size(), refused ? 1U : 3U) << call;
    EXPECT_EQ(loss("LMSX0001", "F78", 100, "ft", 30).Failed, refused) << call;
    EXPECT_EQ(loss("LMSX0001", "OLD", 100, "ft", 20).Loss, 2) << call;
    EXPECT_EQ(files().size(), 2U) << call;
    if (refused) add(twoLines());
    EXPECT_THAT(faultTexts(), IsEmpty()) << call;
  }
  EXPECT_GT(failed, 1);
}

}  // namespace

}  // namespace vantrelix::test

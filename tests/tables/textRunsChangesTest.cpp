// Changes to a table whose texts are known are seen by the next question, whoever made them.
#include <gtest/gtest.h>
#include <utility>

#include "tables/CutsTable.h"

namespace vantrelix {
namespace {

using TextRuns = test::CutsTable;  // of files that another machine gives their times

TEST_F(TextRuns, AChangeOfAnotherProgramIsSeenByTheNextQuestion) {
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 50);
  putIdInAnotherProgram(999, "ID003");
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

TEST_F(TextRuns, ACursorThatIsOpenSeesItAtItsRequery) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  putIdInAnotherProgram(0, "ID003");
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 51);
}

TEST_F(TextRuns, RowsThatAnotherProgramAddsAndDeletesAreSeen) {
  learn();
  inAnotherProgram([](DbfFile& table) {
    table.append(record(table, "ID003", 50).data());
    table.append(record(table, "NEW", 0).data());
    table.markDeleted(0);
  });
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("NEW")), 1);
  EXPECT_EQ(count(isUpper("ID000")), 49);
}

TEST_F(TextRuns, WhatThisProgramWritesIsSeen) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->Edit();
  rows->put("ID", "ID004");
  rows->Update();
  rows->AddNew();
  rows->put("ID", "NEW");
  rows->Update();
  rows->MoveNext();
  rows->Delete();
  EXPECT_EQ(count(isUpper("ID003")), 48);
  EXPECT_EQ(count(isUpper("ID004")), 51);
  EXPECT_EQ(count(isUpper("NEW")), 1);
}

TEST_F(TextRuns, WhatThisProgramHasWrittenIsKnownAfterOneQuestion) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->Edit();
  rows->put("PLACE", 77);
  rows->Update();
  wait(5000);
  EXPECT_GT(cost(isUpper("ID003")), kAll);
  EXPECT_LT(cost(isUpper("ID004")), kAll / 4);
}

TEST_F(TextRuns, AFileInThePlaceOfTheTableIsReadAnew) {
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 50);
  const std::string other = path() + ".new";
  DbfFile::create(other, {{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}});
  {
    const auto table = DbfFile::open(other);
    table->append(record(*table, "ID003", 1).data());
  }
  platform::current().rename(other, path());
  EXPECT_EQ(count(isUpper("ID003")), 1);
  EXPECT_EQ(count(isUpper("ID004")), 0);
}

TEST_F(TextRuns, ATableThatHasNoRowsYetIsAskedAgain) {
  create();
  age();
  learn();
  EXPECT_EQ(count(isUpper("ID003")), 0);
  inAnotherProgram([](DbfFile& table) { table.append(record(table, "ID003", 1).data()); });
  EXPECT_EQ(count(isUpper("ID003")), 1);
}

TEST_F(TextRuns, ATableThatChangesWhileItIsReadIsNotKnown) {
  count(isUpper("NONE"));
  wait(5000);
  bool changed = false;
  scanBlocksForText(*DbfFile::open(path()), {1, 12, "ID019"}, [&](std::uint32_t, const unsigned char*, std::uint32_t) {
    if (std::exchange(changed, true)) return true;
    putIdInAnotherProgram(0, "ID019");
    EXPECT_EQ(count(isUpper("ID000")), 49);
    return true;
  });
  EXPECT_TRUE(changed);
  EXPECT_EQ(count(isUpper("ID019")), 51);
}

// --- A write of this program, and another program's within the same tick of the clock.

TEST_F(TextRuns, AnotherProgramsWriteRightBehindOneOfThisProgramIsSeen) {
  learn();
  writeOwn("ID005");
  EXPECT_EQ(count(isUpper("ID003")), 50);
  giveRowTo3(999);
  EXPECT_EQ(count(isUpper("ID003")), 51);
  wait(60);
  giveRowTo3(998);
  EXPECT_EQ(count(isUpper("ID003")), 52);
  EXPECT_EQ(count(isUpper("ID019")), 48);
}

TEST_F(TextRuns, AnotherProgramsWriteRightBeforeOneOfThisProgramIsSeen) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID005"));
  rows->Edit();
  rows->put("PLACE", 77);
  putIdInAnotherProgram(999, "ID003");
  rows->Update();
  EXPECT_EQ(count(isUpper("ID003")), 51);
  wait(5000);
  EXPECT_EQ(count(isUpper("ID003")), 51);
  EXPECT_EQ(count(isUpper("ID019")), 49);
}

TEST_F(TextRuns, ARowThatThisProgramAddsIsSeenThoughAnotherAddsOneToo) {
  learn();
  const RecordsetPtr rows = open(isUpper("ID003"));
  rows->AddNew();
  rows->put("ID", "ID003");
  rows->Update();
  inAnotherProgram([](DbfFile& table) { table.append(record(table, "ID003", 51).data()); });
  EXPECT_EQ(count(isUpper("ID003")), 52);
  wait(5000);
  EXPECT_EQ(count(isUpper("ID003")), 52);
  EXPECT_EQ(count(isUpper("ID003")), 52);
}

}  // namespace
}  // namespace vantrelix

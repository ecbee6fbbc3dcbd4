// What an INSERT writes, where it ends and what it refuses.
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "platform/RunTimeFailure.h"
#include "tables/DbfBytes.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

struct InsertTables : CursorTables {
  InsertTables() {
    DbfFile::create(folder.file("AMSNEW.DBF"), {{"GAIN", 'N', 8, 2},
                                                {"ATYPE_ID", 'C', 15, 0},
                                                {"EXTRA", 'C', 5, 0},
                                                {"FREQ", 'C', 10, 0},
                                                {"ANTENNA", 'C', 4, 0}});
  }
};

TEST(Execute, CopiesTheFieldsNamedAndLeavesTheRestBlank) {
  const InsertTables tables;
  EXPECT_EQ(tables.database->Execute("Insert Into [AMSNEW] Select ATYPE_ID, GAIN From [AMSTEST]"), 4);
  EXPECT_EQ(tables.list("select * from AMSNEW"), "2.15 10 9.5 -");
  EXPECT_EQ(tables.list("select * from AMSNEW", "ATYPE_ID"), "A1 B2 A1 C3");
  EXPECT_EQ(tables.list("select * from AMSNEW", "EXTRA"), "- - - -");
}

TEST(Execute, TakesATargetListAFilterAndExpressions) {
  const InsertTables tables;
  EXPECT_EQ(tables.database->Execute("insert into AMSNEW (EXTRA, GAIN) select lcase(ATYPE_ID), GAIN*2 from AMSTEST "
                                     "where GAIN is not null;"),
            3);
  EXPECT_EQ(tables.list("select * from AMSNEW", "EXTRA"), "a1 b2 a1");
  EXPECT_EQ(tables.list("select * from AMSNEW"), "4.3 20 19");
}

TEST(Execute, ConvertsBetweenTextAndNumberAndKeepsNull) {
  const InsertTables tables;
  tables.database->Execute("Insert Into [AMSNEW] Select FREQ From [AMSTEST]");
  EXPECT_EQ(tables.list("select * from AMSNEW", "FREQ"), "150 900 - 450");
  tables.database->Execute("Insert Into [AMSNEW] (GAIN) Select FREQ From [AMSNEW]");
  EXPECT_EQ(tables.list("select * from AMSNEW"), "- - - - 150 900 - 450");
}

TEST(Execute, IntoTheTableItselfAddsWhatWasThere) {
  const CursorTables tables;
  EXPECT_EQ(tables.database->Execute("Insert Into [AMSTEST] Select * From [amstest]"), 4);
  EXPECT_EQ(tables.list("select * from AMSTEST"), "2.15 10 9.5 - 2.15 10 9.5 -");
}

TEST(Execute, NamesTheRowThatDoesNotFit) {
  const InsertTables tables;
  std::string text;
  EXPECT_EQ(
      failureNumberOf([&] { tables.database->Execute("Insert Into [AMSNEW] Select ANTENNA From [AMSTEST]"); }, &text),
      failure::fieldTooSmall);
  EXPECT_NE(text.find("Record 1 of table"), std::string::npos) << text;
  EXPECT_NE(text.find("ANTENNA"), std::string::npos) << text;
  EXPECT_EQ(tables.list("select * from AMSNEW"), "");
}

// What is told of the fifth row, whose text is too long for the field.
std::string refusalOfTheFifthRow(const InsertTables& tables) {
  const std::string sql = "Insert Into [AMSNEW] (EXTRA) Select ANTENNA From [AMSTEST] where GAIN > 9";
  std::string text;
  EXPECT_EQ(failureNumberOf([&] { tables.database->Execute(sql); }, &text), failure::fieldTooSmall);
  EXPECT_NE(text.find("Record 5 of table"), std::string::npos) << text;
  return text;
}

TEST(Execute, KeepsTheRowsBeforeTheOneThatDoesNotFit) {
  const InsertTables tables;
  tables.add("D4", "too long", 11, Value());
  tables.add("E5", "short", 12, Value());
  refusalOfTheFifthRow(tables);
  EXPECT_EQ(tables.list("select * from AMSNEW", "EXTRA"), "array panel");
}

TEST(Execute, NamesTheRowThatDoesNotFitEvenWhereThoseBeforeItCannotBeWritten) {
  const InsertTables tables;
  tables.add("D4", "too long", 11, Value());
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  faults.fillDiskAt(1);
  const std::string text = refusalOfTheFifthRow(tables);
  EXPECT_NE(text.find("Of the rows before it the last 2 could not be written either: "), std::string::npos) << text;
  faults.reset();
  EXPECT_EQ(tables.list("select * from AMSNEW", "EXTRA"), "");
}

TEST(Execute, TriesAWriteThatFailsOnce) {
  const InsertTables tables;
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  faults.failAt(1, failure::diskFull);
  EXPECT_EQ(failureNumberOf([&] { tables.database->Execute("Insert Into [AMSNEW] Select GAIN From [AMSTEST]"); }),
            failure::diskFull);
  faults.reset();
  EXPECT_EQ(tables.list("select * from AMSNEW"), "");
}

TEST(Execute, IntoTheTableItselfAddsAllOrNothing) {
  const CursorTables tables;
  tables.add("D4", "too long", 11, Value());
  const std::string sql = "Insert Into [AMSTEST] (ATYPE_ID) Select ANTENNA & ANTENNA From [AMSTEST] where GAIN > 9";
  EXPECT_EQ(failureNumberOf([&] { tables.database->Execute(sql); }), failure::fieldTooSmall);
  EXPECT_EQ(tables.list("select * from AMSTEST"), "2.15 10 9.5 - 11");
}

TEST(Execute, CopiesManyRowsInTheirOrder) {
  const InsertTables tables;
  for (int i = 0; i < 15; ++i) tables.database->Execute("Insert Into AMSTEST Select * From AMSTEST");
  EXPECT_EQ(tables.database->Execute("Insert Into AMSNEW Select ATYPE_ID From AMSTEST"), 4 << 15);
  const RecordsetPtr rows = tables.open("select count(*) as n from AMSNEW where ATYPE_ID = 'A1'");
  EXPECT_EQ(rows->value("n"), Value(2 << 15));
  const RecordsetPtr last = tables.open("select * from AMSNEW");
  last->MoveLast();
  EXPECT_EQ(trim(last->value("ATYPE_ID").text()), "C3");
}

TEST(Execute, RefusesWhatItCannotRun) {
  const InsertTables tables;
  const auto numberOf = [&](const std::string& sql) { return failureNumberOf([&] { tables.database->Execute(sql); }); };
  EXPECT_EQ(numberOf("Select * from [AMSTEST]"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [NOSUCH] Select GAIN From [AMSTEST]"), failure::noSuchTable);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] Select GAIN From [NOSUCH]"), failure::noSuchTable);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] Select MADE From [AMSTEST]"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] Select EXTRA From [AMSTEST]"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] (GAIN, EXTRA) Select GAIN From [AMSTEST]"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] Select max(GAIN) as GAIN From [AMSTEST]"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] Select GAIN From [AMSTEST] order by GAIN"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] (EXTRA, extra) Select ATYPE_ID, ANTENNA From [AMSTEST]"), failure::badQuery);
  EXPECT_EQ(numberOf("Insert Into [AMSNEW] Select ATYPE_ID, ANTENNA as [atype_id] From [AMSTEST]"), failure::badQuery);
  const DatabasePtr reader = DBEngine::OpenDatabase(tables.folder.path(), false, true);
  EXPECT_EQ(failureNumberOf([&] { reader->Execute("Insert Into [AMSNEW] Select GAIN From [AMSTEST]"); }),
            failure::readOnlyTable);
  EXPECT_EQ(tables.list("select * from AMSNEW"), "");
}

// No maker's program writes such a table, but damage does.
TEST(Execute, TakesTheFirstOfTwoFieldsOfANameBehindAStar) {
  const InsertTables tables;
  tables.folder.write("TWICE.DBF", test::RawTable{.fields = {{"EXTRA", 'C', 3}, {"GAIN", 'N', 2}, {"EXTRA", 'C', 3}},
                                                  .rows = " one 5two",
                                                  .count = 1}
                                       .bytes());
  EXPECT_EQ(tables.database->Execute("Insert Into [AMSNEW] Select * From [TWICE]"), 1);
  EXPECT_EQ(tables.list("select * from AMSNEW", "EXTRA"), "one");
  EXPECT_EQ(tables.list("select * from AMSNEW"), "5");
}

TEST(Execute, NamesThePlaceOfAFieldThatItsListHasTwice) {
  const InsertTables tables;
  std::string text;
  failureNumberOf([&] { tables.database->Execute("Insert Into [AMSNEW] (GAIN, [GAIN]) Select GAIN, 2 From AMSTEST"); },
                  &text);
  EXPECT_EQ(text.rfind("Field 'GAIN' at position 29 of the query is named twice", 0), 0U) << text;
  failureNumberOf([&] { tables.database->Execute("Insert Into [AMSNEW] Select GAIN, 2 as GAIN From AMSTEST"); }, &text);
  EXPECT_EQ(text.rfind("Field 'GAIN' at position 35 of the query is named twice", 0), 0U) << text;
  EXPECT_EQ(tables.list("select GAIN, GAIN from AMSTEST"), "2.15 10 9.5 -");
}

}  // namespace
}  // namespace vantrelix

#include <filesystem>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "support/Processes.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

TEST(Recordset, StandsOnItsFirstRow) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_FALSE(rows->Eof());
  EXPECT_FALSE(rows->Bof());
  EXPECT_EQ(rows->AbsolutePosition(), 0);
  EXPECT_EQ(rows->value("gain"), Value(2.15));
  EXPECT_EQ(rows->value("ATYPE_ID").text(), "A1          ");
  EXPECT_TRUE(rows->isOpen());
}

TEST(Recordset, WithoutRowsIsAtBothEnds) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("select * from AMSTEST where ATYPE_ID = 'none'");
  EXPECT_TRUE(rows->Eof());
  EXPECT_TRUE(rows->Bof());
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_EQ(rows->AbsolutePosition(), -1);
  for (const auto& move : {&Recordset::MoveFirst, &Recordset::MoveLast, &Recordset::MoveNext, &Recordset::MovePrevious,
                           &Recordset::Edit, &Recordset::Delete}) {
    EXPECT_EQ(failureOf([&] { (rows.get()->*move)(); }), failure::noCurrentRecord);
  }
  EXPECT_EQ(failureOf([&] { rows->value("GAIN"); }), failure::noCurrentRecord);
  EXPECT_EQ(failureOf([&] { rows->bookmark(); }), failure::noCurrentRecord);
}

TEST(Recordset, CountsTheRowsReachedSoFar) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->RecordCount(), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->MoveFirst();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->MoveLast();
  EXPECT_EQ(rows->RecordCount(), 4);
  EXPECT_EQ(tables.open("AMSTEST", RecordsetType::table)->RecordCount(), 4);
}

TEST(Recordset, MovesOnePastTheLastRowAndNoFurther) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MoveLast();
  EXPECT_FALSE(rows->Eof());
  rows->MoveNext();
  EXPECT_TRUE(rows->Eof());
  EXPECT_FALSE(rows->Bof());
  EXPECT_EQ(failureOf([&] { rows->value("GAIN"); }), failure::noCurrentRecord);
  EXPECT_EQ(failureOf([&] { rows->MoveNext(); }), failure::noCurrentRecord);
  rows->MovePrevious();
  EXPECT_EQ(rows->AbsolutePosition(), 3);
}

TEST(Recordset, MovesOneBeforeTheFirstRowAndNoFurther) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MovePrevious();
  EXPECT_TRUE(rows->Bof());
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(rows->AbsolutePosition(), -1);
  EXPECT_EQ(failureOf([&] { rows->MovePrevious(); }), failure::noCurrentRecord);
  rows->MoveNext();
  EXPECT_EQ(rows->AbsolutePosition(), 0);
}

TEST(Recordset, SettingThePositionMovesToTheRowCountedFromZero) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->setAbsolutePosition(2);
  EXPECT_EQ(rows->value("GAIN"), Value(9.5));
  EXPECT_EQ(rows->RecordCount(), 3);
  EXPECT_EQ(failureOf([&] { rows->setAbsolutePosition(4); }), failure::noCurrentRecord);
  EXPECT_EQ(failureOf([&] { rows->setAbsolutePosition(-1); }), failure::noCurrentRecord);
  EXPECT_EQ(rows->AbsolutePosition(), 2);
}

TEST(Recordset, ABookmarkReturnsToItsRow) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("select * from AMSTEST order by GAIN");
  rows->setAbsolutePosition(2);
  const Recordset::Bookmark mark = rows->bookmark();
  rows->MoveFirst();
  rows->setBookmark(mark);
  EXPECT_EQ(rows->value("GAIN"), Value(9.5));
  const RecordsetPtr other = tables.open(kAll);
  EXPECT_EQ(failureOf([&] { other->setBookmark(mark); }), failure::notABookmark);
  EXPECT_EQ(failureOf([&] { rows->setBookmark(mark + 100); }), failure::notABookmark);
}

TEST(Recordset, FieldsAreFoundWithoutRegardToCase) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->Fields("atype_ID").Name(), "ATYPE_ID");
  EXPECT_EQ(rows->Fields("Antenna").Size(), 20);
  EXPECT_EQ(rows->Fields("GAIN").decimals(), 4);
  EXPECT_EQ(rows->Fields("MADE").Type(), FieldType::date);
  EXPECT_EQ(rows->fieldCount(), 6U);
  std::string text;
  EXPECT_EQ(failureOf([&] { rows->Fields("NOSUCH"); }, &text), failure::noSuchField);
  EXPECT_NE(text.find("NOSUCH"), std::string::npos);
  EXPECT_EQ(failureOf([&] { rows->Fields(6); }), failure::noSuchField);
}

TEST(Recordset, ATextIsCutToItsFieldWithoutSplittingACharacter) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->Fields("ATYPE_ID").cut("12345678901\xC3\xA9yz"), "12345678901\xC3\xA9");
  EXPECT_EQ(rows->Fields("ATYPE_ID").cut("short"), "short");
}

TEST(FindFirst, MovesToTheFirstRowThatMatches) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->FindFirst("ATYPE_ID = 'B2'");
  EXPECT_FALSE(rows->NoMatch());
  EXPECT_EQ(rows->AbsolutePosition(), 1);
  rows->FindFirst("val(GAIN) = 9.5");
  EXPECT_EQ(rows->AbsolutePosition(), 2);
  rows->FindFirst("[Atype_id] = 'A1'");
  EXPECT_EQ(rows->AbsolutePosition(), 0);
}

TEST(FindFirst, WithoutAMatchSaysSoAndDoesNotFail) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_FALSE(rows->NoMatch());
  rows->FindFirst("ATYPE_ID = 'none'");
  EXPECT_TRUE(rows->NoMatch());
  rows->FindFirst("ATYPE_ID = 'C3'");
  EXPECT_FALSE(rows->NoMatch());
  EXPECT_EQ(failureOf([&] { rows->FindFirst("ATYPE_ID = "); }), failure::badQuery);
  EXPECT_EQ(failureOf([&] { rows->FindFirst(""); }), failure::badQuery);
  EXPECT_EQ(failureOf([&] { rows->FindFirst("NOSUCH = 1"); }), failure::badQuery);
}

TEST(FindFirst, StaysAmongTheRowsAndInTheOrderOfTheCursor) {
  const CursorTables tables;
  const RecordsetPtr ordered = tables.open("select * from AMSTEST order by GAIN desc");
  ordered->FindFirst("ATYPE_ID = 'A1'");
  EXPECT_EQ(ordered->value("GAIN"), Value(9.5));
  const RecordsetPtr some = tables.open("select * from AMSTEST where GAIN > 5");
  some->FindFirst("ATYPE_ID = 'A1'");
  EXPECT_EQ(some->AbsolutePosition(), 1);
  some->FindFirst("ATYPE_ID = 'C3'");
  EXPECT_TRUE(some->NoMatch());
  tables.add("NEW", "later", 7, 1);
  ordered->FindFirst("ATYPE_ID = 'NEW'");
  EXPECT_TRUE(ordered->NoMatch());
}

TEST(FindFirst, InAFewRowsOfALargeTableGivesTheSame) {
  const CursorTables tables;
  for (int i = 0; i < 40; ++i) tables.add("FILL", "x", i, i);
  tables.add("A1", "last", 77, 1);
  const RecordsetPtr rows = tables.open("select * from AMSTEST where ATYPE_ID = 'A1'");
  rows->FindFirst("GAIN = 77");
  EXPECT_EQ(rows->AbsolutePosition(), 2);
  rows->FindFirst("ATYPE_ID = 'FILL'");
  EXPECT_TRUE(rows->NoMatch());
}

TEST(AddNew, WritesARowThatStandsAtTheEnd) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MoveNext();
  rows->AddNew();
  EXPECT_TRUE(rows->editing());
  EXPECT_TRUE(rows->value("ATYPE_ID").isNull());
  rows->put("ATYPE_ID", "D4");
  rows->put("gain", 12.5);
  EXPECT_EQ(rows->value("GAIN"), Value(12.5));
  rows->Update();
  EXPECT_EQ(rows->AbsolutePosition(), 1);
  EXPECT_EQ(rows->value("GAIN"), Value(10));
  rows->MoveLast();
  EXPECT_EQ(rows->value("GAIN"), Value(12.5));
  EXPECT_TRUE(rows->value("FREQ").isNull());
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 - 12.5");
}

TEST(AddNew, FillsAnEmptyTable) {
  const CursorTables tables;
  DbfFile::create(tables.folder.file("EMPTY.DBF"), {{"X", 'N', 5, 0}});
  const RecordsetPtr rows = tables.open("select * from EMPTY");
  rows->AddNew();
  rows->put("X", 5);
  rows->Update();
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(rows->RecordCount(), 1);
  rows->MoveFirst();
  EXPECT_EQ(rows->value("X"), Value(5));
}

TEST(AddNew, IsDroppedByCancelUpdateAndByAMove) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->AddNew();
  rows->CancelUpdate();
  EXPECT_FALSE(rows->editing());
  rows->AddNew();
  rows->MoveNext();
  EXPECT_FALSE(rows->editing());
  EXPECT_EQ(failureOf([&] { rows->Update(); }), failure::updateWithoutEdit);
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 -");
}

TEST(Edit, WritesTheFieldsThatWerePut) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->setAbsolutePosition(1);
  rows->Edit();
  rows->put("GAIN", 11);
  rows->put("FREQ", Value());
  EXPECT_EQ(tables.list(kAll), "2.15 10 9.5 -");
  rows->Update();
  EXPECT_EQ(rows->value("GAIN"), Value(11));
  EXPECT_EQ(tables.list(kAll), "2.15 11 9.5 -");
  EXPECT_EQ(tables.list(kAll, "FREQ"), "150 - - 450");
  EXPECT_EQ(tables.list(kAll, "ANTENNA"), "Dipole array panel -");
}

TEST(Edit, IsNeededBeforeAPut) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(failureOf([&] { rows->put("GAIN", 1); }), failure::updateWithoutEdit);
  EXPECT_EQ(failureOf([&] { rows->Update(); }), failure::updateWithoutEdit);
  rows->Edit();
  rows->put("GAIN", 1);
  rows->CancelUpdate();
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  EXPECT_EQ(failureOf([&] { rows->put("GAIN", 1); }), failure::updateWithoutEdit);
}

TEST(Edit, StaysOpenWhenAValueDoesNotFit) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->Edit();
  rows->put("ANTENNA", "kept");
  EXPECT_EQ(failureOf([&] { rows->put("ATYPE_ID", "much too long for it"); }), failure::fieldTooSmall);
  EXPECT_EQ(failureOf([&] { rows->put("GAIN", 1234567890123.0); }), failure::fieldTooSmall);
  EXPECT_TRUE(rows->editing());
  rows->Update();
  EXPECT_EQ(tables.list(kAll, "ANTENNA"), "kept array panel -");
  EXPECT_EQ(tables.list(kAll, "ATYPE_ID"), "A1 B2 A1 C3");
}

TEST(Edit, KeepsWhatAnotherWroteToOtherFields) {
  const CursorTables tables;
  const RecordsetPtr mine = tables.open(kAll);
  const RecordsetPtr other = tables.open(kAll);
  mine->Edit();
  mine->put("GAIN", 3);
  other->Edit();
  other->put("FREQ", 175);
  other->Update();
  mine->Update();
  EXPECT_EQ(mine->value("GAIN"), Value(3));
  EXPECT_EQ(mine->value("FREQ"), Value(175));
}

TEST(Edit, FailsWhereAnotherChangedTheFieldThatWasPut) {
  const CursorTables tables;
  const RecordsetPtr mine = tables.open(kAll);
  const RecordsetPtr other = tables.open(kAll);
  mine->Edit();
  mine->put("GAIN", 3);
  other->Edit();
  other->put("GAIN", 4);
  other->Update();
  std::string text;
  EXPECT_EQ(failureOf([&] { mine->Update(); }, &text), failure::dataChanged);
  EXPECT_NE(text.find("'GAIN'"), std::string::npos) << text;
  EXPECT_NE(text.find("AMSTEST.DBF"), std::string::npos) << text;
  mine->CancelUpdate();
  EXPECT_EQ(mine->value("GAIN"), Value(4));
}

TEST(Delete, LeavesTheRowCurrentWithoutValuesUntilTheNextMove) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MoveNext();
  rows->Delete();
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(failureOf([&] { rows->value("GAIN"); }), failure::recordDeleted);
  EXPECT_EQ(failureOf([&] { rows->Edit(); }), failure::recordDeleted);
  EXPECT_EQ(failureOf([&] { rows->Delete(); }), failure::recordDeleted);
  rows->MoveNext();
  EXPECT_EQ(rows->value("GAIN"), Value(9.5));
  EXPECT_EQ(rows->AbsolutePosition(), 1);
  EXPECT_EQ(tables.list(kAll), "2.15 9.5 -");
}

TEST(Delete, OfEveryRowEmptiesTheCursor) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MoveLast();
  const Recordset::Bookmark last = rows->bookmark();
  rows->MoveFirst();
  rows->Delete();
  rows->setBookmark(last);
  EXPECT_EQ(rows->AbsolutePosition(), 2);
  for (rows->MoveFirst(); !rows->Eof(); rows->MoveNext()) rows->Delete();
  EXPECT_TRUE(rows->Bof());
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_EQ(failureOf([&] { rows->setBookmark(last); }), failure::notABookmark);
  EXPECT_EQ(tables.list(kAll), "");
}

TEST(Delete, ByAnotherCursorIsSeenAtTheNextRead) {
  const CursorTables tables;
  const RecordsetPtr mine = tables.open(kAll);
  const RecordsetPtr other = tables.open(kAll);
  EXPECT_EQ(mine->value("GAIN"), Value(2.15));
  other->Delete();
  EXPECT_EQ(failureOf([&] { mine->value("GAIN"); }), failure::recordDeleted);
  mine->MoveNext();
  EXPECT_EQ(mine->value("GAIN"), Value(10));
  mine->FindFirst("ATYPE_ID = 'A1'");
  EXPECT_EQ(mine->value("GAIN"), Value(9.5));
}

TEST(Requery, ShowsTheRowsThatAnotherCursorAdded) {
  const CursorTables tables;
  const RecordsetPtr mine = tables.open("select * from AMSTEST order by GAIN");
  const RecordsetPtr other = tables.open(kAll);
  other->AddNew();
  other->put("GAIN", 5);
  other->Update();
  other->MoveFirst();
  other->Edit();
  other->put("GAIN", 6);
  other->Update();
  mine->MoveNext();
  EXPECT_EQ(mine->value("GAIN"), Value(6));
  mine->MoveLast();
  EXPECT_EQ(mine->RecordCount(), 4);
  mine->Requery();
  EXPECT_EQ(mine->AbsolutePosition(), 0);
  mine->MoveNext();
  EXPECT_EQ(mine->value("GAIN"), Value(5));
  mine->MoveLast();
  EXPECT_EQ(mine->RecordCount(), 5);
}

TEST(Requery, ComputesAggregatesAnew) {
  const CursorTables tables;
  const RecordsetPtr row = tables.open("select max(GAIN) as m, count(*) as n from AMSTEST");
  tables.add("D4", "x", 99, 1);
  EXPECT_EQ(row->value("m"), Value(10));
  row->Requery();
  EXPECT_EQ(row->value("m"), Value(99));
  EXPECT_EQ(row->value("n"), Value(5));
}

TEST(Requery, GoesToTheFileThatTookTheTablesPlace) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  DbfFile::create(tables.folder.file("AMSTEST.DBF"), {{"OTHER", 'C', 4, 0}});
  test::addCells(tables.folder.file("AMSTEST.DBF"), {{"OTHER", "new"}});
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  rows->Requery();
  EXPECT_EQ(rows->fieldCount(), 1U);
  EXPECT_EQ(trim(rows->value("OTHER").text()), "new");
}

TEST(Recordset, OfAComputedResultCannotBeChanged) {
  const CursorTables tables;
  for (const char* sql : {"select max(GAIN) as m from AMSTEST", "select GAIN, GAIN*2 as m from AMSTEST"}) {
    const RecordsetPtr rows = tables.open(sql);
    EXPECT_EQ(failureOf([&] { rows->AddNew(); }), failure::readOnlyTable);
    EXPECT_EQ(failureOf([&] { rows->Edit(); }), failure::readOnlyTable);
    EXPECT_EQ(failureOf([&] { rows->Delete(); }), failure::readOnlyTable);
    EXPECT_EQ(failureOf([&] { rows->put("m", 1); }), failure::readOnlyTable);
  }
  EXPECT_EQ(failureOf([&] { tables.open("select max(GAIN) as m from AMSTEST")->FindFirst("m = 1"); }),
            failure::badQuery);
}

TEST(Recordset, OfAReadingKindCannotBeChanged) {
  const CursorTables tables;
  const DatabasePtr reader = DBEngine::OpenDatabase(tables.folder.path(), false, true);
  for (const RecordsetPtr& rows :
       {tables.open(kAll, RecordsetType::snapshot), tables.open(kAll, RecordsetType::forwardOnly),
        tables.open(kAll, RecordsetType::dynaset, recordsetOption::readOnly), reader->OpenRecordset(kAll)}) {
    EXPECT_EQ(rows->value("GAIN"), Value(2.15));
    EXPECT_EQ(failureOf([&] { rows->Edit(); }), failure::readOnlyTable);
    EXPECT_EQ(failureOf([&] { rows->AddNew(); }), failure::readOnlyTable);
  }
}

TEST(Recordset, ASelectionOfFieldsCanBeChanged) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("select GAIN as G from AMSTEST where ATYPE_ID = 'B2'");
  rows->Edit();
  rows->put("g", 10.25);
  rows->Update();
  EXPECT_EQ(tables.list(kAll), "2.15 10.25 9.5 -");
}

TEST(Recordset, FailsWithEveryCallAfterClose) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field field = rows->Fields("GAIN");
  rows->Close();
  EXPECT_FALSE(rows->isOpen());
  EXPECT_EQ(failureOf([&] { rows->Eof(); }), failure::objectNotSet);
  EXPECT_EQ(failureOf([&] { rows->MoveFirst(); }), failure::objectNotSet);
  EXPECT_EQ(failureOf([&] { field.value(); }), failure::objectNotSet);
  EXPECT_EQ(failureOf([&] { rows->Close(); }), failure::objectNotSet);
}

TEST(Recordset, ShowsWhatAnotherProcessWroteAtTheNextMove) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  EXPECT_EQ(test::exitCode(test::startChild([&] {
              const RecordsetPtr other = tables.open(kAll);
              other->Edit();
              other->put("GAIN", 7);
              other->Update();
              other->AddNew();
              other->put("ATYPE_ID", "D4");
              other->Update();
              return true;
            })),
            0);
  rows->MoveFirst();
  EXPECT_EQ(rows->value("GAIN"), Value(7));
  rows->Requery();
  rows->FindFirst("ATYPE_ID = 'D4'");
  EXPECT_FALSE(rows->NoMatch());
}

TEST(Recordset, TwoProcessesAppendEveryRowOnce) {
  constexpr int kRows = 300;
  const CursorTables tables;
  const auto appendRows = [&](const std::string& id) {
    const RecordsetPtr rows = tables.open("select * from AMSTEST where ATYPE_ID = '" + id + "'");
    for (int i = 0; i < kRows; ++i) {
      rows->AddNew();
      rows->put("ATYPE_ID", id);
      rows->put("GAIN", i);
      rows->Update();
    }
    rows->MoveLast();
    return rows->RecordCount() == kRows && rows->value("GAIN") == Value(kRows - 1);
  };
  const pid_t first = test::startChild([&] { return appendRows("P1"); });
  const pid_t second = test::startChild([&] { return appendRows("P2"); });
  EXPECT_EQ(test::exitCode(first), 0);
  EXPECT_EQ(test::exitCode(second), 0);
  for (const std::string id : {"P1", "P2"}) {
    const RecordsetPtr rows = tables.open("select * from AMSTEST where ATYPE_ID = '" + id + "' order by GAIN");
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), kRows);
    EXPECT_EQ(rows->value("GAIN"), Value(kRows - 1));
  }
}

// A row written to a file that no longer has a name would be lost without a word.
TEST(RemovedTable, TakesNoMoreWrites) {
  const test::CursorTables tables;
  const RecordsetPtr rows = tables.database->OpenRecordset("Select * from [AMSTEST]");
  std::filesystem::remove(tables.folder.machine("AMSTEST.DBF"));
  rows->Edit();
  rows->put("ANTENNA", "lost");
  EXPECT_EQ(test::failureOf([&] { rows->Update(); }), failure::noSuchTable);
  rows->AddNew();
  EXPECT_EQ(test::failureOf([&] { rows->Update(); }), failure::noSuchTable);
}

TEST(ReplacedTable, TakesWritesOnlyFromThoseWhoOpenItAgain) {
  const test::CursorTables tables;
  const RecordsetPtr rows = tables.database->OpenRecordset("Select * from [AMSTEST]");
  std::filesystem::copy_file(tables.folder.machine("AMSTEST.DBF"), tables.folder.machine("NEW.DBF"));
  std::filesystem::rename(tables.folder.machine("NEW.DBF"), tables.folder.machine("AMSTEST.DBF"));
  rows->Edit();
  rows->put("ANTENNA", "lost");
  EXPECT_EQ(test::failureOf([&] { rows->Update(); }), failure::noSuchTable);
  rows->Requery();
  rows->Edit();
  rows->put("ANTENNA", "kept");
  EXPECT_EQ(test::failureOf([&] { rows->Update(); }), 0);
}

}  // namespace
}  // namespace vantrelix

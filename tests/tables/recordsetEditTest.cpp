// Rows added, edited and deleted through a cursor, and the cursors that refuse it.
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

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
  EXPECT_EQ(failureNumberOf([&] { rows->Update(); }), failure::updateWithoutEdit);
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
  EXPECT_EQ(failureNumberOf([&] { rows->put("GAIN", 1); }), failure::updateWithoutEdit);
  EXPECT_EQ(failureNumberOf([&] { rows->Update(); }), failure::updateWithoutEdit);
  rows->Edit();
  rows->put("GAIN", 1);
  rows->CancelUpdate();
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  EXPECT_EQ(failureNumberOf([&] { rows->put("GAIN", 1); }), failure::updateWithoutEdit);
}

TEST(Edit, StaysOpenWhenAValueDoesNotFit) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->Edit();
  rows->put("ANTENNA", "kept");
  EXPECT_EQ(failureNumberOf([&] { rows->put("ATYPE_ID", "much too long for it"); }), failure::fieldTooSmall);
  EXPECT_EQ(failureNumberOf([&] { rows->put("GAIN", 1234567890123.0); }), failure::fieldTooSmall);
  EXPECT_TRUE(rows->editing());
  rows->Update();
  EXPECT_EQ(tables.list(kAll, "ANTENNA"), "kept array panel -");
  EXPECT_EQ(tables.list(kAll, "ATYPE_ID"), "A1 B2 A1 C3");
}

TEST(Delete, LeavesTheRowCurrentWithoutValuesUntilTheNextMove) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  rows->MoveNext();
  rows->Delete();
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(failureNumberOf([&] { rows->value("GAIN"); }), failure::recordDeleted);
  EXPECT_EQ(failureNumberOf([&] { rows->Edit(); }), failure::recordDeleted);
  EXPECT_EQ(failureNumberOf([&] { rows->Delete(); }), failure::recordDeleted);
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
  EXPECT_EQ(failureNumberOf([&] { rows->setBookmark(last); }), failure::notABookmark);
  EXPECT_EQ(tables.list(kAll), "");
}

TEST(Recordset, OfAComputedResultCannotBeChanged) {
  const CursorTables tables;
  for (const char* sql : {"select max(GAIN) as m from AMSTEST", "select GAIN, GAIN*2 as m from AMSTEST"}) {
    const RecordsetPtr rows = tables.open(sql);
    EXPECT_EQ(failureNumberOf([&] { rows->AddNew(); }), failure::readOnlyTable);
    EXPECT_EQ(failureNumberOf([&] { rows->Edit(); }), failure::readOnlyTable);
    EXPECT_EQ(failureNumberOf([&] { rows->Delete(); }), failure::readOnlyTable);
    EXPECT_EQ(failureNumberOf([&] { rows->put("m", 1); }), failure::readOnlyTable);
  }
  EXPECT_EQ(failureNumberOf([&] { tables.open("select max(GAIN) as m from AMSTEST")->FindFirst("m = 1"); }),
            failure::badQuery);
}

TEST(Recordset, OfAReadingKindCannotBeChanged) {
  const CursorTables tables;
  const DatabasePtr reader = DBEngine::OpenDatabase(tables.folder.path(), false, true);
  for (const RecordsetPtr& rows :
       {tables.open(kAll, RecordsetType::snapshot), tables.open(kAll, RecordsetType::forwardOnly),
        tables.open(kAll, RecordsetType::dynaset, recordsetOption::readOnly), reader->OpenRecordset(kAll)}) {
    EXPECT_EQ(rows->value("GAIN"), Value(2.15));
    EXPECT_EQ(failureNumberOf([&] { rows->Edit(); }), failure::readOnlyTable);
    EXPECT_EQ(failureNumberOf([&] { rows->AddNew(); }), failure::readOnlyTable);
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

}  // namespace
}  // namespace vantrelix

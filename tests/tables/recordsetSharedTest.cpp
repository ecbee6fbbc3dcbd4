// What a cursor shows, and does, where other cursors, processes and files change its table.
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "support/Processes.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

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
  EXPECT_EQ(failureNumberOf([&] { mine->Update(); }, &text), failure::dataChanged);
  EXPECT_NE(text.find("'GAIN'"), std::string::npos) << text;
  EXPECT_NE(text.find("AMSTEST.DBF"), std::string::npos) << text;
  mine->CancelUpdate();
  EXPECT_EQ(mine->value("GAIN"), Value(4));
}

TEST(Delete, ByAnotherCursorIsSeenAtTheNextRead) {
  const CursorTables tables;
  const RecordsetPtr mine = tables.open(kAll);
  const RecordsetPtr other = tables.open(kAll);
  EXPECT_EQ(mine->value("GAIN"), Value(2.15));
  other->Delete();
  EXPECT_EQ(failureNumberOf([&] { mine->value("GAIN"); }), failure::recordDeleted);
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

TEST(Requery, EndsTheFieldsAndBookmarksOfATableThatWasReplaced) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field gain = rows->Fields("GAIN"), last = rows->Fields(rows->fieldCount() - 1);
  const Recordset::Bookmark first = rows->bookmark();
  DbfFile::create(tables.folder.file("AMSTEST.DBF"), {{"OTHER", 'C', 4, 0}, {"GAIN", 'N', 8, 2}});
  test::addCells(tables.folder.file("AMSTEST.DBF"), {{"OTHER", "new"}, {"GAIN", "    7.50"}});
  rows->Requery();
  EXPECT_EQ(rows->value("GAIN"), Value(7.5));
  EXPECT_EQ(failureNumberOf([&] { gain.value(); }), failure::noSuchField);
  EXPECT_EQ(failureNumberOf([&] { last.Name(); }), failure::noSuchField);
  EXPECT_EQ(failureNumberOf([&] { rows->setBookmark(first); }), failure::notABookmark);
}

TEST(Requery, LeavesTheFieldsOfATableReplacedByOneWithTheSame) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  const Field gain = rows->Fields("GAIN");
  const Value before = gain.value();
  const std::filesystem::path path = tables.folder.machine("AMSTEST.DBF");
  std::filesystem::copy_file(path, path.string() + ".copy");
  std::filesystem::rename(path.string() + ".copy", path);
  rows->Requery();
  EXPECT_EQ(gain.value(), before);
}

TEST(Requery, FailsEachTimeWhereTheNewTableLacksAField) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select GAIN from AMSTEST");
  DbfFile::create(tables.folder.file("AMSTEST.DBF"), {{"OTHER", 'C', 4, 0}});
  EXPECT_EQ(failureNumberOf([&] { rows->Requery(); }), failure::badQuery);
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  EXPECT_EQ(failureNumberOf([&] { rows->Requery(); }), failure::badQuery);
  DbfFile::create(tables.folder.file("AMSTEST.DBF"), {{"OTHER", 'C', 4, 0}, {"GAIN", 'N', 8, 2}});
  test::addCells(tables.folder.file("AMSTEST.DBF"), {{"GAIN", "    7.50"}});
  rows->Requery();
  EXPECT_EQ(rows->value("GAIN"), Value(7.5));
}

TEST(Requery, FailsWhereTheTableWasRemovedAndKeepsItsRows) {
  const CursorTables tables;
  for (const int options : {0, recordsetOption::denyWrite}) {
    const RecordsetPtr rows = tables.database->OpenRecordset(kAll, RecordsetType::dynaset, options);
    rows->MoveNext();
    const std::string path = tables.folder.file("AMSTEST.DBF"), aside = tables.folder.file("ASIDE.DBF");
    platform::current().rename(path, aside);
    std::string text, atOpening;
    for (int times = 0; times < 2; ++times) {
      EXPECT_EQ(failureNumberOf([&] { rows->Requery(); }, &text), failure::noSuchTable) << options;
      EXPECT_EQ(rows->value("GAIN"), Value(10));
      EXPECT_EQ(rows->AbsolutePosition(), 1);
    }
    EXPECT_EQ(failureNumberOf([&] { tables.open(kAll); }, &atOpening), failure::noSuchTable);
    EXPECT_EQ(text, atOpening);
    platform::current().rename(aside, path);
    rows->Requery();
    EXPECT_EQ(rows->value("GAIN"), Value(2.15));
  }
}

TEST(Requery, FindsTheTableThatCameInAnotherCaseOfItsName) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  platform::current().rename(tables.folder.file("AMSTEST.DBF"), tables.folder.file("amstest.dbf"));
  rows->MoveLast();
  rows->Requery();
  EXPECT_EQ(rows->value("GAIN"), Value(2.15));
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
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  std::filesystem::remove(tables.folder.machine("AMSTEST.DBF"));
  rows->Edit();
  rows->put("ANTENNA", "lost");
  EXPECT_EQ(failureNumberOf([&] { rows->Update(); }), failure::noSuchTable);
  rows->AddNew();
  EXPECT_EQ(failureNumberOf([&] { rows->Update(); }), failure::noSuchTable);
}

TEST(ReplacedTable, TakesWritesOnlyFromThoseWhoOpenItAgain) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll);
  std::filesystem::copy_file(tables.folder.machine("AMSTEST.DBF"), tables.folder.machine("NEW.DBF"));
  std::filesystem::rename(tables.folder.machine("NEW.DBF"), tables.folder.machine("AMSTEST.DBF"));
  rows->Edit();
  rows->put("ANTENNA", "lost");
  EXPECT_EQ(failureNumberOf([&] { rows->Update(); }), failure::noSuchTable);
  rows->Requery();
  rows->Edit();
  rows->put("ANTENNA", "kept");
  EXPECT_EQ(failureNumberOf([&] { rows->Update(); }), 0);
}

}  // namespace
}  // namespace vantrelix

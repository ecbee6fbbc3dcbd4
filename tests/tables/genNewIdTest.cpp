#include <chrono>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::TempSuite;

struct IdTable : TempSuite {
  explicit IdTable(int size = 12, char type = 'C') : path(file("IDS.DBF")) {
    DbfFile::create(path, {{"ID", type, size, 0}, {"OTHER", 'C', 3, 0}});
  }
  void add(const Value& id) const { test::addRow(path, {{"ID", id}, {"OTHER", "x"}}); }
  RecordsetPtr open() const { return DBEngine::OpenDatabase(folder().path())->OpenRecordset("Select * from [IDS]"); }
  std::string next(const std::string& prefix = "Z0015", const std::string& start = "0000001") const {
    return GenNewID_RS(*open(), "ID", prefix, start);
  }
  std::string path;
};

int failureOf(const IdTable& table, const std::string& prefix, const std::string& start = "0000001") {
  try {
    table.next(prefix, start);
  } catch (const RunTimeFailure& failure) {
    return failure.number();
  }
  return 0;
}

TEST(GenNewID, AnEmptyTableGivesPrefixAndStartThatFillTheField) {
  EXPECT_EQ(IdTable(12).next(), "Z00150000001");
  EXPECT_EQ(IdTable(12).next(" Z0015 "), "Z00150000001");
  EXPECT_EQ(IdTable(8).next(), "Z0015001");
  EXPECT_EQ(IdTable(4).next("", "17"), "0017");
  EXPECT_EQ(IdTable(15).next(), "Z00150000000001");
}

TEST(GenNewID, TheNumberIsOneMoreThanTheRowCount) {
  IdTable table;
  table.add("Z00150000001");
  EXPECT_EQ(table.next(), "Z00150000002");
  table.add("Z00150000002");
  table.add("ANY TEXT");
  EXPECT_EQ(table.next(), "Z00150000004");
}

TEST(GenNewID, NumbersInUseArePassedOver) {
  IdTable table;
  for (const char* id : {"Z00150000003", "Z00150000005", "Z00150000004"}) table.add(id);
  EXPECT_EQ(table.next(), "Z00150000006");
  table.add("Z0015      7");
  EXPECT_EQ(table.next(), "Z00150000006");
  table.add("Z00150000006");
  EXPECT_EQ(table.next(), "Z00150000008");
}

TEST(GenNewID, NumbersFreedBelowTheRowCountAreNotUsedAgain) {
  IdTable table;
  for (const char* id : {"Z00150000001", "Z00150000002", "Z00150000003", "Z00150000009"}) table.add(id);
  DbfFile::open(table.path)->markDeleted(0);
  EXPECT_EQ(table.next(), "Z00150000004");
}

TEST(GenNewID, ALargerStartRaisesTheCandidate) {
  IdTable table;
  table.add("Z00150000001");
  EXPECT_EQ(table.next("Z0015", "0000500"), "Z00150000501");
  EXPECT_EQ(table.next("Z0015", "none"), "Z00150000002");
}

TEST(GenNewID, NullRowsAndIdsOfOtherKindsStandInNobodysWay) {
  IdTable table;
  table.add(Value());
  table.add("Z0015000000A");
  table.add("Z00");
  EXPECT_EQ(table.next(), "Z00150000004");
}

TEST(GenNewID, WithoutAPrefixTheWholeFieldIsTheNumber) {
  IdTable table(6);
  table.add("000002");
  table.add("000003");
  EXPECT_EQ(table.next("", "1"), "000004");
  EXPECT_EQ(table.next(" ", "1"), "000004");
}

TEST(GenNewID, TheLastRowLowersTheCandidateInANumericFieldOnly) {
  IdTable numbers(6, 'N');
  for (int id : {1, 2, 9, 4, 1}) numbers.add(id);
  EXPECT_EQ(numbers.next("", "1"), "000003");
  IdTable texts(6);
  for (const char* id : {"1", "2", "9", "4", "1"}) texts.add(id);
  EXPECT_EQ(texts.next("", "1"), "000006");
}

TEST(GenNewID, AnIdThatTheFieldCannotHoldIsAClearFailure) {
  IdTable narrow(6);
  for (int i = 0; i < 9; ++i) narrow.add("Z0015" + std::to_string(i + 1));
  EXPECT_EQ(failureOf(narrow, "Z0015"), failure::fieldTooSmall);
  EXPECT_EQ(failureOf(IdTable(5), "Z0015"), failure::fieldTooSmall);
  EXPECT_EQ(failureOf(IdTable(3), "Z0015"), failure::fieldTooSmall);
  EXPECT_EQ(failureOf(IdTable(3), "", "12345"), failure::fieldTooSmall);
  EXPECT_EQ(failureOf(IdTable(3), ""), 0);
}

TEST(GenNewID, TheCursorCanBeWrittenToAtOnce) {
  IdTable table;
  const RecordsetPtr cursor = table.open();
  for (int i = 1; i <= 3; ++i) {
    const std::string id = GenNewID_RS(*cursor, "ID", "Z0015", "0000001");
    EXPECT_EQ(id, "Z0015000000" + std::to_string(i));
    cursor->AddNew();
    cursor->put("ID", id);
    cursor->Update();
  }
  EXPECT_EQ(test::column(table.path, "ID").size(), 3u);
  EXPECT_THROW(GenNewID_RS(*cursor, "NONE", "Z0015", "1"), RunTimeFailure);
}

TEST(GenNewID, TheCursorStandsOnItsLastRowAfterwards) {
  IdTable table;
  for (const char* id : {"Z00150000001", "Z00150000002"}) table.add(id);
  const RecordsetPtr cursor = table.open();
  cursor->MoveNext();
  cursor->MoveNext();
  GenNewID_RS(*cursor, "ID", "Z0015", "0000001");
  EXPECT_EQ(cursor->AbsolutePosition(), 1);
  EXPECT_EQ(cursor->RecordCount(), 2);
}

TEST(GenNewID, ANumberThatAnotherProgramHasAddedSinceIsPassedOver) {
  IdTable table;
  table.add("Z00150000001");
  const RecordsetPtr cursor = table.open();
  table.add("Z00150000002");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "0000001"), "Z00150000003");
}

TEST(GenNewID, NumbersThatOthersHaveAddedToAnEmptyTableSinceArePassedOver) {
  IdTable table;
  const RecordsetPtr cursor = table.open();
  table.add("Z00150000001");
  table.add("Z00150000003");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "0000001"), "Z00150000002");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "0000003"), "Z00150000004");
}

TEST(GenNewID, ATableOfDeletedRowsGivesTheStart) {
  IdTable table;
  table.add("Z00150000001");
  DbfFile::open(table.path)->markDeleted(0);
  EXPECT_EQ(table.next("Z0015", "0000001"), "Z00150000001");
  EXPECT_EQ(table.next("Z0015", "0000007"), "Z00150000007");
}

TEST(GenNewID, RowsOutsideTheCursorDoNotCount) {
  IdTable table;
  for (const char* id : {"Z00150000001", "Z00160000002", "Z00150000007"}) table.add(id);
  const RecordsetPtr cursor = DBEngine::OpenDatabase(table.folder().path())
                                  ->OpenRecordset("Select * from [IDS] where ID <> 'Z00160000002' Order by [ID] DESC");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "0000001"), "Z00150000003");
  cursor->MoveFirst();
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "0000001"), "Z00150000003");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "6"), "Z00150000008");
}

struct FilteredIds : IdTable {
  void add(const Value& id, const char* other) const { test::addRow(path, {{"ID", id}, {"OTHER", other}}); }
  RecordsetPtr openFiltered(const std::string& order = "") const {
    return DBEngine::OpenDatabase(folder().path())->OpenRecordset("Select * from [IDS] where OTHER = 'x'" + order);
  }
};

TEST(GenNewID, RowsOutsideTheCursorBehindItsLastDoNotCount) {
  FilteredIds table;
  table.add("Z00150000001", "x");
  table.add("Z00150000002", "y");
  table.add("Z00150000003", "y");
  EXPECT_EQ(GenNewID_RS(*table.openFiltered(), "ID", "Z0015", "1"), "Z00150000002");
  EXPECT_EQ(GenNewID_RS(*table.openFiltered(" Order by [ID] DESC"), "ID", "Z0015", "1"), "Z00150000002");
  EXPECT_EQ(table.next(), "Z00150000004");
}

TEST(GenNewID, NumbersThatOthersHaveAddedToTheCursorsQuerySinceArePassedOver) {
  FilteredIds table;
  table.add("Z00150000001", "x");
  const RecordsetPtr cursor = table.openFiltered();
  table.add("Z00150000002", "x");
  table.add("Z00150000003", "y");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "1"), "Z00150000003");
}

TEST(GenNewID, NumbersThatOthersHaveAddedBeforeTheCursorsOwnNewRowArePassedOver) {
  FilteredIds table;
  table.add("Z00150000001", "x");
  const RecordsetPtr cursor = table.openFiltered();
  table.add("Z00150000003", "x");
  cursor->AddNew();
  cursor->put("ID", "Z00150000002");
  cursor->put("OTHER", "own");
  cursor->Update();
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "1"), "Z00150000004");
  EXPECT_EQ(GenNewID_RS(*cursor, "ID", "Z0015", "0"), "Z00150000004");
}

TEST(GenNewID, AColumnThatTheQueryComputesHasNoIds) {
  IdTable table;
  table.add("Z00150000001");
  const RecordsetPtr cursor =
      DBEngine::OpenDatabase(table.folder().path())->OpenRecordset("Select max([ID]) AS TOP from [IDS]");
  try {
    GenNewID_RS(*cursor, "TOP", "Z0015", "1");
    FAIL() << "a computed column took an ID";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::readOnlyTable);
  }
}

TEST(GenNewID, AThousandIdsInARowAreAllDifferent) {
  IdTable table;
  const RecordsetPtr cursor = table.open();
  std::string last;
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 1; i <= 1000; ++i) {
    last = GenNewID_RS(*cursor, "ID", "Z0015", "0000001");
    cursor->AddNew();
    cursor->put("ID", last);
    cursor->Update();
  }
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
  RecordProperty("milliseconds", static_cast<int>(time.count()));
  EXPECT_EQ(last, "Z00150001000");
  std::vector<std::string> ids = test::column(table.path, "ID");
  std::sort(ids.begin(), ids.end());
  EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());
}

}  // namespace
}  // namespace vantrelix

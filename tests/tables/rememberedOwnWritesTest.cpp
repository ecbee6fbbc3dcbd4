// What is remembered of a table lasts over this process's own writes.
#include <filesystem>
#include <gtest/gtest.h>

#include "tables/OwnClockCuts.h"
#include "tables/RowBatch.h"

namespace vantrelix {
namespace {

using RememberedTable = test::OwnClockCuts;

TEST_F(RememberedTable, RowsAddedAreKnownAtOnce) {
  know();
  add("ID003");
  add("NEW");
  EXPECT_LT(cost(isUpper("ID003")), kAll / 4);
  EXPECT_EQ(placesOf("ID003").size(), 51U);
  EXPECT_EQ(placesOf("ID003").back(), 50);
  EXPECT_EQ(count(isUpper("NEW")), 1);
  EXPECT_EQ(count(isUpper("ID004")), 50);
  EXPECT_TRUE(othersCount("ID003", 51));
}

TEST_F(RememberedTable, ThousandsOfRowsAddedOneByOneStayKnown) {
  constexpr int kRows = 3000;
  know();
  const RecordsetPtr rows = open(isUpper("NONE"));
  for (int i = 0; i < kRows; ++i) {
    rows->AddNew();
    rows->put("ID", "N" + std::to_string(i % 1000));
    rows->put("PLACE", i);
    rows->Update();
  }
  for (const int id : {0, 1, 499, 999}) {
    EXPECT_EQ(placesOf("N" + std::to_string(id)), (std::vector<double>{1.0 * id, 1000.0 + id, 2000.0 + id}));
  }
  EXPECT_LT(cost(isUpper("N7")), kAll / 4);
}

TEST_F(RememberedTable, RowsWrittenInBatchesGoOnWhereTheLastOnesEnded) {
  know();
  const RecordsetPtr rows = open(isUpper("NONE"));
  for (int batch = 0; batch < 3; ++batch) {
    RowBatch added(*rows);
    for (int i = 0; i < 100; ++i) {
      added.AddNew();
      added.put(rows->Fields("ID"), i < 50 ? "FIRST" : "SECOND");
      added.Update();
    }
    added.flush();
  }
  EXPECT_EQ(count(isUpper("FIRST")), 150);
  EXPECT_EQ(count(isUpper("SECOND")), 150);
  EXPECT_TRUE(isKnown());
}

TEST_F(RememberedTable, ChangesAndDeletionsAreKnownAtOnce) {
  know();
  const RecordsetPtr rows = open(isUpper("ID003"));
  const auto setId = [&](const std::string& id) {
    rows->Edit();
    rows->put("ID", id);
    rows->Update();
  };
  setId("ID004");
  EXPECT_EQ(count(isUpper("ID003")), 49);
  EXPECT_EQ(count(isUpper("ID004")), 51);
  EXPECT_EQ(placesOf("ID004").front(), 0);
  setId("ID003");
  setId("ID004");
  EXPECT_EQ(count(isUpper("ID004")), 51);
  setId("ID003");
  EXPECT_EQ(count(isUpper("ID003")), 50);
  rows->Delete();
  EXPECT_EQ(count(isUpper("ID003")), 49);
  EXPECT_EQ(count(isUpper("ID004")), 50);
  writeOwn("ID007");
  EXPECT_EQ(placesOf("ID007").front(), 77);
  EXPECT_TRUE(isKnown());
}

TEST_F(RememberedTable, AFileGetsATimeThatNoOtherWriteGivesIt) {
  know();
  add("NEW");
  EXPECT_EQ(machine_.timesSet, 1);
  EXPECT_NE(time(), machine_.lastTimeBeforeOneWasSet);
  EXPECT_NE(time() % 10, 0);
  EXPECT_LE(time(), machine_.wallNanoseconds());
}

TEST_F(RememberedTable, ATableThatNobodyAskedOfKeepsItsTime) {
  const auto table = DbfFile::open(path());
  table->append(record(*table, "NEW", 0).data());
  table->update(0, [&](unsigned char* row) { table->put(row, 1, Value(1)); });
  EXPECT_EQ(machine_.timesSet, 0);
}

TEST_F(RememberedTable, WhatWasAskedTooSoonIsKnownAfterTheNextWriteAndReading) {
  setAge(5 * kMillisecond);
  EXPECT_FALSE(isKnown());
  add("NEW");
  EXPECT_FALSE(isKnown());
  EXPECT_TRUE(isKnown());
  EXPECT_EQ(count(isUpper("NEW")), 1);
}

TEST_F(RememberedTable, WritesToTwoTablesInTurnsLeaveBothKnown) {
  const auto find = [&](const std::string& id) {
    return DBEngine::OpenDatabase(folder())->OpenRecordset("select * from [OTHER] where id = '" + id + "'");
  };
  std::filesystem::copy_file(platform::current().toMachine(path()), platform::current().toMachine(otherPath()));
  platform::operatingSystem().open(otherPath(), platform::OpenMode::readWrite)->setModified(time() - kSecond);
  know();
  EXPECT_EQ(find("ID003")->rowCount(), 50);
  const RecordsetPtr others = find("ID003");
  for (int i = 0; i < 20; ++i) {
    add("ID003");
    others->AddNew();
    others->put("ID", "ID003");
    others->Update();
  }
  EXPECT_TRUE(isKnown());
  EXPECT_EQ(count(isUpper("ID003")), 70);
  machine_.bytesRead = 0;
  EXPECT_EQ(find("ID003")->rowCount(), 70);
  EXPECT_LT(machine_.bytesRead, kAll / 4);
}

TEST_F(RememberedTable, MoreRunsThanAreRememberedAreStillAnsweredRightly) {
  know();
  append(300000, [](int row) { return "X" + std::to_string(row); });
  add("ID007");
  EXPECT_EQ(count(isUpper("X0")), 1);
  EXPECT_EQ(count(isUpper("X299999")), 1);
  EXPECT_EQ(count(isUpper("ID007")), 51);
}

}  // namespace
}  // namespace vantrelix

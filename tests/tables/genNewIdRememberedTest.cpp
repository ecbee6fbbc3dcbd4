// New IDs of a table that this process remembers.
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <set>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "support/MeasuredPlatform.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

constexpr const char* kPrefix = "Z0015";
constexpr int kRecord = 61;

// Table IDS, 61 bytes a row.
class RememberedIds : public testing::Test {
 protected:
  RememberedIds() {
    machine_.ownClock = true;
    DbfFile::create(path(), {{"ID", 'C', 12, 0}, {"OTHER", 'C', 48, 0}});
  }

  const std::string& folder() const { return folder_.path(); }
  std::string path() const { return folder_.file("IDS.DBF"); }
  RecordsetPtr open() const { return DBEngine::OpenDatabase(folder_.path())->OpenRecordset("Select * from [IDS]"); }
  static std::string next(Recordset& rows, const std::string& start = "0000001", const std::string& prefix = kPrefix) {
    return GenNewID_RS(rows, "ID", prefix, start);
  }
  static void add(Recordset& rows, const std::string& id) {
    rows.AddNew();
    rows.put("ID", id);
    rows.Update();
  }
  static std::string numbered(int number) {
    std::string digits = std::to_string(number);
    return kPrefix + std::string(7 - digits.size(), '0') + digits;
  }
  void fill(int count) const {
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> rows;
    for (int i = 1; i <= count; ++i) {
      std::vector<unsigned char> row = table->blankRecord();
      table->put(row.data(), 0, Value(numbered(i)));
      rows.insert(rows.end(), row.begin(), row.end());
    }
    table->append(rows.data(), static_cast<std::uint32_t>(count));
  }
  void setAge(std::int64_t seconds) {
    platform::operatingSystem()
        .open(path(), platform::OpenMode::readWrite)
        ->setModified(machine_.wallNanoseconds() - seconds * 1'000'000'000 - 1);
  }
  // Puts an ID in the place of another, as a program does that knows no locks.
  void overwrite(long row, const std::string& id) const {
    std::fstream file(platform::current().toMachine(path()), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(97 + kRecord * row + 1);
    file << id;
    ASSERT_TRUE(file.flush());
  }
  // The next ID by its meaning, from what stands in the file.
  std::string meant(Recordset& rows, double start) const {
    if (rows.RecordCount() == 0) return numbered(static_cast<int>(start));
    std::set<double> used;
    DbfFile::open(path(), true)->scan([&](std::uint32_t, const unsigned char* record) {
      const std::string id(record + 1, record + 13);
      if (*record == ' ') used.insert(plainNumber(id.substr(5)).value_or(-1));
      return true;
    });
    double number = std::max(static_cast<double>(rows.rowCount()), start);
    do ++number;
    while (used.contains(number));
    return numbered(static_cast<int>(number));
  }

  test::MeasuredPlatform machine_;

 private:
  platform::Substitute use_{machine_};
  test::TempFolder folder_;
};

TEST_F(RememberedIds, TheNextOfManyReadsNothingOfTheTable) {
  fill(5000);
  setAge(3600);
  const RecordsetPtr rows = open();
  EXPECT_EQ(next(*rows), numbered(5001));
  machine_.bytesRead = 0;
  for (int i = 1; i <= 200; ++i) {
    const std::string id = next(*rows);
    EXPECT_EQ(id, numbered(5000 + i));
    add(*rows, id);
  }
  EXPECT_LT(machine_.bytesRead, 200U * 200U);
}

TEST_F(RememberedIds, AnImportIntoANewTableReadsNothingOfItEither) {
  const RecordsetPtr rows = open();
  machine_.bytesRead = 0;
  for (int i = 1; i <= 500; ++i) {
    const std::string id = next(*rows);
    EXPECT_EQ(id, numbered(i));
    add(*rows, id);
  }
  EXPECT_LT(machine_.bytesRead, 500U * 200U);
}

TEST_F(RememberedIds, AnotherCursorOfTheProcessKnowsThemToo) {
  fill(100);
  setAge(3600);
  next(*open());
  const RecordsetPtr rows = open();
  machine_.bytesRead = 0;
  EXPECT_EQ(next(*rows), numbered(101));
  EXPECT_LT(machine_.bytesRead, 50U);
  add(*open(), numbered(101));
  EXPECT_EQ(next(*rows), numbered(102));
}

TEST_F(RememberedIds, ANumberThatAnotherProgramTakesIsPassedOver) {
  fill(100);
  setAge(3600);
  const RecordsetPtr rows = open();
  EXPECT_EQ(next(*rows), numbered(101));
  overwrite(3, numbered(101));
  EXPECT_EQ(next(*rows), numbered(102));
  add(*rows, numbered(102));
  EXPECT_EQ(next(*rows), numbered(103));
  const std::int64_t tick = machine_.lastTimeBeforeOneWasSet;
  overwrite(4, numbered(103));
  platform::operatingSystem().open(path(), platform::OpenMode::readWrite)->setModified(tick);
  EXPECT_EQ(next(*rows), numbered(104));
}

TEST_F(RememberedIds, APartOfTheTablesRowsIsAnsweredByThemAlone) {
  fill(3);
  const RecordsetPtr all = open();
  add(*all, numbered(9));
  add(*all, numbered(4));
  setAge(3600);
  EXPECT_EQ(next(*all), numbered(6));
  EXPECT_EQ(next(*all, "8"), numbered(10));
  const RecordsetPtr part =
      DBEngine::OpenDatabase(folder())->OpenRecordset("Select * from [IDS] where ID <> '" + numbered(9) + "'");
  EXPECT_EQ(next(*part, "8"), numbered(9));
  EXPECT_EQ(next(*all, "8"), numbered(10));
}

TEST_F(RememberedIds, ALowerStartIsAnsweredToo) {
  fill(3);
  add(*open(), numbered(5));
  setAge(3600);
  const RecordsetPtr rows = open();
  EXPECT_EQ(next(*rows, "50"), numbered(51));
  EXPECT_EQ(next(*rows), numbered(6));
  EXPECT_EQ(next(*rows, "50"), numbered(51));
}

TEST_F(RememberedIds, EveryPrefixHasNumbersOfItsOwn) {
  fill(3);
  setAge(3600);
  const RecordsetPtr rows = open();
  add(*rows, "AB0000000005");
  EXPECT_EQ(next(*rows), numbered(6));
  EXPECT_EQ(next(*rows, "1", "AB"), "AB0000000006");
  EXPECT_EQ(next(*rows), numbered(6));
  EXPECT_EQ(next(*rows, "1", "AB"), "AB0000000006");
}

TEST_F(RememberedIds, APrefixThatCannotBeSoughtFailsEachTime) {
  fill(3);
  setAge(3600);
  const RecordsetPtr rows = open();
  for (int i = 0; i < 2; ++i) EXPECT_THROW(next(*rows, "1", "A'B"), RunTimeFailure);
}

TEST_F(RememberedIds, WhateverHappensToTheTableTheNextIsTheOneMeant) {
  std::mt19937 random(5);
  fill(20);
  setAge(3600);
  RecordsetPtr rows = open();
  for (int step = 0; step < 1500; ++step) {
    const int start = step % 300 < 250 ? 1 : 60;
    const int chosen = static_cast<int>(random() % 20);
    if (chosen < 10) add(*rows, next(*rows, std::to_string(start)));
    if (chosen == 10) add(*rows, numbered(static_cast<int>(random() % 2000)));
    if (chosen == 11)
      overwrite(static_cast<long>(random()) % rows->rowCount(), numbered(static_cast<int>(random() % 999)));
    if (chosen == 12) add(*open(), numbered(static_cast<int>(random() % 999)));
    if (chosen == 13) setAge(3600 + step);
    if (chosen == 14) rows = open();
    if (chosen == 15 || chosen == 16) {
      rows->setAbsolutePosition(static_cast<long>(random()) % rows->rowCount());
      rows->Edit();
      rows->put("ID", numbered(static_cast<int>(random() % 999)));
      rows->Update();
    }
    if (chosen == 17) {
      rows->setAbsolutePosition(static_cast<long>(random()) % rows->rowCount());
      rows->Delete();
      rows->MoveNext();
    }
    rows->MoveLast();
    ASSERT_EQ(next(*rows, std::to_string(start)), meant(*rows, start)) << step << ' ' << chosen;
  }
}

}  // namespace
}  // namespace vantrelix

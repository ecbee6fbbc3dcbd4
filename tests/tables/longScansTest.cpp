// Long tables at rest, whose rows two threads look at: nothing but the time tells it from a scan by one.
#include <algorithm>
#include <condition_variable>
#include <gtest/gtest.h>
#include <map>
#include <mutex>
#include <set>
#include <thread>

#include "support/NoThreads.h"
#include "tables/LongTable.h"
#include "tables/countByText.h"
#include "tables/scanInParts.h"

namespace vantrelix {
namespace {

class LongScan : public test::LongTable {};

// --- Which scans two threads work on.

class ThreadsOfAScan : public LongScan {
 protected:
  // Reads of rows wait, for a while, until they were made in so many threads; gives in how many.
  std::size_t threadsOf(std::size_t awaited) {
    const auto table = DbfFile::open(path());
    std::mutex guard;
    std::condition_variable changed;
    std::set<std::thread::id> readers;
    table->recordCount();
    machine_.onRead = [&](std::uint64_t, std::size_t) {
      std::unique_lock lock(guard);
      readers.insert(std::this_thread::get_id());
      changed.notify_all();
      changed.wait_for(lock, std::chrono::seconds(20), [&] { return readers.size() >= awaited; });
    };
    std::uint32_t rows = 0;
    table->scanBlocks([&](std::uint32_t, const unsigned char*, std::uint32_t count) { return (rows += count) > 0; });
    machine_.onRead = {};
    EXPECT_EQ(rows, kRows);
    EXPECT_EQ(readers.count(std::this_thread::get_id()), 1U);
    return readers.size();
  }
};

TEST_F(ThreadsOfAScan, AreTwoWhereTheFileIsAtRest) { EXPECT_EQ(threadsOf(2), 2U); }

TEST_F(ThreadsOfAScan, AreOneWhereItIsNot) {
  setAge(0);
  EXPECT_EQ(threadsOf(1), 1U);
}

TEST_F(ThreadsOfAScan, AreOneWhereThePlatformReadsInOne) {
  machine_.readsInParallel = false;
  EXPECT_EQ(threadsOf(1), 1U);
}

TEST_F(ThreadsOfAScan, AreOneWhereTheSystemHasNoOther) {
  const test::NoThreads none;
  EXPECT_EQ(threadsOf(1), 1U);
}

// --- What a visitor sees.

TEST_F(LongScan, VisitsEveryRowOnceAndInOrder) {
  const auto table = DbfFile::open(path());
  std::uint32_t next = 0;
  EXPECT_TRUE(table->scan([&](std::uint32_t number, const unsigned char* record) {
    EXPECT_EQ(number, next);
    EXPECT_EQ(table->value(record, 0).asNumber(), next);
    return ++next > 0 && !HasFailure();
  }));
  EXPECT_EQ(next, kRows);
}

TEST_F(LongScan, VisitsTheRowsAskedForAlone) {
  const auto table = DbfFile::open(path());
  for (const std::uint32_t count : {42000U, 50001U, kRows - 7, kRows}) {
    std::uint32_t first = 0;
    std::uint32_t rows = 0;
    EXPECT_TRUE(table->scan(
        [&](std::uint32_t number, const unsigned char*) {
          if (rows++ == 0) first = number;
          return number == first + rows - 1;
        },
        7, count));
    EXPECT_EQ(first, 7U);
    EXPECT_EQ(rows, std::min(count, kRows - 7));
  }
}

TEST_F(LongScan, EndsWhereItsVisitorStopsIt) {
  const auto table = DbfFile::open(path());
  std::uint32_t rows = 0;
  EXPECT_FALSE(table->scan([&](std::uint32_t, const unsigned char*) { return ++rows < 31000; }));
  EXPECT_EQ(rows, 31000U);
}

TEST_F(LongScan, OfLongRowsVisitsEachOfThem) {
  constexpr std::uint32_t kLongRows = 120;
  std::vector<DbfNewField> fields = {{"PLACE", 'N', 10, 0}};
  for (int i = 0; i < 200; ++i) fields.push_back({"F" + std::to_string(i), 'C', 250, 0});
  DbfFile::create(path(), fields);
  const auto table = DbfFile::open(path());
  for (std::uint32_t i = 0; i < kLongRows; ++i) {
    std::vector<unsigned char> row = table->blankRecord();
    table->put(row.data(), 0, static_cast<double>(i));
    table->append(row.data());
  }
  setAge(60);
  std::vector<double> places;
  table->scan([&](std::uint32_t number, const unsigned char* record) {
    places.push_back(table->value(record, 0).asNumber());
    return places.back() == number;
  });
  EXPECT_EQ(places.size(), kLongRows);
}

// --- What is gathered in two steps.

TEST_F(LongScan, GivesTheAggregatesOfAScanByOneThread) {
  const std::string all =
      "select min(VALUE), max(VALUE), sum(VALUE), avg(VALUE), count(VALUE), count(*), min(ID), max(ID), sum(PLACE), "
      "sum(VALUE * 3), count(TEXT) from LONG";
  for (const std::string where : {"", " where VALUE > 1.5", " where PLACE < 0", " where PLACE between 2594 and 2597",
                                  " where VALUE < 0 and len(ID) = 4", " where ID = 'ID17'", " where ID like 'ID1*'"}) {
    SCOPED_TRACE(where);
    expectSame([&] {
      const RecordsetPtr row = query(all + where);
      std::vector<Value> values;
      for (int i = 0; i < 11; ++i) values.push_back(row->value("Expr" + std::to_string(1000 + i)));
      return values;
    });
  }
}

std::vector<Value> placesIn(Recordset& rows) {
  std::vector<Value> places;
  for (; !rows.Eof(); rows.MoveNext()) places.push_back(rows.value("PLACE"));
  return places;
}

TEST_F(LongScan, FindsTheRowsThatAScanByOneThreadFinds) {
  for (const std::string rest : {"where VALUE between 7 and 7.1", "where VALUE > 14.9 order by VALUE",
                                 "where VALUE < -14.9 and right(ID, 1) = '4'", "where PLACE >= 59990"}) {
    SCOPED_TRACE(rest);
    expectSame([&] { return placesIn(*query("select * from LONG " + rest)); });
  }
}

TEST_F(LongScan, FindsTheRowsOfATextWhenItLearnsAndWhenItKnowsWhereTheyStand) {
  std::map<std::string, std::vector<Value>> expected;
  for (std::uint32_t row = 0; row < kRows; ++row) {
    if (!isDeleted(row)) expected[idOf(row)].emplace_back(static_cast<double>(row));
  }
  ASSERT_EQ(expected.size(), 50U);
  for (int times = 0; times < 2; ++times) {
    for (const auto& [id, places] : expected) {
      EXPECT_EQ(placesIn(*query("select * from LONG where ID = '" + id + "'")), places) << id;
    }
  }
}

TEST_F(LongScan, CountsTheRowsOfEachText) {
  TextCounts present;
  for (std::uint32_t row = 0; row < kRows; ++row) present[idOf(row)] += !isDeleted(row) && !isNull(row) ? 1 : 0;
  const auto table = DbfFile::open(path());
  EXPECT_EQ(countByText(*table, "ID", {"PLACE", "VALUE"}), present);
  EXPECT_EQ(countByText(*table, "ID", {"VALUE", "ID"}), present);
  EXPECT_EQ(countByText(*table, "ID", {"TEXT"}), TextCounts());
}

}  // namespace
}  // namespace vantrelix

// Files that no program is writing to: read without locks, and never wrongly taken for such.
#include <gtest/gtest.h>

#include "support/MeasuredPlatform.h"
#include "support/Processes.h"
#include "tables/DbfBytes.h"

namespace vantrelix {
namespace {

using platform::LockKind;
using test::RawTable;

constexpr std::int64_t kMillisecond = 1'000'000;
constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::uint64_t kHeader = 32 + 32 + 1;
constexpr std::uint64_t kLength = 10;
constexpr std::uint64_t kLockBase = 0x40000000;

class RestingFiles : public testing::Test {
 protected:
  RestingFiles() {
    machine_.ownClock = true;
    write("T.DBF", "NAME", 3);
    setAge(3600 * kSecond);
  }

  // A table of four rows, of which `count` are counted.
  void write(const std::string& name, const std::string& field, int count) const {
    const std::string rows = " row one   row two   row three row four ";
    suite_.folder().write(name, RawTable{.fields = {{field, 'C', 9}}, .rows = rows, .count = count}.bytes());
  }
  std::string path() const { return suite_.file("T.DBF"); }
  // The file as a program has it open that knows no locks.
  std::unique_ptr<platform::File> stranger() const {
    return platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  }
  void strangerWrites(std::uint64_t offset, std::string_view bytes) const {
    stranger()->writeAt(offset, bytes.data(), bytes.size());
  }
  void setTime(std::int64_t nanoseconds, const std::string& name = "T.DBF") const {
    platform::operatingSystem().open(suite_.file(name), platform::OpenMode::readWrite)->setModified(nanoseconds);
  }
  void setAge(std::int64_t nanoseconds, const std::string& name = "T.DBF") const {
    setTime(platform::operatingSystem().wallNanoseconds() - nanoseconds, name);
  }
  static std::string rowOf(DbfFile& table, std::uint32_t number) {
    const test::Bytes bytes = test::recordOf(table, number);
    return {bytes.begin(), bytes.end()};
  }
  // The locks that a count, a row, and a scan with its own count ask for.
  int locksOfReading() {
    const auto table = DbfFile::open(path());
    machine_.locksTried = 0;
    EXPECT_EQ(table->recordCount(), 3U);
    EXPECT_EQ(rowOf(*table, 1), " row two  ");
    int rows = 0;
    table->scan([&](std::uint32_t, const unsigned char*) { return ++rows > 0; });
    EXPECT_EQ(rows, 3);
    return machine_.locksTried;
  }
  std::size_t bytesOfOpening() {
    machine_.bytesRead = 0;
    DbfFile::open(path());
    return machine_.bytesRead;
  }
  std::string fieldOf(const std::string& name = "T.DBF") const {
    return DbfFile::open(suite_.file(name), true)->fields().at(0).name;
  }

  test::TempSuite suite_;
  test::MeasuredPlatform machine_;
  const platform::Substitute use_{machine_};
};

// --- Which files are at rest.

TEST_F(RestingFiles, AreReadWithoutALock) { EXPECT_EQ(locksOfReading(), 0); }

TEST_F(RestingFiles, AreThoseThatStandForThreeSeconds) {
  setAge(3100 * kMillisecond);
  EXPECT_EQ(locksOfReading(), 0);
  setAge(2500 * kMillisecond);
  EXPECT_EQ(locksOfReading(), 4);
}

TEST_F(RestingFiles, AreNotThoseWithATimeInTheFuture) {
  setAge(-3600 * kSecond);
  EXPECT_EQ(locksOfReading(), 4);
}

TEST_F(RestingFiles, AreNotThoseWhoseTimesAnotherMachineMayGive) {
  machine_.ownClock = false;
  EXPECT_EQ(locksOfReading(), 4);
}

TEST_F(RestingFiles, AreNoneOnceTheClockIsSetBackBehindTheirTime) {
  EXPECT_EQ(locksOfReading(), 0);
  machine_.setBackNanoseconds = 24 * 3600 * kSecond;
  EXPECT_EQ(locksOfReading(), 4);
}

// --- Writes that meet a read.

// The other program has written half of the row when the reader looks, and the rest of it a moment later.
TEST_F(RestingFiles, AWriteThatMeetsTheReadIsSeenWhole) {
  const auto table = DbfFile::open(path());
  const auto other = stranger();
  ASSERT_TRUE(other->tryLock(kLockBase + kHeader, kLength, LockKind::exclusive));
  int reads = 0;
  machine_.onRead = [&] {
    ++reads;
    if (reads == 1) other->writeAt(kHeader, " AAAA", 5);
    if (reads != 5) return;
    other->writeAt(kHeader + 5, "AAAAA", 5);
    other->unlock(kLockBase + kHeader, kLength);
  };
  EXPECT_EQ(rowOf(*table, 0), " AAAAAAAAA");
  EXPECT_GE(reads, 5);
}

TEST_F(RestingFiles, AWriteThatMeetsAScanIsSeenWhole) {
  const auto table = DbfFile::open(path());
  const auto other = stranger();
  ASSERT_TRUE(other->tryLock(kLockBase + kHeader + kLength, kLength, LockKind::exclusive));
  int reads = 0;
  machine_.onRead = [&] {
    ++reads;
    if (reads == 1) other->writeAt(kHeader + kLength, " AAAA", 5);
    if (reads != 8) return;
    other->writeAt(kHeader + kLength + 5, "AAAAA", 5);
    other->unlock(kLockBase + kHeader + kLength, kLength);
  };
  std::string found;
  table->scan([&](std::uint32_t, const unsigned char* bytes) {
    found.append(bytes, bytes + kLength);
    return true;
  });
  EXPECT_EQ(found, " row one   AAAAAAAAA row three");
}

// --- Writes between two reads.

TEST_F(RestingFiles, AChangeOfTheSameLengthIsSeenByTheNextRead) {
  const auto table = DbfFile::open(path());
  EXPECT_EQ(rowOf(*table, 2), " row three");
  for (const std::string row : {" changed 1", " changed 2"}) {
    strangerWrites(kHeader + 2 * kLength, row);
    EXPECT_EQ(rowOf(*table, 2), row);
  }
}

TEST_F(RestingFiles, ACountThatChangesWithinOneTickIsSeenAtOnce) {
  machine_.nanosecondsPerTick = 2 * kSecond;
  const auto table = DbfFile::open(path());
  EXPECT_EQ(table->recordCount(), 3U);
  for (const int count : {4, 2, 3, 1, 4}) {
    strangerWrites(4, std::string(1, static_cast<char>(count)));
    EXPECT_EQ(table->recordCount(), static_cast<std::uint32_t>(count));
    EXPECT_EQ(rowOf(*table, 3).empty(), count < 4);
  }
}

TEST_F(RestingFiles, AWriteOfThisProcessThroughAnotherObjectIsSeenAtOnce) {
  const auto reader = DbfFile::open(path(), true);
  EXPECT_EQ(reader->recordCount(), 3U);
  const auto writer = DbfFile::open(path());
  writer->update(0, [](unsigned char* record) { record[9] = '!'; });
  EXPECT_EQ(rowOf(*reader, 0), " row one !");
  test::appendRow(*writer, {"added"});
  EXPECT_EQ(reader->recordCount(), 4U);
  EXPECT_EQ(rowOf(*reader, 3), " added    ");
  writer->markDeleted(1);
  EXPECT_EQ(rowOf(*reader, 1), "*row two  ");
}

TEST_F(RestingFiles, AWriteOfAnotherProcessIsSeenAtOnce) {
  const auto reader = DbfFile::open(path(), true);
  EXPECT_EQ(reader->recordCount(), 3U);
  ASSERT_EQ(test::exitCode(test::startChild([&] {
              const auto writer = DbfFile::open(path());
              writer->update(0, [](unsigned char* record) { record[9] = '!'; });
              return test::appendRow(*writer, {"added"}) == 3;
            })),
            0);
  EXPECT_EQ(rowOf(*reader, 0), " row one !");
  EXPECT_EQ(reader->recordCount(), 4U);
}

// --- What is known of their headers.

TEST_F(RestingFiles, AreOpenedAgainWithoutReadingTheirHeader) {
  EXPECT_GT(bytesOfOpening(), 0U);
  EXPECT_EQ(bytesOfOpening(), 0U);
  EXPECT_EQ(fieldOf(), "NAME");
  EXPECT_EQ(DbfFile::open(path())->recordCount(), 3U);
}

TEST_F(RestingFiles, WithAChangedHeaderAreReadAnew) {
  EXPECT_EQ(fieldOf(), "NAME");
  strangerWrites(32, "GAME");
  EXPECT_EQ(fieldOf(), "GAME");
  setAge(1800 * kSecond);
  EXPECT_EQ(fieldOf(), "GAME");
  strangerWrites(32, "FAME");
  EXPECT_EQ(fieldOf(), "FAME");
}

// Two changes within one tick leave the same time.
TEST_F(RestingFiles, AreTheOnlyOnesWhoseHeadersAreKept) {
  const std::int64_t tick = platform::operatingSystem().wallNanoseconds() - kSecond;
  setTime(tick);
  EXPECT_EQ(fieldOf(), "NAME");
  strangerWrites(32, "GAME");
  setTime(tick);
  EXPECT_EQ(fieldOf(), "GAME");
}

TEST_F(RestingFiles, PutInThePlaceOfOthersAreReadAnew) {
  EXPECT_EQ(fieldOf(), "NAME");
  const auto former = platform::operatingSystem().state(path());
  write("NEW.DBF", "GAME", 2);
  setTime(former->modifiedNanoseconds, "NEW.DBF");
  platform::operatingSystem().rename(suite_.file("NEW.DBF"), path());
  EXPECT_EQ(fieldOf(), "GAME");
  EXPECT_EQ(DbfFile::open(path())->recordCount(), 2U);
}

TEST_F(RestingFiles, KeepTheirHeadersApartHoweverManyAreOpened) {
  const auto nameOf = [](int table) { return "T" + std::to_string(table) + ".DBF"; };
  const auto named = [](int table) { return "F" + std::to_string(table); };
  for (int table = 0; table < 40; ++table) {
    write(nameOf(table), named(table), 3);
    setAge(3600 * kSecond, nameOf(table));
  }
  for (int round = 0; round < 2; ++round) {
    for (int table = 0; table < 40; ++table) EXPECT_EQ(fieldOf(nameOf(table)), named(table));
    EXPECT_EQ(fieldOf(), "NAME");
  }
}

}  // namespace
}  // namespace vantrelix

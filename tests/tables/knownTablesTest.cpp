// Tables opened as they were seen before: a read of one is believed only where the file proves to be that one still.
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/RunTimeFailure.h"
#include "tables/KeyedRows.h"
#include "tables/OwnClockCuts.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::failureNumberOf;

class KnownTables : public test::OwnClockCuts {
 protected:
  KnownTables() {
    setAge(3600 * kSecond);
    count(isUpper("NONE"));
  }

  // The places of an antenna in their order, read as a library's cuts are.
  std::vector<double> placesByKey(const std::string& id) const {
    const DatabasePtr database = DBEngine::OpenDatabase(folder());
    NumberPairs pairs;
    KeyedRows rows(*database, {"CUTS", "ID", id, "PLACE"});
    rows.addNumbers("PLACE", "PLACE", pairs);
    return pairs.firsts;
  }
  // Puts a table with those antennas, a row of each, in the place of the file, which keeps its size and its time.
  void replaceBy(const std::vector<DbfNewField>& fields, int rows) const {
    const auto time = changed();
    create(fields);
    const auto table = DbfFile::open(path());
    std::vector<unsigned char> row = table->blankRecord();
    table->put(row.data(), static_cast<std::size_t>(table->fieldIndex("ID")), "ID003");
    if (const int place = table->fieldIndex("PLACE"); place >= 0)
      table->put(row.data(), static_cast<std::size_t>(place), 1);
    std::vector<unsigned char> all;
    for (int i = 0; i < rows; ++i) all.insert(all.end(), row.begin(), row.end());
    table->append(all.data(), static_cast<std::uint32_t>(rows));
    setChanged(time);
  }
  std::shared_ptr<DbfFile> openKnown() const { return DbfFile::openKnown(path()); }
  // A known table that has been opened, and then `meanwhile` goes on.
  template <class Meanwhile>
  void expectDisbelieved(const Meanwhile& meanwhile) {
    const auto table = openKnown();
    ASSERT_NE(table, nullptr);
    ASSERT_TRUE(table->isAsOpened());
    meanwhile();
    std::vector<unsigned char> row(30);
    table->readRecords(7, 1, row.data());
    EXPECT_FALSE(table->isAsOpened());
  }
  std::string machinePath() const { return platform::current().toMachine(path()); }
};

TEST_F(KnownTables, AreThoseSeenAtRest) {
  const auto table = openKnown();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->recordCount(), 1000U);
  EXPECT_EQ(table->fieldIndex("place"), 1);
  EXPECT_TRUE(table->readOnly());
  EXPECT_TRUE(table->isAsOpened());
  EXPECT_EQ(DbfFile::openKnown(otherPath()), nullptr);
}

TEST_F(KnownTables, AreNoneWhoseTimeLiesSecondsBackAlone) {
  setAge(2 * kSecond);
  count(isUpper("NONE"));
  EXPECT_EQ(openKnown() && openKnown()->isAsOpened(), false);
  EXPECT_EQ(placesByKey("ID003").size(), 50U);
}

TEST_F(KnownTables, AreNoneOnceTheClockIsSetBackBehindTheirTime) {
  machine_.setBackNanoseconds = 3600 * kSecond;
  EXPECT_EQ(openKnown(), nullptr);
  EXPECT_EQ(placesByKey("ID003").size(), 50U);
}

TEST_F(KnownTables, AnswerAKeyWithOneLookAndOneLock) {
  know();
  placesByKey("ID003");
  machine_.locksTried = 0;
  machine_.statesAsked = 0;
  machine_.bytesRead = 0;
  EXPECT_EQ(placesByKey("ID003").size(), 50U);
  EXPECT_EQ(machine_.locksTried, 1);
  EXPECT_EQ(machine_.statesAsked, 1);
  EXPECT_EQ(machine_.bytesRead, 50U * 30);
}

TEST_F(KnownTables, AreDisbelievedWhereAnotherWritesBehindTheirOpening) {
  expectDisbelieved([&] { overwriteInAnotherProcess(7, "ID003"); });
}

TEST_F(KnownTables, AreDisbelievedWhereAnotherTableTakesTheirPlace) {
  expectDisbelieved([&] { replaceBy({{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}}, 1000); });
}

TEST_F(KnownTables, AreDisbelievedWhereTheFileIsRemoved) {
  expectDisbelieved([&] { std::filesystem::remove(machinePath()); });
}

TEST_F(KnownTables, GiveTheRowsOfTheTableThatHasTakenTheirPlace) {
  know();
  EXPECT_EQ(placesByKey("ID003").size(), 50U);
  replaceBy({{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}}, 1000);
  EXPECT_EQ(placesByKey("ID003").size(), 1000U);
  replaceBy({{"PLACE", 'N', 8, 0}, {"ID", 'C', 9, 0}, {"MORE", 'C', 12, 0}}, 1000);
  EXPECT_EQ(placesByKey("ID003").size(), 1000U);
  replaceBy({{"NUMBER", 'N', 17, 4}, {"ID", 'C', 12, 0}}, 10);
  EXPECT_EQ(failureNumberOf([&] { placesByKey("ID003"); }), failure::badQuery);
}

// Of a text that nothing is remembered of, too: what a search notes of the new table is of its own rows.
TEST_F(KnownTables, AreSearchedByTheHeaderOfTheTableThatHasTakenTheirPlace) {
  replaceBy({{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}}, 1000);
  DbfFile::open(path());
  ASSERT_NE(openKnown(), nullptr);
  replaceBy({{"ID", 'C', 12, 0}, {"PLACE", 'N', 17, 4}, {"MORE", 'C', 15, 0}}, 1000);
  EXPECT_EQ(placesByKey("ID003").size(), 1000U);
  EXPECT_EQ(placesByKey("ID003").size(), 1000U);
  EXPECT_EQ(count("id = 'ID003'"), 1000);
}

// Another program makes the header one of a table that begins a row later, in place.
TEST_F(KnownTables, GiveTheRowsOfAHeaderWrittenAnew) {
  know();
  EXPECT_EQ(placesByKey("ID000").size(), 50U);
  const unsigned char length[] = {97 + 30, 0};
  const unsigned char count[] = {0xE7, 0x03, 0, 0};
  asStranger()->writeAt(8, length, sizeof length);
  asStranger()->writeAt(4, count, sizeof count);
  setAge(3600 * kSecond);
  EXPECT_EQ(placesByKey("ID000").size(), 49U);
}

TEST_F(KnownTables, GiveWhatAnotherWritesWhileTheyAreRead) {
  know();
  for (const char* id : {"ID003", "ID000"}) {
    machine_.onRead = [&] {
      machine_.onRead = nullptr;
      overwrite(7, id);
    };
    const std::size_t wanted = id == std::string("ID003") ? 51 : 50;
    EXPECT_EQ(placesByKey(id).size(), wanted) << id;
    setAge(3600 * kSecond);
    know();
  }
}

TEST_F(KnownTables, FailLikeOthersWhereAProgramHoldsThemAlone) {
  know();
  const auto alone = DbfFile::open(path(), false, Sharing::exclusive);
  EXPECT_EQ(openKnown(), nullptr);
  EXPECT_EQ(failureNumberOf([&] { placesByKey("ID003"); }), failure::cannotOpen);
}

TEST_F(KnownTables, FailLikeOthersWhereNoFileStandsAtTheirPath) {
  know();
  std::filesystem::remove(machinePath());
  EXPECT_EQ(openKnown(), nullptr);
  EXPECT_EQ(failureNumberOf([&] { placesByKey("ID003"); }), failure::noSuchTable);
  std::filesystem::create_directory(machinePath());
  EXPECT_EQ(failureNumberOf([&] { placesByKey("ID003"); }), failure::noSuchTable);
}

// On the machine itself, which does not look at what it opens so.
TEST(KnownTablesOfTheMachine, ArePipesToNobody) {
  const test::TempFolder folder;
  const std::string path = folder.file("T.DBF");
  DbfFile::create(path, {{"ID", 'C', 12, 0}});
  const auto file = platform::current().open(path, platform::OpenMode::readWrite);
  file->setModified(platform::current().wallNanoseconds() - 3'600'000'000'000);
  const auto isKnown = [&] {
    const auto known = DbfFile::openKnown(path);
    return known && known->isAsOpened();
  };
  DbfFile::open(path);
  EXPECT_EQ(isKnown(), file->hasOwnClock());
  std::filesystem::remove(folder.machine("T.DBF"));
  ASSERT_EQ(::mkfifo(folder.machine("T.DBF").c_str(), 0600), 0);
  EXPECT_FALSE(isKnown());
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  EXPECT_EQ(failureNumberOf([&] { KeyedRows(*database, {"T", "ID", "A", ""}); }), failure::cannotOpen);
}

}  // namespace
}  // namespace vantrelix

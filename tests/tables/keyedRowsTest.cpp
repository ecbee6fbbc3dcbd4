// The rows of one key, found without a query: what the query gives, in every case.
#include <gtest/gtest.h>

#include "tables/KeyedRows.h"
#include "tables/OwnClockCuts.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

// What can be asked of rows, or the failure that they meet.
struct Answer {
  int failure = 0;
  std::string text;  // of the failure, or the first row's description
  std::vector<double> gains;
  std::vector<double> frequencies;

  friend bool operator==(const Answer&, const Answer&) = default;
};

std::string shown(const Value& value) { return value.isNull() ? "-" : trim(value.asText()); }

Answer ofKey(const CursorTables& tables, const KeyedRows::Key& key) {
  Answer answer;
  NumberPairs pairs;
  answer.failure = failureNumberOf(
      [&] {
        KeyedRows rows(*tables.database, key);
        if (rows.empty()) return;
        rows.addNumbers("GAIN", "FREQ", pairs);
        answer.text = shown(rows.value("ANTENNA"));  // of the first row still
      },
      &answer.text);
  answer.gains = pairs.firsts;
  answer.frequencies = pairs.seconds;
  return answer;
}

Answer ofQuery(const CursorTables& tables, const KeyedRows::Key& key) {
  Answer answer;
  NumberPairs pairs;
  const std::string order = key.orderedBy.empty() ? "" : " ORDER BY " + key.orderedBy;
  const std::string sql =
      "Select * from [" + key.table + "] WHERE " + key.field + " = '" + replaceAll(key.text, "'", "''") + "'" + order;
  answer.failure = failureNumberOf(
      [&] {
        const RecordsetPtr rows = tables.open(sql, RecordsetType::snapshot);
        if (rows->Eof()) return;
        answer.text = shown(rows->value("ANTENNA"));
        rows->addNumbers(rows->Fields("GAIN"), rows->Fields("FREQ"), pairs);
      },
      &answer.text);
  answer.gains = pairs.firsts;
  answer.frequencies = pairs.seconds;
  return answer;
}

void expectAlike(const CursorTables& tables, const std::string& text, const std::string& orderedBy = "",
                 const std::string& field = "ATYPE_ID", const std::string& table = "AMSTEST") {
  const KeyedRows::Key key{table, field, text, orderedBy};
  const Answer wanted = ofQuery(tables, key);
  const Answer found = ofKey(tables, key);
  EXPECT_EQ(found, wanted) << table << ' ' << field << ' ' << text << ' ' << orderedBy << ": " << found.text << " / "
                           << wanted.text;
}

TEST(KeyedRows, AreThoseOfTheQueryForAnyText) {
  const CursorTables tables;
  tables.add("O'NEIL", "quoted", 3, 4);
  tables.add("\xC3\x84-1", "outside ASCII", 5, 6);
  for (const char* text : {"A1", "a1", "A1   ", " A1", "A", "A12", "B2", "C3", "none", "O'NEIL", "\xC3\x84-1", "",
                           "a text that is longer than the field"}) {
    expectAlike(tables, text);
    expectAlike(tables, text, "GAIN");
  }
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "atype_id", "O'NEIL", ""}).gains, (std::vector<double>{3}));
}

TEST(KeyedRows, StandInTheOrderAskedFor) {
  const CursorTables tables;
  tables.add("K", "second", 2, 20);
  tables.add("K", "first", 1, 30);
  tables.add("L", "in order", 1, 5);
  tables.add("L", "in order too", 1, 4);
  tables.add("L", "as well", 3, 3);
  for (const int frequency : {7, 1, 9, 4, 2, 8}) tables.add("M", "of two gains", frequency % 2, frequency);
  for (const char* id : {"K", "L", "M", "A1", "C3"}) {
    for (const char* order : {"GAIN", "gain", "FREQ", "ANTENNA", "MADE", "NOFIELD", "GAIN DESC"}) {
      expectAlike(tables, id, order);
    }
  }
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "ATYPE_ID", "K", "GAIN"}).frequencies, (std::vector<double>{30, 20}));
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "ATYPE_ID", "L", "GAIN"}).frequencies, (std::vector<double>{5, 4, 3}));
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "ATYPE_ID", "M", "GAIN"}).frequencies, (std::vector<double>{4, 2, 8, 7, 1, 9}));
}

TEST(KeyedRows, LeaveOutDeletedOnes) {
  const CursorTables tables;
  DbfFile::open(tables.folder.file("AMSTEST.DBF"))->markDeleted(0);
  expectAlike(tables, "A1");
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "ATYPE_ID", "A1", ""}).text, "panel");
}

TEST(KeyedRows, OfAFieldThatIsNoTextAreFoundToo) {
  const CursorTables tables;
  expectAlike(tables, "10", "", "GAIN");
  expectAlike(tables, "10", "FREQ", "GAIN");
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "GAIN", "10", ""}).frequencies, (std::vector<double>{900}));
}

TEST(KeyedRows, FailAsTheQueryDoes) {
  const CursorTables tables;
  for (const char* table : {"AMSNONE", "AMS TEST", "AMS]TEST"}) expectAlike(tables, "A1", "", "ATYPE_ID", table);
  expectAlike(tables, "A1", "", "NOFIELD");
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "NOFIELD", "A1", ""}).failure, failure::badQuery);
  const auto alone = DbfFile::open(tables.folder.file("AMSTEST.DBF"), false, Sharing::exclusive);
  expectAlike(tables, "A1");
  EXPECT_EQ(ofKey(tables, {"AMSTEST", "ATYPE_ID", "A1", ""}).failure, failure::cannotOpen);
}

TEST(KeyedRows, KeepOthersFromHavingTheTableAloneUntilTheyAreClosed) {
  const CursorTables tables;
  const auto openAlone = [&] { DbfFile::open(tables.folder.file("AMSTEST.DBF"), false, Sharing::exclusive); };
  KeyedRows rows(*tables.database, {"AMSTEST", "ATYPE_ID", "B2", ""});
  EXPECT_EQ(failureNumberOf(openAlone), failure::cannotOpen);
  EXPECT_EQ(failureNumberOf([&] { rows.value("NOFIELD"); }), failure::noSuchField);
  rows.close();
  EXPECT_EQ(failureNumberOf(openAlone), 0);
  EXPECT_EQ(failureNumberOf([&] { rows.value("GAIN"); }), failure::objectNotSet);
}

TEST(KeyedRows, GiveNumbersAgainAndBehindOthers) {
  const CursorTables tables;
  KeyedRows rows(*tables.database, {"AMSTEST", "ATYPE_ID", "B2", "GAIN"});
  NumberPairs pairs;
  for (int times = 1; times <= 3; ++times) {
    rows.addNumbers("GAIN", "FREQ", pairs);
    EXPECT_EQ(pairs.firsts, std::vector<double>(static_cast<std::size_t>(times), 10));
    EXPECT_EQ(pairs.seconds, std::vector<double>(static_cast<std::size_t>(times), 900));
  }
  pairs.most = 3;
  rows.addNumbers("GAIN", "FREQ", pairs);
  EXPECT_EQ(pairs.firsts.size(), 3U);
}

// Rows noted for a state at rest count only as long as the file is in it.
class NotedAtRest : public test::OwnClockCuts {
 protected:
  NotedAtRest() {
    setAge(3600 * kSecond);
    count(isUpper("NONE"));
  }
};

TEST_F(NotedAtRest, ACursorSeesWhatAnotherHasWrittenSince) {
  know();
  const RecordsetPtr rows = open(isUpper("ID003"));
  EXPECT_EQ(rows->rowCount(), 50);
  overwriteInAnotherProcess(7, "ID003");
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 51);
}

TEST_F(NotedAtRest, ACursorWithoutRowsSeesTheFirstOneThatAnotherHasWrittenSince) {
  know();
  const RecordsetPtr rows = open(isUpper("NEW"));
  EXPECT_EQ(rows->rowCount(), 0);
  overwriteInAnotherProcess(7, "NEW  ");
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 1);
}

TEST_F(NotedAtRest, ACursorSeesTheRowsThatThisProcessHasAddedSince) {
  know();
  const RecordsetPtr rows = open(isUpper("ID003"));
  add("ID003");
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 51);
  setAge(3600 * kSecond);
  rows->Requery();
  EXPECT_EQ(rows->rowCount(), 51);
}

TEST_F(NotedAtRest, AreReadWithoutALockButThatOfTheOpening) {
  know();
  machine_.locksTried = 0;
  EXPECT_EQ(count(isUpper("ID003")), 50);
  EXPECT_EQ(machine_.locksTried, 1);
}

}  // namespace
}  // namespace vantrelix

#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "tables/SqlParser.h"
#include "tables/SqlQuery.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::CursorTables;
using test::failureNumberOf;

constexpr const char* kAll = "Select * from [AMSTEST]";

// Puts a gain into a row as another program does that cares for no lock.
void overwriteGain(const CursorTables& tables, int row, const std::string& digits) {
  const auto table = DbfFile::open(tables.folder.file("AMSTEST.DBF"), true);
  const DbfField& gain = table->fields()[2];
  const int header = 32 + 32 * static_cast<int>(table->fields().size()) + 1;
  const auto file = platform::current().open(table->path(), platform::OpenMode::readWrite);
  const std::string bytes = std::string(static_cast<std::size_t>(gain.width) - digits.size(), ' ') + digits;
  file->writeAt(static_cast<std::uint64_t>(header + row * table->recordLength() + gain.offset), bytes.data(),
                bytes.size());
}

std::string gainsFromHere(Recordset& rows) {
  std::string result;
  for (; !rows.Eof(); rows.MoveNext()) {
    const Value gain = rows.value("GAIN");
    result += (result.empty() ? "" : " ") + (gain.isNull() ? "-" : gain.asText());
  }
  return result;
}

TEST(Snapshot, KeepsWhatItFound) {
  const CursorTables tables;
  for (const auto type : {RecordsetType::snapshot, RecordsetType::forwardOnly}) {
    overwriteGain(tables, 1, "10.0000");
    const RecordsetPtr picture = tables.open("Select * from [AMSTEST] order by GAIN desc", type);
    const RecordsetPtr live = tables.open("Select * from [AMSTEST] order by GAIN desc");
    overwriteGain(tables, 1, "11.0000");
    EXPECT_EQ(gainsFromHere(*picture), "10 9.5 2.15 -");
    EXPECT_EQ(gainsFromHere(*live), "11 9.5 2.15 -");
  }
}

TEST(Snapshot, SeesNothingOfItsOwnProcessEither) {
  const CursorTables tables;
  const RecordsetPtr picture = tables.open(kAll, RecordsetType::snapshot);
  const RecordsetPtr live = tables.open(kAll);
  live->Edit();
  live->put("GAIN", 7.0);
  live->Update();
  live->MoveNext();
  live->Delete();
  EXPECT_EQ(picture->valueAt(0, "GAIN"), Value(2.15));
  EXPECT_EQ(picture->valueAt(1, "GAIN"), Value(10.0));
  picture->FindFirst("GAIN = 10");
  EXPECT_FALSE(picture->NoMatch());
  EXPECT_EQ(picture->AbsolutePosition(), 1);
  EXPECT_EQ(gainsFromHere(*picture), "10 9.5 -");
}

TEST(Snapshot, ReadsAnewAtRequery) {
  const CursorTables tables;
  const RecordsetPtr picture = tables.open(kAll, RecordsetType::snapshot);
  overwriteGain(tables, 0, "3.2500");
  picture->Requery();
  EXPECT_EQ(gainsFromHere(*picture), "3.25 10 9.5 -");
}

TEST(Snapshot, OpenedNextSeesAChangeOfTheSameLength) {
  const CursorTables tables;
  const std::string sql = "Select * from [AMSTEST] where ATYPE_ID = 'B2'";
  EXPECT_EQ(gainsFromHere(*tables.open(sql, RecordsetType::snapshot)), "10");
  for (const char* digits : {"11.0000", "12.0000", "13.0000"}) {
    overwriteGain(tables, 1, digits);
    EXPECT_EQ(tables.open(sql, RecordsetType::snapshot)->value("GAIN"), Value(std::stod(digits)));
  }
}

TEST(Snapshot, ComputesColumnsAndFindsByThem) {
  const CursorTables tables;
  const RecordsetPtr rows =
      tables.open("Select GAIN*2 as TWICE, ucase(ANTENNA) as NAME from [AMSTEST]", RecordsetType::snapshot);
  rows->MoveNext();
  EXPECT_EQ(rows->value("TWICE"), Value(20.0));
  EXPECT_EQ(trim(rows->value("NAME").asText()), "ARRAY");
  rows->FindFirst("GAIN > 9 and ANTENNA like 'p*'");
  EXPECT_EQ(rows->value("TWICE"), Value(19.0));
}

TEST(Snapshot, OfNoRowsHasNone) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open("Select * from [AMSTEST] where GAIN > 100", RecordsetType::snapshot);
  EXPECT_TRUE(rows->Eof());
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_EQ(failureNumberOf([&] { rows->MoveFirst(); }), failure::noCurrentRecord);
}

NumberPairs numbersOf(Recordset& rows, const char* first, const char* second, std::size_t most = SIZE_MAX) {
  NumberPairs pairs;
  pairs.most = most;
  rows.addNumbers(rows.Fields(first), rows.Fields(second), pairs);
  return pairs;
}

TEST(AddNumbers, LeavesOutRowsWithANull) {
  const CursorTables tables;
  for (const auto type : {RecordsetType::snapshot, RecordsetType::dynaset}) {
    const RecordsetPtr rows = tables.open(kAll, type);
    const NumberPairs pairs = numbersOf(*rows, "GAIN", "FREQ");
    EXPECT_EQ(pairs.firsts, (std::vector<double>{2.15, 10}));
    EXPECT_EQ(pairs.seconds, (std::vector<double>{150, 900}));
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->RecordCount(), 4);
  }
}

TEST(AddNumbers, AddsBehindThoseThatAreThere) {
  const CursorTables tables;
  const RecordsetPtr rows =
      tables.open("Select * from [AMSTEST] where FREQ > 0 order by GAIN", RecordsetType::snapshot);
  NumberPairs pairs{SIZE_MAX, {7}, {8}};
  rows->addNumbers(rows->Fields("GAIN"), rows->Fields("FREQ"), pairs);
  EXPECT_EQ(pairs.firsts, (std::vector<double>{7, 2.15, 10}));
  EXPECT_EQ(pairs.seconds, (std::vector<double>{8, 150, 900}));
  rows->addNumbers(rows->Fields("GAIN"), rows->Fields("FREQ"), pairs);
  EXPECT_EQ(pairs.firsts.size(), 3U);
}

TEST(AddNumbers, EndsWhereThereAreAsManyAsWanted) {
  const CursorTables tables;
  for (const auto type : {RecordsetType::snapshot, RecordsetType::dynaset}) {
    const RecordsetPtr rows = tables.open("Select * from [AMSTEST] where FREQ > 0", type);
    EXPECT_EQ(numbersOf(*rows, "GAIN", "FREQ", 1).firsts, (std::vector<double>{2.15}));
    EXPECT_EQ(rows->AbsolutePosition(), 1);
    EXPECT_EQ(numbersOf(*rows, "GAIN", "FREQ", 1).seconds, (std::vector<double>{900}));
    EXPECT_EQ(rows->AbsolutePosition(), 2);
  }
}

TEST(AddNumbers, GivesThemInTheOrderOfTheRows) {
  const CursorTables tables;
  for (const auto type : {RecordsetType::snapshot, RecordsetType::dynaset}) {
    const RecordsetPtr rows = tables.open("Select * from [AMSTEST] where GAIN < 99 order by ANTENNA desc", type);
    EXPECT_EQ(numbersOf(*rows, "GAIN", "GAIN").firsts, (std::vector<double>{9.5, 2.15, 10}));
  }
}

TEST(AddNumbers, BeginsAtTheCurrentRowAndStandsWhereItFailed) {
  const CursorTables tables;
  tables.add("12", "7", 1, 2);
  RecordsetPtr rows = tables.open(kAll, RecordsetType::snapshot);
  rows->setAbsolutePosition(1);
  EXPECT_EQ(failureNumberOf([&] { numbersOf(*rows, "ANTENNA", "GAIN"); }), failure::typeMismatch);
  EXPECT_EQ(rows->AbsolutePosition(), 1);
  rows->setAbsolutePosition(3);
  EXPECT_EQ(numbersOf(*rows, "ANTENNA", "ATYPE_ID").seconds, (std::vector<double>{12}));
  rows = tables.open("Select * from [AMSTEST] order by ATYPE_ID", RecordsetType::snapshot);
  NumberPairs pairs;
  EXPECT_EQ(failureNumberOf([&] { rows->addNumbers(rows->Fields("FREQ"), rows->Fields("ATYPE_ID"), pairs); }),
            failure::typeMismatch);
  EXPECT_EQ(pairs.firsts, (std::vector<double>{2}));
  EXPECT_EQ(pairs.seconds, (std::vector<double>{12}));
}

TEST(AddNumbers, NeedsARowAndFieldsOfItsOwn) {
  const CursorTables tables;
  const RecordsetPtr rows = tables.open(kAll, RecordsetType::snapshot);
  const RecordsetPtr other = tables.open(kAll, RecordsetType::snapshot);
  NumberPairs pairs;
  EXPECT_EQ(failureNumberOf([&] { rows->addNumbers(other->Fields("GAIN"), rows->Fields("GAIN"), pairs); }),
            failure::noSuchField);
  rows->MovePrevious();
  EXPECT_EQ(failureNumberOf([&] { numbersOf(*rows, "GAIN", "GAIN"); }), failure::noCurrentRecord);
}

// A query that may keep so many bytes.
SqlRows rowsOf(const CursorTables& tables, const std::string& sql, std::size_t mostKept) {
  SqlStatement statement = parseSql(sql);
  const auto table = DbfFile::open(tables.folder.file("AMSTEST.DBF"), true);
  return SqlQuery(std::get<SqlSelect>(std::move(statement)), table).rows(mostKept);
}

TEST(QueryRows, AreKeptUpToTheLimitAndInTheSameOrderBeyondIt) {
  const CursorTables tables;
  const auto length = static_cast<std::size_t>(DbfFile::open(tables.folder.file("AMSTEST.DBF"), true)->recordLength());
  for (const std::string condition : {"", " where ATYPE_ID <> 'X'"}) {
    for (const std::string order :
         {"", " order by GAIN", " order by ANTENNA", " order by GAIN desc", " order by FREQ-1"}) {
      const std::string sql = kAll + condition + order;
      const SqlRows whole = rowsOf(tables, sql, 4 * length);
      EXPECT_TRUE(whole.kept);
      EXPECT_EQ(whole.records.size(), 4 * length) << sql;
      const SqlRows numbers = rowsOf(tables, sql, 4 * length - 1);
      EXPECT_FALSE(numbers.kept);
      EXPECT_TRUE(numbers.records.empty());
      EXPECT_EQ(numbers.numbers, whole.numbers) << sql;
      EXPECT_EQ(rowsOf(tables, sql, 0).numbers, whole.numbers) << sql;
    }
  }
}

// Of a table of 70 MB, nearly all of it a hole in its file.
TEST(Snapshot, ThatWouldTakeTooMuchMemoryReadsTheFile) {
  const test::TempFolder folder;
  const std::string path = folder.file("HUGE.DBF");
  std::vector<DbfNewField> fields{{"GAIN", 'N', 10, 2}};
  for (int i = 0; i < 250; ++i) fields.push_back({"F" + std::to_string(i), 'C', 254, 0});
  DbfFile::create(path, fields);
  const auto table = DbfFile::open(path);
  constexpr std::uint32_t kRows = 1120;
  const std::uint64_t header = 32 + 32 * fields.size() + 1;
  const auto length = static_cast<std::uint64_t>(table->recordLength());
  const auto file = platform::current().open(path, platform::OpenMode::readWrite);
  file->truncate(header + kRows * length);
  const std::uint32_t count = kRows;
  file->writeAt(4, &count, sizeof count);
  const auto writeGain = [&](std::uint64_t row, const std::string& digits) {
    file->writeAt(header + row * length + 1, digits.data(), digits.size());
  };
  writeGain(kRows - 1, "      1.00");
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  const RecordsetPtr rows = database->OpenRecordset("Select * from HUGE", RecordsetType::snapshot);
  rows->MoveLast();
  EXPECT_EQ(rows->value("GAIN"), Value(1.0));
  writeGain(kRows - 1, "      2.00");
  rows->MoveLast();
  EXPECT_EQ(rows->value("GAIN"), Value(2.0));
}

}  // namespace
}  // namespace vantrelix

// What the log tells of values that a repair could not carry along.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tables/DbfBytes.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::addRow;
using test::column;
using test::RawField;
using test::RawTable;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* kTable = "ANT.DBF";

class RepairLosses : public ::testing::Test {
 protected:
  // A table of that one field beside its name, without rows.
  void make(const RawField& field, FieldType becomes) {
    suite.folder().write(kTable, RawTable{.fields = {{"SITE", 'C', 4}, field}}.bytes());
    fields = {{"SITE", 4, FieldType::text, ""}, {field.name, 8, becomes, ""}, {"POWER", 9, FieldType::text, ""}};
  }
  // One row whose field holds these bytes.
  void makeOf(const RawField& field, const std::string& bytes, FieldType becomes) {
    make(field, becomes);
    suite.folder().write(kTable,
                         RawTable{.fields = {{"SITE", 'C', 4}, field}, .rows = " Hill" + bytes, .count = 1}.bytes());
  }
  int repaired() { return RSTblValidRS(fields, path, true, false, ""); }
  // Repairs the table and tells what the log says of it.
  std::string told() {
    test::StoppedClock clock(platform::current());
    const platform::Substitute substitute(clock);
    EXPECT_EQ(repaired(), tableCode::fine);
    return suite.log();
  }
  static std::string record(const std::string& table, const std::string& lost, const std::string& kept) {
    return "Table " + table + ": its repair could not keep every value: " + lost + ". The table as it was is kept as " +
           kept + ".";
  }
  std::string recordOf(const std::string& lost) const {
    return record(suite.folder().machine(kTable), lost, suite.folder().machine("ANT_202611211648.DBF"));
  }

  test::TempSuite suite;
  const std::string path = suite.file(kTable);
  FieldList fields;
};

TEST_F(RepairLosses, OfAFieldWhoseTypeIsNotReadAreTold) {
  makeOf({"STAMP", '@', 8}, "\1\2\3\4\5\6\7\10", FieldType::text);
  EXPECT_THAT(told(), HasSubstr(recordOf("STAMP in 1 row")));
  EXPECT_THAT(column(path, "STAMP"), ElementsAre("(null)"));
}

TEST_F(RepairLosses, OfABlankFieldWhoseTypeIsNotReadAreNone) {
  makeOf({"STAMP", '@', 8}, std::string(8, '\0'), FieldType::text);
  EXPECT_THAT(told(), Not(HasSubstr("could not keep")));
}

TEST_F(RepairLosses, OfTheTimeBesideADateAreTold) {
  make({"SEEN", 'T', 8}, FieldType::date);
  addRow(path, {{"SITE", "a"}, {"SEEN", DateTime{2026, 11, 21, 16, 2, 48}}});
  addRow(path, {{"SITE", "b"}, {"SEEN", DateTime{2026, 11, 21}}});
  addRow(path, {{"SITE", "c"}});
  addRow(path, {{"SITE", "d"}, {"SEEN", DateTime{2026, 11, 21, 0, 0, 1}}});
  EXPECT_THAT(told(), HasSubstr(recordOf("SEEN in 2 rows")));
  EXPECT_THAT(column(path, "SITE"), ElementsAre("a", "b", "c", "d"));
}

TEST_F(RepairLosses, OfDatesWithoutATimeAreNone) {
  make({"SEEN", 'T', 8}, FieldType::date);
  addRow(path, {{"SEEN", DateTime{2026, 11, 21}}});
  EXPECT_EQ(told(), "");
}

TEST_F(RepairLosses, OfDecimalsAreTold) {
  make({"GAIN", 'N', 14, 10}, FieldType::doubleNumber);
  addRow(path, {{"GAIN", 0.1234567891}});
  addRow(path, {{"GAIN", 10.25}});
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 1 row")));
  EXPECT_THAT(column(path, "GAIN"), ElementsAre("0.12345679", "10.25"));
}

TEST_F(RepairLosses, OfBinaryNumbersAreTold) {
  make({"GAIN", 'B', 8}, FieldType::doubleNumber);
  addRow(path, {{"GAIN", 1.0 / 3}});
  addRow(path, {{"GAIN", 10.25}});
  addRow(path, {{"GAIN", 0.1}});
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 1 row")));
}

TEST_F(RepairLosses, OfNumbersThatBecomeWholeAreTold) {
  make({"GAIN", 'N', 8, 2}, FieldType::longInteger);
  addRow(path, {{"GAIN", 10.25}});
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 1 row")));
}

TEST_F(RepairLosses, OfNumbersThatBecomeYesOrNoAreTold) {
  make({"GAIN", 'N', 8, 2}, FieldType::boolean);
  addRow(path, {{"GAIN", 10.25}});
  addRow(path, {{"GAIN", 0}});
  addRow(path, {{"GAIN", 1}});
  addRow(path, {{"GAIN", -1}});
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 1 row")));
}

TEST_F(RepairLosses, OfTextsThatBecomeNumbersAreTold) {
  make({"GAIN", 'C', 14}, FieldType::doubleNumber);
  addRow(path, {{"GAIN", "0.1234567891"}});
  addRow(path, {{"GAIN", "10.25"}});
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 1 row")));
}

TEST_F(RepairLosses, OfWhatIsNoValueOfItsFieldAreTold) {
  makeOf({"GAIN", 'N', 6, 2}, " 10,25", FieldType::doubleNumber);
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 1 row")));
}

TEST_F(RepairLosses, OfWhatOtherProgramsPutForNothingAreNone) {
  makeOf({"SEEN", 'D', 8}, "00000000", FieldType::date);
  EXPECT_EQ(told(), "");
  makeOf({"SEEN", 'D', 8}, "  /  /  ", FieldType::date);
  EXPECT_EQ(told(), "");
  makeOf({"IS_UP", 'L', 1}, "?", FieldType::boolean);
  EXPECT_EQ(told(), "");
  makeOf({"GAIN", 'N', 6, 2}, "   .  ", FieldType::doubleNumber);
  EXPECT_EQ(told(), "");
}

TEST_F(RepairLosses, OfAFieldThatIsNullByItsFlagAreNone) {
  const RawTable raw{.version = 0x30,
                     .fields = {{"SITE", 'C', 4}, {"GAIN", 'N', 4, 0, 2}, {"_NullFlags", '0', 1, 0, 5}},
                     .rows = std::string(" Hill*** \x01", 10),
                     .count = 1,
                     .terminator = "\r" + std::string(263, '\0')};
  suite.folder().write(kTable, raw.bytes());
  fields = {{"SITE", 4, FieldType::text, ""}, {"GAIN", 8, FieldType::doubleNumber, ""}, {"POWER", 9, {}, ""}};
  fields.back().Type = FieldType::text;
  EXPECT_EQ(told(), "");
}

TEST_F(RepairLosses, OfSeveralFieldsComeInOneRecord) {
  suite.folder().write(kTable, RawTable{.fields = {{"GAIN", 'B', 8}, {"SEEN", 'T', 8}, {"OK", 'N', 5}}}.bytes());
  fields = {{"SEEN", 8, FieldType::date, ""},
            {"GAIN", 8, FieldType::doubleNumber, ""},
            {"OK", 5, FieldType::longInteger, ""},
            {"POWER", 9, FieldType::text, ""}};
  addRow(path, {{"GAIN", 1.0 / 3}, {"SEEN", DateTime{2026, 11, 21, 16, 2, 48}}, {"OK", 7}});
  addRow(path, {{"GAIN", 2.0 / 3}, {"OK", 8}});
  DbfFile::open(path)->markDeleted(0);
  addRow(path, {{"GAIN", 2.0 / 3}, {"SEEN", DateTime{2026, 11, 21, 16, 2, 48}}});
  EXPECT_THAT(told(), HasSubstr(recordOf("SEEN in 1 row, GAIN in 2 rows")));
}

// Rows of more than one read, so that the two tables are read side by side.
TEST_F(RepairLosses, AreCountedInALongTable) {
  make({"GAIN", 'N', 14, 10}, FieldType::doubleNumber);
  auto table = DbfFile::open(path);
  std::vector<unsigned char> records;
  constexpr int kRows = 40000;
  for (int i = 0; i < kRows; ++i) {
    std::vector<unsigned char> record = table->blankRecord();
    table->put(record.data(), 1, i % 97 + (i % 2 == 0 ? 0 : 0.0000000001));
    if (i % 3 == 0) record[0] = '*';
    records.insert(records.end(), record.begin(), record.end());
  }
  table->append(records.data(), kRows);
  table.reset();
  EXPECT_THAT(told(), HasSubstr(recordOf("GAIN in 13333 rows")));
}

TEST_F(RepairLosses, ThatCannotBeLoggedDoNotKeepItFromBeingDone) {
  make({"GAIN", 'B', 8}, FieldType::doubleNumber);
  addRow(path, {{"GAIN", 1.0 / 3}});
  class NoLog : public platform::FaultPlatform {
   public:
    NoLog() : FaultPlatform(platform::current()) {}
    std::unique_ptr<platform::File> open(const std::string& file, platform::OpenMode mode) override {
      if (file.find("QVTECSUP") != std::string::npos) throw RunTimeFailure(failure::permissionDenied, "no log");
      return FaultPlatform::open(file, mode);
    }
  } noLog;
  const platform::Substitute substitute(noLog);
  EXPECT_EQ(repaired(), tableCode::fine);
  EXPECT_EQ(suite.log(), "");
}

}  // namespace
}  // namespace vantrelix

// Tables that other programs made. Every value asserted here was read off the file's bytes or another reader's output.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempSuite.h"
#include "tables/DbfBytes.h"
#include "tables/tableRecovery.h"

namespace vantrelix {
namespace {

namespace fs = std::filesystem;
using test::failureOf;
using test::valueOf;

class RealTables : public ::testing::Test {
 protected:
  void SetUp() override {
    if (test::realData("dbf").empty()) GTEST_SKIP() << "the shared real files are not here";
  }
  std::string path(const std::string& name) { return test::realData("dbf") + "/" + name; }
  std::shared_ptr<DbfFile> open(const std::string& name) { return DbfFile::open(path(name), true); }
  std::string text(DbfFile& table, std::uint32_t row, std::string_view field) {
    const std::string whole = valueOf(table, row, field).text();
    return whole.substr(0, whole.find_last_not_of(' ') + 1);
  }

  test::TempSuite suite;
};

// Every row read, and what its memo fields gave.
struct WholeTable {
  std::uint32_t rows = 0;
  int memoFields = 0;
  int memoTexts = 0;
  std::vector<Value> values;
};

WholeTable readWhole(const std::string& path) {
  const auto table = DbfFile::open(path, true);
  WholeTable whole;
  for (const DbfField& field : table->fields()) whole.memoFields += field.type == 'M' ? 1 : 0;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    for (std::size_t field = 0; field < table->fields().size(); ++field) {
      whole.values.push_back(table->value(record, field));
      if (table->fields()[field].type == 'M') whole.memoTexts += whole.values.back().isText() ? 1 : 0;
    }
    return ++whole.rows > 0;
  });
  EXPECT_EQ(whole.rows, table->recordCount()) << path;
  return whole;
}

// The tables and containers among the files, in the order of their names.
std::vector<std::string> tableNames() {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(test::realData("dbf"))) {
    std::string extension = entry.path().extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    if (extension == ".dbf" || extension == ".dbc") names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// Refused for their formats: dBase II, dBase 7, and compressed rows.
bool isOfAnotherFormat(const std::string& name) {
  static const std::vector<std::string> known = {
      "albfernandez__bug102.dbf", "albfernandez__dbase_7.dbf",     "albfernandez__sids.dbc",
      "albfernandez__storm.dbc",  "albfernandez__test_delete.dbf", "emelhu__Seged7_10.dbf",
      "emelhu__Seged7_3.dbf",     "emelhu__Seged7_6.dbf",          "emelhu__Seged7_7.dbf",
      "emelhu__Seged7_9.dbf",     "hisamu__dBaseVII_double.dbf",   "hisamu__dBaseVII_int.dbf",
      "hisamu__dBaseVII_ts.dbf",  "infused__dbase_02.dbf"};
  return std::find(known.begin(), known.end(), name) != known.end();
}

TEST_F(RealTables, EveryOneIsReadWholeOrRefusedForItsFormat) {
  const std::vector<std::string> names = tableNames();
  EXPECT_EQ(names.size(), 140U);
  for (const std::string& name : names) {
    WholeTable whole;
    const RunTimeFailure failure = failureOf([&] { whole = readWhole(path(name)); });
    EXPECT_EQ(failure.number(), isOfAnotherFormat(name) ? failure::damagedTable : 0) << failure.description();
    EXPECT_EQ(failure.description().find("dBase") != std::string::npos, failure.number() != 0) << failure.description();
  }
}

TEST_F(RealTables, EveryMemoTextThatAPointerLeadsToIsRead) {
  int texts = 0;
  for (const std::string& name : tableNames()) {
    if (isOfAnotherFormat(name)) continue;
    const WholeTable whole = readWhole(path(name));
    const auto faults = checkTable(path(name)).faults.totals();
    texts += whole.memoTexts;
    EXPECT_FALSE(faults.contains(FaultKind::memoBlock)) << name;
    EXPECT_FALSE(faults.contains(FaultKind::memoMissing)) << name;
  }
  EXPECT_GT(texts, 500);
  EXPECT_EQ(suite.log().find("memo"), std::string::npos) << suite.log();
}

TEST_F(RealTables, WhatIsRecoveredOfThemHasTheSameValues) {
  for (const std::string& name : tableNames()) {
    if (isOfAnotherFormat(name) || name == "mbostock__empty.dbf") continue;  // the latter has no field
    const WholeTable before = readWhole(path(name));
    const std::string made = suite.file("N" + name);
    const TableRecovery result = recoverTable(path(name), made);
    EXPECT_EQ(result.lostRows, 0U) << name;
    const WholeTable after = readWhole(made);
    EXPECT_EQ(after.rows, before.rows) << name;
    EXPECT_TRUE(after.values == before.values) << name;
    const TableCheck check = checkTable(made);
    for (const auto& [kind, total] : check.faults.totals()) {
      EXPECT_EQ(kind, FaultKind::textBytes) << name << ": " << faultName(kind);
    }
  }
}

TEST_F(RealTables, TablesOfOtherFormatsAreRefusedByName) {
  const auto reason = [&](const std::string& name) { return failureOf([&] { open(name); }).description(); };
  EXPECT_NE(reason("infused__dbase_02.dbf").find("dBase II"), std::string::npos);
  EXPECT_NE(reason("hisamu__dBaseVII_int.dbf").find("dBase 7"), std::string::npos);
  EXPECT_NE(reason("albfernandez__bug102.dbf").find("dBase 7"), std::string::npos);
}

TEST_F(RealTables, CompressedTablesAreRefusedAndNotReadAsGarbage) {
  for (const char* name : {"albfernandez__sids.dbc", "albfernandez__storm.dbc"}) {
    const RunTimeFailure failure = failureOf([&] { open(name); });
    EXPECT_EQ(failure.number(), failure::damagedTable) << name;
    EXPECT_NE(failure.description().find("compressed"), std::string::npos) << failure.description();
  }
}

TEST_F(RealTables, MemosOfAllThreeFormatsAreRead) {
  EXPECT_TRUE(text(*open("infused__dbase_83.dbf"), 0, "DESC").starts_with("Our Original assortment."));
  EXPECT_TRUE(text(*open("infused__dbase_8b.dbf"), 0, "MEMO").starts_with("First memo"));
  EXPECT_TRUE(text(*open("yellowfeathe__client.dbf"), 0, "CLIEN_HIST").starts_with("85-200  08/02/85"));
  EXPECT_TRUE(text(*open("iryndin__texto.dbf"), 0, "TEXTEX").starts_with("Alterações\r\n"));
  EXPECT_EQ(text(*open("yortus__vfp9_30_memo.dbf"), 1, "MEMO"), "Memo of record 2");
  const auto tiny = open("yortus__vfp9_memo_bs1.dbf");
  EXPECT_TRUE(tiny->value(test::recordOf(*tiny, 0).data(), 1).text().starts_with("Some notes here"));
}

TEST_F(RealTables, BinaryFieldsAreRead) {
  const auto table = open("valentin-kai__TEST.DBF");
  EXPECT_EQ(valueOf(*table, 0, "PRICE"), Value(12.3456));
  EXPECT_EQ(valueOf(*table, 0, "DOUBLE"), Value(78.9));
  EXPECT_EQ(valueOf(*table, 1, "DATETIME"), Value(DateTime{2022, 10, 10, 21, 4, 25}));
  EXPECT_EQ(valueOf(*table, 1, "FLOAT"), Value(123));
  EXPECT_EQ(valueOf(*table, 0, "VAR_NIL"), Value("Test value with variable length"));
  EXPECT_EQ(valueOf(*table, 2, "VAR"), Value("Test"));
  EXPECT_TRUE(valueOf(*table, 0, "BLOB").isNull());
  EXPECT_EQ(valueOf(*open("sebastiaankl__TEST.DBF"), 1, "USERNR"), Value(-600));
  EXPECT_EQ(valueOf(*open("yortus__vfp9_30.dbf"), 0, "FIELD3"), Value(DateTime{2013, 12, 12, 8, 30, 0}));
}

TEST_F(RealTables, NullFlagsAreRead) {
  const auto table = open("albfernandez__testfile.dbf");
  EXPECT_TRUE(valueOf(*table, 0, "D_FLAG").isNull());
  EXPECT_EQ(text(*table, 0, "TM_START"), "09:30:10");
  EXPECT_EQ(valueOf(*table, 0, "DT_START"), Value(DateTime{2020, 3, 27}));
  const auto varying = open("albfernandez__56-testdata.dbf");
  EXPECT_EQ(valueOf(*varying, 0, "KMMC"), Value("TEST"));
  EXPECT_EQ(valueOf(*varying, 0, "CSNO"), Value(1));
}

TEST_F(RealTables, TextsComeByTheirCodePages) {
  EXPECT_EQ(text(*open("infused__cp1251.dbf"), 0, "NAME"), "амбулаторно-поликлиническое");
  EXPECT_EQ(text(*open("geospatialpy__latin1.dbf"), 0, "Name"), "Ñandú");
  EXPECT_EQ(text(*open("mbostock__utf8-property.dbf"), 0, "☃"), "ηελλο ςορλδ");
  EXPECT_EQ(text(*open("infused__dbase_03_cyrillic.dbf"), 1, "ШАР"), "Культ");
  const auto chinese = open("xtet2008__VF9_Table.dbf");
  if (chinese->codePage().number() == 936) {
    EXPECT_EQ(text(*chinese, 0, "NAME"), "张三");
  }
}

TEST_F(RealTables, TextsLongerThan255AreReadAtTheirPlace) {
  const auto roots = open("yellowfeathe__FolderRoot.dbf");
  EXPECT_EQ(roots->fields()[0].width, 1040);
  EXPECT_EQ(text(*roots, 1, "DISC_ID"), "F64AADF0");
  EXPECT_EQ(text(*roots, 0, "FS_TYPE"), "NTFS");
  EXPECT_EQ(valueOf(*roots, 1, "FOLD_RT_ID"), Value(2));
  EXPECT_TRUE(valueOf(*roots, 0, "TS").isNull());
  EXPECT_EQ(valueOf(*open("hisamu__pr90.dbf"), 0, "AUTOLD").isNull(), true);
}

TEST_F(RealTables, HeadersThatLieAreReadByTheFile) {
  const auto stations = open("tmontaigu__stations_with_deleted.dbf");
  EXPECT_EQ(stations->recordLength(), 1017);
  EXPECT_EQ(text(*stations, 5, "name"), "Metro Center");
  EXPECT_EQ(open("osgeo__brklinz.dbf")->fields().size(), 1U);
  const auto continents = open("albfernandez__continents_no_header_record_terminator.dbf");
  EXPECT_EQ(continents->fields().size(), 1U);
  EXPECT_EQ(text(*continents, 0, "NAME"), text(*open("albfernandez__continents.dbf"), 0, "NAME"));
}

TEST_F(RealTables, OddValuesAreNull) {
  EXPECT_TRUE(valueOf(*open("olemb__invalid_value.dbf"), 0, "BIRTHDATE").isNull());
  EXPECT_EQ(valueOf(*open("olemb__invalid_value.dbf"), 1, "BIRTHDATE"), Value(DateTime{1980, 11, 12}));
  EXPECT_TRUE(valueOf(*open("mbostock__number-property.dbf"), 0, "FOO").isNull());
  EXPECT_TRUE(valueOf(*open("yellowfeathe__dbase_03_nullchar.dbf"), 1, "TXTCOL").isNull());
  EXPECT_EQ(valueOf(*open("exavera__10BytesDates.dbf"), 0, "BIRTHDATE"), Value(DateTime{1960, 1, 1}));
  EXPECT_TRUE(valueOf(*open("exavera__ZeroSizeColumn.dbf"), 0, "KRAJID").isNull());
}

TEST_F(RealTables, NumbersAreReadToTheirLastDigit) {
  EXPECT_EQ(valueOf(*open("infused__dbase_03_cyrillic.dbf"), 1, "ПЛОЩА"), Value(99.99));
  EXPECT_EQ(valueOf(*open("infused__dbase_8b.dbf"), 0, "FLOAT"), Value(1.23456789012346));
  EXPECT_EQ(valueOf(*open("sebastiaankl__TEST.DBF"), 1, "NUMBER"), Value(123456789.99));
  EXPECT_EQ(valueOf(*open("sebastiaankl__dkeza.dbf"), 0, "CURR"), Value(1234567890.1234));
}

TEST_F(RealTables, ANumberInAnEmptyFormIsReadAsOtherReadersDo) {
  EXPECT_EQ(valueOf(*open("mpsystemsser__ENROLL.DBF"), 0, "MARK"), Value(0));
}

TEST_F(RealTables, AnUpdateOfACopyChangesNoOtherByte) {
  for (const char* name :
       {"infused__dbase_f5.dbf", "valentin-kai__TEST.DBF", "tmontaigu__stations.dbf", "osgeo__csah.dbf"}) {
    const std::string before = test::readMachineFile(path(name));
    suite.folder().write("COPY.DBF", before);
    const auto table = DbfFile::open(suite.file("COPY.DBF"));
    table->update(1, [&](unsigned char* record) { record[0] = '*'; });
    std::string expected = before;
    const std::size_t at = static_cast<unsigned char>(before[8]) + 256U * static_cast<unsigned char>(before[9]) +
                           static_cast<std::size_t>(table->recordLength());
    expected[at] = '*';
    EXPECT_EQ(suite.folder().read("COPY.DBF").substr(4), expected.substr(4)) << name;
  }
}

}  // namespace
}  // namespace vantrelix

// Tables through other programs' eyes: what we write reads the same there, and what others wrote reads the same here.
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <set>

#include "cli/CliRun.h"
#include "cli/OtherPrograms.h"
#include "foundation/text.h"
#include "support/TempSuite.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {
namespace {

std::string planetFile() {
  return "NAME Yagi 900\nFREQUENCY 900\nGAIN 12.5 dBd\nHORIZONTAL 3\n0 0\n120 3.25\n240 17.125\nVERTICAL 2\n0 0\n90 "
         "30\n";
}

class OwnLibrary : public testing::Test {
 protected:
  OwnLibrary() {
    const std::string suite = suite_.folder().machine();
    suite_.folder().write("a.msi", planetFile());
    runCli({"suite", "init", suite});
    runCli({"--suite", suite, "import", "generic", "AMSX0001", suite_.folder().machine("a.msi")});
  }
  std::string table(const std::string& name) const { return suite_.folder().machine("ANTENNAS/" + name + ".DBF"); }

  TempSuite suite_;
};

TEST_F(OwnLibrary, ReadsTheSameInTheGisLibrary) {
  if (!installed("ogr2ogr")) GTEST_SKIP() << "ogr2ogr is not installed";
  const Json expected = {{"AMSX0001", 1}, {"AHDX0001", 3}, {"AVDX0001", 2}};
  for (const auto& [name, rows] : expected.items()) {
    const Json theirs = rowsThroughOgr(table(name));
    ASSERT_EQ(theirs.size(), rows.get<std::size_t>()) << name;
    const Comparison result = compare(runCli({"--json", "table", "dump", table(name)}).json(), theirs);
    EXPECT_EQ(result.firstDifference, "") << name;
    EXPECT_GE(result.values, 6) << name;
  }
}

TEST_F(OwnLibrary, ReadsTheSameInTheTableViewer) {
  if (!installed("dbview")) GTEST_SKIP() << "dbview is not installed";
  const std::string master = outputOf("dbview -b -t '" + table("AMSX0001") + "'");
  EXPECT_EQ(master.rfind("X00010000001:Yagi 900:12.5000:dBd:900.00000:900.00000:MHz:", 0), 0U) << master;
  const std::string points = outputOf("dbview -b -t '" + table("AHDX0001") + "'");
  EXPECT_NE(points.find("X00010000001:120.0000:9.2500:"), std::string::npos) << points;
  EXPECT_NE(points.find("X00010000001:240.0000:-4.6250:"), std::string::npos) << points;
}

TEST_F(OwnLibrary, ReadsTheSameInTheOfficeProgram) {
  if (!installed("soffice")) GTEST_SKIP() << "soffice is not installed";
  const Json expected = {{"AMSX0001", 1}, {"AHDX0001", 3}, {"AVDX0001", 2}};
  for (const auto& [name, rows] : expected.items()) {
    const Json theirs = rowsThroughOffice(table(name), suite_.folder().machine());
    ASSERT_EQ(theirs.size(), rows.get<std::size_t>()) << name;
    const Comparison result = compare(runCli({"--json", "table", "dump", table(name)}).json(), theirs);
    EXPECT_EQ(result.firstDifference, "") << name;
    EXPECT_GE(result.values, 6) << name;
  }
}

// An update, a deletion and new rows of ours, as the others see them.
TEST_F(OwnLibrary, ChangesReadTheSameInTheOtherPrograms) {
  {
    const auto file = DbfFile::open(table("AHDX0001"));
    const auto angle = static_cast<std::size_t>(file->fieldIndex("HOR_AZ"));
    file->update(1, [&](unsigned char* record) { file->put(record, angle, -0.0625); });
    file->markDeleted(0);
    std::vector<unsigned char> row = file->blankRecord();
    file->put(row.data(), angle, 359.5);
    file->append(row.data());
  }
  const Json ours = runCli({"--json", "table", "dump", table("AHDX0001")}).json();
  ASSERT_EQ(ours["rows"].size(), 3U);
  EXPECT_EQ(ours["rows"][0]["HOR_AZ"], -0.0625);
  EXPECT_EQ(ours["rows"][2]["HOR_AZ"], 359.5);
  if (installed("ogr2ogr")) {
    EXPECT_EQ(compare(ours, rowsThroughOgr(table("AHDX0001"))).firstDifference, "");
  }
  if (installed("soffice")) {
    const Json theirs = rowsThroughOffice(table("AHDX0001"), suite_.folder().machine());
    EXPECT_EQ(compare(ours, theirs).firstDifference, "");
  }
  if (installed("dbview")) {
    const std::string text = outputOf("dbview -b -t '" + table("AHDX0001") + "'");
    EXPECT_NE(text.find("X00010000001:-0.0625:9.2500:"), std::string::npos) << text;
    EXPECT_NE(text.find(":359.5000::"), std::string::npos) << text;
  }
}

// What the others write.
class TablesOfOthers : public testing::Test {
 protected:
  Json dump(const std::string& name) const {
    return runCli({"--json", "table", "dump", suite_.folder().machine(name)}).json();
  }

  TempSuite suite_;
};

TEST_F(TablesOfOthers, WrittenByTheOfficeProgramReadTheSameHere) {
  if (!installed("soffice")) GTEST_SKIP() << "soffice is not installed";
  suite_.folder().write("o.csv",
                        "\"NAME,C,20\",\"GAIN,N,10,3\",\"MADE,D\",\"COUNT,N,6,0\"\n"
                        "Yagi 9 dB,12.5,2026-11-21,7\n"
                        "Panel,-3.125,1999-02-28,123456\n"
                        "\"Quote \"\" and, comma\",0.001,,1\n");
  tablesFromOffice(suite_.folder().machine());
  const Json ours = dump("o.dbf");
  EXPECT_EQ(ours["rows"], Json::parse(R"([
    {"NAME": "Yagi 9 dB", "GAIN": 12.5, "MADE": "2026-11-21", "COUNT": 7},
    {"NAME": "Panel", "GAIN": -3.125, "MADE": "1999-02-28", "COUNT": 123456},
    {"NAME": "Quote \" and, comma", "GAIN": 0.001, "MADE": null, "COUNT": 1}])"));
  EXPECT_EQ(ours["fields"][1], Json::parse(R"({"name": "GAIN", "type": "N", "width": 10, "decimals": 3})"));
}

TEST_F(TablesOfOthers, WrittenByTheGisLibraryReadTheSameHere) {
  if (!installed("ogr2ogr")) GTEST_SKIP() << "ogr2ogr is not installed";
  suite_.folder().write("g.csv", "NAME,GAIN,COUNT\nYagi 9 dB,12.5,7\nPanel \xC3\xA9,-3.125,123456\n,,\n");
  const std::string folder = suite_.folder().machine();
  outputOf("cd '" + folder + "' && ogr2ogr -f 'ESRI Shapefile' g.dbf g.csv -oo AUTODETECT_TYPE=YES");
  const Json ours = dump("g.dbf");
  EXPECT_EQ(ours["rows"], Json::parse(R"([
    {"NAME": "Yagi 9 dB", "GAIN": 12.5, "COUNT": 7},
    {"NAME": "Panel \u00e9", "GAIN": -3.125, "COUNT": 123456},
    {"NAME": null, "GAIN": null, "COUNT": null}])"));
}

// Tables that the GIS library itself misreads: texts longer than 255 bytes, and two fields of one name.
const std::set<std::string> kMisreadThere = {"hisamu__pr90.dbf", "yellowfeathe__FolderRoot.dbf",
                                             "infused__dbase_03.dbf", "yellowfeathe__dbase_03.dbf"};

TEST(RealTables, ReadAsInTheGisLibraryOrAreRefusedWithAReason) {
  const std::string folder = realData("dbf");
  if (folder.empty() || !installed("ogr2ogr")) GTEST_SKIP() << "no real tables, or no ogr2ogr";
  const TempSuite suite;
  int read = 0;
  int refused = 0;
  int compared = 0;
  int values = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (lowerCase(entry.path().extension().string()) != ".dbf") continue;
    const CliRun dump = runCli({"--json", "table", "dump", entry.path().string()});
    if (dump.status != 0) {
      EXPECT_NE(dump.json()["error"].get<std::string>().find("3343"), std::string::npos) << dump.out;
      ++refused;
      continue;
    }
    ++read;
    const Json theirs = rowsThroughOgr(entry.path().string());
    if (theirs.empty() || kMisreadThere.count(entry.path().filename().string())) continue;
    const Comparison result = compare(dump.json(), theirs);
    EXPECT_EQ(result.firstDifference, "") << entry.path().filename();
    ++compared;
    values += result.values;
  }
  std::cout << read << " tables read, " << refused << " refused, " << compared << " compared in " << values
            << " values\n";
  EXPECT_GT(read, 100);
  EXPECT_GT(compared, 80);
  EXPECT_GT(values, 40000);
  EXPECT_GT(refused, 5);
}

}  // namespace
}  // namespace vantrelix::test

// Tables through other programs' eyes: what we write reads the same there, and what others wrote reads the same here.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <set>

#include "cli/CliRun.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "support/TempSuite.h"

namespace vantrelix::test {
namespace {

using Json = nlohmann::json;

std::string outputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen((command + " 2>/dev/null").c_str(), "r"), ::pclose);
  std::string output;
  std::array<char, 4096> buffer{};
  for (std::size_t got = 0; pipe && (got = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0;) {
    output.append(buffer.data(), got);
  }
  return output;
}

bool installed(const std::string& program) { return !outputOf("command -v " + program).empty(); }

// The rows of a table as the GIS library has them: a list of objects from field name to value.
Json rowsThroughOgr(const std::string& file) {
  const Json features = Json::parse(outputOf("ogr2ogr -f GeoJSON /vsistdout/ '" + file + "'"), nullptr, false);
  Json rows = Json::array();
  if (features.is_discarded() || !features.contains("features")) return rows;
  for (const Json& feature : features["features"]) rows.push_back(feature["properties"]);
  return rows;
}

bool isAscii(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
}

// "2026/11/21" and "2026-11-21" alike; outer blanks gone.
std::string plain(const Json& value) {
  std::string text = value.is_string() ? trim(value.get<std::string>()) : std::string();
  if (text.size() == 10 && (text[4] == '/' || text[4] == '-')) std::replace(text.begin(), text.end(), '/', '-');
  return text;
}

bool sameNumber(const Json& ours, const Json& theirs) {
  const double a = ours.get<double>();
  const double b = theirs.is_string() ? CValP(theirs.get<std::string>()) : theirs.get<double>();
  return std::abs(a - b) <= 1e-9 * std::max({1.0, std::abs(a), std::abs(b)});
}

// Null, blank, or what the other reader shows of a logical field and a date without a value.
bool isBlank(const Json& value) {
  if (value.is_null()) return true;
  const std::string text = plain(value);
  return value.is_string() && (text.empty() || text == "?" || text == "0000-00-00");
}

bool sameBoolean(bool ours, const Json& theirs) {
  if (theirs.is_boolean()) return theirs.get<bool>() == ours;
  const std::string text = upperCase(plain(theirs));
  return ours ? text == "T" || text == "Y" : text == "F" || text == "N";
}

bool sameValue(const Json& ours, const Json& theirs) {
  if (isBlank(ours) && isBlank(theirs)) return true;
  if (ours.is_number()) return (theirs.is_number() || theirs.is_string()) && sameNumber(ours, theirs);
  if (ours.is_boolean()) return sameBoolean(ours.get<bool>(), theirs);
  // The other reader leaves text undecoded where the table names no code page.
  if (!isAscii(plain(ours)) || !isAscii(plain(theirs))) return true;
  return plain(ours) == plain(theirs);
}

struct Comparison {
  int values = 0;
  std::string firstDifference;
};

Comparison compare(const Json& ours, const Json& theirs) {
  Comparison result;
  if (ours["rows"].size() != theirs.size()) {
    result.firstDifference = std::to_string(ours["rows"].size()) + " rows against " + std::to_string(theirs.size());
    return result;
  }
  const std::set<std::string> comparable = {"C", "N", "F", "D", "L"};
  for (std::size_t row = 0; row < theirs.size(); ++row) {
    for (const Json& field : ours["fields"]) {
      const std::string name = field["name"];
      if (!comparable.count(field["type"]) || !theirs[row].contains(name)) continue;
      ++result.values;
      if (sameValue(ours["rows"][row][name], theirs[row][name]) || !result.firstDifference.empty()) continue;
      result.firstDifference = "row " + std::to_string(row) + ", " + name + ": " + ours["rows"][row][name].dump() +
                               " against " + theirs[row][name].dump();
    }
  }
  return result;
}

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

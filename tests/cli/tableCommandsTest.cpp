// The table commands on tables of other programs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "support/TempFolder.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;

std::string littleEndian(unsigned value) {
  return {static_cast<char>(value & 255), static_cast<char>((value >> 8) & 255)};
}

std::string fieldOf(const std::string& name, char type, int width, int decimals, bool system = false) {
  std::string field = name + std::string(11 - name.size(), '\0') + type + std::string(4, '\0');
  field += static_cast<char>(width);
  field += static_cast<char>(decimals);
  field += static_cast<char>(system ? 1 : 0);
  return field + std::string(13, '\0');
}

// A table with null flags, a date and a truth value: one live row and one deleted one.
std::string foreignTable() {
  const std::string fields = fieldOf("NAME", 'C', 4, 0) + fieldOf("BUILT", 'D', 8, 0) + fieldOf("OK", 'L', 1, 0) +
                             fieldOf("HEIGHT", 'N', 6, 2) + fieldOf("_NullFlags", '0', 1, 0, true);
  const std::string backLink(263, '\0');
  std::string header = std::string("\x30\x1A\x01\x02\x02\0\0\0", 8);
  header += littleEndian(static_cast<unsigned>(32 + fields.size() + 1 + backLink.size())) + littleEndian(21);
  header += std::string(17, '\0') + '\x03' + std::string(2, '\0');
  const std::string live = std::string(" ab  20260102T 12.50") + '\0';
  const std::string deleted = std::string("*cd          F  1.00") + '\0';
  return header + fields + '\r' + backLink + live + deleted + '\x1A';
}

TEST(TableDump, ShowsLiveRowsInTheirOwnTypesAndCountsTheDeleted) {
  const TempFolder folder;
  folder.write("mast.dbf", foreignTable());
  const CliRun run = runCli({"--json", "table", "dump", folder.machine("mast.dbf")});
  ASSERT_EQ(run.status, 0) << run.err;
  const auto dump = run.json();
  EXPECT_EQ(dump["version"], "0x30");
  EXPECT_EQ(dump["fields"].size(), 4U);
  EXPECT_EQ(dump["rows"], nlohmann::json::parse(R"([{"NAME":"ab","BUILT":"2026-01-02","OK":true,"HEIGHT":12.5}])"));
  EXPECT_EQ(dump["deleted"], 1);
}

TEST(TableDump, WritesATableForPeople) {
  const TempFolder folder;
  folder.write("mast.dbf", foreignTable());
  const CliRun run = runCli({"table", "dump", folder.machine("mast.dbf")});
  EXPECT_THAT(run.out, HasSubstr("HEIGHT N 6.2\n"));
  EXPECT_THAT(run.out, HasSubstr("ab    2026-01-02  "));
  EXPECT_THAT(run.out, HasSubstr("1 row, 1 deleted, version 0x30\n"));
}

TEST(TableDump, GivesEachFieldOfOneNameAKeyOfItsOwn) {
  const TempFolder folder;
  const std::string fields =
      fieldOf("A", 'C', 1, 0) + fieldOf("A", 'C', 1, 0) + fieldOf("A_2", 'C', 1, 0) + fieldOf("A", 'C', 1, 0);
  std::string header("\x03\x1A\x01\x02\x01\0\0\0", 8);
  header += littleEndian(static_cast<unsigned>(32 + fields.size() + 1)) + littleEndian(5) + std::string(20, '\0');
  folder.write("T.DBF", header + fields + "\r wxyz\x1A");
  const auto dump = runCli({"--json", "table", "dump", folder.machine("T.DBF")}).json();
  EXPECT_EQ(dump["rows"], nlohmann::json::parse(R"([{"A":"w","A_3":"x","A_2":"y","A_4":"z"}])"));
  EXPECT_EQ(dump["fields"][1]["name"], "A");
  EXPECT_EQ(dump["fields"][1]["key"], "A_3");
  EXPECT_FALSE(dump["fields"][2].contains("key"));
  EXPECT_EQ(dump["fields"][3]["key"], "A_4");
}

TEST(TableDump, ATableCutShortIsRefusedWithItsNameAndReason) {
  const TempFolder folder;
  folder.write("short.dbf", foreignTable().substr(0, 100));
  const CliRun run = runCli({"table", "dump", folder.machine("short.dbf")});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, HasSubstr(folder.machine("short.dbf")));
  EXPECT_THAT(run.err, HasSubstr("the file has 100"));
}

}  // namespace
}  // namespace vantrelix::test

// Looking through damaged tables, and saving what can be read of them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliRun.h"
#include "support/TempFolder.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;

// Two fields and the rows given; the header counts `count` of them.
std::string table(const std::string& rows, int count) {
  std::string header(32 + 2 * 32 + 1, '\0');
  header.replace(0, 4, "\x03\x7E\x0B\x15");
  header[4] = static_cast<char>(count);
  header[8] = static_cast<char>(header.size());
  header[10] = 8;
  header[29] = 3;
  header.replace(32, 1, "A");
  header[32 + 11] = 'C';
  header[32 + 16] = 3;
  header.replace(64, 1, "N");
  header[64 + 11] = 'N';
  header[64 + 16] = 4;
  header.back() = '\r';
  return header + rows + "\x1A";
}

const char* const kSound = " abc   1*def   2";
const char* const kDamaged = " abc12x4*def   2 ghi   3";

TEST(TableCheckCommand, SaysThatASoundTableHasNoFault) {
  const TempFolder folder;
  folder.write("T.DBF", table(kSound, 2));
  const CliRun run = runCli({"--json", "table", "check", folder.machine("T.DBF")});
  EXPECT_EQ(run.status, 0) << run.err;
  const auto document = run.json();
  EXPECT_EQ(document["file"], folder.machine("T.DBF"));
  EXPECT_EQ(document["version"], "0x03");
  EXPECT_EQ(document["rows"], 1);
  EXPECT_EQ(document["deleted"], 1);
  EXPECT_TRUE(document["faults"].empty());
  EXPECT_THAT(runCli({"table", "check", folder.machine("T.DBF")}).out,
              HasSubstr("1 row, 1 deleted, version 0x03, 0 faults\n"));
}

TEST(TableCheckCommand, NamesEachFaultWithItsPlaceAndGivesStatusOne) {
  const TempFolder folder;
  folder.write("T.DBF", table(kDamaged, 2));
  const CliRun run = runCli({"--json", "table", "check", folder.machine("T.DBF")});
  EXPECT_EQ(run.status, 1);
  const auto document = run.json();
  ASSERT_EQ(document["faults"].size(), 2U);
  EXPECT_EQ(document["faults"][0]["kind"], "count_too_low");
  EXPECT_TRUE(document["faults"][0]["record"].is_null());
  EXPECT_EQ(document["faults"][0]["offset"], 4);
  EXPECT_EQ(document["faults"][1]["kind"], "number");
  EXPECT_EQ(document["faults"][1]["record"], 1);
  EXPECT_EQ(document["faults"][1]["field"], "N");
  EXPECT_EQ(document["faults"][1]["offset"], 97 + 4 + 2);
  EXPECT_THAT(document["faults"][1]["text"].get<std::string>(), HasSubstr("\"12x4\""));
  EXPECT_EQ(document["totals"], nlohmann::json::parse(R"({"count_too_low":1,"number":1})"));
}

TEST(TableCheckCommand, TellsPeopleTheSame) {
  const TempFolder folder;
  std::string rows;
  for (int i = 0; i < 30; ++i) rows += " abc????";
  folder.write("T.DBF", table(rows, 30));
  const CliRun run = runCli({"table", "check", folder.machine("T.DBF")});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("Row 20 has in the field N \"????\", which is no number"));
  EXPECT_THAT(run.out, HasSubstr("... and 10 more of the kind number\n"));
  EXPECT_THAT(run.out, HasSubstr("30 faults\n"));
  EXPECT_THAT(run.err, HasSubstr("T.DBF has 30 faults."));
}

TEST(TableCheckCommand, LooksThroughATableThatCannotBeOpened) {
  const TempFolder folder;
  std::string bytes = table(kSound, 2);
  bytes[10] = 0;
  folder.write("T.DBF", bytes);
  const CliRun run = runCli({"--json", "table", "check", folder.machine("T.DBF")});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.json()["faults"][0]["kind"], "refused");
  EXPECT_EQ(run.json()["rows"], 1);
  EXPECT_EQ(runCli({"table", "check", folder.machine("NONE.DBF")}).status, 1);
  EXPECT_EQ(runCli({"table", "check"}).status, 2);
}

TEST(TableRecoverCommand, SavesWhatCanBeRead) {
  const TempFolder folder;
  folder.write("T.DBF", table(kDamaged, 2));
  const CliRun run = runCli({"--json", "table", "recover", folder.machine("T.DBF"), folder.machine("NEW.DBF")});
  EXPECT_EQ(run.status, 0) << run.err;
  const auto document = run.json();
  EXPECT_EQ(document["new"], folder.machine("NEW.DBF"));
  EXPECT_EQ(document["rows"], 2);
  EXPECT_EQ(document["deleted"], 1);
  EXPECT_EQ(document["behind_count"], 1);
  EXPECT_EQ(document["repaired_values"], 1);
  EXPECT_EQ(document["lost_rows"], 0);
  EXPECT_EQ(document["faults"].size(), 2U);
  EXPECT_EQ(folder.read("NEW.DBF").substr(97), " abc    *def   2 ghi   3\x1A");
  EXPECT_EQ(folder.read("T.DBF"), table(kDamaged, 2));
  EXPECT_EQ(runCli({"table", "check", folder.machine("NEW.DBF")}).status, 0);
}

TEST(TableRecoverCommand, TellsPeopleWhatItDid) {
  const TempFolder folder;
  folder.write("T.DBF", table(kDamaged, 2));
  const CliRun run = runCli({"table", "recover", folder.machine("T.DBF"), folder.machine("NEW.DBF")});
  EXPECT_THAT(run.out, HasSubstr("NEW.DBF: 2 rows and 1 deleted, 1 of them from behind the count; 1 value mended, 0 "
                                 "rows lost\n"));
}

TEST(TableRecoverCommand, TellsPeopleWhatItLeavesBehind) {
  const TempFolder folder;
  folder.write("T.DBF", table(std::string(kSound) + " not a row of this table, but a sentence", 2));
  const CliRun run = runCli({"table", "recover", folder.machine("T.DBF"), folder.machine("NEW.DBF")});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("stand 41 bytes, room for 5 rows, that are neither like rows nor the end"));
}

TEST(TableRecoverCommand, WritesOverNothing) {
  const TempFolder folder;
  folder.write("T.DBF", table(kSound, 2));
  const CliRun run = runCli({"table", "recover", folder.machine("T.DBF"), folder.machine("T.DBF")});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("exists already"));
  EXPECT_EQ(folder.read("T.DBF"), table(kSound, 2));
}

}  // namespace
}  // namespace vantrelix::test

// What is saved of the memos of a damaged table.
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "tables/MemoFile.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using test::failureOf;
using test::RawTable;
using test::TableRecoveries;
using test::valueOf;

struct MemoVersion {
  int version;
  MemoKind kind;
  const char* extension;
};

class MemoRecoveries : public TableRecoveries, public testing::WithParamInterface<MemoVersion> {
 protected:
  std::string memoName(const std::string& table) const { return table + "." + GetParam().extension; }
  // Blocks of the texts.
  std::vector<std::uint32_t> writeMemo(const std::vector<std::string>& texts) {
    MemoFile::create(suite.file(memoName("T")), GetParam().kind, 64);
    MemoFile memo(suite.file(memoName("T")), GetParam().kind, platform::OpenMode::readWrite);
    std::vector<std::uint32_t> blocks;
    for (const std::string& text : texts) blocks.push_back(memo.append(text));
    return blocks;
  }
  RawTable pointingTo(const std::vector<std::uint32_t>& blocks) const {
    RawTable raw{.version = GetParam().version, .fields = {{"K", 'C', 2}, {"M", 'M', 10}}};
    for (const std::uint32_t block : blocks) {
      const std::string digits = std::to_string(block);
      raw.rows += " r" + std::to_string(raw.count++) + std::string(10 - digits.size(), ' ') + digits;
    }
    return raw;
  }
};

TEST_P(MemoRecoveries, WriteTheTextsToANewMemoFile) {
  const std::string longText(3000, 'x');
  const auto blocks = writeMemo({"one", "never used", longText});
  const TableRecovery result = recovered(pointingTo({blocks[0], blocks[2], 0}));
  EXPECT_EQ(result.repairedValues, 0U);
  platform::current().remove(suite.file(memoName("T")));
  const auto table = DbfFile::open(suite.file("NEW.DBF"), true);
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("one"));
  EXPECT_EQ(valueOf(*table, 1, "M"), Value(longText));
  EXPECT_TRUE(valueOf(*table, 2, "M").isNull());
  EXPECT_EQ(suite.folder().read(memoName("NEW")).find("never used"), std::string::npos);
}

TEST_P(MemoRecoveries, MakeBlankWhatCannotBeReadAndPartWhatIsShared) {
  const auto blocks = writeMemo({"one"});
  const TableRecovery result = recovered(pointingTo({blocks[0], blocks[0], 70000}));
  EXPECT_EQ(result.repairedValues, 1U);
  const auto table = DbfFile::open(suite.file("NEW.DBF"), true);
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("one"));
  EXPECT_EQ(valueOf(*table, 1, "M"), Value("one"));
  EXPECT_TRUE(valueOf(*table, 2, "M").isNull());
}

TEST_P(MemoRecoveries, OnlyReadTheOldFiles) {
  const auto blocks = writeMemo({"one", "two"});
  const std::string memo = suite.folder().read(memoName("T"));
  platform::FaultPlatform watched(platform::current());
  const platform::Substitute inUse(watched);
  recovered(pointingTo({blocks[0], blocks[0], blocks[1], 70000}));
  EXPECT_EQ(suite.folder().read(memoName("T")), memo);
  ASSERT_GT(watched.calls(), 4);
  for (const std::string& call : watched.journal()) {
    EXPECT_NE(call.substr(call.find_last_of("\\/") + 1, 2), "T.") << call;
  }
}

TEST_P(MemoRecoveries, GoOnWithoutTheMemoFile) {
  const TableRecovery result = recovered(pointingTo({9, 0}));
  EXPECT_EQ(result.repairedValues, 1U);
  EXPECT_EQ(rows().substr(0, 3), " r0");
  EXPECT_TRUE(suite.folder().exists(memoName("NEW")));
}

TEST_P(MemoRecoveries, WriteOverNoMemoFile) {
  suite.folder().write(memoName("NEW"), "mine");
  suite.folder().write("T.DBF", pointingTo({0}).bytes());
  EXPECT_EQ(failureOf([&] { recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF")); }).number(), failure::fileExists);
  EXPECT_EQ(suite.folder().read(memoName("NEW")), "mine");
  EXPECT_FALSE(suite.folder().exists("NEW.DBF"));
}

// A failure at any call leaves no file behind; the damaged table stays in any case.
TEST_P(MemoRecoveries, LeaveNothingBehindWhenTheyFail) {
  const auto blocks = writeMemo({"one"});
  const std::string content = pointingTo(blocks).bytes();
  suite.folder().write("T.DBF", content);
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute inUse(faults);
  int call = 0;
  for (bool reached = true; reached;) {
    faults.failAt(++call, failure::deviceIO);
    const int number = failureOf([&] { recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF")); }).number();
    reached = faults.calls() >= call;
    faults.reset();
    EXPECT_EQ(suite.folder().read("T.DBF"), content);
    EXPECT_EQ(suite.folder().exists("NEW.DBF"), number == 0) << call;
    EXPECT_EQ(suite.folder().exists(memoName("NEW")), number == 0) << call;
    for (const std::string& name : platform::current().list(suite.path())) {
      EXPECT_EQ(name.find(".tmp"), std::string::npos) << name << " is left of call " << call;
      if (name.rfind("NEW", 0) == 0) platform::current().remove(suite.file(name));
    }
  }
  EXPECT_GT(call, 8);
}

INSTANTIATE_TEST_SUITE_P(Versions, MemoRecoveries,
                         testing::Values(MemoVersion{0xF5, MemoKind::foxpro, "FPT"},
                                         MemoVersion{0x30, MemoKind::foxpro, "FPT"},
                                         MemoVersion{0x83, MemoKind::dbase3, "DBT"},
                                         MemoVersion{0x8B, MemoKind::dbase4, "DBT"}),
                         [](const auto& test) { return "Version" + std::to_string(test.param.version); });

}  // namespace
}  // namespace vantrelix

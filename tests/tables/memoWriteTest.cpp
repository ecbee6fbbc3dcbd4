// Texts written to memo fields.
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/MeasuredPlatform.h"
#include "tables/Database.h"
#include "tables/DbfBytes.h"
#include "tables/MemoFile.h"
#include "tables/tableCheck.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::failureOf;
using test::RawTable;
using test::valueOf;

struct MemoVersion {
  int version;
  MemoKind kind;
  const char* memo;
  int width;
};

class MemoWriting : public testing::TestWithParam<MemoVersion> {
 protected:
  std::shared_ptr<DbfFile> made() {
    RawTable raw{.version = GetParam().version, .fields = {{"K", 'C', 2}, {"M", 'M', GetParam().width}}};
    suite.folder().write("T.DBF", raw.bytes());
    MemoFile::create(suite.file(GetParam().memo), GetParam().kind, 64);
    return DbfFile::open(suite.file("T.DBF"));
  }
  bool isSound() { return checkTable(suite.file("T.DBF")).faults.empty(); }
  std::string memo() { return suite.folder().read(GetParam().memo); }

  test::TempSuite suite;
};

TEST_P(MemoWriting, ATextReadsBack) {
  const auto table = made();
  const std::string longText(5000, 'x');
  appendRow(*table, {"a", "Line 1\r\nÄ"});
  appendRow(*table, {"b", longText});
  appendRow(*table, {"c", ""});
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("Line 1\r\nÄ"));
  EXPECT_EQ(valueOf(*table, 1, "M"), Value(longText));
  EXPECT_TRUE(valueOf(*table, 2, "M").isNull());
  EXPECT_EQ(valueOf(*DbfFile::open(suite.file("T.DBF"), true), 1, "M"), Value(longText));
  EXPECT_TRUE(isSound());
}

TEST_P(MemoWriting, AChangedTextStandsInBlocksOfItsOwn) {
  const auto table = made();
  appendRow(*table, {"a", "a long first text"});
  const std::string before = memo();
  const test::Bytes former = test::recordOf(*table, 0);
  table->update(0, [&](unsigned char* record) { table->put(record, 1, "short"); });
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("short"));
  EXPECT_EQ(table->value(former.data(), 1), Value("a long first text")) << "who read the row before finds its text";
  EXPECT_EQ(memo().substr(4, before.size() - 4), before.substr(4));
  table->update(0, [&](unsigned char* record) { table->put(record, 1, Value()); });
  EXPECT_TRUE(valueOf(*table, 0, "M").isNull());
  EXPECT_TRUE(isSound());
}

TEST_P(MemoWriting, ATextThatStandsThereAlreadyIsNotWrittenAgain) {
  const auto table = made();
  appendRow(*table, {"a", "text"});
  const std::string before = memo();
  table->update(0, [&](unsigned char* record) { table->put(record, 1, "text"); });
  EXPECT_EQ(memo(), before);
}

TEST_P(MemoWriting, AnEditOfACursorWritesItsTextOnce) {
  appendRow(*made(), {"a", "old"});
  const std::size_t before = memo().size();
  const auto cursor = DBEngine::OpenDatabase(suite.path())->OpenRecordset("Select * from [T]");
  cursor->Edit();
  cursor->Fields("M").put("new");
  cursor->Update();
  EXPECT_EQ(cursor->Fields("M").value(), Value("new"));
  EXPECT_EQ(memo().size() - before, GetParam().kind == MemoKind::dbase3 ? 512U : 64U);
  cursor->AddNew();
  cursor->Fields("K").put("b");
  cursor->Fields("M").put("new");
  cursor->Update();
  EXPECT_TRUE(isSound()) << "two rows with one text have a block each";
}

TEST_P(MemoWriting, TwoWritersTakeDifferentBlocks) {
  const auto first = made();
  const auto second = DbfFile::open(suite.file("T.DBF"));
  const test::Bytes one = test::rowOf(*first, {"a", "one"});
  const test::Bytes two = test::rowOf(*second, {"b", "two"});
  second->append(two.data());
  first->append(one.data());
  EXPECT_EQ(valueOf(*first, 0, "M"), Value("two"));
  EXPECT_EQ(valueOf(*first, 1, "M"), Value("one"));
  EXPECT_TRUE(isSound());
}

TEST_P(MemoWriting, ALockedMemoFileIsLocked) {
  const auto table = made();
  const auto other = platform::current().open(suite.file(GetParam().memo), platform::OpenMode::readWrite);
  ASSERT_TRUE(other->tryLock(0x40000000, 1, platform::LockKind::exclusive));
  const int formerWait = DbfFile::lockWait();
  DbfFile::setLockWait(20);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"a", "text"}); }).number(), failure::locked);
  DbfFile::setLockWait(formerWait);
  EXPECT_EQ(table->recordCount(), 0U);
}

// Whatever call fails, no row points to a text that is not there.
TEST_P(MemoWriting, AFailureLeavesNoRowWithoutItsText) {
  appendRow(*made(), {"a", "old"});
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute inUse(faults);
  int call = 0;
  for (bool reached = true; reached;) {
    const auto table = DbfFile::open(suite.file("T.DBF"));
    const std::uint32_t rows = table->recordCount();
    faults.crashAt(++call, true);
    const bool failed = failureOf([&] { appendRow(*table, {"b", std::string(700, 'y')}); }).number() != 0;
    reached = faults.calls() >= call;
    faults.reset();
    const auto after = DbfFile::open(suite.file("T.DBF"), true);
    EXPECT_EQ(after->recordCount(), failed ? rows : rows + 1) << call;
    for (std::uint32_t row = 0; row < after->recordCount(); ++row)
      EXPECT_EQ(valueOf(*after, row, "M").isText(), true) << call;
  }
  EXPECT_GE(call, 4);
}

TEST_P(MemoWriting, AFullDiskLeavesTheMemoFileAsItWas) {
  appendRow(*made(), {"a", "old"});
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute inUse(faults);
  const std::size_t before = memo().size();
  const auto table = DbfFile::open(suite.file("T.DBF"));
  for (const int call : {1, 2}) {
    faults.fillDiskAt(call);
    EXPECT_EQ(failureOf([&] { test::rowOf(*table, {"b", std::string(700, 'y')}); }).number(), failure::diskFull);
    EXPECT_EQ(memo().size(), before) << call;
    EXPECT_EQ(valueOf(*table, 0, "M"), Value("old"));
    EXPECT_TRUE(isSound());
  }
  faults.reset();
  appendRow(*table, {"b", "new"});
  EXPECT_EQ(valueOf(*table, 1, "M"), Value("new"));
  EXPECT_TRUE(isSound());
}

TEST_P(MemoWriting, AReaderFindsTheOldTextOrTheNewAtEveryMoment) {
  const auto textOf = [](int number) { return std::string(400, 'x') + std::to_string(number); };
  appendRow(*made(), {"a", textOf(0)});
  test::MeasuredPlatform machine;
  const platform::Substitute inUse(machine);
  const auto table = DbfFile::open(suite.file("T.DBF"));
  const auto reader = DbfFile::open(suite.file("T.DBF"), true);
  int number = 0;
  int looks = 0;
  machine.onWrite = [&] {
    ++looks;
    const Value found = valueOf(*reader, 0, "M");
    EXPECT_TRUE(found == Value(textOf(number)) || found == Value(textOf(number - 1))) << number;
  };
  for (number = 1; number <= 3; ++number) {
    table->update(0, [&](unsigned char* record) { table->put(record, 1, textOf(number)); });
    EXPECT_EQ(valueOf(*reader, 0, "M"), Value(textOf(number)));
  }
  EXPECT_GE(looks, 9) << "text, next free block and row, three times";
}

INSTANTIATE_TEST_SUITE_P(Versions, MemoWriting,
                         testing::Values(MemoVersion{0xF5, MemoKind::foxpro, "T.FPT", 10},
                                         MemoVersion{0xFB, MemoKind::foxpro, "T.FPT", 10},
                                         MemoVersion{0x30, MemoKind::foxpro, "T.FPT", 4},
                                         MemoVersion{0x83, MemoKind::dbase3, "T.DBT", 10},
                                         MemoVersion{0x8B, MemoKind::dbase4, "T.DBT", 10}),
                         [](const auto& test) { return "Version" + std::to_string(test.param.version); });

class MemoRefusals : public testing::Test {
 protected:
  std::string refusalOf(const RawTable& raw) {
    suite.folder().write("T.DBF", raw.bytes());
    const auto table = DbfFile::open(suite.file("T.DBF"));
    const RunTimeFailure failure = failureOf([&] { appendRow(*table, {"text"}); });
    EXPECT_EQ(failure.number(), failure::readOnlyTable);
    EXPECT_EQ(table->recordCount(), 0U);
    return failure.description();
  }
  test::TempSuite suite;
};

TEST_F(MemoRefusals, NameTheReason) {
  EXPECT_NE(refusalOf({.version = 0xF5, .fields = {{"M", 'M', 10}}}).find("its memo file is missing"),
            std::string::npos);
  EXPECT_NE(refusalOf({.version = 0x03, .fields = {{"M", 'M', 10}}}).find("its version knows no memo file"),
            std::string::npos);
  suite.folder().write("T.FPT", "short");
  EXPECT_NE(refusalOf({.version = 0xF5, .fields = {{"M", 'M', 10}}}).find("less than a memo file's header"),
            std::string::npos);
  MemoFile::create(suite.file("T.FPT"));
  refusalOf({.version = 0xF5, .fields = {{"M", 'M', 7}}});
  EXPECT_NE(refusalOf({.version = 0xF5, .fields = {{"M", 'M', 10}}, .tableFlags = 1}).find("index"), std::string::npos);
  EXPECT_EQ(suite.folder().read("T.FPT").size(), 512U) << "nothing was written for what was refused";
}

TEST_F(MemoRefusals, ATextWithTheMarkThatEndsItIsRefusedInDBase3) {
  suite.folder().write("T.DBF", RawTable{.version = 0x83, .fields = {{"M", 'M', 10}}}.bytes());
  MemoFile::create(suite.file("T.DBT"), MemoKind::dbase3, 512);
  const auto table = DbfFile::open(suite.file("T.DBF"));
  EXPECT_EQ(failureOf([&] {
              appendRow(*table, {"a\x1A"
                                 "b"});
            }).number(),
            failure::fieldTooSmall);
}

}  // namespace
}  // namespace vantrelix

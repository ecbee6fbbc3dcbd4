// Indexes that other programs keep: what a write would leave wrong is refused, or told of.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "tables/DbfBytes.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::failureOf;
using test::RawTable;
using test::valueOf;
using ::testing::HasSubstr;
using ::testing::Not;

// One test's table each: what is told is told once in a process for a path.
class IndexFiles : public ::testing::Test {
 protected:
  std::shared_ptr<DbfFile> made(int version = 0x03, int tableFlags = 0) {
    suite.folder().write(
        "ANT.DBF",
        RawTable{
            .version = version, .fields = {{"A", 'C', 3}}, .rows = " abc def", .count = 2, .tableFlags = tableFlags}
            .bytes());
    return DbfFile::open(path);
  }
  std::string bytes() const { return suite.folder().read("ANT.DBF"); }

  test::TempSuite suite;
  const std::string path = suite.file("ANT.DBF");
};

TEST_F(IndexFiles, OfTheHeaderRefuseEveryWriteAndNoReading) {
  for (const auto& [version, index] :
       {std::pair{0x03, "ANT.CDX"}, {0x30, "ANT.CDX"}, {0xF5, "ANT.CDX"}, {0x03, "ANT.MDX"}, {0x8B, "ANT.MDX"}}) {
    suite.folder().write(index, "an index");
    const auto table = made(version, 1);
    const std::string before = bytes();
    EXPECT_EQ(table->recordCount(), 2U);
    EXPECT_EQ(valueOf(*table, 1, "A"), Value("def"));
    const std::vector<std::function<void()>> writes = {
        [&] { appendRow(*table, {"new"}); },
        [&] { table->append(test::rowOf(*table, {"one"}).data(), 1); },
        [&] { table->update(0, [](unsigned char* record) { record[1] = 'x'; }); },
        [&] { table->markDeleted(0); },
        [&] { table->hold(0); },
    };
    for (const auto& write : writes) {
      const RunTimeFailure failure = failureOf(write);
      EXPECT_EQ(failure.number(), failure::readOnlyTable);
      EXPECT_THAT(failure.description(), HasSubstr("index"));
      EXPECT_THAT(failure.description(), HasSubstr("ANT.DBF"));
    }
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(suite.folder().read(index), "an index");
  }
}

TEST_F(IndexFiles, OfTheHeaderRefuseThoughTheirFileIsMissing) {
  const auto table = made(0x03, 1);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::readOnlyTable);
}

TEST_F(IndexFiles, ThatTheHeaderDoesNotNameAreToldOfOnceBeforeTheFirstWrite) {
  for (const char* name : {"ANT.CDX", "ant.ndx", "ANT.NTX", "Ant.idx", "ANT.MDX", "ANTS.CDX", "ANT.CDX.BAK"})
    suite.folder().write(name, "");
  const auto table = made();
  valueOf(*table, 0, "A");
  EXPECT_THAT(suite.log(), Not(HasSubstr("CDX")));
  appendRow(*table, {"new"});
  EXPECT_THAT(suite.log(), HasSubstr("ANT.CDX, ANT.MDX, ANT.NTX, Ant.idx, ant.ndx, which is not kept up"));
  const std::string told = suite.log();
  DbfFile::open(path)->markDeleted(0);
  EXPECT_EQ(suite.log(), told);
  EXPECT_EQ(table->recordCount(), 3U);
}

TEST_F(IndexFiles, OfOtherTablesAreNotSpokenOf) {
  suite.folder().write("OTHER.CDX", "");
  appendRow(*made(), {"new"});
  EXPECT_EQ(suite.log(), "");
}

TEST_F(IndexFiles, AreNoReasonToFailWhereTheFolderCannotBeListed) {
  const auto table = made();
  platform::FaultPlatform faults(platform::current());
  const platform::Substitute substitute(faults);
  faults.failAnyAt(1, failure::deviceIO);
  appendRow(*table, {"new"});
  ASSERT_THAT(faults.anyJournal().front(), HasSubstr("list "));
  EXPECT_EQ(table->recordCount(), 3U);
}

}  // namespace
}  // namespace vantrelix

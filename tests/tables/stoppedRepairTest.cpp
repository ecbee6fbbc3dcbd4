// A repair, and the making of a missing table, stopped at any call to the system.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/UnsyncedPlatform.h"
#include "tables/dictionaryTables.h"
#include "tables/stops.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::column;
using test::DictionarySuite;
using test::filesThatBegin;
using test::oldMaster;
using test::runStopped;
using test::Stop;
using test::StoppedRun;
using ::testing::ElementsAre;

constexpr const char* kAms = "AMSPDBASE";
constexpr const char* kTable = "AMSTEST1.DBF";
// More calls than any work makes.
constexpr int kNever = 1 << 20;

bool repaired(const std::string& path) {
  return RSTblValidRS(FieldsFromDataSum(kAms), path, true, true, kAms) == tableCode::fine;
}

// What must hold of the table after a repair that was stopped anywhere: it opens, and both rows are in it.
void expectCompleteTable(const DictionarySuite& suite, const std::string& where) {
  SCOPED_TRACE(where);
  EXPECT_THAT(column(suite.file(kTable), "ANTENNA"), ElementsAre("First", "Second"));
  EXPECT_THAT(column(suite.file(kTable), "GAIN"), ElementsAre("10.25", "(null)"));
}

// Runs one repair that is stopped at that call; gives the calls it came to.
int stoppedRepair(const Stop& stop, int call) {
  DictionarySuite suite;
  const std::string path = oldMaster(suite.folder());
  const std::string before = suite.folder().read(kTable);
  const StoppedRun run = runStopped(stop, call, [&] { return repaired(path); });
  EXPECT_TRUE(!run.confirmed || DbfFile::open(path)->fieldIndex("POWER") >= 0) << call;
  expectCompleteTable(suite, "call " + std::to_string(call) + " of " + std::to_string(run.calls));
  if (suite.folder().read(kTable) != before) {
    const std::vector<std::string> kept = filesThatBegin(suite.folder(), "AMSTEST1_2");
    EXPECT_FALSE(kept.empty());
    EXPECT_EQ(kept.empty() ? "" : suite.folder().read(kept.front()), before);
  }
  EXPECT_TRUE(repaired(path));
  expectCompleteTable(suite, "repaired again after call " + std::to_string(call));
  return run.calls;
}

// Runs one making of a missing table that is stopped at that call; gives the calls it came to.
int stoppedMaking(const Stop& stop, int call) {
  DictionarySuite suite;
  const std::string path = suite.file(kTable);
  const StoppedRun run = runStopped(stop, call, [&] { return repaired(path); });
  EXPECT_TRUE(!run.confirmed || suite.folder().exists(kTable)) << call;
  // As the dictionary has it from its first moment.
  const auto expectFinished = [&] {
    const auto table = DbfFile::open(path);
    EXPECT_EQ(table->fields().at(2).width, 12) << call;
    EXPECT_EQ(table->recordLength(), 1 + 12 + 60 + 12 + 5 + 14 + 14 + 5 + 12 + 5) << call;
  };
  if (suite.folder().exists(kTable)) expectFinished();
  EXPECT_TRUE(repaired(path)) << call;
  expectFinished();
  return run.calls;
}

class StoppedRepair : public ::testing::TestWithParam<Stop> {
  test::UnsyncedPlatform machine_;
  const platform::Substitute substitute_{machine_};
};

TEST_P(StoppedRepair, LeavesACompleteTableAtThePathAtEveryCall) {
  ASSERT_GT(stoppedRepair(GetParam(), kNever), 10);
  // To the first stop that a repair does not come to.
  for (int call = 1; call <= stoppedRepair(GetParam(), call); ++call) {
  }
}

TEST_P(StoppedRepair, OfAMissingTableLeavesNoneOrACompleteOneAtEveryCall) {
  ASSERT_GT(stoppedMaking(GetParam(), kNever), 5);
  for (int call = 1; call <= stoppedMaking(GetParam(), call); ++call) {
  }
}

INSTANTIATE_TEST_SUITE_P(InEveryWay, StoppedRepair, ::testing::ValuesIn(test::kStops));

}  // namespace
}  // namespace vantrelix

// A table file that the system does not let be written, or not to its end.
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "support/UnsyncedPlatform.h"
#include "tables/DbfFiles.h"
#include "tables/stops.h"

namespace vantrelix {
namespace {

using test::appendRow;
using test::DbfFiles;
using test::failureOf;
using test::kStops;
using test::runStopped;
using test::Stop;
using test::StoppedRun;
using test::valueOf;

TEST_F(DbfFiles, AWriteProtectedTableIsReadAndRefusesWrites) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  std::filesystem::permissions(suite.folder().machine(), std::filesystem::perms::all);
  std::filesystem::permissions(suite.folder().machine("ANT.DBF"), std::filesystem::perms(0444));
  EXPECT_EQ(test::runWithoutPrivilege([&] {
              const auto table = DbfFile::open(path);
              const int number = failureOf([&] { table->markDeleted(0); }).number();
              const int denied = failureOf([&] { DbfFile::open(path, false, Sharing::denyWrite); }).number();
              return table->readOnly() && valueOf(*table, 0, "A") == Value("abc") && number == failure::readOnlyTable &&
                     denied == failure::cannotOpen;
            }),
            0);
}

TEST_F(DbfFiles, ACrashBetweenRowAndCountLeavesTheRowsThereWere) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  for (const bool torn : {false, true}) {
    for (int call = 1; call <= 2; ++call) {
      platform::FaultPlatform fault(platform::current());
      const platform::Substitute substitute(fault);
      const auto table = DbfFile::open(path);
      fault.crashAt(call, torn);
      EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::deviceIO);
      fault.reset();
      const auto again = DbfFile::open(path);
      EXPECT_EQ(again->recordCount(), 1U) << call;
      EXPECT_EQ(valueOf(*again, 0, "A"), Value("abc"));
    }
  }
  appendRow(*DbfFile::open(path), {"def"});
  EXPECT_EQ(bytes().substr(65, 9), " abc def\x1A");
}

TEST_F(DbfFiles, AFullDiskLeavesTheFileAsItWas) {
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  const std::string before = bytes();
  platform::FaultPlatform fault(platform::current());
  const platform::Substitute substitute(fault);
  const auto table = DbfFile::open(path);
  fault.fillDiskAt(1);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::diskFull);
  EXPECT_EQ(bytes().size(), before.size());
  EXPECT_EQ(bytes().substr(4, 61), before.substr(4, 61));
  fault.reset();
  fault.failAt(2, failure::deviceIO);
  EXPECT_EQ(failureOf([&] { appendRow(*table, {"new"}); }).number(), failure::deviceIO);
  EXPECT_EQ(bytes(), before);
}

TEST_F(DbfFiles, AnInterruptedCreationLeavesTheOldTable) {
  test::UnsyncedPlatform machine;
  const platform::Substitute unsynced(machine);
  appendRow(*made({{"A", 'C', 3, 0}}), {"abc"});
  const std::string before = bytes();
  DbfFile::create(suite.file("NEW.DBF"), kFields);
  const std::string after = suite.folder().read("NEW.DBF");
  const auto create = [&] {
    DbfFile::create(path, kFields);
    return true;
  };
  for (const Stop& stop : kStops) {
    bool struck = true;
    for (int call = 1; struck; ++call) {
      SCOPED_TRACE(std::string(stop.name) + " at call " + std::to_string(call));
      suite.folder().write("ANT.DBF", before);
      const StoppedRun run = runStopped(stop, call, create);
      struck = call <= run.calls;
      EXPECT_TRUE(run.confirmed || struck);
      // It may have been stopped when all was done but for the confirmation.
      EXPECT_TRUE(bytes() == after || (!run.confirmed && bytes() == before));
      EXPECT_TRUE(struck || run.calls >= 2);
    }
  }
  suite.folder().write("ANT.DBF", before);
  platform::FaultPlatform fault(platform::current());
  const platform::Substitute substitute(fault);
  fault.fillDiskAt(1);
  EXPECT_EQ(failureOf([&] { DbfFile::create(path, kFields); }).number(), failure::diskFull);
  EXPECT_EQ(bytes(), before);
}

}  // namespace
}  // namespace vantrelix

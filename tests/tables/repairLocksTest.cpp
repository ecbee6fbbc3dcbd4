// A repair beside programs of other makes, which are known by their locks alone.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

#include "support/MeasuredPlatform.h"
#include "tables/LetterRows.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using platform::FaultPlatform;
using test::filesThatBegin;
using test::RawLocks;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class RepairLocks : public test::LetterRows {
 protected:
  // The places of the header and of all records, as far as they lie before the two bytes for sharing.
  static constexpr off_t kAllPlaces = 0x7FFFFFFE - kLockBase;

  RepairLocks() { DbfFile::setLockWait(20); }
  ~RepairLocks() override { DbfFile::setLockWait(2000); }

  int repaired() { return RSTblValidRS(fields, path, true, false, ""); }
  bool allPlacesFree() const { return RawLocks(machinePath).isFree(kLockBase, kAllPlaces); }

  FieldList fields = {{"A", 100, FieldType::text, ""}, {"B", 99, FieldType::text, ""}, {"C", 5, FieldType::text, ""}};
};

TEST_F(RepairLocks, OfAnotherProgramKeepTheTableAsItIs) {
  const std::string before = suite.folder().read("ROWS.DBF");
  struct {
    const char* what;
    off_t place;
    off_t length;
  } const taken[] = {{"a row", lockOf(kInside), kLength},
                     {"the last row", lockOf(kRows - 1), kLength},
                     {"the header", kLockBase, 1},
                     {"the file", kLockBase, kAllPlaces},
                     {"a row as its number tells", 0x7FFFFFFE - 1, 1}};
  for (const auto& [what, place, length] : taken) {
    SCOPED_TRACE(what);
    const RawLocks other(machinePath);
    ASSERT_TRUE(other.lock(place, length));
    EXPECT_EQ(repaired(), tableCode::inUse);
    EXPECT_EQ(suite.folder().read("ROWS.DBF"), before);
    EXPECT_THAT(filesThatBegin(suite.folder(), ""), ElementsAre("QVTECSUP.TXT", "ROWS.DBF"));
    other.unlock(place, length);
    EXPECT_TRUE(allPlacesFree());
  }
  EXPECT_THAT(suite.log(), HasSubstr("Error 3211: "));
  EXPECT_EQ(repaired(), tableCode::fine);
}

TEST_F(RepairLocks, OfOneWhoReadsAreNotInItsWay) {
  const RawLocks other(machinePath);
  ASSERT_TRUE(other.lockShared(lockOf(kInside), kLength));
  EXPECT_EQ(repaired(), tableCode::fine);
}

TEST_F(RepairLocks, AreWaitedForAsAWriteWaits) {
  DbfFile::setLockWait(2000);
  test::MeasuredPlatform machine;
  const platform::Substitute substitute(machine);
  const RawLocks other(machinePath);
  ASSERT_TRUE(other.lock(lockOf(kInside), kLength));
  int sleeps = 0;
  machine.onSleep = [&] {
    if (++sleeps == 3) other.unlock(lockOf(kInside), kLength);
  };
  EXPECT_EQ(repaired(), tableCode::fine);
  EXPECT_GE(sleeps, 3);
}

// Does something else at the step before the rows are copied and, again, right before the new table takes its place.
class Meanwhile : public FaultPlatform {
 public:
  explicit Meanwhile(std::function<void()> work) : FaultPlatform(platform::current()), work_(std::move(work)) {}
  void copyPermissions(const std::string& from, const std::string& to) override {
    work_();
    FaultPlatform::copyPermissions(from, to);
  }
  void syncFolder(const std::string& path) override {
    work_();
    FaultPlatform::syncFolder(path);
  }

 private:
  std::function<void()> work_;
};

TEST_F(RepairLocks, AreNotToBeHadFromItsBeginningToItsEnd) {
  const RawLocks other(machinePath);
  int asked = 0;
  int had = 0;
  Meanwhile meanwhile([&] {
    for (const off_t place : {kLockBase, lockOf(0), lockOf(kRows - 1), off_t{0x7FFFFFFE - 1}}) {
      ++asked;
      if (!other.lock(place, 1)) continue;
      ++had;
      other.unlock(place, 1);
    }
  });
  const platform::Substitute substitute(meanwhile);
  ASSERT_EQ(repaired(), tableCode::fine);
  EXPECT_GE(asked, 8);
  EXPECT_EQ(had, 0);
  // The old file is everybody's again.
  EXPECT_TRUE(other.lock(kLockBase, kAllPlaces));
  EXPECT_TRUE(allPlacesFree());
}

TEST_F(RepairLocks, OfNobodyKeepATableThatIsReplacedMeanwhile) {
  const std::string others = test::RawTable{.fields = {{"A", 'C', 100}}}.bytes();
  bool done = false;
  Meanwhile meanwhile([&] {
    if (std::exchange(done, true)) return;
    suite.folder().write("PACKED.DBF", others);
    platform::operatingSystem().rename(suite.file("PACKED.DBF"), path);
  });
  const platform::Substitute substitute(meanwhile);
  EXPECT_EQ(repaired(), tableCode::unknown);
  EXPECT_EQ(suite.folder().read("ROWS.DBF"), others);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3011: "));
}

TEST_F(RepairLocks, KeepATableFromBeingReplacedByANewOne) {
  const std::string before = suite.folder().read("ROWS.DBF");
  const RawLocks other(machinePath);
  ASSERT_TRUE(other.lock(lockOf(kInside), kLength));
  EXPECT_FALSE(NewTable(fields, path));
  EXPECT_EQ(suite.folder().read("ROWS.DBF"), before);
  EXPECT_THAT(suite.log(), HasSubstr("Error 3211: "));
  other.unlock(lockOf(kInside), kLength);
  EXPECT_TRUE(allPlacesFree());
  EXPECT_TRUE(NewTable(fields, path));
}

}  // namespace
}  // namespace vantrelix

// Which locks keep others from a table's rows while this process writes what it remembers of them.
#include <gtest/gtest.h>
#include <memory>

#include "support/TempFolder.h"
#include "tables/rememberedWrite.h"

namespace vantrelix::dbf {
namespace {

using platform::LockKind;
using platform::OpenMode;

constexpr std::uint64_t kGigabyte = 0x40000000;
constexpr std::uint64_t kHighPlace = 0x80000000;

class OthersKept : public testing::Test {
 protected:
  void grow(std::uint64_t size) const { file_->truncate(size); }
  bool areAllKeptOut(std::uint64_t added = 0) const {
    OthersKeptOut others(*file_, kHeaderLock);
    others.lock(added);
    return others.whole();
  }
  // Another opening of the file, as another program has it.
  std::unique_ptr<platform::File> other() const { return platform::current().open(path(), OpenMode::readWrite); }

  std::string path() const { return folder_.file("TABLE.DBF"); }
  test::TempFolder folder_;
  std::unique_ptr<platform::File> file_ = platform::current().open(path(), OpenMode::createNew);
};

TEST_F(OthersKept, NoRecordCanBeLockedForAWriteMeanwhileAndAllCanBeRead) {
  grow(kGigabyte + 1000);
  const auto stranger = other();
  {
    OthersKeptOut others(*file_, kHeaderLock);
    EXPECT_EQ(others.lock(0).size, kGigabyte + 1000);
    for (const std::uint64_t place :
         {kHeaderLock.offset + 1, kDenyWriteLock.offset - 1, kHighPlace, kHighPlace + 999}) {
      EXPECT_FALSE(stranger->tryLock(place, 1, LockKind::exclusive)) << place;
      EXPECT_TRUE(stranger->tryLock(place, 1, LockKind::shared)) << place;
      stranger->unlock(place, 1);
    }
    EXPECT_TRUE(stranger->tryLock(kSharingLock.offset, 1, LockKind::exclusive));
    EXPECT_TRUE(stranger->tryLock(kDenyWriteLock.offset, 1, LockKind::exclusive));
  }
  EXPECT_TRUE(stranger->tryLock(kHeaderLock.offset, kHighPlace, LockKind::exclusive));
}

TEST_F(OthersKept, AWriterOfALowRecordKeepsThemFromNone) {
  const auto stranger = other();
  ASSERT_TRUE(stranger->tryLock(kHeaderLock.offset + 100, 30, LockKind::exclusive));
  EXPECT_FALSE(areAllKeptOut());
  stranger->unlock(kHeaderLock.offset + 100, 30);
  EXPECT_TRUE(areAllKeptOut());
}

TEST_F(OthersKept, PlacesBeyondAGigabyteCountWhereTheFileReachesThemOrWill) {
  const std::uint64_t lowEnd = kDenyWriteLock.offset - kHeaderLock.offset;
  const auto stranger = other();
  ASSERT_TRUE(stranger->tryLock(kHighPlace, 30, LockKind::exclusive));
  grow(lowEnd - 100);
  EXPECT_TRUE(areAllKeptOut());
  EXPECT_TRUE(areAllKeptOut(100));
  EXPECT_FALSE(areAllKeptOut(101));
  grow(lowEnd);
  EXPECT_TRUE(areAllKeptOut());
  grow(lowEnd + 1);
  EXPECT_FALSE(areAllKeptOut());
  stranger->unlock(kHighPlace, 30);
  EXPECT_TRUE(areAllKeptOut());
}

}  // namespace
}  // namespace vantrelix::dbf

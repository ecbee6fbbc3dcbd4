#include <gtest/gtest.h>

#include "platform/Platform.h"
#include "platform/failures.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;

namespace {

class Locks : public testing::Test {
 protected:
  TempFolder folder;
  std::string path = folder.write("t.dbf", "content");
  std::unique_ptr<File> first = current().open(path, OpenMode::readWrite);
  std::unique_ptr<File> second = current().open(path, OpenMode::readWrite);
};

}  // namespace

TEST_F(Locks, TwoFilesOfOneProcessExcludeEachOther) {
  EXPECT_TRUE(first->tryLock(100, 10, LockKind::exclusive));
  EXPECT_FALSE(second->tryLock(105, 1, LockKind::exclusive));
  EXPECT_FALSE(second->tryLock(105, 1, LockKind::shared));
  EXPECT_TRUE(second->tryLock(110, 5, LockKind::exclusive));
  first->unlock(100, 10);
  EXPECT_TRUE(second->tryLock(105, 1, LockKind::exclusive));
}

TEST_F(Locks, SharedLocksStandTogetherAndKeepAWriterOut) {
  EXPECT_TRUE(first->tryLock(0, 1, LockKind::shared));
  EXPECT_TRUE(second->tryLock(0, 1, LockKind::shared));
  EXPECT_FALSE(second->tryLock(0, 1, LockKind::exclusive));
  first->unlock(0, 1);
  EXPECT_TRUE(second->tryLock(0, 1, LockKind::exclusive));
}

TEST_F(Locks, AskingWhoHoldsALockTakesNone) {
  EXPECT_FALSE(second->lockedByOther(0, 100, LockKind::exclusive));
  EXPECT_TRUE(first->tryLock(50, 1, LockKind::shared));
  EXPECT_TRUE(second->lockedByOther(0, 100, LockKind::exclusive));
  EXPECT_FALSE(second->lockedByOther(0, 100, LockKind::shared));
  EXPECT_FALSE(first->lockedByOther(0, 100, LockKind::exclusive)) << "its own lock is in nobody's way";
  first->unlock(50, 1);
  EXPECT_TRUE(first->tryLock(50, 1, LockKind::exclusive));
  EXPECT_TRUE(second->lockedByOther(0, 100, LockKind::shared));
}

TEST_F(Locks, ClosingAnotherFileOfTheSamePathKeepsTheLock) {
  EXPECT_TRUE(first->tryLock(0, 1, LockKind::exclusive));
  current().open(path, OpenMode::read).reset();
  EXPECT_FALSE(second->tryLock(0, 1, LockKind::exclusive));
  first.reset();
  EXPECT_TRUE(second->tryLock(0, 1, LockKind::exclusive));
}

TEST_F(Locks, AnotherProcessIsExcludedToo) {
  EXPECT_TRUE(first->tryLock(0x7FFFFFFE, 1, LockKind::exclusive));
  const auto other = [&] {
    const auto file = current().open(path, OpenMode::readWrite);
    return file->tryLock(0x7FFFFFFE, 1, LockKind::exclusive);
  };
  EXPECT_EQ(exitCode(startChild(other)), 1);
  first->unlock(0x7FFFFFFE, 1);
  EXPECT_EQ(exitCode(startChild(other)), 0);
}

TEST_F(Locks, AFileOpenedForReadingTakesSharedLocksAlone) {
  const auto reader = current().open(path, OpenMode::read);
  EXPECT_TRUE(reader->tryLock(0, 1, LockKind::shared));
  EXPECT_FALSE(first->tryLock(0, 1, LockKind::exclusive));
  EXPECT_EQ(failureOf([&] { reader->tryLock(5, 1, LockKind::exclusive); }), failure::permissionDenied);
}

TEST_F(Locks, ARangeOfNoBytesLocksNothing) {
  EXPECT_TRUE(first->tryLock(0, 0, LockKind::exclusive));
  EXPECT_TRUE(second->tryLock(0, 100, LockKind::exclusive));
  first->unlock(0, 0);
  EXPECT_FALSE(first->tryLock(50, 1, LockKind::shared));
}

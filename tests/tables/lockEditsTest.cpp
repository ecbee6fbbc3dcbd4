// A row held by the one who edits it.
#include <gtest/gtest.h>

#include "support/Processes.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::failureNumberOf;

class LockedEdit : public ::testing::Test, protected test::CursorTables {
 protected:
  LockedEdit() {
    DbfFile::setLockWait(20);
    mine->LockEdits(true);
  }
  ~LockedEdit() override { DbfFile::setLockWait(2000); }

  RecordsetPtr cursor() const { return database->OpenRecordset("Select * from [AMSTEST]"); }
  // What another cursor's write to its first row fails with, 0 for nothing.
  int writeElsewhere(const char* antenna) const {
    return failureNumberOf([&] {
      const RecordsetPtr other = cursor();
      other->Edit();
      other->put("ANTENNA", antenna);
      other->Update();
    });
  }

  RecordsetPtr mine = cursor();
};

TEST_F(LockedEdit, IsNotAskedForUnlessSet) {
  const RecordsetPtr plain = cursor();
  EXPECT_FALSE(plain->LockEdits());
  plain->Edit();
  EXPECT_EQ(writeElsewhere("other"), 0);
}

TEST_F(LockedEdit, KeepsOthersFromWritingTheRowUntilItIsUpdated) {
  mine->Edit();
  mine->put("ANTENNA", "mine");
  EXPECT_EQ(writeElsewhere("other"), failure::locked);
  mine->Update();
  EXPECT_EQ(cursor()->value("ANTENNA").text().substr(0, 5), "mine ");
  EXPECT_EQ(writeElsewhere("other"), 0);
}

TEST_F(LockedEdit, KeepsAnotherProgramFromWritingTheRow) {
  mine->Edit();
  const auto there = [this] { return writeElsewhere("other") == failure::locked; };
  EXPECT_EQ(test::exitCode(test::startChild(there)), 0);
}

TEST_F(LockedEdit, LeavesTheOtherRowsToOthers) {
  mine->Edit();
  const RecordsetPtr other = cursor();
  other->MoveNext();
  other->Edit();
  other->put("ANTENNA", "other");
  EXPECT_EQ(failureNumberOf([&] { other->Update(); }), 0);
}

TEST_F(LockedEdit, EndsWithItsCancelling) {
  mine->Edit();
  mine->CancelUpdate();
  EXPECT_EQ(writeElsewhere("other"), 0);
}

TEST_F(LockedEdit, EndsWithAMove) {
  mine->Edit();
  mine->MoveNext();
  EXPECT_EQ(writeElsewhere("other"), 0);
}

TEST_F(LockedEdit, EndsWithTheCursor) {
  mine->Edit();
  mine->Close();
  EXPECT_EQ(writeElsewhere("other"), 0);
}

TEST_F(LockedEdit, OfARowThatIsHeldFailsAndHoldsNothing) {
  mine->Edit();
  const RecordsetPtr second = cursor();
  second->LockEdits(true);
  EXPECT_EQ(failureNumberOf([&] { second->Edit(); }), failure::locked);
  EXPECT_FALSE(second->editing());
  mine->CancelUpdate();
  second->Edit();
  EXPECT_TRUE(second->editing());
}

TEST_F(LockedEdit, ThatIsBegunAgainStillHoldsTheRow) {
  mine->Edit();
  mine->Edit();
  EXPECT_EQ(writeElsewhere("other"), failure::locked);
}

TEST_F(LockedEdit, OfARowDeletedMeanwhileFailsAndHoldsNothing) {
  const RecordsetPtr second = cursor();
  second->Delete();
  EXPECT_EQ(failureNumberOf([&] { mine->Edit(); }), failure::recordDeleted);
  EXPECT_FALSE(mine->editing());
}

}  // namespace
}  // namespace vantrelix

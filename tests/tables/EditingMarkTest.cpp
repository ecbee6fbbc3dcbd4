#include <atomic>
#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "support/Processes.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"
#include "tables/EditingMark.h"

namespace vantrelix::test {
namespace {

class EditingMarkTest : public ::testing::Test {
 protected:
  EditingMarkTest() {
    DbfFile::create(path, {{"NAME", 'C', 10, 0}});
    DbfFile::setLockWait(20);
  }
  ~EditingMarkTest() override { DbfFile::setLockWait(2000); }

  int failureOf(int options) {
    try {
      DBEngine::OpenDatabase(folder.path())->OpenRecordset("TABLE", RecordsetType::table, options);
    } catch (const RunTimeFailure& failure) {
      return failure.number();
    }
    return 0;
  }

  int failureOfMark() {
    try {
      const EditingMark mark(path);
    } catch (const RunTimeFailure& failure) {
      return failure.number();
    }
    return 0;
  }

  TempFolder folder;
  std::string path = folder.file("TABLE.DBF");
};

TEST_F(EditingMarkTest, RefusesWhoeverDeniesWritingUntilItEnds) {
  {
    const EditingMark mark(path);
    EXPECT_EQ(failureOf(recordsetOption::denyWrite), failure::locked);
  }
  EXPECT_EQ(failureOf(recordsetOption::denyWrite), 0);
}

TEST_F(EditingMarkTest, LetsOthersReadAndWrite) {
  const EditingMark mark(path);
  const RecordsetPtr rows = DBEngine::OpenDatabase(folder.path())->OpenRecordset("select * from TABLE");
  rows->AddNew();
  rows->put("NAME", "written");
  rows->Update();
  rows->Requery();
  EXPECT_EQ(rows->value("NAME").asText().substr(0, 7), "written");
}

TEST_F(EditingMarkTest, IsRefusedBesideAnotherMark) {
  auto first = std::make_unique<EditingMark>(path);
  EXPECT_EQ(failureOfMark(), failure::locked);
  EXPECT_EQ(EditingMark::unlessInUse(path), nullptr);
  EXPECT_EQ(failureOf(recordsetOption::denyWrite), failure::locked);
  first.reset();
  EXPECT_NE(EditingMark::unlessInUse(path), nullptr);
}

TEST_F(EditingMarkTest, WaitsForAWriterToGo) {
  DbfFile::setLockWait(5000);
  auto writer = platform::current().open(path, platform::OpenMode::readWrite);
  ASSERT_TRUE(writer->tryLock(0x7FFFFFFE, 1, platform::LockKind::shared));
  SharedMemory<std::atomic<int>> failed;
  *failed = -1;
  Child editor([&] {
    *failed = failureOfMark();
    return true;
  });
  platform::current().sleepMilliseconds(30);
  EXPECT_EQ(*failed, -1);
  writer->unlock(0x7FFFFFFE, 1);
  EXPECT_EQ(editor.wait(), 0);
  EXPECT_EQ(*failed, 0);
}

// Many at once: each holds its mark for a moment and counts the others that do.
TEST_F(EditingMarkTest, IsOneEditorsAloneHoweverManyAskAtOnce) {
  constexpr int kEditors = 4;
  struct Counts {
    std::atomic<int> marked, most, taken;
  };
  SharedMemory<Counts> counts;
  std::vector<std::unique_ptr<Child>> editors;
  for (int editor = 0; editor < kEditors; ++editor) {
    editors.push_back(std::make_unique<Child>([&] {
      DbfFile::setLockWait(0);
      for (int turn = 0; turn < 200; ++turn) {
        const auto mark = EditingMark::unlessInUse(path);
        if (!mark) continue;
        const int now = ++counts->marked;
        if (now > counts->most) counts->most = now;
        ++counts->taken;
        platform::current().yield();
        --counts->marked;
      }
      return true;
    }));
  }
  for (const auto& editor : editors) EXPECT_EQ(editor->wait(), 0);
  EXPECT_EQ(counts->most, 1);
  EXPECT_GT(counts->taken, 0);
}

TEST_F(EditingMarkTest, IsRefusedWhereWritingIsDenied) {
  const RecordsetPtr denying =
      DBEngine::OpenDatabase(folder.path())->OpenRecordset("TABLE", RecordsetType::table, recordsetOption::denyWrite);
  EXPECT_EQ(failureOfMark(), failure::locked);
  EXPECT_EQ(EditingMark::unlessInUse(path), nullptr);
}

TEST_F(EditingMarkTest, IsRefusedWhereTheTableIsHeldExclusively) {
  const auto holder = DbfFile::open(path, false, Sharing::exclusive);
  EXPECT_EQ(failureOfMark(), failure::cannotOpen);
  EXPECT_EQ(EditingMark::unlessInUse(path), nullptr);
}

TEST_F(EditingMarkTest, CountsInOtherProcessesAndGoesWithItsOwn) {
  const pid_t editor = startChild([&] {
    const EditingMark mark(path);
    folder.write("MARKED", "");
    for (;;) platform::current().sleepMilliseconds(50);
    return true;
  });
  for (int tries = 0; tries < 2000 && !folder.exists("MARKED"); ++tries) platform::current().sleepMilliseconds(5);
  ASSERT_TRUE(folder.exists("MARKED"));
  EXPECT_EQ(failureOf(recordsetOption::denyWrite), failure::locked);
  EXPECT_EQ(failureOf(0), 0);
  ::kill(editor, SIGKILL);
  exitCode(editor);
  EXPECT_EQ(failureOf(recordsetOption::denyWrite), 0);
}

TEST_F(EditingMarkTest, FindsTheTableInAnyCaseOfItsName) {
  const EditingMark mark(folder.file("table.dbf"));
  EXPECT_EQ(failureOf(recordsetOption::denyWrite), failure::locked);
}

TEST_F(EditingMarkTest, FailsWhereThereIsNoTable) {
  path = folder.file("NONE.DBF");
  EXPECT_EQ(failureOfMark(), failure::noSuchTable);
  EXPECT_THROW(EditingMark::unlessInUse(path), RunTimeFailure);
}

}  // namespace
}  // namespace vantrelix::test

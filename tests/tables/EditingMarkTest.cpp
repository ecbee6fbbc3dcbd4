#include <csignal>
#include <gtest/gtest.h>

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

TEST_F(EditingMarkTest, StandsBesideAnotherMark) {
  const EditingMark first(path);
  const EditingMark second(path);
  EXPECT_EQ(failureOf(recordsetOption::denyWrite), failure::locked);
}

TEST_F(EditingMarkTest, IsRefusedWhereWritingIsDenied) {
  const RecordsetPtr denying =
      DBEngine::OpenDatabase(folder.path())->OpenRecordset("TABLE", RecordsetType::table, recordsetOption::denyWrite);
  try {
    const EditingMark mark(path);
    FAIL() << "marked";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::locked);
  }
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
  try {
    const EditingMark mark(folder.file("NONE.DBF"));
    FAIL() << "marked";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::noSuchTable);
  }
}

}  // namespace
}  // namespace vantrelix::test

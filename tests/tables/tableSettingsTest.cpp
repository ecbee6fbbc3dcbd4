#include <gtest/gtest.h>

#include "support/TempSuite.h"
#include "tables/Database.h"
#include "tables/installSuite.h"
#include "tables/tableSettings.h"

namespace vantrelix {
namespace {

class TableSettings : public ::testing::Test {
 protected:
  TableSettings() { forgetTableSettings(); }
  ~TableSettings() override {
    DbfFile::setLockWait(2000);
    DbfFile::setDurable(false);
  }
  void openWith(const std::string& ini) {
    suite.folder().write("QVDEFAULTS.INI", ini);
    DBEngine::OpenDatabase(suite.path());
  }

  test::TempSuite suite;
};

TEST_F(TableSettings, ComeFromTheDefaultsIniWithTheFirstDatabase) {
  openWith("[Tables]\r\nLockWait=350\r\nDurableWrites=1\r\n");
  EXPECT_EQ(DbfFile::lockWait(), 350);
  EXPECT_TRUE(DbfFile::durable());
  openWith("[Tables]\r\nLockWait=10\r\nDurableWrites=0\r\n");
  EXPECT_EQ(DbfFile::lockWait(), 350);
  EXPECT_TRUE(DbfFile::durable());
  forgetTableSettings();
  openWith("[Tables]\r\nLockWait=0\r\nDurableWrites=0\r\n");
  EXPECT_EQ(DbfFile::lockWait(), 0);
  EXPECT_FALSE(DbfFile::durable());
}

TEST_F(TableSettings, ThatAreNotNamedStayAsTheyAreSet) {
  DbfFile::setLockWait(77);
  DbfFile::setDurable(true);
  openWith("[Tables]\r\nOther=1\r\n");
  EXPECT_EQ(DbfFile::lockWait(), 77);
  EXPECT_TRUE(DbfFile::durable());
}

TEST_F(TableSettings, AWaitThatIsNoNumberCountsAsNone) {
  for (const char* wait : {"soon", "-5", "1.5", ""}) {
    forgetTableSettings();
    openWith("[Tables]\r\nLockWait=" + std::string(wait) + "\r\n");
    EXPECT_EQ(DbfFile::lockWait(), 2000) << wait;
  }
  forgetTableSettings();
  openWith("[Tables]\r\nLockWait=99999999999999999999\r\n");
  EXPECT_EQ(DbfFile::lockWait(), 600000);
}

TEST_F(TableSettings, OfANewInstallationAreThoseThatHoldWithoutThem) {
  installSuite(suite.file("suite"));
  forgetTableSettings();
  DBEngine::OpenDatabase(suite.path());
  EXPECT_EQ(DbfFile::lockWait(), 2000);
  EXPECT_FALSE(DbfFile::durable());
  const std::string ini = suite.folder().read("suite/QVDEFAULTS.INI");
  EXPECT_NE(ini.find(";LockWait=2000\r\n"), std::string::npos);
  EXPECT_NE(ini.find(";DurableWrites=0\r\n"), std::string::npos);
}

// A program that only opens tables needs no installation, and no log beside it complains.
TEST(TableSettingsOfNoInstallation, AreNotLookedFor) {
  forgetTableSettings();
  const test::TempFolder folder;
  EXPECT_NO_THROW(DBEngine::OpenDatabase(folder.path()));
  EXPECT_EQ(DbfFile::lockWait(), 2000);
}

}  // namespace
}  // namespace vantrelix

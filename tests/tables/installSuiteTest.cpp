#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "tables/dictionaryTables.h"
#include "tables/installSuite.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::filesThatBegin;
using test::TempSuite;
using ::testing::ElementsAre;

TEST(InstallSuite, ANewFolderGetsFoldersIniFilesAndDictionary) {
  TempSuite outer;
  const std::string folder = outer.file("Radio/New Suite");
  installSuite(folder);
  EXPECT_EQ(getSuiteDir(), folder);
  for (const char* name : {"ANTENNAS", "LINES", "QVDEFAULTS.INI", "QVZOR32.INI", "SYSTEM/QVDATASM.DBF", "WORK"}) {
    EXPECT_TRUE(outer.folder().exists("Radio/New Suite/" + std::string(name))) << name;
  }
  EXPECT_EQ(FieldsFromDataSum("AMSPDBASE").size(), 9u);
  EXPECT_TRUE(outer.messages.empty());
}

TEST(InstallSuite, TheIniFilesChangeNoSetting) {
  TempSuite outer;
  installSuite(outer.file("suite"));
  EXPECT_EQ(getAntGainUnits(), "dBd");
  EXPECT_EQ(getINIDbl("HDAntenna", "MinValidGain", -50), -50);
  EXPECT_EQ(getSystemPath(), outer.file("suite") + "\\SYSTEM");
  std::string file = getSuiteINI();
  EXPECT_EQ(getINIStr("CONFIG", "SYSTEM_PATH", "none", file), "none");
}

TEST(InstallSuite, WhatIsThereIsKept) {
  TempSuite outer;
  outer.folder().write("suite/qvdefaults.ini", "[HDAntenna]\r\nMinValidGain=-70\r\n");
  outer.folder().write("suite/ANTENNAS/AMSTEST1.DBF", "a library");
  installSuite(outer.file("suite"));
  EXPECT_EQ(outer.folder().read("suite/qvdefaults.ini"), "[HDAntenna]\r\nMinValidGain=-70\r\n");
  EXPECT_FALSE(outer.folder().exists("suite/QVDEFAULTS.INI"));
  EXPECT_EQ(outer.folder().read("suite/ANTENNAS/AMSTEST1.DBF"), "a library");
}

TEST(InstallSuite, RunAgainItChangesNothing) {
  TempSuite outer;
  installSuite(outer.file("suite"));
  outer.folder().write("suite/QVZOR32.INI", "[CONFIG]\r\nSupportAddress=me\r\n");
  const std::string dictionary = outer.folder().read("suite/SYSTEM/QVDATASM.DBF");
  installSuite(outer.file("suite"));
  EXPECT_EQ(outer.folder().read("suite/QVZOR32.INI"), "[CONFIG]\r\nSupportAddress=me\r\n");
  EXPECT_EQ(outer.folder().read("suite/SYSTEM/QVDATASM.DBF"), dictionary);
  EXPECT_EQ(supportAddress(), "me");
}

TEST(InstallSuite, AnIniFileThatNamesAnotherSystemFolderIsFollowed) {
  TempSuite outer;
  outer.folder().write("suite/QVZOR32.INI", "[CONFIG]\r\nSYSTEM_PATH=" + outer.file("shared/system") + "\r\n");
  installSuite(outer.file("suite"));
  EXPECT_TRUE(outer.folder().exists("shared/system/QVDATASM.DBF"));
  EXPECT_FALSE(outer.folder().exists("suite/SYSTEM"));
}

TEST(InstallSuite, AFileInTheFoldersPlaceIsAFailureThatNamesIt) {
  TempSuite outer;
  outer.folder().write("taken", "a file");
  try {
    installSuite(outer.file("taken"));
    FAIL() << "the folder cannot have been made";
  } catch (const RunTimeFailure& failure) {
    EXPECT_NE(failure.description().find(outer.folder().machine("taken")), std::string::npos) << failure.what();
  }
  EXPECT_EQ(outer.folder().read("taken"), "a file");
  EXPECT_EQ(getSuiteDir(), outer.path());
}

}  // namespace
}  // namespace vantrelix

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/extract.h"
#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "support/TempSuite.h"

using namespace vantrelix;
using namespace vantrelix::test;

TEST(SetPathName, JoinsWithExactlyOneBackslash) {
  EXPECT_EQ(setPathName("C:\\A\\", "\\X.DBF"), "C:\\A\\X.DBF");
  EXPECT_EQ(setPathName("C:\\A", "X.DBF"), "C:\\A\\X.DBF");
  EXPECT_EQ(setPathName("C:\\A\\\\", "/\\/X.DBF"), "C:\\A\\X.DBF");
  EXPECT_EQ(setPathName(std::string("C:\\A\\ \0\0 ", 9), "X.DBF"), "C:\\A\\X.DBF");
  EXPECT_EQ(setPathName("/opt/qv/", "X.DBF"), "/opt/qv\\X.DBF");
  EXPECT_EQ(setPathName("\\", "X"), "\\X");
  EXPECT_EQ(setPathName("C:\\A", ""), "C:\\A\\");
}

TEST(SetPathName, ForwardSlashesReplaceEveryBackslash) {
  EXPECT_EQ(setPathName("C:\\A\\B", "C\\X.DBF", true), "C:/A/B/C/X.DBF");
}

TEST(GetFileExistLen, AnEmptyFileCountsAsAsked) {
  const TempFolder folder;
  const std::string empty = folder.write("empty.txt", "");
  EXPECT_TRUE(getFileExistLEN(folder.write("full.txt", "x")));
  EXPECT_FALSE(getFileExistLEN(empty));
  EXPECT_TRUE(getFileExistLEN(empty, true));
  EXPECT_FALSE(getFileExistLEN(folder.file("none.txt"), true));
  EXPECT_FALSE(getFileExistLEN(folder.path(), true));
  EXPECT_FALSE(getFileExistLEN("", true));
}

TEST(GetFileExistLen, TablesAndIniFilesAreFoundInAnyCaseAndOthersAreNot) {
  const TempFolder folder;
  folder.write("amsz0001.dbf", "x");
  folder.write("names.ini", "x");
  folder.write("cut.hor", "x");
  EXPECT_TRUE(getFileExistLEN(folder.file("AMSZ0001.DBF")));
  EXPECT_TRUE(getFileExistLEN(folder.file("NAMES.INI")));
  EXPECT_FALSE(getFileExistLEN(folder.file("CUT.HOR")));
}

TEST(GetPathExist, ABlankPathOffersTheCurrentFolder) {
  TempSuite suite;
  suite.answers = {MsgAnswer::ok, MsgAnswer::cancel};
  EXPECT_TRUE(getPathExist("  ", true, false));
  EXPECT_FALSE(getPathExist("", true, true));
  ASSERT_EQ(suite.messages.size(), 2U);
  EXPECT_EQ(suite.messages[0].title, "Path Specification");
  EXPECT_EQ(suite.messages[0].text, "Since no path was specified, the program will use the path:\r\n" +
                                        displayPath(platform::current().currentFolder()));
  EXPECT_EQ(suite.messages[0].buttons, MsgButtons::okCancel);
  EXPECT_FALSE(getPathExist("", false, true));
  EXPECT_EQ(suite.messages.size(), 2U);
}

TEST(GetPathExist, TheRootAsCurrentFolderIsShown) {
  EXPECT_EQ(exitCode(startChild([] {
              TempSuite suite;
              if (::chdir("/") != 0) return false;
              getPathExist("", true, false);
              return suite.messages.at(0).text.ends_with("path:\r\n" + displayPath("\\"));
            })),
            0);
}

TEST(GetPathExist, IsTrueForADriveARootAndAFolderInAnyCase) {
  TempSuite suite;
  suite.folder().write("Data/x", "");
  EXPECT_TRUE(getPathExist("C:", true, false));
  EXPECT_TRUE(getPathExist("C:\\", true, false));
  EXPECT_TRUE(getPathExist("\\", true, false));
  EXPECT_TRUE(getPathExist(suite.file("Data\\"), true, false));
  EXPECT_TRUE(getPathExist(suite.file("DATA"), true, false));
  EXPECT_TRUE(suite.messages.empty());
}

TEST(GetPathExist, AMissingPathIsCreatedOnYesAlone) {
  TempSuite suite;
  suite.answers = {MsgAnswer::no, MsgAnswer::yes};
  const std::string path = suite.file("a\\b");
  EXPECT_FALSE(getPathExist(path + "\\", true, true));
  EXPECT_FALSE(suite.folder().exists("a"));
  EXPECT_TRUE(getPathExist(path, true, true));
  EXPECT_TRUE(suite.folder().exists("a/b"));
  ASSERT_EQ(suite.messages.size(), 2U);
  EXPECT_EQ(suite.messages[0].title, "Path Not Found");
  EXPECT_EQ(suite.messages[0].text,
            "The specified path does not exist:\r\n" + displayPath(path) + "\r\nDo you want to create the new path?");
  EXPECT_EQ(suite.messages[0].buttons, MsgButtons::yesNo);
}

TEST(GetPathExist, YesGivesTrueWhateverBecomesOfTheFolder) {
  TempSuite suite;
  suite.answers = {MsgAnswer::yes};
  suite.folder().write("file", "x");
  EXPECT_TRUE(getPathExist(suite.file("file\\sub"), true, true));
  EXPECT_EQ(suite.folder().read("file"), "x");
}

TEST(GetPathExist, AMissingPathThatMustExistIsAnError) {
  TempSuite suite;
  const std::string path = suite.file("none");
  EXPECT_FALSE(getPathExist(path, true, false));
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].title, "Path Error");
  EXPECT_EQ(suite.messages[0].text, "The specified path does not exist:\r\n" + displayPath(path) +
                                        "\r\nYou must specify an existing path for this function.");
  EXPECT_EQ(suite.messages[0].buttons, MsgButtons::ok);
  EXPECT_FALSE(suite.folder().exists("none"));
}

TEST(GetPathExist, WithoutPromptItCreatesAndLooksAgain) {
  TempSuite suite;
  EXPECT_FALSE(getPathExist(suite.file("a\\b"), false, false));
  EXPECT_TRUE(getPathExist(suite.file("a\\b"), false, true));
  EXPECT_TRUE(suite.folder().exists("a/b"));
  suite.folder().write("file", "x");
  EXPECT_FALSE(getPathExist(suite.file("file\\sub"), false, true));
  EXPECT_FALSE(getPathExist(suite.file("file"), false, true));
  EXPECT_TRUE(suite.messages.empty());
}

TEST(MakeDirPath, CreatesEachLevelAndIgnoresFailures) {
  const TempFolder folder;
  folder.write("Data/x", "");
  MakeDirPath(folder.file("DATA\\one\\\\two\\"));
  EXPECT_TRUE(folder.exists("Data/one/two"));
  EXPECT_FALSE(folder.exists("DATA"));
  platform::FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  faults.failAt(1, failure::permissionDenied);
  EXPECT_NO_THROW(MakeDirPath(folder.file("Data\\three")));
  EXPECT_TRUE(folder.exists("Data/three"));
}

TEST(MakeDirPath, TakesForwardSlashesToo) {
  const TempFolder folder;
  MakeDirPath(folder.machine("one/two"));
  EXPECT_TRUE(folder.exists("one/two"));
}

TEST(MakeDirPath, ADriveIsNoLevelToMake) {
  platform::FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  faults.crashAt(1);
  MakeDirPath("Q:\\a\\b");
  EXPECT_THAT(faults.journal(), testing::ElementsAre("makeFolder Q:/a", "makeFolder Q:/a/b"));
}

TEST(Extract, GivesThePartsOfAPath) {
  EXPECT_EQ(ExtractFileName("C:\\A\\B.C.DBF"), "B.C.DBF");
  EXPECT_EQ(ExtractBaseName("C:\\A\\A.B.DBF"), "A");
  EXPECT_EQ(ExtractExtension("C:\\A\\B.C.DBF"), "C.DBF");
  EXPECT_EQ(ExtractFolder("C:\\A\\B.C.DBF"), "C:\\A\\");
  EXPECT_EQ(ExtractFolderNoSlash("C:\\A\\B.C.DBF"), "C:\\A");
  EXPECT_EQ(ExtractPathNoExtension("C:\\A.X\\B.C.DBF"), "C:\\A.X\\B");
}

TEST(Extract, HandlesPathsThatLackAPart) {
  EXPECT_EQ(ExtractFileName("NAME"), "NAME");
  EXPECT_EQ(ExtractFileName("C:\\A\\"), "");
  EXPECT_EQ(ExtractBaseName("C:\\A.B\\NAME"), "NAME");
  EXPECT_EQ(ExtractExtension("C:\\A.B\\NAME"), "");
  EXPECT_EQ(ExtractFolder("NAME.X"), "");
  EXPECT_EQ(ExtractFolderNoSlash("NAME.X"), "");
  EXPECT_EQ(ExtractFileName("A/B"), "A/B");
}

TEST(Extract, AnExtensionLongerThanTheLimitIsNone) {
  EXPECT_EQ(ExtractExtension("A.DBF", 3), "DBF");
  EXPECT_EQ(ExtractExtension("A.DBFX", 3), "");
  EXPECT_EQ(ExtractExtension("A.\xC3\xA9\xC3\xA9\xC3\xA9", 3), "\xC3\xA9\xC3\xA9\xC3\xA9");
}

TEST(DisplayPath, IsTheMachinesOwnForm) { EXPECT_EQ(displayPath("\\a\\b"), platform::current().toMachine("\\a\\b")); }

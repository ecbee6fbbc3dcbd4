#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "foundation/IniFile.h"
#include "foundation/RegionalScope.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/FaultPlatform.h"
#include "support/Processes.h"
#include "support/TempSuite.h"

using namespace vantrelix;
using namespace vantrelix::test;
using platform::FaultPlatform;
namespace fs = std::filesystem;

namespace {

std::string read(const std::string& file, std::string_view key) {
  std::string value;
  getINI("s", key, file, "DEFAULT", value);
  return value;
}

std::size_t filesIn(const TempFolder& folder) { return platform::current().list(folder.path()).size(); }

}  // namespace

TEST(GetIni, TrimsSectionKeyAndFile) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=v\r\n");
  std::string value;
  getINI("  s ", " k ", "  " + file + "  ", "D", value);
  EXPECT_EQ(value, "v");
  EXPECT_TRUE(setINI(" s ", " n ", " " + file + " ", "2"));
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\nk=v\r\nn=2\r\n");
  EXPECT_TRUE(removePrivateProfileKey(" s ", " k ", " " + file + " "));
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\nn=2\r\n");
  EXPECT_TRUE(removePrivateProfileSection(" s ", " " + file + " "));
  EXPECT_EQ(folder.read("a.ini"), "");
}

TEST(GetIni, AMissingFileIsAnEmptyFileAndTheFirstWriteMakesIt) {
  const TempFolder folder;
  EXPECT_EQ(read(folder.file("a.ini"), "k"), "DEFAULT");
  EXPECT_FALSE(folder.exists("a.ini"));
  EXPECT_TRUE(setINI("s", "k", folder.file("a.ini"), "v"));
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\nk=v\r\n");
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(GetIni, AFileInAnotherCaseIsTheSameFile) {
  const TempFolder folder;
  folder.write("System/names.ini", "[s]\nk=v\n");
  EXPECT_EQ(read(folder.file("SYSTEM\\NAMES.INI"), "k"), "v");
  EXPECT_TRUE(setINI("s", "k", folder.file("SYSTEM\\NAMES.INI"), "w"));
  EXPECT_EQ(folder.read("System/names.ini"), "[s]\nk=w\n");
  EXPECT_TRUE(setINI("s", "k", folder.file("SYSTEM\\NEW.INI"), "n"));
  EXPECT_EQ(folder.read("System/NEW.INI"), "[s]\r\nk=n\r\n");
}

TEST(GetIni, AValueIsCutAt1999Characters) {
  const TempFolder folder;
  const std::string accented = "\xC3\xA9";
  std::string longValue;
  for (int i = 0; i < 50000; ++i) longValue += accented;
  const std::string file =
      folder.write("a.ini", "[s]\r\nk=" + longValue + "\r\nx=" + std::string(100000, 'x') + "\r\n");
  EXPECT_EQ(read(file, "k"), longValue.substr(0, 1999 * 2));
  EXPECT_EQ(read(file, "x"), std::string(1999, 'x'));
  EXPECT_TRUE(setINI("s", "n", file, "1"));
  EXPECT_EQ(IniFile(folder.read("a.ini")).get("s", "k"), longValue);
}

TEST(GetIni, ADefaultLosesItsTrailingBlanksAndIsCutToo) {
  const TempFolder folder;
  std::string value;
  getINI("s", "k", folder.file("a.ini"), "  D  ", value);
  EXPECT_EQ(value, "  D");
  getINI("s", "k", folder.file("a.ini"), std::string(3000, 'd'), value);
  EXPECT_EQ(value.size(), 1999U);
  EXPECT_EQ(getPrivateProfileString("s", "k", "D", 0, folder.file("a.ini")), "");
}

TEST(GetIniStr, ABlankFileBecomesTheDefaultsIni) {
  const TempSuite suite;
  suite.folder().write("QVDEFAULTS.INI", "[s]\r\nk=v\r\n");
  std::string file = "  ";
  EXPECT_EQ(getINIStr("s", "k", "D", file), "v");
  EXPECT_EQ(file, getDefaultsINI());
  std::string other = suite.file("other.ini");
  EXPECT_EQ(getINIStr("s", "k", "D", other), "D");
  EXPECT_EQ(other, suite.file("other.ini"));
  EXPECT_EQ(getINIStr("s", "k", "D"), "v");
}

TEST(GetIniBool, OnlyThreeTextsAreTrue) {
  const TempSuite suite;
  const std::string file =
      suite.folder().write("a.ini", "[s]\na= true \nb=1\nc=\" -1 \"\nd=yes\ne=0\nf=\ng=2\nh=TRUEX\n");
  for (const char* key : {"a", "b", "c"}) EXPECT_TRUE(getINIBool("s", key, "0", file)) << key;
  for (const char* key : {"d", "e", "f", "g", "h"}) EXPECT_FALSE(getINIBool("s", key, "-1", file)) << key;
  EXPECT_TRUE(getINIBool("s", "missing", "True", file));
  EXPECT_TRUE(setINI("s", "q", getDefaultsINI(), "-1"));
  EXPECT_TRUE(getINIBool("s", "q", "0"));
}

TEST(GetIniDbl, AValueThatIsNotNumericGivesZero) {
  const TempSuite suite;
  const std::string file = suite.folder().write("a.ini", "[s]\na=abc\nb= -12.5 \nc=\nd=7 dB\n");
  EXPECT_EQ(getINIDbl("s", "a", 5, file), 0);
  EXPECT_EQ(getINIDbl("s", "b", 5, file), -12.5);
  EXPECT_EQ(getINIDbl("s", "c", 5, file), 0);
  EXPECT_EQ(getINIDbl("s", "d", 5, file), 0);
  EXPECT_EQ(getINIDbl("s", "missing", -50.25, file), -50.25);
}

TEST(GetIniDbl, TheDefaultGoesThroughGeneralText) {
  const TempSuite suite;
  const RegionalScope comma(",", ".");
  EXPECT_EQ(getINIDbl("s", "missing", -50.25), -50.25);
  EXPECT_EQ(getINIDbl("s", "missing", 0.1 + 0.2), 0.3);
  EXPECT_EQ(getINIDbl("s", "missing", 1.5e-9), 1.5e-9);
}

TEST(GetIniDbl, ABlankFileMeansTheDefaultsIni) {
  const TempSuite suite;
  EXPECT_TRUE(setINI("s", "k", getDefaultsINI(), "2.5"));
  EXPECT_EQ(getINIDbl("s", "k", 1), 2.5);
}

TEST(GetIniInt, ReadsHexadecimalDigitsOfEitherCase) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\na=0xaf\nb=0XAF\nc=af\n");
  EXPECT_EQ(getPrivateProfileInt("s", "a", 1, file), 175);
  EXPECT_EQ(getPrivateProfileInt("s", "b", 1, file), 175);
  EXPECT_EQ(getPrivateProfileInt("s", "c", 1, file), 0);
}

TEST(GetIniInt, StaysWithinThirtyTwoBits) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\na=99999999999999999999\nb=-99999999999\nc=0xzz\nd=--1\n");
  EXPECT_EQ(getPrivateProfileInt("s", "a", 1, file), 2147483647);
  EXPECT_EQ(getPrivateProfileInt("s", "b", 1, file), -2147483648L);
  EXPECT_EQ(getPrivateProfileInt("s", "c", 1, file), 0);
  EXPECT_EQ(getPrivateProfileInt("s", "d", 1, file), 0);
}

TEST(SetIni, WhatCannotBeWrittenGivesFalseAndChangesNothing) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=1\r\n");
  folder.write("sub/x", "");
  EXPECT_FALSE(setINI("s", "k", folder.file("no\\such\\a.ini"), "2"));
  EXPECT_FALSE(setINI("s", "k", folder.file("sub"), "2"));
  EXPECT_FALSE(setINI("s", "k", "", "2"));
  EXPECT_FALSE(setINI("s", "", file, "2"));
  EXPECT_FALSE(setINI("s", "a=b", file, "2"));
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\nk=1\r\n");
  EXPECT_EQ(filesIn(folder), 2U);
}

TEST(SetIni, RemovingFromAMissingFileMakesNone) {
  const TempFolder folder;
  EXPECT_TRUE(removePrivateProfileKey("s", "k", folder.file("a.ini")));
  EXPECT_TRUE(removePrivateProfileSection("s", folder.file("a.ini")));
  EXPECT_FALSE(setINI("a]b", "k", folder.file("a.ini"), "1"));
  EXPECT_EQ(filesIn(folder), 0U);
}

TEST(SetIni, AKeyThatTheFilesCodePageLacksGivesFalse) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=\xE9\r\n");
  EXPECT_FALSE(setINI("s", "\xE6\x97\xA5", file, "2"));
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\nk=\xE9\r\n");
}

TEST(SetIni, AReadOnlyFileOrFolderGivesFalseAndChangesNothing) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=1\r\n");
  ::chmod(folder.machine("a.ini").c_str(), 0444);
  ::chmod(folder.machine().c_str(), 0777);
  EXPECT_EQ(runWithoutPrivilege([&] { return !setINI("s", "k", file, "2") && read(file, "k") == "1"; }), 0);
  ::chmod(folder.machine("a.ini").c_str(), 0666);
  ::chmod(folder.machine().c_str(), 0555);
  EXPECT_EQ(
      runWithoutPrivilege([&] { return !setINI("s", "k", file, "2") && !setINI("s", "k", folder.file("b.ini"), "2"); }),
      0);
  ::chmod(folder.machine().c_str(), 0755);
  EXPECT_EQ(folder.read("a.ini"), "[s]\r\nk=1\r\n");
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(SetIni, ALinkStaysALinkAndItsTargetIsWritten) {
  const TempFolder folder;
  folder.write("real.ini", "[s]\r\nk=1\r\n");
  fs::create_symlink("real.ini", folder.machine("a.ini"));
  EXPECT_TRUE(setINI("s", "k", folder.file("a.ini"), "2"));
  EXPECT_TRUE(fs::is_symlink(folder.machine("a.ini")));
  EXPECT_EQ(folder.read("real.ini"), "[s]\r\nk=2\r\n");
}

TEST(SetIni, WritingTheSameValueAgainTouchesNothing) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=1\r\n");
  FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  EXPECT_TRUE(setINI("s", "k", file, "1"));
  EXPECT_EQ(faults.calls(), 0);
  EXPECT_TRUE(setINI("s", "k", file, "2"));
  EXPECT_GT(faults.calls(), 0);
}

TEST(SetIni, AFileThatAnotherProgramHoldsIsGivenUpAfterAWhile) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "[s]\r\nk=1\r\n");
  const auto other = platform::current().open(file, platform::OpenMode::readWrite);
  ASSERT_TRUE(other->tryLock(0, 0x7FFFFFFF, platform::LockKind::exclusive));
  const auto start = platform::current().steadyMilliseconds();
  EXPECT_FALSE(setINI("s", "k", file, "2"));
  EXPECT_GE(platform::current().steadyMilliseconds() - start, 4000);
  EXPECT_EQ(read(file, "k"), "1");
  other->unlock(0, 0x7FFFFFFF);
  EXPECT_TRUE(setINI("s", "k", file, "2"));
}

TEST(SetIni, FourProgramsThatWriteAtOnceLoseNoKey) {
  const TempFolder folder;
  const std::string file = folder.file("a.ini");
  constexpr int kPrograms = 4;
  constexpr int kKeys = 50;
  std::vector<pid_t> children;
  for (int program = 0; program < kPrograms; ++program) {
    children.push_back(startChild([&] {
      bool good = true;
      for (int key = 0; key < kKeys; ++key) {
        const std::string name = std::to_string(program) + "-" + std::to_string(key);
        good = setINI("s" + std::to_string(key % 3), name, file, name) && good;
      }
      return good;
    }));
  }
  for (const pid_t child : children) EXPECT_EQ(exitCode(child), 0);
  const IniFile ini(folder.read("a.ini"));
  for (int program = 0; program < kPrograms; ++program) {
    for (int key = 0; key < kKeys; ++key) {
      const std::string name = std::to_string(program) + "-" + std::to_string(key);
      EXPECT_EQ(ini.get("s" + std::to_string(key % 3), name), name);
    }
  }
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(SetIni, AFailureAtAnyCallLeavesTheOldFile) {
  const TempFolder folder;
  const std::string before = "; mine\r\n[s]\r\nk=1\r\n";
  const std::string after = "; mine\r\n[s]\r\nk=2\r\n";
  FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  const std::string file = folder.write("a.ini", before);
  ASSERT_TRUE(setINI("s", "k", file, "2"));
  const int calls = faults.calls();
  ASSERT_GE(calls, 5);
  int failed = 0;
  for (int call = 1; call <= calls; ++call) {
    folder.write("a.ini", before);
    faults.failAt(call, failure::deviceIO);
    const bool done = setINI("s", "k", file, "2");
    failed += done ? 0 : 1;
    EXPECT_EQ(folder.read("a.ini"), done ? after : before) << faults.journal()[static_cast<std::size_t>(call) - 1];
    EXPECT_EQ(read(file, "k"), done ? "2" : "1");
    EXPECT_EQ(filesIn(folder), 1U) << call;
  }
  EXPECT_GE(failed, calls - 1);  // the last call comes when the new file already stands
}

TEST(SetIni, ACrashOrAFullDiskAtAnyCallLeavesOneWholeFile) {
  const TempFolder folder;
  const std::string before = "; mine\r\n[s]\r\nk=1\r\n";
  const std::string after = "; mine\r\n[s]\r\nk=2\r\n";
  FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  const std::string file = folder.file("a.ini");
  for (int call = 1; call <= 7; ++call) {
    folder.write("a.ini", before);
    faults.crashAt(call, true);
    setINI("s", "k", file, "2");
    EXPECT_THAT(folder.read("a.ini"), testing::AnyOf(before, after)) << call;
    folder.write("a.ini", before);
    faults.fillDiskAt(call);
    const bool done = setINI("s", "k", file, "2");
    EXPECT_EQ(folder.read("a.ini"), done ? after : before) << call;
    EXPECT_EQ(done, call > 3) << call;  // creating, writing and syncing need room
  }
}

TEST(SetIni, AFailureAtAnyCallOfTheFirstWriteLeavesNoFile) {
  const TempFolder folder;
  FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute substitute(faults);
  for (int call = 1; call <= 4; ++call) {
    faults.failAt(call, failure::permissionDenied);
    EXPECT_FALSE(setINI("s", "k", folder.file("a.ini"), "1")) << call;
    EXPECT_EQ(filesIn(folder), 0U) << call;
  }
  faults.failAt(5, failure::permissionDenied);
  EXPECT_TRUE(setINI("s", "k", folder.file("a.ini"), "1"));
}

TEST(ProfileSection, ReadsAsGetIniDoesAtTheMomentItWasMade) {
  const TempFolder folder;
  const std::string longValue(3000, 'x');
  const std::string file = folder.write(
      "Names.ini", "[s]\r\nK=v\r\nquoted=' q '\r\nempty=\r\nlong=" + longValue + "\r\nk=2\r\n[t]\r\no=1\r\n");
  const ProfileSection section(" S ", " " + folder.file("NAMES.INI") + " ");
  for (const char* key : {"k", " K ", "quoted", "empty", "long", "o", "none"}) {
    EXPECT_EQ(section.get(key, "DEFAULT"), read(file, key)) << key;
  }
  EXPECT_EQ(section.get("none", "D  "), "D");
  EXPECT_EQ(section.get("none", longValue).size(), 1999U);
  setINI("s", "k", file, "new");
  EXPECT_EQ(section.get("k", ""), "v");
  EXPECT_EQ(ProfileSection("s", folder.file("gone.ini")).get("k", "D"), "D");
  EXPECT_FALSE(folder.exists("gone.ini"));
}

TEST(SetIni, ManyKeysAreOneWriteAndKeepWhatTheyDoNotSet) {
  const TempFolder folder;
  const std::string file = folder.write("a.ini", "; mine\r\n[s]\r\nj=1\r\nk=old\r\n");
  FaultPlatform faults(platform::operatingSystem());
  const platform::Substitute inUse(faults);
  ASSERT_TRUE(setINI("s", "j", file, "2"));
  const int callsOfOne = faults.calls();
  faults.reset();
  EXPECT_TRUE(setINI(" s ", {{"k", "new"}, {"l", "3"}, {"no=name", "x"}}, file));
  EXPECT_EQ(faults.calls(), callsOfOne);
  EXPECT_EQ(folder.read("a.ini"), "; mine\r\n[s]\r\nj=2\r\nk=new\r\nl=3\r\n");
  faults.failAt(1, failure::permissionDenied);
  EXPECT_FALSE(setINI("s", {{"k", "never"}}, file));
  EXPECT_EQ(read(file, "k"), "new");
  faults.reset();
  EXPECT_TRUE(setINI("s", std::vector<IniEntry>{}, folder.file("none.ini")));
  EXPECT_FALSE(folder.exists("none.ini"));
}

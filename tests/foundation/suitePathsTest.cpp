#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "foundation/SettingsPlatform.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "support/TempSuite.h"

using namespace vantrelix;
using namespace vantrelix::test;
using testing::HasSubstr;

namespace {

constexpr const char* kAppPaths = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

// A registry that remembers the buffers it was asked with, and a fixed time of day.
class RegistryPlatform : public SettingsPlatform {
 public:
  std::vector<std::size_t> limits;

  std::optional<std::string> registryValue(int root, const std::string& key, std::size_t limit) override {
    if (limits.empty() || limits.back() != limit) limits.push_back(limit);
    return SettingsPlatform::registryValue(root, key, limit);
  }
};

// No installation folder set, a host's folder of its own and a registry.
class SuiteSearch : public testing::Test {
 protected:
  SuiteSearch() {
    setSuiteDir("");
    setHostFolder(host.path());
  }
  ~SuiteSearch() override { setHostFolder(""); }

  void registry(int root, const std::string& program, const std::string& value) {
    platform.setRegistryValue(root, kAppPaths + program, value);
  }
  std::string hostLog() const { return host.exists("QVTechSup.TXT") ? host.read("QVTechSup.TXT") : ""; }

  TempSuite suite;
  TempFolder host;
  RegistryPlatform platform;
  platform::Substitute substitute{platform};
};

}  // namespace

TEST_F(SuiteSearch, AProgramsPathIsCutBehindItsLastBackslash) {
  registry(0, "qvzor32.exe", "C:\\QV\\QVZOR32.EXE");
  EXPECT_EQ(getSuiteDir(), "C:\\QV\\");
  EXPECT_EQ(hostLog(), "");
}

TEST_F(SuiteSearch, AValueWithoutTheProgramStaysAsItIs) {
  registry(0, "qvzor32.exe", "C:\\QV");
  EXPECT_EQ(getSuiteDir(), "C:\\QV");
}

TEST_F(SuiteSearch, RootsComeBeforeProgramsAndBothInTheirOrder) {
  registry(2, "qvzor32.exe", "C:\\CLASSES");
  registry(1, "qvosprey.exe", "C:\\USER2");
  EXPECT_EQ(getSuiteDir(), "C:\\USER2");
  registry(1, "qvheron.exe", "C:\\USER1");
  EXPECT_EQ(getSuiteDir(), "C:\\USER1");
  registry(0, "qvzor6menu.exe", "C:\\MACHINE");
  EXPECT_EQ(getSuiteDir(), "C:\\MACHINE");
}

TEST_F(SuiteSearch, ProgramsAreLookedForInTheirOrder) {
  for (const char* program :
       {"qvosprey.exe", "qvzor6menu.exe", "qvheron.exe", "qvkestrel.exe", "qvmerlin.exe", "qvzor32.exe"}) {
    registry(0, program, std::string("C:\\QV\\") + program + ".d\\" + program);
    EXPECT_EQ(getSuiteDir(), std::string("C:\\QV\\") + program + ".d\\");
  }
}

TEST_F(SuiteSearch, TheIniFilesStayWhereTheyWereFoundFirst) {
  registry(1, "qvzor32.exe", "C:\\ONE");
  EXPECT_EQ(getSuiteINI(), "C:\\ONE\\QVZOR32.INI");
  EXPECT_EQ(getDefaultsINI(), "C:\\ONE\\QVDEFAULTS.INI");
  EXPECT_EQ(GetTechSupFile(), "C:\\ONE\\QVTECSUP.TXT");
  registry(0, "qvzor32.exe", "C:\\TWO");
  EXPECT_EQ(getSuiteINI(), "C:\\ONE\\QVZOR32.INI");
  EXPECT_EQ(getDefaultsINI(), "C:\\ONE\\QVDEFAULTS.INI");
  EXPECT_EQ(GetTechSupFile(), "C:\\ONE\\QVTECSUP.TXT");
}

TEST_F(SuiteSearch, TheSearchIsMadeOnEveryCall) {
  registry(1, "qvzor32.exe", "C:\\ONE");
  EXPECT_EQ(getSuiteDir(), "C:\\ONE");
  registry(0, "qvzor32.exe", "C:\\TWO");
  EXPECT_EQ(getSuiteDir(), "C:\\TWO");
}

TEST_F(SuiteSearch, TheBufferGrowsToTheValueAndNoFurtherThanItsLimit) {
  const std::string longFolder = "C:\\" + std::string(700, 'a');
  registry(1, "qvmerlin.exe", longFolder);
  EXPECT_EQ(getSuiteDir(), longFolder);
  registry(0, "qvmerlin.exe", "C:\\" + std::string(5000, 'b'));
  EXPECT_EQ(getSuiteDir(), "C:\\" + std::string(2497, 'b'));
  registry(0, "qvzor32.exe", std::string(250, 'c'));
  EXPECT_EQ(getSuiteDir(), std::string(250, 'c'));
}

TEST_F(SuiteSearch, TheBufferGrowsOnlyWhereTheValueFilledIt) {
  registry(0, "qvosprey.exe", std::string(249, 'a'));
  getSuiteDir();
  EXPECT_EQ(platform.limits, (std::vector<std::size_t>{250}));
  platform.limits.clear();
  registry(0, "qvheron.exe", std::string(500, 'b'));
  getSuiteDir();
  EXPECT_EQ(platform.limits, (std::vector<std::size_t>{250, 500, 750}));
  platform.limits.clear();
  registry(0, "qvzor32.exe", std::string(5000, 'c'));
  getSuiteDir();
  EXPECT_EQ(platform.limits, (std::vector<std::size_t>{250, 500, 750, 1000, 1250, 1500, 1750, 2000, 2250, 2500}));
}

TEST_F(SuiteSearch, DoubledSlashesAtTheEndLoseAllButOne) {
  registry(0, "qvzor32.exe", "C:\\QV\\\\");
  EXPECT_EQ(getSuiteDir(), "C:\\QV\\");
  registry(0, "qvkestrel.exe", "unused");
  host.write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=unused\r\n");
  setSuiteDir("/opt/qv/\\//");
  EXPECT_EQ(getSuiteDir(), "\\opt\\qv\\");
}

TEST_F(SuiteSearch, ABlankHitIsLoggedInTheHostsFolderAndIsTheResult) {
  host.write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=C:\\INI\r\n");
  registry(1, "qvheron.exe", "QVHERON.EXE");
  const std::string record = std::string("11/21/2026 4:02:48 PM:  Empty return in getQuorvendalDirectoryAny\r\n") +
                             "Registry Key: " + kAppPaths + "qvheron.exe\r\n \r\n";
  EXPECT_EQ(getSuiteDir(), "");
  EXPECT_EQ(hostLog(), record);
  registry(0, "qvheron.exe", "  ");
  EXPECT_EQ(getLenTrim(getSuiteDir()), 0U);
  EXPECT_EQ(hostLog(), record + record);
}

TEST_F(SuiteSearch, WithoutAHitTheIniFileBesideTheProgramDecides) {
  host.write("qvregistry.ini", "[config]\r\nquorvendaldirectory = /opt/qv//\r\n");
  EXPECT_EQ(getSuiteDir(), "\\opt\\qv\\");
  EXPECT_EQ(hostLog(), "");
}

TEST_F(SuiteSearch, WithoutAnySourceTheLogInTheHostsFolderSaysSo) {
  EXPECT_EQ(getSuiteDir(), "");
  EXPECT_THAT(hostLog(), HasSubstr("No Registry Entry found; try INI file\r\n"
                                   "Unable to get Quorvendal Directory from Windows Registry\r\n"
                                   "Error in getQuorvendalDirectoryAny\r\nError 53: File not found: " +
                                   host.machine("QVRegistry.INI") + "\r\nRegistry Key: " + kAppPaths + "qvosprey.exe"));
  host.write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=\r\n");
  EXPECT_EQ(getSuiteDir(), "");
  EXPECT_THAT(hostLog(), HasSubstr("Error 0: No QuorvendalDirectory"));
  const std::string before = hostLog();
  host.write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=\"  \"\r\n");
  EXPECT_EQ(getSuiteDir(), "");
  EXPECT_GT(hostLog().size(), before.size());
}

TEST_F(SuiteSearch, ALogThatCannotBeWrittenStopsNothing) {
  setHostFolder(host.file("none"));
  EXPECT_EQ(getSuiteDir(), "");
  EXPECT_FALSE(host.exists("none"));
}

TEST_F(SuiteSearch, WhoCanDoWithoutAnInstallationFindsItOrNothingWithoutAWord) {
  EXPECT_EQ(findSuiteDir(), "");
  EXPECT_EQ(hostLog(), "");
  host.write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=C:\\FALLBACK\r\n");
  EXPECT_EQ(findSuiteDir(), "C:\\FALLBACK");
  registry(0, "qvzor32.exe", "C:\\QV\\QVZOR32.EXE");
  EXPECT_EQ(findSuiteDir(), "C:\\QV\\");
  setSuiteDir("C:\\GIVEN");
  EXPECT_EQ(findSuiteDir(), "C:\\GIVEN");
  EXPECT_EQ(hostLog(), "");
}

TEST_F(SuiteSearch, WithoutAnInstallationPathsAreRelativeAndNothingIsMade) {
  EXPECT_EQ(getDefaultsINI(), "QVDEFAULTS.INI");
  EXPECT_EQ(getSuiteINI(), "QVZOR32.INI");
  EXPECT_EQ(getAntennasPath(), "ANTENNAS");
  EXPECT_EQ(getSystemPath(), "SYSTEM");
  EXPECT_THAT(platform.journal(), testing::Not(testing::Contains(testing::StartsWith("makeFolder"))));
}

TEST(SuitePaths, StandInTheInstallationFolder) {
  const TempSuite suite;
  EXPECT_EQ(getSuiteDir(), suite.path());
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS.INI"));
  EXPECT_EQ(getSuiteINI(), suite.file("QVZOR32.INI"));
  EXPECT_EQ(getSystemPath(), suite.file("SYSTEM"));
  EXPECT_EQ(getWorkPath(), suite.file("WORK"));
  EXPECT_EQ(getAntennasPath(), suite.file("ANTENNAS"));
  EXPECT_EQ(getLinesPath(), suite.file("LINES"));
  for (const char* name : {"SYSTEM", "WORK", "ANTENNAS", "LINES"}) EXPECT_TRUE(suite.folder().exists(name)) << name;
}

TEST(SuitePaths, SystemAndWorkAreMadeAgainAndTheOthersAreNot) {
  const TempSuite suite;
  getSystemPath();
  getAntennasPath();
  for (const char* name : {"SYSTEM", "ANTENNAS"}) ::rmdir(suite.folder().machine(name).c_str());
  EXPECT_EQ(getSystemPath(), suite.file("SYSTEM"));
  EXPECT_EQ(getAntennasPath(), suite.file("ANTENNAS"));
  EXPECT_TRUE(suite.folder().exists("SYSTEM"));
  EXPECT_FALSE(suite.folder().exists("ANTENNAS"));
}

TEST(SuitePaths, TheSuiteIniNamesSystemAndWork) {
  const TempSuite suite;
  suite.folder().write("QVZOR32.INI", "[CONFIG]\r\nSYSTEM_PATH=\" " + suite.folder().machine("sys") +
                                          "/ \"\r\nWORK PATH=" + suite.file("w") + "\\x\r\n");
  EXPECT_EQ(getSystemPath(), suite.file("sys"));
  EXPECT_EQ(getWorkPath(), suite.file("w\\x"));
  EXPECT_TRUE(suite.folder().exists("sys"));
  EXPECT_TRUE(suite.folder().exists("w/x"));
  suite.folder().write("QVZOR32.INI", "[CONFIG]\r\nSYSTEM_PATH=" + suite.file("other") + "\r\n");
  EXPECT_EQ(getSystemPath(), suite.file("sys"));
  resetSuitePaths();
  EXPECT_EQ(getSystemPath(), suite.file("other"));
}

TEST(SuitePaths, AFolderInAnotherCaseIsTheFolder) {
  const TempSuite suite;
  suite.folder().write("Antennas/x", "");
  EXPECT_EQ(getAntennasPath(), suite.file("Antennas"));
  EXPECT_FALSE(suite.folder().exists("ANTENNAS"));
  suite.folder().write("System/x", "");
  EXPECT_EQ(getSystemPath(), suite.file("System"));
  EXPECT_FALSE(suite.folder().exists("SYSTEM"));
}

TEST(SuitePaths, ALoginNamesTheUsersDefaultsIni) {
  const TempSuite suite;
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS.INI"));
  setUserLogin("ann");
  EXPECT_EQ(userLogin(), "ann");
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS_ann.INI"));
  EXPECT_EQ(getSuiteINI(), suite.file("QVZOR32.INI"));
  setUserLogin(" ann ");
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS_ann.INI"));
  setUserLogin("DOMAIN\\ann");
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS_DOMAIN_ann.INI"));
  setUserLogin("");
  EXPECT_EQ(getDefaultsINI(), suite.file("QVDEFAULTS.INI"));
}

TEST(SuitePaths, EachOfTheThreeGainUnitsIsKept) {
  const TempSuite suite;
  for (const char* unit : {"dBd", "dBi", "REL"}) {
    resetSuitePaths();
    setINI("System Units", "Antenna Gain Units", getDefaultsINI(), std::string("\"") + unit + "  \"");
    EXPECT_EQ(getAntGainUnits(), unit);
    setINI("System Units", "Antenna Gain Units", getDefaultsINI(), "other");
    EXPECT_EQ(getAntGainUnits(), unit);
  }
}

TEST(SuitePaths, GainUnitsAreKeptOnceTheyAreRight) {
  const TempSuite suite;
  setINI("System Units", "Antenna Gain Units", getDefaultsINI(), "furlongs");
  EXPECT_EQ(getAntGainUnits(), "furlo");
  setINI("System Units", "Antenna Gain Units", getDefaultsINI(), "dBi");
  EXPECT_EQ(getAntGainUnits(), "dBi");
  setINI("System Units", "Antenna Gain Units", getDefaultsINI(), "REL");
  EXPECT_EQ(getAntGainUnits(), "dBi");
  resetSuitePaths();
  EXPECT_EQ(getAntGainUnits(), "REL");
}

TEST(SuitePaths, GainUnitsAreDbdWithoutASetting) {
  const TempSuite suite;
  EXPECT_EQ(getAntGainUnits(), "dBd");
}

TEST(SuitePaths, AnotherInstallationFolderForgetsWhatWasKept) {
  const TempSuite suite;
  EXPECT_EQ(getSuiteINI(), suite.file("QVZOR32.INI"));
  const TempFolder other;
  EXPECT_EQ(GetTechSupFile(), suite.file("QVTECSUP.TXT"));
  setSuiteDir(" " + other.machine() + " ");
  EXPECT_EQ(GetTechSupFile(), other.file("QVTECSUP.TXT"));
  EXPECT_EQ(getSuiteINI(), other.file("QVZOR32.INI"));
  EXPECT_EQ(getLinesPath(), other.file("LINES"));
}

TEST(SuitePaths, TheSupportAddressIsASetting) {
  const TempSuite suite;
  EXPECT_EQ(supportAddress(), "your ZOR supplier");
  setINI("CONFIG", "SupportAddress", getSuiteINI(), "help@example.org");
  EXPECT_EQ(supportAddress(), "help@example.org");
}

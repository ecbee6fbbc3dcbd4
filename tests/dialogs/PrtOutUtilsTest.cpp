#include <gtest/gtest.h>
#include <utility>

#include "dialogs/PrtOutUtils.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "platform/FaultPlatform.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

// Keeps what is to be started.
class Launcher : public platform::FaultPlatform {
 public:
  Launcher() : FaultPlatform(platform::operatingSystem()) {}
  void runProgram(const std::string& program, const std::vector<std::string>& arguments) override {
    started.emplace_back(program, arguments);
    if (failure != 0) throw RunTimeFailure(failure, "Program not found: " + program + ".");
  }
  std::vector<std::pair<std::string, std::vector<std::string>>> started;
  int failure = 0;
};

class PrtOutUtilsTest : public testing::Test {
 protected:
  ~PrtOutUtilsTest() override { setPrintProgram(""); }
  void print() { PrtOutUtils(suite.file("QVPrnFil.TXT"), "FILE"); }
  std::string programStarted() {
    const std::size_t before = launcher.started.size();
    print();
    return launcher.started.size() == before + 1 ? launcher.started.back().first : "(none)";
  }
  void setSetting(const char* program) { setINI("CONFIG", "PrintProgram", getSuiteINI(), program); }

  test::TempSuite suite;
  Launcher launcher;
  platform::Substitute use{launcher};
};

TEST_F(PrtOutUtilsTest, StartsNotepadWithTheFileInTheMachinesForm) {
  print();
  ASSERT_EQ(launcher.started.size(), 1U);
  EXPECT_EQ(launcher.started[0].first, "NOTEPAD");
  EXPECT_EQ(launcher.started[0].second, std::vector<std::string>{suite.folder().machine("QVPrnFil.TXT")});
  EXPECT_TRUE(suite.messages.empty());
}

TEST_F(PrtOutUtilsTest, TheProgramIsASetting) {
  setSetting("\"  lister \"");
  EXPECT_EQ(programStarted(), "lister");
  setSetting("\"  \"");
  EXPECT_EQ(programStarted(), "NOTEPAD");
}

TEST_F(PrtOutUtilsTest, ThePathOfAProgramMayStandInTheMachinesForm) {
  setSetting("/opt/my tools/lister");
  EXPECT_EQ(platform::current().toMachine(programStarted()), "/opt/my tools/lister");
}

TEST_F(PrtOutUtilsTest, AHostMayNameTheProgramAndTheSettingGoesFirst) {
  setPrintProgram(" hostprint ");
  EXPECT_EQ(programStarted(), "hostprint");
  setSetting("lister");
  EXPECT_EQ(programStarted(), "lister");
  setSetting("");
  EXPECT_EQ(programStarted(), "hostprint");
  setPrintProgram("  ");
  EXPECT_EQ(programStarted(), "NOTEPAD");
}

TEST_F(PrtOutUtilsTest, AProgramThatCannotBeStartedIsToldWithTheFileAndTheKeyToSet) {
  for (const int number : {failure::fileNotFound, failure::permissionDenied}) {
    launcher.failure = number;
    suite.messages.clear();
    print();
    ASSERT_EQ(suite.messages.size(), 1U);
    const Message& message = suite.messages[0];
    EXPECT_EQ(message.title, "Print");
    EXPECT_EQ(message.icon, MsgIcon::exclamation);
    for (const std::string& part :
         {std::string("could not be started: NOTEPAD\r\nProgram not found: NOTEPAD."),
          suite.folder().machine("QVPrnFil.TXT"), std::string("\"PrintProgram\" in section \"CONFIG\""),
          suite.folder().machine("QVZOR32.INI")}) {
      EXPECT_NE(message.text.find(part), std::string::npos) << part;
    }
  }
}

TEST(PrtOutUtils, ReallyStartsTheProgram) {
  const test::TempSuite suite;
  suite.folder().write("text", "to print");
  const std::string script = suite.folder().machine("printer");
  suite.folder().write("printer", "#!/bin/sh\ncp \"$1\" \"$1.part\" && mv \"$1.part\" \"$1.printed\"\n");
  ASSERT_EQ(std::system(("chmod +x '" + script + "'").c_str()), 0);
  setINI("CONFIG", "PrintProgram", getSuiteINI(), script);
  PrtOutUtils(suite.file("text"), "FILE");
  for (int turn = 0; turn < 500 && !suite.folder().exists("text.printed"); ++turn) {
    platform::current().sleepMilliseconds(10);
  }
  EXPECT_EQ(suite.folder().read("text.printed"), "to print");
  EXPECT_TRUE(suite.messages.empty());
}

}  // namespace
}  // namespace vantrelix

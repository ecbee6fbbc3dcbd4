#include <gtest/gtest.h>
#include <stdexcept>

#include "foundation/SettingsPlatform.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

// An installation folder at a fixed time of day.
class Failures : public testing::Test {
 protected:
  // The record of a text as it stands in the log.
  static std::string record(const std::string& text) {
    return "11/21/2026 4:02:48 PM:  " + text + "  (testhost 1.2.3)\r\n \r\n";
  }

  test::SettingsPlatform clock;
  platform::Substitute substitute{clock};
  test::TempSuite suite;
};

TEST_F(Failures, TheStackKeepsNumbersAndFlags) {
  EXPECT_EQ(currentProcedure(), 0);
  ProcEnter(10);
  SetFlag(100);
  ProcEnter(20);
  EXPECT_EQ(GetFlag(), 0);
  EXPECT_EQ(currentProcedure(), 20);
  ProcExit();
  EXPECT_EQ(GetFlag(), 100);
  EXPECT_EQ(currentProcedure(), 10);
  ProcExit();
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(Failures, ProcExitAndFlagsOnAnEmptyStackDoNothing) {
  ProcExit();
  SetFlag(100);
  EXPECT_EQ(GetFlag(), 0);
  EXPECT_EQ(currentProcedure(), 0);
  ProcEnter(1);
  EXPECT_EQ(currentProcedure(), 1);
}

TEST_F(Failures, AGuardLeavesOnEveryPath) {
  try {
    const Procedure guard(30);
    EXPECT_EQ(currentProcedure(), 30);
    throw RunTimeFailure(failure::subscript, "Subscript out of range");
  } catch (const RunTimeFailure&) {
    EXPECT_EQ(currentProcedure(), 0);
  }
}

TEST_F(Failures, AFailureTwoLevelsDeepLogsBothProceduresInCallOrder) {
  suite.folder().write("SYSTEM/QVEHPR00.INI", "[PROC]\r\n5817=MakeAntFiles\r\n5344=Get_Ant_ArrayDB\r\n");
  const Procedure outer(5817);
  SetFlag(300);
  const Procedure inner(5344);
  SetFlag(1200);
  ErrHand(53, "File not found", "AMS00001.DBF", true);
  EXPECT_EQ(suite.log(), record("*************************") + record("Error 53:  File not found") +
                             record("Procedures:") + record("MakeAntFiles; Flag 300") +
                             record("Get_Ant_ArrayDB; Flag 1200") + record("DETAIL: AMS00001.DBF"));
}

TEST_F(Failures, AProcedureWithoutANameIsLoggedByItsNumberAndFlagZeroIsLeftOut) {
  const Procedure named(5344);
  const Procedure negative(7);
  SetFlag(-1);
  ErrHand(9, "Subscript out of range", "", true);
  EXPECT_EQ(suite.log(), record("*************************") + record("Error 9:  Subscript out of range") +
                             record("Procedures:") + record("Procedure: 5344") + record("Procedure: 7"));
}

TEST_F(Failures, QuietShowsNothingAndLogsTheSameLines) {
  const Procedure guard(1);
  ErrHand(9, "Subscript out of range", "here", true);
  EXPECT_TRUE(suite.messages.empty());
  const std::string quietLog = suite.log();
  ErrHand(9, "Subscript out of range", "here", false);
  EXPECT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.log(), quietLog + quietLog);
}

TEST_F(Failures, NumberZeroIsLoggedAndNotShown) {
  ErrHand(0, "Only noted");
  EXPECT_TRUE(suite.messages.empty());
  EXPECT_NE(suite.log().find("Error 0:  Only noted"), std::string::npos);
}

TEST_F(Failures, TheMessageTellsTheFailureTheStackAndWhatSupportNeeds) {
  const Procedure outer(10);
  SetFlag(100);
  const Procedure inner(20);
  ErrHand(53, "File not found");
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].title, "Error in TESTHOST");
  EXPECT_EQ(suite.messages[0].icon, MsgIcon::critical);
  EXPECT_EQ(suite.messages[0].buttons, MsgButtons::ok);
  EXPECT_EQ(
      suite.messages[0].text,
      "Error 53:  File not found\r\n\r\nProcedure: 10; Flag 100\r\nProcedure: 20\r\n\r\n"
      "This information has been written to the log file\r\n" +
          displayPath(suite.file("QVTECSUP.TXT")) +
          "\r\nFaxing or e-mailing this file to Quorvendal may be helpful in determining the cause of the "
          "error.\r\n\r\n"
          "Additional information you include in your email will help find the specific problem you encountered:"
          "\r\n\r\n(1) What were you trying to do (such as draw a profile or compute a coverage study)?"
          "\r\n\r\n(2) What part of the program were you in (which menu selection, etc.)?"
          "\r\n\r\n(3) Exactly when did the problem happen (e.g., right after clicking a particular button or menu)?"
          "\r\n\r\n(4) Any other details about the symptom.");
}

TEST_F(Failures, ABlankDescriptionIsThatOfTheErrorBeingHandled) {
  try {
    throw RunTimeFailure(failure::diskFull, "Disk full: /x");
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure.number(), "", "", true);
  }
  EXPECT_NE(suite.log().find("Error 61:  Disk full: /x"), std::string::npos);
}

TEST_F(Failures, BlankTextsCountAsNone) {
  try {
    throw RunTimeFailure(failure::diskFull, "Disk full: /x");
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure.number(), "  ", "  ", true);
  }
  EXPECT_EQ(suite.log(),
            record("*************************") + record("Error 61:  Disk full: /x") + record("Procedures:"));
  EXPECT_EQ(modErrStr(RunTimeFailure(53, "File not found"), "  "), "Error 53: File not found");
}

TEST_F(Failures, WhatIsNoExceptionOfTheLanguageHasNoText) {
  try {
    throw 5;
  } catch (int number) {
    ErrHand(number, "", "", true);
  }
  ErrHand(6, "", "", true);
  EXPECT_NE(suite.log().find(record("Error 5:  ")), std::string::npos);
  EXPECT_NE(suite.log().find(record("Error 6:  ")), std::string::npos);
}

TEST_F(Failures, AnExceptionOfTheStandardLibraryHasNumber51) {
  ErrHand(std::runtime_error("odd"), "", true);
  EXPECT_NE(suite.log().find("Error 51:  odd"), std::string::npos);
  const RunTimeFailure known(76, "Path not found");
  ErrHand(static_cast<const std::exception&>(known), "", true);
  EXPECT_NE(suite.log().find("Error 76:  Path not found"), std::string::npos);
}

TEST_F(Failures, ALogThatCannotBeOpenedFailsInTheCallerAndTellsBothFailures) {
  suite.folder().write("QVTECSUP.TXT/a folder in its place", "");
  const Procedure guard(1);
  try {
    ErrHand(53, "File not found", "", true);
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_NE(failure.number(), 0);
    EXPECT_NE(failure.description().find("Error 53:  File not found"), std::string::npos);
  }
  EXPECT_THROW(wrtTechSupNoMak("text"), RunTimeFailure);
}

TEST_F(Failures, NamesAreLookedForFileByFileUntilOneIsMissing) {
  suite.folder().write("SYSTEM/QVEHPR00.INI", "[PROC]\r\n1=one\r\n");
  suite.folder().write("SYSTEM/QVEHPR01.INI", "[PROC]\r\n1=other\r\n2=two\r\n");
  suite.folder().write("SYSTEM/QVEHPR03.INI", "[PROC]\r\n3=three\r\n");
  EXPECT_EQ(procedureName(1), "one");
  EXPECT_EQ(procedureName(2), "two");
  EXPECT_EQ(procedureName(3), "");
  EXPECT_EQ(procedureName(4), "");
}

TEST_F(Failures, NameFilesHaveTwoDigitsAndMayBeEmpty) {
  for (int file = 0; file < 12; ++file) {
    const std::string digits = (file < 10 ? "0" : "") + std::to_string(file);
    suite.folder().write("SYSTEM/QVEHPR" + digits + ".INI", file == 11 ? "[PROC]\r\n9=\" nine \"\r\n" : "");
  }
  EXPECT_EQ(procedureName(9), "nine");
}

TEST_F(Failures, NamesGoOnWhereOnlyTheFirstFileIsMissing) {
  suite.folder().write("SYSTEM/QVEHPR01.INI", "[PROC]\r\n2=two\r\n");
  EXPECT_EQ(procedureName(2), "two");
}

TEST_F(Failures, AColonIsNoNameAndEndsTheSearch) {
  suite.folder().write("SYSTEM/QVEHPR00.INI", "[PROC]\r\n5=:\r\n");
  suite.folder().write("SYSTEM/QVEHPR01.INI", "[PROC]\r\n5=five\r\n");
  EXPECT_EQ(procedureName(5), "");
  const Procedure guard(5);
  ErrHand(9, "x", "", true);
  EXPECT_NE(suite.log().find(":  Procedure: 5  ("), std::string::npos);
}

TEST_F(Failures, RecordsAreAppendedWithAndWithoutHeader) {
  wrtTechSupNoMak("first");
  wrtTechSupNoMak("second\r\nline", false);
  EXPECT_EQ(suite.log(), record("first") + "11/21/2026 4:02:48 PM:  second\r\nline\r\n \r\n");
}

TEST_F(Failures, TheLogIsInTheInstallationFolderAndKept) {
  EXPECT_EQ(GetTechSupFile(), suite.file("QVTECSUP.TXT"));
  resetTechSupFile();
  EXPECT_EQ(GetTechSupFile(), suite.file("QVTECSUP.TXT"));
}

TEST_F(Failures, ARecordIsOneWriteSoThatTwoProgramsDoNotMixTheirs) {
  clock.reset();
  wrtTechSupNoMak("text\r\nof two lines");
  ASSERT_EQ(clock.calls(), 2);
  EXPECT_TRUE(clock.journal()[0].starts_with("open")) << clock.journal()[0];
  EXPECT_TRUE(clock.journal()[1].starts_with("append")) << clock.journal()[1];
}

TEST_F(Failures, WithoutAnInstallationFolderTheLogStandsBesideTheHostUntilOneIsKnown) {
  setHostFolder(suite.path());
  setSuiteDir("");
  EXPECT_EQ(GetTechSupFile(), suite.file("QVTechSup.TXT"));
  wrtTechSupNoMak("nowhere else");
  EXPECT_NE(suite.folder().read("QVTechSup.TXT").find("nowhere else"), std::string::npos);
  suite.folder().write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=" + suite.path() + "\r\n");
  EXPECT_EQ(GetTechSupFile(), suite.file("QVTECSUP.TXT"));
  suite.folder().write("QVRegistry.INI", "[CONFIG]\r\nQuorvendalDirectory=C:\\OTHER\r\n");
  EXPECT_EQ(GetTechSupFile(), suite.file("QVTECSUP.TXT"));
  setHostFolder("");
}

TEST_F(Failures, AQuietRecordIsTheSame) {
  logQuietly("kept");
  EXPECT_EQ(suite.log(), record("kept"));
}

TEST_F(Failures, AQuietRecordThatCannotBeWrittenFailsNobody) {
  suite.folder().write("QVTECSUP.TXT/a folder in its place", "");
  EXPECT_NO_THROW(logQuietly("lost"));
}

TEST_F(Failures, ModErrStrPutsThePrefixOnALineOfItsOwn) {
  const RunTimeFailure failure(53, "File not found");
  EXPECT_EQ(modErrStr(failure), "Error 53: File not found");
  EXPECT_EQ(modErrStr(failure, "While copying"), "While copying\r\nError 53: File not found");
  EXPECT_EQ(modErrStr(RunTimeFailure(0, ""), "While copying"), "");
}

}  // namespace
}  // namespace vantrelix

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "hooks/IOHooksINI.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

namespace vantrelix {
namespace {

using test::TempFolder;

IOHooksINI boundTo(const std::string& file, const std::string& key = "TX_A1GAIN") {
  IOHooksINI hook;
  hook.iniFile(file);
  hook.INISection("Facility Data");
  hook.INIVariable(key);
  hook.INIDefault("  none  ");
  return hook;
}

TEST(IoHooksIni, ANewHookIsBlank) {
  IOHooksINI hook;
  EXPECT_EQ(hook.iniFile(), "");
  EXPECT_EQ(hook.INISection(), "");
  EXPECT_EQ(hook.INIVariable(), "");
  EXPECT_EQ(hook.INIValue(), "");
  EXPECT_EQ(hook.INIDefault(), "");
  EXPECT_EQ(hook.INIShow(), "");
  EXPECT_FALSE(hook.INISave());
}

TEST(IoHooksIni, EveryTextIsKeptAsItWasPut) {
  IOHooksINI hook = boundTo(" file.ini ", " key ");
  hook.INISection(" section ");
  hook.INIValue(" 7 ");
  EXPECT_EQ(hook.iniFile(), " file.ini ");
  EXPECT_EQ(hook.INISection(), " section ");
  EXPECT_EQ(hook.INIVariable(), " key ");
  EXPECT_EQ(hook.INIValue(), " 7 ");
  EXPECT_EQ(hook.INIDefault(), "  none  ");
}

TEST(IoHooksIni, ShowingReadsTheKeyAndKeepsWhatItRead) {
  const TempFolder folder;
  IOHooksINI hook = boundTo(folder.write("site.ini", "[Facility Data]\r\nTX_A1GAIN=2.15\r\n"));
  EXPECT_EQ(hook.INIValue(), "");
  EXPECT_EQ(hook.INIShow(), "2.15");
  EXPECT_EQ(hook.INIValue(), "2.15");
  folder.write("site.ini", "[Facility Data]\r\nTX_A1GAIN=3\r\n");
  EXPECT_EQ(hook.INIValue(), "2.15");
  EXPECT_EQ(hook.INIShow(), "3");
}

TEST(IoHooksIni, FileSectionAndKeyAreTrimmedForTheFile) {
  const TempFolder folder;
  IOHooksINI hook =
      boundTo("  " + folder.write("site.ini", "[Facility Data]\r\nTX_A1GAIN=2.15\r\n") + " ", "  TX_A1GAIN ");
  hook.INISection("  Facility Data ");
  EXPECT_EQ(hook.INIShow(), "2.15");
  hook.INIValue("9");
  EXPECT_TRUE(hook.INISave());
  EXPECT_EQ(folder.read("site.ini"), "[Facility Data]\r\nTX_A1GAIN=9\r\n");
}

TEST(IoHooksIni, ABlankVariableShowsTheDefaultUntrimmedAndAMissingKeyTrimmed) {
  const TempFolder folder;
  const std::string file = folder.write("site.ini", "[Facility Data]\r\nTX_A1GAIN=2.15\r\n");
  IOHooksINI blank = boundTo(file, "   ");
  EXPECT_EQ(blank.INIShow(), "  none  ");
  EXPECT_EQ(blank.INIValue(), "  none  ");
  IOHooksINI missing = boundTo(file, "TX_A1POL");
  EXPECT_EQ(missing.INIShow(), "none");
  EXPECT_EQ(missing.INIValue(), "none");
}

TEST(IoHooksIni, ABlankSectionDoesNotReadTheFile) {
  const TempFolder folder;
  IOHooksINI hook = boundTo(folder.write("site.ini", "TX_A1GAIN=top\r\n[ ]\r\nTX_A1GAIN=blank\r\n"));
  for (const char* section : {"", "  "}) {
    hook.INISection(section);
    EXPECT_EQ(hook.INIShow(), "  none  ");
    hook.INIValue("7");
    EXPECT_FALSE(hook.INISave());
  }
  EXPECT_EQ(folder.read("site.ini"), "TX_A1GAIN=top\r\n[ ]\r\nTX_A1GAIN=blank\r\n");
}

TEST(IoHooksIni, ABlankFileOrVariableIsNeverWritten) {
  const TempFolder folder;
  const std::string file = folder.write("site.ini", "[Facility Data]\r\nTX_A1GAIN=2.15\r\n");
  EXPECT_FALSE(boundTo("  ").INISave());
  EXPECT_FALSE(boundTo(file, " ").INISave());
  EXPECT_EQ(folder.read("site.ini"), "[Facility Data]\r\nTX_A1GAIN=2.15\r\n");
}

TEST(IoHooksIni, SavingA7WithBlanksAroundItWritesThe7Alone) {
  const TempFolder folder;
  IOHooksINI hook = boundTo(folder.write("site.ini", "; sites\r\n[Facility Data]\r\nTX_A1GAIN=2.15\r\nTX_A1POL=V\r\n"));
  hook.INIValue("  7 ");
  EXPECT_TRUE(hook.INISave());
  EXPECT_EQ(hook.INIValue(), "  7 ");
  EXPECT_EQ(folder.read("site.ini"), "; sites\r\n[Facility Data]\r\nTX_A1GAIN=7\r\nTX_A1POL=V\r\n");
}

TEST(IoHooksIni, SavingWritesBackWhatWasShown) {
  const TempFolder folder;
  IOHooksINI hook = boundTo(folder.write("site.ini", "[Facility Data]\r\nTX_A1GAIN=2.15\r\n"));
  hook.INIShow();
  hook.INIVariable("COPY");
  EXPECT_TRUE(hook.INISave());
  EXPECT_EQ(folder.read("site.ini"), "[Facility Data]\r\nTX_A1GAIN=2.15\r\nCOPY=2.15\r\n");
}

TEST(IoHooksIni, AFileThatIsNotThereReadsAsDefaultsAndIsMadeByTheFirstSave) {
  const TempFolder folder;
  IOHooksINI hook = boundTo(folder.file("new.ini"));
  EXPECT_EQ(hook.INIShow(), "none");
  EXPECT_FALSE(folder.exists("new.ini"));
  EXPECT_TRUE(hook.INISave());
  EXPECT_EQ(folder.read("new.ini"), "[Facility Data]\r\nTX_A1GAIN=none\r\n");
}

TEST(IoHooksIni, AValueIsCutAt1998Characters) {
  const TempFolder folder;
  const std::string longest(1998, 'x');
  const std::string accented = "\xC3\xA9";
  IOHooksINI hook = boundTo(folder.write("site.ini", "[Facility Data]\r\nA=" + longest + "\r\nB=" + longest +
                                                         "y\r\nC=" + longest.substr(1) + accented + "y\r\n"));
  for (const char* key : {"A", "B"}) {
    hook.INIVariable(key);
    EXPECT_EQ(hook.INIShow(), longest);
  }
  hook.INIVariable("C");
  EXPECT_EQ(hook.INIShow(), longest.substr(1) + accented);
  hook.INIVariable("MISSING");
  hook.INIDefault(longest + "y");
  EXPECT_EQ(hook.INIShow(), longest);
}

TEST(IoHooksIni, AValueInQuotesIsShownWithoutThem) {
  const TempFolder folder;
  IOHooksINI hook = boundTo(folder.write("site.ini", "[Facility Data]\r\nTX_A1TYP=\" a 'b' \"\r\n"), "TX_A1TYP");
  EXPECT_EQ(hook.INIShow(), " a 'b' ");
  EXPECT_TRUE(hook.INISave());
  EXPECT_EQ(folder.read("site.ini"), "[Facility Data]\r\nTX_A1TYP=a 'b'\r\n");
}

TEST(IoHooksIni, DisconnectAlsoForgetsTheDefault) {
  IOHooksINI hook = boundTo("site.ini");
  hook.INIValue("7");
  EXPECT_TRUE(hook.Disconnect().isNull());
  EXPECT_EQ(hook.INIDefault(), "");
  EXPECT_EQ(hook.INIValue(), "");
  EXPECT_EQ(hook.iniFile(), "");
  EXPECT_EQ(hook.INISection(), "");
  EXPECT_EQ(hook.INIVariable(), "");
}

TEST(IoHooksIni, TakesOverTheTextsOfAnotherHook) {
  IOHooksINI source = boundTo("site.ini");
  source.INIValue("7");
  IOHooksINI hook;
  EXPECT_TRUE(hook.INIHookProp(source));
  EXPECT_EQ(hook.INIDefault(), "  none  ");
  EXPECT_EQ(hook.iniFile(), "site.ini");
  EXPECT_EQ(hook.INISection(), "Facility Data");
  EXPECT_EQ(hook.INIValue(), "7");
  EXPECT_EQ(hook.INIVariable(), "TX_A1GAIN");
  source.iniFile("other.ini");
  EXPECT_EQ(hook.iniFile(), "site.ini");
}

TEST(IoHooksIni, TakingOverABlankHookBlanksThisOne) {
  IOHooksINI hook = boundTo("site.ini");
  hook.INIValue("7");
  EXPECT_TRUE(hook.INIHookProp(IOHooksINI()));
  EXPECT_EQ(hook.INIDefault() + hook.iniFile() + hook.INISection() + hook.INIValue() + hook.INIVariable(), "");
}

TEST(IoHooksIni, AReadOnlyFileGivesFalseAndStaysAsItIs) {
  const TempFolder folder;
  const std::string content = "[Facility Data]\r\nTX_A1GAIN=2.15\r\n";
  IOHooksINI hook = boundTo(folder.write("site.ini", content));
  ::chmod(folder.machine("site.ini").c_str(), 0444);
  ::chmod(folder.machine().c_str(), 0777);
  const int ended = test::runWithoutPrivilege([&] {
    if (hook.INIShow() != "2.15") return false;
    hook.INIValue("7");
    return !hook.INISave() && hook.INIValue() == "7" && hook.INIShow() == "2.15";
  });
  EXPECT_EQ(ended, 0);
  EXPECT_EQ(folder.read("site.ini"), content);
}

}  // namespace
}  // namespace vantrelix

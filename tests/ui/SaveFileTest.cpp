// Names of files to write, and the text other programs copied, without a screen.
#include <gtest/gtest.h>

#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

TEST(SaveFile, ANameWithoutAnExtensionGetsTheDefaultOne) {
  struct Row {
    const char* typed;
    const char* path;
  };
  constexpr Row kRows[] = {
      {R"(C:\a\Dipole)", R"(C:\a\Dipole.ANT)"},
      {R"(C:\a\Dipole.)", R"(C:\a\Dipole.ANT)"},
      {R"(C:\a\Dipole.txt)", R"(C:\a\Dipole.txt)"},
      {R"(C:\a\Dipole.3db)", R"(C:\a\Dipole.3db)"},
      {R"(C:\a\Dipole.ant.bak)", R"(C:\a\Dipole.ant.bak)"},
      {R"(C:\a\Dipole 1.5)", R"(C:\a\Dipole 1.5.ANT)"},
      {R"(C:\a\Yagi 2.4 GHz)", R"(C:\a\Yagi 2.4 GHz.ANT)"},
      {R"(C:\my.files\Dipole)", R"(C:\my.files\Dipole.ANT)"},
      {"/my.files/Dipole", "/my.files/Dipole.ANT"},
      {"Dipole", "Dipole.ANT"},
      {R"(C:\a\)", R"(C:\a\)"},
      {"", ""},
  };
  for (const Row& row : kRows) EXPECT_EQ(withExtension(row.typed, "ANT"), row.path) << row.typed;
  EXPECT_EQ(withExtension("Dipole", ""), "Dipole");
  EXPECT_EQ(withExtension("Dipole.", ""), "Dipole.");
}

TEST(SaveFile, AScriptAnswersThenTheDialogIsCancelled) {
  ScriptedDesktop screen;
  screen.filesToSave = {R"(C:\a\first)", R"(C:\a\second.txt)"};
  const Desktop::SaveFile request{"File to Write", R"(C:\a)", "Dipole.ANT", "any", "ANT", 2};
  EXPECT_EQ(screen.saveFile(request), R"(C:\a\first.ANT)");
  EXPECT_EQ(screen.saveFile(request), R"(C:\a\second.txt)");
  EXPECT_EQ(screen.saveFile(request), "");
  ASSERT_EQ(screen.saveDialogs().size(), 3U);
  EXPECT_EQ(screen.saveDialogs()[0].title, "File to Write");
  EXPECT_EQ(screen.saveDialogs()[0].folder, R"(C:\a)");
  EXPECT_EQ(screen.saveDialogs()[0].name, "Dipole.ANT");
  EXPECT_EQ(screen.saveDialogs()[0].filter, "any");
  EXPECT_EQ(screen.saveDialogs()[0].extension, "ANT");
  EXPECT_EQ(screen.saveDialogs()[0].filterIndex, 2);
  EXPECT_TRUE(screen.openDialogs().empty());
}

TEST(ScriptedDesktop, KeepsTheTextOfTheClipboard) {
  ScriptedDesktop screen;
  EXPECT_EQ(screen.clipboardText(), "");
  screen.setClipboardText("a\r\nb");
  EXPECT_EQ(screen.clipboardText(), "a\r\nb");
}

TEST(ScriptedDesktop, TheUserActsInNoTurnWithoutInput) {
  ScriptedDesktop screen;
  int acts = 0;
  screen.onTurn = [&acts] { ++acts; };
  screen.doEventsWithoutInput();
  EXPECT_EQ(acts, 0);
  EXPECT_EQ(screen.turns(), 0);
  EXPECT_EQ(screen.quietTurns(), 1);
  screen.doEvents();
  EXPECT_EQ(acts, 1);
  EXPECT_EQ(screen.turns(), 1);
}

}  // namespace
}  // namespace vantrelix

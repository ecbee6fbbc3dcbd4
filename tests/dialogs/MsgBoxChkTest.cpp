#include <gtest/gtest.h>

#include "dialogs/MsgBoxChk.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "support/Processes.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {
namespace {

constexpr const char* kStore = "MsgBoxChk.INI";

class MsgBoxChkTest : public testing::Test {
 protected:
  using User = std::function<void(frmMsgBoxChk&)>;

  // Lets the user act in the next messages.
  void let(const User& user) {
    screen.onModal["frmMsgBoxChk"] = [user](Form& form) { user(dynamic_cast<frmMsgBoxChk&>(form)); };
  }
  void letPress(std::size_t button, bool ticked = false) {
    let([=](frmMsgBoxChk& form) {
      if (ticked) form.Check1.userClick();
      form.Command1[button].userClick();
    });
  }
  MsgAnswer ask(const std::string& key = "RemoveAll", int defaultButton = 0) {
    MsgAnswer result{};
    MsgBoxChk(key, "Remove all?\r\nThere is no way back.", "Remove", result,
              {{"Remove", "Removes them all"}, {"Keep", ""}, {"Cancel", ""}, {"Ignore", "Passes over"}}, defaultButton);
    return result;
  }
  std::size_t shown() const { return screen.formsShown().size(); }
  std::string stored(const std::string& key = "RemoveAll") const {
    return getPrivateProfileString("DO NOT SHOW", key, "(none)", kIniBuffer, suite.file(kStore));
  }
  // What the user was told beside the message itself, once.
  std::string told() const {
    EXPECT_EQ(screen.shown().size(), 1U);
    return screen.shown().empty() ? "" : screen.shown().front().message.text;
  }

  test::TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse use{screen};
};

TEST_F(MsgBoxChkTest, ShowsTheMessageWithItsTitleButtonsAndDefault) {
  let([](frmMsgBoxChk& form) {
    EXPECT_EQ(form.caption(), "Remove");
    EXPECT_EQ(form.Label1.caption(), "Remove all?\r\nThere is no way back.");
    EXPECT_EQ(form.Check1.caption(), "Don't show this message again");
    EXPECT_TRUE(form.Check1.visible());
    EXPECT_EQ(form.Check1.value(), 0);
    EXPECT_EQ(form.Command1[0].caption(), "Remove");
    EXPECT_EQ(form.Command1[0].toolTip(), "Removes them all");
    EXPECT_EQ(form.Command1[3].caption(), "Ignore");
    EXPECT_EQ(form.defaultButton(), &form.Command1[1]);
    EXPECT_EQ(form.activeWidget(), &form.Command1[1]);
    form.Command1[0].userClick();
  });
  EXPECT_EQ(ask("RemoveAll", 1), MsgAnswer::yes);
  EXPECT_EQ(shown(), 1U);
  EXPECT_FALSE(suite.folder().exists(kStore));
}

TEST_F(MsgBoxChkTest, TheButtonsAnswer6And7And2And5WhateverTheirCaptions) {
  const int numbers[] = {6, 7, 2, 5};
  for (std::size_t i = 0; i < 4; ++i) {
    letPress(i);
    EXPECT_EQ(static_cast<int>(ask()), numbers[i]) << i;
  }
}

TEST_F(MsgBoxChkTest, OnlyTheButtonsGivenAreShown) {
  let([](frmMsgBoxChk& form) {
    EXPECT_EQ(form.Command1[0].caption(), "Go on");
    EXPECT_TRUE(form.Command1[0].visible());
    EXPECT_FALSE(form.Command1[1].visible());
    EXPECT_TRUE(form.Command1[2].visible());
    EXPECT_FALSE(form.Command1[3].visible());
    form.Command1[1].userClick();
    EXPECT_TRUE(form.visible());
  });
  MsgAnswer result{};
  MsgBoxChk("key", "text", "title", result, {{"Go on", ""}, {"  ", ""}, {"Stop", ""}});
  EXPECT_EQ(result, MsgAnswer::cancel);
}

TEST_F(MsgBoxChkTest, ABlankFirstCaptionLeavesTheDesignedOne) {
  let([](frmMsgBoxChk& form) { EXPECT_EQ(form.Command1[0].caption(), "Yes"); });
  MsgAnswer result{};
  MsgBoxChk("key", "text", "title", result, {{"", ""}, {"No", ""}, {"", ""}, {"", ""}, {"a fifth", ""}});
  EXPECT_EQ(result, MsgAnswer::no);
}

TEST_F(MsgBoxChkTest, ATickedMessageIsStoredAndAnsweredByTheDefaultButtonFromThenOn) {
  letPress(0, true);
  EXPECT_EQ(ask("  RemoveAll "), MsgAnswer::yes);
  EXPECT_EQ(suite.folder().read(kStore), "[DO NOT SHOW]\r\nRemoveAll=-1\r\n");
  EXPECT_EQ(ask("RemoveAll", 1), MsgAnswer::no);
  EXPECT_EQ(ask("removeall ", 3), MsgAnswer::ignore);
  EXPECT_EQ(shown(), 1U);
  EXPECT_EQ(ask("Another"), MsgAnswer::yes);
  EXPECT_EQ(shown(), 2U);
}

TEST_F(MsgBoxChkTest, AMessageThatWasNotTickedComesBack) {
  let([](frmMsgBoxChk& form) {
    form.Check1.userClick();
    form.Check1.userClick();
    form.Command1[0].userClick();
  });
  ask();
  ask();
  EXPECT_EQ(shown(), 2U);
  EXPECT_FALSE(suite.folder().exists(kStore));
}

TEST_F(MsgBoxChkTest, ATickIsNotKeptWhereTheProgramTakesTheWindowAwayBeforeAButtonIsPressed) {
  let([](frmMsgBoxChk& form) {
    form.Check1.userClick();
    form.hide();
  });
  EXPECT_EQ(ask("RemoveAll", 1), MsgAnswer::no);
  EXPECT_EQ(stored(), "(none)");
  ask();
  EXPECT_EQ(shown(), 2U);
}

TEST_F(MsgBoxChkTest, ADefaultThatIsNotShownStandsForTheFirstButton) {
  suite.folder().write(kStore, "[DO NOT SHOW]\r\nkey=-1\r\n");
  for (const int byDefault : {-1, 2, 4, 0}) {
    MsgAnswer result{};
    MsgBoxChk("key", "text", "title", result, {{"Yes", ""}, {"No", ""}}, byDefault);
    EXPECT_EQ(result, MsgAnswer::yes) << byDefault;
  }
  EXPECT_EQ(shown(), 0U);
}

TEST_F(MsgBoxChkTest, ThePlaceOfTheStoreIsToldWhileTheBoxIsTicked) {
  let([this](frmMsgBoxChk& form) {
    EXPECT_FALSE(form.lblRestore.visible());
    form.Check1.userClick();
    EXPECT_TRUE(form.lblRestore.visible());
    EXPECT_NE(form.lblRestore.caption().find("\"RemoveAll=-1\" in section \"DO NOT SHOW\""), std::string::npos);
    EXPECT_NE(form.lblRestore.caption().find(suite.folder().machine(kStore)), std::string::npos);
    form.Check1.userClick();
    EXPECT_FALSE(form.lblRestore.visible());
  });
  ask(" RemoveAll  ");
  EXPECT_EQ(shown(), 1U);
}

TEST_F(MsgBoxChkTest, TheWindowComesUpCentredOnTheScreenOrOnItsOwner) {
  screen.screens.monitors = {{{0, 0, 1000, 800}, {0, 0, 1000, 800}}};
  Rectangle place;
  let([&place](frmMsgBoxChk& form) { place = form.geometry(); });
  ask();
  EXPECT_EQ(place.left, 1000 * 15 / 2);
  EXPECT_EQ(place.top, 800 * 15 / 2);
  Form owner("owner");
  owner.setGeometry({3000, 600, 4000, 2000});
  MsgAnswer result{};
  MsgBoxChk("key", "text", "title", result, {{"OK", ""}}, 0, &owner);
  EXPECT_EQ(place.left, 5000);
  EXPECT_EQ(place.top, 1600);
}

// Escape and the frame.
TEST_F(MsgBoxChkTest, LeavingItPressesTheThirdButtonElseTheSecondElseTheDefault) {
  frmMsgBoxChk form;
  EXPECT_EQ(form.cancelButton(), &form.Command1[0]);
  form.SetButtonFour(true, "Ignore", "");
  form.DefaultButton(3);
  EXPECT_EQ(form.cancelButton(), &form.Command1[3]);
  form.SetButtonTwo(true, "No", "");
  EXPECT_EQ(form.cancelButton(), &form.Command1[1]);
  form.SetButtonThree(true, "Cancel", "");
  EXPECT_EQ(form.cancelButton(), &form.Command1[2]);
  form.SetButtonThree(false, "Cancel", "");
  EXPECT_EQ(form.cancelButton(), &form.Command1[1]);
  form.setVisible(true);
  form.userClose();
  EXPECT_FALSE(form.visible());
  EXPECT_EQ(form.answer(), MsgAnswer::no);
}

TEST_F(MsgBoxChkTest, TheFormComesWithItsDesignedCaptions) {
  const frmMsgBoxChk form;
  EXPECT_EQ(form.Command1[0].caption(), "Yes");
  EXPECT_EQ(form.Command1[2].caption(), "Cancel");
  EXPECT_EQ(form.Command1[3].caption(), "Ignore");
  EXPECT_EQ(form.DefaultButton(), 0);
  EXPECT_EQ(form.answer(), MsgAnswer::yes);
}

// The store is damaged.

TEST_F(MsgBoxChkTest, OnlyANumberOtherThanZeroSilences) {
  const std::pair<const char*, bool> rows[] = {{"-1", true},   {"1", true},     {" 7 ", true},
                                               {"0", false},   {"", false},     {"0.0", false},
                                               {"yes", false}, {"True", false}, {"-", false}};
  for (const auto& [value, silenced] : rows) {
    suite.folder().write(kStore, std::string("[do not show]\r\nRemoveAll=") + value + "\r\n");
    const std::size_t before = shown();
    ask();
    EXPECT_EQ(shown() - before, silenced ? 0U : 1U) << "'" << value << "'";
    EXPECT_EQ(suite.folder().read(kStore), std::string("[do not show]\r\nRemoveAll=") + value + "\r\n");
  }
}

TEST_F(MsgBoxChkTest, WhatElseTheStoreHoldsStays) {
  const std::string before = "; mine\n[Other]\nRemoveAll=5\nnonsense\n[DO NOT SHOW]\nOld=-1\n";
  suite.folder().write(kStore, before);
  letPress(0, true);
  ask();
  EXPECT_EQ(suite.folder().read(kStore), before + "RemoveAll=-1\n");
}

TEST_F(MsgBoxChkTest, AStoreThatIsNoTextIsLeftAloneAndTheMessageIsSilentUntilTheEnd) {
  const std::string bytes(
      "\x7F"
      "ELF\0\1\2[DO NOT SHOW]\r\n",
      22);
  suite.folder().write(kStore, bytes);
  letPress(1, true);
  EXPECT_EQ(ask(), MsgAnswer::no);
  EXPECT_EQ(suite.folder().read(kStore), bytes);
  EXPECT_NE(told().find(suite.folder().machine(kStore)), std::string::npos);
  EXPECT_EQ(screen.shown()[0].message.icon, MsgIcon::exclamation);
  EXPECT_EQ(ask("RemoveAll", 3), MsgAnswer::ignore);
  EXPECT_EQ(shown(), 1U);
  EXPECT_EQ(screen.shown().size(), 1U);
}

TEST_F(MsgBoxChkTest, AStoreOfTwoBytesToTheCharacterIsText) {
  suite.folder().write(kStore, std::string("\xFF\xFE[\0x\0]\0\r\0\n\0", 12));
  letPress(0, true);
  ask();
  EXPECT_EQ(stored(), "-1");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(MsgBoxChkTest, AFolderInThePlaceOfTheStoreIsTold) {
  platform::current().makeFolder(suite.file(kStore));
  letPress(0, true);
  EXPECT_EQ(ask(), MsgAnswer::yes);
  EXPECT_NE(told().find("could not be stored"), std::string::npos);
}

TEST_F(MsgBoxChkTest, AReadOnlyStoreIsToldOnceAndStaysAsItWas) {
  suite.folder().write(kStore, "[DO NOT SHOW]\r\nOther=-1\r\n");
  EXPECT_EQ(std::system(("chmod -R a+rX,a-w '" + suite.folder().machine() + "'").c_str()), 0);
  letPress(0, true);
  const int code = test::runWithoutPrivilege([this] {
    ask();
    ask();
    ask();
    return shown() == 1 && screen.shown().size() == 1 && stored() == "(none)" && stored("Other") == "-1";
  });
  EXPECT_EQ(std::system(("chmod -R u+w '" + suite.folder().machine() + "'").c_str()), 0);
  EXPECT_EQ(code, 0);
}

TEST_F(MsgBoxChkTest, AMessageThatNoKeyCanStandForCannotBeSilenced) {
  for (const char* key : {"", "  ", "a=b", "; note", "[x]"}) {
    let([](frmMsgBoxChk& form) {
      EXPECT_FALSE(form.Check1.visible());
      form.Check1.userClick();
      form.Command1[0].userClick();
    });
    EXPECT_EQ(ask(key), MsgAnswer::yes) << key;
  }
  EXPECT_EQ(shown(), 5U);
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_FALSE(suite.folder().exists(kStore));
}

TEST_F(MsgBoxChkTest, WithoutASuiteFolderAMessageCannotBeSilenced) {
  setSuiteDir("");
  let([](frmMsgBoxChk& form) {
    EXPECT_FALSE(form.Check1.visible());
    form.Command1[0].userClick();
  });
  EXPECT_EQ(ask(), MsgAnswer::yes);
  EXPECT_EQ(shown(), 1U);
  EXPECT_FALSE(platform::current().fileExists(kStore));
}

}  // namespace
}  // namespace vantrelix

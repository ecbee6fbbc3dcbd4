#include <gtest/gtest.h>
#include <string>

#include "ui/widgets.h"

namespace vantrelix {
namespace {

// How often a signal was raised.
template <class Signal>
int& countOf(Signal& signal, int& count) {
  signal.listen([&count](auto&&...) { ++count; });
  return count;
}

TEST(Widget, AChangeOfStateIsToldOnceAndASettingOfTheSameStateNotAtAll) {
  Label label("lbl");
  int changes = 0;
  countOf(label.changed, changes);
  label.setCaption("x");
  label.setCaption("x");
  label.setVisible(true);
  label.setToolTip("tip");
  label.setTabIndex(4);
  EXPECT_EQ(changes, 3);
}

TEST(TextBox, AProgramMadeTextRaisesNoEvent) {
  TextBox box("txt");
  int changes = 0, events = 0, keys = 0;
  countOf(box.changed, changes);
  countOf(box.change, events);
  countOf(box.keyPress, keys);
  box.setText("x");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(events, 0);
  EXPECT_EQ(keys, 0);
}

TEST(TextBox, AListenerSwallowsAKeyBySettingItToZero) {
  TextBox box("txt");
  box.keyPress.listen([](int& key) {
    if (key == 'b') key = 0;
  });
  EXPECT_TRUE(box.userKey('a'));
  EXPECT_FALSE(box.userKey('b'));
}

TEST(TextBox, ALockedOrDisabledOrHiddenBoxTakesNothing) {
  TextBox box("txt");
  box.setText("old");
  int keys = 0;
  countOf(box.keyPress, keys);
  const auto tries = [&] {
    box.userText("new");
    box.userType("new");
    return box.userKey('a') || !box.userPaste("ab").empty() || box.text() != "old";
  };
  box.setLocked(true);
  EXPECT_FALSE(tries());
  box.setLocked(false);
  box.setEnabled(false);
  EXPECT_FALSE(tries());
  box.setEnabled(true);
  box.setVisible(false);
  EXPECT_FALSE(tries());
  EXPECT_EQ(keys, 0);
}

TEST(TextBox, APasteIsFilteredCharacterByCharacter) {
  TextBox box("txt");
  box.keyPress.listen([](int& key) {
    if (key == 'x' || key == 0x20AC) key = 0;
  });
  EXPECT_EQ(box.userPaste("axb\xE2\x82\xAC\xC3\xA9z"), "ab\xC3\xA9z");
}

TEST(TextBox, APasteLeavesOutWhatNoKeyTypes) {
  TextBox box("txt");
  int keys = 0;
  countOf(box.keyPress, keys);
  EXPECT_EQ(box.userPaste("a\r\nb\x08\x7F\xFF"), "ab");
  EXPECT_EQ(keys, 2);
}

TEST(TextBox, TypingFocusesTakesTheKeysThatPassAndReplacesTheText) {
  TextBox box("txt");
  box.setText("old");
  int focus = 0, changes = 0;
  countOf(box.gotFocus, focus);
  countOf(box.change, changes);
  box.keyPress.listen([](int& key) {
    if (key == '-') key = 0;
  });
  box.userType("1-2");
  EXPECT_EQ(box.text(), "12");
  EXPECT_EQ(focus, 1);
  EXPECT_EQ(changes, 2);
  box.userType("");
  EXPECT_EQ(box.text(), "");
}

TEST(TextBox, TypingOnlyRefusedKeysLeavesTheText) {
  TextBox box("txt");
  box.setText("old");
  box.keyPress.listen([](int& key) { key = 0; });
  box.userType("abc");
  EXPECT_EQ(box.text(), "old");
  box.userType("");
  EXPECT_EQ(box.text(), "old");
}

TEST(DropDownList, AProgramMadeSelectionRaisesNoClickAndAnIndexOutOfRangeSelectsNothing) {
  DropDownList list("cbo");
  list.setEntries({"a", "b"});
  int clicks = 0;
  countOf(list.click, clicks);
  list.setListIndex(1);
  EXPECT_EQ(list.text(), "b");
  list.setListIndex(2);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(list.text(), "");
  EXPECT_EQ(clicks, 0);
}

TEST(DropDownList, AUsersSelectionClicksAlsoForTheEntryThatWasSelectedAlready) {
  DropDownList list("cbo");
  list.addItem("a");
  list.addItem("b");
  int clicks = 0;
  countOf(list.click, clicks);
  list.userSelect(1);
  list.userSelect(1);
  list.userSelect(2);
  list.userSelect(-1);
  EXPECT_EQ(list.listIndex(), 1);
  EXPECT_EQ(clicks, 2);
}

TEST(DropDownList, ALockedOrDisabledListIgnoresTheUser) {
  DropDownList list("cbo");
  list.setEntries({"a", "b"});
  int clicks = 0;
  countOf(list.click, clicks);
  list.setLocked(true);
  list.userSelect(0);
  list.setLocked(false);
  list.setEnabled(false);
  list.userSelect(0);
  EXPECT_EQ(list.listIndex(), -1);
  EXPECT_EQ(clicks, 0);
}

TEST(DropDownList, NewEntriesLoseTheSelection) {
  DropDownList list("cbo");
  list.setEntries({"a", "b"});
  list.setListIndex(1);
  list.setEntries({"a", "b", "c"});
  EXPECT_EQ(list.listIndex(), -1);
}

TEST(ModSetComboBox, TheFirstMatchOfTheTrimmedTextIsSelectedAndItsIndexGiven) {
  DropDownList list("cbo");
  list.setEntries({"x", " dBd ", "dBd"});
  EXPECT_EQ(modSetComboBox(list, "dBd  ", false), 1);
  EXPECT_EQ(list.listIndex(), 1);
}

TEST(ModSetComboBox, CaseCountsUnlessFolded) {
  DropDownList list("cbo");
  list.setEntries({"dBd", "dBi"});
  EXPECT_EQ(modSetComboBox(list, "DBI", true), 1);
  EXPECT_EQ(modSetComboBox(list, "DBI", false), -1);
  EXPECT_EQ(list.listIndex(), -1);
}

TEST(CheckBox, AUsersClickTurnsItAndAProgramsSettingRaisesNothing) {
  CheckBox box("chk");
  int clicks = 0;
  countOf(box.click, clicks);
  box.setValue(2);
  EXPECT_EQ(clicks, 0);
  box.userClick();
  EXPECT_EQ(box.value(), 0);
  box.userClick();
  EXPECT_EQ(box.value(), 1);
  box.setEnabled(false);
  box.userClick();
  EXPECT_EQ(box.value(), 1);
  EXPECT_EQ(clicks, 2);
}

template <class Clickable>
int clicksTaken(Clickable& widget) {
  int clicks = 0;
  const Connection connection = widget.click.connect([&] { ++clicks; });
  widget.userClick();
  widget.setEnabled(false);
  widget.userClick();
  widget.setEnabled(true);
  widget.setVisible(false);
  widget.userClick();
  return clicks;
}

TEST(Buttons, OnlyOneThatIsShownAndEnabledTakesAClick) {
  CommandButton button("cmd");
  Label label("lbl");
  EXPECT_EQ(clicksTaken(label), 0);
  label.setVisible(true);
  label.setClickable(true);
  MenuItem item("mnu", "Item");
  EXPECT_EQ(clicksTaken(button), 1);
  EXPECT_EQ(clicksTaken(label), 1);
  EXPECT_EQ(clicksTaken(item), 1);
  EXPECT_EQ(item.caption(), "Item");
}

TEST(PictureBox, KeepsItsLinesInOrderAndLosesThemOnClearing) {
  PictureBox picture("pic");
  int changes = 0;
  countOf(picture.changed, changes);
  picture.Cls();
  EXPECT_EQ(changes, 0);
  picture.drawLine(0, 1, 2, 3, color::red);
  picture.drawLine(2, 3, 4, 5, color::blue);
  ASSERT_EQ(picture.lines().size(), 2u);
  EXPECT_EQ(picture.lines()[1], (PictureBox::Line{2, 3, 4, 5, color::blue}));
  picture.Cls();
  EXPECT_TRUE(picture.lines().empty());
  EXPECT_EQ(changes, 3);
}

}  // namespace
}  // namespace vantrelix

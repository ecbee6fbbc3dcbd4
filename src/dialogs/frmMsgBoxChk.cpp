#include "dialogs/frmMsgBoxChk.h"

namespace vantrelix {

namespace {

constexpr MsgAnswer kAnswers[] = {MsgAnswer::yes, MsgAnswer::no, MsgAnswer::cancel, MsgAnswer::ignore};
constexpr const char* kCaptions[] = {"Yes", "No", "Cancel", "Ignore"};
enum Button : std::size_t { one, two, three, four };

}  // namespace

frmMsgBoxChk::frmMsgBoxChk() : Form("frmMsgBoxChk") {
  add(Label1);
  add(Check1);
  add(lblRestore);
  Check1.setCaption("Don't show this message again");
  lblRestore.setVisible(false);
  Check1.changed.listen([this] { lblRestore.setVisible(Check1.value() == 1); });
  int tabIndex = 0;
  for (std::size_t i = 0; i < Command1.size(); ++i) {
    add(Command1[i]);
    Command1[i].setCaption(kCaptions[i]);
    Command1[i].setVisible(i == one);
    Command1[i].setTabIndex(tabIndex++);
    Command1[i].click.listen([this, i] { press(i); });
  }
  Check1.setTabIndex(tabIndex++);
  Label1.setTabIndex(tabIndex++);
  lblRestore.setTabIndex(tabIndex);
  followButtons();
}

MsgAnswer frmMsgBoxChk::answerOf(std::size_t button) { return kAnswers[button]; }

void frmMsgBoxChk::SetButtonOne(const std::string& caption, const std::string& toolTip) {
  setButton(one, true, caption, toolTip);
}

void frmMsgBoxChk::SetButtonTwo(bool visible, const std::string& caption, const std::string& toolTip) {
  setButton(two, visible, caption, toolTip);
}

void frmMsgBoxChk::SetButtonThree(bool visible, const std::string& caption, const std::string& toolTip) {
  setButton(three, visible, caption, toolTip);
}

void frmMsgBoxChk::SetButtonFour(bool visible, const std::string& caption, const std::string& toolTip) {
  setButton(four, visible, caption, toolTip);
}

void frmMsgBoxChk::setButton(std::size_t button, bool visible, const std::string& caption, const std::string& toolTip) {
  Command1[button].setVisible(visible);
  Command1[button].setCaption(caption);
  Command1[button].setToolTip(toolTip);
  followButtons();
}

void frmMsgBoxChk::DefaultButton(int number) {
  defaultNumber_ = number;
  followButtons();
}

std::size_t frmMsgBoxChk::defaultIndex() const {
  const auto number = static_cast<std::size_t>(defaultNumber_);
  return number < Command1.size() && Command1[number].visible() ? number : one;
}

void frmMsgBoxChk::followButtons() {
  CommandButton& byDefault = Command1[defaultIndex()];
  setDefaultButton(&byDefault);
  setCancelButton(Command1[three].visible() ? &Command1[three] : Command1[two].visible() ? &Command1[two] : &byDefault);
  setFocus(byDefault);
}

void frmMsgBoxChk::press(std::size_t button) {
  pressed_ = answerOf(button);
  hide();
}

}  // namespace vantrelix

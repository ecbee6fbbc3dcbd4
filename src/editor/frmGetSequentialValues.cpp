#include "editor/frmGetSequentialValues.h"

#include "dialogs/windowPlacement.h"
#include "foundation/numbers.h"

namespace vantrelix {

namespace {

constexpr int kEnterKey = 13;
constexpr const char* kToolTips[] = {"First value, in degrees", "Last value, in degrees",
                                     "From one value to the next, in degrees"};

}  // namespace

frmGetSequentialValues::frmGetSequentialValues(const std::string& title) : Form("frmGetSequentialValues") {
  setCaption(title);
  nameWidgets();
  listen();
  setCancelButton(&Command1[cancelling]);
}

void frmGetSequentialValues::nameWidgets() {
  int tabIndex = 0;
  for (std::size_t i = 0; i < lineCount; ++i) {
    add(Label1[i]);
    add(Text1[i]);
    Text1[i].setToolTip(kToolTips[i]);
    Text1[i].setTabIndex(tabIndex++);
  }
  Command1[continuing].setCaption("Continue");
  Command1[continuing].setToolTip("Adds the values that are not there yet");
  Command1[cancelling].setCaption("Cancel");
  Command1[cancelling].setToolTip("Adds nothing");
  for (CommandButton& button : Command1) {
    add(button);
    button.setTabIndex(tabIndex++);
  }
}

void frmGetSequentialValues::listen() {
  for (std::size_t i = 0; i < lineCount; ++i) {
    TextBox& box = Text1[i];
    box.gotFocus.listen([&box] { box.setAllText(); });
    box.keyPress.listen([this, i](int& key) {
      if (key != kEnterKey) return chkNumeric(key, true, true, false, false, false, false, false);
      key = 0;
      enter(i);
    });
  }
  Command1[continuing].click.listen([this] { leave(false); });
  Command1[cancelling].click.listen([this] { leave(true); });
  // Its size is settled by now.
  activated.listen([this] {
    if (centred_) owner_ ? setFormCenterOn(*this, *owner_) : setFormCenter(*this);
    Text1[0].setAllText();
  });
}

void frmGetSequentialValues::begin(const Form* owner, std::int16_t left, std::int16_t top) {
  cancelled_ = true;
  owner_ = owner;
  centred_ = left < 0 || top < 0;
  if (!centred_) moveTo(left, top);
  setFocus(Text1[0]);
}

void frmGetSequentialValues::enter(std::size_t line) {
  if (line + 1 < lineCount) return setFocus(Text1[line + 1]);
  Command1[continuing].userClick();
}

void frmGetSequentialValues::leave(bool cancelled) {
  cancelled_ = cancelled;
  hide();
}

}  // namespace vantrelix

#include "dialogs/frmParabGain.h"

#include "dialogs/ParabolaGain.h"
#include "dialogs/windowPlacement.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "HDAntenna";
constexpr const char* kKey = "Parabola";
constexpr const char* kSeparator = "|";
constexpr const char* kDiameter = "1";
constexpr const char* kUnit = "m";

constexpr const char* kDiameterFormat = "#0.00";
constexpr const char* kGainFormat = "###0.00";
constexpr const char* kNoGain = " ";

constexpr const char* kGainTip = "Gain in dBi, computed from the frequency and the diameter";
constexpr const char* kNoGainTip = "There is a gain once the frequency and the diameter are above 0";

struct BoxTexts {
  const char* label;
  const char* toolTip;
};
constexpr BoxTexts kBoxes[] = {
    {"Frequency (MHz)", "Working frequency in MHz"},
    {"Diameter", "Diameter of the dish, in the unit beside it"},
    {"Gain (dBi)", kGainTip},
};

bool holdsNumber(const std::string& text) { return CValP(text) != 0 || isNumeric(text); }

}  // namespace

frmParabGain::frmParabGain() : Form("frmParabGain") {
  setCaption("Compute Parabolic Gain");
  nameWidgets();
  Combo1.setEntries({"cm", "ft", "in", "m"});
  listen();
  readLast();
  setDefaultButton(&Command1[continuing]);
  setCancelButton(&Command1[cancelling]);
  setFocus(Text1[diameter]);
}

void frmParabGain::nameWidgets() {
  add(Frame1);
  Frame1.setCaption("Parabolic Antenna");
  for (std::size_t i = 0; i < Text1.size(); ++i) {
    add(Label1[i]);
    add(Text1[i]);
    Label1[i].setCaption(kBoxes[i].label);
    Text1[i].setToolTip(kBoxes[i].toolTip);
  }
  Text1[gain].setLocked(true);
  Text1[gain].setBackColor(color::buttonFace);
  add(Combo1);
  Combo1.setToolTip("Unit of the diameter");
  Command1[continuing].setCaption("Continue");
  Command1[continuing].setToolTip("Takes the gain");
  Command1[cancelling].setCaption("Cancel");
  Command1[cancelling].setToolTip("Leaves without a gain");
  for (CommandButton& button : Command1) add(button);
  int tabIndex = 0;
  for (Widget* widget : std::initializer_list<Widget*>{&Text1[frequency], &Text1[diameter], &Combo1, &Text1[gain],
                                                       &Command1[continuing], &Command1[cancelling]}) {
    widget->setTabIndex(tabIndex++);
  }
}

void frmParabGain::listen() {
  for (TextBox& box : Text1) {
    box.gotFocus.listen([&box] { box.setAllText(); });
    box.keyPress.listen([](int& key) { chkNumeric(key, true, false, false, false, false, false, false); });
  }
  for (Widget* input : std::initializer_list<Widget*>{&Text1[frequency], &Text1[diameter], &Combo1}) {
    input->changed.listen([this] { showGain(); });
  }
  Command1[continuing].click.listen([this] {
    keepLast();
    leave(false);
  });
  Command1[cancelling].click.listen([this] { leave(true); });
  activated.listen([this] {
    SetFormLoc(*this);
    // The first focus comes with the window, not by the user.
    Text1[diameter].setAllText();
  });
}

void frmParabGain::readLast() {
  const std::string last = getINIStr(kSection, kKey, std::string(kDiameter) + kSeparator + kUnit);
  std::string stored = sAWK6(last, kSeparator, 1, kDiameter);
  if (!holdsNumber(stored)) stored = kDiameter;
  Text1[diameter].setText(formatNumber(CValP(stored), kDiameterFormat));
  if (modSetComboBox(Combo1, sAWK6(last, kSeparator, 2, kUnit), true) < 0) modSetComboBox(Combo1, kUnit, true);
}

void frmParabGain::keepLast() const {
  const std::string inputs = formatNumber(number(diameter), kDiameterFormat) + kSeparator + Combo1.text();
  if (setINI(kSection, kKey, getDefaultsINI(), inputs)) return;
  logQuietly("The inputs of the parabolic gain could not be kept in " + displayPath(getDefaultsINI()));
}

void frmParabGain::showGain() {
  bool failed = false;
  const double computed = ParabolaGain(number(diameter), Combo1.text(), number(frequency), failed);
  Text1[gain].setText(failed ? kNoGain : formatNumber(computed, kGainFormat));
  Text1[gain].setToolTip(failed ? kNoGainTip : kGainTip);
}

void frmParabGain::leave(bool cancelled) {
  cancelled_ = cancelled;
  hide();
}

double frmParabGain::number(Box box) const { return CValP(Text1[box].text()); }

}  // namespace vantrelix

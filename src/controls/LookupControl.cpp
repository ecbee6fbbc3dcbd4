#include "controls/LookupControl.h"

#include <algorithm>

#include "controls/shownText.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

LookupControl::LookupControl(std::string name, const char* className, FacilityRecord::Texts texts)
    : AlertingControl(std::move(name)), record_(HookINI, texts), className_(className) {
  txtDesc.gotFocus.listen([this] { txtDesc.setAllText(); });
  txtDesc.keyPress.listen([this](int&) { bDirty_ = true; });
}

LookupControl::~LookupControl() = default;

std::string LookupControl::sValueFile() const { return trim(heldFile()); }
// A null file shows the word, unlike every other value: a host tells a row without a library by it.
void LookupControl::sValueFile(const Value& value) { holdFile(shownText(value, "NULL")); }

std::string LookupControl::sValueID() const { return trim(heldID()); }
void LookupControl::sValueID(const Value& value) { holdID(shownText(value)); }

std::string LookupControl::sValueDesc() const { return trim(txtDesc.text()); }
void LookupControl::sValueDesc(const Value& value) { txtDesc.setText(shownText(value)); }

bool LookupControl::BackWhite() const { return txtDesc.backColor() == color::white; }
bool LookupControl::BackRed() const { return txtDesc.backColor() == color::red; }
bool LookupControl::BackLtGray() const { return txtDesc.backColor() == color::buttonFace; }

// What a library owns keeps the colour that says so.
void LookupControl::BackWhite(bool on) {
  if (!on) return;
  const Widgets owned = libraryBoxes();
  for (Widget* box : paintedBoxes()) {
    if (std::find(owned.begin(), owned.end(), box) == owned.end()) box->setBackColor(color::white);
  }
}
void LookupControl::BackRed(bool on) {
  if (on) paint(paintedBoxes(), color::red);
}
void LookupControl::BackLtGray(bool on) {
  if (on) paint(paintedBoxes(), color::buttonFace);
}

void LookupControl::paint(const Widgets& boxes, Color colour) {
  for (Widget* box : boxes) box->setBackColor(colour);
}

bool LookupControl::Locked() const { return txtDesc.locked(); }

void LookupControl::Locked(bool locked) {
  lock(locked);
  cmdLook.setEnabled(!locked);
  if (locked) {
    BackLtGray(true);
  } else {
    BackWhite(true);
  }
}

void LookupControl::ZORUserLogin(const std::string& login) {
  setUserLogin(login);
  takeDefaults();
}

}  // namespace vantrelix

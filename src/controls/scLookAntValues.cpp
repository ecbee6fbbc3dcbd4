// The values of the antenna lookup control: each is read from and written to its widget.
#include "controls/scLookAnt.h"
#include "controls/shownText.h"
#include "foundation/text.h"

namespace vantrelix {

std::string scLookAnt::sValueGain() const { return trim(txtGain.text()); }
void scLookAnt::sValueGain(const Value& value) { txtGain.setText(numberShown(value)); }

std::string scLookAnt::sValueOrient() const { return trim(txtOrient.text()); }
void scLookAnt::sValueOrient(const Value& value) { txtOrient.setText(shownText(value)); }

std::string scLookAnt::sValueEtilt() const { return trim(txtETilt.text()); }
void scLookAnt::sValueEtilt(const Value& value) { txtETilt.setText(shownText(value)); }

std::string scLookAnt::sValueMtilt() const { return trim(txtMTilt.text()); }
void scLookAnt::sValueMtilt(const Value& value) { txtMTilt.setText(shownText(value)); }

std::string scLookAnt::sValueMazim() const { return trim(txtMAzim.text()); }
void scLookAnt::sValueMazim(const Value& value) { txtMAzim.setText(shownText(value)); }

std::string scLookAnt::sValuePol() const { return trim(cboPol.text()); }
void scLookAnt::sValuePol(const Value& value) { modSetComboBox(cboPol, shownText(value), true); }

bool scLookAnt::sValueInvert() const { return chkInvert.value() != 0; }
void scLookAnt::sValueInvert(const Value& value) { chkInvert.setValue(!value.isNull() && value.asBoolean() ? 1 : 0); }

void scLookAnt::Clear(bool) {
  for (TextBox* box : {&txtDesc, &txtFile, &txtID, &txtETilt, &txtGain, &txtMAzim, &txtMTilt, &txtOrient}) {
    box->setText("");
  }
}

}  // namespace vantrelix

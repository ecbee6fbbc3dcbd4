// The values of the antenna lookup control: each is read from and written to its widget.
#include "controls/scLookAnt.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

std::string shown(const Value& value, const char* forNull = "") {
  return value.isNull() ? std::string(forNull) : value.asText();
}

}  // namespace

std::string scLookAnt::sValueFile() const { return trim(txtFile.text()); }
// A null file shows the word, unlike every other value: a host tells a row without a library by it.
void scLookAnt::sValueFile(const Value& value) { txtFile.setText(shown(value, "NULL")); }

std::string scLookAnt::sValueID() const { return trim(txtID.text()); }
void scLookAnt::sValueID(const Value& value) { txtID.setText(shown(value)); }

std::string scLookAnt::sValueDesc() const { return trim(txtDesc.text()); }
void scLookAnt::sValueDesc(const Value& value) { txtDesc.setText(shown(value)); }

std::string scLookAnt::sValueGain() const { return trim(txtGain.text()); }
void scLookAnt::sValueGain(const Value& value) {
  const std::string text = shown(value);
  const std::optional<double> number = plainNumber(text);
  txtGain.setText(number ? formatNumber(*number, "#0.00") : text);
}

std::string scLookAnt::sValueOrient() const { return trim(txtOrient.text()); }
void scLookAnt::sValueOrient(const Value& value) { txtOrient.setText(shown(value)); }

std::string scLookAnt::sValueEtilt() const { return trim(txtETilt.text()); }
void scLookAnt::sValueEtilt(const Value& value) { txtETilt.setText(shown(value)); }

std::string scLookAnt::sValueMtilt() const { return trim(txtMTilt.text()); }
void scLookAnt::sValueMtilt(const Value& value) { txtMTilt.setText(shown(value)); }

std::string scLookAnt::sValueMazim() const { return trim(txtMAzim.text()); }
void scLookAnt::sValueMazim(const Value& value) { txtMAzim.setText(shown(value)); }

std::string scLookAnt::sValuePol() const { return trim(cboPol.text()); }
void scLookAnt::sValuePol(const Value& value) { modSetComboBox(cboPol, shown(value), true); }

bool scLookAnt::sValueInvert() const { return chkInvert.value() != 0; }
void scLookAnt::sValueInvert(const Value& value) { chkInvert.setValue(!value.isNull() && value.asBoolean() ? 1 : 0); }

void scLookAnt::Clear(bool) {
  for (TextBox* box : {&txtDesc, &txtFile, &txtID, &txtETilt, &txtGain, &txtMAzim, &txtMTilt, &txtOrient}) {
    box->setText("");
  }
}

}  // namespace vantrelix

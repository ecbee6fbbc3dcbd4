// Colours, locks and sizes of the antenna lookup control.
#include "controls/scLookAnt.h"

namespace vantrelix {

namespace {

constexpr int kRightMargin = 60;
constexpr int kGap = 30;

void setWidth(Widget& widget, int width) {
  Rectangle place = widget.geometry();
  place.width = width;
  widget.setGeometry(place);
}

}  // namespace

scLookAnt::Widgets scLookAnt::mountingWidgets() {
  return {&txtOrient, &txtETilt, &txtMTilt, &txtMAzim, &chkInvert, &cboPol};
}

scLookAnt::Widgets scLookAnt::antennaWidgets() { return {&txtDesc, &txtGain, &cboUnit}; }

bool scLookAnt::BackWhite() const { return txtDesc.backColor() == color::white; }

void scLookAnt::BackWhite(bool on) {
  if (!on) return;
  for (Widget* widget : mountingWidgets()) widget->setBackColor(color::white);
  if (bLookupOnly_) return;
  for (Widget* widget : antennaWidgets()) widget->setBackColor(color::white);
}

bool scLookAnt::BackRed() const { return txtDesc.backColor() == color::red; }

void scLookAnt::BackRed(bool on) {
  if (on) paintAll(color::red);
}

bool scLookAnt::BackLtGray() const { return txtDesc.backColor() == color::buttonFace; }

void scLookAnt::BackLtGray(bool on) {
  if (on) paintAll(color::buttonFace);
}

void scLookAnt::paintAll(Color colour) {
  for (Widget* widget : antennaWidgets()) widget->setBackColor(colour);
  for (Widget* widget : mountingWidgets()) widget->setBackColor(colour);
}

bool scLookAnt::Locked() const { return txtDesc.locked(); }

void scLookAnt::Locked(bool locked) {
  for (TextBox* box : {&txtFile, &txtID}) {
    box->setLocked(true);
    box->setEnabled(false);
  }
  const bool libraryLocked = locked || bLookupOnly_;
  txtDesc.setLocked(libraryLocked);
  txtGain.setLocked(libraryLocked);
  cboUnit.setLocked(libraryLocked);
  for (TextBox* box : {&txtOrient, &txtETilt, &txtMTilt, &txtMAzim}) box->setLocked(locked);
  cboPol.setLocked(locked);
  chkInvert.setEnabled(!locked);
  cmdLook.setEnabled(!locked);
  cmdClear.setEnabled(!locked);
  if (locked) {
    BackLtGray(true);
  } else {
    BackWhite(true);
  }
}

void scLookAnt::LookupOnly(bool only) {
  bLookupOnly_ = only;
  if (bLoading_) return;
  txtDesc.setLocked(only);
  txtGain.setLocked(only);
  cboUnit.setLocked(only);
  for (Widget* widget : antennaWidgets()) widget->setBackColor(only ? color::buttonFace : color::white);
}

bool scLookAnt::bPolVis() const { return cboPol.visible(); }

void scLookAnt::bPolVis(bool visible) {
  cboPol.setVisible(visible);
  lblPol.setVisible(visible);
}

void scLookAnt::setHeight(int height) {
  setSize(width(), height);
  raise(ChangeSize);
}

void scLookAnt::SeePreview(bool see) {
  bSeePreview_ = see;
  lblPreview.setCaption(see ? "Hide preview" : "Show preview");
  setHeight(see ? picHor.geometry().bottom() + 60 : picHor.geometry().top);
}

bool scLookAnt::bSeeGainOnly() {
  bSeeGainOnly_ = false;
  return bSeeGainOnly_;
}

void scLookAnt::bSeeGainOnly(bool only) {
  bSeeGainOnly_ = only;
  if (only) {
    setHeight(Line1.geometry().top);
  } else {
    SeePreview(bSeePreview_);
  }
}

void scLookAnt::resize() {
  if (width() < nMinWidth_) setSize(nMinWidth_, height());
  setWidth(txtDesc, width() - txtDesc.geometry().left - kRightMargin);
  setWidth(txtFile, txtDesc.geometry().width / 2 - kGap);
  Rectangle id = txtID.geometry();
  id.width = txtFile.geometry().width;
  id.left = txtFile.geometry().right() + kGap;
  txtID.setGeometry(id);
  for (LineShape* line : {&Line1, &Line2}) setWidth(*line, width() - line->geometry().left - kRightMargin);
}

}  // namespace vantrelix

// Colours, locks and sizes of the antenna lookup control.
#include "controls/scLookAnt.h"
#include "controls/stretchDescription.h"

namespace vantrelix {

namespace {

constexpr int kRightMargin = 60;

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

scLookAnt::Widgets scLookAnt::paintedBoxes() {
  Widgets all = antennaWidgets();
  for (Widget* box : mountingWidgets()) all.push_back(box);
  return all;
}

scLookAnt::Widgets scLookAnt::libraryBoxes() { return bLookupOnly_ ? antennaWidgets() : Widgets(); }

void scLookAnt::lock(bool locked) {
  LibraryBoxControl::lock(locked);
  const bool libraryLocked = locked || bLookupOnly_;
  txtDesc.setLocked(libraryLocked);
  txtGain.setLocked(libraryLocked);
  cboUnit.setLocked(libraryLocked);
  for (TextBox* box : {&txtOrient, &txtETilt, &txtMTilt, &txtMAzim}) box->setLocked(locked);
  cboPol.setLocked(locked);
  chkInvert.setEnabled(!locked);
  cmdClear.setEnabled(!locked);
}

void scLookAnt::LookupOnly(bool only) {
  bLookupOnly_ = only;
  if (loading()) return;
  txtDesc.setLocked(only);
  txtGain.setLocked(only);
  cboUnit.setLocked(only);
  paint(antennaWidgets(), only ? color::buttonFace : color::white);
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
  stretchDescription(txtDesc, txtFile, txtID, width());
  for (LineShape* line : {&Line1, &Line2}) setWidth(*line, width() - line->geometry().left - kRightMargin);
}

}  // namespace vantrelix

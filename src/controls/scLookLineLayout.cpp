// Where the widgets of the line lookup control stand, what they say, and the order of the tab key.
#include "controls/scLookLine.h"
#include "controls/stretchDescription.h"
#include "controls/widgetPlaces.h"

namespace vantrelix {

namespace {

// The columns of the antenna control: a host puts both on one form, one below the other.
constexpr int kWidth = 6600, kHeight = 1830;
constexpr int kCaption = 60, kCaptionWidth = 1215;
constexpr int kFirst = 1320, kSecond = 2655, kThird = 3990, kFourth = 5325, kBoxWidth = 1215;
constexpr int kLineHeight = 375;
constexpr int kDescTop = 60, kFileTop = 495, kLenTop = 930, kLossTop = 1365;

}  // namespace

void scLookLine::layOut() {
  placeWidgets({
      {&lblDesc, {kCaption, kDescTop, kCaptionWidth, kLineHeight}},
      {&txtDesc, {kFirst, kDescTop, 5220, kLineHeight}},
      {&txtFile, {kFirst, kFileTop, 2580, kLineHeight}},
      {&txtID, {3930, kFileTop, 2580, kLineHeight}},
      {&lblLen, {kCaption, kLenTop, kCaptionWidth, kLineHeight}},
      {&txtLen, {kFirst, kLenTop, kBoxWidth, kLineHeight}},
      {&cboUnit, {kSecond, kLenTop, kBoxWidth, kLineHeight}},
      {&cmdLook, {kFourth, kLenTop, kBoxWidth, kLineHeight}},
      {&lblLoss, {kCaption, kLossTop, kCaptionWidth, kLineHeight}},
      {&txtLoss, {kFirst, kLossTop, kBoxWidth, kLineHeight}},
      {&lblDb, {kSecond, kLossTop, kBoxWidth, kLineHeight}},
      {&lblFreq, {kThird, kLossTop, kFourth + kBoxWidth - kThird, kLineHeight}},
      {&Command1, {kThird, kLenTop, kBoxWidth, kLineHeight}},
  });
  setSize(kWidth, kHeight);
}

void scLookLine::resize() {
  if (width() < nMinWidth_) setSize(nMinWidth_, height());
  stretchDescription(txtDesc, txtFile, txtID, width());
}

void scLookLine::setTexts() {
  lblDesc.setCaption("Line");
  lblLen.setCaption("Length");
  lblLoss.setCaption("Loss");
  lblDb.setCaption("dB");
  cmdLook.setCaption("...");
  txtFile.setToolTip("Line Library");
  txtID.setToolTip("Line ID");
  txtDesc.setToolTip("Line Description");
  txtLen.setToolTip("Line Length");
  cboUnit.setToolTip("Length Units");
  txtLoss.setToolTip("Line Loss in dB; type to specify it");
  lblFreq.setToolTip("Frequency");
  cmdLook.setToolTip("Lookup Line from Libraries");
  setBackColor(color::buttonFace);
  for (Widget* widget : widgets()) widget->setBackColor(color::buttonFace);
  for (Widget* box : paintedBoxes()) box->setBackColor(color::windowBackground);
}

void scLookLine::SetTabOrder() {
  int index = 0;
  for (Widget* widget : std::initializer_list<Widget*>{&txtDesc, &txtLen, &cboUnit, &cmdLook, &txtLoss}) {
    widget->setTabIndex(index++);
  }
}

scLookLine::Widgets scLookLine::paintedBoxes() { return {&txtDesc, &txtLen, &cboUnit, &txtLoss}; }

void scLookLine::lock(bool locked) {
  LibraryBoxControl::lock(locked);
  for (TextBox* box : {&txtDesc, &txtLen, &txtLoss}) box->setLocked(locked);
  cboUnit.setLocked(locked);
}

}  // namespace vantrelix

// Where the widgets of the line lookup control stand, what they say, and the order of the tab key.
#include "controls/scLookLine.h"
#include "controls/widgetPlaces.h"

namespace vantrelix {

namespace {

// The columns of the antenna control: a host puts both on one form, one below the other.
constexpr int kWidth = 6600, kHeight = 1395;
constexpr int kCaption = 60, kCaptionWidth = 1215;
constexpr int kFirst = 1320, kSecond = 2655, kThird = 3990, kFourth = 5325, kBoxWidth = 1215;
constexpr int kLineHeight = 375, kRightMargin = 60, kGap = 30;
constexpr int kDescTop = 60, kFileTop = 495, kLenTop = 930;

}  // namespace

void scLookLine::layOut() {
  placeWidgets({
      {&lblDesc, {kCaption, kDescTop, kCaptionWidth, kLineHeight}},
      {&txtDesc, {kFirst, kDescTop, kFourth - kFirst - kCaption, kLineHeight}},
      {&cmdLook, {kFourth, kDescTop, kBoxWidth, kLineHeight}},
      {&txtFile, {kFirst, kFileTop, 1290, kLineHeight}},
      {&txtID, {kSecond, kFileTop, 1290, kLineHeight}},
      {&lblFreq, {kThird, kFileTop, kFourth + kBoxWidth - kThird, kLineHeight}},
      {&lblLen, {kCaption, kLenTop, kCaptionWidth, kLineHeight}},
      {&txtLen, {kFirst, kLenTop, kBoxWidth, kLineHeight}},
      {&cboUnit, {kSecond, kLenTop, kBoxWidth, kLineHeight}},
      {&lblLoss, {kThird, kLenTop, 600, kLineHeight}},
      {&txtLoss, {kThird + 660, kLenTop, kBoxWidth, kLineHeight}},
      {&lblDb, {kThird + 660 + kBoxWidth + 60, kLenTop, 420, kLineHeight}},
      {&Command1, {kFourth, kFileTop, kBoxWidth, kLineHeight}},
  });
  setSize(kWidth, kHeight);
}

void scLookLine::resize() {
  if (width() < nMinWidth_) {
    setSize(nMinWidth_, height());
    return;
  }
  const int right = width() - kRightMargin;
  cmdLook.setGeometry({right - kBoxWidth, kDescTop, kBoxWidth, kLineHeight});
  txtDesc.setGeometry({kFirst, kDescTop, right - kBoxWidth - kCaption - kFirst, kLineHeight});
}

void scLookLine::setTexts() {
  lblDesc.setCaption("Line");
  lblLen.setCaption("Length");
  lblLoss.setCaption("Loss");
  lblDb.setCaption("dB");
  cmdLook.setCaption("Lookup");
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
  for (Widget* widget : std::initializer_list<Widget*>{&txtDesc, &cmdLook, &txtLen, &cboUnit, &txtLoss}) {
    widget->setTabIndex(index++);
  }
}

scLookLine::Widgets scLookLine::paintedBoxes() { return {&txtDesc, &txtLen, &cboUnit, &txtLoss}; }

void scLookLine::lock(bool locked) {
  for (TextBox* box : {&txtDesc, &txtLen, &txtLoss}) box->setLocked(locked);
  cboUnit.setLocked(locked);
}

}  // namespace vantrelix

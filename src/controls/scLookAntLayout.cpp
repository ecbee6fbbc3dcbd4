// Where the widgets of the antenna lookup control stand, what they say, and the order of the tab key.
#include "controls/scLookAnt.h"

namespace vantrelix {

namespace {

// A column of captions, then four columns of boxes, 1335 twips apart.
constexpr int kWidth = 6600;
constexpr int kCaption = 60, kCaptionWidth = 1215;
constexpr int kFirst = 1320, kSecond = 2655, kThird = 3990, kFourth = 5325, kBoxWidth = 1215;
constexpr int kTwoBoxes = kThird + kBoxWidth - kSecond;
constexpr int kLineHeight = 375, kCaptionHeight = 300;
constexpr int kDescTop = 60, kFileTop = 495, kGainTop = 930;
constexpr int kLine1Top = 1395, kMountingTop = 1440, kMountingBoxTop = 1740, kInvertTop = 2190;
constexpr int kLine2Top = 2640, kPreviewTop = 2700, kPictureTop = 3060, kPicture = 2400;

}  // namespace

void scLookAnt::layOut() {
  struct Place {
    Widget* widget;
    Rectangle rectangle;
  };
  const Place places[] = {
      {&lblDesc, {kCaption, kDescTop, kCaptionWidth, kLineHeight}},
      {&txtDesc, {kFirst, kDescTop, 5220, kLineHeight}},
      {&txtFile, {kFirst, kFileTop, 2580, kLineHeight}},
      {&txtID, {3930, kFileTop, 2580, kLineHeight}},
      {&lblGain, {kCaption, kGainTop, kCaptionWidth, kLineHeight}},
      {&txtGain, {kFirst, kGainTop, kBoxWidth, kLineHeight}},
      {&cboUnit, {kSecond, kGainTop, kBoxWidth, kLineHeight}},
      {&cmdClear, {kThird, kGainTop, kBoxWidth, kLineHeight}},
      {&cmdLook, {kFourth, kGainTop, kBoxWidth, kLineHeight}},
      {&Line1, {kCaption, kLine1Top, kWidth - 120, 15}},
      {&lblMounting, {kCaption, kMountingTop, kCaptionWidth, kCaptionHeight}},
      {&lblOrient, {kFirst, kMountingTop, kBoxWidth, kCaptionHeight}},
      {&lblETilt, {kSecond, kMountingTop, kBoxWidth, kCaptionHeight}},
      {&lblMTilt, {kThird, kMountingTop, kBoxWidth, kCaptionHeight}},
      {&lblMAzim, {kFourth, kMountingTop, kBoxWidth, kCaptionHeight}},
      {&txtOrient, {kFirst, kMountingBoxTop, kBoxWidth, kLineHeight}},
      {&txtETilt, {kSecond, kMountingBoxTop, kBoxWidth, kLineHeight}},
      {&txtMTilt, {kThird, kMountingBoxTop, kBoxWidth, kLineHeight}},
      {&txtMAzim, {kFourth, kMountingBoxTop, kBoxWidth, kLineHeight}},
      {&chkInvert, {kFirst, kInvertTop, 1800, kLineHeight}},
      {&lblPol, {3360, kInvertTop, 570, kLineHeight}},
      {&cboPol, {kThird, kInvertTop, kTwoBoxes, kLineHeight}},
      {&Line2, {kCaption, kLine2Top, kWidth - 120, 15}},
      {&lblPreview, {kCaption, kPreviewTop, 1800, kCaptionHeight}},
      {&Command1, {kFourth, kPreviewTop - 30, kBoxWidth, kLineHeight}},
      {&lblAzim, {kCaption, kPictureTop, 690, kCaptionHeight}},
      {&picHor, {780, kPictureTop, kPicture, kPicture}},
      {&lblElev, {3420, kPictureTop, 690, kCaptionHeight}},
      {&picVer, {4140, kPictureTop, kPicture, kPicture}},
  };
  for (const Place& place : places) place.widget->setGeometry(place.rectangle);
  setSize(kWidth, kPictureTop + kPicture + 60);
}

void scLookAnt::addWidgets() {
  for (Widget* widget : std::initializer_list<Widget*>{
           &lblDesc,  &txtDesc,  &txtFile,     &txtID,     &lblGain,   &txtGain,  &cboUnit,  &cmdClear,
           &cmdLook,  &Line1,    &lblMounting, &lblOrient, &txtOrient, &lblETilt, &txtETilt, &lblMTilt,
           &txtMTilt, &lblMAzim, &txtMAzim,    &chkInvert, &lblPol,    &cboPol,   &Line2,    &lblPreview,
           &Command1, &lblAzim,  &picHor,      &lblElev,   &picVer}) {
    add(*widget);
  }
  mnuPopup.addItem(mnuPopupLibrary);
  mnuPopup.addItem(mnuPopupParabolic);
}

void scLookAnt::setCaptions() {
  lblDesc.setCaption("Antenna");
  lblGain.setCaption("Maj Lobe");
  lblMounting.setCaption("Mounting");
  lblOrient.setCaption("Orient");
  lblETilt.setCaption("Elec Tilt");
  lblMTilt.setCaption("Mech Tilt");
  lblMAzim.setCaption("Azimuth");
  lblPol.setCaption("Pol");
  lblAzim.setCaption("Azim");
  lblElev.setCaption("Elev");
  chkInvert.setCaption("Inverted");
  cmdLook.setCaption("...");
  cmdClear.setCaption("Clear");
  lblPreview.setCaption("Hide preview");
  lblPreview.setClickable(true);
}

void scLookAnt::setColours() {
  setBackColor(color::buttonFace);
  for (Widget* widget : widgets()) widget->setBackColor(color::buttonFace);
  for (Widget* entry : std::initializer_list<Widget*>{&txtDesc, &txtGain, &txtOrient, &txtETilt, &txtMTilt, &txtMAzim,
                                                      &cboUnit, &cboPol}) {
    entry->setBackColor(color::windowBackground);
  }
  for (PictureBox* picture : {&picHor, &picVer}) picture->setBackColor(color::white);
  for (TextBox* box : {&txtFile, &txtID}) box->setBackColor(color::buttonFace);
}

void scLookAnt::setToolTips() {
  txtFile.setToolTip("Antenna Library");
  txtID.setToolTip("Antenna ID");
  txtDesc.setToolTip("Antenna Description");
  txtGain.setToolTip("Major Lobe Gain");
  cboUnit.setToolTip("Gain Units");
  txtOrient.setToolTip("Horizontal orientation");
  txtETilt.setToolTip("Electrical tilt (- for down)");
  txtMTilt.setToolTip("Mechanical tilt (- for down)");
  txtMAzim.setToolTip("Mechanical tilt azimuth");
  chkInvert.setToolTip("Inverted mounting");
  cmdLook.setToolTip("Lookup Antenna from Libraries");
  cmdClear.setToolTip("Clear antenna pattern");
  lblPreview.setToolTip("Click to show or hide pattern previews");
  picHor.setToolTip("Azimuth pattern preview");
  picVer.setToolTip("Elevation pattern preview");
}

void scLookAnt::SetTabOrder() {
  int index = 0;
  for (Widget* widget : std::initializer_list<Widget*>{&txtDesc, &txtGain, &cboUnit, &cmdClear, &cmdLook, &txtOrient,
                                                       &txtETilt, &txtMTilt, &txtMAzim, &chkInvert, &cboPol}) {
    widget->setTabIndex(index++);
  }
}

}  // namespace vantrelix

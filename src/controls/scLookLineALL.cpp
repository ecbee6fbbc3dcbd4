#include "controls/scLookLineALL.h"

#include "controls/reporting.h"
#include "controls/shownText.h"
#include "controls/widgetPlaces.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Line Lookup ALL";
constexpr const char* kLineKey = "LineType";
constexpr const char* kLengthKey = "Length";

// The columns of the other lookup controls.
constexpr int kWidth = 6600, kHeight = 1395;
constexpr int kCaption = 60, kCaptionWidth = 1215, kRightMargin = 60;
constexpr int kFirst = 1320, kSecond = 2655, kThird = 3990, kBoxWidth = 1215, kLineHeight = 375;
constexpr int kLineTop = 60, kLenTop = 495, kLossTop = 930;

std::string kept(const char* key) { return trim(getINIStr(kSection, key, "")); }

}  // namespace

scLookLineALL::scLookLineALL(std::string name) : AlertingControl(std::move(name)) {
  for (Widget* widget : std::initializer_list<Widget*>{&Label1, &cboLinesTX, &lblLen, &txtLen, &cboUnit, &lblLoss,
                                                       &txtLoss, &lblDb, &lblFreq, &txtFile, &txtID}) {
    add(*widget);
  }
  setTexts();
  layOut();
  nMinWidth_ = width();
  figures_.startUnit();
  SetTabOrder();
  cboLinesTX.click.listen([this] { cboLinesTX_Click(); });
  cboUnit.click.listen([this] { cboUnit_Click(); });
  txtLen.gotFocus.listen([this] { txtLen.setAllText(); });
  txtLen.keyPress.listen([](int& key) { chkNumeric(key, true, true, true, false, false, false, false); });
  txtLen.lostFocus.listen([this] { txtLen_LostFocus(); });
}

std::string scLookLineALL::sValueFile() const { return trim(txtFile.text()); }
void scLookLineALL::sValueFile(const Value& value) { txtFile.setText(shownText(value)); }
std::string scLookLineALL::sValueID() const { return trim(txtID.text()); }
void scLookLineALL::sValueID(const Value& value) { txtID.setText(shownText(value)); }
std::string scLookLineALL::sValueDesc() const { return trim(cboLinesTX.text()); }
// In its very spelling: lines may differ in it alone.
void scLookLineALL::sValueDesc(const Value& value) {
  modSetComboBox(cboLinesTX, shownText(value), false);
  cboLinesTX_Click();
}
std::string scLookLineALL::sValueLen() const { return trim(txtLen.text()); }
void scLookLineALL::sValueLen(const Value& value) {
  txtLen.setText(shownText(value));
  RefreshAlerts();
}
std::string scLookLineALL::sValueUnit() const { return trim(cboUnit.text()); }
void scLookLineALL::sValueUnit(const Value& value) {
  if (figures_.selectUnit(value)) cboUnit_Click();
}
std::string scLookLineALL::sValueLoss() const { return trim(txtLoss.text()); }
void scLookLineALL::sValueLoss(const Value& value) { txtLoss.setText(numberShown(value)); }
std::string scLookLineALL::sValueFreq() const { return generalText(figures_.frequency()); }
void scLookLineALL::sValueFreq(const Value& value) {
  figures_.showFrequency(value);
  RefreshAlerts();
}

void scLookLineALL::InitLines() {
  const Procedure guard(procedure::scLookLineALL_InitLines);
  lines_ = loadLineList(allLinesRules());
  std::vector<std::string> entries;
  entries.reserve(lines_.size());
  for (const LineRecord& line : lines_) entries.push_back(line.description);
  cboLinesTX.setEntries(std::move(entries));
}

void scLookLineALL::GetLineFileID(const std::string& sLine, std::string& sFile, std::string& sID) const {
  vantrelix::GetLineFileID(lines_, sLine, sFile, sID);
}

void scLookLineALL::Clear(bool) {
  for (TextBox* box : {&txtFile, &txtID, &txtLen, &txtLoss}) box->setText("");
}

void scLookLineALL::ZORUserLogin(const std::string& login) {
  setUserLogin(login);
  SetTabOrder();
  takeDefaults();
}

// The control comes up as it was left.
void scLookLineALL::takeDefaults() {
  try {
    Clear();
    figures_.startUnit();
    InitLines();
    modSetComboBox(cboLinesTX, kept(kLineKey), false);
    takeLine();
    txtLen.setText(kept(kLengthKey));
  } catch (const std::exception& failure) {
    report(failure);
    return;
  }
  RefreshAlerts();
}

// File and ID of the line that is selected, by its place: two libraries may hold lines of one description.
bool scLookLineALL::takeLine() {
  const int row = cboLinesTX.listIndex();
  const bool any = row >= 0 && row < static_cast<int>(lines_.size());
  const LineRecord line = any ? lines_[static_cast<std::size_t>(row)] : LineRecord();
  txtFile.setText(line.file);
  txtID.setText(line.id);
  return any;
}

void scLookLineALL::cboLinesTX_Click() {
  if (!takeLine()) {
    txtLoss.setText("");
    return;
  }
  keepLineChoice(kSection, kLineKey, sValueDesc());
  RefreshAlerts();
}

// The length goes with its unit, so that the two come up together.
void scLookLineALL::cboUnit_Click() {
  figures_.unitChosen(false);
  keepLineChoice(kSection, kLengthKey, sValueLen());
  RefreshAlerts();
}

void scLookLineALL::txtLen_LostFocus() {
  figures_.formatLength();
  keepLineChoice(kSection, kLengthKey, sValueLen());
  RefreshAlerts();
}

void scLookLineALL::RefreshAlerts() {
  figures_.refresh(watch(), [this](const std::string& text) { Alerts(text); });
}

void scLookLineALL::layOut() {
  placeWidgets({
      {&Label1, {kCaption, kLineTop, kCaptionWidth, kLineHeight}},
      {&cboLinesTX, {kFirst, kLineTop, kWidth - kRightMargin - kFirst, kLineHeight}},
      {&lblLen, {kCaption, kLenTop, kCaptionWidth, kLineHeight}},
      {&txtLen, {kFirst, kLenTop, kBoxWidth, kLineHeight}},
      {&cboUnit, {kSecond, kLenTop, kBoxWidth, kLineHeight}},
      {&lblLoss, {kCaption, kLossTop, kCaptionWidth, kLineHeight}},
      {&txtLoss, {kFirst, kLossTop, kBoxWidth, kLineHeight}},
      {&lblDb, {kSecond, kLossTop, kBoxWidth, kLineHeight}},
      {&lblFreq, {kThird, kLossTop, kWidth - kRightMargin - kThird, kLineHeight}},
  });
  setSize(kWidth, kHeight);
}

void scLookLineALL::resize() {
  if (width() < nMinWidth_) {
    setSize(nMinWidth_, height());
    return;
  }
  Rectangle place = cboLinesTX.geometry();
  place.width = width() - kRightMargin - place.left;
  cboLinesTX.setGeometry(place);
}

void scLookLineALL::setTexts() {
  Label1.setCaption("Line");
  lblLen.setCaption("Length");
  lblLoss.setCaption("Loss");
  lblDb.setCaption("dB");
  cboLinesTX.setToolTip("Transmission Line");
  txtLen.setToolTip("Line Length");
  cboUnit.setToolTip("Length Units");
  txtLoss.setToolTip("Line Loss in dB");
  lblFreq.setToolTip("Frequency");
  txtFile.setVisible(false);
  txtID.setVisible(false);
  txtLoss.setLocked(true);
  setBackColor(color::buttonFace);
  for (Widget* widget : widgets()) widget->setBackColor(color::buttonFace);
  for (Widget* box : std::initializer_list<Widget*>{&cboLinesTX, &txtLen, &cboUnit}) {
    box->setBackColor(color::windowBackground);
  }
}

void scLookLineALL::SetTabOrder() {
  int index = 0;
  for (Widget* widget : std::initializer_list<Widget*>{&cboLinesTX, &txtLen, &cboUnit, &txtLoss}) {
    widget->setTabIndex(index++);
  }
}

}  // namespace vantrelix

// The line control of a host without a facility record: every line of every library in one drop-down list, a length and
// the loss at a frequency. It keeps what the user chose in the user's defaults file, and comes up with it.
#pragma once

#include <string>

#include "controls/AlertingControl.h"
#include "controls/LineFigures.h"
#include "foundation/Value.h"
#include "lines/lineList.h"
#include "ui/widgets.h"

namespace vantrelix {

class scLookLineALL : public AlertingControl {
 public:
  explicit scLookLineALL(std::string name = "scLookLineALL");

  // Text getters give the widget's text without outer blanks.
  std::string sValueFile() const;
  void sValueFile(const Value& value);
  std::string sValueID() const;
  void sValueID(const Value& value);
  std::string sValueDesc() const;  // of the chosen line
  void sValueDesc(const Value& value);
  std::string sValueLen() const;
  void sValueLen(const Value& value);
  std::string sValueUnit() const;
  void sValueUnit(const Value& value);  // "ft", "in", "m", "cm"; anything else the user's default
  std::string sValueLoss() const;       // dB
  void sValueLoss(const Value& value);
  std::string sValueFreq() const;  // general text, MHz; "-88" while there is none
  void sValueFreq(const Value& value);

  // Fills the list from the lines folder.
  void InitLines();
  // File and ID of the line with that description; blank where none has it.
  void GetLineFileID(const std::string& sLine, std::string& sFile, std::string& sID) const;
  // Blanks file, ID, length and loss.
  void Clear(bool bFlag = false);
  // For developers: fills the list as a login does.
  void TestInit() { takeDefaults(); }
  // The user, whose own defaults file is used from now on; brings up what was chosen last.
  void ZORUserLogin(const std::string& login);

  DropDownList cboLinesTX{"cboLinesTX"}, cboUnit{"cboUnit"};
  TextBox txtFile{"txtFile"}, txtID{"txtID"}, txtLen{"txtLen"}, txtLoss{"txtLoss"};
  Label lblLen{"lblLen"}, lblLoss{"lblLoss"}, lblDb{"lblDb"}, lblFreq{"lblFreq"}, Label1{"Label1"};

 protected:
  void resize() override;

 private:
  void layOut();
  void setTexts();
  void SetTabOrder();
  void takeDefaults();
  bool takeLine();
  void cboLinesTX_Click();
  void cboUnit_Click();
  void txtLen_LostFocus();
  void RefreshAlerts();

  LineFigures figures_{{txtFile, txtID, txtLen, cboUnit, txtLoss, lblFreq}, "Line Lookup ALL"};
  LineList lines_;
  int nMinWidth_ = 0;
};

}  // namespace vantrelix

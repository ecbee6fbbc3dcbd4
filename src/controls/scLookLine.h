// The line lookup control: the transmission line of a facility, picked from a library, and its loss at a length and a
// frequency. The loss follows length, unit, frequency and line; a loss that is typed stands instead of the library's.
#pragma once

#include <string>

#include "controls/LibraryBoxControl.h"
#include "controls/LineFigures.h"
#include "lines/lineList.h"

namespace vantrelix {

class frmListSelect;

class scLookLine : public LibraryBoxControl {
 public:
  explicit scLookLine(std::string name = "scLookLine");
  ~scLookLine() override;

  // The frequency in MHz without a change of its label.
  void Freq(double megahertz);

  std::string sValueLen() const;
  void sValueLen(const Value& value);
  std::string sValueUnit() const;
  void sValueUnit(const Value& value);  // "ft", "in", "m", "cm"; anything else the user's default
  std::string sValueLoss() const;       // dB
  void sValueLoss(const Value& value);  // two decimals; text that is no number stays
  std::string sValueFreq() const;       // general text of the number; "-88" while there is none
  void sValueFreq(const Value& value);  // null shows "Invalid Freq"

  // The description, under another name.
  std::string Desc() const { return sValueDesc(); }
  void Desc(const std::string& text) { sValueDesc(text); }

  // One hook for all values but the frequency.
  void HookDBF(const IOHooksDBFPtr& hook);
  // The hooks. Putting HookINI null drops those of all values.
  DBFSlot HookDBFFile, HookDBFID, HookDBFDesc, HookDBFLen, HookDBFUnit, HookDBFLoss, HookDBFFreq;
  INISlot HookINIFile, HookINIID, HookINIDesc, HookINILen, HookINIUnit, HookINILoss, HookINIFreq;

  // Reads the lines of all libraries anew.
  void LookListLoad();
  // File and ID, and the band in MHz, of the line with that description; blank and 0 where none has it.
  void GetLineFileID(const std::string& sLine, std::string& sFile, std::string& sID) const;
  void GetLineFreqRange(const std::string& sLine, double& dFreqMin, double& dFreqMax) const;

  // Computes the loss anew. What stands against it goes to Alerts.
  void RefreshAlerts();
  // Blanks file, ID, description, length and loss.
  void Clear(bool bFlag = false);

  // The line, its length or its loss changed.
  Signal<> ChangeLine;

  TextBox txtLen{"txtLen"}, txtLoss{"txtLoss"};
  Label lblLen{"lblLen"}, lblLoss{"lblLoss"}, lblDb{"lblDb"}, lblFreq{"lblFreq"};

 protected:
  void resize() override;
  Widgets paintedBoxes() override;
  void lock(bool locked) override;
  void takeDefaults() override;
  std::string noRecordAdvice() const override;

 private:
  void bindValues();
  void layOut();
  void setTexts();
  void SetTabOrder();
  void listen();

  void cboUnit_Click();
  void txtLen_LostFocus();
  void txtLoss_Typed();
  void txtLoss_LostFocus();
  void cmdLook_Click();
  void fillList(frmListSelect& list) const;
  const LineRecord* lineOf(const frmListSelect& list) const;
  void fLook_ListClick(frmListSelect& list);
  void showBand(frmListSelect& list) const;
  void refreshUnlessLoading();

  LineFigures figures_{{txtFile, txtID, txtLen, cboUnit, txtLoss, lblFreq}, "Line Lookup"};
  LineList lines_;
  int nMinWidth_ = 0;
};

}  // namespace vantrelix

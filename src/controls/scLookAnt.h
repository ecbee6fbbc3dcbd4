// The antenna lookup control: one antenna of a facility, picked from a library or typed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "controls/LibraryBoxControl.h"
#include "controls/antennaLook.h"
#include "foundation/Value.h"
#include "ui/widgets.h"

namespace vantrelix {

struct ShownCut;

class scLookAnt : public LibraryBoxControl {
 public:
  explicit scLookAnt(std::string name = "scLookAnt");
  ~scLookAnt() override;

  std::string sValueGain() const;
  void sValueGain(const Value& value);  // two decimals; text that is no number stays
  std::string sValueUnit() const;
  void sValueUnit(const Value& value);  // "dBd", "dBi", "REL" or these in capitals; anything else the user's default
  std::string sValueOrient() const;     // degrees
  void sValueOrient(const Value& value);
  std::string sValueEtilt() const;  // degrees, negative down
  void sValueEtilt(const Value& value);
  std::string sValueMtilt() const;
  void sValueMtilt(const Value& value);
  std::string sValueMazim() const;
  void sValueMazim(const Value& value);
  std::string sValuePol() const;
  void sValuePol(const Value& value);
  bool sValueInvert() const;
  void sValueInvert(const Value& value);
  void sValueFreq(double megahertz) { look_.dFreq = megahertz; }

  bool bPolVis() const;
  void bPolVis(bool visible);

  // The hook among the first ten whose field is exactly that; all ten must be set by the first call (91).
  IOHooksDBFPtr HookArray(const std::string& sKey) { return record_.HookArray(sKey); }
  // The hooks. Putting HookINI null drops those of all values but the polarisation, and so does DisconnectDBF.
  DBFSlot HookDBFFile, HookDBFID, HookDBFDesc, HookDBFGain, HookDBFUnit, HookDBFOrient, HookDBFETilt, HookDBFMTilt,
      HookDBFMAzim, HookDBFInvert, HookDBFPol, HookDBFFreq;
  INISlot HookINIFile, HookINIID, HookINIDesc, HookINIGain, HookINIUnit, HookINIOrient, HookINIETilt, HookINIMTilt,
      HookINIMAzim, HookINIInvert, HookINIPol, HookINIFreq;

  // Library and previews.
  void GetAntPat();
  bool SeePreview() const { return bSeePreview_; }
  void SeePreview(bool see);
  void SeeAzimuth(double dAz, Color lColor = color::windowText);
  void SeeElevation(double dEl, Color lColor = color::windowText);
  void LookupOnly(bool only);
  bool bPatAz() const { return bPatAz_; }
  bool bPatEl() const { return bPatEl_; }
  // Reading clears the flag and gives false.
  bool bSeeGainOnly();
  void bSeeGainOnly(bool only);

  void Clear(bool bFlag = false);

  // Events to the host. None fires while values are being loaded.
  Signal<> ChangeAntenna;
  Signal<> ChangeMounting;
  Signal<> ChangeSize;

  // Runs the antenna editor and gives what was chosen in it; the control's own values stay. False where nothing was.
  static bool HDAntLook(double& dFreq, std::string& sLibFile, std::string& sAntID, std::string& sAntDesc) {
    return lookIntoLibraries(dFreq, sLibFile, sAntID, sAntDesc);
  }
  // What cmdLook and the menu's look-up open; the editor until it is put.
  void AntFormMode(eEditLookup mode) { look_.mode(mode); }

  // The widgets.
  TextBox txtGain{"txtGain"}, txtOrient{"txtOrient"}, txtETilt{"txtETilt"}, txtMTilt{"txtMTilt"}, txtMAzim{"txtMAzim"};
  DropDownList cboPol{"cboPol"};
  CheckBox chkInvert{"chkInvert"};
  CommandButton cmdClear{"cmdClear"};
  Label lblPreview{"lblPreview"};
  PictureBox picHor{"picHor"}, picVer{"picVer"};
  LineShape Line1{"Line1"}, Line2{"Line2"};
  // The captions beside them.
  Label lblGain{"lblGain"}, lblMounting{"lblMounting"}, lblOrient{"lblOrient"};
  Label lblETilt{"lblETilt"}, lblMTilt{"lblMTilt"}, lblMAzim{"lblMAzim"}, lblPol{"lblPol"};
  Label lblAzim{"lblAzim"}, lblElev{"lblElev"};
  // Pops up over txtGain.
  MenuItem mnuPopupLibrary{"mnuPopupLibrary", "Antenna Library Lookup"};
  MenuItem mnuPopupParabolic{"mnuPopupParabolic", "Compute Parabolic Gain"};
  Menu mnuPopup{"mnuPopup"};

 protected:
  void resize() override;
  Widgets paintedBoxes() override;
  Widgets libraryBoxes() override;
  void lock(bool locked) override;
  void takeDefaults() override;
  void takeRecord() override;
  bool isBehindValues(long flag) const override;
  void settleTableRecord() override;
  // A look-up in the editor, whatever AntFormMode is, that leaves the mounting as it is. Nothing here runs it.
  void LibraryEdit();

 private:
  struct Slot;            // one value and its pair of hooks
  struct LibraryAntenna;  // what one read of the library gives

  void addWidgets();
  void setCaptions();
  void setColours();
  void setToolTips();
  void SetTabOrder();
  void layOut();
  void setHeight(int height);

  void listenToKeys();
  void listenToLeaving();
  void listenToClicks();
  bool leaveMounting();  // false where the control has gone meanwhile
  void leaveTilt(TextBox& box);
  void testTilt(TextBox& box);
  void cmdClear_Click();
  void cmdLook_Click();
  void openMounting();
  void txtGain_MouseUp(int button);
  void mnuPopupParabolic_Click();
  void takeParabola(double gain, double diameter, const std::string& unit);

  void InitGainUnit();
  void selectUnit(const std::string& unit);
  void cboUnit_Change();
  void convertGain();

  static const std::vector<Slot>& recordSlots();
  void bindValues();

  Widgets mountingWidgets();  // orientation, tilts, inversion, polarisation
  Widgets antennaWidgets();   // description, gain, unit: the library's while bLookupOnly is set

  void clearPreviews();
  void readAntPat();
  LibraryAntenna readLibrary();
  void blankPlaceholders();
  void takeLibraryValues(const LibraryAntenna& antenna);
  void showPatterns(const LibraryAntenna& antenna);
  void SeeAntPreview(double gain, const std::string& gainUnit, const ShownCut& azimuth, const ShownCut& elevation);

  std::string sLastUnit_;
  AntennaLook look_;
  bool bLookupOnly_ = false;
  std::int16_t nMinWidth_ = 0;
  bool bSeePreview_ = true;
  bool bSeeGainOnly_ = false;
  bool bPatAz_ = false, bPatEl_ = false;
  bool bAzDrawn_ = false, bElDrawn_ = false;
  std::int64_t lastRead_ = 0;  // counts GetAntPat
};

}  // namespace vantrelix

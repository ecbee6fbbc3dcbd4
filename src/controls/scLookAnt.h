// The antenna lookup control: one antenna of a facility, picked from a library or typed.
//
// Every value lives in its widget and nowhere else: to read a value is to read the widget. The control never validates
// on behalf of the host; what is typed is kept as typed. Text getters give the widget's text without outer blanks.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/FacilityRecord.h"
#include "foundation/Value.h"
#include "ui/UserControl.h"
#include "ui/widgets.h"

namespace vantrelix {

struct ShownCut;

class scLookAnt : public UserControl {
 public:
  explicit scLookAnt(std::string name = "scLookAnt");
  ~scLookAnt() override;

  // Values. A null value shows as "NULL" in the file and as blank everywhere else.
  std::string sValueFile() const;
  void sValueFile(const Value& value);
  std::string sValueID() const;
  void sValueID(const Value& value);
  std::string sValueDesc() const;
  void sValueDesc(const Value& value);
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
  void sValueFreq(double megahertz) { dFreq_ = megahertz; }

  // Appearance.
  bool BackWhite() const;
  void BackWhite(bool on);
  bool BackRed() const;
  void BackRed(bool on);
  bool BackLtGray() const;
  void BackLtGray(bool on);
  bool Locked() const;
  void Locked(bool locked);
  bool Valid() const { return true; }
  bool bPolVis() const;
  void bPolVis(bool visible);

  // The facility record. A host binds each value to a field of a table (HookDBF...) or a key of an INI file
  // (HookINI...), fills the control by Update, after each move of its record too, and writes it back by Save. UpdateDBF
  // needs all twelve DBF hooks. A read that fails leaves the control silent, raising no event, until a good one has
  // run: UpdateDBF tells it in the support log, UpdateINI in a message.
  void Update();
  void UpdateINI();  // nothing while HookINI is not set
  void UpdateDBF();
  // "" or what failed; the values before it are written. Numbers that are none become null in a table and leave an INI
  // key alone; the frequency is the host's and never written.
  std::string Save();
  std::string SaveDBF() { return record_.SaveDBF(); }
  std::string SaveINI() { return record_.SaveINI(); }
  // The hook among the first ten whose field is exactly that; all ten must be set by the first call (91).
  IOHooksDBFPtr HookArray(const std::string& sKey) { return record_.HookArray(sKey); }
  // A value by its field's name, case aside. Putting raises no event, leaves bDirty, and does nothing while Locked.
  std::string sHookDBFValue(const std::string& sKey) const { return record_.sHookDBFValue(sKey); }
  void sHookDBFValue(const std::string& sKey, const std::string& text);
  // Disconnects and lets go of all DBF hooks but the polarisation's; the control's end does it too.
  Value DisconnectDBF();
  // For developers: binds all values to the fields of "FACILITY.DBF" in the installation folder. Command1, which is
  // hidden, then steps through it.
  void TestInit();

  // Whether the host's record, the one under HookDBFFile, can be edited; true marks it as being edited by the host. A
  // refusal is shown unless silent, and put into `vReturn`.
  Value bEdit(bool bSilent = false, Value* vReturn = nullptr);
  // Marks, while the record stands on a row: Save then begins no edit of its own and leaves that to the host.
  void Edit() { record_.Edit(); }
  void EditUpdate() { record_.EditUpdate(); }
  void CancelEdit() { record_.CancelEdit(); }

  // The hooks. HookINI holds file and section for the INI hooks, which come to be when they are read; putting it null
  // drops all of them but the polarisation's.
  DBFSlot HookDBFFile, HookDBFID, HookDBFDesc, HookDBFGain, HookDBFUnit, HookDBFOrient, HookDBFETilt, HookDBFMTilt,
      HookDBFMAzim, HookDBFInvert, HookDBFPol, HookDBFFreq;
  INIMaster HookINI;
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

  // Alerts gather, each on a line; a blank text clears them.
  const std::string& Alerts() const { return sAlerts_; }
  void Alerts(const std::string& text);

  void Clear(bool bFlag = false);
  void ZORUserLogin(const std::string& login);

  // Whether a value has changed since the host's last update.
  bool bDirty() const { return bDirty_; }

  // Events to the host. None fires while values are being loaded.
  Signal<> NewAlert;
  Signal<> ChangeAntenna;
  Signal<> ChangeMounting;
  Signal<> ChangeSize;

  // What cmdLook runs: lets the user choose an antenna, given what is chosen now; gives false where nothing is to
  // change. While there is none, cmdLook is not shown.
  struct LibraryChoice {
    double frequency = 0;  // MHz
    std::string file;
    std::string id;
    std::string description;
  };
  using LibraryLook = std::function<bool(LibraryChoice&)>;
  void setLibraryLook(LibraryLook look);

  // The widgets.
  TextBox txtFile{"txtFile"}, txtID{"txtID"}, txtDesc{"txtDesc"}, txtGain{"txtGain"};
  TextBox txtOrient{"txtOrient"}, txtETilt{"txtETilt"}, txtMTilt{"txtMTilt"}, txtMAzim{"txtMAzim"};
  DropDownList cboUnit{"cboUnit"}, cboPol{"cboPol"};
  CheckBox chkInvert{"chkInvert"};
  CommandButton cmdLook{"cmdLook"}, cmdClear{"cmdClear"}, Command1{"Command1"};
  Label lblPreview{"lblPreview"};
  PictureBox picHor{"picHor"}, picVer{"picVer"};
  LineShape Line1{"Line1"}, Line2{"Line2"};
  // The captions beside them.
  Label lblDesc{"lblDesc"}, lblGain{"lblGain"}, lblMounting{"lblMounting"}, lblOrient{"lblOrient"};
  Label lblETilt{"lblETilt"}, lblMTilt{"lblMTilt"}, lblMAzim{"lblMAzim"}, lblPol{"lblPol"};
  Label lblAzim{"lblAzim"}, lblElev{"lblElev"};
  MenuItem mnuPopupLibrary{"mnuPopupLibrary", "Antenna Library Lookup"};
  MenuItem mnuPopupParabolic{"mnuPopupParabolic", "Compute Parabolic Gain"};
  Menu mnuPopup{"mnuPopup"};

 protected:
  void resize() override;

 private:
  friend class scLookAntLoading;
  using Widgets = std::vector<Widget*>;
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

  void InitGainUnit();
  void selectUnit(const std::string& unit);
  void cboUnit_Change();
  void convertGain();

  static const std::vector<Slot>& recordSlots();
  void bindValues();
  void takeRecord();
  void nextRow();

  Widgets mountingWidgets();  // orientation, tilts, inversion, polarisation
  Widgets antennaWidgets();   // description, gain, unit: the library's while bLookupOnly is set
  void paintAll(Color colour);

  void clearPreviews();
  void readAntPat();
  LibraryAntenna readLibrary();
  void blankPlaceholders();
  void takeLibraryValues(const LibraryAntenna& antenna);
  void showPatterns(const LibraryAntenna& antenna);
  void SeeAntPreview(double gain, const std::string& gainUnit, const ShownCut& azimuth, const ShownCut& elevation);

  // Raises an event to the host unless values are being loaded. The host may drop the control in it.
  void raise(const Signal<>& event) const;
  // Tells a procedure that lets the host or the event loop act whether the control is still there.
  auto watch() const {
    return [life = std::weak_ptr<const bool>(life_)] { return !life.expired(); };
  }

  FacilityRecord record_{
      HookINI,
      {"Error in Antenna Lookup SaveDBF", "Error in Antenna Lookup SaveINI ", "Error in Antenna Save function"}};
  bool bDirty_ = false;
  bool bLoading_ = false;
  std::string sLastUnit_;
  double dFreq_ = 0;
  bool bLookupOnly_ = false;
  std::string sAlerts_;
  std::int16_t nMinWidth_ = 0;
  bool bSeePreview_ = true;
  bool bSeeGainOnly_ = false;
  bool bPatAz_ = false, bPatEl_ = false;
  bool bAzDrawn_ = false, bElDrawn_ = false;
  std::int64_t lastRead_ = 0;  // counts GetAntPat
  LibraryLook libraryLook_;
  std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

}  // namespace vantrelix

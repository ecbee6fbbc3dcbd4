// The antenna description control: one line that names the antenna of a facility, picked from a library or typed. The
// library file, the ID and the frequency stand out of sight; typing a description leaves them as they were.
#pragma once

#include <cstdint>
#include <string>

#include "controls/LookupControl.h"
#include "controls/antennaLook.h"
#include "foundation/Value.h"
#include "ui/widgets.h"

namespace vantrelix {

class scLookAnt_Desc : public LookupControl {
 public:
  explicit scLookAnt_Desc(std::string name = "scLookAnt_Desc");
  ~scLookAnt_Desc() override;

  // The hooks. Putting HookINI null drops those of all values, and so does DisconnectDBF. The frequency is read alone.
  DBFSlot HookDBFFreq, HookDBFFile, HookDBFID, HookDBFDesc;
  INISlot HookINIFreq, HookINIFile, HookINIID, HookINIDesc;
  // The hook among the four whose field is exactly that; all four must be set by the first call (91).
  IOHooksDBFPtr HookArray(const std::string& sKey) { return record_.HookArray(sKey); }

  // Blanks file, ID and description.
  void Clear(bool bFlag = false);
  // Runs the antenna editor and gives what was chosen in it; the control's own values stay. False where nothing was.
  static bool HDAntLook(double& dFreq, std::string& sLibFile, std::string& sAntID, std::string& sAntDesc) {
    return lookIntoLibraries(dFreq, sLibFile, sAntID, sAntDesc);
  }
  // The description belongs to the library and may not be typed.
  void LookupOnly(bool only);
  // What cmdLook opens; the editor until it is put.
  void AntFormMode(eEditLookup mode) { look_.mode(mode); }
  void sValueFreq(double megahertz) { look_.dFreq = megahertz; }
  // Of the control as a whole.
  bool Enabled() const { return enabled(); }
  void Enabled(bool enabled) { setEnabled(enabled); }
  // Of the description.
  void sToolTipText(const std::string& text) { txtDesc.setToolTip(text); }

  // Behind the library's choice and its clearing; silent while values are being loaded.
  Signal<> ChangeAntenna;

  CommandButton cmdClear{"cmdClear"};

 protected:
  const std::string& heldFile() const override { return file_; }
  void holdFile(std::string text) override { file_ = std::move(text); }
  const std::string& heldID() const override { return id_; }
  void holdID(std::string text) override { id_ = std::move(text); }
  void resize() override;
  Widgets paintedBoxes() override { return {&txtDesc}; }
  Widgets libraryBoxes() override { return bLookupOnly_ ? paintedBoxes() : Widgets(); }
  void lock(bool locked) override;
  void takeDefaults() override { SetTabOrder(); }
  void settleTableRecord() override;

 private:
  void bindValues();
  void setTexts();
  void layOut();
  void SetTabOrder();
  void cmdLook_Click();
  void cmdClear_Click();

  std::string file_, id_;
  AntennaLook look_;
  bool bLookupOnly_ = false;
  std::int16_t nMinWidth_ = 0;
};

}  // namespace vantrelix

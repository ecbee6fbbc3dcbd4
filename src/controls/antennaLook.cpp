#include "controls/antennaLook.h"

#include "controls/LookupControl.h"
#include "controls/reporting.h"
#include "editor/AntLibLook.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/regional.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kEditMode = " ";

// A record names a library without its extension, the list of libraries with it.
std::string listedName(const std::string& file) {
  const std::string stem = trim(file);
  return stem.empty() || !ExtractExtension(stem).empty() ? stem : stem + ".DBF";
}

// AntLibLook for a handler: a failure that even its own report met goes no further.
bool look(double dFreq, std::string& file, std::string& id, std::string& description, const std::string& mode) {
  std::string listed = listedName(file);
  try {
    if (!AntLibLook(dFreq, listed, id, description, mode)) return false;
  } catch (const std::exception& failure) {
    report(failure);
    return false;
  }
  file = ExtractBaseName(listed);
  return true;
}

}  // namespace

void AntennaLook::mode(eEditLookup mode) { sLookMode = mode == eLookup ? kLookupMode : kEditMode; }

bool AntennaLook::choose(LookupControl& control, const std::function<bool()>& alive) const {
  std::string file = control.sValueFile();
  std::string id = control.sValueID();
  std::string description;
  // The control may go while the user chooses, and its mode with it.
  const std::string mode = sLookMode;
  if (!look(dFreq, file, id, description, mode) || !alive()) return false;
  control.sValueFile(file);
  control.sValueID(id);
  control.sValueDesc(description);
  return true;
}

bool lookIntoLibraries(double& dFreq, std::string& sLibFile, std::string& sAntID, std::string& sAntDesc) {
  return look(dFreq, sLibFile, sAntID, sAntDesc, kEditMode);
}

bool confirmsRemoval() {
  Message message;
  message.title = "Remove Pattern";
  message.text = std::string(
                     "This will clear the link to the antenna library and remove the pattern information from this "
                     "facility.") +
                 kBlankLine + "Click OK to remove the antenna pattern information." + kLineBreak +
                 "Click CANCEL to leave the antenna pattern information.";
  message.buttons = MsgButtons::okCancel;
  message.icon = MsgIcon::none;
  message.defaultButton = 2;
  return MsgBox(message) == MsgAnswer::ok;
}

// A log that cannot be written must not keep a host's form from coming up.
void guardRegionalSettings() {
  try {
    GetRegional(true);
  } catch (const RunTimeFailure&) {
    return;
  }
}

}  // namespace vantrelix

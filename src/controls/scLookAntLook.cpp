// How the user picks an antenna for the antenna lookup control: out of a library, or as a dish of which he knows the
// size.
#include "controls/reporting.h"
#include "controls/scLookAnt.h"
#include "dialogs/getParabolaGain.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr int kRightButton = 2;
// The formula of a dish is not offered below this frequency.
constexpr double kLeastParabolicMHz = 900;

}  // namespace

void scLookAnt::cmdLook_Click() {
  const Procedure guard(procedure::scLookAnt_cmdLook);
  const auto alive = watch();
  SetFlag(100);
  if (!look_.choose(*this, alive)) return;
  SetFlag(200);
  GetAntPat();
  if (!alive()) return;
  bDirty_ = true;
  openMounting();
  SetFlag(300);
  desktop().doEvents();
  if (alive()) raise(ChangeAntenna);
}

void scLookAnt::openMounting() {
  for (Widget* widget : mountingWidgets()) widget->setEnabled(true);
  for (TextBox* box : {&txtOrient, &txtETilt, &txtMTilt, &txtMAzim}) box->setLocked(false);
  cboPol.setLocked(false);
}

void scLookAnt::LibraryEdit() {
  const auto alive = watch();
  double frequency = look_.dFreq;
  std::string file = sValueFile(), id = sValueID(), description;
  if (!HDAntLook(frequency, file, id, description) || !alive()) return;
  sValueFile(file);
  sValueID(id);
  GetAntPat();
  if (!alive()) return;
  bDirty_ = true;
  raise(ChangeAntenna);
}

void scLookAnt::txtGain_MouseUp(int button) {
  if (button != kRightButton || Locked()) return;
  const auto alive = watch();
  mnuPopupParabolic.setEnabled(look_.dFreq >= kLeastParabolicMHz);
  // A box that is disabled meanwhile does not bring up a menu of its own.
  txtGain.setEnabled(false);
  desktop().doEvents();
  if (!alive()) return;
  txtGain.setEnabled(true);
  desktop().popupMenu(mnuPopup);
}

void scLookAnt::mnuPopupParabolic_Click() {
  const Procedure guard(procedure::scLookAnt_mnuPopupParabolic);
  const auto alive = watch();
  double gain = 0, diameter = 0;
  std::string unit;
  std::int16_t ok = 0;
  try {
    getParabolaGain(look_.dFreq, gain, diameter, unit, ok);
  } catch (const std::exception& failure) {
    report(failure);
    return;
  }
  if (ok != 0 && alive()) takeParabola(gain, diameter, unit);
}

// The link to a library is dropped; the previews stay until the next GetAntPat.
void scLookAnt::takeParabola(double gain, double diameter, const std::string& unit) {
  selectUnit("dBi");
  txtGain.setText(formatNumber(gain, "#0.00"));
  txtDesc.setText(formatNumber(diameter, "#0.00") + unit + " parabola");
  txtFile.setText("");
  txtID.setText("");
  LookupOnly(false);
  raise(ChangeAntenna);
}

}  // namespace vantrelix

// What the antenna lookup control does when its user acts.
#include <cmath>

#include "controls/scLookAnt.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr double kLargestTilt = 179;

}  // namespace

void scLookAnt::takeDefaults() {
  InitGainUnit();
  SetTabOrder();
}

void scLookAnt::listenToKeys() {
  for (TextBox* box : {&txtGain, &txtOrient, &txtETilt, &txtMTilt, &txtMAzim}) takeNumbers(*box);
}

void scLookAnt::listenToLeaving() {
  txtGain.lostFocus.listen([this] {
    const auto alive = watch();
    if (bDirty_) raise(ChangeAntenna);
    if (alive()) sValueGain(txtGain.text());
  });
  txtOrient.lostFocus.listen([this] { leaveMounting(); });
  txtETilt.lostFocus.listen([this] { leaveTilt(txtETilt); });
  txtMTilt.lostFocus.listen([this] { leaveTilt(txtMTilt); });
  txtMAzim.lostFocus.listen([this] {
    if (bDirty_) raise(ChangeMounting);
  });
}

bool scLookAnt::leaveMounting() {
  const auto alive = watch();
  if (!loading()) GetAntPat();
  if (alive() && bDirty_) raise(ChangeMounting);
  return alive();
}

void scLookAnt::leaveTilt(TextBox& box) {
  if (leaveMounting()) testTilt(box);
}

void scLookAnt::testTilt(TextBox& box) {
  if (std::abs(CValP(box.text())) <= kLargestTilt) return;
  const auto alive = watch();
  showInformation("Inverted Antenna?", "To invert the antenna, use the 'Inverted' checkbox.");
  if (alive()) box.setText("");
}

void scLookAnt::listenToClicks() {
  cboUnit.click.listen([this] { cboUnit_Change(); });
  cboPol.click.listen([this] {
    if (loading()) return;
    bDirty_ = true;
    raise(ChangeMounting);
  });
  chkInvert.click.listen([this] {
    if (loading()) return;
    const auto alive = watch();
    bDirty_ = true;
    // Hosts read the repainted state in the event.
    GetAntPat();
    if (alive()) raise(ChangeMounting);
  });
  lblPreview.click.listen([this] { SeePreview(!SeePreview()); });
  cmdClear.click.listen([this] { cmdClear_Click(); });
  cmdLook.click.listen([this] { cmdLook_Click(); });
  mnuPopupLibrary.click.listen([this] { cmdLook_Click(); });
  mnuPopupParabolic.click.listen([this] { mnuPopupParabolic_Click(); });
  txtGain.mouseUp.listen([this](int button, int, int) { txtGain_MouseUp(button); });
}

void scLookAnt::cmdClear_Click() {
  const auto alive = watch();
  if (!confirmsRemoval() || !alive()) return;
  sValueFile("");
  sValueID("");
  sValueDesc("");
  sValueGain("");
  GetAntPat();
  if (!alive()) return;
  for (TextBox* box : {&txtOrient, &txtETilt, &txtMTilt, &txtMAzim}) box->setText("0");
  chkInvert.setValue(0);
  for (Widget* widget : mountingWidgets()) widget->setEnabled(false);
  cboPol.setListIndex(-1);
  cboPol.setLocked(true);
  desktop().doEvents();
  if (!alive()) return;
  LookupOnly(false);
  raise(ChangeAntenna);
}

}  // namespace vantrelix

// What the antenna lookup control does when its user acts.
#include <cmath>

#include "controls/reporting.h"
#include "controls/scLookAnt.h"
#include "foundation/errHand.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr double kLargestTilt = 179;

Message removalQuestion() {
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
  return message;
}

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
}

void scLookAnt::cmdClear_Click() {
  const auto alive = watch();
  if (MsgBox(removalQuestion()) != MsgAnswer::ok || !alive()) return;
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

void scLookAnt::cmdLook_Click() {
  if (!libraryLook_) return;
  const Procedure guard(procedure::scLookAnt_cmdLook);
  const auto alive = watch();
  LibraryChoice choice{dFreq_, sValueFile(), sValueID(), ""};
  SetFlag(100);
  try {
    const LibraryLook look = libraryLook_;
    if (!look(choice) || !alive()) return;
  } catch (const std::exception& failure) {
    report(failure);
    return;
  }
  SetFlag(200);
  sValueFile(choice.file);
  sValueID(choice.id);
  sValueDesc(choice.description);
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

}  // namespace vantrelix

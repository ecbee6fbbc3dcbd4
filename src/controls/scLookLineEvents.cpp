// What the line lookup control does when its user acts.
#include "controls/lineColumns.h"
#include "controls/reporting.h"
#include "controls/scLookLine.h"
#include "dialogs/frmListSelect.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"

namespace vantrelix {

void scLookLine::listen() {
  takeNumbers(txtLen);
  takeNumbers(txtLoss, [this] { txtLoss_Typed(); });
  txtLen.lostFocus.listen([this] { txtLen_LostFocus(); });
  txtLoss.lostFocus.listen([this] { txtLoss_LostFocus(); });
  cboUnit.click.listen([this] { cboUnit_Click(); });
  cmdLook.click.listen([this] { cmdLook_Click(); });
}

void scLookLine::txtLen_LostFocus() {
  const auto alive = watch();
  figures_.formatLength();
  RefreshAlerts();
  if (alive()) raise(ChangeLine);
}

// A loss that is typed is the user's own: the library has no part in it any more.
void scLookLine::txtLoss_Typed() {
  sValueFile("");
  sValueID("");
  sValueDesc("Specified Loss");
}

void scLookLine::txtLoss_LostFocus() {
  sValueLoss(txtLoss.text());
  if (!bDirty_) return;
  const auto alive = watch();
  raise(ChangeLine);
  if (alive()) RefreshAlerts();
}

void scLookLine::LookListLoad() { lines_ = loadLineList(lookListRules()); }

void scLookLine::GetLineFileID(const std::string& sLine, std::string& sFile, std::string& sID) const {
  vantrelix::GetLineFileID(lines_, sLine, sFile, sID);
}

void scLookLine::GetLineFreqRange(const std::string& sLine, double& dFreqMin, double& dFreqMax) const {
  vantrelix::GetLineFreqRange(lines_, sLine, dFreqMin, dFreqMax);
}

void scLookLine::cmdLook_Click() {
  const Procedure guard(procedure::scLookLine_cmdLook);
  const auto alive = watch();
  try {
    frmListSelect list;
    list.setCaption("Select Transmission Line");
    SetFlag(100);
    LookListLoad();
    fillList(list);
    list.ListClick.listen([this, alive, &list] {
      if (alive()) fLook_ListClick(list);
    });
    SetFlag(200);
    const std::string former = txtLoss.text();
    const bool left = list.choose();
    if (!alive()) return;
    const LineRecord* chosen = left ? lineOf(list) : nullptr;
    if (!chosen) {
      // What looking through the list blanked comes back.
      txtLoss.setText(former);
      return;
    }
    SetFlag(300);
    sValueFile(chosen->file);
    sValueID(chosen->id);
    sValueDesc(chosen->description);
    bDirty_ = true;
    RefreshAlerts();
    if (alive()) raise(ChangeLine);
  } catch (const std::exception& failure) {
    report(failure);
  }
}

void scLookLine::fillList(frmListSelect& list) const {
  list.List1.setEntries(lineColumns(lines_));
  for (std::size_t row = 0; row < lines_.size(); ++row) {
    const bool current =
        equalIgnoringCase(trim(lines_[row].file), sValueFile()) && equalIgnoringCase(trim(lines_[row].id), sValueID());
    if (!current) continue;
    list.List1.setListIndex(static_cast<int>(row));
    showBand(list);
    return;
  }
}

// By its place: two libraries may hold lines of one description.
const LineRecord* scLookLine::lineOf(const frmListSelect& list) const {
  const int row = list.List1.listIndex();
  return row < 0 || row >= static_cast<int>(lines_.size()) ? nullptr : &lines_[static_cast<std::size_t>(row)];
}

void scLookLine::fLook_ListClick(frmListSelect& list) {
  txtLoss.setText(" ");
  showBand(list);
}

void scLookLine::showBand(frmListSelect& list) const {
  const LineRecord* line = lineOf(list);
  if (!line) return;
  const bool good = line->fMin > 0 && line->fMax >= line->fMin;
  list.Label1.setForeColor(good ? color::windowText : color::red);
  list.Label1.setCaption(good ? generalText(line->fMin) + " MHz to " + generalText(line->fMax) + " MHz"
                              : "Invalid Data; File: " + line->file + " ID: " + line->id);
}

}  // namespace vantrelix

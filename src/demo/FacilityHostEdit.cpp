// How the demo host edits the record that it shows.
#include <algorithm>

#include "demo/FacilityHost.h"
#include "foundation/errHand.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix::demo {

namespace {

// A number that is only written differently is no change: the line control tidies its length when the box is left.
std::string comparable(const std::string& number) { return isNumeric(number) ? generalText(CValP(number)) : number; }

}  // namespace

// Takes the row for as long as the user edits it. Where another program has it the user may type all the same: that one
// may be done by the time of the saving.
bool FacilityHost::hold() {
  Recordset& record = *table_->record();
  record.LockEdits(true);
  try {
    record.Edit();
    return true;
  } catch (const RunTimeFailure& failure) {
    if (failure.number() != failure::locked) throw;
    return false;
  }
}

// The row that is shown, for an edit; `detail` tells whether it is held.
bool FacilityHost::takeRow(std::string& detail) {
  bool there = true;
  if (table_ && !attempt([&] { there = table_->refresh() || table_->count() == 0; })) return false;
  if (!there) {
    tell("Another program has deleted this record.");
    show("UpdateDBF");
    return false;
  }
  // Both hang on the same row: what the first cannot edit, the second cannot either.
  if (!std::all_of(controls_.begin(), controls_.end(), [](LookupControl* each) { return each->bEdit().asBoolean(); })) {
    if (table_) tell("The facility table has no record to edit.");
    return false;
  }
  const bool allowed = attempt([&] {
    detail = hold() ? "the row is held" : "another program holds the row; saving will fail until it lets go";
  });
  for (LookupControl* control : controls_) allowed ? control->Edit() : control->CancelEdit();
  return allowed;
}

bool FacilityHost::edit() {
  if (editing_) return true;
  std::string detail;
  if (place_ == Place::table && !takeRow(detail)) return false;
  // What others have written since the record was shown is what the edit begins with.
  show(place_ == Place::file ? "UpdateINI" : "bEdit, Edit, UpdateDBF");
  before_ = values();
  editing_ = true;
  lock(false);
  did("Locked = false", detail);
  changed();
  return true;
}

// "" or what failed.
std::string FacilityHost::writeRecord() {
  try {
    if (table_) table_->requireThere();
    std::string failed;
    for (LookupControl* control : controls_) {
      // The control is to make the edit of each field itself: it updates after each, which ends the edit that this host
      // has begun, and with the mark still on the second field would find none (3020).
      control->EditUpdate();
      failed = AddALine(failed, control->Save(), kBlankLine);
    }
    if (!failed.empty()) return failed;
    if (table_) {
      site_.save(*table_->record());
    } else {
      site_.saveFile(facilityFilePath());
    }
    return "";
  } catch (const RunTimeFailure& failure) {
    return modErrStr(failure);
  }
}

bool FacilityHost::save() {
  if (!editing_) return true;
  std::string failed = site_.complaint();
  if (failed.empty()) failed = writeRecord();
  did(place_ == Place::table ? "EditUpdate, Save" : "Save", failed.empty() ? "saved" : failed);
  if (failed.empty()) {
    finish();
    return true;
  }
  tell(failed);
  holdAgain();
  changed();
  return false;
}

// A failed saving has let go of the row. Where it cannot be had, the next saving tells why.
void FacilityHost::holdAgain() {
  if (!table_ || table_->record()->editing()) return;
  try {
    hold();
    for (LookupControl* control : controls_) control->Edit();
  } catch (const RunTimeFailure&) {
    return;
  }
}

void FacilityHost::finish() { show(place_ == Place::file ? "UpdateINI, Locked = true" : "UpdateDBF, Locked = true"); }

void FacilityHost::cancel() {
  if (!editing_) return;
  if (table_) {
    table_->record()->CancelUpdate();
    for (LookupControl* control : controls_) control->CancelEdit();
  }
  did(place_ == Place::table ? "CancelEdit" : "Locked = true", "");
  finish();
}

bool FacilityHost::leave() {
  if (!dirty()) {
    cancel();
    return true;
  }
  const std::string name = siteName().empty() ? "this record" : "\"" + siteName() + "\"";
  switch (MsgBox({kMessageTitle, "Save the changes to " + name + "?", MsgButtons::yesNoCancel, MsgIcon::question, 1})) {
    case MsgAnswer::yes:
      return save();
    case MsgAnswer::no:
      cancel();
      return true;
    default:
      return false;
  }
}

std::vector<std::string> FacilityHost::values() const {
  std::vector<std::string> all = site_.texts();
  const scLookAnt& ant = antenna_;
  all.insert(all.end(), {ant.sValueFile(), ant.sValueID(), ant.sValueDesc(), ant.sValueGain(), ant.sValueUnit(),
                         ant.sValueOrient(), ant.sValueEtilt(), ant.sValueMtilt(), ant.sValueMazim(), ant.sValuePol(),
                         ant.sValueInvert() ? "-1" : "0"});
  all.insert(all.end(), {line_.sValueFile(), line_.sValueID(), line_.sValueDesc(), comparable(line_.sValueLen()),
                         line_.sValueUnit(), line_.sValueLoss()});
  return all;
}

bool FacilityHost::dirty() const { return editing_ && values() != before_; }

void FacilityHost::noteChange() {
  const bool now = dirty();
  if (now == wasDirty_) return;
  wasDirty_ = now;
  changed();
}

}  // namespace vantrelix::demo

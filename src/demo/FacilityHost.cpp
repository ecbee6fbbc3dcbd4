#include "demo/FacilityHost.h"

#include "demo/SupportLog.h"
#include "demo/facilityHooks.h"
#include "foundation/errHand.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix::demo {

namespace {

constexpr const char* kUpdateFailure = "Error in scLookAnt.Update at flag ";

// A read of a table that fails is told in the support log alone.
std::string failedUpdate(SupportLog& log) {
  const std::string news = log.news();
  const std::size_t at = news.find(kUpdateFailure);
  // Behind it the log names the program.
  return at == std::string::npos ? "" : news.substr(at, news.find("  (", at) - at);
}

}  // namespace

FacilityHost::FacilityHost(scLookAnt& antenna) : antenna_(antenna) {
  for (Widget* widget : antenna_.widgets()) {
    connections_.push_back(widget->changed.connect([this] { noteChange(); }));
  }
}

void FacilityHost::tell(const std::string& text) const {
  MsgBox({kMessageTitle, text, MsgButtons::ok, MsgIcon::exclamation, 1});
}

bool FacilityHost::attempt(const std::function<void()>& act) const {
  try {
    act();
    return true;
  } catch (const RunTimeFailure& failure) {
    tell(modErrStr(failure));
    return false;
  }
}

bool FacilityHost::use(Place place) {
  if (!leave()) {
    changed();
    return false;
  }
  place_ = place;
  open();
  return true;
}

void FacilityHost::open() {
  unbind(antenna_);
  table_.reset();
  const bool opened = attempt([this] {
    makeFacilityTable();
    makeFacilityFile();
    if (place_ == Place::file) return bindToFile(antenna_, facilityFilePath());
    table_ = std::make_unique<FacilityTable>();
    bindToTable(antenna_, table_->record());
  });
  if (opened) return show(place_ == Place::file ? "HookINI, UpdateINI" : "HookDBF..., UpdateDBF");
  editing_ = false;
  site_.clear();
  lock(true);
  recordShown();
}

bool FacilityHost::canMove(Move where) const {
  if (!table_ || table_->count() == 0) return false;
  const long position = table_->record()->AbsolutePosition();
  const bool forward = where == Move::next || where == Move::last;
  return forward ? position < table_->count() - 1 : position > 0;
}

bool FacilityHost::move(Move where) {
  if (!canMove(where) || !leave()) return false;
  const char* call = "";
  const bool moved = attempt([&] {
    Recordset& record = *table_->record();
    // What others have added meanwhile counts for this move already.
    const bool there = table_->refresh();
    switch (where) {
      case Move::first:
        call = "MoveFirst, UpdateDBF";
        return record.MoveFirst();
      case Move::previous:
        call = "MovePrevious, UpdateDBF";
        return record.AbsolutePosition() > 0 ? record.MovePrevious() : record.MoveFirst();
      case Move::next:
        call = "MoveNext, UpdateDBF";
        if (!there) return;
        return record.AbsolutePosition() < table_->count() - 1 ? record.MoveNext() : record.MoveLast();
      case Move::last:
        call = "MoveLast, UpdateDBF";
        return record.MoveLast();
    }
  });
  if (moved) show(call);
  return moved;
}

// Fills the form from the record and locks it.
void FacilityHost::show(const std::string& call) {
  editing_ = false;
  SupportLog log;
  attempt([this] {
    if (place_ == Place::file) return site_.readFile(facilityFilePath());
    site_.clear();
    if (table_->count() > 0) site_.read(*table_->record());
  });
  antenna_.sValueFreq(CValP(site_.text("TX_FREQMHZ")));
  openMounting();
  // Update would read both places, and miss the hooks of the one that is not in use.
  if (place_ == Place::file) {
    antenna_.UpdateINI();
  } else {
    antenna_.UpdateDBF();
  }
  lock(true);
  const std::string failed = failedUpdate(log);
  did(call, failed.empty() ? position() + ", " + siteName() : failed);
  recordShown();
  if (!failed.empty()) tell(failed);
}

void FacilityHost::openMounting() {
  for (Widget* widget : std::initializer_list<Widget*>{&antenna_.txtOrient, &antenna_.txtETilt, &antenna_.txtMTilt,
                                                       &antenna_.txtMAzim, &antenna_.chkInvert, &antenna_.cboPol}) {
    widget->setEnabled(true);
  }
  antenna_.cboPol.setLocked(false);
}

void FacilityHost::lock(bool locked) {
  antenna_.Locked(locked);
  wasDirty_ = false;
}

void FacilityHost::siteText(const std::string& name, const std::string& text) {
  site_.text(name, text);
  if (name == "TX_FREQMHZ") antenna_.sValueFreq(CValP(text));
  wasDirty_ = dirty();
  changed();
}

std::string FacilityHost::siteName() const { return site_.text("SITE"); }

std::string FacilityHost::position() const {
  if (place_ == Place::file) return "INI file";
  if (!table_ || table_->count() == 0) return "No record";
  return "Record " + std::to_string(table_->record()->AbsolutePosition() + 1) + " of " +
         std::to_string(table_->count());
}

}  // namespace vantrelix::demo

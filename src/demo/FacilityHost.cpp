#include "demo/FacilityHost.h"

#include "demo/SupportLog.h"
#include "demo/facilityHooks.h"
#include "foundation/errHand.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix::demo {

namespace {

constexpr const char* kUpdateFailures[] = {"Error in scLookAnt.Update at flag ", "Error in scLookLine.Update at flag "};

// A read of a table that fails is told in the support log alone.
std::string failedUpdates(SupportLog& log) {
  const std::string news = log.news();
  std::string failed;
  for (const char* failure : kUpdateFailures) {
    const std::size_t at = news.find(failure);
    // Behind it the log names the program.
    if (at != std::string::npos) failed = AddALine(failed, news.substr(at, news.find("  (", at) - at), kBlankLine);
  }
  return failed;
}

}  // namespace

FacilityHost::FacilityHost(scLookAnt& antenna, scLookLine& line, scLookAnt_Desc& name)
    : antenna_(antenna), line_(line), name_(name), controls_{&antenna, &line}, shown_{&name, &antenna, &line} {
  const auto follow = [this](Widget& box, std::function<void()> act) {
    connections_.push_back(box.changed.connect(std::move(act)));
  };
  follow(antenna.txtFile, [this] { name_.sValueFile(antenna_.sValueFile()); });
  follow(antenna.txtID, [this] { name_.sValueID(antenna_.sValueID()); });
  follow(antenna.txtDesc, [this] { showName(); });
  follow(name.txtDesc, [this] { antenna_.txtDesc.setText(name_.txtDesc.text()); });
  for (const LookupControl* control : controls_) {
    for (Widget* widget : control->widgets()) {
      connections_.push_back(widget->changed.connect([this] { noteChange(); }));
    }
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
  unbind(line_);
  unbind(name_);
  table_.reset();
  if (attempt([this] { bind(); })) return show(place_ == Place::file ? "HookINI, UpdateINI" : "HookDBF..., UpdateDBF");
  editing_ = false;
  site_.clear();
  lock(true);
  recordShown();
}

void FacilityHost::bind() {
  makeFacilityTable();
  makeFacilityFile();
  if (place_ == Place::file) {
    for (LookupControl* control : shown_) bindToFile(*control, facilityFilePath());
    return;
  }
  table_ = std::make_unique<FacilityTable>();
  bindToTable(antenna_, table_->record());
  bindToTable(line_, table_->record());
  bindToTable(name_, table_->record());
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
  attempt([this] { readSite(); });
  // The line control reads its own with the record: before that it would compute a loss for the line of the last one.
  antenna_.sValueFreq(CValP(site_.text("TX_FREQMHZ")));
  openMounting();
  for (LookupControl* control : shown_) {
    // Update would read both places, and miss the hooks of the one that is not in use.
    if (place_ == Place::file) {
      control->Alerts("");
      control->UpdateINI();
    } else {
      control->UpdateDBF();
    }
  }
  lock(true);
  const std::string failed = failedUpdates(log);
  did(call, failed.empty() ? position() + ", " + siteName() : failed);
  recordShown();
  if (!failed.empty()) tell(failed);
}

void FacilityHost::readSite() {
  if (place_ == Place::file) return site_.readFile(facilityFilePath());
  site_.clear();
  if (table_->count() > 0) site_.read(*table_->record());
}

void FacilityHost::openMounting() {
  for (Widget* widget : std::initializer_list<Widget*>{&antenna_.txtOrient, &antenna_.txtETilt, &antenna_.txtMTilt,
                                                       &antenna_.txtMAzim, &antenna_.chkInvert, &antenna_.cboPol}) {
    widget->setEnabled(true);
  }
  antenna_.cboPol.setLocked(false);
}

void FacilityHost::lock(bool locked) {
  for (LookupControl* control : shown_) control->Locked(locked);
  wasDirty_ = false;
}

void FacilityHost::showName() {
  name_.txtDesc.setText(antenna_.txtDesc.text());
  const bool owned = antenna_.txtDesc.locked();
  if (owned != name_.txtDesc.locked()) name_.LookupOnly(owned);
}

void FacilityHost::takeNamed() {
  const std::string file = name_.sValueFile(), id = name_.sValueID(), description = name_.sValueDesc();
  antenna_.sValueFile(file);
  antenna_.sValueID(id);
  antenna_.sValueDesc(description);
  antenna_.GetAntPat();
  if (!file.empty()) openMounting();
}

void FacilityHost::siteText(const std::string& name, const std::string& text) {
  site_.text(name, text);
  if (name == "TX_FREQMHZ") {
    antenna_.sValueFreq(CValP(text));
    name_.sValueFreq(CValP(text));
    // Its alerts told of the loss at another frequency.
    line_.Alerts("");
    line_.sValueFreq(CValP(text));
  }
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

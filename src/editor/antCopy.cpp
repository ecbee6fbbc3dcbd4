#include "editor/antCopy.h"

#include <array>
#include <exception>
#include <vector>

#include "antenna/RowsAdded.h"
#include "editor/RecordsetRows.h"
#include "editor/patternRows.h"
#include "editor/selectedAntenna.h"
#include "editor/showCuts.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/procedures.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr std::array kPlanes{Plane::azimuth, Plane::elevation};

// What a copy takes from the row of the antenna.
struct CopiedField {
  const char* name;
  const char* fallback;  // for a null; null where it stays one
};
constexpr CopiedField kCopiedFields[] = {
    {"GAIN", nullptr},  {"GAIN_UN", "dBd"}, {"F_LOW", nullptr}, {"F_HIGH", nullptr},
    {"FREQ_UN", "MHz"}, {"POWER", nullptr}, {"POWER_UN", "W"},
};

// --- Copying.

class Copy {
 public:
  explicit Copy(frmHDAntEditor& form) : form_(form) {}

  void run() {
    SetFlag(200);
    readAnew();
    readPatterns();
    SetFlag(300);
    const GridFields fields = copiedFields();
    SetFlag(400);
    const std::string bookmark = addAntenna(fields);
    form_.setFocus(form_.TDBGridAMS);
    // By the cursor that added it: the list may have been bound anew meanwhile.
    const RecordsetRows added(cursor_);
    const int row = added.rowOf(bookmark);
    const Value id = row < 0 ? Value() : added.value(row, "ATYPE_ID");
    if (getLenTrim(ChkNulls(id, "", false).asText()) == 0) return lackOfID();
    SetFlag(700);
    if (!addPatterns(id)) takeBack(id);
  }

 private:
  // Others may have deleted the antenna or some of its points, which would be read as zeros.
  void readAnew() {
    const int row = form_.selectedRow();
    cursor_->setAbsolutePosition(row);
    cursor_->Edit();
    cursor_->CancelUpdate();
    showCuts(form_, row);
  }

  void readPatterns() {
    std::int16_t count = 0;
    form_.GetHPat(count, points_[0].angles, points_[0].gains);
    form_.GetVPat(count, points_[1].angles, points_[1].gains);
  }

  GridFields copiedFields() const {
    const int row = form_.selectedRow();
    const DataGrid& grid = form_.TDBGridAMS;
    const std::string name = ChkNulls(grid.value(row, "ANTENNA"), "UNKNOWN ANTENNA", false).asText();
    GridFields fields{{"ANTENNA", form_.DataAMS.cut("ANTENNA", "Copy of " + name)}};
    for (const CopiedField& field : kCopiedFields) {
      const Value value = grid.value(row, field.name);
      fields[field.name] = value.isNull() && field.fallback ? Value(field.fallback) : value;
    }
    return fields;
  }

  // Gives the bookmark of the new row.
  std::string addAntenna(const GridFields& fields) {
    form_.NewRow = true;
    const int row = form_.TDBGridAMS.appendRow(fields);
    std::string bookmark = form_.TDBGridAMS.bookmarkOf(row);
    form_.finishNewRow();
    return bookmark;
  }

  // Points without an ID would belong to nobody. Where there is none, finishNewRow has told why.
  void lackOfID() const {
    if (form_.NewRow) return;
    throw RunTimeFailure(failure::noCurrentRecord,
                         "The row of the copy is no longer in the list. Its pattern was not copied.");
  }

  void takeBack(const Value& id) {
    if (form_.goToAntenna(id.asText())) form_.TDBGridAMS.removeRow(form_.TDBGridAMS.currentRow());
    form_.TDBGridAMS.setBookmark(source_);
    form_.SelectAntenna();
  }

  // False where the user ended it, and then none of the points stands.
  bool addPatterns(const Value& id) {
    ProgressWindow progress("Copying Antenna");
    const DatabasePtr library = DBEngine::OpenDatabase(form_.folder());
    std::vector<RowsAdded> added;
    for (std::size_t i = 0; i < kPlanes.size(); ++i) {
      const std::string& table = kPlanes[i] == Plane::azimuth ? form_.AHDName : form_.AVDName;
      // A cursor of its own: the user may have gone to another antenna meanwhile.
      const RecordsetPtr rows = library->OpenRecordset("select * from [" + table + "]");
      added.emplace_back(rows);
      points_[i].id = id;
      if (appendPoints(*rows, patternPlane(kPlanes[i]), points_[i], progress)) continue;
      for (RowsAdded& part : added) part.takeAway();
      return false;
    }
    return true;
  }

  frmHDAntEditor& form_;
  const RecordsetPtr cursor_ = form_.DataAMS.recordset();
  const std::string source_ = form_.TDBGridAMS.selBookmarks().item(0);
  std::array<NewPoints, kPlanes.size()> points_;
};

// --- Deleting.

bool userWantsToDelete(const frmHDAntEditor& form) {
  const std::string text = "Do you want to DELETE the antenna?" + std::string(kBlankLine) + form.amsCell("ANTENNA");
  return MsgBox({"Delete Antenna?", text, MsgButtons::yesNo, MsgIcon::none, 2}) == MsgAnswer::yes;
}

// The row of an antenna, kept from others while its points go: they must not go and the row stay.
class AntennaHeld {
 public:
  explicit AntennaHeld(const frmHDAntEditor& form) : cursor_(form.DataAMS.recordset()) {
    cursor_->setAbsolutePosition(form.TDBGridAMS.currentRow());
    cursor_->LockEdits(true);
    try {
      cursor_->Edit();
    } catch (...) {
      cursor_->LockEdits(false);
      throw;
    }
  }
  ~AntennaHeld() {
    cursor_->CancelUpdate();
    cursor_->LockEdits(false);
  }
  AntennaHeld(const AntennaHeld&) = delete;
  AntennaHeld& operator=(const AntennaHeld&) = delete;

 private:
  RecordsetPtr cursor_;
};

// The points taken away so far.
class RemovedCuts {
 public:
  // False where the user ended it.
  bool remove(const RecordsetPtr& cursor, ProgressWindow& progress) {
    cuts_.push_back({cursor, {}});
    return removeRows(cursor, cuts_.back().rows, progress);
  }
  // Tries both cuts.
  void bringBack() {
    std::exception_ptr failed;
    for (const Cut& cut : cuts_) {
      try {
        putBack(*cut.cursor, cut.rows);
      } catch (const RunTimeFailure&) {
        failed = std::current_exception();
      }
    }
    if (failed) std::rethrow_exception(failed);
  }

 private:
  struct Cut {
    RecordsetPtr cursor;
    std::vector<StoredRow> rows;
  };
  std::vector<Cut> cuts_;
};

// False where the user ended it.
bool removeCuts(frmHDAntEditor& form, RemovedCuts& removed) {
  ProgressWindow progress("Deleting Antenna");
  for (const Plane plane : kPlanes) {
    PatternPane& pane = form.pane(plane);
    pane.thumbnail.Cls();
    const RecordsetPtr cursor = pane.data.recordset();
    if (!cursor) continue;
    // The grid must not look at rows that go.
    pane.data.clear();
    if (!removed.remove(cursor, progress)) return false;
  }
  return true;
}

// The points of the current antenna, all or none. False where the user ended it.
bool removePatterns(frmHDAntEditor& form) {
  const AntennaHeld held(form);
  // The grids may show another antenna still, and rows that others have changed since.
  showCuts(form, form.TDBGridAMS.currentRow());
  RemovedCuts removed;
  try {
    if (removeCuts(form, removed)) return true;
  } catch (...) {
    removed.bringBack();
    throw;
  }
  removed.bringBack();
  return false;
}

}  // namespace

void AntCopy(frmHDAntEditor& form) {
  if (!requireSelection(form, "Then click the copy button to make a copy of that antenna.")) return;
  const DisabledMeanwhile once(form.Command1[frmHDAntEditor::copying]);
  runReported(form, procedure::AntCopy, [&form] {
    SetFlag(100);
    // What stands in a cell still counts.
    if (form.storeEntries()) Copy(form).run();
  });
  for (const Plane plane : kPlanes) form.pane(plane).grid.selBookmarks().clear();
  form.selectionChanged();
  form.Command1[frmHDAntEditor::refreshingAzimuth].userClick();
}

void beforeAntDelete(frmHDAntEditor& form, bool& refused) {
  refused = !userWantsToDelete(form);
  if (refused) return;
  bool removed = false;
  runReported(form, procedure::beforeAntDelete, [&] { removed = removePatterns(form); });
  refused = !removed;
  if (refused) form.selectionChanged();
}

}  // namespace vantrelix

#include "editor/antCopy.h"

#include <array>

#include "antenna/RowsAdded.h"
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

// A button that must not be pressed again while its work lets the event loop have a turn.
class DisabledMeanwhile {
 public:
  explicit DisabledMeanwhile(Widget& widget) : widget_(widget) { widget_.setEnabled(false); }
  ~DisabledMeanwhile() { widget_.setEnabled(true); }
  DisabledMeanwhile(const DisabledMeanwhile&) = delete;
  DisabledMeanwhile& operator=(const DisabledMeanwhile&) = delete;

 private:
  Widget& widget_;
};

// --- Copying.

class Copy {
 public:
  explicit Copy(frmHDAntEditor& form) : form_(form) {}

  void run() {
    SetFlag(200);
    readPatterns();
    SetFlag(300);
    const GridFields fields = copiedFields();
    SetFlag(400);
    const std::string bookmark = addAntenna(fields);
    form_.setFocus(form_.TDBGridAMS);
    const Value id = form_.TDBGridAMS.value(form_.TDBGridAMS.rowOf(bookmark), "ATYPE_ID");
    if (getLenTrim(ChkNulls(id, "", false).asText()) == 0) return lackOfID();
    SetFlag(700);
    if (!addPatterns(id)) takeBack(bookmark);
  }

 private:
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
    const std::string bookmark = form_.TDBGridAMS.bookmarkOf(row);
    form_.finishNewRow();
    return bookmark;
  }

  // Points without an ID would belong to nobody. Where there is none, finishNewRow has told why.
  void lackOfID() const {
    if (form_.NewRow) return;
    throw RunTimeFailure(failure::noCurrentRecord,
                         "The row of the copy is no longer in the list. Its pattern was not copied.");
  }

  void takeBack(const std::string& bookmark) {
    form_.TDBGridAMS.removeRow(form_.TDBGridAMS.rowOf(bookmark));
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
  const std::string source_ = form_.TDBGridAMS.selBookmarks().item(0);
  std::array<NewPoints, kPlanes.size()> points_;
};

// --- Deleting.

bool userWantsToDelete(const frmHDAntEditor& form) {
  const std::string text = "Do you want to DELETE the antenna?" + std::string(kBlankLine) + form.amsCell("ANTENNA");
  return MsgBox({"Delete Antenna?", text, MsgButtons::yesNo, MsgIcon::none, 2}) == MsgAnswer::yes;
}

struct RemovedCut {
  RecordsetPtr cursor;
  std::vector<StoredRow> rows;
};

// The points of the current antenna. False where the user ended it, and then all of them stand again.
bool removePatterns(frmHDAntEditor& form) {
  // The grids may show another antenna still, and rows that others have changed since.
  showCuts(form, form.TDBGridAMS.currentRow());
  ProgressWindow progress("Deleting Antenna");
  std::vector<RemovedCut> removed;
  for (const Plane plane : kPlanes) {
    PatternPane& pane = form.pane(plane);
    pane.thumbnail.Cls();
    if (!pane.data.hasRecordset()) continue;
    removed.push_back({pane.data.recordset(), {}});
    // The grid must not look at rows that go.
    pane.data.clear();
    if (removeRows(removed.back().cursor, removed.back().rows, progress)) continue;
    for (RemovedCut& cut : removed) putBack(*cut.cursor, cut.rows);
    return false;
  }
  return true;
}

}  // namespace

void AntCopy(frmHDAntEditor& form) {
  if (!requireSelection(form, "Then click the copy button to make a copy of that antenna.")) return;
  const DisabledMeanwhile once(form.Command1[frmHDAntEditor::copying]);
  runReported(form, procedure::AntCopy, [&form] {
    SetFlag(100);
    // What stands in a cell still counts.
    if (form.TDBGridAMS.update() && form.TDBGridAHD.update() && form.TDBGridAVD.update()) Copy(form).run();
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

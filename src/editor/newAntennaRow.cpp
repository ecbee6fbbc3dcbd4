// New rows of the antenna list.
#include <exception>

#include "antenna/convertGain.h"
#include "editor/RecordsetRows.h"
#include "editor/frmHDAntEditor.h"
#include "editor/rowUnits.h"
#include "foundation/errHand.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "tables/AddingAlone.h"
#include "tables/structure.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kFirstID = "0000001";
constexpr int kCodeLength = 5;
constexpr const char* kNewGainUnits = "dBd";

}  // namespace

void frmHDAntEditor::beginNewRow() {
  NewRow = true;
  const int row = TDBGridAMS.currentRow();
  TDBGridAMS.setValue(row, "GAIN_UN", GainUnits);
  TDBGridAMS.setValue(row, "FREQ_UN", kFreqUnits);
}

void frmHDAntEditor::finishNewRow() {
  if (!NewRow) return;
  const Procedure guard(procedure::frmHDAntEditor_finishNewRow);
  try {
    fillNewRow();
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, AMSName);
  } catch (const std::exception& failure) {
    ErrHand(failure, AMSName);
  }
}

// In the turns of the event loop the user may sort the list, which binds it anew: the row is written through the cursor
// that added it.
void frmHDAntEditor::fillNewRow() {
  const auto step = [](long flag) {
    DBEngine::Idle();
    desktop().doEvents();
    SetFlag(flag);
  };
  SetFlag(100);
  const RecordsetPtr cursor = DataAMS.recordset();
  RecordsetRows rows(cursor);
  const std::string bookmark = rows.bookmark(rows.count() - 1);
  const auto put = [&](const char* field, const Value& value) { rows.store(rows.rowOf(bookmark), {{field, value}}); };
  const auto stored = [&](const char* field) { return rows.value(rows.rowOf(bookmark), field); };
  const auto fillBlank = [&](const char* field, const Value& value) {
    if (stored(field).isNull()) put(field, value);
  };
  step(200);
  std::string id;
  {
    const AddingAlone alone(*cursor);  // an import at the same moment would give its antenna the same ID
    id = GenNewID_RS(*cursor, "ATYPE_ID", leftCharacters(Mfg, kCodeLength), kFirstID);
    put("ATYPE_ID", id);
  }
  step(300);
  fillBlank("GAIN_UN", kNewGainUnits);
  bool failed = false;
  fillBlank("GAIN", ConvertAntGain(GainUnits, knownGainUnits(stored("GAIN_UN"), GainUnits), "0", failed));
  step(400);
  for (const char* limit : {"F_LOW", "F_HIGH"}) fillBlank(limit, 0);
  step(500);
  showNewRow(DataAMS.recordset() == cursor ? bookmark : "", id);
  step(600);
  NewRow = false;
  MakeMyCaption();
  SelectAntenna();
}

// A blank bookmark is that of a list that was bound anew.
void frmHDAntEditor::showNewRow(const std::string& bookmark, const std::string& id) {
  if (bookmark.empty()) {
    DataAMS.Requery();
    TDBGridAMS.setCurrentRow(rowOfAntenna(id));
  } else {
    TDBGridAMS.refresh();
    TDBGridAMS.setCurrentRow(TDBGridAMS.rowOf(bookmark));
  }
  showID();
}

}  // namespace vantrelix

// The rows of an antenna's cut in its table, many at a time. Each shows how far it has come.
#pragma once

#include <vector>

#include "dialogs/frmProgress.h"
#include "editor/patternPlane.h"
#include "tables/Recordset.h"

namespace vantrelix {

// A row as it stands, the values in the order of the fields.
using StoredRow = std::vector<Value>;

struct NewPoints {
  Value id;
  std::vector<double> angles;
  std::vector<double> gains;  // as many
};

// Adds the points at the cursor's end. A failure leaves the rows written before it. False where the user ended it: then
// some of the rows may stand.
bool appendPoints(Recordset& rows, const PatternPlane& plane, const NewPoints& points, ProgressWindow& progress);

// Deletes all rows of the cursor, one by one from the end, and puts what they held into `removed` in that order. Rows
// that another program has deleted are passed over. False where the user ended it.
bool removeRows(const RecordsetPtr& cursor, std::vector<StoredRow>& removed, ProgressWindow& progress);
// Writes removed rows again, in the order in which they stood.
void putBack(Recordset& rows, const std::vector<StoredRow>& removed);

}  // namespace vantrelix

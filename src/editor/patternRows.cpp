#include "editor/patternRows.h"

#include <algorithm>

#include "editor/RecordsetRows.h"
#include "platform/RunTimeFailure.h"
#include "tables/RowBatch.h"

namespace vantrelix {

namespace {

StoredRow storedRow(Recordset& rows, long position) {
  StoredRow row;
  for (std::size_t i = 0; i < rows.fieldCount(); ++i) row.push_back(rows.valueAt(position, rows.Fields(i).Name()));
  return row;
}

}  // namespace

bool appendPoints(Recordset& rows, const PatternPlane& plane, const NewPoints& points, ProgressWindow& progress) {
  RowBatch batch(rows);
  const Field id = rows.Fields("ATYPE_ID");
  const Field angle = rows.Fields(plane.angleField);
  const Field gain = rows.Fields(plane.gainField);
  const std::size_t count = points.angles.size();
  for (std::size_t i = 0; i < count; ++i) {
    batch.AddNew();
    batch.put(id, points.id);
    batch.put(angle, points.angles[i]);
    batch.put(gain, points.gains[i]);
    batch.Update();
    progress.report("Adding points", static_cast<long>(i) + 1, static_cast<long>(count));
    if (progress.cancelled()) return false;
  }
  batch.flush();
  return true;
}

bool removeRows(const RecordsetPtr& cursor, std::vector<StoredRow>& removed, ProgressWindow& progress) {
  RecordsetRows rows(cursor);
  const long total = rows.count();
  while (rows.count() > 0) {
    const int last = rows.count() - 1;
    try {
      StoredRow row = storedRow(*cursor, last);
      rows.remove(last);
      removed.push_back(std::move(row));
    } catch (const RunTimeFailure& failure) {
      if (failure.number() != failure::recordDeleted) throw;
      cursor->Requery();
    }
    progress.report("Deleting points", total - rows.count(), total);
    if (progress.cancelled()) return false;
  }
  return true;
}

void putBack(Recordset& rows, const std::vector<StoredRow>& removed) {
  RowBatch batch(rows);
  std::for_each(removed.rbegin(), removed.rend(), [&](const StoredRow& row) {
    batch.AddNew();
    for (std::size_t i = 0; i < row.size(); ++i) batch.put(rows.Fields(i), row[i]);
    batch.Update();
  });
  batch.flush();
}

}  // namespace vantrelix

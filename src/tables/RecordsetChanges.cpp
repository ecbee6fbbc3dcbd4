// The rows that a cursor adds, changes and deletes.
#include "foundation/extract.h"
#include "tables/RecordsetState.h"

namespace vantrelix {

void Recordset::Implementation::requireUpdatable() const {
  const std::string name = "Table '" + displayPath(query->table().path()) + "' cannot be changed here: ";
  if (!query->updatable())
    throw RunTimeFailure(failure::readOnlyTable, name + "the query computes its values. Query the table's own fields.");
  if (onlyReads())
    throw RunTimeFailure(failure::readOnlyTable, name + "the cursor is of a type that only reads. Open a dynaset.");
  if (query->table().readOnly())
    throw RunTimeFailure(failure::readOnlyTable, name + "it is open for reading only. Open it for writing.");
}

void Recordset::Implementation::put(std::size_t number, const Value& given) {
  requireUpdatable();
  if (editing == Editing::none) {
    throw RunTimeFailure(
        failure::updateWithoutEdit,
        "Field '" + column(number).name + "' was set without AddNew or Edit before it. Begin the row first.");
  }
  const auto field = static_cast<std::size_t>(column(number).field);
  query->table().put(changed.data(), field, given);
  puts.insert_or_assign(field, given);
}

void Recordset::Implementation::dropEdit() {
  editing = Editing::none;
  puts.clear();
  query->table().release();
}

void Recordset::Implementation::beginAdd() {
  requireUpdatable();
  dropEdit();
  changed = query->table().blankRecord();
  editing = Editing::adding;
}

void Recordset::Implementation::beginEdit() {
  requireUpdatable();
  dropEdit();
  recordRead = false;
  const unsigned char* bytes = currentRecord();
  if (lockEdits) {
    query->table().hold(rows[static_cast<std::size_t>(index)]);
    // Another may have written it, or deleted it, until the lock was there.
    recordRead = false;
    try {
      bytes = currentRecord();
    } catch (...) {
      query->table().release();
      throw;
    }
  }
  before.assign(bytes, bytes + query->table().recordLength());
  changed = before;
  editing = Editing::changing;
}

// What fails leaves the edit open, so that nothing typed is lost.
void Recordset::Implementation::update() {
  if (editing == Editing::none) {
    throw RunTimeFailure(failure::updateWithoutEdit,
                         "Update was called without AddNew or Edit before it. Begin the row first.");
  }
  if (editing == Editing::changing) {
    writeChange();
  } else {
    appendRows(changed.data(), 1);
  }
  dropEdit();
}

void Recordset::Implementation::appendRows(const unsigned char* records, std::uint32_t count) {
  const bool atEnd = index == size();
  const std::uint32_t first = query->table().append(records, count);
  rows.append(first, count);
  if (atEnd) index = size();
  reached += static_cast<long>(count);
}

void Recordset::Implementation::writeChange() {
  if (puts.empty()) return;
  countWrite();  // a write that fails may have changed the row
  query->table().update(rows[static_cast<std::size_t>(index)], [this](unsigned char* now) {
    for (const auto& [field, given] : puts) checkUnchanged(field, now);
    for (const auto& [field, given] : puts) query->table().carry(now, field, given, changed.data());
  });
}

void Recordset::Implementation::countWrite() { ++*writes; }

// Where the row has the value put already, an earlier try may have written it.
void Recordset::Implementation::checkUnchanged(std::size_t field, const unsigned char* now) {
  DbfFile& table = query->table();
  const Value value = table.value(now, field);
  if (value == table.value(before.data(), field) || value == table.value(changed.data(), field)) return;
  throw RunTimeFailure(failure::dataChanged, "Field '" + table.fields()[field].name + "' of table '" +
                                                 displayPath(table.path()) +
                                                 "' was changed by another since the edit began. Read the row again.");
}

void Recordset::Implementation::deleteCurrent() {
  requireUpdatable();
  dropEdit();
  recordRead = false;
  currentRecord();
  query->table().markDeleted(rows[static_cast<std::size_t>(index)]);
  countWrite();
  currentDeleted = true;
}

}  // namespace vantrelix

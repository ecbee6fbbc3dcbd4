#include "editor/RecordsetRows.h"

#include <charconv>

#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

std::string RecordsetRows::bookmark(int row) const { return std::to_string(recordset_->bookmarkAt(row)); }

int RecordsetRows::rowOf(const std::string& bookmark) const {
  Recordset::Bookmark number = 0;
  const auto [end, error] = std::from_chars(bookmark.data(), bookmark.data() + bookmark.size(), number);
  if (error != std::errc() || end != bookmark.data() + bookmark.size()) return -1;
  return static_cast<int>(recordset_->positionOf(number));
}

Value RecordsetRows::value(int row, const std::string& field) const {
  try {
    Value value = recordset_->valueAt(row, field);
    return value.isText() ? Value(trimRight(value.text())) : value;
  } catch (const RunTimeFailure& failure) {
    if (failure.number() != failure::noSuchField) throw;
    return {};
  }
}

void RecordsetRows::put(const GridFields& fields) {
  try {
    for (const auto& [field, value] : fields) recordset_->put(field, value);
    recordset_->Update();
  } catch (...) {
    recordset_->CancelUpdate();
    throw;
  }
}

void RecordsetRows::store(int row, const GridFields& fields) {
  recordset_->setAbsolutePosition(row);
  recordset_->Edit();
  put(fields);
}

int RecordsetRows::append(const GridFields& fields) {
  recordset_->AddNew();
  put(fields);
  return count() - 1;
}

void RecordsetRows::remove(int row) {
  recordset_->setAbsolutePosition(row);
  recordset_->Delete();
  recordset_->MoveNext();
}

}  // namespace vantrelix

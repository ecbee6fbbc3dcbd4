#include "tables/RowBatch.h"

#include "platform/RunTimeFailure.h"
#include "tables/RecordsetState.h"

namespace vantrelix {

namespace {

constexpr std::size_t kMostGathered = std::size_t{1} << 20;

[[noreturn]] void noRowBegun() {
  throw RunTimeFailure(failure::updateWithoutEdit,
                       "A row was filled or taken without AddNew before it. Begin it first.");
}

}  // namespace

RowBatch::RowBatch(Recordset& cursor) : cursor_(cursor) {
  cursor.state().requireUpdatable();
  blank_ = cursor.state().query->table().blankRecord();
}

void RowBatch::AddNew() { row_ = blank_; }

void RowBatch::put(const Field& field, const Value& value) {
  if (row_.empty()) noRowBegun();
  Recordset::Implementation& state = cursor_.state();
  if (field.owner_ != &cursor_) {
    throw RunTimeFailure(failure::noSuchField, "The field '" + field.Name() +
                                                   "' is one of another cursor. Take it from "
                                                   "the cursor of the rows.");
  }
  try {
    state.query->table().put(row_.data(), static_cast<std::size_t>(state.column(field.index_).field), value);
  } catch (const RunTimeFailure&) {
    flush();
    throw;
  }
}

void RowBatch::Update() {
  if (row_.empty()) noRowBegun();
  gathered_.insert(gathered_.end(), row_.begin(), row_.end());
  ++count_;
  row_.clear();
  if (gathered_.size() >= kMostGathered) flush();
}

void RowBatch::flush() {
  if (count_ == 0) return;
  cursor_.state().appendRows(gathered_.data(), count_);
  gathered_.clear();
  count_ = 0;
}

}  // namespace vantrelix

#include "tables/RowBatch.h"

#include <algorithm>

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

RowBatch::RowBatch(Recordset& cursor, Writing writing) : cursor_(cursor), writing_(writing) {
  cursor.state().requireUpdatable();
  blank_ = cursor.state().query->table().blankRecord();
}

void RowBatch::AddNew() {
  rows_.resize(gatheredBytes());
  rows_.insert(rows_.end(), blank_.begin(), blank_.end());
  begun_ = true;
}

std::size_t RowBatch::tableField(const Field& field) const {
  if (field.owner_ != &cursor_) {
    throw RunTimeFailure(failure::noSuchField, "The field '" + field.Name() +
                                                   "' is one of another cursor. Take it from "
                                                   "the cursor of the rows.");
  }
  return static_cast<std::size_t>(cursor_.state().column(field.index_).field);
}

void RowBatch::put(const Field& field, const Value& value) {
  if (!begun_) noRowBegun();
  const std::size_t index = tableField(field);
  try {
    cursor_.state().query->table().put(rows_.data() + gatheredBytes(), index, value);
  } catch (const RunTimeFailure&) {
    if (writing_ == Writing::asItGrows) flush();
    throw;
  }
}

void RowBatch::Update() {
  if (!begun_) noRowBegun();
  ++count_;
  begun_ = false;
  if (writing_ == Writing::asItGrows && gatheredBytes() >= kMostGathered) flush();
}

void RowBatch::putAll(const Field& field, const Value& value) {
  const std::size_t index = tableField(field);
  const DbfFile& table = cursor_.state().query->table();
  std::vector<unsigned char> row = blank_;
  table.put(row.data(), index, value);
  const DbfField& stored = table.fields()[index];
  // Without bits in the null flags, which other fields have too, its own bytes are all there is.
  const bool alone = stored.nullBit < 0 && stored.lengthBit < 0;
  const unsigned char* const bytes = row.data() + stored.offset;
  unsigned char* at = rows_.data();
  for (std::size_t i = 0; i < count_; ++i, at += blank_.size()) {
    if (alone) {
      std::copy_n(bytes, stored.width, at + stored.offset);
    } else {
      table.put(at, index, value);
    }
  }
}

void RowBatch::flush() {
  if (count_ == 0) return;
  cursor_.state().appendRows(rows_.data(), static_cast<std::uint32_t>(count_));
  rows_.erase(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(gatheredBytes()));
  count_ = 0;
}

}  // namespace vantrelix

#include "tables/RowBatch.h"

#include <algorithm>

#include "foundation/numbers.h"
#include "platform/RunTimeFailure.h"
#include "tables/RecordsetState.h"

namespace vantrelix {

namespace {

constexpr std::size_t kMostGathered = std::size_t{1} << 20;
constexpr std::size_t kRoom = std::size_t{1} << 14;

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
  if (begun_) {
    std::copy(blank_.begin(), blank_.end(), begunRow());
  } else if (rows_.size() == gatheredBytes()) {
    makeRoom();
  }
  begun_ = true;
}

// Adds blank rows behind the last; each copy doubles what has been filled.
void RowBatch::makeRoom() {
  const std::size_t before = rows_.size(), length = blank_.size();
  rows_.resize(before + std::max(kRoom, before) / length * length + length);
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(before);
  auto end = std::copy(blank_.begin(), blank_.end(), begin);
  while (end != rows_.end()) end = std::copy_n(begin, std::min(end - begin, rows_.end() - end), end);
}

std::size_t RowBatch::tableField(const Field& field) const {
  if (field.owner_ != &cursor_) {
    throw RunTimeFailure(failure::noSuchField, "The field '" + field.Name() +
                                                   "' is one of another cursor. Take it from "
                                                   "the cursor of the rows.");
  }
  field.requireStanding();
  return static_cast<std::size_t>(cursor_.state().column(field.index_).field);
}

RowBatch::NumberField RowBatch::numberField(const Field& field) const {
  NumberField result;
  result.index = tableField(field);
  const DbfField& stored = cursor_.state().query->table().fields()[result.index];
  result.onlyDigits = (stored.type == 'N' || stored.type == 'F') && stored.nullBit < 0 && stored.width > 0;
  result.offset = static_cast<std::size_t>(stored.offset);
  if (result.onlyDigits) result.digits = dbf::DigitsForm(static_cast<std::size_t>(stored.width), stored.decimals);
  return result;
}

void RowBatch::put(const Field& field, const Value& value) {
  if (!begun_) noRowBegun();
  putValue(tableField(field), value);
}

// Digits are made from the general text in any case.
void RowBatch::putGeneral(const NumberField& field, double number) {
  if (!begun_) noRowBegun();
  char* const at = reinterpret_cast<char*>(begunRow()) + field.offset;
  if (!field.onlyDigits || !field.digits.put(number, at)) putValue(field.index, generalNumber(number));
}

void RowBatch::putValue(std::size_t index, const Value& value) {
  try {
    cursor_.state().query->table().put(begunRow(), index, value);
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
  rows_.resize(gatheredBytes() + (begun_ ? blank_.size() : 0));
  rows_.erase(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(gatheredBytes()));
  count_ = 0;
}

}  // namespace vantrelix

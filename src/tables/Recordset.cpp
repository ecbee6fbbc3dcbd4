#include "tables/Recordset.h"

#include "platform/RunTimeFailure.h"
#include "tables/RecordsetState.h"

namespace vantrelix {

Recordset::Recordset(std::unique_ptr<Implementation> implementation) : implementation_(std::move(implementation)) {}

Recordset::~Recordset() = default;

Recordset::Implementation& Recordset::state() const {
  if (!implementation_) throw RunTimeFailure(failure::objectNotSet, "The cursor is closed. Open it again.");
  return *implementation_;
}

long Recordset::RecordCount() const { return state().recordCount(); }
bool Recordset::Eof() const { return state().index >= state().size(); }
bool Recordset::Bof() const { return state().index < 0 || state().rows.empty(); }
bool Recordset::NoMatch() const { return state().noMatch; }

long Recordset::AbsolutePosition() const { return state().hasCurrent() ? state().index : -1; }
void Recordset::setAbsolutePosition(long position) { state().moveTo(position); }

Recordset::Bookmark Recordset::bookmark() const { return state().bookmark(); }
void Recordset::setBookmark(Bookmark bookmark) { state().setBookmark(bookmark); }

long Recordset::rowCount() const { return state().size(); }
Value Recordset::valueAt(long position, std::string_view field) const {
  return state().valueAt(position, state().columnNumber(field));
}
Recordset::Bookmark Recordset::bookmarkAt(long position) const { return state().bookmarkAt(position); }
long Recordset::positionOf(Bookmark bookmark) const {
  const long position = state().positionOfBookmark(bookmark);
  return position < state().size() ? position : -1;
}

void Recordset::MoveFirst() { state().moveTo(0); }
void Recordset::MoveLast() { state().moveLast(); }
void Recordset::MoveNext() { state().moveNext(); }
void Recordset::MovePrevious() { state().movePrevious(); }

void Recordset::FindFirst(std::string_view criterion) { state().findFirst(criterion); }

std::size_t Recordset::fieldCount() const { return state().query->columns().size(); }

Field Recordset::Fields(std::string_view name) { return Field(*this, state().columnNumber(name)); }

Field Recordset::Fields(std::size_t index) {
  if (index >= fieldCount()) {
    throw RunTimeFailure(failure::noSuchField, "There is no field number " + std::to_string(index) + "; there are " +
                                                   std::to_string(fieldCount()) +
                                                   ", counted from 0. Check the number.");
  }
  return Field(*this, index);
}

void Recordset::addNumbers(const Field& first, const Field& second, NumberPairs& pairs) {
  if (first.owner_ != this || second.owner_ != this) {
    throw RunTimeFailure(failure::noSuchField, "A field of another cursor cannot be read here. Take it of this one.");
  }
  first.requireStanding();
  second.requireStanding();
  state().addNumbers(first.index_, second.index_, pairs);
}

void Recordset::AddNew() { state().beginAdd(); }
void Recordset::Edit() { state().beginEdit(); }
void Recordset::Update() { state().update(); }
void Recordset::CancelUpdate() { state().dropEdit(); }
bool Recordset::editing() const { return state().editing != Implementation::Editing::none; }
bool Recordset::LockEdits() const { return state().lockEdits; }
void Recordset::LockEdits(bool lock) { state().lockEdits = lock; }
void Recordset::Delete() { state().deleteCurrent(); }

void Recordset::Requery() { state().requery(); }
void Recordset::Close() {
  state();
  implementation_.reset();
}
bool Recordset::isOpen() const { return implementation_ != nullptr; }

Field::Field(Recordset& owner, std::size_t index) : owner_(&owner), index_(index), layout_(owner.state().layout) {}

void Field::requireStanding() const {
  if (owner_->state().layout == layout_) return;
  throw RunTimeFailure(failure::noSuchField,
                       "The table was replaced by one with other fields since this field was taken. Take it again.");
}

const std::string& Field::Name() const {
  requireStanding();
  return owner_->state().column(index_).name;
}

FieldType Field::Type() const {
  requireStanding();
  return owner_->state().column(index_).type;
}

int Field::Size() const {
  requireStanding();
  return owner_->state().column(index_).size;
}

int Field::decimals() const {
  requireStanding();
  return owner_->state().column(index_).decimals;
}

vantrelix::Value Field::value() const {
  requireStanding();
  return owner_->state().value(index_);
}

std::optional<double> Field::number() const {
  requireStanding();
  return owner_->state().numberOf(index_);
}

std::optional<std::string_view> Field::text() const {
  requireStanding();
  return owner_->state().textOf(index_);
}

void Field::put(const vantrelix::Value& value) {
  requireStanding();
  owner_->state().put(index_, value);
}

std::string Field::cut(std::string_view text) const {
  requireStanding();
  Recordset::Implementation& state = owner_->state();
  const SqlColumn& column = state.column(index_);
  if (column.field >= 0) return state.query->table().cut(text, static_cast<std::size_t>(column.field));
  return state.query->table().codePage().cut(text, static_cast<std::size_t>(column.size));
}

}  // namespace vantrelix

// The rows of a cursor and its place among them.
#include "tables/RecordsetState.h"

#include <algorithm>

#include "foundation/extract.h"

namespace vantrelix {

namespace {

constexpr int kBookmarkShift = 32;
// A cursor that only reads keeps its rows where they take no more memory than this.
constexpr std::size_t kMostKept = std::size_t{64} << 20;

std::uint64_t nextSerial() {
  static std::uint64_t last = 0;
  return ++last;
}

bool haveSameNames(const std::vector<SqlColumn>& some, const std::vector<SqlColumn>& others) {
  return std::equal(some.begin(), some.end(), others.begin(), others.end(),
                    [](const SqlColumn& one, const SqlColumn& other) { return one.name == other.name; });
}

}  // namespace

std::shared_ptr<std::uint64_t> writesTo(const platform::FileState& file) {
  static std::map<std::pair<std::uint64_t, std::uint64_t>, std::weak_ptr<std::uint64_t>> counters;
  std::weak_ptr<std::uint64_t>& held = counters[{file.device, file.inode}];
  std::shared_ptr<std::uint64_t> counter = held.lock();
  if (!counter) held = counter = std::make_shared<std::uint64_t>(0);
  return counter;
}

RunTimeFailure Recordset::Implementation::noCurrentRecord() {
  return {failure::noCurrentRecord, "There is no current record. Move to a row first."};
}

Recordset::Implementation::Implementation(SqlSelect select, Opener opener_, RecordsetType type_, bool shared_)
    : opener(std::move(opener_)), type(type_), shared(shared_) {
  open(std::move(select));
  run();
}

// Where the query does not fit the table all stays as it was.
void Recordset::Implementation::open(SqlSelect select) {
  auto bound = std::make_unique<SqlQuery>(std::move(select), opener());
  const platform::FileState found = noteOpening(bound->table());
  writes = writesTo(found);
  opened = found;
  if (query && !haveSameNames(query->columns(), bound->columns())) ++layout;
  serial = nextSerial();
  readers.clear();
  query = std::move(bound);
}

void Recordset::Implementation::run() {
  dropEdit();
  currentDeleted = false;
  recordRead = false;
  kept.clear();
  keptPlaces.clear();
  orderField = -1;
  if (query->aggregated()) {
    aggregates = query->aggregates();
    rows = RowNumbers(std::vector<std::uint32_t>(1, 0));
  } else {
    SqlRows found = query->rows(onlyReads() ? kMostKept : 0);
    rows = RowNumbers(std::move(found.numbers));
    kept = std::move(found.records);
    keptPlaces = std::move(found.places);
    orderField = found.numbersOf;
    orderNumbers = std::move(found.orderNumbers);
  }
  index = 0;
  reached = type == RecordsetType::table ? size() : 0;
  reach();
}

// A repair puts a new file in the table's place; the rows then come from that one. Where none is left, the opening
// fails as it would anew: what went on in the file that nobody finds any more is not what the query asks for.
void Recordset::Implementation::requery() {
  const auto now = platform::current().state(query->table().path());
  const bool replaced = now && !isSameFile(*now, opened);
  if (!now || (shared && replaced)) {
    SqlSelect select = query->select();
    open(std::move(select));
  }
  run();
}

long Recordset::Implementation::recordCount() const { return reached - (currentDeleted ? 1 : 0); }

void Recordset::Implementation::reach() {
  if (hasCurrent()) reached = std::max(reached, index + 1);
}

// Every move begins here: an edit is dropped, a row deleted by this cursor leaves. True where one left.
bool Recordset::Implementation::settle() {
  if (editing != Editing::none) dropEdit();
  recordRead = false;
  if (!currentDeleted) return false;
  currentDeleted = false;
  rows.erase(static_cast<std::size_t>(index));
  --reached;
  return true;
}

// Places count the rows as they are after a deleted one has left.
void Recordset::Implementation::moveTo(long position) {
  settle();
  if (position < 0 || position >= size()) throw noCurrentRecord();
  index = position;
  reach();
}

// A deleted row must have left before the last place is known.
void Recordset::Implementation::moveLast() {
  settle();
  moveTo(size() - 1);
}

void Recordset::Implementation::moveNext() {
  if (index >= size()) throw noCurrentRecord();
  if (!settle()) ++index;
  reach();
}

void Recordset::Implementation::movePrevious() {
  if (index < 0 || rows.empty()) throw noCurrentRecord();
  settle();
  --index;
}

void Recordset::Implementation::requireCurrent() const {
  if (!hasCurrent()) throw noCurrentRecord();
}

Recordset::Bookmark Recordset::Implementation::bookmark() const {
  requireCurrent();
  return bookmarkAt(index);
}

Recordset::Bookmark Recordset::Implementation::bookmarkAt(long position) const {
  if (position < 0 || position >= size()) throw noCurrentRecord();
  return serial << kBookmarkShift | rows[static_cast<std::size_t>(position)];
}

long Recordset::Implementation::positionOfBookmark(Bookmark bookmark) const {
  return bookmark >> kBookmarkShift == serial ? positionOf(static_cast<std::uint32_t>(bookmark)) : size();
}

void Recordset::Implementation::setBookmark(Bookmark bookmark) {
  const long position = positionOfBookmark(bookmark);
  if (position == size() || (currentDeleted && position == index)) {
    throw RunTimeFailure(failure::notABookmark, "The bookmark names no row of this cursor over table '" +
                                                    displayPath(query->table().path()) + "'. Take it anew.");
  }
  const bool behindDeleted = currentDeleted && position > index;
  moveTo(behindDeleted ? position - 1 : position);
}

// The number of rows where the record is not among them. Without an order the rows stand in file order.
long Recordset::Implementation::positionOf(std::uint32_t number) const {
  if (query->ordered()) return std::find(rows.begin(), rows.end(), number) - rows.begin();
  const auto found = std::lower_bound(rows.begin(), rows.end(), number);
  return found != rows.end() && *found == number ? found - rows.begin() : size();
}

}  // namespace vantrelix

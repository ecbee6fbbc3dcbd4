#include "tables/RecordsetState.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "tables/SqlLexer.h"
#include "tables/SqlParser.h"

namespace vantrelix {

namespace {

constexpr int kBookmarkShift = 32;
// A cursor that only reads keeps its rows where they take no more memory than this.
constexpr std::size_t kMostKept = std::size_t{64} << 20;

std::uint64_t nextSerial() {
  static std::uint64_t last = 0;
  return ++last;
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
    : opener(std::move(opener_)), type(type_), shared(shared_), serial(nextSerial()) {
  open(std::move(select));
  run();
}

void Recordset::Implementation::open(SqlSelect select) {
  std::shared_ptr<DbfFile> table = opener();
  opened = noteFileState(*table);
  writes = writesTo(opened);
  query = std::make_unique<SqlQuery>(std::move(select), std::move(table));
}

void Recordset::Implementation::run() {
  dropEdit();
  currentDeleted = false;
  recordRead = false;
  kept.clear();
  orderField = -1;
  if (query->aggregated()) {
    aggregates = query->aggregates();
    rows = RowNumbers(std::vector<std::uint32_t>(1, 0));
  } else {
    SqlRows found = query->rows(onlyReads() ? kMostKept : 0);
    rows = RowNumbers(std::move(found.numbers));
    kept = std::move(found.records);
    orderField = found.numbersOf;
    orderNumbers = std::move(found.orderNumbers);
  }
  index = 0;
  reached = type == RecordsetType::table ? size() : 0;
  reach();
}

// A repair puts a new file in the table's place; the rows then come from that one.
void Recordset::Implementation::requery() {
  const std::string& path = query->table().path();
  const auto now = platform::current().state(path);
  const bool replaced = now && (now->device != opened.device || now->inode != opened.inode);
  if (shared && replaced) {
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

void Recordset::Implementation::findFirst(std::string_view criterion) {
  SqlExpression condition = parseSqlCondition(criterion);
  if (query->aggregated()) {
    throw sqlSyntaxFailure(criterion, 0, "the one row of a query of aggregates cannot be searched.");
  }
  query->bind(condition, std::string(criterion));
  settle();
  SqlFilter filter(query->table(), &condition);
  const std::optional<long> found = search(filter);
  noMatch = !found;
  if (found) moveTo(*found);
}

std::optional<long> Recordset::Implementation::search(SqlFilter& filter) {
  // One read for a few rows costs less than a run over the whole file.
  constexpr std::size_t kRunPays = 8;
  DbfFile& table = query->table();
  if (!kept.empty()) {
    for (long i = 0; i < size(); ++i) {
      if (filter.matches(keptRecord(i))) return i;
    }
    return std::nullopt;
  }
  if (rows.size() * kRunPays >= table.recordCount()) return searchFile(filter);
  std::vector<unsigned char> bytes(static_cast<std::size_t>(table.recordLength()));
  for (long i = 0; i < size(); ++i) {
    if (table.readRecord(rows[static_cast<std::size_t>(i)], bytes.data()) && filter.matches(bytes.data())) return i;
  }
  return std::nullopt;
}

std::optional<long> Recordset::Implementation::searchFile(SqlFilter& filter) {
  std::vector<std::uint32_t> found;  // in file order
  const bool firstWillDo = !query->ordered();
  query->table().scan([&](std::uint32_t number, const unsigned char* bytes) {
    if (!filter.matches(bytes)) return true;
    if (firstWillDo && positionOf(number) == size()) return true;
    found.push_back(number);
    return !firstWillDo;
  });
  if (found.empty()) return std::nullopt;
  if (firstWillDo) return positionOf(found.front());
  const auto first = std::find_if(rows.begin(), rows.end(), [&](std::uint32_t number) {
    return std::binary_search(found.begin(), found.end(), number);
  });
  return first == rows.end() ? std::optional<long>() : first - rows.begin();
}

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

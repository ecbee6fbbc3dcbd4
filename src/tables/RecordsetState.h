// What a cursor holds. Private to Recordset and Database.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/RunTimeFailure.h"
#include "tables/ColumnReader.h"
#include "tables/Recordset.h"
#include "tables/RowNumbers.h"
#include "tables/SqlFilter.h"
#include "tables/SqlQuery.h"

namespace vantrelix {

// Counts the changes of this process to the rows of a table file: a cursor keeps the bytes of its row only while the
// count stands. New rows change none. The file is open for as long as its counter is held.
std::shared_ptr<std::uint64_t> writesTo(const platform::FileState& file);

struct Recordset::Implementation {
  using Opener = std::function<std::shared_ptr<DbfFile>()>;

  // `opener` opens the table anew each time it is called; `select` is bound to what it gives.
  Implementation(SqlSelect select, Opener opener, RecordsetType type, bool shared);

  // The rows, and the place among them.
  void run();
  void requery();
  bool hasCurrent() const { return index >= 0 && index < size(); }
  long size() const { return static_cast<long>(rows.size()); }
  long recordCount() const;
  void moveTo(long position);
  void moveLast();
  void moveNext();
  void movePrevious();
  void setBookmark(Bookmark bookmark);
  Bookmark bookmark() const;
  Bookmark bookmarkAt(long position) const;
  long positionOfBookmark(Bookmark bookmark) const;  // the number of rows where it names none
  void findFirst(std::string_view criterion);

  // Columns and values.
  bool onlyReads() const { return type == RecordsetType::snapshot || type == RecordsetType::forwardOnly; }
  void addNumbers(std::size_t first, std::size_t second, NumberPairs& pairs);
  const SqlColumn& column(std::size_t number) const { return query->columns()[number]; }
  std::size_t columnNumber(std::string_view name) const;
  Value value(std::size_t number);
  std::optional<double> numberOf(std::size_t number);
  std::optional<std::string_view> textOf(std::size_t number);
  Value valueAt(long position, std::size_t number);

  // Changes.
  void put(std::size_t number, const Value& given);
  void beginAdd();
  void beginEdit();
  void update();
  // Adds rows to the table and to this cursor's end; one by one or many at once, the cursor stands as it would.
  void appendRows(const unsigned char* records, std::uint32_t count);
  void dropEdit();
  void deleteCurrent();
  void requireUpdatable() const;

  enum class Editing { none, adding, changing };

  Opener opener;
  std::unique_ptr<SqlQuery> query;
  std::vector<ColumnReader> readers;  // by column, once one of them has been asked for
  RecordsetType type;
  bool shared;
  std::uint64_t layout = 0;  // counts how often the columns became others
  platform::FileState opened;
  std::shared_ptr<std::uint64_t> writes;

  RowNumbers rows;                        // of a query of aggregates one that means nothing
  std::vector<unsigned char> kept;        // the bytes of all rows of a picture, in file order; else empty
  std::vector<std::uint32_t> keptPlaces;  // which of them each row is; empty where that is their own order
  int orderField = -1;                    // whose numbers in them are known, and these
  std::vector<double> orderNumbers;
  std::vector<Value> aggregates;
  long index = 0;  // -1 before the first row, the number of rows behind the last
  long reached = 0;
  bool noMatch = false;
  bool currentDeleted = false;  // deleted here; leaves the rows at the next move
  std::uint64_t serial = 0;     // tells the bookmarks of one cursor and file from those of another

  std::vector<unsigned char> record;  // of the current row
  bool recordRead = false;
  std::uint64_t recordWrites = 0;  // what `writes` was when it was read

  bool lockEdits = false;
  Editing editing = Editing::none;
  std::vector<unsigned char> before;  // the row as Edit found it
  std::vector<unsigned char> changed;
  std::map<std::size_t, Value> puts;  // by field of the table

 private:
  void open(SqlSelect select);
  bool settle();
  void reach();
  void requireCurrent() const;
  static RunTimeFailure noCurrentRecord();
  const unsigned char* currentRecord();
  const unsigned char* shownRecord();
  ColumnReader& reader(std::size_t number) {
    if (readers.empty()) makeReaders();
    return readers[number];
  }
  void makeReaders();
  // Null where the rows are read from the file.
  const unsigned char* keptRecord(long position) const {
    if (kept.empty()) return nullptr;
    const auto row = static_cast<std::size_t>(position);
    const std::size_t place = keptPlaces.empty() ? row : keptPlaces[row];
    return kept.data() + place * static_cast<std::size_t>(query->table().recordLength());
  }
  bool addKept(std::size_t number, std::vector<double>& numbers) const;
  std::optional<long> search(SqlFilter& filter);
  std::optional<long> searchFile(SqlFilter& filter);
  long positionOf(std::uint32_t number) const;
  void writeChange();
  void countWrite();
  void checkUnchanged(std::size_t field, const unsigned char* now);
};

}  // namespace vantrelix

// What a cursor holds. Private to Recordset and Database.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/RunTimeFailure.h"
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
  void visitNumbers(std::size_t first, std::size_t second, const std::function<void(double, double)>& visit);
  const SqlColumn& column(std::size_t number) const { return query->columns()[number]; }
  std::size_t columnNumber(std::string_view name) const;
  Value value(std::size_t number);
  Value valueAt(long position, std::size_t number) const;

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
  RecordsetType type;
  bool shared;
  platform::FileState opened;
  std::shared_ptr<std::uint64_t> writes;

  RowNumbers rows;                  // of a query of aggregates one that means nothing
  std::vector<unsigned char> kept;  // the bytes of all rows of a picture; else empty
  int orderField = -1;              // whose numbers in them are known, and these
  std::vector<double> orderNumbers;
  std::vector<Value> aggregates;
  long index = 0;  // -1 before the first row, the number of rows behind the last
  long reached = 0;
  bool noMatch = false;
  bool currentDeleted = false;  // deleted here; leaves the rows at the next move
  std::uint64_t serial;         // tells the bookmarks of one cursor from those of another

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
  const unsigned char* keptRecord(long position) const;
  void visitKept(int first, const dbf::DigitsField& a, const dbf::DigitsField& b,
                 const std::function<void(double, double)>& visit);
  Value shownValue(const SqlColumn& shown, const unsigned char* bytes) const;
  std::optional<long> search(SqlFilter& filter);
  std::optional<long> searchFile(SqlFilter& filter);
  long positionOf(std::uint32_t number) const;
  void writeChange();
  void countWrite();
  void checkUnchanged(std::size_t field, const unsigned char* now);
};

}  // namespace vantrelix

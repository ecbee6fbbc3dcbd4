// A cursor over the rows of a query.
//
// A table or dynaset cursor keeps which rows it has and reads each row's values from the file when they are asked for:
// what another cursor of this process has written to a row is seen at the next read, what another program has written
// at the next move or Edit. Rows that others add are seen after Requery. A row that this cursor adds stands at its end.
// A snapshot or forward-only cursor is a picture of the rows as its opening, or Requery, found them: nothing written
// later is seen, but for the texts of a memo file. A picture of more than 64 MiB would take too much memory; such a
// cursor keeps which rows it has and reads them as a dynaset does. One thread alone uses the cursors of a process.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "tables/FieldType.h"

namespace vantrelix {

enum class RecordsetType { table = 1, dynaset = 2, snapshot = 4, forwardOnly = 8 };

// Options of an opening, to be added up.
namespace recordsetOption {
inline constexpr int denyWrite = 1;
inline constexpr int denyRead = 2;
inline constexpr int readOnly = 4;
}  // namespace recordsetOption

class Recordset;

// Two fields' numbers in the same rows.
struct NumberPairs {
  std::size_t most = SIZE_MAX;  // so many rows are wanted
  std::vector<double> firsts;
  std::vector<double> seconds;
};

// A field of the current row. Lives no longer than its recordset, and ends (3265) where a Requery finds another table
// in the place of the former one, with other fields.
class Field {
 public:
  const std::string& Name() const;
  FieldType Type() const;
  int Size() const;  // declared width
  int decimals() const;
  // The value in the current row, or in the row being added or edited. 3021 without a current row.
  vantrelix::Value value() const;
  // The number and the text of that value, without the value being made: nothing where it is null, 13 where it is of
  // another kind. The text belongs to the cursor. It stays until a field of its name is asked for its text again, and
  // no longer than the row: a move, put, Edit, AddNew, Update, CancelUpdate, Requery or Close ends it, and so does a
  // read of the row after another cursor of this process has written to it.
  std::optional<double> number() const;
  std::optional<std::string_view> text() const;
  // Only between AddNew or Edit and Update, else 3020. 3163 where it does not fit; 3027 in a result that has no table
  // row.
  void put(const vantrelix::Value& value);
  // The text cut to the field's width, without splitting a character of its code page.
  std::string cut(std::string_view text) const;

 private:
  friend class Recordset;
  friend class RowBatch;
  Field(Recordset& owner, std::size_t index);
  void requireStanding() const;
  Recordset* owner_;
  std::size_t index_;
  std::uint64_t layout_;
};

class Recordset {
  struct Implementation;

 public:
  using Bookmark = std::uint64_t;

  // For Database alone, which knows what an Implementation is.
  explicit Recordset(std::unique_ptr<Implementation> implementation);
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // Rows reached so far: above 0 as soon as there is a row, exact after MoveLast.
  long RecordCount() const;
  bool Eof() const;
  bool Bof() const;
  bool NoMatch() const;
  // Zero-based; -1 without a current row. Setting it moves; 3021 outside the rows.
  long AbsolutePosition() const;
  void setAbsolutePosition(long position);
  // Names the current row for as long as this cursor is open. 3021 without a current row, 3159 for a bookmark not of
  // it.
  Bookmark bookmark() const;
  void setBookmark(Bookmark bookmark);

  // A move drops a row that was being added or edited. MoveFirst and MoveLast without rows fail with 3021, as does
  // MoveNext at the end and MovePrevious before the beginning.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();

  // Rows by their place, counted from 0, whichever is current: nothing moves and no edit ends. What a list shows of a
  // cursor that is being worked with.
  long rowCount() const;  // of all rows, reached or not
  // Null where the row has been deleted meanwhile. 3021 outside the rows.
  Value valueAt(long position, std::string_view field) const;
  Bookmark bookmarkAt(long position) const;
  long positionOf(Bookmark bookmark) const;  // -1 where it names no row of this cursor

  // Moves to the first row that meets the criterion (FIELD = 'value', val(FIELD) = 3, and what a filter may hold), or
  // sets NoMatch and leaves the row undefined. 3061 for a criterion that cannot be read.
  void FindFirst(std::string_view criterion);

  // Fields in table order. An unknown name fails with 3265.
  std::size_t fieldCount() const;
  Field Fields(std::string_view name);
  Field Fields(std::size_t index);
  // Adds two fields' values as numbers of the current row and all behind it, but of those rows in which one of them is
  // null, and ends behind the last row or, where there are as many as wanted, at the one that comes next. 13 for a text
  // that is no number: what was added before it stays. 3021 before the first row, 3265 for a field of another cursor.
  void addNumbers(const Field& first, const Field& second, NumberPairs& pairs);
  // Short forms of Fields(name).value() and Fields(name).put(...).
  Value value(std::string_view name) { return Fields(name).value(); }
  void put(std::string_view name, const vantrelix::Value& value) { Fields(name).put(value); }

  // AddNew begins a blank row, Edit the change of the current one; Update writes it, CancelUpdate drops it. After
  // AddNew and Update the current row is the one before AddNew. Update of an edited row writes the fields that were put
  // and keeps what others wrote to the rest meanwhile; a field put here that another changed since Edit fails with
  // 3197.
  void AddNew();
  void Edit();
  void Update();
  void CancelUpdate();
  bool editing() const;
  // Whether Edit takes the record's lock and keeps it until the edit ends by Update, CancelUpdate or a move: what
  // others write to it meanwhile waits, then fails with 3211, and so does Edit where another has it. False unless set:
  // a write then locks for its own duration.
  bool LockEdits() const;
  void LockEdits(bool lock);
  // Marks the current row deleted. It stays current, without values (3167), until the next move.
  void Delete();

  // Runs the query again and goes to the first row. A table that is gone (3011) or no longer fits leaves all as it was.
  void Requery();
  // Ends the cursor; every later call fails with 91.
  void Close();
  bool isOpen() const;

 private:
  friend class AddingAlone;
  friend class ColumnScan;
  friend class Database;
  friend class Field;
  friend class RowBatch;
  Implementation& state() const;
  std::unique_ptr<Implementation> implementation_;
};

using RecordsetPtr = std::shared_ptr<Recordset>;

}  // namespace vantrelix

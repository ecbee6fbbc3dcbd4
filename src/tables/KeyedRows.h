// The rows of a table that have one text in a character field: what `SELECT * FROM table WHERE field = 'text'` gives a
// snapshot, or the same ordered by another field, for callers that look up one key after another.
//
// Where the bytes of the rows decide everything, as in the tables that this program makes, no query is run; otherwise
// one is. Which it was shows in nothing but the time, and what fails fails as that query does. The table is open, and
// nobody else has it alone, until close() or the end of this object's life.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tables/Database.h"

namespace vantrelix {

class TextEquality;

class KeyedRows {
 public:
  struct Key {
    std::string table;      // base name of its file
    std::string field;      // in it, by a name that a query takes without brackets
    std::string text;       // sought there
    std::string orderedBy;  // a field; blank for the order of the file
  };

  // Failures as Database::OpenRecordset.
  KeyedRows(Database& database, const Key& key);

  bool empty() const;
  // A field's value in the first row. 3021 where there is none, 3265 for an unknown field.
  Value value(std::string_view field);
  // Adds two fields' numbers of all rows as Recordset::addNumbers does of a cursor on its first row.
  void addNumbers(std::string_view first, std::string_view second, NumberPairs& pairs);
  // Closes the table. What is asked behind that fails with 91.
  void close();

 private:
  // Bytes of records, of no value until they are read.
  struct Rows {
    Rows() = default;
    explicit Rows(std::size_t bytesWanted)
        : bytes(std::make_unique_for_overwrite<unsigned char[]>(bytesWanted)), size(bytesWanted) {}

    std::unique_ptr<unsigned char[]> bytes;
    std::size_t size = 0;
  };

  // When it shows that the open file has the header that it is read by.
  enum class Proven { byOpening, behindReads };

  bool read(Database& database, const Key& key);
  bool readRows(const Key& key, Proven isProven);
  bool gather(const TextEquality& wanted);
  bool gatherKnown(const TextEquality& wanted);
  bool readOrder(const Key& key);
  void sortRows();
  std::size_t fieldNumber(std::string_view name) const;
  std::size_t rowCount() const;
  bool addAll(std::size_t field, std::vector<double>& numbers);
  void requireOpen() const;

  std::shared_ptr<DbfFile> table_;  // where no query was run, with
  Rows rows_;                       // the records in their order, and
  int orderField_ = -1;             // the field of that order while its numbers are here
  std::vector<double> orderNumbers_;
  RecordsetPtr query_;  // where one was run
};

}  // namespace vantrelix

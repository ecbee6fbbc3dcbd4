// A folder of tables, and the queries over it.
//
// Every .DBF file in the folder is a table named by its base name. SQL names a table by its token, the base name
// between brackets. The texts understood are listed in docs/table-format.md; any other fails with 3061 and a
// description that names the place.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tables/Recordset.h"

namespace vantrelix {

// A table to be made: name and fields; nothing is written before Database::append.
class TableDef {
 public:
  explicit TableDef(std::string name) : name_(std::move(name)) {}
  const std::string& Name() const { return name_; }
  // Adds a field behind those there are. `size` counts for text alone; numbers get the engine's own width.
  void append(std::string_view name, FieldType type, int size);
  const std::vector<DbfNewField>& fields() const { return fields_; }

 private:
  std::string name_;
  std::vector<DbfNewField> fields_;
};

class Database {
  struct Opening {
    std::string folder;
    bool exclusive;
    bool readOnly;
    std::string connect;
  };

 public:
  // For DBEngine alone, which can make an Opening.
  explicit Database(Opening opening) : opening_(std::move(opening)) {}

  const std::string& folder() const { return opening_.folder; }
  const std::string& connect() const { return opening_.connect; }

  // A cursor on its first row. A type of `table` takes a bare table name in place of a query. 3011 no such table, 3061
  // a text not understood, 3051 and 3211 in use by another.
  RecordsetPtr OpenRecordset(std::string_view sql, RecordsetType type = RecordsetType::dynaset, int options = 0);
  // Runs "Insert Into [target] Select list From [source]"; gives the number of rows added.
  long Execute(std::string_view sql);

  TableDef CreateTableDef(std::string name) const { return TableDef(std::move(name)); }
  // Makes the table's file. 58 where a table of that name exists.
  void append(const TableDef& table);

  void Close();

 private:
  friend class DBEngine;
  friend class KeyedRows;
  // The table as a cursor that only reads opens it; and the same by DbfFile::openKnown.
  std::shared_ptr<DbfFile> openToRead(const std::string& name) const;
  std::shared_ptr<DbfFile> openKnown(const std::string& name) const;
  void requireOpen() const;
  void requireWritable() const;

  Opening opening_;
  bool open_ = true;
};

using DatabasePtr = std::shared_ptr<Database>;

class DBEngine {
 public:
  // Opens a folder; a path with a file name at its end opens the folder of that file. The connect text is kept and
  // changes nothing. 3044 where the folder cannot be used.
  static DatabasePtr OpenDatabase(const std::string& folder, bool exclusive = false, bool readOnly = false,
                                  const std::string& connect = "");
  // Lets other cursors see what was written. Every write here reaches the file at once, so there is nothing to do.
  static void Idle() {}
};

// The short (8.3) form of a path where the system has one, else the path.
std::string getShortName(const std::string& path);
// The bracketed name by which SQL reaches the table file. On a system with short names a file that does not exist is
// made for the moment of asking, as only a file has one.
std::string TableToken(const std::string& path);
std::string TableTokenFromParts(const std::string& folder, const std::string& baseName, const std::string& extension);

}  // namespace vantrelix

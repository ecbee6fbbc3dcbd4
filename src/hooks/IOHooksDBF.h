// One value bound to one field of the current row of a table.
//
// A host gives the hook a recordset that it has, or the path of a table: database, query and recordset are then made at
// the first demand. A get that derives its value stores it and gives it again until the next put. Putting a value
// writes nothing to the table; a host writes through DBFRS. The hook catches nothing: a failure of the table engine
// passes to the caller as it is (3044 no such folder, 3011 no such table, 3061 a bad query, 3265 no such field, 3021 no
// current row, 91 a closed recordset). A value that cannot be a boolean fails DBFBValue with 13.
#pragma once

#include <string>

#include "foundation/Value.h"
#include "tables/Database.h"

namespace vantrelix {

class IOHooksDBF {
 public:
  // Folder of the database; derived from DBFPathName, in short-name form and with a backslash at its end.
  std::string DBFPath();
  void DBFPath(const std::string& folder) { DBFPath_ = folder; }
  // For the host's use; the hook does not read it.
  std::string DBFFile() const { return DBFFile_; }
  void DBFFile(const std::string& name) { DBFFile_ = name; }
  // The bracketed name of the table in a query; derived from DBFPathName.
  std::string DBFTable();
  void DBFTable(const std::string& token) { DBFTable_ = token; }
  std::string DBFField() const { return DBFField_; }
  void DBFField(const std::string& name) { DBFField_ = name; }
  // A number for the host; the hook does nothing with it.
  double DBFNValue() const { return DBFNValue_; }
  void DBFNValue(double number) { DBFNValue_ = number; }

  // Database and recordset are shared with whoever else holds them; the hook lets go of them and never closes them.
  DatabasePtr DBFDB();
  void DBFDB(DatabasePtr database) { DBFDB_ = std::move(database); }
  RecordsetPtr DBFRS();
  void DBFRS(RecordsetPtr recordset) { DBFRS_ = std::move(recordset); }

  // Never blank: "FoxPro 2.6" stands in for a blank one.
  std::string DBFConnect();
  void DBFConnect(const std::string& connect) { DBFConnect_ = connect; }
  // Never 0: a dynaset stands in for it.
  RecordsetType DBFType();
  void DBFType(RecordsetType type) { DBFType_ = type; }
  // The query as put, or made of DBFSelect, DBFTable and DBFWhere. Where DBFOrder is not blank, the made one ends in
  // " ORDER BY " and DBFWhere; a host that wants an order puts the whole query.
  std::string DBFSQL();
  void DBFSQL(const std::string& query) { DBFSQL_ = query; }

  // Moves the recordset to the first row that meets the criterion; false where none does.
  bool DBFFind(const std::string& s);

  // Putting it forgets what was derived from the former path, DBFFile and the recordset. The database stays, so a table
  // of another folder wants a new one put.
  std::string DBFPathName() const { return DBFPathName_; }
  void DBFPathName(const std::string& path);

  // The field in the current row as text, a character field's with its trailing blanks: DBFSDefault, or blank with
  // bAllowNull, where it is null. A text that is put lasts until the next get.
  std::string DBFSValue();
  void DBFSValue(const std::string& text) { DBFSValue_ = text; }
  bool DBFBDefault() const { return DBFBDefault_; }
  void DBFBDefault(bool flag) { DBFBDefault_ = flag; }
  std::string DBFSDefault() const { return DBFSDefault_; }
  void DBFSDefault(const std::string& text) { DBFSDefault_ = text; }
  // The field in the current row as a boolean. Where it is null: DBFBDefault, or with bAllowNull what the hook gave or
  // was given last.
  bool DBFBValue();
  void DBFBValue(bool flag) { DBFBValue_ = flag; }

  // Never blank: "*" stands in for a blank one.
  std::string DBFSelect();
  void DBFSelect(const std::string& list) { DBFSelect_ = list; }
  std::string DBFWhere() const { return DBFWhere_; }
  void DBFWhere(const std::string& condition) { DBFWhere_ = condition; }
  std::string DBFOrder() const { return DBFOrder_; }
  void DBFOrder(const std::string& order) { DBFOrder_ = order; }

  // Forgets path, query, field, text, number, recordset and database. bAllowNull, the two defaults, DBFBValue and
  // DBFType stay. Gives null.
  Value Disconnect();

  bool bAllowNull() const { return bAllowNull_; }
  void bAllowNull(bool flag) { bAllowNull_ = flag; }

 private:
  Value fieldValue();

  bool bAllowNull_ = false;
  bool DBFBDefault_ = false;
  std::string DBFSDefault_;
  std::string DBFPathName_;
  std::string DBFPath_;
  std::string DBFConnect_;
  std::string DBFFile_;
  std::string DBFTable_;
  std::string DBFField_;
  std::string DBFSValue_;
  double DBFNValue_ = 0;
  bool DBFBValue_ = false;
  DatabasePtr DBFDB_;
  RecordsetPtr DBFRS_;
  std::string DBFSQL_;
  std::string DBFSelect_;
  std::string DBFWhere_;
  std::string DBFOrder_;
  RecordsetType DBFType_ = RecordsetType::dynaset;
};

}  // namespace vantrelix

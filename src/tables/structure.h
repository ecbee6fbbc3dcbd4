// Making tables by the dictionary and mending their structure.
#pragma once

#include <string>

#include "tables/Database.h"
#include "tables/dictionary.h"

namespace vantrelix {

// The answers of RSTblValidRS.
namespace tableCode {
inline constexpr int fine = 0;
inline constexpr int missingFile = 1;
inline constexpr int structureUnknown = 2;
inline constexpr int inUse = 3;
inline constexpr int headerError = 4;
inline constexpr int creationError = 5;
inline constexpr int temporaryFileError = 6;
inline constexpr int unknown = 99;
}  // namespace tableCode

std::string GetTblErrText(int code);
std::string GetTblErrShort(int code);

// Makes a new table of those fields at path, replacing what is there, also under a name that differs in case only.
// False, reported, where another has that open or holds a lock of it; it is then as it was.
bool NewTable(const FieldList& fields, const std::string& path);
// Sets widths, decimals, displacements and record length of a table just made by the dictionary's rows. False,
// reported, for a table that has rows or other fields than those, or that another has open; it is then as it was.
bool ModNewDBF(const std::string& tableType, const std::string& path);

// Whether the table at path has every field of the list, made or mended first as asked. A repair holds the table
// exclusively and keeps the old file beside it as path without extension, "_YYYYMMDDHHSS.DBF". A file of no bytes
// counts as missing.
bool RSTblValid(const FieldList& fields, const std::string& path, bool repair, bool create,
                const std::string& tableType);
int RSTblValidRS(const FieldList& fields, const std::string& path, bool repair, bool create,
                 const std::string& tableType, RecordsetType openType = RecordsetType::dynaset, int openOptions = 0,
                 bool exclusive = false, bool readOnly = false);

// An open cursor over the whole table, made or mended first where needed; nothing, with a message, where it is not fit
// for use. A failure to open folder or table is thrown.
RecordsetPtr MakeDataSmTableFile(const std::string& path, const std::string& tableType);

// The next free ID in a text field: the prefix and a running number that fills the field. Rows that others have added
// since the cursor was opened count too. 3163 where the field has no room for it. The cursor stands on its last row
// afterwards.
std::string GenNewID_RS(Recordset& cursor, const std::string& field, const std::string& prefix,
                        const std::string& start);

}  // namespace vantrelix

// The table dictionary: the fields that each table type is to have, as rows of QVDATASM.DBF in the system folder.
#pragma once

#include <string>

#include "tables/Database.h"

namespace vantrelix {

// The rows of a table type in order, on the first; nothing when there are none. The type takes its place in the filter
// as it stands, so that a chain "A') Or ([Table_type] = 'B" works. Failures of folder and table are thrown.
RecordsetPtr RSDataSm(const std::string& tableType);
// The field list of a type; empty, with a log record, on failure or where the type has no rows.
FieldList FieldsFromDataSum(const std::string& tableType);
bool getIsFieldInTable(Recordset& cursor, const std::string& fieldName);

// The table type put into the filter for a site table: FACDBASE stands for five types.
std::string dictionaryFilter(const std::string& tableType);

// Makes the dictionary file from the rows that come with the library, where there is none. Gives its path.
std::string installDictionary();

}  // namespace vantrelix

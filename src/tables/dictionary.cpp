#include "tables/dictionary.h"

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kConnect = "FoxPro 2.6";

// The query for a type's rows. What goes between the quotes may itself hold the links of a chain.
std::string dictionaryQuery(const std::string& folder, const std::string& tableType) {
  return "SELECT * from " + TableTokenFromParts(folder, "QVDATASM", "DBF") + " Where ([Table_type] = '" + tableType +
         "') Order by [Datasum_id]";
}

// How far a reading of the dictionary has come: what the log is to tell of a failure.
struct Reading {
  std::string folder;
  std::string tableType;
  std::string query;
  int row = 0;
};

FieldDescription describedField(Recordset& rows) {
  FieldDescription field;
  field.Name = trim(rows.value("FLD_NAME").asText());
  field.Size = static_cast<int>(rows.value("FLD_WIDTH").asNumber());
  field.Type = fieldTypeOfWord(ChkNulls(rows.value("VB_TYPE"), "", false).asText());
  if (static_cast<int>(field.Type) < 1) {
    throw RunTimeFailure(failure::typeMismatch,
                         "The dictionary has no known VB_TYPE for the field " + field.Name + ". Correct QVDATASM.DBF.");
  }
  field.ValidationText = trim(ChkNulls(rows.value("FLD_DEC"), "", false).asText());
  return field;
}

FieldList readFields(Reading& reading) {
  SetFlag(1100);
  reading.folder = getSystemPath();
  const DatabasePtr database = DBEngine::OpenDatabase(reading.folder, false, true, kConnect);
  SetFlag(1200);
  reading.query = dictionaryQuery(reading.folder, reading.tableType);
  const RecordsetPtr rows = database->OpenRecordset(reading.query);
  if (rows->Eof()) {
    throw RunTimeFailure(failure::noCurrentRecord, "The dictionary has no rows for the table type \"" +
                                                       reading.tableType + "\". Add them to QVDATASM.DBF.");
  }
  FieldList fields;
  for (; !rows->Eof(); rows->MoveNext()) {
    SetFlag(1300);
    ++reading.row;
    fields.push_back(describedField(*rows));
  }
  SetFlag(1400);
  return fields;
}

void logReading(const Reading& reading, int number, const std::string& description) {
  std::string text = "Error in FieldsFromDataSum; Err: " + std::to_string(number) + " " + description;
  for (const std::string& line : {displayPath(reading.folder), reading.tableType, reading.query,
                                  "Row " + std::to_string(reading.row), "Flag " + std::to_string(GetFlag())}) {
    text = AddALine(text, line);
  }
  wrtTechSupNoMak(text);
}

}  // namespace

std::string dictionaryFilter(const std::string& tableType) {
  if (!equalIgnoringCase(trim(tableType), "FACDBASE")) return tableType;
  std::string chain = "FACDBASE";
  for (const char* further : {"FACTXDBASE", "FACRXDBASE", "FACRX1DBSE", "FACRX2DBSE"}) {
    chain += std::string("') Or ([Table_type] = '") + further;
  }
  return chain;
}

RecordsetPtr RSDataSm(const std::string& tableType) {
  Procedure guard(procedure::RSDataSm);
  SetFlag(100);
  const std::string folder = getSystemPath();
  const DatabasePtr database = DBEngine::OpenDatabase(folder, false, true, kConnect);
  SetFlag(200);
  RecordsetPtr rows = database->OpenRecordset(dictionaryQuery(folder, tableType));
  if (rows->Eof()) return nullptr;
  SetFlag(300);
  rows->MoveFirst();
  return rows;
}

FieldList FieldsFromDataSum(const std::string& tableType) {
  Procedure guard(procedure::FieldsFromDataSum);
  SetFlag(1000);
  Reading reading;
  reading.tableType = tableType;
  try {
    return readFields(reading);
  } catch (const RunTimeFailure& failure) {
    logReading(reading, failure.number(), failure.description());
  } catch (const std::exception& failure) {
    logReading(reading, failure::internalError, failure.what());
  }
  return {};
}

bool getIsFieldInTable(Recordset& cursor, const std::string& fieldName) {
  try {
    return cursor.Fields(fieldName).Size() >= 0;
  } catch (const RunTimeFailure&) {
    return false;
  }
}

}  // namespace vantrelix

#include "hooks/IOHooksDBF.h"

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr const char* kConnect = "FoxPro 2.6";
constexpr const char* kAllFields = "*";

bool isBlank(const std::string& text) { return getLenTrim(text) == 0; }

std::string filled(std::string& text, const char* whereBlank) {
  if (isBlank(text)) text = whereBlank;
  return text;
}

}  // namespace

std::string IOHooksDBF::DBFPath() {
  if (isBlank(DBFPath_)) DBFPath_ = ExtractFolder(getShortName(DBFPathName_));
  return DBFPath_;
}

std::string IOHooksDBF::DBFTable() {
  if (isBlank(DBFTable_)) DBFTable_ = TableToken(DBFPathName_);
  return DBFTable_;
}

std::string IOHooksDBF::DBFConnect() { return filled(DBFConnect_, kConnect); }
std::string IOHooksDBF::DBFSelect() { return filled(DBFSelect_, kAllFields); }

RecordsetType IOHooksDBF::DBFType() {
  if (DBFType_ == RecordsetType{}) DBFType_ = RecordsetType::dynaset;
  return DBFType_;
}

void IOHooksDBF::DBFPathName(const std::string& path) {
  DBFPath_.clear();
  DBFFile_.clear();
  DBFTable_.clear();
  DBFSQL_.clear();
  DBFRS_ = nullptr;
  DBFPathName_ = path;
}

std::string IOHooksDBF::DBFSQL() {
  if (!isBlank(DBFSQL_)) return DBFSQL_;
  DBFSQL_ = "SELECT " + DBFSelect() + " FROM " + DBFTable();
  if (!isBlank(DBFWhere_)) DBFSQL_ += " WHERE " + DBFWhere_;
  // The filter, not the order: hosts are used to the query as it is.
  if (!isBlank(DBFOrder_)) DBFSQL_ += " ORDER BY " + DBFWhere_;
  return DBFSQL_;
}

DatabasePtr IOHooksDBF::DBFDB() {
  if (DBFDB_) return DBFDB_;
  if (isBlank(DBFPath())) {
    throw RunTimeFailure(failure::badPath, "The hook's DBFPathName '" + displayPath(DBFPathName_) +
                                               "' names no folder. Put the full path of a table file.");
  }
  DBFDB_ = DBEngine::OpenDatabase(DBFPath_, false, false, DBFConnect());
  return DBFDB_;
}

RecordsetPtr IOHooksDBF::DBFRS() {
  if (!DBFRS_) DBFRS_ = DBFDB()->OpenRecordset(DBFSQL(), DBFType());
  return DBFRS_;
}

bool IOHooksDBF::DBFFind(const std::string& s) {
  DBFRS()->FindFirst(s);
  return !DBFRS()->NoMatch();
}

Value IOHooksDBF::fieldValue() { return DBFRS()->value(DBFField_); }

std::string IOHooksDBF::DBFSValue() {
  // A value that is not null is read once more, so that what is given is never older than the test.
  if (fieldValue().isNull()) {
    DBFSValue_ = bAllowNull_ ? "" : DBFSDefault_;
  } else {
    DBFSValue_ = fieldValue().asText();
  }
  return DBFSValue_;
}

bool IOHooksDBF::DBFBValue() {
  if (!fieldValue().isNull()) {
    DBFBValue_ = fieldValue().asBoolean();
  } else if (!bAllowNull_) {
    DBFBValue_ = DBFBDefault_;
  }
  return DBFBValue_;
}

Value IOHooksDBF::Disconnect() {
  for (std::string* text : {&DBFPathName_, &DBFPath_, &DBFConnect_, &DBFFile_, &DBFTable_, &DBFField_, &DBFSValue_,
                            &DBFSQL_, &DBFSelect_, &DBFWhere_, &DBFOrder_}) {
    text->clear();
  }
  DBFNValue_ = 0;
  DBFRS_ = nullptr;
  DBFDB_ = nullptr;
  return {};
}

}  // namespace vantrelix

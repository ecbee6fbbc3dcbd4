#include <array>

#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

struct ErrorText {
  int code;
  const char* shortText;
  const char* longText;
  bool asksForLog;
};

constexpr const char* kUnknown = "Unknown error";

constexpr std::array<ErrorText, 7> kErrors{{
    {tableCode::fine, "", "", false},
    {tableCode::missingFile, "Missing file", "The file was not found.", false},
    {tableCode::structureUnknown, "DataSumType Error",
     "There was an error determining the data structure for the specified file.", true},
    {tableCode::inUse, "Table in Use",
     "The specified file is opened for exclusive access by another user and is not available at this time.\r\n"
     "Please try again later.",
     false},
    {tableCode::headerError, "DBF Header Error", "There was an error in the data header for the specified file.", true},
    {tableCode::creationError, "Error creating file", "There was an error creating the specified file.", true},
    {tableCode::temporaryFileError, "Error creating temp file", "There was an error creating a temporary file.", true},
}};

const ErrorText* find(int code) {
  for (const ErrorText& error : kErrors) {
    if (error.code == code) return &error;
  }
  return nullptr;
}

}  // namespace

std::string GetTblErrText(int code) {
  const ErrorText* error = find(code);
  if (error == nullptr) return kUnknown;
  if (!error->asksForLog) return error->longText;
  return error->longText + std::string(kBlankLine) + "Please email the QVTechSup.TXT file to:" + kLineBreak +
         supportAddress() + " along with a description of what you were trying to do when this error occurred.";
}

std::string GetTblErrShort(int code) {
  const ErrorText* error = find(code);
  return error == nullptr ? kUnknown : error->shortText;
}

}  // namespace vantrelix

// The two tables of a line library: their names, their fields, and the texts that ask them.
#pragma once

#include <string>
#include <string_view>

#include "tables/Database.h"

namespace vantrelix {

inline constexpr const char* kLineConnect = "FoxPro 2.5;";

// Fields of the master table (LMS) and of the points (LND).
inline constexpr const char* kLineIdField = "LType_ID";
inline constexpr const char* kLineDescriptionField = "LN_TYPE";
inline constexpr const char* kLineFreqField = "Freq";    // MHz
inline constexpr const char* kLineAttenField = "Atten";  // dB per 100 ft

// What the records of a list hold of a line, in characters.
inline constexpr std::size_t kLineDescriptionWidth = 75;
inline constexpr std::size_t kLineFileWidth = 8;
inline constexpr std::size_t kLineIdWidth = 10;

struct LineTables {
  std::string folder;  // the library's form, no trailing backslash
  std::string master;  // "LMSX0001"
  std::string points;  // "LNDX0001": LND and the five characters behind the first three of the master

  std::string masterPath() const;
  std::string pointsPath() const;
};

// The tables of a library by the name of its LMS file, with or without the extension.
LineTables lineTables(const std::string& folder, const std::string& LineFile);

// A master's name as it has to be for a new library: LMS and five more characters.
bool isLineLibraryName(std::string_view stem);

// The rows of a line type, by table and ID; `order` is blank or what follows the filter.
RecordsetPtr linesOfType(const std::string& folder, const std::string& table, const std::string& LineID,
                         const std::string& order = "");

// The number of a field. 3265 where the table does not have it.
std::size_t lineField(const DbfFile& table, std::string_view name);

}  // namespace vantrelix

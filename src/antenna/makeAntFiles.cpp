#include "antenna/makeAntFiles.h"

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

// A library code has five characters, so a stem has eight.
constexpr std::size_t kStemLength = 8;

struct LibraryTable {
  const char* prefix;
  const char* tableType;
  int procedureNumber;
};

constexpr LibraryTable kMaster{"AMS", "AMSPDBASE", procedure::MakeAMSFile};
constexpr LibraryTable kHorizontal{"AHD", "AHDTADBASE", procedure::MakeAHDFile};
constexpr LibraryTable kVertical{"AVD", "AVDTADBASE", procedure::MakeAVDFile};

// Callers learn of a failure, a stem of another length among them, by the missing cursor alone.
// A blank folder is the antennas folder.
RecordsetPtr makeFile(const LibraryTable& table, const std::string& code, const std::string& libraryFolder = "") {
  const Procedure guard(table.procedureNumber);
  const std::string stem = table.prefix + code;
  try {
    SetFlag(100);
    const std::string folder = getLenTrim(libraryFolder) > 0 ? libraryFolder : getAntennasPath();
    SetFlag(200);
    if (getLenTrim(stem) != kStemLength) return {};
    SetFlag(300);
    return MakeDataSmTableFile(setPathName(folder, stem + ".DBF"), table.tableType);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, AddALine(stem, std::string("Error opening Antenna Library ") + table.prefix + " file"));
  } catch (const std::exception& failure) {
    ErrHand(failure, AddALine(stem, std::string("Error opening Antenna Library ") + table.prefix + " file"));
  }
  return {};
}

}  // namespace

std::string MakeAntFiles(const std::string& code) {
  const Procedure guard(procedure::MakeAntFiles);
  try {
    long flag = 0;
    for (const LibraryTable& table : {kMaster, kHorizontal, kVertical}) {
      SetFlag(flag += 100);
      makeFile(table, code);
    }
    return "";
  } catch (const RunTimeFailure& failure) {
    std::string text = AddALine(code, "Error opening Antenna Library ");
    ErrHand(failure, text);
    return text;
  }
}

RecordsetPtr MakeAMSFile(const std::string& code) { return makeFile(kMaster, code); }
RecordsetPtr MakeAHDFile(const std::string& code) { return makeFile(kHorizontal, code); }
RecordsetPtr MakeAVDFile(const std::string& code) { return makeFile(kVertical, code); }

LibraryTables openLibraryTables(const std::string& folder, const std::string& code) {
  LibraryTables tables{makeFile(kMaster, code, folder), {}, {}};
  if (tables.rsAMS) tables.rsAHD = makeFile(kHorizontal, code, folder);
  if (tables.rsAHD) tables.rsAVD = makeFile(kVertical, code, folder);
  return tables;
}

std::string partnerTable(const std::string& amsName, const std::string& prefix) {
  return prefix + midCharacters(amsName, prefix.size() + 1);
}

}  // namespace vantrelix

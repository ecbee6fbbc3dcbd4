#include "makeLibrary.h"

#include "antenna/hdWrtAntDBF.h"
#include "benchSupport.h"
#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "tables/RowBatch.h"
#include "tables/installSuite.h"

namespace vantrelix::bench {

namespace {

LibraryTables openTables(const std::string& folder) {
  LibraryTables tables = openLibraryTables(folder, kCode);
  require(tables.rsAVD != nullptr, "the tables of the library cannot be made");
  return tables;
}

}  // namespace

void useSuite(const std::filesystem::path& folder) {
  const std::string library = platform::current().fromMachine(folder.string());
  if (!std::filesystem::exists(folder)) {
    std::filesystem::create_directories(folder);
    installSuite(library);
  }
  resetSuitePaths();
  setSuiteDir(library);
}

void appendAntenna(const MadeAntenna& antenna, const LibraryTables& tables) {
  const MasterRow& row = antenna.master;
  const std::string reason =
      HDwrtAntDBF(kCode, row.description, row.gain, row.gainUnits, kPoints, antenna.horizontal.angles,
                  antenna.horizontal.values, kPoints, antenna.vertical.angles, antenna.vertical.values, row.fLow,
                  row.fHigh, tables.rsAMS, tables.rsAHD, tables.rsAVD);
  require(reason.empty(), reason);
}

LibraryTables makeLibrary(const std::string& folder, int antennas) {
  LibraryTables tables = openTables(folder);
  const MadeLibrary made(antennas);
  for (int place = 0; place < antennas; ++place) appendAntenna(made.at(place), tables);
  return tables;
}

RecordsetPtr makeMasterTable(const std::string& folder, int antennas, int firstPlace) {
  RecordsetPtr rows = openTables(folder).rsAMS;
  const Field id = rows->Fields("ATYPE_ID"), description = rows->Fields("ANTENNA");
  RowBatch batch(*rows);
  for (int i = 0; i < antennas; ++i) {
    batch.AddNew();
    batch.put(id, idAt(firstPlace + i));
    batch.put(description, nameOf(i));
    batch.Update();
  }
  batch.flush();
  return rows;
}

}  // namespace vantrelix::bench

// Adds the antennas of an import run to a library, whole or not at all.
#pragma once

#include <string>

#include "import/ImportFormat.h"
#include "import/importReport.h"
#include "tables/Database.h"

namespace vantrelix {

class LibraryWriter {
 public:
  // Empty cursors are opened at the first antenna with points. What is given outlives the writer.
  LibraryWriter(const std::string& Mfg, const RecordsetPtr& rsAMS, const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD,
                ImportReport& report);

  enum class Written { yes, failedGoOn, failedStop };
  // Appends an antenna and notes it; one without points is passed over. A failure is noted, logged and told in a box
  // that asks whether to go on; the rows written before it are marked deleted again; where even that fails, the
  // box says that a part is left.
  Written write(const std::string& path, const ImportedAntenna& antenna);

 private:
  void openTables();
  std::string append(const ImportedAntenna& antenna);
  void noteAdded(const std::string& path, const ImportedAntenna& antenna);
  Written tellError(const std::string& path, const ImportedAntenna& antenna, const std::string& reason);

  const std::string& Mfg_;
  RecordsetPtr rsAMS_, rsAHD_, rsAVD_;
  ImportReport& report_;
};

}  // namespace vantrelix

// An installation with an empty antenna library and a folder of pattern files for it.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "antenna/antennaList.h"
#include "antenna/makeAntFiles.h"
#include "foundation/suitePaths.h"
#include "import/importRun.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"

namespace vantrelix::test {

class ImportSuite : public ::testing::Test {
 protected:
  ImportSuite() { installSuite(suite.path()); }

  static constexpr const char* kMfg = "T0001";

  // A file of two cuts under the name given.
  std::string file(const std::string& name, const std::string& antennaName, const std::string& gain = "10 dBd") const {
    return files.write(
        name, "NAME " + antennaName + "\nFREQUENCY 450\nGAIN " + gain + "\nHORIZONTAL 2\n0 0\n90 3\nVERTICAL 1\n0 0\n");
  }

  ImportResult run(const std::vector<std::string>& paths, bool preview = false, const ImportOwner& owner = {},
                   const ImportFormat& format = *findImportFormat("generic")) {
    const RecordsetPtr ams = MakeAMSFile(kMfg);
    const RecordsetPtr ahd = MakeAHDFile(kMfg);
    const RecordsetPtr avd = MakeAVDFile(kMfg);
    return importFiles(format, kMfg, ams, ahd, avd, paths, preview, owner);
  }

  // Descriptions of the library's antennas, in their order.
  static std::vector<std::string> descriptions() {
    std::vector<std::string> result;
    for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), std::string("AMS") + kMfg)) {
      result.push_back(entry.description);
    }
    return result;
  }

  TempSuite suite;
  TempFolder files;
};

}  // namespace vantrelix::test

// Imports for which the names of the files matter: files are written under the names that the imports are given.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "PairedImport.h"

namespace vantrelix::test {

class PreviewedImport : public PairedImport {
 protected:
  explicit PreviewedImport(const std::string& format) : PairedImport(format) {}

  // The antenna of a run that gives exactly one, with nothing failed.
  ImportedAntenna only(const std::vector<std::string>& names) {
    const ImportResult result = import(names);
    EXPECT_EQ(result.ErrorCount, 0) << ::testing::PrintToString(result.failed);
    EXPECT_EQ(antennas.size(), 1u);
    return antennas.size() == 1 ? antennas.front() : ImportedAntenna();
  }
  // The reason why the one file failed; blank where it did not.
  std::string failure(const std::string& name) {
    const ImportResult result = import({name});
    EXPECT_EQ(result.failed.size(), static_cast<std::size_t>(result.ErrorCount));
    return result.failed.empty() ? "" : result.failed.front();
  }

  // Both give the name.
  std::string write(const std::string& name, const std::string& text) const {
    files.write(name, text);
    return name;
  }
  std::string copied(const std::string& name, const std::string& as = "") const {
    return write(as.empty() ? name : as, sample(name));
  }

  // Imports the text cut behind each of its bytes, as prefix + number + suffix; gives how many of the files failed. The
  // others are whole antennas of the library.
  int failuresOfCutTexts(const std::string& text, const std::string& prefix, const std::string& suffix) {
    std::vector<std::string> names;
    for (std::size_t length = 0; length < text.size(); ++length) {
      names.push_back(write(prefix + std::to_string(length) + suffix, text.substr(0, length)));
    }
    const ImportResult result = import(names);
    EXPECT_EQ(result.filesRead, static_cast<long>(names.size()));
    EXPECT_EQ(antennas.size() + static_cast<std::size_t>(result.ErrorCount), names.size());
    expectWholeAntennas();
    return result.ErrorCount;
  }
  // The library holds the antennas of the last run, each with the points that were read, and no others.
  void expectWholeAntennas() const {
    using Points = std::pair<long, long>;
    std::vector<Points> read, stored;
    for (const ImportedAntenna& antenna : antennas) {
      if (antenna.HorCount > 0 || antenna.VerCount > 0) read.push_back({antenna.HorCount, antenna.VerCount});
    }
    for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), std::string("AMS") + kMfg)) {
      stored.push_back({entry.horizontalPoints, entry.verticalPoints});
    }
    EXPECT_THAT(stored, ::testing::UnorderedElementsAreArray(read));
  }
};

}  // namespace vantrelix::test

// Imports of the damaged samples of a format, on top of those of files by their names.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "PreviewedImport.h"

namespace vantrelix::test {

class SampledImport : public PreviewedImport {
 protected:
  explicit SampledImport(const std::string& format) : PreviewedImport(format), name_(format) {}

  // The samples whose names begin with "damaged-".
  std::vector<std::string> damagedSamples() const {
    std::vector<std::string> names;
    const std::filesystem::path folder = std::filesystem::path(VANTRELIX_SOURCE_DIR) / "tests/data" / name_;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with("damaged-")) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  // In one run each damaged sample costs one count and nothing else, but for those named, which are read.
  void expectDamagedSamplesToFailBut(const std::vector<std::string>& readAllTheSame) {
    const std::vector<std::string> names = damagedSamples();
    EXPECT_GE(names.size(), 8u);
    for (const std::string& name : names) copied(name);
    const ImportResult result = import(names);
    std::vector<std::string> paths, failed;
    for (const std::string& name : names) {
      if (std::find(readAllTheSame.begin(), readAllTheSame.end(), name) == readAllTheSame.end()) {
        paths.push_back(files.machine(name));
      }
    }
    for (const std::string& text : result.failed) failed.push_back(text.substr(0, text.find('\r')));
    EXPECT_EQ(failed, paths);
    EXPECT_EQ(result.ErrorCount, static_cast<int>(paths.size()));
    EXPECT_EQ(antennas.size(), readAllTheSame.size());
    expectWholeAntennas();
  }

 private:
  std::string name_;
};

}  // namespace vantrelix::test

// A format of paired files, imported from files of a folder; what was read is kept as the preview shows it.
#pragma once

#include <string>
#include <vector>

#include "ImportSuite.h"

namespace vantrelix::test {

class PairedImport : public ImportSuite {
 protected:
  explicit PairedImport(const std::string& format) : format_(*findImportFormat(format)) {}

  // Imports the named files of the folder in one run; the antennas that were read whole are added to `antennas`.
  ImportResult import(const std::vector<std::string>& names) {
    std::vector<std::string> paths;
    for (const std::string& name : names) paths.push_back(files.file(name));
    antennas.clear();
    ImportOwner owner;
    owner.preview = [this](const std::string& caption, const ImportedAntenna& antenna) {
      captions.push_back(caption);
      antennas.push_back(antenna);
      return answer;
    };
    return run(paths, true, owner, format_);
  }

  // The one antenna of one chosen file; fails the test where it is not read.
  ImportedAntenna importOne(const std::string& name) {
    const ImportResult result = import({name});
    EXPECT_EQ(result.ErrorCount, 0) << ::testing::PrintToString(result.failed);
    EXPECT_EQ(antennas.size(), 1u);
    return antennas.empty() ? ImportedAntenna() : antennas.front();
  }
  ImportedAntenna importText(const std::string& name, const std::string& text) {
    files.write(name, text);
    return importOne(name);
  }

  // The reason that one file fails for; blank where it is read.
  std::string failureOf(const std::string& name, const std::string& text) {
    files.write(name, text);
    const ImportResult result = import({name});
    EXPECT_EQ(result.ErrorCount, static_cast<int>(result.failed.size()));
    EXPECT_EQ(result.added.size() + result.failed.size(), 1u);
    return result.failed.empty() ? "" : result.failed.front();
  }

  // Copies the samples of the format into the folder.
  void copySamples(const std::vector<std::string>& names) const {
    for (const std::string& name : names) files.write(name, sample(name));
  }
  std::string sample(const std::string& name) const {
    return readMachineFile(std::string(VANTRELIX_SOURCE_DIR) + "/tests/data/" + format_.name + "/" + name);
  }

  // Imports files of any bytes, cut short anywhere and too long, and a folder, then the good file: each fails or is
  // read by itself, and what the library holds then is what was read.
  void expectBadFilesToHarmNothing(const std::string& goodName, const std::string& goodText);

  std::vector<ImportedAntenna> antennas;
  std::vector<std::string> captions;
  PreviewAnswer answer = PreviewAnswer::add;

 private:
  const ImportFormat& format_;
};

}  // namespace vantrelix::test

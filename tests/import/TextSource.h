// A file given as text, without a partner, and the antennas that its reader stores.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "import/ImportFormat.h"
#include "import/TextLines.h"

namespace vantrelix::test {

class TextSource : public ImportSource {
 public:
  TextSource(std::string path, const std::string& text) : path_(std::move(path)), lines_(text) {}

  const std::string& path() const override { return path_; }
  TextLines& lines() override { return lines_; }
  TextLines* openPartner(const std::string&) override { return nullptr; }
  Stored store(const ImportedAntenna& antenna) override {
    stored.push_back(antenna);
    return Stored::written;
  }

  std::vector<ImportedAntenna> stored;

 private:
  std::string path_;
  TextLines lines_;
};

}  // namespace vantrelix::test

// One chosen file of an import run, with its partner.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "import/ImportFormat.h"
#include "import/TextLines.h"

namespace vantrelix {

// A file of more bytes is read by no filter.
inline constexpr std::uint64_t kLongestImportFile = (std::uint64_t{1} << 31) - 1;

// The paths of the files opened so far in a run.
class DoneFiles {
 public:
  // Names that differ in case alone are of one file.
  bool hold(const std::string& path) const;
  void add(const std::string& path);
  long count() const { return static_cast<long>(paths_.size()); }

 private:
  std::vector<std::string> paths_;  // in capitals
};

class ImportedFile : public ImportSource {
 public:
  using Store = std::function<Stored(const ImportedAntenna& antenna)>;

  // `path` and `done` outlive the file. `store` takes the antennas of a format that stores its antennas itself.
  ImportedFile(const std::string& path, DoneFiles& done, Store store);

  const std::string& path() const override { return path_; }
  // Opens the file at the first call; both fail as readWholeFile does.
  TextLines& lines() override;
  TextLines* openPartner(const std::string& path) override;
  Stored store(const ImportedAntenna& antenna) override { return store_(antenna); }

  // Where reading stopped: "line 7", with the partner's path where that was opened; no line where none was reached.
  std::string place() const;

 private:
  std::unique_ptr<TextLines> open(const std::string& path);

  const std::string& path_;
  DoneFiles& done_;
  Store store_;
  std::unique_ptr<TextLines> lines_, partner_;
  std::string partnerPath_;
};

// Reads the file by the format. Whatever fails sets ErrFlag and, ending in the place, the reason.
void readImported(const ImportFormat& format, ImportedFile& file, ImportedAntenna& antenna);

}  // namespace vantrelix

#include "import/identifyFile.h"

#include <exception>
#include <memory>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/importedFile.h"
#include "import/pairedFiles.h"
#include "platform/Platform.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix {

namespace {

// A file that one format tries: its antennas are kept here and not stored.
class Trial : public ImportSource {
 public:
  Trial(const std::string& path, const std::string& bytes) : path_(path), lines_(bytes) { done_.add(path); }

  const std::string& path() const override { return path_; }
  TextLines& lines() override { return lines_; }
  TextLines* openPartner(const std::string& path) override {
    if (!partnerExists(path) || done_.hold(path)) return nullptr;
    done_.add(path);
    partner_ = std::make_unique<TextLines>(platform::readWholeFile(path, kLongestImportFile));
    return partner_.get();
  }
  Stored store(const ImportedAntenna& antenna) override {
    const bool hasPoints = antenna.HorCount > 0 || antenna.VerCount > 0;
    if (hasPoints) antennas.push_back(antenna);
    return Stored::written;
  }

  std::vector<ImportedAntenna> antennas;

 private:
  const std::string& path_;
  TextLines lines_;
  std::unique_ptr<TextLines> partner_;
  DoneFiles done_;
};

std::vector<ImportedAntenna> tryFormat(const ImportFormat& format, const std::string& path, const std::string& bytes) {
  Trial trial(path, bytes);
  ImportedAntenna antenna;
  try {
    format.read(trial, antenna);
  } catch (const std::exception&) {
    return {};  // this format does not accept it, which is the answer
  }
  if (antenna.ErrFlag != 0) return {};
  if (!(format.traits & ImportFormat::storesItself)) trial.store(antenna);
  return std::move(trial.antennas);
}

}  // namespace

std::vector<AcceptingFormat> identifyFile(const std::string& path) {
  const std::string bytes = platform::readWholeFile(path, kLongestImportFile);
  ScriptedDesktop silent;
  silent.policy = ScriptedDesktop::assume(ScriptedDesktop::Assume::no);
  const DesktopInUse inUse(silent);
  std::vector<AcceptingFormat> accepting;
  for (const ImportFormat& format : importFormats()) {
    std::vector<ImportedAntenna> antennas = tryFormat(format, path, bytes);
    if (!antennas.empty()) accepting.push_back({&format, std::move(antennas)});
  }
  return accepting;
}

}  // namespace vantrelix

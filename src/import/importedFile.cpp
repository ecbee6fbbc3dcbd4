#include "import/importedFile.h"

#include <exception>
#include <utility>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "import/pairedFiles.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

bool DoneFiles::hold(const std::string& path) const { return StrInArray(upperCase(path), paths_); }

void DoneFiles::add(const std::string& path) { paths_.push_back(upperCase(path)); }

ImportedFile::ImportedFile(const std::string& path, DoneFiles& done, Store store)
    : path_(path), done_(done), store_(std::move(store)) {}

TextLines& ImportedFile::lines() {
  if (!lines_) lines_ = open(path_);
  return *lines_;
}

TextLines* ImportedFile::openPartner(const std::string& path) {
  if (!partnerExists(path) || done_.hold(path)) return nullptr;
  partnerPath_ = path;  // also the place of a failure to open it
  partner_ = open(path);
  return partner_.get();
}

std::unique_ptr<TextLines> ImportedFile::open(const std::string& path) {
  done_.add(path);
  return std::make_unique<TextLines>(platform::readWholeFile(path, kLongestImportFile));
}

std::string ImportedFile::place() const {
  const bool inPartner = !partnerPath_.empty();
  const TextLines* last = inPartner ? partner_.get() : lines_.get();
  std::string file = inPartner ? displayPath(partnerPath_) : "";
  if (!last || last->lineNumber() == 0) return file;
  return "line " + std::to_string(last->lineNumber()) + (file.empty() ? "" : " of " + file);
}

void readImported(const ImportFormat& format, ImportedFile& file, ImportedAntenna& antenna) {
  try {
    file.lines();
    format.read(file, antenna);
    if (antenna.ErrFlag != 0 && antenna.reason.empty()) {
      antenna.reason = "The file does not hold what its format asks for";
    }
  } catch (const RunTimeFailure& failure) {
    antenna.fail(modErrStr(failure));
  } catch (const std::exception& failure) {
    antenna.fail(failure.what());
  }
  const std::string place = file.place();
  const bool told = place.empty() || antenna.reason.find(place) != std::string::npos;
  if (antenna.ErrFlag != 0 && !told) antenna.reason += " (" + place + ")";
}

}  // namespace vantrelix

#include "import/importedFile.h"

#include <exception>
#include <utility>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
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
  if (!getFileExistLEN(path, true) || done_.hold(path)) return nullptr;
  partner_ = open(path);
  partnerPath_ = path;
  return partner_.get();
}

std::unique_ptr<TextLines> ImportedFile::open(const std::string& path) {
  done_.add(path);
  return std::make_unique<TextLines>(platform::readWholeFile(path, kLongestImportFile));
}

std::string ImportedFile::place() const {
  const TextLines* last = partner_ ? partner_.get() : lines_.get();
  if (!last) return "";
  std::string file = partner_ ? displayPath(partnerPath_) : "";
  if (last->lineNumber() == 0) return file;
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
  if (antenna.ErrFlag != 0 && !file.place().empty()) antenna.reason += " (" + file.place() + ")";
}

}  // namespace vantrelix

#include "import/importRun.h"

#include <optional>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "import/LibraryWriter.h"
#include "import/TextLines.h"
#include "import/importedFile.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

// Takes the preview away at the end of a run, before the last box, also where a preview failed.
class PreviewEnd {
 public:
  explicit PreviewEnd(const ImportOwner& owner) : owner_(owner) {}
  ~PreviewEnd() {
    if (owner_.unloadPreview) owner_.unloadPreview();
  }
  PreviewEnd(const PreviewEnd&) = delete;
  PreviewEnd& operator=(const PreviewEnd&) = delete;

 private:
  const ImportOwner& owner_;
};

class ImportRun {
 public:
  ImportRun(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS, const RecordsetPtr& rsAHD,
            const RecordsetPtr& rsAVD, bool preview, const ImportOwner& owner)
      : format_(format), writer_(Mfg, rsAMS, rsAHD, rsAVD, report_), Preview_(preview), owner_(owner) {}

  ImportResult run(const std::vector<std::string>& files);

 private:
  enum class Next { file, end };

  std::optional<SkipReason> reasonToSkip(const std::string& path) const;
  void skipRest(const std::vector<std::string>& files, std::size_t from);
  void showProgress(std::size_t position, std::size_t count, const std::string& path) const;
  std::size_t importAll(const std::vector<std::string>& files);
  Next importNext(const std::vector<std::string>& files, std::size_t index);
  Next importFile(const std::string& path);
  PreviewAnswer askPreview(const std::string& path, const ImportedAntenna& antenna);
  ImportSource::Stored store(const std::string& path, const ImportedAntenna& antenna);

  const ImportFormat& format_;
  ImportReport report_;
  LibraryWriter writer_;
  bool Preview_;
  const ImportOwner& owner_;
  DoneFiles DoneFiles_;
  std::string PolLetter_;  // of the file read before
};

// The test of the extension minds case: a packed file in lower-case letters passes it.
std::optional<SkipReason> ImportRun::reasonToSkip(const std::string& path) const {
  if (!getFileExistLEN(path, true) && !platform::current().folderExists(path)) return SkipReason::missing;
  const std::string extension = ExtractExtension(path, 3);
  if (extension == "EXE" || extension == "ZIP") return SkipReason::packed;
  if (DoneFiles_.hold(path)) return SkipReason::readBefore;
  return std::nullopt;
}

void ImportRun::skipRest(const std::vector<std::string>& files, std::size_t from) {
  for (std::size_t index = from; index < files.size(); ++index) {
    if (getLenTrim(files[index]) > 0) report_.skip(files[index], SkipReason::runEnded);
  }
}

void ImportRun::showProgress(std::size_t position, std::size_t count, const std::string& path) const {
  if (!owner_.progress) return;
  try {
    if (owner_.filesDone) owner_.filesDone(static_cast<long>(position) - 1, static_cast<long>(count));
    owner_.progress("Working on file " + formatNumber(static_cast<double>(position), kCountFormat) + " of " +
                    formatNumber(static_cast<double>(count), kCountFormat) + ": " + ExtractFileName(path));
    desktop().doEvents();
  } catch (const std::exception&) {
    // An owner that cannot show its progress does not stop the run.
  }
}

ImportSource::Stored ImportRun::store(const std::string& path, const ImportedAntenna& antenna) {
  using Stored = ImportSource::Stored;
  using Written = LibraryWriter::Written;
  const PreviewAnswer answer = askPreview(path, antenna);
  if (answer == PreviewAnswer::cancel) return Stored::cancelled;
  if (answer == PreviewAnswer::skip) return Stored::skipped;
  const Written written = writer_.write(path, antenna);
  if (written == Written::yes) return Stored::written;
  return written == Written::failedGoOn ? Stored::failedGoOn : Stored::failedStop;
}

PreviewAnswer ImportRun::askPreview(const std::string& path, const ImportedAntenna& antenna) {
  if (!Preview_ || !owner_.preview) return PreviewAnswer::add;
  ImportedAntenna shown = antenna;
  for (std::string* word : {&shown.AntName, &shown.GainUnits}) *word = TextLines::shownText(*word);
  const std::string caption =
      format_.previewCaption + kLineBreak + "File: " + displayPath(path) + kLineBreak + shown.AntName;
  const PreviewAnswer answer = owner_.preview(caption, shown);
  if (answer != PreviewAnswer::noPreview) return answer;
  if (format_.traits & ImportFormat::noPreviewEndsPreviews) Preview_ = false;
  return PreviewAnswer::add;
}

ImportRun::Next ImportRun::importFile(const std::string& path) {
  using Stored = ImportSource::Stored;
  ImportedAntenna antenna;
  if (format_.traits & ImportFormat::keepsPlane) antenna.PolLetter = PolLetter_;
  ImportedFile file(path, DoneFiles_, [&](const ImportedAntenna& read) { return store(path, read); });
  readImported(format_, file, antenna);
  PolLetter_ = antenna.PolLetter;
  if (antenna.ErrFlag != 0) {
    report_.countError(path, antenna.reason);
    return Next::file;
  }
  if (format_.traits & ImportFormat::storesItself) return Next::file;
  const Stored stored = store(path, antenna);
  return stored == Stored::cancelled || stored == Stored::failedStop ? Next::end : Next::file;
}

ImportRun::Next ImportRun::importNext(const std::vector<std::string>& files, std::size_t index) {
  const std::string& file = files[index];
  if (getLenTrim(file) == 0) return Next::file;
  if (const std::optional<SkipReason> reason = reasonToSkip(file)) {
    report_.skip(file, *reason);
    return Next::file;
  }
  showProgress(index + 1, files.size(), file);
  try {
    return importFile(file);
  } catch (const RunTimeFailure& failure) {
    report_.countError(file, modErrStr(failure));
  } catch (const std::exception& failure) {
    report_.countError(file, failure.what());
  }
  return Next::file;
}

// Gives the number of files that had their turn.
std::size_t ImportRun::importAll(const std::vector<std::string>& files) {
  const PreviewEnd previewEnd(owner_);
  std::size_t index = 0;
  Next next = Next::file;
  while (next == Next::file && index < files.size() && !(owner_.cancelled && owner_.cancelled())) {
    next = importNext(files, index++);
  }
  return index;
}

ImportResult ImportRun::run(const std::vector<std::string>& files) {
  const Procedure guard(procedure::importFiles);
  try {
    skipRest(files, importAll(files));
  } catch (...) {
    report_.tellErrors();
    throw;
  }
  report_.tellErrors();
  report_.countRead(DoneFiles_.count());
  return report_.take();
}

}  // namespace

ImportResult importFiles(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                         const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const std::vector<std::string>& files,
                         bool preview, const ImportOwner& owner) {
  return ImportRun(format, Mfg, rsAMS, rsAHD, rsAVD, preview, owner).run(files);
}

}  // namespace vantrelix

#include "import/importRun.h"

#include <limits>
#include <memory>
#include <optional>

#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "platform/Platform.h"
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
      : format_(format), Mfg_(Mfg), rsAMS_(rsAMS), rsAHD_(rsAHD), rsAVD_(rsAVD), Preview_(preview), owner_(owner) {}

  ImportResult run(const std::vector<std::string>& files);

 private:
  enum class Next { file, end };

  std::optional<SkipReason> reasonToSkip(const std::string& path) const;
  void skipRest(const std::vector<std::string>& files, std::size_t from);
  std::string log(const std::string& text);
  void showProgress(std::size_t position, std::size_t count, const std::string& path) const;
  class Source;
  void read(Source& source, ImportedAntenna& antenna, std::string& reason);
  std::size_t importAll(const std::vector<std::string>& files);
  Next importNext(const std::vector<std::string>& files, std::size_t index);
  Next importFile(const std::string& path);
  PreviewAnswer askPreview(const std::string& path, const ImportedAntenna& antenna);
  Next write(const std::string& path, const ImportedAntenna& antenna, bool& failed);
  Next tellWriteError(const std::string& path, const ImportedAntenna& antenna, const std::string& reason);
  void noteAdded(const std::string& path, const ImportedAntenna& antenna);
  void noteFailed(const std::string& path, const std::string& reason);
  void countError(const std::string& path, const std::string& reason);
  void tellErrors() const;

  const ImportFormat& format_;
  const std::string& Mfg_;
  const RecordsetPtr& rsAMS_;
  const RecordsetPtr& rsAHD_;
  const RecordsetPtr& rsAVD_;
  bool Preview_;
  const ImportOwner& owner_;
  std::vector<std::string> DoneFiles_;
  std::string PolLetter_;  // of the file read before
  std::string logFailure_;
  ImportResult result_;
};

// The test of the extension minds case: a packed file in lower-case letters passes it.
std::optional<SkipReason> ImportRun::reasonToSkip(const std::string& path) const {
  if (!getFileExistLEN(path, true) && !platform::current().folderExists(path)) return SkipReason::missing;
  const std::string extension = ExtractExtension(path, 3);
  if (extension == "EXE" || extension == "ZIP") return SkipReason::packed;
  if (StrInArray(upperCase(path), DoneFiles_)) return SkipReason::readBefore;
  return std::nullopt;
}

void ImportRun::skipRest(const std::vector<std::string>& files, std::size_t from) {
  for (std::size_t index = from; index < files.size(); ++index) {
    if (getLenTrim(files[index]) > 0) result_.skipped.push_back({files[index], SkipReason::runEnded});
  }
}

// Logs a text; where the log cannot be written, gives the reason behind a blank line, for whoever tells the text.
std::string ImportRun::log(const std::string& text) {
  try {
    wrtTechSupNoMak(text);
    return "";
  } catch (const RunTimeFailure& failure) {
    logFailure_ = kBlankLine + std::string("The log file could not be written:") + kLineBreak + modErrStr(failure);
    return logFailure_;
  }
}

void ImportRun::showProgress(std::size_t position, std::size_t count, const std::string& path) const {
  if (!owner_.progress) return;
  try {
    owner_.progress("Working on file " + formatNumber(static_cast<double>(position), kCountFormat) + " of " +
                    formatNumber(static_cast<double>(count), kCountFormat) + ": " + ExtractFileName(path));
    desktop().doEvents();
  } catch (const std::exception&) {
    // An owner that cannot show its progress does not stop the run.
  }
}

// One chosen file of the run.
class ImportRun::Source : public ImportSource {
 public:
  Source(ImportRun& run, const std::string& path) : run_(run), path_(path) {}

  const std::string& path() const override { return path_; }
  TextLines& lines() override {
    if (!lines_) lines_ = open(path_);
    return *lines_;
  }
  TextLines* openPartner(const std::string& path) override {
    if (!getFileExistLEN(path, true) || StrInArray(upperCase(path), run_.DoneFiles_)) return nullptr;
    partner_ = open(path);
    partnerPath_ = path;
    return partner_.get();
  }
  Stored store(const ImportedAntenna& antenna) override {
    switch (run_.askPreview(path_, antenna)) {
      case PreviewAnswer::cancel:
        return Stored::cancelled;
      case PreviewAnswer::skip:
        return Stored::skipped;
      case PreviewAnswer::add:
      case PreviewAnswer::noPreview:
        break;
    }
    bool failed = false;
    if (run_.write(path_, antenna, failed) == Next::end) return Stored::failedStop;
    return failed ? Stored::failedGoOn : Stored::written;
  }

  // Where reading stopped: the file opened last and its line.
  std::string place() const {
    const TextLines* last = partner_ ? partner_.get() : lines_.get();
    if (!last || last->lineNumber() == 0) return "";
    return "line " + std::to_string(last->lineNumber()) +
           (partner_ ? " of " + displayPath(partnerPath_) : std::string());
  }

 private:
  std::unique_ptr<TextLines> open(const std::string& path) {
    ++run_.result_.filesRead;
    run_.DoneFiles_.push_back(upperCase(path));
    return std::make_unique<TextLines>(platform::readWholeFile(path, kLongestImportFile));
  }

  ImportRun& run_;
  const std::string& path_;
  std::unique_ptr<TextLines> lines_, partner_;
  std::string partnerPath_;
};

void ImportRun::read(Source& source, ImportedAntenna& antenna, std::string& reason) {
  try {
    source.lines();
    format_.read(source, antenna);
    if (antenna.ErrFlag != 0) reason = "The file does not hold what its format asks for";
  } catch (const RunTimeFailure& failure) {
    antenna.ErrFlag = -1;
    reason = modErrStr(failure);
  } catch (const std::exception& failure) {
    antenna.ErrFlag = -1;
    reason = failure.what();
  }
  if (antenna.ErrFlag != 0 && !source.place().empty()) reason += " (" + source.place() + ")";
}

PreviewAnswer ImportRun::askPreview(const std::string& path, const ImportedAntenna& antenna) {
  if (!Preview_ || !owner_.preview) return PreviewAnswer::add;
  const std::string caption =
      format_.previewCaption + kLineBreak + "File: " + displayPath(path) + kLineBreak + antenna.AntName;
  const PreviewAnswer answer = owner_.preview(caption, antenna);
  if (answer != PreviewAnswer::noPreview) return answer;
  if (format_.traits & ImportFormat::noPreviewEndsPreviews) Preview_ = false;
  return PreviewAnswer::add;
}

void ImportRun::noteFailed(const std::string& path, const std::string& reason) {
  result_.failed.push_back(displayPath(path) + kLineBreak + reason);
}

void ImportRun::countError(const std::string& path, const std::string& reason) {
  if (result_.ErrorCount < std::numeric_limits<std::int16_t>::max()) ++result_.ErrorCount;
  noteFailed(path, reason);
  log("Error importing Antenna File " + displayPath(path) + kLineBreak + reason);
}

// The ID is made in the writing of the antenna, which adds its row at the end, and the table's width and code page may
// have changed the name.
void ImportRun::noteAdded(const std::string& path, const ImportedAntenna& antenna) {
  ImportResult::Added added{"", antenna.AntName, path};
  try {
    const RecordsetPtr rows = rsAMS_ ? rsAMS_ : MakeAMSFile(Mfg_);
    if (rows && rows->RecordCount() > 0) {
      rows->MoveLast();
      added.id = trimRight(rows->value("ATYPE_ID").asText());
      added.description = trim(ChkNulls(rows->value("ANTENNA"), "", false).asText());
    }
  } catch (const RunTimeFailure&) {
    // The antenna is stored: a table that cannot be read back leaves its ID unknown and the run going.
  }
  result_.added.push_back(std::move(added));
}

ImportRun::Next ImportRun::tellWriteError(const std::string& path, const ImportedAntenna& antenna,
                                          const std::string& reason) {
  std::string text = "Error Importing Antenna";
  for (const std::string& line : {reason, "Mfg " + Mfg_, "Ant " + antenna.AntName}) text += kLineBreak + line;
  noteFailed(path, reason);
  text += log(text);
  text += std::string(kBlankLine) + "Click OK to continue with other antennas" + kLineBreak +
          "Click Cancel to end this operation";
  const MsgAnswer answer = MsgBox({"Error Importing Antenna", text, MsgButtons::okCancel, MsgIcon::information, 1});
  return answer == MsgAnswer::ok ? Next::file : Next::end;
}

ImportRun::Next ImportRun::write(const std::string& path, const ImportedAntenna& antenna, bool& failed) {
  const std::string reason = HDwrtAntDBF(Mfg_, antenna.AntName, antenna.Gain, antenna.GainUnits, antenna.HorCount,
                                         antenna.HorAngle, antenna.HorValue, antenna.VerCount, antenna.VerAngle,
                                         antenna.VerValue, antenna.FreqLow, antenna.FreqHigh, rsAMS_, rsAHD_, rsAVD_);
  failed = getLenTrim(reason) != 0;
  if (failed) return tellWriteError(path, antenna, reason);
  if (antenna.HorCount > 0 || antenna.VerCount > 0) noteAdded(path, antenna);
  return Next::file;
}

ImportRun::Next ImportRun::importFile(const std::string& path) {
  ImportedAntenna antenna;
  if (format_.traits & ImportFormat::keepsPlane) antenna.PolLetter = PolLetter_;
  std::string reason;
  Source source(*this, path);
  read(source, antenna, reason);
  PolLetter_ = antenna.PolLetter;
  if (antenna.ErrFlag != 0) {
    countError(path, reason);
    return Next::file;
  }
  if (format_.traits & ImportFormat::storesItself) return Next::file;
  const PreviewAnswer answer = askPreview(path, antenna);
  if (answer == PreviewAnswer::cancel) return Next::end;
  bool failed = false;
  return answer == PreviewAnswer::skip ? Next::file : write(path, antenna, failed);
}

void ImportRun::tellErrors() const {
  if (result_.ErrorCount <= 0) return;
  showInformation("Import Errors", "There were " + std::to_string(result_.ErrorCount) + " errors on the import files." +
                                       kBlankLine + "The files names were written to the log file" + kLineBreak +
                                       displayPath(GetTechSupFile()) + logFailure_);
}

ImportRun::Next ImportRun::importNext(const std::vector<std::string>& files, std::size_t index) {
  const std::string& file = files[index];
  if (getLenTrim(file) == 0) return Next::file;
  if (const std::optional<SkipReason> reason = reasonToSkip(file)) {
    result_.skipped.push_back({file, *reason});
    return Next::file;
  }
  showProgress(index + 1, files.size(), file);
  return importFile(file);
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
  skipRest(files, importAll(files));
  tellErrors();
  return std::move(result_);
}

}  // namespace

std::string skipText(SkipReason reason) {
  switch (reason) {
    case SkipReason::missing:
      return "There is no such file, or its folder may not be read";
    case SkipReason::packed:
      return "A packed file is not read; unpack it and import what it holds";
    case SkipReason::readBefore:
      return "A file of this name was read before in this run";
    case SkipReason::runEnded:
      break;
  }
  return "The run was ended before this file";
}

ImportResult importFiles(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                         const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const std::vector<std::string>& files,
                         bool preview, const ImportOwner& owner) {
  return ImportRun(format, Mfg, rsAMS, rsAHD, rsAVD, preview, owner).run(files);
}

}  // namespace vantrelix

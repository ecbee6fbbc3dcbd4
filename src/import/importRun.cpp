#include "import/importRun.h"

#include <limits>

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

namespace vantrelix {

namespace {

constexpr const char* kCountFormat = "###,###,##0";
constexpr std::uint64_t kLongestFile = std::uint64_t{1} << 31;

class ImportRun {
 public:
  ImportRun(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS, const RecordsetPtr& rsAHD,
            const RecordsetPtr& rsAVD, bool preview, const ImportOwner& owner)
      : format_(format), Mfg_(Mfg), rsAMS_(rsAMS), rsAHD_(rsAHD), rsAVD_(rsAVD), Preview_(preview), owner_(owner) {}

  ImportResult run(const std::vector<std::string>& files);

 private:
  enum class Next { file, end };

  bool isToBeRead(const std::string& path);
  void showProgress(std::size_t position, std::size_t count, const std::string& path) const;
  void read(const std::string& path, ImportedAntenna& antenna, std::string& reason);
  Next importFile(const std::string& path);
  PreviewAnswer askPreview(const std::string& path, const ImportedAntenna& antenna);
  Next write(const std::string& path, const ImportedAntenna& antenna);
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
  ImportResult result_;
};

// The test minds case: a packed file in lower-case letters passes it.
bool ImportRun::isToBeRead(const std::string& path) {
  if (getLenTrim(path) == 0) return false;
  if (!getFileExistLEN(path, true) && !platform::current().folderExists(path)) return false;
  const std::string extension = ExtractExtension(path, 3);
  if (extension == "EXE" || extension == "ZIP") return false;
  return !StrInArray(upperCase(path), DoneFiles_);
}

void ImportRun::showProgress(std::size_t position, std::size_t count, const std::string& path) const {
  if (!owner_.progress) return;
  try {
    owner_.progress("Working on file " + formatNumber(static_cast<double>(position), kCountFormat) + " of " +
                    formatNumber(static_cast<double>(count), kCountFormat) + ": " + ExtractFileName(path));
  } catch (const std::exception&) {
    // An owner that cannot show its progress does not stop the run.
  }
}

void ImportRun::read(const std::string& path, ImportedAntenna& antenna, std::string& reason) {
  ++result_.filesRead;
  DoneFiles_.push_back(upperCase(path));
  try {
    TextLines lines(platform::readWholeFile(path, kLongestFile - 1));
    format_.read(lines, antenna);
    if (antenna.ErrFlag != 0) reason = "The file does not hold what its format asks for";
  } catch (const RunTimeFailure& failure) {
    antenna.ErrFlag = -1;
    reason = modErrStr(failure);
  } catch (const std::exception& failure) {
    antenna.ErrFlag = -1;
    reason = failure.what();
  }
}

PreviewAnswer ImportRun::askPreview(const std::string& path, const ImportedAntenna& antenna) {
  if (!Preview_ || !owner_.preview) return PreviewAnswer::add;
  const std::string caption =
      format_.previewCaption + kLineBreak + "File: " + displayPath(path) + kLineBreak + antenna.AntName;
  const PreviewAnswer answer = owner_.preview(caption, antenna);
  if (answer != PreviewAnswer::noPreview) return answer;
  if (format_.noPreviewEndsPreviews) Preview_ = false;
  return PreviewAnswer::add;
}

void ImportRun::noteFailed(const std::string& path, const std::string& reason) {
  result_.failed.push_back(displayPath(path) + kLineBreak + reason);
}

void ImportRun::countError(const std::string& path, const std::string& reason) {
  if (result_.ErrorCount < std::numeric_limits<std::int16_t>::max()) ++result_.ErrorCount;
  noteFailed(path, reason);
  wrtTechSupNoMak("Error importing Antenna File " + displayPath(path));
}

// The ID is made in the writing of the antenna, which adds its row at the end.
void ImportRun::noteAdded(const std::string& path, const ImportedAntenna& antenna) {
  const RecordsetPtr rows = rsAMS_ ? rsAMS_ : MakeAMSFile(Mfg_);
  ImportResult::Added added{"", antenna.AntName, path};
  if (rows && rows->RecordCount() > 0) {
    rows->MoveLast();
    added.id = trimRight(rows->value("ATYPE_ID").asText());
  }
  result_.added.push_back(std::move(added));
}

ImportRun::Next ImportRun::tellWriteError(const std::string& path, const ImportedAntenna& antenna,
                                          const std::string& reason) {
  std::string text = "Error Importing Antenna";
  for (const std::string& line : {reason, "Mfg " + Mfg_, "Ant " + antenna.AntName}) text += kLineBreak + line;
  noteFailed(path, reason);
  wrtTechSupNoMak(text);
  text += std::string(kBlankLine) + "Click OK to continue with other antennas" + kLineBreak +
          "Click Cancel to end this operation";
  const MsgAnswer answer = MsgBox({"Error Importing Antenna", text, MsgButtons::okCancel, MsgIcon::information, 1});
  return answer == MsgAnswer::ok ? Next::file : Next::end;
}

ImportRun::Next ImportRun::write(const std::string& path, const ImportedAntenna& antenna) {
  const std::string reason = HDwrtAntDBF(Mfg_, antenna.AntName, antenna.Gain, antenna.GainUnits, antenna.HorCount,
                                         antenna.HorAngle, antenna.HorValue, antenna.VerCount, antenna.VerAngle,
                                         antenna.VerValue, antenna.FreqLow, antenna.FreqHigh, rsAMS_, rsAHD_, rsAVD_);
  if (getLenTrim(reason) != 0) return tellWriteError(path, antenna, reason);
  if (antenna.HorCount > 0 || antenna.VerCount > 0) noteAdded(path, antenna);
  return Next::file;
}

ImportRun::Next ImportRun::importFile(const std::string& path) {
  ImportedAntenna antenna;
  std::string reason;
  read(path, antenna, reason);
  if (antenna.ErrFlag != 0) {
    countError(path, reason);
    return Next::file;
  }
  const PreviewAnswer answer = askPreview(path, antenna);
  if (answer == PreviewAnswer::cancel) return Next::end;
  return answer == PreviewAnswer::skip ? Next::file : write(path, antenna);
}

void ImportRun::tellErrors() const {
  if (result_.ErrorCount <= 0) return;
  showInformation("Import Errors", "There were " + std::to_string(result_.ErrorCount) + " errors on the import files." +
                                       kBlankLine + "The files names were written to the log file" + kLineBreak +
                                       displayPath(GetTechSupFile()));
}

ImportResult ImportRun::run(const std::vector<std::string>& files) {
  const Procedure guard(procedure::importFiles);
  for (std::size_t index = 0; index < files.size(); ++index) {
    if (owner_.cancelled && owner_.cancelled()) break;
    if (!isToBeRead(files[index])) continue;
    showProgress(index + 1, files.size(), files[index]);
    if (importFile(files[index]) == Next::end) break;
  }
  tellErrors();
  return std::move(result_);
}

}  // namespace

ImportResult importFiles(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                         const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const std::vector<std::string>& files,
                         bool preview, const ImportOwner& owner) {
  return ImportRun(format, Mfg, rsAMS, rsAHD, rsAVD, preview, owner).run(files);
}

}  // namespace vantrelix

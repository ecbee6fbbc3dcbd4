#include "import/LibraryWriter.h"

#include <initializer_list>
#include <utility>

#include "antenna/RowsAdded.h"
#include "antenna/hdWrtAntDBF.h"
#include "antenna/makeAntFiles.h"
#include "foundation/errHand.h"
#include "foundation/messages.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

// No field of a table holds a longer text.
constexpr std::size_t kLongestName = 254;

}  // namespace

LibraryWriter::LibraryWriter(const std::string& Mfg, const RecordsetPtr& rsAMS, const RecordsetPtr& rsAHD,
                             const RecordsetPtr& rsAVD, ImportReport& report)
    : Mfg_(Mfg), rsAMS_(rsAMS), rsAHD_(rsAHD), rsAVD_(rsAVD), report_(report) {}

// What stays empty here is for HDwrtAntDBF to tell of.
void LibraryWriter::openTables() {
  if (!rsAMS_) rsAMS_ = MakeAMSFile(Mfg_);
  if (!rsAMS_) return;
  if (!rsAHD_) rsAHD_ = MakeAHDFile(Mfg_);
  if (!rsAVD_) rsAVD_ = MakeAVDFile(Mfg_);
}

// The reason of a failure; blank where the antenna is in the library.
std::string LibraryWriter::append(const ImportedAntenna& antenna) {
  RowsAdded master(rsAMS_), azimuths(rsAHD_), elevations(rsAVD_);
  // A failure's text quotes the name.
  const std::string name = leftCharacters(antenna.AntName, kLongestName);
  std::string reason = HDwrtAntDBF(Mfg_, name, antenna.Gain, antenna.GainUnits, antenna.HorCount, antenna.HorAngle,
                                   antenna.HorValue, antenna.VerCount, antenna.VerAngle, antenna.VerValue,
                                   antenna.FreqLow, antenna.FreqHigh, rsAMS_, rsAHD_, rsAVD_);
  if (getLenTrim(reason) == 0) return "";
  try {
    // The AMS row goes last: its ID is free then, and the next antenna would take over points that stayed.
    for (RowsAdded* rows : {&elevations, &azimuths, &master}) rows->takeAway();
  } catch (const RunTimeFailure& failure) {
    reason += std::string(kLineBreak) +
              "A part of the antenna is left in the library; delete the antenna in the editor. " + modErrStr(failure);
  }
  return reason;
}

// The ID is made in the writing of the antenna, which adds its row at the end, and the table's width and code page may
// have changed the name.
void LibraryWriter::noteAdded(const std::string& path, const ImportedAntenna& antenna) {
  ImportResult::Added added{"", leftCharacters(antenna.AntName, kLongestName), path};
  try {
    if (rsAMS_) {
      rsAMS_->MoveLast();
      added.id = trimRight(rsAMS_->value("ATYPE_ID").asText());
      added.description = trim(ChkNulls(rsAMS_->value("ANTENNA"), "", false).asText());
    }
  } catch (const RunTimeFailure&) {
    // The antenna is stored: a table that cannot be read back leaves its ID unknown and the run going.
  }
  report_.noteAdded(std::move(added));
}

LibraryWriter::Written LibraryWriter::tellError(const std::string& path, const ImportedAntenna& antenna,
                                                const std::string& reason) {
  std::string text = "Error Importing Antenna";
  for (const std::string& line : {reason, "Mfg " + Mfg_, "Ant " + TextLines::shownText(antenna.AntName)})
    text += kLineBreak + line;
  report_.noteFailed(path, reason);
  text += report_.log(text);
  text += std::string(kBlankLine) + "Click OK to continue with other antennas" + kLineBreak +
          "Click Cancel to end this operation";
  const MsgAnswer answer = MsgBox({"Error Importing Antenna", text, MsgButtons::okCancel, MsgIcon::information, 1});
  return answer == MsgAnswer::ok ? Written::failedGoOn : Written::failedStop;
}

LibraryWriter::Written LibraryWriter::write(const std::string& path, const ImportedAntenna& antenna) {
  const bool hasPoints = antenna.HorCount > 0 || antenna.VerCount > 0;
  if (hasPoints) openTables();
  const std::string reason = append(antenna);
  if (!reason.empty()) return tellError(path, antenna, reason);
  if (hasPoints) noteAdded(path, antenna);
  return Written::yes;
}

}  // namespace vantrelix

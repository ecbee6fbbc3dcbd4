#include "editor/correctAntPattern.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "editor/frmHDAntEditor.h"
#include "editor/showCuts.h"
#include "foundation/errHand.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "tables/Database.h"

namespace vantrelix {

namespace {

constexpr double kTolerance = 0.1;    // in the antenna's own units
constexpr double kNoAzimuth = 88888;  // further from 0 than any

bool differs(double a, double b) { return std::abs(a - b) > kTolerance; }

bool askYesNo(const std::string& title, const std::string& text) {
  return MsgBox({title, text, MsgButtons::yesNo, MsgIcon::question, 1}) == MsgAnswer::yes;
}

// --- The diagnosis and the shift.

double elementAt(const std::vector<double>& array, int index) {
  if (static_cast<std::size_t>(index) >= array.size()) {
    throw RunTimeFailure(failure::subscript, "Subscript out of range: a cut has fewer points than its count says");
  }
  return array[static_cast<std::size_t>(index)];
}

// The largest value, but 0 at least.
double maximumOf(const std::vector<double>& gains, std::int16_t highest) {
  double maximum = 0;
  for (int i = 0; i <= highest; ++i) maximum = std::max(maximum, elementAt(gains, i));
  return maximum;
}

// The gain at the azimuth nearest 0, the first of those equally near.
double gainNearestZero(const std::vector<double>& azimuths, const std::vector<double>& gains, std::int16_t highest) {
  double closest = kNoAzimuth;
  double gain = 0;
  for (int i = 0; i <= highest; ++i) {
    const double distance = std::abs(elementAt(azimuths, i));
    if (distance >= closest) continue;
    closest = distance;
    gain = elementAt(gains, i);
  }
  return gain;
}

std::string antennaLine(const std::string& LibLabel, const std::string& AntID) { return LibLabel + " : " + AntID; }

// Brings the maximum of the cut to the gain and gives the factor or the shift.
double shiftCut(double Gain, double maximum, bool relative, std::int16_t nEl, std::vector<double>& ElGain) {
  if (relative && maximum == 0) {
    throw RunTimeFailure(failure::divisionByZero, "Division by zero: the elevation pattern has no gain above 0");
  }
  const double change = relative ? Gain / maximum : Gain - maximum;
  for (int j = 0; j <= nEl; ++j) {
    double& gain = ElGain[static_cast<std::size_t>(j)];
    gain = relative ? gain * change : gain + change;
  }
  return change;
}

void tellFailure(const std::string& firstLine, const std::string& LogText, const std::string& antenna) {
  const std::string text = firstLine + kLineBreak + LogText + kBlankLine +
                           "Please send the QVTECSUP.TXT file, along with a description of what you were trying to do "
                           "when this error happened, to:" +
                           kBlankLine + supportAddress();
  MsgBox({"Error in FixNonMajLobeElPat", text, MsgButtons::ok, MsgIcon::critical, 1});
  logQuietly(text + kLineBreak + antenna);
}

// --- The antenna in the editor.

struct Cut {
  std::int16_t highest = -1;
  std::vector<double> angles;
  std::vector<double> gains;
};

double numberAt(const DataGrid& grid, int row, const char* field, double ifNull) {
  return CValP(ChkNulls(grid.value(row, field), ifNull, false));
}

// `noAngle` stands for a blank angle.
Cut readCut(const PatternPane& pane, double noAngle) {
  Cut cut;
  const int count = static_cast<int>(pane.data.RecordCount());
  cut.highest = CInt(count - 1);
  for (int row = 0; row < count; ++row) {
    cut.angles.push_back(numberAt(pane.grid, row, pane.plane.angleField, noAngle));
    cut.gains.push_back(numberAt(pane.grid, row, pane.plane.gainField, 0));
  }
  return cut;
}

// Writes a cut back and puts all back as it was where a row cannot be written: half a cut would be worse than none.
class CutWriter {
 public:
  explicit CutWriter(PatternPane& pane) : grid_(pane.grid), plane_(pane.plane), hold_(pane.grid) {}

  // Gives the number of rows that no longer stand where they were read, which stay as they are. So do blank gains.
  long write(const Cut& cut) {
    try {
      return writeRows(cut);
    } catch (...) {
      putBack();
      throw;
    }
  }

 private:
  long writeRows(const Cut& cut) {
    long passedOver = 0;
    std::size_t index = 0;
    for (int row = 0; row < grid_.dataRowCount() && index < cut.angles.size(); ++row) {
      // A row without its key has been deleted by another program.
      if (grid_.value(row, "ATYPE_ID").isNull()) continue;
      const bool matches = numberAt(grid_, row, plane_.angleField, 0) == cut.angles[index];
      if (matches) {
        writeRow(row, cut.gains[index]);
      } else {
        ++passedOver;
      }
      ++index;
    }
    return passedOver;
  }

  void writeRow(int row, double gain) {
    const Value former = grid_.value(row, plane_.gainField);
    if (former.isNull()) return;
    grid_.setValue(row, plane_.gainField, gain);
    DBEngine::Idle();
    written_.emplace_back(row, former);
  }

  void putBack() {
    for (const auto& [row, former] : written_) {
      try {
        grid_.setValue(row, plane_.gainField, former);
      } catch (const RunTimeFailure&) {
        // The failure that stopped the writing is the one to tell.
      }
    }
  }

  DataGrid& grid_;
  const PatternPlane& plane_;
  GridHold hold_;
  std::vector<std::pair<int, Value>> written_;
};

void log(Correction& correction, const std::string& line) {
  logQuietly(line);
  correction.log = AddALine(correction.log, line);
}

void offerToSave(frmHDAntEditor& form, const Cut& cut, Correction& correction) {
  const bool save = askYesNo("Save Corrected Pattern?", "The elevation pattern for this antenna has been corrected." +
                                                            std::string(kBlankLine) +
                                                            "Do you want to save the corrected gain values to the "
                                                            "antenna library?");
  if (!save) return log(correction, "Corrected pattern WAS NOT SAVED to library database");
  SetFlag(500);
  correction.passedOver = CutWriter(form.elevation).write(cut);
  correction.saved = true;
  log(correction, "Corrected pattern saved to library database");
  if (correction.passedOver == 0) return;
  const bool one = correction.passedOver == 1;
  log(correction,
      std::to_string(correction.passedOver) + (one ? " elevation had changed meanwhile and was left as it was"
                                                   : " elevations had changed meanwhile and were left as they were"));
}

void correct(frmHDAntEditor& form, Correction& correction) {
  SetFlag(100);
  for (const Plane plane : {Plane::azimuth, Plane::elevation}) showSelectedCut(form, plane);
  const std::string LibLabel = form.LibDesc + " (" + form.AMSName + ") ";
  const Value antenna = form.TDBGridAMS.value(form.selectedRow(), "ANTENNA");
  correction.log = ChkNulls(antenna, "NO ANTENNA DESCRIPTION", false).asText();
  SetFlag(200);
  const Cut azimuth = readCut(form.azimuth, kNoAzimuth);
  SetFlag(300);
  Cut elevation = readCut(form.elevation, 0);
  SetFlag(400);
  FixNonMajLobeElPat(form.AntGain, form.AntGainUn, azimuth.highest, azimuth.angles, azimuth.gains, elevation.highest,
                     elevation.angles, elevation.gains, LibLabel, form.txtID.text(), correction.log, correction.result);
  if (correction.result == correction::corrected) offerToSave(form, elevation, correction);
}

}  // namespace

void askToCorrect(frmHDAntEditor& form) {
  const std::string text =
      "Do you want the program to attempt to correct the problem with the pattern?" + std::string(kBlankLine) +
      "For problems with maximum pattern gain values that are above or below the antenna gain, the program will "
      "attempt to normalize the gain values to the specified major lobe gain for the antenna." +
      kBlankLine +
      "If the correction is successful, you will have the option to save the corrected pattern back to the antenna "
      "library.";
  if (askYesNo("Correct Pattern?", text)) CorrectAntPattern(form);
}

Correction CorrectAntPattern(frmHDAntEditor& form) {
  const Procedure guard(procedure::CorrectAntPattern);
  Correction correction;
  try {
    correct(form, correction);
    return correction;
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, form.AMSName);
  } catch (const std::exception& failure) {
    ErrHand(failure, form.AMSName);
  }
  correction.result = correction::failed;
  return correction;
}

void FixNonMajLobeElPat(double Gain, const std::string& GainUn, std::int16_t nAz, const std::vector<double>& Az,
                        const std::vector<double>& AzGain, std::int16_t nEl, const std::vector<double>& /*El*/,
                        std::vector<double>& ElGain, const std::string& LibLabel, const std::string& AntID,
                        std::string& LogText, int& Result) {
  const Procedure guard(procedure::FixNonMajLobeElPat);
  const std::string antenna = antennaLine(LibLabel, AntID);
  const auto fail = [&](int result, const std::string& firstLine) {
    Result = result;
    tellFailure(firstLine, LogText, antenna);
  };
  try {
    SetFlag(100);
    const double gainAtZero = gainNearestZero(Az, AzGain, nAz);
    if (differs(maximumOf(AzGain, nAz), Gain)) return fail(correction::azimuthFault, "Error on Az Pattern");
    SetFlag(200);
    const double maximum = maximumOf(ElGain, nEl);
    Result = correction::nothingToCorrect;
    if (!differs(maximum, Gain)) return;
    if (differs(maximum, gainAtZero)) {
      return fail(correction::unexplained, "Unable to correct problem with elevation pattern");
    }
    SetFlag(300);
    const double change = shiftCut(Gain, maximum, upperCase(trim(GainUn)) == "REL", nEl, ElGain);
    Result = correction::corrected;
    LogText = AddALine(LogText, "Non Major-Lobe El Pattern Cut corrected");
    LogText = AddALine(LogText, antenna);
    LogText = AddALine(LogText, "Gain values adjusted by " + formatNumber(change, "#0.00") + " " + GainUn);
    logQuietly(LogText);
  } catch (const RunTimeFailure& failure) {
    fail(correction::failed, modErrStr(failure));
  }
}

}  // namespace vantrelix

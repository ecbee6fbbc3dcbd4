#include "editor/okAntPattern.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

#include "antenna/convertGain.h"
#include "editor/frmHDAntEditor.h"
#include "editor/showCuts.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr const char* kTitle = "Antenna Pattern Warning";
constexpr double kTolerance = 0.1;  // display units
constexpr double kNoMaximum = -88888.0;
// What blank gains count as: below anything real.
constexpr double kNoAntennaGain = -8880;
constexpr double kNoPointGain = -8888;

// In which the texts of the two cuts differ.
struct CutWords {
  const char* capital;
  const char* angleColumn;
  const char* small;
};
constexpr CutWords kAzimuthWords{"Azimuth", "Azimuth", "azimuth"};
constexpr CutWords kElevationWords{"Elevation", "Angle", "elevation"};

const CutWords& wordsOf(Plane plane) { return plane == Plane::azimuth ? kAzimuthWords : kElevationWords; }

std::string textOf(const Value& value) { return ChkNulls(value, "", false).asText(); }
bool isBlank(const Value& value) { return getLenTrim(textOf(value)) == 0; }

std::string toleranceText() { return formatNumber(kTolerance, "#0.00"); }

struct Lobe {
  double gain = 0;       // of the antenna, display units
  double cellValue = 0;  // as its cell shows it
};

Lobe lobeOf(const frmHDAntEditor& form, int row) {
  Lobe lobe;
  const Value stored = form.TDBGridAMS.value(row, "GAIN");
  const double own = isBlank(stored) ? kNoAntennaGain : CValP(stored);
  bool failed = false;
  lobe.gain = ConvertAntGainDbl(form.AntGainUn, form.GainUnits, own, failed);
  if (failed && isBlank(stored)) lobe.gain = kNoAntennaGain;
  lobe.cellValue = CValP(form.amsCellText(row, "GAIN"));
  return lobe;
}

// The test of one cut.
class CutTest {
 public:
  CutTest(const frmHDAntEditor& form, PatternPane& pane, const Lobe& lobe, PatternProblems& problems)
      : form_(form), pane_(pane), words_(wordsOf(pane.plane.plane)), lobe_(lobe), problems_(problems) {}

  void run() {
    readPoints();
    if (points_.empty()) return;
    findBlank(&Point::angle, words_.angleColumn);
    findBlank(&Point::gain, "Gain");
    checkCeiling();
    checkMaximum();
    if (fault_) pane_.grid.setCurrentRow(*fault_);
  }

 private:
  struct Point {
    Value angle;
    Value gain;
    double shown = 0;  // the gain in display units
  };

  void readPoints() {
    const int count = pane_.grid.dataRowCount();
    points_.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) {
      Point point{pane_.grid.value(row, pane_.plane.angleField), pane_.grid.value(row, pane_.plane.gainField)};
      point.shown = shownGain(point.gain);
      points_.push_back(std::move(point));
    }
  }

  double shownGain(const Value& gain) const {
    bool failed = false;
    const double own = isBlank(gain) ? kNoPointGain : CValP(gain);
    const double shown =
        ConvertAntPatternDbl(form_.AntGainUn, form_.GainUnits, own, lobe_.cellValue, form_.GainUnits, failed);
    return failed && isBlank(gain) ? kNoPointGain : shown;
  }

  void findBlank(Value Point::*cell, const char* column) {
    const auto found =
        std::find_if(points_.begin(), points_.end(), [&](const Point& point) { return isBlank(point.*cell); });
    if (found == points_.end()) return;
    problems_.blankEntries = true;
    add(std::string("The ") + words_.capital + " pattern contains one or more empty entries in the " + column +
        " column.");
    noteFault(found);
  }

  void checkCeiling() {
    const auto found = std::find_if(points_.begin(), points_.end(),
                                    [&](const Point& point) { return point.shown - lobe_.gain > kTolerance; });
    if (found == points_.end()) return;
    add(std::string("The ") + words_.capital +
        " pattern contains one or more entries in the Gain column that exceed the specified major lobe gain by more "
        "than " +
        toleranceText());
    addLine(std::string(words_.capital) + " " + textOf(found->angle) + " Gain: " + generalText(found->shown));
    addLine("Major Lobe Gain: " + generalText(lobe_.gain));
    add("The pattern gain values must be less than or equal to the Major Lobe Gain value.");
    addAdvice();
    noteFault(found);
  }

  void checkMaximum() {
    double maximum = kNoMaximum;
    std::string angle;
    for (const Point& point : points_) {
      if (point.shown <= maximum) continue;
      maximum = point.shown;
      angle = textOf(point.angle);
    }
    if (lobe_.gain - maximum <= kTolerance) return;
    const std::string small = words_.small;
    add("The maximum " + small + " gain in the " + small +
        " pattern is less than the Major Lobe Gain for this antenna (by at least " + toleranceText() + ")");
    addLine("Maximum " + small + " gain: " + generalText(maximum) + " on " + words_.capital + " " + angle);
    addLine("Major Lobe Gain: " + generalText(lobe_.gain));
    add("The " + small + " pattern must have at least one value equal to the Major Lobe Gain.");
    addAdvice();
  }

  void add(const std::string& block) { problems_.text = AddALine(problems_.text, block, kBlankLine); }
  void addLine(const std::string& line) { problems_.text = AddALine(problems_.text, line); }
  void addAdvice() {
    add(std::string("You can change either the Major Lobe Gain or the gain value on one or more ") + words_.small +
        "s in the pattern to correct this problem.");
  }
  void noteFault(std::vector<Point>::const_iterator point) {
    if (!fault_) fault_ = static_cast<int>(point - points_.begin());
  }

  const frmHDAntEditor& form_;
  PatternPane& pane_;
  const CutWords& words_;
  const Lobe& lobe_;
  PatternProblems& problems_;
  std::vector<Point> points_;
  std::optional<int> fault_;
};

bool skipsTest() { return getINIBool("HDAntenna", "SkipValid", "0"); }

std::string questionText(const std::string& problems) {
  return problems + kBlankLine + "Do you want to use this antenna anyway?" + kBlankLine +
         "Click Yes to use the antenna with the known problem(s)" + kLineBreak +
         "\t*** Using this antenna may generate incorrect results ***" + kLineBreak +
         "Click No to cancel this operation and return to the Antenna Editor" + kLineBreak +
         "\tYou will be have the option to select another antenna OR" + kLineBreak +
         "\tto have ZOR attempt to automatically correct the pattern.";
}

bool acceptedAnyway(const frmHDAntEditor& form, const PatternProblems& problems) {
  if (getLenTrim(problems.text) == 0) return true;
  if (problems.blankEntries) {
    showInformation(kTitle, problems.text);
    return false;
  }
  const Message question{kTitle, questionText(problems.text), MsgButtons::yesNo, MsgIcon::question, 2};
  if (MsgBox(question) != MsgAnswer::yes) return false;
  logQuietly(kLineBreak + std::string("Antenna Editor Warning ignored") + kLineBreak + form.txtID.text() + ": " +
             form.amsCellText(form.selectedRow(), "ANTENNA") + kLineBreak + problems.text);
  return true;
}

// Unity gain and no band.
bool isDefaultAntenna(const frmHDAntEditor& form, int row) {
  const auto number = [&](const char* field) { return CValP(form.amsCellText(row, field)); };
  bool failed = false;
  const double gain = ConvertAntGainDbl(form.amsCellText(row, "GAIN_UN"), "dBd", number("GAIN"), failed);
  return !failed && gain == 0 && number("F_LOW") == 0 && number("F_HIGH") == 0;
}

std::string newAntennaText(const frmHDAntEditor& form, int row, const std::string& prefix) {
  const std::string gain = formatNumber(CValP(form.amsCellText(row, "GAIN")), "###0.00");
  std::string text = "The current antenna has a unity gain (" + gain + form.amsCellText(row, "GAIN_UN") + ")" +
                     kLineBreak + "and undefined frequency limits.";
  if (getLenTrim(prefix) > 0) text += kBlankLine + prefix;
  return text + kBlankLine + "Click OK to continue with this antenna" + kLineBreak +
         "Click CANCEL to cancel this operation and edit the antenna values.";
}

}  // namespace

PatternProblems findPatternProblems(frmHDAntEditor& form) {
  PatternProblems problems;
  SetFlag(100);
  if (skipsTest()) return problems;
  SetFlag(200);
  const int row = form.selectedRow();
  if (isBlank(form.TDBGridAMS.value(row, "GAIN"))) {
    problems.text =
        AddALine(problems.text, "You must enter a Major Lobe Gain value for the Antenna Manufacturer Specs.");
  }
  const Lobe lobe = lobeOf(form, row);
  for (const Plane plane : {Plane::azimuth, Plane::elevation}) {
    SetFlag(plane == Plane::azimuth ? 300 : 400);
    CutTest(form, form.pane(plane), lobe, problems).run();
  }
  return problems;
}

bool OKAntPattern(frmHDAntEditor& form) {
  const Procedure guard(procedure::OKAntPattern);
  try {
    if (skipsTest()) return true;
    for (const Plane plane : {Plane::azimuth, Plane::elevation}) showSelectedCut(form, plane);
    const PatternProblems problems = findPatternProblems(form);
    SetFlag(500);
    return acceptedAnyway(form, problems);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, form.AMSName);
  } catch (const std::exception& failure) {
    ErrHand(failure, form.AMSName);
  }
  return false;
}

void OKNewAnt(frmHDAntEditor& form, const std::string& prefix, bool& ok) {
  const Procedure guard(procedure::OKNewAnt);
  const int row = form.selectedRow();
  ok = !isDefaultAntenna(form, row);
  if (ok) return;
  const Message question{"New Antenna", newAntennaText(form, row, prefix), MsgButtons::okCancel, MsgIcon::information,
                         2};
  ok = MsgBox(question) == MsgAnswer::ok;
}

}  // namespace vantrelix

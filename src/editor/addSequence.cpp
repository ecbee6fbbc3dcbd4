#include "editor/addSequence.h"

#include <array>
#include <set>

#include "editor/getSeqValues.h"
#include "editor/okAntPattern.h"
#include "editor/patternRows.h"
#include "editor/selectedAntenna.h"
#include "editor/showCuts.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Antenna Editor";
constexpr int kDialogOffset = 100;  // twips, from the thumbnail's corner
constexpr double kRelativeGain = 1;
constexpr Rectangle kCentred{-1, -1, 0, 0};

struct SequenceLine {
  const char* caption;
  double lowest, highest, fallback;  // degrees
  const char* key;
};

// All in which the two cuts differ here.
struct Sequence {
  Plane plane;
  const char* title;
  const char* selectAdvice;
  const char* gainAdvice;
  const char* progress;
  std::array<SequenceLine, 3> lines;  // start, stop, step
};

constexpr Sequence kAzimuths{
    Plane::azimuth,
    "Azimuth Values",
    "Then click the Add Sequential button to create new azimuths for that antenna.",
    "You may want to set these values before adding azimuth values.",
    "Adding azimuths...",
    {{{"Start", 0, 360, 0, "AzimAngStrt"}, {"Stop", 0, 360, 360, "AzimAngStop"}, {"Step", 1, 360, 1, "AzimAngStep"}}}};

constexpr Sequence kElevations{Plane::elevation,
                               "Elevation Values",
                               "Then click the Add Sequential button to create new elevation angles for that antenna.",
                               "You may want to set these values before adding elevation angles.",
                               "Adding angles...",
                               {{{"Start", -180, 180, -180, "ElevAngStrt"},
                                 {"Stop", -180, 180, 180, "ElevAngStop"},
                                 {"Step", 1, 180, 1, "ElevAngStep"}}}};

void tellNoRows() {
  // The same words for both cuts.
  MsgBox({"No Antenna Selected.",
          "Select the antenna above by clicking on the selection button to the left of the row.  When the antenna is "
          "selected you can add and edit azimuths.",
          MsgButtons::ok, MsgIcon::critical});
}

SeqValue seqValue(const SequenceLine& line) {
  return {getINIDbl(kSection, line.key, line.fallback), line.caption, true, true, line.lowest, line.highest};
}

// A place that 16 bits cannot hold, on a wide desktop, and the frame of a form that no window shows: centred.
Rectangle dialogPlace(const frmHDAntEditor& form, const PatternPane& pane) {
  const Rectangle& frame = pane.thumbnailFrame.geometry();
  const int left = form.geometry().left + frame.left + kDialogOffset;
  const int top = form.geometry().top + frame.top + kDialogOffset;
  if (frame.width <= 0 || left > INT16_MAX || top > INT16_MAX) return kCentred;
  return {left, top, 0, 0};
}

// The values of the sequence in order. What was typed is rounded: all angles are whole. The limits keep the step off 0.
std::vector<double> wholeValues(const std::array<SeqValue, 3>& values) {
  const int start = CInt(CValP(values[0].Value));
  const int stop = CInt(CValP(values[1].Value));
  const int step = CInt(CValP(values[2].Value));
  std::vector<double> angles;
  for (int angle = start; step > 0 ? angle <= stop : angle >= stop; angle += step) angles.push_back(angle);
  return angles;
}

// False where the user cancels.
bool askForValues(const frmHDAntEditor& form, const Sequence& sequence, const PatternPane& pane,
                  std::array<SeqValue, 3>& values) {
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = seqValue(sequence.lines[i]);
  const Rectangle place = dialogPlace(form, pane);
  bool cancelled = false;
  GetSeqValues(sequence.title, &form, static_cast<std::int16_t>(place.left), static_cast<std::int16_t>(place.top),
               values[0], values[1], values[2], cancelled);
  return !cancelled;
}

void keepValues(const Sequence& sequence, const std::array<SeqValue, 3>& values) {
  std::vector<IniEntry> entries;
  for (std::size_t i = 0; i < values.size(); ++i) entries.push_back({sequence.lines[i].key, values[i].Value.asText()});
  if (setINI(kSection, entries, getDefaultsINI())) return;
  logQuietly("The limits of the sequence could not be kept in " + displayPath(getDefaultsINI()));
}

std::set<double> presentAngles(const Recordset& rows, const char* field) {
  std::set<double> angles;
  for (long row = 0; row < rows.rowCount(); ++row) {
    const Value angle = rows.valueAt(row, field);
    if (!angle.isNull()) angles.insert(CValP(angle));
  }
  return angles;
}

Value selectedID(const frmHDAntEditor& form) { return form.TDBGridAMS.value(form.selectedRow(), "ATYPE_ID"); }

void addMissing(frmHDAntEditor& form, const Sequence& sequence, const std::vector<double>& wanted) {
  PatternPane& pane = form.pane(sequence.plane);
  const GridHold hold(pane.grid);
  // Others may have added the same angles since.
  pane.data.Requery();
  Recordset& rows = *pane.data.recordset();
  const std::set<double> present = presentAngles(rows, pane.plane.angleField);
  const bool decibels = upperCase(leftCharacters(trim(form.AntGainUn), 2)) == "DB";
  NewPoints points;
  points.id = selectedID(form);
  for (const double angle : wanted) {
    if (!present.contains(angle)) points.angles.push_back(angle);
  }
  points.gains.assign(points.angles.size(), decibels ? form.AntGain : kRelativeGain);
  ProgressWindow progress(sequence.title);
  appendPoints(rows, pane.plane, points, progress);
  pane.grid.refresh();
}

void addSequence(frmHDAntEditor& form, const Sequence& sequence) {
  if (!requireSelection(form, sequence.selectAdvice)) return;
  PatternPane& pane = form.pane(sequence.plane);
  if (!pane.data.hasRecordset()) return tellNoRows();
  SetFlag(100);
  // What stands in a cell still counts.
  if (!form.storeEntries()) return;
  SetFlag(200);
  showSelectedCut(form, sequence.plane);
  // Points of a row without an ID would belong to nobody.
  if (!pane.data.hasRecordset()) return tellNoRows();
  SetFlag(300);
  bool goOn = false;
  OKNewAnt(form, sequence.gainAdvice, goOn);
  if (!goOn) return;
  SetFlag(400);
  std::array<SeqValue, 3> values;
  if (!askForValues(form, sequence, pane, values)) return;
  SetFlag(600);
  keepValues(sequence, values);
  SetFlag(700);
  pane.progress.setCaption(sequence.progress);
  desktop().doEventsWithoutInput();
  SetFlag(800);
  addMissing(form, sequence, wholeValues(values));
}

void runSequence(frmHDAntEditor& form, const Sequence& sequence) {
  runReported(form, procedure::AddSeq, [&] { addSequence(form, sequence); });
  form.pane(sequence.plane).progress.setCaption("");
  desktop().doEvents();
}

}  // namespace

void AddSeqAHD(frmHDAntEditor& form) { runSequence(form, kAzimuths); }
void AddSeqAVD(frmHDAntEditor& form) { runSequence(form, kElevations); }

}  // namespace vantrelix

// How a library file and an ID become the values and previews of the antenna lookup control.
#include "antenna/getAntArrayDB.h"
#include "controls/reporting.h"
#include "controls/scLookAnt.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "preview/polarPlot.h"

namespace vantrelix {

struct scLookAnt::LibraryAntenna {
  double gain = 0;
  std::string unit;
  std::string description;
  std::string errorText;
  std::int16_t nHor = 0;
  std::vector<double> HorAz{0};
  std::vector<double> HorField{0};
  std::int16_t nVer = 0;
  std::vector<double> VerAngle{0};
  std::vector<double> VerField{0};
};

void scLookAnt::clearPreviews() {
  picHor.Cls();
  picVer.Cls();
}

void scLookAnt::GetAntPat() {
  const Procedure guard(procedure::scLookAnt_GetAntPat);
  const auto alive = watch();
  try {
    readAntPat();
  } catch (const std::exception& failure) {
    if (alive()) showPatterns({});
    report(failure);
  }
}

void scLookAnt::readAntPat() {
  // A message or an alert lets the host act: it may drop the control, or read another antenna.
  const auto overtaken = [this, alive = watch(), read = ++lastRead_] { return !alive() || read != lastRead_; };
  SetFlag(100);
  clearPreviews();
  LookupOnly(false);
  SetFlag(200);
  blankPlaceholders();
  LibraryAntenna antenna;
  if (!sValueFile().empty() && !sValueID().empty()) {
    SetFlag(300);
    antenna = readLibrary();
    if (overtaken()) return;
    SetFlag(400);
    takeLibraryValues(antenna);
    if (overtaken()) return;
  }
  SetFlag(500);
  showPatterns(antenna);
}

// A table row that was never filled holds these words.
void scLookAnt::blankPlaceholders() {
  if (sValueFile() == "File") sValueFile("");
  if (sValueID() == "ID") sValueID("");
}

scLookAnt::LibraryAntenna scLookAnt::readLibrary() {
  LibraryAntenna antenna;
  antenna.unit = sValueUnit();
  std::string frequencyUnits = "MHz";
  double low = 0;
  double high = 0;
  // One variable as units given and units desired: the antenna comes as it is stored, and cboUnit follows the library.
  Get_Ant_ArrayDB(getAntennasPath(), sValueFile(), sValueID(), antenna.gain, antenna.unit, antenna.nHor, antenna.HorAz,
                  antenna.HorField, antenna.nVer, antenna.VerAngle, antenna.VerField, antenna.description, antenna.unit,
                  low, high, frequencyUnits, true, antenna.errorText);
  return antenna;
}

void scLookAnt::takeLibraryValues(const LibraryAntenna& antenna) {
  sValueDesc(antenna.description);
  // The unit first: its change converts the old gain, which the library's then replaces. The field's padding is no part
  // of it.
  sValueUnit(trim(antenna.unit));
  sValueGain(generalText(antenna.gain));
  if (!getINIBool("Antenna Lookup", "NoGainLock", "0")) LookupOnly(true);
  if (getLenTrim(antenna.errorText) != 0) Alerts(antenna.errorText);
}

void scLookAnt::showPatterns(const LibraryAntenna& antenna) {
  bPatAz_ = antenna.nHor > 0;
  bPatEl_ = antenna.nVer > 0;
  ShownCut azimuth = shownCut(Plane::azimuth, antenna.nHor, antenna.HorAz, antenna.HorField);
  bAzDrawn_ = azimuth.drawn;
  if (bAzDrawn_) {
    const double orientation = CValP(sValueOrient());
    for (double& angle : azimuth.angles) angle = orientation + angle;
  }
  ShownCut elevation = shownCut(Plane::elevation, antenna.nVer, antenna.VerAngle, antenna.VerField);
  bElDrawn_ = elevation.drawn;
  if (bElDrawn_) {
    const double electrical = CValP(sValueEtilt());
    const double mechanical = CValP(sValueMtilt());
    const double sign = sValueInvert() ? -1 : 1;
    for (double& angle : elevation.angles) angle = sign * (electrical + angle + mechanical);
  }
  if (azimuth.angles.size() > 1 || elevation.angles.size() > 1) {
    SeeAntPreview(antenna.gain, antenna.unit, azimuth, elevation);
  }
}

void scLookAnt::SeeAntPreview(double gain, const std::string& gainUnit, const ShownCut& azimuth,
                              const ShownCut& elevation) {
  try {
    drawCut(picHor, Plane::azimuth, polarScale(gain, gainUnit, azimuth.minimum), azimuth.angles, azimuth.values);
    drawCut(picVer, Plane::elevation, polarScale(gain, gainUnit, elevation.minimum), elevation.angles,
            elevation.values);
  } catch (const RunTimeFailure& failure) {
    logQuietly(modErrStr(failure, "Error in SeeAntPreview"));
  }
}

void scLookAnt::SeeAzimuth(double dAz, Color lColor) {
  if (bAzDrawn_) drawPointer(picHor, Plane::azimuth, dAz, lColor);
}

void scLookAnt::SeeElevation(double dEl, Color lColor) {
  if (bElDrawn_) drawPointer(picVer, Plane::elevation, dEl, lColor);
}

}  // namespace vantrelix

#include "import/nsma.h"

#include <algorithm>
#include <string_view>

#include "antenna/convertGain.h"
#include "foundation/errHand.h"
#include "foundation/getINI.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "import/nsmaContent.h"
#include "import/patternLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

// A pattern value in the units of the gain, by the units it is in; in other units it stays.
constexpr struct {
  std::string_view units;
  double (*convert)(double value, double Gain);
} kConversions[] = {
    {"DBR", [](double value, double Gain) { return value + Gain; }},
    {"LIN", [](double value, double Gain) { return 20 * log10(value) + Gain; }},
    {"DBD", [](double value, double) { return value + kDipoleOverIsotropic; }},
    {"DBI", [](double value, double) { return value - kDipoleOverIsotropic; }},
};

void convert(std::vector<double>& values, const NsmaContent& content) {
  if (content.patternUnits == content.gainUnits) return;
  for (const auto& row : kConversions) {
    if (row.units != content.patternUnits) continue;
    for (double& value : values) value = finite(row.convert(value, content.Gain));
  }
}

void fillCut(PatternCut cut, const NsmaCut& points, const NsmaContent& content, double MinValidGain) {
  cut.count = static_cast<std::int16_t>(points.angles.size());
  cut.angles = points.angles;
  cut.values = points.values;
  convert(cut.values, content);
  cut.minimum = kAboveAnyElevation;  // both cuts start there
  for (double& value : cut.values) {
    value = std::max(value, MinValidGain);
    cut.minimum = std::min(cut.minimum, value);
  }
}

ImportedAntenna antennaOf(const NsmaContent& content, const NsmaAntenna& cuts, const char* polarisation,
                          double MinValidGain) {
  ImportedAntenna antenna;
  antenna.AntName = content.maker + " " + content.model + " " + polarisation;
  antenna.Gain = content.Gain;
  antenna.GainUnits = content.gainUnits;
  antenna.Freq = content.Freq;
  antenna.FreqLow = content.FreqLow;
  antenna.FreqHigh = content.FreqHigh;
  fillCut(horizontalCut(antenna), cuts.azimuth, content, MinValidGain);
  fillCut(verticalCut(antenna), cuts.elevation, content, MinValidGain);
  return antenna;
}

void storeAntennas(ImportSource& source, const NsmaContent& content, double MinValidGain) {
  using Stored = ImportSource::Stored;
  static constexpr struct {
    NsmaAntenna NsmaContent::*cuts;
    const char* polarisation;
  } kAntennas[] = {{&NsmaContent::horizontal, "Hpol"}, {&NsmaContent::vertical, "Vpol"}};

  for (const auto& row : kAntennas) {
    const NsmaAntenna& cuts = content.*row.cuts;
    if (cuts.azimuth.angles.empty() && cuts.elevation.angles.empty()) continue;
    const Stored stored = source.store(antennaOf(content, cuts, row.polarisation, MinValidGain));
    if (stored != Stored::written && stored != Stored::failedGoOn) return;
  }
}

void readAndStore(ImportSource& source, ImportedAntenna& antenna) {
  const double MinValidGain = getINIDbl("HDAntenna", "MinValidGain", -50);
  NsmaContent content;
  if (const std::optional<NsmaRefusal> refusal = readNsmaContent(source, content)) {
    showInformation(refusal->title, refusal->text);
    antenna.ErrFlag = 1;
    antenna.reason = refusal->reason;
    return;
  }
  storeAntennas(source, content, MinValidGain);
}

void tellFailure(const RunTimeFailure& failure, ImportedAntenna& antenna) {
  const std::string text = modErrStr(failure);
  showInformation("Error on Antenna Import", text);
  antenna.fail(text);
}

}  // namespace

void readNsma(ImportSource& source, ImportedAntenna& antenna) {
  try {
    readAndStore(source, antenna);
  } catch (const RunTimeFailure& failure) {
    tellFailure(failure, antenna);
  } catch (const std::exception& failure) {
    tellFailure(RunTimeFailure(failure::internalError, failure.what()), antenna);
  }
}

}  // namespace vantrelix

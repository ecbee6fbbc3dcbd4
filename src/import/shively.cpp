#include "import/shively.h"

#include "foundation/extract.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/patternLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

void nameByFile(const std::string& path, ImportedAntenna& antenna) {
  const std::string base = ExtractBaseName(path);
  antenna.PolLetter = upperCase(midCharacters(base, characterCount(base)));
  antenna.AntName = CleanChars(base + " - " + antenna.PolLetter + " Polarization");
}

void readAzimuth(TextLines& lines, ImportedAntenna& antenna) {
  readAzimuthLines(lines, antenna, {.absoluteLevels = true, .delimiter = ","});
}

void divideByPeak(ImportedAntenna& antenna) {
  raiseGainToPeak(antenna);
  if (antenna.Gain == 0) {
    throw RunTimeFailure(failure::divisionByZero,
                         "Division by zero: no line of the file holds an angle and a value above 0");
  }
  for (double& value : antenna.HorValue) value = finite(value / antenna.Gain);
  antenna.MinHor /= antenna.Gain;
}

}  // namespace

void readShively(ImportSource& source, ImportedAntenna& antenna) {
  antenna.GainUnits = "REL";
  nameByFile(source.path(), antenna);
  readAzimuth(source.lines(), antenna);
  divideByPeak(antenna);
}

}  // namespace vantrelix

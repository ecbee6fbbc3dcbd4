#include "import/dapa.h"

#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "import/pairedFiles.h"
#include "import/patternLines.h"

namespace vantrelix {

namespace {

std::string nextValue(TextLines& lines) {
  return trim(CleanChars(TextLines::keptText(sAWK6(lines.next(), ":", 2, " "))));
}

// Single blanks part the fields: two of them before the unit leave it empty.
void readGain(const std::string& value, ImportedAntenna& antenna) {
  antenna.Gain = CValP(sAWK6(value, " ", 1, "0"));
  antenna.GainUnits = sAWK6(value, " ", 2, "dBd");
}

void readHeader(TextLines& lines, ImportedAntenna& antenna) {
  lines.next();
  antenna.AntName = nextValue(lines);
  antenna.PolLetter = nextValue(lines);
  for (int unused = 0; unused < 3; ++unused) lines.next();
  readGain(nextValue(lines), antenna);
  antenna.Freq = antenna.FreqLow = antenna.FreqHigh = CValP(nextValue(lines));
}

void readElevation(TextLines& lines, ImportedAntenna& antenna) {
  readElevationLines(lines, antenna, {.angle = unchangedAngle, .minimumAboveMinus50 = true});
}

std::string partnerOf(const std::string& path, const ImportedAntenna& antenna) {
  const std::string base = trim(ExtractBaseName(path));
  if (base.empty()) return "";
  return withBaseName(path, (antenna.PolLetter == "H" ? "e" : "h") + midCharacters(base, 2));
}

constexpr PairRules kRules = {readHeader, readAzimuthLines, readElevation, "H", "VE", partnerOf};

}  // namespace

void readDapa(ImportSource& source, ImportedAntenna& antenna) { readPair(source, antenna, kRules); }

}  // namespace vantrelix

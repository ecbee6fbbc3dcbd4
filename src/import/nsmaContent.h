// What a file of NSMA recommendation WG16.99.050 holds: keyword lines "KEYWORD:,value" and, behind each "PATCUT", the
// points of one cut.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "import/ImportFormat.h"

namespace vantrelix {

struct NsmaCut {
  std::vector<double> angles;  // degrees, as the file has them
  std::vector<double> values;  // in the pattern units; as many as angles, at most 32767
};

struct NsmaAntenna {
  NsmaCut azimuth;
  NsmaCut elevation;
};

struct NsmaContent {
  std::string maker;
  std::string model;
  double FreqLow = 0;  // MHz
  double FreqHigh = 0;
  double Freq = 0;
  double Gain = 0;
  std::string gainUnits;  // both in capitals; blank where the file names none
  std::string patternUnits;
  NsmaAntenna horizontal;  // polarisation "H/H"
  NsmaAntenna vertical;    // polarisation "V/V"
};

// Why a file is not imported.
struct NsmaRefusal {
  std::string title;  // of the box
  std::string text;
  std::string reason;  // one sentence, for the log and the report
};

// Reads the chosen file up to "ENDFIL". Asks the user where the revision is another one or the pattern units are
// missing. Gives the refusal of a file that holds what cannot be imported. Fails with 62 where the file has no
// "ENDFIL", with 13 or 6 where the number of points is no 16-bit integer.
std::optional<NsmaRefusal> readNsmaContent(ImportSource& source, NsmaContent& content);

}  // namespace vantrelix

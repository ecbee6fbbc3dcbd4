#include "editor/antPrint.h"

#include <cstdint>
#include <exception>
#include <string_view>
#include <vector>

#include "dialogs/PrtOutUtils.h"
#include "editor/exportedAntenna.h"
#include "editor/frmHDAntEditor.h"
#include "editor/selectedAntenna.h"
#include "editor/showCuts.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr const char* kPrintFile = "QVPrnFil.TXT";
constexpr const char* kGainFormat = "###0.00";
constexpr const char* kPointFormat = "#0.000";

struct Headings {
  Plane plane;
  std::string_view angle;
  std::string_view value;
};

// By number of the cut.
constexpr Headings kCuts[] = {
    {Plane::azimuth, "  AZIM", "   HOR FIELD"},
    {Plane::elevation, " ANGLE", "   VER FIELD"},
};

std::string rightAligned(double value, std::string_view heading) {
  return PadLeft(value, kPointFormat, heading.size(), false);
}

bool isCut(int which) { return which == 0 || which == 1; }

}  // namespace

std::string tabulation(frmHDAntEditor& form, int which) {
  if (!isCut(which)) return "";
  const Headings& cut = kCuts[which];
  std::int16_t n = 0;
  std::vector<double> angles, gains;
  showSelectedCut(form, cut.plane);
  form.pane(cut.plane).GetPat(n, angles, gains);
  const ExportedAntenna antenna = exportedAntenna(form);
  std::string text = antenna.description + kLineBreak + formatNumber(antenna.gain, kGainFormat) + " " + antenna.gainUn +
                     kLineBreak + std::string(cut.angle) + std::string(cut.value) + kLineBreak;
  for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i) {
    text += rightAligned(angles[i], cut.angle) + rightAligned(gains[i], cut.value) + kLineBreak;
  }
  return text;
}

void AntPrint(frmHDAntEditor& form, int which) {
  if (!requireAnySelection(form, "Then click the copy button to make a copy of that antenna.")) return;
  if (!isCut(which)) return;
  const Procedure guard(procedure::AntPrint);
  const std::string path = setPathName(getWorkPath(), kPrintFile);
  try {
    SetFlag(100);
    if (!form.storeEntries()) return;
    const std::string text = tabulation(form, which);
    SetFlag(200);
    platform::replaceWholeFile(path, text);
    SetFlag(300);
    PrtOutUtils(path, "FILE");
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, displayPath(path));
  } catch (const std::exception& failure) {
    ErrHand(failure, displayPath(path));
  }
}

void AntPlot(frmHDAntEditor&, int) {}

}  // namespace vantrelix

// Whether an antenna may leave the editor.
#pragma once

#include <string>

namespace vantrelix {

class frmHDAntEditor;

// Tests the selected antenna: a gain, no blank cell in its cuts, the largest value of each cut within 0.1 of the gain,
// in display units. Shows what is wrong; the user may accept all but blank cells. True where it may be used. Leaves
// each pattern grid on its first fault.
bool OKAntPattern(frmHDAntEditor& form);

// What OKAntPattern found, without asking: blank where nothing is wrong.
struct PatternProblems {
  std::string text;
  bool blankEntries = false;
};
PatternProblems findPatternProblems(frmHDAntEditor& form);

// Warns of an antenna still in its default state (unity gain, no band) before points are added to it; `prefix` is a
// line of advice. `ok` tells whether to go on.
void OKNewAnt(frmHDAntEditor& form, const std::string& prefix, bool& ok);

}  // namespace vantrelix

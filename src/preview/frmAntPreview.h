// Both cuts of one antenna as polar plots, and the question whether it is to be added to a library.
//
// The place stands in section "CONFIG" of the defaults file: it is restored where the form is made and kept where it
// goes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "preview/polarPlot.h"
#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {

// Sorts the first n angles upward, and the gains with them; points of one angle in no fixed order, those without a
// number last. What goes beyond the shorter array is left out.
void SortPattern(std::int16_t n, std::vector<double>& angles, std::vector<double>& gains);

// The arrays of a cut hold its first point at index 0, degrees and values in the antenna's own units; what goes beyond
// the count, or beyond the shorter array, is not drawn. hLow and vLow are the smallest values of the two cuts. Drawing
// throws as drawCut does, and then shows no former antenna.
class frmAntPreview : public Form {
 public:
  // A click on the button puts its value into lAction and hides the form. Enter presses the first button, Escape and
  // the frame the third.
  enum Button : std::size_t { adding, skipping, cancelling, endingPreviews };
  enum Action : long { kCancel = 2, kNoPreview = 5, kAdd = 6, kSkip = 7 };

  frmAntPreview();
  ~frmAntPreview() override;

  Frame fraAnt{"fraAnt"};
  Label lblAnt{"lblAnt"};
  Frame fraHor{"fraHor"};
  PictureBox picHor{"picHor"};
  Frame fraVer{"fraVer"};
  PictureBox picVer{"picVer"};
  std::array<CommandButton, 4> Command1{CommandButton{"Command1_0"}, CommandButton{"Command1_1"},
                                        CommandButton{"Command1_2"}, CommandButton{"Command1_3"}};

  // The last answer, or what was put behind it; 0 where there was neither.
  long lAction() const;
  void lAction(long action);

  // Draws, and does not show the form. The azimuth cut is sorted first, in the arrays given.
  void AntPreview(const std::string& name, double gain, const std::string& gainUn, double hLow, double vLow,
                  std::int16_t nAz, std::vector<double>& az, std::vector<double>& azGain, std::int16_t nEl,
                  const std::vector<double>& el, const std::vector<double>& elGain);
  // Draws the cuts in the order given, under lines of text, shows the form modally, with the keyboard on the first
  // button, and gives lAction. Only units that begin with "DB" have a plot floor.
  void lAntPreview(const std::string& text, const std::string& name, double gain, const std::string& gainUn,
                   double hLow, double vLow, std::int16_t nAz, const std::vector<double>& az,
                   const std::vector<double>& azGain, std::int16_t nEl, const std::vector<double>& el,
                   const std::vector<double>& elGain, long& action);

 private:
  void nameWidgets();
  void answer(long action);

  std::string lAction_;  // in text form
};

}  // namespace vantrelix

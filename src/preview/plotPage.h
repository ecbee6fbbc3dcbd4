// Both cuts of an antenna on a page, as the previews show them: what a writer of any drawing format needs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "antenna/AntRecord.h"
#include "ui/widgets.h"

namespace vantrelix {

// Two pictures side by side with their captions and the antenna's name, gain and band above, in twips.
struct PlotPage {
  int width = 0;
  int height = 0;
  struct Text {
    int x = 0, baseline = 0, size = 0;
    bool bold = false;
    std::string text;
  };
  std::vector<Text> texts;
  std::vector<std::unique_ptr<PictureBox>> pictures;  // each with its geometry on the page
};

// "Gain: 12.50 dBd".
std::string gainText(double gain, const std::string& gainUnits);

// A band of 0 to 0 is not known and left out.
PlotPage plotPage(const AntRecord& antenna);

}  // namespace vantrelix

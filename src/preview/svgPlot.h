// Both cuts of an antenna as a drawing file, as the previews show them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "antenna/AntRecord.h"
#include "ui/widgets.h"

namespace vantrelix {

// A page of two pictures side by side with their captions and the antenna's name above, in twips; what a writer of any
// drawing format needs.
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

PlotPage plotPage(const AntRecord& antenna);
std::string svgOf(const PlotPage& page);

}  // namespace vantrelix

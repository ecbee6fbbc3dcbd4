#include "preview/plotPage.h"

#include <algorithm>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "preview/polarPlot.h"

namespace vantrelix {

namespace {

// The page in twips: a margin, a heading of two lines, the captions, the two pictures side by side.
constexpr int kMargin = 360;
constexpr int kPicture = 4320;
constexpr int kRight = 2 * kMargin + kPicture;
constexpr int kHeadingBaseline = 660;
constexpr int kDetailBaseline = 1035;
constexpr int kCaptionBaseline = 1530;
constexpr int kPictureTop = 1650;
constexpr int kWidth = 3 * kMargin + 2 * kPicture;
constexpr int kHeight = kPictureTop + kPicture + kMargin;
constexpr int kDetailSize = 210;
constexpr int kCaptionSize = 210;
constexpr int kLargestHeading = 300;
constexpr int kSmallestHeading = 120;
// Mean width of a bold letter in sizes, on the generous side.
constexpr double kLetterWidth = 0.72;

// As large as a description of that length can be and still stand on one line.
int headingSize(const std::string& text) {
  const double letters = static_cast<double>(std::max<std::size_t>(characterCount(text), 1));
  const double fitting = (kWidth - 2 * kMargin) / (kLetterWidth * letters);
  return static_cast<int>(std::clamp<double>(fitting, kSmallestHeading, kLargestHeading));
}

std::string bandText(const AntRecord& antenna) {
  const double low = antenna.lowFrequency;
  const double high = antenna.highFrequency;
  if (low == 0 && high == 0) return "";
  return generalText(low) + (low == high ? "" : " - " + generalText(high)) + " " + trim(antenna.freqUnits);
}

std::vector<PlotPage::Text> textsOf(const AntRecord& antenna) {
  std::vector<PlotPage::Text> texts = {
      {kMargin, kHeadingBaseline, headingSize(antenna.description), true, antenna.description},
      {kMargin, kDetailBaseline, kDetailSize, false, gainText(antenna.gain, trim(antenna.gainUnits))}};
  const std::string band = bandText(antenna);
  if (!band.empty()) texts.push_back({kRight, kDetailBaseline, kDetailSize, false, band});
  texts.push_back({kMargin, kCaptionBaseline, kCaptionSize, true, "Azimuth"});
  texts.push_back({kRight, kCaptionBaseline, kCaptionSize, true, "Elevation"});
  return texts;
}

std::unique_ptr<PictureBox> picture(const char* name, int left) {
  auto box = std::make_unique<PictureBox>(name);
  box->setGeometry({left, kPictureTop, kPicture, kPicture});
  return box;
}

void draw(PictureBox& box, Plane plane, const ShownCut& cut, const AntRecord& antenna) {
  drawCut(box, plane, polarScale(antenna.gain, antenna.gainUnits, cut.minimum), cut.angles, cut.values);
}

}  // namespace

std::string gainText(double gain, const std::string& gainUnits) {
  return "Gain: " + formatNumber(gain, "###0.00") + " " + gainUnits;
}

PlotPage plotPage(const AntRecord& antenna) {
  PlotPage page;
  page.width = kWidth;
  page.height = kHeight;
  page.texts = textsOf(antenna);
  page.pictures.push_back(picture("picHor", kMargin));
  page.pictures.push_back(picture("picVer", kRight));
  const ShownCut azimuth = shownCut(Plane::azimuth, antenna.nHor, antenna.HorAz, antenna.HorField);
  const ShownCut elevation = shownCut(Plane::elevation, antenna.nVer, antenna.VerAngle, antenna.VerField);
  if (azimuth.drawn || elevation.drawn) {
    draw(*page.pictures[0], Plane::azimuth, azimuth, antenna);
    draw(*page.pictures[1], Plane::elevation, elevation, antenna);
  }
  return page;
}

}  // namespace vantrelix

#include "preview/frmAntPreview.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <tuple>
#include <utility>

#include "dialogs/windowPlacement.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "preview/plotPage.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

// In twips.
constexpr int kWidth = 10200;
constexpr int kHeight = 7800;

struct Answer {
  const char* caption;
  const char* toolTip;
  long action;
};
constexpr Answer kAnswers[] = {
    {"Add", "Add this antenna", frmAntPreview::kAdd},
    {"Skip", "Do NOT add this antenna", frmAntPreview::kSkip},
    {"Cancel", "Cancel this process", frmAntPreview::kCancel},
    {"No Preview", "Continue without previews", frmAntPreview::kNoPreview},
};

std::string countText(std::int16_t count, const char* points) {
  return count > 0 ? std::to_string(count) + points : " ";
}

std::string antennaText(const std::string& name, double gain, const std::string& gainUn, std::int16_t nAz,
                        std::int16_t nEl) {
  return name + kLineBreak + gainText(gain, gainUn) + kLineBreak + countText(nAz, " Azimuths; ") +
         countText(nEl, " Elevations");
}

std::size_t pointsIn(std::int16_t count, const std::vector<double>& angles, const std::vector<double>& values) {
  return std::min({static_cast<std::size_t>(std::max<std::int16_t>(count, 0)), angles.size(), values.size()});
}

struct Cut {
  PictureBox& picture;
  Plane plane;
  double low;
  std::int16_t count;
  const std::vector<double>& angles;
  const std::vector<double>& values;
};

void draw(const Cut& cut, double gain, const std::string& gainUn, const PolarOptions& options) {
  const auto points = static_cast<std::ptrdiff_t>(pointsIn(cut.count, cut.angles, cut.values));
  drawCut(cut.picture, cut.plane, polarScale(gain, gainUn, cut.low), {cut.angles.begin(), cut.angles.begin() + points},
          {cut.values.begin(), cut.values.begin() + points}, options);
}

void draw(const Cut& azimuth, const Cut& elevation, double gain, const std::string& gainUn,
          const PolarOptions& options) {
  // An azimuth cut that cannot be drawn must not leave another antenna's elevation cut beside it.
  elevation.picture.Cls();
  draw(azimuth, gain, gainUn, options);
  draw(elevation, gain, gainUn, options);
}

bool comesBefore(double angle, double other) { return std::isnan(other) ? !std::isnan(angle) : angle < other; }

}  // namespace

void SortPattern(std::int16_t n, std::vector<double>& angles, std::vector<double>& gains) {
  const std::size_t count = pointsIn(n, angles, gains);
  std::vector<std::pair<double, double>> points;
  points.reserve(count);
  for (std::size_t i = 0; i < count; ++i) points.emplace_back(angles[i], gains[i]);
  std::sort(points.begin(), points.end(), [](const auto& a, const auto& b) { return comesBefore(a.first, b.first); });
  for (std::size_t i = 0; i < count; ++i) std::tie(angles[i], gains[i]) = points[i];
}

frmAntPreview::frmAntPreview() : Form("frmAntPreview") {
  setCaption("Antenna Preview");
  setSize(kWidth, kHeight);
  nameWidgets();
  for (std::size_t i = 0; i < Command1.size(); ++i) {
    Command1[i].click.listen([this, i] { answer(kAnswers[i].action); });
  }
  setDefaultButton(&Command1[adding]);
  setCancelButton(&Command1[cancelling]);
  SetFormLoc(*this);
}

// Without any screen the form has no place.
frmAntPreview::~frmAntPreview() {
  try {
    if (placed()) SaveFormLoc(*this);
  } catch (const std::exception&) {
    // The place of a window is not worth a failure in what goes on without it.
  }
}

void frmAntPreview::nameWidgets() {
  fraAnt.setCaption("Antenna");
  fraHor.setCaption("Azimuth Pattern");
  fraVer.setCaption("Elevation Pattern");
  for (Widget* widget : std::initializer_list<Widget*>{&fraAnt, &lblAnt, &fraHor, &picHor, &fraVer, &picVer}) {
    add(*widget);
  }
  for (std::size_t i = 0; i < Command1.size(); ++i) {
    add(Command1[i]);
    Command1[i].setCaption(kAnswers[i].caption);
    Command1[i].setToolTip(kAnswers[i].toolTip);
    Command1[i].setTabIndex(static_cast<int>(i));
  }
}

long frmAntPreview::lAction() const { return static_cast<long>(CValP(lAction_)); }

void frmAntPreview::lAction(long action) { lAction_ = std::to_string(action); }

void frmAntPreview::answer(long action) {
  lAction(action);
  hide();
}

void frmAntPreview::AntPreview(const std::string& name, double gain, const std::string& gainUn, double hLow,
                               double vLow, std::int16_t nAz, std::vector<double>& az, std::vector<double>& azGain,
                               std::int16_t nEl, const std::vector<double>& el, const std::vector<double>& elGain) {
  lblAnt.setCaption(antennaText(name, gain, gainUn, nAz, nEl));
  SortPattern(nAz, az, azGain);
  draw({picHor, Plane::azimuth, hLow, nAz, az, azGain}, {picVer, Plane::elevation, vLow, nEl, el, elGain}, gain, gainUn,
       previewOptions());
}

void frmAntPreview::lAntPreview(const std::string& text, const std::string& name, double gain,
                                const std::string& gainUn, double hLow, double vLow, std::int16_t nAz,
                                const std::vector<double>& az, const std::vector<double>& azGain, std::int16_t nEl,
                                const std::vector<double>& el, const std::vector<double>& elGain, long& action) {
  lblAnt.setCaption(text + kLineBreak + antennaText(name, gain, gainUn, nAz, nEl));
  draw({picHor, Plane::azimuth, hLow, nAz, az, azGain}, {picVer, Plane::elevation, vLow, nEl, el, elGain}, gain, gainUn,
       importPreviewOptions(gainUn));
  setFocus(Command1[adding]);
  desktop().showModal(*this);
  action = lAction();
}

}  // namespace vantrelix

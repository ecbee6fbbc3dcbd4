#include "madeAntennas.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <numeric>
#include <random>

namespace vantrelix::bench {

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;
constexpr double kDeepest = 45;  // dB below the peak; patterns of makers end about there

// The library's distributions differ from one standard library to another; these figures do not.
class Dice {
 public:
  explicit Dice(int number) : random_(static_cast<std::mt19937::result_type>(number)) {}
  int between(int low, int high) { return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1)); }

 private:
  std::mt19937 random_;
};

// Tables keep four decimals. A whole number divided by a power of ten is the double nearest to that decimal number.
double hundredths(double value) { return std::round(value * 100) / 100; }

struct Lobe {
  double width;  // degrees between the points 3 dB down
  int sideLobes;
};

double lossAt(double offPeak, const Lobe& lobe, double ripple) {
  const double main = 12 * (offPeak / lobe.width) * (offPeak / lobe.width);
  const double side = 18 + 9 * std::abs(std::sin(lobe.sideLobes * offPeak * kDegree)) + ripple;
  return std::min({main, side, kDeepest});
}

Cut madeCut(double first, double step, double gain, const Lobe& lobe, Dice& dice) {
  Cut cut;
  for (int i = 0; i < kPoints; ++i) {
    const double angle = first + i * step;
    const double offPeak = angle > 180 ? angle - 360 : angle;
    cut.angles.push_back(angle);
    cut.values.push_back(hundredths(gain - lossAt(offPeak, lobe, dice.between(0, 300) / 100.0)));
  }
  return cut;
}

MadeAntenna madeAntenna(int number) {
  Dice dice(number + 1);
  static constexpr int kBands[][2] = {{380, 470},   {694, 960},   {824, 896},   {1427, 1518},
                                      {1710, 2170}, {2300, 2690}, {3300, 3800}, {5150, 5925}};
  const auto& band = kBands[dice.between(0, 7)];
  const Lobe horizontal{dice.between(200, 1100) / 10.0, dice.between(3, 8)};
  const Lobe vertical{dice.between(40, 300) / 10.0, dice.between(6, 13)};
  MadeAntenna made;
  MasterRow& row = made.master;
  row.gain = hundredths(10 * std::log10(32000 / (horizontal.width * vertical.width)));
  row.gainUnits = dice.between(0, 1) == 0 ? "dBd" : "dBi";
  row.fLow = band[0];
  row.fHigh = band[1];
  row.freqUnits = "MHz";
  char details[48];
  std::snprintf(details, sizeof details, " %.1f/%.1f deg %d-%d MHz", horizontal.width, vertical.width, band[0],
                band[1]);
  row.description = nameOf(number) + details;
  made.horizontal = madeCut(0, 1, row.gain, horizontal, dice);
  made.vertical = madeCut(-90, 0.5, row.gain, vertical, dice);
  return made;
}

}  // namespace

std::string nameOf(int number) {
  const std::string digits = std::to_string(number);
  return "Panel " + std::string(5 - std::min<std::size_t>(digits.size(), 5), '0') + digits;
}

std::string idAt(int place) {
  const std::string digits = std::to_string(place + 1);
  return kCode + std::string(7 - std::min<std::size_t>(digits.size(), 7), '0') + digits;
}

MadeLibrary::MadeLibrary(int count) : order_(static_cast<std::size_t>(count)) {
  std::iota(order_.begin(), order_.end(), 0);
  Dice dice(1);
  for (int i = count - 1; i > 0; --i) {
    std::swap(order_[static_cast<std::size_t>(i)], order_[static_cast<std::size_t>(dice.between(0, i))]);
  }
}

MadeAntenna MadeLibrary::at(int place) const {
  MadeAntenna made = madeAntenna(place < count() ? order_[static_cast<std::size_t>(place)] : place);
  made.master.id = idAt(place);
  return made;
}

std::vector<MasterRow> MadeLibrary::list() const {
  std::vector<MasterRow> rows(order_.size());
  for (int place = 0; place < count(); ++place) {
    rows[static_cast<std::size_t>(order_[static_cast<std::size_t>(place)])] = at(place).master;
  }
  return rows;
}

Cut MadeLibrary::horizontalRange() const {
  double low = std::numeric_limits<double>::max(), high = std::numeric_limits<double>::lowest();
  for (int place = 0; place < count(); ++place) {
    for (const double value : at(place).horizontal.values) {
      low = std::min(low, value);
      high = std::max(high, value);
    }
  }
  return {{}, {low, high}};
}

}  // namespace vantrelix::bench

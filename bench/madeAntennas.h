// Made-up antennas, the same ones in every run: 360 points of azimuth and 360 of elevation, a main lobe, side lobes of
// their own number and a ripple. Nothing here knows a table or the library's own code, so that a rival's program can be
// built from it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vantrelix::bench {

// A row of an antenna library's master table, every field of it.
struct MasterRow {
  std::string id;
  std::string description;
  double gain = 0;  // in gainUnits
  std::string gainUnits;
  double fLow = 0;  // in freqUnits
  double fHigh = 0;
  std::string freqUnits;
  std::optional<double> power;
  std::string powerUnits;

  friend bool operator==(const MasterRow&, const MasterRow&) = default;
};

struct Cut {
  std::vector<double> angles;  // ascending, in degrees
  std::vector<double> values;  // gain in the units of the antenna's

  friend bool operator==(const Cut&, const Cut&) = default;
};

struct MadeAntenna {
  MasterRow master;
  Cut horizontal;
  Cut vertical;

  friend bool operator==(const MadeAntenna&, const MadeAntenna&) = default;
};

constexpr const char* kCode = "BENCH";
constexpr int kPoints = 360;  // of a cut

// What an antenna's description begins with; orders like the number.
std::string nameOf(int number);
// The ID of the antenna at a place of a library, counted from 0, as the library's writer gives it.
std::string idAt(int place);

// The antennas of a library of that many: their order of descriptions is not that of their IDs.
class MadeLibrary {
 public:
  explicit MadeLibrary(int count);
  int count() const { return static_cast<int>(order_.size()); }
  // Behind the last place stand further antennas, to be appended.
  MadeAntenna at(int place) const;
  // In order of descriptions.
  std::vector<MasterRow> list() const;
  // Lowest and highest value of all horizontal cuts.
  Cut horizontalRange() const;

 private:
  std::vector<int> order_;
};

}  // namespace vantrelix::bench

// An antenna in the editor for work without a screen.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "preview/polarPlot.h"

namespace vantrelix {

class frmHDAntEditor;

// Makes a row of the antenna list the current one and the one selected, with its cuts in the pattern grids, for the
// procedures that work on the selected antenna. Other than a selection it draws nothing and writes nothing to the
// table: a blank gain stays blank. A row without an ID has no cuts. Fails as DataControl::Refresh does.
void showCuts(frmHDAntEditor& form, int row);
// The same for an antenna by its ID; false where the library has none.
bool showCuts(frmHDAntEditor& form, const std::string& id);

// The selected antenna's cut where its grid shows another's still, or nothing, since it could not be loaded. Fails as
// showCuts does.
void showSelectedCut(frmHDAntEditor& form, Plane plane);

// The cuts of a whole library, read once: a query runs over all points of the library, which many antennas cannot
// afford. What the grids show of them cannot be written back.
class LibraryCuts {
 public:
  // Fails as OpenRecordset does.
  explicit LibraryCuts(frmHDAntEditor& form);

  void show(int row) const;
  bool show(const std::string& id) const;

 private:
  struct Point {
    std::optional<double> angle;
    std::optional<double> gain;
  };
  // By the antenna's ID in capitals, in the order of the grid.
  using Cuts = std::unordered_map<std::string, std::vector<Point>>;

  void read(Plane plane);
  void showCut(Plane plane, const std::string& id) const;
  const Cuts& cuts(Plane plane) const { return plane == Plane::azimuth ? azimuth_ : elevation_; }

  frmHDAntEditor& form_;
  Cuts azimuth_;
  Cuts elevation_;
};

}  // namespace vantrelix

// One cut in the editor: its grid, its thumbnail and their frames.
//
// The table holds values in the antenna's own gain units; the grid shows and takes them in the display units. An angle
// outside the plane's limits and a gain above the antenna's are refused with a message and leave the cell in editing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "editor/DataControl.h"
#include "editor/patternPlane.h"
#include "ui/DataGrid.h"
#include "ui/widgets.h"

namespace vantrelix {

class frmHDAntEditor;

// The points of a cut in the order of the grid, as stored.
struct PatternPoints {
  std::int16_t count = 0;
  std::vector<double> angles;
  std::vector<double> gains;
  double low = 0;  // the smallest gain, 0 at most
};

class PatternPane {
 public:
  PatternPane(frmHDAntEditor& form, const PatternPlane& plane);

  const PatternPlane& plane;
  DataGrid grid;
  DataControl data;
  Frame frame;
  Label progress;
  Frame thumbnailFrame;
  PictureBox thumbnail;

  // Finds the columns, brings back their layout and gives them captions and formats; behind each new binding.
  void SetCols();
  int colID() const { return colID_; }
  int colAngle() const { return colAngle_; }
  int colGain() const { return colGain_; }

  // Binds the grid to the cut of an antenna; `order` is what follows "Order by [field]". A failure leaves what was
  // shown.
  void load(const std::string& id, const std::string& order);
  // The same antenna again in another order; nothing where none is shown.
  void reorder(const std::string& order);
  // Whether it shows the cut of the antenna of an ID, nothing for a blank one. It does not where that could not be
  // loaded: then it shows what it did before.
  bool shows(const Value& id) const;
  // Shows neither rows nor thumbnail.
  void clear();
  // Puts the row of the angle nearest 0 in the middle of the rows in view.
  void scrollToZero();

  // All rows as stored, nulls as 0. A cut of more than 32767 rows fails with 6.
  void GetPat(std::int16_t& n, std::vector<double>& angles, std::vector<double>& gains) const;
  // The rows without a null, read anew unless they have just been loaded.
  PatternPoints shownPoints();
  bool justLoaded = false;

 private:
  void design();
  void listen();
  int showColumn(const std::string& field, const std::string& caption, const char* format, bool visible);
  void beforeEdit(bool& refused);
  bool belongsToSelected() const;
  void beforeColUpdate(GridColumnUpdate& update);
  void takeGain(GridColumnUpdate& update, double typed) const;
  void onAddNew();
  void formatText(GridCellText& cell) const;
  void refuse(GridColumnUpdate& update, const std::string& title, const std::string& text) const;
  int nearestZero() const;

  frmHDAntEditor& form_;
  std::string id_;  // of the antenna shown
  int colID_ = -1;
  int colAngle_ = -1;
  int colGain_ = -1;
};

}  // namespace vantrelix

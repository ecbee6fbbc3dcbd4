// What both pattern grids of the editor show together.
#include <utility>

#include "editor/frmHDAntEditor.h"
#include "editor/selectedAntenna.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Antenna Editor";

// What follows the field in the order of the elevation grid.
std::string orderOf(const std::string& VertSort) {
  return upperCase(leftCharacters(VertSort, 3)) == "ASC" ? " ASC" : " DESC";
}

// A frame that says what is being read. It says again what it said before where nothing came of that.
class LoadingCaption {
 public:
  LoadingCaption(PatternPane& pane, const std::string& name)
      : frame_(pane.frame), former_(frame_.caption()), loading_(pane.plane.loadingCaption + name) {
    frame_.setCaption(loading_);
  }
  ~LoadingCaption() {
    if (frame_.caption() == loading_) frame_.setCaption(former_);
  }
  LoadingCaption(const LoadingCaption&) = delete;
  LoadingCaption& operator=(const LoadingCaption&) = delete;

 private:
  Frame& frame_;
  std::string former_;
  std::string loading_;
};

// A grid that shows nothing of what happens to it and takes no new rows.
class Rebinding {
 public:
  Rebinding(DataGrid& grid, const CheckBox& readOnly) : grid_(grid), readOnly_(readOnly), hold_(grid) {
    grid_.setAllowAddNew(false);
  }
  ~Rebinding() { grid_.setAllowAddNew(readOnly_.value() == 0); }
  Rebinding(const Rebinding&) = delete;
  Rebinding& operator=(const Rebinding&) = delete;

 private:
  DataGrid& grid_;
  const CheckBox& readOnly_;
  GridHold hold_;
};

// Both cuts have just been read: their thumbnails need not ask for them again.
class JustLoaded {
 public:
  explicit JustLoaded(frmHDAntEditor& form) : form_(form) { mark(true); }
  ~JustLoaded() { mark(false); }
  JustLoaded(const JustLoaded&) = delete;
  JustLoaded& operator=(const JustLoaded&) = delete;

 private:
  void mark(bool fresh) { form_.azimuth.justLoaded = form_.elevation.justLoaded = fresh; }

  frmHDAntEditor& form_;
};

}  // namespace

// --- A selection.

// The turns of the event loop in a load let the user select anew: that is taken up when the load has ended.
void frmHDAntEditor::selectionChanged() {
  selectAgain_ = selecting_;
  if (selecting_) return;
  selecting_ = true;
  do {
    selectAgain_ = false;
    runReported(*this, procedure::frmHDAntEditor_selectionChanged, [this] { loadSelection(); });
  } while (selectAgain_);
  selecting_ = false;
}

void frmHDAntEditor::loadSelection() {
  SetFlag(100);
  // What was typed for the antenna shown so far still counts.
  if (!TDBGridAHD.update() || !TDBGridAVD.update()) return;
  const std::string id = ChkNulls(amsValue("ATYPE_ID"), " ", false).asText();
  if (getLenTrim(id) <= 0) return clearPatterns();
  SetFlag(200);
  const bool one = TDBGridAMS.selBookmarks().count() == 1;
  Command1[continuing].setEnabled(one);
  if (!one) return;
  if (selectedRow() != TDBGridAMS.currentRow()) {
    // The user went on during a turn of the click that marked the row.
    TDBGridAMS.selBookmarks().assign({TDBGridAMS.bookmark()});
    selectionShown_ = TDBGridAMS.selBookmarks().items();
  }
  SetFlag(300);
  showID();
  takeAntennaGain();
  loadCuts(id);
}

void frmHDAntEditor::takeAntennaGain() {
  SetFlag(400);
  const int row = TDBGridAMS.currentRow();
  const Value gain = TDBGridAMS.value(row, "GAIN");
  if (gain.isNull()) TDBGridAMS.setValue(row, "GAIN", 0);
  SetFlag(500);
  if (TDBGridAMS.value(row, "GAIN_UN").isNull()) {
    TDBGridAMS.setValue(row, "GAIN_UN", DataAMS.cut("GAIN_UN", generalText(CValP(gain))));
  }
  takeGainOf(row);
}

void frmHDAntEditor::takeGainOf(int row) {
  AntGain = CValP(ChkNulls(TDBGridAMS.value(row, "GAIN"), 0, false));
  AntGainUn = ValidGainUn(row);
}

void frmHDAntEditor::loadCuts(const std::string& id) {
  SetFlag(600);
  const std::string name = amsCell("ANTENNA");
  const LoadingCaption azimuthCaption(azimuth, name);
  const LoadingCaption elevationCaption(elevation, name);
  SetFlag(700);
  const Rebinding azimuthRebinding(TDBGridAHD, chkReadOnly);
  const Rebinding elevationRebinding(TDBGridAVD, chkReadOnly);
  picHor.Cls();
  picVer.Cls();
  desktop().doEvents();
  SetFlag(800);
  azimuth.load(id, "");
  desktop().doEvents();
  SetColsAHD();
  SetFlag(900);
  elevation.load(id, orderOf(VertSort));
  desktop().doEvents();
  SetFlag(1000);
  SetColsAVD();
  {
    const JustLoaded fresh(*this);
    AntPreview();
  }
  SetFlag(1100);
  if (getINIBool(kSection, "SETV0", "-1")) elevation.scrollToZero();
}

void frmHDAntEditor::clearPatterns() {
  azimuth.clear();
  elevation.clear();
}

// --- Thumbnails.

void frmHDAntEditor::SetAntPreview(std::string& name, double& gain, std::string& gainUn, double& hLow, double& vLow,
                                   std::int16_t& nHor, std::vector<double>& az, std::vector<double>& azGain,
                                   std::int16_t& nVer, std::vector<double>& el, std::vector<double>& elGain,
                                   bool& failed) {
  failed = true;
  const int row = selectedRow();
  name = amsCellText(row, "ANTENNA");
  const auto take = [](PatternPoints&& points, std::int16_t& n, double& low, std::vector<double>& angles,
                       std::vector<double>& gains) {
    n = points.count;
    low = points.low;
    angles = std::move(points.angles);
    gains = std::move(points.gains);
  };
  take(azimuth.shownPoints(), nHor, hLow, az, azGain);
  take(elevation.shownPoints(), nVer, vLow, el, elGain);
  gain = CValP(TDBGridAMS.value(row, "GAIN"));
  gainUn = ValidGainUn(row);
  failed = false;
}

void frmHDAntEditor::AntPreview() {
  std::string name, gainUn;
  double gain = 0, hLow = 0, vLow = 0;
  std::int16_t nHor = 0, nVer = 0;
  std::vector<double> az, azGain, el, elGain;
  bool failed = true;
  SetAntPreview(name, gain, gainUn, hLow, vLow, nHor, az, azGain, nVer, el, elGain, failed);
  if (failed) return;
  drawCut(picHor, Plane::azimuth, polarScale(gain, gainUn, hLow), az, azGain, thumbnailOptions());
  drawCut(picVer, Plane::elevation, polarScale(gain, gainUn, vLow), el, elGain, thumbnailOptions());
}

// --- Order.

void frmHDAntEditor::sortElevations(const std::string& order) {
  VertSort = order;
  mnuConfigVertSortDESC.setChecked(order == "DESC");
  mnuConfigVertSortASC.setChecked(order != "DESC");
  runReported(*this, procedure::frmHDAntEditor_sortElevations, [&] {
    if (!setINI(kSection, "VertPatSort", getDefaultsINI(), order)) {
      logQuietly("The order of the elevation grid could not be kept in " + displayPath(getDefaultsINI()));
    }
    if (TDBGridAVD.update()) elevation.reorder(orderOf(order));
  });
}

}  // namespace vantrelix

// The antenna editor: one modal form over an antenna library for two jobs, the look-up, which picks an antenna and
// hands it back, and the editor. They differ in what the form shows and allows, never in the data it works on.
//
// Values stand in the tables in a row's own units; the grids show and take gains in the suite's display units and
// frequencies in MHz. A frequency of interest of 0 or less means none.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "editor/DataControl.h"
#include "editor/PatternPane.h"
#include "import/importMenu.h"
#include "ui/DataGrid.h"
#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {

// Where a session stands.
namespace sessionResult {
inline constexpr std::uint16_t ended = 0;       // with a chosen antenna, or free to end
inline constexpr std::uint16_t lookingUp = 88;  // nothing has been chosen yet
inline constexpr std::uint16_t cancelled = 65535;
}  // namespace sessionResult

// The mode of a look-up; any other text is the editor's.
inline constexpr const char* kLookupMode = "LOOKUP";

class EditingMark;

class frmHDAntEditor : public Form {
 public:
  frmHDAntEditor();
  ~frmHDAntEditor() override;

  // Prepares a session; to be run before the form is shown, which SessionResult 65535 forbids. `FileName` is the AMS
  // file; with a folder in front it is that folder's, else the antennas folder's. A blank LibDesc is looked up. `ID`
  // names the antenna to stand on; blank for none.
  void InitForm(const std::string& FileName, const std::string& LibDesc, const std::string& Mode, double Freq,
                const std::string& Title, const std::string& ID);
  // The window is gone: keeps its place, size, columns and the tolerance.
  void unload();

  // --- The session.
  std::string FormMode;                   // "LOOKUP", or anything else for the editor
  std::string Freq;                       // of interest, MHz
  double FreqDelta = 0;                   // its tolerance, MHz
  std::string LibDesc;                    // the library's friendly name
  std::string AMSName, AHDName, AVDName;  // table names
  std::string Mfg;                        // the library's code of five characters
  std::string VertSort;                   // "ASC" or "DESC"
  std::string GainUnits;                  // of display
  double AntGain = 0;                     // of the current antenna, in AntGainUn
  std::string AntGainUn;
  bool Loading = false;  // until InitForm has finished
  bool NewRow = false;   // from the beginning of a new AMS row until its defaults are filled
  std::uint16_t SessionResult = sessionResult::ended;
  std::string SelID, SelAntenna, SelGain, SelGainUn, SelFLow, SelFHigh, SelFreqUn;  // the antenna chosen
  bool lookingUp() const { return FormMode == kLookupMode; }
  const std::string& folder() const { return folder_; }

  // --- Widgets.
  Frame fraAMS{"fraAMS"};
  DataGrid TDBGridAMS{"TDBGridAMS"};
  DataControl DataAMS{TDBGridAMS};
  PatternPane azimuth{*this, patternPlane(Plane::azimuth)};
  PatternPane elevation{*this, patternPlane(Plane::elevation)};
  PatternPane& pane(Plane plane) { return plane == Plane::azimuth ? azimuth : elevation; }
  DataGrid &TDBGridAHD = azimuth.grid, &TDBGridAVD = elevation.grid;
  DataControl &DataAHD = azimuth.data, &DataAVD = elevation.data;
  Frame &fraAHD = azimuth.frame, &fraAVD = elevation.frame;
  Label &lblAzPat = azimuth.progress, &lblElPat = elevation.progress;
  Frame &fraHor = azimuth.thumbnailFrame, &fraVer = elevation.thumbnailFrame;
  PictureBox &picHor = azimuth.thumbnail, &picVer = elevation.thumbnail;
  Label lblFreq{"lblFreq"};
  TextBox txtFreq{"txtFreq"}, txtFreqDelta{"txtFreqDelta"};
  DropDownList cboFreqDelta{"cboFreqDelta"};
  TextBox txtID{"txtID"};
  CheckBox chkReadOnly{"chkReadOnly"};
  Label lblProgress{"lblProgress"};
  enum Button : std::size_t {
    copying,
    printingAzimuth,
    plottingAzimuth,
    plottingElevation,
    printingElevation,
    refreshingAzimuth,
    refreshingElevation,
    exporting,
    importing,
    addingAzimuths,
    addingElevations,
    continuing,
    cancelling,
    buttonCount
  };
  std::array<CommandButton, buttonCount> Command1;
  MenuItem mnuConfig{"mnuConfig", "Configure"};
  Menu mnuConfigMenu{"mnuConfigMenu"};
  MenuItem mnuConfigVertSort{"mnuConfigVertSort", "Elevation Sort"};
  Menu mnuConfigVertSortMenu{"mnuConfigVertSortMenu"};
  MenuItem mnuConfigVertSortASC{"mnuConfigVertSortASC", "Ascending"};
  MenuItem mnuConfigVertSortDESC{"mnuConfigVertSortDESC", "Descending"};
  ImportMenu mnuImport;

  // --- The antenna list.
  void SetColsAMS();
  // The tolerance of the controls in MHz; keeps it and colours the rows anew.
  double CalcFreqDelta();
  // Whether exactly one row is selected; otherwise tries to select the current one, and gives false.
  bool IsAntSelected();
  // Selects the current row, and that alone, and shows its patterns.
  void SelectAntenna();
  // The units of a row: those stored where they are known ones, else the display gain units and "MHz".
  std::string ValidGainUn(int row) const;
  std::string ValidFreqUn(int row) const;
  // The one selected row; -1 where none or several are.
  int selectedRow() const;
  // A stored value of the current row; null where there is no row.
  Value amsValue(const std::string& field) const;
  // What the cell of a row, or of the current one, shows.
  std::string amsCellText(int row, const std::string& field) const;
  std::string amsCell(const std::string& field) const;
  // Fills what a new AMS row lacks, its ID above all, where NewRow is set.
  void finishNewRow();
  // "Ant ID: " and the current row's ID.
  void showID();
  // A click on a cell stores the entry under way; the pattern grids do the same.
  static void commitClicked(DataGrid& grid, const DataControl& data);
  // Goes to the antenna and selects it; false where the library has none of that ID.
  bool goToAntenna(const std::string& id);

  // --- The pattern grids.
  // The selection of the antenna list has changed: shows the antenna's cuts.
  void selectionChanged();
  void SetColsAHD() { azimuth.SetCols(); }
  void SetColsAVD() { elevation.SetCols(); }
  void GetHPat(std::int16_t& n, std::vector<double>& azimuths, std::vector<double>& gains) const {
    azimuth.GetPat(n, azimuths, gains);
  }
  void GetVPat(std::int16_t& n, std::vector<double>& angles, std::vector<double>& gains) const {
    elevation.GetPat(n, angles, gains);
  }
  // What the thumbnails need, in the antenna's own units; `failed` stays set unless all was read.
  void SetAntPreview(std::string& name, double& gain, std::string& gainUn, double& hLow, double& vLow,
                     std::int16_t& nHor, std::vector<double>& az, std::vector<double>& azGain, std::int16_t& nVer,
                     std::vector<double>& el, std::vector<double>& elGain, bool& failed);
  // Draws the thumbnails.
  void AntPreview();
  void clearPatterns();
  // The gain of a row and its units become those of the cuts.
  void takeGainOf(int row);
  // "ASC" or "DESC" for the elevation grid, kept for the next time.
  void sortElevations(const std::string& order);

  // Stores what stands in the three grids' entries. False where a listener refuses; what fails passes on.
  bool storeEntries();
  void MakeMyCaption();

 protected:
  void queryUnload() override;

 private:
  void load();
  void nameWidgets();
  void setTabOrder();
  void listen();
  void listenToAMS();
  void pressed(std::size_t button);
  void press(std::size_t button);

  void readVertSort();
  void nameLibrary(const std::string& FileName, const std::string& LibDesc);
  std::string openLibrary(const std::string& title);
  std::string makeElsewhere();
  std::string claimLibrary(const std::string& path);
  void showLibrary();
  void showJob();
  void showFrequency(bool show);
  void standOn(const std::string& id);
  void chkReadOnly_Click();

  void designAMS();
  void formatAMS(GridCellText& cell) const;
  void storeInRowUnits(GridColumnUpdate& update);
  void showGainTyped();
  void rowChanged();
  void showSelection();
  void sortAMS(int column);
  void toleranceChanged();
  void colourRow(int row, GridRowStyle& style) const;
  void beginNewRow();
  void fillNewRow();
  void showNewRow(const std::string& bookmark, const std::string& id);
  int rowOfAntenna(const std::string& id);

  void loadSelection();
  void takeAntennaGain();
  void loadCuts(const std::string& id);

  void continueSession();
  void takeSelection();
  void leaveWithout();
  std::array<std::pair<std::string*, const char*>, 7> selection();

  std::unique_ptr<EditingMark> editing_;
  std::string folder_;
  bool selecting_ = false;                   // selectionChanged is at work,
  bool selectAgain_ = false;                 // and has been asked for anew meanwhile
  std::vector<std::string> selectionShown_;  // what the list's selection was when its patterns were last shown
};

}  // namespace vantrelix

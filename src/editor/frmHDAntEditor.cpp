#include "editor/frmHDAntEditor.h"

#include <exception>
#include <initializer_list>

#include "editor/addSequence.h"
#include "editor/antCopy.h"
#include "editor/antExport.h"
#include "editor/antImport.h"
#include "editor/antPrint.h"
#include "foundation/errHand.h"
#include "foundation/procedures.h"
#include "tables/EditingMark.h"

namespace vantrelix {

namespace {

struct ButtonTexts {
  const char* caption;
  const char* toolTip;
};

// As designed, twips.
constexpr int kWidth = 15600;
constexpr int kHeight = 9900;

// By index.
constexpr ButtonTexts kButtons[frmHDAntEditor::buttonCount] = {
    {"Copy", "Add a copy of the selected antenna"},
    {"Print", "Print azimuth pattern tabulation"},
    {"Plot", "Plot the azimuth pattern"},
    {"Plot", "Plot the elevation pattern"},
    {"Print", "Print elevation pattern tabulation"},
    {"Refresh", "Refresh pattern preview to show changes"},
    {"Refresh", "Refresh pattern preview to show changes"},
    {"Export", "Write the selected antenna to an ASCII file"},
    {"Import", "Import antennas from files of other programs and makers"},
    {"Add Seq", "Add sequential azimuths"},
    {"Add Seq", "Add sequential elevations"},
    {"Continue", "Continue with the selected antenna"},
    {"Cancel", "Leave without an antenna"},
};

template <std::size_t... Index>
std::array<CommandButton, sizeof...(Index)> namedButtons(std::index_sequence<Index...>) {
  return {CommandButton{"Command1_" + std::to_string(Index)}...};
}

}  // namespace

frmHDAntEditor::frmHDAntEditor()
    : Form("frmHDAntEditor"), Command1(namedButtons(std::make_index_sequence<buttonCount>())) {
  setSize(kWidth, kHeight);
  nameWidgets();
  setTabOrder();
  listen();
  load();
}

frmHDAntEditor::~frmHDAntEditor() = default;

void frmHDAntEditor::nameWidgets() {
  for (Widget* widget : std::initializer_list<Widget*>{
           &fraAMS, &TDBGridAMS, &fraAHD, &TDBGridAHD, &lblAzPat, &fraAVD, &TDBGridAVD, &lblElPat, &fraHor, &picHor,
           &fraVer, &picVer, &lblFreq, &txtFreq, &txtFreqDelta, &cboFreqDelta, &txtID, &chkReadOnly, &lblProgress}) {
    add(*widget);
  }
  fraAMS.setCaption("Antennas");
  fraAVD.setCaption("Elevation Pattern");
  lblFreq.setCaption("Frequency (MHz)");
  txtFreq.setLocked(true);
  txtFreq.setToolTip("Frequency of interest; rows that do not cover it are marked");
  txtFreqDelta.setToolTip("Tolerance around the frequency of interest");
  cboFreqDelta.setToolTip("Unit of the tolerance");
  txtID.setLocked(true);
  txtID.setToolTip("ID of the current antenna, made by the system");
  chkReadOnly.setCaption("Read Only");
  for (std::size_t i = 0; i < buttonCount; ++i) {
    Command1[i].setCaption(kButtons[i].caption);
    Command1[i].setToolTip(kButtons[i].toolTip);
    add(Command1[i]);
  }
  setDefaultButton(&Command1[continuing]);
  setCancelButton(&Command1[cancelling]);

  addToMenuBar(mnuConfig);
  mnuConfig.setSubmenu(&mnuConfigMenu);
  mnuConfigMenu.addItem(mnuConfigVertSort);
  mnuConfigVertSort.setSubmenu(&mnuConfigVertSortMenu);
  mnuConfigVertSortMenu.addItem(mnuConfigVertSortASC);
  mnuConfigVertSortMenu.addItem(mnuConfigVertSortDESC);
}

void frmHDAntEditor::setTabOrder() {
  int tabIndex = 0;
  for (Widget* widget : std::initializer_list<Widget*>{
           &txtFreqDelta, &cboFreqDelta, &TDBGridAMS, &Command1[copying], &Command1[importing], &Command1[exporting],
           &TDBGridAHD, &Command1[addingAzimuths], &Command1[printingAzimuth], &Command1[refreshingAzimuth],
           &TDBGridAVD, &Command1[addingElevations], &Command1[printingElevation], &Command1[refreshingElevation],
           &Command1[continuing], &Command1[cancelling]}) {
    widget->setTabIndex(tabIndex++);
  }
}

void frmHDAntEditor::listen() {
  for (std::size_t i = 0; i < buttonCount; ++i) Command1[i].click.listen([this, i] { pressed(i); });
  mnuConfigVertSortASC.click.listen([this] { sortElevations("ASC"); });
  mnuConfigVertSortDESC.click.listen([this] { sortElevations("DESC"); });
  mnuImport.chosen.listen([this](const ImportFormat& format) { importInto(*this, format); });
  listenToAMS();
}

void frmHDAntEditor::pressed(std::size_t button) {
  const Procedure guard(procedure::frmHDAntEditor_Command1);
  SetFlag(static_cast<long>(button));
  try {
    press(button);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, AMSName);
  } catch (const std::exception& failure) {
    ErrHand(failure, AMSName);
  }
}

void frmHDAntEditor::press(std::size_t button) {
  switch (button) {
    case copying:
      AntCopy(*this);
      return MakeMyCaption();
    case printingAzimuth:
      return AntPrint(*this, 0);
    case plottingAzimuth:
      return AntPlot(*this, 0);
    case plottingElevation:
      return AntPlot(*this, 1);
    case printingElevation:
      return AntPrint(*this, 1);
    case refreshingAzimuth:
    case refreshingElevation:
      return AntPreview();
    case exporting:
      return AntExport(*this);
    case importing:
      AntImport(*this);
      lblProgress.setCaption("");
      return MakeMyCaption();
    case addingAzimuths:
      return AddSeqAHD(*this);
    case addingElevations:
      return AddSeqAVD(*this);
    case continuing:
      return continueSession();
    case cancelling:
      return leaveWithout();
    default:
      break;
  }
}

}  // namespace vantrelix

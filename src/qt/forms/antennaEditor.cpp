#include "qt/forms/antennaEditor.h"

#include <initializer_list>

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "qt/FormWindow.h"
#include "qt/ShareSplitter.h"
#include "qt/forms/antPreview.h"
#include "qt/plainViews.h"

namespace vantrelix::qt {

namespace {

using Button = frmHDAntEditor::Button;

// Thousandths of the room.
const std::vector<int> kListAndCuts = {440, 560};
const std::vector<int> kCutsAndThumbnails = {270, 230, 270, 230};
constexpr int kWidestTolerance = 12;  // characters
constexpr const char* kLongestID = "Ant ID: WWWWW0000000";

// By button; Configure, on the menu bar, has the C. Escape is Cancel's too.
constexpr char kMnemonics[frmHDAntEditor::buttonCount] = {'o', 'P', 0, 0, 't', 'R', 'f', 'E', 'I', 'A', 'd', 'n', 'l'};

class EditorLayout {
 public:
  EditorLayout(FormWindow& window, frmHDAntEditor& form) : window_(window), form_(form) {}

  void layOut() {
    auto* cuts = new ShareSplitter(Qt::Horizontal, form_.name() + "-Split Cuts");
    addCut(*cuts, form_.azimuth, {Button::addingAzimuths, Button::printingAzimuth, Button::plottingAzimuth},
           Button::refreshingAzimuth);
    addCut(*cuts, form_.elevation, {Button::addingElevations, Button::printingElevation, Button::plottingElevation},
           Button::refreshingElevation);
    cuts->setShares(kCutsAndThumbnails);
    auto* all = new ShareSplitter(Qt::Vertical, form_.name() + "-Split List", &window_);
    all->addWidget(&list());
    all->addWidget(cuts);
    all->setShares(kListAndCuts);
    auto* column = new QVBoxLayout(&window_);
    column->addWidget(all, 1);
    column->addLayout(ending());
    name(form_.txtFreq, "Frequency of interest");
    name(form_.txtFreqDelta, "Tolerance");
    name(form_.cboFreqDelta, "Unit of the tolerance");
    name(form_.txtID, "Antenna ID");
    view(form_.TDBGridAMS).setFocus();
  }

 private:
  QWidget& view(Widget& model) { return window_.view(model); }
  void name(Widget& model, const char* spoken) { view(model).setAccessibleName(spoken); }

  QWidget& button(Button which) {
    auto& pressed = dynamic_cast<CommandButtonView&>(view(form_.Command1[which]));
    if (kMnemonics[which]) pressed.setMnemonic(kMnemonics[which]);
    return pressed;
  }

  QHBoxLayout* buttons(std::initializer_list<Button> which) {
    auto* row = new QHBoxLayout;
    for (const Button each : which) row->addWidget(&button(each));
    return row;
  }

  // What tells of work that goes on takes the room that is left.
  QWidget& progress(Label& model) {
    auto& label = dynamic_cast<LabelView&>(view(model));
    label.makeElided();
    return label;
  }

  QWidget& list() {
    QWidget& frame = view(form_.fraAMS);
    auto* column = new QVBoxLayout(&frame);
    column->addLayout(frequency());
    column->addWidget(&view(form_.TDBGridAMS), 1);
    auto* row = buttons({Button::copying, Button::importing, Button::exporting});
    row->addWidget(&view(form_.chkReadOnly));
    row->addWidget(&progress(form_.lblProgress), 1);
    QWidget& id = view(form_.txtID);
    id.setFixedWidth(id.fontMetrics().horizontalAdvance(kLongestID));
    row->addWidget(&id);
    column->addLayout(row);
    return frame;
  }

  QHBoxLayout* frequency() {
    auto* row = new QHBoxLayout;
    QWidget& tolerance = view(form_.txtFreqDelta);
    tolerance.setMaximumWidth(tolerance.fontMetrics().averageCharWidth() * kWidestTolerance);
    for (Widget* widget :
         std::initializer_list<Widget*>{&form_.lblFreq, &form_.txtFreq, &form_.txtFreqDelta, &form_.cboFreqDelta}) {
      row->addWidget(&view(*widget));
    }
    row->addStretch(1);
    return row;
  }

  void addCut(QSplitter& cuts, PatternPane& pane, std::initializer_list<Button> acts, Button refreshing) {
    QWidget& points = view(pane.frame);
    auto* column = new QVBoxLayout(&points);
    column->addWidget(&view(pane.grid), 1);
    auto* below = buttons(acts);
    below->addWidget(&progress(pane.progress), 1);
    column->addLayout(below);
    // The title names an antenna, and must not widen the window.
    points.setMinimumWidth(column->totalMinimumSize().width());
    cuts.addWidget(&points);

    QWidget& thumbnail = view(pane.thumbnailFrame);
    QWidget& picture = view(pane.thumbnail);
    picture.setAccessibleName(toQt(pane.thumbnailFrame.caption()));
    auto* drawn = new QVBoxLayout(&thumbnail);
    drawn->addWidget(new SquareRoom(picture, &thumbnail), 1);
    auto* row = buttons({refreshing});
    row->addStretch(1);
    drawn->addLayout(row);
    cuts.addWidget(&thumbnail);
  }

  QHBoxLayout* ending() {
    auto* row = buttons({Button::continuing, Button::cancelling});
    row->insertStretch(0, 1);
    return row;
  }

  FormWindow& window_;
  frmHDAntEditor& form_;
};

}  // namespace

void layOutAntennaEditor(FormWindow& window, frmHDAntEditor& form) { EditorLayout(window, form).layOut(); }

}  // namespace vantrelix::qt

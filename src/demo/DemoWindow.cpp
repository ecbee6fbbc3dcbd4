#include "demo/DemoWindow.h"

#include <QCloseEvent>
#include <QLabel>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

#include "demo/DialogMenu.h"
#include "demo/EventList.h"
#include "demo/FacilityBar.h"
#include "demo/FacilityHost.h"
#include "demo/HostControls.h"
#include "demo/LibraryPanel.h"
#include "demo/LineControls.h"
#include "demo/SitePanel.h"
#include "demo/valueTexts.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "qt/LookAnt.h"
#include "qt/LookAntDesc.h"
#include "qt/LookLine.h"
#include "qt/LookLineALL.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

using qt::toQt;

namespace {

constexpr const char* kProgram = "Vantrelix demo host";
// The window's first size, in lines of its font.
constexpr int kWidthInLines = 90;
constexpr int kHeightInLines = 50;

}  // namespace

DemoWindow::DemoWindow(QWidget* parent)
    : QMainWindow(parent),
      control_(new qt::LookAnt),
      name_(new qt::LookAntDesc),
      panel_(new LibraryPanel),
      lines_(new LineControls(this)),
      host_(new HostControls(*control_, lines_->line(), *name_)),
      events_(new EventList) {
  control_->control().ZORUserLogin("");
  name_->ZORUserLogin("");
  name_->setObjectName("antennaName");
  facility_ = std::make_unique<FacilityHost>(control_->control(), lines_->line().control(), name_->control());
  auto* all = new QSplitter(Qt::Vertical);
  all->addWidget(facilityForm());
  all->addWidget(events_);
  all->setStretchFactor(0, 0);
  all->setStretchFactor(1, 1);
  all->setChildrenCollapsible(false);
  auto* centre = new QWidget;
  auto* layout = new QVBoxLayout(centre);
  layout->addWidget(all);
  setCentralWidget(centre);
  showSuite();
  listenToControl();
  listenToHost();
  listenToRecord();
  new DialogMenu(*this);
  const QSize titleBar(0, 2 * fontMetrics().lineSpacing());
  resize(DemoWindow::sizeHint().boundedTo(screen()->availableSize() - titleBar));
}

void DemoWindow::showSuite() {
  auto* folder = new QLabel("Installation folder: " + toQt(displayPath(getSuiteDir())));
  folder->setObjectName("suiteLabel");
  folder->setTextInteractionFlags(Qt::TextSelectableByMouse);
  folder->setIndent(fontMetrics().averageCharWidth());
  statusBar()->addWidget(folder);
}

DemoWindow::~DemoWindow() = default;

QSize DemoWindow::sizeHint() const {
  return (QSize(kWidthInLines, kHeightInLines) * fontMetrics().lineSpacing()).expandedTo(QMainWindow::sizeHint());
}

void DemoWindow::listenToControl() {
  connect(control_, &qt::LookAnt::ChangeAntenna, this, [this] {
    followAntenna();
    heard("antenna", "ChangeAntenna", antennaText(*control_));
  });
  connect(name_, &qt::LookAntDesc::ChangeAntenna, this, [this] {
    facility_->takeNamed();
    followAntenna();
    heard("name", "ChangeAntenna", name_->sValueDesc());
  });
  connect(control_, &qt::LookAnt::ChangeMounting, this,
          [this] { heard("antenna", "ChangeMounting", mountingText(*control_)); });
  connect(control_, &qt::LookAnt::ChangeSize, this,
          [this] { heard("antenna", "ChangeSize", QString("%1 twips high").arg(control_->control().height())); });
  connect(control_, &qt::LookAnt::NewAlert, this,
          [this] { heard("antenna", "NewAlert", control_->Alerts().section("\r\n", -1)); });
  connect(lines_, &LineControls::heard, this, &DemoWindow::heard);
}

void DemoWindow::listenToHost() {
  connect(panel_, &LibraryPanel::antennaChosen, this, &DemoWindow::takeChosen);
  connect(panel_, &LibraryPanel::antennaActivated, this, &DemoWindow::takeChosen);
  connect(host_, &HostControls::acted, this, [this](const QString& call) {
    showState();
    events_->addCall(call);
  });
  connect(events_, &EventList::clearAlerts, this, [this] {
    control_->Alerts("");
    lines_->line().Alerts("");
    lines_->calculator().Alerts("");
    showAlerts();
  });
}

void DemoWindow::listenToRecord() {
  facility_->did.listen(
      [this](const std::string& call, const std::string& detail) { events_->addCall(toQt(call), toQt(detail)); });
  facility_->changed.listen([this] { showRecordState(); });
  facility_->recordShown.listen([this] { showRecord(); });
  facility_->open();
  bar_->enter();
}

bool DemoWindow::choose(const QString& library, const QString& antenna) {
  if (!panel_->choose(library, antenna)) return false;
  facility_->edit();
  // The edit began with the antenna of the record.
  panel_->choose(library, antenna);
  takeChosen();
  return true;
}

// Another record, as it is stored.
void DemoWindow::showRecord() {
  if (control_->sValueFile().isEmpty() || !panel_->choose(control_->sValueFile(), control_->sValueID())) {
    panel_->forget();
  }
  host_->showState();
  showRecordState();
}

void DemoWindow::showRecordState() {
  const bool editing = facility_->editing();
  lines_->calculateAt(CValP(facility_->site().text("TX_FREQMHZ")));
  showAlerts();
  site_->showState();
  bar_->showState();
  host_->setEditing(editing);
  panel_->setEnabled(editing);
  const QString name = toQt(facility_->siteName());
  setWindowTitle((name.isEmpty() ? QString() : name + "[*] \u2014 ") + kProgram);
  setWindowModified(facility_->dirty());
  if (editing && !wasEditing_) site_->enter();
  if (!editing && wasEditing_) bar_->enter();
  wasEditing_ = editing;
}

void DemoWindow::closeEvent(QCloseEvent* event) { event->setAccepted(facility_->leave()); }

void DemoWindow::takeChosen() {
  const auto antenna = panel_->antenna();
  if (!antenna) return;
  control_->sValueFile(toQt(ExtractBaseName(panel_->library().file)));
  control_->sValueID(toQt(antenna->id));
  control_->GetAntPat();
  facility_->openMounting();
  host_->showState();
  events_->addCall("sValueFile, sValueID, GetAntPat", antennaText(*control_));
}

// The panel goes where the user's look-up went, also where that made the library or the antenna.
void DemoWindow::followAntenna() {
  const QString file = control_->sValueFile(), id = control_->sValueID();
  const auto antenna = panel_->antenna();
  if (file.isEmpty() || id.isEmpty() || (antenna && toQt(antenna->id) == id)) return;
  if (panel_->choose(file, id)) return;
  panel_->reload();
  panel_->choose(file, id);
}

void DemoWindow::heard(const QString& control, const QString& event, const QString& detail) {
  events_->addEvent(control, event, detail);
  showAlerts();
  showState();
}

void DemoWindow::showAlerts() {
  const std::pair<const char*, QString> all[] = {{"antenna", control_->Alerts()},
                                                 {"line", lines_->line().Alerts()},
                                                 {"calculator", lines_->calculator().Alerts()}};
  QStringList shown;
  for (const auto& [control, alerts] : all) {
    if (!alerts.isEmpty()) shown << QString("%1: %2").arg(control, alerts);
  }
  events_->setAlerts(shown.join("\r\n"));
}

void DemoWindow::showState() {
  host_->showState();
  if (control_->sValueFile().isEmpty()) panel_->forget();
}

QString DemoWindow::values() const { return recordText(*control_, lines_->line()); }

}  // namespace vantrelix::demo

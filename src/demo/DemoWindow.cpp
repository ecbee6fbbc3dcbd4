#include "demo/DemoWindow.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
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
#include "demo/LibraryDialog.h"
#include "demo/LibraryPanel.h"
#include "demo/SitePanel.h"
#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "qt/LookAnt.h"
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
      panel_(new LibraryPanel),
      host_(new HostControls(*control_)),
      events_(new EventList) {
  control_->control().ZORUserLogin("");
  facility_ = std::make_unique<FacilityHost>(control_->control());
  auto* upper = new QSplitter(Qt::Horizontal);
  upper->addWidget(libraryBox());
  upper->addWidget(facilityForm());
  upper->setStretchFactor(0, 1);
  upper->setStretchFactor(1, 0);
  auto* all = new QSplitter(Qt::Vertical);
  all->addWidget(upper);
  all->addWidget(events_);
  all->setStretchFactor(0, 0);
  all->setStretchFactor(1, 1);
  for (QSplitter* splitter : {upper, all}) splitter->setChildrenCollapsible(false);
  auto* centre = new QWidget;
  auto* layout = new QVBoxLayout(centre);
  layout->addWidget(all);
  setCentralWidget(centre);
  auto* folder = new QLabel("Installation folder: " + toQt(displayPath(getSuiteDir())));
  folder->setObjectName("suiteLabel");
  folder->setTextInteractionFlags(Qt::TextSelectableByMouse);
  folder->setIndent(fontMetrics().averageCharWidth());
  statusBar()->addWidget(folder);
  listenToControl();
  listenToHost();
  listenToRecord();
  new DialogMenu(*this);
  const QSize titleBar(0, 2 * fontMetrics().lineSpacing());
  resize(DemoWindow::sizeHint().boundedTo(screen()->availableSize() - titleBar));
}

DemoWindow::~DemoWindow() = default;

QSize DemoWindow::sizeHint() const {
  return (QSize(kWidthInLines, kHeightInLines) * fontMetrics().lineSpacing()).expandedTo(QMainWindow::sizeHint());
}

QWidget* DemoWindow::libraryBox() {
  auto* box = new QGroupBox("Antenna library");
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(panel_);
  return box;
}

QGroupBox* DemoWindow::antennaBox() {
  auto* box = new QGroupBox("Transmit antenna");
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(control_);
  layout->addStretch(1);
  return box;
}

QWidget* DemoWindow::facilityForm() {
  auto* form = new QWidget;
  bar_ = new FacilityBar(*facility_);
  site_ = new SitePanel(*facility_);
  auto* lower = new QHBoxLayout;
  lower->addWidget(antennaBox(), 1);
  lower->addWidget(host_);
  auto* layout = new QVBoxLayout(form);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(bar_);
  layout->addWidget(site_);
  layout->addLayout(lower, 1);
  return form;
}

void DemoWindow::listenToControl() {
  control_->control().setLibraryLook([this](scLookAnt::LibraryChoice& choice) { return look(choice); });
  connect(control_, &qt::LookAnt::ChangeAntenna, this, [this] { heard("ChangeAntenna", antennaText()); });
  connect(control_, &qt::LookAnt::ChangeMounting, this, [this] { heard("ChangeMounting", mountingText()); });
  connect(control_, &qt::LookAnt::ChangeSize, this,
          [this] { heard("ChangeSize", QString("%1 twips high").arg(control_->control().height())); });
  connect(control_, &qt::LookAnt::NewAlert, this, [this] {
    heard("NewAlert", control_->Alerts().section("\r\n", -1));
    events_->setAlerts(control_->Alerts());
  });
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
    events_->setAlerts("");
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
  events_->setAlerts(control_->Alerts());
  if (control_->sValueFile().isEmpty() || !panel_->choose(control_->sValueFile(), control_->sValueID())) {
    panel_->forget();
  }
  host_->showState();
  showRecordState();
}

void DemoWindow::showRecordState() {
  const bool editing = facility_->editing();
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
  events_->addCall("sValueFile, sValueID, GetAntPat", antennaText());
}

bool DemoWindow::look(scLookAnt::LibraryChoice& choice) {
  LibraryDialog dialog(choice, this);
  if (dialog.exec() != QDialog::Accepted) return false;
  dialog.take(choice);
  panel_->choose(toQt(choice.file), toQt(choice.id));
  return true;
}

void DemoWindow::heard(const QString& event, const QString& detail) {
  events_->addEvent(event, detail);
  showState();
}

void DemoWindow::showState() {
  host_->showState();
  if (control_->sValueFile().isEmpty()) panel_->forget();
}

QString DemoWindow::antennaText() const {
  const auto& ant = *control_;
  QString text = ant.sValueGain().isEmpty() ? "no gain" : ant.sValueGain() + " " + ant.sValueUnit();
  if (!ant.sValueDesc().isEmpty()) text.prepend(ant.sValueDesc() + ", ");
  if (!ant.sValueFile().isEmpty()) text += QString(" (%1, %2)").arg(ant.sValueFile(), ant.sValueID());
  return text;
}

QString DemoWindow::mountingText() const {
  const auto& ant = *control_;
  return QString("orientation %1, tilts %2 and %3, azimuth %4, %5%6")
      .arg(ant.sValueOrient(), ant.sValueEtilt(), ant.sValueMtilt(), ant.sValueMazim(), ant.sValuePol(),
           ant.sValueInvert() ? ", inverted" : "");
}

QString DemoWindow::values() const {
  const auto& ant = *control_;
  const std::pair<const char*, QString> rows[] = {
      {"Library", ant.sValueFile()},
      {"ID", ant.sValueID()},
      {"Antenna", ant.sValueDesc()},
      {"Gain", (ant.sValueGain() + " " + ant.sValueUnit()).trimmed()},
      {"Orientation", ant.sValueOrient()},
      {"Electrical tilt", ant.sValueEtilt()},
      {"Mechanical tilt", ant.sValueMtilt()},
      {"Tilt azimuth", ant.sValueMazim()},
      {"Polarisation", ant.sValuePol()},
      {"Inverted", ant.sValueInvert() ? "yes" : "no"},
      {"Azimuth cut", ant.bPatAz() ? "yes" : "no"},
      {"Elevation cut", ant.bPatEl() ? "yes" : "no"},
  };
  QString text;
  for (const auto& [caption, value] : rows) text += QString("%1 %2\n").arg(QString(caption) + ":", -16).arg(value);
  return text;
}

}  // namespace vantrelix::demo

#include "demo/DemoWindow.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QSplitter>
#include <QStatusBar>
#include <QVBoxLayout>

#include "demo/EventList.h"
#include "demo/HostControls.h"
#include "demo/LibraryDialog.h"
#include "demo/LibraryPanel.h"
#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "qt/LookAnt.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

using qt::toQt;

namespace {

constexpr double kFrequency = 451.25;  // MHz
// The window's first size, in lines of its font.
constexpr int kWidthInLines = 90;
constexpr int kHeightInLines = 50;

// How the made-up site's antenna is mounted.
void mount(qt::LookAnt& control) {
  control.sValueOrient("120");
  control.sValueEtilt("-2");
  control.sValueMtilt("0");
  control.sValueMazim("120");
  control.sValuePol("Vertical");
}

// The control closes its mounting boxes when its user clears the antenna and opens them on its own look-up. The list of
// this host is a look-up too.
void openMounting(scLookAnt& control) {
  for (Widget* widget : std::initializer_list<Widget*>{&control.txtOrient, &control.txtETilt, &control.txtMTilt,
                                                       &control.txtMAzim, &control.chkInvert, &control.cboPol}) {
    widget->setEnabled(true);
  }
  control.cboPol.setLocked(false);
}

QLineEdit* readOnlyField(const QString& text) {
  auto* field = new QLineEdit(text);
  field->setReadOnly(true);
  return field;
}

QDoubleSpinBox* frequencyField() {
  auto* field = new QDoubleSpinBox;
  field->setObjectName("frequencySpin");
  field->setRange(0.1, 100000);
  field->setDecimals(4);
  field->setSuffix(" MHz");
  field->setValue(kFrequency);
  field->setToolTip("The working frequency that the host gives the control");
  return field;
}

}  // namespace

DemoWindow::DemoWindow(QWidget* parent)
    : QMainWindow(parent),
      control_(new qt::LookAnt),
      panel_(new LibraryPanel),
      host_(new HostControls(*control_)),
      events_(new EventList) {
  setWindowTitle("Vantrelix demo host");
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
  const QSize titleBar(0, 2 * fontMetrics().lineSpacing());
  resize(DemoWindow::sizeHint().boundedTo(screen()->availableSize() - titleBar));
}

QSize DemoWindow::sizeHint() const {
  return (QSize(kWidthInLines, kHeightInLines) * fontMetrics().lineSpacing()).expandedTo(QMainWindow::sizeHint());
}

QWidget* DemoWindow::libraryBox() {
  auto* box = new QGroupBox("Antenna library");
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(panel_);
  return box;
}

QGroupBox* DemoWindow::siteBox() {
  auto* box = new QGroupBox("Facility");
  auto* layout = new QHBoxLayout(box);
  auto* left = new QFormLayout;
  auto* right = new QFormLayout;
  frequency_ = frequencyField();
  left->addRow("Site", readOnlyField("Crestline Ridge"));
  left->addRow("Service", readOnlyField("Dispatch base, transmit"));
  right->addRow("Freque&ncy", frequency_);
  right->addRow("Height", readOnlyField("42.0 m above ground"));
  layout->addLayout(left, 1);
  layout->addSpacing(fontMetrics().averageCharWidth() * 2);
  layout->addLayout(right, 1);
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
  auto* lower = new QHBoxLayout;
  lower->addWidget(antennaBox(), 1);
  lower->addWidget(host_);
  auto* layout = new QVBoxLayout(form);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(siteBox());
  layout->addLayout(lower, 1);
  return form;
}

void DemoWindow::listenToControl() {
  control_->sValueFreq(frequency_->value());
  control_->control().ZORUserLogin("");
  mount(*control_);
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
    panel_->setEnabled(!host_->locked());
    showState();
    events_->addCall(call);
  });
  connect(events_, &EventList::clearAlerts, this, [this] {
    control_->Alerts("");
    events_->setAlerts("");
  });
  connect(frequency_, &QDoubleSpinBox::valueChanged, control_, &qt::LookAnt::sValueFreq);
}

bool DemoWindow::choose(const QString& library, const QString& antenna) {
  if (!panel_->choose(library, antenna)) return false;
  takeChosen();
  return true;
}

void DemoWindow::takeChosen() {
  const auto antenna = panel_->antenna();
  if (!antenna) return;
  control_->sValueFile(toQt(ExtractBaseName(panel_->library().file)));
  control_->sValueID(toQt(antenna->id));
  control_->GetAntPat();
  openMounting(control_->control());
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

// Where the parts of the facility form stand.
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include "demo/DemoWindow.h"
#include "demo/FacilityBar.h"
#include "demo/HostControls.h"
#include "demo/LibraryPanel.h"
#include "demo/LineControls.h"
#include "demo/SitePanel.h"
#include "qt/LookAnt.h"
#include "qt/LookAntDesc.h"
#include "qt/LookLine.h"
#include "qt/LookLineALL.h"

namespace vantrelix::demo {

namespace {

QGroupBox* boxOf(const char* caption, QWidget& control) {
  auto* box = new QGroupBox(caption);
  auto* layout = new QVBoxLayout(box);
  layout->addWidget(&control);
  layout->addStretch(1);
  return box;
}

}  // namespace

QWidget* DemoWindow::facilityForm() {
  auto* form = new QWidget;
  bar_ = new FacilityBar(*facility_);
  site_ = new SitePanel(*facility_);
  auto* area = new QSplitter(Qt::Horizontal);
  area->addWidget(siteColumn());
  area->addWidget(antennaColumn());
  area->setStretchFactor(0, 1);
  area->setStretchFactor(1, 0);
  area->setChildrenCollapsible(false);
  auto* layout = new QVBoxLayout(form);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(bar_);
  layout->addWidget(area, 1);
  return form;
}

QWidget* DemoWindow::siteColumn() {
  auto* column = new QWidget;
  auto* layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(site_);
  layout->addWidget(boxOf("Transmission line", lines_->line()));
  layout->addWidget(tools(), 1);
  return column;
}

// What the record's own boxes can do without takes turns.
QTabWidget* DemoWindow::tools() {
  auto* tabs = new QTabWidget;
  tabs->setObjectName("toolTabs");
  auto* library = new QWidget;
  auto* inLibrary = new QVBoxLayout(library);
  inLibrary->addWidget(panel_);
  tabs->addTab(library, "Antenna library");
  auto* calculator = new QWidget;
  auto* inCalculator = new QVBoxLayout(calculator);
  inCalculator->addWidget(&lines_->calculator());
  inCalculator->addStretch(1);
  tabs->addTab(calculator, "Line calculator");
  auto* name = new QWidget;
  auto* inName = new QVBoxLayout(name);
  inName->addWidget(name_);
  inName->addStretch(1);
  tabs->addTab(name, "Antenna in one line");
  return tabs;
}

QWidget* DemoWindow::antennaColumn() {
  auto* column = new QWidget;
  auto* layout = new QHBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(boxOf("Transmit antenna", *control_), 1);
  layout->addWidget(host_);
  return column;
}

}  // namespace vantrelix::demo

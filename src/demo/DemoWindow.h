// The facility form of a made-up transmitter site, with the antenna lookup control on it.
#pragma once

#include <QMainWindow>

#include "controls/scLookAnt.h"

class QDoubleSpinBox;
class QGroupBox;

namespace vantrelix::qt {
class LookAnt;
}

namespace vantrelix::demo {

class EventList;
class HostControls;
class LibraryPanel;

class DemoWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit DemoWindow(QWidget* parent = nullptr);

  // As LibraryPanel::choose, and shown by the control.
  bool choose(const QString& library, const QString& antenna);

  qt::LookAnt& control() { return *control_; }
  // The values that the control shows, a line each.
  QString values() const;

  QSize sizeHint() const override;

 private:
  QWidget* libraryBox();
  QWidget* facilityForm();
  QGroupBox* siteBox();
  QGroupBox* antennaBox();
  void listenToControl();
  void listenToHost();
  void takeChosen();
  bool look(scLookAnt::LibraryChoice& choice);
  void showState();
  void heard(const QString& event, const QString& detail);
  QString antennaText() const;
  QString mountingText() const;

  qt::LookAnt* control_;
  LibraryPanel* panel_;
  HostControls* host_;
  EventList* events_;
  QDoubleSpinBox* frequency_ = nullptr;
};

}  // namespace vantrelix::demo

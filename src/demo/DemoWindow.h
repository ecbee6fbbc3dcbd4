// The facility form of a made-up transmitter site, with the antenna lookup control on it.
#pragma once

#include <memory>

#include <QMainWindow>

#include "controls/scLookAnt.h"

class QGroupBox;

namespace vantrelix::qt {
class LookAnt;
}

namespace vantrelix::demo {

class EventList;
class FacilityBar;
class FacilityHost;
class HostControls;
class LibraryPanel;
class SitePanel;

class DemoWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit DemoWindow(QWidget* parent = nullptr);
  ~DemoWindow() override;

  // As LibraryPanel::choose; begins an edit of the record that is shown and puts the antenna into it, without saving.
  bool choose(const QString& library, const QString& antenna);

  qt::LookAnt& control() { return *control_; }
  // The values that the control shows, a line each.
  QString values() const;

  QSize sizeHint() const override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* libraryBox();
  QWidget* facilityForm();
  QGroupBox* antennaBox();
  void listenToControl();
  void listenToHost();
  void listenToRecord();
  void takeChosen();
  bool look(scLookAnt::LibraryChoice& choice);
  void showState();
  void showRecord();
  void showRecordState();
  void heard(const QString& event, const QString& detail);
  QString antennaText() const;
  QString mountingText() const;

  qt::LookAnt* control_;
  LibraryPanel* panel_;
  HostControls* host_;
  EventList* events_;
  std::unique_ptr<FacilityHost> facility_;
  FacilityBar* bar_ = nullptr;
  SitePanel* site_ = nullptr;
  bool wasEditing_ = false;
};

}  // namespace vantrelix::demo

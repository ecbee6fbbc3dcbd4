// The facility form of a made-up transmitter site, with the antenna and the line controls on it.
#pragma once

#include <memory>

#include <QMainWindow>

class QTabWidget;

namespace vantrelix::qt {
class LookAnt;
class LookAntDesc;
}  // namespace vantrelix::qt

namespace vantrelix::demo {

class EventList;
class FacilityBar;
class FacilityHost;
class HostControls;
class LibraryPanel;
class LineControls;
class SitePanel;

class DemoWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit DemoWindow(QWidget* parent = nullptr);
  ~DemoWindow() override;

  // As LibraryPanel::choose; begins an edit of the record that is shown and puts the antenna into it, without saving.
  bool choose(const QString& library, const QString& antenna);

  qt::LookAnt& control() { return *control_; }
  LineControls& lines() { return *lines_; }
  qt::LookAntDesc& antennaName() { return *name_; }
  // The values that the controls of the record show, a line each.
  QString values() const;

  QSize sizeHint() const override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* facilityForm();
  QWidget* siteColumn();
  QTabWidget* tools();
  QWidget* antennaColumn();
  void showSuite();
  void listenToControl();
  void listenToHost();
  void listenToRecord();
  void takeChosen();
  void followAntenna();
  void showState();
  void showRecord();
  void showRecordState();
  void showAlerts();
  void heard(const QString& control, const QString& event, const QString& detail);

  qt::LookAnt* control_;
  qt::LookAntDesc* name_;
  LibraryPanel* panel_;
  LineControls* lines_;
  HostControls* host_;
  EventList* events_;
  std::unique_ptr<FacilityHost> facility_;
  FacilityBar* bar_ = nullptr;
  SitePanel* site_ = nullptr;
  bool wasEditing_ = false;
};

}  // namespace vantrelix::demo

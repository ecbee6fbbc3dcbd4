// A control that gathers alerts for its host and keeps still while it is being filled.
#pragma once

#include <memory>
#include <string>

#include "ui/UserControl.h"

namespace vantrelix {

class AlertingControl : public UserControl {
 public:
  using UserControl::UserControl;

  // Alerts gather, each on a line; a blank text clears them.
  const std::string& Alerts() const { return sAlerts_; }
  void Alerts(const std::string& text);
  Signal<> NewAlert;

 protected:
  friend class ControlLoading;
  // While one of these lives the control raises no event; all else goes on.
  class Silence {
   public:
    explicit Silence(AlertingControl& control) : control_(control) { ++control.silences_; }
    ~Silence() { --control_.silences_; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

   private:
    AlertingControl& control_;
  };

  bool loading() const { return bLoading_; }
  // Raises an event to the host unless values are being loaded or the control is silent. The host may drop the control
  // in it.
  void raise(const Signal<>& event) const {
    if (!bLoading_ && silences_ == 0) event();
  }
  // Tells a procedure that lets the host or the event loop act whether the control is still there.
  auto watch() const {
    return [life = std::weak_ptr<const bool>(life_)] { return !life.expired(); };
  }

 private:
  std::string sAlerts_;
  bool bLoading_ = false;
  int silences_ = 0;
  std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};

// While one of these lives the control is being filled: it raises no event and converts and repaints nothing.
class ControlLoading {
 public:
  explicit ControlLoading(AlertingControl& control) : control_(&control) { control.bLoading_ = true; }
  ~ControlLoading() {
    if (control_) control_->bLoading_ = false;
  }
  ControlLoading(const ControlLoading&) = delete;
  ControlLoading& operator=(const ControlLoading&) = delete;
  // Leaves the control marked: a fill that failed half-way keeps it silent until a good one has run. For a control that
  // has gone meanwhile too.
  void stay() { control_ = nullptr; }

 private:
  AlertingControl* control_;
};

}  // namespace vantrelix

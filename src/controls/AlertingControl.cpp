#include "controls/AlertingControl.h"

#include "foundation/text.h"

namespace vantrelix {

void AlertingControl::Alerts(const std::string& text) {
  if (getLenTrim(text) == 0) {
    sAlerts_.clear();
    return;
  }
  sAlerts_ = AddALine(sAlerts_, text);
  raise(NewAlert);
}

}  // namespace vantrelix

// A timer of a form, which ticks in the turns of the event loop while its model runs.
#pragma once

#include <QTimer>

#include "qt/ModelLink.h"
#include "ui/Timer.h"

namespace vantrelix::qt {

class FormTimer : public QTimer {
  Q_OBJECT

 public:
  FormTimer(Timer& model, QObject* parent);
  // Ticks no more, whatever the model does from now on.
  void end();

 private:
  void follow();

  ModelLink<Timer> link_;
  bool ended_ = false;
};

}  // namespace vantrelix::qt

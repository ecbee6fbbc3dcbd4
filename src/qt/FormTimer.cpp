#include "qt/FormTimer.h"

#include "qt/failures.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

FormTimer::FormTimer(Timer& model, QObject* parent)
    : QTimer(parent),
      link_(
          model, [this] { follow(); }, [this] { end(); }) {
  setObjectName(toQt(model.name()));
  connect(this, &QTimer::timeout, this, [this] {
    if (Timer* own = link_.get()) runGuarded([own] { own->userTick(); });
  });
  follow();
}

void FormTimer::end() {
  ended_ = true;
  stop();
}

void FormTimer::follow() {
  const Timer* model = link_.get();
  if (!model) return;
  if (interval() != model->interval()) setInterval(model->interval());
  const bool wanted = model->running() && !ended_;
  if (wanted != isActive()) wanted ? start() : stop();
}

}  // namespace vantrelix::qt

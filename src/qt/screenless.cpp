#include "qt/screenless.h"

#include <QByteArray>

namespace vantrelix::qt {

void goScreenless() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES")) qputenv("QT_LOGGING_RULES", "default.warning=false");
}

}  // namespace vantrelix::qt

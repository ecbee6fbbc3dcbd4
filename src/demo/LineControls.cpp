#include "demo/LineControls.h"

#include "demo/valueTexts.h"
#include "foundation/numbers.h"
#include "qt/LookLine.h"
#include "qt/LookLineALL.h"

namespace vantrelix::demo {

namespace {

QString newest(const QString& alerts) { return alerts.section("\r\n", -1); }

}  // namespace

LineControls::LineControls(QObject* parent)
    : QObject(parent), line_(new qt::LookLine), calculator_(new qt::LookLineALL) {
  line_->setObjectName("lineControl");
  calculator_->setObjectName("lineCalculator");
  line_->ZORUserLogin("");
  calculator_->ZORUserLogin("");
  connect(line_, &qt::LookLine::ChangeLine, this, [this] { Q_EMIT heard("line", "ChangeLine", lineText(*line_)); });
  connect(line_, &qt::LookLine::NewAlert, this, [this] { Q_EMIT heard("line", "NewAlert", newest(line_->Alerts())); });
  connect(calculator_, &qt::LookLineALL::NewAlert, this,
          [this] { Q_EMIT heard("calculator", "NewAlert", newest(calculator_->Alerts())); });
}

void LineControls::calculateAt(double megahertz) {
  if (calculator_->control().sValueFreq() == generalText(megahertz)) return;
  // They told of the loss at another frequency.
  calculator_->Alerts("");
  calculator_->sValueFreq(megahertz);
}

}  // namespace vantrelix::demo

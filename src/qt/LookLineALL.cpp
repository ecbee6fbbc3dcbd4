#include "qt/LookLineALL.h"

#include "qt/qtText.h"

namespace vantrelix::qt {

LookLineALL::LookLineALL(QWidget* parent) : ControlWidget(parent), control_(std::make_unique<scLookLineALL>()) {
  showControl(*control_);
  control_->NewAlert.listen([this] { Q_EMIT NewAlert(); });
}

// The view first: it would outlive the control otherwise.
LookLineALL::~LookLineALL() { dropView(); }

QString LookLineALL::sValueDesc() const { return toQt(control_->sValueDesc()); }

void LookLineALL::sValueDesc(const QString& description) { control_->sValueDesc(fromQt(description)); }

QString LookLineALL::sValueLen() const { return toQt(control_->sValueLen()); }

void LookLineALL::sValueLen(const QString& length) { control_->sValueLen(fromQt(length)); }

QString LookLineALL::sValueUnit() const { return toQt(control_->sValueUnit()); }

void LookLineALL::sValueUnit(const QString& unit) { control_->sValueUnit(fromQt(unit)); }

QString LookLineALL::sValueLoss() const { return toQt(control_->sValueLoss()); }

QString LookLineALL::Alerts() const { return toQt(control_->Alerts()); }

void LookLineALL::Alerts(const QString& text) { control_->Alerts(fromQt(text)); }

void LookLineALL::ZORUserLogin(const QString& login) { control_->ZORUserLogin(fromQt(login)); }

}  // namespace vantrelix::qt

#include "qt/LookLine.h"

#include "qt/qtText.h"

namespace vantrelix::qt {

LookLine::LookLine(QWidget* parent) : ControlWidget(parent), control_(std::make_unique<scLookLine>()) {
  showControl(*control_);
  control_->NewAlert.listen([this] { Q_EMIT NewAlert(); });
  control_->ChangeLine.listen([this] { Q_EMIT ChangeLine(); });
}

// The view first: it would outlive the control otherwise.
LookLine::~LookLine() { dropView(); }

QString LookLine::sValueFile() const { return toQt(control_->sValueFile()); }

void LookLine::sValueFile(const QString& file) { control_->sValueFile(fromQt(file)); }

QString LookLine::sValueID() const { return toQt(control_->sValueID()); }

void LookLine::sValueID(const QString& id) { control_->sValueID(fromQt(id)); }

QString LookLine::sValueDesc() const { return toQt(control_->sValueDesc()); }

void LookLine::sValueDesc(const QString& description) { control_->sValueDesc(fromQt(description)); }

QString LookLine::sValueLen() const { return toQt(control_->sValueLen()); }

void LookLine::sValueLen(const QString& length) { control_->sValueLen(fromQt(length)); }

QString LookLine::sValueUnit() const { return toQt(control_->sValueUnit()); }

void LookLine::sValueUnit(const QString& unit) { control_->sValueUnit(fromQt(unit)); }

QString LookLine::sValueLoss() const { return toQt(control_->sValueLoss()); }

void LookLine::sValueLoss(const QString& decibels) { control_->sValueLoss(fromQt(decibels)); }

QString LookLine::Alerts() const { return toQt(control_->Alerts()); }

void LookLine::Alerts(const QString& text) { control_->Alerts(fromQt(text)); }

QString LookLine::Save() { return toQt(control_->Save()); }

}  // namespace vantrelix::qt

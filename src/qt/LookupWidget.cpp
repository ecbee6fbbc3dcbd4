#include "qt/LookupWidget.h"

#include "qt/qtText.h"

namespace vantrelix::qt {

LookupWidget::LookupWidget(std::unique_ptr<LookupControl> control, QWidget* parent)
    : ControlWidget(parent), lookup_(std::move(control)) {
  showControl(*lookup_);
  lookup_->NewAlert.listen([this] { Q_EMIT NewAlert(); });
}

// The view first: it would outlive the control otherwise.
LookupWidget::~LookupWidget() { dropView(); }

QString LookupWidget::sValueFile() const { return toQt(lookup_->sValueFile()); }

void LookupWidget::sValueFile(const QString& file) { lookup_->sValueFile(fromQt(file)); }

QString LookupWidget::sValueID() const { return toQt(lookup_->sValueID()); }

void LookupWidget::sValueID(const QString& id) { lookup_->sValueID(fromQt(id)); }

QString LookupWidget::sValueDesc() const { return toQt(lookup_->sValueDesc()); }

void LookupWidget::sValueDesc(const QString& description) { lookup_->sValueDesc(fromQt(description)); }

QString LookupWidget::Alerts() const { return toQt(lookup_->Alerts()); }

void LookupWidget::Alerts(const QString& text) { lookup_->Alerts(fromQt(text)); }

QString LookupWidget::Save() { return toQt(lookup_->Save()); }

bool LookupWidget::bEdit(bool bSilent, QString* vReturn) {
  Value message;
  const bool can = lookup_->bEdit(bSilent, &message).asBoolean();
  if (vReturn && !message.isNull()) *vReturn = toQt(message.asText());
  return can;
}

QString LookupWidget::sHookDBFValue(const QString& sKey) const { return toQt(lookup_->sHookDBFValue(fromQt(sKey))); }

void LookupWidget::sHookDBFValue(const QString& sKey, const QString& text) {
  lookup_->sHookDBFValue(fromQt(sKey), fromQt(text));
}

void LookupWidget::ZORUserLogin(const QString& login) { lookup_->ZORUserLogin(fromQt(login)); }

}  // namespace vantrelix::qt

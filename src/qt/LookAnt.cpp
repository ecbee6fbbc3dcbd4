#include "qt/LookAnt.h"

#include <QVBoxLayout>

#include "qt/ControlView.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

namespace {

Color pointerColour(const QColor& colour) { return colour.isValid() ? fromQt(colour) : color::windowText; }

}  // namespace

LookAnt::LookAnt(QWidget* parent)
    : QWidget(parent), control_(std::make_unique<scLookAnt>()), view_(new ControlView(*control_, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
  setSizePolicy(view_->sizePolicy());
  control_->NewAlert.listen([this] { Q_EMIT NewAlert(); });
  control_->ChangeAntenna.listen([this] { Q_EMIT ChangeAntenna(); });
  control_->ChangeMounting.listen([this] { Q_EMIT ChangeMounting(); });
  control_->ChangeSize.listen([this] {
    updateGeometry();
    Q_EMIT ChangeSize();
  });
}

// The view first: it would outlive the control otherwise.
LookAnt::~LookAnt() { delete view_; }

QSize LookAnt::sizeHint() const { return view_->sizeHint(); }

QSize LookAnt::minimumSizeHint() const { return view_->minimumSizeHint(); }

QString LookAnt::sValueFile() const { return toQt(control_->sValueFile()); }

void LookAnt::sValueFile(const QString& file) { control_->sValueFile(fromQt(file)); }

QString LookAnt::sValueID() const { return toQt(control_->sValueID()); }

void LookAnt::sValueID(const QString& id) { control_->sValueID(fromQt(id)); }

QString LookAnt::sValueDesc() const { return toQt(control_->sValueDesc()); }

void LookAnt::sValueDesc(const QString& description) { control_->sValueDesc(fromQt(description)); }

QString LookAnt::sValueGain() const { return toQt(control_->sValueGain()); }

void LookAnt::sValueGain(const QString& gain) { control_->sValueGain(fromQt(gain)); }

QString LookAnt::sValueUnit() const { return toQt(control_->sValueUnit()); }

void LookAnt::sValueUnit(const QString& unit) { control_->sValueUnit(fromQt(unit)); }

QString LookAnt::sValueOrient() const { return toQt(control_->sValueOrient()); }

void LookAnt::sValueOrient(const QString& degrees) { control_->sValueOrient(fromQt(degrees)); }

QString LookAnt::sValueEtilt() const { return toQt(control_->sValueEtilt()); }

void LookAnt::sValueEtilt(const QString& degrees) { control_->sValueEtilt(fromQt(degrees)); }

QString LookAnt::sValueMtilt() const { return toQt(control_->sValueMtilt()); }

void LookAnt::sValueMtilt(const QString& degrees) { control_->sValueMtilt(fromQt(degrees)); }

QString LookAnt::sValueMazim() const { return toQt(control_->sValueMazim()); }

void LookAnt::sValueMazim(const QString& degrees) { control_->sValueMazim(fromQt(degrees)); }

QString LookAnt::sValuePol() const { return toQt(control_->sValuePol()); }

void LookAnt::sValuePol(const QString& polarisation) { control_->sValuePol(fromQt(polarisation)); }

QString LookAnt::Alerts() const { return toQt(control_->Alerts()); }

void LookAnt::Alerts(const QString& text) { control_->Alerts(fromQt(text)); }

QString LookAnt::Save() { return toQt(control_->Save()); }

bool LookAnt::bEdit(bool bSilent, QString* vReturn) {
  Value message;
  const bool can = control_->bEdit(bSilent, &message).asBoolean();
  if (vReturn && !message.isNull()) *vReturn = toQt(message.asText());
  return can;
}

QString LookAnt::sHookDBFValue(const QString& sKey) const { return toQt(control_->sHookDBFValue(fromQt(sKey))); }

void LookAnt::sHookDBFValue(const QString& sKey, const QString& text) {
  control_->sHookDBFValue(fromQt(sKey), fromQt(text));
}

void LookAnt::SeeAzimuth(double degrees, const QColor& colour) { control_->SeeAzimuth(degrees, pointerColour(colour)); }

void LookAnt::SeeElevation(double degrees, const QColor& colour) {
  control_->SeeElevation(degrees, pointerColour(colour));
}

}  // namespace vantrelix::qt

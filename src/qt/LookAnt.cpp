#include "qt/LookAnt.h"

#include "qt/qtText.h"

namespace vantrelix::qt {

namespace {

Color pointerColour(const QColor& colour) { return colour.isValid() ? fromQt(colour) : color::windowText; }

}  // namespace

LookAnt::LookAnt(QWidget* parent)
    : LookupWidget(std::make_unique<scLookAnt>(), parent), control_(dynamic_cast<scLookAnt&>(lookup())) {
  control_.ChangeAntenna.listen([this] { Q_EMIT ChangeAntenna(); });
  control_.ChangeMounting.listen([this] { Q_EMIT ChangeMounting(); });
  control_.ChangeSize.listen([this] {
    updateGeometry();
    Q_EMIT ChangeSize();
  });
}

// The view first: the focus that leaves it raises events.
LookAnt::~LookAnt() { dropView(); }

QString LookAnt::sValueGain() const { return toQt(control_.sValueGain()); }

void LookAnt::sValueGain(const QString& gain) { control_.sValueGain(fromQt(gain)); }

QString LookAnt::sValueUnit() const { return toQt(control_.sValueUnit()); }

void LookAnt::sValueUnit(const QString& unit) { control_.sValueUnit(fromQt(unit)); }

QString LookAnt::sValueOrient() const { return toQt(control_.sValueOrient()); }

void LookAnt::sValueOrient(const QString& degrees) { control_.sValueOrient(fromQt(degrees)); }

QString LookAnt::sValueEtilt() const { return toQt(control_.sValueEtilt()); }

void LookAnt::sValueEtilt(const QString& degrees) { control_.sValueEtilt(fromQt(degrees)); }

QString LookAnt::sValueMtilt() const { return toQt(control_.sValueMtilt()); }

void LookAnt::sValueMtilt(const QString& degrees) { control_.sValueMtilt(fromQt(degrees)); }

QString LookAnt::sValueMazim() const { return toQt(control_.sValueMazim()); }

void LookAnt::sValueMazim(const QString& degrees) { control_.sValueMazim(fromQt(degrees)); }

QString LookAnt::sValuePol() const { return toQt(control_.sValuePol()); }

void LookAnt::sValuePol(const QString& polarisation) { control_.sValuePol(fromQt(polarisation)); }

void LookAnt::SeeAzimuth(double degrees, const QColor& colour) { control_.SeeAzimuth(degrees, pointerColour(colour)); }

void LookAnt::SeeElevation(double degrees, const QColor& colour) {
  control_.SeeElevation(degrees, pointerColour(colour));
}

}  // namespace vantrelix::qt

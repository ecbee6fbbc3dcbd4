#include "qt/LookLine.h"

#include "qt/qtText.h"

namespace vantrelix::qt {

LookLine::LookLine(QWidget* parent)
    : LookupWidget(std::make_unique<scLookLine>(), parent), control_(dynamic_cast<scLookLine&>(lookup())) {
  control_.ChangeLine.listen([this] { Q_EMIT ChangeLine(); });
}

// The view first: the focus that leaves it raises events.
LookLine::~LookLine() { dropView(); }

QString LookLine::sValueLen() const { return toQt(control_.sValueLen()); }

void LookLine::sValueLen(const QString& length) { control_.sValueLen(fromQt(length)); }

QString LookLine::sValueUnit() const { return toQt(control_.sValueUnit()); }

void LookLine::sValueUnit(const QString& unit) { control_.sValueUnit(fromQt(unit)); }

QString LookLine::sValueLoss() const { return toQt(control_.sValueLoss()); }

void LookLine::sValueLoss(const QString& decibels) { control_.sValueLoss(fromQt(decibels)); }

}  // namespace vantrelix::qt

#include "qt/LookAntDesc.h"

#include "qt/qtText.h"

namespace vantrelix::qt {

LookAntDesc::LookAntDesc(QWidget* parent)
    : LookupWidget(std::make_unique<scLookAnt_Desc>(), parent), control_(dynamic_cast<scLookAnt_Desc&>(lookup())) {
  control_.ChangeAntenna.listen([this] { Q_EMIT ChangeAntenna(); });
}

// The view first: the focus that leaves it raises events.
LookAntDesc::~LookAntDesc() { dropView(); }

void LookAntDesc::sToolTipText(const QString& text) { control_.sToolTipText(fromQt(text)); }

}  // namespace vantrelix::qt

// Which place of a facility record each value of the antenna control is bound to.
#pragma once

#include <string>

#include "controls/scLookAnt.h"

namespace vantrelix::demo {

// To the fields of the cursor's row, which all hooks share.
void bindToTable(scLookAnt& antenna, const RecordsetPtr& record);
// To the keys of the facility section of an INI file.
void bindToFile(scLookAnt& antenna, const std::string& file);
// To nothing.
void unbind(scLookAnt& antenna);

}  // namespace vantrelix::demo

// Which place of a facility record each value of the controls is bound to.
#pragma once

#include <string>

#include "controls/scLookAnt.h"
#include "controls/scLookAnt_Desc.h"
#include "controls/scLookLine.h"

namespace vantrelix::demo {

// To the fields of the cursor's row, which all hooks share.
void bindToTable(scLookAnt& antenna, const RecordsetPtr& record);
void bindToTable(scLookLine& line, const RecordsetPtr& record);
void bindToTable(scLookAnt_Desc& name, const RecordsetPtr& record);
// To the keys of the facility section of an INI file.
void bindToFile(LookupControl& control, const std::string& file);
// To nothing.
void unbind(scLookAnt& antenna);
void unbind(scLookLine& line);
void unbind(scLookAnt_Desc& name);

}  // namespace vantrelix::demo

#include "editor/exportedAntenna.h"

#include "editor/frmHDAntEditor.h"
#include "foundation/numbers.h"

namespace vantrelix {

ExportedAntenna exportedAntenna(const frmHDAntEditor& form) {
  ExportedAntenna antenna;
  const auto text = [&](const char* field, std::string& taken) {
    taken = ChkNulls(form.amsValue(field), taken, true).asText();
  };
  const auto number = [&](const char* field, double& taken) {
    taken = CValP(ChkNulls(form.amsValue(field), taken, true).asText());
  };
  text("ANTENNA", antenna.description);
  number("GAIN", antenna.gain);
  text("GAIN_UN", antenna.gainUn);
  number("F_LOW", antenna.fLow);
  return antenna;
}

}  // namespace vantrelix

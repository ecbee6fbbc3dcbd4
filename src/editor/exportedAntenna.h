// What export and tabulation read of the current row of the antenna list.
#pragma once

#include <string>

namespace vantrelix {

class frmHDAntEditor;

// Values as stored; nulls give way to what stands here.
struct ExportedAntenna {
  std::string description = "UNKNOWN ANTENNA";
  double gain = 0;
  std::string gainUn = "dBd";
  double fLow = 0;
};
ExportedAntenna exportedAntenna(const frmHDAntEditor& form);

}  // namespace vantrelix

// Reads the points of one cut of an antenna. Private to this layer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tables/Database.h"

namespace vantrelix {

// The field that tells an antenna in each table of its library.
inline constexpr const char* kAntennaKey = "ATYPE_ID";

// One cut: where it is stored, where it goes, and the first of its eight flags.
struct CutOnTheWay {
  const char* prefix;
  const char* angleField;
  const char* valueField;
  std::int16_t& count;
  std::vector<double>& angles;
  std::vector<double>& values;
  long flag;
};

// Sets the procedure's flags on its way. Leaves the caller's variables as they are where the antenna has no rows; a
// failure leaves what was read before it in them. 6 for a cut of more points than its count holds.
void readCut(Database& database, const std::string& library, const std::string& id, CutOnTheWay cut);

}  // namespace vantrelix

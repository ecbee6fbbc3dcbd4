// The one way in which a complete new antenna enters a library.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tables/Database.h"

namespace vantrelix {

// Appends an antenna; gives blank on success and the reason otherwise. Never looks for an antenna of the same name and
// never changes one. A cursor that is passed in stays open; an empty pointer makes the procedure open and close its
// own. Pattern values below MinValidGain of section HDAntenna (-50) are raised to it. Frequencies are in MHz. An
// antenna without points in both cuts is not stored. The points are tried against the widths of their fields before
// the first row is written. Nobody else adds a row to the AMS table between the search for the ID and the row with it.
// No transaction binds the tables: what was written before another failure stays, for RowsAdded to take away, and the
// AMS row is the first.
std::string HDwrtAntDBF(const std::string& Code, const std::string& Description, double Gain,
                        const std::string& GainUnits, std::int16_t nHor, const std::vector<double>& HorAz,
                        const std::vector<double>& HorField, std::int16_t nVer, const std::vector<double>& VerAngle,
                        const std::vector<double>& VerField, double FLow, double FHigh, const RecordsetPtr& rsAMS = {},
                        const RecordsetPtr& rsAHD = {}, const RecordsetPtr& rsAVD = {});

}  // namespace vantrelix

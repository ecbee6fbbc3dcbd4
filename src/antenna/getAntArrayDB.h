// The read path for one antenna.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "antenna/AntRecord.h"

namespace vantrelix {

// Reads one antenna of a library, gain and both cuts in the units asked for.
//
// Never leaves the caller without an answer: whatever is missing, the result is a well-formed "no antenna" (0 dBd in
// the units asked for, no points) and ErrorText holds the reason. Success is told by nHor, nVer and ErrorText.
// DesiredUnits is changed to "REL" where it is no unit; blank asks for the units as stored. Values that were converted
// have four decimals, values in their stored units have all their digits. Only a run-time failure (a table that cannot
// be opened, a field that is missing) leaves the outputs as far as they were filled; ErrHand then reports it, Quiet or
// not.
//
// The arguments are by reference and may be one and the same variable: a caller that passes one text as GainUnits and
// DesiredUnits gets the antenna as stored, since the first default overwrites the wish.
void Get_Ant_ArrayDB(const std::string& Path, const std::string& Library, const std::string& AntID, double& Gain,
                     std::string& GainUnits, std::int16_t& nHor, std::vector<double>& HorAz,
                     std::vector<double>& HorField, std::int16_t& nVer, std::vector<double>& VerAngle,
                     std::vector<double>& VerField, std::string& Description, std::string& DesiredUnits, double& FLow,
                     double& FHigh, std::string& FreqUnits, bool Quiet, std::string& ErrorText);

// The same with a structure; DesiredUnits and ErrorText as above.
AntRecord readAntenna(const std::string& folder, const std::string& library, const std::string& id,
                      std::string& desiredUnits, bool quiet, std::string& errorText);

}  // namespace vantrelix

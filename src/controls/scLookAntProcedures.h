// The numbers of the control's procedures on the stack of foundation/errHand.h. Fixed for good, as those of
// foundation/procedures.h.
#pragma once

namespace vantrelix::procedure {

inline constexpr int scLookAnt_cmdLook = 2101;
inline constexpr int scLookAnt_GetAntPat = 2201;

}  // namespace vantrelix::procedure

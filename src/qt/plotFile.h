// Writes a plot page as a picture file: what stands between the core's page and Qt, with no Qt type in sight.
#pragma once

#include <string>

#include "preview/svgPlot.h"

namespace vantrelix::qt {

// Writes a ".png" (at least 1600 pixels wide, antialiased) or a ".pdf" to a path in the machine's form, whole or not at
// all. Needs no display: where no Qt application runs, one without a screen is made for the call. Throws what the file
// system throws, and 5 where the name ends otherwise.
void writePlotFile(const PlotPage& page, const std::string& machinePath);

}  // namespace vantrelix::qt

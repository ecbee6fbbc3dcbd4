// A page of plots as a drawing file.
#pragma once

#include <string>

#include "preview/plotPage.h"

namespace vantrelix {

std::string svgOf(const PlotPage& page);

}  // namespace vantrelix

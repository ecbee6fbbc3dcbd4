// What a run of the tables' benchmark is told as: text for a terminal, or markdown.
#pragma once

#include <string>

#include "TablesRun.h"

namespace vantrelix::bench {

std::string reportOf(const TablesRun& run, bool markdown);

}  // namespace vantrelix::bench

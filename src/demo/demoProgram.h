// The demo host as one call.
#pragma once

namespace vantrelix::demo {

// Gives the exit status: 0 done, 1 failed (the reason on standard error), 2 the command line was wrong.
int runDemo(int argc, char** argv);

}  // namespace vantrelix::demo

// The command line program.
#include <iostream>
#include <string>
#include <vector>

#include "cli/commandLine.h"
#include "foundation/hostProgram.h"
#include "platform/Platform.h"
#ifdef VANTRELIX_WITH_QT
#include "qt/plotFile.h"
#endif

int main(int argc, char** argv) {
  vantrelix::setHostProgram({"vantrelix", VANTRELIX_VERSION_MAJOR, VANTRELIX_VERSION_MINOR, VANTRELIX_VERSION_PATCH});
  vantrelix::cli::PictureWriter pictureWriter;
#ifdef VANTRELIX_WITH_QT
  pictureWriter = vantrelix::qt::writePlotFile;
#endif
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  return vantrelix::cli::runCommandLine(arguments, std::cout, std::cerr, pictureWriter,
                                        vantrelix::platform::current().errorIsTerminal());
}

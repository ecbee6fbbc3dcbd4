// The command line of the library.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "cli/Session.h"

namespace CLI {
class App;
}

namespace vantrelix::cli {

// Runs one command; `arguments` without the program's name. Gives the exit status: 0 done, 1 refused or failed, 2 the
// command line was wrong.
int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   const PictureWriter& pictureWriter = {}, bool errIsTerminal = false);

// The commands, by what they are about. Each adds its subcommands, which set the session's job.
void addSuiteCommands(CLI::App& app, Session& session);
void addLibraryCommands(CLI::App& app, Session& session);
void addImportCommand(CLI::App& app, Session& session);
void addIdentifyCommand(CLI::App& app, Session& session);
void addLineCommands(CLI::App& app, Session& session);
void addEditorCommands(CLI::App& app, Session& session);
void addAntennaCommands(CLI::App& app, Session& session);
void addExportCommands(CLI::App& app, Session& session);
void addPlotCommand(CLI::App& app, Session& session);
void addCalcCommands(CLI::App& app, Session& session);
void addTableCommands(CLI::App& app, Session& session);
void addIniCommands(CLI::App& app, Session& session);

}  // namespace vantrelix::cli

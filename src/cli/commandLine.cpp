#include "cli/commandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <sstream>

namespace vantrelix::cli {

namespace {

constexpr int kWrongCommandLine = 2;

// "-3" is taken as a value by itself. "-.5" behind "calc" would be an option: its whole part is written out.
std::vector<std::string> completeNegativeNumbers(std::vector<std::string> arguments) {
  const auto calc = std::find(arguments.begin(), arguments.end(), "calc");
  for (auto argument = calc; argument != arguments.end() && *argument != "--"; ++argument) {
    if (argument->starts_with("-.") || argument->starts_with("-,")) argument->insert(1, "0");
  }
  return arguments;
}

bool asksForJson(const std::vector<std::string>& arguments) {
  const auto values = std::find(arguments.begin(), arguments.end(), "--");
  return std::find(arguments.begin(), values, "--json") != values;
}

void addOptions(CLI::App& app, Session& session) {
  app.add_option("--suite", session.suite, "The installation folder (else the environment variable VANTRELIX_SUITE)")
      ->type_name("DIR");
  app.add_flag("--json", session.json, "One JSON document on standard output");
  app.add_option("--assume", session.assume, "How questions are answered")
      ->check(CLI::IsMember({"yes", "no", "cancel"}))
      ->capture_default_str();
  app.set_version_flag("--version", std::string("vantrelix " VANTRELIX_VERSION));
}

// The innermost command that was named.
const CLI::App* lastCommand(const CLI::App& app) {
  const CLI::App* command = &app;
  while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
  return command;
}

int refuseCommandLine(const std::string& reason, bool json, std::ostream& out, std::ostream& err) {
  err << reason;
  if (json)
    out << Json{{"error", reason.substr(0, reason.find_last_not_of('\n') + 1)}, {"messages", Json::array()}}.dump(2)
        << '\n';
  return kWrongCommandLine;
}

}  // namespace

int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   const PictureWriter& pictureWriter, bool errIsTerminal) {
  Session session(out, err, errIsTerminal);
  session.pictureWriter = pictureWriter;
  CLI::App app("Antenna libraries, pattern files and tables of the planning suite, without a window.", "vantrelix");
  app.fallthrough();
  // Behind a command its words are values, even where one is a command's name ("libraries lines").
  app.require_subcommand(0, 1);
  app.failure_message(CLI::FailureMessage::simple);
  addOptions(app, session);
  addSuiteCommands(app, session);
  addLibraryCommands(app, session);
  addImportCommand(app, session);
  addIdentifyCommand(app, session);
  addLineCommands(app, session);
  addEditorCommands(app, session);
  addAntennaCommands(app, session);
  addExportCommands(app, session);
  addPlotCommand(app, session);
  addCalcCommands(app, session);
  addTableCommands(app, session);
  addIniCommands(app, session);

  std::vector<std::string> reversed = completeNegativeNumbers(arguments);
  std::reverse(reversed.begin(), reversed.end());
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& error) {
    std::ostringstream reason;
    if (app.exit(error, out, reason) == 0) return 0;
    return refuseCommandLine(reason.str(), asksForJson(arguments), out, err);
  }
  if (!session.job) {
    return refuseCommandLine("A command is missing.\n\n" + lastCommand(app)->help(), session.json, out, err);
  }
  return session.run();
}

}  // namespace vantrelix::cli

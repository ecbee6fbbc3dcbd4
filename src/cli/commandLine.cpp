#include "cli/commandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <ostream>

#include "foundation/hostProgram.h"

namespace vantrelix::cli {

namespace {

constexpr int kWrongCommandLine = 2;

bool looksLikeNegativeNumber(const std::string& argument) {
  return argument.size() > 1 && argument[0] == '-' &&
         (std::isdigit(static_cast<unsigned char>(argument[1])) || argument[1] == '.' || argument[1] == ',');
}

// "-3" behind "calc" is a number and not an option.
std::vector<std::string> protectNegativeNumbers(std::vector<std::string> arguments) {
  const auto calc = std::find(arguments.begin(), arguments.end(), "calc");
  if (std::find(calc, arguments.end(), "--") != arguments.end()) return arguments;
  const auto negative = std::find_if(calc, arguments.end(), looksLikeNegativeNumber);
  if (negative != arguments.end()) arguments.insert(negative, "--");
  return arguments;
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

}  // namespace

int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   const PictureWriter& pictureWriter, bool errIsTerminal) {
  Session session(out, err, errIsTerminal);
  session.pictureWriter = pictureWriter;
  CLI::App app("Antenna libraries, pattern files and tables of the planning suite, without a window.", "vantrelix");
  app.fallthrough();
  app.failure_message(CLI::FailureMessage::simple);
  addOptions(app, session);
  addSuiteCommands(app, session);
  addLibraryCommands(app, session);
  addImportCommand(app, session);
  addPlotCommand(app, session);
  addCalcCommands(app, session);
  addTableCommands(app, session);
  addIniCommands(app, session);

  std::vector<std::string> reversed = protectNegativeNumbers(arguments);
  std::reverse(reversed.begin(), reversed.end());
  try {
    app.parse(reversed);
  } catch (const CLI::ParseError& error) {
    return app.exit(error, out, err) == 0 ? 0 : kWrongCommandLine;
  }
  if (!session.job) {
    err << "A command is missing.\n\n" << lastCommand(app)->help();
    return kWrongCommandLine;
  }
  return session.run();
}

}  // namespace vantrelix::cli

#include <CLI/CLI.hpp>

#include "cli/commandLine.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"

namespace vantrelix::cli {

namespace {

struct IniArguments {
  std::string file, section, key, value;
};

void addPlaces(CLI::App& command, IniArguments& arguments) {
  command.add_option("FILE", arguments.file, "The INI file")->required();
  command.add_option("SECTION", arguments.section)->required();
  command.add_option("KEY", arguments.key)->required();
}

void get(Session& session, const IniArguments& arguments) {
  std::string value;
  getINI(arguments.section, arguments.key, pathFromCommandLine(arguments.file), arguments.value, value);
  session.document["value"] = value;
  session.text << value << '\n';
}

void set(Session& session, const IniArguments& arguments) {
  const std::string file = pathFromCommandLine(arguments.file);
  if (!setINI(arguments.section, arguments.key, file, arguments.value)) {
    throw Refused("The INI file cannot be written: " + displayPath(file) +
                  "\nCheck that its folder exists, and the rights of both.");
  }
  std::string value;
  getINI(arguments.section, arguments.key, file, "", value);
  session.document["value"] = value;
}

}  // namespace

void addIniCommands(CLI::App& app, Session& session) {
  CLI::App* ini = app.add_subcommand("ini", "Read and write keys of INI files");

  const auto read = std::make_shared<IniArguments>();
  CLI::App* getCommand = ini->add_subcommand("get", "Read a key");
  getCommand->footer("Example: vantrelix ini get QVDEFAULTS.INI \"Antenna Lookup\" Units dBd");
  addPlaces(*getCommand, *read);
  getCommand->add_option("DEFAULT", read->value, "The value where the key is missing");
  getCommand->callback([&session, read] { session.job = [&session, read] { get(session, *read); }; });

  const auto written = std::make_shared<IniArguments>();
  CLI::App* setCommand = ini->add_subcommand("set", "Write a key; everything else in the file stays as it is");
  setCommand->footer("Example: vantrelix ini set QVDEFAULTS.INI \"Antenna Lookup\" Units dBi");
  addPlaces(*setCommand, *written);
  setCommand->add_option("VALUE", written->value)->required();
  setCommand->callback([&session, written] { session.job = [&session, written] { set(session, *written); }; });
}

}  // namespace vantrelix::cli

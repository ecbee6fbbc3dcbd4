#include <CLI/CLI.hpp>

#include "cli/commandLine.h"
#include "foundation/extract.h"
#include "foundation/suitePaths.h"
#include "tables/installSuite.h"

namespace vantrelix::cli {

void addSuiteCommands(CLI::App& app, Session& session) {
  CLI::App* suite = app.add_subcommand("suite", "The installation folder");
  CLI::App* init = suite->add_subcommand("init", "Make an installation folder, keeping what is there");
  init->footer("Example: vantrelix suite init suite");
  auto folder = std::make_shared<std::string>();
  init->add_option("DIR", *folder, "The folder")->required();
  init->callback([&session, folder] {
    session.job = [&session, folder] {
      const std::string path = pathFromCommandLine(*folder);
      installSuite(path);
      session.document["suite"] = displayPath(path);
      session.text << displayPath(path) << '\n';
    };
  });
}

}  // namespace vantrelix::cli

// An antenna as the files that the antenna editor writes of it.
#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commandLine.h"
#include "cli/libraryArgument.h"
#include "cli/openEditor.h"
#include "editor/antExport.h"
#include "editor/antPrint.h"
#include "editor/frmHDAntEditor.h"
#include "editor/showCuts.h"
#include "foundation/extract.h"
#include "foundation/text.h"

namespace vantrelix::cli {

namespace {

struct ExportArguments {
  std::string library, id, file, cut;
};

std::unique_ptr<frmHDAntEditor> editorOn(const Session& session, const ExportArguments& arguments) {
  auto form = openEditor(session, arguments.library, kLookupMode);
  if (!showCuts(*form, arguments.id)) throw Refused(notFoundText(*form, arguments.id));
  return form;
}

void exportFile(Session& session, const ExportArguments& arguments) {
  const auto form = editorOn(session, arguments);
  const std::string path = pathFromCommandLine(arguments.file);
  const std::size_t before = session.boxesShown();
  if (!exportAntenna(*form, path)) throw Refused(replaceAll(session.failureShown(before), kLineBreak, ": "));
  session.document["file"] = displayPath(path);
  session.text << displayPath(path) << '\n';
}

void tabulate(Session& session, const ExportArguments& arguments) {
  const auto form = editorOn(session, arguments);
  const std::string text = tabulation(*form, arguments.cut == "azimuth" ? 0 : 1);
  session.document["text"] = text;
  session.text << replaceAll(text, kLineBreak, "\n");
}

CLI::App* addCommand(CLI::App& app, const char* name, const char* description, ExportArguments& arguments) {
  CLI::App* command = app.add_subcommand(name, description);
  command->add_option("LIBRARY", arguments.library)->required();
  command->add_option("ID", arguments.id)->required();
  return command;
}

}  // namespace

void addExportCommands(CLI::App& app, Session& session) {
  const auto arguments = std::make_shared<ExportArguments>();
  CLI::App* exporting = addCommand(app, "export", "Write an antenna as an ASCII antenna file", *arguments);
  exporting->footer("A file that exists is replaced.\nExample: vantrelix export AMSX0001 X00010000001 panel.ant");
  exporting->add_option("FILE", arguments->file)->required();
  exporting->callback(
      [&session, arguments] { session.job = [&session, arguments] { exportFile(session, *arguments); }; });

  CLI::App* tabulating = addCommand(app, "tabulate", "Print the tabulation of a cut", *arguments);
  tabulating->footer("Example: vantrelix tabulate AMSX0001 X00010000001 azimuth");
  tabulating->add_option("CUT", arguments->cut)->required()->check(CLI::IsMember({"azimuth", "elevation"}));
  tabulating->callback(
      [&session, arguments] { session.job = [&session, arguments] { tabulate(session, *arguments); }; });
}

}  // namespace vantrelix::cli

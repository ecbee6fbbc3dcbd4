#include <CLI/CLI.hpp>

#include "cli/commandLine.h"
#include "cli/libraryArgument.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "preview/svgPlot.h"

namespace vantrelix::cli {

namespace {

struct PlotArguments {
  std::string library, id, file;
};

void writePlot(const Session& session, const PlotPage& page, const std::string& path) {
  const std::string extension = lowerCase(ExtractFileName(path).substr(ExtractFileName(path).rfind('.') + 1));
  if (extension == "svg") {
    platform::replaceWholeFile(path, svgOf(page));
  } else if (extension != "png" && extension != "pdf") {
    throw Refused("A plot is written as .svg, .png or .pdf, not as " + displayPath(path));
  } else if (!session.pictureWriter) {
    throw Refused("This program was built without the toolkit that writes ." + extension + " files; .svg needs none.");
  } else {
    session.pictureWriter(page, platform::current().toMachine(path));
  }
}

void plot(Session& session, const PlotArguments& arguments) {
  const LibraryName name = libraryArgument(session, arguments.library);
  std::string reason;
  const AntRecord antenna = antennaArgument(session, name, arguments.id, "", reason);
  if (!reason.empty()) throw Refused(reason);
  const std::string path = pathFromCommandLine(arguments.file);
  writePlot(session, plotPage(antenna), path);
  session.document["file"] = displayPath(path);
  session.text << displayPath(path) << '\n';
}

}  // namespace

void addPlotCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("plot", "Draw both cuts as the previews show them");
  command->footer("Example: vantrelix plot AMSX0001 X00010000001 antenna.svg");
  const auto arguments = std::make_shared<PlotArguments>();
  command->add_option("LIBRARY", arguments->library)->required();
  command->add_option("ID", arguments->id)->required();
  command->add_option("FILE", arguments->file, "A .svg, .png or .pdf file")->required();
  command->callback([&session, arguments] { session.job = [&session, arguments] { plot(session, *arguments); }; });
}

}  // namespace vantrelix::cli

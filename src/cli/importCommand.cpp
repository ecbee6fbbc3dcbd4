#include <CLI/CLI.hpp>

#include "antenna/makeAntFiles.h"
#include "cli/commandLine.h"
#include "cli/libraryArgument.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "import/importRun.h"

namespace vantrelix::cli {

namespace {

struct ImportArguments {
  std::string format, library;
  std::vector<std::string> files;
};

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const ImportFormat& format : importFormats()) names.push_back(format.name);
  return names;
}

LibraryTables openLibrary(const Session& session, const LibraryName& name) {
  if (!name.stem.starts_with("AMS") || getLenTrim(name.stem) != 8) {
    throw Refused("Error on Antenna Library file name: " + name.stem +
                  "\nAn antenna library is named AMS and five more characters, as in AMSX0001.");
  }
  LibraryTables tables = openLibraryTables(name.folder, name.code);
  if (!tables.rsAMS || !tables.rsAHD || !tables.rsAVD) {
    const std::string reason = session.failureShown(0);
    throw Refused("The antenna library cannot be opened or made: " + displayPath(setPathName(name.folder, name.stem)) +
                  (reason.empty() ? "" : "\n" + reason));
  }
  return tables;
}

std::vector<std::string> fullPaths(const std::vector<std::string>& files) {
  std::vector<std::string> paths;
  paths.reserve(files.size());
  for (const std::string& file : files) paths.push_back(pathFromCommandLine(file));
  return paths;
}

// A file that was asked for and not read is a failure; one that the run is to pass over is not.
void reportSkipped(Session& session, const ImportResult& result) {
  Json list = Json::array();
  for (const ImportResult::Skipped& skipped : result.skipped) {
    const std::string line = displayPath(skipped.file) + ": " + skipText(skipped.reason);
    const bool rightly = skipped.reason == SkipReason::packed || skipped.reason == SkipReason::readBefore;
    if (rightly) session.text << "skipped " << line << '\n';
    if (!rightly) session.fail(line);
    list.push_back(line);
  }
  session.document["skipped"] = list;
}

void report(Session& session, const ImportResult& result, std::size_t files) {
  Json antennas = Json::array();
  for (const ImportResult::Added& added : result.added) {
    antennas.push_back({{"id", added.id}, {"description", added.description}});
    session.text << added.id << "  " << added.description << '\n';
  }
  session.document = {{"antennas", antennas}, {"files", files}, {"errors", result.failed.size()}};
  Json failed = Json::array();
  for (const std::string& failure : result.failed) {
    failed.push_back(replaceAll(failure, kLineBreak, ": "));
    session.fail(replaceAll(failure, kLineBreak, ": "));
  }
  session.document["failed"] = failed;
  reportSkipped(session, result);
  session.text << counted(result.added.size(), "antenna") << " imported, " << counted(result.failed.size(), "error")
               << '\n';
}

void import(Session& session, const ImportArguments& arguments) {
  session.needSuite();
  const LibraryName name = libraryArgument(session, arguments.library);
  const ImportFormat* format = findImportFormat(arguments.format);
  const std::vector<std::string> files = fullPaths(arguments.files);
  const LibraryTables tables = openLibrary(session, name);
  ImportOwner owner;
  owner.progress = [&session](const std::string& line) { session.progress(line); };
  report(session, importFiles(*format, name.code, tables.rsAMS, tables.rsAHD, tables.rsAVD, files, false, owner),
         files.size());
}

}  // namespace

void addImportCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("import", "Add the antennas of pattern files to a library");
  command->footer("Example: vantrelix import generic AMSX0001 patterns/*.msi");
  const auto arguments = std::make_shared<ImportArguments>();
  command->add_option("FORMAT", arguments->format)->required()->check(CLI::IsMember(formatNames()));
  command->add_option("LIBRARY", arguments->library, "Made where it does not exist")->required();
  command->add_option("FILE", arguments->files)->required();
  command->callback([&session, arguments] { session.job = [&session, arguments] { import(session, *arguments); }; });
}

}  // namespace vantrelix::cli

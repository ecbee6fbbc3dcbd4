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

struct LibraryTables {
  RecordsetPtr ams, ahd, avd;
};

LibraryTables openLibrary(const LibraryName& name) {
  LibraryTables tables{MakeAMSFile(name.code), MakeAHDFile(name.code), MakeAVDFile(name.code)};
  if (!tables.ams || !tables.ahd || !tables.avd) {
    throw Refused("The antenna library cannot be opened or made: " + displayPath(setPathName(name.folder, name.stem)));
  }
  return tables;
}

std::vector<std::string> fullPaths(const std::vector<std::string>& files) {
  std::vector<std::string> paths;
  for (const std::string& file : files) paths.push_back(pathFromCommandLine(file));
  return paths;
}

void report(Session& session, const ImportResult& result, std::size_t files) {
  Json antennas = Json::array();
  for (const ImportResult::Added& added : result.added) {
    antennas.push_back({{"id", added.id}, {"description", added.description}});
    session.text << added.id << "  " << added.description << '\n';
  }
  session.document = {{"antennas", antennas}, {"files", files}, {"errors", result.ErrorCount}};
  Json failed = Json::array();
  for (const std::string& failure : result.failed) {
    failed.push_back(replaceAll(failure, kLineBreak, ": "));
    session.fail(replaceAll(failure, kLineBreak, ": "));
  }
  session.document["failed"] = failed;
  session.text << result.added.size() << " antennas imported, " << result.ErrorCount << " errors\n";
}

void import(Session& session, const ImportArguments& arguments) {
  const LibraryName name = libraryArgument(session, arguments.library);
  const ImportFormat* format = findImportFormat(arguments.format);
  const std::vector<std::string> files = fullPaths(arguments.files);
  const LibraryTables tables = openLibrary(name);
  ImportOwner owner;
  owner.progress = [&session](const std::string& line) { session.progress(line); };
  report(session, importFiles(*format, name.code, tables.ams, tables.ahd, tables.avd, files, false, owner),
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

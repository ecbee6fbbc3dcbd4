#include <CLI/CLI.hpp>
#include <cmath>
#include <limits>

#include "cli/TextTable.h"
#include "cli/commandLine.h"
#include "cli/libraryArgument.h"
#include "foundation/encoding.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "lines/addLines.h"
#include "lines/getLineLossValue.h"
#include "lines/lineList.h"

namespace vantrelix::cli {

namespace {

using Align = TextTable::Align;

// A line library; without a folder it is one of the installation's.
LibraryName lineLibraryArgument(const Session& session, const std::string& argument) {
  LibraryName name = libraryArgument(session, argument);
  if (platform::current().fromMachine(argument).find('\\') == std::string::npos) name.folder = getLinesPath();
  return name;
}

void requireLibrary(const LibraryName& name) {
  const std::string path = setPathName(name.folder, name.stem + ".DBF");
  if (platform::current().fileExists(platform::current().findIgnoringCase(path))) return;
  throw Refused("The line library " + displayPath(path) + " was not found; \"vantrelix import-lines\" makes one.");
}

Json boundOf(const LineRecord& line, double bound) { return line.hasRange ? Json(bound) : Json(nullptr); }
std::string boundText(const LineRecord& line, double bound) { return line.hasRange ? generalText(bound) : ""; }

void lines(Session& session, const std::string& library) {
  const LibraryName name = lineLibraryArgument(session, library);
  requireLibrary(name);
  std::size_t badRows = 0;
  LineListRules rules;
  rules.badRow = [&](const std::string&) { ++badRows; };
  rules.unreadable = [&](const std::string&, const RunTimeFailure& failure) { session.fail(modErrStr(failure)); };
  Json list = Json::array();
  TextTable table({{"ID"}, {"Description"}, {"From MHz", Align::right}, {"To MHz", Align::right}});
  for (const LineRecord& line : readLineLibrary(name.folder, name.stem, rules)) {
    list.push_back({{"id", line.id},
                    {"description", line.description},
                    {"f_min", boundOf(line, line.fMin)},
                    {"f_max", boundOf(line, line.fMax)}});
    table.add({line.id, line.description, boundText(line, line.fMin), boundText(line, line.fMax)});
  }
  session.document["lines"] = list;
  table.write(session.text);
  if (badRows > 0) session.text << counted(badRows, "row") << " without an ID passed over\n";
}

struct LossArguments {
  std::string library, id, length, unit, freq;
};

void lossText(Session& session, const LossArguments& arguments, double loss, const std::string& description) {
  session.text << "Line    " << trim(description) << '\n' << "Loss    ";
  if (std::isnan(loss)) {
    session.text << "none: a line needs two points of frequency\n";
  } else {
    session.text << generalText(loss) << " dB in " << arguments.length << ' ' << arguments.unit << " at "
                 << arguments.freq << " MHz\n";
  }
}

void loss(Session& session, const LossArguments& arguments) {
  const LibraryName name = lineLibraryArgument(session, arguments.library);
  double value = std::numeric_limits<double>::quiet_NaN();  // what a procedure that leaves it untouched leaves
  bool failed = false;
  std::string error;
  std::string description;
  try {
    getLineLossValueIn(name.folder, name.stem, arguments.id, CValP(arguments.length), arguments.unit,
                       CValP(arguments.freq), value, failed, error, &description);
  } catch (const RunTimeFailure& failure) {
    failed = true;
    error = modErrStr(failure);
  }
  session.document = {{"loss", std::isnan(value) ? Json(nullptr) : Json(value)},
                      {"failed", failed},
                      {"error", error},
                      {"description", description}};
  if (!failed) return lossText(session, arguments, value, description);
  session.fail(error.empty() ? "The length unit \"" + arguments.unit + "\" is unknown: ft, in, m, cm ..." : error);
}

struct ImportLinesArguments {
  std::string file, library;
};

std::string faultText(const std::string& file, const LineFault& fault) {
  return file + (fault.row > 0 ? ", line " + std::to_string(fault.row) : "") + ": " + fault.text;
}

void importLines(Session& session, const ImportLinesArguments& arguments) {
  const LibraryName name = lineLibraryArgument(session, arguments.library);
  const std::string path = pathFromCommandLine(arguments.file);
  std::vector<LineFault> faults;
  const std::vector<LineType> figures = readLineTypes(decodeFile(platform::readWholeFile(path)), faults);
  AddedLines added;
  if (faults.empty()) added = addLines(name.folder, name.stem, figures, faults);
  for (const LineFault& fault : faults) session.fail(faultText(displayPath(path), fault));
  if (!faults.empty()) throw Refused("No line was added to " + name.stem + ".");
  session.document = {{"library", name.stem}, {"lines", added.lines}, {"points", added.points}};
  session.text << counted(added.lines, "line") << " with " << counted(added.points, "point") << " added to "
               << name.stem << '\n';
}

const CLI::Validator& aNumber() {
  static const CLI::Validator validator(
      [](std::string& text) { return isNumeric(text) ? std::string() : "\"" + text + "\" is no number"; }, "NUMBER");
  return validator;
}

void addLossCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("loss", "Compute the loss of a length of line at a frequency");
  command->footer("Example: vantrelix loss LMSX0001 F78 --length 150 --unit ft --freq 450");
  const auto arguments = std::make_shared<LossArguments>();
  command->add_option("LIBRARY", arguments->library)->required();
  command->add_option("ID", arguments->id)->required();
  command->add_option("--length", arguments->length, "Length of the line")->required()->check(aNumber());
  command->add_option("--unit", arguments->unit, "ft, in, m, cm ...")->required()->type_name("U");
  command->add_option("--freq", arguments->freq, "Frequency in MHz")->required()->check(aNumber());
  command->callback([&session, arguments] { session.job = [&session, arguments] { loss(session, *arguments); }; });
}

void addImportLinesCommand(CLI::App& app, Session& session) {
  CLI::App* command = app.add_subcommand("import-lines", "Add the lines of a plain table to a line library");
  command->footer(
      "The table's first row is id,description,MHz,dB per 100 ft (or dB per 100 m), each further row one point of a "
      "line.\nExample: vantrelix import-lines data/lines/foam.csv LMSX0001");
  const auto arguments = std::make_shared<ImportLinesArguments>();
  command->add_option("FILE", arguments->file)->required();
  command->add_option("LIBRARY", arguments->library, "Made where it does not exist")->required();
  command->callback(
      [&session, arguments] { session.job = [&session, arguments] { importLines(session, *arguments); }; });
}

}  // namespace

void addLineCommands(CLI::App& app, Session& session) {
  CLI::App* list = app.add_subcommand("lines", "List the lines of a line library");
  list->footer("Example: vantrelix lines LMSX0001");
  const auto library = std::make_shared<std::string>();
  list->add_option("LIBRARY", *library)->required();
  list->callback([&session, library] { session.job = [&session, library] { lines(session, *library); }; });
  addLossCommand(app, session);
  addImportLinesCommand(app, session);
}

}  // namespace vantrelix::cli

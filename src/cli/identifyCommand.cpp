#include <CLI/CLI.hpp>

#include "cli/TextTable.h"
#include "cli/commandLine.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "import/identifyFile.h"
#include "import/importRun.h"

namespace vantrelix::cli {

namespace {

using Align = TextTable::Align;

Json jsonOf(const std::vector<ImportedAntenna>& antennas) {
  Json list = Json::array();
  for (const ImportedAntenna& antenna : antennas) {
    list.push_back({{"name", trim(antenna.AntName)},
                    {"gain", antenna.Gain},
                    {"gain_units", antenna.GainUnits},
                    {"horizontal_points", antenna.HorCount},
                    {"vertical_points", antenna.VerCount}});
  }
  return list;
}

Json jsonOf(const std::vector<AcceptingFormat>& formats) {
  Json list = Json::array();
  for (const AcceptingFormat& accepting : formats) {
    list.push_back({{"format", accepting.format->name}, {"antennas", jsonOf(accepting.antennas)}});
  }
  return list;
}

std::string pointsText(std::int16_t points) { return formatNumber(static_cast<double>(points), kCountFormat); }

void writeTable(Session& session, const std::vector<AcceptingFormat>& formats) {
  TextTable table({{"Format"},
                   {"Name"},
                   {"Gain", Align::right},
                   {"Units"},
                   {"Azimuths", Align::right},
                   {"Elevations", Align::right}});
  for (const AcceptingFormat& accepting : formats) {
    for (const ImportedAntenna& antenna : accepting.antennas) {
      table.add({accepting.format->name, trim(antenna.AntName), formatNumber(antenna.Gain, "0.00"), antenna.GainUnits,
                 pointsText(antenna.HorCount), pointsText(antenna.VerCount)});
    }
  }
  table.write(session.text);
}

// Fails where the file cannot be read.
std::vector<AcceptingFormat> formatsOf(Session& session, const std::string& path) {
  try {
    std::vector<AcceptingFormat> formats = identifyFile(path);
    if (formats.empty()) session.fail(displayPath(path) + ": No import format makes an antenna of this file");
    return formats;
  } catch (const RunTimeFailure& failure) {
    session.fail(displayPath(path) + ": " + modErrStr(failure));
    return {};
  }
}

void identify(Session& session, const std::vector<std::string>& files) {
  Json list = Json::array();
  for (std::size_t i = 0; i < files.size(); ++i) {
    const std::string path = pathFromCommandLine(files[i]);
    session.progress("Trying file " + std::to_string(i + 1) + " of " + std::to_string(files.size()) + ": " +
                     ExtractFileName(path));
    const std::vector<AcceptingFormat> formats = formatsOf(session, path);
    list.push_back({{"file", displayPath(path)}, {"formats", jsonOf(formats)}});
    session.text << (i > 0 ? "\n" : "") << displayPath(path) << '\n';
    if (!formats.empty()) writeTable(session, formats);
  }
  session.document["files"] = list;
}

}  // namespace

void addIdentifyCommand(CLI::App& app, Session& session) {
  CLI::App* command =
      app.add_subcommand("identify", "Tell which import formats accept a file, and what they make of it");
  command->footer(
      "Every format reads the file and stores nothing; pick the one whose name, gain and points look right.\n"
      "Example: vantrelix identify unknown.txt");
  const auto files = std::make_shared<std::vector<std::string>>();
  command->add_option("FILE", *files, "Files to try")->required();
  command->callback([&session, files] { session.job = [&session, files] { identify(session, *files); }; });
}

}  // namespace vantrelix::cli

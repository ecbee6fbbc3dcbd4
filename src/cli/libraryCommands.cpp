#include <CLI/CLI.hpp>

#include "aliases/aliasStore.h"
#include "antenna/antennaList.h"
#include "cli/TextTable.h"
#include "cli/commandLine.h"
#include "cli/libraryArgument.h"
#include "foundation/numbers.h"

namespace vantrelix::cli {

namespace {

using Align = TextTable::Align;

void libraries(Session& session, const std::string& family) {
  session.needSuite();
  Json list = Json::array();
  TextTable table({{"File"}, {"Description"}});
  for (const LibraryEntry& entry : libraryFiles(family == "lines" ? LibraryFamily::line : LibraryFamily::antenna)) {
    list.push_back({{"file", entry.file}, {"description", entry.description}});
    table.add({entry.file, entry.description});
  }
  session.document["libraries"] = list;
  table.write(session.text);
}

std::string pointsText(long points) { return formatNumber(static_cast<double>(points), "###,###,##0"); }

void antennas(Session& session, const std::string& library) {
  const LibraryName name = libraryArgument(session, library);
  Json list = Json::array();
  TextTable table({{"ID"},
                   {"Description"},
                   {"Gain", Align::right},
                   {"Units"},
                   {"Low", Align::right},
                   {"High", Align::right},
                   {"Units"},
                   {"Azimuths", Align::right},
                   {"Elevations", Align::right}});
  for (const AntennaListEntry& a : listAntennas(name.folder, name.stem)) {
    list.push_back({{"id", a.id},
                    {"description", a.description},
                    {"gain", a.gain},
                    {"gain_units", a.gainUnits},
                    {"f_low", a.fLow},
                    {"f_high", a.fHigh},
                    {"freq_units", a.freqUnits},
                    {"horizontal_points", a.horizontalPoints},
                    {"vertical_points", a.verticalPoints}});
    table.add({a.id, a.description, formatNumber(a.gain, "0.00"), a.gainUnits, generalText(a.fLow),
               generalText(a.fHigh), a.freqUnits, pointsText(a.horizontalPoints), pointsText(a.verticalPoints)});
  }
  session.document["antennas"] = list;
  table.write(session.text);
}

Json cut(std::int16_t count, const std::vector<double>& angles, const std::vector<double>& values) {
  Json points = Json::array();
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) points.push_back({angles[i], values[i]});
  return points;
}

void cutText(Session& session, const std::string& title, std::int16_t count, const std::vector<double>& angles,
             const std::vector<double>& values) {
  session.text << '\n' << title << ": " << count << " points\n";
  TextTable table({{"Degrees", Align::right}, {"Value", Align::right}});
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    table.add({generalText(angles[i]), generalText(values[i])});
  }
  if (count > 0) table.write(session.text);
}

void antennaText(Session& session, const AntRecord& antenna) {
  session.text << "Library      " << antenna.library << '\n'
               << "Antenna      " << antenna.id << '\n'
               << "Description  " << antenna.description << '\n'
               << "Gain         " << generalText(antenna.gain) << ' ' << antenna.gainUnits << '\n'
               << "Band         " << generalText(antenna.lowFrequency) << " to " << generalText(antenna.highFrequency)
               << ' ' << antenna.freqUnits << '\n';
  cutText(session, "Azimuth", antenna.nHor, antenna.HorAz, antenna.HorField);
  cutText(session, "Elevation", antenna.nVer, antenna.VerAngle, antenna.VerField);
}

struct ShowArguments {
  std::string library, id, units;
};

void show(Session& session, const ShowArguments& arguments) {
  const LibraryName name = libraryArgument(session, arguments.library);
  std::string error;
  const AntRecord antenna = antennaArgument(session, name, arguments.id, arguments.units, error);
  session.document = {{"library", name.stem},
                      {"id", arguments.id},
                      {"description", antenna.description},
                      {"gain", antenna.gain},
                      {"gain_units", antenna.gainUnits},
                      {"f_low", antenna.lowFrequency},
                      {"f_high", antenna.highFrequency},
                      {"freq_units", antenna.freqUnits},
                      {"horizontal", cut(antenna.nHor, antenna.HorAz, antenna.HorField)},
                      {"vertical", cut(antenna.nVer, antenna.VerAngle, antenna.VerField)},
                      {"error", error}};
  if (error.empty()) {
    antennaText(session, antenna);
  } else {
    session.fail(error);
  }
}

}  // namespace

void addLibraryCommands(CLI::App& app, Session& session) {
  CLI::App* list = app.add_subcommand("libraries", "List library files with their descriptions");
  list->footer("Example: vantrelix libraries antennas");
  const auto family = std::make_shared<std::string>("antennas");
  list->add_option("FAMILY", *family, "antennas or lines")->check(CLI::IsMember({"antennas", "lines"}));
  list->callback([&session, family] { session.job = [&session, family] { libraries(session, *family); }; });

  CLI::App* antennaList = app.add_subcommand("antennas", "List the antennas of a library by description");
  antennaList->footer("Example: vantrelix antennas AMSX0001");
  const auto library = std::make_shared<std::string>();
  antennaList->add_option("LIBRARY", *library)->required();
  antennaList->callback([&session, library] { session.job = [&session, library] { antennas(session, *library); }; });

  CLI::App* showCommand = app.add_subcommand("show", "Show one antenna with both cuts");
  showCommand->footer("Example: vantrelix show AMSX0001 X00010000001 --units dBi");
  const auto arguments = std::make_shared<ShowArguments>();
  showCommand->add_option("LIBRARY", arguments->library)->required();
  showCommand->add_option("ID", arguments->id)->required();
  showCommand->add_option("--units", arguments->units, "dBd, dBi or REL; as stored where missing")->type_name("U");
  showCommand->callback([&session, arguments] { session.job = [&session, arguments] { show(session, *arguments); }; });
}

}  // namespace vantrelix::cli

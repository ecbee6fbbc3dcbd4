#include "cli/OtherPrograms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <vector>

#include "foundation/numbers.h"
#include "foundation/text.h"

namespace vantrelix::test {
namespace {

bool isAscii(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
}

// "2026/11/21" and "2026-11-21" alike; outer blanks gone.
std::string plain(const Json& value) {
  std::string text = value.is_string() ? trim(value.get<std::string>()) : std::string();
  if (text.size() == 10 && (text[4] == '/' || text[4] == '-')) std::replace(text.begin(), text.end(), '/', '-');
  return text;
}

bool sameNumber(const Json& ours, const Json& theirs) {
  const double a = ours.get<double>();
  const double b = theirs.is_string() ? CValP(theirs.get<std::string>()) : theirs.get<double>();
  return std::abs(a - b) <= 1e-9 * std::max({1.0, std::abs(a), std::abs(b)});
}

// Null, blank, or what the other reader shows of a logical field and a date without a value.
bool isBlank(const Json& value) {
  if (value.is_null()) return true;
  const std::string text = plain(value);
  return value.is_string() && (text.empty() || text == "?" || text == "0000-00-00");
}

bool sameBoolean(bool ours, const Json& theirs) {
  if (theirs.is_boolean()) return theirs.get<bool>() == ours;
  const std::string text = upperCase(plain(theirs));
  return ours ? text == "T" || text == "Y" : text == "F" || text == "N";
}

bool sameValue(const Json& ours, const Json& theirs) {
  if (isBlank(ours) && isBlank(theirs)) return true;
  if (ours.is_number()) return (theirs.is_number() || theirs.is_string()) && sameNumber(ours, theirs);
  if (ours.is_boolean()) return sameBoolean(ours.get<bool>(), theirs);
  // The other reader leaves text undecoded where the table names no code page.
  if (!isAscii(plain(ours)) || !isAscii(plain(theirs))) return true;
  return plain(ours) == plain(theirs);
}

// The cells of one line of a text table; quotes stand around cells that hold a comma or a quote.
std::vector<std::string> cellsOf(const std::string& line) {
  std::vector<std::string> cells(1);
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') {
      if (quoted && i + 1 < line.size() && line[i + 1] == '"') {
        cells.back() += line[i++];
      } else {
        quoted = !quoted;
      }
    } else if (line[i] == ',' && !quoted) {
      cells.emplace_back();
    } else if (line[i] != '\r') {
      cells.back() += line[i];
    }
  }
  return cells;
}

// Its settings go into a folder of their own, so that a copy that somebody works with is left alone.
void runOffice(const std::string& folder, const std::string& arguments) {
  outputOf("cd '" + folder + "' && soffice --headless '-env:UserInstallation=file://" + folder + "/office' " +
           arguments);
}

}  // namespace

std::string outputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen((command + " 2>/dev/null").c_str(), "r"), ::pclose);
  std::string output;
  std::array<char, 4096> buffer{};
  for (std::size_t got = 0; pipe && (got = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0;) {
    output.append(buffer.data(), got);
  }
  return output;
}

bool installed(const std::string& program) { return !outputOf("command -v " + program).empty(); }

// The rows of a table as the GIS library has them: a list of objects from field name to value.
Json rowsThroughOgr(const std::string& file) {
  const Json features = Json::parse(outputOf("ogr2ogr -f GeoJSON /vsistdout/ '" + file + "'"), nullptr, false);
  Json rows = Json::array();
  if (features.is_discarded() || !features.contains("features")) return rows;
  for (const Json& feature : features["features"]) rows.push_back(feature["properties"]);
  return rows;
}

Json rowsThroughOffice(const std::string& file, const std::string& folder) {
  // It knows a table by the small letters of its name's end.
  std::filesystem::copy_file(file, folder + "/table.dbf", std::filesystem::copy_options::overwrite_existing);
  runOffice(folder, "--convert-to csv table.dbf");
  std::ifstream text(folder + "/table.csv");
  std::string line;
  std::getline(text, line);
  std::vector<std::string> names = cellsOf(line);
  for (std::string& name : names) name.resize(std::min(name.find(','), name.size()));
  Json rows = Json::array();
  while (std::getline(text, line)) {
    const std::vector<std::string> cells = cellsOf(line);
    Json row = Json::object();
    for (std::size_t i = 0; i < std::min(names.size(), cells.size()); ++i) {
      row[names[i]] = cells[i].empty() ? Json() : Json(cells[i]);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

void tablesFromOffice(const std::string& folder) { runOffice(folder, "--convert-to dbf *.csv"); }

Comparison compare(const Json& ours, const Json& theirs) {
  Comparison result;
  if (ours["rows"].size() != theirs.size()) {
    result.firstDifference = std::to_string(ours["rows"].size()) + " rows against " + std::to_string(theirs.size());
    return result;
  }
  const std::set<std::string> comparable = {"C", "N", "F", "D", "L"};
  for (std::size_t row = 0; row < theirs.size(); ++row) {
    for (const Json& field : ours["fields"]) {
      const std::string name = field["name"];
      if (!comparable.count(field["type"]) || !theirs[row].contains(name)) continue;
      ++result.values;
      if (sameValue(ours["rows"][row][name], theirs[row][name]) || !result.firstDifference.empty()) continue;
      result.firstDifference = "row " + std::to_string(row) + ", " + name + ": " + ours["rows"][row][name].dump() +
                               " against " + theirs[row][name].dump();
    }
  }
  return result;
}

}  // namespace vantrelix::test

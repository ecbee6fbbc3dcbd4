#include "lines/lineTypes.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

#include "foundation/numbers.h"
#include "foundation/text.h"
#include "foundation/units.h"
#include "lines/csvRows.h"
#include "lines/lineLibrary.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

enum Column : std::size_t { idColumn, descriptionColumn, freqColumn, attenColumn, columnCount };
constexpr std::array<const char*, columnCount> kColumnNames{"id", "description", "MHz",
                                                            "dB per 100 ft\" or \"dB per 100 m"};

// A name without signs and capitals. Other words may stand before all but that of an id.
struct KnownColumn {
  std::string_view name;
  Column column;
  bool whole = false;
  const char* lengthUnit = "";
};
constexpr KnownColumn kKnownColumns[] = {
    {"id", idColumn, true},
    {"lineid", idColumn, true},
    {"ltypeid", idColumn, true},
    {"description", descriptionColumn},
    {"lntype", descriptionColumn},
    {"mhz", freqColumn},
    {"db100ft", attenColumn, false, "ft"},
    {"db100feet", attenColumn, false, "ft"},
    {"db100m", attenColumn, false, "m"},
    {"db100meters", attenColumn, false, "m"},
    {"db100metres", attenColumn, false, "m"},
};

struct Header {
  std::array<std::optional<std::size_t>, columnCount> places;
  std::size_t width = 0;
  double perTableUnit = 1;  // times the figure gives dB per 100 ft
};

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

std::string plainName(const std::string& name) {
  std::string plain;
  for (const char c : lowerCase(name)) {
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) plain += c;
  }
  return replaceAll(plain, "per", "");
}

const KnownColumn* columnOf(const std::string& name) {
  const std::string plain = plainName(name);
  const auto* found = std::find_if(std::begin(kKnownColumns), std::end(kKnownColumns), [&](const KnownColumn& known) {
    return known.whole ? plain == known.name : plain.ends_with(known.name);
  });
  return found == std::end(kKnownColumns) ? nullptr : found;
}

class LineTypesReader {
 public:
  explicit LineTypesReader(std::vector<LineFault>& faults) : faults_(faults) {}

  std::vector<LineType> read(std::string_view text) {
    const std::vector<CsvRow> rows = readCsvRows(text);
    if (rows.empty()) fault(0, "there is no header row");
    if (rows.empty() || !readHeader(rows.front())) return {};
    for (std::size_t i = 1; i < rows.size(); ++i) readRow(rows[i]);
    if (rows.size() == 1) fault(0, "there is no row below the header");
    for (LineType& line : lines_) sortPoints(line);
    std::stable_sort(faults_.begin(), faults_.end(),
                     [](const LineFault& a, const LineFault& b) { return a.row < b.row; });
    return std::move(lines_);
  }

 private:
  void fault(int row, const std::string& text) { faults_.push_back({row, text}); }

  bool readHeader(const CsvRow& row) {
    const std::size_t before = faults_.size();
    if (!row.fault.empty()) fault(row.line, row.fault);
    header_.width = row.fields.size();
    for (std::size_t i = 0; i < row.fields.size(); ++i) {
      if (const KnownColumn* known = columnOf(row.fields[i])) takeColumn(*known, i, row);
    }
    for (std::size_t i = 0; i < columnCount; ++i) {
      if (!header_.places[i]) fault(row.line, std::string("the header has no column \"") + kColumnNames[i] + "\"");
    }
    return faults_.size() == before;
  }

  void takeColumn(const KnownColumn& known, std::size_t place, const CsvRow& row) {
    if (header_.places[known.column]) {
      fault(row.line, "the header has two columns for one thing, " + quoted(row.fields[*header_.places[known.column]]) +
                          " and " + quoted(row.fields[place]));
      return;
    }
    header_.places[known.column] = place;
    bool err = false;
    if (known.column == attenColumn) header_.perTableUnit = ConvertLen("ft", known.lengthUnit, 1, err);
  }

  const std::string& field(const CsvRow& row, Column column) const { return row.fields[*header_.places[column]]; }

  void readRow(const CsvRow& row) {
    if (!row.fault.empty()) return fault(row.line, row.fault);
    if (row.fields.size() != header_.width) {
      return fault(row.line, "it has " + std::to_string(row.fields.size()) + " fields where the header has " +
                                 std::to_string(header_.width) + "; a comma in a text needs quotation marks round it");
    }
    const std::size_t before = faults_.size();
    checkTexts(row);
    const double freq = number(row, freqColumn, "frequency");
    const double atten = number(row, attenColumn, "attenuation");
    if (faults_.size() != before) return;
    LineType& line = lineOf(row);
    checkSameLine(line, row);
    line.points.push_back({freq, atten * header_.perTableUnit, row.line});
  }

  void checkTexts(const CsvRow& row) {
    const std::string& id = field(row, idColumn);
    const std::string& description = field(row, descriptionColumn);
    if (getLenTrim(id) == 0) fault(row.line, "the id is blank");
    if (characterCount(id) > kLineIdWidth) fault(row.line, "the id " + quoted(id) + " has more than 10 characters");
    if (id.find('\'') != std::string::npos) fault(row.line, "the id " + quoted(id) + " has a single quotation mark");
    if (characterCount(description) > kLineDescriptionWidth) {
      fault(row.line, "the description of " + quoted(id) + " has more than 75 characters");
    }
    for (const char c : id + description) {
      if (static_cast<unsigned char>(c) >= ' ') continue;
      return fault(row.line, "the id or the description holds a line break or another control character");
    }
  }

  double number(const CsvRow& row, Column column, const std::string& what) {
    const std::string& text = field(row, column);
    const std::optional<double> value = sqlNumber(text);
    if (!value) {
      fault(row.line, "the " + what + " " + quoted(text) + " is no number");
    } else if (!(*value > 0)) {
      fault(row.line, "the " + what + " " + text + " is not above 0");
    }
    return value.value_or(0);
  }

  // The line that the row's id names, in whatever case; a new one where it is the first of it.
  LineType& lineOf(const CsvRow& row) {
    const auto [place, isNew] = places_.try_emplace(upperCase(trim(field(row, idColumn))), lines_.size());
    if (isNew) lines_.push_back({trim(field(row, idColumn)), trim(field(row, descriptionColumn)), row.line, {}});
    return lines_[place->second];
  }

  void checkSameLine(const LineType& line, const CsvRow& row) {
    const std::string id = trim(field(row, idColumn));
    const std::string description = trim(field(row, descriptionColumn));
    if (id != line.id) {
      fault(row.line,
            "the id " + quoted(id) + " is written " + quoted(line.id) + " in line " + std::to_string(line.row));
    }
    if (!description.empty() && description != line.description) {
      fault(row.line, "the id " + quoted(id) + " has another description in line " + std::to_string(line.row));
    }
  }

  void sortPoints(LineType& line) {
    std::stable_sort(line.points.begin(), line.points.end(),
                     [](const LinePoint& a, const LinePoint& b) { return a.freq < b.freq; });
    for (std::size_t i = 1; i < line.points.size(); ++i) {
      const LinePoint& point = line.points[i];
      if (point.freq != line.points[i - 1].freq) continue;
      fault(point.row, "the frequency " + generalText(point.freq) + " of " + quoted(line.id) + " stands in line " +
                           std::to_string(line.points[i - 1].row) + " already");
    }
  }

  std::vector<LineFault>& faults_;
  Header header_;
  std::vector<LineType> lines_;
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

std::vector<LineType> readLineTypes(std::string_view text, std::vector<LineFault>& faults) {
  return LineTypesReader(faults).read(text);
}

}  // namespace vantrelix

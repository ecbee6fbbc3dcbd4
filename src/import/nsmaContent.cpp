#include "import/nsmaContent.h"

#include <cstdint>
#include <string_view>

#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "import/TextLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

constexpr std::string_view kDelimiter = ":,";
constexpr const char* kEnd = "ENDFIL";
// As much of a text of the file as a message box can show.
std::string shown(const std::string& text) { return leftCharacters(text, TextLines::kLongestShown); }

struct KeywordLine {
  explicit KeywordLine(const std::string& line)
      : keyword(upperCase(sAWK6(line, kDelimiter, 1))), value(sAWK6(line, kDelimiter, 2)) {}
  std::string keyword;  // in capitals
  std::string value;
};

constexpr struct {
  std::string_view keyword;
  std::string NsmaContent::*text;
} kTexts[] = {{"ANTMAN", &NsmaContent::maker}, {"MODNUM", &NsmaContent::model}};

constexpr struct {
  std::string_view keyword;
  double NsmaContent::*number;
} kNumbers[] = {{"LOWFRQ", &NsmaContent::FreqLow},
                {"HGHFRQ", &NsmaContent::FreqHigh},
                {"MDGAIN", &NsmaContent::Gain},
                {"PATFRE", &NsmaContent::Freq}};

// Where a cut goes; one of any other name or polarisation is dropped.
constexpr struct {
  std::string_view name;
  std::string_view polarisation;
  NsmaAntenna NsmaContent::*antenna;
  NsmaCut NsmaAntenna::*cut;
} kPlaces[] = {
    {"AZ", "H/H", &NsmaContent::horizontal, &NsmaAntenna::azimuth},
    {"H", "H/H", &NsmaContent::horizontal, &NsmaAntenna::azimuth},
    {"EL", "H/H", &NsmaContent::horizontal, &NsmaAntenna::elevation},
    {"V", "H/H", &NsmaContent::horizontal, &NsmaAntenna::elevation},
    {"AZ", "V/V", &NsmaContent::vertical, &NsmaAntenna::azimuth},
    {"H", "V/V", &NsmaContent::vertical, &NsmaAntenna::azimuth},
    {"EL", "V/V", &NsmaContent::vertical, &NsmaAntenna::elevation},
    {"V", "V/V", &NsmaContent::vertical, &NsmaAntenna::elevation},
};

class ContentReader {
 public:
  ContentReader(ImportSource& source, NsmaContent& content)
      : lines_(source.lines()), path_(displayPath(source.path())), content_(content) {}

  std::optional<NsmaRefusal> read();

 private:
  enum class Next { line, end, refused };
  using Take = Next (ContentReader::*)(const std::string& value);

  std::string nextLine();
  Next take(const KeywordLine& line);
  Next takeRevision(const std::string& value);
  Next takeUnits(const std::string& value);
  Next takeFrequencyCount(const std::string& value);
  Next takeCut(const std::string& value);
  bool useGainUnits(const std::string& gainUnits) const;
  bool expect(const std::string& keyword, std::string& value);
  Next readPoints(std::int16_t count, NsmaCut& cut);
  void place(const std::string& name, const std::string& polarisation, NsmaCut cut);
  Next refuse(const NsmaRefusal& refusal);

  TextLines& lines_;
  const std::string path_;
  NsmaContent& content_;
  NsmaRefusal refusal_;
};

std::string ContentReader::nextLine() {
  if (lines_.atEnd() && lines_.lineNumber() > 0) {
    throw RunTimeFailure(failure::inputPastEnd, std::string("Input past end of file: the file has no ") + kEnd +
                                                    " line, or ends within a cut");
  }
  return TextLines::keptText(lines_.next());
}

ContentReader::Next ContentReader::refuse(const NsmaRefusal& refusal) {
  refusal_ = refusal;
  return Next::refused;
}

ContentReader::Next ContentReader::takeRevision(const std::string& value) {
  if (upperCase(value).find("NSMA") != std::string::npos) return Next::line;
  const std::string text =
      std::string(
          "The Revision Number information for this file does not indicate this is an NSMA WG16.99.050 "
          "compatible file:") +
      kLineBreak + shown(value) + kBlankLine + "Do you want to try to import the antenna anyway?";
  const Message question{"File Compatibility Warning", text, MsgButtons::yesNo, MsgIcon::none, 2};
  if (MsgBox(question) == MsgAnswer::yes) return Next::line;
  return refuse(
      {"", text, "The revision \"" + TextLines::shownText(value) + "\" of the REVNUM line does not name NSMA"});
}

bool ContentReader::useGainUnits(const std::string& gainUnits) const {
  const std::string units = shown(gainUnits);
  const std::string text = std::string("This file does not contain the units specification for the pattern values.") +
                           kLineBreak + path_ + kBlankLine + "The unit setting for the antenna gain is " + units +
                           kBlankLine + "Do you want to use " + units + " for the pattern values?" + kBlankLine +
                           "Click Yes to continue using " + units + kLineBreak + "Click No to skip this antenna.";
  return MsgBox({"No Pattern Units in File", text, MsgButtons::yesNo, MsgIcon::information, 1}) == MsgAnswer::yes;
}

ContentReader::Next ContentReader::takeUnits(const std::string& value) {
  std::string gainUnits;
  std::string patternUnits;
  for (const char* separator : {"/", ","}) {
    if (value.find(separator) == std::string::npos) continue;
    gainUnits = upperCase(sAWK6(value, separator, 1));
    patternUnits = upperCase(sAWK6(value, separator, 2));
    break;
  }
  std::string problem;
  if (getLenTrim(gainUnits) == 0) {
    problem = "Blank gain units for antenna";
  } else if (getLenTrim(patternUnits) == 0 && useGainUnits(gainUnits)) {
    patternUnits = gainUnits;
  }
  if (getLenTrim(patternUnits) == 0) problem = AddALine(problem, "Blank pattern gain units for antenna");
  if (!problem.empty()) {
    return refuse({"Invalid Gain Units", problem,
                   "The GUNITS line holds \"" + TextLines::shownText(value) +
                       "\" where the units of the gain and of the pattern are to stand; write both, such as DBI/DBR"});
  }
  content_.gainUnits = gainUnits;
  content_.patternUnits = patternUnits;
  return Next::line;
}

ContentReader::Next ContentReader::takeFrequencyCount(const std::string& value) {
  if (CValP(value) == 1 || value == "NA") return Next::line;
  return refuse({"Multi-Frequency File",
                 std::string("This file contains pattern information for mulitple frequencies.") + kBlankLine +
                     "This feature is not currently supported in this import function." + kBlankLine +
                     "Please contact " + supportAddress() + kBlankLine +
                     "You can attach this import file to your email for help importing the data:" + kLineBreak + path_,
                 "The NOFREQ line holds \"" + TextLines::shownText(value) +
                     "\": only a file of one frequency (1 or NA) can be imported; save one frequency in a file"});
}

bool ContentReader::expect(const std::string& keyword, std::string& value) {
  const KeywordLine line(nextLine());
  value = line.value;
  if (line.keyword == keyword) return true;
  refuse({"",
          std::string("Unexpected keyword") + kLineBreak + "Expected '" + keyword + "'" + kLineBreak + "Found '" +
              shown(line.keyword) + "'",
          "The keyword " + keyword + " was expected, but \"" + TextLines::shownText(line.keyword) + "\" stands there"});
  return false;
}

ContentReader::Next ContentReader::readPoints(std::int16_t count, NsmaCut& cut) {
  for (std::int16_t read = 0; read < count;) {
    const std::string line = nextLine();
    if (line.find(kDelimiter) != std::string::npos) {
      if (KeywordLine(line).keyword == kEnd) return Next::end;
      continue;
    }
    cut.angles.push_back(CValP(sAWK6(line, ",", 1)));
    cut.values.push_back(CValP(sAWK6(line, ",", 2)));
    ++read;
  }
  return Next::line;
}

void ContentReader::place(const std::string& name, const std::string& polarisation, NsmaCut cut) {
  for (const auto& row : kPlaces) {
    if (row.name != name || row.polarisation != polarisation) continue;
    content_.*row.antenna.*row.cut = std::move(cut);
    return;
  }
}

ContentReader::Next ContentReader::takeCut(const std::string& value) {
  std::string polarisation;
  std::string count;
  if (!expect("POLARI", polarisation) || !expect("NUPOIN", count)) return Next::refused;
  NsmaCut cut;
  const Next next = readPoints(CInt(CDbl(count)), cut);
  place(upperCase(value), upperCase(polarisation), std::move(cut));
  return next;
}

ContentReader::Next ContentReader::take(const KeywordLine& line) {
  static constexpr struct {
    std::string_view keyword;
    Take take;
  } kTakes[] = {{"REVNUM", &ContentReader::takeRevision},
                {"GUNITS", &ContentReader::takeUnits},
                {"NOFREQ", &ContentReader::takeFrequencyCount},
                {"PATCUT", &ContentReader::takeCut}};

  if (line.keyword == kEnd) return Next::end;
  for (const auto& row : kTexts) {
    if (row.keyword == line.keyword) content_.*row.text = line.value;
  }
  for (const auto& row : kNumbers) {
    if (row.keyword == line.keyword) content_.*row.number = CValP(line.value);
  }
  for (const auto& row : kTakes) {
    if (row.keyword == line.keyword) return (this->*row.take)(line.value);
  }
  return Next::line;
}

std::optional<NsmaRefusal> ContentReader::read() {
  Next next = Next::line;
  while (next == Next::line) next = take(KeywordLine(nextLine()));
  return next == Next::refused ? std::optional(refusal_) : std::nullopt;
}

}  // namespace

std::optional<NsmaRefusal> readNsmaContent(ImportSource& source, NsmaContent& content) {
  return ContentReader(source, content).read();
}

}  // namespace vantrelix

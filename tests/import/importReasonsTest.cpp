// Why a file of each format fails.
#include <algorithm>
#include <cctype>
#include <ostream>

#include "FormatImport.h"
#include "import/TextLines.h"

namespace vantrelix::test {

namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

// What readers say of samples that they refuse.
struct Refused {
  const char* format;
  const char* sample;
  const char* reason;
};

std::string nameOf(const testing::TestParamInfo<Refused>& test) {
  std::string name = fileNameOf(test.param.format) + "_" + test.param.sample;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
  return name;
}

void PrintTo(const Refused& row, std::ostream* out) { *out << row.format << " " << row.sample; }

class Refusals : public FormatImport, public testing::WithParamInterface<Refused> {
 protected:
  Refusals() : FormatImport(GetParam().format) {}
};

TEST_P(Refusals, NameWhatIsWrongAndItsLine) {
  suite.answers = {MsgAnswer::no};
  const std::string name = copied(GetParam().sample);
  const ImportResult result = import({name});
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], HasSubstr(GetParam().reason));
  EXPECT_THAT(suite.log(), HasSubstr(result.failed[0].substr(result.failed[0].find('\n') + 1)));
}

constexpr Refused kRefused[] = {
    {"antel", "damaged-azimuth-keyword.msi",
     "\"HORIZONTAL\" and a number of points above 0 were expected, but \"AZIMUTH 36\" stands there (line 10)"},
    {"antel", "damaged-negative-count.msi",
     "\"VERTICAL\" and a number of points above 0 were expected, but \"VERTICAL -1\" stands there (line 47)"},
    {"celwave", "damaged-vertical-plane.ANT",
     "The plane of the cut must be \"H\" or \"E\", but the line holds \"V\" (line 18)"},
    {"decibel", "damaged-other-plane.pat",
     "The plane of the cut must be \"H\" or \"V\", but the line holds \"Horizontal\" (line 7)"},
    {"txrx", "damaged-other-plane.dat",
     "The plane of the cut must be \"H\" or \"V\", but the line holds \"Horizontal\" (line 7)"},
    {"scala", "damaged-no-parenthesis-HA.pat",
     "The name line has no \"(\" before its frequency, but holds \"TS-7 panel 451.25 MHz\" (line 2)"},
    {"nsma", "damaged-empty.adf", "the file is empty"},
    {"nsma", "damaged-no-end.adf",
     "Error 62: Input past end of file: the file has no ENDFIL line, or ends within a cut (line 296)"},
    {"nsma", "damaged-no-polarisation.adf", "The keyword POLARI was expected, but \"NUPOIN\" stands there (line 16)"},
    {"nsma", "damaged-one-unit.adf",
     "The GUNITS line holds \"DBI\" where the units of the gain and of the pattern are to stand; write both, such as "
     "DBI/DBR (line 8)"},
    {"nsma", "damaged-other-revision.adf",
     "The revision \"OTHER 804-B\" of the REVNUM line does not name NSMA (line 1)"},
    {"nsma", "damaged-two-frequencies.adf",
     "The NOFREQ line holds \"2\": only a file of one frequency (1 or NA) can be imported; save one frequency in a "
     "file (line 12)"},
    {"ems", "damaged-wordA.TXT", "'EMS' is not a number (line 1)"},
    {"generic", "damaged_gain_word.msi",
     "the GAIN line holds \"15dBd\" where a number is to stand; correct the line (line 7)"},
};

INSTANTIATE_TEST_SUITE_P(Import, Refusals, testing::ValuesIn(kRefused), nameOf);

class Reasons : public FormatImport {
 protected:
  Reasons() : FormatImport("dapa") {}
};

TEST_F(Reasons, AReasonNamesThePartnerThatFails) {
  const std::string first = write("hAB.pat", "\nM:A\nP:H\n\n\n\nG:1 dBd\nF:450\n0 0\n");
  write("eAB.pat", "\nM:A\n");
  EXPECT_THAT(failure(first), ::testing::EndsWith("(line 2 of " + files.machine("eAB.pat") + ")"));
  write("eAB.pat", "");
  EXPECT_THAT(failure(first), ::testing::EndsWith("the file is empty (" + files.machine("eAB.pat") + ")"));
}

TEST_F(Reasons, AReaderThatGivesNoneIsGivenAGeneralOne) {
  ImportFormat format = *findImportFormat("generic");
  format.read = [](ImportSource& source, ImportedAntenna& antenna) {
    source.lines();
    antenna.ErrFlag = 1;
  };
  const ImportResult result = run({files.write("a.msi", "x")}, false, {}, format);
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], ::testing::EndsWith("\r\nThe file does not hold what its format asks for"));
}

TEST_F(Reasons, AWordOfTheFileIsShownInPartAndWithoutControlCharacters) {
  EXPECT_EQ(TextLines::shownText("a\tb\x01"
                                 "c"),
            "a b c");
  EXPECT_EQ(TextLines::shownText(std::string(5000, 'x')), std::string(TextLines::kLongestShown, 'x'));
  EXPECT_EQ(TextLines::shownText(std::string(2, '\0') + "\xE9"), "  \xC3\xA9");
}

// Every damaged sample of every format.
class Damaged : public FormatImport, public testing::WithParamInterface<std::string> {
 protected:
  Damaged() : FormatImport(GetParam()) {}
};

TEST_P(Damaged, SamplesThatAReaderRefusesHaveAReasonAndALine) {
  long refused = 0;
  for (const std::string& name : samplesOf(GetParam(), true)) {
    SCOPED_TRACE(name);
    suite.answers = {MsgAnswer::no};
    const ImportResult result = import({copied(name)});
    if (result.ErrorCount == 0) continue;
    ++refused;
    ASSERT_EQ(result.failed.size(), 1u);
    const std::string reason = result.failed[0].substr(result.failed[0].find('\n') + 1);
    EXPECT_THAT(reason, Not(HasSubstr("does not hold what its format asks for")));
    EXPECT_THAT(reason, ContainsRegex("\\(line [1-9][0-9]*\\)$|: the file is empty$"));
    EXPECT_GT(reason.size(), std::string("Error 13: ").size() + 20);
  }
  EXPECT_GT(refused, 0);
}

INSTANTIATE_TEST_SUITE_P(Import, Damaged, testing::ValuesIn(formatNames()), kFormatTestName);

}  // namespace

}  // namespace vantrelix::test

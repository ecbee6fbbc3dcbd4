// A word of a file may be of any length, but no message, preview or log record is.
#include <sstream>

#include "FormatImport.h"
#include "import/TextLines.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

constexpr std::size_t kLongWord = 1 << 20;
constexpr std::size_t kLongText = 2000;  // with the path, the reason and words of three lines

class LongWords : public FormatImport, public testing::WithParamInterface<std::string> {
 protected:
  LongWords() : FormatImport(GetParam()) { suite.answers.assign(100, MsgAnswer::yes); }

  void expectShortTexts(const ImportResult& result) const {
    EXPECT_LT(suite.log().size(), (result.failed.size() + 1) * kLongText);
    for (const std::string& text : result.failed) EXPECT_LT(text.size(), kLongText);
    for (const Message& box : suite.messages) EXPECT_LT(box.text.size(), kLongText);
    for (const std::string& caption : captions) EXPECT_LT(caption.size(), kLongText);
    for (const ImportedAntenna& antenna : antennas) {
      EXPECT_LE(antenna.AntName.size(), TextLines::kLongestShown);
      EXPECT_LE(antenna.GainUnits.size(), TextLines::kLongestShown);
    }
    for (const ImportResult::Added& added : result.added) EXPECT_LT(added.description.size(), kLongText);
  }
};

// The text with one of its lines lengthened by a word.
std::string lengthened(const std::string& text, int number, const std::string& word) {
  std::istringstream lines(text);
  std::string result;
  int at = 0;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    result += line + (at++ == number ? word : "") + "\r\n";
  }
  return result;
}

TEST_P(LongWords, OfAnyLineAreShownInPart) {
  constexpr int kLines = 20;
  const std::string name = samplesOf(GetParam(), false).front();
  const std::string text = sample(name);
  std::vector<std::string> names;
  for (int number = 0; number < kLines; ++number) {
    names.push_back(write(std::to_string(number) + "_" + name, lengthened(text, number, std::string(kLongWord, 'x'))));
  }
  expectShortTexts(import(names));
}

INSTANTIATE_TEST_SUITE_P(Import, LongWords, testing::ValuesIn(formatNames()), kFormatTestName);

class LongNames : public FormatImport {
 protected:
  LongNames() : FormatImport("generic") {}
};

TEST_F(LongNames, AreShownInPartByTheBoxOfAFailedWriteAndItsLogRecord) {
  suite.answers = {MsgAnswer::ok};
  const std::string shown = std::string(TextLines::kLongestShown, 'x');
  const ImportResult result = import(
      {write("a.msi", "NAME " + std::string(kLongWord, 'x') + "\nGAIN 1E13 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 0\n")});
  ASSERT_THAT(suite.messages, SizeIs(1));
  EXPECT_THAT(suite.messages[0].text, HasSubstr("\r\nAnt " + shown + "\r\n"));
  EXPECT_LT(suite.messages[0].text.size(), 1500U);
  EXPECT_LT(suite.log().size(), 1500U);
  ASSERT_THAT(result.failed, SizeIs(1));
  EXPECT_LT(result.failed[0].size(), 1000U);
  ASSERT_THAT(captions, SizeIs(1));
  EXPECT_THAT(captions[0], ::testing::EndsWith("\r\n" + shown));
  EXPECT_EQ(antennas.at(0).AntName, shown);
}

TEST_F(LongNames, OfUnitsAreShownInPartToo) {
  import({write("a.msi", "NAME A\nGAIN 1 " + std::string(kLongWord, 'x') + "\nHORIZONTAL 1\n0 0\nVERTICAL 0\n")});
  ASSERT_THAT(antennas, SizeIs(1));
  EXPECT_EQ(antennas[0].GainUnits, std::string(TextLines::kLongestShown, 'x'));
}

TEST_F(LongNames, AreKeptAsFarAsTheirFieldGoes) {
  const ImportResult result =
      import({write("a.msi", "NAME " + std::string(kLongWord, 'x') + "\nGAIN 1 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 0\n")});
  ASSERT_THAT(result.added, SizeIs(1));
  EXPECT_EQ(result.added[0].description, std::string(60, 'x'));
}

}  // namespace

}  // namespace vantrelix::test

#include <gtest/gtest.h>

#include "antenna/convertGain.h"
#include "foundation/regional.h"
#include "support/TempSuite.h"

namespace vantrelix {

namespace {

struct Converted {
  std::string text;
  bool err;
};
bool operator==(const Converted& a, const Converted& b) { return a.text == b.text && a.err == b.err; }
std::ostream& operator<<(std::ostream& out, const Converted& c) { return out << '"' << c.text << "\" err " << c.err; }

Converted gain(const std::string& in, const std::string& out, const std::string& value) {
  bool err = true;
  std::string text = ConvertAntGain(in, out, value, err);
  return {text, err};
}

Converted pattern(const std::string& in, const std::string& out, const std::string& value, const std::string& lobe,
                  const std::string& lobeUnits) {
  bool err = true;
  std::string text = ConvertAntPattern(in, out, value, lobe, lobeUnits, err);
  return {text, err};
}

TEST(ConvertAntGain, MovesBetweenDipoleAndIsotropicByOneFixedOffset) {
  EXPECT_EQ(gain("dBd", "dBi", "0"), (Converted{"2.1500", false}));
  EXPECT_EQ(gain("dBi", "dBd", "0"), (Converted{"-2.1500", false}));
  EXPECT_EQ(gain("dBd", "dBd", "3.14159"), (Converted{"3.1416", false}));
}

TEST(ConvertAntGain, TakesRelAsAPowerRatioOverADipole) {
  EXPECT_EQ(gain("dBd", "REL", "3"), (Converted{"1.9953", false}));
  EXPECT_EQ(gain("dBi", "REL", "2.15"), (Converted{"1.0000", false}));
  EXPECT_EQ(gain("REL", "dBd", "1"), (Converted{"0.0000", false}));
  EXPECT_EQ(gain("REL", "dBi", "1"), (Converted{"2.1500", false}));
}

TEST(ConvertAntGain, HasNoResultForARatioThatIsNotAboveZero) {
  EXPECT_EQ(gain("REL", "dBd", "0"), (Converted{"", true}));
  EXPECT_EQ(gain("REL", "dBi", "-1"), (Converted{"", true}));
  EXPECT_EQ(gain("REL", "REL", "0"), (Converted{"", true}));
}

TEST(ConvertAntGain, AnUnknownUnitIsNoError) {
  EXPECT_EQ(gain("xyz", "dBd", "5"), (Converted{"0.0000", false}));
  EXPECT_EQ(gain("dBd", "xyz", "5"), (Converted{"", false}));
}

TEST(ConvertAntGain, ComparesUnitsTrimmedAndWithoutCase) {
  EXPECT_EQ(gain(" DBD ", "dbi", "1"), (Converted{"3.1500", false}));
  EXPECT_EQ(gain("rel", "Dbd", "10"), (Converted{"10.0000", false}));
}

TEST(ConvertAntGain, WritesTheRegionalDecimalCharacterAndReadsItBack) {
  const RegionalCharacters former = regionalCharacters();
  regionalCharacters() = {",", "."};
  const Converted text = gain("dBd", "dBi", "1,5");
  bool err = true;
  const double number = ConvertAntGainDbl("dBd", "dBi", 1.5, err);
  regionalCharacters() = former;
  EXPECT_EQ(text, (Converted{"3,6500", false}));
  EXPECT_DOUBLE_EQ(number, 3.65);
  EXPECT_FALSE(err);
}

TEST(ConvertAntGain, OverflowIsReportedWithWhatWasToBeConverted) {
  test::TempSuite suite;
  EXPECT_EQ(gain("dBd", "REL", "5000"), (Converted{"", true}));
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_NE(suite.messages[0].text.find("Error 6:"), std::string::npos);
  EXPECT_NE(suite.log().find("DETAIL: Convert: 5000.0000 dBd to REL"), std::string::npos);
}

TEST(ConvertAntGainDbl, PassesThroughTextAndSoRoundsToFourDecimals) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertAntGainDbl("dBd", "dBd", 1.23456, err), 1.2346);
  EXPECT_FALSE(err);
  EXPECT_DOUBLE_EQ(ConvertAntGainDbl("REL", "dBd", 0, err), 0);
  EXPECT_TRUE(err);
}

TEST(ConvertAntPattern, TakesRelAsAFieldRatioToTheMajorLobe) {
  EXPECT_EQ(pattern("REL", "dBd", "0.5", "10", "dBd"), (Converted{"3.9794", false}));
  EXPECT_EQ(pattern("REL", "dBi", "0.5", "10", "dBi"), (Converted{"3.9794", false}));
  EXPECT_EQ(pattern("dBd", "REL", "10", "10", "dBd"), (Converted{"1.0000", false}));
  EXPECT_EQ(pattern("dBi", "REL", "12.15", "12.15", "dBi"), (Converted{"1.0000", false}));
}

TEST(ConvertAntPattern, MovesAbsoluteValuesByTheFixedOffset) {
  EXPECT_EQ(pattern("dBd", "dBi", "10", "10", "dBd"), (Converted{"12.1500", false}));
  EXPECT_EQ(pattern("dBi", "dBd", "10", "10", "dBd"), (Converted{"7.8500", false}));
}

TEST(ConvertAntPattern, BringsALobeInTheInputsUnitsIntoTheOutputsScale) {
  // A power ratio of 10 is 10 dBd, 12.15 dBi.
  EXPECT_EQ(pattern("REL", "dBd", "1", "10", "REL"), (Converted{"10.0000", false}));
  EXPECT_EQ(pattern("REL", "dBi", "1", "10", "REL"), (Converted{"12.1500", false}));
  EXPECT_EQ(pattern("dBd", "REL", "10", "10", "REL"), (Converted{"1.0000", false}));
}

TEST(ConvertAntPattern, ALobeInUnitsOfNeitherSideIsAnErrorWithAUsableResult) {
  EXPECT_EQ(pattern("dBd", "REL", "10", "10", "dBi"), (Converted{"1.0", true}));
  EXPECT_EQ(pattern("REL", "dBd", "1", "10", "dBi"), (Converted{"0.0", true}));
}

TEST(ConvertAntPattern, ABlankValueOrLobeIsAnErrorWithoutAResult) {
  EXPECT_EQ(pattern("dBd", "dBi", " ", "10", "dBd"), (Converted{"", true}));
  EXPECT_EQ(pattern("dBd", "dBi", "10", "", "dBd"), (Converted{"", true}));
}

TEST(ConvertAntPattern, AnInputLobeThatCannotBeConvertedEndsIt) {
  EXPECT_EQ(pattern("REL", "dBd", "0.5", "0", "REL"), (Converted{"", true}));
  EXPECT_EQ(pattern("REL", "xyz", "0.5", "0", "REL"), (Converted{"", true}));
}

TEST(ConvertAntPattern, AnOutputLobeThatCannotBeConvertedCountsAsZeroDBd) {
  EXPECT_EQ(pattern("dBd", "REL", "0", "0", "REL"), (Converted{"1.0000", false}));
  EXPECT_EQ(pattern("REL", "REL", "0.5", "0", "REL"), (Converted{"0.5000", false}));
}

TEST(ConvertAntPattern, AFieldThatIsNotAboveZeroHasNoDecibels) {
  EXPECT_EQ(pattern("REL", "dBd", "0", "10", "dBd"), (Converted{"", true}));
  EXPECT_EQ(pattern("REL", "dBi", "-0.1", "10", "REL"), (Converted{"", true}));
}

TEST(ConvertAntPattern, AnUnknownInputUnitGivesZeroAndAnUnknownOutputNothing) {
  EXPECT_EQ(pattern("xyz", "dBd", "5", "10", "dBd"), (Converted{"0.0000", false}));
  EXPECT_EQ(pattern("dBd", "xyz", "5", "10", "dBd"), (Converted{"", false}));
}

TEST(ConvertAntPattern, OverflowIsReportedWithTheLobe) {
  test::TempSuite suite;
  EXPECT_EQ(pattern("dBd", "REL", "9000", "3", "dBd"), (Converted{"", true}));
  EXPECT_NE(suite.log().find("Convert: 9000.0000 dBd to REL\r\nWhere Maj Lobe Gain is 3.0000 dBd"), std::string::npos);
}

TEST(ConvertAntPatternDbl, GivesTheNumberOfTheText) {
  bool err = true;
  EXPECT_DOUBLE_EQ(ConvertAntPatternDbl("REL", "dBd", 0.5, 10, "dBd", err), 3.9794);
  EXPECT_FALSE(err);
  EXPECT_DOUBLE_EQ(ConvertAntPatternDbl("dBd", "REL", 10, 10, "dBi", err), 1);
  EXPECT_TRUE(err);
}

}  // namespace

}  // namespace vantrelix

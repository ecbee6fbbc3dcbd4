#include <charconv>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "foundation/RegionalScope.h"
#include "foundation/errHand.h"
#include "foundation/numbers.h"
#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

using test::RegionalScope;
using test::TempSuite;

TEST(PlainNumber, TakesSignDigitsPointAndExponent) {
  EXPECT_EQ(plainNumber("12.5"), 12.5);
  EXPECT_EQ(plainNumber("-3"), -3);
  EXPECT_EQ(plainNumber("+3"), 3);
  EXPECT_EQ(plainNumber(".5"), 0.5);
  EXPECT_EQ(plainNumber("5."), 5);
  EXPECT_EQ(plainNumber("1e3"), 1000);
  EXPECT_EQ(plainNumber("-1.5E-02"), -0.015);
  EXPECT_EQ(plainNumber("+1.E+2"), 100);
}

TEST(PlainNumber, LosesOuterBlanksAndTabsAlone) {
  EXPECT_EQ(plainNumber(" \t12 \t"), 12);
  EXPECT_EQ(plainNumber("1 2"), std::nullopt);
  EXPECT_EQ(plainNumber("- 1"), std::nullopt);
  EXPECT_EQ(plainNumber("12\r\n"), std::nullopt);
  EXPECT_EQ(plainNumber(std::string_view("12\0", 3)), std::nullopt);
}

TEST(PlainNumber, IgnoresTheDigitSeparatorBehindTheFirstWholeDigit) {
  EXPECT_EQ(plainNumber("1,2,3"), 123);
  EXPECT_EQ(plainNumber("1,234,567.25"), 1234567.25);
  EXPECT_EQ(plainNumber("-1,,2"), -12);
  EXPECT_EQ(plainNumber("1,"), 1);
  EXPECT_EQ(plainNumber("1,.5E1"), 15);
}

TEST(PlainNumber, RefusesTheDigitSeparatorElsewhere) {
  for (const char* text : {",1", "-,1", "1.2,3", "1.,5", "1E1,0", ","}) {
    EXPECT_EQ(plainNumber(text), std::nullopt) << text;
  }
}

TEST(PlainNumber, RefusesWhatIsNoNumber) {
  for (const char* text : {"",    " ",  ".",     "-",    "+-1", "1-", "inf", "nan",   "INFINITY", "0x10", "1e",
                           "1e+", "e5", "1.2.3", "&H10", "1D5", "$1", "(1)", "15dBd", "1f",       "-.",   "1e1.5"}) {
    EXPECT_EQ(plainNumber(text), std::nullopt) << text;
    EXPECT_FALSE(isNumeric(text)) << text;
  }
}

TEST(PlainNumber, OutOfRangeGivesNothing) {
  EXPECT_EQ(plainNumber("1E309"), std::nullopt);
  EXPECT_EQ(plainNumber("-1E309"), std::nullopt);
  EXPECT_EQ(plainNumber("1E99999999999999999999"), std::nullopt);
  EXPECT_EQ(plainNumber(std::string(400, '9')), std::nullopt);
  EXPECT_EQ(plainNumber("1.7976931348623157E308"), std::numeric_limits<double>::max());
}

TEST(PlainNumber, TooSmallForADoubleIsZero) {
  EXPECT_EQ(plainNumber("1E-400"), 0);
  EXPECT_EQ(plainNumber("1E-99999999999999999999"), 0);
  EXPECT_EQ(plainNumber("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(plainNumber("4.9E-324"), 4.9E-324);
  EXPECT_EQ(plainNumber("0E999"), 0);
}

TEST(PlainNumber, FollowsTheRegionalCharacters) {
  const RegionalScope comma(",", ".");
  EXPECT_EQ(plainNumber("12,5"), 12.5);
  EXPECT_EQ(plainNumber("1.234,5"), 1234.5);
  EXPECT_EQ(plainNumber("-,5E-1"), -0.05);
  EXPECT_EQ(plainNumber("12,5,0"), std::nullopt);
}

TEST(PlainNumber, TakesRegionalCharactersOfSeveralBytesOrNone) {
  {
    const RegionalScope narrow("٫", "\u202F");
    EXPECT_EQ(plainNumber("1\u202F234٫5"), 1234.5);
  }
  {
    const RegionalScope none(".", "");
    EXPECT_EQ(plainNumber("1234.5"), 1234.5);
    EXPECT_EQ(plainNumber("1,234"), std::nullopt);
  }
  const RegionalScope same(",", ",");
  EXPECT_EQ(plainNumber("1,5"), 1.5);
}

TEST(CDbl, NamesTheKindOfFailure) {
  EXPECT_EQ(CDbl(" 2.5 "), 2.5);
  try {
    CDbl("15dBd");
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::typeMismatch);
    EXPECT_NE(failure.description().find("15dBd"), std::string::npos);
  }
  try {
    CDbl("1E999");
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), failure::overflow);
  }
}

TEST(CValP, CutsWhatIsNoDigitFromTheRight) {
  EXPECT_EQ(CValP("12.5 dBd"), 12.5);
  EXPECT_EQ(CValP("-3dB"), -3);
  EXPECT_EQ(CValP("7."), 7);
  EXPECT_EQ(CValP("12e"), 12);
  EXPECT_EQ(CValP("8°"), 8);
}

TEST(CValP, GivesZeroForWhatStaysNoNumber) {
  for (const char* text : {"abc", "", "  ", "G 12", "3 dB 5", "1-2", "1E999", "-", "°"})
    EXPECT_EQ(CValP(text), 0) << text;
}

TEST(CValP, FollowsTheRegionalSetting) {
  {
    const RegionalScope comma(",", ".");
    EXPECT_EQ(CValP("12,5"), 12.5);
    EXPECT_EQ(CValP("12,5 dBd"), 12.5);
  }
  const RegionalScope point(".", ",");
  EXPECT_EQ(CValP("12,5"), 125);
}

TEST(CValP, TakesAnyValue) {
  EXPECT_EQ(CValP(Value()), 0);
  EXPECT_EQ(CValP(Value("4 ft")), 4);
  EXPECT_EQ(CValP(Value(2.5)), 2.5);
  EXPECT_EQ(CValP(Value(true)), -1);
  EXPECT_EQ(CValP(Value(DateTime{1900, 1, 1})), 2);
}

TEST(CIntP, RoundsHalvesToEvenAndGivesZeroOutOfRange) {
  EXPECT_EQ(CIntP("2.5"), 2);
  EXPECT_EQ(CIntP("3.5 m"), 4);
  EXPECT_EQ(CIntP("-0.5"), 0);
  EXPECT_EQ(CIntP("32767.4"), 32767);
  EXPECT_EQ(CIntP("32767.5"), 0);
  EXPECT_EQ(CIntP("-32768"), -32768);
  EXPECT_EQ(CIntP("-32769"), 0);
  EXPECT_EQ(CIntP("x"), 0);
}

TEST(CInt, RoundsHalvesToEvenAndFailsOutOfRange) {
  EXPECT_EQ(CInt(0.5), 0);
  EXPECT_EQ(CInt(1.5), 2);
  EXPECT_EQ(CInt(-2.5), -2);
  EXPECT_EQ(CInt(-32768.5), -32768);
  for (const double value : {32767.5, -32769.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    try {
      CInt(value);
      FAIL() << value;
    } catch (const RunTimeFailure& failure) {
      EXPECT_EQ(failure.number(), failure::overflow);
    }
  }
}

TEST(RoundHalfEven, HoldsAtTheEdges) {
  EXPECT_EQ(roundHalfEven(0.49999999999999994), 0);
  EXPECT_EQ(roundHalfEven(-0.5), 0);
  EXPECT_EQ(roundHalfEven(-1.5), -2);
  EXPECT_EQ(roundHalfEven(2.5000000000000004), 3);
  EXPECT_EQ(roundHalfEven(4503599627370497.0), 4503599627370497.0);
}

TEST(GeneralText, HasUpToFifteenSignificantDigits) {
  EXPECT_EQ(generalText(0.5), "0.5");
  EXPECT_EQ(generalText(-3), "-3");
  EXPECT_EQ(generalText(0), "0");
  EXPECT_EQ(generalText(-0.0), "0");
  EXPECT_EQ(generalText(0.1 + 0.2), "0.3");
  EXPECT_EQ(generalText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(generalText(-200.0 / 3), "-66.6666666666667");
  EXPECT_EQ(generalText(1234500), "1234500");
}

TEST(GeneralText, TurnsToExponentFormAtItsTwoEnds) {
  EXPECT_EQ(generalText(0.0001), "0.0001");
  EXPECT_EQ(generalText(0.00001), "1E-05");
  EXPECT_EQ(generalText(-0.000012345), "-1.2345E-05");
  EXPECT_EQ(generalText(999999999999999.0), "999999999999999");
  EXPECT_EQ(generalText(9999999999999999.0), "1E+16");
  EXPECT_EQ(generalText(1e15), "1E+15");
  EXPECT_EQ(generalText(1.5e15), "1.5E+15");
  EXPECT_EQ(generalText(2e-120), "2E-120");
}

TEST(GeneralText, IsRegional) {
  const RegionalScope comma(",", ".");
  EXPECT_EQ(generalText(0.5), "0,5");
  EXPECT_EQ(generalText(1.5e15), "1,5E+15");
  EXPECT_EQ(generalText(1234567), "1234567");
}

TEST(FormatNumber, RoundsHalfAwayFromZeroOnTheDecimalText) {
  EXPECT_EQ(formatNumber(1.005, "0.00"), "1.01");
  EXPECT_EQ(formatNumber(-1.005, "0.00"), "-1.01");
  EXPECT_EQ(formatNumber(2.5, "0"), "3");
  EXPECT_EQ(formatNumber(0.5, "0"), "1");
  EXPECT_EQ(formatNumber(0.49999999999999994, "0"), "1");  // 0.5 in fifteen digits
  EXPECT_EQ(formatNumber(9.9995, "0.000"), "10.000");
  EXPECT_EQ(formatNumber(0.0049, "0.00"), "0.00");
}

TEST(FormatNumber, ANegativeThatRoundsToZeroLosesItsSign) {
  EXPECT_EQ(formatNumber(-0.001, "0.00"), "0.00");
  EXPECT_EQ(formatNumber(-0.0, "0.00"), "0.00");
  EXPECT_EQ(formatNumber(-0.005, "0.00"), "-0.01");
}

TEST(FormatNumber, KnowsTheFormatsOfTheSystem) {
  EXPECT_EQ(formatNumber(0.5, "#0.00"), "0.50");
  EXPECT_EQ(formatNumber(12.34567, "0.0000"), "12.3457");
  EXPECT_EQ(formatNumber(12.3, "###0.0000"), "12.3000");
  EXPECT_EQ(formatNumber(1234567, "###,###,##0"), "1,234,567");
  EXPECT_EQ(formatNumber(-123, "###,###,##0"), "-123");
  EXPECT_EQ(formatNumber(7, "000"), "007");
  EXPECT_EQ(formatNumber(1.5e16, "#,##0.0"), "15,000,000,000,000,000.0");
}

TEST(NumberText, OfWhatIsNoFiniteNumberSaysSo) {
  const double infinite = std::numeric_limits<double>::infinity();
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(generalText(infinite), "inf");
  EXPECT_EQ(generalText(-infinite), "-inf");
  EXPECT_EQ(generalText(none), "nan");
  EXPECT_EQ(formatNumber(infinite, "0.00"), "inf");
  EXPECT_EQ(fixedDecimals(-infinite, 2), "-inf");
  EXPECT_EQ(fixedDecimals(none, 2), "nan");
}

TEST(FormatNumber, OptionalDigitsAndLiteralText) {
  EXPECT_EQ(formatNumber(0.5, "#.##"), ".5");
  EXPECT_EQ(formatNumber(12.5, "0.0#"), "12.5");
  EXPECT_EQ(formatNumber(12, "0.0#"), "12.0");
  EXPECT_EQ(formatNumber(-12.25, "~0.0 dBd."), "-~12.3 dBd.");
  EXPECT_EQ(formatNumber(0.25, ".00"), ".25");
  EXPECT_EQ(formatNumber(12.25, "0.0.0"), "12.3.0");
  EXPECT_EQ(formatNumber(1234.5, "0.0,"), "1234.5");
  EXPECT_EQ(formatNumber(0.25, ""), "0.25");
}

TEST(FormatNumber, IsRegional) {
  const RegionalScope comma(",", ".");
  EXPECT_EQ(formatNumber(1234.5, "#,##0.00"), "1.234,50");
  EXPECT_EQ(formatNumber(0.5, "0.00"), "0,50");
}

TEST(FixedDecimals, HasAPointAndNoSeparatorWhateverTheSetting) {
  const RegionalScope comma(",", ".");
  EXPECT_EQ(fixedDecimals(1234567.891, 2), "1234567.89");
  EXPECT_EQ(fixedDecimals(1.005, 2), "1.01");
  EXPECT_EQ(fixedDecimals(-0.00001, 4), "0.0000");
  EXPECT_EQ(fixedDecimals(2.5, 0), "3");
  EXPECT_EQ(fixedDecimals(1e22, 1), "10000000000000000000000.0");
  EXPECT_EQ(fixedDecimals(0.25, 20), "0.25000000000000000000");
}

TEST(NumberText, FixedDecimalsReadBackToTheRoundedValue) {
  std::mt19937 random(20261121);
  std::uniform_int_distribution<long> units(-999999999L, 999999999L);
  for (int i = 0; i < 20000; ++i) {
    const long unit = units(random);
    const double value = static_cast<double>(unit) / 10000;
    const std::string text = fixedDecimals(value, 4);
    ASSERT_EQ(plainNumber(text), value) << text;
    std::string digits = text;
    digits.erase(digits.find('.'), 1);
    ASSERT_EQ(std::stol(digits), unit) << text;
  }
}

TEST(NumberText, GeneralTextReadsBackWithinFifteenDigits) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> mantissa(-10, 10);
  std::uniform_int_distribution<int> exponent(-300, 300);
  for (int i = 0; i < 20000; ++i) {
    const double value = mantissa(random) * std::pow(10.0, exponent(random));
    const std::string text = generalText(value);
    const auto back = plainNumber(text);
    ASSERT_TRUE(back) << text;
    ASSERT_NEAR(*back, value, std::abs(value) * 1e-14) << text;
    ASSERT_EQ(generalText(*back), text);
  }
}

TEST(NumberText, ACleanTextReadsAsTheStandardLibraryReadsIt) {
  std::mt19937_64 random(99);
  std::uniform_real_distribution<double> values(-1e6, 1e6);
  for (int i = 0; i < 20000; ++i) {
    char buffer[64];
    const double value = values(random);
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    ASSERT_EQ(plainNumber(std::string_view(buffer, end)), value);
  }
}

TEST(Log10, IsTheCommonLogarithm) {
  EXPECT_DOUBLE_EQ(vantrelix::log10(100), 2);
  EXPECT_NEAR(vantrelix::log10(0.001), -3, 1e-14);
  EXPECT_EQ(vantrelix::log10(1), 0);
}

TEST(Log10, OfZeroOrLessShowsTheProcedureAndGivesZero) {
  TempSuite suite;
  suite.folder().write("SYSTEM/QVEHPR00.INI", "[PROC]\r\n77=modLoss.GetLoss\r\n");
  const Procedure guard(77);
  SetFlag(300);
  EXPECT_EQ(vantrelix::log10(0), 0);
  EXPECT_EQ(vantrelix::log10(-5), 0);
  ASSERT_EQ(suite.messages.size(), 2U);
  EXPECT_EQ(suite.messages[0].title, "Math Error");
  EXPECT_EQ(suite.messages[0].text,
            "Log 0 error in testhost Procedure modLoss.GetLoss Flag 300\r\nResults may be incorrect.");
}

TEST(Log10, NamesAProcedureWithoutANameByItsNumber) {
  TempSuite suite;
  const Procedure guard(78);
  EXPECT_EQ(vantrelix::log10(0), 0);
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].text, "Log 0 error in testhost Procedure 78 Flag 0\r\nResults may be incorrect.");
}

TEST(Log10, NamesNoProcedureWhereNoneIsActive) {
  TempSuite suite;
  EXPECT_EQ(vantrelix::log10(0), 0);
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].text, "Log 0 error in testhost Procedure  Flag 0\r\nResults may be incorrect.");
}

TEST(MinMax, TakeAnyNumberOfValues) {
  EXPECT_EQ(MinOf({3, -1, 2}), -1);
  EXPECT_EQ(MaxOf({3, -1, 2}), 3);
  EXPECT_EQ(MinOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 0}), 0);
  EXPECT_EQ(MaxOf({2, 2}), 2);
}

TEST(ArrayTest, GivesTheUpperBoundOrTheDefault) {
  EXPECT_EQ(ArrayTest(std::vector<double>{}), -88);
  EXPECT_EQ(ArrayTest(std::vector<double>{}, 5), 5);
  EXPECT_EQ(ArrayTest(std::vector<double>{1, 2, 3}), 2);
  EXPECT_EQ(ArrayTest(std::vector<double>{1, 2, 3}, kNoValue, 1), 2);
  EXPECT_EQ(ArrayTest(std::vector<double>{1, 2, 3}, kNoValue, 2), kNoValue);
  const std::vector<std::vector<double>> table{{1, 2, 3}, {4, 5, 6}};
  EXPECT_EQ(ArrayTest(table, kNoValue, 1), 1);
  EXPECT_EQ(ArrayTest(table, kNoValue, 2), 2);
  EXPECT_EQ(ArrayTest(table, kNoValue, 3), kNoValue);
}

// One key through the filter with the flags that the letters name: d.ecimal, m.inus, p.lus, s.eparator, n.sew, /,
// blank.
int key(int code, std::string_view flags) {
  const auto has = [&](char flag) { return flags.find(flag) != std::string_view::npos; };
  chkNumeric(code, has('d'), has('m'), has('p'), has('s'), has('n'), has('/'), has(' '));
  return code;
}

TEST(ChkNumeric, DigitsAndBackspaceAlwaysPass) {
  for (int code = '0'; code <= '9'; ++code) EXPECT_EQ(key(code, ""), code);
  EXPECT_EQ(key(8, ""), 8);
  for (const int code : {int{'a'}, int{'.'}, int{'-'}, int{'+'}, int{'/'}, 9, 13, 127, 0x2019, 0x0130}) {
    EXPECT_EQ(key(code, ""), 0) << code;
  }
}

TEST(ChkNumeric, ABlankPassesForDirectionsOrBlanks) {
  EXPECT_EQ(key(' ', ""), 0);
  EXPECT_EQ(key(' ', "dmps/"), 0);
  EXPECT_EQ(key(' ', " "), ' ');
  EXPECT_EQ(key(' ', "n"), ' ');
}

TEST(ChkNumeric, EachFlagLetsItsOwnKeysPass) {
  EXPECT_EQ(key('/', "/"), '/');
  EXPECT_EQ(key('\\', "/"), '\\');
  for (const char c : std::string("NSEWnsew")) EXPECT_EQ(key(c, "n"), c);
  EXPECT_EQ(key('x', "n"), 0);
  EXPECT_EQ(key('.', "d"), '.');
  EXPECT_EQ(key('-', "m"), '-');
  EXPECT_EQ(key('+', "p"), '+');
  EXPECT_EQ(key('-', "p"), 0);
  EXPECT_EQ(key('+', "m"), 0);
}

TEST(ChkNumeric, TheDigitSeparatorNeedsItsFlag) {
  EXPECT_EQ(key(',', "dmpn/ "), 0);
  EXPECT_EQ(key(',', "s"), ',');
}

TEST(ChkNumeric, ABlankThatSeparatesDigitsIsABlankFirst) {
  const RegionalScope blank(",", " ");
  EXPECT_EQ(key(' ', "dmps/"), 0);
  EXPECT_EQ(key(' ', "s "), ' ');
}

TEST(ChkNumeric, FollowsTheRegionalSetting) {
  const RegionalScope comma(",", "\u00A0");
  EXPECT_EQ(key(',', "d"), ',');
  EXPECT_EQ(key('.', "ds"), 0);
  EXPECT_EQ(key(0xA0, "s"), 0xA0);
  EXPECT_EQ(key(0xA0, "d"), 0);
}

}  // namespace
}  // namespace vantrelix

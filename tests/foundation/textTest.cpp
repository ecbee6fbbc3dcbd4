#include <gtest/gtest.h>

#include "foundation/RegionalScope.h"
#include "foundation/modIncRedim.h"
#include "foundation/text.h"
#include "support/TempSuite.h"

namespace vantrelix {
namespace {

using test::TempSuite;

TEST(Trim, TakesBlanksOnly) {
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(trim(" \ta\t "), "\ta\t");
  EXPECT_EQ(trim("\r\n"), "\r\n");
  EXPECT_EQ(trim(std::string_view(" \0 ", 3)), std::string_view("\0", 1));
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(trim(""), "");
}

TEST(Trim, OfOneSideLeavesTheOther) {
  EXPECT_EQ(trimLeft("  a  "), "a  ");
  EXPECT_EQ(trimRight("  a  "), "  a");
  EXPECT_EQ(trimLeft("   "), "");
  EXPECT_EQ(trimRight("   "), "");
}

TEST(GetLenTrim, CountsCharactersOfTheTrimmedText) {
  EXPECT_EQ(getLenTrim("  abc "), 3U);
  EXPECT_EQ(getLenTrim("   "), 0U);
  EXPECT_EQ(getLenTrim("\t"), 1U);
  EXPECT_EQ(getLenTrim(" é "), 1U);
}

TEST(Case, FoldsTheLettersOfWindows1252) {
  EXPECT_EQ(upperCase("abc xyz 1[{"), "ABC XYZ 1[{");
  EXPECT_EQ(upperCase("äöüéçñø šœžÿ"), "ÄÖÜÉÇÑØ ŠŒŽŸ");
  EXPECT_EQ(lowerCase("ÄÖÜÉÇÑØ ŠŒŽŸ ABC"), "äöüéçñø šœžÿ abc");
}

TEST(Case, LeavesWhatHasNoOtherCaseThere) {
  EXPECT_EQ(upperCase("ß÷µ"), "ß÷µ");
  EXPECT_EQ(lowerCase("×ß"), "×ß");
  EXPECT_EQ(upperCase("λж"), "λж");
  EXPECT_EQ(upperCase("a\xFF z"), "A\xFF Z");
}

TEST(EqualIgnoringCase, ComparesFoldedText) {
  EXPECT_TRUE(equalIgnoringCase("Antenne", "aNTENNE"));
  EXPECT_TRUE(equalIgnoringCase("MÜLLER Ÿ", "müller ÿ"));
  EXPECT_FALSE(equalIgnoringCase("abc", "abd"));
  EXPECT_FALSE(equalIgnoringCase("abc", "abc "));
  EXPECT_FALSE(equalIgnoringCase("[", "{"));
}

TEST(CharacterCount, CountsAnInvalidByteAsOne) {
  EXPECT_EQ(characterCount("abc"), 3U);
  EXPECT_EQ(characterCount("é€😀"), 3U);
  EXPECT_EQ(characterCount("a\x80\xFF"), 3U);
  EXPECT_EQ(characterCount("\xE2\x82"), 2U);
}

TEST(LeftAndMid, CountCharacters) {
  EXPECT_EQ(leftCharacters("aé€x", 3), "aé€");
  EXPECT_EQ(leftCharacters("ab", 9), "ab");
  EXPECT_EQ(midCharacters("aé€x", 2), "é€x");
  EXPECT_EQ(midCharacters("aé€x", 2, 1), "é");
  EXPECT_EQ(midCharacters("ab", 5), "");
}

TEST(ReplaceAll, DoesNotReplaceInWhatItPutIn) {
  EXPECT_EQ(replaceAll("a.b.c", ".", ".."), "a..b..c");
  EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(replaceAll("abc", "c", ""), "ab");
}

TEST(AddALine, JoinsWhatIsNotBlank) {
  EXPECT_EQ(AddALine("", "b"), "b");
  EXPECT_EQ(AddALine("  ", "b"), "b");
  EXPECT_EQ(AddALine("a", " "), "a");
  EXPECT_EQ(AddALine("a", "", "\r\n", true), "a\r\n");
  EXPECT_EQ(AddALine("a", "b"), "a\r\nb");
  EXPECT_EQ(AddALine("a", "b", "; "), "a; b");
}

TEST(SAwk6, EmptyFieldsCount) {
  EXPECT_EQ(sAWK6("a,,c", ",", 1), "a");
  EXPECT_EQ(sAWK6("a,,c", ",", 2, "d"), "");
  EXPECT_EQ(sAWK6("a,,c", ",", 3), "c");
  EXPECT_EQ(sAWK6("a,", ",", 2, "d"), "");
}

TEST(SAwk6, OutsideTheFieldsTheDefaultComes) {
  EXPECT_EQ(sAWK6("a,b", ",", 3, "d"), "d");
  EXPECT_EQ(sAWK6("a,b", ",", 0, "d"), "d");
  EXPECT_EQ(sAWK6("a,b", ",", -1, "d"), "d");
  EXPECT_EQ(sAWK6("", ",", 1, "d"), "d");
}

TEST(SAwk6, TheWholeDelimiterSplits) {
  EXPECT_EQ(sAWK6("a, b,c", ", ", 2), "b,c");
  EXPECT_EQ(sAWK6("0|0.|MHz", "|", 3), "MHz");
  EXPECT_EQ(sAWK6(std::string_view("x\0y", 3), std::string_view("\0", 1), 2), "y");
}

TEST(NAwk6, CountsFieldsAndAnEmptyTextHasNone) {
  EXPECT_EQ(nAWK6("a,,c", ","), 3);
  EXPECT_EQ(nAWK6("a", ","), 1);
  EXPECT_EQ(nAWK6(",", ","), 2);
  EXPECT_EQ(nAWK6("", ","), 0);
  EXPECT_EQ(nAWK6("a--b-c", "--"), 2);
  EXPECT_EQ(nAWK6("ab", ""), 1);
  EXPECT_EQ(sAWK6("ab", "", 1, "d"), "ab");
  EXPECT_EQ(sAWK6("ab", "", 2, "d"), "d");
}

TEST(PadLeft, PadsOnTheLeftAndDoesNotCut) {
  EXPECT_EQ(PadLeft("ab", "", 5, false), "   ab");
  EXPECT_EQ(PadLeft("abcdef", "", 5, false), "abcdef");
  EXPECT_EQ(PadLeft("é", "", 3, false), "  é");
  EXPECT_EQ(PadLeft(Value(), "0.00", 3, false), "   ");
}

TEST(PadLeft, FormatsNumbersAndNumericTexts) {
  EXPECT_EQ(PadLeft(1.005, "0.00", 6, false), "  1.01");
  EXPECT_EQ(PadLeft("12.5", "0.00", 6, false), " 12.50");
  EXPECT_EQ(PadLeft("n/a", "0.00", 6, false), "   n/a");
  EXPECT_EQ(PadLeft(12.5, "", 6, false), "  12.5");
  EXPECT_EQ(PadLeft(true, "  ", 6, false), "  True");
  EXPECT_EQ(PadLeft(DateTime{2026, 11, 21}, "MM/DD", 6, false), " 11/21");
}

TEST(PadLeft, WithTrimTheTrimmedLengthDecides) {
  EXPECT_EQ(PadLeft(" ab ", "", 4, false), " ab ");
  EXPECT_EQ(PadLeft(" ab ", "", 4, true), "  ab");
  EXPECT_EQ(PadLeft("    ", "", 2, true), "  ");
}

TEST(CleanChars, BlanksWhatIsNoPlainAscii) {
  EXPECT_EQ(CleanChars("a\tb\r\nc"), "a b  c");
  EXPECT_EQ(CleanChars("8°é€"), "8   ");
  EXPECT_EQ(CleanChars("\x80x\xFF"), " x ");
  EXPECT_EQ(CleanChars(" ~\x7F"), " ~\x7F");
  EXPECT_EQ(CleanChars("a\x1F!"), "a !");
}

TEST(SmallTexts, TabOrBlankAndStripBlanks) {
  EXPECT_EQ(TabOrBlank(true), "\t");
  EXPECT_EQ(TabOrBlank(false), " ");
  EXPECT_EQ(StripBlanks(" a b\tc "), "ab\tc");
  EXPECT_EQ(GetIllegalChars(), "$?\"/\\<>*|:.'");
  EXPECT_EQ(GetIllegalChars("#!"), "#!$?\"/\\<>*|:.'");
}

TEST(ModIncRedim, AddsOneElementAtTheNewUpperBound) {
  std::vector<std::string> texts{"a"};
  EXPECT_EQ(modIncRedim(texts, std::string("b")), 1U);
  EXPECT_EQ(texts, (std::vector<std::string>{"a", "b"}));
  std::vector<long> numbers;
  EXPECT_EQ(modIncRedim(numbers, 7L), 0U);
  EXPECT_EQ(numbers, std::vector<long>{7});
  std::vector<Value> values(1, 1.5);
  const Value date(DateTime{2026, 11, 21});
  EXPECT_EQ(modIncRedim(values, date), 1U);
  EXPECT_EQ(values[0].number(), 1.5);
  EXPECT_EQ(values[1].date(), date.date());
}

TEST(StrInArray, ComparesExactly) {
  EXPECT_TRUE(StrInArray("b", {"a", "b"}));
  EXPECT_FALSE(StrInArray("B", {"a", "b"}));
  EXPECT_FALSE(StrInArray("b ", {"a", "b"}));
  EXPECT_FALSE(StrInArray("", {}));
}

TEST(CleanFileName, ADollarCountsOnlyAsTheFirstCharacter) {
  bool warn = false;
  bool cancelled = false;
  EXPECT_EQ(CleanFileName("A$B", "_", warn, cancelled), "A$B");
  EXPECT_EQ(CleanFileName("$AB", "_", warn, cancelled), "_AB");
  EXPECT_EQ(CleanFileName("$A$", "_", warn, cancelled), "_A$");
  EXPECT_FALSE(cancelled);
}

TEST(CleanFileName, ReplacesEveryIllegalCharacterWhereverItStands) {
  bool warn = false;
  bool cancelled = false;
  EXPECT_EQ(CleanFileName("a?b\"c/d\\e<f>g*h|i:j.k'l", "_", warn, cancelled), "a_b_c_d_e_f_g_h_i_j_k_l");
  EXPECT_EQ(CleanFileName("a..b", "", warn, cancelled), "ab");
  EXPECT_EQ(CleanFileName("fine name", "_", warn, cancelled), "fine name");
  EXPECT_EQ(CleanFileName("", "_", warn, cancelled), "");
}

TEST(CleanFileName, TellsTheUserOnceWhatTheNameWillBe) {
  TempSuite suite;
  bool warn = true;
  bool cancelled = false;
  EXPECT_EQ(CleanFileName("a?b.c", "_", warn, cancelled), "a_b_c");
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].title, "Invalid File Name");
  EXPECT_EQ(suite.messages[0].text,
            "The file name contains one or more illegal characters:\r\na?b.c\r\n'?' is not allowed.\r\n\r\n"
            "The name will be changed to \r\na_b.c");
  EXPECT_EQ(suite.messages[0].buttons, MsgButtons::okCancel);
  EXPECT_FALSE(warn);
  EXPECT_FALSE(cancelled);
}

TEST(CleanFileName, CancelGivesTheEmptyTextAndAsksAgainNextTime) {
  TempSuite suite;
  suite.answers = {MsgAnswer::cancel};
  bool warn = true;
  bool cancelled = false;
  EXPECT_EQ(CleanFileName("a?b", "_", warn, cancelled), "");
  EXPECT_TRUE(cancelled);
  EXPECT_TRUE(warn);
}

TEST(CleanFileName, AGoodNameAsksNothing) {
  TempSuite suite;
  bool warn = true;
  bool cancelled = false;
  EXPECT_EQ(CleanFileName("A$B", "_", warn, cancelled), "A$B");
  EXPECT_TRUE(suite.messages.empty());
  EXPECT_TRUE(warn);
}

}  // namespace
}  // namespace vantrelix

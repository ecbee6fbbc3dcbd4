#include <gtest/gtest.h>

#include "foundation/IniFile.h"

using namespace vantrelix;

namespace {

std::string utf16(std::u16string_view text, bool big) {
  std::string bytes = big ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const char high = static_cast<char>(unit / 256);
    const char low = static_cast<char>(unit % 256);
    bytes += big ? high : low;
    bytes += big ? low : high;
  }
  return bytes;
}

std::string afterSet(const std::string& before, std::string_view section, std::string_view key,
                     std::string_view value) {
  IniFile ini(before);
  ini.set(section, key, value);
  return ini.bytes();
}

}  // namespace

TEST(IniFile, GivesBackTheBytesWhereNothingWasSet) {
  for (const std::string& bytes : {std::string("; c\n\n[s]\r\nk\r\xE9 = \x00 1", 20), std::string("\xEF\xBB\xBF[s"),
                                   utf16(u"[s]\nk=\xD800x\xDC00", false) + "z", std::string("\xFE\xFF")}) {
    IniFile ini(bytes);
    EXPECT_EQ(ini.bytes(), bytes);
    ini.removeKey("none", "none");
    EXPECT_EQ(ini.bytes(), bytes);
  }
}

TEST(IniFile, SettingTheValueThatIsThereChangesNothing) {
  const std::string bytes = "[s]\nk=1\n";
  EXPECT_EQ(afterSet(bytes, "S", "K", "1"), bytes);
}

TEST(IniFile, KeepsCommentsUnknownLinesAndEachLinesOwnEnd) {
  const std::string before = "; head\n\n[s]\r\n ;note\rjunk line\nk=1\n\n\n[t\r\n";
  EXPECT_EQ(afterSet(before, "s", "k", "22"), "; head\n\n[s]\r\n ;note\rjunk line\nk=22\n\n\n[t\r\n");
}

TEST(IniFile, ANewKeyComesBehindTheLastFilledLineWithThatLinesEnd) {
  EXPECT_EQ(afterSet("[s]\na=1\n\n\n[t]\r\nb=2\r\n", "s", "n", "v"), "[s]\na=1\nn=v\n\n\n[t]\r\nb=2\r\n");
  EXPECT_EQ(afterSet("[s]\r\n[t]\n", "t", "n", "v"), "[s]\r\n[t]\nn=v\n");
  EXPECT_EQ(afterSet("[s]\ra=1\r", "s", "n", "v"), "[s]\ra=1\rn=v\r");
  EXPECT_EQ(afterSet("[s]\na=1", "t", "n", "v"), "[s]\na=1\n[t]\nn=v\n");
  EXPECT_EQ(afterSet("[s]", "s", "n", "v"), "[s]\r\nn=v\r\n");
  EXPECT_EQ(afterSet("[s]\na=1\r\n\r\n", "t", "n", "v"), "[s]\na=1\r\n\r\n[t]\r\nn=v\r\n");
}

TEST(IniFile, LinesBeforeTheFirstHeaderAreASectionWithoutAName) {
  IniFile ini("a=1\r\n[s]\r\na=2\r\n");
  EXPECT_EQ(ini.get("", "a"), "1");
  ini.set("", "b", "3");
  EXPECT_EQ(ini.bytes(), "a=1\r\nb=3\r\n[s]\r\na=2\r\n");
  ini.removeSection("");
  EXPECT_EQ(ini.get("", "a"), "1");
  EXPECT_EQ(afterSet("[s]\r\n", "", "b", "3"), "b=3\r\n[s]\r\n");
}

TEST(IniFile, ALineBreakInATextBecomesABlank) {
  IniFile ini;
  ini.set("a\r\nb", "c\nd", "e\r\nf\rg");
  EXPECT_EQ(ini.bytes(), "[a b]\r\nc d=e f g\r\n");
  EXPECT_EQ(ini.get("a\nb", "c d"), "e f g");
}

TEST(IniFile, NamesThatWouldNotBeFoundAgainAreNotSet) {
  const std::string before = "[s]\r\nk=1\r\n";
  for (const char* key : {"", "  ", "a=b", ";k", " [k", "[x]"}) {
    EXPECT_FALSE(IniFile::canHold("s", key)) << key;
    EXPECT_EQ(afterSet(before, "s", key, "v"), before) << key;
  }
  EXPECT_FALSE(IniFile::canHold("a]b", "k"));
  EXPECT_TRUE(IniFile::canHold("a[b", "k;[]"));
  EXPECT_EQ(IniFile(afterSet(before, "a[b", "k;[]", "v")).get("a[b", "k;[]"), "v");
}

TEST(IniFile, AWindows1252FileStaysOne) {
  IniFile ini("[s]\r\nk=caf\xE9\r\nCl\xE9=1\r\n");
  EXPECT_EQ(ini.get("S", "CL\xC3\x89"), "1");
  ini.set("s", "n", "\xE2\x82\xAC \xE6\x97\xA5 \xC3\xBC");  // a Euro sign, a character the page lacks, u umlaut
  EXPECT_EQ(ini.bytes(), "[s]\r\nk=caf\xE9\r\nCl\xE9=1\r\nn=\x80 ? \xFC\r\n");
  EXPECT_EQ(ini.keys("s"), (std::vector<std::string>{"k", "Cl\xC3\xA9", "n"}));
}

TEST(IniFile, BytesOfTheCodePageThatWouldReadAsUtf8BecomeUtf8) {
  IniFile ini("[s]\r\nk=\xE9\r\n");
  ini.set("s", "k", "\xC3\x83\xC2\xA9");  // two characters, whose bytes in the page are one in UTF-8
  EXPECT_EQ(IniFile(ini.bytes()).get("s", "k"), "\xC3\x83\xC2\xA9");
}

TEST(IniFile, AFileThatHasBecomeAsciiTakesAnyCharacter) {
  IniFile ini("[s]\nk=\xE9\n");
  ini.set("s", "k", "e");
  ini.set("s", "j", "\xE6\x97\xA5");
  EXPECT_EQ(ini.bytes(), "[s]\nk=e\nj=\xE6\x97\xA5\n");
}

TEST(IniFile, AUtf8FileAndItsMarkStay) {
  EXPECT_EQ(afterSet("\xEF\xBB\xBF[s]\nk=\xE9\n", "s", "j", "\xE6\x97\xA5"),
            "\xEF\xBB\xBF[s]\nk=\xE9\nj=\xE6\x97\xA5\n");
  EXPECT_EQ(afterSet("\xEF\xBB\xBF[s]\nk=1\n", "s", "k", "\xC3\xA9"), "\xEF\xBB\xBF[s]\nk=\xC3\xA9\n");
  EXPECT_EQ(afterSet("[s]\nk=\xC3\xA9\n", "s", "j", "\xE6\x97\xA5"), "[s]\nk=\xC3\xA9\nj=\xE6\x97\xA5\n");
  EXPECT_EQ(afterSet("", "s", "k", "\xC3\xA9"), "[s]\r\nk=\xC3\xA9\r\n");
  EXPECT_EQ(afterSet("", "s", "k", "\xE9"), "[s]\r\nk=\xC3\xA9\r\n");  // text that is not UTF-8 does not spoil the file
}

TEST(IniFile, AUtf16FileIsReadAndStaysOne) {
  for (const bool big : {false, true}) {
    IniFile ini(utf16(u"[s]\r\nk=caf\u00E9 \U0001F600\r\n", big));
    EXPECT_EQ(ini.get("s", "k"), "caf\xC3\xA9 \xF0\x9F\x98\x80");
    ini.set("s", "n", "\xE6\x97\xA5\xF0\x9F\x98\x80");
    EXPECT_EQ(ini.bytes(), utf16(u"[s]\r\nk=caf\u00E9 \U0001F600\r\nn=\u65E5\U0001F600\r\n", big));
    // Half a character at the end of the file stays too.
    EXPECT_EQ(afterSet(utf16(u"[s]\nk=1\n", big) + "z", "s", "k", "2"), utf16(u"[s]\nk=2\n", big) + "z");
  }
}

TEST(IniFile, NamesAreListedOnceWithoutRegardToCase) {
  const IniFile ini("[s]\nk=1\nK=2\nj=3\n[T]\n[S]\nx=1\n[ u ]\n");
  EXPECT_EQ(ini.keys("s"), (std::vector<std::string>{"k", "j"}));
  EXPECT_EQ(ini.sections(), (std::vector<std::string>{"s", "T", "u"}));
  EXPECT_TRUE(ini.keys("none").empty());
}

TEST(IniFile, ALineOfAHundredThousandCharactersIsKeptWhole) {
  const std::string longValue(100000, 'x');
  const std::string before = "[s]\r\nlong=" + longValue + "\r\n";
  EXPECT_EQ(IniFile(before).get("s", "long"), longValue);
  EXPECT_EQ(afterSet(before, "s", "k", "1"), before + "k=1\r\n");
}

TEST(IniFile, AQuoteByItselfStays) {
  EXPECT_EQ(IniFile("[s]\nk=\"\n").get("s", "k"), "\"");
  EXPECT_EQ(IniFile("[s]\nk=\"\"\n").get("s", "k"), "");
  EXPECT_EQ(IniFile("[s]\nk=\"\"a\"\"\n").get("s", "k"), "\"a\"");
  EXPECT_EQ(IniFile("[s]\nk=\"a'\n").get("s", "k"), "\"a'");
}

namespace {

std::string inTurn(const std::string& before, std::string_view section, const std::vector<IniEntry>& entries) {
  IniFile ini(before);
  for (const IniEntry& entry : entries) ini.set(section, entry.key, entry.value);
  return ini.bytes();
}

std::string atOnce(const std::string& before, std::string_view section, const std::vector<IniEntry>& entries) {
  IniFile ini(before);
  ini.set(section, entries);
  return ini.bytes();
}

}  // namespace

TEST(IniFile, ManyKeysSetAtOnceStandAsIfSetInTurn) {
  const std::vector<IniEntry> entries = {{"a", "1"},    {" N ", "\t2"},         {"K", "new\r\nline"},
                                         {"", "blank"}, {"a=b", "x"},           {"n", "last"},
                                         {"o", ""},     {"dup", "first alone"}, {"\xC3\xA9", "\xC3\xA9"}};
  const std::string kFiles[] = {
      "",
      "[s]",
      "[s]\r\n",
      "; head\nx=1\n\n[s]\r\n;k=comment\rk = \"old\"\njunk\nDup=1\nB=2\r\ndup=3\n\n\n[t]\nk=other\n[S]\nk=second\n",
      "[s]\nn=1\n\xE9=\xE9\nZ=\xE9",
      "\xEF\xBB\xBF[t]\n[s]\nk=\xE9\n",
      utf16(u"[s]\r\nk=\u65E5\r\n[t]\r\n", false) + "z",
      std::string("\x00\x01[s\n\x00=\xFF\n", 10),
  };
  for (const std::string& before : kFiles) {
    EXPECT_EQ(atOnce(before, "s", entries), inTurn(before, "s", entries)) << before;
    EXPECT_EQ(atOnce(before, "", entries), inTurn(before, "", entries)) << before;
  }
  EXPECT_EQ(atOnce("[s]\n;c\nK = 1\n\n", "s", entries),
            "[s]\n;c\nK=new line\na=1\nN=last\no=\ndup=first alone\n\xC3\xA9=\xC3\xA9\n\n");
}

TEST(IniFile, SettingNothingOrTheSameAtOnceKeepsTheBytes) {
  const std::string before = "[s]\nk=1\n\xE9 = 2";
  EXPECT_EQ(atOnce(before, "s", {}), before);
  EXPECT_EQ(atOnce(before, "none", {}), before);
  EXPECT_EQ(atOnce(before, "none", {{"a=b", "1"}, {" ", "1"}}), before);
  EXPECT_EQ(atOnce(before, "s", {{"K", "1"}}), before);
}

TEST(IniFile, NamesThatTheCodePageOfTheFileLacksAreNotSet) {
  const std::string before = "[s]\nk=\xE9\n";
  EXPECT_EQ(atOnce(before, "s", {{"\xE6\x97\xA5", "1"}, {"j", "2"}}), before + "j=2\n");
  EXPECT_EQ(atOnce(before, "\xE6\x97\xA5", {{"j", "2"}}), before);
}

TEST(IniFile, EntriesAreTheKeysWithTheValuesThatAreFound) {
  const IniFile ini("[s]\nk = 'a' \nK=2\n;c=1\nj\n[t]\nx=1\n");
  const std::vector<IniEntry> entries = ini.entries(" S ");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].key, "k");
  EXPECT_EQ(entries[0].value, "a");
  EXPECT_TRUE(ini.entries("none").empty());
  EXPECT_EQ(IniFile::folded(" \xC3\x89 a\nB "), IniFile::folded("\xC3\xA9 A b"));
}

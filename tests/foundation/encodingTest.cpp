#include <gtest/gtest.h>

#include "foundation/SettingsPlatform.h"
#include "foundation/encoding.h"

namespace vantrelix {
namespace {

constexpr int kSingleBytePages[] = {437, 737,  850,  852,  857,  860,  861,  863,  865, 866,
                                    874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257};

CodePage page(int number) {
  const auto found = CodePage::find(number);
  EXPECT_TRUE(found) << number;
  return found.value_or(CodePage::windows1252());
}

TEST(IsValidUtf8, RefusesOverlongFormsSurrogatesAndCutCharacters) {
  EXPECT_TRUE(isValidUtf8("plain, é, €, 😀"));
  EXPECT_TRUE(isValidUtf8(""));
  for (const char* bytes : {"\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
                            "0123456789abc\xE2\x82", "\x80", "\xC3(", "\xFF"}) {
    EXPECT_FALSE(isValidUtf8(bytes)) << bytes;
  }
}

TEST(DecodeGuessing, LeavesUtf8AndReadsTheRestAsWindows1252) {
  EXPECT_EQ(decodeGuessing("8°"), "8°");
  EXPECT_EQ(decodeGuessing("8\xB0 \x80 \x9A"), "8° € š");
  EXPECT_EQ(decodeGuessing("plain"), "plain");
}

TEST(DecodeFile, HonoursTheUtf8Mark) {
  EXPECT_EQ(decodeFile("\xEF\xBB\xBFgain °"), "gain °");
  EXPECT_EQ(decodeFile("\xEF\xBB\xBFgain \xB0"), "gain °");
  EXPECT_EQ(decodeFile("\xEF\xBB\xBF"), "");
  EXPECT_EQ(decodeFile("no mark \xB0"), "no mark °");
}

TEST(DecodeFile, ReadsUtf16OfBothByteOrders) {
  using namespace std::string_view_literals;
  EXPECT_EQ(decodeFile("\xFF\xFE"
                       "A\0\xB0\0\xAC\x20"sv),
            "A°€");
  EXPECT_EQ(decodeFile("\xFE\xFF"
                       "\0A\0\xB0\x20\xAC"sv),
            "A°€");
  EXPECT_EQ(decodeFile("\xFF\xFE\x3D\xD8\x00\xDE"sv), "😀");
  EXPECT_EQ(decodeFile("\xFE\xFF\xD8\x3D\xDE\x00"sv), "😀");
}

TEST(DecodeFile, MarksLoneSurrogatesAndIgnoresAnOddByte) {
  using namespace std::string_view_literals;
  EXPECT_EQ(decodeFile("\xFF\xFE\x3D\xD8"
                       "A\0"sv),
            "\uFFFD"
            "A");
  EXPECT_EQ(decodeFile("\xFF\xFE\x00\xDE"sv), "\uFFFD");
  EXPECT_EQ(decodeFile("\xFF\xFE"
                       "A\0\x3D\xD8"sv),
            "A\uFFFD");
  EXPECT_EQ(decodeFile("\xFF\xFE"
                       "A\0x"sv),
            "A");
}

TEST(CodePageFind, KnowsTheSingleBytePagesAndNotTheOthers) {
  for (const int number : kSingleBytePages) {
    ASSERT_TRUE(CodePage::find(number)) << number;
    EXPECT_EQ(CodePage::find(number)->number(), number);
    EXPECT_TRUE(CodePage::find(number)->singleByte());
  }
  for (const int number : {0, 1, 895, 1258, 65001, -1}) EXPECT_FALSE(CodePage::find(number)) << number;
  EXPECT_EQ(CodePage::windows1252().number(), 1252);
}

TEST(CodePageText, EveryByteSurvivesARoundTripInEveryPage) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  for (const int number : kSingleBytePages) {
    const std::string text = page(number).decode(all);
    EXPECT_TRUE(isValidUtf8(text)) << number;
    EXPECT_EQ(page(number).encode(text), all) << number;
  }
}

TEST(CodePageText, HasTheCharactersOfItsPage) {
  EXPECT_EQ(page(437).decode("\xF8\x81\xE1"), "°üß");
  EXPECT_EQ(page(850).decode("\xF8\x9B"), "°ø");
  EXPECT_EQ(page(852).decode("\x9F"), "č");
  EXPECT_EQ(page(866).decode("\x80\xF0"), "АЁ");
  EXPECT_EQ(page(874).decode("\xA1"), "ก");
  EXPECT_EQ(page(1250).decode("\xE8"), "č");
  EXPECT_EQ(page(1251).decode("\xC0"), "А");
  EXPECT_EQ(page(1253).decode("\xE1"), "α");
  EXPECT_EQ(page(1254).decode("\xFE"), "ş");
  EXPECT_EQ(page(1257).decode("\xE0"), "ą");
  EXPECT_EQ(page(860).decode("\x84"), "ã");
  EXPECT_EQ(page(863).decode("\x8F"), "§");
  EXPECT_EQ(page(1255).decode("\xE0"), "א");
  EXPECT_EQ(page(1256).decode("\xC8"), "ب");
}

TEST(CodePageText, OpenBytesAreControlCharactersOrPrivateOnes) {
  EXPECT_EQ(page(1252).decode("\x81"), "\u0081");
  EXPECT_EQ(page(1252).encode("\u0081"), "\x81");
  EXPECT_EQ(page(1252).encode("\u0080"), "?");
  EXPECT_EQ(page(857).decode("\xD5"), "\uF7D5");
}

TEST(CodePageText, WhatThePageDoesNotHaveBecomesAQuestionMark) {
  EXPECT_EQ(page(1252).encode("λ 8° 😀"), "? 8\xB0 ?");
  EXPECT_EQ(page(437).encode("€"), "?");
  EXPECT_EQ(page(1252).encode("a\xFFz"), "a?z");
  EXPECT_EQ(page(1252).encode(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
}

TEST(CodePageCut, NeverSplitsACharacter) {
  EXPECT_EQ(CodePage::windows1252().cut("aé€x", 3), "aé€");
  EXPECT_EQ(CodePage::windows1252().cut("abc", 2), "ab");
  EXPECT_EQ(CodePage::windows1252().cut("é", 0), "");
  EXPECT_EQ(CodePage::windows1252().cut("λx", 1), "λ");
  EXPECT_EQ(CodePage::windows1252().cut("aé", 9), "aé");
}

// A page of two bytes for whatever is not ASCII, standing in for the tables of an operating system.
class DoubleBytePlatform : public test::SettingsPlatform {
 public:
  bool known = true;

  std::optional<std::string> decodeMultiByte(int, std::string_view bytes) override {
    if (!known) return std::nullopt;
    return bytes == "A" ? "A" : "日本";
  }
  std::optional<std::string> encodeMultiByte(int, std::string_view utf8) override {
    if (!known) return std::nullopt;
    std::string result;
    for (const char c : utf8) {
      if ((c & 0xC0) == 0xC0) result += "\x93\xFA";
      if ((c & 0x80) == 0) result += c;
    }
    return result;
  }
};

TEST(CodePageMultiByte, IsServedByThePlatform) {
  DoubleBytePlatform twin;
  const platform::Substitute substitute(twin);
  const CodePage japanese = page(932);
  EXPECT_FALSE(japanese.singleByte());
  EXPECT_EQ(japanese.number(), 932);
  EXPECT_EQ(japanese.decode("\x93\xFA\x96\x7B"), "日本");
  EXPECT_EQ(japanese.encode("a日"), "a\x93\xFA");
  EXPECT_EQ(japanese.cut("a日本", 4), "a日");
  EXPECT_EQ(japanese.cut("a日本", 5), "a日本");
}

TEST(CodePageMultiByte, IsNotFoundWhereThePlatformHasNone) {
  DoubleBytePlatform twin;
  const platform::Substitute substitute(twin);
  const CodePage korean = page(949);
  twin.known = false;
  EXPECT_FALSE(CodePage::find(949));
  EXPECT_FALSE(CodePage::find(936));
  EXPECT_EQ(korean.encode("a日"), "a?");
  EXPECT_EQ(korean.decode("a\x93\xFA"), "a??");
}

TEST(CodePageMultiByte, OfThisMachineReadsAndWritesRealText) {
  const auto japanese = CodePage::find(932);
  if (!japanese) GTEST_SKIP() << "no tables of page 932 on this machine";
  EXPECT_EQ(japanese->decode("\x93\xFA\x96\x7B"), "日本");
  EXPECT_EQ(japanese->encode("日本"), "\x93\xFA\x96\x7B");
}

}  // namespace
}  // namespace vantrelix

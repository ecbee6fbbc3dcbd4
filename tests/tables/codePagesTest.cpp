// Every byte of every single-byte code page that a header's mark can name, read from a table of that mark.
#include <gtest/gtest.h>

#include "foundation/utf8.h"
#include "tables/DbfBytes.h"
#include "tables/pageCharacters.h"

namespace vantrelix {
namespace {

using test::PageCharacters;
using test::RawTable;
using test::valueOf;

constexpr char32_t kOpen = 0xFFFD;

std::string upperHalf() {
  std::string bytes;
  for (int byte = 0x80; byte < 0x100; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

std::vector<char32_t> charactersOf(std::string_view text) {
  std::vector<char32_t> codes;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    codes.push_back(character.code);
    at += character.length;
  }
  return codes;
}

class CodePages : public testing::TestWithParam<PageCharacters> {
 protected:
  std::shared_ptr<DbfFile> opened(int mark) {
    const RawTable raw{
        .version = 0x30, .fields = {{"T", 'C', 128}}, .rows = " " + upperHalf(), .count = 1, .mark = mark};
    suite.folder().write("T.DBF", raw.bytes());
    return DbfFile::open(suite.file("T.DBF"));
  }
  test::TempSuite suite;
};

TEST_P(CodePages, HasTheCharacterOfEachByte) {
  const auto table = opened(GetParam().mark);
  EXPECT_EQ(table->codePage().number(), GetParam().page);
  const std::vector<char32_t> expected = charactersOf(GetParam().characters);
  const std::vector<char32_t> read = charactersOf(valueOf(*table, 0, "T").text());
  ASSERT_EQ(expected.size(), 128U);
  ASSERT_EQ(read.size(), 128U);
  for (std::size_t i = 0; i < 128; ++i) {
    if (expected[i] == kOpen) continue;
    EXPECT_EQ(read[i], expected[i]) << "byte " << 0x80 + i;
  }
}

TEST_P(CodePages, GivesEachByteBackWhenItsTextIsWritten) {
  const auto table = opened(GetParam().mark);
  const Value text = valueOf(*table, 0, "T");
  test::Bytes record = table->blankRecord();
  table->put(record.data(), 0, text);
  EXPECT_EQ(std::string(record.begin() + 1, record.end()), upperHalf());
}

INSTANTIATE_TEST_SUITE_P(Marks, CodePages, testing::ValuesIn(test::kPageCharacters),
                         [](const auto& test) { return "Page" + std::to_string(test.param.page); });

class UnmarkedTables : public CodePages {};

TEST_F(UnmarkedTables, AreReadAsWindows1252) {
  for (const int mark : {0x00, 0x05, 0xFF}) {
    const auto table = opened(mark);
    EXPECT_EQ(table->codePage().number(), 1252) << mark;
    EXPECT_TRUE(valueOf(*table, 0, "T").text().starts_with("\u20AC")) << mark;
  }
}

}  // namespace
}  // namespace vantrelix

// Each type of field in each version of the family.
#include <cstring>
#include <gtest/gtest.h>

#include "tables/DbfBytes.h"

namespace vantrelix {
namespace {

using test::failureOf;
using test::RawTable;
using test::valueOf;
using namespace std::string_literals;

std::string littleEndian(std::uint64_t value, int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

std::string bytesOf(double value) {
  std::string bytes(8, '\0');
  std::memcpy(bytes.data(), &value, 8);
  return bytes;
}

bool isVisual(int version) { return version >= 0x30 && version <= 0x32; }

class EveryVersion : public testing::TestWithParam<int> {
 protected:
  std::shared_ptr<DbfFile> opened(RawTable raw) {
    raw.version = GetParam();
    if (isVisual(raw.version)) raw.terminator = "\r" + std::string(263, '\0');
    suite.folder().write("T.DBF", raw.bytes());
    return DbfFile::open(suite.file("T.DBF"));
  }
  // The text "Notes" in block 1 of a memo file such as the version has.
  void writeMemo() {
    std::string file(512, '\0');
    switch (GetParam()) {
      case 0x8B:
      case 0xCB:
        file[21] = 2;
        suite.folder().write("T.DBT", file + "\xFF\xFF\x08\0"s + littleEndian(13, 4) + "Notes");
        break;
      case 0x03:
      case 0x43:
      case 0x63:
      case 0x83:
        suite.folder().write("T.DBT", file + "Notes\x1A\x1A");
        break;
      default:
        file[6] = 2;
        suite.folder().write("T.FPT", file + "\0\0\0\1\0\0\0\5Notes"s);
    }
  }
  test::TempSuite suite;
};

TEST_P(EveryVersion, ReadsTexts) {
  const auto table = opened({.fields = {{"A", 'C', 3}, {"B", 'C', 2}}, .rows = " abcde", .count = 1});
  EXPECT_EQ(table->version(), GetParam());
  EXPECT_EQ(valueOf(*table, 0, "A"), Value("abc"));
  EXPECT_EQ(valueOf(*table, 0, "B"), Value("de"));
}

TEST_P(EveryVersion, ReadsATextLongerThan255) {
  const std::string longText(300, 'x');
  const auto table = opened(
      {.fields = {{"L", 'C', 44, 1}, {"B", 'C', 2}}, .rows = " " + longText + "yz", .count = 1, .recordLength = 303});
  EXPECT_EQ(valueOf(*table, 0, "L"), Value(longText));
  EXPECT_EQ(valueOf(*table, 0, "B"), Value("yz"));
}

TEST_P(EveryVersion, ReadsNumbersByTheirDigits) {
  const auto table = opened({.fields = {{"N", 'N', 7, 2}, {"F", 'F', 8, 3}}, .rows = " -123.4512.50E+1", .count = 1});
  EXPECT_EQ(valueOf(*table, 0, "N"), Value(-123.45));
  EXPECT_EQ(valueOf(*table, 0, "F"), Value(125));
}

TEST_P(EveryVersion, ReadsDatesAndTruthValues) {
  const auto table = opened({.fields = {{"D", 'D', 8}, {"L", 'L', 1}}, .rows = " 20261121T 00000000?", .count = 2});
  EXPECT_EQ(valueOf(*table, 0, "D"), Value(DateTime{2026, 11, 21}));
  EXPECT_EQ(valueOf(*table, 0, "L"), Value(true));
  EXPECT_TRUE(valueOf(*table, 1, "D").isNull());
  EXPECT_TRUE(valueOf(*table, 1, "L").isNull());
}

TEST_P(EveryVersion, ReadsBinaryNumbersAndMoments) {
  const std::string row = " " + littleEndian(0xFFFFFDA8U, 4) + bytesOf(78.9) + littleEndian(123456, 8) +
                          littleEndian(2461366, 4) + littleEndian(57768000, 4);
  const auto table =
      opened({.fields = {{"I", 'I', 4}, {"B", 'B', 8}, {"Y", 'Y', 8}, {"T", 'T', 8}}, .rows = row, .count = 1});
  EXPECT_EQ(valueOf(*table, 0, "I"), Value(-600));
  EXPECT_EQ(valueOf(*table, 0, "B"), Value(78.9));
  EXPECT_EQ(valueOf(*table, 0, "Y"), Value(12.3456));
  EXPECT_EQ(valueOf(*table, 0, "T"), Value(DateTime{2026, 11, 21, 16, 2, 48}));
}

TEST_P(EveryVersion, ReadsItsMemos) {
  writeMemo();
  const auto table = opened({.fields = {{"M", 'M', 10}, {"S", 'M', 4}},
                             .rows = "          1" + littleEndian(1, 4) + std::string(11, ' ') + littleEndian(0, 4),
                             .count = 2});
  EXPECT_EQ(valueOf(*table, 0, "M"), Value("Notes"));
  EXPECT_EQ(valueOf(*table, 0, "S"), Value("Notes"));
  EXPECT_TRUE(valueOf(*table, 1, "M").isNull());
  EXPECT_TRUE(valueOf(*table, 1, "S").isNull());
}

TEST_P(EveryVersion, HasNullFlagsInTheVisualFamilyAlone) {
  const auto table = opened({.fields = {{"A", 'C', 3, 0, 2}, {"I", 'I', 4, 0, 2}, {"_NullFlags", '0', 1, 0, 1}},
                             .rows = " abc" + littleEndian(7, 4) + "\3" + " abc" + littleEndian(7, 4) + "\0"s,
                             .count = 2});
  EXPECT_EQ(valueOf(*table, 0, "A").isNull(), isVisual(GetParam()));
  EXPECT_EQ(valueOf(*table, 0, "I").isNull(), isVisual(GetParam()));
  EXPECT_EQ(valueOf(*table, 1, "A"), Value("abc"));
  EXPECT_EQ(valueOf(*table, 1, "I"), Value(7));
}

TEST_P(EveryVersion, ReadsAForeignTypeAsNullAndKeepsItsBytes) {
  const auto table = opened({.fields = {{"A", 'C', 3}, {"X", 'O', 4}}, .rows = " abc\1\2\3\4", .count = 1});
  EXPECT_TRUE(valueOf(*table, 0, "X").isNull());
  EXPECT_TRUE(valueOf(*table, 0, "X").isNull());
  table->update(0, [&](unsigned char* record) { table->put(record, 0, "new"); });
  EXPECT_NE(suite.folder().read("T.DBF").find(" new\1\2\3\4"), std::string::npos);
  const std::string log = suite.log();
  const std::size_t told = log.find("the field X of type O is read as null");
  EXPECT_NE(told, std::string::npos);
  EXPECT_EQ(log.find("the field X of type O", told + 1), std::string::npos) << "once is enough";
}

INSTANTIATE_TEST_SUITE_P(Bytes, EveryVersion,
                         testing::Values(0x03, 0x30, 0x31, 0x32, 0x43, 0x63, 0x83, 0x8B, 0xCB, 0xF5, 0xFB),
                         [](const auto& test) { return "Version" + std::to_string(test.param); });

}  // namespace
}  // namespace vantrelix

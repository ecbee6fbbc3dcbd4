#include <charconv>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

#include "tables/dbfNumber.h"

namespace vantrelix::dbf {
namespace {

DbfField numberField(int width, int decimals, int offset = 1) {
  DbfField field;
  field.type = 'N';
  field.width = width;
  field.decimals = decimals;
  field.offset = offset;
  return field;
}

std::optional<double> readField(const DbfField& field, const std::string& record) {
  double number = 0;
  const bool there = DigitsField::of(field)->read(reinterpret_cast<const unsigned char*>(record.data()), number);
  return there ? std::optional<double>(number) : std::nullopt;
}

std::optional<double> readText(const std::string& text, int decimals) {
  return readField(numberField(static_cast<int>(text.size()), decimals), " " + text);
}

TEST(DigitsField, IsMadeOfNumberFieldsWithoutFlagsAlone) {
  DbfField field = numberField(10, 4);
  EXPECT_TRUE(DigitsField::of(field));
  field.nullBit = 0;
  EXPECT_FALSE(DigitsField::of(field));
  EXPECT_FALSE(DigitsField::of(numberField(0, 0)));
  field = numberField(10, 4);
  field.type = 'C';
  EXPECT_FALSE(DigitsField::of(field));
}

TEST(DigitsField, ReadsNumbersOfEveryShape) {
  EXPECT_EQ(readText("  -39.2500", 4), -39.25);
  EXPECT_EQ(readText("   -.2500", 4), -0.25);
  EXPECT_EQ(readText("99999999.9999", 4), 99999999.9999);
  EXPECT_EQ(readText("-9999999999.1", 1), -9999999999.1);
  EXPECT_EQ(readText("  00000012", 0), 12.0);
  EXPECT_EQ(readText("12        ", 0), 12.0);
  EXPECT_EQ(readText("   1.5E+02", 4), 150.0);
  EXPECT_EQ(readText("     12.5 ", 4), 12.5);
  EXPECT_EQ(readText("9007199254740993", 0), 9007199254740992.0);
  EXPECT_EQ(readText("99999999.99999999", 8), 99999999.99999999);
  EXPECT_FALSE(std::signbit(*readText("   -0.0000", 4)));
}

TEST(DigitsField, ReadsNothingWhereThereIsNoNumber) {
  for (const char* text : {"          ", "**********", "         -", "     .    ", "  1-2.0000", "   12.0x00",
                           "  1 2.0000", " --12.0000", "\x80\x80\x80 1.0000"}) {
    EXPECT_EQ(readText(text, 4), std::nullopt) << text;
  }
}

// Mostly as fields hold them, some with a byte changed, some of any bytes.
std::string randomDigits(std::mt19937_64& random, int width, int decimals) {
  constexpr std::string_view kAny = "0123456789 -.0123456789  +E\t";
  std::string text(static_cast<std::size_t>(width), ' ');
  if (random() % 8 == 0) {
    for (char& c : text) c = kAny[random() % kAny.size()];
    return text;
  }
  if (random() % 8 == 0) decimals = static_cast<int>(random() % 9);
  const int point = decimals > 0 ? width - decimals - 1 : width;
  if (point < 1) return text;
  int first = static_cast<int>(random() % static_cast<std::uint64_t>(point + 1));
  for (int i = first; i < width; ++i) text[static_cast<std::size_t>(i)] = static_cast<char>('0' + random() % 10);
  if (decimals > 0) text[static_cast<std::size_t>(point)] = '.';
  if (first > 0 && random() % 2 == 0) text[static_cast<std::size_t>(first) - 1] = '-';
  if (random() % 8 == 0) text[random() % text.size()] = kAny[random() % kAny.size()];
  return text;
}

TEST(DigitsField, ReadsWhatTheWholeParserReads) {
  std::mt19937_64 random(41);
  int numbers = 0;
  for (int round = 0; round < 2'000'000; ++round) {
    const int width = 1 + static_cast<int>(random() % 20);
    const int decimals = static_cast<int>(random() % 9);
    const int offset = 1 + static_cast<int>(random() % 9);
    const std::string digits = randomDigits(random, width, decimals);
    const std::string record = std::string(static_cast<std::size_t>(offset), '7') + digits + "7777";
    const std::optional<double> read = readField(numberField(width, decimals, offset), record);
    const std::optional<double> parsed = parseNumber(digits);
    ASSERT_EQ(read, parsed) << '"' << digits << "\" " << decimals;
    if (!read) continue;
    ++numbers;
    ASSERT_EQ(std::signbit(*read), std::signbit(*parsed)) << digits;
  }
  EXPECT_GT(numbers, 1'000'000);
}

// The number by the standard library's own conversion, which rounds correctly.
TEST(DigitsField, ReadsTheNearestDouble) {
  std::mt19937_64 random(43);
  for (int round = 0; round < 1'000'000; ++round) {
    const int width = 8 + static_cast<int>(random() % 13);
    const int decimals = static_cast<int>(random() % 7);
    std::string digits(static_cast<std::size_t>(width), '0');
    for (char& c : digits) c = static_cast<char>('0' + random() % 10);
    if (decimals > 0) digits[static_cast<std::size_t>(width - decimals - 1)] = '.';
    double expected = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), expected);
    ASSERT_EQ(readText(digits, decimals), expected) << digits;
  }
}

TEST(DigitsField, ReadsManyRecordsAndLeavesOutThoseWithoutANumber) {
  const std::string records[] = {"     1.50", "         ", "    -2.25"};
  std::vector<const unsigned char*> places;
  for (const std::string& record : records) places.push_back(reinterpret_cast<const unsigned char*>(record.data()));
  std::vector<double> numbers{7};
  DigitsField::of(numberField(8, 2))->readAll(places, numbers);
  EXPECT_EQ(numbers, (std::vector<double>{7, 1.5, -2.25}));
}

}  // namespace
}  // namespace vantrelix::dbf

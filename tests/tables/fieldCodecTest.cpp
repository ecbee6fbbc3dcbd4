#include <cmath>
#include <gtest/gtest.h>

#include "platform/RunTimeFailure.h"
#include "tables/DbfBytes.h"
#include "tables/dbfNumber.h"
#include "tables/fieldCodec.h"
#include "tables/numberDigits.h"

namespace vantrelix {
namespace {

using dbf::numberDigits;
using dbf::parseNumber;
using namespace std::string_view_literals;

TEST(NumberDigits, AreReadWithBlanksSignPointAndExponent) {
  EXPECT_EQ(parseNumber("   12.50"), 12.5);
  EXPECT_EQ(parseNumber("-0.1  "), -0.1);
  EXPECT_EQ(parseNumber("+.5"), 0.5);
  EXPECT_EQ(parseNumber("5."), 5.0);
  EXPECT_EQ(parseNumber("1.5E+03"), 1500.0);
  EXPECT_EQ(parseNumber("2e-3"), 0.002);
}

TEST(NumberDigits, GiveTheNearestDouble) {
  EXPECT_EQ(parseNumber("0.1"), 0.1);
  EXPECT_EQ(parseNumber("123456789.123456"), 123456789.123456);
  EXPECT_EQ(parseNumber("0.000000000000000012345678901234567"), 0.000000000000000012345678901234567);
  EXPECT_EQ(parseNumber("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(parseNumber("17976931348623157e292"), 1.7976931348623157e308);
}

TEST(NumberDigits, NulsAroundThemCountAsBlanks) {
  EXPECT_EQ(parseNumber("12\0\0\0"sv), 12.0);
  EXPECT_EQ(parseNumber("\0\0 7"sv), 7.0);
  EXPECT_EQ(parseNumber("1\0002"sv), std::nullopt);
}

TEST(NumberDigits, ThePointOfAnEmptyFormIsNoPartOfTheNumber) {
  EXPECT_EQ(parseNumber("0   . "), 0.0);
  EXPECT_EQ(parseNumber("12  .  "), 12.0);
  EXPECT_EQ(parseNumber("    .  "), std::nullopt);
  EXPECT_EQ(parseNumber("1  . 5"), std::nullopt);
}

TEST(NumberDigits, WhatIsNoNumberIsNothing) {
  for (const char* text :
       {"", "     ", "******", ".", "-", "   .  ", "1,5", "12a", "1.2.3", "--1", "1e", "nan", "inf", "0x10"}) {
    EXPECT_EQ(parseNumber(text), std::nullopt) << text;
  }
}

TEST(NumberDigits, ANegativeNoughtIsNought) {
  EXPECT_FALSE(std::signbit(*parseNumber("-0.00")));
  EXPECT_EQ(numberDigits(-0.0, 6, 2), "  0.00");
  EXPECT_EQ(numberDigits(-0.004, 6, 2), "  0.00");
}

TEST(NumberDigits, RoundHalfAwayFromZeroOnTheDecimalText) {
  EXPECT_EQ(numberDigits(1.005, 6, 2), "  1.01");
  EXPECT_EQ(numberDigits(-2.5, 4, 0), "  -3");
  EXPECT_EQ(numberDigits(0.125, 8, 2), "    0.13");
}

TEST(NumberDigits, LoseDecimalsOnlyWhereTheWholePartNeedsTheRoom) {
  EXPECT_EQ(numberDigits(12.3456, 7, 4), "12.3456");
  EXPECT_EQ(numberDigits(123.456, 6, 4), "123.46");
  EXPECT_EQ(numberDigits(12345.6, 6, 4), " 12346");
  EXPECT_EQ(numberDigits(999.996, 6, 2), "1000.0");
}

TEST(NumberDigits, AWholePartThatDoesNotFitIsRefused) {
  EXPECT_EQ(numberDigits(1234567, 6, 2), std::nullopt);
  EXPECT_EQ(numberDigits(-99999.9, 5, 0), std::nullopt);
  EXPECT_EQ(numberDigits(1e300, 20, 2), std::nullopt);
}

class FieldCodec : public ::testing::Test {
 protected:
  // The bytes of a lone field after a value was put into it.
  std::string written(DbfField field, const Value& value) {
    field.offset = 1;
    std::string record(1 + static_cast<std::size_t>(field.width), '#');
    dbf::encodeField(reinterpret_cast<unsigned char*>(record.data()), field, context, value);
    return record.substr(1);
  }
  Value read(DbfField field, std::string_view bytes) {
    field.offset = 1;
    const std::string record = " " + std::string(bytes);
    reason = nullptr;
    return dbf::decodeField(reinterpret_cast<const unsigned char*>(record.data()), field, context, reason);
  }
  int numberOf(DbfField field, const Value& value) {
    return test::failureOf([&] { written(field, value); }).number();
  }

  dbf::FieldContext context{.path = "/lib/ANT.DBF"};
  const char* reason = nullptr;
  const DbfField text{.name = "ANTENNA", .type = 'C', .width = 6};
  const DbfField number{.name = "GAIN", .type = 'N', .width = 6, .decimals = 2};
  const DbfField logical{.name = "OK", .type = 'L', .width = 1};
  const DbfField date{.name = "MADE", .type = 'D', .width = 8};
};

TEST_F(FieldCodec, TextKeepsItsTrailingBlanksAndBlankTextIsNull) {
  EXPECT_EQ(read(text, "AB    "), Value("AB    "));
  EXPECT_TRUE(read(text, "      ").isNull());
  EXPECT_TRUE(read(text, "\0\0\0\0\0\0"sv).isNull());
  EXPECT_EQ(read(text, "AB\0xyz"sv), Value("AB"));
}

TEST_F(FieldCodec, TextGoesThroughTheCodePage) {
  EXPECT_EQ(written(text, "Ñandú"),
            "\xD1"
            "and\xFA ");
  EXPECT_EQ(read(text,
                 "\xD1"
                 "and\xFA "),
            Value("Ñandú "));
  context.text = dbf::TextCodec(850);
  EXPECT_EQ(written(text, "Ñandú"),
            "\xA5"
            "and\xA3 ");
}

TEST_F(FieldCodec, TextThatIsTooLongIsRefusedAndChangesNothing) {
  std::string record = " before";
  const RunTimeFailure failure = test::failureOf([&] {
    DbfField field = text;
    field.offset = 1;
    dbf::encodeField(reinterpret_cast<unsigned char*>(record.data()), field, context, "too long");
  });
  EXPECT_EQ(failure.number(), failure::fieldTooSmall);
  EXPECT_NE(failure.description().find("ANTENNA"), std::string::npos);
  EXPECT_NE(failure.description().find("too long"), std::string::npos);
  EXPECT_NE(failure.description().find("6"), std::string::npos);
  EXPECT_EQ(record, " before");
  EXPECT_EQ(written(text, "ABCDEF   "), "ABCDEF");
}

TEST_F(FieldCodec, ANumberThatDoesNotFitIsRefusedWithFieldValueAndWidth) {
  EXPECT_EQ(written(number, 12.345), " 12.35");
  const RunTimeFailure failure = test::failureOf([&] { written(number, 1234567); });
  EXPECT_EQ(failure.number(), failure::fieldTooSmall);
  EXPECT_NE(failure.description().find("GAIN"), std::string::npos);
  EXPECT_NE(failure.description().find("1234567"), std::string::npos);
  EXPECT_NE(failure.description().find("/lib/ANT.DBF"), std::string::npos);
}

TEST_F(FieldCodec, AValueOfTheWrongKindFailsWith13) {
  EXPECT_EQ(numberOf(number, "abc"), failure::typeMismatch);
  EXPECT_EQ(numberOf(number, Value(DateTime{2026, 11, 21})), failure::typeMismatch);
  EXPECT_EQ(numberOf(date, 5.0), failure::typeMismatch);
  EXPECT_EQ(numberOf(logical, "perhaps"), failure::typeMismatch);
  EXPECT_EQ(written(number, "12.5"), " 12.50");
}

TEST_F(FieldCodec, NullAndEmptyTextGiveABlankField) {
  EXPECT_EQ(written(text, Value()), "      ");
  EXPECT_EQ(written(number, ""), "      ");
  EXPECT_EQ(written(date, Value()), "        ");
  EXPECT_EQ(written(logical, Value()), " ");
}

TEST_F(FieldCodec, LogicalFieldsKnowTheirFourPairsOfLetters) {
  for (const char* letter : {"T", "t", "Y", "y"}) EXPECT_EQ(read(logical, letter), Value(true)) << letter;
  for (const char* letter : {"F", "f", "N", "n"}) EXPECT_EQ(read(logical, letter), Value(false)) << letter;
  for (const char* letter : {"?", " ", "x"}) EXPECT_TRUE(read(logical, letter).isNull()) << letter;
  EXPECT_EQ(written(logical, true), "T");
  EXPECT_EQ(written(logical, 0.0), "F");
}

TEST_F(FieldCodec, DatesThatAreNoneAreNull) {
  EXPECT_EQ(read(date, "20261121"), Value(DateTime{2026, 11, 21}));
  for (const char* bytes : {"00000000", "        ", "20261131", "2026112a", "NotAYear", "********"}) {
    EXPECT_TRUE(read(date, bytes).isNull()) << bytes;
  }
  EXPECT_EQ(written(date, Value(DateTime{2026, 3, 7, 23, 59, 59})), "20260307");
}

TEST_F(FieldCodec, BinaryNumbersAreReadAndWritten) {
  context.visual = true;
  const DbfField whole{.name = "I", .type = 'I', .width = 4};
  const DbfField money{.name = "Y", .type = 'Y', .width = 8};
  const DbfField real{.name = "B", .type = 'B', .width = 8};
  EXPECT_EQ(read(whole, written(whole, -2147483648.0)), Value(-2147483648.0));
  EXPECT_EQ(written(whole, 258), "\x02\x01\0\0"sv);
  EXPECT_EQ(read(money, written(money, -12.3456)), Value(-12.3456));
  EXPECT_EQ(read(real, written(real, 0.1)), Value(0.1));
  EXPECT_EQ(numberOf(whole, 3e9), failure::fieldTooSmall);
  EXPECT_EQ(numberOf(money, 1e15), failure::fieldTooSmall);
}

TEST_F(FieldCodec, AMomentIsRoundedToItsSecond) {
  context.visual = true;
  const DbfField moment{.name = "T", .type = 'T', .width = 8};
  const DateTime evening{2026, 11, 21, 23, 59, 58};
  EXPECT_EQ(read(moment, written(moment, Value(evening))), Value(evening));
  // 2020-03-27 and 86,399,600 milliseconds: the first second of the next day.
  EXPECT_EQ(read(moment, "\x38\x85\x25\0\xF0\x5A\x26\x05"sv), Value(DateTime{2020, 3, 28, 0, 0, 0}));
  EXPECT_TRUE(read(moment, "        ").isDate() == false);
  EXPECT_TRUE(read(moment, "\0\0\0\0\0\0\0\0"sv).isNull());
}

TEST_F(FieldCodec, UnknownAndBinaryTypesAreNullWithAReasonAndNeverWritten) {
  for (const char type : {'G', 'P', 'W', '7', '@'}) {
    const DbfField field{.name = "X", .type = type, .width = 4};
    EXPECT_TRUE(read(field, "abcd").isNull());
    EXPECT_NE(reason, nullptr) << type;
    EXPECT_EQ(numberOf(field, "abc"), failure::readOnlyTable) << type;
  }
}

}  // namespace
}  // namespace vantrelix

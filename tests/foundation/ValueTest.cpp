#include <gtest/gtest.h>

#include "foundation/RegionalScope.h"
#include "foundation/Value.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

template <class Operation>
int failureOf(Operation operation) {
  try {
    operation();
  } catch (const RunTimeFailure& failure) {
    return failure.number();
  }
  return 0;
}

TEST(ValueKind, IsThatOfWhatItWasMadeFrom) {
  EXPECT_TRUE(Value().isNull());
  EXPECT_TRUE(Value("x").isText());
  EXPECT_TRUE(Value(std::string_view("x")).isText());
  EXPECT_TRUE(Value(3).isNumber());
  EXPECT_TRUE(Value(3.5).isNumber());
  EXPECT_TRUE(Value(false).isBoolean());
  EXPECT_TRUE(Value(DateTime{2026, 1, 2}).isDate());
}

TEST(ValueContent, OfAnotherKindFailsAsATypeMismatch) {
  EXPECT_EQ(failureOf([] { return Value(1).text(); }), failure::typeMismatch);
  EXPECT_EQ(failureOf([] { return Value("1").number(); }), failure::typeMismatch);
  EXPECT_EQ(failureOf([] { return Value(1).boolean(); }), failure::typeMismatch);
  EXPECT_EQ(failureOf([] { return Value("x").date(); }), failure::typeMismatch);
}

TEST(ValueContent, OfANullFailsAsInvalidUseOfNull) {
  EXPECT_EQ(failureOf([] { return Value().text(); }), failure::invalidUseOfNull);
  EXPECT_EQ(failureOf([] { return Value().number(); }), failure::invalidUseOfNull);
  EXPECT_EQ(failureOf([] { return Value().asText(); }), failure::invalidUseOfNull);
  EXPECT_EQ(failureOf([] { return Value().asNumber(); }), failure::invalidUseOfNull);
  EXPECT_EQ(failureOf([] { return Value().asBoolean(); }), failure::invalidUseOfNull);
}

TEST(ValueAsText, IsGeneralTextOfAnyKind) {
  EXPECT_EQ(Value("a ").asText(), "a ");
  EXPECT_EQ(Value(0.5).asText(), "0.5");
  EXPECT_EQ(Value(true).asText(), "True");
  EXPECT_EQ(Value(false).asText(), "False");
  EXPECT_EQ(Value(DateTime{2026, 11, 21, 16, 2, 48}).asText(), "11/21/2026 4:02:48 PM");
  EXPECT_EQ(Value(DateTime{2026, 11, 21}).asText(), "11/21/2026");
  EXPECT_EQ(Value(DateTime{2026, 11, 21, 0, 2, 0}).asText(), "11/21/2026 12:02:00 AM");
  EXPECT_EQ(Value(DateTime{2026, 11, 21, 0, 0, 8}).asText(), "11/21/2026 12:00:08 AM");
  const test::RegionalScope comma(",", ".");
  EXPECT_EQ(Value(0.5).asText(), "0,5");
}

TEST(ValueAsNumber, ConvertsPlainly) {
  EXPECT_EQ(Value(" 1,250.5 ").asNumber(), 1250.5);
  EXPECT_EQ(Value(true).asNumber(), -1);
  EXPECT_EQ(Value(false).asNumber(), 0);
  EXPECT_EQ(Value(DateTime{1900, 1, 1}).asNumber(), 2);
  EXPECT_EQ(failureOf([] { return Value("15dBd").asNumber(); }), failure::typeMismatch);
  EXPECT_EQ(failureOf([] { return Value("1E999").asNumber(); }), failure::overflow);
}

TEST(ValueAsBoolean, TakesWordsAndNumbers) {
  EXPECT_TRUE(Value("TRUE").asBoolean());
  EXPECT_FALSE(Value("false").asBoolean());
  EXPECT_TRUE(Value("-1").asBoolean());
  EXPECT_FALSE(Value("0").asBoolean());
  EXPECT_TRUE(Value(0.1).asBoolean());
  EXPECT_FALSE(Value(0).asBoolean());
  EXPECT_EQ(failureOf([] { return Value("yes").asBoolean(); }), failure::typeMismatch);
}

TEST(ChkNulls, GivesTheFallbackForNullAlone) {
  EXPECT_EQ(ChkNulls(Value(), "d", false), Value("d"));
  EXPECT_EQ(ChkNulls(Value("x"), "d", false), Value("x"));
  EXPECT_EQ(ChkNulls(Value(""), "d", false), Value(""));
  EXPECT_EQ(ChkNulls(Value(0), "d", true), Value(0));
}

TEST(ChkNulls, WithBlankIsNullTheEmptyTextCountsToo) {
  EXPECT_EQ(ChkNulls(Value(""), "d", true), Value("d"));
  EXPECT_EQ(ChkNulls(Value(" "), "d", true), Value(" "));
  EXPECT_EQ(ChkNulls(Value(), 7, true), Value(7));
}

}  // namespace
}  // namespace vantrelix

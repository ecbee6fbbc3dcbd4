// Values of the antenna lookup control by the names of their fields.
#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::failureNumberOf;
using test::kBoundValues;
using test::shownIn;

// The values that are found by their field stand first.
constexpr std::size_t kListed = 10;
constexpr std::size_t kInvert = 9;

class LookAntHookValues : public test::RecordTest {
 protected:
  LookAntHookValues() { control.SeePreview(false); }
};

TEST_F(LookAntHookValues, GiveAValueByItsFieldInAnyCase) {
  bind();
  putOthers();
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    const BoundValue& value = kBoundValues[i];
    EXPECT_EQ(control.sHookDBFValue(lowerCase(value.field)), i < kListed ? value.other : "") << value.name;
  }
  control.sValueInvert(true);
  EXPECT_EQ(control.sHookDBFValue("TX_A1INVRT"), "True");
  EXPECT_EQ(control.sHookDBFValue("TX_GONE"), "");
}

TEST_F(LookAntHookValues, GiveTheLastValueOfAFieldAndPassOverMissingHooks) {
  control.HookDBFDesc(hookFor(nullptr, "TX_A1TYP"));
  control.HookDBFOrient(hookFor(nullptr, "TX_A1TYP"));
  control.sValueDesc("Whip");
  control.sValueOrient("120");
  EXPECT_EQ(control.sHookDBFValue("TX_A1TYP"), "120");
  control.sHookDBFValue("TX_A1TYP", "7");
  EXPECT_EQ(control.sValueDesc() + control.sValueOrient(), "77");
}

TEST_F(LookAntHookValues, TakeAValueByItsFieldInSilence) {
  bind();
  control.UpdateDBF();
  heard();
  // The unit converts the gain as any put of it does.
  const std::vector<std::size_t> order = {0, 1, 2, 4, 3, 5, 6, 7, 8, kInvert};
  for (const std::size_t i : order) control.sHookDBFValue(lowerCase(kBoundValues[i].field), kBoundValues[i].other);
  const std::vector<std::string> shown = shownIn(control);
  for (const std::size_t i : order) EXPECT_EQ(shown[i], kBoundValues[i].other) << kBoundValues[i].name;
  EXPECT_EQ(heard(), "");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookAntHookValues, TakeNoPolarisationAndNoFrequency) {
  bind();
  control.UpdateDBF();
  control.sHookDBFValue("TX_A1Pol", "Circular");
  control.sHookDBFValue("TX_FREQMHZ", "900");
  expectRowUpTo(kBoundValues.size(), "");
}

TEST_F(LookAntHookValues, LeaveAControlDirtyThatIs) {
  bind();
  control.txtDesc.userType("x");
  control.sHookDBFValue("TX_A1TYP", "y");
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookAntHookValues, TakeNothingWhileTheControlIsLocked) {
  bind();
  control.UpdateDBF();
  control.Locked(true);
  for (const BoundValue& value : kBoundValues) control.sHookDBFValue(value.field, value.other);
  control.Locked(false);
  expectRowUpTo(kBoundValues.size(), "");
}

TEST_F(LookAntHookValues, TakeAFlagByTheLanguagesRule) {
  bind();
  for (const char* text : {"-1", "True", "2"}) {
    control.sValueInvert(false);
    control.sHookDBFValue("TX_A1INVRT", text);
    EXPECT_TRUE(control.sValueInvert()) << text;
  }
  control.sHookDBFValue("TX_A1INVRT", "0");
  EXPECT_FALSE(control.sValueInvert());
  for (const char* text : {"", "perhaps"}) {
    EXPECT_EQ(failureNumberOf([&] { control.sHookDBFValue("TX_A1INVRT", text); }), failure::typeMismatch) << text;
  }
}

}  // namespace
}  // namespace vantrelix

#include <functional>
#include <limits>

#include "controls/LookLineFixture.h"
#include "foundation/text.h"

namespace vantrelix {
namespace {

constexpr const char* kSection = "Line Lookup";

class LookLine : public test::LookLineTest {};

TEST_F(LookLine, OffersItsUnitsInOrderAndBeginsWithFeet) {
  EXPECT_EQ(control.cboUnit.entries(), (std::vector<std::string>{"ft", "in", "m", "cm"}));
  EXPECT_EQ(control.sValueUnit(), "ft");
  EXPECT_TRUE(control.Valid());
}

TEST_F(LookLine, BeginsWithTheUnitTheUserChoseLast) {
  keep(kSection, "Units", "m");
  EXPECT_EQ(scLookLine().sValueUnit(), "m");
  keep(kSection, "Units", " ");
  EXPECT_EQ(scLookLine().sValueUnit(), "ft");
  keep(kSection, "Units", "furlong");
  EXPECT_EQ(scLookLine().sValueUnit(), "ft");
}

TEST_F(LookLine, TakesTheLoggedInUsersUnit) {
  // The login's own defaults file holds another unit.
  control.ZORUserLogin("ann");
  keep(kSection, "Units", "cm");
  scLookLine other;
  other.ZORUserLogin("bob");
  EXPECT_EQ(other.sValueUnit(), "ft");
  other.ZORUserLogin("ann");
  EXPECT_EQ(other.sValueUnit(), "cm");
}

TEST_F(LookLine, HasNoFrequencyAtFirst) {
  EXPECT_EQ(control.sValueFreq(), "-88");
  EXPECT_EQ(control.lblFreq.caption(), "");
}

TEST_F(LookLine, SaysInvalidFreqForANullAlone) {
  control.sValueFreq(Value());
  EXPECT_EQ(control.lblFreq.caption(), "Invalid Freq");
  EXPECT_EQ(control.sValueFreq(), "-88");
  control.sValueFreq(-88);
  EXPECT_EQ(control.lblFreq.caption(), "-88.00MHz");
}

TEST_F(LookLine, ShowsAFrequencyWithTwoPlacesThatCount) {
  const std::pair<double, const char*> shown[] = {
      {0, "0.00MHz"},         {451.25, "451.25MHz"}, {1, "1.00MHz"},           {1.5, "1.50MHz"},
      {0.5, "0.500MHz"},      {0.1, "0.100MHz"},     {0.05, "0.0500MHz"},      {-0.002, "-0.00200MHz"},
      {10000, "10000.00MHz"}, {0.001, "0.00100MHz"}, {0.00099, "0.000990MHz"}, {9.99, "9.99MHz"},
  };
  for (const auto& [frequency, text] : shown) {
    control.sValueFreq(frequency);
    EXPECT_EQ(control.lblFreq.caption(), text) << frequency;
  }
  control.sValueFreq("151.9x");
  EXPECT_EQ(control.lblFreq.caption(), "151.90MHz");
}

TEST_F(LookLine, KeepsTheLabelWhereFreqIsPut) {
  control.sValueFreq(150);
  control.Freq(450);
  EXPECT_EQ(control.lblFreq.caption(), "150.00MHz");
  EXPECT_EQ(control.sValueFreq(), "450");
}

TEST_F(LookLine, KeepsABlankLengthBlankThroughAChangeOfUnit) {
  control.cboUnit.userSelect(2);
  EXPECT_EQ(control.sValueLen(), "");
  control.txtLen.userBlur();
  EXPECT_EQ(control.sValueLen(), "");
}

TEST_F(LookLine, ShowsASmallLengthWithPlacesThatCount) {
  control.sValueLen("1");
  control.sValueUnit("cm");
  EXPECT_EQ(control.sValueLen(), "30.48");
  control.sValueLen("1");
  control.sValueUnit("m");
  EXPECT_EQ(control.sValueLen(), "0.0100");
}

TEST_F(LookLine, TakesTheUsersUnitForATextThatIsNone) {
  keep(kSection, "Units", "in");
  control.sValueUnit("yard");
  EXPECT_EQ(control.sValueUnit(), "in");
  control.sValueUnit("M");
  EXPECT_EQ(control.sValueUnit(), "m");
}

TEST_F(LookLine, ClearBlanksTheValuesAlone) {
  makeLines();
  show();
  control.sValueDesc("Seven eighths foam");
  control.Clear(true);
  EXPECT_EQ(
      control.sValueFile() + control.sValueID() + control.sValueDesc() + control.sValueLen() + control.sValueLoss(),
      "");
  EXPECT_EQ(control.sValueUnit(), "ft");
  EXPECT_EQ(heard(), "");
}

TEST_F(LookLine, DescIsTheDescription) {
  control.Desc("a line");
  EXPECT_EQ(control.sValueDesc(), "a line");
  EXPECT_EQ(control.Desc(), "a line");
}

TEST_F(LookLine, MayBeDroppedByItsHostInAnyEvent) {
  makeLines();
  auto own = std::make_unique<scLookLine>();
  own->ChangeLine.listen([&] { own.reset(); });
  own->txtLen.userBlur();
  EXPECT_EQ(own, nullptr);
}

TEST_F(LookLine, TakesAUnitInItsOwnSpellingOrInCapitalsAlone) {
  keep(kSection, "Units", "in");
  for (const char* unit : {"ft", "m", "cm", "FT", "M", "CM"}) {
    control.sValueUnit(unit);
    EXPECT_EQ(upperCase(control.sValueUnit()), upperCase(unit));
    keep(kSection, "Units", "in");
  }
  for (const char* other : {"Ft", "Cm", "feet", ""}) {
    control.sValueUnit("m");
    keep(kSection, "Units", "in");
    control.sValueUnit(other);
    EXPECT_EQ(control.sValueUnit(), "in") << other;
  }
  control.sValueUnit(Value());
  EXPECT_EQ(control.sValueUnit(), "in");
}

TEST_F(LookLine, KeepsAUnitThatIsChosenAndNotOneThatStandsAlready) {
  keep(kSection, "Units", "m");
  scLookLine other;
  other.sValueLen("1.5");
  other.sValueUnit("m");
  EXPECT_EQ(other.sValueLen(), "1.5");
  EXPECT_FALSE(other.bDirty());
  other.cboUnit.userSelect(1);
  EXPECT_TRUE(other.bDirty());
  EXPECT_EQ(kept(kSection, "Units"), "in");
}

TEST_F(LookLine, FindsTheKeptUnitCaseAside) {
  keep(kSection, "Units", " Cm ");
  EXPECT_EQ(scLookLine().sValueUnit(), "cm");
}

TEST_F(LookLine, BringsALengthThatStandsToTheUnitOfTheLogin) {
  control.ZORUserLogin("ann");
  keep(kSection, "Units", "m");
  control.ZORUserLogin("bob");
  EXPECT_EQ(control.sValueUnit(), "ft");
  control.sValueLen("100");
  control.ZORUserLogin("ann");
  EXPECT_EQ(control.sValueUnit() + " " + control.sValueLen(), "m 30.48");
  control.cboUnit.userSelect(0);
  EXPECT_EQ(control.sValueLen(), "100.00");
}

TEST_F(LookLine, IsNotChangedByALogin) {
  keep(kSection, "Units", "m");
  control.ZORUserLogin("");
  EXPECT_EQ(control.sValueUnit() + control.sValueLen(), "m");
  EXPECT_FALSE(control.bDirty());
  control.sValueLen("1");
  control.cboUnit.userSelect(3);
  EXPECT_EQ(control.sValueLen(), "100.00");
}

TEST_F(LookLine, ReadsALengthAsFarAsItIsANumberWhereTheUnitChanges) {
  control.sValueLen("12 or so");
  control.cboUnit.userSelect(1);
  EXPECT_EQ(control.sValueLen(), "144.00");
}

TEST_F(LookLine, ShowsEveryPlaceOfAVerySmallNumber) {
  EXPECT_EQ(FreqFormat(1e-20), "0." + std::string(22, '0'));
  control.sValueFreq(2.5e-7);
  EXPECT_EQ(control.lblFreq.caption(), "0.000000250MHz");
  EXPECT_EQ(FreqFormat(std::numeric_limits<double>::infinity()), "#0.00");
}

TEST_F(LookLine, ReadsABlankFrequencyAsZero) {
  control.sValueFreq("");
  EXPECT_EQ(control.lblFreq.caption(), "0.00MHz");
  EXPECT_EQ(control.sValueFreq(), "0");
}

TEST_F(LookLine, ShowsANullAsTheWordInTheFileAlone) {
  show();
  control.sValueLoss("3");
  const Value null;
  control.sValueFile(null);
  control.sValueID(null);
  control.sValueDesc(null);
  control.sValueLen(null);
  control.sValueLoss(null);
  EXPECT_EQ(control.sValueFile() + "|" + control.sValueID() + "|" + control.sValueDesc() + "|" + control.sValueLen() +
                "|" + control.sValueLoss(),
            "NULL||||");
}

TEST_F(LookLine, FormatsALossThatIsPutAndLeavesALengthAsItStands) {
  control.sValueLoss("2.5");
  control.sValueLen(" 2.5 ");
  EXPECT_EQ(control.sValueLoss() + " " + control.txtLen.text(), "2.50  2.5 ");
  EXPECT_EQ(control.sValueLen(), "2.5");
  control.sValueLoss("much");
  EXPECT_EQ(control.sValueLoss(), "much");
}

TEST_F(LookLine, IsDirtyFromTheFirstKeyThatPassesInALength) {
  EXPECT_FALSE(control.txtLen.userKey('x'));
  EXPECT_FALSE(control.bDirty());
  EXPECT_TRUE(control.txtLen.userKey('5'));
  EXPECT_TRUE(control.bDirty());
}

TEST_F(LookLine, LogsAUnitThatCannotBeKept) {
  suite.folder().write("QVDEFAULTS_dir.INI/in the way", "");
  control.ZORUserLogin("dir");
  control.sValueLen("1");
  control.cboUnit.userSelect(1);
  EXPECT_EQ(control.sValueLen(), "12.00");
  EXPECT_NE(suite.log().find("The choice 'Units' of section 'Line Lookup' could not be kept"), std::string::npos);
}

TEST_F(LookLine, MayBeDroppedByItsHostOnAnAlert) {
  const std::function<void(scLookLine&)> acts[] = {
      [](scLookLine& line) { line.txtLen.userBlur(); }, [](scLookLine& line) { line.cboUnit.userSelect(2); },
      [](scLookLine& line) { line.sValueFreq(7); },     [](scLookLine& line) { line.Freq(7); },
      [](scLookLine& line) { line.RefreshAlerts(); },
  };
  for (const auto& act : acts) {
    auto own = std::make_unique<scLookLine>();
    own->sValueFile("LMSGONE1");
    own->sValueID("L1");
    own->sValueLen("5");
    int raised = 0;
    own->ChangeLine.listen([&] { ++raised; });
    own->NewAlert.listen([&] { own.reset(); });
    act(*own);
    EXPECT_EQ(own, nullptr);
    EXPECT_EQ(raised, 0);
  }
}

}  // namespace
}  // namespace vantrelix

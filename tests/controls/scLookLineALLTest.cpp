#include <algorithm>
#include <functional>
#include <memory>

#include "controls/LookLineAllFixture.h"

namespace vantrelix {
namespace {

constexpr const char* kSection = "Line Lookup ALL";

class LookLineAll : public test::LookLineAllTest {};

TEST_F(LookLineAll, ListsEveryLineOfEveryLibrary) {
  makeLibrary("T0002");
  addLine("T0002", "M1", Value(), {{1, 1}, {2, 2}});
  control.InitLines();
  EXPECT_EQ(control.cboLinesTX.entries(),
            (std::vector<std::string>{"Seven eighths foam", "Half inch foam", "NO DESCRIPTION"}));
  std::string file, id;
  control.GetLineFileID("NO DESCRIPTION", file, id);
  EXPECT_EQ(file + " " + id, "LMST0002 M1");
}

TEST_F(LookLineAll, LogsALineWithoutAnId) {
  addLine("T0001", Value(), "Nameless", {});
  control.InitLines();
  EXPECT_EQ(control.cboLinesTX.entries().size(), 2U);
  EXPECT_NE(suite.log().find("Bad TX line in LMST0001"), std::string::npos) << suite.log();
  EXPECT_NE(suite.log().find("BLANK ID"), std::string::npos);
}

TEST_F(LookLineAll, ComputesTheLossOfTheChosenLine) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(1);
  length("100");
  EXPECT_EQ(control.sValueFile() + " " + control.sValueID(), "LMST0001 L2");
  EXPECT_EQ(control.sValueDesc(), "Half inch foam");
  EXPECT_EQ(control.sValueLoss(), "2.00");
  control.sValueFreq(1000);
  EXPECT_EQ(control.sValueLoss(), "20.00");
  choose(0);
  EXPECT_EQ(control.sValueLoss(), "10.00");
}

TEST_F(LookLineAll, SaysInvalidFreqForANull) {
  control.sValueFreq(Value());
  EXPECT_EQ(control.lblFreq.caption(), "Invalid Freq");
  control.sValueFreq(0.5);
  EXPECT_EQ(control.lblFreq.caption(), "0.500MHz");
}

TEST_F(LookLineAll, AlertsWhereTheLibraryHasBeenDeleted) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  platform::current().remove(table("LMST0001"));
  length("10");
  EXPECT_EQ(control.Alerts(), "Transmission line library not found:\r\nLMST0001");
  EXPECT_EQ(control.sValueLoss(), "0.00");
  EXPECT_EQ(alerts, 1);
}

TEST_F(LookLineAll, ClearBlanksFileIdLengthAndLoss) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  length("100");
  control.Clear();
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueLen() + control.sValueLoss(), "");
  EXPECT_EQ(control.sValueDesc(), "Seven eighths foam");
}

TEST_F(LookLineAll, HidesItsWorkingValues) {
  EXPECT_FALSE(control.txtFile.visible());
  EXPECT_FALSE(control.txtID.visible());
}

TEST_F(LookLineAll, OfTwoLinesOfOneNameTakesTheOneThatIsChosen) {
  makeLibrary("T0002");
  addLine("T0002", "M1", "Half inch foam", {{100, 3}, {1000, 30}});
  control.ZORUserLogin("ann");
  choose(2);
  EXPECT_EQ(control.sValueFile() + " " + control.sValueID(), "LMST0002 M1");
}

TEST_F(LookLineAll, TakesNoLetterAsALength) {
  control.ZORUserLogin("ann");
  int key = 'x';
  control.txtLen.keyPress(key);
  EXPECT_EQ(key, 0);
  key = '7';
  control.txtLen.keyPress(key);
  EXPECT_EQ(key, '7');
}

TEST_F(LookLineAll, HasNoLineForADescriptionThatIsInNoLibrary) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  length("100");
  control.sValueDesc("Half inch foam");
  EXPECT_EQ(control.sValueID() + " " + control.sValueLoss(), "L2 2.00");
  EXPECT_EQ(kept(kSection, "LineType"), "Half inch foam");
  control.sValueDesc("Long ago");
  EXPECT_EQ(control.cboLinesTX.listIndex(), -1);
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueLoss(), "");
  EXPECT_EQ(kept(kSection, "LineType"), "Half inch foam");
}

TEST_F(LookLineAll, FollowsALengthAndAUnitThatArePut) {
  control.ZORUserLogin("ann");
  control.sValueFreq(100);
  choose(0);
  control.sValueLen("200");
  EXPECT_EQ(control.sValueLoss(), "2.00");
  control.sValueUnit("m");
  EXPECT_EQ(control.sValueLen() + control.sValueUnit() + control.sValueLoss(), "60.96m2.00");
  control.sValueUnit("m");
  EXPECT_EQ(control.sValueLen(), "60.96");
}

TEST_F(LookLineAll, TakesItsValuesAsText) {
  control.sValueFile(" LMST0001 ");
  control.sValueID(" L1 ");
  control.sValueLen(Value());
  control.sValueLoss("1.5");
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueLen() + control.sValueLoss(), "LMST0001L11.50");
  EXPECT_EQ(control.sValueFreq(), "-88");
  control.sValueFreq("450 MHz");
  EXPECT_EQ(control.sValueFreq(), "450");
  EXPECT_EQ(control.lblFreq.caption(), "450.00MHz");
}

TEST_F(LookLineAll, MarksTheLengthAndLocksTheLoss) {
  int marked = 0;
  const Connection heard = control.txtLen.selectAll.connect([&] { ++marked; });
  control.txtLen.userFocus();
  EXPECT_EQ(marked, 1);
  EXPECT_FALSE(control.txtLoss.userKey('3'));
}

TEST_F(LookLineAll, ItsTabKeyGoesThroughListLengthUnitAndLoss) {
  for (Widget* widget : control.widgets()) widget->setTabIndex(-1);
  control.ZORUserLogin("");
  EXPECT_EQ(control.cboLinesTX.tabIndex(), 0);
  EXPECT_EQ(control.txtLen.tabIndex(), 1);
  EXPECT_EQ(control.cboUnit.tabIndex(), 2);
  EXPECT_EQ(control.txtLoss.tabIndex(), 3);
  EXPECT_EQ(scLookLineALL().txtLoss.tabIndex(), 3);
}

TEST_F(LookLineAll, HasRoomForEachOfItsWidgetsAtAnyWidth) {
  const int least = control.width();
  for (const int wide : {100, 9000}) {
    control.setSize(wide, control.height());
    EXPECT_EQ(control.width(), std::max(wide, least));
    EXPECT_EQ(control.cboLinesTX.geometry().right() + 60, control.width());
    for (const Widget* widget : control.widgets()) {
      if (!widget->visible()) continue;
      const Rectangle& place = widget->geometry();
      EXPECT_TRUE(place.width > 0 && place.right() <= control.width() && place.bottom() <= control.height())
          << widget->name();
    }
  }
}

TEST_F(LookLineAll, MayBeDroppedByItsHostOnAnAlert) {
  const std::function<void(scLookLineALL&)> acts[] = {
      [](scLookLineALL& line) { line.ZORUserLogin("ann"); },
      [](scLookLineALL& line) { line.cboLinesTX.userSelect(1); },
      [](scLookLineALL& line) { line.cboUnit.userSelect(1); },
      [](scLookLineALL& line) { line.txtLen.userBlur(); },
      [](scLookLineALL& line) { line.sValueFreq(7); },
  };
  control.ZORUserLogin("ann");
  choose(0);
  length("5");
  for (const auto& act : acts) {
    auto own = std::make_unique<scLookLineALL>();
    own->ZORUserLogin("ann");
    own->NewAlert.listen([&] { own.reset(); });
    act(*own);
    EXPECT_EQ(own, nullptr);
  }
}

}  // namespace
}  // namespace vantrelix

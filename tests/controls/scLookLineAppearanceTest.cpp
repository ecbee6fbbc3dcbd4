// What the line lookup control looks like: places, colours, locks, captions and the order of the tab key.
#include "controls/LookLineFixture.h"

namespace vantrelix {
namespace {

class LookLineAppearance : public test::LookLineTest {};

TEST_F(LookLineAppearance, IsLockedAndColouredAsTheAntennaControl) {
  control.Locked(true);
  EXPECT_TRUE(control.Locked() && control.txtLen.locked() && control.txtLoss.locked() && control.cboUnit.locked());
  EXPECT_FALSE(control.cmdLook.enabled());
  EXPECT_TRUE(control.BackLtGray());
  EXPECT_EQ(control.txtLoss.backColor(), color::buttonFace);
  control.Locked(false);
  EXPECT_FALSE(control.Locked() || control.txtLen.locked() || control.txtLoss.locked() || control.cboUnit.locked());
  EXPECT_TRUE(control.cmdLook.enabled() && control.BackWhite());
  control.BackRed(true);
  EXPECT_TRUE(control.BackRed());
  EXPECT_EQ(control.cboUnit.backColor(), color::red);
  EXPECT_FALSE(control.txtFile.enabled() || control.txtID.enabled());
}

TEST_F(LookLineAppearance, MarksTheTextOfABoxThatGetsTheFocus) {
  for (TextBox* box : {&control.txtDesc, &control.txtLen, &control.txtLoss}) {
    int marked = 0;
    const Connection heard = box->selectAll.connect([&] { ++marked; });
    box->userFocus();
    EXPECT_EQ(marked, 1) << box->name();
  }
}

TEST_F(LookLineAppearance, ItsTabKeyGoesThroughWhatTheUserMayChange) {
  for (Widget* widget : control.widgets()) widget->setTabIndex(-1);
  control.ZORUserLogin("");
  std::string order;
  for (const Widget* widget : std::initializer_list<const Widget*>{&control.txtDesc, &control.txtLen, &control.cboUnit,
                                                                   &control.cmdLook, &control.txtLoss}) {
    order += std::to_string(widget->tabIndex());
  }
  EXPECT_EQ(order, "01234");
  EXPECT_EQ(scLookLine().txtLoss.tabIndex(), 4);
  EXPECT_EQ(control.txtFile.tabIndex(), -1);
}

TEST_F(LookLineAppearance, SharesItsWidthBetweenDescriptionFileAndIdAsTheAntennaControlDoes) {
  const int least = control.width();
  control.setSize(9000, control.height());
  const Rectangle& desc = control.txtDesc.geometry();
  const Rectangle& file = control.txtFile.geometry();
  const Rectangle& id = control.txtID.geometry();
  EXPECT_EQ(desc.width, 9000 - desc.left - 60);
  EXPECT_EQ(file.width, desc.width / 2 - 30);
  EXPECT_EQ(id.width, file.width);
  EXPECT_EQ(id.left, file.right() + 30);
  control.setSize(100, control.height());
  EXPECT_EQ(control.width(), least);
  EXPECT_EQ(desc.right() + 60, least);
}

TEST_F(LookLineAppearance, HasRoomForEachOfItsWidgets) {
  for (const Widget* one : control.widgets()) {
    const Rectangle& place = one->geometry();
    EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.width > 0 && place.height > 0) << one->name();
    EXPECT_TRUE(place.right() <= control.width() && place.bottom() <= control.height()) << one->name();
    for (const Widget* other : control.widgets()) {
      const Rectangle& by = other->geometry();
      const bool apart =
          place.right() <= by.left || by.right() <= place.left || place.bottom() <= by.top || by.bottom() <= place.top;
      EXPECT_TRUE(one == other || apart) << one->name() << " " << other->name();
    }
  }
}

TEST_F(LookLineAppearance, NamesItsBoxes) {
  std::string captions;
  for (const Widget* widget : control.widgets()) {
    if (const auto* label = dynamic_cast<const Label*>(widget)) captions += label->caption() + "|";
  }
  EXPECT_EQ(captions, "Line|Length|Loss|dB||");
  EXPECT_EQ(control.cmdLook.caption(), "...");
  for (const Widget* widget :
       std::initializer_list<const Widget*>{&control.txtFile, &control.txtID, &control.txtDesc, &control.txtLen,
                                            &control.cboUnit, &control.txtLoss, &control.lblFreq, &control.cmdLook}) {
    EXPECT_NE(widget->toolTip(), "") << widget->name();
  }
  EXPECT_FALSE(control.Command1.visible());
}

TEST_F(LookLineAppearance, PaintsItsBoxesAndLeavesFileIdAndGroundAlone) {
  EXPECT_EQ(control.txtLen.backColor(), color::windowBackground);
  control.BackRed(true);
  for (const Widget* box :
       std::initializer_list<const Widget*>{&control.txtDesc, &control.txtLen, &control.cboUnit, &control.txtLoss}) {
    EXPECT_EQ(box->backColor(), color::red) << box->name();
  }
  for (const Widget* other : std::initializer_list<const Widget*>{&control, &control.txtFile, &control.txtID,
                                                                  &control.lblFreq, &control.cmdLook}) {
    EXPECT_EQ(other->backColor(), color::buttonFace) << other->name();
  }
}

}  // namespace
}  // namespace vantrelix

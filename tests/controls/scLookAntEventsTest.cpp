#include "controls/LookAntFixture.h"

namespace vantrelix {
namespace {

using Keys = test::LookAntTest;
using Leaving = test::LookAntTest;
using Clicks = test::LookAntTest;
using CmdClear = test::LookAntLibraryTest;
using Host = test::LookAntLibraryTest;

TEST_F(Keys, EachTextBoxSelectsAllItsTextOnFocus) {
  for (TextBox* box : {&control.txtDesc, &control.txtGain, &control.txtOrient, &control.txtETilt, &control.txtMTilt,
                       &control.txtMAzim}) {
    int selections = 0;
    box->selectAll.listen([&] { ++selections; });
    box->userFocus();
    EXPECT_EQ(selections, 1) << box->name();
  }
}

TEST_F(Keys, TheDescriptionTakesEveryKeyAndIsDirtyFromIt) {
  EXPECT_FALSE(control.bDirty());
  EXPECT_TRUE(control.txtDesc.userKey(0x20AC));
  EXPECT_TRUE(control.bDirty());
  control.txtDesc.userType("Dipole N/S \\ 3");
  EXPECT_EQ(control.sValueDesc(), "Dipole N/S \\ 3");
}

TEST_F(Keys, TheNumericBoxesRefuseEverythingButNumbersAndARefusedKeyIsNoChange) {
  for (TextBox* box : {&control.txtGain, &control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim}) {
    for (const int key : std::initializer_list<int>{'N', 's', 'E', 'w', '/', '\\', ' ', ',', 'a', 0xE9})
      EXPECT_FALSE(box->userKey(key)) << key;
    EXPECT_FALSE(control.bDirty()) << box->name();
  }
  for (TextBox* box : {&control.txtGain, &control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim}) {
    for (const int key : std::initializer_list<int>{'0', '9', '.', '-', '+', kBackspaceKey})
      EXPECT_TRUE(box->userKey(key)) << key;
  }
}

TEST_F(Keys, ASurvivingKeyOfEachNumericBoxMakesTheControlDirty) {
  for (TextBox scLookAnt::*box :
       {&scLookAnt::txtGain, &scLookAnt::txtOrient, &scLookAnt::txtETilt, &scLookAnt::txtMTilt, &scLookAnt::txtMAzim}) {
    scLookAnt fresh;
    (fresh.*box).userKey('1');
    EXPECT_TRUE(fresh.bDirty());
  }
}

TEST_F(Leaving, TheGainIsReformattedAlwaysAndToldWhenDirty) {
  control.txtGain.setText("5");
  control.txtGain.userBlur();
  EXPECT_EQ(control.txtGain.text(), "5.00");
  EXPECT_EQ(heard(), "");
  enter(control.txtGain, "7.5");
  EXPECT_EQ(control.txtGain.text(), "7.50");
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(Leaving, TheEventOfTheGainComesBeforeItsReformatting) {
  std::string atEvent;
  control.ChangeAntenna.listen([&] { atEvent = control.txtGain.text(); });
  enter(control.txtGain, "7.5");
  EXPECT_EQ(atEvent, "7.5");
}

TEST_F(Leaving, TheMountingBoxesTellTheMountingWhenDirty) {
  TextBox* const boxes[] = {&control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim};
  for (TextBox* box : boxes) box->userBlur();
  EXPECT_EQ(heard(), "");
  for (TextBox* box : boxes) {
    enter(*box, "12");
    EXPECT_EQ(heard(), "mounting ") << box->name();
  }
}

TEST_F(Leaving, TheTextsOfTheAntennaDoNothing) {
  control.txtDesc.userType("x");
  for (TextBox* box : {&control.txtDesc, &control.txtFile, &control.txtID}) box->userBlur();
  EXPECT_EQ(heard(), "");
}

TEST_F(Leaving, ATiltOfUpTo179IsKept) {
  for (TextBox* box : {&control.txtETilt, &control.txtMTilt}) {
    for (const char* tilt : {"179", "-179", "0", ""}) {
      enter(*box, tilt);
      EXPECT_EQ(box->text(), tilt);
    }
  }
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(Leaving, ALargerTiltIsRefusedAndTheBoxEmptied) {
  for (TextBox* box : {&control.txtETilt, &control.txtMTilt}) {
    for (const char* tilt : {"179.01", "-180"}) {
      box->setText("3");
      enter(*box, tilt);
      EXPECT_EQ(box->text(), "") << tilt;
    }
  }
  ASSERT_EQ(screen.shown().size(), 4u);
  const Message& message = screen.shown()[0].message;
  EXPECT_EQ(message.title, "Inverted Antenna?");
  EXPECT_EQ(message.text, "To invert the antenna, use the 'Inverted' checkbox.");
  EXPECT_EQ(message.icon, MsgIcon::information);
}

TEST_F(Leaving, AnOrientationOrAzimuthMayBeLarger) {
  enter(control.txtOrient, "350");
  enter(control.txtMAzim, "350");
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(Clicks, PolarisationAndInversionMakeTheControlDirtyAndTellTheMounting) {
  control.cboPol.userSelect(2);
  EXPECT_TRUE(control.bDirty());
  EXPECT_EQ(heard(), "mounting ");
  scLookAnt another;
  another.chkInvert.userClick();
  EXPECT_TRUE(another.bDirty());
  control.chkInvert.userClick();
  EXPECT_EQ(heard(), "mounting ");
}

TEST_F(CmdClear, AsksWithCancelAsTheDefault) {
  control.cmdClear.userClick();
  ASSERT_EQ(screen.shown().size(), 1u);
  const Message& message = screen.shown()[0].message;
  EXPECT_EQ(message.title, "Remove Pattern");
  EXPECT_EQ(message.text,
            "This will clear the link to the antenna library and remove the pattern information from this facility."
            "\r\n\r\nClick OK to remove the antenna pattern information.\r\n"
            "Click CANCEL to leave the antenna pattern information.");
  EXPECT_EQ(message.buttons, MsgButtons::okCancel);
  EXPECT_EQ(message.icon, MsgIcon::none);
  EXPECT_EQ(screen.shown()[0].answer, MsgAnswer::cancel);
}

TEST_F(CmdClear, CancelLeavesEverything) {
  addPanel();
  show();
  const std::size_t lines = control.picHor.lines().size();
  control.cmdClear.userClick();
  EXPECT_EQ(control.sValueID(), "T00010000001");
  EXPECT_EQ(control.sValueGain(), "12.50");
  EXPECT_EQ(control.picHor.lines().size(), lines);
  EXPECT_TRUE(control.txtDesc.locked());
  EXPECT_TRUE(control.txtOrient.enabled());
  EXPECT_EQ(heard(), "");
}

TEST_F(CmdClear, OkDropsTheAntennaAndItsPreviews) {
  addPanel();
  show();
  const bool dirty = control.bDirty();
  screen.answers = {MsgAnswer::ok};
  control.cmdClear.userClick();
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueDesc() + control.sValueGain(), "");
  EXPECT_TRUE(control.picHor.lines().empty());
  EXPECT_FALSE(control.bPatAz());
  EXPECT_FALSE(control.txtDesc.locked());
  EXPECT_EQ(control.bDirty(), dirty);
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(CmdClear, OkSetsTheMountingBackAndDisablesIt) {
  control.sValuePol("Vertical");
  control.sValueInvert(true);
  screen.answers = {MsgAnswer::ok};
  control.cmdClear.userClick();
  for (TextBox* box : {&control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim}) {
    EXPECT_EQ(box->text(), "0") << box->name();
    EXPECT_FALSE(box->enabled()) << box->name();
  }
  EXPECT_FALSE(control.sValueInvert());
  EXPECT_FALSE(control.chkInvert.enabled());
  EXPECT_EQ(control.cboPol.listIndex(), -1);
  EXPECT_FALSE(control.cboPol.enabled());
  EXPECT_TRUE(control.cboPol.locked());
}

TEST_F(CmdClear, GivesTheEventLoopATurnBeforeTheEvent) {
  screen.answers = {MsgAnswer::ok};
  int turnsAtEvent = -1;
  control.ChangeAntenna.listen([&] { turnsAtEvent = screen.turns(); });
  control.cmdClear.userClick();
  EXPECT_EQ(turnsAtEvent, 1);
}

TEST_F(CmdClear, AHostMayDropTheControlInThatTurn) {
  auto dropped = std::make_unique<scLookAnt>();
  int told = 0;
  dropped->ChangeAntenna.listen([&] { ++told; });
  screen.answers = {MsgAnswer::ok};
  screen.onTurn = [&] { dropped.reset(); };
  dropped->cmdClear.userClick();
  EXPECT_FALSE(dropped);
  EXPECT_EQ(told, 0);
}

TEST_F(CmdClear, AHostMayDropTheControlWhileItAsks) {
  auto dropped = std::make_unique<scLookAnt>();
  screen.policy = [&](const Message&) {
    dropped.reset();
    return MsgAnswer::ok;
  };
  dropped->cmdClear.userClick();
  EXPECT_FALSE(dropped);
  EXPECT_EQ(screen.turns(), 0);
}

using Event = Signal<> scLookAnt::*;

// A control that its host drops in the event, on a file whose antenna is missing, so that reading it raises an alert.
class DoomedControl {
 public:
  explicit DoomedControl(Event event) : control_(std::make_unique<scLookAnt>()) {
    control_->sValueFile("AMSNONE1");
    control_->sValueID("1");
    ((*control_).*event).listen([this] { control_.reset(); });
  }
  scLookAnt& operator*() { return *control_; }
  bool gone() const { return !control_; }

 private:
  std::unique_ptr<scLookAnt> control_;
};

TEST_F(Host, MayDropTheControlInTheEventOfABoxThatIsLeft) {
  struct Case {
    TextBox scLookAnt::*box;
    Event event;
  };
  const Case cases[] = {
      {&scLookAnt::txtGain, &scLookAnt::ChangeAntenna},   {&scLookAnt::txtOrient, &scLookAnt::ChangeMounting},
      {&scLookAnt::txtETilt, &scLookAnt::ChangeMounting}, {&scLookAnt::txtMTilt, &scLookAnt::ChangeMounting},
      {&scLookAnt::txtMAzim, &scLookAnt::ChangeMounting}, {&scLookAnt::txtOrient, &scLookAnt::NewAlert},
      {&scLookAnt::txtETilt, &scLookAnt::NewAlert},
  };
  for (const Case& drop : cases) {
    DoomedControl doomed(drop.event);
    enter((*doomed).*drop.box, "180");
    EXPECT_TRUE(doomed.gone());
  }
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(Host, MayDropTheControlInTheEventOfAClick) {
  DoomedControl polarised(&scLookAnt::ChangeMounting);
  (*polarised).cboPol.userSelect(1);
  DoomedControl inverted(&scLookAnt::ChangeMounting);
  (*inverted).chkInvert.userClick();
  DoomedControl alerted(&scLookAnt::NewAlert);
  (*alerted).chkInvert.userClick();
  DoomedControl sized(&scLookAnt::ChangeSize);
  (*sized).lblPreview.userClick();
  EXPECT_TRUE(polarised.gone() && inverted.gone() && alerted.gone() && sized.gone());
}

TEST_F(Host, MayDropTheControlWhileAFailureOfTheReadIsShown) {
  addPanel();
  suite.folder().write("ANTENNAS/AMST0001.DBF", "no table");
  auto dropped = std::make_unique<scLookAnt>();
  dropped->sValueFile("AMST0001");
  dropped->sValueID("T00010000001");
  screen.policy = [&](const Message&) {
    dropped.reset();
    return MsgAnswer::ok;
  };
  dropped->GetAntPat();
  EXPECT_FALSE(dropped);
}

TEST_F(Host, MayDropTheControlWhileATiltIsRefused) {
  auto dropped = std::make_unique<scLookAnt>();
  screen.policy = [&](const Message&) {
    dropped.reset();
    return MsgAnswer::ok;
  };
  enter(dropped->txtETilt, "180");
  EXPECT_FALSE(dropped);
}

TEST_F(Host, MaySetTheTiltInTheEventBeforeItIsTested) {
  control.ChangeMounting.listen([&] { control.sValueEtilt("3"); });
  enter(control.txtETilt, "180");
  EXPECT_EQ(control.sValueEtilt(), "3");
  EXPECT_TRUE(screen.shown().empty());
}

}  // namespace
}  // namespace vantrelix

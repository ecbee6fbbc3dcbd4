// The antenna description control, and the empty control.
#include <gmock/gmock.h>

#include "controls/LookAntDescFixture.h"
#include "controls/scAntPreview.h"
#include "foundation/text.h"

namespace vantrelix {
namespace {

using test::EditorOpened;
using test::LibraryUser;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using LookAntDesc = test::LookAntDescTest;
using D = scLookAnt_Desc;

constexpr const char* kPanel = "T00010000001";

// --- Widgets and values.

TEST_F(LookAntDesc, IsOneLineWithTwoButtons) {
  EXPECT_EQ(desc.widgets(), (std::vector<Widget*>{&desc.txtDesc, &desc.cmdClear, &desc.cmdLook}));
  EXPECT_EQ(desc.cmdLook.caption(), "...");
  EXPECT_EQ(desc.cmdLook.toolTip(), "Lookup Antenna from Libraries");
  EXPECT_EQ(desc.cmdClear.toolTip(), "Clear antenna pattern");
  EXPECT_EQ(desc.txtDesc.toolTip(), "Antenna Description");
  EXPECT_EQ(desc.txtDesc.tabIndex(), 0);
  EXPECT_EQ(desc.cmdClear.tabIndex(), 1);
  EXPECT_EQ(desc.cmdLook.tabIndex(), 2);
  EXPECT_TRUE(desc.Valid());
}

TEST_F(LookAntDesc, HoldsFileAndIdOutOfSightAndTrimsWhatItGives) {
  put(" AMST0001 ", " 7 ", " Whip ");
  EXPECT_EQ(shown(), "AMST0001|7|Whip");
  desc.sValueFile(Value());
  desc.sValueID(Value());
  desc.sValueDesc(Value());
  EXPECT_EQ(shown(), "NULL||");
}

TEST_F(LookAntDesc, ADescriptionWithoutALookUpLeavesFileAndId) {
  put("AMST0001", kPanel, "Panel");
  desc.sValueDesc("Mine");
  EXPECT_EQ(shown(), "AMST0001|T00010000001|Mine");
  desc.txtDesc.userType("Typed");
  EXPECT_EQ(shown(), "AMST0001|T00010000001|Typed");
}

TEST_F(LookAntDesc, SelectsAllOnFocusAndAKeyMakesItDirtyAlone) {
  int selections = 0;
  desc.txtDesc.selectAll.listen([&] { ++selections; });
  desc.txtDesc.userFocus();
  EXPECT_EQ(selections, 1);
  EXPECT_FALSE(desc.bDirty());
  EXPECT_TRUE(desc.txtDesc.userKey('x'));
  EXPECT_TRUE(desc.bDirty());
  desc.txtDesc.userBlur();
  EXPECT_EQ(events(), "");
}

TEST_F(LookAntDesc, ClearBlanksInSilence) {
  put("AMST0001", kPanel, "Panel");
  desc.Clear(true);
  EXPECT_EQ(shown(), "||");
  EXPECT_EQ(events(), "");
}

TEST_F(LookAntDesc, GathersAlerts) {
  desc.Alerts("a");
  desc.Alerts("b");
  EXPECT_EQ(desc.Alerts(), "a\r\nb");
  desc.Alerts(" ");
  EXPECT_EQ(desc.Alerts(), "");
  EXPECT_EQ(events(), "alert alert ");
}

TEST_F(LookAntDesc, EnabledIsItsOwnStateAndTheToolTipTheDescriptions) {
  EXPECT_TRUE(desc.Enabled());
  desc.Enabled(false);
  EXPECT_FALSE(desc.Enabled() || desc.enabled());
  EXPECT_TRUE(desc.txtDesc.enabled());
  desc.sToolTipText("Receive antenna");
  EXPECT_EQ(desc.txtDesc.toolTip(), "Receive antenna");
}

TEST_F(LookAntDesc, TheUsersLoginNamesHisDefaults) {
  desc.txtDesc.setTabIndex(9);
  desc.ZORUserLogin("ann");
  EXPECT_THAT(getDefaultsINI(), HasSubstr("ann"));
  EXPECT_EQ(desc.txtDesc.tabIndex(), 0);
}

TEST_F(LookAntDesc, CreationWarnsWhenTheRegionalCharactersHaveChanged) {
  setDefault("CONFIG", "Last Decimal", "#");
  const D another;
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.title, "Regional Settings Changed");
}

// --- Appearance.

TEST_F(LookAntDesc, LocksWhatTheUserMayChange) {
  desc.Locked(true);
  EXPECT_TRUE(desc.Locked() && desc.txtDesc.locked());
  EXPECT_FALSE(desc.cmdLook.enabled() || desc.cmdClear.enabled());
  EXPECT_TRUE(desc.BackLtGray());
  desc.Locked(false);
  EXPECT_FALSE(desc.Locked());
  EXPECT_TRUE(desc.cmdLook.enabled() && desc.cmdClear.enabled());
  EXPECT_TRUE(desc.BackWhite());
  desc.BackRed(true);
  EXPECT_TRUE(desc.BackRed());
}

TEST_F(LookAntDesc, WhatTheLibraryOwnsStaysLockedAndGrey) {
  desc.LookupOnly(true);
  EXPECT_TRUE(desc.BackLtGray());
  desc.BackWhite(true);
  EXPECT_TRUE(desc.BackLtGray());
  desc.Locked(false);
  EXPECT_TRUE(desc.Locked());
  EXPECT_TRUE(desc.cmdLook.enabled());
  desc.LookupOnly(false);
  EXPECT_FALSE(desc.Locked());
  EXPECT_TRUE(desc.BackWhite());
}

TEST_F(LookAntDesc, FillsItsWidthFromTheRightEdge) {
  const int least = desc.width();
  for (const int width : {least, least + 3000}) {
    desc.setSize(width, desc.height());
    EXPECT_EQ(desc.cmdLook.geometry().right(), width - 60);
    EXPECT_LT(desc.cmdClear.geometry().right(), desc.cmdLook.geometry().left);
    EXPECT_LT(desc.txtDesc.geometry().right(), desc.cmdClear.geometry().left);
    EXPECT_GT(desc.txtDesc.geometry().right(), desc.cmdClear.geometry().left - 100);
    EXPECT_EQ(desc.txtDesc.geometry().left, 60);
  }
  desc.setSize(100, desc.height());
  EXPECT_EQ(desc.width(), least);
  EXPECT_EQ(desc.cmdLook.geometry().right(), least - 60);
}

// --- The buttons.

TEST_F(LookAntDesc, TheLookUpIsGivenWhatIsStored) {
  EditorOpened editor;
  editor.watch(screen);
  put("AMST0001", kPanel, "d");
  desc.sValueFreq(851.5);
  desc.AntFormMode(eLookup);
  desc.cmdLook.userClick();
  EXPECT_EQ(editor.mode + "|" + editor.freq + "|" + editor.id, "LOOKUP|851.5|T00010000001");
  EXPECT_EQ(trim(editor.file), "AMST0001.DBF");
  EXPECT_EQ(shown(), "AMST0001|T00010000001|d");
  EXPECT_FALSE(desc.bDirty());
  EXPECT_EQ(events(), "");
  desc.AntFormMode(eEdit);
  desc.cmdLook.userClick();
  EXPECT_EQ(editor.mode, " ");
}

TEST_F(LookAntDesc, TheLookUpPutsTheThreeValuesAndTellsTheHostAfterATurn) {
  LibraryUser::takes(screen, 0);
  int turnsBefore = 0, turnsAtEvent = 0;
  bool dirtyAtEvent = false;
  screen.onModal["frmHDAntEditor"] = [&, act = screen.onModal["frmHDAntEditor"]](Form& editor) {
    act(editor);
    turnsBefore = screen.turns();
  };
  desc.ChangeAntenna.listen([&] {
    turnsAtEvent = screen.turns();
    dirtyAtEvent = desc.bDirty();
  });
  desc.cmdLook.userClick();
  EXPECT_EQ(shown(), "AMST0001|T00010000001|PANEL");
  EXPECT_TRUE(dirtyAtEvent);
  EXPECT_EQ(turnsAtEvent, turnsBefore + 1);
  EXPECT_FALSE(desc.txtDesc.locked());
  EXPECT_EQ(events(), "antenna ");
}

TEST_F(LookAntDesc, HDAntLookLeavesTheControl) {
  LibraryUser::takes(screen, 0);
  double freq = 0;
  std::string file, id, description;
  EXPECT_TRUE(desc.HDAntLook(freq, file, id, description));
  EXPECT_EQ(file + "|" + id + "|" + description, "AMST0001|T00010000001|PANEL");
  EXPECT_EQ(shown(), "||");
  EXPECT_EQ(events(), "");
}

TEST_F(LookAntDesc, AClearAnsweredWithCancelChangesNothing) {
  put("AMST0001", kPanel, "Panel");
  desc.LookupOnly(true);
  desc.cmdClear.userClick();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.title, "Remove Pattern");
  EXPECT_EQ(screen.shown()[0].message.buttons, MsgButtons::okCancel);
  EXPECT_EQ(screen.shown()[0].answer, MsgAnswer::cancel);
  EXPECT_EQ(shown(), "AMST0001|T00010000001|Panel");
  EXPECT_TRUE(desc.txtDesc.locked());
  EXPECT_EQ(screen.turns(), 0);
  EXPECT_EQ(events(), "");
}

TEST_F(LookAntDesc, AClearBlanksTheAntennaAndTellsTheHostAfterATurn) {
  put("AMST0001", kPanel, "Panel");
  desc.LookupOnly(true);
  screen.answers = {MsgAnswer::ok};
  int turnsAtEvent = -1;
  desc.ChangeAntenna.listen([&] { turnsAtEvent = screen.turns(); });
  desc.cmdClear.userClick();
  EXPECT_EQ(shown(), "||");
  EXPECT_EQ(turnsAtEvent, 1);
  EXPECT_FALSE(desc.txtDesc.locked());
  EXPECT_FALSE(desc.bDirty());
  EXPECT_EQ(events(), "antenna ");
  desc.BackRed(true);
  screen.answers = {MsgAnswer::ok};
  desc.cmdClear.userClick();
  EXPECT_TRUE(desc.BackRed());
}

TEST_F(LookAntDesc, TheHostMayDropItWhereverItActs) {
  const auto dropIn = [this](const std::function<void(std::unique_ptr<D>&)>& arrange, CommandButton D::*button) {
    auto dropped = std::make_unique<D>();
    int heardAfter = 0;
    dropped->ChangeAntenna.listen([&] { ++heardAfter; });
    arrange(dropped);
    ((*dropped).*button).userClick();
    screen.onTurn = nullptr;
    screen.policy = nullptr;
    screen.answers.clear();
    EXPECT_FALSE(dropped);
    EXPECT_EQ(heardAfter, 0);
  };
  const auto editorThen = [this](const std::function<void()>& then) {
    LibraryUser::takes(screen, 0);
    screen.onModal["frmHDAntEditor"] = [then, act = screen.onModal["frmHDAntEditor"]](Form& editor) {
      act(editor);
      then();
    };
  };
  CommandButton D::*const look = static_cast<CommandButton D::*>(&LookupControl::cmdLook);
  dropIn([&](auto& doomed) { editorThen([&doomed] { doomed.reset(); }); }, look);
  dropIn([&](auto& doomed) { editorThen([this, &doomed] { screen.onTurn = [&doomed] { doomed.reset(); }; }); }, look);
  dropIn(
      [&](auto& doomed) {
        screen.policy = [&doomed](const Message&) {
          doomed.reset();
          return MsgAnswer::ok;
        };
      },
      &D::cmdClear);
  dropIn(
      [&](auto& doomed) {
        screen.answers = {MsgAnswer::ok};
        screen.onTurn = [&doomed] { doomed.reset(); };
      },
      &D::cmdClear);
}

// --- The empty control.

TEST(AntPreviewControl, IsAPlaceWithoutAnything) {
  scAntPreview place;
  EXPECT_EQ(place.name(), "scAntPreview");
  EXPECT_THAT(place.widgets(), IsEmpty());
  EXPECT_GT(place.width(), 0);
  EXPECT_GT(place.height(), 0);
  place.setSize(100, 50);
  EXPECT_EQ(place.width(), 100);
  EXPECT_EQ(place.height(), 50);
}

}  // namespace
}  // namespace vantrelix

// The antenna lookup control: its user picks an antenna out of a library, or computes the gain of a dish.
#include <gmock/gmock.h>

#include "controls/LibraryUser.h"
#include "controls/LookAntFixture.h"
#include "dialogs/frmParabGain.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using test::EditorOpened;
using test::LibraryUser;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kPanel = "T00010000001";

class CmdLook : public test::LookAntLibraryTest {
 protected:
  CmdLook() { addPanel(); }

  std::vector<TextBox*> mountingBoxes() {
    return {&control.txtOrient, &control.txtETilt, &control.txtMTilt, &control.txtMAzim};
  }
  void expectMountingOpen() {
    for (TextBox* box : mountingBoxes()) EXPECT_TRUE(box->enabled() && !box->locked()) << box->name();
    EXPECT_TRUE(control.chkInvert.enabled());
    EXPECT_TRUE(control.cboPol.enabled());
    EXPECT_FALSE(control.cboPol.locked());
  }
};

TEST_F(CmdLook, IsShownFromTheStart) {
  EXPECT_TRUE(control.cmdLook.reachable());
  EXPECT_EQ(control.cmdLook.caption(), "...");
}

TEST_F(CmdLook, OpensTheEditorOnWhatIsChosenNowAndChangesNothingWhereTheUserCancels) {
  EditorOpened editor;
  editor.watch(screen);
  control.AntFormMode(eLookup);
  control.sValueFreq(851.5);
  control.sValueFile("AMST0001");
  control.sValueID(kPanel);
  control.sValueDesc("d");
  control.cmdLook.userClick();
  EXPECT_EQ(editor.mode, "LOOKUP");
  EXPECT_EQ(editor.freq, "851.5");
  EXPECT_EQ(trim(editor.file), "AMST0001.DBF");
  EXPECT_EQ(editor.id, kPanel);
  EXPECT_EQ(control.sValueFile() + "|" + control.sValueID() + "|" + control.sValueDesc(), "AMST0001|T00010000001|d");
  EXPECT_FALSE(control.bDirty());
  EXPECT_EQ(heard(), "");
}

TEST_F(CmdLook, OpensTheJobOfAntFormMode) {
  EditorOpened editor;
  editor.watch(screen);
  const auto modeOf = [&] {
    control.cmdLook.userClick();
    return editor.mode;
  };
  EXPECT_EQ(modeOf(), "");
  control.AntFormMode(eEdit);
  EXPECT_EQ(modeOf(), " ");
  control.AntFormMode(eLookup);
  EXPECT_EQ(modeOf(), "LOOKUP");
  EXPECT_EQ(static_cast<int>(eLookup), 0);
  EXPECT_EQ(static_cast<int>(eEdit), 1);
}

TEST_F(CmdLook, TakesTheAntennaChosenAndTellsTheHostAfterATurn) {
  LibraryUser::takes(screen, 0);
  std::string atEvent;
  int turnsBefore = 0, turnsAtEvent = 0;
  screen.onModal["frmHDAntEditor"] = [&, act = screen.onModal["frmHDAntEditor"]](Form& shown) {
    act(shown);
    turnsBefore = screen.turns();
  };
  control.ChangeAntenna.listen([&] {
    turnsAtEvent = screen.turns();
    atEvent = control.sValueGain() + (control.bDirty() ? " dirty" : "") + (control.txtOrient.enabled() ? " open" : "");
  });
  control.txtOrient.setEnabled(false);
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueFile(), "AMST0001");
  EXPECT_EQ(control.sValueID(), kPanel);
  EXPECT_EQ(control.sValueDesc(), "Panel");
  EXPECT_TRUE(control.bPatAz() && control.bPatEl());
  EXPECT_EQ(atEvent, "12.50 dirty open");
  EXPECT_EQ(turnsAtEvent, turnsBefore + 1);
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(CmdLook, TakesTheEditorsDescriptionOfAnAntennaThatCannotBeRead) {
  LibraryUser::comesTo(screen, [](frmHDAntEditor& editor) {
    // The user is told that the antenna will not do, and leaves by the frame: nothing is chosen, and nothing asked.
    editor.SessionResult = sessionResult::ended;
    editor.SelAntenna = "ODD";
    editor.hide();
  });
  control.cmdLook.userClick();
  EXPECT_EQ(control.sValueFile() + "|" + control.sValueID() + "|" + control.sValueDesc(), "AMST0001||ODD");
  EXPECT_TRUE(control.bDirty());
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(CmdLook, OpensTheMountingThatClearingHadDisabled) {
  screen.answers = {MsgAnswer::ok};
  control.cmdClear.userClick();
  for (TextBox* box : mountingBoxes()) EXPECT_FALSE(box->enabled());
  for (TextBox* box : mountingBoxes()) box->setLocked(true);
  LibraryUser::takes(screen, 0);
  control.cmdLook.userClick();
  expectMountingOpen();
}

TEST_F(CmdLook, IsRunByTheMenuToo) {
  LibraryUser::takes(screen, 0);
  EXPECT_EQ(control.mnuPopupLibrary.caption(), "Antenna Library Lookup");
  control.mnuPopupLibrary.userClick();
  EXPECT_EQ(control.sValueID(), kPanel);
  EXPECT_TRUE(control.bDirty());
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(CmdLook, ACancelledListOfLibrariesChangesNothing) {
  control.cmdLook.userClick();
  EXPECT_THAT(screen.formsShown(), ElementsAre("frmFileAlias"));
  EXPECT_EQ(control.sValueFile(), "");
  EXPECT_FALSE(control.bDirty());
  EXPECT_EQ(heard(), "");
}

TEST_F(CmdLook, AFailureInTheEditorIsReportedAndChangesNothing) {
  LibraryUser::comesTo(screen, [](frmHDAntEditor&) { throw RunTimeFailure(3051, "in use"); });
  EXPECT_NO_THROW(control.cmdLook.userClick());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_THAT(screen.shown()[0].message.text, HasSubstr("Error 3051:  in use"));
  EXPECT_EQ(control.sValueFile(), "");
  EXPECT_EQ(heard(), "");
}

TEST_F(CmdLook, TheHostMayDropTheControlWhileTheUserChooses) {
  auto dropped = std::make_unique<scLookAnt>();
  LibraryUser::takes(screen, 0);
  screen.onModal["frmHDAntEditor"] = [&, act = screen.onModal["frmHDAntEditor"]](Form& shown) {
    act(shown);
    dropped.reset();
  };
  dropped->cmdLook.userClick();
  EXPECT_FALSE(dropped);
}

TEST_F(CmdLook, TheHostMayDropTheControlInTheTurnOrInTheAlert) {
  auto dropped = std::make_unique<scLookAnt>();
  int told = 0;
  dropped->ChangeAntenna.listen([&] { ++told; });
  LibraryUser::takes(screen, 0);
  screen.onModal["frmHDAntEditor"] = [&, act = screen.onModal["frmHDAntEditor"]](Form& shown) {
    act(shown);
    screen.onTurn = [&] { dropped.reset(); };
  };
  dropped->cmdLook.userClick();
  EXPECT_FALSE(dropped);
  EXPECT_EQ(told, 0);

  screen.onTurn = nullptr;
  auto alerted = std::make_unique<scLookAnt>();
  alerted->NewAlert.listen([&] { alerted.reset(); });
  LibraryUser::comesTo(screen, [](frmHDAntEditor& editor) {
    editor.SessionResult = sessionResult::ended;
    editor.SelID = "none such";
    editor.hide();
  });
  alerted->cmdLook.userClick();
  EXPECT_FALSE(alerted);
}

TEST_F(CmdLook, HDAntLookGivesWhatIsChosenAndLeavesTheControl) {
  EditorOpened editor;
  editor.watch(screen);
  control.AntFormMode(eLookup);
  double freq = 930.25;
  std::string file = "AMST0001", id = kPanel, description = "before";
  EXPECT_FALSE(control.HDAntLook(freq, file, id, description));
  EXPECT_EQ(editor.mode + "|" + editor.freq + "|" + editor.id, " |930.25|T00010000001");
  EXPECT_EQ(file + "|" + id + "|" + description, "AMST0001|T00010000001|before");
  LibraryUser::takes(screen, 0);
  file = id = "";
  EXPECT_TRUE(control.HDAntLook(freq, file, id, description));
  EXPECT_EQ(file + "|" + id + "|" + description, "AMST0001|T00010000001|PANEL");
  EXPECT_EQ(freq, 930.25);
  EXPECT_EQ(control.sValueFile() + control.sValueID() + control.sValueDesc(), "");
  EXPECT_EQ(heard(), "");
}

// What the control has for kinds of control built on it.
class EditingLook : public scLookAnt {
 public:
  using scLookAnt::LibraryEdit;
};

TEST_F(CmdLook, TheEditingVariantTakesFileAndIdAndLeavesTheMounting) {
  EditingLook edited;
  edited.AntFormMode(eLookup);
  edited.sValueFreq(460);
  int told = 0;
  edited.ChangeAntenna.listen([&] { ++told; });
  EditorOpened editor;
  editor.watch(screen);
  edited.LibraryEdit();
  EXPECT_EQ(editor.mode + "|" + editor.freq, " |460");
  EXPECT_EQ(told, 0);
  EXPECT_FALSE(edited.bDirty());
  LibraryUser::takes(screen, 0);
  edited.txtOrient.setEnabled(false);
  edited.LibraryEdit();
  EXPECT_EQ(edited.sValueFile() + "|" + edited.sValueID() + "|" + edited.sValueDesc(), "AMST0001|T00010000001|Panel");
  EXPECT_TRUE(edited.bDirty());
  EXPECT_FALSE(edited.txtOrient.enabled());
  EXPECT_EQ(told, 1);
}

// --- The menu of the gain box.

class GainMenu : public CmdLook {
 protected:
  static constexpr int kLeft = 1, kRight = 2, kMiddle = 4;

  void rightClick() { control.txtGain.userMouseUp(kRight, 10, 10); }
  // The user computes with that diameter and unit, and continues.
  void computes(const std::string& diameter, int unit) {
    screen.onModal["frmParabGain"] = [diameter, unit](Form& shown) {
      auto& form = dynamic_cast<frmParabGain&>(shown);
      form.Text1[frmParabGain::diameter].userType(diameter);
      form.Combo1.userSelect(unit);
      form.Command1[frmParabGain::continuing].userClick();
    };
  }
};

constexpr int kFeet = 1, kMetres = 3;

TEST_F(GainMenu, ComesUpWhereTheRightButtonIsLetGo) {
  for (const int button : {kLeft, kMiddle}) control.txtGain.userMouseUp(button, 10, 10);
  EXPECT_THAT(screen.menusShown(), IsEmpty());
  rightClick();
  ASSERT_THAT(screen.menusShown(), ElementsAre(&control.mnuPopup));
  EXPECT_EQ(screen.menuPlaces().front(), nullptr);
  EXPECT_THAT(control.mnuPopup.items(), ElementsAre(&control.mnuPopupLibrary, &control.mnuPopupParabolic));
  EXPECT_EQ(control.mnuPopupParabolic.caption(), "Compute Parabolic Gain");
}

TEST_F(GainMenu, DisablesTheBoxForATurnAndThenShowsTheMenu) {
  std::vector<bool> enabled;
  screen.onTurn = [&] {
    enabled.push_back(control.txtGain.enabled());
    EXPECT_THAT(screen.menusShown(), IsEmpty());
  };
  rightClick();
  EXPECT_THAT(enabled, ElementsAre(false));
  EXPECT_TRUE(control.txtGain.enabled());
  EXPECT_EQ(screen.menusShown().size(), 1U);
}

TEST_F(GainMenu, StaysAwayWhileTheControlIsLocked) {
  control.Locked(true);
  rightClick();
  EXPECT_THAT(screen.menusShown(), IsEmpty());
  EXPECT_EQ(screen.turns(), 0);
  control.Locked(false);
  control.LookupOnly(true);
  rightClick();
  EXPECT_THAT(screen.menusShown(), IsEmpty());
}

TEST_F(GainMenu, OffersTheParabolaFrom900MHz) {
  for (const auto& [megahertz, offered] : {std::pair{899.99, false}, {900.0, true}, {0.0, false}, {6000.0, true}}) {
    control.sValueFreq(megahertz);
    rightClick();
    EXPECT_EQ(control.mnuPopupParabolic.enabled(), offered) << megahertz;
    EXPECT_TRUE(control.mnuPopupLibrary.enabled());
  }
}

TEST_F(GainMenu, TheHostMayDropTheControlInTheTurn) {
  auto dropped = std::make_unique<scLookAnt>();
  screen.onTurn = [&] { dropped.reset(); };
  dropped->txtGain.userMouseUp(kRight, 0, 0);
  EXPECT_FALSE(dropped);
  EXPECT_THAT(screen.menusShown(), IsEmpty());
}

TEST_F(GainMenu, TheParabolaGivesGainUnitAndDescription) {
  control.sValueFreq(1000);
  control.sValueFile("AMST0001");
  control.sValueID(kPanel);
  control.sValueUnit("dBd");
  std::string asked;
  computes("1", kMetres);
  screen.onModal["frmParabGain"] = [&, act = screen.onModal["frmParabGain"]](Form& shown) {
    asked = dynamic_cast<frmParabGain&>(shown).Text1[frmParabGain::frequency].text();
    act(shown);
  };
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(asked, "1000.00");
  EXPECT_EQ(control.sValueGain() + "|" + control.sValueUnit(), "17.80|dBi");
  EXPECT_EQ(control.sValueDesc(), "1.00m parabola");
  EXPECT_EQ(control.sValueFile() + control.sValueID(), "");
  EXPECT_EQ(heard(), "antenna ");
}

TEST_F(GainMenu, TheParabolaKeepsTheUnitOfItsDiameter) {
  control.sValueFreq(6000);
  computes("10", kFeet);
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(control.sValueGain() + "|" + control.sValueDesc(), "43.04|10.00ft parabola");
  control.sValueUnit("REL");
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(control.sValueGain() + "|" + control.sValueUnit(), "43.04|dBi");
  EXPECT_EQ(defaultUnit(), "dBi");
}

TEST_F(GainMenu, TheParabolaLeavesThePreviewsAndOpensTheBoxes) {
  show();
  ASSERT_TRUE(control.txtGain.locked());
  const std::size_t lines = control.picHor.lines().size();
  control.sValueFreq(6000);
  computes("1", kMetres);
  control.mnuPopupParabolic.userClick();
  EXPECT_EQ(control.picHor.lines().size(), lines);
  EXPECT_TRUE(control.bPatAz());
  EXPECT_FALSE(control.txtGain.locked() || control.txtDesc.locked() || control.cboUnit.locked());
  control.GetAntPat();
  EXPECT_TRUE(control.picHor.lines().empty());
}

TEST_F(GainMenu, ACancelledOrFailedParabolaChangesNothing) {
  show();
  control.mnuPopupParabolic.userClick();
  control.sValueFreq(0);
  computes("1", kMetres);
  control.mnuPopupParabolic.userClick();
  screen.onModal["frmParabGain"] = [](Form&) { throw RunTimeFailure(3051, "in use"); };
  EXPECT_NO_THROW(control.mnuPopupParabolic.userClick());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_THAT(screen.shown()[0].message.text, HasSubstr("Error 3051:  in use"));
  EXPECT_EQ(control.sValueID() + control.sValueGain(), std::string(kPanel) + "12.50");
  EXPECT_TRUE(control.txtGain.locked());
  EXPECT_EQ(heard(), "");
}

TEST_F(GainMenu, TheHostMayDropTheControlWhileItsUserComputes) {
  auto dropped = std::make_unique<scLookAnt>();
  dropped->sValueFreq(6000);
  computes("1", kMetres);
  screen.onModal["frmParabGain"] = [&, act = screen.onModal["frmParabGain"]](Form& shown) {
    act(shown);
    dropped.reset();
  };
  dropped->mnuPopupParabolic.userClick();
  EXPECT_FALSE(dropped);
}

}  // namespace
}  // namespace vantrelix

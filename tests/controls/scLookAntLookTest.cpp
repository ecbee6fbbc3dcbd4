// The antenna lookup control: its user picks an antenna out of a library.
#include <gmock/gmock.h>

#include "controls/LibraryUser.h"
#include "controls/LookAntFixture.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using test::EditorOpened;
using test::LibraryUser;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

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

TEST_F(CmdLook, AFailureThatCannotBeLoggedIsToldAllTheSame) {
  suite.folder().write("QVTECSUP.TXT/in the way", "");
  LibraryUser::comesTo(screen, [](frmHDAntEditor&) { throw RunTimeFailure(3051, "in use"); });
  EXPECT_NO_THROW(control.cmdLook.userClick());
  ASSERT_FALSE(screen.shown().empty());
  EXPECT_THAT(screen.shown().back().message.text, HasSubstr("QVTECSUP.TXT"));
  EXPECT_EQ(control.sValueFile(), "");
  EXPECT_FALSE(control.bDirty());
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

TEST_F(CmdLook, NamesTheLibraryAsTheListDoes) {
  EditorOpened editor;
  editor.watch(screen);
  const auto listed = [&](std::string file) {
    double freq = 0;
    std::string id, description;
    EXPECT_FALSE(control.HDAntLook(freq, file, id, description));
    return trim(editor.file);
  };
  EXPECT_EQ(listed("AMST0001"), "AMST0001.DBF");
  EXPECT_EQ(listed(" AMST0001  "), "AMST0001.DBF");
  EXPECT_EQ(listed("AMST0001.DBF"), "AMST0001.DBF");
  EXPECT_EQ(listed(" "), "");
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

TEST_F(CmdLook, TheHostMayDropTheControlInTheEditingVariant) {
  auto dropped = std::make_unique<EditingLook>();
  int told = 0;
  dropped->ChangeAntenna.listen([&] { ++told; });
  LibraryUser::takes(screen, 0);
  screen.onModal["frmHDAntEditor"] = [&, act = screen.onModal["frmHDAntEditor"]](Form& shown) {
    act(shown);
    dropped.reset();
  };
  dropped->LibraryEdit();
  EXPECT_FALSE(dropped);
  EXPECT_EQ(told, 0);
}

}  // namespace
}  // namespace vantrelix

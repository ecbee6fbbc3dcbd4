// The antenna description control, and the empty control.
#include <gmock/gmock.h>

#include "controls/LibraryUser.h"
#include "controls/RecordFixture.h"
#include "controls/scAntPreview.h"
#include "controls/scLookAnt_Desc.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::EditorOpened;
using test::LibraryUser;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr const char* kPanel = "T00010000001";

using D = scLookAnt_Desc;
struct BoundValue {
  const char* name;
  const char* field;
  DBFSlot D::*dbf;
  INISlot D::*ini;
  const char* tableFlag;
};
constexpr BoundValue kValues[] = {
    {"File", "TX_A1FNM", &D::HookDBFFile, &D::HookINIFile, "1000"},
    {"ID", "TX_A1TID", &D::HookDBFID, &D::HookINIID, "1100"},
    {"Desc", "TX_A1TYP", &D::HookDBFDesc, &D::HookINIDesc, "1150"},
    {"Freq", "TX_FREQMHZ", &D::HookDBFFreq, &D::HookINIFreq, "1900"},
};

// On the table and the INI file of a host.
class LookAntDesc : public test::RecordTest {
 protected:
  LookAntDesc() {
    addPanel();
    desc.ChangeAntenna.listen([this] { told += "antenna "; });
    desc.NewAlert.listen([this] { told += "alert "; });
  }

  std::string events() { return std::exchange(told, ""); }
  std::string shown() { return desc.sValueFile() + "|" + desc.sValueID() + "|" + desc.sValueDesc(); }
  void put(const std::string& file, const std::string& id, const std::string& description) {
    desc.sValueFile(file);
    desc.sValueID(id);
    desc.sValueDesc(description);
  }
  void bindDesc() {
    record = open();
    for (const BoundValue& value : kValues) (desc.*value.dbf)(hookFor(record, value.field));
  }
  // The frequency, as the look-up is told it.
  std::string frequency() {
    EditorOpened editor;
    editor.watch(screen);
    desc.cmdLook.userClick();
    screen.onModal.clear();
    return editor.freq;
  }

  scLookAnt_Desc desc;
  std::string told;
};

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

// --- The record.

TEST_F(LookAntDesc, ReadsTheFourValuesOfATable) {
  bindDesc();
  desc.txtDesc.userKey('x');
  desc.UpdateDBF();
  EXPECT_EQ(shown(), "AMSN0001|ID1|Whip");
  EXPECT_FALSE(desc.bDirty());
  EXPECT_EQ(frequency(), "451.25");
  EXPECT_EQ(events(), "");
  EXPECT_FALSE(desc.txtDesc.locked());
  // The row names an antenna of a library, which owns its description once the host opens the control.
  desc.Locked(false);
  EXPECT_TRUE(desc.txtDesc.locked());
  record->MoveNext();
  desc.UpdateDBF();
  EXPECT_EQ(shown(), "||");
  desc.Locked(false);
  EXPECT_FALSE(desc.txtDesc.locked());
}

TEST_F(LookAntDesc, StopsAtTheFirstHookThatIsMissing) {
  for (std::size_t i = 0; i < std::size(kValues); ++i) {
    bindDesc();
    put("f", "i", "d");
    desc.sValueFreq(1);
    (desc.*kValues[i].dbf)(nullptr);
    desc.UpdateDBF();
    EXPECT_THAT(suite.log(),
                HasSubstr(std::string("Error in scLookAnt_Desc.Update at flag ") + kValues[i].tableFlag + "\r\n91 "));
    EXPECT_EQ(shown(), std::string(i > 0 ? "AMSN0001|" : "f|") + (i > 1 ? "ID1|" : "i|") + (i > 2 ? "Whip" : "d"));
  }
  EXPECT_TRUE(screen.shown().empty());
  screen.answers = {MsgAnswer::ok};
  desc.cmdClear.userClick();
  EXPECT_EQ(events(), "");
}

TEST_F(LookAntDesc, ReadsTheFourKeysOfAFile) {
  for (const auto& [key, text] :
       {std::pair{"TX_A1FNM", "AMSN0001"}, {"TX_A1TID", "ID1"}, {"TX_A1TYP", "Whip"}, {"TX_FREQMHZ", "460"}}) {
    setINI("Site", key, ini, text);
  }
  desc.UpdateINI();
  EXPECT_EQ(shown(), "||");
  desc.HookINI(masterHook());
  desc.UpdateINI();
  EXPECT_EQ(shown(), "AMSN0001|ID1|Whip");
  EXPECT_EQ(frequency(), "460");
  for (const BoundValue& value : kValues) {
    EXPECT_EQ((desc.*value.ini)()->INIVariable(), value.field);
    EXPECT_EQ((desc.*value.ini)()->INISection(), "Site");
  }
}

TEST_F(LookAntDesc, UpdateReadsTheTableThenTheFile) {
  bindDesc();
  setINI("Site", "TX_A1TYP", ini, "from the file");
  desc.HookINI(masterHook());
  desc.Update();
  EXPECT_EQ(shown(), "||from the file");
}

TEST_F(LookAntDesc, AFailureOfTheFileIsToldWithItsFlag) {
  desc.HookINI(masterHook());
  setINI("Site", "TX_A1TYP", ini, "Whip");
  const Connection fault =
      desc.txtDesc.changed.connect([] { throw RunTimeFailure(failure::overflow, "surface lost"); });
  desc.UpdateINI();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.text, "3400 scLookAnt_Desc:UPdateINI");
}

TEST_F(LookAntDesc, SavesAllButTheFrequency) {
  bindDesc();
  desc.HookINI(masterHook());
  put("AMSN0002", "ID2", "Yagi");
  desc.sValueFreq(900);
  EXPECT_EQ(desc.Save(), "");
  EXPECT_EQ(inTable("TX_A1FNM") + "|" + inTable("TX_A1TID") + "|" + inTable("TX_A1TYP"), "AMSN0002|ID2|Yagi");
  EXPECT_EQ(inTable("TX_FREQMHZ"), "451.25");
  for (const BoundValue& value : kValues) (desc.*value.ini)()->INISection("Site");
  EXPECT_EQ(desc.Save(), "");
  EXPECT_EQ(inFile("TX_A1FNM") + "|" + inFile("TX_A1TID") + "|" + inFile("TX_A1TYP"), "AMSN0002|ID2|Yagi");
  EXPECT_EQ(inFile("TX_FREQMHZ"), "(none)");
}

TEST_F(LookAntDesc, AFieldThatDoesNotTakeItsTextEndsTheSaving) {
  bindDesc();
  put("AMSN0002", "an ID that is too wide", "Yagi");
  EXPECT_THAT(desc.Save(),
              AllOf(StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1TID Value: an ID that is too wide"),
                    HasSubstr(" Error: 3163 ")));
  EXPECT_EQ(inTable("TX_A1FNM"), "AMSN0002");
  EXPECT_EQ(inTable("TX_A1TYP"), "Whip");
}

TEST_F(LookAntDesc, FindsItsHooksAndValuesByField) {
  bindDesc();
  for (const BoundValue& value : kValues) EXPECT_EQ(desc.HookArray(value.field), (desc.*value.dbf)()) << value.name;
  EXPECT_EQ(desc.HookArray("tx_a1fnm"), nullptr);
  desc.UpdateDBF();
  EXPECT_EQ(desc.sHookDBFValue("tx_a1fnm"), "AMSN0001");
  EXPECT_EQ(desc.sHookDBFValue("TX_A1TID"), "ID1");
  EXPECT_EQ(desc.sHookDBFValue("TX_A1TYP"), "Whip");
  EXPECT_EQ(desc.sHookDBFValue("TX_FREQMHZ"), "451.25");
  EXPECT_EQ(desc.sHookDBFValue("TX_A1GAIN"), "");
  desc.LookupOnly(false);
  desc.sHookDBFValue("tx_freqmhz", "928.5");
  desc.sHookDBFValue("TX_A1TYP", "Yagi");
  EXPECT_EQ(frequency() + desc.sValueDesc(), "928.5Yagi");
  desc.Locked(true);
  desc.sHookDBFValue("TX_A1TYP", "Whip");
  EXPECT_EQ(desc.sValueDesc(), "Yagi");
  EXPECT_FALSE(desc.bDirty());
}

TEST_F(LookAntDesc, NeedsAllFourHooksForHookArray) {
  for (const BoundValue& value : kValues) {
    scLookAnt_Desc fresh;
    record = open();
    for (const BoundValue& each : kValues) (fresh.*each.dbf)(hookFor(record, each.field));
    (fresh.*value.dbf)(nullptr);
    EXPECT_EQ(test::failureOf([&] { fresh.HookArray("TX_A1FNM"); }), failure::objectNotSet) << value.name;
  }
}

TEST_F(LookAntDesc, LetsGoOfAllFourHooks) {
  bindDesc();
  const IOHooksDBFPtr file = desc.HookDBFFile();
  EXPECT_TRUE(desc.DisconnectDBF().isNull());
  EXPECT_EQ(file->DBFField(), "");
  for (const BoundValue& value : kValues) EXPECT_EQ((desc.*value.dbf)(), nullptr) << value.name;
  desc.HookINI(masterHook());
  std::vector<IOHooksINIPtr> former;
  for (const BoundValue& value : kValues) former.push_back((desc.*value.ini)());
  desc.HookINI(nullptr);
  for (std::size_t i = 0; i < std::size(kValues); ++i) EXPECT_NE((desc.*kValues[i].ini)(), former[i]);
}

TEST_F(LookAntDesc, EndsItsHooksWithItself) {
  const IOHooksDBFPtr hook = hookFor(open(), "TX_A1TYP");
  {
    scLookAnt_Desc brief;
    brief.HookDBFDesc(hook);
  }
  EXPECT_EQ(hook->DBFField(), "");
}

TEST_F(LookAntDesc, BindsADevelopersTable) {
  desc.TestInit();
  EXPECT_EQ(shown(), "||");
  desc.UpdateDBF();
  EXPECT_EQ(shown(), "AMSN0001|ID1|Whip");
}

// --- The host's edit.

TEST_F(LookAntDesc, LetsTheHostDeclareItsEdit) {
  Value advice;
  EXPECT_FALSE(desc.bEdit(false, &advice).boolean());
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.title, "No Access");
  EXPECT_THAT(advice.text(), StartsWith("scLookAnt_Desc\r\n"));
  bindDesc();
  EXPECT_TRUE(desc.bEdit().boolean());
  const auto active = [this] { return desc.Save().find("Error: 3020 ") != std::string::npos; };
  EXPECT_TRUE(active());
  desc.CancelEdit();
  EXPECT_FALSE(active());
  desc.Edit();
  EXPECT_TRUE(active());
  desc.EditUpdate();
  EXPECT_FALSE(active());
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

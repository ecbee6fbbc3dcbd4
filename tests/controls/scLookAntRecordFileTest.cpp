// The antenna lookup control filled from its host's INI file.
#include <gmock/gmock.h>

#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::kBoundValues;
using test::shownIn;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class LookAntFileRecord : public test::RecordTest {
 protected:
  LookAntFileRecord() { control.SeePreview(false); }

  // Fills the INI file with what the table's first row holds.
  void fillFile() {
    bind();
    control.UpdateDBF();
    bindINI();
    ASSERT_EQ(control.SaveINI(), "");
    setINI("Site", "TX_FREQMHZ", ini, "451.25");
    control.DisconnectDBF();
    heard();
  }
  std::vector<Widget*> widgetsOfValues() {
    return {&control.txtFile,  &control.txtID,     &control.txtDesc,  &control.txtGain,
            &control.cboUnit,  &control.txtOrient, &control.txtETilt, &control.txtMTilt,
            &control.txtMAzim, &control.chkInvert, &control.cboPol};
  }
};
TEST_F(LookAntFileRecord, IsNotFilledFromAFileWithoutAMaster) {
  fillFile();
  control.HookINI(nullptr);
  putOthers();
  heard();
  control.UpdateINI();
  expectRowUpTo(0, "");
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_EQ(heard(), "");
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntFileRecord, FillsEveryValueFromItsKey) {
  fillFile();
  putOthers();
  control.txtDesc.userType("x");
  control.HookINI(nullptr);
  control.HookINI(masterHook());
  heard();
  control.UpdateINI();
  expectRowUpTo(kBoundValues.size(), "");
  EXPECT_EQ(heard(), "");
  EXPECT_TRUE(control.bDirty());
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntFileRecord, HandsTheMastersFileAndSectionToEveryKey) {
  const auto named = [](const char* file, const char* section) {
    auto hook = std::make_shared<IOHooksINI>();
    hook->iniFile(file);
    hook->INISection(section);
    hook->INIVariable("KEY");
    return hook;
  };
  for (const BoundValue& value : kBoundValues) (control.*value.ini)(named("C:\\OTHER.INI", "Other"));
  control.HookINI(masterHook());
  control.UpdateINI();
  for (const BoundValue& value : kBoundValues) {
    const IOHooksINIPtr hook = (control.*value.ini)();
    EXPECT_EQ(hook->iniFile() + "|" + hook->INISection() + "|" + hook->INIVariable(), ini + "|Site|KEY") << value.name;
  }
}

TEST_F(LookAntFileRecord, AFileThatLacksTheKeysShowsTheDefaultsOfTheHooks) {
  putOthers();
  control.HookINI(masterHook());
  control.HookINIDesc()->INIDefault("nothing known");
  setDefault("Antenna Lookup", "Units", "REL");
  control.UpdateINI();
  EXPECT_THAT(shownIn(control), ElementsAre("", "", "nothing known", "", "REL", "", "", "", "", "False", "None", "0"));
}

TEST_F(LookAntFileRecord, ReadsAFlagByTheLanguagesRule) {
  control.HookINI(masterHook());
  const std::pair<const char*, bool> texts[] = {{"0", false},   {"-1", true},     {"1", true}, {"2.5", true},
                                                {"True", true}, {"fALSE", false}, {"", false}, {"\"   \"", false}};
  for (const auto& [text, inverted] : texts) {
    control.sValueInvert(!inverted);
    setINI("Site", "TX_A1INVRT", ini, text);
    control.UpdateINI();
    EXPECT_EQ(control.sValueInvert(), inverted) << text;
  }
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(LookAntFileRecord, ATextThatIsNoFlagEndsTheFillFromAFileWithAMessage) {
  fillFile();
  putOthers();
  setINI("Site", "TX_A1INVRT", ini, "perhaps");
  control.UpdateINI();
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.text, "4100 scLookAnt:UPdateINI");
  EXPECT_EQ(screen.shown()[0].message.title, "testhost");
  expectRowUpTo(9, "");
  EXPECT_FALSE(clicksAreTold());
  setINI("Site", "TX_A1INVRT", ini, "1");
  control.UpdateINI();
  EXPECT_TRUE(clicksAreTold());
}

TEST_F(LookAntFileRecord, AFailureInAFillFromAFileShowsItsFlag) {
  fillFile();
  const char* flags[] = {"3200", "3300", "3400", "3500", "3600", "3700", "3800", "3900", "4000", "4100", "4150"};
  for (std::size_t i = 0; i < std::size(flags); ++i) {
    putOthers();
    const Connection fault =
        widgetsOfValues()[i]->changed.connect([] { throw RunTimeFailure(failure::overflow, "surface lost"); });
    control.UpdateINI();
    EXPECT_EQ(screen.shown().back().message.text, std::string(flags[i]) + " scLookAnt:UPdateINI");
    expectRowUpTo(i + 1, flags[i]);
    EXPECT_FALSE(clicksAreTold()) << flags[i];
  }
  EXPECT_EQ(screen.shown().size(), std::size(flags));
}

TEST_F(LookAntFileRecord, ReadsTheTableBeforeTheFile) {
  bind();
  setINI("Site", "TX_A1TYP", ini, "from the file");
  control.HookINI(masterHook());
  control.Update();
  EXPECT_EQ(control.sValueDesc(), "from the file");
  EXPECT_EQ(control.sValueGain(), "");
}

TEST_F(LookAntFileRecord, ReadsTheFileAlsoWhereTheTableFails) {
  setINI("Site", "TX_A1TYP", ini, "from the file");
  control.HookINI(masterHook());
  control.Update();
  EXPECT_THAT(suite.log(), HasSubstr("at flag 1000\r\n91 "));
  EXPECT_EQ(control.sValueDesc(), "from the file");
  EXPECT_TRUE(clicksAreTold());
}

}  // namespace
}  // namespace vantrelix

// The places of the antenna lookup control for hooks.
#include <filesystem>

#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"
#include "tables/cursorTables.h"

namespace vantrelix {
namespace {

using test::BoundValue;
using test::failureNumberOf;
using test::kBoundValues;

// The values that HookArray looks through stand first.
constexpr std::size_t kListed = 10;
constexpr std::size_t kPol = 10;

class LookAntHooks : public test::RecordTest {
 protected:
  LookAntHooks() { control.SeePreview(false); }

  static std::string texts(const IOHooksINIPtr& hook) {
    return hook->iniFile() + "|" + hook->INISection() + "|" + hook->INIVariable() + "|" + hook->INIValue() + "|" +
           hook->INIDefault();
  }
};

TEST_F(LookAntHooks, AreNoneAtFirst) {
  for (const BoundValue& value : kBoundValues) EXPECT_EQ((control.*value.dbf)(), nullptr) << value.name;
  EXPECT_FALSE(control.HookINI.isSet());
}

TEST_F(LookAntHooks, AreGivenBackAsTheyWerePut) {
  const auto hook = std::make_shared<IOHooksDBF>();
  const auto key = std::make_shared<IOHooksINI>();
  for (const BoundValue& value : kBoundValues) {
    (control.*value.dbf)(hook);
    (control.*value.ini)(key);
    EXPECT_EQ((control.*value.dbf)(), hook) << value.name;
    EXPECT_EQ((control.*value.ini)(), key) << value.name;
    (control.*value.dbf)(nullptr);
    EXPECT_EQ((control.*value.dbf)(), nullptr) << value.name;
  }
  EXPECT_EQ(texts(key), "||||");
}

TEST_F(LookAntHooks, OfAnIniFileComeToBeWithTheMastersFileAndTheSuitesNames) {
  control.HookINI(masterHook());
  for (const BoundValue& value : kBoundValues) {
    const IOHooksINIPtr hook = (control.*value.ini)();
    EXPECT_EQ(texts(hook), ini + "|Facility Data|" + value.variable + "||");
    EXPECT_EQ((control.*value.ini)(), hook);
  }
}

TEST_F(LookAntHooks, OfAnIniFileComeToBeWithoutAMasterToo) {
  EXPECT_EQ(texts(control.HookINIGain()), "|Facility Data|TX_A1GAIN||");
  EXPECT_FALSE(control.HookINI.isSet());
}

TEST_F(LookAntHooks, TheMasterComesToBeBlankWhenItIsRead) {
  const IOHooksINIPtr master = control.HookINI();
  ASSERT_NE(master, nullptr);
  EXPECT_EQ(texts(master), "||||");
  EXPECT_EQ(control.HookINI(), master);
  EXPECT_TRUE(control.HookINI.isSet());
}

TEST_F(LookAntHooks, DroppingTheMasterDropsAllKeysButThePolarisations) {
  control.HookINI(masterHook());
  std::vector<IOHooksINIPtr> former;
  for (const BoundValue& value : kBoundValues) former.push_back((control.*value.ini)());
  control.HookINI(nullptr);
  EXPECT_FALSE(control.HookINI.isSet());
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    const IOHooksINIPtr hook = (control.*kBoundValues[i].ini)();
    EXPECT_EQ(hook == former[i], i == kPol) << kBoundValues[i].name;
    EXPECT_EQ(hook->iniFile(), i == kPol ? ini : "") << kBoundValues[i].name;
  }
}

TEST_F(LookAntHooks, AnotherMasterLeavesTheKeysUntilTheNextFill) {
  control.HookINI(masterHook());
  const IOHooksINIPtr key = control.HookINIDesc();
  const auto other = std::make_shared<IOHooksINI>();
  other->iniFile("C:\\OTHER.INI");
  control.HookINI(other);
  EXPECT_EQ(control.HookINIDesc(), key);
  EXPECT_EQ(key->iniFile(), ini);
  control.UpdateINI();
  EXPECT_EQ(key->iniFile(), "C:\\OTHER.INI");
}

TEST_F(LookAntHooks, AreFoundByTheirFieldExactly) {
  bind();
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    const BoundValue& value = kBoundValues[i];
    EXPECT_EQ(control.HookArray(value.field), i < kListed ? (control.*value.dbf)() : nullptr) << value.name;
  }
  EXPECT_EQ(control.HookArray("TX_A1Gain"), nullptr);
  EXPECT_EQ(control.HookArray(""), nullptr);
}

TEST_F(LookAntHooks, OfOneFieldAreFoundByTheLast) {
  bind();
  control.HookDBFETilt()->DBFField("TX_A1FNM");
  control.HookDBFMTilt()->DBFField("TX_A1FNM");
  EXPECT_EQ(control.HookArray("TX_A1FNM"), control.HookDBFMTilt());
}

TEST_F(LookAntHooks, MustAllTenBeThereToBeFound) {
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    scLookAnt fresh;
    bind(fresh, open());
    (fresh.*kBoundValues[i].dbf)(nullptr);
    EXPECT_EQ(failureNumberOf([&] { fresh.HookArray("TX_A1FNM"); }), i < kListed ? failure::objectNotSet : 0)
        << kBoundValues[i].name;
  }
}

TEST_F(LookAntHooks, AreThoseOfTheFirstSearch) {
  bind();
  const IOHooksDBFPtr first = control.HookArray("TX_A1FNM");
  control.HookDBFFile(hookFor(record, "TX_A1FNM"));
  EXPECT_EQ(control.HookArray("TX_A1FNM"), first);
  scLookAnt unbound;
  EXPECT_EQ(failureNumberOf([&] { unbound.HookArray("TX_A1FNM"); }), failure::objectNotSet);
  bind(unbound, record);
  EXPECT_EQ(failureNumberOf([&] { unbound.HookArray("TX_A1FNM"); }), failure::objectNotSet);
}

TEST_F(LookAntHooks, AreLetGoButThePolarisations) {
  bind();
  std::vector<IOHooksDBFPtr> former;
  for (const BoundValue& value : kBoundValues) former.push_back((control.*value.dbf)());
  EXPECT_TRUE(control.DisconnectDBF().isNull());
  for (std::size_t i = 0; i < kBoundValues.size(); ++i) {
    const bool kept = i == kPol;
    EXPECT_EQ((control.*kBoundValues[i].dbf)(), kept ? former[i] : nullptr) << kBoundValues[i].name;
    EXPECT_EQ(former[i]->DBFField(), kept ? kBoundValues[i].field : "") << kBoundValues[i].name;
  }
  EXPECT_TRUE(record->isOpen());
  EXPECT_NO_THROW(control.DisconnectDBF());
}

TEST_F(LookAntHooks, AreLetGoAtTheControlsEnd) {
  std::vector<IOHooksDBFPtr> hooks;
  {
    scLookAnt brief;
    bind(brief, open());
    for (const BoundValue& value : kBoundValues) hooks.push_back((brief.*value.dbf)());
  }
  for (std::size_t i = 0; i < hooks.size(); ++i) {
    EXPECT_EQ(hooks[i]->DBFField(), i == kPol ? "TX_A1Pol" : "") << kBoundValues[i].name;
  }
}

TEST_F(LookAntHooks, OfTheDevelopersTestAreBoundToTheSuitesFieldsWithoutAFill) {
  const auto own = std::make_shared<IOHooksDBF>();
  control.HookDBFGain(own);
  control.TestInit();
  EXPECT_EQ(control.HookDBFGain(), own);
  EXPECT_EQ(control.HookDBFFile()->DBFPathName(), table);
  for (const BoundValue& value : kBoundValues) {
    const IOHooksDBFPtr hook = (control.*value.dbf)();
    ASSERT_NE(hook, nullptr) << value.name;
    EXPECT_EQ(hook->DBFField(), value.field);
    EXPECT_EQ(hook->DBFRS(), control.HookDBFFile()->DBFRS()) << value.name;
  }
  EXPECT_EQ(control.sValueDesc(), "");
}

TEST_F(LookAntHooks, OfTheDevelopersTestNeedTheTable) {
  std::filesystem::remove(suite.folder().machine("FACILITY.DBF"));
  EXPECT_EQ(failureNumberOf([&] { control.TestInit(); }), failure::noSuchTable);
}

TEST_F(LookAntHooks, TheDeveloperStepsThroughTheTableByAHiddenButton) {
  EXPECT_FALSE(control.Command1.visible());
  control.Command1.setVisible(true);
  control.Command1.userClick();
  EXPECT_EQ(control.Command1.caption(), "");
  control.TestInit();
  control.UpdateDBF();
  EXPECT_EQ(control.sValueDesc(), "Whip");
  control.Command1.userClick();
  EXPECT_EQ(control.sValueDesc(), "");
  EXPECT_EQ(control.Command1.caption(), "1");
  control.Command1.userClick();
  EXPECT_EQ(control.Command1.caption(), "-1");
  EXPECT_TRUE(screen.shown().empty());
  control.Command1.userClick();
  EXPECT_EQ(screen.shown().size(), 1U);
}

}  // namespace
}  // namespace vantrelix

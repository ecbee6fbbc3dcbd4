// The line lookup control and its host's record in an INI file, where something is not as it should be.
#include <array>

#include "controls/LookLineFixture.h"
#include "foundation/text.h"

namespace vantrelix {
namespace {

using L = scLookLine;

struct Kept {
  const char* variable;
  const char* label;  // of a failed write
  INISlot L::*hook;
};
const Kept kKept[] = {
    {"TX_L1FNM", "HookINIFIle", &L::HookINIFile},     {"TX_L1TID", "HookINIID", &L::HookINIID},
    {"TX_L1LEN", "HookINILen", &L::HookINILen},       {"TX_L1LENUN", "HookINIUnit", &L::HookINIUnit},
    {"TX_L1LOS", "HookINILoss", &L::HookINILoss},     {"TX_L1TYP", "HookINIDesc", &L::HookINIDesc},
    {"TX_FREQMHZ", "(not written)", &L::HookINIFreq},
};

class LookLineFileRecord : public test::LookLineTest {
 protected:
  LookLineFileRecord() {
    writeSite();
    control.HookINI()->iniFile(suite.file("SITE.INI"));
    control.HookINI()->INISection("Site");
  }
  void writeSite() const {
    suite.folder().write("SITE.INI",
                         "[Site]\r\nTX_L1FNM=LMST0001\r\nTX_L1TID=L1\r\nTX_L1TYP=Foam\r\nTX_L1LEN=30.5\r\n"
                         "TX_L1LENUN=m\r\nTX_L1LOS=1.25\r\nTX_FREQMHZ=451.25\r\n");
  }
  std::string values() const {
    return control.sValueFile() + "|" + control.sValueID() + "|" + control.sValueLen() + "|" + control.sValueUnit() +
           "|" + control.sValueLoss() + "|" + control.sValueDesc() + "|" + control.sValueFreq();
  }
  std::array<Widget*, 7> widgetsOfValues() {
    return {&control.txtFile, &control.txtID,   &control.txtLen, &control.cboUnit,
            &control.txtLoss, &control.txtDesc, &control.lblFreq};
  }
  void blank() {
    control.Clear();
    control.cboUnit.setListIndex(-1);
    control.lblFreq.setCaption("");
  }
};

TEST_F(LookLineFileRecord, FillsTheControlInSilenceAndComputesNothing) {
  control.UpdateINI();
  EXPECT_EQ(values(), "LMST0001|L1|30.5|m|1.25|Foam|451.25");
  EXPECT_EQ(control.lblFreq.caption(), "451.25MHz");
  EXPECT_EQ(events + control.Alerts(), "");
  EXPECT_EQ(kept("Line Lookup", "Units"), "(none)");
  EXPECT_FALSE(control.bDirty());
}

TEST_F(LookLineFileRecord, BringsALengthItFilledFromTheUnitItFilled) {
  control.UpdateINI();
  control.cboUnit.userSelect(3);
  EXPECT_EQ(control.sValueLen(), "3050.00");
}

TEST_F(LookLineFileRecord, IsBlankWhereTheFileHoldsNoneOfItsKeys) {
  control.UpdateINI();
  control.HookINI()->INISection("Elsewhere");
  control.UpdateINI();
  EXPECT_EQ(values(), "|||ft|||0");
}

TEST_F(LookLineFileRecord, DoesNothingWithoutAMaster) {
  scLookLine other;
  other.sValueDesc("mine");
  other.UpdateINI();
  EXPECT_EQ(other.sValueDesc(), "mine");
}

TEST_F(LookLineFileRecord, ShowsTheFlagOfTheValueThatFailedAndStaysSilent) {
  const auto widgets = widgetsOfValues();
  for (std::size_t i = 0; i < widgets.size(); ++i) {
    blank();
    {
      const Connection fault =
          widgets[i]->changed.connect([] { throw RunTimeFailure(failure::overflow, "surface lost"); });
      control.UpdateINI();
    }
    EXPECT_EQ(screen.shown().back().message.text, std::to_string(3200 + 100 * i) + " scLookLine:UPdateINI");
    control.txtLen.userBlur();
    EXPECT_EQ(events.find("line"), std::string::npos) << i;
  }
  EXPECT_EQ(screen.shown().size(), widgets.size());
  control.UpdateINI();
  control.txtLen.userBlur();
  EXPECT_NE(events.find("line"), std::string::npos);
}

TEST_F(LookLineFileRecord, NamesTheValueThatCannotBeWrittenAndWritesThoseBeforeIt) {
  suite.folder().write("BLOCKED.INI/in the way", "");
  const char* texts[] = {"LMST0009", "L9", "9", "in", "9.00", "Other"};
  for (std::size_t i = 0; i + 1 < std::size(kKept); ++i) {
    control.UpdateINI();
    control.sValueFile(texts[0]);
    control.sValueID(texts[1]);
    control.sValueUnit(texts[3]);
    control.sValueLen(texts[2]);
    control.sValueLoss(texts[4]);
    control.sValueDesc(texts[5]);
    (control.*kKept[i].hook)()->iniFile(suite.file("BLOCKED.INI"));
    const std::string told = control.Save();
    EXPECT_EQ(told.find(std::string("Error in Antenna Lookup SaveINI \r\nField: ") + kKept[i].label +
                        " Value: " + texts[i] + " Error: "),
              0U)
        << told;
    const std::string file = suite.folder().read("SITE.INI");
    for (std::size_t before = 0; before < i; ++before) {
      EXPECT_NE(file.find(std::string(kKept[before].variable) + "=" + texts[before] + "\r\n"), std::string::npos)
          << kKept[i].label << " " << kKept[before].label;
    }
    EXPECT_EQ(file.find(std::string(kKept[i].variable) + "=" + texts[i] + "\r\n"), std::string::npos);
    writeSite();
  }
}

TEST_F(LookLineFileRecord, LeavesTheKeyOfAFigureThatIsNoneAndWritesTheOthers) {
  control.UpdateINI();
  control.sValueFreq(900);
  control.sValueLen("far");
  control.sValueLoss("much");
  control.sValueDesc("Other");
  EXPECT_EQ(control.Save(), "");
  const std::string file = suite.folder().read("SITE.INI");
  for (const char* line : {"TX_L1LEN=30.5\r\n", "TX_L1LOS=1.25\r\n", "TX_L1TYP=Other\r\n", "TX_FREQMHZ=451.25\r\n"}) {
    EXPECT_NE(file.find(line), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace vantrelix

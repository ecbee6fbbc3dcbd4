// The line control on the demo host's record: read, edited, saved and left together with the antenna control.
#include <gmock/gmock.h>

#include "controls/LineFixture.h"
#include "qt/FacilityFixture.h"

namespace vantrelix::demo {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class FacilityLine : public test::FacilityTest {
 protected:
  void typeLength(const char* length) {
    line.txtLen.userType(length);
    line.txtLen.userBlur();
  }
  std::string shown() const {
    return line.sValueFile() + " " + line.sValueID() + " " + line.sValueDesc() + " " + line.sValueLen() + " " +
           line.sValueUnit() + " " + line.sValueLoss();
  }
  // A library with the line of the first record: 2 dB per 100 ft at 100 MHz and 20 at 1000.
  static void makeLines() {
    struct Library : vantrelix::test::LineTest {
      using LineTest::addLine;
      using LineTest::makeLibrary;
    };
    Library::makeLibrary("X0001");
    Library::addLine("X0001", "F78", "7/8 in foam, 50 ohm", {{100, 2}, {1000, 20}});
  }

  scLookAnt antenna;
  scLookLine line;
  scLookAnt_Desc name;
  FacilityHost host{antenna, line, name};
};

TEST_F(FacilityLine, EachRecordShowsItsOwnLineLocked) {
  host.open();
  EXPECT_EQ(shown(), "LMSX0001 F78 7/8 in foam, 50 ohm 48 m 1.27");
  EXPECT_EQ(line.sValueFreq(), "451.25");
  EXPECT_TRUE(line.Locked());
  host.move(Move::last);
  EXPECT_EQ(shown(), "LMSX0001 R78 7/8 in rigid, air, 50 ohm 24 m 1.11");
  EXPECT_EQ(line.sValueFreq(), "1492.75");
  host.use(Place::file);
  EXPECT_EQ(shown(), "LMSX0001 B405 0.405 in low-loss braid, foam, 50 ohm 12 m 1.08");
  EXPECT_EQ(line.sValueFreq(), "462.675");
  EXPECT_TRUE(line.Locked());
  EXPECT_THAT(told(), IsEmpty());
}

TEST_F(FacilityLine, AMoveComputesNothingAndRaisesNoEvent) {
  makeLines();
  host.open();
  int raised = 0;
  line.NewAlert.listen([&] { ++raised; });
  line.ChangeLine.listen([&] { ++raised; });
  host.move(Move::last);  // 1492.75 MHz lies outside of the band of the first record's line
  host.use(Place::file);
  EXPECT_EQ(raised, 0);
  EXPECT_EQ(line.Alerts(), "");
}

TEST_F(FacilityLine, SaveWritesTheLineBesideTheAntenna) {
  host.open();
  ASSERT_TRUE(host.edit());
  EXPECT_FALSE(line.Locked());
  line.sValueFile("LMSX0002");
  line.sValueID("L9");
  line.sValueDesc(std::string(75, 'd'));
  line.sValueUnit("ft");  // converts the length
  line.sValueLen("12.5");
  line.sValueLoss("3.456");
  antenna.sValueGain("7.5");
  EXPECT_TRUE(host.dirty());
  EXPECT_TRUE(host.save());
  EXPECT_THAT(told(), IsEmpty());
  EXPECT_EQ(text("TX_L1FNM") + " " + text("TX_L1TID") + " " + text("TX_L1LENUN"), "LMSX0002 L9 ft");
  EXPECT_EQ(text("TX_L1TYP"), std::string(75, 'd'));
  EXPECT_EQ(stored("TX_L1LEN"), Value(12.5));
  EXPECT_EQ(stored("TX_L1LOS"), Value(3.46));
  EXPECT_EQ(stored("TX_A1GAIN"), Value(7.5));
  EXPECT_TRUE(line.Locked());
  EXPECT_EQ(stored("TX_L1LEN", 1), Value(33.0));
}

TEST_F(FacilityLine, TheLossFollowsTheFrequencyOfTheForm) {
  makeLines();
  host.open();
  host.edit();
  line.sValueUnit("ft");
  typeLength("150");
  host.siteText("TX_FREQMHZ", "100");
  EXPECT_EQ(line.sValueLoss(), "3.00");
  host.siteText("TX_FREQMHZ", "1000");
  EXPECT_EQ(line.sValueLoss(), "30.00");
  EXPECT_TRUE(host.save());
  EXPECT_EQ(stored("TX_L1LOS"), Value(30.0));
}

TEST_F(FacilityLine, AnAlertOfAnotherFrequencyDoesNotStay) {
  makeLines();
  host.open();
  host.edit();
  host.siteText("TX_FREQMHZ", "5");
  EXPECT_EQ(line.Alerts(), "Frequency is below minimum for this line.");
  EXPECT_EQ(line.sValueLoss(), "");
  host.siteText("TX_FREQMHZ", "500");
  EXPECT_EQ(line.Alerts(), "");
  EXPECT_NE(line.sValueLoss(), "");
}

TEST_F(FacilityLine, ALibraryThatIsNotThereIsToldByTheControlAndTheRecordKeepsItsLossUntilItIsSaved) {
  host.open();
  EXPECT_EQ(line.sValueLoss(), "1.27");
  host.edit();
  typeLength("50");
  EXPECT_EQ(line.Alerts(), "Transmission line library not found:\r\nLMSX0001");
  EXPECT_EQ(line.sValueLoss(), "0.00");
  host.cancel();
  EXPECT_EQ(line.sValueLoss(), "1.27");
  EXPECT_EQ(line.Alerts(), "");
  EXPECT_EQ(stored("TX_L1LOS"), Value(1.27));
}

TEST_F(FacilityLine, EachOfTheLinesValuesMakesTheRecordDirty) {
  host.open();
  host.edit();
  const std::vector<std::function<void()>> changes = {
      [this] { line.sValueFile("LMSX0002"); }, [this] { line.sValueID("L9"); },   [this] { line.sValueDesc("Other"); },
      [this] { line.sValueLen("49"); },        [this] { line.sValueUnit("cm"); }, [this] { line.sValueLoss("9"); }};
  for (std::size_t i = 0; i < changes.size(); ++i) {
    EXPECT_FALSE(host.dirty()) << i;
    changes[i]();
    EXPECT_TRUE(host.dirty()) << i;
    host.cancel();
    host.edit();
  }
}

TEST_F(FacilityLine, TheHostHearsOfAChangeAsItIsTyped) {
  host.open();
  host.edit();
  int changes = 0;
  host.changed.listen([&] { ++changes; });
  line.txtDesc.userType("Other");
  EXPECT_EQ(changes, 1);
}

TEST_F(FacilityLine, ALengthThatIsOnlyWrittenOutIsNoChange) {
  makeFacilityTable();
  write("TX_L1FNM", "");  // no library, so that the loss stands
  host.open();
  host.edit();
  line.txtLen.userBlur();
  EXPECT_EQ(line.sValueLen(), "48.00");
  EXPECT_FALSE(host.dirty());
}

TEST_F(FacilityLine, LengthAndLossThatAreNoNumbersAreStoredAsNone) {
  host.open();
  host.edit();
  line.sValueLen("long");
  line.sValueLoss("much");
  EXPECT_TRUE(host.save());
  EXPECT_TRUE(stored("TX_L1LEN").isNull() && stored("TX_L1LOS").isNull());
}

TEST_F(FacilityLine, WhatFailsInOneControlIsNotHiddenByTheOtherAndTheOtherIsWritten) {
  host.open();
  host.edit();
  antenna.txtDesc.userType(std::string(61, 'a'));
  line.sValueDesc(std::string(76, 'l'));
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(),
              ElementsAre(AllOf(StartsWith("Error in Antenna Lookup SaveDBF\r\nField: TX_A1TYP Value: aaa"),
                                HasSubstr("\r\n\r\nError in Antenna Lookup SaveDBF\r\nField: TX_L1TYP Value: l"))));
  EXPECT_TRUE(host.editing());
  line.sValueLen("77");
  line.sValueDesc("Short enough");
  EXPECT_FALSE(host.save());
  EXPECT_THAT(told(), ElementsAre(AllOf(HasSubstr("TX_A1TYP"), testing::Not(HasSubstr("TX_L1")))));
  EXPECT_EQ(text("TX_L1TYP"), "Short enough");
  EXPECT_EQ(stored("TX_L1LEN"), Value(77.0));
  EXPECT_THROW(write("SERVICE", "elsewhere"), RunTimeFailure);  // held again
  antenna.txtDesc.userType("Short");
  line.sValueDesc(std::string(76, 'l'));
  EXPECT_FALSE(host.save());
  EXPECT_EQ(text("TX_A1TYP"), "Short");
  EXPECT_TRUE(host.dirty());
}

TEST_F(FacilityLine, ALineFieldThatIsNotThereIsToldBesideTheAntennasWellReadValues) {
  std::vector<FacilityField> fields = facilityFields();
  std::erase_if(fields, [](const FacilityField& field) { return field.name == std::string("TX_L1LENUN"); });
  makeTable(fields, true);
  write("TX_A1GAIN", 4.0);
  host.open();
  EXPECT_THAT(told(), ElementsAre(StartsWith("Error in scLookLine.Update at flag 1300\r\n3265 There is no field "
                                             "'TX_L1LENUN'")));
  EXPECT_EQ(antenna.sValueGain(), "4.00");
}

TEST_F(FacilityLine, ATableWithoutRowsIsToldOfBothControlsInOneMessage) {
  makeTable(facilityFields(), false);
  host.open();
  EXPECT_THAT(told(), ElementsAre(AllOf(StartsWith("Error in scLookAnt.Update at flag 1000\r\n3021 "),
                                        HasSubstr("\r\n\r\nError in scLookLine.Update at flag 1000\r\n3021 "))));
}

TEST_F(FacilityLine, ATableThatIsNoneLeavesTheLineWithoutARecordToo) {
  suite.folder().write("FACILITY.DBF", "this is no table");
  host.open();
  EXPECT_EQ(line.HookDBFFile(), nullptr);
  EXPECT_EQ(line.Save(), "");
  EXPECT_TRUE(line.Locked());
}

TEST_F(FacilityLine, TheEditsMarkGoesWithTheEdit) {
  host.open();
  host.edit();
  host.cancel();
  // With the mark still on it would put without an edit (3020).
  line.sValueLen("50");
  EXPECT_EQ(line.Save(), "");
  EXPECT_EQ(stored("TX_L1LEN"), Value(50.0));
}

TEST_F(FacilityLine, TheIniFilesLineIsEditedAndSavedInItsPlaceAndTheTablesStays) {
  host.open();
  host.use(Place::file);
  EXPECT_EQ(line.HookDBFFile(), nullptr);
  EXPECT_TRUE(host.edit());
  typeLength("15");
  EXPECT_NE(line.Alerts(), "");  // there is no library
  line.sValueLoss("1.35");
  EXPECT_TRUE(host.save());
  EXPECT_EQ(line.Alerts(), "");
  EXPECT_THAT(suite.folder().read("FACILITY.INI"),
              AllOf(HasSubstr("TX_L1FNM=LMSX0001"), HasSubstr("TX_L1TID=B405"), HasSubstr("TX_L1LEN=15.00"),
                    HasSubstr("TX_L1LENUN=m"), HasSubstr("TX_L1LOS=1.35"), HasSubstr("TX_L1TYP=0.405 in low-loss")));
  EXPECT_EQ(stored("TX_L1LEN"), Value(48.0));
  host.use(Place::table);
  EXPECT_EQ(line.sValueLen(), "48");
  host.edit();
  line.sValueLen("49");
  EXPECT_TRUE(host.save());
  EXPECT_THAT(suite.folder().read("FACILITY.INI"), HasSubstr("TX_L1LEN=15.00"));
}

}  // namespace
}  // namespace vantrelix::demo

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/regional.h"
#include "lines/lineTypes.h"
#include "support/TempSuite.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kHeader = "id,description,MHz,dB per 100 ft\n";

std::vector<LineType> linesOf(const std::string& text) {
  std::vector<LineFault> faults;
  std::vector<LineType> lines = readLineTypes(text, faults);
  for (const LineFault& fault : faults) ADD_FAILURE() << fault.row << ": " << fault.text;
  return lines;
}

std::vector<std::string> faultsOf(const std::string& text) {
  std::vector<LineFault> faults;
  readLineTypes(text, faults);
  std::vector<std::string> shown;
  for (const LineFault& fault : faults) shown.push_back(std::to_string(fault.row) + ": " + fault.text);
  return shown;
}

// The faults of rows below the header, which is line 1.
std::vector<std::string> rowFaults(const std::string& rows) { return faultsOf(kHeader + rows); }

double attenUnder(const std::string& column) {
  const std::vector<LineType> lines = linesOf("id,description,MHz," + column + "\nA,a,1,10\n");
  return lines.empty() || lines[0].points.empty() ? -1 : lines[0].points[0].atten;
}

TEST(LineTypes, RowsBecomeLinesInTheOrderOfTheirFirstRows) {
  const auto lines = linesOf(kHeader + "B,\"7/8 in, foam\",100,1\nA,Alpha,50,2\nB,,200,3\n");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].id, "B");
  EXPECT_EQ(lines[0].description, "7/8 in, foam");
  EXPECT_EQ(lines[0].row, 2);
  ASSERT_EQ(lines[0].points.size(), 2U);
  EXPECT_EQ(lines[0].points[1].freq, 200);
  EXPECT_EQ(lines[0].points[1].atten, 3);
  EXPECT_EQ(lines[0].points[1].row, 4);
  EXPECT_EQ(lines[1].id, "A");
}

TEST(LineTypes, PointsAreSortedByFrequency) {
  const auto lines = linesOf(kHeader + "A,a,900,3\nA,a,30.5,1\nA,a,1e3,4\n");
  ASSERT_EQ(lines[0].points.size(), 3U);
  EXPECT_EQ(lines[0].points[0].freq, 30.5);
  EXPECT_EQ(lines[0].points[2].freq, 1000);
}

TEST(LineTypes, TheHeaderDecidesTheUnitOfTheAttenuation) {
  for (const char* feet : {"dB per 100 ft", "dB/100ft", "DB_PER_100FT", "Atten (dB/100 feet)"}) {
    EXPECT_EQ(attenUnder(feet), 10) << feet;
  }
  for (const char* metres : {"dB per 100 m", "dB/100m", "db_per_100_m", "dB/100 metres", "dB per 100 meters"}) {
    EXPECT_DOUBLE_EQ(attenUnder(metres), 3.048) << metres;
  }
}

TEST(LineTypes, ColumnsStandInAnyOrderAndFurtherOnesArePassedOver) {
  const auto lines = linesOf("Source,dB/100m,Freq_MHz,LType_ID,remark id,LN_TYPE\nx,100,7,A,y,Alpha\n");
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].id + lines[0].description, "AAlpha");
  EXPECT_EQ(lines[0].points[0].freq, 7);
  EXPECT_DOUBLE_EQ(lines[0].points[0].atten, 30.48);
}

TEST(LineTypes, AHeaderThatLacksAColumnIsAFault) {
  EXPECT_THAT(faultsOf(""), ElementsAre("0: there is no header row"));
  EXPECT_THAT(faultsOf("# a\nid,MHz,dB/km\n"),
              ElementsAre("2: the header has no column \"description\"",
                          "2: the header has no column \"dB per 100 ft\" or \"dB per 100 m\""));
  EXPECT_THAT(faultsOf("id;description;MHz;dB per 100 ft\nA;a;1;2\n").size(), 3U);
  EXPECT_THAT(faultsOf("id,description,MHz,dB/100ft,dB/100m\nA,a,1,2,3\n"),
              ElementsAre("1: the header has two columns for one thing, \"dB/100ft\" and \"dB/100m\""));
}

TEST(LineTypes, AHeaderAloneIsAFault) {
  EXPECT_THAT(faultsOf(kHeader), ElementsAre("0: there is no row below the header"));
}

TEST(LineTypes, ARowOfAnotherNumberOfFieldsIsAFault) {
  EXPECT_THAT(
      rowFaults("A,a,1\nA,7/8 in, foam,1,2\n"),
      ElementsAre("2: it has 3 fields where the header has 4; a comma in a text needs quotation marks round it",
                  "3: it has 5 fields where the header has 4; a comma in a text needs quotation marks round it"));
}

TEST(LineTypes, IdsThatATableOrAQueryCannotHoldAreFaults) {
  EXPECT_THAT(
      rowFaults(" ,a,1,2\n\"  \",a,1,2\nABCDEFGHIJK,a,1,2\nA'B,a,1,2\n"),
      ElementsAre("2: the id is blank", "3: the id is blank", "4: the id \"ABCDEFGHIJK\" has more than 10 characters",
                  "5: the id \"A'B\" has a single quotation mark"));
  EXPECT_THAT(rowFaults("ABCDEFGHIJ,a,1,2\n"), IsEmpty());
}

TEST(LineTypes, ADescriptionLongerThanTheListShowsIsAFault) {
  EXPECT_THAT(rowFaults("A," + std::string(75, 'x') + ",1,2\n"), IsEmpty());
  EXPECT_THAT(rowFaults("A," + std::string(76, 'x') + ",1,2\n"),
              ElementsAre("2: the description of \"A\" has more than 75 characters"));
  EXPECT_THAT(rowFaults("A,\"one\ntwo\",1,2\n"),
              ElementsAre("2: the id or the description holds a line break or another control character"));
}

TEST(LineTypes, NumbersThatAreNoneOrNotAboveZeroAreFaults) {
  EXPECT_THAT(rowFaults("A,a,x,2\nA,a,,2\nA,a,1,\"0,5\"\nA,a,0,2\nA,a,2,-1\nA,a,inf,nan\n"),
              ElementsAre("2: the frequency \"x\" is no number", "3: the frequency \"\" is no number",
                          "4: the attenuation \"0,5\" is no number", "5: the frequency 0 is not above 0",
                          "6: the attenuation -1 is not above 0", "7: the frequency \"inf\" is no number",
                          "7: the attenuation \"nan\" is no number"));
  EXPECT_THAT(rowFaults("A,a,1,0\n"), ElementsAre("2: the attenuation 0 is not above 0"));
}

TEST(LineTypes, AFrequencyThatRepeatsIsAFault) {
  EXPECT_THAT(rowFaults("A,a,450,2\nB,b,450,2\nA,a,100,1\nA,a,450.0,3\n"),
              ElementsAre("5: the frequency 450 of \"A\" stands in line 2 already"));
}

TEST(LineTypes, ASecondDescriptionOrSpellingOfAnIdIsAFault) {
  EXPECT_THAT(rowFaults("Ab,a,1,2\nAb,b,2,2\nAB,a,3,2\n"),
              ElementsAre("3: the id \"Ab\" has another description in line 2",
                          "4: the id \"AB\" is written \"Ab\" in line 2"));
  EXPECT_THAT(rowFaults("A,,1,2\nA,a,2,2\n"), ElementsAre("3: the id \"A\" has another description in line 2"));
}

TEST(LineTypes, RowsThatCannotBeReadAreFaults) {
  EXPECT_THAT(rowFaults("\"A\"x,a,1,2\n"), ElementsAre("2: text follows a closing quotation mark"));
  EXPECT_THAT(faultsOf("id,description,MHz,dB/100m,\"x\"y\nA,a,1,2,3\n"),
              ElementsAre("1: text follows a closing quotation mark"));
}

TEST(LineTypes, FaultsStandInTheOrderOfTheText) {
  EXPECT_THAT(rowFaults("A,a,1,2\nA,a,1,3\n,b,1,2\n"),
              ElementsAre("3: the frequency 1 of \"A\" stands in line 2 already", "4: the id is blank"));
}

}  // namespace

}  // namespace vantrelix::test

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

#include "LineSuite.h"
#include "foundation/errHand.h"
#include "lines/getLineLossValue.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;

class LineLoss : public LineSuite {
 protected:
  LineLoss() {
    makeLibrary("X0001");
    addLine("X0001", "F78", "7/8 in foam");
    addPoints("X0001", "F78", {{100, 1}, {1000, 10}, {2000, 25}});
  }
  // 100 ft of the line.
  static Answer at(double freq, const std::string& id = "F78") { return loss("LMSX0001", id, 100, "ft", freq); }
  static void expectRefused(const Answer& answer, const std::string& text) {
    EXPECT_TRUE(answer.Failed);
    EXPECT_EQ(answer.ErrorText, text);
    EXPECT_EQ(answer.Loss, 77);
  }
};

TEST_F(LineLoss, AtTheLowestFrequencyItIsTheFirstAttenuationTimesTheLength) {
  const Answer answer = loss("LMSX0001", "F78", 250, "ft", 100);
  EXPECT_FALSE(answer.Failed);
  EXPECT_EQ(answer.ErrorText, "");
  EXPECT_EQ(answer.Loss, 2.5);
}

TEST_F(LineLoss, AtAMiddleAndAtTheLastPointItIsThatPointsAttenuation) {
  EXPECT_EQ(at(1000).Loss, 10);
  EXPECT_EQ(at(2000).Loss, 25);
}

TEST_F(LineLoss, BetweenTwoPointsItIsLinearInBothLogarithms) { EXPECT_NEAR(at(316.2278).Loss, 3.1623, 0.00005); }

TEST_F(LineLoss, TheLengthCountsInItsUnit) {
  EXPECT_NEAR(loss("LMSX0001", "F78", 100, "m", 100).Loss, 328.08 / 100, 0.00005);
  EXPECT_NEAR(loss("LMSX0001", "F78", 1200, "in", 100).Loss, 1, 1e-12);
  EXPECT_NEAR(loss("LMSX0001", "F78", 3048, "cm", 100).Loss, 1, 1e-12);
}

TEST_F(LineLoss, TheLengthGoesThroughGeneralText) {
  EXPECT_EQ(loss("LMSX0001", "F78", 100.0000000000004, "ft", 100).Loss, 1);
  EXPECT_DOUBLE_EQ(loss("LMSX0001", "F78", 0.00000125, "ft", 100).Loss, 0.0000000125);
}

TEST_F(LineLoss, AnUnknownUnitFailsWithALossOfZeroAndNoText) {
  const Answer answer = loss("LMSX0001", "F78", 100, "Ft", 100);
  EXPECT_TRUE(answer.Failed);
  EXPECT_EQ(answer.ErrorText, "");
  EXPECT_EQ(answer.Loss, 0);
  EXPECT_EQ(answer.Description, "7/8 in foam");
}

TEST_F(LineLoss, ABlankFileOrIdIsRefusedWithTheBlankBehindTheText) {
  expectRefused(loss("  ", "F78", 100, "ft", 100), "Invalid Line file:   ");
  expectRefused(loss("LMSX0001", " ", 100, "ft", 100), "Invalid Line ID:  ");
  EXPECT_EQ(loss("LMSX0001", "", 0, "ft", 100).Description, "old");
}

TEST_F(LineLoss, ALengthOfZeroIsRefusedAndStillDescribed) {
  const Answer answer = loss("LMSX0001", "F78", 0, "ft", 100);
  expectRefused(answer, "Line length must be greater than zero.");
  EXPECT_EQ(answer.Description, "7/8 in foam");
  expectRefused(loss("LMSX0001", "F78", -3, "ft", 0), "Line length must be greater than zero.");
}

TEST_F(LineLoss, AFrequencyOfZeroOrLessIsRefused) {
  expectRefused(at(0), "Frequency must be greater than zero.");
  expectRefused(at(-88), "Frequency must be greater than zero.");
  expectRefused(at(std::numeric_limits<double>::quiet_NaN()), "Frequency must be greater than zero.");
}

TEST_F(LineLoss, ALineWithoutPointsIsRefused) {
  addLine("X0001", "EMPTY", "no points");
  expectRefused(at(100, "EMPTY"), "No records found for this line type.");
  expectRefused(at(100, "NOSUCH"), "No records found for this line type.");
}

TEST_F(LineLoss, ThereIsNoExtrapolation) {
  expectRefused(at(99.999), "Frequency is below minimum for this line.");
  expectRefused(at(2000.001), "Frequency is above maximum for this line.");
}

TEST_F(LineLoss, ASinglePointFailsNothingAndLeavesTheLoss) {
  addPoints("X0001", "ONE", {{450, 2}});
  const Answer answer = at(450, "ONE");
  EXPECT_FALSE(answer.Failed);
  EXPECT_EQ(answer.ErrorText, "");
  EXPECT_EQ(answer.Loss, 77);
  expectRefused(at(451, "ONE"), "Frequency is above maximum for this line.");
}

TEST_F(LineLoss, PointsOutOfOrderAreSorted) {
  addPoints("X0001", "MIXED", {{1000, 10}, {2000, 25}, {100, 1}});
  EXPECT_NEAR(at(316.2278, "MIXED").Loss, 3.1623, 0.00005);
}

TEST_F(LineLoss, ARepeatedFrequencyGivesOneOfItsAttenuations) {
  addPoints("X0001", "TWICE", {{100, 1}, {500, 4}, {500, 5}, {1000, 10}});
  EXPECT_THAT(at(500, "TWICE").Loss, ::testing::AnyOf(4, 5));
  EXPECT_GT(at(700, "TWICE").Loss, 4);
  addPoints("X0001", "ALONE", {{500, 4}, {500, 4}});
  EXPECT_EQ(at(500, "ALONE").Loss, 4);
}

TEST_F(LineLoss, AnAttenuationOfZeroOrLessWarnsOfItsLogarithmAndCountsAsOne) {
  addPoints("X0001", "ZERO", {{100, 0}, {1000, 100}, {10000, -3}});
  const Answer low = at(316.227766016838, "ZERO");
  EXPECT_FALSE(low.Failed);
  EXPECT_NEAR(low.Loss, 10, 1e-9);
  ASSERT_EQ(suite.messages.size(), 1U);
  EXPECT_EQ(suite.messages[0].title, "Math Error");
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Log 0 error in testhost Procedure 4101 Flag 600"));
  EXPECT_EQ(at(100, "ZERO").Loss, 1);
  EXPECT_NEAR(at(10000, "ZERO").Loss, 1, 1e-12);
  EXPECT_EQ(suite.messages.size(), 3U);
}

TEST_F(LineLoss, AttenuationsOutsideTheBracketWarnOfNothing) {
  addPoints("X0001", "ZERO", {{100, 1}, {1000, 100}, {10000, 0}});
  EXPECT_NEAR(at(316.227766016838, "ZERO").Loss, 10, 1e-9);
  EXPECT_TRUE(suite.messages.empty());
}

TEST_F(LineLoss, FrequenciesWhoseLogarithmsAreTheSameAreADivisionByZero) {
  addPoints("X0001", "LOG", {{0, 1}, {1, 2}});
  EXPECT_EQ(failureOf([] { at(0.5, "LOG"); }), failure::divisionByZero);
}

TEST_F(LineLoss, ALossOutOfRangeIsAnOverflow) {
  EXPECT_EQ(failureOf([] { loss("LMSX0001", "F78", 1e308, "mi", 2000); }), failure::overflow);
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(LineLoss, AMissingDescriptionReadsAsOneBlank) {
  addLine("X0001", "NULL", Value());
  EXPECT_EQ(loss("LMSX0001", "NULL", 1, "ft", 100).Description, " ");
  EXPECT_EQ(loss("LMSX0001", "NOSUCH", 1, "ft", 100).Description, " ");
}

TEST_F(LineLoss, TheDescriptionCanBeLeftOut) {
  removeTable("LMSX0001");
  Answer answer;
  getLineLossValue("LMSX0001", "F78", 100, "ft", 100, answer.Loss, answer.Failed, answer.ErrorText);
  EXPECT_FALSE(answer.Failed);
  EXPECT_EQ(answer.Loss, 1);
}

TEST_F(LineLoss, TheFileIsFoundInAnyCaseAndWithItsExtension) {
  EXPECT_EQ(loss("lmsx0001.dbf", "F78", 100, "ft", 100).Loss, 1);
  EXPECT_EQ(loss(" LMSX0001 ", "F78", 100, "ft", 100).Loss, 1);
}

TEST_F(LineLoss, ThePointsStandInTheTableOfTheFiveCharactersOfTheName) {
  DbfFile::create(tablePath("LMSX0001EXTRA"), {{"LTYPE_ID", 'C', 10, 0}, {"LN_TYPE", 'C', 75, 0}});
  EXPECT_EQ(loss("LMSX0001EXTRA", "F78", 100, "ft", 100).Loss, 1);
}

TEST_F(LineLoss, ATableThatIsNotThereIsTheCallersAffair) {
  std::string text;
  removeTable("LNDX0001");
  EXPECT_EQ(failureOf([] { at(100); }, &text), failure::noSuchTable);
  EXPECT_THAT(text, HasSubstr("LNDX0001"));
  expectRefused(loss("LMSX0001", "F78", 0, "ft", 100), "Line length must be greater than zero.");
  removeTable("LMSX0001");
  EXPECT_EQ(failureOf([] { at(100); }, &text), failure::noSuchTable);
  EXPECT_THAT(text, HasSubstr("LMSX0001"));
  EXPECT_TRUE(suite.messages.empty());
  EXPECT_FALSE(suite.folder().exists("LINES/LMSX0001.DBF"));
  EXPECT_FALSE(suite.folder().exists("LINES/LNDX0001.DBF"));
}

TEST_F(LineLoss, AFormerFailureIsClearedEvenWhereTheTablesFail) {
  removeTable("LNDX0001");
  Answer answer;
  EXPECT_NE(failureOf([&] {
              getLineLossValue("LMSX0001", "F78", 1, "ft", 100, answer.Loss, answer.Failed, answer.ErrorText);
            }),
            0);
  EXPECT_FALSE(answer.Failed);
  EXPECT_EQ(answer.ErrorText, "");
  EXPECT_EQ(answer.Loss, 77);
}

TEST_F(LineLoss, APointWithoutAValueIsAnInvalidUseOfNull) {
  addPoints("X0001", "NULL", {{100, 1}, {200, std::nullopt}});
  EXPECT_EQ(failureOf([] { at(150, "NULL"); }), failure::invalidUseOfNull);
}

TEST_F(LineLoss, NothingIsWrittenToTheTables) {
  const std::string master = bytesOf("LMSX0001");
  const std::string points = bytesOf("LNDX0001");
  at(100);
  at(1);
  EXPECT_EQ(bytesOf("LMSX0001"), master);
  EXPECT_EQ(bytesOf("LNDX0001"), points);
}

// A reference of its own: natural logarithms, points kept in a map, factors to feet written out.
class Reference {
 public:
  void add(const std::string& id, double freq, double atten) { lines_[id][freq] = atten; }

  double loss(const std::string& id, double length, const std::string& unit, double freq) const {
    static const std::map<std::string, double> feet{
        {"ft", 1}, {"in", 1 / 12.0}, {"m", 1 / 0.3048}, {"cm", 1 / 30.48}, {"mi", 5280}};
    const auto& points = lines_.at(id);
    auto high = points.lower_bound(freq);
    if (high == points.begin()) ++high;
    const auto low = std::prev(high);
    const double slope = std::log(high->second / low->second) / std::log(high->first / low->first);
    return low->second * std::pow(freq / low->first, slope) * length * feet.at(unit) / 100;
  }
  double least(const std::string& id) const { return lines_.at(id).begin()->first; }
  double most(const std::string& id) const { return lines_.at(id).rbegin()->first; }

 private:
  std::map<std::string, std::map<double, double>> lines_;
};

TEST_F(LineLoss, TenThousandRandomQueriesAgreeWithAReferenceComputedApart) {
  std::mt19937 random(20261121);
  const auto between = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
  Reference reference;
  std::vector<std::string> ids;
  for (int line = 0; line < 20; ++line) {
    ids.push_back("L" + std::to_string(line));
    std::map<int, int> points;
    const int count = between(2, 15);
    while (static_cast<int>(points.size()) < count) points[between(1, 80000000)] = between(1, 40000000);
    std::vector<TestPoint> shuffled;
    for (const auto& [freq, atten] : points) {
      shuffled.push_back({freq / 10000.0, atten / 1000000.0});
      reference.add(ids.back(), freq / 10000.0, atten / 1000000.0);
    }
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    addPoints("X0001", ids.back(), shuffled);
  }
  const std::vector<std::string> units{"ft", "in", "m", "cm", "mi"};
  int compared = 0;
  for (int query = 0; query < 10000; ++query) {
    const std::string& id = ids[static_cast<std::size_t>(between(0, 19))];
    const std::string& unit = units[static_cast<std::size_t>(between(0, 4))];
    const double length = between(1, 1000000) / 100.0;
    const double share = between(0, 1000) / 1000.0;
    const double freq =
        std::min(reference.most(id), reference.least(id) * std::pow(reference.most(id) / reference.least(id), share));
    double Loss = -1;
    bool Failed = true;
    std::string ErrorText;
    getLineLossValue("LMSX0001", id, length, unit, freq, Loss, Failed, ErrorText);
    ASSERT_FALSE(Failed) << ErrorText;
    const double expected = reference.loss(id, length, unit, freq);
    ASSERT_NEAR(Loss / expected, 1, 1e-10) << id << ' ' << length << unit << ' ' << freq;
    ++compared;
  }
  EXPECT_EQ(compared, 10000);
}

}  // namespace

}  // namespace vantrelix::test

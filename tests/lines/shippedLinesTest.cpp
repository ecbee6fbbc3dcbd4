// The tables of lines that come with the project.
#include <cmath>
#include <filesystem>
#include <numbers>

#include "LineSuite.h"
#include "foundation/encoding.h"
#include "lines/addLines.h"
#include "lines/lineList.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;

class ShippedLines : public LineSuite {
 protected:
  static std::string textOf(const std::string& name) {
    return readMachineFile(VANTRELIX_SOURCE_DIR "/data/lines/" + name);
  }
  static std::vector<LineType> linesOf(const std::string& name) {
    std::vector<LineFault> faults;
    std::vector<LineType> lines = readLineTypes(textOf(name), faults);
    for (const LineFault& fault : faults) ADD_FAILURE() << name << ", line " << fault.row << ": " << fault.text;
    return lines;
  }
  static std::vector<std::string> names() {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(VANTRELIX_SOURCE_DIR "/data/lines")) {
      if (entry.path().extension() == ".csv") found.push_back(entry.path().filename().string());
    }
    return found;
  }
};

TEST_F(ShippedLines, AllGoIntoOneLibraryUnderDescriptionsOfTheirOwn) {
  std::vector<LineFault> faults;
  ASSERT_GE(names().size(), 3U);
  for (const std::string& name : names()) addLines(folder(), "LMSX0001", linesOf(name), faults);
  for (const LineFault& fault : faults) ADD_FAILURE() << fault.row << ": " << fault.text;
  const LineList list = readLineLibrary(folder(), "LMSX0001", {});
  EXPECT_EQ(list.size(), 12U);
  for (const LineRecord& line : list) EXPECT_EQ(lineOfDescription(list, line.description), &line) << line.description;
}

TEST_F(ShippedLines, LossesRiseWithTheFrequency) {
  for (const std::string& name : names()) {
    for (const LineType& line : linesOf(name)) {
      ASSERT_GE(line.points.size(), 9U) << line.id;
      for (std::size_t i = 1; i < line.points.size(); ++i) {
        const double share = std::log(line.points[i].atten / line.points[i - 1].atten) /
                             std::log(line.points[i].freq / line.points[i - 1].freq);
        // Conductors lose with the square root of the frequency, the dielectric with the frequency itself.
        EXPECT_GT(share, 0.4) << line.id << ' ' << line.points[i].freq;
        EXPECT_LT(share, 1.0) << line.id << ' ' << line.points[i].freq;
      }
    }
  }
}

TEST_F(ShippedLines, EveryTableNamesWhereItsFiguresAreFrom) {
  for (const char* name : {"foam.csv", "braided.csv"}) {
    EXPECT_THAT(textOf(name), HasSubstr("https://github.com/TA3HRJ/coax-cable-database")) << name;
    EXPECT_THAT(textOf(name), HasSubstr("CC BY 4.0")) << name;
  }
  EXPECT_THAT(textOf("rigid.csv"), HasSubstr("computed, not measured"));
}

// Nepers per metre by the formula that the table names, here with the wave impedance from its definition.
double rigidLoss(double outerInches, double innerInches, double megahertz) {
  const double mu = 4e-7 * std::numbers::pi;
  const double impedance = mu * 299792458.0;
  const double surface = std::sqrt(std::numbers::pi * megahertz * 1e6 * mu / 5.8e7);
  const double outer = outerInches * 0.0254;
  const double inner = innerInches * 0.0254;
  const double nepers = surface * (2 / outer + 2 / inner) / (2 * impedance * std::log(outer / inner));
  return nepers * 20 * std::log10(std::numbers::e) * 100 * 0.3048;
}

TEST_F(ShippedLines, RigidLinesHaveTheLossOfTheirConductors) {
  struct Size {
    const char* id;
    double outer;
    double inner;
  };
  constexpr Size kSizes[] = {
      {"R78", 0.785, 0.341}, {"R158", 1.527, 0.664}, {"R318", 3.027, 1.315}, {"R618", 5.981, 2.6}};
  const std::vector<LineType> lines = linesOf("rigid.csv");
  ASSERT_EQ(lines.size(), std::size(kSizes));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i].id, kSizes[i].id);
    // The first waveguide mode, whose wavelength is about the mean circumference.
    const double cutoff = 299.792458 / (std::numbers::pi * (kSizes[i].outer + kSizes[i].inner) * 0.0254 / 2);
    EXPECT_LT(lines[i].points.back().freq, 0.95 * cutoff) << kSizes[i].id;
    for (const LinePoint& point : lines[i].points) {
      EXPECT_NEAR(point.atten, rigidLoss(kSizes[i].outer, kSizes[i].inner, point.freq), 0.0000051)
          << kSizes[i].id << ' ' << point.freq;
    }
  }
}

// "cable_id,freq_mhz,value" of the source's row.
std::string sourceRow(const std::string& source, const std::string& cable, const LinePoint& point,
                      double perTableUnit) {
  for (std::size_t at = 0; at < source.size(); at = source.find('\n', at) + 1) {
    const std::string row = source.substr(at, source.find('\n', at) - at);
    if (sAWK6(row, ",", 1) != cable || std::stod(sAWK6(row, ",", 2)) != point.freq) continue;
    if (std::abs(std::stod(sAWK6(row, ",", 3)) * perTableUnit - point.atten) < 1e-9) return row;
  }
  return "";
}

TEST_F(ShippedLines, CitedFiguresAreThoseOfTheirSource) {
  const std::string folder = realData("lines");
  if (folder.empty()) GTEST_SKIP() << "the shared files are not here";
  const std::string source = readMachineFile(folder + "/ta3hrj_attenuation_excerpt.csv");
  ASSERT_THAT(source, HasSubstr("cable_id,freq_mhz"));
  for (const char* name : {"foam.csv", "braided.csv"}) {
    const std::string text = textOf(name);
    for (const LineType& line : linesOf(name)) {
      const std::size_t block = text.rfind("\n# ", text.find("\n" + line.id + ","));
      const std::string cable = text.substr(block + 3, text.find('\n', block + 1) - block - 3);
      for (const LinePoint& point : line.points) {
        EXPECT_NE(sourceRow(source, cable, point, name[0] == 'f' ? 0.3048 : 1), "")
            << name << ' ' << cable << ' ' << point.freq;
      }
    }
  }
}

}  // namespace

}  // namespace vantrelix::test

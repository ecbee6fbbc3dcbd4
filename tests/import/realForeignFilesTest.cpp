// Real files of other formats before every reader: each is refused with its reason or read, and nothing half.
#include <filesystem>

#include "ImportSuite.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix::test {

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class RealForeignFiles : public ImportSuite, public ::testing::WithParamInterface<std::string> {
 protected:
  void SetUp() override {
    const std::string folder = realData("other");
    if (folder.empty()) GTEST_SKIP() << "no real files here";
    for (const auto& entry : fs::directory_iterator(folder)) {
      paths_.push_back(platform::current().fromMachine(entry.path().string()));
    }
    ASSERT_GT(paths_.size(), 20U);
  }

  ImportResult runFormat(const std::vector<std::string>& paths) {
    return run(paths, false, {}, *findImportFormat(GetParam()));
  }
  std::string path(const std::string& name) const {
    for (const std::string& candidate : paths_) {
      if (candidate.ends_with("\\" + name)) return candidate;
    }
    ADD_FAILURE() << "no file " << name;
    return "";
  }

  std::vector<std::string> paths_;
};

// A row that belongs to no antenna, or an antenna without a point, was written by halves.
void expectWholeAntennas(const std::string& mfg, std::size_t added) {
  const std::vector<AntennaListEntry> antennas = listAntennas(getAntennasPath(), "AMS" + mfg);
  EXPECT_EQ(antennas.size(), added);
  long horizontal = 0;
  long vertical = 0;
  for (const AntennaListEntry& antenna : antennas) {
    EXPECT_GT(antenna.horizontalPoints + antenna.verticalPoints, 0) << antenna.description;
    horizontal += antenna.horizontalPoints;
    vertical += antenna.verticalPoints;
  }
  EXPECT_EQ(MakeAHDFile(mfg)->rowCount(), horizontal);
  EXPECT_EQ(MakeAVDFile(mfg)->rowCount(), vertical);
}

TEST_P(RealForeignFiles, EachIsReadOrRefusedWithItsReason) {
  std::size_t added = 0;
  for (const std::string& file : paths_) {
    const ImportResult result = runFormat({file});
    EXPECT_EQ(result.failed.size(), static_cast<std::size_t>(result.ErrorCount)) << file;
    EXPECT_LE(result.ErrorCount, 1) << file;
    for (const std::string& failed : result.failed) {
      EXPECT_THAT(failed, StartsWith(displayPath(file) + kLineBreak));
      EXPECT_GT(failed.size(), displayPath(file).size() + 12) << file;
      EXPECT_THAT(failed, HasSubstr("(line "));
    }
    if (result.ErrorCount > 0) {
      EXPECT_TRUE(result.added.empty()) << file;
    }
    added += result.added.size();
    expectWholeAntennas(kMfg, added);
    if (HasFailure()) break;
  }
}

TEST_P(RealForeignFiles, OneRunOverAllOfThemEndsAsTheSingleOnesDo) {
  const ImportResult together = runFormat(paths_);
  EXPECT_EQ(together.failed.size(), static_cast<std::size_t>(together.ErrorCount));
  EXPECT_LE(together.added.size() + together.failed.size(), paths_.size() * 2);
  expectWholeAntennas(kMfg, together.added.size());
}

INSTANTIATE_TEST_SUITE_P(AllFormats, RealForeignFiles, ::testing::ValuesIn([] {
                           std::vector<std::string> names;
                           for (const ImportFormat& format : importFormats()) names.push_back(format.name);
                           return names;
                         }()),
                         [](const auto& format) { return replaceAll(format.param, "-", "_"); });

class StrictForeignFiles : public RealForeignFiles {};
INSTANTIATE_TEST_SUITE_P(FixedHead, StrictForeignFiles,
                         ::testing::Values("generic", "nsma", "antel", "decibel", "celwave"));

TEST_P(StrictForeignFiles, TheFormatsWithAFixedHeadTakeNoneOfThem) {
  const ImportResult result = runFormat(paths_);
  EXPECT_EQ(result.failed.size(), paths_.size());
  EXPECT_TRUE(result.added.empty());
}

class LooseForeignFiles : public RealForeignFiles {};
INSTANTIATE_TEST_SUITE_P(AnyLines, LooseForeignFiles, ::testing::Values("bluewave", "tiltek"));

constexpr long kTiltekHeader = 4;

TEST_P(LooseForeignFiles, AFileOfAnglesAndFieldStrengthsIsReadAsOneCut) {
  const ImportResult result = runFormat({path("signalserver_dipole.az")});
  ASSERT_EQ(result.added.size(), 1U);
  const std::vector<AntennaListEntry> antennas = listAntennas(getAntennasPath(), std::string("AMS") + kMfg);
  ASSERT_EQ(antennas.size(), 1U);
  // A line of another kind, then 0 to 359 degrees, one line each.
  const long points = GetParam() == "tiltek" ? 361 - kTiltekHeader : 360;
  EXPECT_EQ(antennas[0].horizontalPoints, points);
  EXPECT_EQ(antennas[0].verticalPoints, 0);
}

}  // namespace

}  // namespace vantrelix::test

#include <algorithm>
#include <filesystem>

#include "ImportSuite.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix::test {

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// Whether a file has the two lines that open its cuts.
bool hasTwoCuts(const fs::path& path) {
  const std::string text = "\n" + replaceAll(readMachineFile(path.string()), "\r", "\n");
  return text.find("\nHORIZONTAL") != std::string::npos && text.find("\nVERTICAL") != std::string::npos;
}

class RealPlanetFiles : public ImportSuite {
 protected:
  void SetUp() override {
    const std::string folder = realData("planet");
    if (folder.empty()) GTEST_SKIP() << "no real files here";
    for (const auto& entry : fs::directory_iterator(folder)) {
      (hasTwoCuts(entry.path()) ? withTwoCuts : others)
          .push_back(platform::current().fromMachine(entry.path().string()));
    }
    std::sort(withTwoCuts.begin(), withTwoCuts.end());
  }

  std::vector<std::string> withTwoCuts, others;
};

TEST_F(RealPlanetFiles, EveryFileWithTwoCutsImports) {
  ASSERT_GT(withTwoCuts.size(), 10u);
  const ImportResult result = run(withTwoCuts);
  EXPECT_EQ(result.ErrorCount, 0) << ::testing::PrintToString(result.failed);
  EXPECT_EQ(result.added.size(), withTwoCuts.size());
  for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), "AMST0001")) {
    EXPECT_EQ(entry.horizontalPoints, 360) << entry.description;
    EXPECT_GE(entry.verticalPoints, 360) << entry.description;
    EXPECT_GT(entry.fLow, 0) << entry.description;
  }
}

TEST_F(RealPlanetFiles, EveryOtherFileIsRefusedWithItsReason) {
  ASSERT_FALSE(others.empty());
  const ImportResult result = run(others);
  EXPECT_EQ(result.ErrorCount, static_cast<int>(others.size()));
  EXPECT_TRUE(result.added.empty());
  for (const std::string& failed : result.failed) EXPECT_THAT(failed, HasSubstr("\r\nError 62: Input past end"));
}

}  // namespace

}  // namespace vantrelix::test

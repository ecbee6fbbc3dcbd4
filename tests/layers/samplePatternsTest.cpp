// The sample pattern files that the project ships are what their generator writes.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace vantrelix::test {
namespace {

namespace fs = std::filesystem;

TEST(SamplePatterns, AreWhatTheirGeneratorWrites) {
  const TempFolder folder;
  const std::string program = std::string(VANTRELIX_BINARY_DIR) + "/bin/sample-patterns";
  ASSERT_EQ(std::system((program + " " + folder.machine()).c_str()), 0);
  int compared = 0;
  for (const auto& entry : fs::directory_iterator(folder.machine())) {
    const fs::path shipped = fs::path(VANTRELIX_SOURCE_DIR) / "data" / "samples" / entry.path().filename();
    EXPECT_EQ(readMachineFile(entry.path().string()), readMachineFile(shipped.string())) << shipped;
    ++compared;
  }
  EXPECT_EQ(compared, 4);
}

}  // namespace
}  // namespace vantrelix::test

// Files that the NSMA (FCC) reader refuses.
#include <filesystem>
#include <gtest/gtest.h>

#include "NsmaFccFixture.h"

namespace vantrelix::test {

namespace {

using NsmaFccFailure = NsmaFcc;

TEST_F(NsmaFccFailure, APointThatHoldsNoNumberFailsTheFile) {
  for (const char* point : {"0 high", "west 0", "0", "", "0 -3dB", "0\t", "\t0\t-3"}) {
    EXPECT_EQ(failureOf(header() + "HH 2\n9 9\n" + point + "\nEND\n"), 13) << point;
    EXPECT_EQ(failureOf(header() + "ELVV 1\n" + point + "\nEND\n"), 13) << point;
  }
  EXPECT_EQ(failureOf(header() + "HH 1\n0 1E400\nEND\n"), 6);
  EXPECT_EQ(failureOf(header("A B", "C", "1", "1.7E308") + "HH 1\n0 1.7E308\nEND\n"), 0);
  EXPECT_EQ(failureOf(header("A B", "C", "1", "-1.7E308") + "HH 1\n0 1.7E308\nEND\n"), 6);
}

TEST_F(NsmaFccFailure, AFailureShowsTheWordThatIsNoNumber) {
  try {
    read(header() + "HH 1\n0 caf\xE9\nEND\n");
    FAIL() << "read";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.description(), "Type mismatch: 'caf\xC3\xA9' is not a number");
  }
}

TEST_F(NsmaFccFailure, ALineMustFollowTheLastPointOfABlock) {
  EXPECT_EQ(failureOf(header() + "HH 1\n0 0"), 62);
  EXPECT_EQ(failureOf(header() + "HH 1\n0 0\n"), 62);
  EXPECT_EQ(failureOf(header() + "HH 1\n0 0\n\n"), 0);
  EXPECT_EQ(failureOf(header() + "ELVV 2\n0 0\n1 1\n"), 62);
  EXPECT_EQ(failureOf(header() + "ELVV 2\n0 0\n1 1\nx"), 0);
}

TEST_F(NsmaFccFailure, ABlockWithMorePointsAnnouncedThanTheFileHoldsFails) {
  EXPECT_EQ(failureOf(header() + "HH 32767\n0 0\n1 1\n"), 62);
  EXPECT_EQ(failureOf(header() + "HH 1"), 62);
  EXPECT_EQ(failureOf(header() + "ELVV 4\n0 0\n1 1\n2 2\nEND\n"), 62);
}

TEST_F(NsmaFccFailure, ANegativeCountFails) {
  EXPECT_EQ(failureOf(header() + "HH -1\nEND\n"), 9);
  EXPECT_EQ(failureOf(header() + "ELVV-32768\nEND\n"), 9);
}

TEST_F(NsmaFccFailure, AFileThatEndsWithinItsHeaderFails) {
  const std::string whole = header();
  for (const std::string& text : {std::string(), std::string("A B\n"), whole.substr(0, whole.find("10\n"))}) {
    EXPECT_EQ(failureOf(text), 62) << text;
  }
  EXPECT_EQ(failureOf(whole), 0);
  EXPECT_EQ(failureOf(whole.substr(0, whole.size() - 1)), 0);
}

TEST_F(NsmaFccFailure, AFileCutAnywhereFailsOrHasWholeCuts) {
  const std::string whole = header() + "HH 2\n0 -1\n9 -2\nELVV 3\n0 0\n1 -1\n2 -2\nEND";
  int failed = 0;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::string text = whole.substr(0, length);
    if (failureOf(text) != 0) {
      ++failed;
      continue;
    }
    const ImportedAntenna antenna = read(text);
    EXPECT_TRUE(antenna.HorCount == 2 || (antenna.HorCount == 0 && antenna.VerCount == 0)) << length;
    EXPECT_TRUE(antenna.VerCount == 3 || antenna.VerCount == 0) << length;
  }
  EXPECT_GT(failed, static_cast<int>(header().size()) - 10);
}

TEST_F(NsmaFccFailure, ALineOfManyMegabytesIsReadOnce) {
  const std::string huge(8 << 20, ' ');
  EXPECT_EQ(read(header(huge + "A B" + huge, "C", huge + "7") + "HH 2\n" + huge + "1" + huge + "2\n9 9\n" + huge + "\n")
                .HorCount,
            2);
  EXPECT_EQ(failureOf(header() + "HH 1\n0 " + std::string(8 << 20, '-') + "\nEND\n"), 13);
}

TEST_F(NsmaFccFailure, DamagedSamplesFail) {
  const std::filesystem::path folder = std::filesystem::path(VANTRELIX_SOURCE_DIR) / "tests/data/nsmaFcc";
  int damaged = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with("damaged-")) continue;
    ++damaged;
    EXPECT_NE(failureOf(sample(name)), 0) << name;
  }
  EXPECT_EQ(damaged, 9);
}

}  // namespace

}  // namespace vantrelix::test

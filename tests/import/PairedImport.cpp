#include "PairedImport.h"

#include <filesystem>
#include <random>
#include <utility>

namespace vantrelix::test {

namespace {

using Points = std::pair<long, long>;  // of the horizontal and of the vertical cut

std::string anyBytes() {
  std::mt19937 random(7);
  std::string bytes;
  for (int i = 0; i < 20000; ++i) bytes += static_cast<char>(random() % 256);
  return bytes;
}

std::vector<std::string> badTexts(const std::string& goodText) {
  constexpr std::size_t kMegabytes = 4 << 20;
  std::vector<std::string> texts = {"",
                                    std::string(kMegabytes, 'x'),
                                    std::string(kMegabytes, '7'),
                                    std::string(kMegabytes, ','),
                                    std::string(kMegabytes, ' ') + "\n1\n2\n3\n4\n5\n6\n7\n8\n9 9\n",
                                    "\n\n\n\n\n\n\n\n" + std::string(kMegabytes, ':'),
                                    std::string(5000, '\0'),
                                    std::string(5000, '\r'),
                                    "32767\n-1\n32767\n-1\n32767\n-1\n32767\n-1\n32767 -1\n-1,32767\n",
                                    anyBytes()};
  for (std::size_t length = 1; length < goodText.size(); length += 3) texts.push_back(goodText.substr(0, length));
  return texts;
}

}  // namespace

void PairedImport::expectBadFilesToHarmNothing(const std::string& goodName, const std::string& goodText) {
  const std::string suffix = goodName.substr(goodName.find('.'));
  std::vector<std::string> names;
  for (const std::string& text : badTexts(goodText)) {
    names.push_back("bad" + std::to_string(names.size()) + suffix);
    files.write(names.back(), text);
  }
  names.push_back("folder" + suffix);
  std::filesystem::create_directory(files.machine(names.back()));
  files.write(goodName, goodText);
  names.push_back(goodName);

  const ImportResult result = import(names);

  EXPECT_GE(result.ErrorCount, 3);
  EXPECT_EQ(result.failed.size() + antennas.size(), names.size());
  ASSERT_FALSE(result.added.empty());
  EXPECT_EQ(result.added.back().file, files.file(goodName));
  std::vector<Points> read, stored;
  for (const ImportedAntenna& antenna : antennas) {
    if (antenna.HorCount > 0 || antenna.VerCount > 0) read.push_back({antenna.HorCount, antenna.VerCount});
  }
  for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), std::string("AMS") + kMfg)) {
    stored.push_back({entry.horizontalPoints, entry.verticalPoints});
  }
  EXPECT_THAT(stored, ::testing::UnorderedElementsAreArray(read));
}

}  // namespace vantrelix::test

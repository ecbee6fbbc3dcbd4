#include <gtest/gtest.h>

#include "foundation/extract.h"
#include "foundation/hostProgram.h"
#include "platform/Platform.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::test;

namespace {

// ASCII text as a version resource has it, two bytes a character.
std::string wide(std::string_view text) {
  std::string bytes;
  for (const char character : text) (bytes += character) += '\0';
  return bytes;
}

}  // namespace

TEST(HostFolder, IsThatOfTheProgramUntilAnotherIsSet) {
  setHostFolder("");
  EXPECT_EQ(hostFolder(), ExtractFolderNoSlash(platform::current().programPath()));
  EXPECT_TRUE(platform::current().folderExists(hostFolder()));
  setHostFolder("/opt/host//");
  EXPECT_EQ(hostFolder(), "\\opt\\host");
  setHostFolder("");
  EXPECT_NE(hostFolder(), "\\opt\\host");
}

TEST(HostProgramName, IsWhatWasSet) {
  const HostProgram former = hostProgram();
  setHostProgram({"planner", 4, 5, 6});
  EXPECT_EQ(hostProgram().name, "planner");
  EXPECT_EQ(hostProgram().major, 4);
  EXPECT_EQ(hostProgram().minor, 5);
  EXPECT_EQ(hostProgram().revision, 6);
  setHostProgram(former);
}

TEST(FileVersion, ReadsAVersionResource) {
  const TempFolder folder;
  const std::string resource = std::string(200, 'M') + wide("FileVersion") + std::string(4, '\0') + wide("3.1.0.27");
  EXPECT_EQ(modFileVerString(folder.write("a.exe", resource + std::string(2, '\0') + wide("9"))), "3.1.0.27");
}

TEST(FileVersion, ReadsPlainTextAndPassesANameWithoutANumber) {
  const TempFolder folder;
  EXPECT_EQ(modFileVerString(folder.write("a.txt", "FileVersion of it\nFileVersion: 2, 0, 1\nmore")), "2, 0, 1");
  EXPECT_EQ(modFileVerString(folder.write("b.txt", "FileVersion=7.25;")), "7.25");
}

TEST(FileVersion, LooksThroughTheFirst64000BytesAlone) {
  const TempFolder folder;
  const std::string version = "FileVersion 1.2";
  EXPECT_EQ(modFileVerString(folder.write("near.bin", std::string(64000 - version.size(), '.') + version)), "1.2");
  EXPECT_EQ(modFileVerString(folder.write("far.bin", std::string(64000, '.') + version)), "");
}

TEST(FileVersion, IsBlankWhereThereIsNone) {
  const TempFolder folder;
  EXPECT_EQ(modFileVerString(folder.write("a.bin", "no version")), "");
  EXPECT_EQ(modFileVerString(folder.write("b.bin", "FileVersion")), "");
  EXPECT_EQ(modFileVerString(folder.write("c.bin", "")), "");
  EXPECT_EQ(modFileVerString(folder.write("d.bin", "FileVersion" + std::string(20, ' ') + "1.2")), "");
  EXPECT_EQ(modFileVerString(folder.file("none.bin")), "");
}

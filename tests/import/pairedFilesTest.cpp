#include <gtest/gtest.h>

#include "import/pairedFiles.h"

namespace vantrelix {

namespace {

TEST(LastReplaced, IsFoundInAnyCaseAndWrittenAsItIsGiven) {
  EXPECT_EQ(withLastReplaced("C:\\A\\ab12h.txt", "H", "V"), "C:\\A\\ab12V.txt");
  EXPECT_EQ(withLastReplaced("C:\\A\\AB12H.TXT", "h", "v"), "C:\\A\\AB12v.TXT");
  EXPECT_EQ(withLastReplaced("AB12H.TXT", "h", "vv"), "AB12vv.TXT");
}

TEST(LastReplaced, IsTheLastOfSeveral) {
  EXPECT_EQ(withLastReplaced("C:\\HH\\HAHB.TXT", "H", "V"), "C:\\HH\\HAVB.TXT");
  EXPECT_EQ(withLastReplaced("C:\\AZ\\AZaz1.TXT", "AZ", "EL"), "C:\\AZ\\AZEL1.TXT");
}

TEST(LastReplaced, IsSoughtInTheExtensionAndTheFoldersToo) {
  EXPECT_EQ(withLastReplaced("C:\\A\\HB.HOR", "H", "V"), "C:\\A\\HB.VOR");
  EXPECT_EQ(withLastReplaced("C:\\NORTH\\AB.TXT", "H", "V"), "C:\\NORTV\\AB.TXT");
  EXPECT_EQ(withLastReplaced("H:\\A\\B.TXT", "H", "V"), "V:\\A\\B.TXT");
}

TEST(LastReplaced, LeavesAPathWithoutItAsItIs) {
  EXPECT_EQ(withLastReplaced("C:\\A\\B.TXT", "H", "V"), "C:\\A\\B.TXT");
  EXPECT_EQ(withLastReplaced("A", "AZ", "EL"), "A");
  EXPECT_EQ(withLastReplaced("", "H", "V"), "");
}

TEST(LastReplaced, MindsNoLettersOutsideAscii) {
  EXPECT_EQ(withLastReplaced("C:\\h\xC3\xA9\xE2\x82\xAC.txt", "H", "V"), "C:\\V\xC3\xA9\xE2\x82\xAC.txt");
}

TEST(WithBaseName, KeepsFolderAndExtension) {
  EXPECT_EQ(withBaseName("C:\\A\\ab.PAT", "cd"), "C:\\A\\cd.PAT");
  EXPECT_EQ(withBaseName("ab.PAT", "cd"), "cd.PAT");
}

TEST(WithBaseName, TrimsTheBaseNameAlone) { EXPECT_EQ(withBaseName("C:\\A \\ab.P", "  c d "), "C:\\A \\c d.P"); }

TEST(WithBaseName, TakesAnExtensionOfMoreThanThreeLettersForNone) {
  EXPECT_EQ(withBaseName("C:\\A\\ab.PATT", "cd"), "C:\\A\\cd.");
  EXPECT_EQ(withBaseName("C:\\A\\ab.P.AT", "cd"), "C:\\A\\cd.");
  EXPECT_EQ(withBaseName("C:\\A\\ab", "cd"), "C:\\A\\cd.");
}

}  // namespace

}  // namespace vantrelix

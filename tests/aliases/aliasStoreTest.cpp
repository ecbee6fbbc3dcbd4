#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "aliases/aliasStore.h"
#include "foundation/getINI.h"
#include "foundation/hostProgram.h"
#include "foundation/suitePaths.h"
#include "platform/Platform.h"
#include "support/TempSuite.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;

constexpr const char* kSection = "ANTENNAS\\AMS?????.DBF";

class AliasStoreTest : public ::testing::Test {
 protected:
  AliasStoreTest() {
    setHostFolder(host.path());
    getAntennasPath();
    getLinesPath();
  }
  ~AliasStoreTest() override { setHostFolder(""); }

  static void store(const std::string& path, const std::string& file, const std::string& description,
                    const std::string& section = kSection) {
    setINI(section, file, path, description);
  }
  static std::string antenna(const std::string& file) { return libraryDescription(LibraryFamily::antenna, file); }
  static std::string line(const std::string& file) { return libraryDescription(LibraryFamily::line, file); }
  std::string folderStore() const { return suite.file("ANTENNAS/QVAliasANT.INI"); }

  TempSuite suite;
  TempFolder host;
};

TEST_F(AliasStoreTest, TheFoldersStoreComesFirst) {
  store(folderStore(), "AMSZ0015.DBF", "Ours");
  store(host.file("QVALIAS.INI"), "AMSZ0015.DBF", "General");
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "Ours");
}

TEST_F(AliasStoreTest, TheGeneralStoreComesBeforeTheBuiltInTable) {
  store(host.file("QVALIAS.INI"), "AMSZ0015.DBF", "General");
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "General");
}

TEST_F(AliasStoreTest, ABarFallsThroughToTheGeneralStoreAndOnToTheBuiltInTable) {
  store(folderStore(), "AMSZ0015.DBF", "|");
  store(host.file("QVALIAS.INI"), "AMSZ0015.DBF", "General");
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "General");
  store(host.file("QVALIAS.INI"), "AMSZ0015.DBF", "|");
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "0404 Scala 30-512");
}

TEST_F(AliasStoreTest, EachLinkOfTheChainServesWhereThoseBeforeItDoNotKnowTheFile) {
  struct Link {
    std::string path;
    const char* description;
  };
  const std::vector<Link> chain = {{folderStore(), "folder"},
                                   {host.file("QVALIAS.INI"), "program"},
                                   {suite.file("QVALIAS.INI"), "installation"},
                                   {suite.file("ANTENNAS/QVAliasAntDefaults.INI"), "defaults"}};
  for (const Link& link : chain) store(link.path, "AMSZ0015.DBF", link.description);
  for (const Link& link : chain) {
    EXPECT_EQ(antenna("AMSZ0015.DBF"), link.description);
    store(link.path, "AMSZ0015.DBF", "|");
  }
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "0404 Scala 30-512");
}

TEST_F(AliasStoreTest, TheSystemWithoutDataComesBeforeTheGeneralStoreAndTheHostsBeforeTheInstallations) {
  store(host.file("QVALIAS.INI"), "AMSX0001.DBF", "General");
  store(suite.folder().write("SYSNODTA/QVALIAS.INI", ""), "AMSX0001.DBF", "Of the installation");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "Of the installation");
  store(host.write("SYSNODTA/QVALIAS.INI", ""), "AMSX0001.DBF", "Of the host");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "Of the host");
  store(host.file("SYSNODTA/QVALIAS.INI"), "AMSX0001.DBF", "|");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "General");
}

TEST_F(AliasStoreTest, ABlankDescriptionFallsThrough) {
  for (const char* none : {" ", "' '", "' | '"}) {
    store(folderStore(), "AMSZ0046.DBF", none);
    EXPECT_EQ(antenna("AMSZ0046.DBF"), "0404 Sinclair") << none;
  }
}

TEST_F(AliasStoreTest, ANameInAnyCaseFindsItsBuiltInDescription) {
  EXPECT_EQ(antenna("amsz0015.dbf"), "0404 Scala 30-512");
  EXPECT_EQ(line("lmstms00.Dbf"), "Times Microwave Lines version 00");
}

TEST_F(AliasStoreTest, AFileNotKnownAnywhereHasABar) {
  EXPECT_EQ(antenna("AMSX0001.DBF"), "|");
  EXPECT_EQ(line("AMSZ0015.DBF"), "|");
  EXPECT_EQ(antenna("LMSAND00.DBF"), "|");
}

TEST_F(AliasStoreTest, TheStoreOfASystemWithoutDataStandsInForAnAbsentFolderStore) {
  store(host.write("SYSNODTA/QVALIAS.INI", ""), "AMSX0001.DBF", "From afar");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "From afar");
  store(folderStore(), "AMSX0002.DBF", "Another");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "|");
}

TEST_F(AliasStoreTest, AFolderStoreWhoseNameIsWrittenInAnotherCaseIsThere) {
  store(host.write("SYSNODTA/QVALIAS.INI", ""), "AMSX0001.DBF", "From afar");
  suite.folder().write("ANTENNAS/qvaliasant.ini", "[ANTENNAS\\AMS?????.DBF]\r\nAMSX0001.DBF=Ours\r\n");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "Ours");
  EXPECT_EQ(antenna("amsx0001.dbf"), "Ours");
}

TEST_F(AliasStoreTest, TheInstallationFolderServesAHostThatStandsElsewhere) {
  store(suite.file("QVALIAS.INI"), "AMSX0001.DBF", "Of the installation");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "Of the installation");
  store(host.file("QVALIAS.INI"), "AMSX0001.DBF", "Of the host");
  EXPECT_EQ(antenna("AMSX0001.DBF"), "Of the host");
}

TEST_F(AliasStoreTest, LinesHaveAStoreAndASectionOfTheirOwn) {
  store(suite.file("LINES/QVAliasLIN.INI"), "LMSX0001.DBF", "Coax", "LINES\\LMS?????.DBF");
  EXPECT_EQ(line("LMSX0001.DBF"), "Coax");
  EXPECT_EQ(antenna("LMSX0001.DBF"), "|");
}

TEST_F(AliasStoreTest, TheDefaultsFileOfTheFolderComesBeforeTheBuiltInTable) {
  store(suite.file("ANTENNAS/QVAliasAntDefaults.INI"), "AMSZ0015.DBF", "Default");
  EXPECT_EQ(GetAliasDefault("antennas\\ams?????.dbf", "AMSZ0015.DBF"), "Default");
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "Default");
  store(suite.file("ANTENNAS/QVAliasAntDefaults.INI"), "AMSZ0015.DBF", "|");
  EXPECT_EQ(antenna("AMSZ0015.DBF"), "0404 Scala 30-512");
}

TEST_F(AliasStoreTest, OnlyAntennasHaveADefaultsFileThatIsRead) {
  store(suite.file("LINES/QVAliasLinDefaults.INI"), "LMSX0001.DBF", "Default", "LINES\\LMS?????.DBF");
  store(suite.file("ANTENNAS/QVAliasAntDefaults.INI"), "LMSX0001.DBF", "Default", "LINES\\LMS?????.DBF");
  EXPECT_EQ(line("LMSX0001.DBF"), "|");
  EXPECT_EQ(GetAliasDefault("LINES\\LMS?????.DBF", "LMSX0001.DBF"), "");
}

TEST_F(AliasStoreTest, ASectionOfNoFamilyHasNoDefault) {
  EXPECT_EQ(GetAliasDefault("OTHER\\AMS?????.DBF", "AMSZ0015.DBF"), "");
  EXPECT_EQ(GetAliasDefault(kSection, "AMSX0001.DBF"), "");
  EXPECT_EQ(GetAliasDefault("lines\\lms?????.dbf", "lmsand00.dbf"), "Andrew Lines  version 00");
}

TEST_F(AliasStoreTest, TheDescriptionsOfAListAreWrittenIntoTheFoldersStoreAlone) {
  suite.folder().write("SYSNODTA/QVALIAS.INI", "");
  const AliasStore antennas(aliasFamily(LibraryFamily::antenna));
  EXPECT_TRUE(antennas.save({{"AMSX0001.DBF", "One"}, {"AMS=0002.DBF", "cannot be"}, {"AMSX0003.DBF", "|"}}));
  EXPECT_EQ(suite.folder().read("ANTENNAS/QVAliasANT.INI"),
            "[ANTENNAS\\AMS?????.DBF]\r\nAMSX0001.DBF=One\r\nAMSX0003.DBF=|\r\n");
  EXPECT_EQ(suite.folder().read("SYSNODTA/QVALIAS.INI"), "");
  EXPECT_EQ(antennas.description("AMSX0001.DBF"), "|");  // as it was when the store was read
  EXPECT_EQ(antenna("AMSX0001.DBF"), "One");
}

TEST_F(AliasStoreTest, ThreeLettersNameTheFamilyInAnyCase) {
  EXPECT_EQ(aliasFamilyOf("amsx"), &aliasFamily(LibraryFamily::antenna));
  EXPECT_EQ(aliasFamilyOf("LMS"), &aliasFamily(LibraryFamily::line));
  for (const char* prefix : {"", "AM", "AHD", " AMS"}) EXPECT_EQ(aliasFamilyOf(prefix), nullptr) << prefix;
}

TEST_F(AliasStoreTest, ListsTheFilesOfTheFamilyInOrderOfDescription) {
  for (const char* name : {"AMSX0002.DBF", "AMSX0001.DBF", "AMSZ0015.DBF", "AHDX0001.DBF", "AMSX00011.DBF",
                           "AMSX001.DBF", "AMSX0001.TXT"}) {
    suite.folder().write(std::string("ANTENNAS/") + name, "x");
  }
  suite.folder().write("ANTENNAS/AMSXFOLD.DBF/inside", "x");
  store(folderStore(), "AMSX0002.DBF", "B");
  store(folderStore(), "AMSX0001.DBF", "a");
  std::vector<std::string> files, descriptions;
  for (const LibraryEntry& entry : libraryFiles(LibraryFamily::antenna)) {
    files.push_back(entry.file);
    descriptions.push_back(entry.description);
  }
  EXPECT_THAT(files, ElementsAre("AMSZ0015.DBF", "AMSX0002.DBF", "AMSX0001.DBF"));
  EXPECT_THAT(descriptions, ElementsAre("0404 Scala 30-512", "B", "a"));
}

TEST_F(AliasStoreTest, AQuestionMarkOfThePatternIsOneCharacterWhateverItsBytes) {
  suite.folder().write(
      "ANTENNAS/AMS\xC3\x84"
      "0001.DBF",
      "x");
  suite.folder().write(
      "ANTENNAS/AMS\xC3\x84"
      "001.DBF",
      "x");
  const std::vector<LibraryEntry> entries = libraryFiles(LibraryFamily::antenna);
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].file,
            "AMS\xC3\x84"
            "0001.DBF");
}

TEST_F(AliasStoreTest, AnEmptyFolderHasNoFiles) {
  EXPECT_TRUE(libraryFiles(LibraryFamily::antenna).empty());
  EXPECT_TRUE(libraryFiles(LibraryFamily::line).empty());
}

TEST_F(AliasStoreTest, TiesStayInOrderOfArrival) {
  for (const char* name : {"AMSX0003.DBF", "AMSX0001.DBF", "amsx0002.dbf"}) {
    suite.folder().write(std::string("ANTENNAS/") + name, "x");
  }
  std::vector<std::string> arrival;
  for (const std::string& name : platform::current().list(getAntennasPath())) arrival.push_back(name);
  std::vector<std::string> files;
  for (const LibraryEntry& entry : libraryFiles(LibraryFamily::antenna)) files.push_back(entry.file);
  EXPECT_EQ(files, arrival);
}

}  // namespace

}  // namespace vantrelix::test

// What the picker leaves behind, and how it stands up to files and folders that are not as they should be.
#include <gmock/gmock.h>

#include "aliases/AliasFixture.h"
#include "foundation/errHand.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class FileAliasClosing : public PickerSuite {
 protected:
  void layout(const std::string& value) const { setINI("CONFIG", "frmFileAlias Grid", getDefaultsINI(), value); }
  std::vector<int> widths() {
    std::vector<int> found;
    open([&found](const frmFileAlias& form) {
      for (const GridColumn& column : form.TDBGrid1.columns()) found.push_back(column.width);
    });
    return found;
  }
};

// --- The store.

TEST_F(FileAliasClosing, AConfirmedListIsWrittenWithTheSuitesDefaults) {
  addFile("AMSZ0015.DBF");
  addFile("AMSX0001.DBF");
  open(takeFirst);
  EXPECT_EQ(suite.folder().read("ANTENNAS/QVAliasANT.INI"),
            "[ANTENNAS\\AMS?????.DBF]\r\nAMSZ0015.DBF=0404 Scala 30-512\r\nAMSX0001.DBF=|\r\n");
}

TEST_F(FileAliasClosing, ACancelledFormWritesNoAliases) {
  addFile("AMSZ0015.DBF");
  open([](frmFileAlias& form) { press(form, frmFileAlias::cancelling); });
  open([](frmFileAlias&) {});
  EXPECT_FALSE(suite.folder().exists("ANTENNAS/QVAliasANT.INI"));
}

TEST_F(FileAliasClosing, WhatStandsInTheStoreBesideTheListIsKept) {
  addFile("AMSX0001.DBF");
  const std::string before =
      "; mine\n[OTHER]\nk=1\n[antennas\\ams?????.dbf]\namsx0001.dbf = Ours\nAMSX0009.DBF=Away\njunk\n";
  suite.folder().write("ANTENNAS/qvaliasant.ini", before);
  open(takeFirst);
  EXPECT_EQ(suite.folder().read("ANTENNAS/qvaliasant.ini"),
            "; mine\n[OTHER]\nk=1\n[antennas\\ams?????.dbf]\namsx0001.dbf=Ours\nAMSX0009.DBF=Away\njunk\n");
  EXPECT_FALSE(suite.folder().exists("ANTENNAS/QVAliasANT.INI"));
}

TEST_F(FileAliasClosing, AliasesOfASystemWithoutDataGoIntoTheFoldersStore) {
  addFile("AMSX0001.DBF");
  const std::string before = "[ANTENNAS\\AMS?????.DBF]\r\nAMSX0001.DBF=From afar\r\n";
  host.write("SYSNODTA/QVALIAS.INI", before);
  open([](frmFileAlias& form) {
    EXPECT_THAT(descriptions(form), ElementsAre("From afar"));
    takeFirst(form);
  });
  EXPECT_EQ(stored("AMSX0001.DBF"), "From afar");
  EXPECT_EQ(host.read("SYSNODTA/QVALIAS.INI"), before);
}

TEST_F(FileAliasClosing, AnAliasFileThatIsNotTextKeepsItsBytes) {
  addFile("AMSZ0015.DBF");
  const std::string noText("\x00\x01[\xFF\xFE\x00=\x80\n\x00", 11);
  suite.folder().write("ANTENNAS/QVAliasANT.INI", noText);
  host.write("QVALIAS.INI", noText);
  open([](frmFileAlias& form) {
    EXPECT_THAT(descriptions(form), ElementsAre("0404 Scala 30-512"));
    takeFirst(form);
  });
  EXPECT_TRUE(screen.shown().empty());
  EXPECT_TRUE(suite.folder().read("ANTENNAS/QVAliasANT.INI").starts_with(noText));
  EXPECT_EQ(stored("AMSZ0015.DBF"), "0404 Scala 30-512");
  EXPECT_EQ(host.read("QVALIAS.INI"), noText);
}

TEST_F(FileAliasClosing, AStoreThatIsAFolderIsNoStoreAndStays) {
  addFile("AMSZ0015.DBF");
  suite.folder().write("ANTENNAS/QVAliasANT.INI/inside", "x");
  open(takeFirst);
  EXPECT_EQ(arguments.sFile, "AMSZ0015.DBF");
  EXPECT_EQ(suite.folder().read("ANTENNAS/QVAliasANT.INI/inside"), "x");
}

TEST_F(FileAliasClosing, AStoreThatCannotBeWrittenIsPassedOverInSilence) {
  addLibrary("AMSX0001.DBF", "Ours");
  const std::string before = suite.folder().read("ANTENNAS/QVAliasANT.INI");
  ListedPlatform platform;
  const platform::Substitute inUse(platform);
  open([&](frmFileAlias& form) {
    screen.inputs = {"New"};
    form.cmdNew.userClick();
    confirm(form);
    platform.crashAt(1);
  });
  EXPECT_EQ(arguments.sFile, "AMSX0002.DBF");
  EXPECT_TRUE(screen.shown().empty());
  platform.reset();
  EXPECT_EQ(suite.folder().read("ANTENNAS/QVAliasANT.INI"), before);
}

TEST_F(FileAliasClosing, EachStoreIsReadOnceForTheListAndTheListIsWrittenOnce) {
  for (int i = 100; i < 160; ++i) addFile("AMSX0" + std::to_string(i) + ".DBF");
  addLibrary("AMSX0001.DBF", "Ours");
  host.write("QVALIAS.INI", "");
  ListedPlatform platform;
  const platform::Substitute inUse(platform);
  const auto times = [](const std::vector<std::string>& paths, const std::string& name) {
    return std::count_if(paths.begin(), paths.end(),
                         [&name](const std::string& path) { return path.find(name) != std::string::npos; });
  };
  const std::string replacement = "QVAliasANT.INI.";  // what a file is written to before it takes its name
  open([&](frmFileAlias& form) {
    EXPECT_EQ(times(platform.read, "QVAliasANT.INI"), 1);
    EXPECT_EQ(times(platform.read, "\\QVALIAS.INI"), 2);  // the program's, and the installation's
    EXPECT_EQ(times(platform.changed, replacement), 0);
    takeFirst(form);
  });
  EXPECT_EQ(times(platform.changed, replacement), 1) << testing::PrintToString(platform.changed);
}

// --- Folders.

TEST_F(FileAliasClosing, AFolderWithoutRightsIsToldOnceWithItsFlag) {
  addFile("AMSX0001.DBF");
  ListedPlatform platform;
  platform.onList = [](const std::string& folder, std::vector<std::string> names) {
    if (folder == getAntennasPath()) throw RunTimeFailure(failure::permissionDenied, "Permission denied: " + folder);
    return names;
  };
  const platform::Substitute inUse(platform);
  arguments.sFile = "AMSX0001.DBF";
  open([](frmFileAlias&) { ADD_FAILURE() << "shown"; });
  EXPECT_TRUE(arguments.bCancel);
  EXPECT_EQ(arguments.sFile, "AMSX0001.DBF");
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_THAT(screen.shown()[0].message.text, HasSubstr("Error 70:"));
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 8201; Flag 1320"));
  EXPECT_EQ(currentProcedure(), 0);
}

TEST_F(FileAliasClosing, AFolderThatIsGoneWhenANewFileIsNamedIsTold) {
  suite.folder().write("site/readme", "x");
  arguments.sPath = suite.file("site");
  ListedPlatform platform;
  const platform::Substitute inUse(platform);
  open([&](frmFileAlias& form) {
    platform.onList = [](const std::string& folder, const std::vector<std::string>&) -> std::vector<std::string> {
      throw RunTimeFailure(failure::pathNotFound, "Path not found: " + folder);
    };
    form.cmdNew.userClick();
    EXPECT_TRUE(form.visible());
    EXPECT_EQ(form.TDBGrid1.rowCount(), 0);
    platform.onList = nullptr;
  });
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_THAT(screen.shown()[0].message.text, HasSubstr("Error 76:"));
  EXPECT_TRUE(screen.asked().empty());
  EXPECT_THAT(suite.log(), HasSubstr("Procedure: 8202"));
}

// --- Place, size and widths.

TEST_F(FileAliasClosing, WithNothingStoredTheColumnsShareTheGridInAFixedProportion) {
  int grid = 0;
  open([&grid](const frmFileAlias& form) { grid = form.TDBGrid1.geometry().width; });
  EXPECT_EQ(grid, 9300);
  setINI("CONFIG", "frmFileAlias Grid", getDefaultsINI(), "");
  EXPECT_THAT(widths(), ElementsAre(5394, 2604));
}

TEST_F(FileAliasClosing, TheGridsWidthAndTheColumnsWidthsAreKeptAlsoWhenCancelled) {
  open([](frmFileAlias& form) {
    form.TDBGrid1.userResizeColumn(0, 4000);
    form.setSize(500, 6000);
    EXPECT_EQ(form.TDBGrid1.geometry().width, 0);
    form.setSize(10000, 6000);
    press(form, frmFileAlias::cancelling);
  });
  EXPECT_EQ(config("frmFileAlias Grid"), "9400|4000|2604");
  EXPECT_THAT(widths(), ElementsAre(4000, 2604));
}

TEST_F(FileAliasClosing, AListOfWidthsThatIsShorterGivesTheDefaultForTheRest) {
  layout("9300|3000");
  EXPECT_THAT(widths(), ElementsAre(3000, 2604));
  layout("9300");
  EXPECT_THAT(widths(), ElementsAre(5394, 2604));
}

TEST_F(FileAliasClosing, AListOfWidthsThatIsLongerIsCutAtTheColumns) {
  layout("9300|3000|2000|900|800");
  EXPECT_THAT(widths(), ElementsAre(3000, 2000));
  EXPECT_EQ(config("frmFileAlias Grid"), "9300|3000|2000");
}

TEST_F(FileAliasClosing, AWidthThatIsNoneGivesTheDefault) {
  for (const char* bad : {"x|abc|-5", "||", "1|0|1E300", "|||||", "a|144001|-1E300"}) {
    layout(bad);
    EXPECT_THAT(widths(), ElementsAre(5394, 2604)) << bad;
  }
  layout("0| 2000.4 twips |144000");
  EXPECT_THAT(widths(), ElementsAre(2000, 144000));
}

TEST_F(FileAliasClosing, ComesBackWhereItWasLeftInItsSize) {
  open([](frmFileAlias& form) {
    form.moveTo(1200, 900);
    form.setSize(10000, 6000);
  });
  EXPECT_EQ(config("frmFileAlias-X"), "1200");
  open([](const frmFileAlias& form) { EXPECT_EQ(form.geometry(), (Rectangle{1200, 900, 10000, 6000})); });
}

TEST_F(FileAliasClosing, StoredPlacesThatAreNoNumbersOrLieOffEveryScreenCentreIt) {
  const Rectangle centred{9450, 4350, 9900, 7500};  // on a screen of 1920 by 1080 pixels
  for (const auto& [x, y] : {std::pair("abc", "def"), std::pair("900000", "900000"), std::pair("", "100")}) {
    setINI("CONFIG", "frmFileAlias-X", getDefaultsINI(), x);
    setINI("CONFIG", "frmFileAlias-Y", getDefaultsINI(), y);
    setINI("CONFIG", "frmFileAlias-W", getDefaultsINI(), "wide");
    setINI("CONFIG", "frmFileAlias-H", getDefaultsINI(), "0");
    open([&](const frmFileAlias& form) { EXPECT_EQ(form.geometry(), centred) << x << ' ' << y; });
  }
  EXPECT_TRUE(screen.shown().empty());
}

}  // namespace
}  // namespace vantrelix::test

#include <algorithm>
#include <gmock/gmock.h>

#include "aliases/AliasFixture.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"

namespace vantrelix::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Button = frmFileAlias::Button;

class FileAlias : public PickerSuite {};

// --- The list.

TEST_F(FileAlias, ListsDescriptionsInTheOrderOfCharacterCodesWithTheirFiles) {
  addLibrary("AMSX0001.DBF", "a small letter");
  addLibrary("AMSX0002.DBF", "\xC3\x84 far letter");
  addLibrary("AMSX0003.DBF", "Zebra");
  addFile("AMSZ0015.DBF");
  open([](const frmFileAlias& form) {
    EXPECT_THAT(descriptions(form), ElementsAre("0404 Scala 30-512", "Zebra", "a small letter", "\xC3\x84 far letter"));
    EXPECT_THAT(files(form), ElementsAre("AMSZ0015.DBF", "AMSX0003.DBF", "AMSX0001.DBF", "AMSX0002.DBF"));
    EXPECT_EQ(form.TDBGrid1.column(0).caption, "Description");
    EXPECT_EQ(form.TDBGrid1.column(1).caption, "File");
    EXPECT_TRUE(form.TDBGrid1.column(1).visible);
    EXPECT_FALSE(form.TDBGrid1.anyEditable());
  });
}

TEST_F(FileAlias, FilesWithOneDescriptionListInTheOrderOfTheSystem) {
  std::vector<std::string> expected;
  for (int i = 10; i < 60; ++i) {
    expected.push_back("AMSX00" + std::to_string(i) + ".DBF");
    addLibrary(expected.back(), "Same");
  }
  ListedPlatform platform;
  const platform::Substitute inUse(platform);
  for (const bool reversed : {false, true}) {
    if (reversed) std::reverse(expected.begin(), expected.end());
    platform.onList = [reversed](const std::string&, std::vector<std::string> names) {
      std::sort(names.begin(), names.end());
      if (reversed) std::reverse(names.begin(), names.end());
      return names;
    };
    open([&expected](const frmFileAlias& form) { EXPECT_EQ(files(form), expected); });
  }
}

TEST_F(FileAlias, AFileNotKnownAnywhereShowsABar) {
  addFile("AMSX0001.DBF");
  open([](const frmFileAlias& form) { EXPECT_THAT(descriptions(form), ElementsAre("|")); });
}

TEST_F(FileAlias, TheCaptionCountsTheFiles) {
  addFile("AMSX0001.DBF");
  addFile("AMSX0002.DBF");
  open([](const frmFileAlias& form) { EXPECT_EQ(form.caption(), "Antenna Library to Open - 2 files"); });
}

TEST_F(FileAlias, AnEmptyFolderCountsNoneAndContinueSaysNothingSelected) {
  open([this](frmFileAlias& form) {
    EXPECT_EQ(form.caption(), "Antenna Library to Open - 0 files");
    confirm(form);
    EXPECT_TRUE(form.visible());
    ASSERT_EQ(screen.shown().size(), 1U);
    const Message& message = screen.shown()[0].message;
    EXPECT_EQ(message.title, "Nothing Selected");
    EXPECT_EQ(message.text, "You must select the line you want by clicking the selection button on the left.");
    EXPECT_EQ(message.icon, MsgIcon::information);
    EXPECT_EQ(message.buttons, MsgButtons::ok);
  });
  EXPECT_TRUE(arguments.bCancel);
}

TEST_F(FileAlias, ThePathStandsInTheMachinesForm) {
  open([](const frmFileAlias& form) {
    EXPECT_EQ(form.lblPath.caption(), displayPath(setPathName(getAntennasPath(), "AMS?????.DBF")));
    EXPECT_EQ(form.lblPath.caption().find('\\'), std::string::npos);
    EXPECT_EQ(form.fraPath.caption(), "Path");
    EXPECT_EQ(form.Frame1.caption(), "Select File");
    EXPECT_EQ(form.cmdNew.caption(), "New File");
    EXPECT_EQ(form.Command1[Button::cancelling].caption(), "Cancel");
    EXPECT_EQ(form.Command1[Button::continuing].caption(), "Continue");
  });
}

TEST_F(FileAlias, AnotherFolderHasItsOwnFilesAndItsOwnStore) {
  suite.folder().write("site/AMSX0007.DBF", "x");
  suite.folder().write("site/QVAliasANT.INI", "[ANTENNAS\\AMS?????.DBF]\r\nAMSX0007.DBF=Of the site\r\n");
  addLibrary("AMSX0001.DBF", "Of the suite");
  arguments.sPath = suite.file("SITE");  // found in any case
  open([](frmFileAlias& form) {
    EXPECT_THAT(descriptions(form), ElementsAre("Of the site"));
    EXPECT_THAT(form.lblPath.caption(), HasSubstr("/SITE/AMS?????.DBF"));
    takeFirst(form);
  });
  EXPECT_EQ(arguments.sFile, "AMSX0007.DBF");
  EXPECT_EQ(stored("AMSX0007.DBF"), "(none)");
}

TEST_F(FileAlias, ABlankPathMeansTheFamilysFolder) {
  addFile("AMSZ0015.DBF");
  arguments.sPath = "  ";
  open([](const frmFileAlias& form) {
    EXPECT_THAT(files(form), ElementsAre("AMSZ0015.DBF"));
    EXPECT_EQ(form.lblPath.caption(), displayPath(setPathName(getAntennasPath(), "AMS?????.DBF")));
  });
  EXPECT_THAT(screen.shown(), IsEmpty());
}

TEST_F(FileAlias, LinesHaveTheirOwnFamily) {
  addFile("LMSAND00.DBF");
  addFile("AMSZ0015.DBF");
  arguments.sPrefix = "lmsx";
  arguments.sTitle = "Pick a line";
  open([](frmFileAlias& form) {
    EXPECT_THAT(descriptions(form), ElementsAre("Andrew Lines  version 00"));
    EXPECT_EQ(form.caption(), "Pick a line - 1 files");
    takeFirst(form);
  });
  EXPECT_EQ(arguments.sFile, "LMSAND00.DBF");
  EXPECT_EQ(getPrivateProfileString(kLineSection, "LMSAND00.DBF", "", kIniBuffer, suite.file("LINES/QVAliasLIN.INI")),
            "Andrew Lines  version 00");
}

TEST_F(FileAlias, ABlankTitleMeansAntennas) {
  arguments.sTitle = "  ";
  open([](const frmFileAlias& form) { EXPECT_EQ(form.caption(), "Select Antenna Library - 0 files"); });
}

TEST_F(FileAlias, AFormWithoutACaptionNamesItsFamily) {
  for (const auto& [prefix, caption] : {std::pair("ams", "Select Antenna Library"),
                                        std::pair("LMS", "Select Transmission Line Library"), std::pair("XYZ", "")}) {
    frmFileAlias form;
    form.sPrefix = prefix;
    form.InitForm();
    EXPECT_EQ(form.caption(), caption);
    form.setCaption("Mine");
    form.InitForm();
    EXPECT_EQ(form.caption(), "Mine");
    form.setCaption("  ");
    form.InitForm();
    EXPECT_EQ(form.caption(), *caption == '\0' ? "  " : caption);
  }
}

TEST_F(FileAlias, AnUnusualPrefixLeavesAFormWithoutAPattern) {
  addFile("AMSX0001.DBF");
  arguments.sPrefix = "XYZ";
  arguments.sPath = getAntennasPath();
  open([this](frmFileAlias& form) {
    EXPECT_EQ(form.TDBGrid1.rowCount(), 0);
    EXPECT_EQ(form.caption(), "Antenna Library to Open - 0 files");
    EXPECT_EQ(form.lblPath.caption(), displayPath(getAntennasPath()) + "/");
    EXPECT_FALSE(form.cmdNew.enabled());
    form.cmdNew.setEnabled(true);
    form.cmdNew.userClick();
    EXPECT_TRUE(screen.asked().empty());
    confirm(form);
    EXPECT_TRUE(form.visible());
  });
  EXPECT_TRUE(arguments.bCancel);
  EXPECT_FALSE(suite.folder().exists("ANTENNAS/QVAliasANT.INI"));
}

// --- Choosing.

TEST_F(FileAlias, ContinueGivesTheFileAndTheDescriptionOfTheCurrentRow) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "\" Second \"");
  open([](frmFileAlias& form) {
    form.TDBGrid1.userMove(GridMove::up);
    form.TDBGrid1.userClick(rowOf(form, "AMSX0002.DBF"), 0);
    confirm(form);
    EXPECT_FALSE(form.visible());
  });
  EXPECT_FALSE(arguments.bCancel);
  EXPECT_EQ(arguments.sFile, "AMSX0002.DBF");
  EXPECT_EQ(arguments.vAlias, "Second");
}

TEST_F(FileAlias, CancelLeavesTheArgumentsAndGivesTheFormABlankName) {
  addLibrary("AMSX0001.DBF", "First");
  arguments.sFile = "AMSX0009.DBF";
  arguments.vAlias = "as it was";
  open([](frmFileAlias& form) {
    press(form, Button::cancelling);
    EXPECT_FALSE(form.visible());
    EXPECT_EQ(form.sFile, " ");
    EXPECT_TRUE(form.bCancel);
  });
  EXPECT_TRUE(arguments.bCancel);
  EXPECT_EQ(arguments.sFile, "AMSX0009.DBF");
  EXPECT_EQ(arguments.vAlias, "as it was");
}

TEST_F(FileAlias, TheFramesClosingCancels) {
  addLibrary("AMSX0001.DBF", "First");
  open([](frmFileAlias& form) { form.userClose(); });
  EXPECT_TRUE(arguments.bCancel);
  open([](frmFileAlias& form) {
    form.TDBGrid1.setRows(nullptr);
    confirm(form);
    form.userClose();
  });
  EXPECT_TRUE(arguments.bCancel);
}

TEST_F(FileAlias, ADoubleClickOnARowContinues) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "Second");
  open([](frmFileAlias& form) { form.TDBGrid1.userDoubleClick(1, 0); });
  EXPECT_EQ(arguments.sFile, "AMSX0002.DBF");
}

TEST_F(FileAlias, EnterContinuesAndEscapeCancels) {
  open([](const frmFileAlias& form) {
    EXPECT_EQ(form.defaultButton(), &form.Command1[Button::continuing]);
    EXPECT_EQ(form.cancelButton(), &form.Command1[Button::cancelling]);
  });
}

TEST_F(FileAlias, WhatTheFormDoesNotUseGoesToItUnchanged) {
  arguments.bOpt2 = arguments.bOpt4 = true;
  arguments.vOpt = Value("x");
  arguments.vReserved = Value(7);
  open([](const frmFileAlias& form) {
    EXPECT_FALSE(form.bOpt1);
    EXPECT_TRUE(form.bOpt2);
    EXPECT_FALSE(form.bOpt3);
    EXPECT_TRUE(form.bOpt4);
    EXPECT_EQ(form.vOpt, Value("x"));
    EXPECT_EQ(form.vReserved, Value(7));
  });
}

// --- The row that is selected, and the focus.

TEST_F(FileAlias, TheNameGivenIsSelectedInAnyCaseAndTheFocusIsOnContinue) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("amsx0002.dbf", "Second");
  arguments.sFile = " AMSX0002.Dbf ";
  open([](frmFileAlias& form) {
    EXPECT_EQ(selectedFile(form), "amsx0002.dbf");
    EXPECT_EQ(form.TDBGrid1.currentRow(), 1);
    EXPECT_EQ(form.activeWidget(), &form.Command1[Button::continuing]);
    confirm(form);
  });
  EXPECT_EQ(arguments.sFile, "amsx0002.dbf");
}

TEST_F(FileAlias, ANameThatIsNotInTheListSelectsNoRow) {
  addLibrary("AMSX0001.DBF", "First");
  for (const char* name : {"AMSX0009.DBF", "AMSX0001", ""}) {
    arguments.sFile = name;
    open([](frmFileAlias& form) {
      EXPECT_EQ(selectedFile(form), "(none)");
      EXPECT_EQ(form.activeWidget(), &form.TDBGrid1);
      EXPECT_FALSE(form.FindAliasMatch("AMSX0009.DBF"));
      EXPECT_TRUE(form.FindAliasMatch("amsx0001.dbf"));
      EXPECT_FALSE(form.FindAliasMatch("AMSX0009.DBF"));
      EXPECT_EQ(selectedFile(form), "(none)");
    });
  }
  EXPECT_THAT(screen.shown(), IsEmpty());
}

TEST_F(FileAlias, ARowThatNobodyChoseIsNotTaken) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "Second");
  arguments.sFile = "AMSX0009.DBF";
  arguments.vAlias = "as it was";
  open([this](frmFileAlias& form) {
    form.TDBGrid1.userResizeColumn(0, 4000);
    form.TDBGrid1.userVisibleRows(1);
    form.TDBGrid1.userMove(GridMove::up);
    form.TDBGrid1.userMove(GridMove::rowEnd);
    EXPECT_EQ(form.TDBGrid1.currentRow(), -1);
    confirm(form);
    EXPECT_TRUE(form.visible());
    ASSERT_EQ(screen.shown().size(), 1U);
    EXPECT_EQ(screen.shown()[0].message.title, "Nothing Selected");
    form.userRemoveRow();
    EXPECT_EQ(form.TDBGrid1.rowCount(), 2);
    EXPECT_EQ(selectedFile(form), "(none)");
    EXPECT_EQ(screen.shown().size(), 1U);
  });
  EXPECT_TRUE(arguments.bCancel);
  EXPECT_EQ(arguments.sFile, "AMSX0009.DBF");
  EXPECT_EQ(arguments.vAlias, "as it was");
  EXPECT_EQ(suite.folder().read("ANTENNAS/QVAliasANT.INI").find("AMSX0009"), std::string::npos);
}

TEST_F(FileAlias, TheFirstRowIsChosenLikeAnyOther) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "Second");
  using Act = void (*)(DataGrid & grid);
  const Act acts[] = {[](DataGrid& grid) { grid.userClick(0, 0); },
                      [](DataGrid& grid) { grid.userSelectRow(0); },
                      [](DataGrid& grid) { grid.userMove(GridMove::top); },
                      [](DataGrid& grid) { grid.userMove(GridMove::down); },
                      [](DataGrid& grid) { grid.userMove(GridMove::pageUp); },
                      [](DataGrid& grid) { grid.userFind("f", false); }};
  for (const Act act : acts) {
    arguments.sFile = "";
    open([act](frmFileAlias& form) {
      act(form.TDBGrid1);
      EXPECT_EQ(selectedFile(form), "AMSX0001.DBF");
      confirm(form);
    });
    EXPECT_EQ(arguments.sFile, "AMSX0001.DBF");
  }
}

TEST_F(FileAlias, AMatchOutOfViewBecomesTheTopRowAndOneInViewLeavesThePage) {
  for (int i = 100; i < 150; ++i) addLibrary("AMSX0" + std::to_string(i) + ".DBF", "Row " + std::to_string(i));
  open([](frmFileAlias& form) {
    form.TDBGrid1.userVisibleRows(8);
    EXPECT_TRUE(form.FindAliasMatch("AMSX0107.DBF"));
    EXPECT_EQ(form.TDBGrid1.firstRow(), 0);
    EXPECT_EQ(form.TDBGrid1.currentRow(), 7);
    EXPECT_TRUE(form.FindAliasMatch("AMSX0108.DBF"));
    EXPECT_EQ(form.TDBGrid1.firstRow(), 8);
    EXPECT_EQ(form.TDBGrid1.currentRow(), 8);
    EXPECT_TRUE(form.FindAliasMatch("AMSX0130.DBF"));
    EXPECT_EQ(form.TDBGrid1.firstRow(), 30);
    EXPECT_TRUE(form.FindAliasMatch("AMSX0103.DBF"));
    EXPECT_EQ(form.TDBGrid1.firstRow(), 3);
  });
}

TEST_F(FileAlias, TheNameIsLookedForOnceMoreWhenTheLayoutHasSettled) {
  for (int i = 100; i < 150; ++i) addLibrary("AMSX0" + std::to_string(i) + ".DBF", "Row " + std::to_string(i));
  arguments.sFile = "AMSX0109.DBF";
  open([](frmFileAlias& form) {
    EXPECT_EQ(form.TDBGrid1.firstRow(), 0);
    form.TDBGrid1.setFirstRow(0);
    form.TDBGrid1.setCurrentRow(0);
    form.TDBGrid1.userVisibleRows(5);
    form.userActivated();
    EXPECT_EQ(form.TDBGrid1.firstRow(), 9);
    EXPECT_EQ(selectedFile(form), "AMSX0109.DBF");
    EXPECT_EQ(GetFlag(), 1500);
  });
}

TEST_F(FileAlias, TheFirstSearchHasAFlagOfItsOwn) {
  struct FlagNoted : ScriptedDesktop {
    int flag = 0;
    void showModal(Form& form) override {
      flag = GetFlag();
      ScriptedDesktop::showModal(form);
    }
  } noted;
  const DesktopInUse inUse(noted);
  modGetOpenFileAliasNoDBClass(arguments);
  EXPECT_EQ(noted.flag, 1400);
}

TEST_F(FileAlias, AnotherRowTakesTheFocusToContinueAndTheSameRowLeavesItOnTheGrid) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "Second");
  open([](frmFileAlias& form) {
    form.TDBGrid1.userMove(GridMove::down);
    EXPECT_EQ(selectedFile(form), "AMSX0001.DBF");
    form.TDBGrid1.userMove(GridMove::down);
    EXPECT_EQ(form.activeWidget(), &form.Command1[Button::continuing]);
    EXPECT_EQ(selectedFile(form), "AMSX0002.DBF");
    form.setFocus(form.TDBGrid1);
    form.TDBGrid1.userClick(1, 1);
    EXPECT_EQ(form.activeWidget(), &form.TDBGrid1);
    form.TDBGrid1.userMove(GridMove::up);
    EXPECT_EQ(form.activeWidget(), &form.Command1[Button::continuing]);
    EXPECT_EQ(selectedFile(form), "AMSX0001.DBF");
  });
}

TEST_F(FileAlias, TypingFindsADescriptionByItsBeginning) {
  addLibrary("AMSX0001.DBF", "Andrew");
  addLibrary("AMSX0002.DBF", "Scala A");
  addLibrary("AMSX0003.DBF", "Scala Z");
  open([](frmFileAlias& form) {
    EXPECT_TRUE(form.TDBGrid1.userFind("s", false));
    EXPECT_EQ(selectedFile(form), "AMSX0002.DBF");
    for (const char* key : {"c", "a", "l", "a", " ", "z"}) form.TDBGrid1.userFind(key, true);
    EXPECT_EQ(selectedFile(form), "AMSX0003.DBF");
    confirm(form);
  });
  EXPECT_EQ(arguments.vAlias, "Scala Z");
}

// --- A new file.

TEST(NewFileNameOf, LooksIntoAFolderWrittenInAnotherCase) {
  const TempFolder folder;
  folder.write("site/AMSX0001.DBF", "x");
  EXPECT_EQ(NewFileName("AMS", folder.file("SITE"), "DBF", 4), "AMSX0002");
}

TEST(NewFileNameOf, IsTheFirstThatNoFileBearsInAnyCase) {
  const TempFolder folder;
  EXPECT_EQ(NewFileName("AMS", folder.path(), "DBF", 4), "AMSX0001");
  folder.write("AMSX0001.DBF", "x");
  folder.write("amsx0002.dbf", "");
  folder.write("AMSX0003.TXT", "x");
  folder.write("AMSX0004.DBF", "x");
  EXPECT_EQ(NewFileName("AMS", folder.path(), "DBF", 4), "AMSX0003");
  EXPECT_EQ(NewFileName("AMS", folder.path(), "TXT", 4), "AMSX0001");
  EXPECT_EQ(NewFileName("ams", folder.path(), "dbf", 4), "amsX0003");
  EXPECT_EQ(NewFileName("LMS", folder.path(), "DBF", 2), "LMSX01");
  EXPECT_EQ(NewFileName("AMS", folder.path(), "DBF", 0), "AMSX1");
}

TEST_F(FileAlias, ANewFileIsAskedForListedSelectedAndChosen) {
  addLibrary("AMSX0001.DBF", "Zulu");
  screen.inputs = {" Ours "};
  open([this](frmFileAlias& form) {
    form.setFocus(form.cmdNew);
    form.cmdNew.userClick();
    ASSERT_EQ(screen.asked().size(), 1U);
    EXPECT_EQ(screen.asked()[0].title, "New Antenna Library");
    EXPECT_EQ(screen.asked()[0].prompt, "AMSX0002\r\nEnter the description for the new library created:");
    EXPECT_EQ(screen.asked()[0].text, "");
    EXPECT_THAT(files(form), ElementsAre("AMSX0001.DBF", "AMSX0002.DBF"));  // behind the last, not in its order
    EXPECT_EQ(selectedFile(form), "AMSX0002.DBF");
    EXPECT_EQ(form.activeWidget(), &form.Command1[Button::continuing]);
    confirm(form);
  });
  EXPECT_EQ(arguments.sFile, "AMSX0002.DBF");
  EXPECT_EQ(arguments.vAlias, "Ours");
  EXPECT_EQ(stored("AMSX0002.DBF"), "Ours");
  EXPECT_FALSE(suite.folder().exists("ANTENNAS/AMSX0002.DBF"));
}

TEST_F(FileAlias, ANewLineLibraryIsNamedAsOne) {
  arguments.sPrefix = "LMS";
  screen.inputs = {"Coax"};
  open([this](frmFileAlias& form) {
    form.cmdNew.userClick();
    EXPECT_EQ(screen.asked()[0].title, "New Line Library");
    EXPECT_THAT(files(form), ElementsAre("LMSX0001.DBF"));
  });
}

TEST_F(FileAlias, ANewFileHasTheExtensionGivenAndItsNameComesBackTrimmed) {
  arguments.sExt = "TBL ";
  screen.inputs = {"Ours"};
  open([](frmFileAlias& form) {
    form.cmdNew.userClick();
    EXPECT_THAT(files(form), ElementsAre("AMSX0001.TBL "));
    confirm(form);
  });
  EXPECT_EQ(arguments.sFile, "AMSX0001.TBL");
}

TEST_F(FileAlias, OneRowAtMostIsSelected) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "Second");
  open([](frmFileAlias& form) {
    form.TDBGrid1.userSelectRow(0);
    form.TDBGrid1.userSelectRow(1, true, false);
    EXPECT_EQ(selectedFile(form), "AMSX0002.DBF");
    form.TDBGrid1.userSelectRow(0, false, true);
    EXPECT_EQ(selectedFile(form), "AMSX0001.DBF");
  });
}

TEST_F(FileAlias, ABlankDescriptionAddsNothing) {
  addLibrary("AMSX0001.DBF", "First");
  screen.inputs = {"", "  "};
  open([](frmFileAlias& form) {
    form.setFocus(form.cmdNew);
    form.cmdNew.userClick();
    form.cmdNew.userClick();
    EXPECT_EQ(form.TDBGrid1.rowCount(), 1);
    EXPECT_EQ(form.activeWidget(), &form.cmdNew);
    EXPECT_EQ(selectedFile(form), "(none)");
  });
}

TEST_F(FileAlias, ANewNameThatIsListedAlreadyIsSelectedAndNotAddedAgain) {
  addLibrary("AMSX0001.DBF", "First");
  screen.inputs = {"One", "Two", "Three"};
  open([](frmFileAlias& form) {
    form.cmdNew.userClick();
    form.TDBGrid1.userClick(0, 0);
    form.setFocus(form.cmdNew);
    form.cmdNew.userClick();
    EXPECT_THAT(descriptions(form), ElementsAre("First", "One"));
    EXPECT_EQ(selectedFile(form), "AMSX0002.DBF");
    EXPECT_EQ(form.activeWidget(), &form.Command1[Button::continuing]);
    // The row stays; the focus goes all the same.
    form.setFocus(form.cmdNew);
    form.cmdNew.userClick();
    EXPECT_EQ(form.activeWidget(), &form.Command1[Button::continuing]);
  });
}

TEST_F(FileAlias, ANewRowFarBelowIsBroughtIntoView) {
  for (int i = 100; i < 150; ++i) addLibrary("AMSX0" + std::to_string(i) + ".DBF", "Row " + std::to_string(i));
  screen.inputs = {"New"};
  open([](frmFileAlias& form) {
    form.TDBGrid1.userVisibleRows(8);
    form.cmdNew.userClick();
    EXPECT_EQ(form.TDBGrid1.currentRow(), 50);
    EXPECT_TRUE(form.TDBGrid1.rowInView(50));
  });
}

TEST_F(FileAlias, NoNewFileWhereItIsNotAllowed) {
  arguments.bAllowNew = false;
  open([](frmFileAlias& form) { EXPECT_FALSE(form.cmdNew.enabled()); });
  arguments.bAllowNew = true;
  open([](frmFileAlias& form) { EXPECT_TRUE(form.cmdNew.enabled()); });
}

TEST_F(FileAlias, ALineBreakInADescriptionIsStoredAsABlank) {
  screen.inputs = {"two\r\nlines"};
  open([](frmFileAlias& form) {
    form.cmdNew.userClick();
    confirm(form);
  });
  EXPECT_EQ(arguments.vAlias, "two\r\nlines");
  EXPECT_EQ(stored("AMSX0001.DBF"), "two lines");
}

// --- Removing a row.

TEST_F(FileAlias, ARowIsRemovedAfterAQuestionAndItsAliasStays) {
  addLibrary("AMSX0001.DBF", "First");
  addLibrary("AMSX0002.DBF", "Second");
  setINI(kAntennaSection, "AMSX0001.DBF", suite.file("ANTENNAS/QVAliasANT.INI"), "'First'");
  screen.answers = {MsgAnswer::yes};
  open([this](frmFileAlias& form) {
    form.TDBGrid1.userClick(1, 0);
    form.TDBGrid1.userClick(0, 0);
    form.userRemoveRow();
    ASSERT_EQ(screen.shown().size(), 1U);
    const Message& asked = screen.shown()[0].message;
    EXPECT_EQ(asked.title, "Remove Antenna Library?");
    EXPECT_EQ(asked.text, "Do you want to remove this antenna library?\r\n\r\nFirst AMSX0001.DBF");
    EXPECT_EQ(asked.buttons, MsgButtons::yesNo);
    EXPECT_EQ(asked.defaultButton, 2);
    EXPECT_THAT(files(form), ElementsAre("AMSX0002.DBF"));
    EXPECT_EQ(selectedFile(form), "AMSX0002.DBF");
    confirm(form);
  });
  EXPECT_EQ(arguments.sFile, "AMSX0002.DBF");
  // Not written again: its line is as it was.
  EXPECT_THAT(suite.folder().read("ANTENNAS/QVAliasANT.INI"), HasSubstr("AMSX0001.DBF='First'\r\n"));
  open([](const frmFileAlias& form) { EXPECT_THAT(files(form), ElementsAre("AMSX0001.DBF", "AMSX0002.DBF")); });
}

TEST_F(FileAlias, AnythingButYesKeepsTheRow) {
  addLibrary("AMSX0001.DBF", "First");
  screen.answers = {MsgAnswer::no, MsgAnswer::cancel};
  open([](frmFileAlias& form) {
    form.TDBGrid1.userMove(GridMove::top);
    form.userRemoveRow();
    form.userRemoveRow();
    EXPECT_EQ(form.TDBGrid1.rowCount(), 1);
  });
  EXPECT_EQ(screen.shown().size(), 2U);
}

TEST_F(FileAlias, RemovingTheLastRowLeavesNothingToChoose) {
  addLibrary("AMSX0001.DBF", "First");
  screen.answers = {MsgAnswer::yes};
  open([this](frmFileAlias& form) {
    form.TDBGrid1.userMove(GridMove::top);
    form.userRemoveRow();
    form.userRemoveRow();
    EXPECT_EQ(form.TDBGrid1.rowCount(), 0);
    confirm(form);
    EXPECT_EQ(screen.shown().back().message.title, "Nothing Selected");
  });
}

TEST_F(FileAlias, ALineLibraryIsRemovedWithTheSameQuestion) {
  addFile("LMSAND00.DBF");
  arguments.sPrefix = "LMS";
  open([](frmFileAlias& form) {
    form.TDBGrid1.userMove(GridMove::top);
    form.userRemoveRow();
  });
  EXPECT_EQ(screen.shown().at(0).message.title, "Remove Antenna Library?");
}

}  // namespace
}  // namespace vantrelix::test

#include "ImportSuite.h"
#include "dialogs/frmMsgBoxChk.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "import/runImport.h"
#include "platform/RunTimeFailure.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RunImport : public ImportSuite {
 protected:
  RunImport() {
    legacy.legacyName = "Aerial";
    legacy.pathKey = "Import Aerial";
    generic.read = legacy.read = [this](ImportSource& source, ImportedAntenna& antenna) {
      ++reads;
      findImportFormat("generic")->read(source, antenna);
    };
  }

  std::optional<ImportResult> choose(const ImportFormat& format, const std::string& answer) {
    screen.filesToOpen = {answer};
    return runImport(format, kMfg, {}, {}, {}, owner);
  }
  // Lets the user press a button of the legacy warning and keeps what it says.
  void letPress(std::size_t button) {
    screen.onModal["frmMsgBoxChk"] = [this, button](Form& form) {
      auto& warning = dynamic_cast<frmMsgBoxChk&>(form);
      title = warning.caption();
      text = warning.Label1.caption();
      captions = {warning.Command1[0].caption(), warning.Command1[1].caption()};
      defaultButton = warning.DefaultButton();
      moreButtons = warning.Command1[2].visible() || warning.Command1[3].visible();
      warning.Command1[button].userClick();
    };
  }
  std::string keptFolder(const ImportFormat& format) const {
    return getINIStr("Antenna Data Path", format.pathKey, "(none)");
  }
  std::vector<std::string> titles() const {
    std::vector<std::string> result;
    for (const auto& shown : screen.shown()) result.push_back(shown.message.title);
    return result;
  }

  ScriptedDesktop screen;
  DesktopInUse inUse{screen};
  ImportOwner owner;
  ImportFormat generic = *findImportFormat("generic");
  ImportFormat legacy = generic;
  int reads = 0;

  std::string title, text;
  std::vector<std::string> captions;
  int defaultButton = -1;
  bool moreButtons = true;
};

TEST_F(RunImport, CancellingTheOpenDialogEndsItQuietly) {
  const auto result = choose(generic, "");
  ASSERT_TRUE(result);
  EXPECT_EQ(result->filesRead, 0);
  EXPECT_THAT(screen.shown(), IsEmpty());
  EXPECT_THAT(screen.formsShown(), IsEmpty());
  EXPECT_EQ(keptFolder(generic), "(none)");
}

TEST_F(RunImport, AsksForFilesUnderTheTitleOfTheFormatFromTheFolderOfTheLastTime) {
  choose(generic, "");
  EXPECT_EQ(screen.openDialogs().at(0).title, "GENERIC Files to Read");
  EXPECT_EQ(screen.openDialogs().at(0).folder, "");
  EXPECT_EQ(screen.openDialogs().at(0).filterIndex, 3);
  screen.answers = {MsgAnswer::no};
  choose(generic, file("a.msi", "A"));
  choose(generic, "");
  EXPECT_EQ(screen.openDialogs().at(2).folder, files.path() + "\\");
  choose(legacy, "");
  EXPECT_EQ(screen.openDialogs().size(), 3U);
}

TEST_F(RunImport, EachFormatKeepsAFolderOfItsOwn) {
  screen.answers = {MsgAnswer::no};
  choose(generic, file("a.msi", "A"));
  EXPECT_EQ(keptFolder(generic), files.path() + "\\");
  EXPECT_EQ(keptFolder(legacy), "(none)");
}

TEST_F(RunImport, OneFileIsCountedAsFiles) {
  screen.answers = {MsgAnswer::no};
  const auto result = choose(generic, file("a.msi", "A"));
  ASSERT_TRUE(result);
  EXPECT_EQ(result->added.size(), 1U);
  ASSERT_EQ(screen.shown().size(), 1U);
  const Message& question = screen.shown()[0].message;
  EXPECT_EQ(question.title, "Preview Antenna Patterns?");
  EXPECT_EQ(question.text,
            "1 files found.\r\n\r\nDo you want to preview each antenna before adding it to the data base?");
  EXPECT_EQ(question.buttons, MsgButtons::yesNoCancel);
  EXPECT_EQ(question.defaultButton, 1);
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(RunImport, TheDigitsOfTheCountAreGrouped) {
  std::string answer = "\\";
  for (int i = 0; i < 1234; ++i) answer.append(1, '\0').append("a");
  screen.answers = {MsgAnswer::cancel};
  choose(generic, answer);
  EXPECT_THAT(screen.shown().at(0).message.text, testing::StartsWith("1,234 files found.\r\n"));
}

TEST_F(RunImport, CancelInThePreviewQuestionReadsNothing) {
  int unloaded = 0;
  owner.unloadPreview = [&] { ++unloaded; };
  screen.answers = {MsgAnswer::cancel};
  const auto result = choose(generic, file("a.msi", "A"));
  ASSERT_TRUE(result);
  EXPECT_EQ(reads, 0);
  EXPECT_EQ(unloaded, 1);
  EXPECT_EQ(keptFolder(generic), "(none)");
  EXPECT_FALSE(suite.folder().exists("ANTENNAS/AMST0001.DBF"));
}

TEST_F(RunImport, PreviewsAreShownWhereTheyAreWanted) {
  int previews = 0;
  owner.preview = [&](const std::string&, const ImportedAntenna&) {
    ++previews;
    return PreviewAnswer::add;
  };
  screen.answers = {MsgAnswer::no, MsgAnswer::yes};
  choose(generic, file("a.msi", "A"));
  EXPECT_EQ(previews, 0);
  choose(generic, file("b.msi", "B"));
  EXPECT_EQ(previews, 1);
}

TEST_F(RunImport, ThePreviewIsTakenAwayBeforeTheLastBox) {
  std::vector<std::string> order;
  owner.unloadPreview = [&] { order.emplace_back("unloaded"); };
  screen.policy = [&](const Message& message) {
    order.push_back(message.title);
    return MsgAnswer::no;
  };
  choose(generic, files.write("bad.msi", ""));
  EXPECT_THAT(order, ElementsAre("Preview Antenna Patterns?", "unloaded", "Import Errors"));
}

TEST_F(RunImport, APreviewThatFailsIsCountedToldAndTakenAway) {
  int unloaded = 0;
  owner.unloadPreview = [&] { ++unloaded; };
  owner.preview = [](const std::string&, const ImportedAntenna&) -> PreviewAnswer {
    throw RunTimeFailure(failure::objectNotSet, "No picture");
  };
  screen.answers = {MsgAnswer::yes};
  EXPECT_TRUE(choose(generic, file("a.msi", "A")));
  EXPECT_EQ(unloaded, 1);
  EXPECT_THAT(titles(), ElementsAre("Preview Antenna Patterns?", "Import Errors"));
  EXPECT_THAT(suite.log(), HasSubstr("No picture"));
}

TEST_F(RunImport, CountsItsFilesFromOneAndLetsWaitingEventsRun) {
  std::vector<std::string> texts;
  owner.progress = [&](const std::string& line) { texts.push_back(line); };
  screen.answers = {MsgAnswer::no};
  file("a.msi", "A");
  file("b.msi", "B");
  choose(generic, files.path() + std::string("\0a.msi\0b.msi", 12));
  EXPECT_THAT(texts, ElementsAre("Working on file 1 of 2: a.msi", "Working on file 2 of 2: b.msi"));
  EXPECT_EQ(screen.turns(), 2);
}

TEST_F(RunImport, ItsUserMayEndItBetweenFiles) {
  bool stop = false;
  owner.progress = [](const std::string&) {};
  owner.cancelled = [&] { return stop; };
  screen.onTurn = [&] { stop = true; };
  screen.answers = {MsgAnswer::no};
  file("a.msi", "A");
  file("b.msi", "B");
  const auto result = choose(generic, files.path() + std::string("\0a.msi\0b.msi", 12));
  ASSERT_TRUE(result);
  EXPECT_THAT(descriptions(), ElementsAre("A"));
  ASSERT_EQ(result->skipped.size(), 1U);
  EXPECT_EQ(result->skipped[0].reason, SkipReason::runEnded);
}

TEST_F(RunImport, OnlyALegacyFormatIsWarnedOf) {
  choose(generic, "");
  EXPECT_THAT(screen.formsShown(), IsEmpty());
  choose(legacy, "");
  EXPECT_THAT(screen.formsShown(), ElementsAre("frmMsgBoxChk"));
}

TEST_F(RunImport, TheLegacyWarningNamesTheFormatAndOffersNoFirst) {
  letPress(1);
  EXPECT_FALSE(choose(legacy, file("a.msi", "A")));
  EXPECT_EQ(title, "Legacy File Format");
  EXPECT_EQ(text,
            "This format may not match the current formats available from Aerial.\r\n\r\n"
            "Many manufacturers provide their antenna formats in the MSI Planet(tm) format.\r\n\r\n"
            "If this legacy import filter cannot read the antenna files you have from Aerial you may want to contact "
            "the manufacturer and obtain the same antenna data in the Planet format.\r\n"
            "Files in the Planet format can be imported into ZOR using the 'Generic' import filter at the bottom of "
            "this list.\r\n\r\n"
            "Do you want to continue with this import of the LEGACY format?\r\n\r\n"
            "Click 'Yes' to use the LEGACY filter.\r\n"
            "Click 'No' to abandon this operation.");
  EXPECT_THAT(captions, ElementsAre("Yes", "No"));
  EXPECT_EQ(defaultButton, 1);
  EXPECT_FALSE(moreButtons);
}

TEST_F(RunImport, NoInTheLegacyWarningEndsItAtOnce) {
  letPress(1);
  EXPECT_FALSE(choose(legacy, file("a.msi", "A")));
  EXPECT_THAT(screen.openDialogs(), IsEmpty());
  EXPECT_THAT(screen.shown(), IsEmpty());
  EXPECT_EQ(reads, 0);
}

TEST_F(RunImport, YesInTheLegacyWarningGoesOn) {
  letPress(0);
  screen.answers = {MsgAnswer::no};
  ASSERT_TRUE(choose(legacy, file("a.msi", "A")));
  EXPECT_THAT(descriptions(), ElementsAre("A"));
  EXPECT_EQ(keptFolder(legacy), files.path() + "\\");
}

TEST_F(RunImport, ALegacyWarningThatIsSilencedAnswersNo) {
  setINI("DO NOT SHOW", "4500", suite.file("MsgBoxChk.INI"), "-1");
  letPress(0);
  EXPECT_FALSE(choose(legacy, file("a.msi", "A")));
  EXPECT_THAT(screen.formsShown(), IsEmpty());
}

TEST_F(RunImport, ANoticeComesBeforeTheDialogOfFiles) {
  generic.notice = {"Note", "These files hold no gain."};
  screen.policy = [this](const Message&) {
    EXPECT_THAT(screen.openDialogs(), IsEmpty());
    return MsgAnswer::ok;
  };
  choose(generic, "");
  ASSERT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.shown()[0].message.title, "Note");
  EXPECT_EQ(screen.shown()[0].message.text, "These files hold no gain.");
  EXPECT_EQ(screen.shown()[0].message.icon, MsgIcon::information);
}

TEST_F(RunImport, AWarningComesBeforeTheNoticeAndBothBeforeTheDialogOfFiles) {
  const ImportFormat ems = *findImportFormat("ems");
  letPress(0);
  screen.policy = [this](const Message& message) {
    EXPECT_EQ(message.title, "EMS ASCII Files");
    EXPECT_THAT(screen.formsShown(), ElementsAre("frmMsgBoxChk"));
    EXPECT_THAT(screen.openDialogs(), IsEmpty());
    return MsgAnswer::ok;
  };
  EXPECT_TRUE(choose(ems, ""));
  EXPECT_EQ(screen.shown().size(), 1U);
  EXPECT_EQ(screen.openDialogs().size(), 1U);
}

TEST_F(RunImport, NoInTheWarningLeavesTheNoticeOut) {
  letPress(1);
  EXPECT_FALSE(choose(*findImportFormat("ems"), ""));
  EXPECT_THAT(screen.shown(), IsEmpty());
  EXPECT_THAT(screen.openDialogs(), IsEmpty());
}

TEST_F(RunImport, TheDialogOffersTheFiltersOfTheFormatAndAllFiles) {
  const struct {
    const char* format;
    std::string filter;
    int index;
  } kOffered[] = {
      {"generic", std::string(".msi\0*.MSI\0.txt\0*.TXT\0All Files (*.*)\0*.*", 41), 3},
      {"antel", std::string(".msi\0*.MSI\0.txt\0*.TXT\0All Files (*.*)\0*.*", 41), 3},
      {"nsma", std::string("All Files (*.*)\0*.*", 19), 1},
      {"nsma-fcc", std::string("All Files (*.*)\0*.*", 19), 1},
      {"txrx", std::string("All Files (*.*)\0*.*", 19), 1},
  };
  letPress(0);
  for (const auto& row : kOffered) {
    choose(*findImportFormat(row.format), "");
    EXPECT_EQ(screen.openDialogs().back().filter, row.filter) << row.format;
    EXPECT_EQ(screen.openDialogs().back().filterIndex, row.index) << row.format;
  }
}

TEST_F(RunImport, AFolderThatCannotBeKeptStopsNothing) {
  generic.pathKey = "";
  screen.answers = {MsgAnswer::no};
  choose(generic, file("a.msi", "A"));
  EXPECT_THAT(descriptions(), ElementsAre("A"));
  EXPECT_THAT(suite.log(), HasSubstr("could not be kept"));
  EXPECT_THAT(titles(), ElementsAre("Preview Antenna Patterns?"));
}

TEST_F(RunImport, ErrorsAreToldAtTheEndAndTheLogNamesLineAndReason) {
  screen.answers = {MsgAnswer::no};
  const std::string bad = files.write("bad.msi", "NAME bad\nGAIN 15dBd\nHORIZONTAL 1\n");
  choose(generic, bad);
  EXPECT_THAT(titles(), ElementsAre("Preview Antenna Patterns?", "Import Errors"));
  EXPECT_THAT(suite.log(), HasSubstr("Error importing Antenna File " + displayPath(bad) + "\r\nError 13: "));
  EXPECT_THAT(suite.log(), HasSubstr("(line 2)"));
}

}  // namespace
}  // namespace vantrelix::test

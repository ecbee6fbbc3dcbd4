// Importing into the open library: the menu at its button, previews, progress, and what the list shows afterwards.
#include "EditorFixture.h"
#include "SlowMachine.h"
#include "editor/antImport.h"
#include "preview/frmAntPreview.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class AntImportTest : public EditorTest {
 protected:
  static const ImportFormat& generic() { return *findImportFormat("generic"); }

  // A file of one antenna with both cuts in a folder of its own.
  void write(const std::string& name, const std::string& antenna) const {
    suite.folder().write("In/" + name, "NAME " + antenna +
                                           "\nFREQUENCY 450\nGAIN 10 dBd\nHORIZONTAL 2\n0 0\n90 3\n"
                                           "VERTICAL 1\n0 0\n");
  }
  // What the user chooses in the dialog of files; then whether there are to be previews.
  void choose(ScriptedDesktop& user, const std::vector<std::string>& names, MsgAnswer previews) const {
    std::string chosen = suite.file("In");
    for (const std::string& name : names) chosen += '\0' + name;
    user.filesToOpen.push_back(chosen);
    user.answers.push_back(previews);
  }
  void import(const std::vector<std::string>& names, MsgAnswer previews = MsgAnswer::no) {
    choose(screen, names, previews);
    importInto(form(), generic());
  }
  std::vector<std::string> listed() {
    std::vector<std::string> names;
    for (int row = 0; row < form().TDBGridAMS.dataRowCount(); ++row) {
      names.push_back(form().amsCellText(row, "ANTENNA"));
    }
    return names;
  }
  void answerPreviews(std::vector<frmAntPreview::Button> buttons) {
    screen.onModal["frmAntPreview"] = [this, buttons](Form& shown) {
      dynamic_cast<frmAntPreview&>(shown).Command1[buttons.at(previews_++)].userClick();
    };
  }
  std::size_t previews() const { return previews_; }

 private:
  std::size_t previews_ = 0;
};

// --- The menu.

TEST_F(AntImportTest, TheButtonPopsTheMenuUpBelowItself) {
  open();
  form().lblProgress.setCaption("left over");
  form().setCaption("left over");
  form().Command1[frmHDAntEditor::importing].userClick();
  EXPECT_THAT(screen.menusShown(), ElementsAre(&form().mnuImport));
  EXPECT_THAT(screen.menuPlaces(), ElementsAre(&form().Command1[frmHDAntEditor::importing]));
  EXPECT_EQ(form().lblProgress.caption(), "");
  EXPECT_EQ(form().caption(), "Antenna Database Editor: Test Library (AMST0001)  0 records");
}

TEST_F(AntImportTest, AnItemOfTheMenuImportsByItsFormat) {
  open();
  write("a.msi", "A");
  choose(screen, {"a.msi"}, MsgAnswer::no);
  for (MenuItem* item : form().mnuImport.items()) {
    if (item->name() == "mnuImportGeneric") item->userClick();
  }
  EXPECT_THAT(listed(), ElementsAre("A"));
  ASSERT_THAT(screen.openDialogs(), SizeIs(1));
  EXPECT_EQ(screen.openDialogs()[0].title, "GENERIC Files to Read");
}

TEST_F(AntImportTest, TheLookUpHasNoImport) {
  open("LOOKUP");
  form().Command1[frmHDAntEditor::importing].userClick();
  EXPECT_THAT(screen.menusShown(), IsEmpty());
}

// --- What comes in.

TEST_F(AntImportTest, TheListAndTheTitleShowTheNewAntennasInTheirOrder) {
  addPanel("M");
  open();
  write("z.msi", "Z");
  write("a.msi", "A");
  import({"z.msi", "a.msi"});
  EXPECT_THAT(listed(), ElementsAre("A", "M", "Z"));
  EXPECT_EQ(form().caption(), "Antenna Database Editor: Test Library (AMST0001)  3 records");
  EXPECT_EQ(azimuths().size(), 4U + 2U * 2U);
  EXPECT_THAT(heard(), Each(StartsWith("Preview Antenna Patterns?")));
}

TEST_F(AntImportTest, TheNewAntennasHaveIDsOfTheLibrary) {
  addPanel("M");
  open();
  write("a.msi", "A");
  import({"a.msi"});
  EXPECT_THAT(rows("AMST0001", {"ATYPE_ID", "ANTENNA"}), ElementsAre("T00010000001|M", "T00010000002|A"));
}

TEST_F(AntImportTest, TheSelectionStaysWithItsAntenna) {
  addPanel("M");
  addPanel("N");
  open(" ", 0, kFirst);
  write("a.msi", "A");
  import({"a.msi"});
  EXPECT_EQ(form().amsCellText(form().selectedRow(), "ANTENNA"), "M");
  EXPECT_EQ(form().amsCell("ANTENNA"), "M");
  EXPECT_EQ(form().TDBGridAHD.dataRowCount(), 4);
}

TEST_F(AntImportTest, ASelectedAntennaThatAnotherProgramDeletedIsSelectedNoMore) {
  addPanel("M");
  addPanel("N");
  open(" ", 0, kFirst);
  DBEngine::OpenDatabase(getAntennasPath())->OpenRecordset("select * from AMST0001")->Delete();
  write("a.msi", "A");
  import({"a.msi"});
  EXPECT_THAT(listed(), ElementsAre("A", "N"));
  EXPECT_EQ(form().selectedRow(), -1);
}

TEST_F(AntImportTest, AnEntryUnderWayStays) {
  addPanel("M");
  open(" ", 0, kFirst);
  ASSERT_TRUE(form().TDBGridAMS.userEdit(0, form().TDBGridAMS.columnOf("ANTENNA"), "Typed"));
  write("a.msi", "A");
  import({"a.msi"});
  EXPECT_TRUE(form().TDBGridAMS.dataChanged());
  EXPECT_THAT(listed(), ElementsAre("A", "Typed"));
  ASSERT_TRUE(form().TDBGridAMS.update());
  EXPECT_THAT(rows("AMST0001", {"ANTENNA"}), ElementsAre("Typed", "A"));
}

TEST_F(AntImportTest, WithoutAChosenFileNothingHappens) {
  addPanel("M");
  open(" ", 0, kFirst);
  importInto(form(), generic());
  EXPECT_THAT(listed(), ElementsAre("M"));
  EXPECT_EQ(form().selectedRow(), 0);
  EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(AntImportTest, TheTablesOfALibraryInAnotherFolderAreThoseThatGrow) {
  std::filesystem::create_directories(platform::current().toMachine(suite.file("Elsewhere")));
  form_ = std::make_unique<frmHDAntEditor>();
  form().InitForm(setPathName(suite.file("Elsewhere"), "AMST0001.DBF"), "There", " ", 0, "There", "");
  ASSERT_EQ(form().SessionResult, 0);
  write("a.msi", "A");
  import({"a.msi"});
  EXPECT_THAT(listed(), ElementsAre("A"));
  EXPECT_THAT(rows("AMST0001", {"ANTENNA"}), IsEmpty());
}

// --- Previews.

TEST_F(AntImportTest, APreviewAddsOrSkips) {
  open();
  for (const char* name : {"a", "b"}) write(std::string(name) + ".msi", name);
  answerPreviews({frmAntPreview::adding, frmAntPreview::skipping});
  import({"a.msi", "b.msi"}, MsgAnswer::yes);
  EXPECT_THAT(listed(), ElementsAre("a"));
  EXPECT_EQ(previews(), 2U);
}

TEST_F(AntImportTest, NoPreviewAddsTheRestUnseen) {
  open();
  for (const char* name : {"a", "b", "c"}) write(std::string(name) + ".msi", name);
  answerPreviews({frmAntPreview::skipping, frmAntPreview::endingPreviews});
  import({"a.msi", "b.msi", "c.msi"}, MsgAnswer::yes);
  EXPECT_THAT(listed(), ElementsAre("b", "c"));
  EXPECT_EQ(previews(), 2U);
}

TEST_F(AntImportTest, ACancelledPreviewLeavesWhatWasAddedBefore) {
  open();
  for (const char* name : {"a", "b", "c"}) write(std::string(name) + ".msi", name);
  answerPreviews({frmAntPreview::adding, frmAntPreview::cancelling});
  import({"a.msi", "b.msi", "c.msi"}, MsgAnswer::yes);
  EXPECT_THAT(listed(), ElementsAre("a"));
}

// --- Progress.

TEST_F(AntImportTest, TheProgressStandsInTheFormAndIsClearedAfterwards) {
  open();
  write("a.msi", "A");
  write("b.msi", "B");
  std::vector<std::string> texts;
  std::vector<bool> offered;
  screen.onTurn = [&] {
    texts.push_back(form().lblProgress.caption());
    offered.push_back(form().Command1[frmHDAntEditor::importing].enabled());
  };
  import({"a.msi", "b.msi"});
  screen.onTurn = {};
  EXPECT_THAT(texts, ElementsAre("Working on file 1 of 2: a.msi", "Working on file 2 of 2: b.msi"));
  EXPECT_THAT(offered, Each(false));
  EXPECT_TRUE(form().Command1[frmHDAntEditor::importing].enabled());
  EXPECT_EQ(form().lblProgress.caption(), "");
}

// Sees every window of progress as it comes up.
class Watcher : public ScriptedDesktop {
 public:
  void showModeless(Form& form, Activation activation) override {
    ScriptedDesktop::showModeless(form, activation);
    progress_ = dynamic_cast<frmProgress*>(&form);
  }
  void doEvents() override {
    ScriptedDesktop::doEvents();
    if (!progress_ || !progress_->visible()) return;
    caption = progress_->caption();
    bars.emplace_back(progress_->ProgressBar1.done(), progress_->ProgressBar1.total());
  }

  std::string caption;
  std::vector<std::pair<long, long>> bars;

 private:
  frmProgress* progress_ = nullptr;
};

TEST_F(AntImportTest, TheBarOfTheProgressWindowCountsTheFilesThatAreDone) {
  open();
  std::vector<std::string> names;
  for (char name = 'a'; name <= 'l'; ++name) {
    names.push_back(std::string(1, name) + ".msi");
    write(names.back(), std::string(1, name));
  }
  SlowMachine slow;
  const platform::Substitute inPlace(slow);
  Watcher user;
  const DesktopInUse at(user);
  choose(user, names, MsgAnswer::no);
  importInto(form(), generic());
  EXPECT_EQ(user.caption, "GENERIC Files to Read");
  ASSERT_FALSE(user.bars.empty());
  EXPECT_TRUE(std::is_sorted(user.bars.begin(), user.bars.end()));
  EXPECT_EQ(user.bars.back(), std::make_pair(11L, 12L));
}

TEST_F(AntImportTest, CancelInTheProgressWindowEndsTheRunBehindItsFile) {
  addPanel("M");
  open(" ", 0, kFirst);
  std::vector<std::string> names;
  for (char name = 'a'; name <= 'z'; ++name) {
    names.push_back(std::string(1, name) + ".msi");
    write(names.back(), std::string(1, name));
  }
  SlowMachine slow;
  const platform::Substitute inPlace(slow);
  ImpatientUser user;
  const DesktopInUse at(user);
  choose(user, names, MsgAnswer::no);
  importInto(form(), generic());
  const std::size_t added = listed().size() - 1;
  EXPECT_GE(added, 1U);
  EXPECT_LT(added, names.size());
  EXPECT_EQ(azimuths().size(), 4U + 2U * added);
  EXPECT_EQ(form().amsCellText(form().selectedRow(), "ANTENNA"), "M");
  EXPECT_EQ(form().lblProgress.caption(), "");
}

// --- Failures.

TEST_F(AntImportTest, AFileThatFailsIsCountedAndTheOthersComeIn) {
  open();
  write("a.msi", "A");
  suite.folder().write("In/bad.msi", std::string("\0\xFF\x01", 3));
  import({"bad.msi", "a.msi"});
  EXPECT_THAT(listed(), ElementsAre("A"));
  const std::vector<std::string> texts = heard();
  ASSERT_THAT(texts, SizeIs(2));
  EXPECT_THAT(texts[1], StartsWith("Import Errors: There were 1 errors on the import files."));
  EXPECT_EQ(form().lblProgress.caption(), "");
}

TEST_F(AntImportTest, ATableThatIsHeldIsToldAndTheListStays) {
  addPanel("M");
  open(" ", 0, kFirst);
  form().clearPatterns();
  write("a.msi", "A");
  DbfFile::setLockWait(20);
  {
    const auto held = DbfFile::open(setPathName(getAntennasPath(), "AHDT0001.DBF"), false, Sharing::exclusive);
    import({"a.msi"});
  }
  DbfFile::setLockWait(2000);
  EXPECT_FALSE(heard().empty());
  EXPECT_THAT(listed(), ElementsAre("M"));
  EXPECT_EQ(azimuths().size(), 4U);
  EXPECT_TRUE(form().Command1[frmHDAntEditor::importing].enabled());
  import({"a.msi"});
  EXPECT_THAT(listed(), ElementsAre("A", "M"));
}

}  // namespace
}  // namespace vantrelix::test

#include "ImportSuite.h"
#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "import/importPreview.h"
#include "import/runImport.h"
#include "platform/RunTimeFailure.h"
#include "preview/frmAntPreview.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PreviewWindow : public ImportSuite {
 protected:
  PreviewWindow() {
    screen.onModal["frmAntPreview"] = [this](Form& shown) {
      auto& form = dynamic_cast<frmAntPreview&>(shown);
      forms.push_back(&form);
      texts.push_back(form.lblAnt.caption());
      if (look) look(form);
      if (forms.size() <= answers.size()) form.Command1[answers[forms.size() - 1]].userClick();
    };
  }
  std::vector<std::string> three() const { return {file("a.msi", "A"), file("b.msi", "B"), file("c.msi", "C")}; }
  // What the Generic format does, under the rules of most formats.
  static ImportFormat withoutEndOfPreviews() {
    ImportFormat format = *findImportFormat("generic");
    format.traits = ImportFormat::plain;
    return format;
  }

  using Button = frmAntPreview::Button;

  ScriptedDesktop screen;
  DesktopInUse inUse{screen};
  std::vector<Button> answers;  // a preview without one is closed by its frame
  std::function<void(frmAntPreview&)> look;
  std::vector<const frmAntPreview*> forms;
  std::vector<std::string> texts;
};

TEST_F(PreviewWindow, AddSkipAndNoPreviewLeaveTheFirstAndTheThirdInTheLibrary) {
  answers = {frmAntPreview::adding, frmAntPreview::skipping, frmAntPreview::endingPreviews};
  const ImportResult result = run(three(), true, withPreviews());
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_THAT(descriptions(), ElementsAre("A", "C"));
  EXPECT_THAT(forms, SizeIs(3));
}

TEST_F(PreviewWindow, NoPreviewEndsThePreviewsOfTheRunInTheFormatsThatKnowIt) {
  answers = {frmAntPreview::endingPreviews};
  run(three(), true, withPreviews());
  EXPECT_THAT(descriptions(), ElementsAre("A", "B", "C"));
  EXPECT_THAT(forms, SizeIs(1));
}

TEST_F(PreviewWindow, ElsewhereNoPreviewAddsAndTheNextIsPreviewedAgain) {
  answers = {frmAntPreview::endingPreviews, frmAntPreview::endingPreviews, frmAntPreview::skipping};
  run(three(), true, withPreviews(), withoutEndOfPreviews());
  EXPECT_THAT(descriptions(), ElementsAre("A", "B"));
  EXPECT_THAT(forms, SizeIs(3));
}

TEST_F(PreviewWindow, CancelEndsTheRun) {
  answers = {frmAntPreview::adding, frmAntPreview::cancelling};
  const ImportResult result = run(three(), true, withPreviews());
  EXPECT_THAT(descriptions(), ElementsAre("A"));
  EXPECT_THAT(forms, SizeIs(2));
  EXPECT_THAT(result.skipped, SizeIs(1));
}

TEST_F(PreviewWindow, TheFrameCancelsEvenBehindAnAdd) {
  answers = {frmAntPreview::adding};
  run(three(), true, withPreviews());
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(PreviewWindow, AWindowThatGoesByItselfCancelsEvenBehindAnAdd) {
  answers = {frmAntPreview::adding};
  look = [this](frmAntPreview& form) {
    if (forms.size() == 2) form.hide();
  };
  run(three(), true, withPreviews());
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(PreviewWindow, ShowsTheFileTheAntennaAndItsCuts) {
  answers = {frmAntPreview::adding};
  std::vector<std::size_t> lines;
  double halfWidth = 0;
  look = [&](const frmAntPreview& form) {
    lines = {form.picHor.lines().size(), form.picVer.lines().size()};
    halfWidth = form.picHor.scale().top;
  };
  const std::string path = file("a.msi", "Panel", "-12 dBd");
  run({path}, true, withPreviews());
  EXPECT_THAT(texts, ElementsAre("Generic Format ANTENNA\r\nFile: " + displayPath(path) +
                                 "\r\nPanel\r\nPanel\r\nGain: -12.00 dBd\r\n2 Azimuths; 1 Elevations"));
  EXPECT_THAT(lines, ElementsAre(2U + 1U, 2U));
  EXPECT_DOUBLE_EQ(halfWidth, 1.05 * 3);
}

TEST_F(PreviewWindow, OneWindowServesTheRunAndIsUnloadedAtItsEnd) {
  answers = {frmAntPreview::adding, frmAntPreview::adding, frmAntPreview::skipping};
  look = [](frmAntPreview& form) { form.moveTo(form.geometry().left + 150, 600); };
  bool unloaded = false;
  ImportOwner owner;
  owner.unloadPreview = [&] { unloaded = getINIStr("CONFIG", "frmAntPreview-Y", "none") == "600"; };
  run(three(), true, withPreviews(owner));
  EXPECT_EQ(forms[0], forms[1]);
  EXPECT_EQ(forms[1], forms[2]);
  EXPECT_TRUE(unloaded) << "the place is kept where the window goes";
}

TEST_F(PreviewWindow, WithoutPreviewsNoWindowIsMade) {
  run(three(), false, withPreviews());
  EXPECT_THAT(screen.formsShown(), IsEmpty());
  EXPECT_EQ(getINIStr("CONFIG", "frmAntPreview-X", "none"), "none");
  EXPECT_THAT(descriptions(), ElementsAre("A", "B", "C"));
}

TEST_F(PreviewWindow, KeepsTheOwnersProgress) {
  std::vector<std::string> progress;
  ImportOwner owner;
  owner.progress = [&](const std::string& text) { progress.push_back(text); };
  answers = {frmAntPreview::cancelling};
  run(three(), true, withPreviews(owner));
  EXPECT_THAT(progress, ElementsAre("Working on file 1 of 3: a.msi"));
}

TEST_F(PreviewWindow, AnAntennaWithoutPointsIsShownBlank) {
  ImportFormat format = withoutEndOfPreviews();
  format.read = [](ImportSource&, ImportedAntenna& antenna) { antenna.GainUnits = "dBd"; };
  std::size_t lines = 9;
  look = [&](const frmAntPreview& form) { lines = form.picHor.lines().size() + form.picVer.lines().size(); };
  answers = {frmAntPreview::adding};
  run({file("a.msi", "A")}, true, withPreviews(), format);
  EXPECT_EQ(lines, 0U);
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(PreviewWindow, AnAntennaThatCannotBeDrawnIsCountedAndTheNextIsShown) {
  ImportFormat format = withoutEndOfPreviews();
  const auto whole = format.read;
  format.read = [whole](ImportSource& source, ImportedAntenna& antenna) {
    whole(source, antenna);
    if (antenna.AntName == "B") antenna.HorValue[1] = std::numeric_limits<double>::infinity();
  };
  answers = {frmAntPreview::adding, frmAntPreview::adding};
  screen.answers = {MsgAnswer::yes};
  file("a.msi", "A");
  file("b.msi", "B");
  file("c.msi", "C");
  screen.filesToOpen = {files.path() + std::string("\0a.msi\0b.msi\0c.msi", 18)};
  const auto result = runImport(format, kMfg, {}, {}, {}, withPreviews());
  ASSERT_TRUE(result);
  EXPECT_EQ(result->ErrorCount, 1);
  ASSERT_THAT(result->failed, SizeIs(1));
  EXPECT_THAT(result->failed[0], testing::HasSubstr("Error 6: The pattern cannot be drawn"));
  EXPECT_THAT(suite.log(), testing::HasSubstr("The pattern cannot be drawn"));
  EXPECT_THAT(descriptions(), ElementsAre("A", "C"));
  EXPECT_EQ(screen.shown().back().message.title, "Import Errors");
  EXPECT_NE(getINIStr("CONFIG", "frmAntPreview-X", "none"), "none");
}

}  // namespace
}  // namespace vantrelix::test

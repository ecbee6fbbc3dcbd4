#include <filesystem>
#include <stdexcept>

#include "ImportSuite.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "import/importRun.h"
#include "platform/FaultPlatform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using ImportRun = ImportSuite;

TEST_F(ImportRun, AddsOneAntennaForEachFile) {
  const ImportResult result = run({file("a.msi", "First"), file("b.msi", "Second", "3 dBi")});
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_EQ(result.filesRead, 2);
  ASSERT_EQ(result.added.size(), 2u);
  EXPECT_EQ(result.added[0].id, "T00010000001");
  EXPECT_EQ(result.added[1].id, "T00010000002");
  EXPECT_EQ(result.added[1].description, "Second");
  EXPECT_EQ(result.added[1].file, files.file("b.msi"));
  EXPECT_THAT(descriptions(), ElementsAre("First", "Second"));
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(ImportRun, OpensTheLibraryItselfWhereNoCursorsArePassed) {
  const ImportResult result = importFiles(*findImportFormat("generic"), kMfg, {}, {}, {}, {file("a.msi", "A")}, false);
  ASSERT_EQ(result.added.size(), 1u);
  EXPECT_EQ(result.added[0].id, "T00010000001");
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(ImportRun, StoresTheAntennaAsItWasRead) {
  run({file("a.msi", "First", "8 dBi")});
  const std::vector<AntennaListEntry> list = listAntennas(getAntennasPath(), "AMST0001");
  ASSERT_EQ(list.size(), 1u);
  EXPECT_DOUBLE_EQ(list[0].gain, 8);
  EXPECT_EQ(list[0].gainUnits, "dBi");
  EXPECT_DOUBLE_EQ(list[0].fLow, 450);
  EXPECT_EQ(list[0].horizontalPoints, 2);
  EXPECT_EQ(list[0].verticalPoints, 1);
}

TEST_F(ImportRun, PassesOverBlankAndMissingFiles) {
  const ImportResult result = run({"", "  ", files.file("gone.msi"), file("a.msi", "A")});
  EXPECT_EQ(result.filesRead, 1);
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(ImportRun, PassesOverPackedFilesInCapitalsAlone) {
  const ImportResult result = run({files.write("SETUP.EXE", "x"), files.write("P.ZIP", "x"),
                                   files.write("setup.exe", "x"), files.write("P.ZIPS", "x")});
  EXPECT_EQ(result.filesRead, 2);
  EXPECT_EQ(result.ErrorCount, 2);
}

TEST_F(ImportRun, TheExtensionBeginsAtTheFirstPoint) {
  const ImportResult result = run({file("a.v2.ZIP", "A"), file("b.EXE.msi", "B")});
  EXPECT_THAT(descriptions(), ElementsAre("A", "B"));
  EXPECT_EQ(result.ErrorCount, 0);
}

TEST_F(ImportRun, ReadsAFileOncePerRun) {
  const std::string path = file("a.msi", "A");
  EXPECT_EQ(run({path, path}).added.size(), 1u);
  EXPECT_EQ(run({path}).added.size(), 1u);
  EXPECT_THAT(descriptions(), ElementsAre("A", "A"));
}

TEST_F(ImportRun, TakesNamesThatDifferInCaseAloneForOneFile) {
  EXPECT_EQ(run({file("a.msi", "A"), file("A.MSI", "B")}).added.size(), 1u);
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(ImportRun, TellsWhichFilesItPassedOverAndWhy) {
  const std::string path = file("a.msi", "A");
  const std::string packed = files.write("P.ZIP", "x");
  const ImportResult result = run({"", path, files.file("gone.msi"), packed, path});
  ASSERT_EQ(result.skipped.size(), 3u);
  EXPECT_EQ(result.skipped[0].file, files.file("gone.msi"));
  EXPECT_EQ(result.skipped[0].reason, SkipReason::missing);
  EXPECT_EQ(result.skipped[1].reason, SkipReason::packed);
  EXPECT_EQ(result.skipped[2].reason, SkipReason::readBefore);
  EXPECT_THAT(skipText(SkipReason::missing), HasSubstr("no such file"));
  EXPECT_THAT(skipText(SkipReason::readBefore), HasSubstr("read before"));
}

TEST_F(ImportRun, DescribesAnAntennaAsTheLibraryHoldsIt) {
  const std::string name = "FILENAME \xD0\x9F" + std::string(70, 'x');
  const std::string path = files.write("a.msi", name + "\nGAIN 1 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 1\n0 0\n");
  const ImportResult result = run({path});
  ASSERT_EQ(result.added.size(), 1u);
  EXPECT_EQ(result.added[0].description, "?" + std::string(59, 'x'));
  EXPECT_THAT(descriptions(), ElementsAre(result.added[0].description));
}

TEST_F(ImportRun, ImportingTwiceGivesTwoIds) {
  const std::string path = file("a.msi", "A");
  const std::string first = run({path}).added.at(0).id;
  EXPECT_NE(run({path}).added.at(0).id, first);
}

TEST_F(ImportRun, ShowsItsProgress) {
  std::vector<std::string> texts;
  ImportOwner owner;
  owner.progress = [&](const std::string& text) { texts.push_back(text); };
  run({file("a.msi", "A"), files.file("gone.msi"), file("c.msi", "C")}, false, owner);
  EXPECT_THAT(texts, ElementsAre("Working on file 1 of 3: a.msi", "Working on file 3 of 3: c.msi"));
}

TEST_F(ImportRun, GroupsTheDigitsOfItsProgress) {
  std::vector<std::string> paths(1233), texts;
  paths.push_back(file("a.msi", "A"));
  ImportOwner owner;
  owner.progress = [&](const std::string& text) { texts.push_back(text); };
  run(paths, false, owner);
  EXPECT_THAT(texts, ElementsAre("Working on file 1,234 of 1,234: a.msi"));
}

TEST_F(ImportRun, AnOwnerThatCannotShowProgressDoesNotStopIt) {
  ImportOwner owner;
  owner.progress = [](const std::string&) { throw RunTimeFailure(failure::objectNotSet, "no label"); };
  EXPECT_EQ(run({file("a.msi", "A")}, false, owner).added.size(), 1u);
}

TEST_F(ImportRun, AFileThatFailsIsCountedLoggedAndToldAtTheEnd) {
  const std::string bad = files.write("bad.msi", "NAME bad\nGAIN 15dBd\nHORIZONTAL 1\n");
  const ImportResult result = run({bad, file("a.msi", "A")});
  EXPECT_EQ(result.ErrorCount, 1);
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], HasSubstr(displayPath(bad) + "\r\nError 13: "));
  EXPECT_THAT(suite.log(), HasSubstr("Error importing Antenna File " + displayPath(bad)));
  EXPECT_THAT(descriptions(), ElementsAre("A"));
  ASSERT_EQ(suite.messages.size(), 1u);
  EXPECT_EQ(suite.messages[0].title, "Import Errors");
  EXPECT_EQ(suite.messages[0].text,
            "There were 1 errors on the import files.\r\n\r\nThe files names were written to the log file\r\n" +
                displayPath(GetTechSupFile()));
  EXPECT_EQ(suite.messages[0].icon, MsgIcon::information);
}

TEST_F(ImportRun, WhatIsNoPatternFileCountsAsAnError) {
  std::filesystem::create_directory(files.machine("folder.msi"));
  const std::string huge = files.write("huge.msi", "");
  std::filesystem::resize_file(files.machine("huge.msi"), std::uintmax_t{1} << 31);
  const std::string picture = files.write("picture.msi", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  const ImportResult result = run({files.file("folder.msi"), huge, picture, files.write("empty.msi", "")});
  EXPECT_EQ(result.filesRead, 4);
  EXPECT_EQ(result.ErrorCount, 4);
  EXPECT_EQ(result.failed.size(), 4u);
  EXPECT_THAT(result.failed.at(3), HasSubstr("Error 62: "));
}

// A platform that refuses to open one file.
class RefusingPlatform : public platform::FaultPlatform {
 public:
  RefusingPlatform(platform::Platform& real, std::string path) : FaultPlatform(real), path_(std::move(path)) {}
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    if (path == path_) throw RunTimeFailure(failure::permissionDenied, "Permission denied: " + displayPath(path));
    return FaultPlatform::open(path, mode);
  }

 private:
  std::string path_;
};

TEST_F(ImportRun, AFileThatMayNotBeReadCountsAsAnError) {
  const std::string path = file("a.msi", "A");
  RefusingPlatform refusing(platform::current(), path);
  const platform::Substitute substitute(refusing);
  const ImportResult result = run({path, file("b.msi", "B")});
  EXPECT_EQ(result.ErrorCount, 1);
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], HasSubstr("Error 70: Permission denied"));
  EXPECT_THAT(descriptions(), ElementsAre("B"));
}

TEST_F(ImportRun, ALogThatCannotBeWrittenHidesNoReason) {
  suite.answers = {MsgAnswer::ok, MsgAnswer::ok};
  RefusingPlatform refusing(platform::current(), GetTechSupFile());
  const platform::Substitute substitute(refusing);
  const ImportResult result =
      run({file("strong.msi", "Strong", "1E13 dBd"), files.write("bad.msi", ""), file("b.msi", "B")});
  EXPECT_THAT(descriptions(), ElementsAre("B"));
  EXPECT_EQ(result.ErrorCount, 1);
  ASSERT_EQ(suite.messages.size(), 2u);
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error 3163"));
  for (const Message& box : suite.messages) {
    EXPECT_THAT(box.text, HasSubstr("\r\n\r\nThe log file could not be written:\r\nError 70: "));
  }
}

TEST_F(ImportRun, AFullDiskIsTheReasonOfTheErrorBox) {
  const std::string path = file("a.msi", "A");
  MakeAntFiles(kMfg);
  platform::FaultPlatform full(platform::current());
  const platform::Substitute substitute(full);
  ImportOwner owner;
  owner.progress = [&](const std::string&) { full.failAt(1, failure::diskFull); };
  const ImportResult result = run({path}, false, owner);
  ASSERT_FALSE(suite.messages.empty());
  EXPECT_EQ(suite.messages[0].title, "Error Importing Antenna");
  EXPECT_THAT(suite.messages[0].text, HasSubstr("Error 61: "));
  EXPECT_THAT(result.added, IsEmpty());
}

TEST_F(ImportRun, AFormatThatFlagsBadContentCountsToo) {
  ImportFormat format = *findImportFormat("generic");
  format.read = [](ImportSource&, ImportedAntenna& antenna) { antenna.ErrFlag = 1; };
  const ImportResult result = run({file("a.msi", "A")}, false, {}, format);
  EXPECT_EQ(result.ErrorCount, 1);
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(ImportRun, AFailureOfAnotherKindDoesNotEndTheRun) {
  ImportFormat format = *findImportFormat("generic");
  format.read = [](ImportSource&, ImportedAntenna&) { throw std::length_error("too long"); };
  const ImportResult result = run({file("a.msi", "A"), file("b.msi", "B")}, false, {}, format);
  EXPECT_EQ(result.ErrorCount, 2);
  EXPECT_THAT(result.failed.at(0), HasSubstr("too long"));
}

TEST_F(ImportRun, TooManyPointsFailCleanly) {
  std::string text = "NAME A\nGAIN 1 dBd\nHORIZONTAL 40000\n";
  for (int i = 0; i < 40000; ++i) text += "1 1\n";
  const ImportResult result = run({files.write("many.msi", text)});
  EXPECT_EQ(result.ErrorCount, 1);
  EXPECT_THAT(result.failed.at(0), HasSubstr("Error 6: "));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(ImportRun, AnAntennaWithoutPointsIsNeitherStoredNorReported) {
  const ImportResult result = run({files.write("none.msi", "NAME A\nGAIN 1 dBd\nHORIZONTAL 0\nVERTICAL 0\n")});
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_THAT(result.added, IsEmpty());
  EXPECT_THAT(suite.messages, IsEmpty());
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(ImportRun, TheWorkingSetStartsAfreshForEachFile) {
  const std::string nameless = files.write("b.msi", "GAIN 1 dBd\nHORIZONTAL 1\n0 0\nVERTICAL 1\n0 0\n");
  const ImportResult result = run({file("a.msi", "A"), nameless});
  ASSERT_EQ(result.added.size(), 2u);
  EXPECT_EQ(result.added[1].description, "");
}

TEST_F(ImportRun, AWriteThatFailsAsksWhetherToGoOn) {
  suite.answers = {MsgAnswer::ok};
  const ImportResult result = run({file("a.msi", "Strong", "1E13 dBd"), file("b.msi", "B")});
  ASSERT_EQ(suite.messages.size(), 1u);
  const Message& box = suite.messages[0];
  EXPECT_EQ(box.title, "Error Importing Antenna");
  EXPECT_EQ(box.buttons, MsgButtons::okCancel);
  EXPECT_THAT(box.text,
              HasSubstr("Error Importing Antenna\r\nError writing Antenna Library T0001\r\nStrong\r\nError 3163"));
  EXPECT_THAT(box.text, HasSubstr("\r\nMfg T0001\r\nAnt Strong\r\n\r\nClick OK to continue with other antennas\r\n"
                                  "Click Cancel to end this operation"));
  EXPECT_THAT(suite.log(), HasSubstr("Mfg T0001\r\nAnt Strong"));
  EXPECT_EQ(result.ErrorCount, 0);
  EXPECT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(descriptions(), ElementsAre("B"));
}

TEST_F(ImportRun, CancelInTheErrorBoxEndsIt) {
  suite.answers = {MsgAnswer::cancel};
  const ImportResult result =
      run({files.write("bad.msi", ""), file("a.msi", "Strong", "1E13 dBd"), file("b.msi", "B")});
  EXPECT_THAT(result.added, IsEmpty());
  ASSERT_EQ(suite.messages.size(), 2u);
  EXPECT_EQ(suite.messages[1].title, "Import Errors");
  ASSERT_EQ(result.skipped.size(), 1u);
  EXPECT_EQ(result.skipped[0].file, files.file("b.msi"));
  EXPECT_EQ(result.skipped[0].reason, SkipReason::runEnded);
}

TEST_F(ImportRun, TheOwnerMayEndItBetweenFiles) {
  int asked = 0;
  ImportOwner owner;
  owner.cancelled = [&] { return ++asked > 1; };
  EXPECT_EQ(run({file("a.msi", "A"), file("b.msi", "B")}, false, owner).filesRead, 1);
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(ImportRun, LeavesTheProcedureStackAsItWas) {
  run({files.write("bad.msi", "")});
  EXPECT_EQ(currentProcedure(), 0);
}

class ImportRunPreview : public ImportSuite {
 protected:
  // Runs over three files and gives the captions that were shown.
  std::vector<std::string> previews(std::vector<PreviewAnswer> answers, const ImportFormat& format) {
    std::vector<std::string> captions;
    ImportOwner owner;
    owner.preview = [&](const std::string& caption, const ImportedAntenna&) {
      captions.push_back(caption);
      const PreviewAnswer answer = answers.front();
      if (answers.size() > 1) answers.erase(answers.begin());
      return answer;
    };
    run({file("a.msi", "A"), file("b.msi", "B"), file("c.msi", "C")}, true, owner, format);
    return captions;
  }
  const ImportFormat generic = *findImportFormat("generic");
};

TEST_F(ImportRunPreview, AddsWhatIsConfirmed) {
  EXPECT_THAT(previews({PreviewAnswer::add}, generic),
              ElementsAre("Generic Format ANTENNA\r\nFile: " + files.machine("a.msi") + "\r\nA",
                          "Generic Format ANTENNA\r\nFile: " + files.machine("b.msi") + "\r\nB",
                          "Generic Format ANTENNA\r\nFile: " + files.machine("c.msi") + "\r\nC"));
  EXPECT_THAT(descriptions(), ElementsAre("A", "B", "C"));
}

TEST_F(ImportRunPreview, SkipsOneAntenna) {
  EXPECT_EQ(previews({PreviewAnswer::skip, PreviewAnswer::add}, generic).size(), 3u);
  EXPECT_THAT(descriptions(), ElementsAre("B", "C"));
}

TEST_F(ImportRunPreview, CancelEndsTheRunAtOnce) {
  EXPECT_EQ(previews({PreviewAnswer::add, PreviewAnswer::cancel}, generic).size(), 2u);
  EXPECT_THAT(descriptions(), ElementsAre("A"));
}

TEST_F(ImportRunPreview, NoPreviewEndsThePreviewsOfThisFormat) {
  EXPECT_EQ(previews({PreviewAnswer::noPreview}, generic).size(), 1u);
  EXPECT_THAT(descriptions(), ElementsAre("A", "B", "C"));
}

TEST_F(ImportRunPreview, NoPreviewActsAsAddInOtherFormats) {
  ImportFormat other = generic;
  other.traits = ImportFormat::plain;
  EXPECT_EQ(previews({PreviewAnswer::noPreview}, other).size(), 3u);
  EXPECT_THAT(descriptions(), ElementsAre("A", "B", "C"));
}

TEST_F(ImportRunPreview, IsNotShownWhereItIsOff) {
  ImportOwner owner;
  owner.preview = [](const std::string&, const ImportedAntenna&) -> PreviewAnswer {
    throw RunTimeFailure(failure::internalError, "shown");
  };
  EXPECT_EQ(run({file("a.msi", "A")}, false, owner).added.size(), 1u);
}

}  // namespace

}  // namespace vantrelix::test

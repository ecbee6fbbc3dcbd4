// Runs of the two NSMA formats: what enters the library.
#include <filesystem>

#include "ImportSuite.h"
#include "antenna/getAntArrayDB.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"

namespace vantrelix::test {

namespace {

using ::testing::DoubleNear;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pointwise;
using ::testing::SizeIs;
using ::testing::StartsWith;

class NsmaRun : public ImportSuite {
 protected:
  ImportResult runNsma(const std::vector<std::string>& paths, bool preview = false, const ImportOwner& owner = {}) {
    return run(paths, preview, owner, *findImportFormat("nsma"));
  }
  std::string both(const std::string& name, const std::string& maker, const std::string& gain = "10") const {
    return files.write(name, "ANTMAN:," + maker + "\nMODNUM:,M\nGUNITS:,DBI/DBR\nMDGAIN:," + gain +
                                 "\nPATCUT:,AZ\nPOLARI:,H/H\nNUPOIN:,1\n0,-1\nPATCUT:,AZ\nPOLARI:,V/V\nNUPOIN:,1\n"
                                 "0,-2\nENDFIL:,\n");
  }
  // A run over two files of two antennas each, with these answers to the previews; the captions shown.
  std::vector<std::string> previews(std::vector<PreviewAnswer> answers) {
    std::vector<std::string> captions;
    ImportOwner owner;
    owner.preview = [&](const std::string& caption, const ImportedAntenna&) {
      captions.push_back(caption);
      const PreviewAnswer answer = answers.front();
      if (answers.size() > 1) answers.erase(answers.begin());
      return answer;
    };
    runNsma({both("a.adf", "A"), both("b.adf", "B")}, true, owner);
    return captions;
  }
  static AntRecord stored(const std::string& id) {
    std::string units;
    std::string error;
    const AntRecord antenna = readAntenna(getAntennasPath(), std::string("AMS") + kMfg, id, units, true, error);
    EXPECT_EQ(error, "");
    return antenna;
  }
};

TEST_F(NsmaRun, AFileOfTwoAntennasAddsBoth) {
  const ImportResult result = runNsma({both("a.adf", "A")});
  EXPECT_EQ(result.ErrorCount, 0);
  ASSERT_THAT(result.added, SizeIs(2));
  EXPECT_EQ(result.added[0].description, "A M Hpol");
  EXPECT_EQ(result.added[1].description, "A M Vpol");
  EXPECT_THAT(descriptions(), ElementsAre("A M Hpol", "A M Vpol"));
  EXPECT_THAT(stored(result.added[1].id).HorField, ElementsAre(8));
}

TEST_F(NsmaRun, AFailedFileCountsOnceAndTheRunGoesOn) {
  const std::string endless = files.write("endless.adf", "ANTMAN:,A\n");
  const std::string several = files.write("several.adf", "NOFREQ:,2\n");
  std::filesystem::create_directory(files.machine("folder.adf"));
  const ImportResult result = runNsma({endless, several, files.file("folder.adf"), both("b.adf", "B")});
  EXPECT_EQ(result.ErrorCount, 3);
  EXPECT_THAT(result.failed, SizeIs(3));
  EXPECT_THAT(descriptions(), ElementsAre("B M Hpol", "B M Vpol"));
  ASSERT_THAT(suite.messages, SizeIs(3));
  EXPECT_EQ(suite.messages[0].title, "Error on Antenna Import");
  EXPECT_EQ(suite.messages[1].title, "Multi-Frequency File");
  EXPECT_EQ(suite.messages[2].title, "Import Errors");
  EXPECT_THAT(suite.log(), HasSubstr("Error importing Antenna File " + displayPath(several)));
}

TEST_F(NsmaRun, EachAntennaIsPreviewed) {
  EXPECT_THAT(previews({PreviewAnswer::add}),
              ElementsAre("NSMA Format ANTENNA\r\nFile: " + files.machine("a.adf") + "\r\nA M Hpol",
                          "NSMA Format ANTENNA\r\nFile: " + files.machine("a.adf") + "\r\nA M Vpol",
                          "NSMA Format ANTENNA\r\nFile: " + files.machine("b.adf") + "\r\nB M Hpol",
                          "NSMA Format ANTENNA\r\nFile: " + files.machine("b.adf") + "\r\nB M Vpol"));
  EXPECT_THAT(descriptions(), SizeIs(4));
}

TEST_F(NsmaRun, CancelAndSkipLeaveTheFileAndNotTheRun) {
  EXPECT_THAT(previews({PreviewAnswer::cancel, PreviewAnswer::add, PreviewAnswer::skip}), SizeIs(3));
  EXPECT_THAT(descriptions(), ElementsAre("B M Hpol"));
  EXPECT_THAT(suite.messages, IsEmpty());
}

TEST_F(NsmaRun, NoPreviewEndsThePreviewsOfTheRun) {
  EXPECT_THAT(previews({PreviewAnswer::add, PreviewAnswer::noPreview}), SizeIs(2));
  EXPECT_THAT(descriptions(), SizeIs(4));
}

TEST_F(NsmaRun, CancelInTheErrorBoxEndsTheFileAlone) {
  suite.answers = {MsgAnswer::cancel};
  const ImportResult result = runNsma({both("a.adf", "Strong", "1E13"), both("b.adf", "B")});
  EXPECT_EQ(result.ErrorCount, 0);
  ASSERT_THAT(suite.messages, SizeIs(1));
  EXPECT_EQ(suite.messages[0].title, "Error Importing Antenna");
  EXPECT_THAT(suite.messages[0].text, HasSubstr("\r\nAnt Strong M Hpol\r\n\r\nClick OK to continue with other "
                                                "antennas\r\nClick Cancel to end this operation"));
  EXPECT_THAT(descriptions(), ElementsAre("B M Hpol", "B M Vpol"));
}

TEST_F(NsmaRun, OkInTheErrorBoxGoesOnWithTheVerticalAntenna) {
  suite.answers = {MsgAnswer::ok, MsgAnswer::cancel};
  runNsma({both("a.adf", "Strong", "1E13"), both("b.adf", "B")});
  ASSERT_THAT(suite.messages, SizeIs(2));
  EXPECT_THAT(suite.messages[1].text, HasSubstr("\r\nAnt Strong M Vpol\r\n"));
  EXPECT_THAT(descriptions(), ElementsAre("B M Hpol", "B M Vpol"));
}

TEST_F(NsmaRun, RealFilesImportWithTheValuesInThem) {
  const std::string folder = realData("nsma");
  if (folder.empty()) GTEST_SKIP() << "no real files here";
  std::vector<std::string> patterns, others;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    (entry.path().extension() == ".adf" ? patterns : others)
        .push_back(platform::current().fromMachine(entry.path().string()));
  }
  ASSERT_FALSE(patterns.empty());
  suite.answers.assign(patterns.size(), MsgAnswer::yes);
  const ImportResult result = runNsma(patterns);
  EXPECT_EQ(result.ErrorCount, 0) << ::testing::PrintToString(result.failed);
  ASSERT_EQ(result.added.size(), patterns.size());
  for (const ImportResult::Added& added : result.added) {
    const AntRecord antenna = stored(added.id);
    EXPECT_THAT(added.description, StartsWith("Tongyu Communication Inc.  TQJ-8010-9011DT0_"));
    EXPECT_DOUBLE_EQ(antenna.gain, 10);
    EXPECT_EQ(antenna.gainUnits, "DBI");
    EXPECT_EQ(antenna.nHor, 360);
    EXPECT_EQ(antenna.nVer, 360);
    EXPECT_DOUBLE_EQ(antenna.HorAz.front(), -179);
    const bool lower = added.file.ends_with("0791.adf");
    EXPECT_DOUBLE_EQ(antenna.lowFrequency, lower ? 691 : 762);
    EXPECT_NEAR(antenna.HorField.front(), lower ? 18.31 : 18.32, 1e-9);
  }
  EXPECT_EQ(runNsma(others).ErrorCount, static_cast<int>(others.size()));
}

using NsmaFccRun = NsmaRun;

TEST_F(NsmaFccRun, AddsOneAntennaAndCountsWhatFails) {
  const std::string head = "Maker Inc.\nM1\n\n\n\n\n\n5925-6425\n31.1\n\n";
  const ImportResult result =
      run({files.write("a.txt", head + "HH 2\n-170 -3\n170 -60\nELVV 1\n0 -1\nEND\n"), files.write("b.txt", "Maker\n"),
           files.write("c.txt", head + "HH 2\n0 0\n"), files.write("d.txt", head)},
          false, {}, *findImportFormat("nsma-fcc"));
  EXPECT_EQ(result.ErrorCount, 2);
  ASSERT_THAT(result.added, SizeIs(1));
  EXPECT_THAT(result.failed[1], HasSubstr("Error 62: Input past end of file: a block has fewer points"));
  const AntRecord antenna = stored(result.added[0].id);
  EXPECT_EQ(antenna.description, "Maker  M1");
  EXPECT_DOUBLE_EQ(antenna.highFrequency, 6425);
  EXPECT_THAT(antenna.HorAz, ElementsAre(170, 190));
  EXPECT_THAT(antenna.HorField, Pointwise(DoubleNear(1e-9), {-28.9, 28.1}));
  EXPECT_THAT(antenna.VerField, Pointwise(DoubleNear(1e-9), {30.1}));
}

TEST(ImportFormats, HoldTheNsmaFormatsWithTheirTexts) {
  const ImportFormat* nsma = findImportFormat("nsma");
  const ImportFormat* fcc = findImportFormat("nsma-fcc");
  ASSERT_NE(nsma, nullptr);
  ASSERT_NE(fcc, nullptr);
  EXPECT_EQ(nsma->menuItem, "mnuImportNSMA");
  EXPECT_EQ(nsma->menuCaption, "NSMA Format");
  EXPECT_EQ(nsma->dialogTitle, "NSMA Files to Read");
  EXPECT_EQ(nsma->pathKey, "Import NSMA");
  EXPECT_EQ(fcc->menuItem, "mnuImportNSMA_FCC");
  EXPECT_EQ(fcc->menuCaption, "NSMA Format (FCC)");
  EXPECT_EQ(fcc->dialogTitle, "NSMA (FCC) Files to Read");
  EXPECT_EQ(fcc->pathKey, "Import NSMA (FCC)");
  EXPECT_EQ(fcc->previewCaption, "NSMA ANTENNA");
  for (const ImportFormat* format : {nsma, fcc}) {
    EXPECT_EQ(format->legacyName, "");
    EXPECT_THAT(format->filters, IsEmpty());
  }
}

}  // namespace

}  // namespace vantrelix::test

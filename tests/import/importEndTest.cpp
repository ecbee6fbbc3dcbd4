// How a run goes on behind a failure, and what its user sees however it ends.
#include <stdexcept>

#include "ImportSuite.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class ImportEnd : public ImportSuite {
 protected:
  ImportEnd() {
    owner.unloadPreview = [this] { boxesAtUnload.push_back(suite.messages.size()); };
  }
  std::string bad(const std::string& name = "bad.msi") const { return files.write(name, ""); }
  std::vector<std::string> titles() const {
    std::vector<std::string> result;
    for (const Message& box : suite.messages) result.push_back(box.title);
    return result;
  }
  std::size_t timesInLog(const std::string& what) const {
    const std::string log = suite.log();
    std::size_t times = 0;
    for (std::size_t at = log.find(what); at != std::string::npos; at = log.find(what, at + 1)) ++times;
    return times;
  }

  ImportOwner owner;
  std::vector<std::size_t> boxesAtUnload;  // how many boxes were shown before the preview went
};

TEST_F(ImportEnd, APreviewThatFailsIsOneCountAndTheRunGoesOn) {
  owner.preview = [](const std::string&, const ImportedAntenna& antenna) {
    if (antenna.AntName == "B") throw RunTimeFailure(failure::overflow, "No picture of it");
    if (antenna.AntName == "C") throw std::length_error("too wide");
    return PreviewAnswer::add;
  };
  const std::string second = file("b.msi", "B");
  const ImportResult result = run({file("a.msi", "A"), second, file("c.msi", "C"), file("d.msi", "D")}, true, owner);
  EXPECT_EQ(result.ErrorCount, 2);
  EXPECT_THAT(result.failed,
              ElementsAre(displayPath(second) + "\r\nError 6: No picture of it", testing::EndsWith("\r\ntoo wide")));
  EXPECT_EQ(timesInLog("Error importing Antenna File " + displayPath(second) + "\r\nError 6: No picture of it"), 1U);
  EXPECT_EQ(timesInLog("Error importing"), 2U);
  EXPECT_THAT(descriptions(), ElementsAre("A", "D"));
  EXPECT_THAT(result.skipped, IsEmpty());
  EXPECT_THAT(titles(), ElementsAre("Import Errors"));
  EXPECT_THAT(boxesAtUnload, ElementsAre(0U));
}

TEST_F(ImportEnd, CancelInAPreviewTellsOfTheErrorsBefore) {
  owner.preview = [](const std::string&, const ImportedAntenna&) { return PreviewAnswer::cancel; };
  const ImportResult result = run({bad(), file("a.msi", "A"), file("b.msi", "B")}, true, owner);
  EXPECT_THAT(titles(), ElementsAre("Import Errors"));
  EXPECT_THAT(boxesAtUnload, ElementsAre(0U));
  EXPECT_THAT(result.skipped, SizeIs(1));
  EXPECT_THAT(descriptions(), IsEmpty());
}

TEST_F(ImportEnd, CancelInTheErrorBoxTellsOfTheErrorsBefore) {
  suite.answers = {MsgAnswer::cancel};
  run({bad(), file("a.msi", "Strong", "1E13 dBd"), file("b.msi", "B")}, false, owner);
  EXPECT_THAT(titles(), ElementsAre("Error Importing Antenna", "Import Errors"));
  EXPECT_THAT(boxesAtUnload, ElementsAre(1U));
}

TEST_F(ImportEnd, AnOwnerThatFailsEndsItBehindTheErrorsBefore) {
  owner.cancelled = [asked = 0]() mutable {
    if (++asked > 1) throw RunTimeFailure(failure::objectNotSet, "no window");
    return false;
  };
  EXPECT_THROW(run({bad(), file("a.msi", "A")}, false, owner), RunTimeFailure);
  EXPECT_THAT(titles(), ElementsAre("Import Errors"));
  EXPECT_THAT(boxesAtUnload, ElementsAre(0U));
}

TEST_F(ImportEnd, TheCountOfErrorsHasNoSeparator) {
  ImportFormat format = *findImportFormat("generic");
  format.read = [](ImportSource&, ImportedAntenna& antenna) { antenna.fail("bad"); };
  std::vector<std::string> paths;
  for (int i = 0; i < 1001; ++i) paths.push_back(bad(std::to_string(i) + ".msi"));
  EXPECT_EQ(run(paths, false, {}, format).ErrorCount, 1001);
  ASSERT_THAT(suite.messages, SizeIs(1));
  EXPECT_THAT(suite.messages[0].text, StartsWith("There were 1001 errors on the import files.\r\n"));
}

TEST_F(ImportEnd, AWriteThatFailsIsLoggedAsOneRecordWithoutTheButtonsOfItsBox) {
  suite.answers = {MsgAnswer::ok};
  const ImportResult result = run({file("a.msi", "Strong", "1E13 dBd")});
  ASSERT_THAT(result.failed, SizeIs(1));
  const std::string reason = result.failed[0].substr(result.failed[0].find("\r\n") + 2);
  const std::string told = "Error Importing Antenna\r\n" + reason + "\r\nMfg T0001\r\nAnt Strong";
  ASSERT_THAT(suite.messages, SizeIs(1));
  EXPECT_EQ(suite.messages[0].icon, MsgIcon::information);
  EXPECT_EQ(suite.messages[0].text, told +
                                        "\r\n\r\nClick OK to continue with other antennas\r\n"
                                        "Click Cancel to end this operation");
  EXPECT_THAT(suite.log(), HasSubstr(":  " + told + "  ("));
  EXPECT_THAT(suite.log(), testing::Not(HasSubstr("Click")));
}

}  // namespace

}  // namespace vantrelix::test

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/GetMultiFiles.h"
#include "platform/RunTimeFailure.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::HasSubstr;

class GetMultiFilesTest : public testing::Test {
 protected:
  std::vector<std::string> choose(const std::string& answer, std::int32_t filterIndex = -1,
                                  const std::vector<FileFilter>& filters = {}) {
    screen.filesToOpen = {answer};
    return GetMultiFiles("NSMA Files to Read", "\\patterns", filters, filterIndex);
  }

  TempSuite suite;
  ScriptedDesktop screen;
  DesktopInUse inUse{screen};
};

TEST_F(GetMultiFilesTest, ADialogThatIsCancelledLeavesTheBlankElementAlone) {
  EXPECT_THAT(choose(""), ElementsAre(""));
  EXPECT_TRUE(screen.shown().empty());
}

TEST_F(GetMultiFilesTest, OneFileComesAsItsWholePath) {
  EXPECT_THAT(choose("\\patterns\\a.msi"), ElementsAre("", "\\patterns\\a.msi"));
}

TEST_F(GetMultiFilesTest, SeveralFilesAreJoinedToTheirFolder) {
  EXPECT_THAT(choose("\\patterns\0a.msi\0b.msi"s), ElementsAre("", "\\patterns\\a.msi", "\\patterns\\b.msi"));
}

TEST_F(GetMultiFilesTest, AFolderWithOneFileIsJoinedToo) {
  EXPECT_THAT(choose("\\patterns\\\0a.msi"s), ElementsAre("", "\\patterns\\a.msi"));
}

TEST_F(GetMultiFilesTest, BlankNamesArePassedOver) {
  EXPECT_THAT(choose("\\patterns\0a.msi\0 \0\0b.msi\0"s), ElementsAre("", "\\patterns\\a.msi", "\\patterns\\b.msi"));
  EXPECT_THAT(choose("\\patterns\0"s), ElementsAre(""));
}

TEST_F(GetMultiFilesTest, NamesBehindABlankFolderAreNone) {
  EXPECT_THAT(choose(" \0a.msi\0b.msi"s), ElementsAre(""));
  EXPECT_THAT(choose("\0a.msi"s), ElementsAre(""));
}

TEST_F(GetMultiFilesTest, AsksUnderItsTitleFromItsFolder) {
  choose("");
  ASSERT_EQ(screen.openDialogs().size(), 1U);
  EXPECT_EQ(screen.openDialogs()[0].title, "NSMA Files to Read");
  EXPECT_EQ(screen.openDialogs()[0].folder, "\\patterns");
}

TEST_F(GetMultiFilesTest, OffersAllFilesBehindTheFiltersOfItsOwn) {
  choose("");
  choose("", -1, {{".msi", "*.MSI"}, {".txt", "*.TXT"}});
  EXPECT_EQ(screen.openDialogs()[0].filter, "All Files (*.*)\0*.*"s);
  EXPECT_EQ(screen.openDialogs()[1].filter, ".msi\0*.MSI\0.txt\0*.TXT\0All Files (*.*)\0*.*"s);
}

TEST_F(GetMultiFilesTest, AFilterIndexOf65535OrMoreIsTheLastFilter) {
  const std::vector<FileFilter> filters = {{".msi", "*.MSI"}, {".txt", "*.TXT"}};
  constexpr struct {
    std::int32_t given;
    int shown;
  } kRows[] = {{-1, 3}, {65535, 3}, {65536, 3}, {65534, 65534}, {1, 1}, {2, 2}, {0, 0}};
  for (const auto& row : kRows) {
    choose("", row.given, filters);
    EXPECT_EQ(screen.openDialogs().back().filterIndex, row.shown) << row.given;
  }
}

TEST_F(GetMultiFilesTest, ManyFilesTakeNoLongTime) {
  std::string answer = "\\patterns";
  for (int i = 0; i < 200000; ++i) answer.append(1, '\0').append("a");
  EXPECT_EQ(choose(answer).size(), 200001U);
}

class FailingDesktop : public ScriptedDesktop {
 public:
  explicit FailingDesktop(std::function<void()> fault) : fault_(std::move(fault)) {}
  std::string openFiles(const OpenFiles&) override {
    fault_();
    return "\\a.msi";
  }

 private:
  std::function<void()> fault_;
};

TEST_F(GetMultiFilesTest, AFaultInsideIsToldAndLeavesTheBlankElement) {
  const std::function<void()> faults[] = {[] { throw RunTimeFailure(failure::permissionDenied, "No dialog"); },
                                          [] { throw std::length_error("too long"); }};
  for (const auto& fault : faults) {
    FailingDesktop failing(fault);
    const DesktopInUse failingInUse(failing);
    EXPECT_THAT(GetMultiFiles("SCALA Files to Read", "", {}, -1), ElementsAre(""));
    ASSERT_EQ(failing.shown().size(), 1U);
  }
  EXPECT_THAT(suite.log(), HasSubstr("No dialog"));
  EXPECT_THAT(suite.log(), HasSubstr("too long"));
  EXPECT_THAT(suite.log(), HasSubstr("GetMultiFiles for SCALA Files to Read"));
}

}  // namespace
}  // namespace vantrelix::test

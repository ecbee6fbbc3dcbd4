#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

#include "import/TextLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> all(const std::string& bytes) {
  std::vector<std::string> result;
  for (TextLines lines(bytes); !lines.atEnd();) result.push_back(lines.next());
  return result;
}

TEST(TextLines, EndAtAnyKindOfLineEnd) {
  EXPECT_THAT(all("a\r\nb\rc\nd"), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(all("a\n\n\r\r\nb\n"), ElementsAre("a", "", "", "", "b"));
  EXPECT_THAT(all("a\r"), ElementsAre("a"));
  EXPECT_THAT(all(""), IsEmpty());
}

TEST(TextLines, ReadingPastTheEndFails) {
  TextLines lines("a");
  lines.next();
  try {
    lines.next();
    FAIL() << "no failure";
  } catch (const RunTimeFailure& failure) {
    EXPECT_EQ(failure.number(), 62);
  }
}

TEST(TextLines, AByteOrderMarkDecides) {
  EXPECT_THAT(all("\xEF\xBB\xBF\x61\xC3\xA9\n"), ElementsAre("a\xC3\xA9"));
  EXPECT_THAT(all(std::string("\xFF\xFE\x61\x00\xE9\x00\x0A\x00\x62\x00", 10)), ElementsAre("a\xC3\xA9", "b"));
  EXPECT_THAT(all(std::string("\xFE\xFF\x00\x61\x00\x0D\x00\x0A\x00\x62", 10)), ElementsAre("a", "b"));
}

TEST(TextLines, OtherBytesStayAsTheyAre) {
  EXPECT_THAT(all("caf\xE9\ncaf\xC3\xA9"), ElementsAre("caf\xE9", "caf\xC3\xA9"));
}

TEST(TextLines, ATextThatIsKeptBecomesUtf8) {
  EXPECT_EQ(TextLines::keptText("caf\xE9"), "caf\xC3\xA9");
  EXPECT_EQ(TextLines::keptText("caf\xC3\xA9"), "caf\xC3\xA9");
}

}  // namespace

}  // namespace vantrelix

// The README's lines for a host are those of the example that builds with the project.
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "support/TempFolder.h"

namespace vantrelix::test {
namespace {

std::string between(const std::string& text, const std::string& start, const std::string& end) {
  const std::size_t from = text.find(start) + start.size();
  return text.substr(from, text.find(end, from) - from);
}

std::string withoutIndent(const std::string& text) {
  std::istringstream lines(text);
  std::string result;
  for (std::string line; std::getline(lines, line);) result += (line.starts_with("  ") ? line.substr(2) : line) + "\n";
  return result;
}

TEST(Readme, ShowsTheExampleThatBuilds) {
  const std::string root = VANTRELIX_SOURCE_DIR;
  const std::string example = readMachineFile(root + "/examples/embedding.cpp");
  const std::string shown = between(readMachineFile(root + "/README.md"), "```cpp\n", "```");
  ASSERT_NE(shown.find("qt::LookAnt"), std::string::npos);
  EXPECT_EQ(shown, withoutIndent(between(example, "// [host]\n", "  // [host]")));
}

}  // namespace
}  // namespace vantrelix::test

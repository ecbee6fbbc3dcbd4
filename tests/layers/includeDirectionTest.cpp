// The layers of the library, proved by the includes of their sources: none points upward, none of the core names a
// toolkit or, outside platform/, an operating system.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// What each layer may include beside itself.
const std::map<std::string, std::set<std::string>> kBelow = {
    {"platform", {}},
    {"foundation", {"platform"}},
    {"tables", {"platform", "foundation"}},
    {"antenna", {"platform", "foundation", "tables"}},
    {"hooks", {"platform", "foundation", "tables"}},
    {"lines", {"platform", "foundation", "tables"}},
    {"ui", {"platform", "foundation"}},
    {"dialogs", {"platform", "foundation", "ui"}},
    {"preview", {"platform", "foundation", "tables", "antenna", "ui", "dialogs"}},
    {"aliases", {"platform", "foundation", "ui", "dialogs"}},
    {"import", {"platform", "foundation", "tables", "antenna", "ui", "dialogs", "preview", "aliases"}},
    {"editor", {"platform", "foundation", "tables", "antenna", "ui", "dialogs", "preview", "aliases", "import"}},
    {"controls",
     {"platform", "foundation", "tables", "antenna", "hooks", "lines", "ui", "dialogs", "preview", "aliases", "import",
      "editor"}},
    {"cli",
     {"platform", "foundation", "tables", "antenna", "hooks", "lines", "ui", "dialogs", "preview", "aliases", "import",
      "editor", "controls"}},
    {"qt",
     {"platform", "foundation", "tables", "antenna", "hooks", "lines", "ui", "dialogs", "preview", "aliases", "import",
      "editor", "controls"}},
    {"demo",
     {"platform", "foundation", "tables", "antenna", "hooks", "lines", "ui", "dialogs", "preview", "aliases", "import",
      "editor", "controls", "qt"}},
};
const std::set<std::string> kMayNameToolkit = {"qt", "demo"};

struct Include {
  std::string file;   // relative to src/
  std::string layer;  // of the file
  std::string target;
  bool quoted;
};

std::vector<Include> includesBelow(const fs::path& root) {
  static const std::regex line(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
  std::vector<Include> found;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
    const fs::path relative = fs::relative(entry.path(), root);
    std::ifstream in(entry.path());
    for (std::string text; std::getline(in, text);) {
      std::smatch match;
      if (!std::regex_search(text, match, line)) continue;
      found.push_back({relative.generic_string(), relative.begin()->string(), match[2].str(), match[1].str() == "\""});
    }
  }
  return found;
}

std::vector<Include> sourceIncludes() { return includesBelow(fs::path(VANTRELIX_SOURCE_DIR) / "src"); }

TEST(Layers, EverySourceFolderHasItsPlace) {
  for (const auto& entry : fs::directory_iterator(fs::path(VANTRELIX_SOURCE_DIR) / "src")) {
    if (!entry.is_directory() || entry.path().filename() == "apps") continue;
    EXPECT_TRUE(kBelow.count(entry.path().filename().string())) << entry.path();
  }
}

TEST(Layers, NoIncludePointsUpward) {
  const auto includes = sourceIncludes();
  ASSERT_GT(includes.size(), 100U);
  for (const Include& include : includes) {
    if (!include.quoted || include.layer == "apps") continue;
    const std::string target = include.target.substr(0, include.target.find('/'));
    const bool allowed = target == include.layer || kBelow.at(include.layer).count(target) > 0;
    EXPECT_TRUE(allowed) << include.file << " includes " << include.target;
  }
}

TEST(Layers, NoCoreSourceNamesTheToolkit) {
  for (const Include& include : sourceIncludes()) {
    if (kMayNameToolkit.count(include.layer) || include.layer == "apps") continue;
    EXPECT_FALSE(std::regex_search(include.target, std::regex("^Q[A-Za-z]")))
        << include.file << " includes " << include.target;
  }
}

TEST(Layers, OnlyThePlatformNamesAnOperatingSystem) {
  static const std::regex system(R"(^(sys/|unistd|fcntl|windows|errno|dirent|spawn|pwd|langinfo|iconv|dlfcn|pthread))");
  for (const Include& include : sourceIncludes()) {
    if (include.layer == "platform") continue;
    EXPECT_FALSE(std::regex_search(include.target, system)) << include.file << " includes " << include.target;
  }
}

// The link lines, as the build system wrote them: a core test that could reach the toolkit would show it here.
TEST(Layers, NoCoreTestLinksTheToolkit) {
  std::ifstream in(fs::path(VANTRELIX_BINARY_DIR) / "build.ninja");
  ASSERT_TRUE(in) << "no build.ninja in " << VANTRELIX_BINARY_DIR;
  static const std::regex link(R"(^build bin/(\w+)_tests: CXX_EXECUTABLE_LINKER\S* )");
  std::set<std::string> seen;
  for (std::string text; std::getline(in, text);) {
    std::smatch match;
    if (!std::regex_search(text, match, link)) continue;
    seen.insert(match[1]);
    const bool toolkit = text.find("libQt") != std::string::npos;
    EXPECT_EQ(toolkit, kMayNameToolkit.count(match[1]) > 0) << match[1] << "_tests";
  }
  for (const char* layer : {"platform", "foundation", "tables", "antenna", "ui", "controls"}) {
    EXPECT_TRUE(seen.count(layer)) << layer << "_tests was not found among the link lines";
  }
}

}  // namespace

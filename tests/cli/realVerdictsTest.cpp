// The acceptance test of the command line and the editor's Continue say the same of every real antenna.
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

#include "cli/CliRun.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/suitePaths.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {
namespace {

namespace fs = std::filesystem;

class RealVerdicts : public testing::Test {
 protected:
  CliRun run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"--suite", suite_.folder().machine(), "--json"});
    return runCli(arguments);
  }
  void importAll(const std::string& folder, const std::string& format, const std::string& assume) {
    std::vector<std::string> command{"--assume", assume, "import", format, "AMSR0001"};
    for (const auto& entry : fs::directory_iterator(realData(folder))) command.push_back(entry.path().string());
    run(std::move(command));
  }
  // Whether Continue lets the antenna go, where the user knows of no way round.
  static bool continues(const std::string& id) {
    ScriptedDesktop screen;
    const DesktopInUse use(screen);
    screen.policy = ScriptedDesktop::assume(ScriptedDesktop::Assume::no);
    frmHDAntEditor form;
    form.InitForm("AMSR0001.DBF", "Real", kLookupMode, 0, "Real", id);
    form.setVisible(true);
    form.Command1[frmHDAntEditor::continuing].userClick();
    return !form.visible() && form.SelID == id;
  }

  TempSuite suite_;
};

TEST_F(RealVerdicts, CheckAndContinueAgree) {
  if (realData("planet").empty()) GTEST_SKIP() << "no real files here";
  ASSERT_EQ(run({"suite", "init", suite_.folder().machine()}).status, 0);
  importAll("planet", "generic", "no");
  importAll("nsma", "nsma", "yes");
  std::map<bool, int> verdicts;
  const CliRun checked = run({"check", "AMSR0001"});
  ASSERT_EQ(checked.status, 0) << checked.err;
  const nlohmann::json document = checked.json();
  setSuiteDir(suite_.path());
  for (const nlohmann::json& result : document["results"]) {
    const bool ok = result["ok"];
    ++verdicts[ok];
    EXPECT_EQ(continues(result["id"]), ok) << result;
    EXPECT_EQ(result["problems"].get<std::string>().empty(), ok) << result;
  }
  EXPECT_GT(verdicts[true], 10);
  EXPECT_GT(verdicts[true] + verdicts[false], 15);
}

}  // namespace
}  // namespace vantrelix::test

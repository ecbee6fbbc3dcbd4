// The errors of an import from the command line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/CliSuite.h"

namespace vantrelix::test {
namespace {

using testing::HasSubstr;

class ImportErrors : public CliSuite {
 protected:
  ImportErrors() {
    write("good.msi", "GAIN 1 dBd");
    write("strong.msi", "GAIN 1E13 dBd");
    files_.write("bad.msi", "GAIN x\n");
  }
  void write(const std::string& name, const std::string& gain) const {
    files_.write(name, "NAME " + name + "\n" + gain + "\nHORIZONTAL 1\n0 0\nVERTICAL 1\n0 0\n");
  }
  // An import of the files into an empty library.
  CliRun import(const std::vector<std::string>& names, const std::string& library, bool json) const {
    std::vector<std::string> arguments{"--assume", "yes", "import", "generic", library};
    if (json) arguments.insert(arguments.begin(), "--json");
    for (const std::string& name : names) arguments.push_back(files_.machine(name));
    return run(arguments);
  }

  TempFolder files_;
};

TEST_F(ImportErrors, AreOneNumberWhetherAFileCannotBeReadOrItsAntennaCannotBeWritten) {
  const struct {
    std::vector<std::string> names;
    std::size_t errors;
    const char* summary;
  } kRuns[] = {{{"good.msi"}, 0, "1 antenna imported, 0 errors\n"},
               {{"strong.msi"}, 1, "0 antennas imported, 1 error\n"},
               {{"bad.msi"}, 1, "0 antennas imported, 1 error\n"},
               {{"strong.msi", "good.msi", "bad.msi"}, 2, "1 antenna imported, 2 errors\n"}};
  int library = 1000;
  for (const auto& row : kRuns) {
    SCOPED_TRACE(row.summary);
    const CliRun json = import(row.names, "AMSX" + std::to_string(library++), true);
    EXPECT_EQ(json.status, row.errors > 0 ? 1 : 0) << json.err;
    EXPECT_EQ(json.json()["errors"], row.errors);
    EXPECT_EQ(json.json()["failed"].size(), row.errors);
    EXPECT_THAT(import(row.names, "AMSX" + std::to_string(library++), false).out, HasSubstr(row.summary));
  }
}

}  // namespace
}  // namespace vantrelix::test

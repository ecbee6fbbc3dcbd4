// Who may read the files that a repair leaves beside a table and in its place.
#include <filesystem>
#include <gtest/gtest.h>

#include "tables/DbfBytes.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using std::filesystem::perms;
using test::DictionarySuite;
using test::filesThatBegin;
using test::oldMaster;
using test::RawTable;

constexpr const char* kTable = "AMSTEST1.DBF";
constexpr perms kOwnerAlone = perms::owner_read | perms::owner_write;

class RepairPermissions : public ::testing::TestWithParam<perms> {
 protected:
  bool repaired(const std::string& path) const {
    std::filesystem::permissions(suite.folder().machine(kTable), GetParam());
    return RSTblValid(FieldsFromDataSum("AMSPDBASE"), path, true, false, "");
  }
  perms of(const std::string& name) const {
    return std::filesystem::status(suite.folder().machine(name)).permissions();
  }
  DictionarySuite suite;
};

TEST_P(RepairPermissions, OfTheOldFileAreThoseOfItsCopyAndOfTheNewTable) {
  ASSERT_TRUE(repaired(oldMaster(suite.folder())));
  const std::vector<std::string> kept = filesThatBegin(suite.folder(), "AMSTEST1_2");
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(of(kept.front()), GetParam());
  EXPECT_EQ(of(kTable), GetParam());
}

// Both are in the folder while they are being written.
TEST_P(RepairPermissions, AreSetBeforeAnyRowIsCopied) {
  class Watching : public test::StoppedClock {
   public:
    using StoppedClock::StoppedClock;
    bool rightBeforeRows(const std::string& file) const {
      const auto given = std::find(journal().begin(), journal().end(), "copyPermissions " + file);
      const auto written = std::find(journal().begin(), journal().end(), "writeAt " + file);
      return given < written && written != journal().end();
    }
  };
  Watching watching(platform::current());
  const platform::Substitute substitute(watching);
  const std::string path = oldMaster(suite.folder());
  watching.reset();
  ASSERT_TRUE(repaired(path));
  EXPECT_TRUE(watching.rightBeforeRows(suite.folder().machine("48111626.DBF")));
  EXPECT_TRUE(watching.rightBeforeRows(suite.folder().machine("AMSTEST1_202611211648.TMP")));
}

TEST_P(RepairPermissions, AreThoseOfATemporaryTableThatIsLeftToo) {
  const std::string path = suite.file(kTable);
  DbfFile::create(path, {{"ATYPE_ID", 'C', 20, 0}});
  test::addRow(path, {{"ATYPE_ID", "longer than twelve"}});
  ASSERT_FALSE(repaired(path));
  for (const std::string& name : filesThatBegin(suite.folder(), "")) {
    EXPECT_TRUE(!name.ends_with(".DBF") || of(name) == GetParam()) << name;
  }
}

// Texts in a code page that only a file beside the table names are no use to whom that file is closed.
TEST_P(RepairPermissions, AreThoseOfTheFilesThatNameTheCodePageToo) {
  const RawTable byNames{.fields = {{"ATYPE_ID", 'C', 12}, {"GR\xC3\x96SSE", 'C', 10}}, .mark = 0};
  suite.folder().write(kTable, byNames.bytes());
  ASSERT_TRUE(repaired(suite.file(kTable)));
  EXPECT_EQ(suite.folder().read("AMSTEST1.CPG"), "UTF-8");
  const std::vector<std::string> kept = filesThatBegin(suite.folder(), "AMSTEST1_2");
  ASSERT_EQ(kept.size(), 2u);
  for (const std::string& name : {std::string("AMSTEST1.CPG"), kept[0], kept[1]})
    EXPECT_EQ(of(name), GetParam()) << name;
}

// One whose name holds a blank is made under another.
TEST_P(RepairPermissions, OfATableThatANewOneReplacesStay) {
  for (const char* name : {kTable, "AMS TEST.DBF"}) {
    test::oldMaster(suite.folder(), name);
    std::filesystem::permissions(suite.folder().machine(name), GetParam());
    ASSERT_TRUE(NewTable(FieldsFromDataSum("AMSPDBASE"), suite.file(name)));
    EXPECT_EQ(of(name), GetParam()) << name;
  }
}

TEST_P(RepairPermissions, OfATableThatANewOneReplacesAreThoseOfItsMemoFile) {
  for (const std::string name : {"AMSTEST1", "AMS TEST"}) {
    test::oldMaster(suite.folder(), name + ".DBF");
    std::filesystem::permissions(suite.folder().machine(name + ".DBF"), GetParam());
    ASSERT_TRUE(
        NewTable({{"ID", 12, FieldType::text, ""}, {"NOTE", 0, FieldType::memo, ""}}, suite.file(name + ".DBF")));
    EXPECT_EQ(of(name + ".FPT"), GetParam()) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Of, RepairPermissions,
                         ::testing::Values(kOwnerAlone, kOwnerAlone | perms::group_read,
                                           kOwnerAlone | perms::group_read | perms::group_write),
                         [](const auto& test) { return "Mode" + std::to_string(static_cast<unsigned>(test.param)); });

}  // namespace
}  // namespace vantrelix

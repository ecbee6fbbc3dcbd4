// Who may read the files that a recovery makes.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "tables/MemoFile.h"
#include "tables/TableRecoveries.h"

namespace vantrelix {
namespace {

using std::filesystem::perms;
using test::RawTable;

constexpr perms kOwnerAlone = perms::owner_read | perms::owner_write;
constexpr perms kReadOnly = perms::owner_read | perms::group_read | perms::others_read;

class RecoveryPermissions : public test::TableRecoveries {
 protected:
  // A table with a memo and a file that names its code page, the memo file or not.
  void writeAll(bool withMemoFile) {
    if (withMemoFile) {
      MemoFile::create(suite.file("T.FPT"));
      MemoFile(suite.file("T.FPT"), MemoKind::foxpro, platform::OpenMode::readWrite).append("text");
    }
    const RawTable raw{.version = 0xF5, .fields = {{"M", 'M', 10}}, .rows = "          8", .count = 1};
    suite.folder().write("T.DBF", raw.bytes());
    suite.folder().write("T.CPG", "1252");
  }
  void set(const std::string& name, perms mode) const {
    std::filesystem::permissions(suite.folder().machine(name), mode);
  }
  perms of(const std::string& name) const {
    return std::filesystem::status(suite.folder().machine(name)).permissions();
  }
  void recover() const { recoverTable(suite.file("T.DBF"), suite.file("NEW.DBF")); }
};

TEST_F(RecoveryPermissions, AreThoseOfTheOldFiles) {
  writeAll(true);
  set("T.DBF", kOwnerAlone);
  set("T.FPT", kOwnerAlone | perms::group_read);
  set("T.CPG", kReadOnly);
  recover();
  EXPECT_EQ(of("NEW.DBF"), kOwnerAlone);
  EXPECT_EQ(of("NEW.FPT"), kOwnerAlone | perms::group_read);
  EXPECT_EQ(of("NEW.CPG"), kReadOnly);
}

TEST_F(RecoveryPermissions, OfTheMemoFileAreThoseOfTheTableWhereThatHasNone) {
  writeAll(false);
  set("T.DBF", kOwnerAlone);
  recover();
  EXPECT_EQ(of("NEW.FPT"), kOwnerAlone);
}

// The files are in the folder while they are being written; the head of an empty memo file tells nothing.
TEST_F(RecoveryPermissions, AreSetBeforeAnythingIsWritten) {
  writeAll(true);
  platform::FaultPlatform watched(platform::current());
  const platform::Substitute substitute(watched);
  recover();
  const std::vector<std::string>& journal = watched.journal();
  for (const char* extension : {"DBF", "FPT", "CPG"}) {
    const std::string made = " " + suite.folder().machine(std::string("NEW.") + extension) + ".";
    const auto isCall = [&](const char* call) {
      return [call, made](const std::string& entry) { return entry.rfind(call + made, 0) == 0; };
    };
    const auto given = std::find_if(journal.begin(), journal.end(), isCall("copyPermissions"));
    const auto before = std::count_if(journal.begin(), given, isCall("writeAt"));
    EXPECT_EQ(before, std::string(extension) == "FPT" ? 1 : 0) << extension;
    EXPECT_GT(std::count_if(given, journal.end(), isCall("writeAt")), 0) << extension;
  }
}

}  // namespace
}  // namespace vantrelix

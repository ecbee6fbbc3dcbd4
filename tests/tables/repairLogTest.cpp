// What the log tells of a check or a repair that failed: how far it came, and its labelled lines.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include "foundation/text.h"
#include "tables/dictionaryTables.h"
#include "tables/structure.h"

namespace vantrelix {
namespace {

using test::DictionarySuite;
using test::filesThatBegin;
using test::oldMaster;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kAms = "AMSPDBASE";
constexpr const char* kTable = "AMSTEST1.DBF";

// A clock that stands still, and a system that gives no file a name that ends so.
class NameRefused : public test::StoppedClock {
 public:
  explicit NameRefused(std::string ending) : StoppedClock(platform::current()), ending_(std::move(ending)) {}
  void rename(const std::string& from, const std::string& to) override {
    refuse(to);
    FaultPlatform::rename(from, to);
  }
  void renameNew(const std::string& from, const std::string& to) override {
    refuse(to);
    FaultPlatform::renameNew(from, to);
  }

 private:
  void refuse(const std::string& name) const {
    if (name.ends_with(ending_)) throw RunTimeFailure(failure::permissionDenied, "Not to be renamed.");
  }
  std::string ending_;
};

std::string failedRepair(const DictionarySuite& suite, const std::string& refused) {
  const std::string path = oldMaster(suite.folder());
  const std::string before = suite.folder().read(kTable);
  NameRefused system(refused);
  const platform::Substitute substitute(system);
  EXPECT_FALSE(RSTblValid(FieldsFromDataSum(kAms), path, true, false, kAms));
  EXPECT_EQ(suite.folder().read(kTable), before);
  return suite.log();
}

TEST(RepairLog, TellsTheNameThatTheOldTableCouldNotBeKeptUnder) {
  DictionarySuite suite;
  const std::string log = failedRepair(suite, "AMSTEST1_202611211648.DBF");
  EXPECT_THAT(log, HasSubstr("; Flag 4500"));
  EXPECT_THAT(log, HasSubstr("\r\nNewName: " + suite.folder().machine("AMSTEST1_202611211648.DBF") + "\r\n"));
  EXPECT_THAT(filesThatBegin(suite.folder(), ""), ElementsAre("48111626.DBF", kTable, "QVTECSUP.TXT", "SYSTEM"));
}

TEST(RepairLog, TellsTheCopysNameWhereTheLastRenameFails) {
  DictionarySuite suite;
  const std::string log = failedRepair(suite, kTable);
  EXPECT_THAT(log, HasSubstr("; Flag 4600"));
  EXPECT_THAT(log, HasSubstr("\r\nNewName: " + suite.folder().machine("AMSTEST1_202611211648.DBF") + "\r\n"));
  EXPECT_THAT(log, HasSubstr("\r\nSQL: Insert Into [48111626] Select ATYPE_ID, ANTENNA, GAIN, GAIN_UN, F_LOW, F_HIGH, "
                             "FREQ_UN From [AMSTEST1]\r\nTempTable: [48111626]"));
  EXPECT_THAT(filesThatBegin(suite.folder(), ""),
              ElementsAre("48111626.DBF", kTable, "AMSTEST1_202611211648.DBF", "QVTECSUP.TXT", "SYSTEM"));
}

TEST(CheckLog, OfATableOpenedByItsNameTellsTheBareName) {
  DictionarySuite suite;
  const std::string path = suite.folder().write("AMS TEST1.DBF", std::string(500, 'x'));
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum(kAms), path, true, true, kAms, RecordsetType::table), tableCode::unknown);
  EXPECT_THAT(suite.log(), HasSubstr("\r\nSELECT: AMS TEST1\r\n"));
}

// A system with short names of folders.
class ShortFolders : public platform::FaultPlatform {
 public:
  ShortFolders(std::string folder, std::string shortFolder)
      : FaultPlatform(platform::current()), folder_(std::move(folder)), short_(std::move(shortFolder)) {}
  std::optional<std::string> shortName(const std::string& path) override {
    return path.rfind(folder_, 0) == 0 ? short_ + path.substr(folder_.size()) : path;
  }

 private:
  std::string folder_;
  std::string short_;
};

TEST(CheckLog, TellsTheShortNameOfTheFolderByWhichTheTableWasOpened) {
  DictionarySuite suite;
  std::filesystem::create_directory(suite.folder().machine("My Antennas"));
  std::filesystem::create_directory_symlink(suite.folder().machine("My Antennas"), suite.folder().machine("MYANTE~1"));
  const std::string path = suite.folder().write("My Antennas/AMSTEST1.DBF", std::string(500, 'x'));
  ShortFolders system(suite.file("My Antennas"), suite.file("MYANTE~1"));
  const platform::Substitute substitute(system);
  EXPECT_EQ(RSTblValidRS(FieldsFromDataSum(kAms), path, true, true, kAms), tableCode::unknown);
  EXPECT_THAT(suite.log(), HasSubstr("\r\nDB Path: " + suite.folder().machine("MYANTE~1") + "\r\n"));
  EXPECT_THAT(suite.log(), HasSubstr(suite.folder().machine("MYANTE~1/AMSTEST1.DBF")));
}

}  // namespace
}  // namespace vantrelix

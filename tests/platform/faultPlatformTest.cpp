#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/FaultPlatform.h"
#include "platform/failures.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;

namespace {

class Faults : public testing::Test {
 protected:
  TempFolder folder;
  FaultPlatform platform{operatingSystem()};

  std::unique_ptr<File> create(const std::string& name) { return platform.open(folder.file(name), OpenMode::create); }
};

}  // namespace

TEST_F(Faults, CountsChangingCallsAndNoOthers) {
  const auto file = create("a");
  file->writeAt(0, "x", 1);
  file->append("y", 1);
  file->sync();
  file->truncate(1);
  platform.makeFolder(folder.file("sub"));
  platform.rename(folder.file("a"), folder.file("b"));
  EXPECT_EQ(platform.calls(), 7);
  platform.list(folder.path());
  platform.open(folder.file("b"), OpenMode::readWrite)->size();
  platform.fileExists(folder.file("b"));
  EXPECT_EQ(platform.calls(), 7);
  EXPECT_EQ(platform.journal().back(), "rename " + folder.machine("b"));
  platform.reset();
  EXPECT_EQ(platform.calls(), 0);
}

TEST_F(Faults, OneCallFailsWithTheNumberChosenAndTheOthersWork) {
  platform.failAt(2, failure::permissionDenied);
  const auto file = create("a");
  EXPECT_EQ(failureOf([&] { file->writeAt(0, "xyz", 3); }), failure::permissionDenied);
  EXPECT_EQ(folder.read("a"), "");
  file->writeAt(0, "xyz", 3);
  EXPECT_EQ(folder.read("a"), "xyz");
}

TEST_F(Faults, AFullDiskTakesHalfAWriteAndStaysFull) {
  const auto file = create("a");
  file->append("12", 2);
  platform.fillDiskAt(1);
  EXPECT_EQ(failureOf([&] { file->append("abcd", 4); }), failure::diskFull);
  EXPECT_EQ(folder.read("a"), "12ab");
  EXPECT_EQ(failureOf([&] { create("b"); }), failure::diskFull);
  EXPECT_FALSE(folder.exists("b"));
  file->truncate(2);
  platform.remove(folder.file("a"));
  EXPECT_FALSE(folder.exists("a"));
}

TEST_F(Faults, AfterACrashNothingChangesAnyMore) {
  const auto file = create("a");
  platform.crashAt(2);
  file->append("1", 1);
  EXPECT_EQ(failureOf([&] { file->append("2", 1); }), failure::deviceIO);
  EXPECT_EQ(failureOf([&] { file->truncate(0); }), failure::deviceIO);
  EXPECT_EQ(failureOf([&] { platform.remove(folder.file("a")); }), failure::deviceIO);
  EXPECT_EQ(folder.read("a"), "1");
}

TEST_F(Faults, ATornCrashWritesHalfOnceAlone) {
  const auto file = create("a");
  platform.crashAt(1, true);
  EXPECT_EQ(failureOf([&] { file->writeAt(0, "abcd", 4); }), failure::deviceIO);
  EXPECT_EQ(folder.read("a"), "ab");
  EXPECT_EQ(failureOf([&] { file->writeAt(0, "WXYZ", 4); }), failure::deviceIO);
  EXPECT_EQ(folder.read("a"), "ab");
}

TEST_F(Faults, AnOverwriteIsCutByAFullDiskAndByNoCrash) {
  const auto file = create("a");
  file->append("abcd", 4);
  platform.crashAt(1, true);
  EXPECT_EQ(failureOf([&] { file->overwriteAt(0, "WXYZ", 4); }), failure::deviceIO);
  EXPECT_EQ(folder.read("a"), "abcd");
  platform.fillDiskAt(1);
  EXPECT_EQ(failureOf([&] { file->overwriteAt(0, "WXYZ", 4); }), failure::diskFull);
  EXPECT_EQ(folder.read("a"), "WXcd");
  EXPECT_EQ(platform.journal().back(), "overwriteAt " + folder.machine("a"));
}

TEST_F(Faults, EveryCallCanFailTheQuestionsByAnsweringNo) {
  const std::string path = folder.write("a", "content");
  std::unique_ptr<File> file;
  char byte = 0;
  const std::vector<std::pair<std::string, std::function<bool()>>> calls = {
      {"fileExists", [&] { return platform.fileExists(path); }},
      {"folderExists", [&] { return platform.folderExists(folder.path()); }},
      {"state", [&] { return platform.state(path).has_value(); }},
      {"list", [&] { return !platform.list(folder.path()).empty(); }},
      {"findIgnoringCase", [&] { return platform.findIgnoringCase(folder.file("A")) == path; }},
      {"linkTarget", [&] { return platform.linkTarget(path) == path; }},
      {"open", [&] { return (file = platform.open(path, OpenMode::readWrite)) != nullptr; }},
      {"readAt", [&] { return file->readAt(0, &byte, 1) == 1; }},
      {"size", [&] { return file->size() == 7; }},
      {"state", [&] { return file->state().size == 7; }},
      {"tryLock", [&] { return file->tryLock(0, 1, LockKind::exclusive); }},
      {"unlock", [&] { return file->unlock(0, 1), true; }},
      {"map", [&] { return file->map() != nullptr; }},
      {"writeAt", [&] { return file->writeAt(0, "c", 1), true; }},
      {"sync", [&] { return file->sync(), true; }},
  };
  for (std::size_t failing = 0; failing < calls.size(); ++failing) {
    file = platform.open(path, OpenMode::readWrite);  // for where it cannot be opened again
    platform.failAnyAt(static_cast<int>(failing) + 1, failure::deviceIO);
    for (std::size_t call = 0; call < calls.size(); ++call) {
      const auto& [name, work] = calls[call];
      bool answer = false;
      const int number = failureOf([&] { answer = work(); });
      EXPECT_EQ(platform.anyJournal().back().substr(0, name.size()), name);
      const bool works = call != failing || name == "linkTarget";  // which gives a path as it was given
      EXPECT_EQ(answer, works) << name << " with a fault at " << calls[failing].first;
      EXPECT_TRUE(number == 0 || !works) << name;
    }
    EXPECT_EQ(platform.anyCalls(), static_cast<int>(calls.size()));
    EXPECT_EQ(platform.calls(), 2);
  }
}

TEST_F(Faults, GivesRegistryValuesCutToTheirLimit) {
  platform.setRegistryValue(1, "KEY", "0123456789");
  EXPECT_EQ(platform.registryValue(1, "KEY", 4), "0123");
  EXPECT_EQ(platform.registryValue(1, "KEY", 250), "0123456789");
  EXPECT_FALSE(platform.registryValue(0, "KEY", 250).has_value());
}

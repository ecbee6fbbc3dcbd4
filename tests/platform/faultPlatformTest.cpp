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

TEST_F(Faults, GivesRegistryValuesCutToTheirLimit) {
  platform.setRegistryValue(1, "KEY", "0123456789");
  EXPECT_EQ(platform.registryValue(1, "KEY", 4), "0123");
  EXPECT_EQ(platform.registryValue(1, "KEY", 250), "0123456789");
  EXPECT_FALSE(platform.registryValue(0, "KEY", 250).has_value());
}

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/FaultPlatform.h"
#include "platform/Platform.h"
#include "platform/failures.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;
namespace fs = std::filesystem;

namespace {

std::size_t filesIn(const TempFolder& folder) { return current().list(folder.path()).size(); }

unsigned modeOf(const std::string& machinePath) {
  struct stat found {};
  return ::stat(machinePath.c_str(), &found) == 0 ? found.st_mode & 07777U : 0U;
}

// Runs `work` once without a fault and gives its number of changing calls.
int callsOf(FaultPlatform& faults, const std::function<void()>& work) {
  faults.reset();
  work();
  return faults.calls();
}

}  // namespace

TEST(ReadWholeFile, GivesAllBytesUpToItsLimit) {
  const TempFolder folder;
  const std::string bytes = std::string(10000, 'x') + std::string("\0\r\n", 3);
  const std::string path = folder.write("a.bin", bytes);
  EXPECT_EQ(readWholeFile(path), bytes);
  EXPECT_EQ(readWholeFile(path, bytes.size()), bytes);
  EXPECT_EQ(failureOf([&] { readWholeFile(path, bytes.size() - 1); }), failure::deviceIO);
  EXPECT_EQ(failureOf([&] { readWholeFile(folder.file("none")); }), failure::fileNotFound);
}

TEST(ReplaceWholeFile, KeepsTheModeAndLeavesNothingBeside) {
  const TempFolder folder;
  const std::string path = folder.write("a.ini", "old");
  ::chmod(folder.machine("a.ini").c_str(), 0640);
  replaceWholeFile(path, "new content");
  EXPECT_EQ(folder.read("a.ini"), "new content");
  EXPECT_EQ(modeOf(folder.machine("a.ini")), 0640U);
  replaceWholeFile(folder.file("b.ini"), "");
  EXPECT_EQ(folder.read("b.ini"), "");
  EXPECT_EQ(filesIn(folder), 2U);
}

TEST(ReplaceWholeFile, ReplacesTheTargetOfALinkAndKeepsTheLink) {
  const TempFolder folder;
  folder.write("real/a.ini", "old");
  fs::create_symlink("real/a.ini", folder.machine("one.ini"));
  fs::create_symlink(folder.machine("one.ini"), folder.machine("two.ini"));
  replaceWholeFile(folder.file("two.ini"), "new");
  EXPECT_EQ(folder.read("real/a.ini"), "new");
  EXPECT_TRUE(fs::is_symlink(folder.machine("one.ini")));
  EXPECT_TRUE(fs::is_symlink(folder.machine("two.ini")));
}

TEST(ReplaceWholeFile, RefusesAReadOnlyFile) {
  const TempFolder folder;
  const std::string path = folder.write("a.ini", "old");
  ::chmod(folder.machine("a.ini").c_str(), 0444);
  ::chmod(folder.machine().c_str(), 0777);
  EXPECT_EQ(runWithoutPrivilege(
                [&] { return failureOf([&] { replaceWholeFile(path, "new"); }) == failure::permissionDenied; }),
            0);
  EXPECT_EQ(folder.read("a.ini"), "old");
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(ReplaceWholeFile, AFolderAtThePathIsTold) {
  const TempFolder folder;
  folder.write("sub/x", "");
  EXPECT_EQ(failureOf([&] { replaceWholeFile(folder.file("sub"), "x"); }), failure::pathAccess);
  EXPECT_EQ(failureOf([&] { replaceWholeFile(folder.file("no\\x"), "x"); }), failure::pathNotFound);
  EXPECT_EQ(filesIn(folder), 1U);
}

TEST(ReplaceWholeFile, AFailureAtAnyCallLeavesTheOldFileAndNothingBeside) {
  const TempFolder folder;
  const std::string path = folder.write("a.ini", "old");
  FaultPlatform faults(operatingSystem());
  const Substitute substitute(faults);
  const int calls = callsOf(faults, [&] { replaceWholeFile(folder.file("probe.ini"), "p"); });
  ASSERT_GE(calls, 5);
  for (int call = 1; call <= calls + 1; ++call) {
    faults.failAt(call, failure::permissionDenied);
    const int number = failureOf([&] { replaceWholeFile(path, "new"); });
    EXPECT_EQ(folder.read("a.ini"), number == 0 ? "new" : "old") << call;
    EXPECT_EQ(filesIn(folder), 2U) << call;
    EXPECT_EQ(number == 0, call >= calls + 1) << call;  // the new file stands before the last call
    folder.write("a.ini", "old");
  }
}

TEST(ReplaceWholeFile, AFullDiskAtAnyCallLeavesTheOldFileAndNothingBeside) {
  const TempFolder folder;
  const std::string path = folder.write("a.ini", "old");
  FaultPlatform faults(operatingSystem());
  const Substitute substitute(faults);
  for (int call = 1; call <= 3; ++call) {
    faults.fillDiskAt(call);
    EXPECT_EQ(failureOf([&] { replaceWholeFile(path, "new content"); }), failure::diskFull) << call;
    EXPECT_EQ(folder.read("a.ini"), "old") << call;
    EXPECT_EQ(filesIn(folder), 1U) << call;
  }
}

TEST(ReplaceWholeFile, AfterACrashAtAnyCallTheFileIsOldOrNewAndWhole) {
  const TempFolder folder;
  const std::string path = folder.write("a.ini", "old");
  FaultPlatform faults(operatingSystem());
  const Substitute substitute(faults);
  bool sawOld = false;
  bool sawNew = false;
  for (int call = 1; call <= 8; ++call) {
    folder.write("a.ini", "old");
    faults.crashAt(call, true);
    failureOf([&] { replaceWholeFile(path, "new content"); });
    const std::string content = folder.read("a.ini");
    EXPECT_TRUE(content == "old" || content == "new content") << call << ": " << content;
    (content == "old" ? sawOld : sawNew) = true;
  }
  EXPECT_TRUE(sawOld);
  EXPECT_TRUE(sawNew);
}

TEST(ReplaceWholeFile, WhatAKilledProgramLeftUnderTheSameNameIsNoHindrance) {
  const TempFolder folder;
  FaultPlatform faults(operatingSystem());
  const Substitute substitute(faults);
  replaceWholeFile(folder.file("a"), "1");
  // The next temporary names of this process, taken.
  const std::string name = faults.journal().front().substr(faults.journal().front().rfind('-') + 1);
  const int number = std::stoi(name);
  for (int next = number + 1; next <= number + 3; ++next) {
    folder.write("a." + std::to_string(::getpid()) + "-" + std::to_string(next) + ".tmp", "left");
  }
  replaceWholeFile(folder.file("a"), "2");
  EXPECT_EQ(folder.read("a"), "2");
  EXPECT_EQ(filesIn(folder), 4U);
}

TEST(CreateWholeFile, GoesBehindALinkThatLeadsToNoFileYet) {
  const TempFolder folder;
  fs::create_symlink("real.ini", folder.machine("a.ini"));
  createWholeFile(folder.file("a.ini"), "content");
  EXPECT_TRUE(fs::is_symlink(folder.machine("a.ini")));
  EXPECT_EQ(folder.read("real.ini"), "content");
}

TEST(ReplaceWholeFile, ARingOfLinksHoldsNothingUp) {
  const TempFolder folder;
  fs::create_symlink("b.ini", folder.machine("a.ini"));
  fs::create_symlink("a.ini", folder.machine("b.ini"));
  EXPECT_EQ(failureOf([&] { readWholeFile(folder.file("a.ini")); }), failure::pathAccess);
  replaceWholeFile(folder.file("a.ini"), "content");
  EXPECT_EQ(folder.read("a.ini"), "content");
  EXPECT_EQ(filesIn(folder), 2U);
}

TEST(CreateWholeFile, RefusesWhereTheFileExists) {
  const TempFolder folder;
  createWholeFile(folder.file("a"), "first");
  EXPECT_EQ(failureOf([&] { createWholeFile(folder.file("a"), "second"); }), failure::fileExists);
  EXPECT_EQ(folder.read("a"), "first");
  EXPECT_EQ(filesIn(folder), 1U);
}

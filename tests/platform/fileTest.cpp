#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/Platform.h"
#include "platform/failures.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;

namespace {

std::string readAt(File& file, std::uint64_t offset, std::size_t count) {
  std::string bytes(count, '?');
  bytes.resize(file.readAt(offset, bytes.data(), count));
  return bytes;
}

}  // namespace

TEST(File, ReadsUpToItsEndAndNothingBehindIt) {
  const TempFolder folder;
  const auto file = current().open(folder.write("a.bin", "0123456789"), OpenMode::read);
  EXPECT_EQ(file->size(), 10U);
  EXPECT_EQ(readAt(*file, 2, 3), "234");
  EXPECT_EQ(readAt(*file, 8, 100), "89");
  EXPECT_EQ(readAt(*file, 10, 1), "");
  EXPECT_EQ(readAt(*file, std::uint64_t{1} << 63, 1), "");
}

TEST(File, WritesAppendsAndTruncates) {
  const TempFolder folder;
  const auto file = current().open(folder.file("a.bin"), OpenMode::create);
  file->writeAt(2, "cd", 2);
  file->append("ef", 2);
  file->writeAt(0, "ab", 2);
  file->sync();
  EXPECT_EQ(folder.read("a.bin"), "abcdef");
  file->truncate(3);
  EXPECT_EQ(folder.read("a.bin"), "abc");
  file->truncate(4);
  EXPECT_EQ(folder.read("a.bin"), std::string("abc\0", 4));
}

TEST(File, HoldsOffsetsBeyondFourGigabytes) {
  const TempFolder folder;
  const auto file = current().open(folder.file("big.bin"), OpenMode::create);
  const std::uint64_t offset = (std::uint64_t{1} << 32) + 5;
  file->writeAt(offset, "x", 1);
  EXPECT_EQ(file->size(), offset + 1);
  EXPECT_EQ(readAt(*file, offset, 4), "x");
  EXPECT_EQ(failureOf([&] { file->writeAt(~std::uint64_t{0}, "x", 1); }), failure::deviceIO);
}

TEST(File, OpenedForAppendingEachWriteGoesToTheEnd) {
  const TempFolder folder;
  const std::string path = folder.write("log.txt", "1");
  const auto first = current().open(path, OpenMode::append);
  const auto second = current().open(path, OpenMode::append);
  first->append("2", 1);
  second->append("3", 1);
  first->append("4", 1);
  EXPECT_EQ(folder.read("log.txt"), "1234");
  current().open(folder.file("new.txt"), OpenMode::append)->append("n", 1);
  EXPECT_EQ(folder.read("new.txt"), "n");
}

TEST(File, ModesCreateEmptyOrRefuseAsTheySay) {
  const TempFolder folder;
  const std::string path = folder.write("a.txt", "old");
  EXPECT_EQ(failureOf([&] { current().open(path, OpenMode::createNew); }), failure::fileExists);
  EXPECT_EQ(folder.read("a.txt"), "old");
  current().open(path, OpenMode::create);
  EXPECT_EQ(folder.read("a.txt"), "");
  current().open(folder.file("b.txt"), OpenMode::createNew);
  EXPECT_TRUE(folder.exists("b.txt"));
}

TEST(File, FailuresHaveTheirNumbersAndNameThePath) {
  const TempFolder folder;
  const std::string missing = folder.file("none.txt");
  EXPECT_EQ(failureOf([&] { current().open(missing, OpenMode::read); }), failure::fileNotFound);
  EXPECT_EQ(failureOf([&] { current().open(folder.file("no\\x.txt"), OpenMode::read); }), failure::pathNotFound);
  EXPECT_EQ(failureOf([&] { current().open(folder.file("no\\x.txt"), OpenMode::create); }), failure::pathNotFound);
  EXPECT_EQ(failureOf([&] { current().open(folder.path(), OpenMode::read); }), failure::pathAccess);
  EXPECT_EQ(failureOf([&] { current().open(folder.path(), OpenMode::readWrite); }), failure::pathAccess);
  EXPECT_EQ(failureOf([&] { current().open("", OpenMode::read); }), failure::fileNotFound);
  EXPECT_EQ(failureOf([&] { current().open(missing + std::string(1, '\0'), OpenMode::create); }),
            failure::pathNotFound);
  try {
    current().open(missing, OpenMode::read);
  } catch (const RunTimeFailure& failure) {
    EXPECT_NE(failure.description().find(folder.machine("none.txt")), std::string::npos);
  }
}

TEST(File, WithoutRightsFailsWithPermissionDenied) {
  const TempFolder folder;
  const std::string path = folder.write("a.txt", "x");
  ::chmod(folder.machine("a.txt").c_str(), 0444);
  EXPECT_EQ(runWithoutPrivilege([&] {
              return failureOf([&] { current().open(path, OpenMode::readWrite); }) == failure::permissionDenied &&
                     failureOf([&] { current().open(path, OpenMode::read); }) == 0;
            }),
            0);
}

TEST(File, AFullDiskFailsWithItsNumber) {
  if (!current().fileExists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  const auto file = current().open("/dev/full", OpenMode::readWrite);
  EXPECT_EQ(failureOf([&] { file->writeAt(0, "x", 1); }), failure::diskFull);
}

TEST(File, APipeAtThePathIsRefusedWithoutWaiting) {
  const TempFolder folder;
  ASSERT_EQ(::mkfifo(folder.machine("pipe").c_str(), 0600), 0);
  EXPECT_EQ(failureOf([&] { current().open(folder.file("pipe"), OpenMode::read); }), failure::pathAccess);
  EXPECT_EQ(failureOf([&] { current().open(folder.file("pipe"), OpenMode::append); }), failure::pathAccess);
}

TEST(File, MapsItsBytesAndGivesNothingForAnEmptyFile) {
  const TempFolder folder;
  auto file = current().open(folder.write("a.bin", "mapped"), OpenMode::read);
  const auto map = file->map();
  file.reset();
  ASSERT_NE(map, nullptr);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(map->data()), map->size()), "mapped");
  EXPECT_EQ(current().open(folder.write("b.bin", ""), OpenMode::read)->map(), nullptr);
}

TEST(File, StateChangesWithTheContent) {
  const TempFolder folder;
  const std::string path = folder.write("a.bin", "1");
  const auto file = current().open(path, OpenMode::readWrite);
  const FileState before = file->state();
  EXPECT_EQ(current().state(path), before);
  file->append("2", 1);
  EXPECT_NE(file->state(), before);
  EXPECT_EQ(file->state().inode, before.inode);
  EXPECT_EQ(file->state().size, 2U);
}

TEST(File, TheTimeOfItsLastChangeCanBeSet) {
  const TempFolder folder;
  const auto file = current().open(folder.write("a.bin", "abc"), OpenMode::readWrite);
  constexpr std::int64_t time = 1'700'000'000'123'456'000;
  ASSERT_TRUE(file->setModified(time));
  EXPECT_EQ(file->state().modifiedNanoseconds, time);
  const std::int64_t before = current().wallNanoseconds();
  file->writeAt(0, "x", 1);
  EXPECT_NE(file->state().modifiedNanoseconds, time);
  EXPECT_LT(std::abs(file->state().modifiedNanoseconds - before), 3'000'000'000);
}

TEST(File, TellsWhetherThisMachinesClockGivesItsTimes) {
  if (!current().fileExists("/proc/self/status")) GTEST_SKIP() << "no file system of made-up files";
  EXPECT_FALSE(current().open("/proc/self/status", OpenMode::read)->hasOwnClock());
}

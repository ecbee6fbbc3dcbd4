// Bytes written over others by a program that is killed.
#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <random>

#include "platform/Platform.h"
#include "platform/failures.h"
#include "support/Processes.h"
#include "support/TempFolder.h"
#include "support/longTests.h"

using namespace vantrelix;
using namespace vantrelix::platform;
using namespace vantrelix::test;

namespace {

constexpr std::size_t kLength = 200;
constexpr std::uint64_t kOverPageEnd = 4096 - 90;

class Overwrite : public testing::Test {
 protected:
  // Page by page, so that the system keeps it so and not as a piece.
  Overwrite() {
    const auto file = current().open(path, OpenMode::create);
    const std::string page(4096, '-');
    for (int i = 0; i < 3; ++i) file->append(page.data(), page.size());
  }
  std::string read() const { return folder.read("f").substr(kOverPageEnd, kLength); }

  void killWriters(void (Child::*kill)()) {
    const int kills = quickOrLong(200, 2000);
    std::mt19937 random(7);
    const auto reader = current().open(path, OpenMode::readWrite);
    for (int i = 0; i < kills; ++i) {
      SharedMemory<std::atomic<int>> writes;
      Child child([&]() -> bool {
        ::setpgid(0, 0);
        const auto file = current().open(path, OpenMode::readWrite);
        for (;;) {
          const std::string bytes(kLength, *writes % 2 == 0 ? 'A' : 'B');
          if (!file->tryLock(0, 1, LockKind::exclusive)) continue;
          file->overwriteAt(kOverPageEnd, bytes.data(), bytes.size());
          file->unlock(0, 1);
          ++*writes;
        }
      });
      const int wanted = 2 + static_cast<int>(random() % 40);
      while (*writes < wanted) current().yield();
      (child.*kill)();
      while (!reader->tryLock(0, 1, LockKind::exclusive)) current().yield();
      const std::string bytes = read();
      reader->unlock(0, 1);
      ASSERT_EQ(bytes, std::string(kLength, bytes[0])) << i;
    }
  }

  TempFolder folder;
  const std::string path = folder.file("f");
};

}  // namespace

TEST_F(Overwrite, PutsItsBytesInPlaceAndNoOthers) {
  const auto file = current().open(path, OpenMode::readWrite);
  std::string expected(3 * 4096, '-');
  for (const auto& [offset, length] : {std::pair{10, 20}, {4090, 12}, {4096, 4096}, {4095, 2}, {8000, 4288}, {0, 0}}) {
    const std::string bytes(static_cast<std::size_t>(length), static_cast<char>('a' + offset % 26));
    file->overwriteAt(static_cast<std::uint64_t>(offset), bytes.data(), bytes.size());
    expected.replace(static_cast<std::size_t>(offset), bytes.size(), bytes);
    EXPECT_EQ(folder.read("f"), expected) << offset;
  }
}

TEST_F(Overwrite, OfAFileOpenForReadingFails) {
  const auto file = current().open(path, OpenMode::read);
  EXPECT_EQ(failureOf([&] { file->overwriteAt(10, "xy", 2); }), failure::deviceIO);
  EXPECT_EQ(failureOf([&] { file->overwriteAt(4095, "xy", 2); }), failure::deviceIO);
  EXPECT_EQ(folder.read("f"), std::string(3 * 4096, '-'));
}

TEST_F(Overwrite, LeavesNoProcessToWaitFor) {
  const auto file = current().open(path, OpenMode::readWrite);
  for (int i = 0; i < 10; ++i) file->overwriteAt(4095, "xy", 2);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG | __WALL), -1);
  EXPECT_EQ(errno, ECHILD);
}

// Over the end of a page a plain write is cut in two by every few kills.
TEST_F(Overwrite, IsDoneWhollyOrNotAtAllWhereItsProgramIsKilled) { killWriters(&Child::kill); }

TEST_F(Overwrite, IsDoneWhollyOrNotAtAllWhereItsProgramsGroupIsKilled) { killWriters(&Child::killGroup); }

// A writer that is killed: what it was told is in the table, and the next one needs neither repair nor wait.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <random>

#include "support/Processes.h"
#include "support/longTests.h"
#include "tables/numberedRows.h"

namespace vantrelix {
namespace {

using test::bytesOf;
using test::Child;
using test::Identity;
using test::identityOf;
using test::numberedRow;
using test::SharedMemory;
using test::SharedUse;

// What a writer has been told, kept where its end does not reach.
struct Confirmed {
  std::atomic<int> appended;  // rows whose append has returned
  std::atomic<int> adding;    // rows of the append that is being made
  std::array<std::atomic<int>, 40> versions;
  std::atomic<int> changing;  // the row that is being changed
};

// Rows 0 to 39 are changed again and again, and rows are added behind them one by one and several at a time; row n is
// of writer 1 and has the number n, one that is changed is of writer 2 and has its version's number.
class Writer {
 public:
  Writer(const std::string& path, Confirmed& confirmed, unsigned seed)
      : table_(DbfFile::open(path)), confirmed_(confirmed), random_(seed) {}

  void work() {
    const unsigned act = random_() % 3;
    if (act == 0) return change(static_cast<int>(random_() % confirmed_.versions.size()));
    append(act == 1 ? 1 : 2 + static_cast<int>(random_() % 20));
  }

  void append(int rows) {
    const int first = confirmed_.appended;
    std::string bytes;
    for (int i = 0; i < rows; ++i) bytes += numberedRow(1, first + i);
    confirmed_.adding = rows;
    table_->append(bytesOf(bytes), static_cast<std::uint32_t>(rows));
    confirmed_.appended = first + rows;
    confirmed_.adding = 0;
  }

 private:
  void change(int row) {
    std::atomic<int>& version = confirmed_.versions[static_cast<std::size_t>(row)];
    confirmed_.changing = row;
    table_->update(static_cast<std::uint32_t>(row), [&](unsigned char* record) {
      const std::string changed = numberedRow(2, version + 1);
      std::copy(changed.begin(), changed.end(), record);
    });
    ++version;
  }

  std::shared_ptr<DbfFile> table_;
  Confirmed& confirmed_;
  std::mt19937 random_;
};

class KilledWriter : public SharedUse {
 protected:
  void start() {
    confirmed->changing = -1;
    Writer(path, *confirmed, 0).append(static_cast<int>(confirmed->versions.size()));
  }

  void killOneAfter(int microseconds, unsigned seed) {
    SharedMemory<std::atomic<bool>> begun;
    Child child([&]() -> bool {
      Writer writer(path, *confirmed, seed);
      *begun = true;
      for (;;) writer.work();
    });
    while (!*begun) platform::current().yield();
    const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
    while (std::chrono::steady_clock::now() < end) {
    }
    child.kill();
  }

  // What the writer was told is in the file, what it was about to be told may be, and nothing else.
  void expectWhatWasConfirmed() {
    const auto table = DbfFile::open(path);
    const auto count = static_cast<int>(table->recordCount());
    EXPECT_GE(count, confirmed->appended);
    EXPECT_TRUE(count == confirmed->appended || count == confirmed->appended + confirmed->adding);
    table->scan([&](std::uint32_t number, const unsigned char* record) {
      expectRow(static_cast<int>(number), identityOf(record));
      return true;
    });
    confirmed->appended = count;
    confirmed->adding = 0;
    confirmed->changing = -1;
  }

  void expectRow(int row, Identity found) {
    const bool changes = row < static_cast<int>(confirmed->versions.size());
    std::atomic<int>* version = changes ? &confirmed->versions[static_cast<std::size_t>(row)] : nullptr;
    if (version != nullptr && row == confirmed->changing && found.writer == 2 && found.number == *version + 1)
      ++*version;
    const bool changed = version != nullptr && *version > 0;
    ASSERT_EQ(found.writer, changed ? 2 : 1) << row;
    ASSERT_EQ(found.number, changed ? version->load() : row) << row;
  }

  SharedMemory<Confirmed> confirmed;
};

TEST_F(KilledWriter, LeavesAllThatWasConfirmedAndATableThatIsFitForUseAtOnce) {
  const int kills = test::quickOrLong(60, 1000);
  start();
  // Nothing is left to wait for but the end of a write that had begun: the locks go with it.
  DbfFile::setLockWait(200);
  std::mt19937 random(2026);
  for (int kill = 0; kill < kills; ++kill) {
    if (kill % 10 == 9) {
      DbfFile::create(path, {{"HEAD", 'C', 10, 0}, {"REST", 'C', 189, 0}});
      new (&*confirmed) Confirmed{};
      start();
    }
    killOneAfter(static_cast<int>(random() % 600), static_cast<unsigned>(kill));
    expectWhatWasConfirmed();
    if (HasFatalFailure()) FAIL() << "after kill " << kill;
    DbfFile::open(path, false, Sharing::exclusive);
    Writer(path, *confirmed, 0).append(1);
    expectWhatWasConfirmed();
  }
}

}  // namespace
}  // namespace vantrelix

// A table at rest that is long enough for two threads to share a scan of it.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/DbfFile.h"

namespace vantrelix::test {

// A machine whose files tell of their reads.
class WatchedPlatform : public platform::FaultPlatform {
 public:
  WatchedPlatform() : FaultPlatform(platform::operatingSystem()) {}

  bool readsInParallel = true;
  std::function<void(std::uint64_t offset, std::size_t count)> onRead;  // in any thread

  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    return std::make_unique<WatchedFile>(platform::operatingSystem().open(path, mode), *this);
  }

 private:
  class WatchedFile : public platform::ForwardingFile {
   public:
    WatchedFile(std::unique_ptr<File> real, WatchedPlatform& machine)
        : ForwardingFile(std::move(real)), machine_(machine) {}
    bool readsInParallel() const override { return machine_.readsInParallel; }
    std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
      if (machine_.onRead) machine_.onRead(offset, count);
      return real_->readAt(offset, buffer, count);
    }

   private:
    WatchedPlatform& machine_;
  };
};

// 60,000 rows of 101 bytes, 6 MB: PLACE counts them, ID is one of 50 that have 37 rows behind one another again and
// again, VALUE is null in some. Some rows are deleted. No block holds whole rows of one ID.
class LongTable : public testing::Test {
 protected:
  static constexpr std::uint32_t kRows = 60000;
  static constexpr std::uint64_t kLength = 101;
  static constexpr std::uint64_t kHeader = 32 + 4 * 32 + 1;
  // Lies read already while the first rows are looked at.
  static constexpr std::uint32_t kReadAhead = 4000;

  LongTable() {
    DbfFile::create(path(), {{"PLACE", 'N', 10, 0}, {"ID", 'C', 12, 0}, {"VALUE", 'N', 9, 4}, {"TEXT", 'C', 69, 0}});
    const auto table = DbfFile::open(path());
    static const std::vector<unsigned char> rows = rowsFor(*table);
    table->append(rows.data(), kRows);
    setAge(60);
  }

  static std::vector<unsigned char> rowsFor(const DbfFile& table) {
    std::vector<unsigned char> rows;
    for (std::uint32_t i = 0; i < kRows; ++i) {
      std::vector<unsigned char> row = table.blankRecord();
      table.put(row.data(), 0, static_cast<double>(i));
      table.put(row.data(), 1, idOf(i));
      if (!isNull(i)) table.put(row.data(), 2, valueOf(i));
      if (isDeleted(i)) row[0] = '*';
      rows.insert(rows.end(), row.begin(), row.end());
    }
    return rows;
  }
  static std::string idOf(std::uint32_t row) { return "ID" + std::to_string(row / 37 % 50); }
  static bool isNull(std::uint32_t row) { return row % 11 == 3; }
  static bool isDeleted(std::uint32_t row) { return row % 101 == 7; }
  static double valueOf(std::uint32_t row) { return (row * 7919 % 100003 - 50000.0) / 10000 * 3; }

  std::string path() const { return folder_.file("LONG.DBF"); }
  std::unique_ptr<platform::File> stranger() const {
    return platform::operatingSystem().open(path(), platform::OpenMode::readWrite);
  }
  static std::uint64_t offsetOf(std::uint32_t row) { return kHeader + row * kLength; }
  void setAge(std::int64_t seconds) const {
    stranger()->setModified(platform::operatingSystem().wallNanoseconds() - seconds * 1'000'000'000);
  }
  RecordsetPtr query(const std::string& text) const {
    return DBEngine::OpenDatabase(folder_.path())->OpenRecordset(text);
  }
  // What it gives of a file at rest has to be what it gives of one that is not, which one thread reads.
  template <class Ask>
  void expectSame(const Ask& ask) const {
    setAge(0);
    const auto expected = ask();
    setAge(60);
    EXPECT_EQ(ask(), expected);
  }

  WatchedPlatform machine_;

 private:
  TempFolder folder_;
  const platform::Substitute use_{machine_};
};

}  // namespace vantrelix::test

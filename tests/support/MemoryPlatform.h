// A platform whose files stand in memory: for work on thousands of small files a second. What is no file work goes to
// the operating system. Every folder exists; of paths the case counts.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/FaultPlatform.h"

namespace vantrelix::test {

struct MemoryContent {
  std::string bytes;
  std::uint64_t number = 0;  // takes the place of the file system's own
  bool ownClock = false;     // else there is no clock that gives the file a time
  std::int64_t modified = 0;

  platform::FileState state() const {
    return {.device = 1, .inode = number, .size = bytes.size(), .modifiedNanoseconds = modified};
  }
  // Before each change of the bytes. No two have one time.
  void change() {
    if (ownClock) modified = std::max(modified + 1, platform::operatingSystem().wallNanoseconds());
  }
};

class MemoryFile : public platform::File {
 public:
  explicit MemoryFile(std::shared_ptr<MemoryContent> content) : content_(std::move(content)) {}

  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    const std::string& bytes = content_->bytes;
    if (offset >= bytes.size()) return 0;
    const std::size_t got = std::min<std::size_t>(count, bytes.size() - offset);
    std::memcpy(buffer, bytes.data() + offset, got);
    return got;
  }
  bool readsInParallel() const override { return true; }
  void writeAt(std::uint64_t offset, const void* from, std::size_t count) override {
    content_->change();
    std::string& bytes = content_->bytes;
    if (bytes.size() < offset + count) bytes.resize(offset + count);
    std::memcpy(bytes.data() + offset, from, count);
  }
  void append(const void* from, std::size_t count) override { writeAt(content_->bytes.size(), from, count); }
  std::uint64_t size() override { return content_->bytes.size(); }
  void truncate(std::uint64_t size) override {
    content_->change();
    content_->bytes.resize(size);
  }
  void sync() override {}
  platform::FileState state() override { return content_->state(); }
  bool tryLock(std::uint64_t, std::uint64_t, platform::LockKind) override { return true; }
  void unlock(std::uint64_t, std::uint64_t) override {}
  bool lockedByOther(std::uint64_t, std::uint64_t, platform::LockKind) override { return false; }
  bool setModified(std::int64_t nanoseconds) override {
    if (content_->ownClock) content_->modified = nanoseconds;
    return content_->ownClock;
  }
  bool hasOwnClock() override { return content_->ownClock; }
  std::unique_ptr<platform::MemoryMap> map() override { return nullptr; }

 private:
  std::shared_ptr<MemoryContent> content_;
};

class MemoryPlatform : public platform::FaultPlatform {
 public:
  MemoryPlatform() : FaultPlatform(platform::operatingSystem()) {}

  void put(const std::string& path, std::string bytes) {
    files_[plain(path)] = std::make_shared<MemoryContent>(MemoryContent{std::move(bytes), ++number_});
  }
  // All files there are stand on a disk of this machine, and have for an hour as they are.
  void rest() {
    constexpr std::int64_t hour = 3'600'000'000'000;
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t then = wallNanoseconds() - hour;
    for (const auto& [path, content] : files_) {
      content->ownClock = true;
      content->modified = then - (then % second == 0 ? 1 : 0);
    }
  }
  void clear() { files_.clear(); }
  std::size_t fileCount() const { return files_.size(); }

  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    using platform::OpenMode;
    const bool there = fileExists(path);
    if (there && mode == OpenMode::createNew) throw RunTimeFailure(failure::fileExists, path + " exists.");
    if (!there && (mode == OpenMode::read || mode == OpenMode::readWrite)) missing(path);
    if (!there || mode == OpenMode::create) put(path, "");
    return std::make_unique<MemoryFile>(files_[plain(path)]);
  }
  bool fileExists(const std::string& path) override { return files_.contains(plain(path)); }
  bool folderExists(const std::string&) override { return true; }
  std::optional<platform::FileState> state(const std::string& path) override {
    if (!fileExists(path)) return std::nullopt;
    return files_[plain(path)]->state();
  }
  void rename(const std::string& from, const std::string& to) override {
    if (!fileExists(from)) missing(from);
    files_[plain(to)] = std::exchange(files_[plain(from)], nullptr);
    files_.erase(plain(from));
  }
  void renameNew(const std::string& from, const std::string& to) override {
    if (fileExists(to)) throw RunTimeFailure(failure::fileExists, to + " exists.");
    rename(from, to);
  }
  void remove(const std::string& path) override {
    if (files_.erase(plain(path)) == 0) missing(path);
  }
  void makeFolder(const std::string&) override {}
  void copyPermissions(const std::string&, const std::string&) override {}
  void syncFolder(const std::string&) override {}
  std::vector<std::string> list(const std::string&) override { return {}; }
  std::string findIgnoringCase(const std::string& path) override { return path; }
  std::string linkTarget(const std::string& path) override { return path; }

 private:
  [[noreturn]] static void missing(const std::string& path) {
    throw RunTimeFailure(failure::fileNotFound, path + " is not there.");
  }

  // With a slash for each backslash.
  static std::string plain(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
  }

  std::map<std::string, std::shared_ptr<MemoryContent>> files_;
  std::uint64_t number_ = 0;
};

}  // namespace vantrelix::test

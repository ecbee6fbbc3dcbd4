// A platform whose files stand in memory: for work on thousands of small files a second. What is no file work goes to
// the operating system. Paths are compared as they stand; every folder exists.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/FaultPlatform.h"

namespace vantrelix::test {

struct MemoryContent {
  std::string bytes;
  std::uint64_t number = 0;  // takes the place of the file system's own
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
  void writeAt(std::uint64_t offset, const void* from, std::size_t count) override {
    std::string& bytes = content_->bytes;
    if (bytes.size() < offset + count) bytes.resize(offset + count);
    std::memcpy(bytes.data() + offset, from, count);
  }
  void append(const void* from, std::size_t count) override { writeAt(content_->bytes.size(), from, count); }
  std::uint64_t size() override { return content_->bytes.size(); }
  void truncate(std::uint64_t size) override { content_->bytes.resize(size); }
  void sync() override {}
  platform::FileState state() override {
    return {.device = 1, .inode = content_->number, .size = content_->bytes.size()};
  }
  bool tryLock(std::uint64_t, std::uint64_t, platform::LockKind) override { return true; }
  void unlock(std::uint64_t, std::uint64_t) override {}
  bool lockedByOther(std::uint64_t, std::uint64_t, platform::LockKind) override { return false; }
  bool setModified(std::int64_t) override { return false; }
  bool hasOwnClock() override { return false; }
  std::unique_ptr<platform::MemoryMap> map() override { return nullptr; }

 private:
  std::shared_ptr<MemoryContent> content_;
};

class MemoryPlatform : public platform::FaultPlatform {
 public:
  MemoryPlatform() : FaultPlatform(platform::operatingSystem()) {}

  void put(const std::string& path, std::string bytes) {
    files_[path] = std::make_shared<MemoryContent>(MemoryContent{std::move(bytes), ++number_});
  }
  void clear() { files_.clear(); }
  std::size_t fileCount() const { return files_.size(); }

  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    using platform::OpenMode;
    const bool there = fileExists(path);
    if (there && mode == OpenMode::createNew) throw RunTimeFailure(failure::fileExists, path + " exists.");
    if (!there && (mode == OpenMode::read || mode == OpenMode::readWrite)) missing(path);
    if (!there || mode == OpenMode::create) put(path, "");
    return std::make_unique<MemoryFile>(files_[path]);
  }
  bool fileExists(const std::string& path) override { return files_.contains(path); }
  bool folderExists(const std::string&) override { return true; }
  std::optional<platform::FileState> state(const std::string& path) override {
    if (!fileExists(path)) return std::nullopt;
    return MemoryFile(files_[path]).state();
  }
  void rename(const std::string& from, const std::string& to) override {
    if (!fileExists(from)) missing(from);
    files_[to] = std::exchange(files_[from], nullptr);
    files_.erase(from);
  }
  void renameNew(const std::string& from, const std::string& to) override {
    if (fileExists(to)) throw RunTimeFailure(failure::fileExists, to + " exists.");
    rename(from, to);
  }
  void remove(const std::string& path) override {
    if (files_.erase(path) == 0) missing(path);
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

  std::map<std::string, std::shared_ptr<MemoryContent>> files_;
  std::uint64_t number_ = 0;
};

}  // namespace vantrelix::test

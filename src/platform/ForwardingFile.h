// A file that hands every call on to another one: the base of files that measure, fail or wait. For tests.
#pragma once

#include <memory>
#include <utility>

#include "platform/Platform.h"

namespace vantrelix::platform {

class ForwardingFile : public File {
 public:
  explicit ForwardingFile(std::unique_ptr<File> real) : real_(std::move(real)) {}

  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    return real_->readAt(offset, buffer, count);
  }
  void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    real_->writeAt(offset, bytes, count);
  }
  void append(const void* bytes, std::size_t count) override { real_->append(bytes, count); }
  std::uint64_t size() override { return real_->size(); }
  void truncate(std::uint64_t size) override { real_->truncate(size); }
  void sync() override { real_->sync(); }
  FileState state() override { return real_->state(); }
  bool tryLock(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    return real_->tryLock(offset, length, kind);
  }
  void unlock(std::uint64_t offset, std::uint64_t length) override { real_->unlock(offset, length); }
  bool lockedByOther(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    return real_->lockedByOther(offset, length, kind);
  }
  bool setModified(std::int64_t nanoseconds) override { return real_->setModified(nanoseconds); }
  bool hasOwnClock() override { return real_->hasOwnClock(); }
  std::unique_ptr<MemoryMap> map() override { return real_->map(); }

 protected:
  std::unique_ptr<File> real_;
};

}  // namespace vantrelix::platform

// A machine whose clock the test moves, and which counts the bytes read.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/FaultPlatform.h"

namespace vantrelix::test {

class MeasuredPlatform : public platform::FaultPlatform {
 public:
  MeasuredPlatform() : FaultPlatform(platform::operatingSystem()) {}

  // Goes on from one test to the next, as clocks do.
  static inline std::int64_t now = 1000;
  std::size_t bytesRead = 0;
  std::string counted;            // part of the names of the files that count; blank for all
  std::function<void()> onSleep;  // what goes on meanwhile

  std::int64_t steadyMilliseconds() override { return now; }
  void sleepMilliseconds(int milliseconds) override {
    now += milliseconds;
    if (onSleep) onSleep();
  }
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    auto file = FaultPlatform::open(path, mode);
    if (path.find(counted) == std::string::npos) return file;
    return std::make_unique<MeasuredFile>(std::move(file), bytesRead);
  }

 private:
  class MeasuredFile : public platform::File {
   public:
    MeasuredFile(std::unique_ptr<File> real, std::size_t& bytesRead) : real_(std::move(real)), bytesRead_(bytesRead) {}
    std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
      const std::size_t got = real_->readAt(offset, buffer, count);
      bytesRead_ += got;
      return got;
    }
    void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
      real_->writeAt(offset, bytes, count);
    }
    void append(const void* bytes, std::size_t count) override { real_->append(bytes, count); }
    std::uint64_t size() override { return real_->size(); }
    void truncate(std::uint64_t size) override { real_->truncate(size); }
    void sync() override { real_->sync(); }
    platform::FileState state() override { return real_->state(); }
    bool tryLock(std::uint64_t offset, std::uint64_t length, platform::LockKind kind) override {
      return real_->tryLock(offset, length, kind);
    }
    void unlock(std::uint64_t offset, std::uint64_t length) override { real_->unlock(offset, length); }
    bool lockedByOther(std::uint64_t offset, std::uint64_t length, platform::LockKind kind) override {
      return real_->lockedByOther(offset, length, kind);
    }
    bool setModified(std::int64_t nanoseconds) override { return real_->setModified(nanoseconds); }
    bool hasOwnClock() override { return real_->hasOwnClock(); }
    std::unique_ptr<platform::MemoryMap> map() override { return real_->map(); }

   private:
    std::unique_ptr<File> real_;
    std::size_t& bytesRead_;
  };
};

}  // namespace vantrelix::test

// A machine whose clock the test moves, whose files' times go as the test tells, and which counts the bytes read.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"

namespace vantrelix::test {

class MeasuredPlatform : public platform::FaultPlatform {
 public:
  MeasuredPlatform() : FaultPlatform(platform::operatingSystem()) {}

  // Goes on from one test to the next, as clocks do.
  static inline std::int64_t now = 1000;
  std::size_t bytesRead = 0;
  std::string counted;            // part of the names of the files that count; blank for all
  std::function<void()> onSleep;  // what goes on meanwhile
  std::function<void()> onWrite;  // what goes on right before a write
  std::function<void()> onRead;   // ... or a read
  int locksTried = 0;
  int statesAsked = 0;

  // Whether files have their times from this machine's clock; the steps in which they come, and whether this program
  // may set them. A time set by a program is rounded too.
  bool ownClock = false;
  std::int64_t nanosecondsPerTick = 1;
  bool maySetTimes = true;
  std::int64_t setBackNanoseconds = 0;       // the clock, by the test
  std::int64_t lastTimeBeforeOneWasSet = 0;  // what the file system showed of a write
  int timesSet = 0;

  std::int64_t steadyMilliseconds() override { return now; }
  // Time that the test lets go by goes by on this clock too.
  std::int64_t wallNanoseconds() override {
    constexpr std::int64_t perMillisecond = 1'000'000;
    return asShown(FaultPlatform::wallNanoseconds() + (now - start_) * perMillisecond - setBackNanoseconds);
  }
  void sleepMilliseconds(int milliseconds) override {
    now += milliseconds;
    if (onSleep) onSleep();
  }
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    auto file = FaultPlatform::open(path, mode);
    if (path.find(counted) == std::string::npos) return file;
    return std::make_unique<MeasuredFile>(std::move(file), *this);
  }

 private:
  class MeasuredFile : public platform::ForwardingFile {
   public:
    MeasuredFile(std::unique_ptr<File> real, MeasuredPlatform& machine)
        : ForwardingFile(std::move(real)), machine_(machine) {}
    std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
      if (machine_.onRead) machine_.onRead();
      const std::size_t got = real_->readAt(offset, buffer, count);
      machine_.bytesRead += got;
      return got;
    }
    void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
      if (machine_.onWrite) machine_.onWrite();
      real_->writeAt(offset, bytes, count);
    }
    bool tryLock(std::uint64_t offset, std::uint64_t length, platform::LockKind kind) override {
      ++machine_.locksTried;
      return real_->tryLock(offset, length, kind);
    }
    platform::FileState state() override {
      ++machine_.statesAsked;
      platform::FileState state = real_->state();
      state.modifiedNanoseconds = machine_.asShown(state.modifiedNanoseconds);
      return state;
    }
    bool setModified(std::int64_t nanoseconds) override {
      if (!machine_.maySetTimes) return false;
      machine_.lastTimeBeforeOneWasSet = state().modifiedNanoseconds;
      ++machine_.timesSet;
      return real_->setModified(machine_.asShown(nanoseconds));
    }
    bool hasOwnClock() override { return machine_.ownClock; }

   private:
    MeasuredPlatform& machine_;
  };

  const std::int64_t start_ = now;

  std::int64_t asShown(std::int64_t nanoseconds) const { return nanoseconds - nanoseconds % nanosecondsPerTick; }
};

}  // namespace vantrelix::test

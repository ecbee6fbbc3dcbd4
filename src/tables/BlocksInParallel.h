// A long run of a file's bytes, read and looked at block by block in two threads at once. Private to the table-file
// sources.
//
// Each thread reads a block and looks at it while it lies in its processor's cache; the caller gets the blocks in their
// order. So bytes that lie in the system's cache, which take longer to copy than to look at, cost half of the time.
#pragma once

#include <array>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/Platform.h"

namespace vantrelix::dbf {

class BlocksInParallel {
 public:
  // Blocks that are in work or wait for the caller. So many keep both threads busy, and fit their caches.
  static constexpr std::size_t kSlots = 4;

  struct Block {
    const unsigned char* bytes = nullptr;
    std::size_t size = 0;     // fewer than asked for at the end of the file
    std::uint64_t place = 0;  // of the first byte, counted from `offset`
    std::size_t slot = 0;     // below kSlots; no other block has it before next() is called again
  };
  // Looks at a block in either thread; it may work on another one at the same time. May be empty.
  using Look = std::function<void(const Block&)>;

  // The file must allow readsInParallel and, like `look`, outlive this. Blocks have `blockBytes`, the last one what is
  // left of `count`. Where the system has no thread to give the caller's does it all.
  BlocksInParallel(platform::File& file, std::uint64_t offset, std::uint64_t count, std::size_t blockBytes,
                   const Look& look);
  ~BlocksInParallel();
  BlocksInParallel(const BlocksInParallel&) = delete;
  BlocksInParallel& operator=(const BlocksInParallel&) = delete;

  // The next block, looked at; its bytes stand until the next call. One of size 0 is behind the last. Fails as the
  // reading of the block, or the look at it, did; no block comes behind that one.
  Block next();

 private:
  enum class Stage { free, inWork, done };

  struct Slot {
    Stage stage = Stage::free;
    Block block;
    std::exception_ptr failure;
  };

  Slot* take(bool byHelper);
  void work(Slot& slot) noexcept;
  void help();
  Slot* nextDone();

  platform::File& file_;
  std::uint64_t offset_;
  std::uint64_t count_;
  std::size_t blockBytes_;
  const Look& look_;
  std::unique_ptr<unsigned char[]> room_;  // of the slots, one behind the other
  std::mutex guard_;                       // of all that follows, but the blocks in work
  std::condition_variable changed_;
  std::array<Slot, kSlots> slots_;
  std::uint64_t taken_ = 0;  // bytes of blocks that a thread has begun
  std::uint64_t given_ = 0;  // ... that the caller has had
  std::uint64_t end_;        // no block is begun from here on
  Slot* shown_ = nullptr;    // the block that the caller has
  std::thread helper_;
};

}  // namespace vantrelix::dbf

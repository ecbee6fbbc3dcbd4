// A long run of a file's bytes, read block by block, one block ahead of the work on them. Private to the table-file
// sources.
//
// Bytes that lie in the system's cache take as long to copy as rows to look at: a thread of its own does the one while
// the caller does the other.
#pragma once

#include <array>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

#include "platform/Platform.h"

namespace vantrelix::dbf {

class BlocksAhead {
 public:
  // The file must allow readsInParallel and outlive this. Blocks have `blockBytes`, the last one what is left of
  // `count`. Throws std::system_error where there is no thread to be had.
  BlocksAhead(platform::File& file, std::uint64_t offset, std::uint64_t count, std::size_t blockBytes);
  ~BlocksAhead();
  BlocksAhead(const BlocksAhead&) = delete;
  BlocksAhead& operator=(const BlocksAhead&) = delete;

  struct Block {
    const unsigned char* bytes = nullptr;  // until the next call
    std::size_t size = 0;                  // fewer than asked for at the end of the file, 0 behind the last one
  };
  // Waits for it. Fails as its reading did.
  Block next();

 private:
  struct Slot {
    std::unique_ptr<unsigned char[]> bytes;
    std::size_t size = 0;
    bool full = false;
  };

  void readAll();
  bool fill(Slot& slot, std::uint64_t offset, std::size_t count);

  platform::File& file_;
  std::uint64_t offset_;
  std::uint64_t count_;
  std::size_t blockBytes_;
  std::mutex guard_;
  std::condition_variable changed_;
  std::array<Slot, 4> slots_;
  std::size_t taken_ = 0;  // blocks given to the caller
  bool atEnd_ = false;     // no block will be filled any more
  bool stopped_ = false;
  std::exception_ptr failure_;
  std::thread reader_;
};

}  // namespace vantrelix::dbf

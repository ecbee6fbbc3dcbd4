#include "tables/BlocksAhead.h"

#include <algorithm>

namespace vantrelix::dbf {

BlocksAhead::BlocksAhead(platform::File& file, std::uint64_t offset, std::uint64_t count, std::size_t blockBytes)
    : file_(file), offset_(offset), count_(count), blockBytes_(blockBytes) {
  for (Slot& slot : slots_) slot.bytes = std::make_unique_for_overwrite<unsigned char[]>(blockBytes);
  reader_ = std::thread([this] { readAll(); });
}

BlocksAhead::~BlocksAhead() {
  {
    const std::lock_guard lock(guard_);
    stopped_ = true;
  }
  changed_.notify_all();
  reader_.join();
}

void BlocksAhead::readAll() {
  std::size_t number = 0;
  try {
    for (std::uint64_t done = 0; done < count_; done += blockBytes_, ++number) {
      const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(blockBytes_, count_ - done));
      if (!fill(slots_[number % slots_.size()], offset_ + done, wanted)) break;
    }
  } catch (...) {
    failure_ = std::current_exception();  // seen behind atEnd_
  }
  {
    const std::lock_guard lock(guard_);
    atEnd_ = true;
  }
  changed_.notify_all();
}

// False where no further block is wanted or to be had.
bool BlocksAhead::fill(Slot& slot, std::uint64_t offset, std::size_t count) {
  {
    std::unique_lock lock(guard_);
    changed_.wait(lock, [&] { return stopped_ || !slot.full; });
    if (stopped_) return false;
  }
  const std::size_t size = file_.readAt(offset, slot.bytes.get(), count);
  {
    const std::lock_guard lock(guard_);
    slot.size = size;
    slot.full = true;
  }
  changed_.notify_all();
  return size == count;
}

BlocksAhead::Block BlocksAhead::next() {
  std::unique_lock lock(guard_);
  if (taken_ > 0) slots_[(taken_ - 1) % slots_.size()].full = false;
  changed_.notify_all();
  Slot& slot = slots_[taken_ % slots_.size()];
  changed_.wait(lock, [&] { return slot.full || atEnd_; });
  if (!slot.full) {
    if (failure_) std::rethrow_exception(failure_);
    return {};
  }
  ++taken_;
  return {slot.bytes.get(), slot.size};
}

}  // namespace vantrelix::dbf

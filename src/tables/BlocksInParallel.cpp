#include "tables/BlocksInParallel.h"

#include <algorithm>
#include <system_error>

#include "platform/helperThread.h"

namespace vantrelix::dbf {

BlocksInParallel::BlocksInParallel(platform::File& file, std::uint64_t offset, std::uint64_t count,
                                   std::size_t blockBytes, const Look& look)
    : file_(file),
      offset_(offset),
      count_(count),
      blockBytes_(blockBytes),
      look_(look),
      room_(std::make_unique_for_overwrite<unsigned char[]>(kSlots * blockBytes)),
      end_(count) {
  if (count <= blockBytes) return;
  try {
    helper_ = platform::startHelper([this] { help(); });
  } catch (const std::system_error&) {
    // next() works on every block that nobody else has taken.
  }
}

BlocksInParallel::~BlocksInParallel() {
  if (!helper_.joinable()) return;
  {
    const std::lock_guard lock(guard_);
    end_ = 0;
  }
  changed_.notify_all();
  helper_.join();
}

// The next block that nobody works on, with a free slot for it; null where there is none. Each thread prefers the slots
// at its own end, whose bytes lie in its processor's cache.
BlocksInParallel::Slot* BlocksInParallel::take(bool byHelper) {
  if (taken_ >= end_) return nullptr;
  const auto isFree = [](const Slot& slot) { return slot.stage == Stage::free; };
  Slot* free = std::find_if(slots_.begin(), slots_.end(), isFree);
  if (free == slots_.end()) return nullptr;
  if (byHelper) free = &*std::find_if(slots_.rbegin(), slots_.rend(), isFree);
  free->stage = Stage::inWork;
  free->block.slot = static_cast<std::size_t>(free - slots_.begin());
  free->block.place = taken_;
  free->block.size = static_cast<std::size_t>(std::min<std::uint64_t>(blockBytes_, count_ - taken_));
  taken_ += free->block.size;
  return free;
}

// Without the guard.
void BlocksInParallel::work(Slot& slot) noexcept {
  try {
    unsigned char* const bytes = room_.get() + slot.block.slot * blockBytes_;
    slot.block.bytes = bytes;
    slot.block.size = file_.readAt(offset_ + slot.block.place, bytes, slot.block.size);
    if (slot.block.size > 0 && look_) look_(slot.block);
  } catch (...) {
    slot.failure = std::current_exception();
  }
}

void BlocksInParallel::help() {
  std::unique_lock lock(guard_);
  while (taken_ < end_) {
    Slot* const slot = take(true);
    if (slot == nullptr) {
      changed_.wait(lock);
      continue;
    }
    lock.unlock();
    work(*slot);
    lock.lock();
    slot->stage = Stage::done;
    changed_.notify_all();
  }
}

BlocksInParallel::Slot* BlocksInParallel::nextDone() {
  const auto found = std::find_if(slots_.begin(), slots_.end(), [this](const Slot& slot) {
    return slot.stage == Stage::done && slot.block.place == given_;
  });
  return found == slots_.end() ? nullptr : found;
}

BlocksInParallel::Block BlocksInParallel::next() {
  std::unique_lock lock(guard_);
  if (shown_ != nullptr) {
    shown_->stage = Stage::free;
    shown_ = nullptr;
    changed_.notify_all();
  }
  while (given_ < end_) {
    if (Slot* const slot = nextDone()) {
      shown_ = slot;
      const std::uint64_t end = slot->block.place + std::min<std::uint64_t>(blockBytes_, count_ - slot->block.place);
      given_ = slot->block.place + slot->block.size;
      if (slot->failure || given_ < end) end_ = 0;
      if (slot->failure) std::rethrow_exception(slot->failure);
      return slot->block;
    }
    if (Slot* const slot = take(false)) {
      lock.unlock();
      work(*slot);
      lock.lock();
      slot->stage = Stage::done;
    } else {
      changed_.wait(lock);
    }
  }
  return {};
}

}  // namespace vantrelix::dbf

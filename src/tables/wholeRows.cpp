#include "tables/wholeRows.h"

#include <algorithm>
#include <optional>

#include "platform/RunTimeFailure.h"

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kChunk = std::size_t{256} * 1024;
// Milliseconds that bytes under another program's lock have to stand unchanged; and those spent on waiting in all,
// after which two reads that agree must do.
constexpr std::int64_t kSettled = 20;
constexpr std::int64_t kPatience = 500;

}  // namespace

WholeRows::WholeRows(platform::File& file, const TableLayout& layout)
    : file_(file), layout_(layout), rest_(file), patience_(kPatience) {
  rest_.look();
}

void WholeRows::each(std::uint32_t first, std::uint32_t end, const Look& look, const Progress& progress) {
  if (first >= end) return;
  const std::size_t length = layout_.header.recordLength;
  const auto perChunk =
      static_cast<std::uint32_t>(std::min<std::size_t>(std::max<std::size_t>(1, kChunk / length), end - first));
  chunk_.resize(perChunk * length);
  while (first < end) {
    const std::uint32_t count = std::min(perChunk, end - first);
    if (!give(first, count, look)) return;
    first += count;
    if (progress) progress(first);
  }
}

// Halves narrow a failure of the device down to the rows that it does not give.
bool WholeRows::give(std::uint32_t first, std::uint32_t count, const Look& look) {
  std::uint32_t got = 0;
  try {
    got = read(first, count, chunk_.data());
  } catch (const RunTimeFailure& cause) {
    if (cause.number() != failure::deviceIO) throw;
    if (count == 1) return look(first, nullptr);
    const std::uint32_t half = count / 2;
    return give(first, half, look) && give(first + half, count - half, look);
  }
  for (std::uint32_t row = 0; row < got; ++row) {
    if (!look(first + row, &chunk_[row * std::size_t{layout_.header.recordLength}])) return false;
  }
  return got == count;
}

// Gives how many of the rows are in the file.
std::uint32_t WholeRows::read(std::uint32_t first, std::uint32_t count, unsigned char* bytes) {
  if (rest_.isKnown()) {
    const std::uint32_t got = readUnlocked(first, count, bytes);
    if (rest_.isUnchanged()) return got;
  }
  return readLocked(first, count, bytes);
}

std::uint32_t WholeRows::readLocked(std::uint32_t first, std::uint32_t count, unsigned char* bytes) {
  const std::uint32_t length = layout_.header.recordLength;
  const auto range = blockLock(layout_.offsetOf(first), length, first, count, layout_.header.structuralIndex);
  if (range) {
    const ReadLock lock(file_, *range);
    if (lock) return readUnlocked(first, count, bytes);
    if (count == 1 || patience_ <= 0) return readHeld(first, count, bytes, *range);
  }
  const std::uint32_t half = count / 2;
  const std::uint32_t got = readLocked(first, half, bytes);
  return got < half ? got : got + readLocked(first + half, count - half, bytes + std::size_t{half} * length);
}

// Another program is writing there, or keeps the row for an edit that may take minutes. This library's own writers,
// known by their mark, are done soon.
std::uint32_t WholeRows::readHeld(std::uint32_t first, std::uint32_t count, unsigned char* bytes, LockRange range) {
  platform::Platform& system = platform::current();
  std::int64_t unchangedSince = system.steadyMilliseconds();
  const std::int64_t end = unchangedSince + patience_;
  std::vector<unsigned char> former;
  for (Pauses pauses;; pauses.pause()) {
    const ReadLock lock(file_, range);
    const std::uint32_t got = readUnlocked(first, count, bytes);
    const std::int64_t now = system.steadyMilliseconds();
    patience_ = end - now;
    if (lock || got == 0) return got;
    unsigned char* const bytesEnd = bytes + std::size_t{got} * layout_.header.recordLength;
    if (!std::equal(bytes, bytesEnd, former.begin(), former.end())) {
      former.assign(bytes, bytesEnd);
      unchangedSince = now;
      continue;
    }
    if (patience_ <= 0) return got;
    const bool settled = now - unchangedSince >= kSettled;
    if (settled && !file_.lockedByOther(kDenyWriteLock.offset, kDenyWriteLock.length, platform::LockKind::exclusive))
      return got;
  }
}

std::uint32_t WholeRows::readUnlocked(std::uint32_t first, std::uint32_t count, unsigned char* bytes) {
  const std::size_t length = layout_.header.recordLength;
  return static_cast<std::uint32_t>(file_.readAt(layout_.offsetOf(first), bytes, count * length) / length);
}

}  // namespace vantrelix::dbf

// Reading records whose locks are not to be had.
//
// Somebody is writing them, which takes microseconds, or another program holds them for an edit that may take minutes.
// A record counts as whole once it has stood unchanged for longer than any write takes, and all records do once the
// whole file has: who reads a locked table row by row waits once.
#include <algorithm>
#include <optional>
#include <vector>

#include "tables/DbfFileState.h"
#include "tables/standingFile.h"

namespace vantrelix {

namespace {

// Milliseconds that a record under another program's lock, or its file, has to stand unchanged.
constexpr std::int64_t kSettled = 20;
// The records beside one that is waited for are looked at with it.
constexpr std::size_t kAroundBytes = std::size_t{256} * 1024;

}  // namespace

std::uint32_t DbfFile::Implementation::readAgreeing(const Rows& rows) {
  std::vector<unsigned char> former;
  for (;;) {
    const std::uint32_t got = readUnlocked(rows);
    unsigned char* const end = rows.bytes + std::size_t{got} * header->recordLength;
    if (std::equal(rows.bytes, end, former.begin(), former.end())) return got;
    former.assign(rows.bytes, end);
    platform::current().yield();
  }
}

// Who edits by this library lets readers in, so that its writers, known by their mark, are always done soon.
bool DbfFile::Implementation::writerMayBeAtWork() {
  return file->lockedByOther(dbf::kDenyWriteLock.offset, dbf::kDenyWriteLock.length, platform::LockKind::exclusive);
}

// Whether the file has stood so for longer than any write takes. A file system of another machine may go on showing an
// old state for a while: there no less counts than the patience of a read, and nothing beside a writer.
bool DbfFile::Implementation::isSettled(const platform::FileState& state) {
  const std::int64_t stood = stoodFor(state) - tickOf(state);
  const bool isOwn = file->hasOwnClock();
  if (isOwn && stood >= kPatience) return true;
  return stood >= (isOwn ? kSettled : kPatience) && !writerMayBeAtWork();
}

// Nothing where the file has not stood for long enough, or does not behind the read.
std::optional<std::uint32_t> DbfFile::Implementation::readSettled(const Rows& rows) {
  const platform::FileState state = file->state();
  if (!isSettled(state)) return std::nullopt;
  const std::uint32_t got = readAgreeing(rows);
  if (file->state() != state) return std::nullopt;
  return got;
}

// Bytes that were whole when they were looked at last are so still.
bool DbfFile::Implementation::isKnownSettled(const Rows& row) const {
  const std::size_t length = header->recordLength;
  if (row.first < settledFirst || row.first - settledFirst >= settledBytes.size() / length) return false;
  const unsigned char* const bytes = settledBytes.data() + (row.first - settledFirst) * length;
  return std::equal(bytes, bytes + length, row.bytes);
}

// A record and those around it, looked at again and again: which of them have stood unchanged, and for how long.
class DbfFile::Implementation::Settling {
 public:
  Settling(Implementation& inside, std::uint32_t record) : inside_(inside), length_(inside.header->recordLength) {
    const auto most = static_cast<std::uint32_t>(std::max<std::size_t>(1, kAroundBytes / length_));
    row_ = record % most;
    first_ = record - row_;
    count_ = std::clamp(std::max(inside.knownCount, first_) - first_, row_ + 1, most);
    bytes_.resize(count_ * length_);
    former_.resize(bytes_.size());
  }

  // False where the record is not in the file.
  bool look() {
    bytes_.swap(former_);
    const std::uint32_t got = inside_.readUnlocked({first_, count_, bytes_.data()});
    if (got <= row_) return false;
    changed_ = row_ >= end_ || !isSame(row_);
    if (changed_) {
      begin_ = 0;
      end_ = got;
      since_ = platform::current().steadyMilliseconds();
      return true;
    }
    const std::uint32_t begin = begin_, end = std::min(end_, got);
    for (begin_ = row_; begin_ > begin && isSame(begin_ - 1);) --begin_;
    for (end_ = row_ + 1; end_ < end && isSame(end_);) ++end_;
    return true;
  }
  // Whether the last look found another record than the one before, or was the first.
  bool changed() const { return changed_; }
  std::int64_t unchangedFor() const { return platform::current().steadyMilliseconds() - since_; }
  void copyRecord(unsigned char* bytes) const { std::copy_n(bytes_.data() + row_ * length_, length_, bytes); }
  void remember() const {
    inside_.settledFirst = first_ + begin_;
    inside_.settledBytes.assign(bytes_.data() + begin_ * length_, bytes_.data() + end_ * length_);
  }

 private:
  bool isSame(std::uint32_t row) const {
    const unsigned char* const bytes = bytes_.data() + row * length_;
    return std::equal(bytes, bytes + length_, former_.data() + row * length_);
  }

  Implementation& inside_;
  std::size_t length_;
  std::uint32_t row_ = 0;  // the record's place among them
  std::uint32_t first_ = 0, count_ = 0;
  std::uint32_t begin_ = 0, end_ = 0;  // the places of those that have stood unchanged
  std::vector<unsigned char> bytes_, former_;
  bool changed_ = true;
  std::int64_t since_ = 0;
};

std::uint32_t DbfFile::Implementation::readContended(const Rows& row, std::int64_t& patience) {
  if (readUnlocked(row) == 0) return 0;
  if (isKnownSettled(row)) return 1;
  const dbf::LockRange range =
      dbf::recordLock(offsetOf(row.first), header->recordLength, row.first, header->structuralIndex);
  platform::Platform& system = platform::current();
  const std::int64_t end = system.steadyMilliseconds() + patience;
  std::optional<Settling> settling;
  for (dbf::Pauses pauses;;) {
    const bool brief = pauses.isShort();
    pauses.pause();
    const dbf::ReadLock lock(*file, range);
    patience = end - system.steadyMilliseconds();
    if (lock) return readUnlocked(row);
    if (brief && patience > 0) continue;
    const bool again = settling.has_value();
    if (!again) settling.emplace(*this, row.first);
    if (!settling->look()) return 0;
    if (settling->changed()) {
      if (again) forgetStanding(file->state());
      if (patience <= 0) return readAgreeing(row);
      continue;
    }
    if (const auto got = readSettled(row)) return *got;
    const std::int64_t stood = settling->unchangedFor();
    const bool settled = stood >= kSettled && !writerMayBeAtWork();
    if (!settled && patience > 0) continue;
    if (settled || stood >= kPatience - kSettled) settling->remember();
    settling->copyRecord(row.bytes);
    return 1;
  }
}

}  // namespace vantrelix

// Reading the records of a table file.
//
// A read call gives no whole record by itself: file systems copy to a reader what they are just copying from a writer,
// in steps of bytes to pages. So a reader holds the records' own locks, shared, for the microseconds of its read. It
// never waits for them: where a lock is not to be had, a record counts as whole once it has stood unchanged for longer
// than any write takes. A file at rest needs no lock: a look at its state behind the read tells whether it was whole.
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "tables/BlocksInParallel.h"
#include "tables/DbfFileState.h"

namespace vantrelix {

namespace {

constexpr std::size_t kScanBytes = std::size_t{256} * 1024;
constexpr std::uint64_t kCountPlace = 4;
// Less is read before a thread has begun.
constexpr std::uint64_t kWorthAThread = std::uint64_t{4} << 20;
// Milliseconds that a record under another program's lock has to stand unchanged; and those that a read spends on
// waiting in all, after which two reads that agree must do.
constexpr std::int64_t kSettled = 20;
constexpr std::int64_t kPatience = 500;

}  // namespace

// Records that stand behind one another, and where their bytes go.
struct DbfFile::Implementation::Rows {
  std::uint32_t first;
  std::uint32_t count;
  unsigned char* bytes;
};

std::uint32_t DbfFile::Implementation::countRows(std::uint64_t fileSize) {
  std::array<unsigned char, 4> bytes{};
  const bool whole = file->readAt(kCountPlace, bytes.data(), bytes.size()) == bytes.size();
  knownCount = dbf::rowsWithin(fileSize, header, whole ? dbf::littleEndian(bytes.data(), 4) : 0);
  return knownCount;
}

// False where the file is not at rest.
bool DbfFile::Implementation::countAtRest() {
  if (rest->isUnchanged() && countedAtRest) return true;
  countedAtRest = false;
  const std::optional<platform::FileState>& state = rest->look();
  if (!state) return false;
  countRows(state->size);
  return countedAtRest = rest->isUnchanged();
}

// The file's size comes first: a count that is younger counts no row that is not whole.
std::uint32_t DbfFile::recordCount() {
  Implementation& inside = *implementation_;
  if (inside.countAtRest()) return inside.knownCount;
  const std::uint64_t size = inside.file->size();
  {
    const dbf::ReadLock header(*inside.file, dbf::kHeaderLock);
    if (header) return inside.countRows(size);
  }
  // Rows are being added. The count is four bytes, written at the end of that.
  std::uint32_t count = inside.countRows(size);
  for (std::uint32_t again = inside.countRows(size); again != count; again = inside.countRows(size)) count = again;
  return count;
}

platform::FileState DbfFile::state() const { return implementation_->file->state(); }

std::uint32_t DbfFile::Implementation::readUnlocked(const Rows& rows) {
  const std::size_t got = file->readAt(offsetOf(rows.first), rows.bytes, std::size_t{rows.count} * header.recordLength);
  return static_cast<std::uint32_t>(got / header.recordLength);
}

std::uint32_t DbfFile::Implementation::readAgreeing(const Rows& rows) {
  std::vector<unsigned char> former;
  for (;;) {
    const std::uint32_t got = readUnlocked(rows);
    unsigned char* const end = rows.bytes + std::size_t{got} * header.recordLength;
    if (std::equal(rows.bytes, end, former.begin(), former.end())) return got;
    former.assign(rows.bytes, end);
    platform::current().yield();
  }
}

// Reads whole records; gives how many of them are in the file.
std::uint32_t DbfFile::Implementation::readRows(const Rows& rows, std::int64_t& patience) {
  if (rest->isKnown()) {
    const std::uint32_t got = readUnlocked(rows);
    if (rest->isUnchanged()) return got;
  }
  // Nobody else writes a record whose lock this object holds, and to take that once more would be to give it up.
  for (const std::optional<std::uint32_t> own : {held ? std::optional(heldRecord) : std::nullopt, lockedForWrite}) {
    if (!own || *own < rows.first || *own - rows.first >= rows.count) continue;
    if (rows.count == 1) return readUnlocked(rows);
    return readInParts(rows, *own == rows.first ? 1 : *own - rows.first, patience);
  }
  const auto range =
      dbf::blockLock(offsetOf(rows.first), header.recordLength, rows.first, rows.count, header.structuralIndex);
  if (range) {
    const dbf::ReadLock lock(*file, *range);
    if (lock) return readUnlocked(rows);
    if (patience <= 0) return readAgreeing(rows);
  }
  if (rows.count == 1) return readContended(rows, patience);
  return readInParts(rows, rows.count / 2, patience);  // halves narrow it down to the records that are locked
}

std::uint32_t DbfFile::Implementation::readInParts(const Rows& rows, std::uint32_t cut, std::int64_t& patience) {
  const std::uint32_t got = readRows({rows.first, cut, rows.bytes}, patience);
  if (got < cut) return got;
  return cut +
         readRows({rows.first + cut, rows.count - cut, rows.bytes + std::size_t{cut} * header.recordLength}, patience);
}

// Somebody is writing the record, or another program holds it for an edit that may take minutes. Who edits by this
// library lets readers in, so that its writers, known by their mark, are always done soon.
std::uint32_t DbfFile::Implementation::readContended(const Rows& row, std::int64_t& patience) {
  const std::size_t length = header.recordLength;
  const dbf::LockRange range = dbf::recordLock(offsetOf(row.first), length, row.first, header.structuralIndex);
  if (readUnlocked(row) == 0) return 0;
  // Bytes that were whole when they were looked at last are so still.
  if (row.first == settledRecord && std::equal(settledBytes.begin(), settledBytes.end(), row.bytes, row.bytes + length))
    return 1;
  platform::Platform& system = platform::current();
  const std::int64_t begin = system.steadyMilliseconds();
  const std::int64_t end = begin + patience;
  std::int64_t unchangedSince = begin;
  std::vector<unsigned char> former(length);
  for (dbf::Pauses pauses;;) {
    std::copy(row.bytes, row.bytes + length, former.begin());
    pauses.pause();
    const dbf::ReadLock lock(*file, range);
    if (readUnlocked(row) == 0) return 0;
    const std::int64_t now = system.steadyMilliseconds();
    patience = end - now;
    if (lock) return 1;
    const bool changed = !std::equal(former.begin(), former.end(), row.bytes);
    if (changed) unchangedSince = now;
    const bool settled =
        now - unchangedSince >= kSettled &&
        !file->lockedByOther(dbf::kDenyWriteLock.offset, dbf::kDenyWriteLock.length, platform::LockKind::exclusive);
    if (changed && patience <= 0) return readAgreeing(row);
    if (changed || (!settled && patience > 0)) continue;
    settledRecord = row.first;
    settledBytes = std::move(former);
    return 1;
  }
}

bool DbfFile::readRecord(std::uint32_t number, unsigned char* bytes) {
  Implementation& inside = *implementation_;
  if (number >= inside.knownCount && number >= recordCount()) return false;
  std::int64_t patience = kPatience;
  return inside.readRows({number, 1, bytes}, patience) == 1;
}

bool DbfFile::scan(const RecordVisitor& visit, std::uint32_t first, std::uint32_t count) {
  const auto length = static_cast<std::size_t>(recordLength_);
  const auto visitEach = [&](std::uint32_t number, const unsigned char* bytes, std::uint32_t rows) {
    for (std::uint32_t row = 0; row < rows; ++row) {
      if (!visit(number + row, bytes + row * length)) return false;
    }
    return true;
  };
  return scanBlocks(visitEach, first, count);
}

static_assert(DbfFile::kScanParts == dbf::BlocksInParallel::kSlots);

// Gives records of a file at rest, whose blocks two threads read and look at. Gives the number of the first one that
// was not joined: what is left has to be read otherwise.
std::uint32_t DbfFile::Implementation::scanAtRest(const BlockLook& look, const BlockJoin& join, std::uint32_t first,
                                                  std::uint32_t end, bool& goesOn) {
  const std::size_t length = header.recordLength;
  const std::uint64_t bytes = std::uint64_t{end - first} * length;
  if (!rest->isKnown() || bytes < kWorthAThread || !file->readsInParallel()) return first;
  const std::uint32_t begin = first;
  const auto rowsOf = [&](const dbf::BlocksInParallel::Block& block) {
    return RowBlock{begin + static_cast<std::uint32_t>(block.place / length), block.bytes,
                    static_cast<std::uint32_t>(block.size / length), block.slot};
  };
  const dbf::BlocksInParallel::Look lookAtRows = [&](const dbf::BlocksInParallel::Block& block) {
    if (look) look(rowsOf(block));
  };
  dbf::BlocksInParallel blocks(*file, offsetOf(first), bytes, std::max<std::size_t>(1, kScanBytes / length) * length,
                               lookAtRows);
  while (first < end && goesOn) {
    const RowBlock rows = rowsOf(blocks.next());
    if (rows.count == 0 || !rest->isUnchanged()) break;
    goesOn = join(rows);
    first += rows.count;
  }
  return first;
}

bool DbfFile::scanParts(const BlockLook& look, const BlockJoin& join, std::uint32_t first, std::uint32_t count) {
  const std::uint64_t wanted = std::uint64_t{first} + count;
  const auto end = static_cast<std::uint32_t>(
      wanted <= implementation_->knownCount ? wanted : std::min<std::uint64_t>(wanted, recordCount()));
  bool goesOn = true;
  if (first < end) first = implementation_->scanAtRest(look, join, first, end, goesOn);
  if (first >= end || !goesOn) return goesOn;
  const auto length = static_cast<std::size_t>(recordLength_);
  const auto perBlock =
      static_cast<std::uint32_t>(std::min<std::size_t>(std::max<std::size_t>(1, kScanBytes / length), end - first));
  const auto bytes = std::make_unique_for_overwrite<unsigned char[]>(perBlock * length);
  std::int64_t patience = kPatience;
  for (std::uint32_t number = first; number < end;) {
    const std::uint32_t asked = std::min(perBlock, end - number);
    const std::uint32_t rows = implementation_->readRows({number, asked, bytes.get()}, patience);
    if (rows > 0) {
      const RowBlock block{number, bytes.get(), rows, 0};
      if (look) look(block);
      if (!join(block)) return false;
    }
    if (rows < asked) return true;
    number += rows;
  }
  return true;
}

bool DbfFile::scanBlocks(const BlockVisitor& visit, std::uint32_t first, std::uint32_t count) {
  return scanParts(
      {}, [&](const RowBlock& rows) { return visit(rows.first, rows.bytes, rows.count); }, first, count);
}

}  // namespace vantrelix

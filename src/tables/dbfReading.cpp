// Reading the records of a table file.
//
// A read call gives no whole record by itself: file systems copy to a reader what they are just copying from a writer,
// in steps of bytes to pages. So a reader holds the records' own locks, shared, for the microseconds of its read. It
// never waits for them (dbfLockedRows.cpp). A file at rest needs no lock: a look at its state behind the read tells
// whether it was whole.
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
// Milliseconds between two looks at a file that is being read and was not at rest.
constexpr std::int64_t kBetweenLooks = 1000;

}  // namespace

std::uint32_t DbfFile::Implementation::countRows(std::uint64_t fileSize) {
  std::array<unsigned char, 4> bytes{};
  const bool whole = file->readAt(kCountPlace, bytes.data(), bytes.size()) == bytes.size();
  knownCount = dbf::rowsWithin(fileSize, *header, whole ? dbf::littleEndian(bytes.data(), 4) : 0);
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
  if (inside.adding) return inside.countRows(size);
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
  const std::size_t got =
      file->readAt(offsetOf(rows.first), rows.bytes, std::size_t{rows.count} * header->recordLength);
  return static_cast<std::uint32_t>(got / header->recordLength);
}

// Whether the file was at rest when it was last looked at. One that was not, or has changed since, comes to rest.
bool DbfFile::Implementation::mayRest() {
  if (rest->isKnown()) return true;
  const std::int64_t now = platform::current().steadyMilliseconds();
  const bool look = nextLook && now >= *nextLook;
  if (look || !nextLook) nextLook = now + kBetweenLooks;
  if (!look || !rest->look()) return false;
  countedAtRest = false;
  return true;
}

// Reads whole records; gives how many of them are in the file.
std::uint32_t DbfFile::Implementation::readRows(const Rows& rows, std::int64_t& patience) {
  if (mayRest()) {
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
      dbf::blockLock(offsetOf(rows.first), header->recordLength, rows.first, rows.count, header->structuralIndex);
  if (range) {
    const dbf::ReadLock lock(*file, *range);
    if (lock) return readUnlocked(rows);
    if (const auto got = readSettled(rows)) return *got;
    if (patience <= 0) return readAgreeing(rows);
  }
  if (rows.count == 1) return readContended(rows, patience);
  return readInParts(rows, rows.count / 2, patience);  // halves narrow it down to the records that are locked
}

std::uint32_t DbfFile::Implementation::readInParts(const Rows& rows, std::uint32_t cut, std::int64_t& patience) {
  const std::uint32_t got = readRows({rows.first, cut, rows.bytes}, patience);
  if (got < cut) return got;
  return cut +
         readRows({rows.first + cut, rows.count - cut, rows.bytes + std::size_t{cut} * header->recordLength}, patience);
}

bool DbfFile::readRecord(std::uint32_t number, unsigned char* bytes) { return readRecords(number, 1, bytes) == 1; }

std::uint32_t DbfFile::readRecords(std::uint32_t number, std::uint32_t count, unsigned char* bytes) {
  Implementation& inside = *implementation_;
  const std::uint64_t end = std::uint64_t{number} + count;
  const std::uint32_t known = end <= inside.knownCount ? inside.knownCount : recordCount();
  if (number >= known) return 0;
  std::int64_t patience = Implementation::kPatience;
  return inside.readRows({number, std::min(count, known - number), bytes}, patience);
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
  const std::size_t length = header->recordLength;
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
  std::int64_t patience = Implementation::kPatience;
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

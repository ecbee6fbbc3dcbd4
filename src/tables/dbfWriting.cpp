// Writing the records of a table file: the locks, the order of the writes, and what is taken back.
#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "tables/DbfFileState.h"
#include "tables/dbfOpening.h"
#include "tables/indexFiles.h"
#include "tables/rememberedWrite.h"

namespace vantrelix {

namespace {

using platform::LockKind;

using dbf::LockRange;

constexpr std::uint64_t kDatePlace = 1;

std::array<unsigned char, 3> dateBytes() {
  const platform::DateTime today = platform::current().now();
  return {static_cast<unsigned char>(today.year - 1900), static_cast<unsigned char>(today.month),
          static_cast<unsigned char>(today.day)};
}

}  // namespace

void DbfFile::Implementation::checkWritable(bool readOnly, bool forNewRows) const {
  if (readOnly) refuse("it is open for reading only, or its file is write-protected. Open it for writing");
  if (header->structuralIndex) {
    refuse("it has a structural index that would no longer fit it; change it with the program that made it");
  }
  // A row more could make the next opening read all of them otherwise.
  if (header->isLengthInDoubt) refuse("its header names a wrong record length; mend it with the program that made it");
  if (forNewRows && header->autoIncrement)
    refuse("it counts its rows in a field by itself, which is not done here. Add rows with the program that made it");
}

// A writer tells those who would deny writing that it is at work, unless it denies writing to all others itself. To
// take a lock that this object holds would be to give it up behind the write.
void DbfFile::Implementation::lockWriting(std::optional<dbf::HeldLock>& lock) const {
  if (sharing == Sharing::shared && !adding)
    lock.emplace(*file, dbf::kDenyWriteLock, LockKind::shared, context.displayName());
}

// What is written to a file that nobody finds any more is lost without a word. So is an index of what is written.
void DbfFile::Implementation::requireStanding() {
  if (!toldOfIndexes) tellOfIndexFiles(context.path);
  toldOfIndexes = true;
  if (dbf::standsAt(context.path, *file)) return;
  throw RunTimeFailure(failure::noSuchTable, "The table " + context.displayName() +
                                                 " was removed or replaced since it was opened. Open it again.");
}

void DbfFile::Implementation::lockRecord(std::optional<dbf::HeldLock>& lock, std::uint32_t number) const {
  lock.emplace(*file, dbf::recordLock(offsetOf(number), header->recordLength, number, false), LockKind::exclusive,
               context.displayName());
}

DbfFile::Implementation::AddingLocks::AddingLocks(Implementation& inside) {
  inside.lockWriting(writing);
  inside.requireStanding();
  header.emplace(*inside.file, dbf::kHeaderLock, LockKind::exclusive, inside.context.displayName());
}

// Leaves the file as it was before a write that failed.
void DbfFile::Implementation::takeBack(std::uint64_t offset, std::uint64_t formerSize) noexcept {
  if (formerSize > offset + 1) return;
  // The count promises only what was there before; what cannot be taken back lies behind it and harms nobody.
  try {
    file->truncate(formerSize);
  } catch (...) {
  }
  try {
    if (formerSize == offset + 1) file->writeAt(offset, &dbf::kFileEnd, 1);
  } catch (...) {
  }
}

void DbfFile::Implementation::writeRows(std::uint32_t first, const unsigned char* records, std::uint32_t count,
                                        std::uint64_t formerSize) {
  const std::size_t length = static_cast<std::size_t>(count) * header->recordLength;
  std::vector<unsigned char> bytes(records, records + length);
  bytes.push_back(dbf::kFileEnd);
  bool counted = false;
  try {
    file->writeAt(offsetOf(first), bytes.data(), bytes.size());
    makeDurable();  // a count on the disk before its rows would promise what is not there
    counted = true;
    writeCount(first + count);
    makeDurable();
  } catch (...) {
    if (counted) takeBackCount(first);
    takeBack(offsetOf(first), formerSize);
    throw;
  }
}

void DbfFile::Implementation::makeDurable() {
  if (durable()) file->sync();
}

void DbfFile::Implementation::takeBackCount(std::uint32_t count) noexcept {
  try {
    writeCount(count);
  } catch (...) {
    // A disk that takes not even this: the caller's failure tells of it.
  }
}

// Date and count stand side by side and go in one write.
void DbfFile::Implementation::writeCount(std::uint32_t count) {
  const std::array<unsigned char, 3> date = dateBytes();
  std::array<unsigned char, 7> bytes{};
  std::copy(date.begin(), date.end(), bytes.begin());
  dbf::putLittleEndian(&bytes[3], count, 4);
  file->writeAt(kDatePlace, bytes.data(), bytes.size());
  knownCount = count;
}

void DbfFile::Implementation::touchDate() {
  const std::array<unsigned char, 3> date = dateBytes();
  std::array<unsigned char, 3> stored{};
  file->readAt(kDatePlace, stored.data(), stored.size());
  if (stored != date) file->writeAt(kDatePlace, date.data(), date.size());
}

// Writes the bytes that differ alone, which mostly lie within one page.
void DbfFile::Implementation::overwrite(std::uint64_t offset, const std::vector<unsigned char>& before,
                                        const std::vector<unsigned char>& after) {
  const auto first =
      static_cast<std::size_t>(std::mismatch(before.begin(), before.end(), after.begin()).first - before.begin());
  const auto same =
      static_cast<std::size_t>(std::mismatch(before.rbegin(), before.rend(), after.rbegin()).first - before.rbegin());
  const std::size_t length = before.size() - same - first;
  try {
    file->overwriteAt(offset + first, &after[first], length);
  } catch (...) {
    try {
      file->overwriteAt(offset + first, &before[first], length);
    } catch (...) {
      // A disk that takes not even this: the first failure tells of it.
    }
    throw;
  }
}

std::uint32_t DbfFile::append(const unsigned char* record) { return append(record, 1); }

std::uint32_t DbfFile::append(const unsigned char* records, std::uint32_t count) {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, true);
  std::optional<Implementation::AddingLocks> locks;
  if (inside.adding) {
    inside.requireStanding();
  } else {
    locks.emplace(inside);
  }
  if (count == 0) return inside.countRows(inside.file->size());
  const std::uint64_t added = std::uint64_t{count} * inside.header->recordLength + 1;
  dbf::RememberedWrite write(*this, *inside.file, {dbf::kHeaderLock, added, inside.held.has_value()});
  const std::uint64_t size = write.before().size;
  const std::uint32_t first = inside.countRows(size);
  if (inside.offsetOf(first) + added > dbf::kLargestFile)
    inside.refuse("it would grow beyond 2 GB, more than the format holds. Begin another table");
  inside.writeRows(first, records, count, size);
  write->rowsAdded(first, records, count);
  return first;
}

void DbfFile::update(std::uint32_t number, const std::function<void(unsigned char*)>& change) {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, false);
  std::optional<dbf::HeldLock> writing;
  inside.lockWriting(writing);
  inside.requireStanding();
  const std::uint64_t offset = inside.offsetOf(number);
  const Implementation::RowWrite lock(inside, number);
  std::vector<unsigned char> before(inside.header->recordLength);
  if (number >= recordCount() || !readRecord(number, before.data()) || before[0] == '*') {
    throw RunTimeFailure(failure::recordDeleted, "Record " + std::to_string(std::uint64_t{number} + 1) +
                                                     " of the table " + inside.context.displayName() +
                                                     " is deleted. Read the table again.");
  }
  std::vector<unsigned char> after = before;
  change(after.data());
  if (after == before) return inside.makeDurable();  // perhaps a change that the disk failed to take before
  const LockRange taken = dbf::recordLock(offset, inside.header->recordLength, number, false);
  const bool besideOther = inside.adding || (inside.held && inside.heldRecord != number);
  dbf::RememberedWrite write(*this, *inside.file, {taken, 0, besideOther});
  inside.overwrite(offset, before, after);
  inside.touchDate();
  inside.makeDurable();
  write->rowChanged(number, before.data(), after.data());
}

void DbfFile::beginAdding() {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, true);
  inside.adding.emplace(inside);
}

void DbfFile::endAdding() { implementation_->adding.reset(); }

void DbfFile::hold(std::uint32_t number) {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, false);
  inside.held.reset();
  inside.lockRecord(inside.held, number);
  inside.heldRecord = number;
  inside.held->share();
}

void DbfFile::release() { implementation_->held.reset(); }

void DbfFile::markDeleted(std::uint32_t number) {
  update(number, [](unsigned char* record) { record[0] = '*'; });
}

}  // namespace vantrelix

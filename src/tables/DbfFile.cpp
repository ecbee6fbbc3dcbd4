#include "tables/DbfFile.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <set>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/MemoFile.h"
#include "tables/dbfHeader.h"
#include "tables/dbfLocks.h"
#include "tables/dbfOpening.h"
#include "tables/fieldCodec.h"
#include "tables/partnerFile.h"

namespace vantrelix {

namespace {

using platform::File;
using platform::LockKind;

constexpr std::size_t kScanBytes = std::size_t{256} * 1024;
// Every program of the family counts file offsets in 31 bits.
constexpr std::uint64_t kLargestFile = 0x7FFFFFFF;
constexpr std::uint64_t kDatePlace = 1;
constexpr std::uint64_t kCountPlace = 4;

std::atomic<int> lockWaitMilliseconds{2000};

// Logs a text once in this process for each key. A log that cannot be written must not keep a table from being read.
void logOnce(const std::string& key, const std::string& text) {
  static std::mutex guard;
  static std::set<std::string> logged;
  {
    const std::lock_guard lock(guard);
    if (!logged.insert(key).second) return;
  }
  try {
    wrtTechSupNoMak(text);
  } catch (const RunTimeFailure&) {
  }
}

std::array<unsigned char, 3> dateBytes() {
  const platform::DateTime today = platform::current().now();
  return {static_cast<unsigned char>(today.year - 1900), static_cast<unsigned char>(today.month),
          static_cast<unsigned char>(today.day)};
}

}  // namespace

struct DbfFile::Implementation {
  std::unique_ptr<File> file;
  dbf::Header header;
  dbf::FieldContext context;
  Sharing sharing = Sharing::shared;
  std::uint32_t knownCount = 0;
  std::unique_ptr<MemoFile> memo;
  bool memoMissing = false;
  std::optional<dbf::HeldLock> held;  // of heldRecord
  std::uint32_t heldRecord = 0;

  std::uint64_t offsetOf(std::uint32_t number) const {
    return header.headerLength + std::uint64_t{number} * header.recordLength;
  }

  const DbfField& field(std::size_t index) const {
    if (index < header.fields.size()) return header.fields[index];
    throw RunTimeFailure(failure::noSuchField, "The table " + context.displayName + " has no field number " +
                                                   std::to_string(index) + ". Check the number.");
  }

  [[noreturn]] void refuse(const std::string& reason) const {
    throw RunTimeFailure(failure::readOnlyTable,
                         "The table " + context.displayName + " cannot be changed: " + reason + ".");
  }
  void checkWritable(bool readOnly, bool adding) const;
  void lockWriting(std::optional<dbf::HeldLock>& lock) const;
  void lockRecord(std::optional<dbf::HeldLock>& lock, std::uint32_t number) const;
  void requireStanding(const std::string& path) const;
  std::uint32_t countRows(std::uint64_t fileSize);
  void writeRows(std::uint32_t first, const unsigned char* records, std::uint32_t count, std::uint64_t formerSize);
  void takeBack(std::uint64_t offset, std::uint64_t formerSize) noexcept;
  void writeCount(std::uint32_t count);
  void touchDate();

  void noteUnreadable(const DbfField& field, const std::string& reason);
  void openMemo(const std::string& path);
  Value memoText(const unsigned char* record, const DbfField& field, const std::string& path);
};

void DbfFile::Implementation::checkWritable(bool readOnly, bool adding) const {
  if (readOnly) refuse("it is open for reading only, or its file is write-protected. Open it for writing");
  if (header.structuralIndex) {
    refuse("it has a structural index that would no longer fit it; change it with the program that made it");
  }
  if (header.recordLengthMended)
    refuse("its header names a wrong record length; mend it with the program that made it");
  if (adding && header.autoIncrement)
    refuse("it counts its rows in a field by itself, which is not done here. Add rows with the program that made it");
}

// A writer tells those who would deny writing that it is at work, unless it denies writing to all others itself.
void DbfFile::Implementation::lockWriting(std::optional<dbf::HeldLock>& lock) const {
  if (sharing == Sharing::shared) lock.emplace(*file, dbf::kDenyWriteLock, LockKind::shared, context.displayName);
}

// What is written to a file that nobody finds any more is lost without a word.
void DbfFile::Implementation::requireStanding(const std::string& path) const {
  if (dbf::standsAt(path, *file)) return;
  throw RunTimeFailure(failure::noSuchTable, "The table " + context.displayName +
                                                 " was removed or replaced since it was opened. Open it again.");
}

void DbfFile::Implementation::lockRecord(std::optional<dbf::HeldLock>& lock, std::uint32_t number) const {
  lock.emplace(*file, dbf::recordLock(offsetOf(number), header.recordLength, number, false), LockKind::exclusive,
               context.displayName);
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

std::uint32_t DbfFile::Implementation::countRows(std::uint64_t fileSize) {
  std::array<unsigned char, 4> bytes{};
  const bool whole = file->readAt(kCountPlace, bytes.data(), bytes.size()) == bytes.size();
  knownCount = dbf::rowsWithin(fileSize, header, whole ? dbf::littleEndian(bytes.data(), 4) : 0);
  return knownCount;
}

void DbfFile::Implementation::writeRows(std::uint32_t first, const unsigned char* records, std::uint32_t count,
                                        std::uint64_t formerSize) {
  const std::size_t length = static_cast<std::size_t>(count) * header.recordLength;
  std::vector<unsigned char> bytes(records, records + length);
  bytes.push_back(dbf::kFileEnd);
  try {
    file->writeAt(offsetOf(first), bytes.data(), bytes.size());
    writeCount(first + count);
  } catch (...) {
    takeBack(offsetOf(first), formerSize);
    throw;
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

void DbfFile::Implementation::noteUnreadable(const DbfField& field, const std::string& reason) {
  logOnce(context.displayName + '\n' + field.name, "Table " + context.displayName + ": the field " +
                                                       context.text.decode(field.name) + " of type " +
                                                       std::string(1, field.type) + " is read as null; " + reason);
}

void DbfFile::Implementation::openMemo(const std::string& path) {
  const dbf::MemoFormat format = dbf::memoFormatOf(header.version);
  const std::string partner = memoPartner(path, format == dbf::MemoFormat::foxpro);
  if (partner.empty()) {
    throw RunTimeFailure(failure::fileNotFound, "the memo file beside the table is missing");
  }
  const MemoKind kind = format == dbf::MemoFormat::foxpro   ? MemoKind::foxpro
                        : format == dbf::MemoFormat::dbase4 ? MemoKind::dbase4
                                                            : MemoKind::dbase3;
  memo = std::make_unique<MemoFile>(partner, kind);
}

Value DbfFile::Implementation::memoText(const unsigned char* record, const DbfField& field, const std::string& path) {
  const std::uint32_t block = dbf::memoBlock(record, field);
  if (block == 0 || memoMissing || dbf::isNullByFlag(record, field, context)) return {};
  try {
    if (!memo) openMemo(path);
    return context.text.decode(memo->read(block));
  } catch (const RunTimeFailure& cause) {
    memoMissing = !memo;
    noteUnreadable(field, cause.description());
    return {};
  }
}

DbfFile::DbfFile() : codePage_(CodePage::windows1252()), implementation_(std::make_unique<Implementation>()) {}
DbfFile::~DbfFile() = default;

std::shared_ptr<DbfFile> DbfFile::open(const std::string& path, bool readOnly, Sharing sharing) {
  std::shared_ptr<DbfFile> table(new DbfFile);
  Implementation& inside = *table->implementation_;
  table->path_ = platform::current().findIgnoringCase(path);
  table->readOnly_ = readOnly;
  inside.context.displayName = displayPath(table->path_);
  inside.sharing = sharing;
  inside.file = dbf::openHeld(table->path_, sharing, table->readOnly_);
  inside.header = dbf::readHeader(*inside.file, inside.context.displayName);
  table->takeHeader();
  return table;
}

void DbfFile::takeHeader() {
  Implementation& inside = *implementation_;
  const dbf::Header& header = inside.header;
  inside.context.text = dbf::TextCodec(dbf::codePageOf(header, path_));
  inside.context.visual = dbf::isVisual(header.version);
  fields_ = header.fields;
  if (header.nullFlags >= 0)
    inside.context.nullFlagsOffset = fields_[static_cast<std::size_t>(header.nullFlags)].offset;
  for (DbfField& field : fields_) field.name = inside.context.text.decode(field.name);
  codePage_ = inside.context.text.page();
  version_ = header.version;
  recordLength_ = static_cast<int>(header.recordLength);
}

int DbfFile::fieldIndex(std::string_view name) const {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (!fields_[i].system && equalIgnoringCase(fields_[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

std::uint32_t DbfFile::recordCount() { return implementation_->countRows(implementation_->file->size()); }

platform::FileState DbfFile::state() const { return implementation_->file->state(); }

bool DbfFile::readRecord(std::uint32_t number, unsigned char* bytes) {
  Implementation& inside = *implementation_;
  if (number >= inside.knownCount && number >= recordCount()) return false;
  const auto length = static_cast<std::size_t>(recordLength_);
  return inside.file->readAt(inside.offsetOf(number), bytes, length) == length;
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

bool DbfFile::scanBlocks(const BlockVisitor& visit, std::uint32_t first, std::uint32_t count) {
  const std::uint32_t end =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(std::uint64_t{first} + count, recordCount()));
  if (first >= end) return true;
  const auto length = static_cast<std::size_t>(recordLength_);
  const auto perBlock =
      static_cast<std::uint32_t>(std::min<std::size_t>(std::max<std::size_t>(1, kScanBytes / length), end - first));
  std::vector<unsigned char> block(perBlock * length);
  for (std::uint32_t number = first; number < end;) {
    const std::uint32_t wanted = std::min(perBlock, end - number);
    const std::size_t got =
        implementation_->file->readAt(implementation_->offsetOf(number), block.data(), wanted * length);
    const auto rows = static_cast<std::uint32_t>(got / length);
    if (rows > 0 && !visit(number, block.data(), rows)) return false;
    if (rows < wanted) return true;
    number += rows;
  }
  return true;
}

Value DbfFile::value(const unsigned char* record, std::size_t field) {
  Implementation& inside = *implementation_;
  const DbfField& stored = inside.field(field);
  if (dbf::isMemo(stored, inside.context)) return inside.memoText(record, stored, path_);
  const char* reason = nullptr;
  Value result = dbf::decodeField(record, stored, inside.context, reason);
  if (reason != nullptr) inside.noteUnreadable(stored, reason);
  return result;
}

void DbfFile::put(unsigned char* record, std::size_t field, const Value& value) const {
  dbf::encodeField(record, implementation_->field(field), implementation_->context, value);
}

std::string DbfFile::cut(std::string_view text, std::size_t field) const {
  return implementation_->context.text.cut(text, static_cast<std::size_t>(implementation_->field(field).width));
}

std::vector<unsigned char> DbfFile::blankRecord() const {
  std::vector<unsigned char> record(static_cast<std::size_t>(recordLength_), ' ');
  const std::vector<DbfField>& fields = implementation_->header.fields;
  // The flags first: the other fields set theirs in them.
  for (const DbfField& field : fields) {
    if (field.type == '0') dbf::blankField(record.data(), field, implementation_->context);
  }
  for (const DbfField& field : fields) {
    if (field.type != '0') dbf::blankField(record.data(), field, implementation_->context);
  }
  return record;
}

std::uint32_t DbfFile::append(const unsigned char* record) { return append(record, 1); }

std::uint32_t DbfFile::append(const unsigned char* records, std::uint32_t count) {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, true);
  std::optional<dbf::HeldLock> writing;
  inside.lockWriting(writing);
  inside.requireStanding(path_);
  const dbf::HeldLock header(*inside.file, dbf::kHeaderLock, LockKind::exclusive, inside.context.displayName);
  const std::uint64_t size = inside.file->size();
  const std::uint32_t first = inside.countRows(size);
  if (count == 0) return first;
  const std::uint64_t added = std::uint64_t{count} * inside.header.recordLength;
  if (inside.offsetOf(first) + added + 1 > kLargestFile)
    inside.refuse("it would grow beyond 2 GB, more than the format holds. Begin another table");
  inside.writeRows(first, records, count, size);
  return first;
}

void DbfFile::update(std::uint32_t number, const std::function<void(unsigned char*)>& change) {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, false);
  std::optional<dbf::HeldLock> writing;
  inside.lockWriting(writing);
  inside.requireStanding(path_);
  const std::uint64_t offset = inside.offsetOf(number);
  std::optional<dbf::HeldLock> lock;
  if (!inside.held || inside.heldRecord != number) inside.lockRecord(lock, number);
  std::vector<unsigned char> before(inside.header.recordLength);
  if (number >= recordCount() || !readRecord(number, before.data()) || before[0] == '*') {
    throw RunTimeFailure(failure::recordDeleted, "Record " + std::to_string(std::uint64_t{number} + 1) +
                                                     " of the table " + inside.context.displayName +
                                                     " is deleted. Read the table again.");
  }
  std::vector<unsigned char> after = before;
  change(after.data());
  if (after == before) return;
  inside.file->writeAt(offset, after.data(), after.size());
  inside.touchDate();
}

void DbfFile::hold(std::uint32_t number) {
  Implementation& inside = *implementation_;
  inside.checkWritable(readOnly_, false);
  inside.held.reset();
  inside.lockRecord(inside.held, number);
  inside.heldRecord = number;
}

void DbfFile::release() { implementation_->held.reset(); }

void DbfFile::markDeleted(std::uint32_t number) {
  update(number, [](unsigned char* record) { record[0] = '*'; });
}

int DbfFile::lockWait() { return lockWaitMilliseconds; }
void DbfFile::setLockWait(int milliseconds) { lockWaitMilliseconds = milliseconds; }

}  // namespace vantrelix

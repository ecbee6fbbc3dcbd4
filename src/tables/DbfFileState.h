// What an open table holds. Private to the table-file sources.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "tables/DbfFile.h"
#include "tables/MemoFile.h"
#include "tables/dbfHeader.h"
#include "tables/dbfLocks.h"
#include "tables/dbfOpening.h"
#include "tables/fieldCodec.h"
#include "tables/knownHeaders.h"
#include "tables/restingFile.h"

namespace vantrelix {

struct DbfFile::Implementation {
  std::unique_ptr<platform::File> file;
  platform::FileState opened;
  std::optional<dbf::RestingFile> rest;
  std::optional<std::int64_t> nextLook;  // whether it has come to rest, by the steady clock
  bool countedAtRest = false;            // knownCount is that of the state at rest
  dbf::SharedHeader header;
  dbf::FieldContext context;
  Sharing sharing = Sharing::shared;
  std::uint32_t knownCount = 0;
  bool toldOfIndexes = false;
  std::unique_ptr<MemoFile> memo;
  bool memoMissing = false;
  std::unique_ptr<MemoFile> memoWriter;
  std::optional<dbf::HeldLock> held;  // of heldRecord; shared but while it is written
  std::uint32_t heldRecord = 0;
  // What keeps others from adding rows.
  struct AddingLocks {
    explicit AddingLocks(Implementation& inside);
    std::optional<dbf::HeldLock> writing;
    std::optional<dbf::HeldLock> header;
  };
  std::optional<AddingLocks> adding;            // from beginAdding to endAdding
  std::optional<std::uint32_t> lockedForWrite;  // the record whose lock a RowWrite has taken
  // Records that another program holds, as they stood long enough to be whole, and the number of the first.
  std::uint32_t settledFirst = 0;
  std::vector<unsigned char> settledBytes;

  std::uint64_t offsetOf(std::uint32_t number) const {
    return header->headerLength + std::uint64_t{number} * header->recordLength;
  }

  const DbfField& field(std::size_t index) const {
    if (index < header->fields.size()) return header->fields[index];
    throw RunTimeFailure(failure::noSuchField, "The table " + context.displayName() + " has no field number " +
                                                   std::to_string(index) + ". Check the number.");
  }

  [[noreturn]] void refuse(const std::string& reason) const {
    throw RunTimeFailure(failure::readOnlyTable,
                         "The table " + context.displayName() + " cannot be changed: " + reason + ".");
  }
  void checkWritable(bool readOnly, bool forNewRows) const;
  void lockWriting(std::optional<dbf::HeldLock>& lock) const;
  void lockRecord(std::optional<dbf::HeldLock>& lock, std::uint32_t number) const;
  void requireStanding();
  void take(dbf::HeldFile found);
  void takeHeaderAtRest(dbf::SharedHeader known);
  void readHeader();
  std::uint32_t countRows(std::uint64_t fileSize);
  bool countAtRest();
  bool mayRest();
  void writeRows(std::uint32_t first, const unsigned char* records, std::uint32_t count, std::uint64_t formerSize);
  void overwrite(std::uint64_t offset, const std::vector<unsigned char>& before,
                 const std::vector<unsigned char>& after);
  void takeBack(std::uint64_t offset, std::uint64_t formerSize) noexcept;
  void takeBackCount(std::uint32_t count) noexcept;
  void writeCount(std::uint32_t count);
  void makeDurable();
  void touchDate();

  // Records that stand behind one another, and where their bytes go.
  struct Rows {
    std::uint32_t first;
    std::uint32_t count;
    unsigned char* bytes;
  };
  // Milliseconds that a read spends on waiting in all, after which two reads that agree must do.
  static constexpr std::int64_t kPatience = 500;
  std::uint32_t readRows(const Rows& rows, std::int64_t& patience);
  std::uint32_t scanAtRest(const BlockLook& look, const BlockJoin& join, std::uint32_t first, std::uint32_t end,
                           bool& goesOn);
  std::uint32_t readUnlocked(const Rows& rows);
  std::uint32_t readAgreeing(const Rows& rows);
  bool writerMayBeAtWork();
  bool isSettled(const platform::FileState& state);
  std::optional<std::uint32_t> readSettled(const Rows& rows);
  std::uint32_t readInParts(const Rows& rows, std::uint32_t cut, std::int64_t& patience);
  std::uint32_t readContended(const Rows& row, std::int64_t& patience);
  class Settling;
  bool isKnownSettled(const Rows& row) const;
  class RowWrite;

  void noteUnreadable(const DbfField& field, const std::string& reason);
  void openMemo();
  Value memoText(const unsigned char* record, const DbfField& field);
  MemoFile& memoToWrite();
  void putMemo(unsigned char* record, const DbfField& field, const Value& value);
  static bool standsIn(MemoFile& memos, std::uint32_t block, std::string_view text);
};

// Keeps others from a record while it is read and written: by a lock of its own or, where the object holds the record
// already, by making that one exclusive meanwhile.
class DbfFile::Implementation::RowWrite {
 public:
  RowWrite(Implementation& inside, std::uint32_t number) : inside_(inside) {
    if (inside.held && inside.heldRecord == number) {
      inside.held->makeExclusive();
    } else {
      inside.lockRecord(lock_, number);
      inside.lockedForWrite = number;
    }
  }
  ~RowWrite() {
    if (lock_) inside_.lockedForWrite.reset();
    try {
      if (!lock_) inside_.held->share();
    } catch (const RunTimeFailure&) {
      // The record stays locked for readers too until the edit ends; a destructor has nobody to tell.
    }
  }
  RowWrite(const RowWrite&) = delete;
  RowWrite& operator=(const RowWrite&) = delete;

 private:
  Implementation& inside_;
  std::optional<dbf::HeldLock> lock_;
};

}  // namespace vantrelix

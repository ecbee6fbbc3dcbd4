// What an open table holds. Private to the table-file sources.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "tables/DbfFile.h"
#include "tables/MemoFile.h"
#include "tables/dbfHeader.h"
#include "tables/dbfLocks.h"
#include "tables/fieldCodec.h"

namespace vantrelix {

struct DbfFile::Implementation {
  std::unique_ptr<platform::File> file;
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

}  // namespace vantrelix

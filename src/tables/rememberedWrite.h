// A write to a table's rows, together with what this process remembers of them. Private to the table-file sources.
#pragma once

#include <optional>
#include <vector>

#include "platform/Platform.h"
#include "tables/RememberedTable.h"
#include "tables/dbfLocks.h"

namespace vantrelix::dbf {

// Keeps everybody else from changing header and records, beside a lock of a part of them that the writer has already.
// The locks are shared: readers go on. Not waited for: where another writer, or a program that reads under exclusive
// locks, holds one for longer than a moment, nothing is taken.
class OthersKeptOut {
 public:
  OthersKeptOut(platform::File& file, LockRange taken) : file_(file), taken_(taken) {}
  ~OthersKeptOut();
  OthersKeptOut(const OthersKeptOut&) = delete;
  OthersKeptOut& operator=(const OthersKeptOut&) = delete;

  // Tells the state in which the locks found the file. `added` is by how much the writer will make it longer.
  platform::FileState lock(std::uint64_t added);
  // Whether all of them are locked.
  bool whole() const { return whole_; }

 private:
  bool takeBeside(LockRange place);
  bool take(LockRange range);

  platform::File& file_;
  LockRange taken_;
  std::vector<LockRange> ranges_;
  bool whole_ = false;
};

// The table must not read meanwhile: its locks for a read would end those for the write.
class RememberedWrite {
 public:
  struct Writer {
    LockRange taken;      // what it has locked
    std::uint64_t added;  // bytes that it will add to the file
    bool besideOther;     // it also holds the header or a record for longer, a lock that would end with the others
  };
  RememberedWrite(DbfFile& table, platform::File& file, const Writer& writer);

  // The file as it was before the write.
  const platform::FileState& before() const { return before_; }
  OwnWrite* operator->() { return &*remembered_; }

 private:
  std::optional<OthersKeptOut> others_;
  platform::FileState before_;
  std::optional<OwnWrite> remembered_;
};

}  // namespace vantrelix::dbf

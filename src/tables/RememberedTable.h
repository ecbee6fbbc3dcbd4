// What this process remembers of the rows of its tables, from one look to the next.
//
// What is remembered counts only while the file is the one it was: device, file number, size and time of the last
// change. Two changes within one tick of the clock that gives a file its times have the same time, so notes are taken
// only of a state that every later change will end:
// - one that the file has had for longer than a tick, by this machine's steady clock;
// - one whose time lies more than a tick back, where this machine's own clock gives the file its times;
// - one whose time this process has set itself, to one that no tick of that clock shows.
// A time in the future proves nothing. Where the machine's clock has been set back, all is forgotten.
//
// A write of this process carries the notes over where nobody else can have written meanwhile: it holds all rows and
// the header locked, the state before it is the one remembered, and behind it the file is given such a time of its own.
// All of that is done only on disks of this machine: a file system of another one may round times, keep old attributes
// for a while, or know no locks.
//
// Private to this layer; one thread.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "tables/DbfFile.h"

namespace vantrelix {

// One kind of knowledge of the rows of a table. Each of these is told of a write that has been made; where it gives
// false or fails the notes are forgotten.
class RowNotes {
 public:
  virtual ~RowNotes() = default;
  virtual bool rowsAdded(DbfFile& table, std::uint32_t first, const unsigned char* records, std::uint32_t count) = 0;
  virtual bool rowChanged(DbfFile& table, std::uint32_t number, const unsigned char* before,
                          const unsigned char* after) = 0;
};

// A look at a table as its file stands now.
class TableLook {
 public:
  explicit TableLook(const DbfFile& table) : TableLook(table, table.state()) {}
  // Of a state that the file has been found in.
  TableLook(const DbfFile& table, const platform::FileState& state);

  const platform::FileState& state() const { return state_; }
  // Whether every change of the file from now on will show in its state: what is read behind this may be kept.
  bool canBeTrusted() const;
  // Milliseconds until that is so if the file stays as it is; nothing where waiting does not help.
  std::optional<int> untilTrusted() const;
  // What is remembered under that name; null where nothing is.
  std::shared_ptr<RowNotes> notes(const std::string& name) const;
  // Keeps what was read behind this look, unless the file has another state meanwhile.
  void keep(const std::string& name, std::shared_ptr<RowNotes> notes) const;
  // Notes were wanted that could not be trusted: this process's next write leaves the table in a state that can.
  void askForTrust() const;

 private:
  const DbfFile& table_;
  platform::FileState state_;
};

// What is remembered under that name of a file in that state, be it its own still or not; null where nothing is.
std::shared_ptr<RowNotes> notesOf(const platform::FileState& state, const std::string& name);

// Whether a write to that file has notes to carry over, so that it should keep all others from writing meanwhile.
bool hasNotes(const platform::FileState& file);

// A write of this process to the rows of an open table, told in two steps: one before it, one behind it. A write that
// fails ends what is remembered, as any other does.
class OwnWrite {
 public:
  // `alone`: all rows and the header are locked from before this to behind the second step.
  OwnWrite(DbfFile& table, platform::File& file, const platform::FileState& before, bool alone);

  void rowsAdded(std::uint32_t first, const unsigned char* records, std::uint32_t count) noexcept;
  void rowChanged(std::uint32_t number, const unsigned char* before, const unsigned char* after) noexcept;

 private:
  template <class Tell>
  void end(const Tell& tell) noexcept;

  DbfFile& table_;
  platform::File& file_;
  platform::FileState before_;
  bool carries_;
};

}  // namespace vantrelix

#include "tables/tableRecovery.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfLocks.h"
#include "tables/dbfOpening.h"
#include "tables/layoutCheck.h"
#include "tables/memoCheck.h"
#include "tables/partnerFile.h"
#include "tables/recoveredTable.h"
#include "tables/tableFiles.h"
#include "tables/wholeRows.h"

namespace vantrelix {

namespace {

using dbf::TableLayout;
using platform::File;
using platform::OpenMode;

constexpr std::size_t kChunk = std::size_t{1} << 20;

// Files on their way to their names, which no file may have; what has not arrived at the end is removed.
class NewFiles {
 public:
  ~NewFiles() {
    for (const Entry& entry : entries_) removeQuietly(entry.placed ? entry.name : entry.made);
  }

  [[noreturn]] static void refuse(const std::string& name) {
    throw RunTimeFailure(failure::fileExists, "The file " + displayPath(name) +
                                                  " exists already, and a recovery writes over nothing. Give another "
                                                  "name for the new table.");
  }

  // The file to write to until all is finished.
  platform::NewFile add(const std::string& name) {
    if (platform::current().fileExists(platform::current().findIgnoringCase(name))) refuse(name);
    platform::NewFile made = platform::createBeside(name);
    entries_.push_back({name, made.path, false});
    return made;
  }
  // The same for who may read `old`, before anything of it is written.
  platform::NewFile addLike(const std::string& old, const std::string& name) {
    platform::NewFile made = add(name);
    platform::current().copyPermissions(old, made.path);
    return made;
  }

  // Gives the files their names, the first one last.
  void place() {
    std::for_each(entries_.rbegin(), entries_.rend(), [](Entry& entry) { placeOne(entry); });
    entries_.clear();
  }

 private:
  struct Entry {
    std::string name, made;
    bool placed;
  };

  static void placeOne(Entry& entry) {
    try {
      platform::current().renameNew(entry.made, entry.name);
    } catch (const RunTimeFailure& failure) {
      if (failure.number() == failure::fileExists) refuse(entry.name);
      throw;
    }
    entry.placed = true;
  }

  std::vector<Entry> entries_;
};

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.find_last_of("\\/");
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

std::string memoNameFor(const std::string& path, MemoKind kind) {
  if (kind != MemoKind::foxpro) return withExtension(path, "DBT");
  const bool container = path.size() > 4 && equalIgnoringCase(path.substr(path.size() - 4), ".DBC");
  return withExtension(path, container ? "DCT" : "FPT");
}

// An added row would be written over one behind the count: the header's lock keeps others from adding any until those
// are saved.
[[noreturn]] void refuseRowsBehind(const TableLayout& layout) {
  throw RunTimeFailure(failure::locked,
                       "The table " + layout.context.displayName() + " is locked by another user (waited " +
                           std::to_string(DbfFile::lockWait()) +
                           " ms), who may be adding the rows that stand behind those its header counts. Try again "
                           "later, or recover a copy of the file.");
}

class Recovery {
 public:
  Recovery(File& file, const TableLayout& layout, const std::string& newPath)
      : file_(file), layout_(layout), table_(layout), newPath_(newPath) {}

  void run(TableRecovery& result, const CheckProgress& progress) {
    const auto to = files_.addLike(layout_.path, newPath_).file;
    if (table_.hasMemos()) openMemos();
    copyPageName(result.faults);
    writeRows(*to, result, progress);
    to->sync();
    if (newMemo_) newMemo_->sync();
    files_.place();
    syncFolderQuietly(folderOf(newPath_));
  }

 private:
  void openMemos() {
    const MemoKind kind = dbf::memoKindOf(layout_.header.version);
    const std::string old = memoPartner(layout_.path, kind == MemoKind::foxpro);
    try {
      if (!old.empty()) oldMemo_ = std::make_unique<MemoFile>(old, kind);
    } catch (const RunTimeFailure& cause) {
      if (cause.number() != failure::damagedTable && cause.number() != failure::deviceIO) throw;
    }
    const platform::NewFile made = files_.add(memoNameFor(newPath_, kind));
    const std::uint32_t usualBlock = kind == MemoKind::foxpro ? 64 : 512;
    const std::string head = MemoFile::emptyFile(kind, oldMemo_ ? oldMemo_->blockSize() : usualBlock);
    made.file->writeAt(0, head.data(), head.size());
    newMemo_ = std::make_unique<MemoFile>(made.path, kind, OpenMode::readWrite);
    // Behind the opening, which a file that may only be read would refuse.
    platform::current().copyPermissions(old.empty() ? layout_.path : old, made.path);
  }

  // One that stands at the new name by chance would give the new table a code page of its own.
  void copyPageName(FaultList& faults) {
    const std::string taken = partnerFile(newPath_, "CPG");
    if (!taken.empty()) NewFiles::refuse(taken);
    const std::string old = partnerFile(layout_.path, "CPG");
    if (old.empty()) return;
    std::string content;
    try {
      content = platform::readWholeFile(old, dbf::kLongestPageName);
    } catch (const RunTimeFailure& cause) {
      if (!faults.totals().contains(FaultKind::pageFile)) faults.add(FaultKind::pageFile, cause.description(), {});
      return;
    }
    const auto made = files_.addLike(old, withExtension(newPath_, "CPG")).file;
    made->writeAt(0, content.data(), content.size());
    made->sync();
  }

  void writeRows(File& to, TableRecovery& result, const CheckProgress& progress) {
    const std::uint32_t all = layout_.rowsCounted() + layout_.behind.rows;
    std::uint64_t at = table_.headerBytes(0, platform::current().now()).size();
    std::uint32_t seen = 0;
    const auto flush = [&] {
      to.writeAt(at, made_.data(), made_.size());
      at += made_.size();
      made_.clear();
    };
    const auto saveEach = [&](std::uint32_t number, const unsigned char* row) {
      ++seen;
      save(number, row, result);
      if (made_.size() >= kChunk) flush();
      return true;
    };
    dbf::WholeRows(file_, layout_).each(0, all, saveEach, [&](std::uint64_t next) {
      if (progress) progress(next, all);
    });
    made_.push_back(dbf::kFileEnd);
    flush();
    const std::string bytes = table_.headerBytes(result.rows + result.deleted, platform::current().now());
    to.writeAt(0, bytes.data(), bytes.size());
    result.lostRows += all - seen + rowsPromisedInVain();
  }

  void save(std::uint32_t number, const unsigned char* row, TableRecovery& result) {
    const auto isNul = [](unsigned char byte) { return byte == 0; };
    // A row that the device does not give, or a hole that a crash of the machine left: nothing was ever written there.
    if (row == nullptr || std::all_of(row, row + layout_.header.recordLength, isNul)) {
      ++result.lostRows;
      return;
    }
    const std::size_t size = made_.size();
    made_.resize(size + table_.recordLength());
    result.repairedValues += table_.convert(row, &made_[size], oldMemo_.get(), newMemo_.get());
    made_[size] == '*' ? ++result.deleted : ++result.rows;
    if (number >= layout_.rowsCounted()) ++result.behindCount;
  }

  // A count that no file of the format could hold is damage itself and promises nothing.
  std::uint32_t rowsPromisedInVain() const {
    const std::uint32_t missing = layout_.header.count - layout_.rowsCounted();
    if (layout_.offsetOf(layout_.header.count) <= dbf::kLargestFile) return missing;
    const std::uint64_t rest = layout_.fileSize - std::min(layout_.fileSize, layout_.offsetOf(layout_.rowsInFile()));
    return rest > 1 ? 1 : 0;
  }

  File& file_;
  const TableLayout& layout_;
  dbf::RecoveredTable table_;
  std::string newPath_;
  NewFiles files_;
  std::vector<unsigned char> made_;  // rows that are not written yet
  std::unique_ptr<MemoFile> oldMemo_;
  std::unique_ptr<MemoFile> newMemo_;
};

}  // namespace

TableRecovery recoverTable(const std::string& path, const std::string& newPath, const CheckProgress& progress) {
  TableRecovery result;
  const std::string found = platform::current().findIgnoringCase(path);
  bool readOnly = true;
  const auto file = dbf::openHeld(found, Sharing::shared, readOnly).file;
  std::optional<dbf::HeldLock> header;
  const TableLayout layout = dbf::findLayout(*file, found, header);
  if (layout.behind.rows == 0)
    header.reset();
  else if (!header)
    refuseRowsBehind(layout);
  Recovery recovery(*file, layout, newPath);
  TableCheck check;
  dbf::checkLayout(*file, layout, {}, check);
  result.faults = check.faults;
  recovery.run(result, progress);
  return result;
}

}  // namespace vantrelix

#include "tables/tableRecovery.h"

#include <algorithm>
#include <vector>

#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfLocks.h"
#include "tables/dbfOpening.h"
#include "tables/dbfText.h"
#include "tables/memoCheck.h"
#include "tables/partnerFile.h"
#include "tables/recoveredTable.h"
#include "tables/tableFiles.h"

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

  // The path to write to until all is finished.
  std::string add(const std::string& name) {
    if (platform::current().fileExists(platform::current().findIgnoringCase(name))) refuse(name);
    std::string made = name + "." + std::to_string(platform::current().processId()) + ".tmp";
    platform::current().open(made, OpenMode::createNew);
    entries_.push_back({name, made, false});
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

  [[noreturn]] static void refuse(const std::string& name) {
    throw RunTimeFailure(failure::fileExists, "The file " + displayPath(name) +
                                                  " exists already, and a recovery writes over nothing. Give another "
                                                  "name for the new table.");
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

class Recovery {
 public:
  Recovery(File& file, const TableLayout& layout, const std::string& newPath)
      : file_(file), layout_(layout), table_(layout), newPath_(newPath) {}

  void run(TableRecovery& result, const CheckProgress& progress) {
    const std::string path = files_.add(newPath_);
    const auto to = platform::current().open(path, OpenMode::readWrite);
    if (table_.hasMemos()) openMemos();
    copyPageName();
    result.behindCount = dbf::rowsBehind(file_, layout_);
    writeRows(*to, result, progress);
    to->sync();
    if (newMemo_) newMemo_->sync();
    files_.place();
    try {
      platform::current().syncFolder(folderOf(newPath_));
    } catch (const RunTimeFailure&) {
      // The new table stands at its name, complete; a failure told here would say that it does not.
    }
  }

 private:
  void openMemos() {
    const MemoKind kind = dbf::memoKindOf(layout_.header.version);
    const std::string old = memoPartner(layout_.path, kind == MemoKind::foxpro);
    try {
      if (!old.empty()) oldMemo_ = std::make_unique<MemoFile>(old, kind);
    } catch (const RunTimeFailure& cause) {
      if (cause.number() != failure::damagedTable) throw;
    }
    const std::string made = files_.add(memoNameFor(newPath_, kind));
    MemoFile::create(made, kind, oldMemo_ ? oldMemo_->blockSize() : kind == MemoKind::foxpro ? 64 : 512);
    newMemo_ = std::make_unique<MemoFile>(made, kind, OpenMode::readWrite);
  }

  // The code page of a table without a mark stands in a file beside it.
  void copyPageName() {
    const std::string old = partnerFile(layout_.path, "CPG");
    if (old.empty() || dbf::codePageOfMark(layout_.header.languageMark) != 0) return;
    const std::string made = files_.add(withExtension(newPath_, "CPG"));
    const std::string content = platform::readWholeFile(old, kChunk);
    platform::current().open(made, OpenMode::readWrite)->writeAt(0, content.data(), content.size());
  }

  void writeRows(File& to, TableRecovery& result, const CheckProgress& progress) {
    const std::uint32_t counted = layout_.rowsCounted();
    const std::uint32_t all = counted + result.behindCount;
    const std::uint64_t header = table_.headerBytes(0, platform::current().now()).size();
    const std::uint64_t length = layout_.header.recordLength;
    const std::uint64_t perChunk = std::min<std::uint64_t>(std::max<std::uint64_t>(1, kChunk / length), all);
    std::vector<unsigned char> chunk(perChunk * length);
    std::uint64_t at = header;
    for (std::uint32_t row = 0; row < all;) {
      const std::uint64_t wanted = std::min<std::uint64_t>(perChunk, all - row);
      const std::uint64_t got = file_.readAt(layout_.offsetOf(row), chunk.data(), wanted * length) / length;
      const std::vector<unsigned char> made = converted(chunk.data(), got, result);
      to.writeAt(at, made.data(), made.size());
      at += made.size();
      row += static_cast<std::uint32_t>(got);
      if (progress) progress(row, all);
      if (got < wanted) break;
    }
    to.writeAt(at, &dbf::kFileEnd, 1);
    const std::string bytes = table_.headerBytes(result.rows + result.deleted, platform::current().now());
    to.writeAt(0, bytes.data(), bytes.size());
    result.lostRows += rowsPromisedInVain();
  }

  std::vector<unsigned char> converted(const unsigned char* rows, std::uint64_t count, TableRecovery& result) {
    const std::uint64_t length = layout_.header.recordLength;
    std::vector<unsigned char> made(count * table_.recordLength());
    std::size_t size = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
      const unsigned char* row = rows + i * length;
      // A hole that a crash of the machine left: nothing was ever written there.
      if (std::all_of(row, row + length, [](unsigned char byte) { return byte == 0; })) {
        ++result.lostRows;
        continue;
      }
      result.repairedValues += table_.convert(row, &made[size], oldMemo_.get(), newMemo_.get());
      made[size] == '*' ? ++result.deleted : ++result.rows;
      size += table_.recordLength();
    }
    made.resize(size);
    return made;
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
  std::unique_ptr<MemoFile> oldMemo_;
  std::unique_ptr<MemoFile> newMemo_;
};

}  // namespace

TableRecovery recoverTable(const std::string& path, const std::string& newPath, const CheckProgress& progress) {
  TableRecovery result;
  const std::string found = platform::current().findIgnoringCase(path);
  bool readOnly = true;
  const auto file = dbf::openHeld(found, Sharing::shared, readOnly).file;
  const TableLayout layout = dbf::findLayout(*file, found);
  Recovery recovery(*file, layout, newPath);
  result.faults = checkTable(found).faults;
  recovery.run(result, progress);
  return result;
}

}  // namespace vantrelix

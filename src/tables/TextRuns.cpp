#include "tables/TextRuns.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Platform.h"
#include "tables/RememberedTable.h"
#include "tables/RunList.h"
#include "tables/learnTexts.h"
#include "tables/sameBytes.h"
#include "tables/scanInParts.h"

namespace vantrelix {

namespace {

constexpr std::uint64_t kSmallestRemembered = std::uint64_t{1} << 16;
// A table that is so many times larger takes longer to read than a user notices: it pays to wait for its notes.
constexpr std::uint64_t kWaitingPays = 512;
std::uint64_t smallest = kSmallestRemembered;
// Milliseconds that a user does not notice.
constexpr int kLongestWait = 101;
// A field whose texts change more often than this is not remembered: the notes would outgrow their use.
constexpr std::size_t kMostRuns = std::size_t{1} << 18;

// The text of a field, as SoughtText has it.
std::string textIn(const unsigned char* field, std::size_t width) {
  std::string text(field, std::find(field, field + width, '\0'));
  text.erase(text.find_last_not_of(' ') + 1);
  for (char& c : text) c = static_cast<char>(upperByte(static_cast<unsigned char>(c)));
  return text;
}

std::size_t hashOf(const unsigned char* field, std::size_t width) {
  return std::hash<std::string>()(textIn(field, width));
}

// Rows of a block that stand behind one another and have the same bytes in the field; counted from its first row.
using BlockRuns = std::vector<RowRun>;

// Adds the runs of so many rows.
void findRuns(const unsigned char* field, std::size_t width, std::size_t length, std::uint32_t count, BlockRuns& runs) {
  for (std::uint32_t row = 0; row < count;) {
    const std::uint32_t from = row;
    while (++row < count && sameBytes(field + row * length, field + (row - 1) * length, width)) {
    }
    runs.push_back({from, row - from});
  }
}

// The runs of a field in all rows of a table.
class NotedRuns : public RowNotes {
 public:
  NotedRuns(std::size_t offset, std::size_t width) : offset_(offset), width_(width) {}

  static std::string nameOf(std::size_t offset) { return "texts at " + std::to_string(offset); }

  // Rows behind those noted, whose field has the same bytes; settle() follows the last ones.
  void gather(const unsigned char* field, std::uint32_t count) {
    if (!tooMany_) runs_.gather(hashOf(field, width_), {rows_, count});
    rows_ += count;
    limit();
  }
  void settle() { runs_.settle(); }

  // Rows that are noted, deleted ones included.
  std::uint32_t rows() const { return rows_; }
  bool tooMany() const { return tooMany_; }
  std::vector<RowRun> find(const std::string& text) const { return runs_.find(std::hash<std::string>()(text)); }

  bool rowsAdded(DbfFile& table, std::uint32_t first, const unsigned char* records, std::uint32_t count) override {
    if (first != rows_) return false;
    const auto length = static_cast<std::size_t>(table.recordLength());
    BlockRuns runs;
    findRuns(records + offset_, width_, length, count, runs);
    for (const RowRun& run : runs) note(records + run.first * length + offset_, {first + run.first, run.count});
    rows_ += count;
    return true;
  }

  // A row may stay noted for the text that it had: rows are looked at again whenever they are found.
  bool rowChanged(DbfFile& /*table*/, std::uint32_t number, const unsigned char* before,
                  const unsigned char* after) override {
    if (!sameBytes(before + offset_, after + offset_, width_)) note(after + offset_, {number, 1});
    return true;
  }

 private:
  void note(const unsigned char* field, RowRun rows) {
    if (!tooMany_) runs_.add(hashOf(field, width_), rows);
    limit();
  }

  void limit() {
    if (runs_.size() <= kMostRuns) return;
    tooMany_ = true;
    runs_ = RunList();
  }

  std::size_t offset_;
  std::size_t width_;
  RunList runs_;
  std::uint32_t rows_ = 0;
  bool tooMany_ = false;  // then none is known
};

// Goes over a table's runs in their order, visits, if there is a visitor, the rows of those that may have the sought
// text, and notes where each run stands if asked to.
class RunWalk {
 public:
  RunWalk(const DbfFile& table, const SoughtText& sought, const BlockVisitor& visit, NotedRuns* notes)
      : length_(static_cast<std::size_t>(table.recordLength())),
        sought_(sought),
        visit_(visit),
        notes_(notes),
        last_(sought.width) {}

  // In any thread.
  void look(const RowBlock& rows, BlockRuns& runs) const {
    runs.clear();
    findRuns(rows.bytes + sought_.offset, sought_.width, length_, rows.count, runs);
  }

  // The next records. False where the visitor stops.
  bool join(const RowBlock& rows, const BlockRuns& runs) {
    for (const RowRun& run : runs) {
      const unsigned char* const records = rows.bytes + run.first * length_;
      const unsigned char* const field = records + sought_.offset;
      if (run_ == 0 || !sameBytes(field, last_.data(), sought_.width)) begin(field);
      run_ += run.count;
      if (isSought_ && !visit_(rows.first + run.first, records, run.count)) return false;
    }
    return true;
  }

  // Behind the last records.
  void end() {
    if (run_ > 0 && notes_ != nullptr) notes_->gather(last_.data(), run_);
    run_ = 0;
  }

 private:
  void begin(const unsigned char* field) {
    end();
    std::memcpy(last_.data(), field, sought_.width);
    isSought_ = visit_ && beginsAsSought(field);
  }

  // What stands behind the text is for the visitor to look at.
  bool beginsAsSought(const unsigned char* field) const {
    return std::equal(sought_.text.begin(), sought_.text.end(), field,
                      [](char wanted, unsigned char c) { return upperByte(c) == static_cast<unsigned char>(wanted); });
  }

  std::size_t length_;
  const SoughtText& sought_;
  const BlockVisitor& visit_;
  NotedRuns* notes_;
  std::vector<unsigned char> last_;  // the field's bytes in the run
  std::uint32_t run_ = 0;            // rows of the run so far
  bool isSought_ = false;
};

// Where nothing is known of the field, and that may change, notes are taken; they are kept only of a walk to the end:
// what was not read is not known.
void walk(DbfFile& table, const SoughtText& sought, const BlockVisitor& visit, const TableLook* noting) {
  const auto notes = noting != nullptr ? std::make_shared<NotedRuns>(sought.offset, sought.width) : nullptr;
  RunWalk runs(table, sought, visit, notes.get());
  const bool whole = scanInParts(
      table, BlockRuns(), [&](const RowBlock& rows, BlockRuns& part) { runs.look(rows, part); },
      [&](const RowBlock& rows, const BlockRuns& part) { return runs.join(rows, part); });
  if (!whole || !notes) return;
  runs.end();
  notes->settle();
  noting->keep(NotedRuns::nameOf(sought.offset), notes);
}

bool isLarge(const TableLook& look) { return look.state().size >= smallest; }

std::shared_ptr<const NotedRuns> asRuns(const std::shared_ptr<RowNotes>& notes) {
  return std::dynamic_pointer_cast<const NotedRuns>(notes);
}

std::shared_ptr<const NotedRuns> notedRuns(const TableLook& look, std::size_t offset) {
  return asRuns(look.notes(NotedRuns::nameOf(offset)));
}

// Where the file was last seen at rest and its rows are noted of that state, the read of the first of them tells
// whether all of that is so still. False, and nothing was visited, where it is not.
bool scanNotedAtRest(DbfFile& table, const SoughtText& sought, const BlockVisitor& visit) {
  const std::optional<std::vector<RowRun>> runs = runsAtRest(table, sought);
  if (!runs) return false;
  if (runs->empty()) return table.rests();
  const std::optional<DbfFile::Rest> rest = table.lastRest();
  bool proven = false;
  const auto visitProven = [&](std::uint32_t first, const unsigned char* records, std::uint32_t count) {
    const auto now = proven ? rest : table.lastRest();
    proven = now && now->state == rest->state;
    return proven && visit(first, records, count);
  };
  for (const RowRun& run : *runs) {
    if (!table.scanBlocks(std::ref(visitProven), run.first, run.count) || !proven) break;
  }
  return proven;
}

}  // namespace

std::uint64_t smallestRemembered() { return smallest; }
void setSmallestRemembered(std::uint64_t bytes) { smallest = bytes; }

std::optional<std::vector<RowRun>> runsAtRest(const DbfFile& table, const SoughtText& sought) {
  const std::optional<DbfFile::Rest> rest = table.lastRest();
  if (!rest) return std::nullopt;
  const std::shared_ptr<const NotedRuns> noted = asRuns(notesOf(rest->state, NotedRuns::nameOf(sought.offset)));
  if (!noted || noted->tooMany() || noted->rows() != rest->records) return std::nullopt;
  return noted->find(sought.text);
}

platform::FileState noteOpening(const DbfFile& table) { return TableLook(table, table.openedState()).state(); }

void scanBlocksForText(DbfFile& table, const SoughtText& sought, const BlockVisitor& visit) {
  if (scanNotedAtRest(table, sought, visit)) return;
  const TableLook look(table);
  const std::shared_ptr<const NotedRuns> noted = notedRuns(look, sought.offset);
  if (!noted) {
    const bool trusted = isLarge(look) && look.canBeTrusted();
    if (isLarge(look) && !trusted) look.askForTrust();
    return walk(table, sought, visit, trusted ? &look : nullptr);
  }
  if (noted->tooMany() || noted->rows() != table.recordCount()) return walk(table, sought, visit, nullptr);
  // What is visited may write to the table, which changes the notes.
  const std::vector<RowRun> runs = noted->find(sought.text);
  for (const RowRun& run : runs) {
    if (!table.scanBlocks(visit, run.first, run.count)) return;
  }
}

void learnTexts(const std::string& path, const std::string& field) {
  const auto table = DbfFile::open(path, true);
  const int index = table->fieldIndex(field);
  if (index < 0) return;
  const DbfField& column = table->fields()[static_cast<std::size_t>(index)];
  if (column.type != 'C') return;
  const SoughtText nothing{static_cast<std::size_t>(column.offset), static_cast<std::size_t>(column.width), ""};
  const auto wanted = [&](const TableLook& look) { return isLarge(look) && !notedRuns(look, nothing.offset); };
  const TableLook first(*table);
  if (!wanted(first)) return;
  const std::optional<int> left = first.untilTrusted();
  const bool isShort = left && *left <= kLongestWait && first.state().size / kWaitingPays >= smallest;
  if (isShort && *left > 0) platform::current().sleepMilliseconds(*left);
  const TableLook now(*table);
  if (wanted(now) && now.canBeTrusted()) walk(*table, nothing, {}, &now);
}

}  // namespace vantrelix

#include "tables/TextRuns.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "platform/Platform.h"
#include "tables/learnTexts.h"

namespace vantrelix {

namespace {

constexpr std::uint64_t kSmallestRemembered = std::uint64_t{1} << 20;
// A table that is so many times larger takes longer to read than a user notices: it pays to wait for its notes.
constexpr std::uint64_t kWaitingPays = 32;
std::uint64_t smallest = kSmallestRemembered;
// A field whose texts change more often than this is not remembered: the notes would outgrow their use.
constexpr std::size_t kMostRuns = std::size_t{1} << 18;
constexpr std::size_t kMostFiles = 16;
// Ticks of file systems: two seconds where times are whole seconds, else the system's own of 16 ms at most.
constexpr std::int64_t kCoarseTick = 2100;
constexpr std::int64_t kFineTick = 100;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

// Rows in succession with one text, known by its hash: rows of another text may be among those found.
struct Run {
  std::size_t hash;
  std::uint32_t first;
  std::uint32_t count;
};

struct Known {
  platform::FileState state;
  std::int64_t seen = 0;   // when this state was first seen
  std::uint64_t used = 0;  // counts the uses of all files; the one just used has the highest
  // By the offset of a field: by hash, then by place; nothing where the texts change too often.
  std::map<std::size_t, std::optional<std::vector<Run>>> runs;
};

using FileNumber = std::pair<std::uint64_t, std::uint64_t>;

std::map<FileNumber, Known>& knownFiles() {
  static std::map<FileNumber, Known> files;
  return files;
}

void forgetOldest(std::map<FileNumber, Known>& files) {
  if (files.size() <= kMostFiles) return;
  files.erase(std::min_element(files.begin(), files.end(),
                               [](const auto& a, const auto& b) { return a.second.used < b.second.used; }));
}

Known& knownOf(const DbfFile& table) {
  const platform::FileState state = table.state();
  const std::int64_t now = platform::current().steadyMilliseconds();
  auto& files = knownFiles();
  const auto [found, isNew] = files.try_emplace({state.device, state.inode});
  Known& known = found->second;
  static std::uint64_t uses = 0;
  known.used = ++uses;
  if (!isNew && known.state == state) return known;
  known.state = state;
  known.seen = now;
  known.runs.clear();
  forgetOldest(files);
  return known;
}

bool isLarge(const Known& known) { return known.state.size >= smallest; }

// Milliseconds from when its state was first seen until the file may be taken to stand still; nothing where never.
std::optional<std::int64_t> proving(const Known& known) {
  if (known.state.modifiedNanoseconds == 0) return std::nullopt;
  return known.state.modifiedNanoseconds % kNanosecondsPerSecond == 0 ? kCoarseTick : kFineTick;
}

bool standsStill(const Known& known) {
  const auto needed = proving(known);
  return needed && platform::current().steadyMilliseconds() - known.seen > *needed;
}

// Where it does soon.
void waitUntilStill(const Known& known) {
  if (proving(known) != kFineTick) return;
  const std::int64_t left = known.seen + kFineTick + 1 - platform::current().steadyMilliseconds();
  if (left > 0) platform::current().sleepMilliseconds(static_cast<int>(left));
}

// The text of a field, as SoughtText has it.
std::string textIn(const unsigned char* field, std::size_t width) {
  std::string text(field, std::find(field, field + width, '\0'));
  text.erase(text.find_last_not_of(' ') + 1);
  for (char& c : text) c = static_cast<char>(upperByte(static_cast<unsigned char>(c)));
  return text;
}

std::uint64_t eightBytes(const unsigned char* at) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  return bytes;
}

// Most fields of IDs have from 8 to 16 bytes: two reads, which may overlap, take the place of a call for each row.
bool sameBytes(const unsigned char* a, const unsigned char* b, std::size_t width) {
  if (width < 8 || width > 16) return std::memcmp(a, b, width) == 0;
  const std::size_t tail = width - 8;
  return ((eightBytes(a) ^ eightBytes(b)) | (eightBytes(a + tail) ^ eightBytes(b + tail))) == 0;
}

// Walks over a table by runs of rows with the same bytes in the field, visits, if there is a visitor, the rows of those
// that may have the sought text, and notes where each run stands if asked to.
class RunWalk {
 public:
  RunWalk(const DbfFile& table, const SoughtText& sought, const RecordVisitor& visit, bool takesNotes)
      : length_(static_cast<std::size_t>(table.recordLength())),
        sought_(sought),
        visit_(visit),
        takesNotes_(takesNotes),
        last_(sought.width) {}

  // The next records. False where the visitor stops.
  bool walk(std::uint32_t first, const unsigned char* records, std::uint32_t count) {
    const unsigned char* const field = records + sought_.offset;
    end_ = first + count;
    for (std::uint32_t row = 0; row < count;) {
      if (!begun_ || !sameBytes(field + row * length_, last_.data(), sought_.width)) {
        begin(first + row, field + row * length_);
      }
      const std::uint32_t from = row;
      while (++row < count && sameBytes(field + row * length_, last_.data(), sought_.width)) {
      }
      if (isSought_ && !visitRows(first + from, records + from * length_, row - from)) return false;
    }
    return true;
  }

  std::optional<std::vector<Run>> takeNotes() {
    if (tooMany_) return std::nullopt;
    closeRun(end_);
    std::sort(runs_.begin(), runs_.end(),
              [](const Run& a, const Run& b) { return std::tie(a.hash, a.first) < std::tie(b.hash, b.first); });
    runs_.shrink_to_fit();
    return std::move(runs_);
  }

 private:
  void begin(std::uint32_t number, const unsigned char* field) {
    begun_ = true;
    std::memcpy(last_.data(), field, sought_.width);
    isSought_ = visit_ && beginsAsSought(field);
    if (takesNotes_) note(number, field);
  }

  // What stands behind the text is for the visitor to look at.
  bool beginsAsSought(const unsigned char* field) const {
    return std::equal(sought_.text.begin(), sought_.text.end(), field,
                      [](char wanted, unsigned char c) { return upperByte(c) == static_cast<unsigned char>(wanted); });
  }

  void note(std::uint32_t number, const unsigned char* field) {
    closeRun(number);
    tooMany_ = tooMany_ || runs_.size() >= kMostRuns;
    if (!tooMany_) runs_.push_back({std::hash<std::string>()(textIn(field, sought_.width)), number, 0});
  }

  void closeRun(std::uint32_t end) {
    if (!runs_.empty() && !tooMany_) runs_.back().count = end - runs_.back().first;
  }

  bool visitRows(std::uint32_t number, const unsigned char* records, std::uint32_t count) const {
    for (std::uint32_t row = 0; row < count; ++row) {
      if (!visit_(number + row, records + row * length_)) return false;
    }
    return true;
  }

  std::size_t length_;
  const SoughtText& sought_;
  const RecordVisitor& visit_;
  bool takesNotes_;
  std::vector<unsigned char> last_;  // the field's bytes in the run
  bool begun_ = false;
  bool isSought_ = false;
  std::uint32_t end_ = 0;  // behind the rows walked over
  std::vector<Run> runs_;
  bool tooMany_ = false;
};

// Notes are kept only of a walk to the end: what was not read is not known.
void walk(DbfFile& table, const SoughtText& sought, const RecordVisitor& visit, const platform::FileState* noted) {
  RunWalk runs(table, sought, visit, noted != nullptr);
  const bool whole = table.scanBlocks([&](std::uint32_t first, const unsigned char* records, std::uint32_t count) {
    return runs.walk(first, records, count);
  });
  if (!whole || noted == nullptr) return;
  const auto known = knownFiles().find({noted->device, noted->inode});
  if (known == knownFiles().end() || known->second.state != *noted) return;
  known->second.runs.insert_or_assign(sought.offset, runs.takeNotes());
}

// By place.
std::vector<Run> runsOf(const std::vector<Run>& runs, const std::string& text) {
  const auto [first, last] = std::equal_range(runs.begin(), runs.end(), Run{std::hash<std::string>()(text), 0, 0},
                                              [](const Run& a, const Run& b) { return a.hash < b.hash; });
  return {first, last};
}

}  // namespace

std::uint64_t smallestRemembered() { return smallest; }
void setSmallestRemembered(std::uint64_t bytes) { smallest = bytes; }

void noteFileState(const DbfFile& table) { knownOf(table); }

void scanForText(DbfFile& table, const SoughtText& sought, const RecordVisitor& visit) {
  const Known& known = knownOf(table);
  const auto noted = known.runs.find(sought.offset);
  if (noted == known.runs.end()) {
    const platform::FileState state = known.state;
    return walk(table, sought, visit, isLarge(known) && standsStill(known) ? &state : nullptr);
  }
  if (!noted->second) return walk(table, sought, visit, nullptr);
  // What is visited may ask for other texts, which can forget the notes.
  const std::vector<Run> runs = runsOf(*noted->second, sought.text);
  for (const Run& run : runs) {
    if (!table.scan(visit, run.first, run.count)) return;
  }
}

void learnTexts(const std::string& path, const std::string& field) {
  const auto table = DbfFile::open(path, true);
  const int index = table->fieldIndex(field);
  if (index < 0) return;
  const DbfField& column = table->fields()[static_cast<std::size_t>(index)];
  if (column.type != 'C') return;
  const SoughtText nothing{static_cast<std::size_t>(column.offset), static_cast<std::size_t>(column.width), ""};
  const auto wanted = [&](const Known& known) { return isLarge(known) && !known.runs.contains(nothing.offset); };
  const Known& first = knownOf(*table);
  if (!wanted(first)) return;
  if (first.state.size / kWaitingPays >= smallest) waitUntilStill(first);
  const Known& known = knownOf(*table);
  const platform::FileState state = known.state;
  if (wanted(known) && standsStill(known)) walk(*table, nothing, {}, &state);
}

}  // namespace vantrelix

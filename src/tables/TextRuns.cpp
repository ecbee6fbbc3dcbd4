#include "tables/TextRuns.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "platform/Platform.h"

namespace vantrelix {

namespace {

constexpr std::uint64_t kSmallestRemembered = std::uint64_t{1} << 20;
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
  std::int64_t seen = 0;  // when this state was first seen
  std::int64_t used = 0;
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
  known.used = now;
  if (!isNew && known.state == state) return known;
  known.state = state;
  known.seen = now;
  known.runs.clear();
  forgetOldest(files);
  return known;
}

bool standsStill(const Known& known) {
  if (known.state.modifiedNanoseconds == 0) return false;
  const bool coarse = known.state.modifiedNanoseconds % kNanosecondsPerSecond == 0;
  return platform::current().steadyMilliseconds() - known.seen > (coarse ? kCoarseTick : kFineTick);
}

// The text of a field, as SoughtText has it.
std::string textIn(const unsigned char* field, std::size_t width) {
  std::string text(field, std::find(field, field + width, '\0'));
  text.erase(text.find_last_not_of(' ') + 1);
  for (char& c : text) c = static_cast<char>(upperByte(static_cast<unsigned char>(c)));
  return text;
}

class RunNotes {
 public:
  explicit RunNotes(const SoughtText& sought) : sought_(sought), last_(sought.width) {}

  void add(std::uint32_t number, const unsigned char* record) {
    const unsigned char* field = record + sought_.offset;
    if (!runs_.empty() && std::memcmp(field, last_.data(), sought_.width) == 0) {
      ++runs_.back().count;
      return;
    }
    tooMany_ = tooMany_ || runs_.size() >= kMostRuns;
    if (tooMany_) return;
    std::memcpy(last_.data(), field, sought_.width);
    runs_.push_back({std::hash<std::string>()(textIn(field, sought_.width)), number, 1});
  }

  std::optional<std::vector<Run>> take() {
    if (tooMany_) return std::nullopt;
    std::sort(runs_.begin(), runs_.end(),
              [](const Run& a, const Run& b) { return std::tie(a.hash, a.first) < std::tie(b.hash, b.first); });
    runs_.shrink_to_fit();
    return std::move(runs_);
  }

 private:
  const SoughtText& sought_;
  std::vector<unsigned char> last_;
  std::vector<Run> runs_;
  bool tooMany_ = false;
};

// Takes notes on the way. Only of a run to the end: what was not read is not known.
void scanTakingNotes(DbfFile& table, const SoughtText& sought, const platform::FileState& state,
                     const RecordVisitor& visit) {
  RunNotes notes(sought);
  const bool whole = table.scan([&](std::uint32_t number, const unsigned char* record) {
    notes.add(number, record);
    return visit(number, record);
  });
  if (!whole) return;
  const auto known = knownFiles().find({state.device, state.inode});
  if (known == knownFiles().end() || known->second.state != state) return;
  known->second.runs.insert_or_assign(sought.offset, notes.take());
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
    const bool notable = known.state.size >= smallest && standsStill(known);
    if (notable) return scanTakingNotes(table, sought, platform::FileState(known.state), visit);
    table.scan(visit);
    return;
  }
  if (!noted->second) {
    table.scan(visit);
    return;
  }
  // What is visited may ask for other texts, which can forget the notes.
  const std::vector<Run> runs = runsOf(*noted->second, sought.text);
  for (const Run& run : runs) {
    if (!table.scan(visit, run.first, run.count)) return;
  }
}

}  // namespace vantrelix

#include "tables/RememberedTable.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "platform/Platform.h"
#include "tables/standingFile.h"

namespace vantrelix {

namespace {

using platform::FileState;

constexpr std::size_t kMostFiles = 16;
constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;
constexpr std::int64_t kFineTickOfOwnClock = 50;  // as tickOf() tells, where the clock is that of this machine
// Two clocks read behind one another may differ by what else the machine does in between.
constexpr std::int64_t kSetBack = 1000;

struct Known {
  FileState state;
  std::int64_t seen = 0;    // when this state was first seen, in milliseconds of the steady clock
  bool timeIsOurs = false;  // it was set by this process
  bool asked = false;       // for trust
  std::uint64_t used = 0;   // counts the uses of all files; the one just used has the highest
  std::map<std::string, std::shared_ptr<RowNotes>> notes;
};

using FileNumber = std::pair<std::uint64_t, std::uint64_t>;

std::map<FileNumber, Known>& knownFiles() {
  static std::map<FileNumber, Known> files;
  return files;
}

Known* findKnown(const FileState& file) {
  const auto found = knownFiles().find({file.device, file.inode});
  return found == knownFiles().end() ? nullptr : &found->second;
}

void markUsed(Known& known) {
  static std::uint64_t uses = 0;
  known.used = ++uses;
}

std::shared_ptr<RowNotes> notesIn(const FileState& state, const std::string& name) {
  Known* const known = findKnown(state);
  if (known == nullptr || known->state != state) return nullptr;
  markUsed(*known);
  const auto found = known->notes.find(name);
  return found == known->notes.end() ? nullptr : found->second;
}

void forgetOldest(std::map<FileNumber, Known>& files) {
  if (files.size() <= kMostFiles) return;
  files.erase(std::min_element(files.begin(), files.end(),
                               [](const auto& a, const auto& b) { return a.second.used < b.second.used; }));
}

// Where the clock is set back, times come again: what a file shows then proves nothing.
void forgetAllWhereClockWentBack() {
  static std::int64_t ahead = INT64_MIN;  // of the steady clock
  platform::Platform& system = platform::current();
  const std::int64_t now = system.wallNanoseconds() / kNanosecondsPerMillisecond - system.steadyMilliseconds();
  if (ahead != INT64_MIN && now < ahead - kSetBack) {
    knownFiles().clear();
    ahead = now;
  }
  ahead = std::max(ahead, now);
}

void enterState(Known& known, const FileState& state) {
  known.state = state;
  known.seen = platform::current().steadyMilliseconds();
  known.timeIsOurs = false;
}

Known& knownOf(const FileState& state) {
  forgetAllWhereClockWentBack();
  auto& files = knownFiles();
  const auto [found, isNew] = files.try_emplace({state.device, state.inode});
  Known& known = found->second;
  markUsed(known);
  if (!isNew && known.state == state) return known;
  known.notes.clear();
  known.asked = false;
  enterState(known, state);
  forgetOldest(files);
  return known;
}

// By the steady clock, the milliseconds until this state has lasted for longer than a tick; none where it has.
std::int64_t leftOfTick(const Known& known) {
  return std::max<std::int64_t>(0, known.seen + tickOf(known.state) + 1 - platform::current().steadyMilliseconds());
}

bool timeIsPast(const FileState& state) {
  return state.modifiedNanoseconds != 0 && state.modifiedNanoseconds <= platform::current().wallNanoseconds();
}

// The same as leftOfTick by the machine's clock, for a file that has its times from it.
std::int64_t leftOfOwnTick(const FileState& state) {
  const std::int64_t tick = isWholeSeconds(state) ? kCoarseTick : kFineTickOfOwnClock;
  const std::int64_t past = platform::current().wallNanoseconds() - state.modifiedNanoseconds;
  return std::max<std::int64_t>(0, tick + 1 - past / kNanosecondsPerMillisecond);
}

// Gives the file a time that no other write gives it, and tells the state that it has then; nothing where times may not
// be set. File systems that round times do not keep one that ends in another digit than 0: what they make of it is a
// state that nothing is known of.
std::optional<FileState> giveOwnTime(platform::File& file, const FileState& before) {
  FileState state = file.state();
  std::int64_t time = platform::current().wallNanoseconds();
  while (time % 10 == 0 || time == state.modifiedNanoseconds || time == before.modifiedNanoseconds) ++time;
  if (!file.setModified(time)) return std::nullopt;
  state.modifiedNanoseconds = time;
  return state;
}

}  // namespace

TableLook::TableLook(const DbfFile& table, const FileState& state) : table_(table), state_(state) { knownOf(state_); }

bool TableLook::canBeTrusted() const { return untilTrusted() == 0; }

std::optional<int> TableLook::untilTrusted() const {
  const Known* const known = findKnown(state_);
  if (known == nullptr || known->state != state_ || !timeIsPast(state_)) return std::nullopt;
  if (known->timeIsOurs) return 0;
  std::int64_t left = leftOfTick(*known);
  if (left > 0 && table_.hasOwnClock()) left = std::min(left, leftOfOwnTick(state_));
  return static_cast<int>(left);
}

std::shared_ptr<RowNotes> TableLook::notes(const std::string& name) const { return notesIn(state_, name); }

void TableLook::keep(const std::string& name, std::shared_ptr<RowNotes> notes) const {
  Known* const known = findKnown(state_);
  if (known != nullptr && known->state == state_) known->notes.insert_or_assign(name, std::move(notes));
}

void TableLook::askForTrust() const {
  if (Known* const known = findKnown(state_)) known->asked = true;
}

std::shared_ptr<RowNotes> notesOf(const FileState& state, const std::string& name) {
  forgetAllWhereClockWentBack();
  return notesIn(state, name);
}

bool hasNotes(const FileState& file) {
  const Known* const known = findKnown(file);
  return known != nullptr && !known->notes.empty();
}

OwnWrite::OwnWrite(DbfFile& table, platform::File& file, const FileState& before, bool alone)
    : table_(table), file_(file), before_(before) {
  const Known& known = knownOf(before);
  carries_ = alone && !known.notes.empty();
}

// The rows are in the file: nothing that happens here may make their write fail.
template <class Tell>
void OwnWrite::end(const Tell& tell) noexcept {
  try {
    Known* const known = findKnown(before_);
    if (known == nullptr) return;
    const bool needsTime = (carries_ || known->asked) && table_.hasOwnClock();
    const std::optional<FileState> own = needsTime ? giveOwnTime(file_, before_) : std::nullopt;
    if (!own || !carries_) known->notes.clear();
    enterState(*known, own ? *own : file_.state());
    known->timeIsOurs = own.has_value();
    std::erase_if(known->notes, [&](const auto& notes) { return !tell(*notes.second); });
  } catch (...) {
    knownFiles().erase({before_.device, before_.inode});
  }
}

void OwnWrite::rowsAdded(std::uint32_t first, const unsigned char* records, std::uint32_t count) noexcept {
  end([&](RowNotes& notes) { return notes.rowsAdded(table_, first, records, count); });
}

void OwnWrite::rowChanged(std::uint32_t number, const unsigned char* before, const unsigned char* after) noexcept {
  end([&](RowNotes& notes) { return notes.rowChanged(table_, number, before, after); });
}

}  // namespace vantrelix

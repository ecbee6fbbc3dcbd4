#include "tables/tableFiles.h"

#include <vector>

#include "foundation/dateTime.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/DbfFile.h"
#include "tables/partnerFile.h"
#include "tables/structure.h"

namespace vantrelix {

namespace {

// The dated names change only with the second within an hour, so two days of seconds offer thousands of them.
constexpr int kSecondsTried = 2 * 24 * 3600;
constexpr std::size_t kCopyChunk = std::size_t{1} << 20;

// Calls `take` with one stamp after the other until it answers true.
template <class Take>
void firstFreeStamp(std::string_view format, const std::string& wherefore, Take take) {
  platform::DateTime time = platform::current().now();
  std::string former;
  for (int i = 0; i < kSecondsTried; ++i, time = nextSecond(time)) {
    const std::string stamp = formatDate(time, format);
    if (stamp != former && take(stamp)) return;
    former = stamp;
  }
  throw RunTimeFailure(failure::fileExists, "No free dated name is left for " + displayPath(wherefore) +
                                                ". Move old dated tables to another folder.");
}

// Answers false where a file of that name exists already.
bool takeName(const std::string& path) {
  if (platform::current().fileExists(path)) return false;
  try {
    platform::current().open(path, platform::OpenMode::createNew);
    return true;
  } catch (const RunTimeFailure& failure) {
    if (failure.number() == failure::fileExists) return false;
    throw;
  }
}

void copyBytes(const std::string& from, const std::string& to) {
  const auto source = platform::current().open(from, platform::OpenMode::read);
  const auto target = platform::current().open(to, platform::OpenMode::readWrite);
  std::vector<unsigned char> buffer(kCopyChunk);
  std::uint64_t offset = 0;
  for (;;) {
    const std::size_t count = source->readAt(offset, buffer.data(), buffer.size());
    if (count == 0) break;
    target->writeAt(offset, buffer.data(), count);
    offset += count;
  }
  target->sync();
}

// By the size that the system tells: a state that it does not tell is no reason to remove anything.
void removeEmpty(const std::string& path) {
  const auto state = platform::current().state(path);
  if (state && state->size == 0 && platform::current().fileExists(path)) platform::current().remove(path);
}

bool renameToFree(const std::string& from, const std::string& to) {
  if (platform::current().fileExists(to)) return false;
  try {
    platform::current().renameNew(from, to);
    return true;
  } catch (const RunTimeFailure& failure) {
    if (failure.number() == failure::fileExists) return false;
    throw;
  }
}

}  // namespace

platform::DateTime nextSecond(platform::DateTime time) {
  if (++time.second < 60) return time;
  time.second = 0;
  if (++time.minute < 60) return time;
  time.minute = 0;
  if (++time.hour < 24) return time;
  time.hour = 0;
  civilFromDays(daysFromCivil(time.year, time.month, time.day) + 1, time.year, time.month, time.day);
  return time;
}

std::string reserveStampedTable(const std::string& folder, std::string_view format) {
  std::string path;
  firstFreeStamp(format, folder, [&](const std::string& stamp) {
    path = setPathName(folder, stamp + ".DBF");
    return takeName(path);
  });
  return path;
}

std::string makeStampedTable(const FieldList& fields, const std::string& folder, std::string_view format) {
  std::string made;
  try {
    made = reserveStampedTable(folder, format);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, "PathName: " + displayPath(folder));
    return "";
  }
  if (NewTable(fields, made)) return made;
  removeTableQuietly(made);
  return "";
}

void createTable(const FieldList& fields, const std::string& path) {
  if (fields.empty()) {
    throw RunTimeFailure(failure::objectNotSet, "There is no field list for " + displayPath(path) +
                                                    ". Check the table type's rows in the dictionary.");
  }
  std::vector<DbfNewField> stored;
  for (const FieldDescription& field : fields) stored.push_back(engineField(field.Name, field.Type, field.Size));
  DbfFile::create(path, stored);
}

std::string keepDatedCopy(const std::string& path) {
  const std::string stem = ExtractPathNoExtension(path) + "_";
  std::string partial;
  firstFreeStamp("YYYYMMDDHHSS", path, [&](const std::string& stamp) {
    partial = stem + stamp + ".TMP";
    return takeName(partial);
  });
  try {
    copyBytes(path, partial);
    std::string kept;
    firstFreeStamp("YYYYMMDDHHSS", path, [&](const std::string& stamp) {
      kept = stem + stamp + ".DBF";
      return renameToFree(partial, kept);
    });
    return kept;
  } catch (...) {
    removeQuietly(partial);
    throw;
  }
}

void settleMemo(const std::string& made, const std::string& path) {
  const std::string memo = memoPartner(made, true);
  if (memo.empty()) return;
  syncFile(memo);
  if (!memoPartner(path, true).empty() || !renameToFree(memo, withExtension(path, "FPT"))) removeQuietly(memo);
}

bool settleNewTable(const std::string& made, const std::string& path) {
  platform::Platform& system = platform::current();
  try {
    syncFile(made);
    settleMemo(made, path);
    removeEmpty(path);
    system.renameNew(made, path);
    syncFolderQuietly(ExtractFolderNoSlash(path));
    return true;
  } catch (const RunTimeFailure& failure) {
    removeTableQuietly(made);
    if (failure.number() != failure::fileExists) throw;
  }
  return false;
}

void syncFile(const std::string& path) { platform::current().open(path, platform::OpenMode::readWrite)->sync(); }

void syncFolderQuietly(const std::string& folder) {
  try {
    platform::current().syncFolder(folder);
  } catch (const RunTimeFailure&) {
  }
}

void removeQuietly(const std::string& path) {
  try {
    platform::current().remove(path);
  } catch (const RunTimeFailure&) {
    // The file is in nobody's way.
  }
}

void removeTableQuietly(const std::string& path) {
  removeQuietly(path);
  const std::string memo = memoPartner(path, true);
  if (!memo.empty()) removeQuietly(memo);
}

}  // namespace vantrelix

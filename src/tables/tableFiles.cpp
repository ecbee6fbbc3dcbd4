#include "tables/tableFiles.h"

#include <memory>
#include <vector>

#include "foundation/dateTime.h"
#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/procedures.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfCreate.h"
#include "tables/dbfOpening.h"
#include "tables/partnerFile.h"

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

// Makes an empty file; null where one of that name exists already.
std::unique_ptr<platform::File> takeName(const std::string& path) {
  if (platform::current().fileExists(path)) return nullptr;
  try {
    return platform::current().open(path, platform::OpenMode::createNew);
  } catch (const RunTimeFailure& failure) {
    if (failure.number() == failure::fileExists) return nullptr;
    throw;
  }
}

void copyBytes(const std::string& from, platform::File& target) {
  const auto source = platform::current().open(from, platform::OpenMode::read);
  std::vector<unsigned char> buffer(kCopyChunk);
  std::uint64_t offset = 0;
  for (;;) {
    const std::size_t count = source->readAt(offset, buffer.data(), buffer.size());
    if (count == 0) break;
    target.writeAt(offset, buffer.data(), count);
    offset += count;
  }
  target.sync();
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
    return takeName(path) != nullptr;
  });
  return path;
}

std::string makeStampedTable(const FieldList& fields, const std::string& folder, std::string_view format,
                             const std::string& like) {
  Procedure guard(procedure::NewTable);
  std::string made;
  const auto report = [&](const auto& failure) {
    ErrHand(failure, "PathName: " + displayPath(made.empty() ? folder : made));
  };
  try {
    made = reserveStampedTable(folder, format);
    if (!like.empty()) platform::current().copyPermissions(like, made);
    createTable(fields, made, like.empty() ? dbf::Language() : dbf::languageOf(like));
    return made;
  } catch (const RunTimeFailure& failure) {
    report(failure);
  } catch (const std::exception& failure) {
    report(failure);
  }
  if (!made.empty()) removeTableQuietly(made);
  return "";
}

void createTable(const FieldList& fields, const std::string& path, const dbf::Language& language) {
  if (fields.empty()) {
    throw RunTimeFailure(failure::objectNotSet, "There is no field list for " + displayPath(path) +
                                                    ". Check the table type's rows in the dictionary.");
  }
  std::vector<DbfNewField> stored;
  for (const FieldDescription& field : fields) stored.push_back(engineField(field.Name, field.Type, field.Size));
  dbf::createFile(path, stored, language);
}

void keepDatedCopy(const std::string& path, std::string& kept) {
  const std::string stem = ExtractPathNoExtension(path) + "_";
  std::string partial;
  std::unique_ptr<platform::File> copy;
  firstFreeStamp("YYYYMMDDHHSS", path, [&](const std::string& stamp) {
    partial = stem + stamp + ".TMP";
    kept = stem + stamp + ".DBF";
    copy = takeName(partial);
    return copy != nullptr;
  });
  try {
    platform::current().copyPermissions(path, partial);
    copyBytes(path, *copy);
    copy.reset();
    firstFreeStamp("YYYYMMDDHHSS", path, [&](const std::string& stamp) {
      kept = stem + stamp + ".DBF";
      return renameToFree(partial, kept);
    });
  } catch (...) {
    copy.reset();
    removeQuietly(partial);
    throw;
  }
}

void copyPageName(const std::string& path, const std::string& copy) {
  const std::string named = partnerFile(path, "CPG");
  if (named.empty() || !partnerFile(copy, "CPG").empty()) return;
  std::string content;
  try {
    content = platform::readWholeFile(named, dbf::kLongestPageName);
  } catch (const RunTimeFailure&) {
    return;
  }
  platform::createWholeFile(withExtension(copy, "CPG"), content, path);
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

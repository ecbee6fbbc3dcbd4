#include "tables/dbfOpening.h"

#include <algorithm>

#include "foundation/encoding.h"
#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfLocks.h"
#include "tables/partnerFile.h"

namespace vantrelix::dbf {

namespace {

using platform::File;
using platform::OpenMode;

constexpr std::size_t kFirstRead = 1024;
constexpr std::size_t kLongestHeader = 65535 + 32;
constexpr int kReplacementsFollowed = 20;

[[noreturn]] void cannotOpen(const std::string& path, const RunTimeFailure& cause) {
  const bool missing = cause.number() == failure::fileNotFound || cause.number() == failure::pathNotFound;
  if (missing) {
    throw RunTimeFailure(failure::noSuchTable,
                         "The table " + displayPath(path) + " does not exist. Check its name and its folder.");
  }
  throw RunTimeFailure(failure::cannotOpen,
                       "The table " + displayPath(path) + " cannot be opened. " + cause.description());
}

// Field names outside ASCII that are valid UTF-8 come from a program that writes UTF-8 and leaves the mark at 0.
bool namesAreUtf8(const std::vector<DbfField>& fields) {
  const auto outsideAscii = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; };
  bool found = false;
  for (const DbfField& field : fields) {
    if (!isValidUtf8(field.name)) return false;
    found = found || std::any_of(field.name.begin(), field.name.end(), outsideAscii);
  }
  return found;
}

std::unique_ptr<File> openFile(const std::string& path, Sharing sharing, bool& readOnly) {
  const bool wantsWrite = !readOnly || sharing != Sharing::shared;
  try {
    if (!wantsWrite) return platform::current().open(path, OpenMode::read);
    try {
      return platform::current().open(path, OpenMode::readWrite);
    } catch (const RunTimeFailure& cause) {
      if (cause.number() != failure::permissionDenied || sharing != Sharing::shared) throw;
      readOnly = true;
      return platform::current().open(path, OpenMode::read);
    }
  } catch (const RunTimeFailure& cause) {
    cannotOpen(path, cause);
  }
}

// Compressed rows stand behind a sound header, in less room than it promises, and look like none from the first byte.
void checkFirstRow(File& file, std::uint64_t size, const Header& header, const std::string& displayName) {
  if (rowsWithin(size, header, header.count) == header.count) return;
  unsigned char first = ' ';
  file.readAt(header.headerLength, &first, 1);
  if (first == ' ' || first == '*' || first == '\0') return;
  throw RunTimeFailure(failure::damagedTable,
                       "The table " + displayName +
                           " cannot be read: its header is that of a dBase table, but what stands behind it is "
                           "compressed or no rows at all. Expand it with the program that made it.");
}

}  // namespace

bool standsAt(const std::string& path, File& file) {
  const auto there = platform::current().state(path);
  return there && isSameFile(*there, file.state());
}

// A repair puts a new file in the table's place. Who opened the old one just before it and locked it just after holds a
// file that nobody will look at again. Who only reads is content with a file that stood at the path when it was opened;
// of one that was removed or replaced since then its links tell.
HeldFile openHeld(const std::string& path, Sharing sharing, bool& readOnly) {
  for (int tries = 0; tries < kReplacementsFollowed; ++tries) {
    bool onlyReads = readOnly;
    HeldFile held{openFile(path, sharing, onlyReads), {}};
    lockForSharing(*held.file, sharing, path);
    const bool willWrite = !onlyReads || sharing != Sharing::shared;
    const auto there = willWrite ? platform::current().state(path) : std::nullopt;
    held.state = held.file->state();
    const bool stands = there && isSameFile(*there, held.state);
    if (willWrite ? !stands : held.state.links == 0) continue;
    readOnly = onlyReads;
    return held;
  }
  throw RunTimeFailure(failure::cannotOpen, "The table " + displayPath(path) +
                                                " cannot be opened: other programs replace it again and again. Try "
                                                "again later.");
}

HeldFile openHeldKnown(const std::string& path, const platform::FileState& known) {
  HeldFile held{platform::current().openUnseen(path), known};
  lockForSharing(*held.file, Sharing::shared, path);
  return held;
}

Header readHeader(File& file, const std::string& displayName) {
  std::string bytes(kFirstRead, '\0');
  bytes.resize(file.readAt(0, bytes.data(), bytes.size()));
  const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
  if (bytes.size() == kFirstRead && littleEndian(at + 8, 2) + kDescriptor > kFirstRead) {
    bytes.resize(kLongestHeader);
    bytes.resize(file.readAt(0, bytes.data(), bytes.size()));
  }
  const std::uint64_t size = file.size();
  Header header = parseHeader(bytes, size, displayName);
  checkFirstRow(file, size, header, displayName);
  return header;
}

int codePageOf(const Header& header, const std::string& path) {
  const int marked = codePageOfMark(header.languageMark);
  if (marked != 0) return marked;
  const std::string named = partnerFile(path, "CPG");
  if (!named.empty()) {
    try {
      const int page = codePageOfName(platform::readWholeFile(named, kLongestPageName));
      if (page != 0) return page;
    } catch (const RunTimeFailure&) {
      // A partner that cannot be read names no code page.
    }
  }
  return namesAreUtf8(header.fields) ? kUtf8 : 1252;
}

Language languageOf(const std::string& path) {
  const Header header = readHeader(*platform::current().open(path, OpenMode::read), displayPath(path));
  return {header.languageMark, codePageOf(header, path)};
}

}  // namespace vantrelix::dbf

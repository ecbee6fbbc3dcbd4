#include "foundation/getINI.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

#include "foundation/IniFile.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

using platform::current;

constexpr std::int64_t kLongestWait = 5000;  // milliseconds
constexpr int kPause = 2;
// Far behind the text, so that no other program's read of it is in the way.
constexpr std::uint64_t kLockOffset = 0x7FFFFFFE;

std::string readFile(std::string_view file) {
  const std::string path = trim(file);
  if (path.empty()) return {};
  try {
    return platform::readWholeFile(current().findIgnoringCase(path));
  } catch (const RunTimeFailure&) {
    return {};  // a file that cannot be read is an empty file
  }
}

std::optional<std::string> readValue(std::string_view section, std::string_view key, std::string_view file) {
  return IniFile(readFile(file)).get(section, key);
}

std::string cutToBuffer(std::string_view value, std::size_t size) { return leftCharacters(value, size - 1); }

// Where a file stands, or where it will be made: each folder on the way in the case that it has.
std::string placeOf(const std::string& file) {
  const std::string path = current().fromMachine(file);
  std::string found = current().findIgnoringCase(path);
  if (current().state(found)) return found;
  const std::string folder = ExtractFolder(path);
  return folder.empty() ? path : current().findIgnoringCase(folder) + ExtractFileName(path);
}

// Changes the content; false where it cannot.
using Change = std::function<bool(IniFile&)>;

class Update {
 public:
  Update(const std::string& file, const Change& change)
      : file_(file), change_(change), deadline_(current().steadyMilliseconds() + kLongestWait) {}

  bool run() {
    do {
      const std::string path = placeOf(file_);
      const auto file = openExisting(path);
      const std::optional<bool> done = file ? changeExisting(*file, path) : create(path);
      if (done) return *done;
    } while (!expired());
    return false;
  }

 private:
  bool expired() const { return current().steadyMilliseconds() >= deadline_; }

  static std::unique_ptr<platform::File> openExisting(const std::string& path) {
    if (!current().state(path)) return nullptr;
    try {
      return current().open(path, platform::OpenMode::readWrite);
    } catch (const RunTimeFailure& failure) {
      if (failure.number() != failure::fileNotFound) throw;
      return nullptr;  // removed this very moment
    }
  }

  // Nothing where another program made the file first.
  std::optional<bool> create(const std::string& path) const {
    IniFile ini;
    if (!change_(ini)) return false;
    if (ini.bytes().empty()) return true;
    try {
      platform::createWholeFile(path, ini.bytes());
      return true;
    } catch (const RunTimeFailure& failure) {
      if (failure.number() != failure::fileExists) throw;
      return std::nullopt;
    }
  }

  // Nothing where another program replaced the file before the lock was had: the lock is then on a file that is gone.
  std::optional<bool> changeExisting(platform::File& file, const std::string& path) const {
    while (!file.tryLock(kLockOffset, 1, platform::LockKind::exclusive)) {
      if (expired()) return false;
      current().sleepMilliseconds(kPause);
    }
    const auto there = current().state(path);
    const platform::FileState locked = file.state();
    if (!there || !isSameFile(*there, locked)) return std::nullopt;
    IniFile ini(platform::readWholeFile(file, path));
    const std::string before = ini.bytes();
    if (!change_(ini)) return false;
    if (ini.bytes() != before) platform::replaceWholeFile(path, ini.bytes());
    return true;
  }

  const std::string& file_;
  const Change& change_;
  std::int64_t deadline_;
};

bool update(const std::string& file, const Change& change) {
  const std::string path = trim(file);
  if (path.empty()) return false;
  try {
    return Update(path, change).run();
  } catch (const RunTimeFailure&) {
    return false;
  }
}

// The number at the front of a text, as far as it goes, kept within 32 bits.
long leadingInteger(std::string_view text, int base) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
  std::int64_t number = 0;
  for (const char character : text) {
    const char upper = character >= 'a' && character <= 'f' ? static_cast<char>(character - 'a' + 'A') : character;
    const std::size_t digit = kDigits.substr(0, static_cast<std::size_t>(base)).find(upper);
    if (digit == std::string_view::npos) break;
    number = std::min(number * base + static_cast<std::int64_t>(digit), kLargest + 1);
  }
  return static_cast<long>(number);
}

long asInteger(std::string_view text) {
  constexpr long kLargest = std::numeric_limits<std::int32_t>::max();
  if (text.starts_with("0x") || text.starts_with("0X")) return std::min(leadingInteger(text.substr(2), 16), kLargest);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const long number = leadingInteger(text, 10);
  return negative ? -number : std::min(number, kLargest);
}

}  // namespace

std::string getPrivateProfileString(std::string_view section, std::string_view key, std::string_view fallback,
                                    std::size_t size, const std::string& file) {
  if (size == 0) return {};
  return cutToBuffer(readValue(section, key, file).value_or(trimRight(fallback)), size);
}

bool writePrivateProfileString(std::string_view section, std::string_view key, std::string_view value,
                               const std::string& file) {
  return update(file, [&](IniFile& ini) {
    ini.set(section, key, value);
    // A name that no INI file or not this one's code page can hold is not found again.
    return ini.get(section, key).has_value();
  });
}

long getPrivateProfileInt(std::string_view section, std::string_view key, long fallback, const std::string& file) {
  const auto value = readValue(section, key, file);
  return value && !value->empty() ? asInteger(*value) : fallback;
}

bool removePrivateProfileKey(std::string_view section, std::string_view key, const std::string& file) {
  return update(file, [&](IniFile& ini) {
    ini.removeKey(section, key);
    return true;
  });
}

bool removePrivateProfileSection(std::string_view section, const std::string& file) {
  return update(file, [&](IniFile& ini) {
    ini.removeSection(section);
    return true;
  });
}

void getINI(std::string_view section, std::string_view key, const std::string& file, std::string_view fallback,
            std::string& value) {
  value = getPrivateProfileString(section, key, fallback, kIniBuffer, file);
}

bool setINI(std::string_view section, std::string_view key, const std::string& file, std::string_view value) {
  return writePrivateProfileString(section, key, value, file);
}

ProfileSection::ProfileSection(std::string_view section, std::string_view file) {
  for (IniEntry& entry : IniFile(readFile(file)).entries(section)) {
    values_.emplace(IniFile::folded(entry.key), std::move(entry.value));
  }
}

std::string ProfileSection::get(std::string_view key, std::string_view fallback) const {
  const auto found = values_.find(IniFile::folded(key));
  return cutToBuffer(found == values_.end() ? trimRight(fallback) : found->second, kIniBuffer);
}

bool setINI(std::string_view section, const std::vector<IniEntry>& entries, const std::string& file) {
  return update(file, [&](IniFile& ini) {
    ini.set(section, entries);
    return true;
  });
}

std::string getINIStr(std::string_view section, std::string_view key, std::string_view fallback, std::string& file) {
  if (getLenTrim(file) == 0) file = getDefaultsINI();
  std::string value;
  getINI(section, key, file, fallback, value);
  return value;
}

std::string getINIStr(std::string_view section, std::string_view key, std::string_view fallback) {
  std::string file;
  return getINIStr(section, key, fallback, file);
}

bool getINIBool(std::string_view section, std::string_view key, std::string_view fallback, std::string file) {
  const std::string value = upperCase(trim(getINIStr(section, key, fallback, file)));
  return value == "TRUE" || value == "1" || value == "-1";
}

double getINIDbl(std::string_view section, std::string_view key, double fallback, std::string file) {
  return plainNumber(getINIStr(section, key, generalText(fallback), file)).value_or(0);
}

}  // namespace vantrelix

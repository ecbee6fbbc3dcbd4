#include "tables/tableSettings.h"

#include <algorithm>
#include <atomic>

#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "foundation/text.h"
#include "tables/DbfFile.h"

namespace vantrelix {

namespace {

constexpr const char* kSection = "Tables";
constexpr long kDefaultWait = 2000;
constexpr long kLongestWait = 600'000;

std::atomic<int> lockWaitMilliseconds{kDefaultWait};
std::atomic<bool> durableWrites{false};
std::atomic<bool> settingsRead{false};

}  // namespace

int DbfFile::lockWait() { return lockWaitMilliseconds; }
void DbfFile::setLockWait(int milliseconds) { lockWaitMilliseconds = milliseconds; }
bool DbfFile::durable() { return durableWrites; }
void DbfFile::setDurable(bool durable) { durableWrites = durable; }

void readTableSettings() {
  if (settingsRead) return;
  if (getLenTrim(findSuiteDir()) > 0) {
    const ProfileSection tables(kSection, getDefaultsINI());
    const std::string wait = trim(tables.get("LockWait", ""));
    if (!wait.empty() && wait.find_first_not_of("0123456789") == std::string::npos) {
      const long milliseconds = wait.size() > 9 ? kLongestWait : std::stol(wait);
      DbfFile::setLockWait(static_cast<int>(std::min(milliseconds, kLongestWait)));
    }
    const std::string durable = trim(tables.get("DurableWrites", ""));
    if (!durable.empty()) DbfFile::setDurable(getINIBool(kSection, "DurableWrites", "0"));
  }
  settingsRead = true;
}

void forgetTableSettings() { settingsRead = false; }

}  // namespace vantrelix

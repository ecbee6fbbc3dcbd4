#include "tables/indexFiles.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <string_view>
#include <vector>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "tables/partnerFile.h"

namespace vantrelix {

namespace {

constexpr std::string_view kExtensions[] = {"CDX", "IDX", "MDX", "NDX", "NTX"};

bool isFirstTime(const std::string& tablePath) {
  static std::mutex guard;
  static std::set<std::string> told;
  const std::lock_guard lock(guard);
  return told.insert(tablePath).second;
}

// Names of the index files, with commas between.
std::string indexFilesOf(const std::string& tablePath) {
  const std::string table = tablePath.substr(tablePath.find_last_of("\\/") + 1);
  std::vector<std::string> names = platform::current().list(ExtractFolderNoSlash(tablePath));
  std::sort(names.begin(), names.end());
  std::string found;
  for (const std::string& name : names) {
    const bool isIndex = std::any_of(std::begin(kExtensions), std::end(kExtensions), [&](std::string_view extension) {
      return equalIgnoringCase(name, withExtension(table, extension));
    });
    if (isIndex) found = AddALine(found, name, ", ");
  }
  return found;
}

}  // namespace

void tellOfIndexFiles(const std::string& tablePath) {
  if (!isFirstTime(tablePath)) return;
  try {
    const std::string names = indexFilesOf(tablePath);
    if (names.empty()) return;
    wrtTechSupNoMak("Table " + displayPath(tablePath) + ": its header names no index, but beside it stands " + names +
                    ", which is not kept up with its rows. Build it anew before it is used.");
  } catch (const RunTimeFailure&) {
  }
}

}  // namespace vantrelix

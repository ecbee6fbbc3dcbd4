// The run of an import filter over pattern files.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "import/ImportFormat.h"
#include "tables/Database.h"

namespace vantrelix {

enum class PreviewAnswer { add = 6, skip = 7, noPreview = 5, cancel = 2 };

// What a run needs from the outside, all of it optional.
struct ImportOwner {
  // The text of lblProgress. Waiting events run once behind it.
  std::function<void(const std::string& text)> progress;
  // True where the user has asked to stop; looked at between files.
  std::function<bool()> cancelled;
  // Shows one antenna before it is added; used while previews are on.
  std::function<PreviewAnswer(const std::string& caption, const ImportedAntenna& antenna)> preview;
  // Takes the preview's window away; called once, where the run ends. Must not throw.
  std::function<void()> unloadPreview;
};

// Why a file was passed over; none of these counts as an error.
enum class SkipReason { missing, packed, readBefore, runEnded };
std::string skipText(SkipReason reason);

struct ImportResult {
  std::int16_t ErrorCount = 0;
  long filesRead = 0;
  std::vector<std::string> failed;  // paths, each with a line break and the reason
  struct Skipped {
    std::string file;  // as it was given; blank names are not listed
    SkipReason reason;
  };
  std::vector<Skipped> skipped;
  struct Added {
    std::string id;
    std::string description;  // as the library holds it
    std::string file;
  };
  std::vector<Added> added;
};

// The library's counts in messages: "1,234".
inline constexpr const char* kCountFormat = "###,###,##0";

// A file of more bytes is read by no filter.
inline constexpr std::uint64_t kLongestImportFile = (std::uint64_t{1} << 31) - 1;

// Reads each file and appends its antenna to the library of the code `Mfg`. `files` holds full paths. Failures of a
// file are counted and logged and the run goes on; the told boxes are shown, "Import Errors" last. A log that cannot be
// written does not stop the run: the reason stands in the boxes and in `failed`.
ImportResult importFiles(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                         const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const std::vector<std::string>& files,
                         bool preview, const ImportOwner& owner = {});

}  // namespace vantrelix

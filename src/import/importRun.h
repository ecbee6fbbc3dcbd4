// The run of an import filter over pattern files.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "import/ImportFormat.h"
#include "import/importReport.h"
#include "tables/Database.h"

namespace vantrelix {

enum class PreviewAnswer { add = 6, skip = 7, noPreview = 5, cancel = 2 };

// What a run needs from the outside, all of it optional.
struct ImportOwner {
  // The text of lblProgress. Waiting events run once behind it.
  std::function<void(const std::string& text)> progress;
  // How many of the files have had their turn; told before each text.
  std::function<void(long done, long total)> filesDone;
  // True where the user has asked to stop; looked at between files.
  std::function<bool()> cancelled;
  // Shows one antenna before it is added; used while previews are on. What it throws is a failure of the antenna's
  // file.
  std::function<PreviewAnswer(const std::string& caption, const ImportedAntenna& antenna)> preview;
  // Takes the preview's window away; called once, where the run ends. Must not throw.
  std::function<void()> unloadPreview;
};

// The library's counts in messages: "1,234".
inline constexpr const char* kCountFormat = "###,###,##0";

// Reads each file and appends its antenna to the library of the code `Mfg`. `files` holds full paths. Failures of a
// file, and of its preview, are counted and logged and the run goes on; the told boxes are shown, "Import Errors" last,
// however the run ends. Words of a file are shown, in previews too, by as much as a message can show. An antenna that
// cannot be written whole is taken away again. A log that cannot be written does not stop the run: the reason stands in
// the boxes and in `failed`.
ImportResult importFiles(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                         const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD, const std::vector<std::string>& files,
                         bool preview, const ImportOwner& owner = {});

}  // namespace vantrelix

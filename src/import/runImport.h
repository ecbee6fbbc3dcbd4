// What an item of the import menu does.
#pragma once

#include <optional>
#include <string>

#include "import/importRun.h"

namespace vantrelix {

// Warns of a legacy format, shows the format's notice, asks for the files, beginning in the folder of the last time,
// and whether to preview each antenna, keeps the folder, and runs the filter over the files; the tables as importFiles
// takes them. A failure is told by ErrHand.
//
// Nothing where the warning was answered No: no table was touched. Else what the run did: nothing, where the dialog of
// files or the preview question was cancelled.
std::optional<ImportResult> runImport(const ImportFormat& format, const std::string& Mfg, const RecordsetPtr& rsAMS,
                                      const RecordsetPtr& rsAHD, const RecordsetPtr& rsAVD,
                                      const ImportOwner& owner = {});

}  // namespace vantrelix

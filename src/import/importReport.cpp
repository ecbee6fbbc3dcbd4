#include "import/importReport.h"

#include <limits>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/messages.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

void ImportReport::noteFailed(const std::string& path, const std::string& reason) {
  result_.failed.push_back(displayPath(path) + kLineBreak + reason);
}

void ImportReport::countError(const std::string& path, const std::string& reason) {
  if (result_.ErrorCount < std::numeric_limits<std::int16_t>::max()) ++result_.ErrorCount;
  noteFailed(path, reason);
  log("Error importing Antenna File " + displayPath(path) + kLineBreak + reason);
}

std::string ImportReport::log(const std::string& text) {
  try {
    wrtTechSupNoMak(text);
    return "";
  } catch (const RunTimeFailure& failure) {
    logFailure_ = kBlankLine + std::string("The log file could not be written:") + kLineBreak + modErrStr(failure);
    return logFailure_;
  }
}

void ImportReport::tellErrors() const {
  if (result_.ErrorCount <= 0) return;
  showInformation("Import Errors", "There were " + std::to_string(result_.ErrorCount) + " errors on the import files." +
                                       kBlankLine + "The files names were written to the log file" + kLineBreak +
                                       displayPath(GetTechSupFile()) + logFailure_);
}

std::string skipText(SkipReason reason) {
  switch (reason) {
    case SkipReason::missing:
      return "There is no such file, or its folder may not be read";
    case SkipReason::packed:
      return "A packed file is not read; unpack it and import what it holds";
    case SkipReason::readBefore:
      return "A file of this name was read before in this run";
    case SkipReason::runEnded:
      break;
  }
  return "The run was ended before this file";
}

}  // namespace vantrelix

#include "import/ImportFormat.h"
#include "import/generic.h"

namespace vantrelix {

const std::vector<ImportFormat>& importFormats() {
  static const std::vector<ImportFormat> formats = {genericFormat()};
  return formats;
}

const ImportFormat* findImportFormat(const std::string& name) {
  for (const ImportFormat& format : importFormats()) {
    if (format.name == name) return &format;
  }
  return nullptr;
}

}  // namespace vantrelix

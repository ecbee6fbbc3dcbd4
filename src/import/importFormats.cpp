#include "import/ImportFormat.h"
#include "import/generic.h"

namespace vantrelix {

namespace {

// A format with both cuts of one antenna in one file.
template <void (*Read)(TextLines&, ImportedAntenna&)>
void oneFile(ImportSource& source, ImportedAntenna& antenna) {
  Read(source.lines(), antenna);
}

const std::vector<FileFilter> kMsiAndText = {{".msi", "*.MSI"}, {".txt", "*.TXT"}};

}  // namespace

const std::vector<ImportFormat>& importFormats() {
  // clang-format off
  static const std::vector<ImportFormat> formats = {
      {"generic", "mnuImportGeneric", "Generic", "", "GENERIC Files to Read", "Import GENERIC", kMsiAndText,
       "Generic Format ANTENNA", ImportFormat::noPreviewEndsPreviews, oneFile<readGeneric>},
  };
  // clang-format on
  return formats;
}

const ImportFormat* findImportFormat(const std::string& name) {
  for (const ImportFormat& format : importFormats()) {
    if (format.name == name) return &format;
  }
  return nullptr;
}

}  // namespace vantrelix

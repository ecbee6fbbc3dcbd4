#include "import/importMenu.h"

namespace vantrelix {

namespace {

constexpr const char* kSeparator = "-";

const char* separatorBefore(bool legacy) { return legacy ? "mnuImportSepNSMA" : "mnuImportSepBeforeGeneric"; }

}  // namespace

void ImportMenu::add(const std::string& name, const std::string& caption) {
  addItem(held_.emplace_back(name, caption));
}

ImportMenu::ImportMenu() : Menu("mnuImport") {
  bool legacy = false;
  for (const ImportFormat& format : importFormats()) {
    if (legacy == format.legacyName.empty()) {
      legacy = !legacy;
      add(separatorBefore(legacy), kSeparator);
    }
    add(format.menuItem, format.menuCaption);
    held_.back().click.listen([this, &format] { chosen(format); });
  }
}

}  // namespace vantrelix

// The antenna editor on a library, never shown, for the commands that do what it does.
#pragma once

#include <memory>
#include <string>

#include "cli/Session.h"

namespace vantrelix {
class frmHDAntEditor;
}

namespace vantrelix::cli {

// The mode of an editor that may write; the other one is kLookupMode.
inline constexpr const char* kEditorMode = " ";

// Refused where the library is not whole, which the editor itself would make, or cannot be opened.
std::unique_ptr<frmHDAntEditor> openEditor(const Session& session, const std::string& argument, const char* mode);
// What is told of an antenna that the library does not have.
std::string notFoundText(const frmHDAntEditor& form, const std::string& id);

}  // namespace vantrelix::cli

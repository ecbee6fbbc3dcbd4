#include "cli/openEditor.h"

#include "antenna/makeAntFiles.h"
#include "cli/libraryArgument.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/extract.h"

namespace vantrelix::cli {

namespace {

// The editor would make what is missing of a library; a command that only looks at one must not.
void requireLibrary(const LibraryName& library) {
  for (const std::string& table :
       {library.stem, partnerTable(library.stem, "AHD"), partnerTable(library.stem, "AVD")}) {
    const std::string path = setPathName(library.folder, table + ".DBF");
    if (!tableFileExists(path)) throw Refused("The antenna library's table " + displayPath(path) + " was not found.");
  }
}

}  // namespace

std::unique_ptr<frmHDAntEditor> openEditor(const Session& session, const std::string& argument, const char* mode) {
  session.needSuite();
  const LibraryName library = libraryArgument(session, argument);
  requireLibrary(library);
  auto form = std::make_unique<frmHDAntEditor>();
  form->InitForm(setPathName(library.folder, library.stem + ".DBF"), "", mode, 0, library.stem, "");
  if (form->SessionResult == sessionResult::cancelled) throw Refused(session.lastBox());
  return form;
}

std::string notFoundText(const frmHDAntEditor& form, const std::string& id) {
  return "The specified antenna was not found: \"" + id + "\" in " + form.AMSName;
}

}  // namespace vantrelix::cli

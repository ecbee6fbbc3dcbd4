// A user who looks antennas up: chooses a library in the list of libraries, then an antenna in the editor.
#pragma once

#include <functional>
#include <string>

#include "aliases/frmFileAlias.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/getINI.h"
#include "foundation/suitePaths.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

class LibraryUser {
 public:
  using Act = std::function<void(frmHDAntEditor&)>;

  // In the editor the user does `act` and leaves; the list of libraries gives the first.
  static void comesTo(ScriptedDesktop& screen, const Act& act) {
    screen.onModal["frmFileAlias"] = [](Form& shown) {
      auto& picker = dynamic_cast<frmFileAlias&>(shown);
      picker.TDBGrid1.userSelectRow(0);
      picker.Command1[frmFileAlias::continuing].userClick();
    };
    screen.onModal["frmHDAntEditor"] = [act](Form& shown) { act(dynamic_cast<frmHDAntEditor&>(shown)); };
    // Whether an antenna is sound is the editor's to know.
    setINI("HDAntenna", "SkipValid", getDefaultsINI(), "-1");
  }
  // Takes the antenna of that row.
  static void takes(ScriptedDesktop& screen, int row) {
    comesTo(screen, [row](frmHDAntEditor& editor) {
      editor.TDBGridAMS.userSelectRow(row);
      editor.Command1[frmHDAntEditor::continuing].userClick();
    });
  }
  static void cancels(ScriptedDesktop& screen) {
    comesTo(screen, [](frmHDAntEditor& editor) { editor.Command1[frmHDAntEditor::cancelling].userClick(); });
  }
};

// What an editor was opened with.
struct EditorOpened {
  std::string mode = "(never)", freq, id, file;

  // The user looks, and cancels.
  void watch(ScriptedDesktop& screen) {
    LibraryUser::comesTo(screen, [this](frmHDAntEditor& editor) {
      mode = editor.FormMode;
      freq = editor.Freq;
      const int row = editor.TDBGridAMS.currentRow();
      id = row < 0 ? "" : editor.TDBGridAMS.value(row, "ATYPE_ID").asText();
      editor.Command1[frmHDAntEditor::cancelling].userClick();
    });
    screen.onModal["frmFileAlias"] = [this, choose = screen.onModal["frmFileAlias"]](Form& shown) {
      file = dynamic_cast<frmFileAlias&>(shown).sFile;
      choose(shown);
    };
  }
};

}  // namespace vantrelix::test

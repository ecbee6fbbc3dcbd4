#include "editor/antImport.h"

#include <exception>

#include "antenna/makeAntFiles.h"
#include "dialogs/frmProgress.h"
#include "editor/frmHDAntEditor.h"
#include "editor/selectedAntenna.h"
#include "foundation/errHand.h"
#include "foundation/procedures.h"
#include "import/importPreview.h"
#include "import/runImport.h"
#include "ui/Desktop.h"

namespace vantrelix {

void AntImport(frmHDAntEditor& form) { desktop().popupMenu(form.mnuImport, &form.Command1[frmHDAntEditor::importing]); }

void importInto(frmHDAntEditor& form, const ImportFormat& format) {
  const Procedure guard(procedure::AntImport);
  const DisabledMeanwhile once(form.Command1[frmHDAntEditor::importing]);
  try {
    SetFlag(100);
    const LibraryTables tables = openLibraryTables(form.folder(), form.Mfg);
    {
      ProgressWindow progress(format.dialogTitle);
      ImportOwner owner;
      long done = 0;
      long total = 0;
      owner.filesDone = [&](long files, long all) {
        done = files;
        total = all;
      };
      owner.progress = [&](const std::string& text) {
        form.lblProgress.setCaption(text);
        progress.report(text, done, total);
      };
      owner.cancelled = [&] { return progress.cancelled(); };
      SetFlag(200);
      runImport(format, form.Mfg, tables.rsAMS, tables.rsAHD, tables.rsAVD, withPreviews(owner));
    }
    form.lblProgress.setCaption("");
    SetFlag(300);
    form.DataAMS.Requery();
    form.MakeMyCaption();
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, format.dialogTitle);
  } catch (const std::exception& failure) {
    ErrHand(failure, format.dialogTitle);
  }
}

}  // namespace vantrelix

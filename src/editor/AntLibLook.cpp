#include "editor/AntLibLook.h"

#include <exception>

#include "aliases/modGetOpenFileAlias.h"
#include "editor/frmHDAntEditor.h"
#include "foundation/errHand.h"
#include "foundation/procedures.h"
#include "foundation/suitePaths.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr const char* kTitle = "Antenna Library to Open";

OpenFileAlias chooseLibrary(const std::string& file, bool allowNew) {
  OpenFileAlias library;
  library.sPrefix = "AMS";
  library.sPath = getAntennasPath();
  library.sFile = file;
  library.sTitle = kTitle;
  library.bAllowNew = allowNew;
  modGetOpenFileAliasNoDBClass(library);
  return library;
}

bool lookUp(double Freq, std::string& FileName, std::string& ID, std::string& Desc, const std::string& Mode) {
  SetFlag(100);
  const OpenFileAlias library = chooseLibrary(FileName, Mode != kLookupMode);
  if (library.bCancel) return false;
  SetFlag(200);
  frmHDAntEditor form;
  form.InitForm(library.sFile, library.vAlias, Mode, Freq, library.vAlias, ID);
  if (form.SessionResult == sessionResult::cancelled) return false;
  SetFlag(300);
  desktop().showModal(form);
  SetFlag(400);
  form.unload();
  if (form.SessionResult == sessionResult::cancelled) return false;
  FileName = library.sFile;
  ID = form.SelID;
  Desc = form.SelAntenna;
  return true;
}

}  // namespace

bool AntLibLook(double Freq, std::string& FileName, std::string& ID, std::string& Desc, const std::string& Mode) {
  const Procedure guard(procedure::AntLibLook);
  try {
    return lookUp(Freq, FileName, ID, Desc, Mode);
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, kTitle);
  } catch (const std::exception& failure) {
    ErrHand(failure, kTitle);
  }
  return false;
}

}  // namespace vantrelix

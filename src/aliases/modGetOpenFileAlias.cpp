#include "aliases/modGetOpenFileAlias.h"

#include "aliases/frmFileAlias.h"
#include "foundation/errHand.h"
#include "foundation/procedures.h"
#include "foundation/text.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

void handOver(const OpenFileAlias& arguments, frmFileAlias& form) {
  SetFlag(200);
  form.sPrefix = arguments.sPrefix;
  SetFlag(300);
  form.sPath = arguments.sPath;
  SetFlag(400);
  form.sFile = arguments.sFile;
  SetFlag(500);
  form.sExt = arguments.sExt;
  SetFlag(600);
  form.bOpt1 = arguments.bOpt1;
  SetFlag(700);
  form.bOpt2 = arguments.bOpt2;
  SetFlag(800);
  form.bOpt3 = arguments.bOpt3;
  SetFlag(900);
  form.bOpt4 = arguments.bOpt4;
  SetFlag(1000);
  form.vOpt = arguments.vOpt;
  SetFlag(1100);
  form.vReserved = arguments.vReserved;
}

void choose(OpenFileAlias& arguments) {
  frmFileAlias form;
  form.setCaption(getLenTrim(arguments.sTitle) > 0 ? arguments.sTitle : "Select Antenna Library");
  handOver(arguments, form);
  SetFlag(1300);
  form.InitForm();
  SetFlag(1310);
  form.InitGrid();
  SetFlag(1320);
  form.GetFiles();
  form.allowNew(arguments.bAllowNew);
  SetFlag(1400);
  form.FindAliasMatch(arguments.sFile);
  // Once more when it is known how many rows are in view.
  form.activated.listen([&] {
    SetFlag(1500);
    form.FindAliasMatch(arguments.sFile);
  });
  desktop().showModal(form);
  arguments.bCancel = form.bCancel;
  if (!form.bCancel) {
    arguments.sFile = trim(form.sFile);
    arguments.vAlias = form.sDesc;
  }
  form.close();
}

}  // namespace

void modGetOpenFileAliasNoDBClass(OpenFileAlias& arguments) {
  const Procedure guard(procedure::modGetOpenFileAliasNoDBClass);
  arguments.bCancel = true;
  try {
    choose(arguments);
  } catch (const std::exception& failure) {
    ErrHand(failure);
  }
}

}  // namespace vantrelix

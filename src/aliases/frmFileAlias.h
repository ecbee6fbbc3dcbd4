// The window in which a library is chosen by its description; see modGetOpenFileAlias.h, which shows it.
//
// Its list is made for one showing. The window's place and size and the widths of the columns stand in section "CONFIG"
// of the user's defaults file; the key "frmFileAlias Grid" holds the grid's width and then each column's, parted by "|"
// (twips).
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "aliases/aliasStore.h"
#include "foundation/Value.h"
#include "ui/DataGrid.h"
#include "ui/Form.h"
#include "ui/widgets.h"

namespace vantrelix {

class frmFileAlias : public Form {
 public:
  frmFileAlias();

  // What it is opened with. The first three letters of the prefix name the family; any other prefix leaves it without
  // files. A blank path means the family's own folder. The rest is kept for whoever reads it.
  std::string sPrefix, sPath, sExt;
  bool bOpt1 = false, bOpt2 = false, bOpt3 = false, bOpt4 = false;
  Value vOpt, vReserved;
  // The name to preselect, then the name chosen: a single blank where it was cancelled.
  std::string sFile;
  // The description of the chosen file.
  std::string sDesc;
  bool bCancel = true;

  Frame Frame1{"Frame1"};
  DataGrid TDBGrid1{"TDBGrid1"};
  Frame fraPath{"fraPath"};
  Label lblPath{"lblPath"};
  CommandButton cmdNew{"cmdNew"};
  enum Button : std::size_t { cancelling, continuing };
  std::array<CommandButton, 2> Command1{CommandButton{"Command1_0"}, CommandButton{"Command1_1"}};

  // The steps of opening, in this order. GetFiles fails where the folder cannot be read.
  void InitForm();
  void InitGrid();
  void GetFiles();
  void allowNew(bool allow);
  // Goes to the row of a file, whatever the case of its name, and selects it. Where it is not in the list no row is
  // selected or current, and "Continue" finds nothing selected until the user has gone to one.
  bool FindAliasMatch(const std::string& file);
  // The window is gone: writes the descriptions unless it was cancelled, and keeps place, size and widths.
  void close();

  // The user wants the current row, if there is one, out of the list.
  void userRemoveRow();

 protected:
  void resize() override;

 private:
  void nameWidgets();
  void listen();
  void newFile();
  void cancel();
  void choose();
  void askBeforeDelete(bool& refused);
  void rowChanged();
  void selectRow(int row);
  int rowOfFile(const std::string& file) const;
  std::string cell(int row, const char* field) const;
  std::string folder() const;
  std::vector<LibraryEntry> entries() const;
  void saveGrid() const;

  const AliasFamily* family_ = nullptr;
  std::optional<AliasStore> store_;
  std::shared_ptr<ArrayRows> list_;
  std::string lastRowFile_;
};

}  // namespace vantrelix

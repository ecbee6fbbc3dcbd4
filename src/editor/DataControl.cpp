#include "editor/DataControl.h"

#include <memory>

#include "editor/RecordsetRows.h"

namespace vantrelix {

void DataControl::Refresh() {
  RecordsetPtr opened = DBEngine::OpenDatabase(DatabaseName)->OpenRecordset(RecordSource);
  recordset_ = std::move(opened);
  const GridHold hold(grid_);
  grid_.setRows(std::make_shared<RecordsetRows>(recordset_));
  grid_.leaveRows();
}

void DataControl::Requery() {
  if (!recordset_) return;
  recordset_->Requery();
  grid_.refresh();
}

void DataControl::clear() {
  recordset_.reset();
  grid_.setRows(nullptr);
}

int DataControl::FindFirst(std::string_view criterion) {
  if (!recordset_) return -1;
  recordset_->FindFirst(criterion);
  return recordset_->NoMatch() ? -1 : static_cast<int>(recordset_->AbsolutePosition());
}

std::string DataControl::cut(std::string_view field, std::string_view text) const {
  return recordset_ ? recordset_->Fields(field).cut(text) : std::string(text);
}

}  // namespace vantrelix

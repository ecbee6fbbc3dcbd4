#include "tables/AddingAlone.h"

#include "tables/RecordsetState.h"

namespace vantrelix {

AddingAlone::AddingAlone(Recordset& cursor) {
  cursor.state().requireUpdatable();
  table_ = cursor.state().query->file();
  table_->beginAdding();
}

AddingAlone::~AddingAlone() { table_->endAdding(); }

}  // namespace vantrelix

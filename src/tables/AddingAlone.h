// Finding what a new row depends on, such as its ID, and adding the row, with nobody else adding any in between.
#pragma once

#include <memory>

#include "tables/Recordset.h"

namespace vantrelix {

class DbfFile;

// Keeps others from adding rows to a cursor's table for as long as it lives: an ID that GenNewID_RS finds meanwhile is
// free until the cursor has a row with it. Others read and change rows. One at a time of a cursor, which may end before
// it.
class AddingAlone {
 public:
  // 3211 where another adds rows for longer than DbfFile::lockWait(), else what Update fails with behind AddNew.
  explicit AddingAlone(Recordset& cursor);
  ~AddingAlone();
  AddingAlone(const AddingAlone&) = delete;
  AddingAlone& operator=(const AddingAlone&) = delete;

 private:
  std::shared_ptr<DbfFile> table_;
};

}  // namespace vantrelix

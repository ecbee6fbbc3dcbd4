#include "antenna/RowsAdded.h"

#include <exception>
#include <utility>

#include "platform/RunTimeFailure.h"

namespace vantrelix {

RowsAdded::RowsAdded(RecordsetPtr cursor) : cursor_(std::move(cursor)) {
  if (cursor_ && !cursor_->isOpen()) cursor_.reset();
  if (cursor_) before_ = cursor_->rowCount();
}

void RowsAdded::takeAway() {
  if (!cursor_ || !cursor_->isOpen()) return;
  std::exception_ptr failed;
  for (long place = cursor_->rowCount(); place > before_; --place) {
    try {
      cursor_->setAbsolutePosition(place - 1);
      cursor_->Delete();
      cursor_->MoveNext();  // with which the row leaves the cursor
    } catch (const RunTimeFailure&) {
      failed = std::current_exception();
    }
  }
  if (failed) std::rethrow_exception(failed);
}

}  // namespace vantrelix

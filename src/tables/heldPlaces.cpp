#include "tables/heldPlaces.h"

#include "foundation/extract.h"

namespace vantrelix::dbf {

HeldPlaces::HeldPlaces(const std::string& path)
    : file_(platform::current().open(path, platform::OpenMode::read)),
      low_(*file_, kLowPlaces, platform::LockKind::shared, displayPath(path)) {
  if (file_->size() > kLowPlaces.length) {
    high_.emplace(*file_, kHighPlaces, platform::LockKind::shared, displayPath(path));
  }
}

}  // namespace vantrelix::dbf

#include "tables/EditingMark.h"

#include "foundation/extract.h"
#include "tables/dbfLocks.h"
#include "tables/dbfOpening.h"

namespace vantrelix {

// A writer's lock, kept: whoever denies writing finds a writer at work that doesn't end.
struct EditingMark::Held {
  Held(std::unique_ptr<platform::File> opened, const std::string& path)
      : file(std::move(opened)),
        lock(*file, dbf::kDenyWriteLock, platform::LockKind::shared, "'" + displayPath(path) + "'") {}

  std::unique_ptr<platform::File> file;
  dbf::HeldLock lock;
};

EditingMark::EditingMark(const std::string& path) {
  const std::string found = platform::current().findIgnoringCase(path);
  bool readOnly = false;
  held_ = std::make_unique<Held>(dbf::openHeld(found, Sharing::shared, readOnly).file, found);
}

EditingMark::~EditingMark() = default;

}  // namespace vantrelix

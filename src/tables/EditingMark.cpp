#include "tables/EditingMark.h"

#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfLocks.h"
#include "tables/dbfOpening.h"

namespace vantrelix {

// A writer's lock, kept: whoever denies writing finds a writer at work that doesn't end. It is taken exclusively first,
// so that a second mark finds the first one, and then shared in one step: nobody gets between the two.
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
  held_ = std::make_unique<Held>(dbf::openHeld(found, Sharing::denyWrite, readOnly).file, found);
}

std::unique_ptr<EditingMark> EditingMark::unlessInUse(const std::string& path) {
  try {
    return std::make_unique<EditingMark>(path);
  } catch (const RunTimeFailure& failure) {
    if (failure.number() != failure::cannotOpen && failure.number() != failure::locked) throw;
    return nullptr;
  }
}

EditingMark::~EditingMark() = default;

}  // namespace vantrelix

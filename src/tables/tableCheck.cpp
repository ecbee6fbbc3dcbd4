#include "tables/tableCheck.h"

#include <optional>

#include "platform/RunTimeFailure.h"
#include "tables/dbfOpening.h"
#include "tables/layoutCheck.h"

namespace vantrelix {

TableCheck checkTable(const std::string& path, const CheckProgress& progress) {
  TableCheck check;
  const std::string found = platform::current().findIgnoringCase(path);
  bool readOnly = true;
  const auto file = dbf::openHeld(found, Sharing::shared, readOnly).file;
  unsigned char version = 0;
  file->readAt(0, &version, 1);
  check.version = version;
  std::optional<dbf::TableLayout> layout;
  try {
    std::optional<dbf::HeldLock> header;
    layout = dbf::findLayout(*file, found, header);
  } catch (const RunTimeFailure& refusal) {
    if (refusal.number() != failure::damagedTable) throw;
    check.faults.add(FaultKind::refused, refusal.description(), FaultList::Place{std::nullopt, "", 0});
    return check;
  }
  dbf::checkLayout(*file, *layout, progress, check);
  return check;
}

}  // namespace vantrelix

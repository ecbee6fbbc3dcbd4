// Any bytes as a damaged table, and as its memo file: looked through, and recovered where that can be. What was
// recovered has no fault but bytes of a foreign code page, opens, holds the rows that it was said to hold, and comes
// out of another recovery as it went in. The damaged files stay as they are.
#include <cstdlib>

#include "tableInput.h"
#include "tables/DbfFile.h"
#include "tables/tableRecovery.h"

namespace {

using namespace vantrelix;

void requireSound(const std::string& path) {
  const TableCheck check = checkTable(path);
  for (const auto& [kind, total] : check.faults.totals()) {
    if (kind != FaultKind::textBytes) std::abort();
  }
}

std::string contentOf(const std::string& path) {
  return platform::current().fileExists(path) ? platform::readWholeFile(path) : std::string();
}

void recover() {
  const std::string before = contentOf(test::kTable) + contentOf("/m/T.FPT");
  TableRecovery result;
  const bool recovered = test::attempt([&] { result = recoverTable(test::kTable, "/m/N.DBF"); });
  if (contentOf(test::kTable) + contentOf("/m/T.FPT") != before) std::abort();
  if (!recovered) {
    if (platform::current().fileExists("/m/N.DBF")) std::abort();
    return;
  }
  requireSound("/m/N.DBF");
  if (DbfFile::open("/m/N.DBF", true)->recordCount() != result.rows + result.deleted) std::abort();
  const TableRecovery again = recoverTable("/m/N.DBF", "/m/O.DBF");
  if (again.repairedValues != 0 || contentOf("/m/N.DBF") != contentOf("/m/O.DBF")) std::abort();
  if (contentOf("/m/N.FPT") + contentOf("/m/N.DBT") != contentOf("/m/O.FPT") + contentOf("/m/O.DBT")) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::memoryWith(data, size);
  test::attempt([] { checkTable(test::kTable); });
  recover();
  return 0;
}

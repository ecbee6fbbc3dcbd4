// Any bytes as a table, and as its memo file: opened and read whole, or refused with a failure of the library's own
// kind.
#include <cstdlib>
#include <vector>

#include "tableInput.h"
#include "tables/DbfFile.h"

namespace {

using namespace vantrelix;

void readAll() {
  const auto table = DbfFile::open(test::kTable, true);
  std::uint32_t rows = 0;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    for (std::size_t field = 0; field < table->fields().size(); ++field) static_cast<void>(table->value(record, field));
    return ++rows < 64;
  });
  if (rows > table->recordCount()) std::abort();
}

// A memo field that takes a text gives it back.
void putMemos(DbfFile& table, std::vector<unsigned char>& record) {
  for (std::size_t field = 0; field < table.fields().size(); ++field) {
    if (table.fields()[field].type != 'M') continue;
    const bool taken = test::attempt([&] { table.put(record.data(), field, "A note"); });
    if (taken && table.value(record.data(), field) != Value("A note")) std::abort();
  }
}

// A table that takes a row has one more, and only then.
void writeAll() {
  const auto table = DbfFile::open(test::kTable);
  const std::uint32_t before = table->recordCount();
  std::vector<unsigned char> record = table->blankRecord();
  putMemos(*table, record);
  if (table->append(record.data()) != before || table->recordCount() != before + 1) std::abort();
  table->markDeleted(before);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::memoryWith(data, size);
  test::attempt(readAll);
  test::attempt(writeAll);
  return 0;
}

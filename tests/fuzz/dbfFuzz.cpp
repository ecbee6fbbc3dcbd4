// Any bytes as a table, and the same as its memo file: opened and read whole, or refused with a failure of the
// library's own kind. The last two bytes tell how many before them are the memo file.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

#include "foundation/suitePaths.h"
#include "platform/RunTimeFailure.h"
#include "tables/DbfFile.h"

namespace {

// A folder of this process, on a memory disk where there is one.
const std::filesystem::path& folder() {
  struct Folder {
    std::filesystem::path path;
    Folder() {
      const std::filesystem::path memory = "/dev/shm";
      const auto base = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
      path = base / ("vantrelix-fuzz-" + std::to_string(::getpid()));
      std::filesystem::create_directory(path);
      vantrelix::setSuiteDir(path.string());
    }
    ~Folder() {
      std::error_code ignored;
      std::filesystem::remove_all(path, ignored);
    }
  };
  static const Folder made;
  return made.path;
}

void write(const char* name, const char* bytes, std::size_t count) {
  std::ofstream(folder() / name, std::ios::binary).write(bytes, static_cast<std::streamsize>(count));
}

void readAll(const std::string& path) {
  const auto table = vantrelix::DbfFile::open(path, true);
  std::uint32_t rows = 0;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    for (std::size_t field = 0; field < table->fields().size(); ++field) static_cast<void>(table->value(record, field));
    return ++rows < 64;
  });
  if (rows > table->recordCount()) std::abort();
}

// A table that takes a row has one more, and only then.
void writeAll(const std::string& path) {
  const auto table = vantrelix::DbfFile::open(path);
  const std::uint32_t before = table->recordCount();
  if (table->append(table->blankRecord().data()) != before || table->recordCount() != before + 1) std::abort();
  table->markDeleted(before);
}

template <class Work>
void attempt(const Work& work) {
  try {
    work();
  } catch (const vantrelix::RunTimeFailure&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto* bytes = reinterpret_cast<const char*>(data);
  std::size_t memo = size < 2 ? 0 : data[size - 2] | static_cast<std::size_t>(data[size - 1]) << 8;
  if (memo + 2 > size) memo = 0;
  const std::size_t table = memo == 0 ? size : size - 2 - memo;
  write("T.DBF", bytes, table);
  write("T.FPT", bytes + table, memo);
  write("T.DBT", bytes + table, memo);
  const std::string path = (folder() / "T.DBF").string();
  attempt([&] { readAll(path); });
  attempt([&] { writeAll(path); });
  return 0;
}

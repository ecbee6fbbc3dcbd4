#include "support/TempFolder.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace vantrelix::test {

namespace fs = std::filesystem;

namespace {

fs::path freshFolder() {
  static std::atomic<unsigned> count{0};
  const fs::path base = fs::temp_directory_path();
  std::random_device random;
  for (;;) {
    fs::path candidate = base / ("vantrelix-test-" + std::to_string(random()) + "-" + std::to_string(++count));
    if (fs::create_directory(candidate)) return candidate;
  }
}

std::string withBackslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

}  // namespace

TempFolder::TempFolder() : path_(withBackslashes(freshFolder().string())) {}

TempFolder::~TempFolder() {
  std::error_code ignored;
  for (const auto& entry : fs::recursive_directory_iterator(machine(), ignored)) {
    if (entry.is_directory(ignored)) fs::permissions(entry.path(), fs::perms::owner_all, ignored);
  }
  fs::permissions(machine(), fs::perms::owner_all, ignored);
  fs::remove_all(machine(), ignored);
}

std::string TempFolder::file(std::string_view name) const { return path_ + "\\" + withBackslashes(std::string(name)); }

std::string TempFolder::machine(std::string_view name) const {
  std::string result = path_;
  if (!name.empty()) result += "\\" + std::string(name);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

std::string TempFolder::write(std::string_view name, std::string_view bytes) const {
  const fs::path path = machine(name);
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << bytes;
  return file(name);
}

std::string TempFolder::read(std::string_view name) const { return readMachineFile(machine(name)); }

bool TempFolder::exists(std::string_view name) const { return fs::exists(machine(name)); }

std::string readMachineFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string realData(std::string_view folder) {
  const fs::path path = fs::path(VANTRELIX_SOURCE_DIR) / ".." / "shared" / "realdata" / folder;
  return fs::exists(path) ? path.lexically_normal().string() : std::string();
}

}  // namespace vantrelix::test

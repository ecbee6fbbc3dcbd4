// Every test of this program changes files in folders of its own alone: a call that would change any other fails the
// test that makes it. Files that tests share, or that lie beside the program, would let one run disturb another.
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>

#include "platform/FaultPlatform.h"

namespace vantrelix {
namespace {

using platform::File;
using platform::OpenMode;

class OwnFoldersOnly : public platform::FaultPlatform {
 public:
  OwnFoldersOnly()
      : FaultPlatform(platform::operatingSystem()), allowed_(std::filesystem::temp_directory_path() / "") {}

  std::unique_ptr<File> open(const std::string& path, OpenMode mode) override {
    if (mode == OpenMode::read) return platform::operatingSystem().open(path, mode);
    check(path);
    return platform::operatingSystem().open(path, mode);
  }
  void rename(const std::string& from, const std::string& to) override {
    check(from);
    check(to);
    platform::operatingSystem().rename(from, to);
  }
  void renameNew(const std::string& from, const std::string& to) override {
    check(from);
    check(to);
    platform::operatingSystem().renameNew(from, to);
  }
  void remove(const std::string& path) override {
    check(path);
    platform::operatingSystem().remove(path);
  }
  void makeFolder(const std::string& path) override {
    if (!folderExists(path)) check(path);
    platform::operatingSystem().makeFolder(path);
  }

 private:
  void check(const std::string& path) const {
    platform::Platform& system = platform::operatingSystem();
    const std::string machine = system.toMachine(system.absolute(path));
    if (machine.rfind(allowed_.string(), 0) == 0) return;
    ADD_FAILURE() << "a file outside the test's own folders would be changed: " << machine;
    throw RunTimeFailure(failure::permissionDenied, "Outside the test's folders: " + machine);
  }

  std::filesystem::path allowed_;
};

class OwnFolders : public testing::Environment {
 public:
  void SetUp() override { substitute_ = std::make_unique<platform::Substitute>(guard_); }
  void TearDown() override { substitute_.reset(); }

 private:
  OwnFoldersOnly guard_;
  std::unique_ptr<platform::Substitute> substitute_;
};

[[maybe_unused]] const auto* const environment = testing::AddGlobalTestEnvironment(new OwnFolders);

}  // namespace
}  // namespace vantrelix

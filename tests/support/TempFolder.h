// A folder of its own for one test, removed with everything in it.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix::test {

class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  // The folder in the library's form, without a trailing backslash, and a path in it.
  const std::string& path() const { return path_; }
  std::string file(std::string_view name) const;
  // The same in the machine's form, for std::filesystem and other programs.
  std::string machine(std::string_view name = "") const;

  // Writes and reads bytes of a file in it.
  std::string write(std::string_view name, std::string_view bytes) const;  // gives file(name)
  std::string read(std::string_view name) const;
  bool exists(std::string_view name) const;

 private:
  std::string path_;
};

// Bytes of a file given by a machine path; fails the test where it cannot be read.
std::string readMachineFile(const std::string& path);

// The folder of the shared real files, in the machine's form, or blank where it is not there.
std::string realData(std::string_view folder);

}  // namespace vantrelix::test

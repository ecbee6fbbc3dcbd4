// A disk that does not give some bytes of a file, or ends the file before them.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"

namespace vantrelix::test {

class BadDisk : public platform::FaultPlatform {
 public:
  BadDisk() : FaultPlatform(platform::operatingSystem()) {}

  std::string name;  // at the end of the paths of the files that are concerned
  std::uint64_t first = 0;
  std::uint64_t end = 0;  // behind the last byte that cannot be read
  bool cutsOff = false;   // no failure, but the file ends at the first of them
  int failures = 0;

  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    auto file = FaultPlatform::open(path, mode);
    if (!path.ends_with(name)) return file;
    return std::make_unique<BadFile>(std::move(file), *this);
  }

 private:
  class BadFile : public platform::ForwardingFile {
   public:
    BadFile(std::unique_ptr<File> real, BadDisk& disk) : ForwardingFile(std::move(real)), disk_(disk) {}
    std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
      const std::uint64_t readable = disk_.first - std::min(disk_.first, offset);
      if (offset < disk_.end && offset + count > disk_.first) {
        if (disk_.cutsOff) return real_->readAt(offset, buffer, std::min<std::uint64_t>(count, readable));
        ++disk_.failures;
        throw RunTimeFailure(failure::deviceIO, "The device fails at " + disk_.name + ".");
      }
      return real_->readAt(offset, buffer, count);
    }

   private:
    BadDisk& disk_;
  };
};

}  // namespace vantrelix::test

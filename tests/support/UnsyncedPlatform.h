// A machine that takes no time to bring anything to its disk: for tests that make and mend hundreds of tables.
#pragma once

#include <memory>
#include <string>

#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"

namespace vantrelix::test {

class UnsyncedPlatform : public platform::FaultPlatform {
 public:
  UnsyncedPlatform() : FaultPlatform(platform::operatingSystem()) {}

  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    return std::make_unique<UnsyncedFile>(FaultPlatform::open(path, mode));
  }
  void syncFolder(const std::string&) override {}

 private:
  class UnsyncedFile : public platform::ForwardingFile {
   public:
    using ForwardingFile::ForwardingFile;
    void sync() override {}
  };
};

}  // namespace vantrelix::test

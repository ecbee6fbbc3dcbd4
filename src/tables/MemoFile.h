// The file of long texts beside a table: .DBT of dBase III and IV, .FPT of FoxPro.
//
// Read-only. Every length is checked against the file before anything is allocated.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Platform.h"

namespace vantrelix {

enum class MemoKind {
  dbase3,  // blocks of 512 bytes; a text ends at 0x1A
  dbase4,  // FF FF 08 00 and the length, little endian; a block without them is read as dBase III
  foxpro,  // kind and length, big endian
};

class MemoFile {
 public:
  // Throws as Platform::open does; 3343 where the file is shorter than its header.
  MemoFile(const std::string& path, MemoKind kind);
  ~MemoFile();
  MemoFile(const MemoFile&) = delete;
  MemoFile& operator=(const MemoFile&) = delete;

  // The bytes of the text that begins in that block (above 0). 3343 where it lies outside the file or its length does.
  std::string read(std::uint32_t block);
  std::uint32_t blockSize() const { return blockSize_; }

  // Makes an empty FoxPro memo file, written under a temporary name and renamed.
  static void create(const std::string& path);

 private:
  std::string readUntilMark(std::uint64_t offset, std::uint64_t fileSize);
  std::string readCounted(std::uint64_t offset, std::uint64_t length, std::uint64_t fileSize);

  std::string path_;
  MemoKind kind_;
  std::uint32_t blockSize_ = 512;
  std::unique_ptr<platform::File> file_;
};

}  // namespace vantrelix

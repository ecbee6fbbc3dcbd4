// The file of long texts beside a table: .DBT of dBase III and IV, .FPT of FoxPro.
//
// Every length is checked against the file before anything is allocated. Texts are only ever added, in blocks of their
// own behind all others: a text once written stays as it is, whoever reads it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Platform.h"

namespace vantrelix {

enum class MemoKind {
  dbase3,  // blocks of 512 bytes; a text ends at 0x1A
  dbase4,  // FF FF 08 00 and the length, little endian; a block without them is read as dBase III
  foxpro,  // kind and length, big endian
};

// Where a text lies in its file.
struct MemoExtent {
  std::uint32_t kind = 1;    // FoxPro: 0 a picture, 1 a text, others are objects
  std::uint64_t offset = 0;  // of the first byte of the text
  std::uint64_t length = 0;  // of the text
  std::uint64_t end = 0;     // behind its last byte and its end mark
};

class MemoFile {
 public:
  // Throws as Platform::open does; 3343 where the file is shorter than its header.
  MemoFile(const std::string& path, MemoKind kind, platform::OpenMode mode = platform::OpenMode::read);
  ~MemoFile();
  MemoFile(const MemoFile&) = delete;
  MemoFile& operator=(const MemoFile&) = delete;

  // The bytes of the text that begins in that block (above 0). 3343 where it lies outside the file or its length does.
  std::string read(std::uint32_t block);
  // Where that text lies; 3343 as read.
  MemoExtent find(std::uint32_t block);
  // Reads bytes of the file, for texts that are too long to be read whole; fewer only at its end.
  std::size_t readAt(std::uint64_t offset, void* bytes, std::size_t count) {
    return file_->readAt(offset, bytes, count);
  }

  const std::string& path() const { return path_; }
  MemoKind kind() const { return kind_; }
  std::uint32_t blockSize() const { return blockSize_; }
  std::uint64_t size();
  // The block that the header names as the next one to write to.
  std::uint32_t nextFree();

  // Adds a text in blocks of its own behind all others, then sets the next free block, both under the lock of the file
  // (the place of a table's header lock). Gives the block that it begins in. `textKind` is kept by FoxPro files alone.
  // 3211 where another holds the lock for too long; 3027 where the file would grow beyond 2 GB; 3163 where a dBase III
  // text holds the byte that would end it. What fails leaves the file as it was.
  std::uint32_t append(std::string_view text, std::uint32_t textKind = 1);
  void sync() { file_->sync(); }

  // The bytes of an empty memo file. The block size of dBase III is fixed.
  static std::string emptyFile(MemoKind kind = MemoKind::foxpro, std::uint32_t blockSize = 64);
  // Makes an empty memo file, written under a temporary name and renamed.
  static void create(const std::string& path, MemoKind kind = MemoKind::foxpro, std::uint32_t blockSize = 64);

 private:
  MemoExtent untilMark(std::uint64_t offset, std::uint64_t fileSize);
  MemoExtent counted(std::uint64_t offset, std::uint64_t length, std::uint64_t fileSize) const;
  std::uint64_t blocksUsed(std::uint64_t fileSize) const;
  void writeEntry(std::uint32_t block, std::string_view text, std::uint32_t textKind, std::uint64_t formerSize);
  void takeBack(std::uint64_t formerSize, std::string_view formerHeader) noexcept;

  std::string path_;
  MemoKind kind_;
  std::uint32_t blockSize_ = 512;
  std::unique_ptr<platform::File> file_;
};

}  // namespace vantrelix

#include "tables/MemoFile.h"

#include <algorithm>
#include <array>

#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfHeader.h"

namespace vantrelix {

namespace {

constexpr std::uint32_t kDefaultBlock = 512;
constexpr std::size_t kMinimumHeader = 24;
constexpr std::size_t kEntryHead = 8;
constexpr std::uint32_t kNewBlock = 64;

std::uint32_t bigEndian(const unsigned char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i) value = value << 8 | bytes[i];
  return value;
}

[[noreturn]] void damaged(const std::string& path, const std::string& fault) {
  throw RunTimeFailure(failure::damagedTable, "The memo file " + displayPath(path) + " cannot be read: " + fault +
                                                  ". Take a sound copy of it.");
}

std::uint32_t blockSizeOf(const std::array<unsigned char, kMinimumHeader>& header, MemoKind kind) {
  std::uint32_t size = kDefaultBlock;
  if (kind == MemoKind::foxpro) size = bigEndian(&header[6], 2);
  if (kind == MemoKind::dbase4) size = dbf::littleEndian(&header[20], 2);
  return size == 0 ? kDefaultBlock : size;
}

}  // namespace

MemoFile::MemoFile(const std::string& path, MemoKind kind)
    : path_(path), kind_(kind), file_(platform::current().open(path, platform::OpenMode::read)) {
  std::array<unsigned char, kMinimumHeader> header{};
  // A short header of a dBase III file loses nothing: its block size is fixed.
  const std::size_t got = file_->readAt(0, header.data(), header.size());
  if (got < header.size() && kind != MemoKind::dbase3) {
    damaged(path, "it has " + std::to_string(got) + " bytes, less than a memo file's header");
  }
  blockSize_ = blockSizeOf(header, kind);
}

MemoFile::~MemoFile() = default;

std::string MemoFile::read(std::uint32_t block) {
  const std::uint64_t offset = std::uint64_t{block} * blockSize_;
  const std::uint64_t size = file_->size();
  if (block == 0 || offset >= size) {
    damaged(path_, "block " + std::to_string(block) + " lies outside the file of " + std::to_string(size) + " bytes");
  }
  if (kind_ == MemoKind::dbase3) return readUntilMark(offset, size);
  std::array<unsigned char, kEntryHead> head{};
  const std::size_t got = file_->readAt(offset, head.data(), head.size());
  if (kind_ == MemoKind::dbase4) {
    const bool counted = got == kEntryHead && head[0] == 0xFF && head[1] == 0xFF && head[2] == 0x08 && head[3] == 0;
    if (!counted) return readUntilMark(offset, size);
    const std::uint32_t length = dbf::littleEndian(&head[4], 4);
    if (length < kEntryHead)
      damaged(path_, "block " + std::to_string(block) + " claims " + std::to_string(length) + " bytes");
    return readCounted(offset + kEntryHead, length - kEntryHead, size);
  }
  if (got < kEntryHead) damaged(path_, "block " + std::to_string(block) + " is cut short");
  return readCounted(offset + kEntryHead, bigEndian(&head[4], 4), size);
}

std::string MemoFile::readCounted(std::uint64_t offset, std::uint64_t length, std::uint64_t fileSize) {
  if (length > fileSize - std::min(offset, fileSize)) {
    damaged(path_, "a text at byte " + std::to_string(offset) + " claims " + std::to_string(length) +
                       " bytes, more than the file holds");
  }
  std::string text(length, '\0');
  text.resize(file_->readAt(offset, text.data(), text.size()));
  return text;
}

std::string MemoFile::readUntilMark(std::uint64_t offset, std::uint64_t fileSize) {
  std::string text;
  std::array<char, kDefaultBlock> block{};
  while (offset < fileSize) {
    const std::size_t got = file_->readAt(offset, block.data(), block.size());
    const char* end = std::find(block.data(), block.data() + got, '\x1A');
    text.append(block.data(), static_cast<std::size_t>(end - block.data()));
    if (got == 0 || end != block.data() + got) break;
    offset += got;
  }
  return text;
}

void MemoFile::create(const std::string& path) {
  std::string header(kDefaultBlock, '\0');
  header[3] = static_cast<char>(kDefaultBlock / kNewBlock);  // the next free block
  header[7] = static_cast<char>(kNewBlock);
  platform::replaceWholeFile(path, header);
}

}  // namespace vantrelix

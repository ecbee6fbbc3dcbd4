#include "tables/MemoFile.h"

#include <algorithm>
#include <array>

#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfHeader.h"
#include "tables/dbfLocks.h"

namespace vantrelix {

namespace {

constexpr std::uint32_t kDefaultBlock = 512;
constexpr std::size_t kMinimumHeader = 24;
constexpr std::size_t kEntryHead = 8;
constexpr std::uint64_t kReservedAhead = 65536;
constexpr char kTextEnd = '\x1A';
constexpr std::string_view kCountedMark("\xFF\xFF\x08\0", 4);

std::uint32_t bigEndian(const unsigned char* bytes, int count) {
  std::uint32_t value = 0;
  for (int i = 0; i < count; ++i) value = value << 8 | bytes[i];
  return value;
}

void putBigEndian(char* bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes[i] = static_cast<char>(value >> (8 * (count - 1 - i)));
}

std::string littleEndianBytes(std::uint32_t value) {
  std::string bytes(4, '\0');
  dbf::putLittleEndian(reinterpret_cast<unsigned char*>(bytes.data()), value, 4);
  return bytes;
}

std::string bigEndianBytes(std::uint32_t value) {
  std::string bytes(4, '\0');
  putBigEndian(bytes.data(), value, 4);
  return bytes;
}

[[noreturn]] void damaged(const std::string& path, const std::string& fault) {
  throw RunTimeFailure(failure::damagedTable, "The memo file " + displayPath(path) + " cannot be read: " + fault +
                                                  ". Take a sound copy of it.");
}

bool sameByte(char left, unsigned char right) { return static_cast<unsigned char>(left) == right; }

std::uint32_t blockSizeOf(const std::array<unsigned char, kMinimumHeader>& header, MemoKind kind) {
  std::uint32_t size = kDefaultBlock;
  if (kind == MemoKind::foxpro) size = bigEndian(&header[6], 2);
  if (kind == MemoKind::dbase4) size = dbf::littleEndian(&header[20], 2);
  return size == 0 ? kDefaultBlock : size;
}

}  // namespace

MemoFile::MemoFile(const std::string& path, MemoKind kind, platform::OpenMode mode)
    : path_(path), kind_(kind), file_(platform::current().open(path, mode)) {
  std::array<unsigned char, kMinimumHeader> header{};
  // A short header of a dBase III file loses nothing: its block size is fixed.
  const std::size_t got = file_->readAt(0, header.data(), header.size());
  if (got < header.size() && kind != MemoKind::dbase3) {
    damaged(path, "it has " + std::to_string(got) + " bytes, less than a memo file's header");
  }
  blockSize_ = blockSizeOf(header, kind);
}

MemoFile::~MemoFile() = default;

std::uint64_t MemoFile::size() { return file_->size(); }

std::uint32_t MemoFile::nextFree() {
  std::array<unsigned char, 4> bytes{};
  file_->readAt(0, bytes.data(), bytes.size());
  return kind_ == MemoKind::foxpro ? bigEndian(bytes.data(), 4) : dbf::littleEndian(bytes.data(), 4);
}

std::string MemoFile::read(std::uint32_t block) {
  const MemoExtent extent = find(block);
  std::string text(extent.length, '\0');
  text.resize(file_->readAt(extent.offset, text.data(), text.size()));
  return text;
}

MemoExtent MemoFile::find(std::uint32_t block) {
  const std::uint64_t offset = std::uint64_t{block} * blockSize_;
  const std::uint64_t fileSize = file_->size();
  if (block == 0 || offset >= fileSize) {
    damaged(path_,
            "block " + std::to_string(block) + " lies outside the file of " + std::to_string(fileSize) + " bytes");
  }
  if (kind_ == MemoKind::dbase3) return untilMark(offset, fileSize);
  std::array<unsigned char, kEntryHead> head{};
  const std::size_t got = file_->readAt(offset, head.data(), head.size());
  if (kind_ == MemoKind::dbase4) {
    if (got < kEntryHead || !std::equal(kCountedMark.begin(), kCountedMark.end(), head.begin(), sameByte))
      return untilMark(offset, fileSize);
    const std::uint32_t length = dbf::littleEndian(&head[4], 4);
    if (length < kEntryHead)
      damaged(path_, "block " + std::to_string(block) + " claims " + std::to_string(length) + " bytes");
    return counted(offset + kEntryHead, length - kEntryHead, fileSize);
  }
  if (got < kEntryHead) damaged(path_, "block " + std::to_string(block) + " is cut short");
  MemoExtent extent = counted(offset + kEntryHead, bigEndian(&head[4], 4), fileSize);
  extent.kind = bigEndian(head.data(), 4);
  return extent;
}

MemoExtent MemoFile::counted(std::uint64_t offset, std::uint64_t length, std::uint64_t fileSize) const {
  if (length > fileSize - std::min(offset, fileSize)) {
    damaged(path_, "a text at byte " + std::to_string(offset) + " claims " + std::to_string(length) +
                       " bytes, more than the file holds");
  }
  return {1, offset, length, offset + length};
}

MemoExtent MemoFile::untilMark(std::uint64_t offset, std::uint64_t fileSize) {
  std::array<char, kDefaultBlock> block{};
  for (std::uint64_t at = offset; at < fileSize;) {
    const std::size_t got = file_->readAt(at, block.data(), block.size());
    const char* end = std::find(block.data(), block.data() + got, kTextEnd);
    const auto before = static_cast<std::size_t>(end - block.data());
    if (before < got) return {1, offset, at + before - offset, at + before + 1};
    if (got == 0) break;
    at += got;
  }
  return {1, offset, fileSize - offset, fileSize};
}

// The blocks that hold anything, the header's own among them.
std::uint64_t MemoFile::blocksUsed(std::uint64_t fileSize) const {
  return (std::max<std::uint64_t>(fileSize, kDefaultBlock) + blockSize_ - 1) / blockSize_;
}

std::uint32_t MemoFile::append(std::string_view text, std::uint32_t textKind) {
  if (kind_ == MemoKind::dbase3 && text.find(kTextEnd) != std::string_view::npos) {
    throw RunTimeFailure(failure::fieldTooSmall,
                         "The text cannot be written to " + displayPath(path_) +
                             ": it holds the character 26, which ends a text there. Take it out of the text.");
  }
  const dbf::HeldLock lock(*file_, dbf::kHeaderLock, platform::LockKind::exclusive, displayPath(path_));
  const std::uint64_t formerSize = file_->size();
  std::uint64_t block = blocksUsed(formerSize);
  // A program may keep some room of its own behind the last text; a number far out is damage.
  const std::uint64_t promised = nextFree();
  if (promised > block && (promised - block) * blockSize_ <= kReservedAhead) block = promised;
  const std::uint64_t needed = text.size() + kEntryHead + blockSize_;
  if (block * blockSize_ + needed > dbf::kLargestFile) {
    throw RunTimeFailure(failure::readOnlyTable, "The memo file " + displayPath(path_) +
                                                     " cannot take another text: it would grow beyond 2 GB, more than "
                                                     "the format holds. Begin another table.");
  }
  writeEntry(static_cast<std::uint32_t>(block), text, textKind, formerSize);
  return static_cast<std::uint32_t>(block);
}

void MemoFile::writeEntry(std::uint32_t block, std::string_view text, std::uint32_t textKind,
                          std::uint64_t formerSize) {
  std::string entry;
  const auto length = static_cast<std::uint32_t>(text.size());
  if (kind_ == MemoKind::foxpro) entry = bigEndianBytes(textKind) + bigEndianBytes(length);
  if (kind_ == MemoKind::dbase4) entry = std::string(kCountedMark) + littleEndianBytes(length + kEntryHead);
  entry += text;
  if (kind_ == MemoKind::dbase3) entry.append(2, kTextEnd);
  entry.resize((entry.size() + blockSize_ - 1) / blockSize_ * blockSize_, '\0');
  const auto next = static_cast<std::uint32_t>(block + entry.size() / blockSize_);
  const std::string header = kind_ == MemoKind::foxpro ? bigEndianBytes(next) : littleEndianBytes(next);
  const std::uint32_t formerNext = nextFree();
  try {
    file_->writeAt(std::uint64_t{block} * blockSize_, entry.data(), entry.size());
    file_->writeAt(0, header.data(), header.size());
  } catch (const RunTimeFailure&) {
    takeBack(formerSize, kind_ == MemoKind::foxpro ? bigEndianBytes(formerNext) : littleEndianBytes(formerNext));
    throw;
  }
}

// What stays where the disk takes not even this lies behind all texts: nobody points to it, nor follows its number.
void MemoFile::takeBack(std::uint64_t formerSize, std::string_view formerHeader) noexcept {
  try {
    file_->truncate(formerSize);
    if (formerSize >= formerHeader.size()) file_->writeAt(0, formerHeader.data(), formerHeader.size());
  } catch (...) {
  }
}

std::string MemoFile::emptyFile(MemoKind kind, std::uint32_t blockSize) {
  std::string header(kDefaultBlock, '\0');
  if (kind == MemoKind::dbase3) blockSize = kDefaultBlock;
  const std::uint32_t next = (kDefaultBlock + blockSize - 1) / blockSize;
  header.replace(0, 4, kind == MemoKind::foxpro ? bigEndianBytes(next) : littleEndianBytes(next));
  switch (kind) {
    case MemoKind::foxpro:
      putBigEndian(&header[6], blockSize, 2);
      break;
    case MemoKind::dbase4:
      header[18] = 2;  // as dBase IV writes it
      header[19] = 1;
      header.replace(20, 2, littleEndianBytes(blockSize), 0, 2);
      break;
    case MemoKind::dbase3:
      header[16] = 3;
  }
  return header;
}

void MemoFile::create(const std::string& path, MemoKind kind, std::uint32_t blockSize) {
  platform::replaceWholeFile(path, emptyFile(kind, blockSize));
}

}  // namespace vantrelix

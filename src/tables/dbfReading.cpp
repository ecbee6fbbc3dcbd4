// Reading the records of a table file.
#include <algorithm>
#include <array>
#include <vector>

#include "tables/DbfFileState.h"

namespace vantrelix {

namespace {

constexpr std::size_t kScanBytes = std::size_t{256} * 1024;
constexpr std::uint64_t kCountPlace = 4;

}  // namespace

std::uint32_t DbfFile::Implementation::countRows(std::uint64_t fileSize) {
  std::array<unsigned char, 4> bytes{};
  const bool whole = file->readAt(kCountPlace, bytes.data(), bytes.size()) == bytes.size();
  knownCount = dbf::rowsWithin(fileSize, header, whole ? dbf::littleEndian(bytes.data(), 4) : 0);
  return knownCount;
}

std::uint32_t DbfFile::recordCount() { return implementation_->countRows(implementation_->file->size()); }

platform::FileState DbfFile::state() const { return implementation_->file->state(); }

bool DbfFile::readRecord(std::uint32_t number, unsigned char* bytes) {
  Implementation& inside = *implementation_;
  if (number >= inside.knownCount && number >= recordCount()) return false;
  const auto length = static_cast<std::size_t>(recordLength_);
  return inside.file->readAt(inside.offsetOf(number), bytes, length) == length;
}

bool DbfFile::scan(const RecordVisitor& visit, std::uint32_t first, std::uint32_t count) {
  const auto length = static_cast<std::size_t>(recordLength_);
  const auto visitEach = [&](std::uint32_t number, const unsigned char* bytes, std::uint32_t rows) {
    for (std::uint32_t row = 0; row < rows; ++row) {
      if (!visit(number + row, bytes + row * length)) return false;
    }
    return true;
  };
  return scanBlocks(visitEach, first, count);
}

bool DbfFile::scanBlocks(const BlockVisitor& visit, std::uint32_t first, std::uint32_t count) {
  const std::uint32_t end =
      static_cast<std::uint32_t>(std::min<std::uint64_t>(std::uint64_t{first} + count, recordCount()));
  if (first >= end) return true;
  const auto length = static_cast<std::size_t>(recordLength_);
  const auto perBlock =
      static_cast<std::uint32_t>(std::min<std::size_t>(std::max<std::size_t>(1, kScanBytes / length), end - first));
  std::vector<unsigned char> block(perBlock * length);
  for (std::uint32_t number = first; number < end;) {
    const std::uint32_t wanted = std::min(perBlock, end - number);
    const std::size_t got =
        implementation_->file->readAt(implementation_->offsetOf(number), block.data(), wanted * length);
    const auto rows = static_cast<std::uint32_t>(got / length);
    if (rows > 0 && !visit(number, block.data(), rows)) return false;
    if (rows < wanted) return true;
    number += rows;
  }
  return true;
}

}  // namespace vantrelix

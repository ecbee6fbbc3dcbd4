#include "tables/rowsBehind.h"

#include <algorithm>
#include <vector>

#include "platform/RunTimeFailure.h"
#include "tables/fieldSoundness.h"
#include "tables/wholeRows.h"

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kChunk = std::size_t{64} * 1024;

using platform::File;

bool isBlankByte(unsigned char byte) { return byte == ' ' || byte == 0; }

// Finds the last of the rows: goes on over some that are not like one where at least as many behind them are.
class LastRow {
 public:
  LastRow(const TableLayout& layout, std::uint32_t first)
      : length_(layout.header.recordLength),
        soundness_(layout.context, layout.header.fields, layout.flags),
        end_(first) {}

  // False where no row can follow.
  bool look(std::uint32_t number, const unsigned char* row) {
    if (row != nullptr && row[0] != ' ' && row[0] != '*') return false;
    if (row != nullptr && std::all_of(row + 1, row + length_, isBlankByte)) return true;
    const bool like = row != nullptr && soundness_.isLikeRow(row);
    ++(like ? like_ : unlike_);
    if (!like || like_ < unlike_) return true;
    end_ = number + 1;
    unlike_ = like_ = 0;
    return true;
  }
  std::uint32_t end() const { return end_; }

 private:
  std::size_t length_;
  Soundness soundness_;
  std::uint32_t end_;
  // Behind the last one so far.
  std::uint64_t like_ = 0;
  std::uint64_t unlike_ = 0;
};

// Whether nothing but blanks and NULs stand in the file from there on, but for an end mark as its last byte.
bool isBlankFrom(File& file, std::uint64_t at, std::uint64_t end) {
  unsigned char last = 0;
  if (file.readAt(end - 1, &last, 1) == 1 && last == kFileEnd) --end;
  std::vector<unsigned char> chunk(kChunk);
  while (at < end) {
    const std::size_t got = file.readAt(at, chunk.data(), std::min<std::uint64_t>(chunk.size(), end - at));
    if (got == 0) break;
    if (!std::all_of(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(got), isBlankByte)) return false;
    at += got;
  }
  return true;
}

}  // namespace

RowsBehind lookBehind(File& file, const TableLayout& layout) {
  const std::uint32_t first = layout.rowsCounted();
  LastRow last(layout, first);
  WholeRows(file, layout).each(first, layout.rowsInFile(), [&](std::uint32_t number, const unsigned char* row) {
    return last.look(number, row);
  });
  RowsBehind behind;
  behind.rows = last.end() - first;
  behind.end = layout.offsetOf(last.end());
  behind.bytesLeft = layout.fileSize - std::min(layout.fileSize, behind.end);
  if (behind.bytesLeft == 0) return behind;
  try {
    unsigned char next = 0;
    if (file.readAt(behind.end, &next, 1) == 1) behind.next = next;
    behind.blankLeft = next != kFileEnd && isBlankFrom(file, behind.end, layout.fileSize);
  } catch (const RunTimeFailure& cause) {
    if (cause.number() != failure::deviceIO) throw;
  }
  return behind;
}

}  // namespace vantrelix::dbf

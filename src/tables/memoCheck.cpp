#include "tables/memoCheck.h"

#include <algorithm>
#include <tuple>

#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/fieldSoundness.h"
#include "tables/partnerFile.h"

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kChunk = std::size_t{256} * 1024;

std::string rowName(std::uint32_t number) { return "Row " + std::to_string(std::uint64_t{number} + 1); }

}  // namespace

MemoKind memoKindOf(int version) {
  const MemoFormat format = memoFormatOf(version);
  if (format == MemoFormat::foxpro) return MemoKind::foxpro;
  return format == MemoFormat::dbase4 ? MemoKind::dbase4 : MemoKind::dbase3;
}

MemoCheck::MemoCheck(const TableLayout& layout, FaultList& faults) : layout_(layout), faults_(faults) {
  const auto& fields = layout.header.fields;
  if (std::none_of(fields.begin(), fields.end(),
                   [&](const auto& field) { return pointsToMemo(field, layout.context); }))
    return;
  const MemoKind kind = memoKindOf(layout.header.version);
  const std::string partner = memoPartner(layout.path, kind == MemoKind::foxpro);
  missing_ = partner.empty();
  if (missing_) return;
  try {
    memo_ = std::make_unique<MemoFile>(partner, kind);
  } catch (const RunTimeFailure& cause) {
    faults_.add(FaultKind::memoFile, cause.description(), {});
  }
}

std::string MemoCheck::nameOf(std::size_t field) const {
  return layout_.context.text.decode(layout_.header.fields[field].name);
}

FaultList::Place MemoCheck::placeOf(std::uint32_t number, std::size_t index) const {
  const auto offset = static_cast<std::uint64_t>(layout_.header.fields[index].offset);
  return {number, nameOf(index), layout_.offsetOf(number) + offset};
}

void MemoCheck::look(std::uint32_t number, const unsigned char* row, std::size_t index) {
  const DbfField& field = layout_.header.fields[index];
  if (isNullByFlag(row, field, layout_.context)) return;
  const std::uint32_t block = memoBlock(row, field);
  if (block == 0) return;
  if (!memo_) {
    if (!missing_) return;
    return faults_.add(
        FaultKind::memoMissing,
        [&] {
          return rowName(number) + " has in the field " + nameOf(index) +
                 " a text of the memo file, and none stands beside the table.";
        },
        [&] { return placeOf(number, index); });
  }
  try {
    const MemoExtent extent = memo_->find(block);
    texts_.push_back(
        {std::uint64_t{block} * memo_->blockSize(), extent.end, number, static_cast<std::uint32_t>(index)});
  } catch (const RunTimeFailure& cause) {
    noteText(number, index, cause.description());
  }
}

void MemoCheck::noteText(std::uint32_t number, std::size_t index, const std::string& reason) {
  faults_.add(
      FaultKind::memoBlock,
      [&] { return rowName(number) + " has in the field " + nameOf(index) + " no text that could be read. " + reason; },
      [&] { return placeOf(number, index); });
}

void MemoCheck::finish() {
  if (!memo_) return;
  std::sort(texts_.begin(), texts_.end(), [](const Text& a, const Text& b) {
    return std::tie(a.first, a.record, a.field) < std::tie(b.first, b.record, b.field);
  });
  readTexts();
  findShared();
  checkNextFree();
}

// Each byte once, however many records point to it: whether the file gives all of them.
void MemoCheck::readTexts() {
  std::vector<unsigned char> chunk(kChunk);
  std::uint64_t read = 0;
  for (const Text& text : texts_) {
    std::uint64_t at = std::max(read, text.first);
    try {
      while (at < text.end) {
        const std::size_t got = memo_->readAt(at, chunk.data(), std::min<std::uint64_t>(kChunk, text.end - at));
        if (got == 0) break;
        at += got;
      }
      if (at < text.end)
        noteText(text.record, text.field,
                 "The memo file " + displayPath(memo_->path()) + " ends at byte " + std::to_string(at) +
                     ", within the text.");
      read = std::max(read, at);
    } catch (const RunTimeFailure& cause) {
      noteText(text.record, text.field, cause.description());
    }
  }
}

void MemoCheck::findShared() {
  const Text* widest = nullptr;
  for (const Text& text : texts_) {
    if (widest != nullptr && text.first < widest->end) {
      const Text& other = *widest;
      faults_.add(
          FaultKind::memoShared,
          [&] {
            return rowName(text.record) + " has in the field " + nameOf(text.field) + " a text that " +
                   (text.first == other.first ? "is also that of " : "lies within that of ") + "row " +
                   std::to_string(std::uint64_t{other.record} + 1) + ".";
          },
          [&] {
            return FaultList::Place{text.record, nameOf(text.field), text.first};
          });
    }
    if (widest == nullptr || text.end > widest->end) widest = &text;
  }
}

void MemoCheck::checkNextFree() {
  // In this order: a text that is added meanwhile makes the file longer before the number leads behind it.
  const std::uint64_t next = memo_->nextFree();
  const std::uint64_t size = memo_->size();
  const std::uint64_t blockSize = memo_->blockSize();
  const std::uint64_t at = next * blockSize;
  // dBase IV names a block that became free among the others.
  const bool reuses = memo_->kind() == MemoKind::dbase4;
  const auto over = std::find_if(texts_.begin(), texts_.end(),
                                 [&](const Text& text) { return at < text.end && (!reuses || at >= text.first); });
  const bool far = at >= (size + blockSize - 1) / blockSize * blockSize + blockSize;
  if (next != 0 && over == texts_.end() && !far) return;
  const std::string where = next == 0 ? "in the header of the file"
                            : over != texts_.end()
                                ? "in the text of row " + std::to_string(std::uint64_t{over->record} + 1)
                                : "far behind its end";
  faults_.add(FaultKind::memoNextFree,
              "The memo file " + displayPath(memo_->path()) + " names block " + std::to_string(next) +
                  " as the next free one, which lies " + where + ".",
              {std::nullopt, "", 0});
}

}  // namespace vantrelix::dbf

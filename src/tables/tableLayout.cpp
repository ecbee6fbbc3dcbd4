#include "tables/tableLayout.h"

#include <array>

#include "foundation/extract.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfDescriptors.h"
#include "tables/dbfOpening.h"
#include "tables/descriptorsPastDamage.h"
#include "tables/fieldSoundness.h"
#include "tables/partnerFile.h"
#include "tables/rowsBehind.h"

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kLongestHeader = 65535 + 32;
constexpr std::uint32_t kRowsSampled = 64;
constexpr std::size_t kSector = 512;
constexpr std::uint64_t kCountPlace = 4;
constexpr int kMostLooks = 20;  // at a table that another program keeps locked and adds rows to
constexpr double kLikeRows = 0.5;
constexpr double kBeyondDoubt = 2.9;  // the header is right in all, and nearly every value of the rows

using platform::File;

// A way to read the table, and how much speaks for it.
struct Reading {
  TableLayout layout;
  double likeness = 0;  // of its first rows; 1 where it has none
  double score = 0;
};

bool isPrintable(const std::string& name) {
  return !name.empty() &&
         std::all_of(name.begin(), name.end(), [](unsigned char byte) { return byte >= ' ' && byte != 0x7F; });
}

// Field descriptions that no accident would make.
bool areDeliberate(const std::vector<DbfField>& fields) {
  constexpr std::string_view known = "CNFLDMGPBIYTVQW0";
  return !fields.empty() && std::all_of(fields.begin(), fields.end(), [&](const DbfField& field) {
    return isPrintable(field.name) && known.find(field.type) != std::string_view::npos;
  });
}

bool hasType(const std::vector<DbfField>& fields, std::string_view types) {
  return std::any_of(fields.begin(), fields.end(),
                     [&](const DbfField& field) { return types.find(field.type) != std::string_view::npos; });
}

// For a version byte that is none: what the fields and the memo file beside the table speak for.
int likelyVersion(const std::vector<DbfField>& fields, const std::string& path) {
  if (hasType(fields, "IYTVQW0")) return 0x30;
  if (!hasType(fields, "MGP")) return 0x03;
  return memoPartner(path, true).empty() && !memoPartner(path, false).empty() ? 0x83 : 0xF5;
}

// In the order given.
std::vector<std::uint64_t> distinct(const std::vector<std::uint64_t>& numbers) {
  std::vector<std::uint64_t> result;
  for (const std::uint64_t number : numbers) {
    if (std::find(result.begin(), result.end(), number) == result.end()) result.push_back(number);
  }
  return result;
}

// The first bytes of the file, as far as the device gives them.
std::string firstBytes(File& file, std::size_t count) {
  std::string bytes(count, '\0');
  try {
    bytes.resize(file.readAt(0, bytes.data(), count));
    return bytes;
  } catch (const RunTimeFailure& cause) {
    if (cause.number() != failure::deviceIO) throw;
  }
  for (std::size_t at = 0; at < count; at += kSector) {
    try {
      file.readAt(at, &bytes[at], std::min(kSector, count - at));
    } catch (const RunTimeFailure& cause) {
      if (at == 0 || cause.number() != failure::deviceIO) throw;
      bytes.resize(at);
      break;
    }
  }
  return bytes;
}

class Search {
 public:
  Search(File& file, const std::string& path) : file_(file) {
    base_.path = path;
    base_.context.path = path;
    base_.fileSize = file.size();
    base_.headerBytes = firstBytes(file, std::min<std::uint64_t>(base_.fileSize, kLongestHeader));
  }

  TableLayout run() {
    const std::optional<RunTimeFailure> refusal = tryOpening();
    if (refusal && (base_.headerBytes.size() < kFixedHeader || isStranger(base_.headerBytes[0] & 0xFF)))
      throw RunTimeFailure(*refusal);
    if (refusal) base_.refusal = refusal->description();
    const Descriptors whole = readDescriptors(base_.headerBytes, base_.headerBytes.size());
    const Descriptors within = readDescriptors(base_.headerBytes, base_.headerLengthClaimed());
    readBeyondDamage(within, whole);
    readWith(within);
    if (whole.end != within.end) readWith(whole);
    if (refusal && (!best_ || best_->likeness < kLikeRows)) throw RunTimeFailure(*refusal);
    if (!best_) read(within, base_.headerLengthClaimed(), base_.recordLengthClaimed());
    return best_->layout;
  }

 private:
  // What DbfFile::open says to it.
  std::optional<RunTimeFailure> tryOpening() {
    try {
      accepted_ = readHeader(file_, base_.context.displayName());
      return std::nullopt;
    } catch (const RunTimeFailure& cause) {
      if (cause.number() != failure::damagedTable && cause.number() != failure::deviceIO) throw;
      return cause;
    }
  }

  // Where the header's record length speaks for more fields than can be read. That it is made up to the byte says more
  // than the names of the fields.
  void readBeyondDamage(const Descriptors& within, const Descriptors& whole) {
    const std::uint32_t length = base_.recordLengthClaimed();
    for (const Descriptors* found : {&within, &whole}) {
      if (sumOfWidths(found->fields, false) == length || sumOfWidths(found->fields, true) == length) return;
    }
    const auto found = readPastDamage(base_.headerBytes, base_.headerLengthClaimed(), length);
    if (!found) return;
    pastDamage_ = true;
    readWith(*found);
    pastDamage_ = false;
  }

  void readWith(const Descriptors& found) {
    if (!accepted_ && !pastDamage_ && !areDeliberate(found.fields)) return;
    const std::uint64_t end = found.end;
    Header named;
    named.languageMark = static_cast<unsigned char>(base_.headerBytes[29]);
    named.fields = found.fields;
    base_.context.text = TextCodec(codePageOf(named, base_.path));
    const std::vector<std::uint64_t> headers =
        distinct({base_.headerLengthClaimed(), end + 1, end + 1 + kBackLink, end, end + 2});
    const std::vector<std::uint64_t> records =
        distinct({base_.recordLengthClaimed(), sumOfWidths(found.fields, false), sumOfWidths(found.fields, true)});
    for (const std::uint64_t length : headers) {
      if (length < end || length > base_.fileSize || length > UINT16_MAX) continue;
      for (const std::uint64_t record : records) {
        if (best_ && best_->score >= kBeyondDoubt) return;
        if (record > 0) read(found, static_cast<std::uint32_t>(length), static_cast<std::uint32_t>(record));
      }
    }
  }

  void read(const Descriptors& found, std::uint32_t headerLength, std::uint32_t recordLength) {
    Reading reading{base_};
    TableLayout& layout = reading.layout;
    Header& header = layout.header;
    header.version = base_.headerBytes[0] & 0xFF;
    if (!isReadable(header.version)) header.version = likelyVersion(found.fields, base_.path);
    header.count = base_.number(4, 4);
    header.headerLength = headerLength;
    header.recordLength = recordLength;
    header.structuralIndex = (base_.headerBytes[28] & kTableFlagIndex) != 0;
    header.languageMark = static_cast<unsigned char>(base_.headerBytes[29]);
    header.fields = found.fields;
    if (sumOfWidths(found.fields, false) != recordLength && sumOfWidths(found.fields, true) == recordLength)
      takeLongTexts(header.fields);
    layout.stored = header.fields;
    layout.flags = found.flags;
    layout.descriptorsEnd = found.end;
    layout.terminated = found.terminated;
    placeFields(header);
    takeContext(layout);
    weigh(reading);
    if (!best_ || reading.score > best_->score) best_ = std::move(reading);
  }

  static void takeContext(TableLayout& layout) {
    Header& header = layout.header;
    layout.context.visual = isVisual(header.version);
    if (layout.context.visual) placeNullBits(header, layout.flags);
    if (header.nullFlags >= 0)
      layout.context.nullFlagsOffset = header.fields[static_cast<std::size_t>(header.nullFlags)].offset;
  }

  void weigh(Reading& reading) {
    const TableLayout& layout = reading.layout;
    const Header& header = layout.header;
    const std::uint64_t rows = std::uint64_t{header.count} * header.recordLength + header.headerLength;
    reading.likeness = likenessOfRows(layout);
    reading.score = reading.likeness;
    if (accepted_ && accepted_->headerLength == header.headerLength && accepted_->recordLength == header.recordLength &&
        (pastDamage_ || accepted_->fields.size() == header.fields.size()))
      reading.score += 0.5;
    if (header.count > 0 && (layout.fileSize == rows || layout.fileSize == rows + 1)) reading.score += 0.5;
    if (sumOfWidths(layout.stored, false) == header.recordLength) reading.score += 0.4;
    if (layout.recordLengthClaimed() == header.recordLength) reading.score += 0.2;
    if (layout.headerLengthClaimed() == header.headerLength) reading.score += 0.2;
    if (layout.terminated) reading.score += 0.2;
  }

  double likenessOfRows(const TableLayout& layout) {
    const std::uint32_t there = layout.header.count > 0 ? layout.rowsCounted() : layout.rowsInFile();
    const Soundness soundness(layout.context, layout.header.fields, layout.flags);
    std::vector<unsigned char> row(layout.header.recordLength);
    double sum = 0;
    int rows = 0;
    for (std::uint32_t number = 0; number < std::min(there, kRowsSampled); ++number) {
      if (!canBeRead(layout.offsetOf(number), row)) continue;
      sum += soundness.likeness(row.data());
      ++rows;
    }
    return rows == 0 ? 1 : sum / rows;
  }

  bool canBeRead(std::uint64_t offset, std::vector<unsigned char>& row) {
    try {
      return file_.readAt(offset, row.data(), row.size()) == row.size();
    } catch (const RunTimeFailure& cause) {
      if (cause.number() != failure::deviceIO) throw;
      return false;
    }
  }

  File& file_;
  TableLayout base_;
  std::optional<Header> accepted_;
  bool pastDamage_ = false;  // the list of fields in hand goes on behind where a reader takes it to end
  std::optional<Reading> best_;
};

TableLayout lookThrough(File& file, const std::string& path) {
  TableLayout layout = Search(file, path).run();
  layout.behind = lookBehind(file, layout);
  return layout;
}

struct Extent {
  std::uint64_t size = 0;
  std::array<unsigned char, 4> count{};

  friend bool operator==(const Extent&, const Extent&) = default;
};

Extent extentOf(File& file) {
  Extent extent{file.size(), {}};
  file.readAt(kCountPlace, extent.count.data(), extent.count.size());
  return extent;
}

TableLayout lookWithoutLock(File& file, const std::string& path) {
  Pauses pauses;
  for (int look = 1;; ++look) {
    const Extent before = extentOf(file);
    TableLayout layout = lookThrough(file, path);
    layout.isSettled = false;
    if (look == kMostLooks || extentOf(file) == before) return layout;
    pauses.pause();
  }
}

}  // namespace

std::uint32_t TableLayout::rowsInFile() const { return rowsWithin(fileSize, header, UINT32_MAX); }

std::uint32_t TableLayout::restOffset() const {
  return header.fields.empty() ? 1
                               : static_cast<std::uint32_t>(header.fields.back().offset + header.fields.back().width);
}

TableLayout findLayout(File& file, const std::string& path, std::optional<HeldLock>& header) {
  try {
    header.emplace(file, kHeaderLock, platform::LockKind::shared, displayPath(path));
  } catch (const RunTimeFailure& cause) {
    if (cause.number() != failure::locked) throw;
  }
  return header ? lookThrough(file, path) : lookWithoutLock(file, path);
}

}  // namespace vantrelix::dbf

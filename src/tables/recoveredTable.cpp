#include "tables/recoveredTable.h"

#include <algorithm>
#include <set>

#include "foundation/text.h"
#include "foundation/utf8.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfDescriptors.h"
#include "tables/memoCheck.h"

namespace vantrelix::dbf {

namespace {

constexpr std::uint32_t kLongestRecord = 65535;
constexpr std::size_t kLongestName = 10;
constexpr int kBinaryPointer = 4;
constexpr int kDigitPointer = 10;

[[noreturn]] void refuse(const TableLayout& layout, const std::string& reason) {
  throw RunTimeFailure(failure::damagedTable, "Nothing can be saved of the table " + layout.context.displayName() +
                                                  ": " + reason + ". Look for an older copy of it.");
}

int widthOfType(const DbfField& field, const FieldContext& context) {
  switch (field.type) {
    case 'D':
    case 'T':
    case 'Y':
      return 8;
    case 'B':
      return context.visual ? 8 : kDigitPointer;
    case 'I':
      return 4;
    case 'M':
    case 'G':
    case 'P':
    case 'W':
      return context.visual ? kBinaryPointer : kDigitPointer;
    default:
      return 1;
  }
}

void putBlock(unsigned char* made, const DbfField& field, std::uint32_t block) {
  unsigned char* at = made + field.offset;
  if (field.width == kBinaryPointer) return putLittleEndian(at, block, kBinaryPointer);
  const std::string digits = std::to_string(block);
  std::fill(at, at + field.width, static_cast<unsigned char>(' '));
  std::copy(digits.begin(), digits.end(), at + field.width - static_cast<std::ptrdiff_t>(digits.size()));
}

// Without a bit in the null flags: a block of nought reads as null by itself.
void clearBlock(unsigned char* made, const DbfField& field) {
  const auto nothing = static_cast<unsigned char>(field.width == kBinaryPointer ? 0 : ' ');
  std::fill(made + field.offset, made + field.offset + field.width, nothing);
}

// Whether what is left out of the field, from its byte `from` on, was anything.
bool holdsAnything(const unsigned char* row, const DbfField& field, const FieldContext& context, int from = 0) {
  const unsigned char* const at = row + field.offset;
  return !isNullByFlag(row, field, context) && std::any_of(at + std::min(from, field.width), at + field.width,
                                                           [](unsigned char byte) { return byte != ' ' && byte != 0; });
}

bool isNameByte(unsigned char byte) { return byte >= ' ' && byte != 0x7F; }

}  // namespace

RecoveredTable::RecoveredTable(const TableLayout& layout)
    : layout_(layout),
      header_(layout.header),
      flags_(layout.flags),
      context_(layout.context),
      soundness_(layout.context, layout.header.fields, layout.flags) {
  if (layout.stored.empty()) refuse(layout, "its header describes no field");
  takeFields();
  takeNames();
  // A table that holds memos has to say so; dBase III's are what is read beside a table that does not.
  if (header_.version == 0x03 && hasMemos()) header_.version = 0x83;
}

void RecoveredTable::takeFields() {
  header_.fields = layout_.stored;
  for (DbfField& field : header_.fields) {
    if (!isWidthOfType(field, context_)) field.width = widthOfType(field, context_);
    if (field.type != 'N' && field.type != 'F' && field.type != 'B') field.decimals = 0;
  }
  // Where the widths are rubbish, what lies beyond the old record never held anything.
  for (std::size_t i = 0; sumOfWidths(header_.fields, false) > kLongestRecord && i < header_.fields.size(); ++i) {
    const DbfField& former = layout_.header.fields[i];
    DbfField& field = header_.fields[i];
    if (former.width < layout_.stored[i].width && isWidthOfType(former, context_)) field.width = former.width;
    if (former.width == 0) field.width = widthOfType(field, context_);
  }
  addRest();
  const std::uint32_t length = sumOfWidths(header_.fields, false);
  if (length > kLongestRecord) refuse(layout_, "its fields make up records of " + std::to_string(length) + " bytes");
  header_.recordLength = length;
  header_.nullFlags = -1;
  header_.structuralIndex = false;
  placeFields(header_);
  if (context_.visual) placeNullBits(header_, flags_);
  context_.nullFlagsOffset =
      header_.nullFlags < 0 ? -1 : header_.fields[static_cast<std::size_t>(header_.nullFlags)].offset;
  header_.headerLength = static_cast<std::uint32_t>(kFixedHeader + kDescriptor * header_.fields.size() + 1 +
                                                    (context_.visual ? kBackLink : 0));
  if (header_.headerLength > UINT16_MAX) refuse(layout_, "it has more fields than the format holds");
}

// Marked as no text of a code page: every byte counts, 0x1A among them.
void RecoveredTable::addRest() {
  if (layout_.rowsCounted() + layout_.behind.rows == 0) return;
  for (std::uint32_t left = layout_.restLength(); left > 0;) {
    DbfField field;
    field.width = static_cast<int>(std::min(left, kWidestRest));
    left -= static_cast<std::uint32_t>(field.width);
    header_.fields.push_back(std::move(field));
    flags_.push_back(kFlagBinary);
  }
}

// A made-up name gives way to those that there are.
void RecoveredTable::takeNames() {
  std::set<std::string> seen;
  const auto takeOwn = [&](std::size_t index) {
    std::string& name = header_.fields[index].name;
    const std::string given = isAscii(name) ? name : madeUpName(index);
    for (int number = 2; !seen.insert(upperCase(context_.text.decode(name))).second; ++number) {
      const std::string ending = "_" + std::to_string(number);
      name = given.substr(0, kLongestName - ending.size()) + ending;
    }
  };
  std::vector<std::size_t> nameless;
  for (std::size_t i = 0; i < header_.fields.size(); ++i) {
    std::string& name = header_.fields[i].name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char byte) { return !isNameByte(byte); }, '_');
    trim(name).empty() ? nameless.push_back(i) : takeOwn(i);
  }
  for (const std::size_t index : nameless) {
    header_.fields[index].name = madeUpName(index);
    takeOwn(index);
  }
}

std::string RecoveredTable::madeUpName(std::size_t index) const {
  const std::size_t described = layout_.stored.size();
  if (index >= described) return "REST" + std::to_string(index - described + 1);
  return static_cast<int>(index) == header_.nullFlags ? "_NullFlags" : "FIELD" + std::to_string(index + 1);
}

bool RecoveredTable::hasMemos() const {
  return std::any_of(header_.fields.begin(), header_.fields.end(),
                     [&](const DbfField& field) { return pointsToMemo(field, context_); });
}

std::string RecoveredTable::headerBytes(std::uint32_t rows, const platform::DateTime& today) const {
  std::string bytes = layout_.headerBytes.substr(0, kFixedHeader + kDescriptor * layout_.stored.size());
  bytes.resize(header_.headerLength, '\0');
  auto* at = reinterpret_cast<unsigned char*>(bytes.data());
  at[0] = static_cast<unsigned char>(header_.version);
  at[1] = static_cast<unsigned char>(today.year - 1900);
  at[2] = static_cast<unsigned char>(today.month);
  at[3] = static_cast<unsigned char>(today.day);
  putLittleEndian(at + 4, rows, 4);
  putLittleEndian(at + 8, header_.headerLength, 2);
  putLittleEndian(at + 10, header_.recordLength, 2);
  std::fill(at + 12, at + 28, static_cast<unsigned char>(0));
  const bool memoFlag = context_.visual && hasMemos();
  at[28] = static_cast<unsigned char>((at[28] & ~(kTableFlagIndex | kTableFlagMemo)) | (memoFlag ? kTableFlagMemo : 0));
  for (std::size_t i = 0; i < header_.fields.size(); ++i) {
    const DbfField& field = header_.fields[i];
    unsigned char* described = at + kFixedHeader + kDescriptor * i;
    std::fill(described, described + 11, static_cast<unsigned char>(0));
    std::copy(field.name.begin(), field.name.end(), described);
    described[11] = static_cast<unsigned char>(field.type);
    putLittleEndian(described + 12, static_cast<std::uint32_t>(field.offset), 4);
    described[16] = static_cast<unsigned char>(field.width & 0xFF);
    described[17] = static_cast<unsigned char>(field.type == 'C' ? field.width >> 8 : field.decimals);
    described[18] = flags_[i];
    described[31] = 0;  // of the index that is left behind
  }
  at[kFixedHeader + kDescriptor * header_.fields.size()] = kHeaderEnd;
  return bytes;
}

std::uint32_t RecoveredTable::convert(const unsigned char* row, unsigned char* made, MemoFile* from, MemoFile* to) {
  std::uint32_t mended = 0;
  std::fill(made, made + header_.recordLength, static_cast<unsigned char>(' '));
  if (row[0] == '*') made[0] = '*';
  if (row[0] != '*' && row[0] != ' ') ++mended;
  // The flags first: blanking another field sets its own in them.
  if (header_.nullFlags >= 0) {
    const auto flags = static_cast<std::size_t>(header_.nullFlags);
    unsigned char* const at = made + header_.fields[flags].offset;
    std::fill(at, at + header_.fields[flags].width, static_cast<unsigned char>(0));
    fit(row, made, flags);
  }
  const std::size_t described = layout_.stored.size();
  for (std::size_t i = 0; i < described; ++i) {
    if (static_cast<int>(i) == header_.nullFlags) continue;
    mended +=
        pointsToMemo(header_.fields[i], context_) ? convertMemo(row, made, i, from, to) : convertField(row, made, i);
  }
  if (header_.fields.size() > described)
    std::copy_n(row + layout_.restOffset(), layout_.restLength(), made + header_.fields[described].offset);
  return mended;
}

// As many of the old bytes as there are and find room.
void RecoveredTable::fit(const unsigned char* row, unsigned char* made, std::size_t index) {
  const DbfField& former = layout_.header.fields[index];
  const DbfField& field = header_.fields[index];
  std::copy_n(row + former.offset, std::min(former.width, field.width), made + field.offset);
}

std::uint32_t RecoveredTable::convertField(const unsigned char* row, unsigned char* made, std::size_t index) {
  const DbfField& former = layout_.header.fields[index];
  const DbfField& field = header_.fields[index];
  const bool wideDate = former.type == 'D' && former.width > field.width;
  const bool text = former.type == 'C' || former.type == 'N' || former.type == 'F' || former.type == 'L';
  // Of any other type a part is no value.
  if (former.width == 0 || (former.width != field.width && !wideDate && !text)) {
    blankField(made, field, context_);
    return holdsAnything(row, former, layout_.context) ? 1 : 0;
  }
  const auto unsound = soundness_.faultOf(row, index);
  if (unsound) return mend(row, made, index, unsound->kind);
  fit(row, made, index);
  return holdsAnything(row, former, layout_.context, field.width) ? 1 : 0;
}

std::uint32_t RecoveredTable::mend(const unsigned char* row, unsigned char* made, std::size_t index, FaultKind kind) {
  const DbfField& field = header_.fields[index];
  unsigned char* const at = made + field.offset;
  unsigned char* const end = at + field.width;
  switch (kind) {
    case FaultKind::textBytes:
      fit(row, made, index);
      return 0;
    case FaultKind::markInText:
      fit(row, made, index);
      std::replace(at, end - (hasLength(row, layout_.header.fields[index], layout_.context) ? 1 : 0), kFileEnd,
                   static_cast<unsigned char>(' '));
      return 1;
    case FaultKind::numberNul:
      fit(row, made, index);
      std::replace(at, end, static_cast<unsigned char>(0), static_cast<unsigned char>(' '));
      return 1;
    case FaultKind::textLength:
      fit(row, made, index);
      end[-1] = static_cast<unsigned char>(field.width - 1);
      if ((layout_.flags[index] & kFlagBinary) == 0)
        std::replace(at, end - 1, kFileEnd, static_cast<unsigned char>(' '));
      return 1;
    default:
      blankField(made, field, context_);
      return 1;
  }
}

std::uint32_t RecoveredTable::convertMemo(const unsigned char* row, unsigned char* made, std::size_t index,
                                          MemoFile* from, MemoFile* to) {
  const DbfField& former = layout_.header.fields[index];
  const DbfField& field = header_.fields[index];
  clearBlock(made, field);
  const bool whole = former.width == layout_.stored[index].width;
  if (!whole) return holdsAnything(row, former, layout_.context) ? 1 : 0;
  if (isNullByFlag(row, former, layout_.context)) return 0;
  if (soundness_.faultOf(row, index)) return 1;
  const std::uint32_t block = memoBlock(row, former);
  if (block == 0) return 0;
  if (from == nullptr || to == nullptr) return 1;
  MemoExtent extent;
  std::string text;
  try {
    extent = from->find(block);
    text = from->read(block);
  } catch (const RunTimeFailure& cause) {
    if (cause.number() != failure::damagedTable && cause.number() != failure::deviceIO) throw;
    return 1;
  }
  putBlock(made, field, to->append(text, extent.kind));
  return text.size() < extent.length ? 1 : 0;
}

}  // namespace vantrelix::dbf

#include "tables/fieldSoundness.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "foundation/utf8.h"
#include "tables/dbfDescriptors.h"
#include "tables/dbfNumber.h"

namespace vantrelix::dbf {

namespace {

constexpr std::size_t kSound = std::string_view::npos;
constexpr std::int64_t kLastDay = 5373484;  // the last of the year 9999
constexpr std::uint32_t kMillisecondsOfDay = 86400000;

std::string_view bytesOf(const unsigned char* record, const DbfField& field) {
  return {reinterpret_cast<const char*>(record) + field.offset, static_cast<std::size_t>(field.width)};
}

bool isPadding(char byte) { return byte == ' ' || byte == '\0' || byte == '\t'; }
bool isBlank(std::string_view bytes) { return std::all_of(bytes.begin(), bytes.end(), isPadding); }

std::optional<Unsound> numberFault(std::string_view bytes) {
  const std::size_t nul = bytes.find('\0');
  if (nul != kSound && (isBlank(bytes) || parseNumber(bytes))) return Unsound{FaultKind::numberNul, nul};
  if (isBlank(bytes) || parseNumber(bytes)) return std::nullopt;
  const std::size_t first = bytes.find('*');
  if (first != kSound && bytes.find_first_not_of("* ") == kSound) return Unsound{FaultKind::asterisks, first};
  // The empty form of a field with decimals: a point between blanks.
  if (bytes.find_first_not_of(" .") == kSound && std::count(bytes.begin(), bytes.end(), '.') == 1) return std::nullopt;
  const std::size_t odd = bytes.find_first_not_of(" \t+-.0123456789eE");
  return Unsound{FaultKind::number, odd == kSound ? bytes.find_first_not_of(" \t") : odd};
}

std::optional<Unsound> logicalFault(std::string_view bytes) {
  if (std::string_view("TtYyFfNn? ").find(bytes.front()) != kSound || bytes.front() == '\0') return std::nullopt;
  return Unsound{FaultKind::logical, 0};
}

std::optional<Unsound> momentFault(const unsigned char* at) {
  const std::uint32_t day = littleEndian(at, 4);
  const std::uint32_t time = littleEndian(at + 4, 4);
  constexpr std::uint32_t blanks = 0x20202020;
  if ((day == 0 && time == 0) || (day == blanks && time == blanks)) return std::nullopt;
  if (day == 0 || day > kLastDay) return Unsound{FaultKind::dateTime, 0};
  if (time > kMillisecondsOfDay) return Unsound{FaultKind::dateTime, 4};
  return std::nullopt;
}

std::optional<Unsound> realFault(const unsigned char* at) {
  const std::uint64_t bits = littleEndian(at, 4) | static_cast<std::uint64_t>(littleEndian(at + 4, 4)) << 32;
  if (std::isfinite(std::bit_cast<double>(bits))) return std::nullopt;
  return Unsound{FaultKind::realNumber, 0};
}

std::optional<Unsound> pointerFault(const unsigned char* record, const DbfField& field) {
  const std::string_view bytes = bytesOf(record, field);
  if (field.width == 4 || isBlank(bytes)) return std::nullopt;
  const std::size_t odd = bytes.find_first_not_of(std::string_view(" 0123456789\0", 12));
  if (odd != kSound) return Unsound{FaultKind::memoPointer, odd};
  const std::optional<double> block = parseNumber(bytes);
  if (!block || *block > 4294967295.0) return Unsound{FaultKind::memoPointer, 0};
  return std::nullopt;
}

bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }
bool isOfNumber(char byte) { return isDigit(byte) || std::string_view("+-.,eE*").find(byte) != kSound; }
bool isOfText(char byte) { return static_cast<unsigned char>(byte) >= ' ' || byte == '\r' || byte == '\n'; }

// Whether half of the bytes that are none of padding, or more, are of the kind.
bool mostlyOf(std::string_view bytes, bool (*isOfKind)(char)) {
  const auto padding = std::count_if(bytes.begin(), bytes.end(), isPadding);
  const auto ofKind =
      std::count_if(bytes.begin(), bytes.end(), [&](char byte) { return !isPadding(byte) && isOfKind(byte); });
  return 2 * ofKind >= static_cast<std::ptrdiff_t>(bytes.size()) - padding;
}

// A byte that a page leaves open comes as a control character or from the private room of Unicode.
bool isOpen(const CodePage& page, unsigned char byte) {
  const char32_t code = utf8CharacterAt(page.decode(std::string(1, static_cast<char>(byte))), 0).code;
  return (code >= 0x80 && code < 0xA0) || (code >= 0xE000 && code < 0xF900);
}

}  // namespace

bool isWidthOfType(const DbfField& field, const FieldContext& context) {
  switch (field.type) {
    case 'L':
      return field.width == 1;
    case 'D':
    case 'T':
    case 'Y':
      return field.width == 8;
    case 'I':
      return field.width == 4;
    case 'B':
      return field.width == 8 || (!context.visual && field.width == 10);
    case 'M':
    case 'G':
    case 'P':
    case 'W':
      return field.width == 4 || field.width == 10;
    default:
      return field.width > 0;
  }
}

bool pointsToMemo(const DbfField& field, const FieldContext& context) {
  const bool objects = field.type == 'G' || field.type == 'P' || field.type == 'W';
  return (isMemo(field, context) || objects) && isWidthOfType(field, context);
}

Soundness::Soundness(const FieldContext& context, const std::vector<DbfField>& fields,
                     const std::vector<unsigned char>& flags)
    : context_(context), fields_(fields), flags_(flags) {}

std::optional<Unsound> Soundness::faultOf(const unsigned char* record, std::size_t index) const {
  const DbfField& field = fields_[index];
  if (field.width == 0 || isNullByFlag(record, field, context_)) return std::nullopt;
  if (pointsToMemo(field, context_)) return pointerFault(record, field);
  const unsigned char* at = record + field.offset;
  const std::string_view bytes = bytesOf(record, field);
  const bool whole = isWidthOfType(field, context_);
  switch (field.type) {
    case 'C':
    case 'V':
      return textFault(record, index);
    case 'N':
    case 'F':
      return numberFault(bytes);
    case 'L':
      return logicalFault(bytes);
    case 'D': {
      const char* reason = nullptr;
      const bool sound = isBlank(bytes) || !decodeField(record, field, context_, reason).isNull();
      return sound ? std::nullopt : std::optional<Unsound>({FaultKind::date, 0});
    }
    case 'T':
      return whole ? momentFault(at) : std::nullopt;
    case 'B':
      return whole ? realFault(at) : std::nullopt;
    default:
      return std::nullopt;
  }
}

std::optional<Unsound> Soundness::textFault(const unsigned char* record, std::size_t index) const {
  const DbfField& field = fields_[index];
  std::string_view bytes = bytesOf(record, field);
  if (field.lengthBit >= 0 && hasLength(record, field, context_)) {
    const auto length = static_cast<std::size_t>(static_cast<unsigned char>(bytes.back()));
    if (length >= bytes.size()) return Unsound{FaultKind::textLength, bytes.size() - 1};
    bytes = bytes.substr(0, length);
  }
  if ((flags_[index] & kFlagBinary) != 0) return std::nullopt;
  const std::size_t mark = bytes.find(static_cast<char>(kFileEnd));
  if (mark != kSound) return Unsound{FaultKind::markInText, mark};
  const std::size_t odd = unknownByte(bytes.substr(0, bytes.find('\0')));
  return odd == kSound ? std::nullopt : std::optional<Unsound>({FaultKind::textBytes, odd});
}

std::size_t Soundness::unknownByte(std::string_view bytes) const {
  const std::size_t start = asciiPrefix(bytes);
  if (start == bytes.size()) return kSound;
  if (context_.text.utf8()) return isValidUtf8(bytes) ? kSound : start;
  const CodePage& page = context_.text.page();
  if (!page.singleByte()) return page.encode(page.decode(bytes)) == bytes ? kSound : start;
  for (std::size_t at = start; at < bytes.size(); ++at) {
    if (isOpenByte(static_cast<unsigned char>(bytes[at]))) return at;
  }
  return kSound;
}

bool Soundness::isOpenByte(unsigned char byte) const {
  Byte& kept = bytes_[byte];
  if (kept == Byte::notLookedAt) kept = byte >= 0x80 && isOpen(context_.text.page(), byte) ? Byte::open : Byte::known;
  return kept == Byte::open;
}

double Soundness::likeness(const unsigned char* record) const {
  if (fields_.empty()) return 0;
  std::size_t sound = 0;
  for (std::size_t i = 0; i < fields_.size(); ++i) sound += faultOf(record, i) ? 0U : 1U;
  const double deletion = record[0] == ' ' || record[0] == '*' ? 0.5 : 0.0;
  return deletion + static_cast<double>(sound) / static_cast<double>(fields_.size()) / 2;
}

std::optional<bool> Soundness::isLikeField(const unsigned char* record, std::size_t index) const {
  const DbfField& field = fields_[index];
  const std::string_view bytes = bytesOf(record, field);
  if (field.width == 0 || isBlank(bytes) || isNullByFlag(record, field, context_)) return std::nullopt;
  if (pointsToMemo(field, context_)) return field.width == 4 ? std::nullopt : std::optional(mostlyOf(bytes, isDigit));
  switch (field.type) {
    case 'C':
    case 'V':
      if ((flags_[index] & kFlagBinary) != 0) return std::nullopt;
      return mostlyOf(bytes.substr(0, bytes.find('\0')), isOfText);
    case 'N':
    case 'F':
      return mostlyOf(bytes, isOfNumber);
    case 'D':
      return mostlyOf(bytes, isDigit);
    case 'L':
    case 'T':
      return !faultOf(record, index);
    case 'B':
      return faultOf(record, index) ? std::optional(false) : std::nullopt;
    default:
      return std::nullopt;
  }
}

bool Soundness::isLikeRow(const unsigned char* record) const {
  if (record[0] != ' ' && record[0] != '*') return false;
  int texts = 0;
  int others = 0;
  bool knowsOthers = false;
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const std::optional<bool> like = isLikeField(record, i);
    if (!like) continue;
    const bool text = fields_[i].type == 'C' || fields_[i].type == 'V';
    (text ? texts : others) += *like ? 1 : -1;
    knowsOthers = knowsOthers || !text;
  }
  // Nearly all bytes are like a text, so that texts count only where nothing else does.
  return knowsOthers ? others >= 0 : texts >= 0;
}

}  // namespace vantrelix::dbf

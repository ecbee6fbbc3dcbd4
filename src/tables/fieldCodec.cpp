#include "tables/fieldCodec.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "foundation/dateTime.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/dbfHeader.h"
#include "tables/dbfNumber.h"

namespace vantrelix::dbf {

namespace {

constexpr long kJulianDayOf1970 = 2440588;
constexpr int kSecondsOfDay = 86400;
constexpr int kBinaryPointer = 4;
constexpr int kLongestBlock = 10;  // digits

std::string_view bytesOf(const unsigned char* record, const DbfField& field) {
  return {reinterpret_cast<const char*>(record) + field.offset, static_cast<std::size_t>(field.width)};
}

bool isBlank(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == ' ' || byte == '\0'; });
}

bool flag(const unsigned char* record, int bit, const FieldContext& context) {
  return bit >= 0 && context.nullFlagsOffset >= 0 && (record[context.nullFlagsOffset + bit / 8] >> (bit % 8) & 1) != 0;
}

void setFlag(unsigned char* record, int bit, const FieldContext& context, bool on) {
  if (bit < 0 || context.nullFlagsOffset < 0) return;
  unsigned char& byte = record[context.nullFlagsOffset + bit / 8];
  const auto mask = static_cast<unsigned char>(1 << (bit % 8));
  byte = static_cast<unsigned char>(on ? byte | mask : byte & ~mask);
}

std::uint64_t wide(const unsigned char* bytes) {
  return littleEndian(bytes, 4) | static_cast<std::uint64_t>(littleEndian(bytes + 4, 4)) << 32;
}

void putWide(unsigned char* bytes, std::uint64_t value) {
  putLittleEndian(bytes, static_cast<std::uint32_t>(value), 4);
  putLittleEndian(bytes + 4, static_cast<std::uint32_t>(value >> 32), 4);
}

// A NUL ends a text, as it does for the programs that put one there.
Value decodeText(std::string_view bytes, const FieldContext& context) {
  bytes = bytes.substr(0, bytes.find('\0'));
  if (context.nullFlagsOffset < 0 && isBlank(bytes)) return {};
  return context.text.decode(bytes);
}

Value decodeVarying(const unsigned char* record, const DbfField& field, const FieldContext& context) {
  std::string_view bytes = bytesOf(record, field);
  if (flag(record, field.lengthBit, context)) {
    bytes = bytes.substr(0, std::min<std::size_t>(static_cast<unsigned char>(bytes.back()), bytes.size() - 1));
  }
  return context.text.decode(bytes);
}

Value decodeLogical(char byte) {
  switch (byte) {
    case 'T':
    case 't':
    case 'Y':
    case 'y':
      return true;
    case 'F':
    case 'f':
    case 'N':
    case 'n':
      return false;
    default:
      return {};
  }
}

Value decodeDate(std::string_view bytes) {
  constexpr std::size_t digits = 8;
  if (bytes.size() < digits) return {};
  const auto number = [&](std::size_t at, std::size_t count) {
    int value = 0;
    const char* end = bytes.data() + at + count;
    const auto parsed = std::from_chars(bytes.data() + at, end, value);
    return parsed.ec == std::errc() && parsed.ptr == end && value >= 0 ? value : -1;
  };
  DateTime date;
  date.year = number(0, 4);
  date.month = number(4, 2);
  date.day = number(6, 2);
  if (date.year <= 0 || !isValidDate(date.year, date.month, date.day)) return {};
  return date;
}

// Day number and milliseconds, the latter rounded: the programs that write them are often one short.
Value decodeMoment(const unsigned char* bytes) {
  long day = static_cast<std::int32_t>(littleEndian(bytes, 4));
  if (day <= 0) return {};
  const std::uint32_t milliseconds = littleEndian(bytes + 4, 4);
  long seconds = static_cast<long>((std::uint64_t{milliseconds} + 500) / 1000);
  day += seconds / kSecondsOfDay;
  seconds %= kSecondsOfDay;
  DateTime moment;
  civilFromDays(day - kJulianDayOf1970, moment.year, moment.month, moment.day);
  if (moment.year < 1 || moment.year > 9999) return {};
  moment.hour = static_cast<int>(seconds / 3600);
  moment.minute = static_cast<int>(seconds / 60 % 60);
  moment.second = static_cast<int>(seconds % 60);
  return moment;
}

Value decodeDouble(const unsigned char* bytes) {
  const double value = std::bit_cast<double>(wide(bytes));
  if (!std::isfinite(value)) return {};
  return value;
}

Value decodeNumber(const unsigned char* record, const DbfField& field) {
  double number = 0;
  if (const auto digits = DigitsField::of(field)) return digits->read(record, number) ? Value(number) : Value();
  const std::optional<double> any = parseNumber(bytesOf(record, field));
  return any ? Value(*any) : Value();
}

Value decodeBinary(const unsigned char* at, const DbfField& field, const char*& reason) {
  const int needed = field.type == 'I' ? 4 : 8;
  if (field.width != needed) {
    reason = "its width is not that of its type";
    return {};
  }
  switch (field.type) {
    case 'I':
      return static_cast<double>(static_cast<std::int32_t>(littleEndian(at, 4)));
    case 'Y':
      return static_cast<double>(static_cast<std::int64_t>(wide(at))) / 10000;
    case 'T':
      return decodeMoment(at);
    default:
      return decodeDouble(at);
  }
}

std::string nameOf(const DbfField& field, const FieldContext& context) {
  return "field " + context.text.decode(field.name) + " of " + context.displayName;
}

std::string shortText(const Value& value) {
  const std::string text = value.asText();
  return characterCount(text) <= 60 ? text : leftCharacters(text, 60) + "...";
}

[[noreturn]] void tooSmall(const DbfField& field, const FieldContext& context, const Value& value) {
  throw RunTimeFailure(failure::fieldTooSmall, "The " + nameOf(field, context) + " is too small for \"" +
                                                   shortText(value) + "\": its width is " +
                                                   std::to_string(field.width) + ". Give a shorter value.");
}

[[noreturn]] void notWritable(const DbfField& field, const FieldContext& context) {
  throw RunTimeFailure(failure::readOnlyTable, "The " + nameOf(field, context) + " cannot be written: fields of type " +
                                                   std::string(1, field.type) +
                                                   " are only read. Change it with the program that made the table.");
}

[[noreturn]] void wrongKind(const DbfField& field, const FieldContext& context, const Value& value) {
  throw RunTimeFailure(failure::typeMismatch, "The " + nameOf(field, context) + " cannot take \"" + shortText(value) +
                                                  "\": it is of another type. Give a value of its own.");
}

void putBytes(unsigned char* record, const DbfField& field, std::string_view bytes, char padding) {
  unsigned char* at = record + field.offset;
  std::fill(std::copy(bytes.begin(), bytes.end(), at), at + field.width, static_cast<unsigned char>(padding));
}

void encodeText(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  std::string bytes = context.text.encode(value.asText());
  const auto width = static_cast<std::size_t>(field.width);
  // Blanks that do not fit are no loss.
  while (bytes.size() > width && bytes.back() == ' ') bytes.pop_back();
  if (bytes.size() > width) tooSmall(field, context, value);
  const bool counted = field.lengthBit >= 0 && bytes.size() < width;
  putBytes(record, field, bytes, ' ');
  if (counted) record[field.offset + field.width - 1] = static_cast<unsigned char>(bytes.size());
  setFlag(record, field.lengthBit, context, counted);
}

double numberOf(const DbfField& field, const FieldContext& context, const Value& value) {
  if (value.isDate()) wrongKind(field, context, value);
  try {
    return value.asNumber();
  } catch (const RunTimeFailure&) {
    wrongKind(field, context, value);
  }
}

void encodeNumber(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  char* const at = reinterpret_cast<char*>(record) + field.offset;
  const auto width = static_cast<std::size_t>(field.width);
  if (!putDigits(numberOf(field, context, value), at, width, field.decimals)) tooSmall(field, context, value);
}

// The number times a power of ten as an integer, by its decimal text.
std::int64_t scaled(const DbfField& field, const FieldContext& context, const Value& value, int decimals) {
  const double number = numberOf(field, context, value);
  std::int64_t result = 0;
  if (!std::isfinite(number)) tooSmall(field, context, value);
  std::string digits = fixedDecimals(number, decimals);
  std::erase(digits, '.');
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), result);
  if (parsed.ec != std::errc()) tooSmall(field, context, value);
  return result;
}

void encodeInteger(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  const std::int64_t number = scaled(field, context, value, 0);
  if (number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max()) {
    tooSmall(field, context, value);
  }
  putLittleEndian(record + field.offset, static_cast<std::uint32_t>(number), 4);
}

void encodeDate(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  if (!value.isDate()) wrongKind(field, context, value);
  if (field.width < 8 || value.date().year < 1 || value.date().year > 9999) tooSmall(field, context, value);
  putBytes(record, field, formatDate(value.date(), "YYYYMMDD"), ' ');
}

void encodeMoment(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  if (!value.isDate()) wrongKind(field, context, value);
  const DateTime& moment = value.date();
  const long day = daysFromCivil(moment.year, moment.month, moment.day) + kJulianDayOf1970;
  const int seconds = (moment.hour * 60 + moment.minute) * 60 + moment.second;
  putLittleEndian(record + field.offset, static_cast<std::uint32_t>(day), 4);
  putLittleEndian(record + field.offset + 4, static_cast<std::uint32_t>(seconds) * 1000, 4);
}

void encodeLogical(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  if (value.isDate()) wrongKind(field, context, value);
  bool on = false;
  try {
    on = value.asBoolean();
  } catch (const RunTimeFailure&) {
    wrongKind(field, context, value);
  }
  putBytes(record, field, on ? "T" : "F", ' ');
}

void encodeBinary(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  if (field.width != (field.type == 'I' ? 4 : 8)) notWritable(field, context);
  unsigned char* at = record + field.offset;
  switch (field.type) {
    case 'I':
      return encodeInteger(record, field, context, value);
    case 'Y':
      return putWide(at, static_cast<std::uint64_t>(scaled(field, context, value, 4)));
    case 'T':
      return encodeMoment(record, field, context, value);
    default:
      return putWide(at, std::bit_cast<std::uint64_t>(numberOf(field, context, value)));
  }
}

bool isBinary(const DbfField& field) {
  return field.type == 'I' || field.type == 'B' || field.type == 'Y' || field.type == 'T';
}

bool isWritable(const DbfField& field, const FieldContext& context) {
  return std::string_view("CVNFDLIBYT").find(field.type) != std::string_view::npos && !isMemo(field, context) &&
         field.width > 0;
}

bool isBlankValue(const Value& value) { return value.isNull() || (value.isText() && value.text().empty()); }

// A blank text is no number and no date, but an empty field of such a type.
bool isBlankFor(const DbfField& field, const Value& value) {
  return isBlankValue(value) || (field.type != 'C' && field.type != 'V' && value.isText() && isBlank(value.text()));
}

}  // namespace

bool isMemo(const DbfField& field, const FieldContext& context) {
  return field.type == 'M' || (field.type == 'B' && !context.visual && field.width != 8);
}

std::uint32_t memoBlock(const unsigned char* record, const DbfField& field) {
  if (field.width == kBinaryPointer) return littleEndian(record + field.offset, kBinaryPointer);
  const std::optional<double> block = parseNumber(bytesOf(record, field));
  if (!block || *block < 0 || *block > 4294967295.0) return 0;
  return static_cast<std::uint32_t>(*block);
}

bool holdsAnyBlock(const DbfField& field) { return field.width == kBinaryPointer || field.width >= kLongestBlock; }

void putMemoBlock(unsigned char* record, const DbfField& field, const FieldContext& context, std::uint32_t block) {
  if (field.width == kBinaryPointer) {
    putLittleEndian(record + field.offset, block, kBinaryPointer);
  } else {
    const std::string digits = std::to_string(block);
    putBytes(record, field, std::string(static_cast<std::size_t>(field.width) - digits.size(), ' ') + digits, ' ');
  }
  setFlag(record, field.nullBit, context, false);
}

bool isNullByFlag(const unsigned char* record, const DbfField& field, const FieldContext& context) {
  return flag(record, field.nullBit, context);
}

bool hasLength(const unsigned char* record, const DbfField& field, const FieldContext& context) {
  return flag(record, field.lengthBit, context);
}

Value decodeField(const unsigned char* record, const DbfField& field, const FieldContext& context,
                  const char*& reason) {
  if (field.width == 0 || isNullByFlag(record, field, context)) return {};
  const std::string_view bytes = bytesOf(record, field);
  switch (field.type) {
    case 'C':
      return decodeText(bytes, context);
    case 'N':
    case 'F':
      return decodeNumber(record, field);
    case 'D':
      return decodeDate(bytes);
    case 'L':
      return decodeLogical(bytes.front());
    case 'V':
    case 'Q':
      return decodeVarying(record, field, context);
    case 'I':
    case 'B':
    case 'Y':
    case 'T':
      return decodeBinary(record + field.offset, field, reason);
    case 'G':
    case 'P':
    case 'W':
      reason = "it holds pictures, objects or other binary data";
      return {};
    case '0':
      return {};
    default:
      reason = "its type is not known";
      return {};
  }
}

void encodeField(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value) {
  if (!isWritable(field, context)) {
    if (isBlankValue(value) && isMemo(field, context)) return blankField(record, field, context);
    notWritable(field, context);
  }
  if (isBlankFor(field, value)) return blankField(record, field, context);
  switch (field.type) {
    case 'C':
    case 'V':
      encodeText(record, field, context, value);
      break;
    case 'D':
      encodeDate(record, field, context, value);
      break;
    case 'L':
      encodeLogical(record, field, context, value);
      break;
    case 'N':
    case 'F':
      encodeNumber(record, field, context, value);
      break;
    default:
      encodeBinary(record, field, context, value);
  }
  setFlag(record, field.nullBit, context, false);
}

void blankField(unsigned char* record, const DbfField& field, const FieldContext& context) {
  const bool zeros =
      (isBinary(field) && !isMemo(field, context)) || field.type == 'Q' || field.type == '0' ||
      (field.width == kBinaryPointer && std::string_view("MGPW").find(field.type) != std::string_view::npos);
  putBytes(record, field, "", zeros ? '\0' : ' ');
  if (field.lengthBit >= 0 && field.width > 0) {
    record[field.offset + field.width - 1] = 0;
    setFlag(record, field.lengthBit, context, true);
  }
  setFlag(record, field.nullBit, context, true);
}

}  // namespace vantrelix::dbf

// The values that the bytes of fields stand for.
#include <bit>
#include <charconv>
#include <cmath>

#include "foundation/dateTime.h"
#include "tables/dbfNumber.h"
#include "tables/fieldBytes.h"
#include "tables/fieldCodec.h"

namespace vantrelix::dbf {

namespace {

constexpr int kSecondsOfDay = 86400;

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

}  // namespace

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

}  // namespace vantrelix::dbf

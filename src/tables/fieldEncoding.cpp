// The bytes that stand for the values of fields.
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "foundation/dateTime.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/fieldBytes.h"
#include "tables/fieldCodec.h"
#include "tables/numberDigits.h"

namespace vantrelix::dbf {

namespace {

std::string nameOf(const DbfField& field, const FieldContext& context) {
  return "field " + context.text.decode(field.name) + " of " + context.displayName();
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

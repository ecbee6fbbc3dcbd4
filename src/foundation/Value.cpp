#include "foundation/Value.h"

#include "foundation/dateTime.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

[[noreturn]] void failOnKind(const Value& value, const char* wanted) {
  if (value.isNull()) throw RunTimeFailure(failure::invalidUseOfNull, "Invalid use of Null");
  throw RunTimeFailure(failure::typeMismatch, std::string("Type mismatch: the value is not a ") + wanted);
}

// A table's date has no time of day; showing midnight would invent one.
std::string dateText(const DateTime& date) {
  if (date.hour != 0 || date.minute != 0 || date.second != 0) return generalDate(date);
  return shortDate(date);
}

}  // namespace

const std::string& Value::text() const {
  if (const auto* text = std::get_if<std::string>(&content_)) return *text;
  failOnKind(*this, "text");
}

double Value::number() const {
  if (const auto* number = std::get_if<double>(&content_)) return *number;
  failOnKind(*this, "number");
}

bool Value::boolean() const {
  if (const auto* flag = std::get_if<bool>(&content_)) return *flag;
  failOnKind(*this, "boolean");
}

const DateTime& Value::date() const {
  if (const auto* date = std::get_if<DateTime>(&content_)) return *date;
  failOnKind(*this, "date");
}

std::string Value::asText() const {
  if (isText()) return text();
  if (isNumber()) return generalText(number());
  if (isBoolean()) return boolean() ? "True" : "False";
  return dateText(date());
}

double Value::asNumber() const {
  if (isNumber()) return number();
  if (isText()) return CDbl(text());
  if (isBoolean()) return boolean() ? -1 : 0;
  return serialDate(date());
}

bool Value::asBoolean() const {
  if (isBoolean()) return boolean();
  if (isText() && equalIgnoringCase(text(), "True")) return true;
  if (isText() && equalIgnoringCase(text(), "False")) return false;
  return asNumber() != 0;
}

Value ChkNulls(const Value& value, const Value& fallback, bool blankIsNull) {
  const bool empty = blankIsNull && value.isText() && value.text().empty();
  return value.isNull() || empty ? fallback : value;
}

}  // namespace vantrelix

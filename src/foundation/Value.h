// A value as a table field, a widget or a caller hands it over: null, text, number, date or boolean.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "platform/Platform.h"

namespace vantrelix {

using platform::DateTime;

class Value {
 public:
  Value() = default;
  Value(std::string text) : content_(std::move(text)) {}
  Value(std::string_view text) : content_(std::string(text)) {}
  Value(const char* text) : content_(std::string(text)) {}
  Value(double number) : content_(number) {}
  Value(int number) : content_(static_cast<double>(number)) {}
  Value(long number) : content_(static_cast<double>(number)) {}
  Value(bool flag) : content_(flag) {}
  Value(const DateTime& date) : content_(date) {}

  bool isNull() const { return std::holds_alternative<std::monostate>(content_); }
  bool isText() const { return std::holds_alternative<std::string>(content_); }
  bool isNumber() const { return std::holds_alternative<double>(content_); }
  bool isBoolean() const { return std::holds_alternative<bool>(content_); }
  bool isDate() const { return std::holds_alternative<DateTime>(content_); }

  // The content of that kind. Throws 13 (type mismatch) where it is of another kind, 94 where it is null.
  const std::string& text() const;
  double number() const;
  bool boolean() const;
  const DateTime& date() const;

  // The value as text: general text of a number, "True" or "False", the general date. Throws 94 on null.
  std::string asText() const;
  // The value as a number by a plain conversion (13 where the text is none; true is -1). Throws 94 on null.
  double asNumber() const;
  // The value as a boolean: a number other than 0, or a text "True", "False" or a number. Throws 13 and 94.
  bool asBoolean() const;

  friend bool operator==(const Value&, const Value&) = default;

 private:
  std::variant<std::monostate, std::string, double, bool, DateTime> content_;
};

// `fallback` where value is null, or where blankIsNull is set and the value is the empty text; the value otherwise.
Value ChkNulls(const Value& value, const Value& fallback, bool blankIsNull);

}  // namespace vantrelix

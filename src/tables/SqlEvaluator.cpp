#include "tables/SqlEvaluator.h"

#include <algorithm>
#include <cmath>

#include "foundation/text.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

std::optional<double> numberOf(const Value& value) {
  if (value.isNumber()) return value.number();
  if (value.isBoolean()) return value.boolean() ? -1.0 : 0.0;
  if (value.isText()) return sqlNumber(value.text());
  return std::nullopt;
}

Value numberValue(double number) { return std::isfinite(number) ? Value(number) : Value(); }

// True, false or (null, or a text that says neither) unknown.
std::optional<bool> truthOf(const Value& value) {
  if (value.isText()) {
    const auto order = compareValues(value, Value(false));
    if (!order) return std::nullopt;
    return *order != 0;
  }
  const auto number = numberOf(value);
  if (!number) return std::nullopt;
  return *number != 0;
}

Value valueOf(std::optional<bool> truth) { return truth ? Value(*truth) : Value(); }

bool holds(SqlComparison comparison, int order) {
  switch (comparison) {
    case SqlComparison::equal:
      return order == 0;
    case SqlComparison::notEqual:
      return order != 0;
    case SqlComparison::less:
      return order < 0;
    case SqlComparison::lessOrEqual:
      return order <= 0;
    case SqlComparison::greater:
      return order > 0;
    case SqlComparison::greaterOrEqual:
      return order >= 0;
  }
  return false;
}

class Evaluator {
 public:
  explicit Evaluator(const SqlRow& row) : row_(row) {}

  Value run(const SqlExpression& e) const {
    switch (e.kind) {
      case SqlKind::literal:
        return e.literal;
      case SqlKind::field:
        return row_.value(static_cast<std::size_t>(e.field));
      case SqlKind::negate:
        return negated(e);
      case SqlKind::sum:
      case SqlKind::product:
        return arithmetic(e);
      case SqlKind::join:
        return joined(e);
      case SqlKind::function:
        return call(e);
      default:
        return valueOf(truth(e));
    }
  }

  std::optional<bool> truth(const SqlExpression& e) const {
    switch (e.kind) {
      case SqlKind::comparison:
        return compared(e.comparison, run(e.arguments[0]), run(e.arguments[1]));
      case SqlKind::like:
        return invertedIf(e.negated, like(run(e.arguments[0]), run(e.arguments[1])));
      case SqlKind::isNull:
        return run(e.arguments[0]).isNull() != e.negated;
      case SqlKind::between:
        return invertedIf(e.negated, between(e));
      case SqlKind::in:
        return invertedIf(e.negated, in(e));
      case SqlKind::logicalNot:
        return invertedIf(true, truth(e.arguments[0]));
      case SqlKind::logicalAnd:
        return chain(e, false);
      case SqlKind::logicalOr:
        return chain(e, true);
      default:
        return truthOf(run(e));
    }
  }

 private:
  static std::optional<bool> invertedIf(bool inverted, std::optional<bool> truth) {
    return truth ? std::optional<bool>(*truth != inverted) : truth;
  }

  static std::optional<bool> compared(SqlComparison comparison, const Value& a, const Value& b) {
    const auto order = compareValues(a, b);
    if (!order) return std::nullopt;
    return holds(comparison, *order);
  }

  // AND is decided by the first false, OR by the first true; else one unknown leaves it unknown.
  std::optional<bool> chain(const SqlExpression& e, bool deciding) const {
    std::optional<bool> result = !deciding;
    for (const SqlExpression& argument : e.arguments) {
      const auto part = truth(argument);
      if (part == deciding) return deciding;
      if (!part) result.reset();
    }
    return result;
  }

  static std::optional<bool> like(const Value& text, const Value& pattern) {
    if (text.isNull() || pattern.isNull()) return std::nullopt;
    return matchesPattern(text.asText(), pattern.asText());
  }

  std::optional<bool> between(const SqlExpression& e) const {
    const Value value = run(e.arguments[0]);
    const auto above = compared(SqlComparison::greaterOrEqual, value, run(e.arguments[1]));
    const auto below = compared(SqlComparison::lessOrEqual, value, run(e.arguments[2]));
    if (above == false || below == false) return false;
    return above && below ? std::optional<bool>(true) : std::nullopt;
  }

  std::optional<bool> in(const SqlExpression& e) const {
    const Value value = run(e.arguments[0]);
    std::optional<bool> result = false;
    for (std::size_t i = 1; i < e.arguments.size(); ++i) {
      const auto equal = compared(SqlComparison::equal, value, run(e.arguments[i]));
      if (equal == true) return true;
      if (!equal) result.reset();
    }
    return result;
  }

  Value negated(const SqlExpression& e) const {
    const auto number = numberOf(run(e.arguments[0]));
    return number ? Value(-*number) : Value();
  }

  Value arithmetic(const SqlExpression& e) const {
    Value result = run(e.arguments[0]);
    for (std::size_t i = 1; i < e.arguments.size(); ++i) {
      result = step(e.operators[i - 1], result, run(e.arguments[i]));
    }
    return result;
  }

  static Value step(char symbol, const Value& a, const Value& b) {
    if (symbol == '+' && a.isText() && b.isText()) return a.text() + b.text();
    const auto left = numberOf(a);
    const auto right = numberOf(b);
    if (!left || !right) return {};
    switch (symbol) {
      case '+':
        return numberValue(*left + *right);
      case '-':
        return numberValue(*left - *right);
      case '*':
        return numberValue(*left * *right);
      default:
        return *right == 0 ? Value() : numberValue(*left / *right);
    }
  }

  // Null joins as the empty text; nothing but nulls stays null.
  Value joined(const SqlExpression& e) const {
    std::string text;
    bool any = false;
    for (const SqlExpression& argument : e.arguments) {
      const Value value = run(argument);
      if (value.isNull()) continue;
      any = true;
      text += value.asText();
    }
    return any ? Value(std::move(text)) : Value();
  }

  Value call(const SqlExpression& e) const {
    const Value first = run(e.arguments[0]);
    if (first.isNull()) return {};
    switch (e.function) {
      case SqlFunction::val:
        return first.isNumber() ? first : Value(sqlLeadingNumber(first.asText()));
      case SqlFunction::abs:
      case SqlFunction::integer: {
        const auto number = numberOf(first);
        if (!number) return {};
        return e.function == SqlFunction::abs ? std::fabs(*number) : std::floor(*number);
      }
      case SqlFunction::len:
        return static_cast<double>(characterCount(first.asText()));
      default:
        return textFunction(e, first.asText());
    }
  }

  Value textFunction(const SqlExpression& e, const std::string& text) const {
    switch (e.function) {
      case SqlFunction::ucase:
        return upperCase(text);
      case SqlFunction::lcase:
        return lowerCase(text);
      case SqlFunction::trim:
        return vantrelix::trim(text);
      case SqlFunction::ltrim:
        return trimLeft(text);
      case SqlFunction::rtrim:
        return trimRight(text);
      default:
        return slice(e, text);
    }
  }

  Value slice(const SqlExpression& e, const std::string& text) const {
    const auto second = countOf(e.arguments[1]);
    const auto third = e.arguments.size() > 2 ? countOf(e.arguments[2]) : std::optional<std::size_t>(std::string::npos);
    if (!second || !third) return {};
    if (e.function == SqlFunction::left) return leftCharacters(text, *second);
    if (e.function == SqlFunction::mid) return *second == 0 ? Value() : Value(midCharacters(text, *second, *third));
    const std::size_t length = characterCount(text);
    return *second >= length ? text : midCharacters(text, length - *second + 1);
  }

  // A whole number of characters; nothing where it is none or negative.
  std::optional<std::size_t> countOf(const SqlExpression& e) const {
    const auto number = numberOf(run(e));
    if (!number || !(*number >= 0)) return std::nullopt;
    return static_cast<std::size_t>(std::min(std::floor(*number), 1e9));
  }

  const SqlRow& row_;
};

}  // namespace

Value evaluate(const SqlExpression& expression, const SqlRow& row) { return Evaluator(row).run(expression); }

bool isMet(const SqlExpression& condition, const SqlRow& row) { return Evaluator(row).truth(condition) == true; }

}  // namespace vantrelix

#include "tables/SqlExpressionParser.h"

namespace vantrelix {

namespace {

// Nesting of parentheses, NOT and signs; keeps the stack small whatever the text.
constexpr int kDeepestNesting = 100;

constexpr std::array<std::string_view, 21> kKeywords = {
    "select", "from", "where",   "order", "by",   "as",   "and",   "or",   "not",    "like",    "is",
    "null",   "in",   "between", "asc",   "desc", "true", "false", "into", "insert", "distinct"};

struct FunctionRow {
  std::string_view name;
  SqlFunction function;
  std::size_t fewest;
  std::size_t most;
};
constexpr std::array<FunctionRow, 12> kFunctions = {{
    {"ucase", SqlFunction::ucase, 1, 1},
    {"lcase", SqlFunction::lcase, 1, 1},
    {"trim", SqlFunction::trim, 1, 1},
    {"ltrim", SqlFunction::ltrim, 1, 1},
    {"rtrim", SqlFunction::rtrim, 1, 1},
    {"left", SqlFunction::left, 2, 2},
    {"right", SqlFunction::right, 2, 2},
    {"mid", SqlFunction::mid, 2, 3},
    {"len", SqlFunction::len, 1, 1},
    {"val", SqlFunction::val, 1, 1},
    {"abs", SqlFunction::abs, 1, 1},
    {"int", SqlFunction::integer, 1, 1},
}};

struct ComparisonRow {
  std::string_view symbol;
  SqlComparison comparison;
};
constexpr std::array<ComparisonRow, 6> kComparisons = {{
    {"=", SqlComparison::equal},
    {"<>", SqlComparison::notEqual},
    {"<", SqlComparison::less},
    {"<=", SqlComparison::lessOrEqual},
    {">", SqlComparison::greater},
    {">=", SqlComparison::greaterOrEqual},
}};

bool isKeyword(std::string_view word) {
  return std::any_of(kKeywords.begin(), kKeywords.end(),
                     [&](std::string_view keyword) { return isSameWord(keyword, word); });
}

// Puts a new node around one, at the same place, with room for a second argument.
void wrap(SqlKind kind, SqlExpression& first) {
  SqlExpression result;
  result.kind = kind;
  result.position = first.position;
  result.arguments.reserve(2);
  result.arguments.push_back(std::move(first));
  first = std::move(result);
}

}  // namespace

// Counts one level of nesting for as long as it lives.
class SqlExpressionParser::Level {
 public:
  explicit Level(SqlExpressionParser& parser) : parser_(parser) {
    if (++parser_.depth_ > kDeepestNesting) parser_.fail("the expression is nested too deeply.");
  }
  ~Level() { --parser_.depth_; }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;

 private:
  SqlExpressionParser& parser_;
};

SqlExpression SqlExpressionParser::condition() {
  if (token().kind == SqlTokenKind::end) fail("the criterion is empty. Write it as FIELD = 'value'.");
  SqlExpression result = expression();
  expectEnd();
  return result;
}

void SqlExpressionParser::fail(std::string_view what) const {
  const bool wrong = token().kind == SqlTokenKind::wrong;
  throw sqlSyntaxFailure(text_, token().position, wrong ? token().text : what);
}

void SqlExpressionParser::expectEnd() const {
  if (token().kind == SqlTokenKind::end) return;
  const bool behindText = before_ == SqlTokenKind::text;
  fail(behindText ? "the text before this place has ended. A quote inside a text stands doubled."
                  : "the query should end here.");
}

std::string SqlExpressionParser::name(std::string_view what) {
  const bool bare = token().kind == SqlTokenKind::word && !isKeyword(token().text);
  if (!bare && token().kind != SqlTokenKind::bracketed) fail(what);
  return std::string(advance().text);
}

SqlExpression SqlExpressionParser::expression() {
  const Level level(*this);
  return logicalChain(SqlKind::logicalOr, "or",
                      [this] { return logicalChain(SqlKind::logicalAnd, "and", [this] { return negation(); }); });
}

template <class Part>
SqlExpression SqlExpressionParser::logicalChain(SqlKind kind, std::string_view word, Part part) {
  SqlExpression result = part();
  if (isWord(word)) wrap(kind, result);
  while (takeWord(word)) result.arguments.push_back(part());
  return result;
}

SqlExpression SqlExpressionParser::negation() {
  if (!isWord("not")) return predicate();
  const Level level(*this);
  const std::size_t position = advance().position;
  SqlExpression result = negation();
  wrap(SqlKind::logicalNot, result);
  result.position = position;
  return result;
}

SqlExpression SqlExpressionParser::predicate() {
  SqlExpression result = operand();
  if (token().kind == SqlTokenKind::symbol) {
    comparison(result);
  } else if (isWord("is")) {
    nullTest(result);
  } else {
    wordPredicate(result);
  }
  return result;
}

void SqlExpressionParser::comparison(SqlExpression& left) {
  const ComparisonRow* row = findSqlRow(kComparisons, &ComparisonRow::symbol, token().text);
  if (row == nullptr) return;
  advance();
  wrap(SqlKind::comparison, left);
  left.comparison = row->comparison;
  left.arguments.push_back(operand());
}

void SqlExpressionParser::nullTest(SqlExpression& left) {
  advance();
  wrap(SqlKind::isNull, left);
  left.negated = takeWord("not");
  expectWord("null", "NULL was expected here.");
}

void SqlExpressionParser::wordPredicate(SqlExpression& left) {
  const bool negated = isWord("not") && (isWord("like", 1) || isWord("between", 1) || isWord("in", 1));
  if (negated) advance();
  if (takeWord("like")) {
    wrap(SqlKind::like, left);
    left.arguments.push_back(operand());
  } else if (takeWord("between")) {
    wrap(SqlKind::between, left);
    left.arguments.push_back(operand());
    expectWord("and", "AND was expected here.");
    left.arguments.push_back(operand());
  } else if (takeWord("in")) {
    wrap(SqlKind::in, left);
    expectSymbol("(", "a list in parentheses was expected behind IN.");
    argumentList(left);
  } else {
    return;
  }
  left.negated = negated;
}

// The arguments up to the closing parenthesis, at least one.
void SqlExpressionParser::argumentList(SqlExpression& into) {
  do into.arguments.push_back(expression());
  while (takeSymbol(","));
  expectSymbol(")", "the closing parenthesis is missing.");
}

SqlExpression SqlExpressionParser::operand() {
  return operatorChain(SqlKind::join, "&", [this] {
    return operatorChain(SqlKind::sum, "+-",
                         [this] { return operatorChain(SqlKind::product, "*/", [this] { return sign(); }); });
  });
}

template <class Part>
SqlExpression SqlExpressionParser::operatorChain(SqlKind kind, std::string_view symbols, Part part) {
  SqlExpression result = part();
  if (isOperator(symbols)) wrap(kind, result);
  while (isOperator(symbols)) {
    result.operators += advance().text;
    result.arguments.push_back(part());
  }
  return result;
}

SqlExpression SqlExpressionParser::sign() {
  if (!isSymbol("-") && !isSymbol("+")) return primary();
  const Level level(*this);
  const SqlToken symbol = advance();
  if (symbol.text == "+") return sign();
  SqlExpression result = sign();
  wrap(SqlKind::negate, result);
  result.position = symbol.position;
  return result;
}

SqlExpression SqlExpressionParser::primary() {
  SqlExpression result;
  result.position = token().position;
  switch (token().kind) {
    case SqlTokenKind::text:
      result.literal = quotedText(text_, advance());
      return result;
    case SqlTokenKind::number:
    case SqlTokenKind::date:
      result.literal = advance().value;
      return result;
    case SqlTokenKind::bracketed:
      return field();
    case SqlTokenKind::word:
      return isSymbol("(", 1) && !isKeyword(token().text) ? call() : wordValue();
    case SqlTokenKind::symbol:
      if (takeSymbol("(")) {
        result = expression();
        expectSymbol(")", "the closing parenthesis is missing.");
        return result;
      }
      break;
    case SqlTokenKind::wrong:
    case SqlTokenKind::end:
      break;
  }
  fail("a field, a value or a function was expected here.");
}

SqlExpression SqlExpressionParser::wordValue() {
  SqlExpression result;
  result.position = token().position;
  if (isWord("true") || isWord("false")) {
    result.literal = isWord("true");
  } else if (!isWord("null")) {
    return field();
  }
  advance();
  return result;
}

SqlExpression SqlExpressionParser::field() {
  SqlExpression result;
  result.kind = SqlKind::field;
  result.position = token().position;
  result.name = name("a field, a value or a function was expected here.");
  return result;
}

SqlExpression SqlExpressionParser::call() {
  std::string_view called = token().text;
  if (called.back() == '$') called.remove_suffix(1);
  if (findSqlRow(kSqlAggregates, &SqlAggregateRow::name, called) != nullptr) {
    fail("this function stands alone in the list behind SELECT.");
  }
  const FunctionRow* row = findSqlRow(kFunctions, &FunctionRow::name, called);
  if (row == nullptr) fail("there is no function of this name.");
  SqlExpression result;
  result.kind = SqlKind::function;
  result.function = row->function;
  const SqlToken start = advance();
  result.position = start.position;
  advance();
  argumentList(result);
  if (result.arguments.size() < row->fewest || result.arguments.size() > row->most) {
    throw sqlSyntaxFailure(text_, start.position, "this function does not take that number of arguments.");
  }
  return result;
}

}  // namespace vantrelix

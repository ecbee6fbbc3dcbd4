#include "tables/SqlParser.h"

#include <algorithm>
#include <array>

#include "foundation/text.h"
#include "tables/SqlLexer.h"

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

struct AggregateRow {
  std::string_view name;
  SqlAggregate aggregate;
};
constexpr std::array<AggregateRow, 5> kAggregates = {{
    {"min", SqlAggregate::minimum},
    {"max", SqlAggregate::maximum},
    {"count", SqlAggregate::count},
    {"sum", SqlAggregate::sum},
    {"avg", SqlAggregate::average},
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

// The row whose key is the word, in any case; null where there is none.
template <class Rows, class Key>
auto findRow(const Rows& rows, Key key, std::string_view word) -> decltype(rows.data()) {
  for (const auto& row : rows) {
    if (equalIgnoringCase(row.*key, word)) return &row;
  }
  return nullptr;
}

bool isKeyword(std::string_view word) {
  return std::any_of(kKeywords.begin(), kKeywords.end(),
                     [&](std::string_view keyword) { return equalIgnoringCase(keyword, word); });
}

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text), tokens_(sqlTokens(text)) {}

  SqlStatement statement() {
    SqlStatement result;
    if (isWord("insert")) {
      result = insert();
    } else if (isWord("select")) {
      result = select(true);
    } else {
      fail("a query begins with SELECT or INSERT INTO.");
    }
    takeSymbol(";");
    expectEnd();
    return result;
  }

  SqlExpression condition() {
    if (token().kind == SqlTokenKind::end) fail("the criterion is empty. Write it as FIELD = 'value'.");
    SqlExpression result = expression();
    expectEnd();
    return result;
  }

 private:
  // Counts one level of nesting for as long as it lives.
  class Level {
   public:
    explicit Level(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > kDeepestNesting) parser_.fail("the expression is nested too deeply.");
    }
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  const SqlToken& token(std::size_t ahead = 0) const { return tokens_[std::min(at_ + ahead, tokens_.size() - 1)]; }
  const SqlToken& advance() { return tokens_[at_ + 1 < tokens_.size() ? at_++ : at_]; }

  [[noreturn]] void fail(std::string_view what) const { throw sqlSyntaxFailure(text_, token().position, what); }

  bool isWord(std::string_view word, std::size_t ahead = 0) const {
    return token(ahead).kind == SqlTokenKind::word && equalIgnoringCase(token(ahead).text, word);
  }
  bool isSymbol(std::string_view symbol, std::size_t ahead = 0) const {
    return token(ahead).kind == SqlTokenKind::symbol && token(ahead).text == symbol;
  }
  bool takeWord(std::string_view word) { return isWord(word) && (advance(), true); }
  bool takeSymbol(std::string_view symbol) { return isSymbol(symbol) && (advance(), true); }
  void expectWord(std::string_view word, std::string_view what) {
    if (!takeWord(word)) fail(what);
  }
  void expectSymbol(std::string_view symbol, std::string_view what) {
    if (!takeSymbol(symbol)) fail(what);
  }
  void expectEnd() const {
    if (token().kind != SqlTokenKind::end) fail("the query should end here.");
  }

  std::string name(std::string_view what) {
    const bool bare = token().kind == SqlTokenKind::word && !isKeyword(token().text);
    if (!bare && token().kind != SqlTokenKind::bracketed) fail(what);
    return advance().text;
  }

  SqlSelect select(bool withOrder) {
    SqlSelect result;
    result.text = text_;
    expectWord("select", "SELECT was expected here.");
    if (!takeSymbol("*")) {
      do result.items.push_back(item());
      while (takeSymbol(","));
    }
    expectWord("from", "FROM was expected here.");
    result.table = name("the name of a table was expected here, as in [TABLE].");
    if (takeWord("where")) result.where = expression();
    if (withOrder && takeWord("order")) {
      expectWord("by", "BY was expected here.");
      result.order = orderList();
    }
    return result;
  }

  SqlItem item() {
    SqlItem result;
    const AggregateRow* row = token().kind == SqlTokenKind::word && isSymbol("(", 1)
                                  ? findRow(kAggregates, &AggregateRow::name, token().text)
                                  : nullptr;
    if (row != nullptr) {
      result.aggregate = row->aggregate;
      aggregateArgument(result);
    } else {
      result.expression = expression();
    }
    if (takeWord("as")) result.alias = name("a name was expected behind AS.");
    return result;
  }

  void aggregateArgument(SqlItem& result) {
    advance();
    advance();
    if (result.aggregate == SqlAggregate::count && takeSymbol("*")) {
      result.expression.literal = 1.0;
    } else {
      result.expression = expression();
    }
    expectSymbol(")", "the closing parenthesis is missing.");
  }

  std::vector<SqlOrder> orderList() {
    if (token().kind == SqlTokenKind::end || isSymbol(";")) fail("nothing to sort by stands behind ORDER BY.");
    std::vector<SqlOrder> result;
    do {
      if (token().kind == SqlTokenKind::number && (isSymbol(",", 1) || token(1).kind != SqlTokenKind::symbol)) {
        fail("a number alone is nothing to sort by. Name the field.");
      }
      SqlOrder order;
      order.expression = expression();
      order.descending = takeWord("desc");
      if (!order.descending) takeWord("asc");
      result.push_back(std::move(order));
    } while (takeSymbol(","));
    return result;
  }

  SqlInsert insert() {
    SqlInsert result;
    advance();
    expectWord("into", "INTO was expected here.");
    result.target = name("the name of a table was expected here, as in [TABLE].");
    if (takeSymbol("(")) {
      do {
        const std::size_t position = token().position;
        result.fields.push_back({name("the name of a field was expected here."), position});
      } while (takeSymbol(","));
      expectSymbol(")", "the closing parenthesis is missing.");
    }
    result.source = select(false);
    return result;
  }

  SqlExpression expression() {
    const Level level(*this);
    return logicalChain(SqlKind::logicalOr, "or",
                        [this] { return logicalChain(SqlKind::logicalAnd, "and", [this] { return negation(); }); });
  }

  template <class Part>
  SqlExpression logicalChain(SqlKind kind, std::string_view word, Part part) {
    SqlExpression first = part();
    if (!isWord(word)) return first;
    SqlExpression chain = wrap(kind, std::move(first));
    while (takeWord(word)) chain.arguments.push_back(part());
    return chain;
  }

  // A new node around one that stands at the same place.
  static SqlExpression wrap(SqlKind kind, SqlExpression first) {
    SqlExpression result;
    result.kind = kind;
    result.position = first.position;
    result.arguments.push_back(std::move(first));
    return result;
  }

  SqlExpression negation() {
    if (!isWord("not")) return predicate();
    const Level level(*this);
    const std::size_t position = advance().position;
    SqlExpression result = wrap(SqlKind::logicalNot, negation());
    result.position = position;
    return result;
  }

  SqlExpression predicate() {
    SqlExpression left = operand();
    if (token().kind == SqlTokenKind::symbol) {
      const ComparisonRow* row = findRow(kComparisons, &ComparisonRow::symbol, token().text);
      if (row == nullptr) return left;
      advance();
      SqlExpression result = wrap(SqlKind::comparison, std::move(left));
      result.comparison = row->comparison;
      result.arguments.push_back(operand());
      return result;
    }
    return isWord("is") ? nullTest(std::move(left)) : wordPredicate(std::move(left));
  }

  SqlExpression nullTest(SqlExpression left) {
    advance();
    SqlExpression result = wrap(SqlKind::isNull, std::move(left));
    result.negated = takeWord("not");
    expectWord("null", "NULL was expected here.");
    return result;
  }

  SqlExpression wordPredicate(SqlExpression left) {
    const bool negated = isWord("not") && (isWord("like", 1) || isWord("between", 1) || isWord("in", 1));
    if (negated) advance();
    SqlExpression result;
    if (takeWord("like")) {
      result = wrap(SqlKind::like, std::move(left));
      result.arguments.push_back(operand());
    } else if (takeWord("between")) {
      result = wrap(SqlKind::between, std::move(left));
      result.arguments.push_back(operand());
      expectWord("and", "AND was expected here.");
      result.arguments.push_back(operand());
    } else if (takeWord("in")) {
      result = wrap(SqlKind::in, std::move(left));
      expectSymbol("(", "a list in parentheses was expected behind IN.");
      argumentList(result);
    } else {
      return left;
    }
    result.negated = negated;
    return result;
  }

  // The arguments up to the closing parenthesis, at least one.
  void argumentList(SqlExpression& into) {
    do into.arguments.push_back(expression());
    while (takeSymbol(","));
    expectSymbol(")", "the closing parenthesis is missing.");
  }

  SqlExpression operand() {
    return operatorChain(SqlKind::join, "&", [this] {
      return operatorChain(SqlKind::sum, "+-",
                           [this] { return operatorChain(SqlKind::product, "*/", [this] { return sign(); }); });
    });
  }

  template <class Part>
  SqlExpression operatorChain(SqlKind kind, std::string_view symbols, Part part) {
    const auto isOperator = [&] {
      return token().kind == SqlTokenKind::symbol && token().text.size() == 1 &&
             symbols.find(token().text[0]) != std::string_view::npos;
    };
    SqlExpression first = part();
    if (!isOperator()) return first;
    SqlExpression chain = wrap(kind, std::move(first));
    while (isOperator()) {
      chain.operators += advance().text;
      chain.arguments.push_back(part());
    }
    return chain;
  }

  SqlExpression sign() {
    if (!isSymbol("-") && !isSymbol("+")) return primary();
    const Level level(*this);
    const SqlToken& symbol = advance();
    if (symbol.text == "+") return sign();
    SqlExpression result = wrap(SqlKind::negate, sign());
    result.position = symbol.position;
    return result;
  }

  SqlExpression primary() {
    SqlExpression result;
    result.position = token().position;
    switch (token().kind) {
      case SqlTokenKind::text:
        result.literal = advance().text;
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
      case SqlTokenKind::end:
        break;
    }
    fail("a field, a value or a function was expected here.");
  }

  SqlExpression wordValue() {
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

  SqlExpression field() {
    SqlExpression result;
    result.kind = SqlKind::field;
    result.position = token().position;
    result.name = name("a field, a value or a function was expected here.");
    return result;
  }

  SqlExpression call() {
    std::string_view called = token().text;
    if (called.back() == '$') called.remove_suffix(1);
    if (findRow(kAggregates, &AggregateRow::name, called) != nullptr) {
      fail("this function stands alone in the list behind SELECT.");
    }
    const FunctionRow* row = findRow(kFunctions, &FunctionRow::name, called);
    if (row == nullptr) fail("there is no function of this name.");
    SqlExpression result;
    result.kind = SqlKind::function;
    result.function = row->function;
    const SqlToken& start = advance();
    result.position = start.position;
    advance();
    argumentList(result);
    if (result.arguments.size() < row->fewest || result.arguments.size() > row->most) {
      throw sqlSyntaxFailure(text_, start.position, "this function does not take that number of arguments.");
    }
    return result;
  }

  std::string_view text_;
  std::vector<SqlToken> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
};

}  // namespace

SqlStatement parseSql(std::string_view text) { return Parser(text).statement(); }

SqlExpression parseSqlCondition(std::string_view text) { return Parser(text).condition(); }

}  // namespace vantrelix

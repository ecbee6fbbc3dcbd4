// The expressions of a query text, by recursive descent. Private to the parser.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "foundation/text.h"
#include "tables/SqlLexer.h"
#include "tables/SqlTree.h"

namespace vantrelix {

struct SqlAggregateRow {
  std::string_view name;
  SqlAggregate aggregate;
};
inline constexpr std::array<SqlAggregateRow, 5> kSqlAggregates = {{
    {"min", SqlAggregate::minimum},
    {"max", SqlAggregate::maximum},
    {"count", SqlAggregate::count},
    {"sum", SqlAggregate::sum},
    {"avg", SqlAggregate::average},
}};

// Whether a word of a query is that one, in any case. Most words differ in length from those they are compared with.
inline bool isSameWord(std::string_view word, std::string_view other) {
  return word.size() == other.size() && equalIgnoringCase(word, other);
}

// The row whose key is the word, in any case; null where there is none.
template <class Rows, class Key>
auto findSqlRow(const Rows& rows, Key key, std::string_view word) -> decltype(rows.data()) {
  for (const auto& row : rows) {
    if (isSameWord(row.*key, word)) return &row;
  }
  return nullptr;
}

// The words of a query, and the expressions among them. The text outlives the parser.
class SqlExpressionParser {
 public:
  explicit SqlExpressionParser(std::string_view text)
      : text_(text), lexer_(text), ahead_{lexer_.next(), lexer_.next()} {}

  // The whole text as one condition.
  SqlExpression condition();

 protected:
  // The word that stands here, or the one behind it.
  const SqlToken& token(std::size_t ahead = 0) const { return ahead_[ahead]; }
  // Gives the word that stands here and goes to the next.
  SqlToken advance() {
    before_ = ahead_[0].kind;
    SqlToken passed = std::exchange(ahead_[0], std::move(ahead_[1]));
    ahead_[1] = lexer_.next();
    return passed;
  }

  // 3061 at the word that stands here; a wrong word has its own reason.
  [[noreturn]] void fail(std::string_view what) const;

  bool isWord(std::string_view word, std::size_t ahead = 0) const {
    return token(ahead).kind == SqlTokenKind::word && isSameWord(token(ahead).text, word);
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
  void expectEnd() const;

  // A bare name that is no keyword, or one in brackets.
  std::string name(std::string_view what);

  SqlExpression expression();

  std::string_view text_;

 private:
  class Level;

  template <class Part>
  SqlExpression logicalChain(SqlKind kind, std::string_view word, Part part);
  bool isOperator(std::string_view symbols) const {
    return token().kind == SqlTokenKind::symbol && token().text.size() == 1 &&
           symbols.find(token().text[0]) != std::string_view::npos;
  }
  template <class Part>
  SqlExpression operatorChain(SqlKind kind, std::string_view symbols, Part part);
  SqlExpression negation();
  SqlExpression predicate();
  void comparison(SqlExpression& left);
  void nullTest(SqlExpression& left);
  void wordPredicate(SqlExpression& left);
  void argumentList(SqlExpression& into);
  SqlExpression operand();
  SqlExpression sign();
  SqlExpression primary();
  SqlExpression wordValue();
  SqlExpression field();
  SqlExpression call();

  SqlLexer lexer_;
  std::array<SqlToken, 2> ahead_;
  SqlTokenKind before_ = SqlTokenKind::end;  // of the last word passed; `end` at the begin
  int depth_ = 0;
};

}  // namespace vantrelix

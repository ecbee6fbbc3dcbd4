// What a query text says, before it is bound to a table.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "foundation/Value.h"

namespace vantrelix {

enum class SqlKind {
  literal,
  field,
  negate,      // one argument
  sum,         // a chain: operators[i] stands before arguments[i + 1]; '+' and '-'
  product,     // '*' and '/'
  join,        // '&'
  comparison,  // two arguments
  like,        // text and pattern
  isNull,
  between,  // value, lower end, upper end
  in,       // value, then the list
  logicalNot,
  logicalAnd,
  logicalOr,
  function,
};

enum class SqlComparison { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual };

enum class SqlFunction { ucase, lcase, trim, ltrim, rtrim, left, right, mid, len, val, abs, integer };

// A node of an expression. Chains of one operator are one node, so that a long text makes no deep tree.
struct SqlExpression {
  SqlKind kind = SqlKind::literal;
  std::size_t position = 0;  // byte offset in the query text
  Value literal;
  std::string name;  // of a field
  int field = -1;    // its index in the table, once bound
  SqlFunction function = SqlFunction::ucase;
  SqlComparison comparison = SqlComparison::equal;
  bool negated = false;  // NOT LIKE, IS NOT NULL, NOT BETWEEN, NOT IN
  std::string operators;
  std::vector<SqlExpression> arguments;
};

enum class SqlAggregate { none, minimum, maximum, count, sum, average };

struct SqlItem {
  SqlAggregate aggregate = SqlAggregate::none;
  SqlExpression expression;  // of count(*) a literal that is not null
  std::string alias;         // blank where none is given
};

struct SqlOrder {
  SqlExpression expression;
  bool descending = false;
};

struct SqlSelect {
  std::string text;            // the whole query, for messages
  std::vector<SqlItem> items;  // none for *
  std::string table;
  std::optional<SqlExpression> where;
  std::vector<SqlOrder> order;
};

struct SqlTargetField {
  std::string name;
  std::size_t position = 0;
};

struct SqlInsert {
  std::string target;
  std::vector<SqlTargetField> fields;  // none where the select list names them
  SqlSelect source;
};

using SqlStatement = std::variant<SqlSelect, SqlInsert>;

}  // namespace vantrelix

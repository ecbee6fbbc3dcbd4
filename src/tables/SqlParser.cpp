#include "tables/SqlParser.h"

#include "tables/SqlExpressionParser.h"

namespace vantrelix {

namespace {

class StatementParser : public SqlExpressionParser {
 public:
  using SqlExpressionParser::SqlExpressionParser;

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

 private:
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
    const SqlAggregateRow* row = token().kind == SqlTokenKind::word && isSymbol("(", 1)
                                     ? findSqlRow(kSqlAggregates, &SqlAggregateRow::name, token().text)
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
};

}  // namespace

SqlStatement parseSql(std::string_view text) { return StatementParser(text).statement(); }

SqlExpression parseSqlCondition(std::string_view text) { return SqlExpressionParser(text).condition(); }

}  // namespace vantrelix

// The value of an expression over one row.
//
// A row never makes a query fail: what cannot be computed (a text that is no number, a division by zero) is null, and a
// condition that is null is not met.
#pragma once

#include "tables/SqlTree.h"

namespace vantrelix {

class SqlRow {
 public:
  virtual ~SqlRow() = default;
  virtual Value value(std::size_t field) const = 0;
};

// Every field of the expression must be bound.
Value evaluate(const SqlExpression& expression, const SqlRow& row);
// Whether a condition is met: true, or a number other than 0.
bool isMet(const SqlExpression& condition, const SqlRow& row);

}  // namespace vantrelix

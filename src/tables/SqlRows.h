// The rows that a query gives, gathered in one pass over its table.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tables/DbfFile.h"
#include "tables/SqlFilter.h"
#include "tables/SqlSort.h"
#include "tables/SqlTree.h"
#include "tables/dbfNumber.h"
#include "tables/dbfTextField.h"

namespace vantrelix {

struct SqlRows {
  std::vector<std::uint32_t> numbers;  // of the records
  std::vector<unsigned char> records;  // theirs, one behind the other in file order, where `kept`
  bool kept = false;
  // Which of the records each row is, counted from 0; none where they stand in the rows' order.
  std::vector<std::uint32_t> places;
  // Where they stood in the order of one number field already: its numbers.
  int numbersOf = -1;  // the field
  std::vector<double> orderNumbers;
};

class RowCollector {
 public:
  // Keeps the rows' bytes too as long as they are no more than `mostKept`. Both other arguments outlive this.
  RowCollector(DbfFile& table, const std::vector<SqlOrder>& order, std::size_t mostKept);

  void reserve(std::size_t rows);

  // Adds records that stand behind one another.
  void add(std::uint32_t first, const unsigned char* records, std::uint32_t count);

  // In order; the collector is at its end then.
  SqlRows take();

 private:
  // What an order looks at: an expression, or a field whose bytes tell its key.
  struct Term {
    const SqlExpression* expression;
    bool descending;
    int field = -1;
    std::optional<dbf::DigitsField> digits;
    std::optional<dbf::TextField> text;
  };

  void keep(const unsigned char* record);
  void addKeysOfKept();
  bool standInOrder();
  void addKeys(const unsigned char* record) {
    for (const Term& term : terms_) addKey(term, record);
  }
  void addKey(const Term& term, const unsigned char* record);

  RecordRow row_;
  std::size_t length_;
  std::size_t mostKept_;
  SqlRows rows_;
  std::vector<Term> terms_;
  SortKeys keys_;
};

}  // namespace vantrelix

// Which records of a table a condition lets through.
//
// Equalities of a character field and a text, and comparisons of a number field and a number, joined by AND, are
// decided on the record's bytes: that settles nearly every row of a search without a value being made. The rest of the
// condition is evaluated for what is left.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tables/DbfFile.h"
#include "tables/RunList.h"
#include "tables/SqlEvaluator.h"
#include "tables/TextEquality.h"
#include "tables/TextRuns.h"
#include "tables/dbfNumber.h"

namespace vantrelix {

// A record's bytes as the row of an expression.
class RecordRow : public SqlRow {
 public:
  explicit RecordRow(DbfFile& table) : table_(table) {}
  void show(const unsigned char* record) { record_ = record; }
  Value value(std::size_t field) const override { return table_.value(record_, field); }

 private:
  DbfFile& table_;
  const unsigned char* record_ = nullptr;
};

class SqlFilter {
 public:
  // `condition` is bound to the table and outlives the filter; none lets every live record through.
  SqlFilter(DbfFile& table, const SqlExpression* condition);
  bool matches(const unsigned char* record);
  // Adds the runs of those of `count` records behind one another that match, counted from the first of all.
  void choose(const unsigned char* records, std::uint32_t count, std::vector<RowRun>& chosen);
  // Whether the records' bytes alone decide: copies of the filter may then choose in other threads.
  bool readsBytesAlone() const { return rest_.empty(); }
  // A text without which no record is let through; nothing where there is no such text.
  std::optional<SoughtText> soughtText() const;

 private:
  struct NumberTest {
    dbf::DigitsField field;
    SqlComparison comparison;
    double wanted = 0;
    bool matches(const unsigned char* record) const;
  };

  void add(const SqlExpression& term);
  bool addTests(const SqlExpression& term);
  bool addEquality(const SqlExpression& field, const SqlExpression& literal);

  bool addTest(SqlComparison comparison, const SqlExpression& field, const SqlExpression& number);

  DbfFile& table_;
  RecordRow row_;
  bool never_ = false;
  std::vector<TextEquality> equalities_;
  std::vector<NumberTest> tests_;
  std::vector<const SqlExpression*> rest_;
};

}  // namespace vantrelix

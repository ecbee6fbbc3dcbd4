// The rows that a data grid shows: any table-like source, and the one that holds its rows itself.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "foundation/Value.h"

namespace vantrelix {

// Values by data field; field names are alike without regard to case.
struct FieldOrder {
  bool operator()(const std::string& a, const std::string& b) const;
};
using GridFields = std::map<std::string, Value, FieldOrder>;

// A source of rows, counted from 0. A bookmark names a row for as long as the row exists, whatever is added, removed or
// reordered round it; it is never blank. A source may fail with a RunTimeFailure at any call; the grid then keeps what
// the user entered.
class GridRows {
 public:
  virtual ~GridRows() = default;

  virtual int count() const = 0;
  virtual std::string bookmark(int row) const = 0;
  // -1 where the row is gone. Called for every selected row, so it must be cheap.
  virtual int rowOf(const std::string& bookmark) const = 0;
  // Null for a field that the source doesn't have.
  virtual Value value(int row, const std::string& field) const = 0;

  // Writes the fields given and leaves the row's others.
  virtual void store(int row, const GridFields& fields) = 0;
  // Adds a row with the fields given, the others blank; gives its place, which is the end where the source has no
  // reason for another.
  virtual int append(const GridFields& fields) = 0;
  virtual void remove(int row) = 0;

  // Orders the rows by a field, stably, where the source can do that itself. Gives whether it did; the grid's owner
  // does it otherwise (a query with another order).
  virtual bool sort(const std::string& field, bool ascending);
};

// Rows kept in memory. Bookmarks are running numbers, given once and never again.
class ArrayRows : public GridRows {
 public:
  using Row = std::vector<Value>;

  explicit ArrayRows(std::vector<std::string> fields);

  const std::vector<std::string>& fields() const { return fields_; }
  // The fields' values in their order.
  const Row& row(int row) const { return rows_.at(static_cast<std::size_t>(row)).values; }
  // Puts a row before another, or at the end; a short row is filled up with nulls. A grid that shows the rows is told
  // by its refresh(), as with every change made here and not through the grid.
  void insert(int before, Row values);
  void add(Row values) { insert(count(), std::move(values)); }
  void clear();

  int count() const override { return static_cast<int>(rows_.size()); }
  std::string bookmark(int row) const override;
  int rowOf(const std::string& bookmark) const override;
  Value value(int row, const std::string& field) const override;
  void store(int row, const GridFields& fields) override;
  int append(const GridFields& fields) override;
  void remove(int row) override;
  // Nulls first, then numbers by size, then texts without regard to case.
  bool sort(const std::string& field, bool ascending) override;

 private:
  struct Held {
    long id;
    Row values;
  };
  int fieldAt(const std::string& field) const;

  std::vector<std::string> fields_;
  std::vector<Held> rows_;
  long lastId_ = 0;
  // Where each row stands; empty while it has to be made anew.
  mutable std::unordered_map<std::string, int> places_;
};

}  // namespace vantrelix

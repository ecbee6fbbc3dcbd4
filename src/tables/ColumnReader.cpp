#include "tables/ColumnReader.h"

#include "tables/SqlFilter.h"

namespace vantrelix {

ColumnReader::ColumnReader(const SqlQuery& query, std::size_t column)
    : table_(query.table()), column_(query.columns()[column]) {
  if (column_.field < 0) return;
  const DbfField& field = table_.fields()[static_cast<std::size_t>(column_.field)];
  digits_ = dbf::DigitsField::of(field);
  ascii_ = dbf::TextField::of(field, table_.fields());
}

Value ColumnReader::decoded(const unsigned char* record) const {
  if (column_.field >= 0) return table_.value(record, static_cast<std::size_t>(column_.field));
  RecordRow row(table_);
  row.show(record);
  return evaluate(*column_.expression, row);
}

Value ColumnReader::value(const unsigned char* record) const {
  if (digits_) {
    double number = 0;
    return digits_->read(record, number) ? Value(number) : Value();
  }
  std::string_view text;
  if (ascii_ && ascii_->read(record, text)) return text.empty() ? Value() : Value(text);
  return decoded(record);
}

std::optional<double> ColumnReader::number(const unsigned char* record) const {
  if (digits_) {
    double number = 0;
    return digits_->read(record, number) ? std::optional(number) : std::nullopt;
  }
  const Value value = this->value(record);
  return value.isNull() ? std::nullopt : std::optional(value.number());
}

std::optional<std::string_view> ColumnReader::text(const unsigned char* record) {
  std::string_view text;
  if (ascii_ && ascii_->read(record, text)) return text.empty() ? std::nullopt : std::optional(text);
  shown_ = value(record);
  return shown_.isNull() ? std::nullopt : std::optional<std::string_view>(shown_.text());
}

}  // namespace vantrelix

// All that is asked of the table: by queries of each kind, by key, by counts. Where two ways to one thing differ the
// program ends.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/text.h"
#include "plainWalk.h"
#include "tables/Database.h"
#include "tables/KeyedRows.h"
#include "tables/countByText.h"

namespace vantrelix::test {

// By what was asked.
using Answers = std::vector<std::pair<std::string, std::string>>;

inline void requireSame(std::string_view asked, const std::string& one, const std::string& other) {
  if (one == other) return;
  std::fprintf(stderr, "%s\n  gives: %s\n  and:   %s\n", std::string(asked).c_str(), one.c_str(), other.c_str());
  std::abort();
}

// A field refuses its value's number or text where that is of another kind.
inline void checkKind(const Field& field, const Value& value) {
  const std::string refused = "failure " + std::to_string(failure::typeMismatch);
  const auto tellingOf = [&](bool fits) { return value.isNull() || fits ? std::string("is told") : refused; };
  requireSame(field.Name() + " as number", tellingOf(value.isNumber()), answerOf([&] {
                static_cast<void>(field.number());
                return std::string("is told");
              }));
  requireSame(field.Name() + " as text", tellingOf(value.isText()), answerOf([&] {
                static_cast<void>(field.text());
                return std::string("is told");
              }));
}

inline std::string shownField(const Field& field, bool whole) {
  const Value value = field.value();
  const bool isNull = value.isNull();
  if (whole) checkKind(field, value);
  std::string own = shown(value);
  if (isNull || value.isNumber()) {
    const std::optional<double> number = field.number();
    requireSame("number", own, shown(number ? Value(*number) : Value()));
  }
  if (isNull || value.isText()) {
    const std::optional<std::string_view> text = field.text();
    requireSame("text", own, shown(text ? Value(*text) : Value()));
  }
  return own;
}

// The first rows are looked at in all ways, the others in the usual one.
inline std::string shownRows(Recordset& cursor) {
  constexpr std::size_t firstRows = 2;
  std::string text = std::to_string(cursor.rowCount()) + " rows\n";
  std::vector<Field> fields;
  for (std::size_t i = 0; i < std::min(cursor.fieldCount(), kMostColumns); ++i) fields.push_back(cursor.Fields(i));
  for (std::size_t row = 0; row < kMostRows && !cursor.Eof(); ++row, cursor.MoveNext()) {
    const bool whole = row < firstRows;
    for (const Field& field : fields) {
      text.append(shownField(field, whole)).push_back('|');
      if (!whole) continue;
      const Field named = cursor.Fields(field.Name());
      requireSame("place", shown(named.value()), shown(cursor.valueAt(static_cast<long>(row), field.Name())));
    }
    text += '\n';
  }
  return text;
}

// What KeyedRows stands for.
class QueriedRows {
 public:
  QueriedRows(Database& database, const KeyedRows::Key& key)
      : cursor_(database.OpenRecordset(queryOf(key), RecordsetType::snapshot)) {}

  static std::string queryOf(const KeyedRows::Key& key) {
    return "SELECT * FROM [" + key.table + "] WHERE " + key.field + " = '" + replaceAll(key.text, "'", "''") + "'" +
           (key.orderedBy.empty() ? "" : " ORDER BY " + key.orderedBy);
  }

  bool empty() const { return cursor_->rowCount() == 0; }
  Value value(const std::string& field) { return cursor_->valueAt(0, field); }
  void addNumbers(const std::string& first, const std::string& second, NumberPairs& pairs) {
    if (!empty()) cursor_->MoveFirst();
    cursor_->addNumbers(cursor_->Fields(first), cursor_->Fields(second), pairs);
  }

 private:
  RecordsetPtr cursor_;
};

template <class Rows>
std::string shownPairs(Rows& rows, const std::string& first, const std::string& second, std::size_t most) {
  NumberPairs pairs{.most = most, .firsts = {}, .seconds = {}};
  std::string text = answerOf([&] {
    rows.addNumbers(first, second, pairs);
    return std::string("all");
  });
  for (const double number : pairs.firsts) text += " " + shown(number);
  text += " and";
  for (const double number : pairs.seconds) text += " " + shown(number);
  return text + "\n";
}

// Questions of one table in the state in which it stands; those of it that are made up are chosen by the key.
class Questions {
 public:
  // `plainly`: each answer is looked up row by row as well.
  Questions(std::string sql, std::string key, bool plainly)
      : sql_(std::move(sql)), key_(std::move(key)), plainly_(plainly), database_(DBEngine::OpenDatabase("/m")) {}

  Answers ask() {
    answerOf([&] {
      table_ = DbfFile::open(kTable, true);
      if (chooseFields()) askOfFields();
      return std::string();
    });
    requireSame(sql_ + " forward", query(sql_), rowsOf(sql_, RecordsetType::forwardOnly));
    find(sql_, key_);
    return std::move(answers_);
  }

 private:
  static constexpr std::size_t kMostKeyed = 2;

  const std::string& note(const std::string& asked, std::string answer) {
    answers_.emplace_back(asked, std::move(answer));
    return answers_.back().second;
  }

  std::string rowsOf(const std::string& sql, RecordsetType type) {
    return answerOf([&] { return shownRows(*database_->OpenRecordset(sql, type)); });
  }

  std::string query(const std::string& sql) {
    const std::string rows = note(sql, rowsOf(sql, RecordsetType::snapshot));
    requireSame(sql + " as a dynaset", rows, rowsOf(sql, RecordsetType::dynaset));
    if (plainly_ && isOfTable(sql)) requireSame(sql, rows, answerOf([&] { return PlainWalk(sql).rows(); }));
    return rows;
  }

  void find(const std::string& sql, const std::string& criterion) {
    const auto answered = [&](RecordsetType type) {
      return answerOf([&] {
        const RecordsetPtr cursor = database_->OpenRecordset(sql, type);
        cursor->FindFirst(criterion);
        return cursor->NoMatch() ? "none" : std::to_string(cursor->AbsolutePosition());
      });
    };
    const std::string asked = sql + " finds " + criterion;
    const std::string place = note(asked, answered(RecordsetType::snapshot));
    requireSame(asked, place, answered(RecordsetType::dynaset));
    if (plainly_ && isOfTable(sql)) requireSame(asked, place, answerOf([&] { return PlainWalk(sql).find(criterion); }));
  }

  // Any other table is not there.
  static bool isOfTable(const std::string& sql) {
    bool itIs = true;
    answerOf([&] {
      const SqlStatement statement = parseSql(sql);
      const auto* select = std::get_if<SqlSelect>(&statement);
      itIs = select == nullptr || select->table == "T";
      return std::string();
    });
    return itIs;
  }

  // Whether a condition that names the field so is understood.
  static bool isName(const std::string& written, const std::string& name) {
    bool itIs = false;
    answerOf([&] {
      const SqlExpression condition = parseSqlCondition(written + " = 'x'");
      if (condition.kind != SqlKind::comparison) return std::string();
      const SqlExpression& field = condition.arguments.front();
      itIs = field.kind == SqlKind::field && field.name == name;
      return std::string();
    });
    return itIs;
  }

  bool chooseFields() {
    for (const DbfField& field : table_->fields()) {
      if (field.system || !isName("[" + field.name + "]", field.name)) continue;
      if (field.type == 'N' || field.type == 'F' || field.type == 'I') numbers_.push_back(field.name);
      named_.push_back(field.name);
      if (field.type == 'C' && isName(field.name, field.name) && keyed_.size() < kMostKeyed)
        keyed_.push_back(field.name);
    }
    if (named_.empty()) return false;
    chosen_ = named_[key_.size() % named_.size()];
    number_ = numbers_.empty() ? chosen_ : numbers_[key_.size() % numbers_.size()];
    otherNumber_ = numbers_.empty() ? named_.back() : numbers_[(key_.size() + 1) % numbers_.size()];
    if (isName(chosen_, chosen_) && std::find(keyed_.begin(), keyed_.end(), chosen_) == keyed_.end())
      keyed_.push_back(chosen_);
    return true;
  }

  void askOfFields() {
    for (const std::string& name : keyed_) {
      keyed({"T", name, key_, ""});
      keyed({"T", name, firstText(name), isName(number_, number_) ? number_ : ""});
    }
    const std::string field = "[" + chosen_ + "]";
    const std::string number = "[" + number_ + "]";
    const std::string text = "'" + replaceAll(key_, "'", "''") + "'";
    query("SELECT min(" + field + "), max(" + field + "), count(" + field + "), sum(" + field + "), avg(" + field +
          "), min(" + number + "), max(" + number + "), sum(" + number + ") FROM [T]");
    query("SELECT * FROM [T] ORDER BY " + field + ", " + number + " DESC");
    query("SELECT " + field + ", " + number + " FROM [T] WHERE " + field + " = " + text);
    query("SELECT * FROM [T] WHERE ucase(" + field + ") = ucase(" + text + ") ORDER BY " + number);
    query("SELECT * FROM [T] WHERE " + number + " BETWEEN 1 AND 12.5 AND " + field + " <> " + text);
    find(sql_, field + " = " + text);
    note("counts", answerOf([&] { return counts(); }));
  }

  // Of the first live row.
  std::string firstText(const std::string& name) {
    Value value;
    const auto field = static_cast<std::size_t>(table_->fieldIndex(name));
    table_->scan([&](std::uint32_t, const unsigned char* record) {
      if (record[0] != '*') value = table_->value(record, field);
      return record[0] == '*';
    });
    return value.isText() ? value.text() : key_;
  }

  void keyed(const KeyedRows::Key& key) {
    const std::string sql = QueriedRows::queryOf(key);
    const std::string told = note("key: " + sql, toldOf<KeyedRows>(key));
    requireSame(sql, told, toldOf<QueriedRows>(key));
    if (!plainly_) return;
    requireSame(sql, answerOf([&] { return PlainWalk(sql).rows(); }), rowsOf(sql, RecordsetType::snapshot));
  }

  template <class Rows>
  std::string toldOf(const KeyedRows::Key& key) {
    return answerOf([&] {
      Rows rows(*database_, key);
      std::string text = rows.empty() ? "none\n" : "some\n";
      for (std::size_t i = 0; i < std::min(named_.size(), kMostColumns); ++i)
        text += answerOf([&] { return shown(rows.value(named_[i])); }) + "|";
      text += answerOf([&] { return shown(rows.value("No such field")); }) + "\n";
      const std::string& first = key.orderedBy.empty() ? number_ : key.orderedBy;
      for (const std::size_t most : {SIZE_MAX, std::size_t{3}}) text += shownPairs(rows, first, otherNumber_, most);
      return text + shownPairs(rows, chosen_, number_, SIZE_MAX);
    });
  }

  std::string counts() {
    const auto field = static_cast<std::size_t>(table_->fieldIndex(chosen_));
    const auto number = static_cast<std::size_t>(table_->fieldIndex(number_));
    TextCounts walked;
    table_->scan([&](std::uint32_t, const unsigned char* record) {
      if (record[0] == '*' || table_->value(record, number).isNull()) return true;
      const Value value = table_->value(record, field);
      ++walked[value.isNull() ? std::string() : trimRight(value.asText())];
      return true;
    });
    const TextCounts counted = countByText(*table_, chosen_, {number_});
    const auto shownCounts = [](const TextCounts& counts) {
      std::string text;
      for (const auto& [of, count] : std::map<std::string, long>(counts.begin(), counts.end()))
        text += of + " " + std::to_string(count) + "|";
      return text;
    };
    requireSame("counts of " + chosen_, shownCounts(counted), shownCounts(walked));
    return shownCounts(counted);
  }

  std::string sql_;
  std::string key_;
  bool plainly_;
  DatabasePtr database_;
  Answers answers_;
  std::shared_ptr<DbfFile> table_;
  std::vector<std::string> named_;    // that a query can name between brackets
  std::vector<std::string> numbers_;  // ... of numbers
  std::vector<std::string> keyed_;    // texts that it can name without, and the chosen one
  std::string chosen_;
  std::string number_;
  std::string otherNumber_;
};

}  // namespace vantrelix::test

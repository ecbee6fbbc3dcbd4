// The table with its rows again and again, so long that two threads share a scan of it where its file is at rest: they
// give what one thread gives.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/text.h"
#include "tableInput.h"
#include "tables/DbfFile.h"
#include "tables/SqlParser.h"
#include "tables/SqlQuery.h"
#include "tables/countByText.h"

namespace vantrelix::test {

// Nothing of a table without rows, or with ones so short that there would be too many.
inline std::optional<std::string> longTable(const std::string& table) {
  constexpr std::size_t wanted = (std::size_t{4} << 20) + 4096;
  constexpr int shortest = 64;
  std::size_t rows = 0;
  std::size_t length = 0;
  attempt([&] {
    const auto open = DbfFile::open(kTable, true);
    if (open->recordLength() >= shortest) length = static_cast<std::size_t>(open->recordLength());
    rows = open->recordCount();
  });
  const auto byteAt = [&](std::size_t at) { return static_cast<std::size_t>(static_cast<unsigned char>(table[at])); };
  // A header may give another length than its rows have.
  if (rows == 0 || length == 0 || (byteAt(10) | byteAt(11) << 8) != length) return std::nullopt;
  const std::size_t header = byteAt(8) | byteAt(9) << 8;
  const std::string own = table.substr(header, rows * length);
  std::string bytes = table.substr(0, header);
  std::size_t count = 0;
  for (; bytes.size() < wanted; count += rows) bytes += own;
  for (std::size_t i = 0; i < 4; ++i) bytes[4 + i] = static_cast<char>(count >> (8 * i));
  return bytes;
}

struct LongAnswer {
  SqlRows rows;
  std::vector<Value> aggregates;
  TextCounts counts;

  friend bool operator==(const LongAnswer& a, const LongAnswer& b) {
    return a.rows.numbers == b.rows.numbers && a.rows.records == b.rows.records && a.rows.places == b.rows.places &&
           a.rows.orderNumbers == b.rows.orderNumbers && a.aggregates == b.aggregates && a.counts == b.counts;
  }
};

// The first field of a type; -1 where there is none.
inline int firstOf(const DbfFile& table, char type) {
  const auto found =
      std::find_if(table.fields().begin(), table.fields().end(), [&](const DbfField& f) { return f.type == type; });
  return found == table.fields().end() ? -1 : static_cast<int>(found - table.fields().begin());
}

// Of the first text and the first number, by conditions that the rows' bytes decide in any thread; where one cannot be
// asked of, nothing.
inline std::vector<LongAnswer> askLong(const std::string& key) {
  constexpr std::size_t mostKept = std::size_t{64} << 20;
  const auto table = DbfFile::open(kTable, true);
  const auto queryOf = [&](const std::string& sql) {
    return std::make_unique<SqlQuery>(std::get<SqlSelect>(parseSql(sql)), table);
  };
  std::vector<LongAnswer> answers;
  for (const char type : {'C', 'N'}) {
    const int index = firstOf(*table, type);
    LongAnswer& answer = answers.emplace_back();
    if (index < 0) continue;
    attempt([&] {
      const std::string& name = table->fields()[static_cast<std::size_t>(index)].name;
      const std::string field = "[" + name + "]";
      const std::string condition =
          type == 'C' ? " = '" + replaceAll(key, "'", "''") + "'" : std::string(" BETWEEN 1 AND 1000");
      answer.rows = queryOf("SELECT * FROM [T] WHERE " + field + condition + " ORDER BY " + field)->rows(mostKept);
      answer.counts = countByText(*table, name, {name});
      answer.aggregates = queryOf("SELECT min(" + field + "), max(" + field + "), sum(" + field + "), count(" + field +
                                  ") FROM [T] WHERE " + field + condition)
                              ->aggregates();
    });
  }
  return answers;
}

inline void requireSameOfLong(const std::string& key) {
  const std::optional<std::string> bytes = longTable(platform::readWholeFile(kTable));
  if (!bytes) return;
  MemoryPlatform& machine = memoryWith(*bytes, "");
  std::vector<LongAnswer> alone;
  std::vector<LongAnswer> shared;
  attempt([&] { alone = askLong(key); });
  machine.rest();
  attempt([&] { shared = askLong(key); });
  if (!(alone == shared)) std::abort();
}

}  // namespace vantrelix::test

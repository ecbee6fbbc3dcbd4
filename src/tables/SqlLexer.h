// The words of a query text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

enum class SqlTokenKind {
  word,       // a keyword or a bare name
  bracketed,  // [a name], without its brackets
  text,
  number,
  date,
  symbol,
  wrong,  // no word at all; the text says why
  end,
};

struct SqlToken {
  SqlTokenKind kind = SqlTokenKind::end;
  std::size_t position = 0;  // byte offset in the query text
  std::string text;          // the word, name, text or symbol
  Value value;               // of a number or a date
};

// The longest query text taken.
inline constexpr std::size_t kLongestQuery = 65536;

// The words in order, `end` last; behind a wrong one nothing is read. 3061 for a text that is too long.
std::vector<SqlToken> sqlTokens(std::string_view text);

// The failure 3061 for a place in a query: names the place, what stands there and what is wrong.
RunTimeFailure sqlSyntaxFailure(std::string_view text, std::size_t position, std::string_view what);
// The place of a byte offset as a reader counts it: characters, from 1.
std::size_t sqlPlace(std::string_view text, std::size_t position);

}  // namespace vantrelix

// The words of a query text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/Value.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

enum class SqlTokenKind {
  word,       // a keyword or a bare name
  bracketed,  // [a name], without its outer brackets
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
  std::string_view text;     // the word, name or symbol, the text between its quotes, or why it is wrong
  Value value;               // of a number or a date
};

// The longest query text taken.
inline constexpr std::size_t kLongestQuery = 65536;

// Gives the words of a query in order, and `end` again and again behind the last one or behind a wrong one. They are
// parts of `text`, which outlives them. The name of a table, behind FROM or INTO, may hold brackets as a file's name
// does: it ends at the first ] that what can stand behind a table follows.
class SqlLexer {
 public:
  // 3061 for a text that is too long.
  explicit SqlLexer(std::string_view text);
  SqlToken next();

 private:
  char here(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
  SqlToken read();
  SqlToken make(SqlTokenKind kind, std::string_view text = "", Value value = Value()) const;
  SqlToken wrong(const char* why);
  SqlToken word();
  SqlToken number();
  SqlToken quoted(char quote);
  SqlToken bracketed();
  SqlToken date();
  SqlToken symbol();
  std::size_t nameEnd() const;
  bool canFollowTable(std::size_t place) const;
  std::optional<std::string_view> contentUpTo(std::size_t closing);

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t start_ = 0;       // of the word being read
  std::string_view tableWord_;  // FROM or INTO, where it stands right before that word; else empty
};

// The text of a token of that kind: of two quotes that stand for one, one.
std::string quotedText(std::string_view query, const SqlToken& token);

// The failure 3061 for a place in a query: names the place, what stands there and what is wrong.
RunTimeFailure sqlSyntaxFailure(std::string_view text, std::size_t position, std::string_view what);
// The place of a byte offset as a reader counts it: characters, from 1.
std::size_t sqlPlace(std::string_view text, std::size_t position);

}  // namespace vantrelix

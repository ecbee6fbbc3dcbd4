#include "tables/SqlLexer.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "foundation/text.h"
#include "tables/SqlCompare.h"

namespace vantrelix {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
std::string_view withoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(' ') + 1));
  return text;
}
bool isNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
// Short names hold "~", and "$" stands at the end of function names in older texts.
bool isNamePart(char c) { return isNameStart(c) || isDigit(c) || c == '~' || c == '$'; }

bool isSame(std::string_view word, std::string_view other) {
  return word.size() == other.size() && equalIgnoringCase(word, other);
}
// The name or keyword that begins at the place.
std::string_view wordAt(std::string_view text, std::size_t place) {
  std::size_t end = place;
  while (end < text.size() && isNamePart(text[end])) ++end;
  return text.substr(place, end - place);
}

// What a reader sees at the place: a whole word, or a few characters up to the next blank.
std::string nearText(std::string_view text, std::size_t position) {
  std::size_t end = position + wordAt(text, position).size();
  if (end == position) {
    while (end < text.size() && !isBlank(text[end])) ++end;
  }
  std::string result = leftCharacters(text.substr(position, end - position), 24);
  std::replace_if(
      result.begin(), result.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
  return result;
}

}  // namespace

SqlLexer::SqlLexer(std::string_view text) : text_(text) {
  if (text_.size() <= kLongestQuery) return;
  throw RunTimeFailure(failure::badQuery, "The query is too long: " + std::to_string(text_.size()) +
                                              " bytes. Shorten it to " + std::to_string(kLongestQuery) + ".");
}

SqlToken SqlLexer::next() {
  SqlToken token = read();
  const bool beforeTable =
      token.kind == SqlTokenKind::word && (isSame(token.text, "from") || isSame(token.text, "into"));
  tableWord_ = beforeTable ? token.text : std::string_view();
  return token;
}

SqlToken SqlLexer::read() {
  while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  start_ = at_;
  if (at_ == text_.size()) return make(SqlTokenKind::end);
  const char c = here();
  if (isNameStart(c)) return word();
  if (isDigit(c) || (c == '.' && isDigit(here(1)))) return number();
  if (c == '\'' || c == '"') return quoted(c);
  if (c == '[') return bracketed();
  if (c == '#') return date();
  return symbol();
}

SqlToken SqlLexer::make(SqlTokenKind kind, std::string_view text, Value value) const {
  return {kind, start_, text, std::move(value)};
}

// `why` lives as long as the program.
SqlToken SqlLexer::wrong(const char* why) {
  at_ = text_.size();
  return make(SqlTokenKind::wrong, why);
}

SqlToken SqlLexer::word() {
  while (at_ < text_.size() && isNamePart(text_[at_])) ++at_;
  return make(SqlTokenKind::word, text_.substr(start_, at_ - start_));
}

SqlToken SqlLexer::number() {
  double value = 0;
  const auto [end, error] = std::from_chars(text_.data() + at_, text_.data() + text_.size(), value);
  if (error != std::errc()) return wrong("this number is out of range.");
  at_ = static_cast<std::size_t>(end - text_.data());
  if (at_ < text_.size() && isNamePart(text_[at_])) {
    return wrong("a number ends in letters. Put a name that begins with a digit between [ and ].");
  }
  return make(SqlTokenKind::number, "", value);
}

// A quote inside stands doubled.
SqlToken SqlLexer::quoted(char quote) {
  for (++at_; at_ < text_.size(); ++at_) {
    if (text_[at_] != quote) continue;
    if (here(1) != quote) break;
    ++at_;
  }
  if (at_ == text_.size()) return wrong("the closing quote of this text is missing.");
  ++at_;
  return make(SqlTokenKind::text, text_.substr(start_ + 1, at_ - start_ - 2));
}

SqlToken SqlLexer::bracketed() {
  const auto content = contentUpTo(nameEnd());
  if (!content) return wrong("the closing ] of this name is missing.");
  const std::string_view name = withoutBlanks(*content);
  return name.empty() ? wrong("there is no name between [ and ].") : make(SqlTokenKind::bracketed, name);
}

SqlToken SqlLexer::date() {
  const auto content = contentUpTo(text_.find('#', at_ + 1));
  if (!content) return wrong("the closing # of this date is missing.");
  const auto value = sqlDate(*content);
  if (!value) return wrong("this is no date. Write it as #11/21/2026# or #2026-11-21#.");
  return make(SqlTokenKind::date, "", *value);
}

// A bracket that opens where all others are closed is no part of a table's name: it begins another name in a query that
// is to be refused where the first one ends.
std::size_t SqlLexer::nameEnd() const {
  const std::size_t first = text_.find(']', at_ + 1);
  if (tableWord_.empty() || first == std::string_view::npos) return first;
  std::size_t open = 0;
  for (std::size_t i = at_; i < text_.size(); ++i) {
    if (text_[i] == '[' && open == 0 && i > first) break;
    if (text_[i] == '[') ++open;
    if (text_[i] != ']') continue;
    if (canFollowTable(i + 1)) return i;
    if (open > 0) --open;
  }
  return first;
}

bool SqlLexer::canFollowTable(std::size_t place) const {
  while (place < text_.size() && isBlank(text_[place])) ++place;
  const char c = place < text_.size() ? text_[place] : '\0';
  const std::string_view word = wordAt(text_, place);
  if (isSame(tableWord_, "into")) return c == '(' || isSame(word, "select");
  return place == text_.size() || c == ';' || isSame(word, "where") || isSame(word, "order");
}

std::optional<std::string_view> SqlLexer::contentUpTo(std::size_t closing) {
  if (closing == std::string_view::npos) return std::nullopt;
  const std::string_view content = text_.substr(at_ + 1, closing - at_ - 1);
  at_ = closing + 1;
  return content;
}

SqlToken SqlLexer::symbol() {
  const char second = here(1);
  const bool isTwo = (here() == '<' && (second == '=' || second == '>')) || (here() == '>' && second == '=');
  if (!isTwo && std::string_view("(),*+-/&=<>;").find(here()) == std::string_view::npos) {
    return wrong("this character has no meaning in a query.");
  }
  at_ += isTwo ? 2 : 1;
  return make(SqlTokenKind::symbol, text_.substr(start_, at_ - start_));
}

std::string quotedText(std::string_view query, const SqlToken& token) {
  const char quote = query[token.position];
  std::string text;
  text.reserve(token.text.size());
  for (std::size_t i = 0; i < token.text.size(); ++i) {
    text += token.text[i];
    if (token.text[i] == quote) ++i;
  }
  return text;
}

std::size_t sqlPlace(std::string_view text, std::size_t position) {
  return characterCount(text.substr(0, std::min(position, text.size()))) + 1;
}

RunTimeFailure sqlSyntaxFailure(std::string_view text, std::size_t position, std::string_view what) {
  const std::string place = "Syntax error in query at position " + std::to_string(sqlPlace(text, position));
  const std::string found = position < text.size() ? nearText(text, position) : "";
  return {failure::badQuery,
          place + (found.empty() ? ", at its end" : ", near '" + found + "'") + ": " + std::string(what)};
}

}  // namespace vantrelix

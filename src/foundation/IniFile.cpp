#include "foundation/IniFile.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <unordered_set>

#include "foundation/characters.h"
#include "foundation/text.h"

namespace vantrelix {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";

std::string_view trimmed(std::string_view text) { return withoutOuter(text, kBlanks); }

// One line: its content from `start` to `end`, the next line at `next`.
struct Line {
  std::size_t start;
  std::size_t end;
  std::size_t next;
};

Line lineAt(std::string_view text, std::size_t start) {
  const std::size_t end = std::min(text.find_first_of(kLineEnds, start), text.size());
  std::size_t next = end;
  if (next < text.size() && text[next] == '\r') ++next;
  if (next < text.size() && text[next] == '\n') ++next;
  return {start, end, next};
}

enum class LineKind { blank, header, key, other };

struct Parsed {
  LineKind kind = LineKind::other;
  std::string_view name;
  std::string_view value;
};

Parsed parse(std::string_view content) {
  const std::string_view line = trimmed(content);
  if (line.empty()) return {LineKind::blank, {}, {}};
  if (line.front() == ';') return {};
  if (line.front() == '[') {
    const std::size_t close = line.find(']');
    if (close == std::string_view::npos) return {};
    return {LineKind::header, trimmed(line.substr(1, close - 1)), {}};
  }
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return {};
  return {LineKind::key, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1))};
}

Parsed parse(std::string_view text, const Line& line) { return parse(text.substr(line.start, line.end - line.start)); }

std::string_view withoutQuotes(std::string_view value) {
  const bool quoted =
      value.size() > 1 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string onOneLine(std::string_view text) {
  std::string result = replaceAll(text, "\r\n", " ");
  std::replace_if(
      result.begin(), result.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return result;
}

std::string tidy(std::string_view name) { return std::string(trimmed(onOneLine(name))); }

// Names in the order given, each once without regard to case.
class NameList {
 public:
  void add(std::string name) {
    if (seen_.insert(upperCase(name)).second) names_.push_back(std::move(name));
  }
  std::vector<std::string> take() { return std::move(names_); }

 private:
  std::unordered_set<std::string> seen_;
  std::vector<std::string> names_;
};

}  // namespace

// The lines of a section; `header` is where its header begins, `lastFilled` the end of its last line that is not blank.
struct IniFile::Body {
  std::size_t header = 0;
  std::size_t start = 0;
  std::size_t end = 0;
  std::size_t lastFilled = 0;
};

struct IniFile::KeyLine {
  Line line;
  Parsed parsed;
};

// What is to be set, each name once: spelled as it came first, with the value that came last.
class IniFile::NewValues {
 public:
  void add(std::string name, std::string value) {
    value.erase(0, value.find_first_not_of(kBlanks));
    const auto [place, isNew] = places_.try_emplace(folded(name), entries_.size());
    if (isNew) {
      entries_.push_back({std::move(name), std::move(value)});
    } else {
      entries_[place->second].value = std::move(value);
    }
  }
  // The value of a name, which then is no longer left.
  std::optional<std::string> take(std::string_view name) {
    const auto found = places_.find(folded(name));
    if (found == places_.end()) return std::nullopt;
    IniEntry& entry = entries_[found->second];
    places_.erase(found);
    entry.key.clear();
    return std::move(entry.value);
  }
  std::vector<IniEntry> left() const {
    std::vector<IniEntry> entries;
    std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(entries),
                 [](const IniEntry& entry) { return !entry.key.empty(); });
    return entries;
  }

 private:
  std::vector<IniEntry> entries_;
  std::unordered_map<std::string, std::size_t> places_;
};

IniFile::IniFile(std::string bytes) : bytes_(std::move(bytes)), content_(bytes_) {}

std::string IniFile::decoded(std::string_view raw) const { return content_.decoded(raw); }

bool IniFile::isNamed(std::string_view raw, std::string_view name) const {
  return equalIgnoringCase(decoded(raw), name);
}

std::optional<IniFile::Body> IniFile::findSection(std::string_view section) const {
  const std::string_view text = content_.text();
  bool inside = section.empty();
  Body body;
  for (std::size_t at = 0; at < text.size();) {
    const Line line = lineAt(text, at);
    const Parsed parsed = parse(text, line);
    at = line.next;
    if (parsed.kind == LineKind::header) {
      if (inside) break;
      inside = isNamed(parsed.name, section);
      body = {line.start, line.next, line.next, line.next};
    } else if (inside) {
      body.end = line.next;
      if (parsed.kind != LineKind::blank) body.lastFilled = line.next;
    }
  }
  if (!inside) return std::nullopt;
  return body;
}

std::optional<IniFile::KeyLine> IniFile::findKey(const Body& body, std::string_view key) const {
  const std::string_view text = content_.text();
  for (std::size_t at = body.start; at < body.end;) {
    const Line line = lineAt(text, at);
    const Parsed parsed = parse(text, line);
    if (parsed.kind == LineKind::key && isNamed(parsed.name, key)) return KeyLine{line, parsed};
    at = line.next;
  }
  return std::nullopt;
}

std::optional<std::string> IniFile::get(std::string_view section, std::string_view key) const {
  const auto body = findSection(tidy(section));
  if (!body) return std::nullopt;
  const auto found = findKey(*body, tidy(key));
  if (!found) return std::nullopt;
  return decoded(withoutQuotes(found->parsed.value));
}

std::vector<std::string> IniFile::sections() const {
  const std::string_view text = content_.text();
  NameList names;
  for (std::size_t at = 0; at < text.size();) {
    const Line line = lineAt(text, at);
    const Parsed parsed = parse(text, line);
    if (parsed.kind == LineKind::header) names.add(decoded(parsed.name));
    at = line.next;
  }
  return names.take();
}

std::vector<std::string> IniFile::keys(std::string_view section) const {
  std::vector<std::string> names;
  for (IniEntry& entry : entries(section)) names.push_back(std::move(entry.key));
  return names;
}

std::vector<IniEntry> IniFile::entries(std::string_view section) const {
  const std::string_view text = content_.text();
  const Body body = findSection(tidy(section)).value_or(Body{});
  std::unordered_set<std::string> seen;
  std::vector<IniEntry> entries;
  for (std::size_t at = body.start; at < body.end;) {
    const Line line = lineAt(text, at);
    const Parsed parsed = parse(text, line);
    at = line.next;
    if (parsed.kind != LineKind::key) continue;
    std::string name = decoded(parsed.name);
    if (seen.insert(folded(name)).second) entries.push_back({std::move(name), decoded(withoutQuotes(parsed.value))});
  }
  return entries;
}

std::string IniFile::folded(std::string_view name) { return lowerCase(tidy(name)); }

// The end of the line in front of a position, else the first that the file has.
std::string IniFile::lineEndAt(std::size_t position) const {
  const std::string_view text = content_.text();
  std::size_t start = position;
  while (start > 0 && kLineEnds.find(text[start - 1]) != std::string_view::npos && position - start < 2) --start;
  const std::string_view before = text.substr(start, position - start);
  if (before == "\r\n") return "\r\n";
  if (!before.empty()) return std::string(1, before.back());
  const Line first = lineAt(text, 0);
  return first.next > first.end ? std::string(text.substr(first.end, first.next - first.end)) : "\r\n";
}

void IniFile::insertLines(std::size_t position, const std::vector<std::string>& lines) {
  const std::string lineEnd = lineEndAt(position);
  const std::string& text = content_.text();
  const bool endsLine = position == 0 || kLineEnds.find(text[position - 1]) != std::string_view::npos;
  std::string inserted = endsLine ? "" : lineEnd;
  for (const std::string& line : lines) inserted += line + lineEnd;
  replaceText(position, 0, inserted);
}

void IniFile::replaceText(std::size_t position, std::size_t length, std::string_view with) {
  content_.replace(position, length, with);
  bytes_ = content_.bytes();
}

bool IniFile::canHold(std::string_view section, std::string_view key) {
  const std::string name = tidy(key);
  return !name.empty() && name.front() != ';' && name.front() != '[' && name.find('=') == std::string::npos &&
         section.find(']') == std::string_view::npos;
}

bool IniFile::findsAgain(std::string_view section, std::string_view key) const {
  const auto comesBack = [this](const std::string& name) { return isNamed(content_.encoded(name), name); };
  return canHold(section, key) && comesBack(tidy(section)) && comesBack(tidy(key));
}

void IniFile::set(std::string_view section, std::string_view key, std::string_view value) {
  set(section, {{std::string(key), std::string(value)}});
}

void IniFile::set(std::string_view section, const std::vector<IniEntry>& entries) {
  NewValues values;
  for (const IniEntry& entry : entries) {
    if (findsAgain(section, entry.key)) values.add(tidy(entry.key), onOneLine(entry.value));
  }
  const std::string header = tidy(section);
  if (const auto body = findSection(header)) replaceValues(*body, values);
  std::vector<std::string> lines;
  for (const IniEntry& entry : values.left()) {
    lines.push_back(content_.encoded(entry.key) + "=" + content_.encoded(entry.value));
  }
  if (lines.empty()) return;
  const auto body = findSection(header);
  if (!body) lines.insert(lines.begin(), "[" + content_.encoded(header) + "]");
  insertLines(body ? body->lastFilled : content_.text().size(), lines);
}

// Takes the values whose keys have a line.
void IniFile::replaceValues(const Body& body, NewValues& values) {
  const std::string_view text = content_.text();
  std::string lines;
  for (std::size_t at = body.start; at < body.end;) {
    const Line line = lineAt(text, at);
    const Parsed parsed = parse(text, line);
    const auto value = parsed.kind == LineKind::key ? values.take(decoded(parsed.name)) : std::nullopt;
    if (value) {
      lines += std::string(parsed.name) + "=" + content_.encoded(*value);
      at = line.end;
    }
    lines += text.substr(at, line.next - at);
    at = line.next;
  }
  const std::size_t length = body.end - body.start;
  if (text.substr(body.start, length) != lines) replaceText(body.start, length, lines);
}

void IniFile::removeKey(std::string_view section, std::string_view key) {
  const auto body = findSection(tidy(section));
  const auto found = body ? findKey(*body, tidy(key)) : std::nullopt;
  if (found) replaceText(found->line.start, found->line.next - found->line.start, "");
}

void IniFile::removeSection(std::string_view section) {
  const std::string name = tidy(section);
  if (name.empty()) return;  // the lines in front of the first header belong to the file
  if (const auto body = findSection(name)) replaceText(body->header, body->end - body->header, "");
}

}  // namespace vantrelix

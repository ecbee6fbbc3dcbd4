#include "lines/csvRows.h"

#include <algorithm>

namespace vantrelix {

namespace {

constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kBlanks = " \t";

std::string_view withoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

class CsvReader {
 public:
  explicit CsvReader(std::string_view text) : text_(text) {}

  std::vector<CsvRow> rows() {
    std::vector<CsvRow> found;
    while (at_ < text_.size()) {
      if (!skipLineWithoutRow()) found.push_back(row());
    }
    return found;
  }

 private:
  char here() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool atLineEnd() const { return at_ >= text_.size() || kLineEnds.find(text_[at_]) != std::string_view::npos; }

  void takeLineEnd() {
    if (at_ >= text_.size()) return;
    at_ += text_.compare(at_, 2, "\r\n") == 0 ? 2 : 1;
    ++line_;
  }

  // Takes what stands before the next comma or line end.
  std::string_view takePlain() {
    const std::size_t end = std::min(text_.find_first_of(",\r\n", at_), text_.size());
    const std::string_view plain = text_.substr(at_, end - at_);
    at_ = end;
    return plain;
  }

  bool skipLineWithoutRow() {
    const std::size_t end = std::min(text_.find_first_of(kLineEnds, at_), text_.size());
    const std::string_view line = withoutBlanks(text_.substr(at_, end - at_));
    if (!line.empty() && line.front() != '#') return false;
    at_ = end;
    takeLineEnd();
    return true;
  }

  CsvRow row() {
    CsvRow row;
    row.line = line_;
    for (;;) {
      row.fields.push_back(field(row.fault));
      if (here() != ',') break;
      ++at_;
    }
    takeLineEnd();
    return row;
  }

  std::string field(std::string& fault) {
    at_ = std::min(text_.find_first_not_of(kBlanks, at_), text_.size());
    if (here() == '"') return quotedField(fault);
    return std::string(withoutBlanks(takePlain()));
  }

  std::string quotedField(std::string& fault) {
    const int opened = line_;
    std::string value;
    ++at_;
    for (;;) {
      if (at_ >= text_.size()) {
        fault = "the quotation mark that opens in line " + std::to_string(opened) + " is not closed";
        return value;
      }
      if (here() == '"') {
        ++at_;
        if (here() != '"') break;
      }
      takeQuotedCharacter(value);
    }
    if (!withoutBlanks(takePlain()).empty()) fault = "text follows a closing quotation mark";
    return value;
  }

  void takeQuotedCharacter(std::string& value) {
    const std::size_t start = at_;
    if (atLineEnd()) {
      takeLineEnd();
    } else {
      ++at_;
    }
    value.append(text_.substr(start, at_ - start));
  }

  std::string_view text_;
  std::size_t at_ = 0;
  int line_ = 1;
};

}  // namespace

std::vector<CsvRow> readCsvRows(std::string_view text) { return CsvReader(text).rows(); }

}  // namespace vantrelix

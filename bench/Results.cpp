#include "Results.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "benchSupport.h"

namespace vantrelix::bench {

namespace {

double medianOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t half = values.size() / 2;
  return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

std::vector<double> valuesOf(const std::map<int, double>& byRound) {
  std::vector<double> values;
  values.reserve(byRound.size());
  for (const auto& [round, value] : byRound) values.push_back(value);
  return values;
}

std::string padded(const std::string& text, std::size_t width, bool right) {
  const std::string blanks(width - std::min(width, text.size()), ' ');
  return right ? blanks + text : text + blanks;
}

std::string markdownRow(const std::vector<std::string>& cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line += (cell.empty() ? "" : " " + cell) + " |";
  return line + "\n";
}

std::string markdownText(const std::vector<std::vector<std::string>>& rows) {
  std::string text;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    text += markdownRow(rows[i]);
    if (i != 0) continue;
    text += "|";
    for (std::size_t column = 0; column < rows[0].size(); ++column) text += "---|";
    text += "\n";
  }
  return text;
}

}  // namespace

std::string Table::text(bool markdown) const {
  if (markdown) return markdownText(rows);
  std::vector<std::size_t> widths;
  for (const std::vector<std::string>& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (const std::vector<std::string>& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) text += padded(row[i], widths[i], i > 0) + "  ";
    text.erase(text.find_last_not_of(' ') + 1);
    text += "\n";
  }
  return text;
}

std::string figure(double value) {
  char text[32];
  const double size = std::abs(value);
  const int decimals = size < 0.0995 ? 4 : size < 0.995 ? 3 : size < 9.95 ? 2 : size < 99.5 ? 1 : 0;
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return decimals == 0 ? grouped(std::lround(value)) : text;
}

std::string grouped(long number) {
  std::string digits = std::to_string(number);
  for (int place = static_cast<int>(digits.size()) - 3; place > 0; place -= 3) {
    digits.insert(static_cast<std::size_t>(place), ",");
  }
  return digits;
}

void Results::add(const std::string& job, int size, const std::string& contender, int round, double milliseconds) {
  times_[job][size][contender][round] = milliseconds;
}

const Results::ByRound& Results::of(const std::string& job, int size, const std::string& contender) const {
  return times_.at(job).at(size).at(contender);
}

bool Results::has(const std::string& job, int size, const std::string& contender) const {
  const auto jobs = times_.find(job);
  if (jobs == times_.end()) return false;
  const auto sizes = jobs->second.find(size);
  return sizes != jobs->second.end() && sizes->second.count(contender) != 0;
}

double Results::median(const std::string& job, int size, const std::string& contender) const {
  return medianOf(valuesOf(of(job, size, contender)));
}

double Results::best(const std::string& job, int size, const std::string& contender) const {
  const std::vector<double> values = valuesOf(of(job, size, contender));
  return *std::min_element(values.begin(), values.end());
}

double Results::ratio(const std::string& job, int size, const std::string& contender) const {
  const ByRound& base = of(job, size, ours_);
  std::vector<double> ratios;
  for (const auto& [round, value] : of(job, size, contender)) {
    const auto found = base.find(round);
    if (found != base.end()) ratios.push_back(value / found->second);
  }
  require(!ratios.empty(), contender + " has no round in common with " + ours_);
  return medianOf(ratios);
}

double Results::growth(const std::string& job, int from, int to) const {
  return median(job, to, ours_) / median(job, from, ours_);
}

double Results::growthOfBest(const std::string& job, int from, int to) const {
  return best(job, to, ours_) / best(job, from, ours_);
}

Table Results::table(const std::string& job, const std::vector<std::string>& contenders) const {
  Table table{{{""}}};
  const auto found = times_.find(job);
  if (found == times_.end()) return table;
  for (const auto& [size, byContender] : found->second) {
    table.rows[0].push_back(grouped(size) + ", ms");
    table.rows[0].emplace_back("times ours");
  }
  for (const std::string& contender : contenders) {
    std::vector<std::string> row{contender};
    bool any = false;
    for (const auto& [size, byContender] : found->second) {
      const bool here = byContender.count(contender) != 0;
      any = any || here;
      row.push_back(here ? figure(median(job, size, contender)) + " (" + figure(best(job, size, contender)) + ")" : "");
      row.push_back(here ? figure(ratio(job, size, contender)) : "");
    }
    if (any) table.rows.push_back(row);
  }
  return table;
}

}  // namespace vantrelix::bench

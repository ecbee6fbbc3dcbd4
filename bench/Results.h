// The times of a run: by job, size of the library, contender and round; and the tables made of them.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace vantrelix::bench {

// Rows of texts, the first one of headings; a column of figures is aligned to the right.
struct Table {
  std::vector<std::vector<std::string>> rows;
  std::string text(bool markdown) const;
};

// Three digits that count.
std::string figure(double value);
std::string grouped(long number);

class Results {
 public:
  explicit Results(std::string ours) : ours_(std::move(ours)) {}

  void add(const std::string& job, int size, const std::string& contender, int round, double milliseconds);

  bool has(const std::string& job, int size, const std::string& contender) const;
  double median(const std::string& job, int size, const std::string& contender) const;
  double best(const std::string& job, int size, const std::string& contender) const;
  // The median over the rounds of the contender's time in parts of ours in the same round.
  double ratio(const std::string& job, int size, const std::string& contender) const;
  // Our time at one size in parts of that at another: medians, or the best of the rounds.
  double growth(const std::string& job, int from, int to) const;
  double growthOfBest(const std::string& job, int from, int to) const;

  // A row for each contender: for each size the median, the best in parentheses, and the ratio.
  Table table(const std::string& job, const std::vector<std::string>& contenders) const;

 private:
  using ByRound = std::map<int, double>;
  const ByRound& of(const std::string& job, int size, const std::string& contender) const;

  std::string ours_;
  std::map<std::string, std::map<int, std::map<std::string, ByRound>>> times_;
};

}  // namespace vantrelix::bench

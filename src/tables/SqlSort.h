// The order of rows by their sort keys.
//
// Nulls come first, then numbers and booleans, dates, texts; texts without regard to case first, then by character
// code. Rows whose keys are equal keep the order in which they were added.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"

namespace vantrelix {

class SortKeys {
 public:
  // One key a row for each term, in the order told by its flag.
  explicit SortKeys(std::vector<bool> descending) : descending_(std::move(descending)) {}

  void reserve(std::size_t rows);
  // The next key: those of the first row, term by term, then those of the next.
  void add(const Value& value);
  void addNull() { addKey(null, 0); }
  void addNumber(double value);
  // The same for a text of ASCII characters without NUL.
  void addAscii(std::string_view plain);

  // Whether the rows stand in order as they were added.
  bool inOrder() const;
  // The places of the rows, counted from 0, in order.
  std::vector<std::uint32_t> order() const;

 private:
  enum Rank : std::uint8_t { null, number, date, text };

  // Where a text stands in `texts_`: folded, and behind that as it is.
  struct Place {
    std::size_t at = 0;
    std::uint32_t folded = 0;  // bytes
    std::uint32_t plain = 0;
  };

  std::size_t terms() const { return descending_.size(); }
  std::string_view foldedOf(const Place& place) const {
    return std::string_view(texts_).substr(place.at, place.folded);
  }
  std::string_view plainOf(const Place& place) const {
    return std::string_view(texts_).substr(place.at + place.folded, place.plain);
  }
  void addKey(Rank rank, std::uint64_t head) {
    ranks_.push_back(rank);
    heads_.push_back(head);
  }
  void addText(std::size_t at, std::size_t plain);
  int compareKeys(std::size_t a, std::size_t b) const;
  int compareTexts(const Place& a, const Place& b) const;
  int compareRows(std::size_t a, std::size_t b) const;

  std::vector<bool> descending_;
  // By key.
  std::vector<Rank> ranks_;
  std::vector<std::uint64_t> heads_;  // they order most keys of a rank; texts that are equal in it may differ
  std::vector<Place> places_;         // of the texts, up to the last of them
  std::string texts_;
};

}  // namespace vantrelix

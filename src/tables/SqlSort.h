// The order of rows by their sort keys.
//
// Nulls come first, then numbers and booleans, dates, texts; texts without regard to case first, then by character
// code. Rows whose keys are equal keep the order in which they were added.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "tables/placedWords.h"

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

  // A text as it is and as it is compared first; both may stand at one place of `texts_`, since the letters of ASCII
  // are folded when they are compared.
  struct Texts {
    std::size_t foldedAt = 0;
    std::size_t plainAt = 0;
    std::uint32_t folded = 0;  // bytes
    std::uint32_t plain = 0;
  };

  // What tells rows apart is looked at a word at a time: of each term the rank, then the number or the folded text,
  // then the text as it is.
  enum class Part : std::uint8_t { rank, folded, plain };
  struct Stage {
    std::size_t term = 0;
    Part part = Part::rank;
    std::size_t at = 0;  // bytes of a text that are equal
  };
  struct Range {
    std::size_t begin;
    std::size_t end;
    Stage stage;
  };

  std::size_t terms() const { return descending_.size(); }
  std::size_t rows() const { return terms() == 0 ? 0 : ranks_.size() / terms(); }
  std::size_t keyOf(std::size_t row, const Stage& stage) const { return row * terms() + stage.term; }
  std::string_view foldedOf(const Texts& key) const {
    return std::string_view(texts_).substr(key.foldedAt, key.folded);
  }
  std::string_view plainOf(const Texts& key) const { return std::string_view(texts_).substr(key.plainAt, key.plain); }
  void addKey(Rank rank, std::uint64_t head) {
    ranks_.push_back(rank);
    heads_.push_back(head);
  }
  void addText(const Texts& key);
  std::uint64_t wordOf(std::size_t key, const Stage& stage) const;
  bool endsAt(std::size_t key, const Stage& stage) const;
  bool advance(Stage& stage, std::span<const PlacedWord> equal) const;
  int compareRows(std::size_t a, std::size_t b) const;

  std::vector<bool> descending_;
  // By key.
  std::vector<Rank> ranks_;
  std::vector<std::uint64_t> heads_;  // the number, the date or the first word of the folded text
  std::vector<Texts> keys_;           // of the texts, up to the last of them
  std::string texts_;
};

}  // namespace vantrelix

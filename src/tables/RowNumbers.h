// The record numbers of a cursor's rows, in the cursor's order.
//
// Those that follow one another at the end, as rows have that one program adds, are kept as one run: an import that
// adds millions takes no memory for them.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace vantrelix {

class RowNumbers {
 public:
  class Iterator;

  RowNumbers() = default;
  RowNumbers(std::vector<std::uint32_t> numbers) : listed_(std::move(numbers)) {}

  std::size_t size() const { return listed_.size() + count_; }
  bool empty() const { return size() == 0; }
  // `place` is below size().
  std::uint32_t operator[](std::size_t place) const {
    return place < listed_.size() ? listed_[place] : first_ + static_cast<std::uint32_t>(place - listed_.size());
  }
  Iterator begin() const;
  Iterator end() const;

  // Adds `count` numbers from `first` on at the end.
  void append(std::uint32_t first, std::uint32_t count) {
    if (count_ > 0 && first != first_ + count_) list();
    if (count_ == 0) first_ = first;
    count_ += count;
  }

  void erase(std::size_t place) {
    if (place >= listed_.size() && place + 1 == size()) {
      --count_;
      return;
    }
    if (place >= listed_.size()) list();
    listed_.erase(listed_.begin() + static_cast<std::ptrdiff_t>(place));
  }

 private:
  // Lists the run's numbers one by one.
  void list() {
    listed_.reserve(size());
    for (; count_ > 0; --count_) listed_.push_back(first_++);
  }

  std::vector<std::uint32_t> listed_;
  std::uint32_t first_ = 0;  // of the run behind the list
  std::uint32_t count_ = 0;
};

// Walks over the numbers; they are given, not referred to.
class RowNumbers::Iterator {
 public:
  using iterator_category = std::random_access_iterator_tag;
  using value_type = std::uint32_t;
  using difference_type = std::ptrdiff_t;
  using pointer = const std::uint32_t*;
  using reference = std::uint32_t;

  Iterator() = default;
  Iterator(const RowNumbers& rows, std::ptrdiff_t place) : rows_(&rows), place_(place) {}

  std::uint32_t operator*() const { return (*rows_)[static_cast<std::size_t>(place_)]; }
  std::uint32_t operator[](std::ptrdiff_t steps) const { return *(*this + steps); }
  Iterator& operator+=(std::ptrdiff_t steps) {
    place_ += steps;
    return *this;
  }
  Iterator& operator-=(std::ptrdiff_t steps) { return *this += -steps; }
  Iterator& operator++() { return *this += 1; }
  Iterator& operator--() { return *this += -1; }
  Iterator operator++(int) {
    const Iterator before = *this;
    ++*this;
    return before;
  }
  Iterator operator--(int) {
    const Iterator before = *this;
    --*this;
    return before;
  }
  friend Iterator operator+(Iterator at, std::ptrdiff_t steps) { return at += steps; }
  friend Iterator operator+(std::ptrdiff_t steps, Iterator at) { return at += steps; }
  friend Iterator operator-(Iterator at, std::ptrdiff_t steps) { return at += -steps; }
  friend std::ptrdiff_t operator-(const Iterator& a, const Iterator& b) { return a.place_ - b.place_; }
  friend bool operator==(const Iterator& a, const Iterator& b) { return a.place_ == b.place_; }
  friend std::strong_ordering operator<=>(const Iterator& a, const Iterator& b) { return a.place_ <=> b.place_; }

 private:
  const RowNumbers* rows_ = nullptr;
  std::ptrdiff_t place_ = 0;
};

inline RowNumbers::Iterator RowNumbers::begin() const { return {*this, 0}; }
inline RowNumbers::Iterator RowNumbers::end() const { return {*this, static_cast<std::ptrdiff_t>(size())}; }

}  // namespace vantrelix

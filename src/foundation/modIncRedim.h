// Growing an array by one element, contents kept, the new value at the new upper bound.
#pragma once

#include <utility>
#include <vector>

namespace vantrelix {

template <class T>
std::size_t modIncRedim(std::vector<T>& array, T value) {
  array.push_back(std::move(value));
  return array.size() - 1;
}

}  // namespace vantrelix

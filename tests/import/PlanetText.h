// A second reader of Planet files for tests, which shares nothing with the import: what stands in a file, as written.
#pragma once

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace vantrelix::test {

struct PlanetText {
  using Points = std::vector<std::pair<double, double>>;  // degrees and attenuation in dB

  std::string name;
  double frequency = 0;
  double gain = 0;
  std::string units = "dBd";
  bool whole = false;  // both cuts are there, horizontal first
  Points horizontal, vertical;

  // Of the horizontal cut, which the library moves up by it.
  double leastLoss() const {
    double least = horizontal.front().second;
    for (const auto& point : horizontal) least = std::min(least, point.second);
    return least;
  }
};

inline PlanetText parsePlanet(std::string text) {
  PlanetText result;
  std::replace(text.begin(), text.end(), '\r', '\n');
  std::istringstream lines(text);
  PlanetText::Points* points = nullptr;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string first;
    words >> first;
    if (first == "HORIZONTAL") {
      points = &result.horizontal;
    } else if (first == "VERTICAL") {
      result.whole = points != nullptr;
      points = &result.vertical;
    } else if (points != nullptr) {
      double loss = 0;
      if (words >> loss) points->emplace_back(std::stod(first), loss);
    } else if (first == "NAME") {
      for (std::string word; words >> word;) result.name += (result.name.empty() ? "" : " ") + word;
    } else if (first == "FREQUENCY") {
      words >> result.frequency;
    } else if (first == "GAIN") {
      words >> result.gain;
      if (std::string unit; words >> unit) result.units = unit;
    }
  }
  return result;
}

}  // namespace vantrelix::test

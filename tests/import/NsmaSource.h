// A file of the NSMA format given as text, and what its reader stores.
#pragma once

#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "TextSource.h"
#include "import/nsma.h"
#include "support/TempSuite.h"

namespace vantrelix::test {

class NsmaSource : public TextSource {
 public:
  explicit NsmaSource(const std::string& text) : TextSource("\\files\\dish.adf", text) {}

  Stored store(const ImportedAntenna& antenna) override {
    const Stored plain = TextSource::store(antenna);
    if (outcomes.empty()) return plain;
    const Stored outcome = outcomes.front();
    outcomes.pop_front();
    return outcome;
  }

  std::deque<Stored> outcomes;  // of the antennas to come; written where the queue is empty
};

class Nsma : public ::testing::Test {
 protected:
  // Reads a text; the antennas stored, and ErrFlag in `flag`.
  std::vector<ImportedAntenna> read(const std::string& text, std::deque<ImportSource::Stored> outcomes = {}) {
    NsmaSource source(text);
    source.outcomes = std::move(outcomes);
    ImportedAntenna antenna;
    readNsma(source, antenna);
    flag = antenna.ErrFlag;
    return source.stored;
  }
  // The antenna of a text that must hold one.
  ImportedAntenna readOne(const std::string& text) {
    const std::vector<ImportedAntenna> antennas = read(text);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(antennas.size(), 1u);
    return antennas.empty() ? ImportedAntenna() : antennas.front();
  }
  static std::string cut(const std::string& name, const std::string& polarisation, const std::string& points,
                         const std::string& count) {
    return "PATCUT:," + name + "\nPOLARI:," + polarisation + "\nNUPOIN:," + count + "\n" + points;
  }
  // An azimuth cut of one point, in a file with the keyword lines given.
  static std::string onePoint(const std::string& header, const std::string& value) {
    return header + cut("AZ", "H/H", "0," + value + ",\n", "1") + "ENDFIL:,\n";
  }
  Message onlyMessage() const {
    EXPECT_EQ(suite.messages.size(), 1u);
    return suite.messages.empty() ? Message() : suite.messages.front();
  }

  TempSuite suite;
  int flag = 99;
};

}  // namespace vantrelix::test

// A pattern file of any kind either fails with a run-time failure or gives cuts whose arrays agree with their counts.
//
// The input is the chosen file and, behind the first byte 0x1E, its partner. Before all of it the chosen file's path
// may stand, ending in the first byte 0x1D.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "import/ImportFormat.h"
#include "import/TextLines.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::fuzz {

inline void requireCut(std::int16_t count, const std::vector<double>& angles, const std::vector<double>& values) {
  if (count < 0 || angles.size() != static_cast<std::size_t>(count) || values.size() != angles.size()) std::abort();
  for (std::size_t i = 0; i < angles.size(); ++i) {
    if (!std::isfinite(angles[i]) || !std::isfinite(values[i])) std::abort();
  }
}

inline void requireWhole(const ImportedAntenna& antenna) {
  if (antenna.ErrFlag != 0) return;
  requireCut(antenna.HorCount, antenna.HorAngle, antenna.HorValue);
  requireCut(antenna.VerCount, antenna.VerAngle, antenna.VerValue);
}

class FuzzSource : public ImportSource {
 public:
  FuzzSource(std::string path, const std::string& bytes) : path_(std::move(path)) {
    const std::size_t end = bytes.find('\x1E');
    lines_ = std::make_unique<TextLines>(bytes.substr(0, end));
    if (end != std::string::npos) partner_ = std::make_unique<TextLines>(bytes.substr(end + 1));
  }
  const std::string& path() const override { return path_; }
  TextLines& lines() override { return *lines_; }
  TextLines* openPartner(const std::string& path) override {
    if (path.empty() || opened_) return nullptr;
    opened_ = true;
    return partner_.get();
  }
  Stored store(const ImportedAntenna& antenna) override {
    requireWhole(antenna);
    return Stored::written;
  }

 private:
  std::string path_;
  std::unique_ptr<TextLines> lines_, partner_;
  bool opened_ = false;
};

// `path` is the chosen file's where the input brings none, for formats that look at it.
template <class Read>
int readAnyBytes(Read read, const char* path, const std::uint8_t* data, std::size_t size) {
  ImportedAntenna antenna;
  try {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find('\x1D');
    FuzzSource source(end == std::string::npos ? path : input.substr(0, end), input.substr(end + 1));  // npos + 1 is 0
    read(source, antenna);
  } catch (const RunTimeFailure&) {
    return 0;
  }
  requireWhole(antenna);
  return 0;
}

}  // namespace vantrelix::fuzz

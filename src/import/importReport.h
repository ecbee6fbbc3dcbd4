// What an import run has done, and how its failures are counted, logged and told.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vantrelix {

// Why a file was passed over; none of these counts as an error.
enum class SkipReason { missing, packed, readBefore, runEnded };
std::string skipText(SkipReason reason);

struct ImportResult {
  std::int16_t ErrorCount = 0;
  long filesRead = 0;
  std::vector<std::string> failed;  // paths, each with a line break and the reason
  struct Skipped {
    std::string file;  // as it was given; blank names are not listed
    SkipReason reason;
  };
  std::vector<Skipped> skipped;
  struct Added {
    std::string id;
    std::string description;  // as the library holds it
    std::string file;
  };
  std::vector<Added> added;
};

class ImportReport {
 public:
  void countRead(long files) { result_.filesRead = files; }
  void skip(const std::string& file, SkipReason reason) { result_.skipped.push_back({file, reason}); }
  void noteAdded(ImportResult::Added added) { result_.added.push_back(std::move(added)); }
  // A file that fails without a count of its own.
  void noteFailed(const std::string& path, const std::string& reason);
  // A file that fails: counted, noted and logged.
  void countError(const std::string& path, const std::string& reason);
  // Logs a text; where the log cannot be written, gives the reason behind a blank line, for whoever tells the text.
  std::string log(const std::string& text);
  // Tells the number of errors, where there are any.
  void tellErrors() const;
  // The report is blank behind it.
  ImportResult take() { return std::move(result_); }

 private:
  std::string logFailure_;
  ImportResult result_;
};

}  // namespace vantrelix

// One run of the tables' benchmark: its libraries, its jobs, what they took.
//
// In every round all contenders of a job do it once, one behind the other, the first one changing from round to round,
// so that whatever else the machine does meets them alike. What they read is compared with what was written; a
// difference ends the run.
#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "Contender.h"
#include "Results.h"

namespace vantrelix::bench {

struct Settings {
  std::vector<int> sizes{100, 1000, 10000};  // antennas of the libraries
  std::vector<int> idSizes{100, 1000, 10000, 20000};
  int importSize = 1000;
  int rounds = 7;
  int fewestRounds = 3;
  double seconds = 25;         // after which a job at one size begins no further round
  double tooSlow = 4;          // seconds in a round, after which a contender sits the others out
  int reads = 200;             // of one round, where a contender has no need to scan
  int appends = 300;           // of one round
  std::set<std::string> jobs;  // all where empty
  std::filesystem::path work;
  std::filesystem::path programs;  // the folder of the programs that do one job in a process
};

// The names under which the results stand.
namespace jobName {
inline constexpr const char *read = "read", *first = "first", *process = "process", *append = "append",
                            *readAfterAppend = "read-after-append", *import = "import", *list = "list",
                            *points = "list-points", *range = "range", *newId = "new-id", *newIdGaps = "new-id-gaps",
                            *memory = "memory";
}  // namespace jobName

constexpr const char* kOurs = "this library";
constexpr const char* kAsTold = "FindFirst by candidate";

struct MemoryFigure {
  int size = 0;
  std::string contender;
  double files = 0;  // MiB, as are the others
  double peak = 0;
  double own = 0;  // growth of what is not the files' own content
};

class TablesRun {
 public:
  explicit TablesRun(Settings settings) : settings_(std::move(settings)) {}

  void run();
  const Settings& settings() const { return settings_; }
  const Results& results() const { return results_; }
  const std::vector<MemoryFigure>& memory() const { return memory_; }

 private:
  // Gives the milliseconds of one contender in one round.
  using Work = std::function<double(std::size_t contender, int round)>;
  using Contenders = std::vector<Contender>;

  bool wanted(const char* job) const { return settings_.jobs.empty() || settings_.jobs.count(job) != 0; }
  static Contenders taking(unsigned job);
  static std::vector<std::string> titlesOf(const Contenders& contenders);
  // What `work` gives is entered under the contender's title.
  void interleave(const std::string& job, int size, const std::vector<std::string>& titles, const Work& work);

  std::filesystem::path libraryFolder(int size) const;
  void prepare(int size);

  void runRead(int size);
  void runFirst(int size);
  void runList(int size);
  void runPoints(int size);
  void runRange(int size);
  void runAppend(int size);
  double appendRound(const Contender& contender, int size, int round);
  void runImport();
  double importRound(const Contender& contender, const std::vector<MadeAntenna>& antennas);
  void runNewId(int size, bool gaps);
  double newIdRound(int size, bool gaps, bool ours) const;
  void runMemory(int size);

  Settings settings_;
  Results results_{kOurs};
  std::vector<MemoryFigure> memory_;
};

}  // namespace vantrelix::bench

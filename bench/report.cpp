#include "report.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "benchSupport.h"

namespace vantrelix::bench {

namespace {

struct JobText {
  const char* name;
  const char* text;
};

constexpr JobText kJobs[] = {
    {jobName::read, "`Get_Ant_ArrayDB`, the process has read the library before"},
    {jobName::first, "`Get_Ant_ArrayDB`, the first in a process: opening and reading"},
    {jobName::process, "... the whole process"},
    {jobName::append, "append one antenna (721 rows), mean of a few hundred"},
    {jobName::readAfterAppend, "... and the read of an antenna right behind its append"},
    {jobName::import, "import of 1,000 antennas into empty tables"},
    {jobName::list, "list ordered by description, every field"},
    {jobName::points, "... with the numbers of points counted"},
    {jobName::range, "lowest and highest `HOR_FIELD` of all rows"},
    {jobName::newId, "`GenNewID_RS`, IDs without gaps"},
    {jobName::newIdGaps, "... IDs that begin behind the number of rows"},
};

std::vector<std::string> titles() {
  std::vector<std::string> all;
  for (const Contender& contender : contenders()) all.push_back(contender.title);
  all.emplace_back(kAsTold);
  return all;
}

std::string percent(double parts) { return figure(100 * parts) + " %"; }

// ---- Targets ----

struct Verdict {
  std::string figures;
  bool reached = false;
};

class Targets {
 public:
  explicit Targets(const TablesRun& run) : run_(run), results_(run.results()) {}
  Table table();

 private:
  static constexpr double kFlat = 1.5;

  int largest() const { return *std::max_element(run_.settings().sizes.begin(), run_.settings().sizes.end()); }
  int smallest() const { return *std::min_element(run_.settings().sizes.begin(), run_.settings().sizes.end()); }
  Verdict ratio(const char* name, unsigned job, int size, double wanted) const;
  Verdict flat(const char* name) const;
  Verdict first() const;
  Verdict newId() const;
  Verdict memory() const;
  void add(const char* what, const char* wanted, const std::function<Verdict()>& verdict, bool measured);

  const TablesRun& run_;
  const Results& results_;
  Table table_{{{"job", "to reach", "measured", "reached"}}};
};

// Against the quickest rival that does the same job.
Verdict Targets::ratio(const char* name, unsigned job, int size, double wanted) const {
  Verdict verdict;
  double least = 0;
  for (const Contender& rival : contenders()) {
    if (rival.title == kOurs || !rival.counts(job) || !results_.has(name, size, rival.title)) continue;
    const double ratio = results_.ratio(name, size, rival.title);
    if (!verdict.figures.empty() && ratio >= least) continue;
    least = ratio;
    verdict.figures = figure(ratio) + " times, to " + rival.title + " (" + figure(results_.median(name, size, kOurs)) +
                      " to " + figure(results_.median(name, size, rival.title)) + " ms)";
  }
  verdict.reached = least >= wanted;
  return verdict;
}

Verdict Targets::flat(const char* name) const {
  const double growth = results_.growth(name, smallest(), largest());
  return {figure(growth) + " times the time from " + grouped(smallest()) + " to " + grouped(largest()) + " antennas",
          growth <= kFlat};
}

Verdict Targets::first() const {
  const std::string shapelib = contenderNamed("shapelib").title;
  const double ours = results_.median(jobName::first, largest(), kOurs);
  const double ratio = results_.ratio(jobName::first, largest(), shapelib);
  return {figure(ratio) + " times, " + figure(ours) + " ms", ratio >= 25 && ours < 60};
}

Verdict Targets::newId() const {
  const std::vector<int>& sizes = run_.settings().idSizes;
  const double growth = results_.growthOfBest(jobName::newIdGaps, sizes[1], sizes.back());
  const double rows = static_cast<double>(sizes.back()) / sizes[1];
  return {"same ID; " + figure(growth) + " times the time for " + figure(rows) + " times the rows",
          growth <= 1.25 * rows};
}

Verdict Targets::memory() const {
  for (const MemoryFigure& memory : run_.memory()) {
    if (memory.size != largest() || memory.contender != kOurs) continue;
    return {percent(memory.peak / memory.files) + " of the files at most, " + figure(memory.own) + " MiB of its own",
            memory.peak < 1.2 * memory.files && memory.own < 8};
  }
  return {};
}

void Targets::add(const char* what, const char* wanted, const std::function<Verdict()>& verdict, bool measured) {
  if (!measured) return;
  const Verdict told = verdict();
  table_.rows.push_back({what, wanted, told.figures, told.reached ? "yes" : "no"});
}

Table Targets::table() {
  const auto has = [&](const char* name, int size) { return results_.has(name, size, kOurs); };
  const int size = largest(), imported = run_.settings().importSize;
  add(
      "`Get_Ant_ArrayDB`, read before", "4 times the best rival\'s speed",
      [&] { return ratio(jobName::read, job::read, size, 4); }, has(jobName::read, size));
  add(
      "", "flat", [&] { return flat(jobName::read); }, has(jobName::read, size));
  add(
      "`Get_Ant_ArrayDB`, first in a process", "25 times shapelib's speed, below 60 ms", [&] { return first(); },
      has(jobName::first, size));
  add(
      "append one antenna", "8 times the best rival\'s speed",
      [&] { return ratio(jobName::append, job::append, size, 8); }, has(jobName::append, size));
  add(
      "", "flat", [&] { return flat(jobName::append); }, has(jobName::append, size));
  add(
      "import of 1,000 antennas", "4 times the best rival\'s speed",
      [&] { return ratio(jobName::import, job::import, imported, 4); }, has(jobName::import, imported));
  add(
      "list ordered by description", "1.5 times the best rival\'s speed",
      [&] { return ratio(jobName::list, job::list, size, 1.5); }, has(jobName::list, size));
  add(
      "lowest and highest value of a field", "5 times the best rival\'s speed",
      [&] { return ratio(jobName::range, job::range, size, 5); }, has(jobName::range, size));
  add(
      "`GenNewID_RS`", "the same ID, linear or better", [&] { return newId(); },
      has(jobName::newIdGaps, run_.settings().idSizes.back()));
  add(
      "memory to read them all", "below 120 % of the files, few MB own", [&] { return memory(); },
      !run_.memory().empty());
  return table_;
}

Table memoryTable(const TablesRun& run) {
  Table table{{{"MiB", "antennas", "files", "peak", "peak of files", "own memory"}}};
  for (const MemoryFigure& memory : run.memory()) {
    table.rows.push_back({memory.contender, grouped(memory.size), figure(memory.files), figure(memory.peak),
                          percent(memory.peak / memory.files), figure(memory.own)});
  }
  return table;
}

std::string headed(const std::string& heading, const Table& table, bool markdown) {
  if (table.rows.size() < 2) return "";
  const char* emphasis = markdown ? "**" : "";
  std::string text = "\n";
  for (const std::string& part : {std::string(emphasis), heading, std::string(emphasis), std::string("\n\n")})
    text += part;
  return text + table.text(markdown);
}

}  // namespace

std::string reportOf(const TablesRun& run, bool markdown) {
  std::string text = "Measured on an " + machineName() + ", times of the " +
                     (clockInUse() == Clock::wall ? "wall clock" : "processor") +
                     ": the median of the rounds\n(the best of them), and how many times ours within a round.\n";
  for (const JobText& job : kJobs) text += headed(job.text, run.results().table(job.name, titles()), markdown);
  text += headed("memory of a process that reads every antenna", memoryTable(run), markdown);
  return text + headed("what was to be reached", Targets(run).table(), markdown);
}

}  // namespace vantrelix::bench

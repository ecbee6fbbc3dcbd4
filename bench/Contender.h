// One way to keep and read an antenna library: this project's tables, and its rivals.
//
// Each stands in a source of its own that enters itself into the list, so that a program has the contenders that it is
// linked with.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "madeAntennas.h"

namespace vantrelix::bench {

struct ListedAntenna {
  std::string id;
  std::string description;
  long horizontalPoints = 0;
  long verticalPoints = 0;

  friend bool operator==(const ListedAntenna&, const ListedAntenna&) = default;
};

// An open library. Whatever a contender can keep open or prepared between two calls it keeps.
class OpenLibrary {
 public:
  virtual ~OpenLibrary() = default;
  // The antenna of that ID; of its master row all that the library's own procedure gives (no power).
  virtual MadeAntenna read(const std::string& id) = 0;
  // All fields of all master rows in order of description.
  virtual std::vector<MasterRow> list() = 0;
  // The same antennas with the number of their points, as front ends list them.
  virtual std::vector<ListedAntenna> listWithPoints();
  // Lowest and highest HOR_FIELD as the two values of a cut without angles.
  virtual Cut horizontalRange() = 0;

  virtual void beginAppending() {}
  // In a transaction of its own where the contender has such.
  virtual void append(const MadeAntenna& antenna) = 0;
  virtual void appendAll(const std::vector<MadeAntenna>& antennas);
};

// The jobs that a contender takes part in, to be added up.
namespace job {
inline constexpr unsigned read = 1, first = 2, append = 4, import = 8, list = 16, range = 32, memory = 64, points = 128;
inline constexpr unsigned all = 255;
}  // namespace job

struct Contender {
  int place;  // in tables
  std::string name;
  std::string title;
  std::string program;  // that does one job in a process of its own
  unsigned jobs;        // of all
  unsigned extras;      // of those, the ones in which it is shown but no rival to be measured by
  bool scans;           // reads a whole table for one antenna
  bool waits;           // for the disk, at each append
  // Its files of a library; DBF files are there before `make` is called.
  std::vector<std::string> files;
  // Makes them in the folder (the machine's form) for the antennas of the library.
  void (*make)(const std::filesystem::path& folder, const MadeLibrary& library);
  std::unique_ptr<OpenLibrary> (*open)(const std::filesystem::path& folder);

  bool takesPart(unsigned jobs_) const { return (jobs & jobs_) != 0; }
  bool counts(unsigned job) const { return takesPart(job) && (extras & job) == 0; }
};

inline const std::vector<std::string> kTableFiles{"AMSBENCH.DBF", "AHDBENCH.DBF", "AVDBENCH.DBF"};

// Those linked, by their place.
std::vector<Contender> contenders();
const Contender& contenderNamed(const std::string& name);

// Enters a contender before the program begins.
class Entry {
 public:
  explicit Entry(Contender contender);
};

}  // namespace vantrelix::bench

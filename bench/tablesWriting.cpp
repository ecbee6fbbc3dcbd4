// The jobs of TablesRun that write: on copies of the libraries, fresh ones each round.
#include <chrono>
#include <thread>

#include "TablesRun.h"
#include "benchSupport.h"
#include "makeLibrary.h"
#include "platform/Platform.h"
#include "tables/structure.h"

namespace vantrelix::bench {

namespace {

// A contender's files in a folder of their own, removed at the end.
class Copy {
 public:
  Copy(const std::filesystem::path& work, const Contender& contender) : folder_(work / "copy") {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    files_ = contender.files;
  }
  ~Copy() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  Copy(const Copy&) = delete;
  Copy& operator=(const Copy&) = delete;

  void take(const std::filesystem::path& from) const {
    for (const std::string& file : files_) std::filesystem::copy_file(from / file, folder_ / file);
  }
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
  std::vector<std::string> files_;
};

std::vector<MadeAntenna> antennasFrom(const MadeLibrary& made, int first, int count) {
  std::vector<MadeAntenna> antennas;
  antennas.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) antennas.push_back(made.at(first + i));
  return antennas;
}

void requireAntenna(OpenLibrary& library, const MadeAntenna& antenna, const Contender& contender) {
  require(library.read(antenna.master.id) == antenna, contender.title + " does not read what it has appended");
}

// Each antenna is read right behind its append, by a process that had read the library before.
double readsAfterAppends(OpenLibrary& library, const MadeLibrary& made, int first, const Contender& contender) {
  const int times = contender.scans ? 1 : 20;
  for (int i = 0; i < 2; ++i) {
    library.read(idAt(0));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  double total = 0;
  for (int i = 0; i < times; ++i) {
    const MadeAntenna antenna = made.at(first + i);
    library.append(antenna);
    MadeAntenna read;
    total += measured([&] { read = library.read(antenna.master.id); });
    require(read == antenna, contender.title + " does not read what it has just appended");
  }
  return total / times;
}

std::string newIdAsTold(Recordset& rows) {
  rows.MoveLast();
  for (int place = static_cast<int>(rows.RecordCount());; ++place) {
    std::string id = idAt(place);
    rows.FindFirst("ATYPE_ID = '" + id + "'");
    if (rows.NoMatch()) return id;
  }
}

}  // namespace

double TablesRun::appendRound(const Contender& contender, int size, int round) {
  const Copy copy(settings_.work, contender);
  copy.take(libraryFolder(size));
  const int appends = contender.waits ? settings_.appends / 10 : settings_.appends;
  const MadeLibrary made(size);
  const std::vector<MadeAntenna> antennas = antennasFrom(made, size, appends);
  const std::unique_ptr<OpenLibrary> library = contender.open(copy.folder());
  library->beginAppending();
  const double time = measured([&] {
    for (const MadeAntenna& antenna : antennas) library->append(antenna);
  });
  requireAntenna(*library, antennas.front(), contender);
  requireAntenna(*library, antennas.back(), contender);
  require(library->list().size() == static_cast<std::size_t>(size) + antennas.size(),
          contender.title + " has another number of antennas than were appended");
  if (!contender.waits) {
    results_.add(jobName::readAfterAppend, size, contender.title, round,
                 readsAfterAppends(*library, made, size + appends, contender));
  }
  return time / appends;
}

void TablesRun::runAppend(int size) {
  const Contenders all = taking(job::append);
  interleave(jobName::append, size, titlesOf(all),
             [&](std::size_t contender, int round) { return appendRound(all[contender], size, round); });
}

double TablesRun::importRound(const Contender& contender, const std::vector<MadeAntenna>& antennas) {
  const Copy copy(settings_.work, contender);
  makeLibrary(platform::current().fromMachine(copy.folder().string()), 0);
  contender.make(copy.folder(), MadeLibrary(0));
  const std::unique_ptr<OpenLibrary> library = contender.open(copy.folder());
  library->beginAppending();
  const double time = measured([&] { library->appendAll(antennas); });
  const MadeLibrary made(static_cast<int>(antennas.size()));
  require(library->list() == made.list(), contender.title + " lists other antennas than were imported");
  require(library->horizontalRange() == made.horizontalRange(),
          contender.title + " has other points than it was given");
  for (std::size_t i = 0; i < antennas.size(); i += antennas.size() / 4) {
    requireAntenna(*library, antennas[i], contender);
  }
  return time;
}

void TablesRun::runImport() {
  const Contenders all = taking(job::import);
  const MadeLibrary made(settings_.importSize);
  const std::vector<MadeAntenna> antennas = antennasFrom(made, 0, made.count());
  interleave(jobName::import, settings_.importSize, titlesOf(all),
             [&](std::size_t contender, int) { return importRound(all[contender], antennas); });
}

// A table and a cursor that nothing is known of. Without gaps the first candidate is free; where rows were deleted, the
// IDs of those left begin behind their number.
double TablesRun::newIdRound(int size, bool gaps, bool ours) const {
  const std::filesystem::path folder = settings_.work / "ids";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  const RecordsetPtr rows = makeMasterTable(platform::current().fromMachine(folder.string()), size, gaps ? size : 0);
  std::string id;
  const double time =
      measured([&] { id = ours ? GenNewID_RS(*rows, "ATYPE_ID", kCode, "0000001") : newIdAsTold(*rows); });
  const std::string expected = idAt(gaps ? 2 * size : size);
  require(id == expected, "the next ID is " + expected + ", not " + id);
  return time;
}

void TablesRun::runNewId(int size, bool gaps) {
  interleave(gaps ? jobName::newIdGaps : jobName::newId, size, {kOurs, kAsTold},
             [&](std::size_t contender, int) { return newIdRound(size, gaps, contender == 0); });
  std::filesystem::remove_all(settings_.work / "ids");
}

}  // namespace vantrelix::bench

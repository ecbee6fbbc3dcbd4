// What the benchmarks of this folder share: times, requirements, folders of their own, the machine's name.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace vantrelix::bench {

// Milliseconds. Those of the processor tell what a busy machine adds to the wall clock's.
struct Time {
  double wall = 0;
  double processor = 0;
};

Time timeOf(const std::function<void()>& work);

// Which time measured() gives: the wall clock's, or this process's own, which a busy machine disturbs less.
enum class Clock { wall, processor };
Clock clockInUse();
void setClock(Clock clock);
// Milliseconds.
double measured(const std::function<void()>& work);

// Reads a file from the disk, from its beginning to its end. How the system's cache holds it, in large pieces or small
// ones, depends on that and no more on how it was written: copying from it differs by half.
void readFromDisk(const std::filesystem::path& file);

// Throws std::runtime_error of that text where it does not hold.
void require(bool holds, const std::string& what);

// "Processor, 2 cores, Linux 6.1.0".
std::string machineName();

// A folder for a run. One that the caller names is kept, any other is made and removed at the end.
class WorkFolder {
 public:
  WorkFolder(const std::string& named, const std::string& stem);
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
  bool temporary_;
};

}  // namespace vantrelix::bench

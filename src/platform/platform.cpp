#include "platform/Platform.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <utility>

#include "platform/RunTimeFailure.h"

namespace vantrelix::platform {

namespace {

constexpr int kAttempts = 1000;  // to find a free name

Platform*& inUse() {
  static Platform* platform = nullptr;
  return platform;
}

// A file on its way to its name, under a name of its own in the same folder; removed unless it was put in place.
class FileBeside {
 public:
  explicit FileBeside(const std::string& target) : target_(target), made_(createBeside(target)) {}
  ~FileBeside() {
    if (placed_) return;
    made_.file.reset();
    try {
      current().remove(made_.path);
    } catch (const RunTimeFailure&) {
      // The failure on its way up tells the cause; this would hide it.
    }
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  void write(std::string_view content) {
    made_.file->writeAt(0, content.data(), content.size());
    made_.file->sync();
  }
  void takePermissions(const std::string& like) { current().copyPermissions(like, made_.path); }
  void replace() { place(&Platform::rename); }
  void putNew() { place(&Platform::renameNew); }

 private:
  void place(void (Platform::*move)(const std::string&, const std::string&)) {
    made_.file.reset();
    (current().*move)(made_.path, target_);
    placed_ = true;
    try {
      const std::size_t slash = target_.find_last_of("\\/");
      current().syncFolder(slash == std::string::npos ? "." : target_.substr(0, slash + 1));
    } catch (const RunTimeFailure&) {
      // The content stands at its name, complete; a failure reported here would say that it does not.
    }
  }

  std::string target_;
  NewFile made_;
  bool placed_ = false;
};

}  // namespace

Platform& current() { return inUse() != nullptr ? *inUse() : operatingSystem(); }

Substitute::Substitute(Platform& replacement) : former_(inUse()) { inUse() = &replacement; }

Substitute::~Substitute() { inUse() = former_; }

std::string readWholeFile(File& file, const std::string& path, std::uint64_t limit) {
  const std::uint64_t size = file.size();
  const auto tooLong = [&] {
    return RunTimeFailure(failure::deviceIO,
                          "The file " + current().toMachine(path) + " is too long to be read as a whole.");
  };
  if (size > limit) throw tooLong();
  std::string content(static_cast<std::size_t>(size), '\0');
  content.resize(file.readAt(0, content.data(), content.size()));
  std::array<char, 4096> more{};
  // A file that grows while it is read, and one whose size the system does not tell.
  for (std::size_t part = 1; content.size() >= size && part != 0;) {
    part = file.readAt(content.size(), more.data(), more.size());
    if (content.size() + part > limit) throw tooLong();
    content.append(more.data(), part);
  }
  return content;
}

std::string readWholeFile(const std::string& path, std::uint64_t limit) {
  return readWholeFile(*current().open(path, OpenMode::read), path, limit);
}

NewFile createBeside(const std::string& path) {
  static std::atomic<unsigned> count{0};
  for (int attempt = 0;; ++attempt) {
    std::string name = path + "." + std::to_string(current().processId()) + "-" + std::to_string(++count) + ".tmp";
    try {
      auto file = current().open(name, OpenMode::createNew);
      return {std::move(name), std::move(file)};
    } catch (const RunTimeFailure& failure) {
      // What a former process of this number left behind; the next name is free.
      if (failure.number() != failure::fileExists || attempt == kAttempts) throw;
    }
  }
}

void replaceWholeFile(const std::string& path, std::string_view content) {
  const std::string target = current().linkTarget(path);
  const bool exists = current().state(target).has_value();
  // Renaming would replace a read-only file too; opening it so refuses as writing into it would.
  if (exists) current().open(target, OpenMode::readWrite);
  FileBeside file(target);
  file.write(content);
  if (exists) file.takePermissions(target);
  file.replace();
}

void createWholeFile(const std::string& path, std::string_view content, const std::string& like) {
  FileBeside file(current().linkTarget(path));
  if (!like.empty()) file.takePermissions(like);
  file.write(content);
  file.putNew();
}

}  // namespace vantrelix::platform

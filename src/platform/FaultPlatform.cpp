#include "platform/FaultPlatform.h"

#include "platform/ForwardingFile.h"

namespace vantrelix::platform {

// Shared with the files opened, which may outlive the platform.
struct FaultPlatform::Faults {
  enum class Kind { none, failure, anyFailure, diskFull, crash };
  // Whether a call needs room on the disk.
  enum class Room { needed, none };

  Kind kind = Kind::none;
  int call = 0;
  int number = 0;
  bool torn = false;
  bool countsAll = false;               // from the first fault on: most tests ask for changing calls alone
  std::vector<std::string> journal;     // of changing calls
  std::vector<std::string> anyJournal;  // of all calls

  void set(Kind newKind, int newCall, int newNumber, bool newTorn) {
    kind = newKind;
    call = newCall;
    number = newNumber;
    torn = newTorn;
    countsAll = true;
    journal.clear();
    anyJournal.clear();
  }

  // Counts a call that changes nothing and tells whether it must fail.
  bool strikesAny(const char* what, const std::string& path) {
    if (!countsAll) return false;
    anyJournal.push_back(what + (' ' + path));
    return kind == Kind::anyFailure && static_cast<int>(anyJournal.size()) == call;
  }

  // The same of a changing call.
  bool strikes(const char* what, const std::string& path, Room room) {
    const bool struck = strikesAny(what, path);
    journal.push_back(what + (' ' + path));
    const int now = static_cast<int>(journal.size());
    if (kind == Kind::failure) return now == call;
    if (kind == Kind::diskFull) return now >= call && room == Room::needed;
    return struck || (kind == Kind::crash && now >= call);
  }

  // After a strike: whether half of a write still reaches the disk.
  bool writesHalf() const { return kind == Kind::diskFull || (torn && static_cast<int>(journal.size()) == call); }

  [[noreturn]] void fail() const {
    throw RunTimeFailure(number, "Fault put in for a test at " + anyJournal.back() + ".");
  }

  void pass(const char* what, const std::string& path, Room room) {
    if (strikes(what, path, room)) fail();
  }
  void passAny(const char* what, const std::string& path) {
    if (strikesAny(what, path)) fail();
  }
};

class FaultFile : public ForwardingFile {
 public:
  using Faults = FaultPlatform::Faults;

  FaultFile(std::unique_ptr<File> real, std::shared_ptr<Faults> faults, std::string path)
      : ForwardingFile(std::move(real)), faults_(std::move(faults)), path_(std::move(path)) {}

  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    faults_->passAny("readAt", path_);
    return real_->readAt(offset, buffer, count);
  }
  void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    if (faults_->strikes("writeAt", path_, Faults::Room::needed)) {
      if (faults_->writesHalf()) real_->writeAt(offset, bytes, count / 2);
      faults_->fail();
    }
    real_->writeAt(offset, bytes, count);
  }
  // A crash leaves all of the old bytes or, behind the call, all of the new.
  void overwriteAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    if (faults_->strikes("overwriteAt", path_, Faults::Room::needed)) {
      if (faults_->kind == Faults::Kind::diskFull) real_->overwriteAt(offset, bytes, count / 2);
      faults_->fail();
    }
    real_->overwriteAt(offset, bytes, count);
  }
  void append(const void* bytes, std::size_t count) override {
    if (faults_->strikes("append", path_, Faults::Room::needed)) {
      if (faults_->writesHalf()) real_->append(bytes, count / 2);
      faults_->fail();
    }
    real_->append(bytes, count);
  }
  std::uint64_t size() override {
    faults_->passAny("size", path_);
    return real_->size();
  }
  void truncate(std::uint64_t size) override {
    const auto room = size > real_->size() ? Faults::Room::needed : Faults::Room::none;
    faults_->pass("truncate", path_, room);
    real_->truncate(size);
  }
  void sync() override {
    faults_->pass("sync", path_, Faults::Room::needed);
    real_->sync();
  }
  FileState state() override {
    faults_->passAny("state", path_);
    return real_->state();
  }
  bool tryLock(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    faults_->passAny("tryLock", path_);
    return real_->tryLock(offset, length, kind);
  }
  void unlock(std::uint64_t offset, std::uint64_t length) override {
    faults_->passAny("unlock", path_);
    real_->unlock(offset, length);
  }
  bool lockedByOther(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    return !faults_->strikesAny("lockedByOther", path_) && real_->lockedByOther(offset, length, kind);
  }
  bool setModified(std::int64_t nanoseconds) override {
    return !faults_->strikesAny("setModified", path_) && real_->setModified(nanoseconds);
  }
  bool hasOwnClock() override { return !faults_->strikesAny("hasOwnClock", path_) && real_->hasOwnClock(); }
  std::unique_ptr<MemoryMap> map() override {
    if (faults_->strikesAny("map", path_)) return nullptr;
    return real_->map();
  }

 private:
  std::shared_ptr<Faults> faults_;
  std::string path_;
};

FaultPlatform::FaultPlatform(Platform& real) : real_(real), faults_(std::make_shared<Faults>()) {}

FaultPlatform::~FaultPlatform() = default;

void FaultPlatform::failAt(int call, int number) { faults_->set(Faults::Kind::failure, call, number, false); }

void FaultPlatform::failAnyAt(int call, int number) { faults_->set(Faults::Kind::anyFailure, call, number, false); }

void FaultPlatform::fillDiskAt(int call) { faults_->set(Faults::Kind::diskFull, call, failure::diskFull, false); }

void FaultPlatform::crashAt(int call, bool torn) { faults_->set(Faults::Kind::crash, call, failure::deviceIO, torn); }

void FaultPlatform::reset() { faults_->set(Faults::Kind::none, 0, 0, false); }

int FaultPlatform::calls() const { return static_cast<int>(faults_->journal.size()); }

const std::vector<std::string>& FaultPlatform::journal() const { return faults_->journal; }

int FaultPlatform::anyCalls() const { return static_cast<int>(faults_->anyJournal.size()); }

const std::vector<std::string>& FaultPlatform::anyJournal() const { return faults_->anyJournal; }

void FaultPlatform::setRegistryValue(int root, const std::string& key, const std::string& value) {
  registry_.push_back({root, key, value});
}

std::unique_ptr<File> FaultPlatform::open(const std::string& path, OpenMode mode) {
  const std::string machinePath = real_.toMachine(path);
  if (mode == OpenMode::create || mode == OpenMode::createNew || mode == OpenMode::append) {
    faults_->pass("open", machinePath, Faults::Room::needed);
  } else {
    faults_->passAny("open", machinePath);
  }
  return std::make_unique<FaultFile>(real_.open(path, mode), faults_, machinePath);
}

void FaultPlatform::rename(const std::string& from, const std::string& to) {
  faults_->pass("rename", real_.toMachine(to), Faults::Room::none);
  real_.rename(from, to);
}

void FaultPlatform::renameNew(const std::string& from, const std::string& to) {
  faults_->pass("renameNew", real_.toMachine(to), Faults::Room::none);
  real_.renameNew(from, to);
}

void FaultPlatform::remove(const std::string& path) {
  faults_->pass("remove", real_.toMachine(path), Faults::Room::none);
  real_.remove(path);
}

void FaultPlatform::makeFolder(const std::string& path) {
  faults_->pass("makeFolder", real_.toMachine(path), Faults::Room::needed);
  real_.makeFolder(path);
}

void FaultPlatform::copyPermissions(const std::string& from, const std::string& to) {
  faults_->pass("copyPermissions", real_.toMachine(to), Faults::Room::none);
  real_.copyPermissions(from, to);
}

void FaultPlatform::syncFolder(const std::string& path) {
  faults_->pass("syncFolder", real_.toMachine(path), Faults::Room::none);
  real_.syncFolder(path);
}

bool FaultPlatform::fileExists(const std::string& path) {
  return !faults_->strikesAny("fileExists", real_.toMachine(path)) && real_.fileExists(path);
}

bool FaultPlatform::folderExists(const std::string& path) {
  return !faults_->strikesAny("folderExists", real_.toMachine(path)) && real_.folderExists(path);
}

std::optional<FileState> FaultPlatform::state(const std::string& path) {
  if (faults_->strikesAny("state", real_.toMachine(path))) return std::nullopt;
  return real_.state(path);
}

std::vector<std::string> FaultPlatform::list(const std::string& folder) {
  faults_->passAny("list", real_.toMachine(folder));
  return real_.list(folder);
}

std::string FaultPlatform::findIgnoringCase(const std::string& path) {
  return faults_->strikesAny("findIgnoringCase", real_.toMachine(path)) ? path : real_.findIgnoringCase(path);
}

std::string FaultPlatform::linkTarget(const std::string& path) {
  return faults_->strikesAny("linkTarget", real_.toMachine(path)) ? path : real_.linkTarget(path);
}

std::optional<std::string> FaultPlatform::registryValue(int root, const std::string& key, std::size_t limit) {
  for (const RegistryEntry& entry : registry_) {
    if (entry.root == root && entry.key == key) return entry.value.substr(0, limit);
  }
  return std::nullopt;
}

}  // namespace vantrelix::platform

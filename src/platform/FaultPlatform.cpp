#include "platform/FaultPlatform.h"

namespace vantrelix::platform {

// Shared with the files opened, which may outlive the platform.
struct FaultPlatform::Faults {
  enum class Kind { none, failure, diskFull, crash };
  // Whether a call needs room on the disk.
  enum class Room { needed, none };

  Kind kind = Kind::none;
  int call = 0;
  int number = 0;
  bool torn = false;
  std::vector<std::string> journal;

  void set(Kind newKind, int newCall, int newNumber, bool newTorn) {
    kind = newKind;
    call = newCall;
    number = newNumber;
    torn = newTorn;
    journal.clear();
  }

  // Counts a call and tells whether it must fail.
  bool strikes(const std::string& what, Room room) {
    journal.push_back(what);
    const int now = static_cast<int>(journal.size());
    if (kind == Kind::failure) return now == call;
    if (kind == Kind::diskFull) return now >= call && room == Room::needed;
    return kind == Kind::crash && now >= call;
  }

  // After a strike: whether half of a write still reaches the disk.
  bool writesHalf() const { return kind == Kind::diskFull || (torn && static_cast<int>(journal.size()) == call); }

  [[noreturn]] void fail() const { throw RunTimeFailure(number, "Fault put in for a test at " + journal.back() + "."); }

  void pass(const std::string& what, Room room) {
    if (strikes(what, room)) fail();
  }
};

class FaultFile : public File {
 public:
  using Faults = FaultPlatform::Faults;

  FaultFile(std::unique_ptr<File> real, std::shared_ptr<Faults> faults, std::string path)
      : real_(std::move(real)), faults_(std::move(faults)), path_(std::move(path)) {}

  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    return real_->readAt(offset, buffer, count);
  }
  void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    if (faults_->strikes("writeAt " + path_, Faults::Room::needed)) {
      if (faults_->writesHalf()) real_->writeAt(offset, bytes, count / 2);
      faults_->fail();
    }
    real_->writeAt(offset, bytes, count);
  }
  void append(const void* bytes, std::size_t count) override {
    if (faults_->strikes("append " + path_, Faults::Room::needed)) {
      if (faults_->writesHalf()) real_->append(bytes, count / 2);
      faults_->fail();
    }
    real_->append(bytes, count);
  }
  std::uint64_t size() override { return real_->size(); }
  void truncate(std::uint64_t size) override {
    const auto room = size > real_->size() ? Faults::Room::needed : Faults::Room::none;
    faults_->pass("truncate " + path_, room);
    real_->truncate(size);
  }
  void sync() override {
    faults_->pass("sync " + path_, Faults::Room::needed);
    real_->sync();
  }
  FileState state() override { return real_->state(); }
  bool tryLock(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    return real_->tryLock(offset, length, kind);
  }
  void unlock(std::uint64_t offset, std::uint64_t length) override { real_->unlock(offset, length); }
  bool lockedByOther(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    return real_->lockedByOther(offset, length, kind);
  }
  bool setModified(std::int64_t nanoseconds) override { return real_->setModified(nanoseconds); }
  bool hasOwnClock() override { return real_->hasOwnClock(); }
  std::unique_ptr<MemoryMap> map() override { return real_->map(); }

 private:
  std::unique_ptr<File> real_;
  std::shared_ptr<Faults> faults_;
  std::string path_;
};

FaultPlatform::FaultPlatform(Platform& real) : real_(real), faults_(std::make_shared<Faults>()) {}

FaultPlatform::~FaultPlatform() = default;

void FaultPlatform::failAt(int call, int number) { faults_->set(Faults::Kind::failure, call, number, false); }

void FaultPlatform::fillDiskAt(int call) { faults_->set(Faults::Kind::diskFull, call, failure::diskFull, false); }

void FaultPlatform::crashAt(int call, bool torn) { faults_->set(Faults::Kind::crash, call, failure::deviceIO, torn); }

void FaultPlatform::reset() { faults_->set(Faults::Kind::none, 0, 0, false); }

int FaultPlatform::calls() const { return static_cast<int>(faults_->journal.size()); }

const std::vector<std::string>& FaultPlatform::journal() const { return faults_->journal; }

void FaultPlatform::setRegistryValue(int root, const std::string& key, const std::string& value) {
  registry_.push_back({root, key, value});
}

std::unique_ptr<File> FaultPlatform::open(const std::string& path, OpenMode mode) {
  if (mode == OpenMode::create || mode == OpenMode::createNew || mode == OpenMode::append) {
    faults_->pass("open " + real_.toMachine(path), Faults::Room::needed);
  }
  return std::make_unique<FaultFile>(real_.open(path, mode), faults_, real_.toMachine(path));
}

void FaultPlatform::rename(const std::string& from, const std::string& to) {
  faults_->pass("rename " + real_.toMachine(to), Faults::Room::none);
  real_.rename(from, to);
}

void FaultPlatform::renameNew(const std::string& from, const std::string& to) {
  faults_->pass("renameNew " + real_.toMachine(to), Faults::Room::none);
  real_.renameNew(from, to);
}

void FaultPlatform::remove(const std::string& path) {
  faults_->pass("remove " + real_.toMachine(path), Faults::Room::none);
  real_.remove(path);
}

void FaultPlatform::makeFolder(const std::string& path) {
  faults_->pass("makeFolder " + real_.toMachine(path), Faults::Room::needed);
  real_.makeFolder(path);
}

void FaultPlatform::copyPermissions(const std::string& from, const std::string& to) {
  faults_->pass("copyPermissions " + real_.toMachine(to), Faults::Room::none);
  real_.copyPermissions(from, to);
}

void FaultPlatform::syncFolder(const std::string& path) {
  faults_->pass("syncFolder " + real_.toMachine(path), Faults::Room::none);
  real_.syncFolder(path);
}

std::optional<std::string> FaultPlatform::registryValue(int root, const std::string& key, std::size_t limit) {
  for (const RegistryEntry& entry : registry_) {
    if (entry.root == root && entry.key == key) return entry.value.substr(0, limit);
  }
  return std::nullopt;
}

}  // namespace vantrelix::platform

#include "platform/posixFile.h"

#ifndef _WIN32

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <limits>
#include <linux/magic.h>
#include <optional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>
#include <utility>

#include "platform/RunTimeFailure.h"
#include "platform/posixWriteAside.h"

namespace vantrelix::platform::posix {

namespace {

bool folderOfExists(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  if (slash == std::string::npos) return true;
  struct stat found {};
  return ::stat(path.substr(0, slash + 1).c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

int failureNumber(int error, const std::string& path) {
  switch (error) {
    case ENOENT:
      return folderOfExists(path) ? failure::fileNotFound : failure::pathNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
      return failure::pathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
      return failure::permissionDenied;
    case EISDIR:
    case ENXIO:
    case ENODEV:
    case ELOOP:
      return failure::pathAccess;
    case EEXIST:
    case ENOTEMPTY:
      return failure::fileExists;
    case ENOSPC:
    case EDQUOT:
      return failure::diskFull;
    default:
      return failure::deviceIO;
  }
}

std::string describe(int number, int error, const std::string& path) {
  switch (number) {
    case failure::fileNotFound:
      return "File not found: " + path + ". Check its name.";
    case failure::pathNotFound:
      return "Path not found: " + path + ". Check the folder's name, or make the folder.";
    case failure::permissionDenied:
      return "Permission denied: " + path + ". Check the rights of the file and its folder.";
    case failure::pathAccess:
      return "Path access error: " + path + " is no plain file.";
    case failure::fileExists:
      return "File already exists: " + path + ". Choose another name.";
    case failure::diskFull:
      return "Disk full: " + path + " could not be written. Free some space and try again.";
    default:
      return "Device error at " + path + ": " + std::strerror(error) + ".";
  }
}

constexpr std::uint64_t kPage = 4096;  // no system's are smaller
constexpr std::uint64_t kLargestOffset = static_cast<std::uint64_t>(std::numeric_limits<off_t>::max());

class PosixMap : public MemoryMap {
 public:
  PosixMap(void* address, std::size_t size) : address_(address), size_(size) {}
  ~PosixMap() override { ::munmap(address_, size_); }
  PosixMap(const PosixMap&) = delete;
  PosixMap& operator=(const PosixMap&) = delete;

  const unsigned char* data() const override { return static_cast<const unsigned char*>(address_); }
  std::size_t size() const override { return size_; }

 private:
  void* address_;
  std::size_t size_;
};

class PosixFile : public File {
 public:
  PosixFile(int descriptor, std::string path, bool appending)
      : descriptor_(descriptor), path_(std::move(path)), appending_(appending) {}
  ~PosixFile() override { ::close(descriptor_); }
  PosixFile(const PosixFile&) = delete;
  PosixFile& operator=(const PosixFile&) = delete;

  const std::string& path() const { return path_; }

  bool readsInParallel() const override { return true; }

  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override {
    std::size_t done = 0;
    while (done < count && offset + done <= kLargestOffset) {
      const auto part = retry([&] {
        return ::pread(descriptor_, static_cast<char*>(buffer) + done, count - done, static_cast<off_t>(offset + done));
      });
      if (part < 0) fail(errno, path_);
      if (part == 0) break;
      done += static_cast<std::size_t>(part);
    }
    return done;
  }

  void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    if (offset > kLargestOffset - std::min<std::uint64_t>(count, kLargestOffset)) fail(EFBIG, path_);
    std::size_t done = 0;
    while (done < count) {
      const auto part = retry([&] {
        return ::pwrite(descriptor_, static_cast<const char*>(bytes) + done, count - done,
                        static_cast<off_t>(offset + done));
      });
      if (part < 0) fail(errno, path_);
      if (part == 0) fail(ENOSPC, path_);
      done += static_cast<std::size_t>(part);
    }
  }

  // Within a page a write comes to its end by itself.
  void overwriteAt(std::uint64_t offset, const void* bytes, std::size_t count) override {
    std::size_t done = 0;
    if (count > 0 && offset / kPage != (offset + count - 1) / kPage && offset <= kLargestOffset - count) {
      const auto part = writeAside(descriptor_, bytes, count, static_cast<off_t>(offset));
      if (part < 0) fail(errno, path_);
      done = static_cast<std::size_t>(part);
    }
    writeAt(offset + done, static_cast<const char*>(bytes) + done, count - done);
  }

  // A descriptor opened for appending writes to the end by itself, beside other writers too.
  void append(const void* bytes, std::size_t count) override { writeAt(appending_ ? 0 : size(), bytes, count); }

  std::uint64_t size() override { return state().size; }

  void truncate(std::uint64_t size) override {
    if (size > kLargestOffset) fail(EFBIG, path_);
    if (retry([&] { return ::ftruncate(descriptor_, static_cast<off_t>(size)); }) != 0) fail(errno, path_);
  }

  void sync() override {
    if (retry([&] { return ::fsync(descriptor_); }) == 0) return;
    if (errno != EINVAL && errno != EROFS) fail(errno, path_);  // these two: nothing that could be synced
  }

  FileState state() override {
    struct stat found {};
    if (::fstat(descriptor_, &found) != 0) fail(errno, path_);
    return stateOf(found);
  }

  bool tryLock(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    return length == 0 || lockRange(offset, length, kind == LockKind::exclusive ? F_WRLCK : F_RDLCK);
  }

  void unlock(std::uint64_t offset, std::uint64_t length) override {
    if (length != 0) lockRange(offset, length, F_UNLCK);
  }

  bool lockedByOther(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
    struct flock range = rangeOf(offset, length, kind == LockKind::exclusive ? F_WRLCK : F_RDLCK);
    return retry([&] { return ::fcntl(descriptor_, F_OFD_GETLK, &range); }) == 0 && range.l_type != F_UNLCK;
  }

  bool setModified(std::int64_t nanoseconds) override {
    constexpr std::int64_t second = 1'000'000'000;
    struct timespec times[2] = {{0, UTIME_OMIT}, {}};
    times[1].tv_nsec = static_cast<long>((nanoseconds % second + second) % second);
    times[1].tv_sec = static_cast<time_t>((nanoseconds - times[1].tv_nsec) / second);
    return ::futimens(descriptor_, times) == 0;
  }

  // An open file stays on its file system.
  bool hasOwnClock() override {
    if (!ownClock_) ownClock_ = isOnClockOfMachine();
    return *ownClock_;
  }

  std::unique_ptr<MemoryMap> map() override {
    const std::uint64_t length = size();
    if (length == 0 || length > std::numeric_limits<std::size_t>::max()) return nullptr;
    void* address = ::mmap(nullptr, static_cast<std::size_t>(length), PROT_READ, MAP_SHARED, descriptor_, 0);
    if (address == MAP_FAILED) return nullptr;
    return std::make_unique<PosixMap>(address, static_cast<std::size_t>(length));
  }

 private:
  bool isOnClockOfMachine() const {
    constexpr long own[] = {EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, BTRFS_SUPER_MAGIC, F2FS_SUPER_MAGIC, TMPFS_MAGIC};
    struct statfs found {};
    return ::fstatfs(descriptor_, &found) == 0 &&
           std::find(std::begin(own), std::end(own), static_cast<long>(found.f_type)) != std::end(own);
  }

  struct flock rangeOf(std::uint64_t offset, std::uint64_t length, short kind) const {
    if (offset > kLargestOffset || length > kLargestOffset - offset) fail(EOVERFLOW, path_);
    struct flock range {};
    range.l_type = kind;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(offset);
    range.l_len = static_cast<off_t>(length);
    return range;
  }

  bool lockRange(std::uint64_t offset, std::uint64_t length, short kind) {
    struct flock range = rangeOf(offset, length, kind);
    if (retry([&] { return ::fcntl(descriptor_, F_OFD_SETLK, &range); }) == 0) return true;
    if (errno == EAGAIN || errno == EACCES) return false;
    if (errno == EBADF) fail(EACCES, path_);  // an exclusive lock through a descriptor that cannot write
    const bool withoutLocks = errno == EINVAL || errno == ENOLCK || errno == ENOTSUP || errno == ENOSYS;
    if (!withoutLocks) fail(errno, path_);
    return true;
  }

  int descriptor_;
  std::string path_;
  bool appending_;
  std::optional<bool> ownClock_;
};

int openFlags(OpenMode mode) {
  switch (mode) {
    case OpenMode::read:
      return O_RDONLY;
    case OpenMode::readWrite:
      return O_RDWR;
    case OpenMode::create:
      return O_RDWR | O_CREAT | O_TRUNC;
    case OpenMode::createNew:
      return O_RDWR | O_CREAT | O_EXCL;
    case OpenMode::append:
      return O_RDWR | O_CREAT | O_APPEND;
  }
  return O_RDONLY;
}

int openDescriptor(const std::string& nativePath, OpenMode mode) {
  // Without O_NONBLOCK a pipe at the path would hold the program until somebody wrote into it.
  const int flags = openFlags(mode) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  const int descriptor = retry([&] { return ::open(nativePath.c_str(), flags, 0666); });
  if (descriptor < 0) fail(errno, nativePath);
  return descriptor;
}

}  // namespace

void fail(int error, const std::string& path) {
  const int number = failureNumber(error, path);
  throw RunTimeFailure(number, describe(number, error, path));
}

FileState stateOf(const struct stat& found) {
  FileState state;
  state.device = static_cast<std::uint64_t>(found.st_dev);
  state.inode = static_cast<std::uint64_t>(found.st_ino);
  state.size = static_cast<std::uint64_t>(std::max<off_t>(found.st_size, 0));
  state.modifiedNanoseconds = static_cast<std::int64_t>(found.st_mtim.tv_sec) * 1'000'000'000 + found.st_mtim.tv_nsec;
  state.links = static_cast<std::uint64_t>(found.st_nlink);
  return state;
}

std::string native(std::string_view path) {
  std::string result(path);
  std::replace(result.begin(), result.end(), '\\', '/');
  const std::size_t nul = result.find('\0');
  if (nul != std::string::npos) {
    throw RunTimeFailure(failure::pathNotFound, "Path not found: the path that begins with " + result.substr(0, nul) +
                                                    " holds a NUL character.");
  }
  return result;
}

std::unique_ptr<File> openFile(std::string nativePath, OpenMode mode) {
  const int descriptor = openDescriptor(nativePath, mode);
  struct stat found {};
  const int error = ::fstat(descriptor, &found) == 0 ? 0 : errno;
  auto file = std::make_unique<PosixFile>(descriptor, std::move(nativePath), mode == OpenMode::append);
  if (error != 0) fail(error, file->path());
  if (!S_ISREG(found.st_mode) && !S_ISCHR(found.st_mode)) fail(EISDIR, file->path());
  return file;
}

std::unique_ptr<File> openUnseen(std::string nativePath) {
  const int descriptor = openDescriptor(nativePath, OpenMode::read);
  return std::make_unique<PosixFile>(descriptor, std::move(nativePath), false);
}

}  // namespace vantrelix::platform::posix

#endif

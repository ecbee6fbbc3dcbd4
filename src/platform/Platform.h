// Everything the library asks of an operating system, as one small interface.
//
// Paths come in the library's form (parts joined with backslashes; forward slashes are taken too) or in the machine's
// own form; the platform alone turns them into what the machine wants. Every operation that fails throws RunTimeFailure
// with one of the conventional numbers (53 file not found, 61 disk full, 70 permission denied, 75 path access, 76 path
// not found, 57 any other input or output error) and a description that names the path in the machine's form.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrelix::platform {

// What identifies the content of a file as far as the file system can tell.
struct FileState {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t modifiedNanoseconds = 0;
  std::uint64_t links = 1;  // names that lead to it; 0 of an open file that was removed or replaced

  friend bool operator==(const FileState&, const FileState&) = default;
};

// Whether both are states of one file, whatever was done to it in between.
inline bool isSameFile(const FileState& one, const FileState& other) {
  return one.device == other.device && one.inode == other.inode;
}

enum class OpenMode {
  read,       // must exist
  readWrite,  // must exist
  create,     // created, or emptied where it exists; readable and writable
  createNew,  // created; fails (58) where it exists
  append,     // created where missing; every write goes to the end
};

enum class LockKind { shared, exclusive };

// A file mapped into memory for reading. The bytes live as long as this object.
class MemoryMap {
 public:
  virtual ~MemoryMap() = default;
  virtual const unsigned char* data() const = 0;
  virtual std::size_t size() const = 0;
};

// An open file; closed by its destructor, which drops its locks.
class File {
 public:
  virtual ~File() = default;

  // Reads up to `count` bytes at `offset`; fewer only at the end of the file.
  virtual std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) = 0;
  // Whether another thread may call readAt while this one uses the object.
  virtual bool readsInParallel() const { return false; }
  // Writes all bytes or throws. What was written before a failure stays.
  virtual void writeAt(std::uint64_t offset, const void* bytes, std::size_t count) = 0;
  // Writes over bytes that are there, so that a sudden end of this program leaves all of the old ones or all of the
  // new. For a few of them, up to some thousand. A failure that is thrown may leave a part, as with writeAt.
  virtual void overwriteAt(std::uint64_t offset, const void* bytes, std::size_t count) {
    writeAt(offset, bytes, count);
  }
  virtual void append(const void* bytes, std::size_t count) = 0;
  virtual std::uint64_t size() = 0;
  virtual void truncate(std::uint64_t size) = 0;
  virtual void sync() = 0;
  virtual FileState state() = 0;

  // Locks a byte range at once or answers false; never waits. Locks belong to this open file, not to the process: two
  // File objects of one process exclude each other as two processes do. A file system without locks answers true.
  virtual bool tryLock(std::uint64_t offset, std::uint64_t length, LockKind kind) = 0;
  virtual void unlock(std::uint64_t offset, std::uint64_t length) = 0;
  // Whether another File object, here or in another process, holds a lock that would keep this one from locking the
  // range so. Takes nothing. A file system without locks answers false.
  virtual bool lockedByOther(std::uint64_t offset, std::uint64_t length, LockKind kind) = 0;

  // Sets the time of the last change. False, and nothing is done, where this program may not do that.
  virtual bool setModified(std::int64_t nanoseconds) = 0;
  // Whether this machine's own clock (Platform::wallNanoseconds) gives the file its times: it lies on a disk of this
  // machine, not on one that another machine writes to as well.
  virtual bool hasOwnClock() = 0;

  // Maps the whole file; null where the file is empty or cannot be mapped.
  virtual std::unique_ptr<MemoryMap> map() = 0;
};

// Local wall-clock time.
struct DateTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;

  friend bool operator==(const DateTime&, const DateTime&) = default;
};

// The user's regional settings as the operating system has them.
struct Regional {
  std::string decimalCharacter = ".";
  std::string digitSeparator = ",";
  // Of the letters M, MM, d, dd, yy, yyyy, h, hh (of 12), H, HH (of 24), mm, ss and tt (AM or PM).
  std::string shortDate = "M/d/yyyy";
  std::string longTime = "h:mm:ss tt";
};

class Platform {
 public:
  virtual ~Platform() = default;

  // Files.
  virtual std::unique_ptr<File> open(const std::string& path, OpenMode mode) = 0;
  // Opens for reading what stands at the path, for who knows the state of a file there and compares the File's with it:
  // that it is a file of bytes at all may show only then, or fail a read.
  virtual std::unique_ptr<File> openUnseen(const std::string& path) { return open(path, OpenMode::read); }
  virtual bool fileExists(const std::string& path) = 0;
  virtual bool folderExists(const std::string& path) = 0;
  // Null where the path cannot be reached.
  virtual std::optional<FileState> state(const std::string& path) = 0;
  // Replaces an existing `to`, at once: there is never a moment without a file there.
  virtual void rename(const std::string& from, const std::string& to) = 0;
  // Like rename, but fails with 58 where `to` exists.
  virtual void renameNew(const std::string& from, const std::string& to) = 0;
  virtual void remove(const std::string& path) = 0;
  virtual void makeFolder(const std::string& path) = 0;
  // Gives `to` the permissions of `from`: rights, access list, owner and group. Where this program may not give some,
  // nobody but the owner of `to` has more of it than of `from`.
  virtual void copyPermissions(const std::string& from, const std::string& to) = 0;
  // Makes what was renamed or created in this folder durable.
  virtual void syncFolder(const std::string& path) = 0;
  // Names in a folder, without "." and "..", in the order of the operating system.
  virtual std::vector<std::string> list(const std::string& folder) = 0;

  // Where the path, as given, does not exist: the same path with each part looked for without regard to case, or the
  // path unchanged where that finds nothing. Tables, INI and alias files are reached through this.
  virtual std::string findIgnoringCase(const std::string& path) = 0;

  // The path behind a symbolic link, followed to its end; any other path unchanged.
  virtual std::string linkTarget(const std::string& path) = 0;

  // Names.
  virtual std::string toMachine(std::string_view path) = 0;    // for display and for other programs
  virtual std::string fromMachine(std::string_view path) = 0;  // at the door: dialogs, command line
  virtual std::string absolute(const std::string& path) = 0;   // the library's form
  virtual std::string currentFolder() = 0;                     // the library's form, no trailing backslash
  virtual std::string programPath() = 0;                       // full path of the running program, library's form
  // The 8.3 form of a path, or nothing where the system has none.
  virtual std::optional<std::string> shortName(const std::string& path) = 0;

  // Environment.
  virtual std::optional<std::string> environment(const std::string& name) = 0;
  virtual DateTime now() = 0;
  virtual Regional regional() = 0;
  virtual int processId() = 0;
  // Whether standard error is a terminal that a person looks at.
  virtual bool errorIsTerminal() = 0;
  virtual void sleepMilliseconds(int milliseconds) = 0;
  // Lets others run who wait for a processor; comes back within microseconds where there are none.
  virtual void yield() = 0;
  // Nanoseconds since 1970, as precise as the clock is; file times have the same origin but may go in steps of up to
  // two seconds.
  virtual std::int64_t wallNanoseconds() = 0;
  // A steady clock for waiting.
  virtual std::int64_t steadyMilliseconds() = 0;
  // The default value of a registry key below one of the roots (0 local machine, 1 current user, 2 classes root), cut
  // to `limit` characters; nothing on a system without a registry.
  virtual std::optional<std::string> registryValue(int root, const std::string& key, std::size_t limit) = 0;
  // Starts a program without waiting for it; 53 where there is no such program. The program is a path or a name to look
  // for in the folders of programs; the arguments are handed over as they are, paths among them in the machine's form.
  virtual void runProgram(const std::string& program, const std::vector<std::string>& arguments) = 0;
  // Decodes text of a code page that needs the operating system's tables (936, 950, 932, 949); nothing where it has
  // none.
  virtual std::optional<std::string> decodeMultiByte(int codePage, std::string_view bytes) = 0;
  virtual std::optional<std::string> encodeMultiByte(int codePage, std::string_view utf8) = 0;
};

// The platform in use: the operating system's, unless a test has put another in its place.
Platform& current();

// Puts a platform in the place of the current one for its own lifetime. For tests.
class Substitute {
 public:
  explicit Substitute(Platform& replacement);
  ~Substitute();
  Substitute(const Substitute&) = delete;
  Substitute& operator=(const Substitute&) = delete;

 private:
  Platform* former_;
};

// The operating system's own platform, whatever stands in its place.
Platform& operatingSystem();

// Reads a whole file. Throws as Platform::open and File::readAt do; a file longer than `limit` fails with 57.
std::string readWholeFile(const std::string& path, std::uint64_t limit = std::uint64_t{1} << 31);

// The same of an open file; `path` is for the failure's text alone.
std::string readWholeFile(File& file, const std::string& path, std::uint64_t limit = std::uint64_t{1} << 31);

// A new file in the folder of `path`, under a name of its own; whoever asked for it renames or removes it.
struct NewFile {
  std::string path;
  std::unique_ptr<File> file;
};
NewFile createBeside(const std::string& path);

// Writes a whole file beside `path` and renames it into place, so that a reader finds the old content or the new one.
// Permissions of an existing file are kept; a symbolic link stays and its target is replaced. On a failure the file is
// as it was and nothing is left beside it.
void replaceWholeFile(const std::string& path, std::string_view content);
// Writes a whole file that does not exist yet, complete from its first moment, with the permissions of the file `like`
// if one is named. Fails with 58 where it exists.
void createWholeFile(const std::string& path, std::string_view content, const std::string& like = "");

}  // namespace vantrelix::platform

#include "platform/Platform.h"

#ifndef _WIN32

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/RunTimeFailure.h"
#include "platform/findIgnoringCase.h"
#include "platform/posixFile.h"
#include "platform/posixPermissions.h"
#include "platform/posixText.h"
#include "platform/posixTime.h"

namespace vantrelix::platform {

namespace {

using posix::fail;
using posix::native;
using posix::retry;

std::string withBackslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::optional<struct stat> lookUp(std::string_view path) {
  if (path.empty() || path.find('\0') != std::string_view::npos) return std::nullopt;
  struct stat found {};
  if (::stat(native(path).c_str(), &found) != 0) return std::nullopt;
  return found;
}

// The cause of a failed rename may be either path; the one that is missing is named.
[[noreturn]] void failRename(int error, const std::string& from, const std::string& to) {
  struct stat found {};
  const bool fromIsThere = ::lstat(from.c_str(), &found) == 0;
  fail(error, error == ENOENT && !fromIsThere ? from : to);
}

bool lacksRenameNew(int error) { return error == EINVAL || error == ENOSYS || error == ENOTSUP; }

// For file systems that know no "rename unless it exists": a second name for the file, then the first one goes.
void renameByLink(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) == 0) {
    if (::unlink(from.c_str()) != 0) fail(errno, from);
    return;
  }
  if (errno != EPERM && errno != ENOTSUP && errno != ENOSYS && errno != EMLINK) failRename(errno, from, to);
  if (::access(to.c_str(), F_OK) == 0) fail(EEXIST, to);
  if (::rename(from.c_str(), to.c_str()) != 0) failRename(errno, from, to);
}

int renameUnlessThere(const std::string& from, const std::string& to) {
#ifdef RENAME_NOREPLACE
  return ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
#else
  static_cast<void>(from);
  static_cast<void>(to);
  errno = ENOSYS;
  return -1;
#endif
}

// Runs in a child of the child, so that the program belongs to the system's first process and leaves no zombie here.
// What made the start fail comes back through the pipe, which a start that succeeds closes.
[[noreturn]] void startInGrandchild(std::vector<char*>& arguments, int report) {
  const pid_t grandchild = ::fork();
  if (grandchild > 0) ::_exit(0);
  if (grandchild == 0) {
    ::setsid();
    ::execvp(arguments.front(), arguments.data());
  }
  const int error = errno;
  static_cast<void>(!::write(report, &error, sizeof error));
  ::_exit(127);
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Gives the error of the start, 0 on success.
int start(std::vector<std::string> commandLine) {
  std::vector<char*> arguments = pointersTo(commandLine);
  std::array<int, 2> report{};
  if (::pipe2(report.data(), O_CLOEXEC) != 0) return errno;
  const pid_t child = ::fork();
  if (child == 0) startInGrandchild(arguments, report[1]);
  int error = child < 0 ? errno : 0;
  ::close(report[1]);
  if (child > 0) {
    retry([&] { return ::waitpid(child, nullptr, 0); });
    int told = 0;
    if (retry([&] { return ::read(report[0], &told, sizeof told); }) == static_cast<ssize_t>(sizeof told)) error = told;
  }
  ::close(report[0]);
  return error;
}

class PosixPlatform : public Platform {
 public:
  std::unique_ptr<File> open(const std::string& path, OpenMode mode) override {
    return posix::openFile(native(path), mode);
  }
  std::unique_ptr<File> openUnseen(const std::string& path) override { return posix::openUnseen(native(path)); }
  bool fileExists(const std::string& path) override {
    const auto found = lookUp(path);
    return found && !S_ISDIR(found->st_mode);
  }
  bool folderExists(const std::string& path) override {
    const auto found = lookUp(path);
    return found && S_ISDIR(found->st_mode);
  }
  std::optional<FileState> state(const std::string& path) override {
    const auto found = lookUp(path);
    if (!found) return std::nullopt;
    return posix::stateOf(*found);
  }

  void rename(const std::string& from, const std::string& to) override {
    const std::string source = native(from);
    const std::string target = native(to);
    if (::rename(source.c_str(), target.c_str()) != 0) failRename(errno, source, target);
  }

  void renameNew(const std::string& from, const std::string& to) override {
    const std::string source = native(from);
    const std::string target = native(to);
    if (renameUnlessThere(source, target) == 0) return;
    if (!lacksRenameNew(errno)) failRename(errno, source, target);
    renameByLink(source, target);
  }

  void remove(const std::string& path) override {
    const std::string name = native(path);
    if (::unlink(name.c_str()) != 0) fail(errno, name);
  }

  void makeFolder(const std::string& path) override {
    const std::string name = native(path);
    if (::mkdir(name.c_str(), 0777) == 0) return;
    const int error = errno;
    if (!folderExists(path)) fail(error, name);
  }

  void copyPermissions(const std::string& from, const std::string& to) override {
    posix::copyPermissions(native(from), native(to));
  }

  void syncFolder(const std::string& path) override {
    const std::string name = native(path);
    const int descriptor = retry([&] { return ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (descriptor < 0) fail(errno, name);
    const int result = retry([&] { return ::fsync(descriptor); });
    const int error = errno;
    ::close(descriptor);
    if (result != 0 && error != EINVAL && error != EROFS) fail(error, name);
  }

  std::vector<std::string> list(const std::string& folder) override {
    const std::string name = native(folder);
    DIR* directory = ::opendir(name.empty() ? "." : name.c_str());
    if (directory == nullptr) fail(errno == ENOENT ? ENOTDIR : errno, name);
    std::vector<std::string> names;
    while (const dirent* entry = ::readdir(directory)) {
      const std::string_view found = entry->d_name;
      if (found != "." && found != "..") names.emplace_back(found);
    }
    ::closedir(directory);
    return names;
  }

  std::string findIgnoringCase(const std::string& path) override { return platform::findIgnoringCase(*this, path); }

  std::string linkTarget(const std::string& path) override {
    std::error_code error;
    std::filesystem::path target = native(path);
    // As far as the system itself follows; a ring of links is left to the operation that then fails on it.
    for (int link = 0; link < 40 && std::filesystem::is_symlink(target, error); ++link) {
      target = target.parent_path() / std::filesystem::read_symlink(target, error);
    }
    return target == native(path) ? path : withBackslashes(target.string());
  }

  std::string toMachine(std::string_view path) override {
    std::string result(path);
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
  }
  std::string fromMachine(std::string_view path) override { return withBackslashes(std::string(path)); }

  std::string absolute(const std::string& path) override {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(native(path), error);
    if (error) return withBackslashes(path);
    const std::filesystem::path plain = full.lexically_normal();
    // ".." behind a symbolic link does not lead where the text says.
    const bool same = !std::filesystem::exists(full, error) || std::filesystem::equivalent(full, plain, error);
    return withBackslashes((same ? plain : full).string());
  }

  std::string currentFolder() override {
    std::error_code error;
    const std::string folder = withBackslashes(std::filesystem::current_path(error).string());
    return folder == "\\" ? "" : folder;
  }

  std::string programPath() override {
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    constexpr std::string_view kReplaced = " (deleted)";
    if (path.ends_with(kReplaced)) path.resize(path.size() - kReplaced.size());
    return withBackslashes(path);
  }

  std::optional<std::string> shortName(const std::string&) override { return std::nullopt; }

  std::optional<std::string> environment(const std::string& name) override {
    const char* value = std::getenv(name.c_str());
    if (value == nullptr) return std::nullopt;
    return std::string(value);
  }

  DateTime now() override { return posix::localTime(std::time(nullptr)); }

  Regional regional() override { return posix::userRegional(); }
  int processId() override { return static_cast<int>(::getpid()); }
  bool errorIsTerminal() override { return ::isatty(STDERR_FILENO) == 1; }
  void sleepMilliseconds(int milliseconds) override {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }
  void yield() override { std::this_thread::yield(); }
  std::int64_t wallNanoseconds() override {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
  }
  std::int64_t steadyMilliseconds() override {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
  }
  std::optional<std::string> registryValue(int, const std::string&, std::size_t) override { return std::nullopt; }

  void runProgram(const std::string& program, const std::vector<std::string>& arguments) override {
    std::vector<std::string> commandLine{native(program)};
    commandLine.insert(commandLine.end(), arguments.begin(), arguments.end());
    const int error = start(commandLine);
    if (error == ENOENT || error == ENOTDIR) {
      throw RunTimeFailure(failure::fileNotFound,
                           "Program not found: " + commandLine.front() + ". Install it or check its path.");
    }
    if (error != 0) fail(error, commandLine.front());
  }

  std::optional<std::string> decodeMultiByte(int codePage, std::string_view bytes) override {
    return posix::decode(codePage, bytes);
  }
  std::optional<std::string> encodeMultiByte(int codePage, std::string_view utf8) override {
    return posix::encode(codePage, utf8);
  }
};

}  // namespace

Platform& operatingSystem() {
  static PosixPlatform platform;
  return platform;
}

}  // namespace vantrelix::platform

#endif

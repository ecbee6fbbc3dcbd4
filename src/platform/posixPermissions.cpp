#include "platform/posixPermissions.h"

#ifndef _WIN32

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif

#include "platform/posixFile.h"

namespace vantrelix::platform::posix {

namespace {

#ifdef __linux__
constexpr const char* kAccessList = "system.posix_acl_access";

// A file without a list, as on a file system that knows none, is told from its bits alone.
std::string accessList(const std::string& path) {
  const ssize_t size = ::getxattr(path.c_str(), kAccessList, nullptr, 0);
  if (size <= 0) return "";
  std::string list(static_cast<std::size_t>(size), '\0');
  const ssize_t got = ::getxattr(path.c_str(), kAccessList, list.data(), list.size());
  list.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
  return list;
}

// A new file may have taken a list from its folder.
bool setAccessList(const std::string& path, const std::string& list) {
  if (!list.empty()) return ::setxattr(path.c_str(), kAccessList, list.data(), list.size(), 0) == 0;
  return ::removexattr(path.c_str(), kAccessList) == 0 || errno == ENODATA || errno == ENOTSUP;
}
#else
std::string accessList(const std::string&) { return ""; }
bool setAccessList(const std::string&, const std::string&) { return true; }
#endif

bool setGroup(const std::string& path, const struct stat& like) {
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  return ::chown(path.c_str(), like.st_uid, like.st_gid) == 0 || ::chown(path.c_str(), kSameOwner, like.st_gid) == 0;
}

}  // namespace

void copyPermissions(const std::string& from, const std::string& to) {
  struct stat source {};
  if (::stat(from.c_str(), &source) != 0) fail(errno, from);
  const bool sameGroup = setGroup(to, source);
  const bool sameList = setAccessList(to, accessList(from));
  constexpr mode_t kAllBits = S_IRWXU | S_IRWXG | S_IRWXO;
  const mode_t forBoth = (source.st_mode >> 3) & source.st_mode & S_IRWXO;
  mode_t mode = source.st_mode & kAllBits;
  if (!sameGroup) mode = (mode & S_IRWXU) | forBoth << 3 | forBoth;
  if (!sameList) mode &= S_IRWXU;
  if (::chmod(to.c_str(), mode) != 0) fail(errno, to);
}

}  // namespace vantrelix::platform::posix

#endif

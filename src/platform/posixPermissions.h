// Who may read and write a file. Private to the platform's sources for POSIX systems.
#pragma once

#ifndef _WIN32

#include <string>

namespace vantrelix::platform::posix {

// Gives the file `to` the owner, group, rights to read, write and run, and access list (ACL) of `from`, as far as this
// program may. Only the superuser gives files away, and others give them to groups of their own alone: without the
// group everybody has what both the group and everybody else had, and without the list the owner alone has anything.
// Machine paths; fails by fail().
void copyPermissions(const std::string& from, const std::string& to);

}  // namespace vantrelix::platform::posix

#endif

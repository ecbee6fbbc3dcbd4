// What the defaults INI sets for all tables: section Tables, keys LockWait (milliseconds) and DurableWrites (1 or 0).
#pragma once

namespace vantrelix {

// Reads them once in a process, for the first database that is opened; what a key does not name, or a program without
// an installation folder, stays as it is set. A file that cannot be read fails as getINIStr does, and is read again.
void readTableSettings();
// Lets the next database read them again: for a host that changes its installation folder.
void forgetTableSettings();

}  // namespace vantrelix

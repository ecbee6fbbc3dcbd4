// A platform that goes wrong on purpose: it hands every call to a real one, counts them, and lets one of them fail. For
// tests.
//
// Calls are counted twice: those that change anything (opening with create, createNew or append; writeAt, overwriteAt,
// append, truncate and sync of a file; rename, renameNew, remove, makeFolder, copyPermissions and syncFolder), and all
// that go to the operating system for a file or folder, questions, reads and locks among them. A test runs its
// operation once to learn their count and then once for each call that is to fail.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::platform {

class FaultPlatform : public Platform {
 public:
  explicit FaultPlatform(Platform& real);
  ~FaultPlatform() override;

  // Each of these counts from 1, beginning anew, and takes the place of a fault set before.
  // Changing call number `call` fails with `number` and changes nothing; the others work.
  void failAt(int call, int number);
  // The same of all calls. One that cannot throw answers as it does where the system refuses: a question with no or
  // nothing, a name as it was given.
  void failAnyAt(int call, int number);
  // From that changing call on the disk is full: a write puts down half of its bytes and fails with 61, creating fails;
  // what needs no room still works.
  void fillDiskAt(int call);
  // That changing call and all later ones fail with 57 and change nothing, but for the first, which writes half of its
  // bytes (overwriteAt none) where `torn` is set. What the disk holds then is what a program killed there leaves.
  void crashAt(int call, bool torn = false);
  // No fault, and the count starts anew.
  void reset();

  // Changing calls since the start of the count, and each as text ("writeAt /a/b").
  int calls() const;
  const std::vector<std::string>& journal() const;
  // The same of all calls; empty before the first of the functions above is used.
  int anyCalls() const;
  const std::vector<std::string>& anyJournal() const;

  // What registryValue gives for a key, cut to its limit; nothing where none was set.
  void setRegistryValue(int root, const std::string& key, const std::string& value);

  std::unique_ptr<File> open(const std::string& path, OpenMode mode) override;
  void rename(const std::string& from, const std::string& to) override;
  void renameNew(const std::string& from, const std::string& to) override;
  void remove(const std::string& path) override;
  void makeFolder(const std::string& path) override;
  void copyPermissions(const std::string& from, const std::string& to) override;
  void syncFolder(const std::string& path) override;
  std::optional<std::string> registryValue(int root, const std::string& key, std::size_t limit) override;

  bool fileExists(const std::string& path) override;
  bool folderExists(const std::string& path) override;
  std::optional<FileState> state(const std::string& path) override;
  std::vector<std::string> list(const std::string& folder) override;
  std::string findIgnoringCase(const std::string& path) override;
  std::string linkTarget(const std::string& path) override;

  std::string toMachine(std::string_view path) override { return real_.toMachine(path); }
  std::string fromMachine(std::string_view path) override { return real_.fromMachine(path); }
  std::string absolute(const std::string& path) override { return real_.absolute(path); }
  std::string currentFolder() override { return real_.currentFolder(); }
  std::string programPath() override { return real_.programPath(); }
  std::optional<std::string> shortName(const std::string& path) override { return real_.shortName(path); }
  std::optional<std::string> environment(const std::string& name) override { return real_.environment(name); }
  DateTime now() override { return real_.now(); }
  Regional regional() override { return real_.regional(); }
  int processId() override { return real_.processId(); }
  bool errorIsTerminal() override { return real_.errorIsTerminal(); }
  void sleepMilliseconds(int milliseconds) override { real_.sleepMilliseconds(milliseconds); }
  void yield() override { real_.yield(); }
  std::int64_t wallNanoseconds() override { return real_.wallNanoseconds(); }
  std::int64_t steadyMilliseconds() override { return real_.steadyMilliseconds(); }
  void runProgram(const std::string& program, const std::vector<std::string>& arguments) override {
    real_.runProgram(program, arguments);
  }
  std::optional<std::string> decodeMultiByte(int codePage, std::string_view bytes) override {
    return real_.decodeMultiByte(codePage, bytes);
  }
  std::optional<std::string> encodeMultiByte(int codePage, std::string_view utf8) override {
    return real_.encodeMultiByte(codePage, utf8);
  }

 private:
  struct Faults;
  friend class FaultFile;

  struct RegistryEntry {
    int root;
    std::string key;
    std::string value;
  };

  Platform& real_;
  std::shared_ptr<Faults> faults_;
  std::vector<RegistryEntry> registry_;
};

}  // namespace vantrelix::platform

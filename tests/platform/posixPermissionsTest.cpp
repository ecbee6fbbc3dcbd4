// Who may read a file that takes another's place.
#include <filesystem>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include "platform/Platform.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

namespace vantrelix {
namespace {

using std::filesystem::perms;

constexpr uid_t kAlice = 12001, kBob = 12002;
constexpr gid_t kRadio = 12010, kUsers = 12011;

class CopyPermissions : public testing::Test {
 protected:
  CopyPermissions() {
    folder.write("OLD.DBF", "old");
    folder.write("NEW.DBF", "new");
    std::filesystem::permissions(oldFile, perms(0664));
  }
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "Only the superuser acts for several users.";
    std::filesystem::permissions(folder.machine(""), perms(0777));
  }

  void give(const std::string& file, uid_t owner, gid_t group, unsigned bits) const {
    ASSERT_EQ(::chown(file.c_str(), owner, group), 0);
    std::filesystem::permissions(file, perms(bits));
  }
  // Bob copies them; who is in his own group, and perhaps in another one.
  bool copiedByBob(const std::vector<gid_t>& others) const {
    return test::exitCode(test::startChild([&] {
             if (::setgroups(others.size(), others.data()) != 0 || ::setgid(kUsers) != 0 || ::setuid(kBob) != 0)
               return false;
             platform::current().copyPermissions(folder.file("OLD.DBF"), folder.file("NEW.DBF"));
             return true;
           })) == 0;
  }
  struct stat ofNew() const {
    struct stat found {};
    EXPECT_EQ(::stat(newFile.c_str(), &found), 0);
    return found;
  }
  unsigned bitsOfNew() const { return ofNew().st_mode & 07777; }

  test::TempFolder folder;
  const std::string oldFile = folder.machine("OLD.DBF");
  const std::string newFile = folder.machine("NEW.DBF");
};

TEST_F(CopyPermissions, OfTheSuperuserGiveOwnerAndGroupToo) {
  give(oldFile, kAlice, kRadio, 0640);
  platform::current().copyPermissions(folder.file("OLD.DBF"), folder.file("NEW.DBF"));
  EXPECT_EQ(ofNew().st_uid, kAlice);
  EXPECT_EQ(ofNew().st_gid, kRadio);
  EXPECT_EQ(bitsOfNew(), 0640U);
}

TEST_F(CopyPermissions, OfAUserOfTheGroupKeepTheGroup) {
  give(oldFile, kAlice, kRadio, 0660);
  give(newFile, kBob, kUsers, 0644);
  ASSERT_TRUE(copiedByBob({kRadio}));
  EXPECT_EQ(ofNew().st_uid, kBob);
  EXPECT_EQ(ofNew().st_gid, kRadio);
  EXPECT_EQ(bitsOfNew(), 0660U);
}

TEST_F(CopyPermissions, OfAStrangerOpenNothingToHisOwnGroup) {
  give(oldFile, kAlice, kRadio, 0664);
  give(newFile, kBob, kUsers, 0666);
  ASSERT_TRUE(copiedByBob({}));
  EXPECT_EQ(ofNew().st_gid, kUsers);
  EXPECT_EQ(bitsOfNew(), 0644U);
  give(oldFile, kAlice, kRadio, 0660);
  ASSERT_TRUE(copiedByBob({}));
  EXPECT_EQ(bitsOfNew(), 0600U);
  give(oldFile, kAlice, kRadio, 0604);  // his own group is shut out of a file that all others may read
  ASSERT_TRUE(copiedByBob({}));
  EXPECT_EQ(bitsOfNew(), 0600U);
}

TEST_F(CopyPermissions, GiveNoRightsOfTheOwnerToWhoRunsTheFile) {
  give(oldFile, kAlice, kRadio, 06755);
  platform::current().copyPermissions(folder.file("OLD.DBF"), folder.file("NEW.DBF"));
  EXPECT_EQ(bitsOfNew(), 0755U);
}

TEST_F(CopyPermissions, FailWhereOneOfTheFilesIsMissing) {
  EXPECT_ANY_THROW(platform::current().copyPermissions(folder.file("NONE.DBF"), folder.file("NEW.DBF")));
  EXPECT_ANY_THROW(platform::current().copyPermissions(folder.file("OLD.DBF"), folder.file("NONE.DBF")));
}

#ifdef __linux__
constexpr const char* kAccessList = "system.posix_acl_access";

std::string listOf(const std::string& file) {
  std::string list(256, '\0');
  const ssize_t size = ::getxattr(file.c_str(), kAccessList, list.data(), list.size());
  list.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  return list;
}

// Entries of kind, rights and user, as the system keeps them: the owner, one more user, the group, the mask of both,
// and everybody else.
std::string listFor(uid_t user) {
  const std::uint32_t none = 0xFFFFFFFF;
  const std::uint32_t entries[][3] = {
      {0x01, 6, none}, {0x02, 6, user}, {0x04, 4, none}, {0x10, 6, none}, {0x20, 0, none}};
  std::string list("\x02\0\0\0", 4);
  for (const auto& [kind, rights, who] : entries) {
    for (const std::uint32_t half : {kind, rights}) list += {static_cast<char>(half), '\0'};
    for (int byte = 0; byte < 4; ++byte) list += static_cast<char>(who >> (8 * byte));
  }
  return list;
}

TEST_F(CopyPermissions, TakeTheAccessListAlong) {
  const std::string list = listFor(kAlice);
  if (::setxattr(oldFile.c_str(), kAccessList, list.data(), list.size(), 0) != 0)
    GTEST_SKIP() << "The file system keeps no access lists.";
  platform::current().copyPermissions(folder.file("OLD.DBF"), folder.file("NEW.DBF"));
  EXPECT_EQ(listOf(newFile), list);
  EXPECT_EQ(bitsOfNew(), 0660U);
  std::filesystem::permissions(oldFile, perms(0600));
  ASSERT_EQ(::removexattr(oldFile.c_str(), kAccessList), 0);
  platform::current().copyPermissions(folder.file("OLD.DBF"), folder.file("NEW.DBF"));
  EXPECT_EQ(listOf(newFile), "");
}
#endif

}  // namespace
}  // namespace vantrelix

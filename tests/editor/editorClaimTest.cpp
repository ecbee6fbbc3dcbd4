// Two editors that come to one library at the same time: one alone gets it.
#include <functional>
#include <utility>

#include "EditorFixture.h"
#include "platform/FaultPlatform.h"
#include "platform/ForwardingFile.h"
#include "tables/DbfFile.h"
#include "tables/EditingMark.h"

namespace vantrelix::test {
namespace {

using platform::LockKind;
using platform::OpenMode;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Lets something happen once, right behind the end of the first opening that denied writing.
class GapPlatform : public platform::FaultPlatform {
 public:
  GapPlatform() : FaultPlatform(platform::operatingSystem()) {}
  std::unique_ptr<platform::File> open(const std::string& path, OpenMode mode) override {
    return std::make_unique<WatchedFile>(FaultPlatform::open(path, mode), *this);
  }

  std::function<void()> inGap;

 private:
  class WatchedFile : public platform::ForwardingFile {
   public:
    WatchedFile(std::unique_ptr<File> real, GapPlatform& machine)
        : ForwardingFile(std::move(real)), machine_(machine) {}
    ~WatchedFile() override {
      real_.reset();
      if (deniesWriting_ && machine_.inGap) std::exchange(machine_.inGap, {})();
    }
    bool tryLock(std::uint64_t offset, std::uint64_t length, LockKind kind) override {
      constexpr std::uint64_t kDenyWrite = 0x7FFFFFFE;
      const bool taken = real_->tryLock(offset, length, kind);
      deniesWriting_ = deniesWriting_ || (taken && offset == kDenyWrite && kind == LockKind::exclusive);
      return taken;
    }

   private:
    GapPlatform& machine_;
    bool deniesWriting_ = false;
  };
};

class ClaimTest : public EditorTest {
 protected:
  ClaimTest() { DbfFile::setLockWait(20); }
  ~ClaimTest() override {
    form_.reset();
    DbfFile::setLockWait(2000);
  }
  void expectRefused() {
    EXPECT_EQ(form().SessionResult, 65535);
    const std::string text = "AMST0001\r\nError opening database:\r\n\r\n" + GetTblErrText(tableCode::inUse);
    EXPECT_THAT(heard(), ElementsAre("Database Error: " + text, "Error on Editor Form: " + text));
  }

  const std::string table = setPathName(getAntennasPath(), "AMST0001.DBF");
  GapPlatform machine;
  const platform::Substitute substitute{machine};
};

TEST_F(ClaimTest, AnEditorThatComesBehindTheLookAtTheTableHasIt) {
  frmHDAntEditor other;
  machine.inGap = [&] { other.InitForm("AMST0001.DBF", "Test Library", " ", 0, "Test Library", ""); };
  open();
  EXPECT_EQ(other.SessionResult, 0);
  expectRefused();
}

TEST_F(ClaimTest, AProgramThatDeniesWritingBehindTheLookAtTheTableIsTold) {
  for (const Sharing sharing : {Sharing::denyWrite, Sharing::exclusive}) {
    std::shared_ptr<DbfFile> other;
    machine.inGap = [&] { other = DbfFile::open(table, false, sharing); };
    open();
    ASSERT_NE(other, nullptr);
    expectRefused();
  }
}

TEST_F(ClaimTest, AnEditorThatIsRefusedLeavesNoMark) {
  std::shared_ptr<DbfFile> other;
  machine.inGap = [&] { other = DbfFile::open(table, false, Sharing::denyWrite); };
  open();
  expectRefused();
  other.reset();
  EXPECT_EQ(open().SessionResult, 0);
  EXPECT_EQ(EditingMark::unlessInUse(table), nullptr);
  EXPECT_THAT(heard(), IsEmpty());
}

}  // namespace
}  // namespace vantrelix::test

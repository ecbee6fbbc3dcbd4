#include <gtest/gtest.h>

#include "tables/DbfBytes.h"
#include "tables/MemoFile.h"

namespace vantrelix {
namespace {

using test::failureOf;

std::string dbase3Memo(const std::string& text) { return std::string("\x05\0\0\0", 4) + std::string(508, '\0') + text; }

std::string dbase4Memo(const std::string& entry) {
  std::string header(512, '\0');
  header[20] = 0;
  header[21] = 2;
  return header + entry;
}

std::string foxproMemo(int blockSize, const std::string& entry, std::size_t at) {
  std::string file(at, '\0');
  file[6] = static_cast<char>(blockSize >> 8);
  file[7] = static_cast<char>(blockSize & 255);
  return file + entry;
}

std::string foxproEntry(std::uint32_t length, const std::string& text) {
  std::string head("\0\0\0\1", 4);
  for (int shift = 24; shift >= 0; shift -= 8) head += static_cast<char>(length >> shift);
  return head + text;
}

class MemoFiles : public ::testing::Test {
 protected:
  std::string read(std::string_view bytes, MemoKind kind, std::uint32_t block) {
    return MemoFile(folder.write("M.FPT", bytes), kind).read(block);
  }
  int failureNumber(std::string_view bytes, MemoKind kind, std::uint32_t block) {
    return failureOf([&] { read(bytes, kind, block); }).number();
  }
  test::TempFolder folder;
};

TEST_F(MemoFiles, ADBase3TextEndsAtItsMark) {
  EXPECT_EQ(read(dbase3Memo("Line 1\r\nLine 2\x1A\x1Agarbage"), MemoKind::dbase3, 1), "Line 1\r\nLine 2");
}

TEST_F(MemoFiles, ADBase3TextCrossesBlocksAndMayLackItsMark) {
  const std::string text(2000, 'x');
  EXPECT_EQ(read(dbase3Memo(text + "\x1A"), MemoKind::dbase3, 1), text);
  EXPECT_EQ(read(dbase3Memo(text), MemoKind::dbase3, 1), text);
}

TEST_F(MemoFiles, ADBase4TextHasItsLength) {
  const std::string entry = std::string("\xFF\xFF\x08\0\x0D\0\0\0", 8) + "Hello rest";
  EXPECT_EQ(read(dbase4Memo(entry), MemoKind::dbase4, 1), "Hello");
}

TEST_F(MemoFiles, ADBase4BlockWithoutItsHeadIsReadAsDBase3) {
  EXPECT_EQ(read(dbase4Memo("plain text\x1A"), MemoKind::dbase4, 1), "plain text");
}

TEST_F(MemoFiles, AFoxProTextIsFoundByTheBlockSizeOfItsFile) {
  EXPECT_EQ(read(foxproMemo(64, foxproEntry(5, "HelloJUNK"), 512), MemoKind::foxpro, 8), "Hello");
  EXPECT_EQ(read(foxproMemo(1, foxproEntry(5, "Hello"), 700), MemoKind::foxpro, 700), "Hello");
}

TEST_F(MemoFiles, ABlockOutsideTheFileIsRefused) {
  EXPECT_EQ(failureNumber(dbase3Memo("x"), MemoKind::dbase3, 2), failure::damagedTable);
  EXPECT_EQ(failureNumber(foxproMemo(64, "", 512), MemoKind::foxpro, 4000000000U), failure::damagedTable);
  EXPECT_EQ(failureNumber(dbase3Memo("x"), MemoKind::dbase3, 0), failure::damagedTable);
}

TEST_F(MemoFiles, ALengthThatLeavesTheFileIsRefusedBeforeAnythingIsAllocated) {
  EXPECT_EQ(failureNumber(foxproMemo(64, foxproEntry(0xFFFFFFF0U, "Hi"), 512), MemoKind::foxpro, 8),
            failure::damagedTable);
  const std::string entry("\xFF\xFF\x08\0\xFF\xFF\xFF\x7F", 8);
  EXPECT_EQ(failureNumber(dbase4Memo(entry + "Hi"), MemoKind::dbase4, 1), failure::damagedTable);
  EXPECT_EQ(failureNumber(dbase4Memo(std::string("\xFF\xFF\x08\0\x03\0\0\0", 8)), MemoKind::dbase4, 1),
            failure::damagedTable);
  EXPECT_EQ(failureNumber(foxproMemo(64, "abc", 512), MemoKind::foxpro, 8), failure::damagedTable);
}

TEST_F(MemoFiles, AFileShorterThanItsHeaderIsRefused) {
  EXPECT_EQ(failureNumber("abc", MemoKind::foxpro, 1), failure::damagedTable);
  EXPECT_EQ(failureNumber("", MemoKind::dbase4, 1), failure::damagedTable);
}

TEST_F(MemoFiles, ANewOneHasBlocksOf64BytesAndTheFirstFreeBlockBehindItsHeader) {
  MemoFile::create(folder.file("NEW.FPT"));
  const std::string bytes = folder.read("NEW.FPT");
  EXPECT_EQ(bytes.size(), 512U);
  EXPECT_EQ(bytes.substr(0, 8), std::string("\0\0\0\x08\0\0\0\x40", 8));
  EXPECT_EQ(MemoFile(folder.file("NEW.FPT"), MemoKind::foxpro).blockSize(), 64U);
}

}  // namespace
}  // namespace vantrelix

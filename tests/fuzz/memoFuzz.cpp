// Any bytes as a memo file of each kind: every block of it is read or refused, alone and through the memo fields of a
// sound table beside it. The first byte of the input chooses the kind; the rest is the file.
#include <array>
#include <cstdlib>
#include <string_view>

#include "tableInput.h"
#include "tables/DbfFile.h"
#include "tables/MemoFile.h"

namespace {

using namespace vantrelix;

constexpr std::uint32_t kBlocks = 24;
constexpr std::size_t kLongestInput = 65536;

struct Kind {
  MemoKind kind;
  unsigned char version;
};
constexpr std::array<Kind, 4> kKinds{
    {{MemoKind::foxpro, 0xF5}, {MemoKind::foxpro, 0x30}, {MemoKind::dbase3, 0x83}, {MemoKind::dbase4, 0x8B}}};

std::string tenDigits(std::uint32_t block) {
  const std::string digits = std::to_string(block);
  return std::string(10 - digits.size(), ' ') + digits;
}

// A table of one memo field whose rows point to the first blocks, one after the other, and to one far out.
std::string tablePointingEverywhere(unsigned char version) {
  std::string header(32 + 32 + 1, '\0');
  header[0] = static_cast<char>(version);
  header[2] = 1;
  header[3] = 1;
  header[4] = static_cast<char>(kBlocks + 1);
  header[8] = static_cast<char>(header.size());
  header[10] = 11;
  header[32] = 'M';
  header[32 + 11] = 'M';
  header[32 + 16] = 10;
  header.back() = '\r';
  for (std::uint32_t block = 0; block < kBlocks; ++block) header += ' ' + tenDigits(block);
  return header + ' ' + tenDigits(4294967295U) + '\x1A';
}

void readBlocks(MemoKind kind, std::size_t size) {
  MemoFile memo("/m/T.FPT", kind);
  for (std::uint32_t block = 0; block <= kBlocks; ++block) {
    test::attempt([&] {
      if (memo.read(block).size() > size) std::abort();
    });
  }
}

void readFields() {
  const auto table = DbfFile::open(test::kTable, true);
  std::uint32_t rows = 0;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    static_cast<void>(table->value(record, 0));
    return ++rows > 0;
  });
  if (rows != kBlocks + 1) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > kLongestInput) return 0;
  const Kind& kind = kKinds[data[0] % kKinds.size()];
  const std::string memo(reinterpret_cast<const char*>(data) + 1, size - 1);
  test::memoryWith(tablePointingEverywhere(kind.version), memo);
  test::attempt([&] { readBlocks(kind.kind, memo.size()); });
  if (!test::attempt(readFields)) std::abort();
  return 0;
}

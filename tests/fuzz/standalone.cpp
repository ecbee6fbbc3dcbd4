// Runs a fuzz target without a coverage-guiding compiler: replays the corpus, then changes its files at random for some
// seconds. Usage: NAME_fuzz [--seconds N] [--seed N] CORPUSFOLDER...
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<std::uint8_t>;

void run(const Bytes& bytes) { LLVMFuzzerTestOneInput(bytes.data(), bytes.size()); }

std::vector<Bytes> corpusOf(const std::string& folder) {
  std::vector<Bytes> corpus;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream in(entry.path(), std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  return corpus;
}

class Mutator {
 public:
  explicit Mutator(std::uint64_t seed) : random_(seed) {}

  Bytes changed(const std::vector<Bytes>& corpus) {
    Bytes bytes = corpus[below(corpus.size())];
    for (std::size_t changes = 1 + below(8); changes > 0; --changes) change(bytes, corpus);
    return bytes;
  }

 private:
  std::size_t below(std::size_t bound) { return bound == 0 ? 0 : random_() % bound; }

  void change(Bytes& bytes, const std::vector<Bytes>& corpus) {
    static constexpr std::uint8_t kTelling[] = {0,    1,    0x0D, 0x1A, 0x1D, 0x1E, 0x20,
                                                0x27, 0x2A, 0x5B, 0x7F, 0x80, 0xFE, 0xFF};
    const std::size_t at = below(bytes.size() + 1);
    switch (below(6)) {
      case 0:
        if (at < bytes.size()) bytes[at] ^= static_cast<std::uint8_t>(1U << below(8));
        break;
      case 1:
        if (at < bytes.size()) bytes[at] = kTelling[below(std::size(kTelling))];
        break;
      case 2:
        bytes.resize(at);
        break;
      case 3:
        bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), static_cast<std::uint8_t>(below(256)));
        break;
      case 4:
        if (at < bytes.size()) bytes.erase(bytes.begin() + static_cast<std::ptrdiff_t>(at));
        break;
      default: {
        const Bytes& other = corpus[below(corpus.size())];
        const std::size_t from = below(other.size());
        const std::size_t length = below(std::min<std::size_t>(other.size() - from, 64) + 1);
        bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at), other.begin() + static_cast<std::ptrdiff_t>(from),
                     other.begin() + static_cast<std::ptrdiff_t>(from + length));
      }
    }
  }

  std::mt19937_64 random_;
};

}  // namespace

int main(int argc, char** argv) {
  double seconds = 4;
  std::uint64_t seed = std::random_device{}();
  std::vector<Bytes> corpus{Bytes{}};
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--seconds") == 0 && i + 1 < argc) {
      seconds = std::stod(argv[++i]);
    } else if (std::strcmp(argv[i], "--seed") == 0 && i + 1 < argc) {
      seed = std::stoull(argv[++i]);
    } else {
      for (Bytes& bytes : corpusOf(argv[i])) corpus.push_back(std::move(bytes));
    }
  }
  std::cout << std::filesystem::path(argv[0]).filename().string() << ": " << corpus.size() << " corpus inputs, seed "
            << seed << std::endl;
  for (const Bytes& bytes : corpus) run(bytes);

  Mutator mutator(seed);
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  std::size_t runs = 0;
  for (; std::chrono::steady_clock::now() < end; ++runs) {
    run(mutator.changed(corpus));
  }
  std::cout << "  " << runs << " changed inputs" << std::endl;
  return 0;
}

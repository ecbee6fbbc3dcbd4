// A table of any bytes, asked by any query and key: each kind of cursor, a plain walk over the rows, the rows of a key
// and the query that they stand for give the same. So they do of a file at rest, a second time, and behind writes, as
// of one of which nothing can be known.
//
// The input: the query up to the first line feed, the key up to the next, the table. The last two bytes tell how many
// before them are the memo file, lowest byte first.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "longTable.h"
#include "queryAnswers.h"
#include "tables/TextRuns.h"

namespace {

using namespace vantrelix;
using test::Answers;

constexpr std::size_t kLongestText = 1024;
constexpr std::size_t kLongestTable = 6144;
// Records, and bytes of the texts for each of them; more takes too long.
constexpr std::size_t kMostRecords = 256;
constexpr std::size_t kMostWork = std::size_t{1} << 16;

struct Input {
  std::string sql;
  std::string key;
  std::string table;
  std::string memo;
};

std::optional<Input> inputOf(std::string_view bytes) {
  Input input;
  for (std::string* line : {&input.sql, &input.key}) {
    const std::size_t end = bytes.find('\n');
    if (end == std::string_view::npos || end > kLongestText) return std::nullopt;
    *line = bytes.substr(0, end);
    bytes.remove_prefix(end + 1);
  }
  if (bytes.size() > kLongestTable) return std::nullopt;
  input.table = bytes;
  input.memo = test::cutMemo(input.table);
  return input;
}

void requireSameAnswers(const char* when, const Answers& ones, const Answers& others) {
  test::requireSame(when, std::to_string(ones.size()), std::to_string(others.size()));
  for (std::size_t i = 0; i < ones.size(); ++i) {
    test::requireSame(when, ones[i].first, others[i].first);
    test::requireSame(ones[i].first + " " + when, ones[i].second, others[i].second);
  }
}

// The double nearest to a field's digits, or null; nothing at the ends of the doubles, where ways to read them differ.
std::optional<Value> nearestNumber(std::string bytes) {
  const auto isPadding = [](char c) { return c == ' ' || c == '\0' || c == '\t'; };
  const auto cutEnd = [&] {
    while (!bytes.empty() && isPadding(bytes.back())) bytes.pop_back();
  };
  cutEnd();
  while (!bytes.empty() && isPadding(bytes.front())) bytes.erase(0, 1);
  while (bytes.size() > 1 && bytes.back() == '.' && isPadding(bytes[bytes.size() - 2])) {
    bytes.pop_back();
    cutEnd();
  }
  const bool hasDigit = bytes.substr(0, bytes.find_first_of("eE")).find_first_of("0123456789") != std::string::npos;
  if (!hasDigit || bytes.find_first_not_of("0123456789+-.eE") != std::string::npos) return Value();
  char* end = nullptr;
  const double number = std::strtod(bytes.c_str(), &end);
  if (end != bytes.c_str() + bytes.size()) return Value();
  const bool atTheEnd =
      std::abs(number) > std::numeric_limits<double>::max() ||
      (std::abs(number) < std::numeric_limits<double>::min() && bytes.find_first_of("eE") != std::string::npos);
  if (atTheEnd) return std::nullopt;
  return Value(number == 0 ? 0.0 : number);
}

// Number fields give the nearest double to their digits.
void checkNumbers() {
  const auto table = DbfFile::open(test::kTable, true);
  std::size_t rows = 0;
  table->scan([&](std::uint32_t, const unsigned char* record) {
    for (std::size_t i = 0; i < std::min(table->fields().size(), test::kMostColumns); ++i) {
      const DbfField& field = table->fields()[i];
      if ((field.type != 'N' && field.type != 'F') || field.nullBit >= 0) continue;
      const std::string bytes(record + field.offset, record + field.offset + field.width);
      const std::optional<Value> wanted = nearestNumber(bytes);
      if (wanted) test::requireSame("'" + bytes + "'", test::shown(table->value(record, i)), test::shown(*wanted));
    }
    return ++rows < test::kMostRows;
  });
}

// So few that what takes long may be done with them.
bool isOneOfMany(const Input& input) {
  constexpr std::size_t many = 256;
  return std::hash<std::string>()(input.table + input.key) % many == 0;
}

// Another table of as many rows was asked by key at the path before this one came to stand there.
void askFormerTable(const Input& input) {
  test::attempt([&] {
    const auto table = DbfFile::open(test::kTable, true);
    if (table->fields().empty()) return;
    const DbfField& first = table->fields().front();
    DbfFile::create(test::kTable, {{first.name, 'C', first.width, 0}});
    const auto former = DbfFile::open(test::kTable);
    for (std::uint32_t row = 0; row < table->recordCount(); ++row) former->append(former->blankRecord().data());
    test::memory().rest();
    const DatabasePtr database = DBEngine::OpenDatabase("/m");
    for (int i = 0; i < 2; ++i) KeyedRows(*database, {"T", first.name, input.key, ""});
  });
}

// The text is executed. The key comes into the texts of a row more and of the first one, and the second one goes. All
// as far as the table takes that.
void write(const std::string& sql, const std::string& key) {
  const DatabasePtr database = DBEngine::OpenDatabase("/m");
  test::attempt([&] { database->Execute(sql); });
  test::attempt([&] {
    const RecordsetPtr cursor = database->OpenRecordset("SELECT * FROM [T]");
    const auto put = [&] {
      for (std::size_t i = 0; i < std::min(cursor->fieldCount(), test::kMostColumns); ++i) {
        if (!test::attempt([&] { cursor->Fields(i).put(cursor->Fields(i).cut(key)); }))
          test::attempt([&] { cursor->Fields(i).put(static_cast<double>(key.size()) / 4); });
      }
      cursor->Update();
    };
    test::attempt([&] {
      cursor->AddNew();
      put();
    });
    test::attempt([&] {
      cursor->MoveFirst();
      cursor->Edit();
      put();
    });
    test::attempt([&] {
      cursor->setAbsolutePosition(1);
      cursor->Delete();
    });
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::optional<Input> input = inputOf({reinterpret_cast<const char*>(data), size});
  if (!input) return 0;
  setSmallestRemembered(0);
  const auto lay = [&]() -> test::MemoryPlatform& { return test::memoryWith(input->table, input->memo); };
  lay();
  std::size_t rows = 0;
  test::attempt([&] { rows = DbfFile::open(test::kTable, true)->recordCount(); });
  if (rows > kMostRecords || rows * (input->sql.size() + input->key.size()) > kMostWork) return 0;

  const auto answers = [&](bool plainly) { return test::Questions(input->sql, input->key, plainly).ask(); };
  test::attempt(checkNumbers);
  const Answers plain = answers(true);
  askFormerTable(*input);
  lay().rest();
  requireSameAnswers("at rest", plain, answers(false));
  requireSameAnswers("remembered", plain, answers(false));
  write(input->sql, input->key);
  const Answers written = answers(false);
  test::memory().rest();
  requireSameAnswers("behind writes", answers(true), written);
  if (isOneOfMany(*input)) test::requireSameOfLong(input->key);
  return 0;
}

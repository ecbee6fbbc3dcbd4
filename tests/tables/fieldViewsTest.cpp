// Texts and numbers of fields without a value being made.
#include <cmath>
#include <gtest/gtest.h>

#include "tables/Database.h"
#include "tables/DbfBytes.h"

namespace vantrelix {
namespace {

using test::RawTable;

constexpr RecordsetType kTypes[] = {RecordsetType::snapshot, RecordsetType::dynaset, RecordsetType::table};

// What the field shows as text and what its value says: they must be the same.
std::string shown(const Field& field) {
  const std::optional<std::string_view> text = field.text();
  const Value value = field.value();
  if (text.has_value() == value.isNull()) return "text and value differ on null";
  if (!text) return "null";
  return *text == value.text() ? std::string(*text) : "text and value differ";
}

class FieldViews : public ::testing::Test {
 protected:
  RecordsetPtr open(const RawTable& table, RecordsetType type = RecordsetType::snapshot,
                    const std::string& sql = "Select * from T") {
    folder.write("T.DBF", table.bytes());
    return DBEngine::OpenDatabase(folder.path())->OpenRecordset(type == RecordsetType::table ? "T" : sql, type);
  }
  // The one field of a table of one row.
  std::string textOf(const std::string& bytes, int mark = 0x03, RecordsetType type = RecordsetType::snapshot) {
    const RawTable table{
        .fields = {{"T", 'C', static_cast<int>(bytes.size())}}, .rows = " " + bytes, .count = 1, .mark = mark};
    return shown(open(table, type)->Fields("T"));
  }
  test::TempFolder folder;
};

TEST_F(FieldViews, AreTheTextsOfTheValues) {
  const std::string nul(1, '\0');
  for (const RecordsetType type : kTypes) {
    const auto text = [&](const std::string& bytes) { return textOf(bytes, 0x03, type); };
    EXPECT_EQ(text("Dipole"), "Dipole");
    EXPECT_EQ(text("Dipole   "), "Dipole   ");
    EXPECT_EQ(text("  Dipole, vertical    "), "  Dipole, vertical    ");
    EXPECT_EQ(text("        "), "null");
    EXPECT_EQ(text("       x"), "       x");
    EXPECT_EQ(text(" "), "null");
    EXPECT_EQ(text("Yagi" + nul + "rubbish of another program"), "Yagi");
    EXPECT_EQ(text("Yagi" + std::string(20, '\0')), "Yagi");
    EXPECT_EQ(text(nul + "rubbish"), "null");
    EXPECT_EQ(text("    " + nul + "rubbish"), "null");
    EXPECT_EQ(text("12345678" + nul), "12345678");
    EXPECT_EQ(text("K\xFChler"), "K\xC3\xBChler");
    EXPECT_EQ(text("12345678\xFC"), "12345678\xC3\xBC");
    EXPECT_EQ(text("Yagi" + nul + "\xFC"), "Yagi");
    EXPECT_EQ(text("\x7F\x01"), "\x7F\x01");
  }
}

TEST_F(FieldViews, AreDecodedByTheCodePageOfTheTable) {
  EXPECT_EQ(textOf("\x82t\x82", 0x01), "\xC3\xA9t\xC3\xA9");  // 437
  EXPECT_EQ(textOf("\x82t\x82", 0x26), "\xD0\x92t\xD0\x92");  // 866
  EXPECT_EQ(textOf("\x82t\x82", 0x02), "\xC3\xA9t\xC3\xA9");  // 850
  EXPECT_EQ(textOf("\xC0t", 0xC9), "\xD0\x90t");              // 1251
  EXPECT_EQ(textOf("plain [\\]^ ~", 0x26), "plain [\\]^ ~");
}

// At each byte of fields of many widths, so that none is passed over.
TEST_F(FieldViews, SeeACharacterBeyondAsciiAndANulWhereverTheyStand) {
  for (int width = 1; width < 26; ++width) {
    RawTable table{.fields = {{"T", 'C', width}}, .count = 2 * width};
    for (const char other : {'\xE4', '\0'}) {
      for (std::size_t place = 0; place < static_cast<std::size_t>(width); ++place) {
        std::string bytes(static_cast<std::size_t>(width), 'a');
        bytes[place] = other;
        table.rows += " " + bytes;
      }
    }
    const RecordsetPtr rows = open(table);
    const Field field = rows->Fields("T");
    for (int place = 0; place < width; ++place, rows->MoveNext()) {
      const std::string behind(static_cast<std::size_t>(width - place - 1), 'a');
      ASSERT_EQ(shown(field), std::string(static_cast<std::size_t>(place), 'a') + "\xC3\xA4" + behind);
    }
    for (int place = 0; place < width; ++place, rows->MoveNext()) {
      ASSERT_EQ(shown(field), place == 0 ? "null" : std::string(static_cast<std::size_t>(place), 'a'));
    }
    ASSERT_TRUE(rows->Eof());
  }
}

TEST_F(FieldViews, AreTheNumbersOfTheValues) {
  const std::string rows =
      "  12.5"
      "******"
      "      "
      " -0.50"
      "0   . "
      "1e3   " +
      std::string("7\0\0\0\0\0", 6) + "12,50 ";
  RawTable table{.fields = {{"N", 'N', 6, 2}}, .count = 8};
  for (std::size_t at = 0; at < rows.size(); at += 6) table.rows += " " + rows.substr(at, 6);
  for (const RecordsetType type : kTypes) {
    const RecordsetPtr cursor = open(table, type);
    const Field field = cursor->Fields("N");
    std::vector<std::optional<double>> numbers;
    for (; !cursor->Eof(); cursor->MoveNext()) {
      numbers.push_back(field.number());
      EXPECT_EQ(field.value(), field.number() ? Value(*field.number()) : Value());
    }
    const std::optional<double> none;
    EXPECT_EQ(numbers, (std::vector<std::optional<double>>{12.5, none, none, -0.5, 0.0, 1000.0, 7.0, none}));
  }
}

TEST_F(FieldViews, HeedNullFlagsAndLengths) {
  RawTable table;
  table.version = 0x30;
  table.terminator = "\r" + std::string(263, '\0');
  table.fields = {{"C", 'C', 3, 0, 2}, {"V", 'V', 6, 0, 0}, {"N", 'N', 8, 1, 2}, {"_NullFlags", '0', 1, 0, 5}};
  // Bits in field order: C null, V length, N null.
  table.rows = std::string(" a  abc  \x03     1.5\x02", 19) + std::string("    abcdef     2.5\x00", 19) +
               std::string(" b  abcdef     3.5\x05", 19);
  table.count = 3;
  for (const RecordsetType type : kTypes) {
    const RecordsetPtr rows = open(table, type);
    std::string seen;
    for (; !rows->Eof(); rows->MoveNext()) {
      const std::optional<double> number = rows->Fields("N").number();
      seen += shown(rows->Fields("C")) + "|" + shown(rows->Fields("V")) + "|" +
              (number ? std::to_string(std::lround(*number * 10)) : "null") + ";";
    }
    EXPECT_EQ(seen, "a  |abc|15;   |abcdef|25;null|abcdef|null;");
  }
}

TEST_F(FieldViews, OfMemosAndDecodedTextsStayBesideOneAnother) {
  std::string memo(512, '\0');
  memo[0] = 3;
  std::string first = "The first note, longer than a short string\x1A", second = "The second note, as long as that\x1A";
  first.resize(512, '\0');
  folder.write("T.DBT", memo + first + second);
  RawTable table;
  table.version = 0x83;
  table.fields = {{"A", 'M', 10, 0}, {"B", 'M', 10, 0}, {"C", 'C', 30, 0}, {"D", 'C', 30, 0}};
  table.rows = "          1         2K\xFChler und S\xF6hne, die AntennenPlain text of thirty letters  ";
  table.rows += "          2          K\xFChler und S\xF6hne, die AntennenPlain text of thirty letters  ";
  table.count = 2;
  for (const RecordsetType type : kTypes) {
    const RecordsetPtr rows = open(table, type);
    ASSERT_EQ(rows->rowCount(), 2);
    const std::string_view a = *rows->Fields("A").text(), b = *rows->Fields("B").text(), c = *rows->Fields("C").text(),
                           d = *rows->Fields("D").text();
    EXPECT_EQ(rows->Fields("A").value(), Value("The first note, longer than a short string"));
    EXPECT_EQ(a, "The first note, longer than a short string");
    EXPECT_EQ(b, "The second note, as long as that");
    EXPECT_EQ(c, "K\xC3\xBChler und S\xC3\xB6hne, die Antennen");
    EXPECT_EQ(d, "Plain text of thirty letters  ");
    rows->MoveNext();
    EXPECT_EQ(rows->Fields("A").text(), "The second note, as long as that");
    EXPECT_EQ(rows->Fields("B").text(), std::nullopt);
  }
}

}  // namespace
}  // namespace vantrelix

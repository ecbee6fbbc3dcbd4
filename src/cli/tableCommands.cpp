#include <CLI/CLI.hpp>
#include <set>

#include "cli/TextTable.h"
#include "cli/commandLine.h"
#include "foundation/dateTime.h"
#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "tables/structure.h"
#include "tables/tableRecovery.h"

namespace vantrelix::cli {

namespace {

std::string twoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

std::string isoDate(const DateTime& date) {
  std::string day = formatDate(date, "YYYY-MM-DD");
  if (date.hour == 0 && date.minute == 0 && date.second == 0) return day;
  return day + "T" + twoDigits(date.hour) + ":" + twoDigits(date.minute) + ":" + twoDigits(date.second);
}

Json jsonOf(const Value& value) {
  if (value.isNull()) return nullptr;
  if (value.isNumber()) return value.number();
  if (value.isBoolean()) return value.boolean();
  if (value.isDate()) return isoDate(value.date());
  return trimRight(value.text());
}

std::string textOf(const Value& value) {
  if (value.isNull()) return "";
  if (value.isDate()) return isoDate(value.date());
  return trimRight(value.asText());
}

TextTable::Align alignOf(FieldType type) {
  const bool number = type >= FieldType::byte && type <= FieldType::doubleNumber;
  return number ? TextTable::Align::right : TextTable::Align::left;
}

std::string versionText(int version) {
  constexpr const char* digits = "0123456789ABCDEF";
  return {'0', 'x', digits[(version >> 4) & 15], digits[version & 15]};
}

std::vector<std::size_t> shownFields(const DbfFile& table) {
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < table.fields().size(); ++i) {
    if (!table.fields()[i].system) shown.push_back(i);
  }
  return shown;
}

// The names of the fields as keys of an object, which has each but once: a name that comes again gets a number.
std::vector<std::string> keysOf(const DbfFile& table, const std::vector<std::size_t>& shown) {
  std::set<std::string> taken;
  for (const std::size_t i : shown) taken.insert(table.fields()[i].name);
  std::set<std::string> given;
  std::vector<std::string> keys;
  for (const std::size_t i : shown) {
    const std::string& name = table.fields()[i].name;
    std::string key = name;
    if (!given.insert(name).second) {
      for (int number = 2; !taken.insert(key).second; ++number) key = name + "_" + std::to_string(number);
    }
    keys.push_back(std::move(key));
  }
  return keys;
}

Json fieldsJson(const DbfFile& table) {
  const std::vector<std::size_t> shown = shownFields(table);
  const std::vector<std::string> keys = keysOf(table, shown);
  Json fields = Json::array();
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const DbfField& field = table.fields()[shown[i]];
    fields.push_back({{"name", field.name},
                      {"type", std::string(1, field.type)},
                      {"width", field.width},
                      {"decimals", field.decimals}});
    if (keys[i] != field.name) fields.back()["key"] = keys[i];
  }
  return fields;
}

// Rows as JSON objects and as lines of text, and the number of deleted rows.
struct Rows {
  Json json = Json::array();
  TextTable text;
  long deleted = 0;
};

Rows readRows(DbfFile& table) {
  const std::vector<std::size_t> shown = shownFields(table);
  std::vector<TextTable::Column> columns;
  columns.reserve(shown.size());
  for (const std::size_t i : shown)
    columns.push_back({table.fields()[i].name, alignOf(fieldTypeOf(table.fields()[i]))});
  const std::vector<std::string> keys = keysOf(table, shown);
  Rows rows{Json::array(), TextTable(columns), 0};
  table.scan([&](std::uint32_t, const unsigned char* record) {
    if (record[0] == '*') {
      ++rows.deleted;
      return true;
    }
    Json row = Json::object();
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      const Value value = table.value(record, shown[i]);
      row[keys[i]] = jsonOf(value);
      cells.push_back(textOf(value));
    }
    rows.json.push_back(std::move(row));
    rows.text.add(std::move(cells));
    return true;
  });
  return rows;
}

void dump(Session& session, const std::string& file) {
  const auto table = DbfFile::open(pathFromCommandLine(file), true);
  Rows rows = readRows(*table);
  const std::size_t live = rows.json.size();
  session.document = {{"version", versionText(table->version())},
                      {"fields", fieldsJson(*table)},
                      {"rows", std::move(rows.json)},
                      {"deleted", rows.deleted}};
  for (const std::size_t i : shownFields(*table)) {
    const DbfField& field = table->fields()[i];
    session.text << field.name << ' ' << field.type << ' ' << field.width << '.' << field.decimals << '\n';
  }
  session.text << '\n';
  rows.text.write(session.text);
  session.text << '\n'
               << live << (live == 1 ? " row, " : " rows, ") << rows.deleted << " deleted, version "
               << versionText(table->version()) << '\n';
}

void query(Session& session, const std::string& folder, const std::string& sql) {
  const DatabasePtr database = DBEngine::OpenDatabase(pathFromCommandLine(folder), false, true);
  const RecordsetPtr cursor = database->OpenRecordset(sql, RecordsetType::snapshot);
  Json fields = Json::array();
  std::vector<TextTable::Column> columns;
  for (std::size_t i = 0; i < cursor->fieldCount(); ++i) {
    fields.push_back(cursor->Fields(i).Name());
    columns.push_back({cursor->Fields(i).Name(), alignOf(cursor->Fields(i).Type())});
  }
  Json rows = Json::array();
  TextTable table(columns);
  for (; !cursor->Eof(); cursor->MoveNext()) {
    Json row = Json::array();
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < cursor->fieldCount(); ++i) {
      const Value value = cursor->Fields(i).value();
      row.push_back(jsonOf(value));
      cells.push_back(textOf(value));
    }
    rows.push_back(std::move(row));
    table.add(std::move(cells));
  }
  session.document = {{"fields", fields}, {"rows", rows}};
  table.write(session.text);
}

enum class Mending { create, repair };

// Makes or mends a table by the dictionary, and tells the code.
void mend(Session& session, const std::string& file, const std::string& type, Mending mending) {
  session.needSuite();
  const std::string path = pathFromCommandLine(file);
  const FieldList fields = FieldsFromDataSum(type);
  if (fields.empty()) throw Refused("The dictionary has no usable rows for the table type \"" + type + "\".");
  const bool create = mending == Mending::create;
  const int code = RSTblValidRS(fields, path, !create, create, type);
  session.document = {{"file", displayPath(path)}, {"code", code}};
  session.text << displayPath(path) << '\n';
  if (code != tableCode::fine) session.fail(displayPath(path) + ": " + GetTblErrText(code));
}

Json jsonOf(const TableFault& fault) {
  Json json = {{"kind", faultName(fault.kind)}, {"record", nullptr}, {"field", nullptr}, {"offset", nullptr}};
  if (fault.record) json["record"] = std::uint64_t{*fault.record} + 1;
  if (!fault.field.empty()) json["field"] = fault.field;
  if (fault.offset) json["offset"] = *fault.offset;
  json["text"] = fault.text;
  return json;
}

Json faultsJson(const FaultList& faults) {
  Json list = Json::array();
  for (const TableFault& fault : faults.kept()) list.push_back(jsonOf(fault));
  return list;
}

Json totalsJson(const FaultList& faults) {
  Json totals = Json::object();
  for (const auto& [kind, count] : faults.totals()) totals[faultName(kind)] = count;
  return totals;
}

std::uint64_t countOf(const FaultList& faults) {
  std::uint64_t sum = 0;
  for (const auto& [kind, count] : faults.totals()) sum += count;
  return sum;
}

// The faults in the order in which they were found; what is not shown of a kind is counted at the end.
void writeFaults(Session& session, const FaultList& faults) {
  for (const TableFault& fault : faults.kept()) session.text << fault.text << '\n';
  for (const auto& [kind, count] : faults.totals()) {
    if (count > FaultList::kKeptOfEach)
      session.text << "... and " << count - FaultList::kKeptOfEach << " more of the kind " << faultName(kind) << '\n';
  }
}

CheckProgress rowsShown(Session& session, const std::string& doing) {
  return [&session, doing](std::uint64_t done, std::uint64_t all) {
    session.progress(doing + " row " + std::to_string(done) + " of " + std::to_string(all));
  };
}

void check(Session& session, const std::string& file) {
  const std::string path = pathFromCommandLine(file);
  const TableCheck result = checkTable(path, rowsShown(session, "Checking"));
  session.document = {
      {"file", displayPath(path)}, {"version", versionText(result.version)}, {"rows", result.rows},
      {"deleted", result.deleted}, {"faults", faultsJson(result.faults)},    {"totals", totalsJson(result.faults)}};
  writeFaults(session, result.faults);
  session.text << displayPath(path) << ": " << counted(result.rows, "row") << ", " << result.deleted
               << " deleted, version " << versionText(result.version) << ", "
               << counted(countOf(result.faults), "fault") << '\n';
  if (!result.faults.empty())
    session.fail(displayPath(path) + " has " + counted(countOf(result.faults), "fault") + ".");
}

void recover(Session& session, const std::string& file, const std::string& newFile) {
  const std::string path = pathFromCommandLine(file);
  const std::string newPath = pathFromCommandLine(newFile);
  const TableRecovery result = recoverTable(path, newPath, rowsShown(session, "Recovering"));
  session.document = {
      {"file", displayPath(path)},    {"new", displayPath(newPath)},         {"rows", result.rows},
      {"deleted", result.deleted},    {"behind_count", result.behindCount},  {"repaired_values", result.repairedValues},
      {"lost_rows", result.lostRows}, {"faults", faultsJson(result.faults)}, {"totals", totalsJson(result.faults)}};
  writeFaults(session, result.faults);
  session.text << displayPath(newPath) << ": " << counted(result.rows, "row") << " and " << result.deleted
               << " deleted, " << result.behindCount << " of them from behind the count; "
               << counted(result.repairedValues, "value") << " mended, " << counted(result.lostRows, "row")
               << " lost\n";
}

struct TableArguments {
  std::string first, second;
};

using TableJob = std::function<void(Session&, const TableArguments&)>;

void addTableCommand(CLI::App& parent, const std::string& name, const std::string& help, const std::string& example,
                     const std::vector<std::string>& names, Session& session, const TableJob& job) {
  CLI::App* command = parent.add_subcommand(name, help);
  command->footer("Example: " + example);
  const auto arguments = std::make_shared<TableArguments>();
  command->add_option(names[0], arguments->first)->required();
  if (names.size() > 1) command->add_option(names[1], arguments->second)->required();
  command->callback(
      [&session, arguments, job] { session.job = [&session, arguments, job] { job(session, *arguments); }; });
}

}  // namespace

void addTableCommands(CLI::App& app, Session& session) {
  CLI::App* table = app.add_subcommand("table", "Look into, make and mend dBase tables");
  addTableCommand(*table, "dump", "Show a table's fields and live rows", "vantrelix table dump AMSX0001.DBF", {"FILE"},
                  session, [](Session& s, const TableArguments& a) { dump(s, a.first); });
  addTableCommand(*table, "query", "Run a query over a folder of tables",
                  "vantrelix table query ANTENNAS \"Select * from [AMSX0001] Order by [ANTENNA]\"", {"FOLDER", "SQL"},
                  session, [](Session& s, const TableArguments& a) { query(s, a.first, a.second); });
  addTableCommand(*table, "create", "Make a table by the dictionary", "vantrelix table create AMSX0002.DBF AMSPDBASE",
                  {"FILE", "TYPE"}, session,
                  [](Session& s, const TableArguments& a) { mend(s, a.first, a.second, Mending::create); });
  addTableCommand(*table, "repair", "Add the fields that a table lacks, keeping the old file under a dated name",
                  "vantrelix table repair AMSX0002.DBF AMSPDBASE", {"FILE", "TYPE"}, session,
                  [](Session& s, const TableArguments& a) { mend(s, a.first, a.second, Mending::repair); });
  addTableCommand(
      *table, "check",
      "Name every fault of a table, of its memo file and of the values in them; status 1 where there is one",
      "vantrelix table check AMSX0001.DBF", {"FILE"}, session,
      [](Session& s, const TableArguments& a) { check(s, a.first); });
  addTableCommand(*table, "recover",
                  "Save what can be read of a damaged table, its memos and the rows behind its count in a new table",
                  "vantrelix table recover AMSX0001.DBF SAVED.DBF", {"FILE", "NEW"}, session,
                  [](Session& s, const TableArguments& a) { recover(s, a.first, a.second); });
}

}  // namespace vantrelix::cli

#include "lines/addLines.h"

#include <unordered_set>

#include "foundation/extract.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "lines/lineLibrary.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {

namespace {

// A hertz, and the eighth decimal, which keeps a figure of four decimals per 100 m as it is.
const std::vector<DbfNewField>& masterFields() {
  static const std::vector<DbfNewField> fields{{"LTYPE_ID", 'C', 10, 0}, {"LN_TYPE", 'C', 75, 0}};
  return fields;
}

const std::vector<DbfNewField>& pointFields() {
  static const std::vector<DbfNewField> fields{{"LTYPE_ID", 'C', 10, 0}, {"FREQ", 'N', 14, 6}, {"ATTEN", 'N', 14, 8}};
  return fields;
}

std::string quoted(const std::string& text) { return "\"" + text + "\""; }

// Records of one table, made ready before anything is written.
struct Records {
  std::vector<unsigned char> bytes;
  std::uint32_t count = 0;

  void add(const std::vector<unsigned char>& record) {
    bytes.insert(bytes.end(), record.begin(), record.end());
    ++count;
  }
};

class LineWriter {
 public:
  LineWriter(std::shared_ptr<DbfFile> master, std::shared_ptr<DbfFile> points, std::vector<LineFault>& faults)
      : master_(std::move(master)), points_(std::move(points)), faults_(faults) {}

  // Fills the records; nothing is written.
  void prepare(const std::vector<LineType>& lines) {
    const auto known = idsOf(*master_);
    const auto withPoints = idsOf(*points_);
    for (const LineType& line : lines) {
      const std::string key = upperCase(line.id);
      if (known.contains(key)) {
        fault(line.row, "the library has a line " + quoted(line.id) + " already");
      } else if (withPoints.contains(key)) {
        fault(line.row, "the library has points of a line " + quoted(line.id) + " already, without the line itself");
      }
      prepareLine(line);
    }
  }

  // The points first: until the line itself is there nobody looks for them.
  void write() {
    const std::uint32_t first =
        pointRecords_.count > 0 ? points_->append(pointRecords_.bytes.data(), pointRecords_.count) : 0;
    try {
      if (masterRecords_.count > 0) master_->append(masterRecords_.bytes.data(), masterRecords_.count);
    } catch (...) {
      for (std::uint32_t i = 0; i < pointRecords_.count; ++i) points_->markDeleted(first + i);
      throw;
    }
  }

  AddedLines added() const { return {masterRecords_.count, pointRecords_.count}; }

 private:
  void fault(int row, const std::string& text) { faults_.push_back({row, text}); }

  static std::unordered_set<std::string> idsOf(DbfFile& table) {
    std::unordered_set<std::string> ids;
    const std::size_t id = lineField(table, kLineIdField);
    table.scan([&](std::uint32_t, const unsigned char* record) {
      if (record[0] == '*') return true;
      const Value value = table.value(record, id);
      if (!value.isNull()) ids.insert(upperCase(trimRight(value.asText())));
      return true;
    });
    return ids;
  }

  void prepareLine(const LineType& line) {
    std::vector<unsigned char> record = master_->blankRecord();
    putText(*master_, record, kLineIdField, line.id, line.row);
    putText(*master_, record, kLineDescriptionField, line.description, line.row);
    masterRecords_.add(record);
    double before = 0;
    for (const LinePoint& point : line.points) {
      record = points_->blankRecord();
      putText(*points_, record, kLineIdField, line.id, line.row);
      putNumber(record, kLineAttenField, point.atten, 0, point.row);
      before = putNumber(record, kLineFreqField, point.freq, before, point.row);
      pointRecords_.add(record);
    }
  }

  void putText(DbfFile& table, std::vector<unsigned char>& record, const char* name, const std::string& text, int row) {
    const std::size_t field = lineField(table, name);
    if (table.cut(text, field) != text) {
      return fault(row, quoted(text) + " is longer than the field " + name + " of the library");
    }
    table.put(record.data(), field, text);
    const Value kept = table.value(record.data(), field);
    const std::string keptText = kept.isNull() ? std::string() : trimRight(kept.asText());
    if (keptText != text) fault(row, quoted(text) + " holds characters that the library cannot");
  }

  // Gives the number as the table keeps it.
  double putNumber(std::vector<unsigned char>& record, const char* name, double number, double above, int row) {
    const std::size_t field = lineField(*points_, name);
    try {
      points_->put(record.data(), field, number);
    } catch (const RunTimeFailure& failure) {
      if (failure.number() != failure::fieldTooSmall) throw;
      fault(row, generalText(number) + " is too large for the field " + name + " of the library");
      return number;
    }
    const double kept = points_->value(record.data(), field).asNumber();
    if (kept > above) return kept;
    fault(row, generalText(number) + " becomes " + generalText(kept) + " in the field " + name + " of the library");
    return number;
  }

  std::shared_ptr<DbfFile> master_;
  std::shared_ptr<DbfFile> points_;
  std::vector<LineFault>& faults_;
  Records masterRecords_;
  Records pointRecords_;
};

bool fileIsThere(const std::string& path) { return platform::current().fileExists(path); }

void removeQuietly(const std::string& path) {
  try {
    if (fileIsThere(path)) platform::current().remove(path);
  } catch (const RunTimeFailure&) {
    // The failure that made it superfluous is the one to tell of.
  }
}

// Files of ours under names that no list of libraries shows, gone at the end unless they have got their own.
class NewLibrary {
 public:
  explicit NewLibrary(const LineTables& tables)
      : tables_(tables), ending_("." + std::to_string(platform::current().processId()) + ".NEW") {}
  ~NewLibrary() {
    removeQuietly(masterMade());
    removeQuietly(pointsMade());
  }
  NewLibrary(const NewLibrary&) = delete;
  NewLibrary& operator=(const NewLibrary&) = delete;

  std::string masterMade() const { return setPathName(tables_.folder, tables_.master + ending_); }
  std::string pointsMade() const { return setPathName(tables_.folder, tables_.points + ending_); }

  void create() const {
    DbfFile::create(masterMade(), masterFields());
    DbfFile::create(pointsMade(), pointFields());
  }

  // The master last: it is what makes a library of the two.
  void settle() const {
    platform::Platform& system = platform::current();
    for (const std::string& path : {masterMade(), pointsMade()}) {
      system.open(path, platform::OpenMode::readWrite)->sync();
    }
    system.renameNew(pointsMade(), tables_.pointsPath());
    try {
      system.renameNew(masterMade(), tables_.masterPath());
    } catch (...) {
      removeQuietly(tables_.pointsPath());
      throw;
    }
    system.syncFolder(tables_.folder);
  }

 private:
  LineTables tables_;
  std::string ending_;
};

AddedLines writeLines(const std::string& master, const std::string& points, const std::vector<LineType>& lines,
                      std::vector<LineFault>& faults) {
  LineWriter writer(DbfFile::open(master), DbfFile::open(points), faults);
  writer.prepare(lines);
  if (!faults.empty()) return {};
  writer.write();
  return writer.added();
}

AddedLines makeLibrary(const LineTables& tables, const std::vector<LineType>& lines, std::vector<LineFault>& faults) {
  const NewLibrary library(tables);
  library.create();
  const AddedLines added = writeLines(library.masterMade(), library.pointsMade(), lines, faults);
  if (faults.empty()) library.settle();
  return added;
}

}  // namespace

AddedLines addLines(const std::string& folder, const std::string& LineFile, const std::vector<LineType>& lines,
                    std::vector<LineFault>& faults) {
  const LineTables tables = lineTables(folder, LineFile);
  if (!isLineLibraryName(tables.master)) {
    throw RunTimeFailure(failure::internalError,
                         "A line library is named LMS and five more characters, as in "
                         "LMSX0001, and not \"" +
                             tables.master + "\"");
  }
  const bool hasMaster = fileIsThere(tables.masterPath());
  const bool hasPoints = fileIsThere(tables.pointsPath());
  if (hasMaster != hasPoints) {
    throw RunTimeFailure(
        failure::fileNotFound,
        "The line library is not whole: " + displayPath(hasMaster ? tables.pointsPath() : tables.masterPath()) +
            " is missing beside " + displayPath(hasMaster ? tables.masterPath() : tables.pointsPath()) +
            ". Bring it back or move the other away.");
  }
  if (!hasMaster) return makeLibrary(tables, lines, faults);
  return writeLines(tables.masterPath(), tables.pointsPath(), lines, faults);
}

}  // namespace vantrelix

// SQLite in its forms: prepared statements, one transaction a job, handle kept open.
//
// Write-ahead log and no waiting for the disk: what is confirmed outlives the program, as it does in this project's
// tables, not a loss of power. The durable form waits for the disk at each transaction.
#include <cmath>
#include <sqlite3.h>

#include "Contender.h"
#include "benchSupport.h"

namespace vantrelix::bench {

namespace {

constexpr const char* kPragmas =
    "PRAGMA journal_mode=WAL; PRAGMA mmap_size=1073741824; PRAGMA cache_size=-65536; PRAGMA temp_store=MEMORY;";

constexpr const char* kMasterFields =
    "atype_id TEXT PRIMARY KEY, antenna TEXT, gain REAL, gain_un TEXT, f_low REAL, f_high REAL, freq_un TEXT, "
    "power REAL, power_un TEXT";

class Connection {
 public:
  explicit Connection(const std::filesystem::path& path) {
    const int result = sqlite3_open(path.c_str(), &handle_);
    require(result == SQLITE_OK, "SQLite cannot open " + path.string());
  }
  ~Connection() { sqlite3_close(handle_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void run(const std::string& sql) {
    require(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, sqlite3_errmsg(handle_));
  }
  sqlite3* handle() const { return handle_; }

 private:
  sqlite3* handle_ = nullptr;
};

class Statement {
 public:
  Statement(const Connection& connection, const char* sql) : connection_(connection.handle()) {
    const int result = sqlite3_prepare_v3(connection_, sql, -1, SQLITE_PREPARE_PERSISTENT, &handle_, nullptr);
    require(result == SQLITE_OK, sqlite3_errmsg(connection_));
  }
  ~Statement() { sqlite3_finalize(handle_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // The text has to live until the statement has run.
  void bind(int place, const std::string& text) {
    sqlite3_bind_text(handle_, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
  }
  void bind(int place, double number) { sqlite3_bind_double(handle_, place, number); }

  bool step() {
    const int result = sqlite3_step(handle_);
    if (result == SQLITE_ROW) return true;
    require(result == SQLITE_DONE, sqlite3_errmsg(connection_));
    sqlite3_reset(handle_);
    return false;
  }
  bool isNull(int column) const { return sqlite3_column_type(handle_, column) == SQLITE_NULL; }
  std::string text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(handle_, column));
    return bytes == nullptr ? std::string()
                            : std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(handle_, column)));
  }
  double number(int column) const { return sqlite3_column_double(handle_, column); }

 private:
  sqlite3* connection_;
  sqlite3_stmt* handle_ = nullptr;
};

MasterRow masterOf(const Statement& row) {
  MasterRow master{row.text(0), row.text(1), row.number(2), row.text(3), row.number(4), row.number(5),
                   row.text(6), {},          row.text(8)};
  if (!row.isNull(7)) master.power = row.number(7);
  return master;
}

class Sqlite : public OpenLibrary {
 public:
  Sqlite(const std::filesystem::path& path, const char* synchronous) : connection_(path) {
    connection_.run(std::string(kPragmas) + "PRAGMA synchronous=" + synchronous);
  }

  MadeAntenna read(const std::string& id) override {
    MadeAntenna antenna;
    begin_.step();
    readMaster_.bind(1, id);
    while (readMaster_.step()) antenna.master = masterOf(readMaster_);
    readCut(readHorizontal_, id, antenna.horizontal);
    readCut(readVertical_, id, antenna.vertical);
    commit_.step();
    return antenna;
  }

  std::vector<MasterRow> list() override {
    std::vector<MasterRow> rows;
    while (list_.step()) rows.push_back(masterOf(list_));
    return rows;
  }

  std::vector<ListedAntenna> listWithPoints() override {
    std::vector<ListedAntenna> listed;
    while (points_.step()) {
      listed.push_back(
          {points_.text(0), points_.text(1), std::lround(points_.number(2)), std::lround(points_.number(3))});
    }
    return listed;
  }

  Cut horizontalRange() override {
    Cut range;
    while (range_.step()) range.values = {range_.number(0), range_.number(1)};
    return range;
  }

  // The antenna's ID is given by the caller, where the library's own procedure has to find it.
  void append(const MadeAntenna& antenna) override {
    begin_.step();
    write(antenna);
    commit_.step();
  }

 protected:
  void write(const MadeAntenna& antenna) {
    const MasterRow& master = antenna.master;
    writeMaster_.bind(1, master.id);
    writeMaster_.bind(2, master.description);
    writeMaster_.bind(3, master.gain);
    writeMaster_.bind(4, master.gainUnits);
    writeMaster_.bind(5, master.fLow);
    writeMaster_.bind(6, master.fHigh);
    writeMaster_.bind(7, master.freqUnits);
    writeMaster_.step();
    writeCut(writeHorizontal_, master.id, antenna.horizontal);
    writeCut(writeVertical_, master.id, antenna.vertical);
  }
  void begin() { begin_.step(); }
  void commit() { commit_.step(); }

 private:
  static void readCut(Statement& statement, const std::string& id, Cut& cut) {
    statement.bind(1, id);
    while (statement.step()) {
      cut.angles.push_back(statement.number(0));
      cut.values.push_back(statement.number(1));
    }
  }

  static void writeCut(Statement& statement, const std::string& id, const Cut& cut) {
    statement.bind(1, id);
    for (std::size_t i = 0; i < cut.angles.size(); ++i) {
      statement.bind(2, cut.angles[i]);
      statement.bind(3, cut.values[i]);
      statement.step();
    }
  }

  Connection connection_;
  Statement begin_{connection_, "BEGIN"};
  Statement commit_{connection_, "COMMIT"};
  Statement readMaster_{connection_, "SELECT * FROM ams WHERE atype_id = ?"};
  Statement readHorizontal_{connection_, "SELECT hor_az, hor_field FROM ahd WHERE atype_id = ? ORDER BY hor_az"};
  Statement readVertical_{connection_, "SELECT vert_angle, vert_field FROM avd WHERE atype_id = ? ORDER BY vert_angle"};
  Statement list_{connection_, "SELECT * FROM ams ORDER BY antenna"};
  Statement points_{connection_,
                    "SELECT atype_id, antenna, (SELECT count(hor_field) FROM ahd WHERE ahd.atype_id = ams.atype_id), "
                    "(SELECT count(vert_field) FROM avd WHERE avd.atype_id = ams.atype_id) FROM ams ORDER BY antenna"};
  Statement range_{connection_, "SELECT min(hor_field), max(hor_field) FROM ahd"};
  Statement writeMaster_{connection_,
                         "INSERT INTO ams (atype_id, antenna, gain, gain_un, f_low, f_high, freq_un) "
                         "VALUES (?, ?, ?, ?, ?, ?, ?)"};
  Statement writeHorizontal_{connection_, "INSERT INTO ahd VALUES (?, ?, ?)"};
  Statement writeVertical_{connection_, "INSERT INTO avd VALUES (?, ?, ?)"};
};

// An import in one transaction.
class SqliteAtOnce : public Sqlite {
 public:
  using Sqlite::Sqlite;
  void appendAll(const std::vector<MadeAntenna>& antennas) override {
    begin();
    for (const MadeAntenna& antenna : antennas) write(antenna);
    commit();
  }
};

constexpr const char* kIndexed = "indexed.db";
constexpr const char* kClustered = "clustered.db";
constexpr const char* kPlain = "plain.db";

constexpr const char* kPoints =
    "CREATE TABLE ahd (atype_id TEXT, hor_az REAL, hor_field REAL);"
    "CREATE TABLE avd (atype_id TEXT, vert_angle REAL, vert_field REAL);";
constexpr const char* kPointIndexes = "CREATE INDEX ahd_id ON ahd (atype_id); CREATE INDEX avd_id ON avd (atype_id);";
constexpr const char* kClusteredPoints =
    "CREATE TABLE ahd (atype_id TEXT, hor_az REAL, hor_field REAL, PRIMARY KEY (atype_id, hor_az)) WITHOUT ROWID;"
    "CREATE TABLE avd (atype_id TEXT, vert_angle REAL, vert_field REAL, PRIMARY KEY (atype_id, vert_angle)) "
    "WITHOUT ROWID;";

void makeForm(const std::filesystem::path& path, const std::string& tables, const MadeLibrary& library) {
  std::filesystem::remove(path);
  Connection(path).run(std::string(kPragmas) + "CREATE TABLE ams (" + kMasterFields + ");" + tables);
  std::vector<MadeAntenna> antennas;
  SqliteAtOnce open(path, "OFF");
  for (int place = 0; place < library.count(); ++place) {
    antennas.push_back(library.at(place));
    if (antennas.size() < 1000 && place + 1 < library.count()) continue;
    open.appendAll(antennas);
    antennas.clear();
  }
}

template <typename Form>
std::unique_ptr<OpenLibrary> openForm(const std::filesystem::path& path, const char* synchronous = "OFF") {
  return std::make_unique<Form>(path, synchronous);
}

using std::filesystem::path;
using Made = const MadeLibrary&;
constexpr const char* kProgram = "firstReadSqlite";
constexpr unsigned kWriting = job::append | job::import;

void makeClustered(const path& folder, Made library) { makeForm(folder / kClustered, kClusteredPoints, library); }
void makeIndexed(const path& folder, Made library) {
  makeForm(folder / kIndexed, std::string(kPoints) + kPointIndexes, library);
}
void makePlain(const path& folder, Made library) { makeForm(folder / kPlain, kPoints, library); }

std::unique_ptr<OpenLibrary> openClustered(const path& folder) { return openForm<Sqlite>(folder / kClustered); }
std::unique_ptr<OpenLibrary> openIndexed(const path& folder) { return openForm<Sqlite>(folder / kIndexed); }
std::unique_ptr<OpenLibrary> openPlain(const path& folder) { return openForm<Sqlite>(folder / kPlain); }
std::unique_ptr<OpenLibrary> openAtOnce(const path& folder) { return openForm<SqliteAtOnce>(folder / kClustered); }
std::unique_ptr<OpenLibrary> openDurable(const path& folder) { return openForm<Sqlite>(folder / kClustered, "FULL"); }

const Entry clustered({10,
                       "sqlite-clustered",
                       "SQLite, clustered",
                       kProgram,
                       job::all,
                       job::first,
                       false,
                       false,
                       {kClustered},
                       makeClustered,
                       openClustered});
const Entry indexed({20,
                     "sqlite-indexed",
                     "SQLite, indexed",
                     kProgram,
                     job::all,
                     job::first,
                     false,
                     false,
                     {kIndexed},
                     makeIndexed,
                     openIndexed});
const Entry plain({30,
                   "sqlite-plain",
                   "SQLite, no index",
                   kProgram,
                   job::first | job::import,
                   job::import,
                   true,
                   false,
                   {kPlain},
                   makePlain,
                   openPlain});
const Entry atOnce({40,
                    "sqlite-at-once",
                    "SQLite, clustered, at once",
                    kProgram,
                    job::import,
                    job::import,
                    false,
                    false,
                    {kClustered},
                    makeClustered,
                    openAtOnce});
const Entry durable({45,
                     "sqlite-durable",
                     "SQLite, clustered, durable",
                     kProgram,
                     kWriting,
                     kWriting,
                     false,
                     true,
                     {kClustered},
                     makeClustered,
                     openDurable});

}  // namespace

}  // namespace vantrelix::bench

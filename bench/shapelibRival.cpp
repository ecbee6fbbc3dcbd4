// shapelib over the very table files. It has no index: a search reads the whole table.
#include <algorithm>
#include <cstring>
#include <numeric>
#include <shapefil.h>

#include "Contender.h"
#include "benchSupport.h"

namespace vantrelix::bench {

namespace {

constexpr std::size_t kIdWidth = 12;

class Table {
 public:
  Table(const std::filesystem::path& path, const char* access) : handle_(DBFOpen(path.c_str(), access)) {
    require(handle_ != nullptr, "shapelib cannot open " + path.string());
  }
  ~Table() { DBFClose(handle_); }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  // Whether the table's first field, its ID, is that text: looked at in the record itself, the quickest way there is.
  bool hasId(int row, const std::string& id) const {
    const char* field = DBFReadTuple(handle_, row) + 1;
    return std::memcmp(field, id.data(), id.size()) == 0 && (id.size() == kIdWidth || field[id.size()] == ' ');
  }
  int count() const { return DBFGetRecordCount(handle_); }
  bool isNull(int row, int field) const { return DBFIsAttributeNULL(handle_, row, field) != 0; }
  const char* text(int row, int field) const { return DBFReadStringAttribute(handle_, row, field); }
  double number(int row, int field) const { return DBFReadDoubleAttribute(handle_, row, field); }
  void put(int row, int field, const std::string& text) {
    done(DBFWriteStringAttribute(handle_, row, field, text.c_str()));
  }
  void put(int row, int field, double number) { done(DBFWriteDoubleAttribute(handle_, row, field, number)); }
  // Puts the rows and their count into the file.
  void update() { DBFUpdateHeader(handle_); }

 private:
  static void done(int result) { require(result != 0, "shapelib cannot write"); }
  DBFHandle handle_;
};

MasterRow masterAt(const Table& table, int row) {
  MasterRow master;
  master.id = table.text(row, 0);
  master.description = table.text(row, 1);
  master.gain = table.number(row, 2);
  master.gainUnits = table.text(row, 3);
  master.fLow = table.number(row, 4);
  master.fHigh = table.number(row, 5);
  master.freqUnits = table.text(row, 6);
  if (!table.isNull(row, 7)) master.power = table.number(row, 7);
  master.powerUnits = table.text(row, 8);
  return master;
}

Cut inOrder(const std::vector<double>& angles, const std::vector<double>& values) {
  std::vector<std::size_t> order(angles.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return angles[a] < angles[b]; });
  Cut cut;
  for (const std::size_t i : order) {
    cut.angles.push_back(angles[i]);
    cut.values.push_back(values[i]);
  }
  return cut;
}

Cut cutOf(const Table& table, const std::string& id) {
  std::vector<double> angles, values;
  for (int row = 0, count = table.count(); row < count; ++row) {
    if (!table.hasId(row, id)) continue;
    angles.push_back(table.number(row, 1));
    values.push_back(table.number(row, 2));
  }
  return inOrder(angles, values);
}

void appendCut(Table& table, const std::string& id, const Cut& cut) {
  int row = table.count();
  for (std::size_t i = 0; i < cut.angles.size(); ++i, ++row) {
    table.put(row, 0, id);
    table.put(row, 1, cut.angles[i]);
    table.put(row, 2, cut.values[i]);
  }
  table.update();
}

class Shapelib : public OpenLibrary {
 public:
  Shapelib(const std::filesystem::path& folder, const char* access)
      : folder_(folder),
        ams_(folder / kTableFiles[0], access),
        ahd_(folder / kTableFiles[1], access),
        avd_(folder / kTableFiles[2], access) {}

  MadeAntenna read(const std::string& id) override {
    MadeAntenna antenna;
    for (int row = 0, count = ams_.count(); row < count; ++row) {
      if (!ams_.hasId(row, id)) continue;
      antenna.master = masterAt(ams_, row);
      break;
    }
    antenna.horizontal = cutOf(ahd_, id);
    antenna.vertical = cutOf(avd_, id);
    return antenna;
  }

  std::vector<MasterRow> list() override {
    const int count = ams_.count();
    std::vector<MasterRow> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row) rows.push_back(masterAt(ams_, row));
    std::sort(rows.begin(), rows.end(),
              [](const MasterRow& a, const MasterRow& b) { return a.description < b.description; });
    return rows;
  }

  Cut horizontalRange() override {
    bool any = false;
    double low = 0, high = 0;
    for (int row = 0, count = ahd_.count(); row < count; ++row) {
      if (ahd_.isNull(row, 2)) continue;
      const double value = ahd_.number(row, 2);
      low = any ? std::min(low, value) : value;
      high = any ? std::max(high, value) : value;
      any = true;
    }
    return {{}, {low, high}};
  }

  // The antenna's ID is given by the caller, where the library's own procedure has to find it.
  void append(const MadeAntenna& antenna) override {
    const MasterRow& master = antenna.master;
    const int row = ams_.count();
    ams_.put(row, 0, master.id);
    ams_.put(row, 1, master.description);
    ams_.put(row, 2, master.gain);
    ams_.put(row, 3, master.gainUnits);
    ams_.put(row, 4, master.fLow);
    ams_.put(row, 5, master.fHigh);
    ams_.put(row, 6, master.freqUnits);
    ams_.update();
    appendCut(ahd_, master.id, antenna.horizontal);
    appendCut(avd_, master.id, antenna.vertical);
  }

 private:
  std::filesystem::path folder_;
  Table ams_, ahd_, avd_;
};

void make(const std::filesystem::path&, const MadeLibrary&) {}

std::unique_ptr<OpenLibrary> open(const std::filesystem::path& folder) {
  return std::make_unique<Shapelib>(folder, "r+b");
}

const Entry entry({50, "shapelib", "shapelib", "firstReadShapelib",
                   job::read | job::first | job::append | job::import | job::list | job::range, 0, true, false,
                   kTableFiles, make, open});

}  // namespace

}  // namespace vantrelix::bench

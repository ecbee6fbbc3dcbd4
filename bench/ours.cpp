// This project's tables, by the procedures that its front ends call.
#include "Contender.h"
#include "antenna/antennaList.h"
#include "antenna/getAntArrayDB.h"
#include "benchSupport.h"
#include "makeLibrary.h"
#include "platform/Platform.h"
#include "tables/DbfFile.h"

namespace vantrelix::bench {

namespace {

class Ours : public OpenLibrary {
 public:
  explicit Ours(const std::filesystem::path& folder) : folder_(platform::current().fromMachine(folder.string())) {}

  MadeAntenna read(const std::string& id) override {
    std::string storedUnits, reason;
    AntRecord record = readAntenna(folder_, kLibrary, id, storedUnits, true, reason);
    require(reason.empty(), reason);
    MadeAntenna antenna;
    antenna.master = {std::move(record.id),
                      std::move(record.description),
                      record.gain,
                      std::move(record.gainUnits),
                      record.lowFrequency,
                      record.highFrequency,
                      std::move(record.freqUnits),
                      {},
                      {}};
    antenna.horizontal = {std::move(record.HorAz), std::move(record.HorField)};
    antenna.vertical = {std::move(record.VerAngle), std::move(record.VerField)};
    return antenna;
  }

  std::vector<MasterRow> list() override;
  std::vector<ListedAntenna> listWithPoints() override;
  Cut horizontalRange() override;

  void beginAppending() override { tables_ = openLibraryTables(folder_, kCode); }
  void append(const MadeAntenna& antenna) override { appendAntenna(antenna, tables_); }

 private:
  DatabasePtr database() const { return DBEngine::OpenDatabase(folder_, false, true, "FoxPro 2.6"); }

  std::string folder_;
  LibraryTables tables_;
};

std::string_view withoutBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

std::string textOf(const Field& field) { return std::string(withoutBlanks(field.text().value_or(""))); }

// A list that is only shown is a picture of its rows.
std::vector<MasterRow> Ours::list() {
  const RecordsetPtr rows =
      database()->OpenRecordset("SELECT * from [AMSBENCH] Order by [ANTENNA] ASC", RecordsetType::snapshot);
  const Field id = rows->Fields("ATYPE_ID"), description = rows->Fields("ANTENNA"), gain = rows->Fields("GAIN"),
              gainUnits = rows->Fields("GAIN_UN"), low = rows->Fields("F_LOW"), high = rows->Fields("F_HIGH"),
              freqUnits = rows->Fields("FREQ_UN"), power = rows->Fields("POWER"), powerUnits = rows->Fields("POWER_UN");
  std::vector<MasterRow> list;
  list.reserve(static_cast<std::size_t>(rows->rowCount()));
  for (; !rows->Eof(); rows->MoveNext()) {
    list.push_back({textOf(id), textOf(description), gain.number().value_or(0), textOf(gainUnits),
                    low.number().value_or(0), high.number().value_or(0), textOf(freqUnits), power.number(),
                    textOf(powerUnits)});
  }
  return list;
}

std::vector<ListedAntenna> Ours::listWithPoints() {
  std::vector<ListedAntenna> listed;
  for (AntennaListEntry& entry : listAntennas(folder_, kLibrary)) {
    listed.push_back({std::move(entry.id), std::move(entry.description), entry.horizontalPoints, entry.verticalPoints});
  }
  return listed;
}

Cut Ours::horizontalRange() {
  const RecordsetPtr row =
      database()->OpenRecordset("Select min([HOR_FIELD]) AS MinF, max([HOR_FIELD]) AS MaxF from [AHDBENCH]");
  return {{}, {row->value("MinF").asNumber(), row->value("MaxF").asNumber()}};
}

void make(const std::filesystem::path& folder, const MadeLibrary& library) {
  makeLibrary(platform::current().fromMachine(folder.string()), library.count());
}

std::unique_ptr<OpenLibrary> open(const std::filesystem::path& folder) { return std::make_unique<Ours>(folder); }

// Each write is on the disk before it counts as done.
class Durable : public Ours {
 public:
  using Ours::Ours;
  void append(const MadeAntenna& antenna) override {
    DbfFile::setDurable(true);
    Ours::append(antenna);
    DbfFile::setDurable(false);
  }
};

std::unique_ptr<OpenLibrary> openDurable(const std::filesystem::path& folder) {
  return std::make_unique<Durable>(folder);
}

const Entry entry({0, "ours", "this library", "firstReadOurs", job::all, 0, false, false, kTableFiles, make, open});
const Entry durable({5, "ours-durable", "this library, durable", "firstReadOurs", job::append | job::import,
                     job::append | job::import, false, true, kTableFiles, make, openDurable});

}  // namespace

}  // namespace vantrelix::bench

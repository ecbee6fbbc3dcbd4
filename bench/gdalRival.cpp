// GDAL/OGR over the very table files: an attribute filter for a search, its own SQL for the rest. Reads only.
#include <functional>
#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "Contender.h"
#include "benchSupport.h"

namespace vantrelix::bench {

namespace {

class Table {
 public:
  explicit Table(const std::filesystem::path& path)
      : dataset_(static_cast<GDALDataset*>(
            GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY, nullptr, nullptr, nullptr))) {
    require(dataset_ != nullptr, "GDAL cannot open " + path.string());
  }

  void filtered(const std::string& id, const std::function<void(OGRFeature&)>& visit) {
    OGRLayer& layer = *dataset_->GetLayer(0);
    require(layer.SetAttributeFilter(("ATYPE_ID = '" + id + "'").c_str()) == OGRERR_NONE, "GDAL refuses the filter");
    layer.ResetReading();
    visitAll(layer, visit);
  }

  void queried(const char* sql, const std::function<void(OGRFeature&)>& visit) {
    OGRLayer* layer = dataset_->ExecuteSQL(sql, nullptr, nullptr);
    require(layer != nullptr, "GDAL refuses the query");
    visitAll(*layer, visit);
    dataset_->ReleaseResultSet(layer);
  }

 private:
  static void visitAll(OGRLayer& layer, const std::function<void(OGRFeature&)>& visit) {
    while (const OGRFeatureUniquePtr feature{layer.GetNextFeature()}) visit(*feature);
  }

  GDALDatasetUniquePtr dataset_;
};

MasterRow masterOf(const OGRFeature& feature) {
  MasterRow master;
  master.id = feature.GetFieldAsString(0);
  master.description = feature.GetFieldAsString(1);
  master.gain = feature.GetFieldAsDouble(2);
  master.gainUnits = feature.GetFieldAsString(3);
  master.fLow = feature.GetFieldAsDouble(4);
  master.fHigh = feature.GetFieldAsDouble(5);
  master.freqUnits = feature.GetFieldAsString(6);
  if (feature.IsFieldSetAndNotNull(7)) master.power = feature.GetFieldAsDouble(7);
  master.powerUnits = feature.GetFieldAsString(8);
  return master;
}

class Gdal : public OpenLibrary {
 public:
  explicit Gdal(const std::filesystem::path& folder)
      : ams_(folder / kTableFiles[0]), ahd_(folder / kTableFiles[1]), avd_(folder / kTableFiles[2]) {}

  MadeAntenna read(const std::string& id) override {
    MadeAntenna antenna;
    ams_.filtered(id, [&](const OGRFeature& feature) { antenna.master = masterOf(feature); });
    antenna.horizontal = cutOf(ahd_, id);
    antenna.vertical = cutOf(avd_, id);
    return antenna;
  }

  std::vector<MasterRow> list() override {
    std::vector<MasterRow> rows;
    ams_.queried("SELECT * FROM AMSBENCH ORDER BY ANTENNA",
                 [&](const OGRFeature& feature) { rows.push_back(masterOf(feature)); });
    return rows;
  }

  Cut horizontalRange() override {
    Cut range;
    ahd_.queried("SELECT MIN(HOR_FIELD), MAX(HOR_FIELD) FROM AHDBENCH", [&](const OGRFeature& feature) {
      range.values = {feature.GetFieldAsDouble(0), feature.GetFieldAsDouble(1)};
    });
    return range;
  }

  void append(const MadeAntenna&) override { require(false, "GDAL takes no part in appending"); }

 private:
  // The points lie in the file by angle; a filter cannot order them.
  static Cut cutOf(Table& table, const std::string& id) {
    Cut cut;
    table.filtered(id, [&](const OGRFeature& feature) {
      cut.angles.push_back(feature.GetFieldAsDouble(1));
      cut.values.push_back(feature.GetFieldAsDouble(2));
    });
    return cut;
  }

  Table ams_, ahd_, avd_;
};

void make(const std::filesystem::path&, const MadeLibrary&) {}

// Before any job: a program registers its drivers once.
const bool registered = (GDALAllRegister(), true);

std::unique_ptr<OpenLibrary> open(const std::filesystem::path& folder) {
  require(registered, "GDAL has no drivers");
  return std::make_unique<Gdal>(folder);
}

const Entry entry({60, "gdal", "GDAL/OGR", "firstReadGdal", job::read | job::first | job::list | job::range, 0, true,
                   false, kTableFiles, make, open});

}  // namespace

}  // namespace vantrelix::bench

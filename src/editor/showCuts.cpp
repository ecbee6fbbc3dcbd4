#include "editor/showCuts.h"

#include <algorithm>
#include <memory>

#include "editor/frmHDAntEditor.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "tables/Database.h"

namespace vantrelix {

namespace {

constexpr Plane kPlanes[] = {Plane::azimuth, Plane::elevation};

const std::string& tableOf(const frmHDAntEditor& form, Plane plane) {
  return plane == Plane::azimuth ? form.AHDName : form.AVDName;
}

bool descends(const frmHDAntEditor& form, Plane plane) {
  return plane == Plane::elevation && upperCase(leftCharacters(form.VertSort, 3)) != "ASC";
}

std::string keyOf(const Value& id) { return upperCase(trimRight(ChkNulls(id, "", false).asText())); }

// Gives the antenna's key.
std::string select(frmHDAntEditor& form, int row) {
  DataGrid& list = form.TDBGridAMS;
  list.setCurrentRow(row);
  SelBookmarks& selected = list.selBookmarks();
  while (selected.count() > 0) selected.remove(0);
  selected.add(list.bookmark());
  form.showID();
  form.takeGainOf(row);
  return trim(keyOf(list.value(row, "ATYPE_ID")));
}

void load(frmHDAntEditor& form, Plane plane, const std::string& key) {
  PatternPane& pane = form.pane(plane);
  pane.clear();
  if (key.empty()) return;
  pane.load(key, descends(form, plane) ? " DESC" : " ASC");
}

int rowOfAntenna(frmHDAntEditor& form, const std::string& id) {
  return form.DataAMS.FindFirst("ATYPE_ID = '" + replaceAll(id, "'", "''") + "'");
}

std::optional<double> numberOf(const Value& value) {
  if (value.isNull()) return std::nullopt;
  return CValP(value);
}

Value valueOf(const std::optional<double>& number) { return number ? Value(*number) : Value(); }

}  // namespace

void showCuts(frmHDAntEditor& form, int row) {
  const std::string key = select(form, row);
  for (const Plane plane : kPlanes) load(form, plane, key);
}

bool showCuts(frmHDAntEditor& form, const std::string& id) {
  const int row = rowOfAntenna(form, id);
  if (row >= 0) showCuts(form, row);
  return row >= 0;
}

void showSelectedCut(frmHDAntEditor& form, Plane plane) {
  const int row = form.selectedRow();
  const Value id = form.TDBGridAMS.value(row, "ATYPE_ID");
  PatternPane& pane = form.pane(plane);
  if (row < 0 || pane.shows(id)) return;
  form.takeGainOf(row);
  load(form, plane, trim(keyOf(id)));
  pane.SetCols();
}

LibraryCuts::LibraryCuts(frmHDAntEditor& form) : form_(form) {
  for (const Plane plane : kPlanes) read(plane);
}

void LibraryCuts::read(Plane plane) {
  Cuts& cuts = plane == Plane::azimuth ? azimuth_ : elevation_;
  const RecordsetPtr rows =
      DBEngine::OpenDatabase(form_.folder())->OpenRecordset("select * from [" + tableOf(form_, plane) + "]");
  const Field id = rows->Fields("ATYPE_ID");
  const Field angle = rows->Fields(form_.pane(plane).plane.angleField);
  const Field gain = rows->Fields(form_.pane(plane).plane.gainField);
  for (; !rows->Eof(); rows->MoveNext()) {
    cuts[keyOf(id.value())].push_back({numberOf(angle.value()), numberOf(gain.value())});
  }
  const bool down = descends(form_, plane);
  for (auto& [key, points] : cuts) {
    std::stable_sort(points.begin(), points.end(),
                     [down](const Point& a, const Point& b) { return down ? a.angle > b.angle : a.angle < b.angle; });
  }
}

void LibraryCuts::showCut(Plane plane, const std::string& id) const {
  PatternPane& pane = form_.pane(plane);
  pane.clear();
  const auto found = cuts(plane).find(id);
  if (found == cuts(plane).end() || id.empty()) return;
  const auto rows = std::make_shared<ArrayRows>(std::vector<std::string>{pane.plane.angleField, pane.plane.gainField});
  for (const Point& point : found->second) rows->add({valueOf(point.angle), valueOf(point.gain)});
  const GridHold hold(pane.grid);
  pane.grid.setRows(rows);
  pane.grid.leaveRows();
}

void LibraryCuts::show(int row) const {
  const std::string key = select(form_, row);
  for (const Plane plane : kPlanes) showCut(plane, key);
}

bool LibraryCuts::show(const std::string& id) const {
  const int row = rowOfAntenna(form_, id);
  if (row >= 0) show(row);
  return row >= 0;
}

}  // namespace vantrelix

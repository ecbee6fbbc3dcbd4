// A grid over rows in memory, and a log of its events.
#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "ui/DataGrid.h"

namespace vantrelix::test {

class DataGridTest : public testing::Test {
 protected:
  DataGridTest() {
    rows->add({"Dish", 12.5, "a"});
    rows->add({"Panel", 2.0, "b"});
    rows->add({"Yagi", 9.25, "c"});
    grid.setColumns({{"Name", "NAME"}, {"Gain", "GAIN", 1000, true, "##0.000"}, {"Note", "NOTE"}});
    grid.setRows(rows);
    log();
  }

  void log() {
    grid.rowColChange.listen([this](const std::string& row, int column) {
      events.push_back("rowColChange " + row + "," + std::to_string(column));
    });
    grid.selChange.listen([this] { events.push_back("selChange"); });
    grid.click.listen([this] { events.push_back("click"); });
    grid.doubleClick.listen([this] { events.push_back("doubleClick"); });
    grid.headClick.listen([this](int column) { events.push_back("headClick " + std::to_string(column)); });
    grid.colResize.listen([this](int column) { events.push_back("colResize " + std::to_string(column)); });
    grid.beforeColEdit.listen([this](int column, bool& refuse) {
      events.push_back("beforeColEdit " + std::to_string(column));
      refuse = refused == "beforeColEdit";
    });
    grid.beforeColUpdate.listen([this](GridColumnUpdate& update) {
      events.push_back("beforeColUpdate " + update.text);
      update.cancel = refused == "beforeColUpdate";
    });
    grid.afterColUpdate.listen([this](int column) { events.push_back("afterColUpdate " + std::to_string(column)); });
    refusable("beforeInsert", grid.beforeInsert);
    refusable("beforeUpdate", grid.beforeUpdate);
    refusable("beforeDelete", grid.beforeDelete);
    grid.onAddNew.listen([this] { events.push_back("onAddNew"); });
    grid.afterInsert.listen([this] { events.push_back("afterInsert"); });
    grid.afterUpdate.listen([this] { events.push_back("afterUpdate"); });
    grid.afterDelete.listen([this] { events.push_back("afterDelete"); });
  }
  void refusable(const char* name, Signal<bool&>& event) {
    event.listen([this, name](bool& refuse) {
      events.emplace_back(name);
      refuse = refused == name;
    });
  }

  // The first column's texts from the top.
  std::vector<std::string> names() const {
    std::vector<std::string> texts;
    for (int row = 0; row < grid.rowCount(); ++row) texts.push_back(grid.cellText(row, 0));
    return texts;
  }
  using Texts = std::vector<std::string>;

  std::shared_ptr<ArrayRows> rows = std::make_shared<ArrayRows>(Texts{"NAME", "GAIN", "NOTE"});
  DataGrid grid{"grid"};
  Texts events;
  std::string refused;
};

}  // namespace vantrelix::test

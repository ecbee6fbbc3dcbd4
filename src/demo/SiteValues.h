// What this host's own boxes hold of a facility record, as the texts that the boxes show.
#pragma once

#include <string>
#include <vector>

#include "demo/FacilityTable.h"

namespace vantrelix::demo {

class SiteValues {
 public:
  SiteValues();

  // In the order of siteFields().
  const std::vector<FacilityField>& fields() const { return fields_; }
  const std::vector<std::string>& texts() const { return texts_; }
  // By the field's name, which must be one of them.
  const std::string& text(const std::string& name) const { return texts_[indexOf(name)]; }
  void text(const std::string& name, const std::string& text) { texts_[indexOf(name)] = text; }

  void clear();
  // The current row. 3265 for a table that lacks a field.
  void read(Recordset& row);
  // The facility section of an INI file; blank where the file or a key is not there.
  void readFile(const std::string& file);

  // Which text is no number where one is wanted; "" where all are well.
  std::string complaint() const;
  // What differs from what was read, as one edit of the row; the rest stays as others may have written it.
  void save(Recordset& row);
  // 75 where the file cannot be written.
  void saveFile(const std::string& file);

 private:
  std::size_t indexOf(const std::string& name) const;

  std::vector<FacilityField> fields_;
  std::vector<std::string> texts_;
  std::vector<std::string> read_;
};

}  // namespace vantrelix::demo

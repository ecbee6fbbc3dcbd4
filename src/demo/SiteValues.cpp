#include "demo/SiteValues.h"

#include <algorithm>

#include "foundation/extract.h"
#include "foundation/getINI.h"
#include "foundation/numbers.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::demo {

SiteValues::SiteValues() : fields_(siteFields()), texts_(fields_.size()), read_(fields_.size()) {}

std::size_t SiteValues::indexOf(const std::string& name) const {
  const auto found =
      std::find_if(fields_.begin(), fields_.end(), [&](const FacilityField& field) { return field.name == name; });
  return static_cast<std::size_t>(found - fields_.begin());
}

void SiteValues::clear() {
  texts_.assign(fields_.size(), "");
  read_ = texts_;
}

void SiteValues::read(Recordset& row) {
  clear();
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const Value value = row.value(fields_[i].name);
    if (!value.isNull()) texts_[i] = trimRight(value.asText());
  }
  read_ = texts_;
}

void SiteValues::readFile(const std::string& file) {
  const ProfileSection section(kFacilitySection, file);
  for (std::size_t i = 0; i < fields_.size(); ++i) texts_[i] = section.get(fields_[i].name, "");
  read_ = texts_;
}

std::string SiteValues::complaint() const {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    if (!fields_[i].isNumber() || getLenTrim(texts_[i]) == 0 || isNumeric(texts_[i])) continue;
    return replaceAll(fields_[i].caption, "&", "") + " \"" + texts_[i] +
           "\" is no number. Correct it or leave it blank.";
  }
  return "";
}

void SiteValues::save(Recordset& row) {
  if (texts_ == read_) return;
  row.Edit();
  try {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (texts_[i] != read_[i]) row.put(fields_[i].name, trim(texts_[i]));
    }
    row.Update();
  } catch (const RunTimeFailure&) {
    row.CancelUpdate();
    throw;
  }
  read_ = texts_;
}

void SiteValues::saveFile(const std::string& file) {
  std::vector<IniEntry> entries;
  for (std::size_t i = 0; i < fields_.size(); ++i) entries.push_back({fields_[i].name, texts_[i]});
  if (!setINI(kFacilitySection, entries, file)) {
    throw RunTimeFailure(failure::pathAccess,
                         "The file " + displayPath(file) + " cannot be written. Check that it is not read-only.");
  }
  read_ = texts_;
}

}  // namespace vantrelix::demo

// New tables.
#include "tables/dbfCreate.h"

#include <algorithm>
#include <set>

#include "foundation/encoding.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "tables/MemoFile.h"
#include "tables/dbfHeader.h"
#include "tables/partnerFile.h"

namespace vantrelix {

namespace {

constexpr std::size_t kLongestName = 10;
constexpr std::size_t kMostFields = 255;  // what programs of the FoxPro family take
constexpr int kLongestRecord = 65535;

struct WidthRule {
  char type;
  int least;
  int most;
};
constexpr int kWidestNumber = 20;
constexpr int kMostDecimals = 15;
constexpr WidthRule kWidths[] = {
    {'C', 1, 254}, {'N', 1, kWidestNumber}, {'F', 1, kWidestNumber}, {'L', 1, 1}, {'D', 8, 8}, {'M', 10, 10}};

[[noreturn]] void refuse(int number, const std::string& path, const std::string& reason) {
  throw RunTimeFailure(
      number, "The table " + displayPath(path) + " cannot be made: " + reason + ". Correct its list of fields.");
}

const WidthRule& ruleOf(const DbfNewField& field, const std::string& path) {
  for (const WidthRule& rule : kWidths) {
    if (rule.type == field.type) return rule;
  }
  refuse(
      failure::internalError, path,
      "the field " + field.name + " has the type \"" + std::string(1, field.type) + "\", which new tables cannot have");
}

std::string storedName(const DbfNewField& field, const std::string& path, const dbf::TextCodec& codec) {
  std::string name = dbf::nameToStore(field.name, codec);
  if (name.empty()) refuse(failure::internalError, path, "a field has no name");
  if (name.size() > kLongestName) {
    refuse(failure::internalError, path, "the field name " + field.name + " has more than 10 characters");
  }
  if (codec.decode(name) != upperCase(trim(field.name))) {
    refuse(failure::internalError, path, "its code page does not have the characters of the field name " + field.name);
  }
  return name;
}

// Types with one width have it whatever was asked for.
DbfNewField checkedField(const DbfNewField& asked, const std::string& path, const dbf::TextCodec& codec) {
  DbfNewField field = asked;
  const WidthRule& rule = ruleOf(asked, path);
  field.name = storedName(asked, path, codec);
  if (rule.least == rule.most) field.width = rule.most;
  const bool number = field.type == 'N' || field.type == 'F';
  if (!number) field.decimals = 0;
  const bool fits =
      number ? dbf::isNumberWidth(field.width, field.decimals) : field.width >= rule.least && field.width <= rule.most;
  if (fits) return field;
  refuse(failure::fieldTooSmall, path,
         "the field " + asked.name + " of type " + field.type + " cannot have the width " +
             std::to_string(asked.width) + " with " + std::to_string(asked.decimals) + " decimals");
}

std::vector<DbfNewField> checkedFields(const std::vector<DbfNewField>& asked, const std::string& path,
                                       const dbf::TextCodec& codec) {
  if (asked.empty()) refuse(failure::internalError, path, "it has no field");
  if (asked.size() > kMostFields) refuse(failure::internalError, path, "it has more than 255 fields");
  std::vector<DbfNewField> fields;
  std::set<std::string> names;
  int length = 1;
  for (const DbfNewField& field : asked) {
    fields.push_back(checkedField(field, path, codec));
    length += fields.back().width;
    if (!names.insert(fields.back().name).second) {
      refuse(failure::internalError, path, "the field name " + field.name + " comes twice");
    }
  }
  if (length > kLongestRecord) refuse(failure::fieldTooSmall, path, "its records would be longer than 65535 bytes");
  return fields;
}

// Whether a memo file was made here, for those who may read the table; false where another program was quicker.
bool madeMemo(const std::string& path, const std::string& table) {
  try {
    platform::createWholeFile(path, MemoFile::emptyFile(), platform::current().fileExists(table) ? table : "");
    return true;
  } catch (const RunTimeFailure& failure) {
    if (failure.number() != failure::fileExists) throw;
    return false;
  }
}

// A memo file that is there stays: it serves as well, and its texts may be those of a table that the new one does not
// come to replace.
void provideMemo(const std::string& path) {
  std::string there = memoPartner(path, true);
  if (there.empty()) {
    there = withExtension(path, "FPT");
    if (madeMemo(there, path)) return;
  }
  const MemoFile readable(there, MemoKind::foxpro);
}

}  // namespace

namespace dbf {

// A decimal part takes its point and one digit before it.
bool isNumberWidth(int width, int decimals) {
  if (width < 1 || width > kWidestNumber) return false;
  return decimals == 0 || (decimals > 0 && decimals <= std::min(kMostDecimals, width - 2));
}

std::string nameToStore(const std::string& name, const TextCodec& codec) { return codec.encode(upperCase(trim(name))); }

void createFile(const std::string& path, const std::vector<DbfNewField>& fields, const Language& language) {
  const std::vector<DbfNewField> checked = checkedFields(fields, path, TextCodec(language.page));
  const bool withMemo =
      std::any_of(checked.begin(), checked.end(), [](const auto& field) { return field.type == 'M'; });
  // The memo file first: a table that has none beside it is worse than a memo file alone.
  if (withMemo) provideMemo(path);
  platform::replaceWholeFile(path, newHeader(checked, platform::current().now(), language.mark));
}

}  // namespace dbf

void DbfFile::create(const std::string& path, const std::vector<DbfNewField>& fields) {
  dbf::createFile(path, fields, {});
}

}  // namespace vantrelix

#include "tables/SqlInsert.h"

#include <algorithm>
#include <utility>

#include "foundation/extract.h"
#include "tables/SqlCompare.h"
#include "tables/SqlFilter.h"
#include "tables/SqlLexer.h"
#include "tables/fieldBytes.h"
#include "tables/textBytes.h"

namespace vantrelix {

namespace {

constexpr std::size_t kBatchBytes = 1 << 20;

// The value in the kind that the field keeps. A text that is no number stays, so that the put refuses it by name.
Value converted(const Value& value, const DbfField& field) {
  switch (field.type) {
    case 'C':
    case 'V':
    case 'M':
      return value.isNull() ? value : Value(withoutPadding(value.asText()));
    case 'L':
    case 'D':
      return value;
    default:
      break;
  }
  if (value.isBoolean()) return value.asNumber();
  if (!value.isText()) return value;
  if (withoutPadding(value.text()).empty()) return {};
  const auto number = sqlNumber(value.text());
  return number ? Value(*number) : value;
}

class Insert {
 public:
  Insert(SqlInsert insert, const std::shared_ptr<DbfFile>& source, const std::shared_ptr<DbfFile>& target,
         InsertedTexts texts)
      : query_(std::move(insert.source), source),
        target_(*target),
        blank_(target->blankRecord()),
        row_(*source),
        textBytes_(source->fields()) {
    mapFields(insert.fields);
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      asBytes_.push_back(texts == InsertedTexts::bytes && isTextToText(sourceOf(i).field, targets_[i]));
    }
    // A file that is being run over is not written to before the run has ended.
    keepAll_ = source->path() == target->path();
  }

  long run() {
    try {
      query_.visitRows([this](std::uint32_t number, const unsigned char* record) {
        add(number, record);
        if (!keepAll_ && batch_.size() >= kBatchBytes) flush();
      });
    } catch (const RunTimeFailure& cause) {
      if (!keepAll_) writeRowsBefore(cause);
      throw;
    }
    flush();
    return written_;
  }

 private:
  void mapFields(const std::vector<SqlTargetField>& named) {
    const SqlSelect& select = query_.select();
    if (query_.aggregated()) throw sqlSyntaxFailure(select.text, 0, "an insert takes rows, not aggregates.");
    const auto& columns = query_.columns();
    if (!named.empty() && named.size() != columns.size()) {
      throw sqlSyntaxFailure(select.text, named.back().position,
                             "the list of the target has " + std::to_string(named.size()) +
                                 " fields, that behind SELECT " + std::to_string(columns.size()) + ".");
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::string& name = named.empty() ? columns[i].name : named[i].name;
      const std::size_t listed = select.items.empty() ? 0 : select.items[i].expression.position;
      const std::size_t position = named.empty() ? listed : named[i].position;
      const int field = target_.fieldIndex(name);
      if (field < 0) refuseField(name, position, "is not in table '" + displayPath(target_.path()) + "'.");
      const auto target = static_cast<std::size_t>(field);
      if (std::find(targets_.begin(), targets_.end(), target) != targets_.end()) {
        if (named.empty() && select.items.empty()) continue;  // * of a table with two fields of a name: the first one
        refuseField(name, position, "is named twice. Name each field of the target once.");
      }
      columns_.push_back(i);
      targets_.push_back(target);
    }
  }

  [[noreturn]] void refuseField(const std::string& name, std::size_t position, const std::string& why) const {
    throw RunTimeFailure(failure::badQuery, "Field '" + name + "' at position " +
                                                std::to_string(sqlPlace(query_.select().text, position)) +
                                                " of the query " + why);
  }

  // What goes into one of the targets.
  const SqlColumn& sourceOf(std::size_t target) const { return query_.columns()[columns_[target]]; }

  void add(std::uint32_t number, const unsigned char* record) {
    row_.show(record);
    const std::size_t start = batch_.size();
    batch_.insert(batch_.end(), blank_.begin(), blank_.end());
    try {
      for (std::size_t i = 0; i < targets_.size(); ++i) {
        if (asBytes_[i]) {
          putBytes(batch_.data() + start, record, i);
        } else {
          put(batch_.data() + start, i);
        }
      }
    } catch (const RunTimeFailure& problem) {
      throw RunTimeFailure(problem.number(), "Record " + std::to_string(number + 1) + " of table '" +
                                                 displayPath(query_.table().path()) +
                                                 "' cannot be copied: " + problem.description());
    }
    ++pending_;
  }

  bool isTextToText(int from, std::size_t to) const {
    return from >= 0 && target_.fields()[to].type == 'C' &&
           dbf::TextBytes::isText(query_.table().fields()[static_cast<std::size_t>(from)]);
  }

  // What stands behind a NUL is no text and goes where there is no room for it.
  void putBytes(unsigned char* record, const unsigned char* from, std::size_t target) {
    const DbfField& field = target_.fields()[targets_[target]];
    const auto source = static_cast<std::size_t>(sourceOf(target).field);
    std::string_view bytes = textBytes_.of(from, query_.table().fields()[source]);
    const auto width = static_cast<std::size_t>(field.width);
    if (bytes.size() > width) bytes = withoutPadding(bytes);
    if (bytes.size() > width) bytes = withoutPadding(bytes.substr(0, bytes.find('\0')));
    if (bytes.size() > width) {
      throw RunTimeFailure(failure::fieldTooSmall, "The field " + field.name + " of " + displayPath(target_.path()) +
                                                       " is too small for a text of " + std::to_string(bytes.size()) +
                                                       " bytes: its width is " + std::to_string(width) +
                                                       ". Give a shorter value.");
    }
    dbf::putBytes(record, field, bytes, ' ');
  }

  void put(unsigned char* record, std::size_t target) {
    const SqlColumn& from = sourceOf(target);
    const Value value =
        from.field >= 0 ? row_.value(static_cast<std::size_t>(from.field)) : evaluate(*from.expression, row_);
    const std::size_t field = targets_[target];
    target_.put(record, field, converted(value, target_.fields()[field]));
  }

  // Rows that could not be written are not tried again.
  void flush() {
    const std::uint32_t rows = std::exchange(pending_, 0);
    if (rows == 0) return;
    target_.append(batch_.data(), rows);
    written_ += rows;
    batch_.clear();
  }

  void writeRowsBefore(const RunTimeFailure& cause) {
    const std::uint32_t rows = pending_;
    try {
      flush();
    } catch (const RunTimeFailure& another) {
      throw RunTimeFailure(cause.number(), cause.description() + " Of the rows before it the last " +
                                               std::to_string(rows) +
                                               " could not be written either: " + another.description());
    }
  }

  SqlQuery query_;
  DbfFile& target_;
  const std::vector<unsigned char> blank_;
  RecordRow row_;
  const dbf::TextBytes textBytes_;
  bool keepAll_ = false;
  std::vector<std::size_t> targets_;  // fields
  std::vector<std::size_t> columns_;  // of the query, for each target
  std::vector<bool> asBytes_;         // for each target
  std::vector<unsigned char> batch_;
  std::uint32_t pending_ = 0;
  long written_ = 0;
};

}  // namespace

long runInsert(SqlInsert insert, const std::shared_ptr<DbfFile>& source, const std::shared_ptr<DbfFile>& target,
               InsertedTexts texts) {
  return Insert(std::move(insert), source, target, texts).run();
}

}  // namespace vantrelix

#include "tables/DbfFile.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <utility>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "foundation/utf8.h"
#include "tables/DbfFileState.h"
#include "tables/dbfOpening.h"
#include "tables/knownHeaders.h"
#include "tables/memoCheck.h"
#include "tables/partnerFile.h"

namespace vantrelix {

namespace {

// Logs a text once in this process for each key. A log that cannot be written must not keep a table from being read.
void logOnce(const std::string& key, const std::string& text) {
  static std::mutex guard;
  static std::set<std::string> logged;
  {
    const std::lock_guard lock(guard);
    if (!logged.insert(key).second) return;
  }
  try {
    wrtTechSupNoMak(text);
  } catch (const RunTimeFailure&) {
  }
}

// A header's fields, with their names as texts; the header's own where those are its bytes.
std::shared_ptr<const std::vector<DbfField>> withTextNames(const dbf::SharedHeader& header,
                                                           const dbf::TextCodec& codec) {
  const std::vector<DbfField>& stored = header->fields;
  if (std::all_of(stored.begin(), stored.end(), [](const DbfField& field) { return isAscii(field.name); }))
    return {header, &stored};
  std::vector<DbfField> decoded = stored;
  for (DbfField& field : decoded) field.name = codec.decode(field.name);
  return std::make_shared<const std::vector<DbfField>>(std::move(decoded));
}

}  // namespace

void DbfFile::Implementation::noteUnreadable(const DbfField& field, const std::string& reason) {
  logOnce(context.displayName() + '\n' + field.name, "Table " + context.displayName() + ": the field " +
                                                         context.text.decode(field.name) + " of type " +
                                                         std::string(1, field.type) + " is read as null; " + reason);
}

void DbfFile::Implementation::openMemo() {
  const dbf::MemoFormat format = dbf::memoFormatOf(header->version);
  const std::string partner = memoPartner(context.path, format == dbf::MemoFormat::foxpro);
  if (partner.empty()) {
    throw RunTimeFailure(failure::fileNotFound, "the memo file beside the table is missing");
  }
  memo = std::make_unique<MemoFile>(partner, dbf::memoKindOf(header->version));
}

Value DbfFile::Implementation::memoText(const unsigned char* record, const DbfField& field) {
  const std::uint32_t block = dbf::memoBlock(record, field);
  if (block == 0 || memoMissing || dbf::isNullByFlag(record, field, context)) return {};
  try {
    if (!memo) openMemo();
    return context.text.decode(memo->read(block));
  } catch (const RunTimeFailure& cause) {
    memoMissing = !memo;
    noteUnreadable(field, cause.description());
    return {};
  }
}

DbfFile::DbfFile(Key /*key*/)
    : codePage_(CodePage::windows1252()), implementation_(std::make_unique<Implementation>()) {}
DbfFile::~DbfFile() = default;

std::shared_ptr<DbfFile> DbfFile::open(std::string path, bool readOnly, Sharing sharing) {
  auto table = std::make_shared<DbfFile>(Key());
  Implementation& inside = *table->implementation_;
  inside.context.path = std::move(path);
  inside.sharing = sharing;
  try {
    inside.take(dbf::openHeld(table->path(), sharing, readOnly));
  } catch (const RunTimeFailure& cause) {
    // Most tables stand at the very path; looking for the others before every opening would cost more than this.
    if (cause.number() != failure::noSuchTable) throw;
    std::string found = platform::current().findIgnoringCase(table->path());
    if (table->path() == found) throw;
    inside.context.path = std::move(found);
    inside.take(dbf::openHeld(table->path(), sharing, readOnly));
  }
  table->readOnly_ = readOnly;
  inside.readHeader();
  table->takeHeader();
  return table;
}

std::shared_ptr<DbfFile> DbfFile::openKnown(std::string path) {
  const std::optional<dbf::KnownFile> known = dbf::knownFile(path);
  if (!known) return nullptr;
  auto table = std::make_shared<DbfFile>(Key());
  Implementation& inside = *table->implementation_;
  inside.context.path = std::move(path);
  table->readOnly_ = true;
  try {
    inside.take(dbf::openHeldKnown(table->path(), known->state));
    if (!inside.rest->look(known->state)) return nullptr;
  } catch (const RunTimeFailure&) {
    return nullptr;
  }
  inside.takeHeaderAtRest(known->header);
  table->takeHeader();
  return table;
}

void DbfFile::Implementation::take(dbf::HeldFile found) {
  file = std::move(found.file);
  opened = found.state;
  rest.emplace(*file);
}

void DbfFile::Implementation::takeHeaderAtRest(dbf::SharedHeader known) {
  header = std::move(known);
  knownCount = dbf::rowsWithin(opened.size, *header, header->count);
  countedAtRest = true;
}

void DbfFile::Implementation::readHeader() {
  const bool atRest = rest->look(opened).has_value();
  if (dbf::SharedHeader known = atRest ? dbf::knownHeader(opened) : nullptr) return takeHeaderAtRest(std::move(known));
  header = std::make_shared<const dbf::Header>(dbf::readHeader(*file, context.displayName()));
  if (!atRest || !rest->isUnchanged()) return;
  dbf::keepHeader(context.path, {opened, header});
  takeHeaderAtRest(header);
}

void DbfFile::takeHeader() {
  Implementation& inside = *implementation_;
  const dbf::Header& header = *inside.header;
  inside.context.text = dbf::TextCodec(dbf::codePageOf(header, path()));
  inside.context.visual = dbf::isVisual(header.version);
  fields_ = withTextNames(inside.header, inside.context.text);
  if (header.nullFlags >= 0)
    inside.context.nullFlagsOffset = header.fields[static_cast<std::size_t>(header.nullFlags)].offset;
  codePage_ = inside.context.text.page();
  version_ = header.version;
  recordLength_ = static_cast<int>(header.recordLength);
}

const std::string& DbfFile::path() const { return implementation_->context.path; }

bool DbfFile::hasStructuralIndex() const { return implementation_->header->structuralIndex; }

const platform::FileState& DbfFile::openedState() const { return implementation_->opened; }

std::optional<DbfFile::Rest> DbfFile::lastRest() const {
  const Implementation& inside = *implementation_;
  if (!inside.rest->isKnown() || !inside.countedAtRest) return std::nullopt;
  return Rest{*inside.rest->last(), inside.knownCount};
}

bool DbfFile::isAsOpened() const {
  const Implementation& inside = *implementation_;
  dbf::RestingFile& rest = *implementation_->rest;
  return rest.isKnown() && *rest.last() == inside.opened && (rest.wasUnchanged() || rest.isUnchanged());
}

bool DbfFile::rests() const { return implementation_->rest->isUnchanged(); }

bool DbfFile::hasOwnClock() const { return implementation_->file->hasOwnClock(); }

int DbfFile::fieldIndex(std::string_view name) const {
  for (std::size_t i = 0; i < fields().size(); ++i) {
    const DbfField& field = fields()[i];
    if (field.name.size() != name.size() || field.system) continue;
    if (equalIgnoringCase(field.name, name)) return static_cast<int>(i);
  }
  return -1;
}

Value DbfFile::value(const unsigned char* record, std::size_t field) {
  Implementation& inside = *implementation_;
  const DbfField& stored = inside.field(field);
  if (dbf::isMemo(stored, inside.context)) return inside.memoText(record, stored);
  const char* reason = nullptr;
  Value result = dbf::decodeField(record, stored, inside.context, reason);
  if (reason != nullptr) inside.noteUnreadable(stored, reason);
  return result;
}

void DbfFile::put(unsigned char* record, std::size_t field, const Value& value) const {
  Implementation& inside = *implementation_;
  const DbfField& stored = inside.field(field);
  const bool blank = value.isNull() || (value.isText() && value.text().empty());
  if (blank || !dbf::isMemo(stored, inside.context) || !dbf::holdsAnyBlock(stored))
    return dbf::encodeField(record, stored, inside.context, value);
  inside.checkWritable(readOnly_, false);
  inside.putMemo(record, stored, value);
}

std::string DbfFile::cut(std::string_view text, std::size_t field) const {
  return implementation_->context.text.cut(text, static_cast<std::size_t>(implementation_->field(field).width));
}

std::vector<unsigned char> DbfFile::blankRecord() const {
  std::vector<unsigned char> record(static_cast<std::size_t>(recordLength_), ' ');
  const std::vector<DbfField>& fields = implementation_->header->fields;
  // The flags first: the other fields set theirs in them.
  for (const DbfField& field : fields) {
    if (field.type == '0') dbf::blankField(record.data(), field, implementation_->context);
  }
  for (const DbfField& field : fields) {
    if (field.type != '0') dbf::blankField(record.data(), field, implementation_->context);
  }
  return record;
}

}  // namespace vantrelix

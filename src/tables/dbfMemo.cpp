// Writing the texts of memo fields.
#include "foundation/extract.h"
#include "tables/DbfFileState.h"
#include "tables/memoCheck.h"
#include "tables/partnerFile.h"

namespace vantrelix {

MemoFile& DbfFile::Implementation::memoToWrite() {
  if (memoWriter) return *memoWriter;
  const dbf::MemoFormat format = dbf::memoFormatOf(header->version);
  if (format == dbf::MemoFormat::none) {
    refuse(
        "it has a memo field, but its version knows no memo file, so that other programs would not find the text. "
        "Save it as FoxPro with the program that made it");
  }
  const std::string partner = memoPartner(context.path, format == dbf::MemoFormat::foxpro);
  if (partner.empty()) refuse("its memo file is missing. Put it back beside the table");
  try {
    memoWriter = std::make_unique<MemoFile>(partner, dbf::memoKindOf(header->version), platform::OpenMode::readWrite);
  } catch (const RunTimeFailure& cause) {
    refuse("its memo file cannot be written. " + cause.description());
  }
  return *memoWriter;
}

// The text stands in the memo file before any row points to it; what a crash leaves between is a block without a row.
void DbfFile::Implementation::putMemo(unsigned char* record, const DbfField& field, const Value& value) {
  MemoFile& writer = memoToWrite();
  const std::string text = context.text.encode(value.asText());
  const std::uint32_t former = dbf::isNullByFlag(record, field, context) ? 0 : dbf::memoBlock(record, field);
  if (former != 0 && standsIn(writer, former, text)) return;
  const std::uint32_t block = writer.append(text);
  if (DbfFile::durable()) writer.sync();
  dbf::putMemoBlock(record, field, context, block);
}

bool DbfFile::Implementation::standsIn(MemoFile& memos, std::uint32_t block, std::string_view text) {
  try {
    return memos.find(block).length == text.size() && memos.read(block) == text;
  } catch (const RunTimeFailure&) {
    return false;  // what cannot be read is not that text
  }
}

void DbfFile::carry(unsigned char* record, std::size_t index, const Value& value, const unsigned char* from) const {
  Implementation& inside = *implementation_;
  const DbfField& field = inside.field(index);
  const std::uint32_t block = dbf::isMemo(field, inside.context) ? dbf::memoBlock(from, field) : 0;
  if (block == 0 || value.isNull()) return put(record, index, value);
  dbf::putMemoBlock(record, field, inside.context, block);
}

}  // namespace vantrelix

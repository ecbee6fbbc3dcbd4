// One dBase-family table file: its header, its records as bytes, and the locks that other programs honour.
//
// The file format, the damage it tolerates and the lock points are written down in docs/table-format.md. Nothing here
// knows queries or cursors. Records are numbered from 0. Record bytes begin with the deletion byte ('*' deleted, ' '
// live).
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Value.h"
#include "foundation/encoding.h"
#include "platform/Platform.h"

namespace vantrelix {

class MemoFile;

struct DbfField {
  std::string name;  // as stored, upper case in tables of ours
  char type = 'C';
  int width = 0;  // bytes in the record
  int decimals = 0;
  int offset = 0;       // of its first byte in the record; the deletion byte is 0
  int nullBit = -1;     // bit in the null-flags field, -1 where the field cannot be null by flag
  int lengthBit = -1;   // varying-length fields: bit that tells that the last byte holds the length
  bool system = false;  // the null-flags field itself: no field of the table to anyone above
};

// What a new table's field is made from.
struct DbfNewField {
  std::string name;  // at most 10 characters
  char type = 'C';   // C, N, F, L, D, M
  int width = 10;
  int decimals = 0;
};

enum class Sharing {
  shared,
  denyWrite,  // no other writer while this is open
  exclusive,  // nobody else while this is open
};

// Gets records in file order, deleted ones included; the bytes are valid during the call. Gives false to stop.
using RecordVisitor = std::function<bool(std::uint32_t number, const unsigned char* bytes)>;
// The same for `count` records from `first` on, which stand behind one another.
using BlockVisitor = std::function<bool(std::uint32_t first, const unsigned char* bytes, std::uint32_t count)>;

// A block of such records, for work in two steps (scanParts).
struct RowBlock {
  std::uint32_t first = 0;
  const unsigned char* bytes = nullptr;
  std::uint32_t count = 0;
  std::size_t part = 0;  // below DbfFile::kScanParts: no other block has it until this one is joined
};
// The first step, which may be made in another thread and for more than one block at a time; and the second one, in
// file order. Gives false to stop.
using BlockLook = std::function<void(const RowBlock& rows)>;
using BlockJoin = std::function<bool(const RowBlock& rows)>;

class DbfFile {
 public:
  // Opens the table that stands at the path. 3011 no such file, 3051 cannot be opened or held exclusively by another,
  // 3211 another denies writing, 3343 not a table or damaged beyond reading, each naming the file and the reason.
  static std::shared_ptr<DbfFile> open(std::string path, bool readOnly = false, Sharing sharing = Sharing::shared);
  // For a short look at a table that is opened again and again: opens it, shared, to be read only, as this process has
  // seen it at rest before. Quicker than open(), but what is read counts only where isAsOpened() tells so behind it.
  // Null where it was not seen so, and where the opening fails.
  static std::shared_ptr<DbfFile> openKnown(std::string path);

  // Makes a new empty table (version 0x03 and the mark of code page 1252; with a memo field version 0xF5 and its .FPT).
  // Written under a temporary name and renamed, replacing what is there, but for an .FPT: that one is taken, with its
  // texts, and 3343 where it cannot be read. Field names longer than 10 characters, doubled or empty, and widths that
  // the format cannot hold fail with 3163 or 51 before any file is touched.
  static void create(const std::string& path, const std::vector<DbfNewField>& fields);

  // For open() and openKnown() alone, which can make a Key.
  class Key {
    friend class DbfFile;
    Key() = default;
  };
  explicit DbfFile(Key key);
  ~DbfFile();
  DbfFile(const DbfFile&) = delete;
  DbfFile& operator=(const DbfFile&) = delete;

  const std::string& path() const;
  int version() const { return version_; }
  bool readOnly() const { return readOnly_; }
  // Whether its header says that an index belongs to it, which no change of it would keep up.
  bool hasStructuralIndex() const;
  const CodePage& codePage() const { return codePage_; }
  int recordLength() const { return recordLength_; }
  // Fields in table order, system fields included.
  const std::vector<DbfField>& fields() const { return *fields_; }
  // Index of the field of that name without regard to case, -1 where there is none. System fields are not found.
  int fieldIndex(std::string_view name) const;

  // The state of the open file, whatever stands at its path meanwhile.
  platform::FileState state() const;
  // The one in which its opening found it.
  const platform::FileState& openedState() const;
  // The state at rest in which it was last seen, and its records then (restingFile.h). Nothing is asked of the system:
  // what counts of it shows behind the next read of records, which ends it where the file has changed meanwhile.
  struct Rest {
    platform::FileState state;
    std::uint32_t records = 0;
  };
  std::optional<Rest> lastRest() const;
  // Whether it is in that state still.
  bool rests() const;
  // Whether it is at rest and was in the state of its opening behind the last read of records, or is now.
  bool isAsOpened() const;
  // Whether this machine's clock gives the file its times (platform::File::hasOwnClock).
  bool hasOwnClock() const;

  // Records in the file as it stands now: never more than header and file length both promise.
  std::uint32_t recordCount();

  // Copies a record's bytes; false where it is not in the file (any more). A record that is being written by another
  // program comes as it was before or after, never torn.
  bool readRecord(std::uint32_t number, unsigned char* bytes);
  // The same for `count` records from `number` on; gives how many of them are in the file.
  std::uint32_t readRecords(std::uint32_t number, std::uint32_t count, unsigned char* bytes);
  // Runs over all records in large reads, or over `count` of them from `first` on. True where none stopped it.
  bool scan(const RecordVisitor& visit, std::uint32_t first = 0, std::uint32_t count = UINT32_MAX);
  // The same, a read at a time.
  bool scanBlocks(const BlockVisitor& visit, std::uint32_t first = 0, std::uint32_t count = UINT32_MAX);
  // The same, each block looked at before it is joined; scanInParts.h tells what a look may do.
  static constexpr std::size_t kScanParts = 4;
  bool scanParts(const BlockLook& look, const BlockJoin& join, std::uint32_t first = 0,
                 std::uint32_t count = UINT32_MAX);

  // A field's value in a record. A character field keeps its trailing blanks; blank is null, but where the table has
  // null flags, which then decide. A number field that is blank or holds no number is null. Memo texts come from the
  // memo file.
  Value value(const unsigned char* record, std::size_t field);
  // Puts a value into record bytes. Text longer than the field, or a number whose whole part does not fit, fails with
  // 3163 and changes nothing; fewer decimals are written only where the whole part needs the room. Null and empty text
  // give a blank field (and the null flag where the table has one). A value of the wrong kind fails with 13. A field
  // type that cannot be written fails with 3027. The text of a memo field is written to the memo file at once, in
  // blocks of its own: 3027 where that cannot be, 3211 where another holds its lock for longer than lockWait().
  void put(unsigned char* record, std::size_t field, const Value& value) const;
  // The same for a value that was put into the bytes `from` before: a memo text is not written once more.
  void carry(unsigned char* record, std::size_t index, const Value& value, const unsigned char* from) const;
  // The longest start of the text that fits into the field, without splitting a character.
  std::string cut(std::string_view text, std::size_t field) const;
  // Bytes of an empty live record.
  std::vector<unsigned char> blankRecord() const;

  // Appends a record: header lock, record, end mark, then the count. Gives its number. 3211 where the lock is held by
  // another for longer than lockWait(); 3027 where the table is read-only or has an index or memo that this would leave
  // wrong; 3011 where its file was removed or replaced since it was opened.
  std::uint32_t append(const unsigned char* record);
  // Appends several records under one lock with one write of the rows, then one count.
  std::uint32_t append(const unsigned char* records, std::uint32_t count);
  // Keeps others from adding rows until endAdding(): what was made of the rows that are there, as the next ID is, still
  // holds when this object adds one. Others read and change rows meanwhile. Not twice at a time. 3211, 3027, 3011 as
  // append.
  void beginAdding();
  void endAdding();
  // Changes a record under its lock: `change` gets the bytes as they stand in the file now and may throw, which leaves
  // the file as it is. 3211, 3027, 3011 as append; 3167 where the record is deleted or gone.
  void update(std::uint32_t number, const std::function<void(unsigned char* record)>& change);
  void markDeleted(std::uint32_t number);
  // Takes the lock of a record and keeps it until release(): others read it meanwhile, but neither change nor hold it;
  // changes through this object go on. 3211, 3027 as append.
  void hold(std::uint32_t number);
  void release();

  // Milliseconds a write waits for another program's lock; 2000 unless set.
  static int lockWait();
  static void setLockWait(int milliseconds);
  // Whether every append, change and deletion is on the disk before it returns; not unless set. Where the disk fails at
  // that they fail with its number (57, 61): an append is taken back like any that fails; a change stands in the file
  // for every reader, but perhaps not on the disk.
  static bool durable();
  static void setDurable(bool durable);

 private:
  struct Implementation;
  void takeHeader();

  int version_ = 3;
  bool readOnly_ = false;
  CodePage codePage_;
  int recordLength_ = 1;
  std::shared_ptr<const std::vector<DbfField>> fields_;
  std::unique_ptr<Implementation> implementation_;
};

}  // namespace vantrelix

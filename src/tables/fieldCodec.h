// One field's value in a record's bytes, both ways. Private to the table-file sources.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/Value.h"
#include "foundation/extract.h"
#include "tables/DbfFile.h"
#include "tables/dbfText.h"

namespace vantrelix::dbf {

// What the fields of a table need to know of it.
struct FieldContext {
  std::string path;  // of its file
  TextCodec text = TextCodec();
  bool visual = false;       // of the family that keeps numbers in binary
  int nullFlagsOffset = -1;  // of the null-flags field in the record

  std::string displayName() const { return displayPath(path); }
};

bool isMemo(const DbfField& field, const FieldContext& context);
// The block that a memo field points to; 0 where it is blank or holds no number.
std::uint32_t memoBlock(const unsigned char* record, const DbfField& field);
// Makes a memo field of a width that holds any block point to that one.
void putMemoBlock(unsigned char* record, const DbfField& field, const FieldContext& context, std::uint32_t block);
bool holdsAnyBlock(const DbfField& field);
bool isNullByFlag(const unsigned char* record, const DbfField& field, const FieldContext& context);
// Whether the last byte of a field of varying length holds the length of its text.
bool hasLength(const unsigned char* record, const DbfField& field, const FieldContext& context);

// The value of a field that is no memo. Where its type cannot be read the value is null and `reason` is set.
Value decodeField(const unsigned char* record, const DbfField& field, const FieldContext& context, const char*& reason);

// Puts a value; throws as DbfFile::put tells and then leaves the bytes as they are.
void encodeField(unsigned char* record, const DbfField& field, const FieldContext& context, const Value& value);

// Makes the field blank: null where it can be null by flag.
void blankField(unsigned char* record, const DbfField& field, const FieldContext& context);

}  // namespace vantrelix::dbf

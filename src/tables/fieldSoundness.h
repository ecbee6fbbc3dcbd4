// Whether the bytes of a field are a value of its type. Private to the check and the recovery of tables.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "tables/fieldCodec.h"
#include "tables/tableFaults.h"

namespace vantrelix::dbf {

// Whether a field's width is one that its type can have.
bool isWidthOfType(const DbfField& field, const FieldContext& context);
// Texts, pictures and objects alike.
bool pointsToMemo(const DbfField& field, const FieldContext& context);

struct Unsound {
  FaultKind kind;
  std::size_t at;  // of the first byte in question, from the start of the field
};

class Soundness {
 public:
  // The fields with their places in the record, and their flags. All three must outlive it.
  Soundness(const FieldContext& context, const std::vector<DbfField>& fields, const std::vector<unsigned char>& flags);

  // What is wrong with the bytes of a field; nothing where they are a value of its type or blank.
  std::optional<Unsound> faultOf(const unsigned char* record, std::size_t index) const;
  // How much of the record looks like a row, from 0 to 1: half of it is the deletion byte.
  double likeness(const unsigned char* record) const;
  // Whether the record begins as a row does and most of its values, odd ones among them, are of bytes that such fields
  // hold.
  bool isLikeRow(const unsigned char* record) const;

 private:
  std::optional<bool> isLikeField(const unsigned char* record, std::size_t index) const;
  std::optional<Unsound> textFault(const unsigned char* record, std::size_t index) const;
  std::size_t unknownByte(std::string_view bytes) const;
  bool isOpenByte(unsigned char byte) const;

  const FieldContext& context_;
  const std::vector<DbfField>& fields_;
  const std::vector<unsigned char>& flags_;
  enum class Byte : unsigned char { notLookedAt, known, open };
  mutable std::array<Byte, 256> bytes_{};  // of a page of single bytes
};

}  // namespace vantrelix::dbf

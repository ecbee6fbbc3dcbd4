// The bytes of texts as they stand in a table's records. Private to this layer.
#pragma once

#include <string_view>
#include <vector>

#include "tables/fieldCodec.h"

namespace vantrelix::dbf {

class TextBytes {
 public:
  // `all` are the table's fields.
  explicit TextBytes(const std::vector<DbfField>& all);

  static bool isText(const DbfField& field) { return field.type == 'C' || field.type == 'V'; }

  // What a text field holds, undecoded; nothing where it is null by flag. Of a fixed width with its padding, and with
  // what may stand behind a NUL.
  std::string_view of(const unsigned char* record, const DbfField& field) const;

 private:
  FieldContext context_;
};

}  // namespace vantrelix::dbf

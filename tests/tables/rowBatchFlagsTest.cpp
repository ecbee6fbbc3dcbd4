#include <gtest/gtest.h>

#include "foundation/text.h"
#include "support/TempFolder.h"
#include "tables/Database.h"
#include "tables/DbfBytes.h"
#include "tables/RowBatch.h"

namespace vantrelix {
namespace {

// Whether a text is null or fills its field stands as one bit each in a byte that all fields share.
TEST(RowBatch, PutsAValueIntoAllRowsOfATableWithNullFlags) {
  const test::TempFolder folder;
  const test::RawTable flags{.version = 0x30,
                             .fields = {{"A", 'C', 4, 0, 2}, {"B", 'V', 4}, {"_NullFlags", '0', 1, 0, 5}}};
  folder.write("N.DBF", flags.bytes());
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  const RecordsetPtr rows = database->OpenRecordset("select * from N");
  RowBatch batch(*rows);
  for (const char* before : {"", "b", "full"}) {
    batch.AddNew();
    batch.put(rows->Fields("B"), before);
    batch.Update();
  }
  batch.putAll(rows->Fields("B"), "c");
  batch.flush();
  batch.AddNew();
  batch.Update();
  batch.putAll(rows->Fields("A"), "a");
  batch.flush();
  rows->MoveFirst();
  for (const char* a : {"", "", "", "a"}) {
    const Value stored = rows->value("A");
    EXPECT_EQ(stored.isNull(), *a == '\0');
    EXPECT_EQ(stored.isNull() ? "" : trim(stored.asText()), a);
    EXPECT_EQ(rows->value("B"), Value(*a == '\0' ? "c" : ""));
    rows->MoveNext();
  }
  EXPECT_TRUE(rows->Eof());
}

}  // namespace
}  // namespace vantrelix

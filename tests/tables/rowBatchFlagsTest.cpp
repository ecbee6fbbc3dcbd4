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
                             .fields = {{"A", 'C', 4, 0, 2}, {"B", 'V', 4, 0, 2}, {"_NullFlags", '0', 1, 0, 5}}};
  folder.write("N.DBF", flags.bytes());
  const DatabasePtr database = DBEngine::OpenDatabase(folder.path());
  const RecordsetPtr rows = database->OpenRecordset("select * from N");
  RowBatch batch(*rows);
  for (const bool first : {true, false}) {
    batch.AddNew();
    if (first) batch.put(rows->Fields("A"), "a");
    if (!first) batch.put(rows->Fields("B"), "b");
    batch.Update();
  }
  batch.putAll(rows->Fields("B"), "c");
  batch.flush();
  rows->MoveFirst();
  EXPECT_EQ(trim(rows->value("A").asText()), "a");
  EXPECT_EQ(trim(rows->value("B").asText()), "c");
  rows->MoveNext();
  EXPECT_TRUE(rows->value("A").isNull());
  EXPECT_EQ(trim(rows->value("B").asText()), "c");
}

}  // namespace
}  // namespace vantrelix

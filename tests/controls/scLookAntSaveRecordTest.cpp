// What saving a record tells where a control cannot give a value.
#include "controls/RecordFixture.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix {
namespace {

// A record of three values, the last of which cannot be given.
class RecordOfValues : public test::RecordTest {
 protected:
  RecordOfValues() {
    add("File", FacilityValue::Kind::text, file, [] { return Value("LIB"); });
    add("ID", FacilityValue::Kind::number, id, [] { return Value("far"); });
    add("Fault", FacilityValue::Kind::text, fault, [this]() -> Value {
      if (foreign) throw std::bad_alloc();
      throw RunTimeFailure(failure::overflow, "no value");
    });
    const auto hook = std::make_shared<IOHooksINI>();
    hook->iniFile(ini);
    master(hook);
  }
  struct Slots {
    DBFSlot dbf;
    INISlot ini;
  };
  void add(const char* name, FacilityValue::Kind kind, Slots& slots, std::function<Value()> get) {
    values.add({name,
                name,
                name,
                name,
                kind,
                FacilityValue::none,
                {},
                nullptr,
                nullptr,
                &slots.dbf,
                &slots.ini,
                std::move(get),
                [](const Value&) {}});
  }

  INIMaster master;
  Slots file, id, fault;
  FacilityRecord values{master, {"table", "keys", "all"}};
  bool foreign = false;
};

TEST_F(RecordOfValues, TellsWhatWasLeftOutBeforeAFailure) {
  EXPECT_EQ(values.Save(), "keys\r\nField: Fault Value: far Non-Numeric Value Error: 6 no value");
}

TEST_F(RecordOfValues, TellsAFailureOfAnotherKindUnderTheWholeSave) {
  foreign = true;
  EXPECT_EQ(values.Save(), "all\r\nError 51: std::bad_alloc");
}

TEST_F(RecordOfValues, TellsAFailureOfAnotherKindBehindThatOfTheTable) {
  id.dbf(std::make_shared<IOHooksDBF>());
  foreign = true;
  EXPECT_EQ(values.Save(),
            "table\r\nField:  Value: LIB Error: 91 HookDBFFile is not set. Put a hook there first.\r\n\r\n"
            "all\r\nError 51: std::bad_alloc");
}

}  // namespace
}  // namespace vantrelix

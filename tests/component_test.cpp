// The library as a component: registration, construction, destruction, the message entry.
#include "global_data.hpp"
#include "live_pm.hpp"

namespace {
constexpr auto make = PM_LibConstructProc;
constexpr auto destroy = PM_LibDestructProc;

struct Component : test::LivePm {
  void SetUp() override {
    instance = node.root.add(7);
    scope.emplace(*instance);
  }
};

TEST_F(Component, RegistersItselfAndTheSpecificationWhateverFails) {
  node.faults.fail_nth(Fn::ROOT_LibCompRegisterInfo, 1, 0x77);
  EXPECT_EQ(host_calls({Fn::DDM_RegisterSpecAppInfo},
                       [&] { expect(PM_LibRegisterInfo(), 0x77, {0x77}); }),
            Lines{"DDM_RegisterSpecAppInfo(54, PM_LibSpecUpdate) = 0"});
  node.faults.fail_nth(Fn::strncpy_s, 1, 0x44);
  node.faults.fail_nth(Fn::DDM_RegisterSpecAppInfo, 1);
  expect({PM_LibRegisterInfo(), PM_LibRegisterInfo()}, {0, 0}, {0x44});
  static const RootCompRegisterInfo expected = {
      54, "PM_lib", PM_LibConstructProc, PM_LibDestructProc, PM_LibMsgProcEntry, 0, 0};
  EXPECT_TRUE(test::same(*node.root.component(PM_COMP_TYPE), expected));
}

TEST_F(Component, CreationMakesAClearedRecordAndDestructionGivesItsHandleBack) {
  node.faults.fail_nth(Fn::ROOT_LibCompLocalCreate, 1);
  node.faults.fail_nth(Fn::ROOT_LibCompHandleInit, 1, 0x55);
  expect({make(0, 0xABCD, 7, 9), make(0, 0xABCD, 7, 9)}, {1, 1}, {7, 0x55});
  PmGlobalData expected{};
  expected.ulConstructPara = 0xABCD;
  expected.ulCid = 7;
  ASSERT_EQ(instance->local_size, sizeof expected);
  EXPECT_TRUE(test::same(*pm::current_data(), expected));
  instance->local_data.reset();
  expect({make(0, 0xABCD, 7, 9), make(1, 5, 5, 5), make(2, 5, 5, 5)}, {0, 0, 0}, {});
  expect({make(3, 5, 5, 5), make(99, 5, 5, 5)}, {1, 1}, {3, 99});
  PmGlobalData *data = pm::current_data();
  expected.ulCompHandle = instance->handles.at(0);
  EXPECT_TRUE(test::same(*data, expected));
  node.faults.fail_nth(Fn::ZEL_HandleFinalize, 1, 0x66);
  expect({destroy(nullptr), destroy(data), destroy(data)}, {1, 1, 0}, {1, 0x66});
}

TEST_F(Component, AMessageGoesByItsInterfaceIdentifier) {
  EXPECT_EQ(make(0, 0, 7, 0), PM_OK);
  const auto answer = [&](u32 iid) {
    host::MessageHeader message{iid};
    return PM_LibMsgProcEntry(&message, pm::current_data());
  };
  // The dispatcher knows the instance and no PID of it.
  expect({answer(3), answer(4), answer(5), answer(31), answer(32),
          PM_LibMsgProcEntry(nullptr, nullptr), PM_LibProcTulviIIDMsg(4, instance, nullptr)},
         {22, host::code_unknown, 22, 22, 0, 1, 22}, {});
}
}  // namespace

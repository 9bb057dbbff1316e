// FID start-up, the phases of the PID, and the product's hooks.
#include "global_data.hpp"
#include "live_pm.hpp"

namespace {
constexpr u32 failed = 0x77;
test::Values hooked;  // what hooks were called with, and what they answer
u32 answer = PM_OK;

struct Start : test::LivePm {
  void SetUp() override {
    publish_spec();
    construct();
    hooks.pfnPhaseProc = [](u32 phase) { return hooked.push_back(phase), answer; };
    settle();
  }
  PmProductMngt hooks{};
  u32 enroll() { return PM_LibRegProductMngtFuncProc(&hooks); }
  u32 enroll_own() { return PM_LibRegInstProductMngtFuncProc(&hooks); }
  PmGlobalData &data() { return *static_cast<PmGlobalData *>(instance->record.pLocalData); }
  u32 error_switch() { return data().astDbgSwitch[PM_SWITCH_ERROR].ulValue; }
};

TEST_F(Start, TheFidStartUpRegistersTheLibraryAndTheSubLinesOfTheProduct) {
  trace(PM_SWITCH_ERROR);
  PmSubLineInfo sub_lines[2] = {};
  sub_lines[0].ulPID = 100;
  sub_lines[1].usPtpType = 1;
  sub_lines[1].ulPID = 101;
  hook_sub_lines({sub_lines[0], sub_lines[1]});
  EXPECT_EQ(host_calls({}, [] { EXPECT_EQ(PM_FidInitProc(1), PM_OK); }), Lines{});
  EXPECT_EQ(host_calls({Fn::KVT_RegisterPIDInfo, Fn::KVT_RegisterMsgTaskPrio},
                       [] { EXPECT_EQ(PM_FidInitProc(0), PM_OK); }),
            (Lines{"KVT_RegisterPIDInfo(54, PM_LibPidInitProc, PM_LibMsgProc) = 0",
                   "KVT_RegisterMsgTaskPrio(99, 8) = 0", "KVT_RegisterPIDInfo(100, null, null) = 0",
                   "KVT_RegisterPIDInfo(101, null, null) = 0"}));
  EXPECT_EQ(error_switch(), 0U);
  expect(PM_FidInitProc(0), PM_OK, {});
}

TEST_F(Start, AFailedStepOfTheFidStartUpEndsItAndShowsOnlyInPrintAndRecords) {
  const std::string start = "\r\n PM_LibFidInitProc", code = " fail, ulRet = 0x77";
  trace(PM_SWITCH_ERROR);
  node.faults.fail_nth(Fn::KVT_RegisterPIDInfo, 1, failed);
  expect(PM_FidInitProc(0), PM_OK, {failed}, {start + "-->KVT_RegisterPIDInfo" + code});
  EXPECT_TRUE(node.root.message_tasks().empty());
  node.faults.fail_nth(Fn::KVT_RegisterMsgTaskPrio, 1, failed);
  expect(PM_FidInitProc(0), PM_OK, {failed}, {start + "-->KVT_RegisterMsgTaskPrio" + code});
  hooks.pfnZelCfg = [] { return failed; };
  expect({enroll(), PM_FidInitProc(0)}, {PM_OK, PM_OK}, {failed, failed},
         {start + "ForMC-->PM_ZelCfg" + code, start + "-->PM_LibFidInitProcForMC" + code});
  EXPECT_EQ(error_switch(), 1U);
}

TEST_F(Start, EachPhaseDoesItsWorkAndThenCallsTheHook) {
  const auto entered = [](const char *phase) {
    return std::string("PM_LibPidInitProc-> \t enPhase=0x") + phase + " ";
  };
  expect({PM_LibPidInitProc(5), enroll()}, {PM_OK, PM_OK}, {}, {entered("5")});
  node.faults.fail_nth(Fn::DDM_LibSubscribe, 2, failed);
  std::string order;
  for (const std::string &call : host_calls({Fn::DEV_LibPrintf, Fn::ZEL_MemAlloc_F,
                                             Fn::DDM_LibSubscribe, Fn::ROOT_LibSrvmPubishSapi},
                                            [] { PM_LibPidInitProc(1); })) {
    order += call[0];
  }
  EXPECT_EQ(order, "DZZDDDDDDRRD");
  expect(0, 0, {failed, cid}, {entered("1"), "PM_LibPidInitProc-> \t PM_ScribeClass ulRet=119 "});
  answer = 7;
  expect({PM_LibPidInitProc(2), PM_LibPidInitProc(9)}, {7, 7}, {2, 7, 9, 7},
         {entered("2"), entered("9")});
  EXPECT_TRUE(data().astDbwinCmd[0].pfnHandler != nullptr);
  node.faults.fail_nth(Fn::SYN_LibRegisterModuleDataSynInfo, 1, failed);
  expect({PM_LibPidInitProc(8), PM_LibPidInitProc(8)}, {failed, 7}, {failed, failed, 8, 7},
         {entered("8"), entered("8")});
  EXPECT_EQ(node.debug.lines().back().selector, 0x8000U);
  EXPECT_EQ(hooked, (Values{1, 2, 9, 8}));
}

TEST_F(Start, APhase1WithoutMemoryStopsBeforeTheSubscriptions) {
  EXPECT_EQ(enroll(), PM_OK);
  const auto expect_failed = [&](host::Partition partition, u32 code, const Values &recorded) {
    node.memory.fail_nth(partition, 1);
    EXPECT_EQ(PM_LibPidInitProc(1), code);
    EXPECT_EQ(node.errors.values_since(), recorded);
    EXPECT_TRUE(node.ddm.subscriptions(cid).empty() && hooked.empty());
    node.errors.clear();
  };
  expect_failed(host::partition_block, PM_ERR_MEM_OPER,
                {sizeof(PmSubAttrCB), PM_ERR_PARA, PM_ERR_MEM_OPER});
  EXPECT_EQ(node.memory.use(host::partition_static).requests, 0U);
  expect_failed(host::partition_static, PM_ERR_MALLOC, Values(3, PM_ERR_MALLOC));
}

TEST_F(Start, HooksAreCalledWithTheirWordsAndEmptySlotsAnswered) {
  using Door = u32 (*)(PmWord, PmWord);
  const std::pair<Door, Door PmProductMngt::*> doors[] = {
      {PM_LibPltOperCheckRegister, &PmProductMngt::pfnOperCheckRegister},
      {PM_LibPltRegisterPtpCapAttrInitFunc, &PmProductMngt::pfnRegisterPtpCapAttrInitFunc},
      {PM_LibPltSetInstanceDynAttributeDefaultValue,
       &PmProductMngt::pfnSetInstanceDynAttributeDefaultValue}};
  for (const auto &[door, slot] : doors) {
    hooks = {};
    expect({enroll(), door(3, 4)}, {PM_OK, PM_ERR_PARA}, {PM_ERR_PARA});
    hooks.*slot = [](PmWord word1, PmWord word2) { return static_cast<u32>(16 * word1 + word2); };
    expect({enroll(), door(3, 4)}, {PM_OK, 0x34}, {});
  }
  expect({PM_LibPltZelCfg(), PM_LibRegProductMngtFuncProc(nullptr)}, {PM_OK, PM_ERR_PARA}, {0});
}

TEST_F(Start, TheEventHookOfTheProcessIsFollowedByThatOfTheInstance) {
  node.memory.fail_nth(host::partition_block, 1);
  expect({PM_LibPltEventRegister(), enroll_own(), enroll_own()}, {PM_OK, PM_ERR_MALLOC, PM_OK},
         {PM_ERR_MALLOC});
  hooks.pfnEventRegister = [] { return hooked.push_back(5), 5U; };
  expect({enroll(), PM_LibPltEventRegister()}, {PM_OK, PM_OK}, {5});
  hooks.pfnEventRegister = [] { return hooked.push_back(6), 6U; };
  expect({enroll_own(), PM_LibPltEventRegister()}, {PM_OK, 6}, {5, 6});
  hooks.pfnEventRegister = [] { return hooked.push_back(7), 0U; };
  expect({enroll(), PM_LibPltEventRegister()}, {PM_OK, 6}, {6});
  expect({enroll_own(), PM_LibPltEventRegister()}, {PM_OK, PM_OK}, {});
  EXPECT_EQ(std::exchange(hooked, {}), (Values{5, 5, 6, 7, 6, 7, 7}));
  EXPECT_EQ(node.memory.live().size(), 1U);
  expect(PM_LibRegInstProductMngtFuncProc(nullptr), PM_ERR_PARA, {PM_ERR_PARA});
  scope.emplace(node);
  expect({enroll_own(), PM_LibPltEventRegister()}, Values(2, PM_ERR_PARA), Values(2, PM_ERR_PARA));
  EXPECT_TRUE(hooked.empty());
}
}  // namespace

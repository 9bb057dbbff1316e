// Port types: the registration of their sub-lines, their tables, and the lookups in both.
#include "global_data.hpp"
#include "live_pm.hpp"

namespace {

using Types = std::vector<u16>;

constexpr u32 none = PM_ERR_PTPTYPE_INVALID, no_suffix = PM_ERR_SUFFIX_INVALID;
constexpr u32 node_size = sizeof(PmSubInfoNode), cb_size = sizeof(PmSubAttrCB),
              infos_size = 3 * sizeof(PmSubInnerSubInfo),
              table_size = 3 * sizeof(PmSubCallBackEntry);

// Neighbouring bytes differ, so that no two words or slots are alike.
PmSubLineInfo sub_line(u16 type, u32 pid = PM_PID_NONE) {
  PmSubLineInfo info;
  for (u32 i = 0; i < sizeof info; ++i) {
    reinterpret_cast<u8 *>(&info)[i] = static_cast<u8>(i + type);
  }
  info.usPtpType = type;
  info.ulPID = pid;
  return info;
}

u32 add(u16 type, u32 pid = PM_PID_NONE) {
  const PmSubLineInfo info = sub_line(type, pid);
  return PM_LibRegSubLineInfo(&info);
}

class SubLine : public test::LivePm {
 protected:
  void SetUp() override {
    construct();
    start_fid();
  }
  PmGlobalData &data() { return *static_cast<PmGlobalData *>(instance->record.pLocalData); }
  static Types registered() {
    Types types;
    for (PmSubInfoNode *at = nullptr; PM_LibLibCfgGetNextSubInfoNode(at, &at) == PM_OK;) {
      types.push_back(at->stInfo.usPtpType);
    }
    return types;
  }
  // Takes the number of port types, and makes the tables unless they are there.
  void create(u16 port_types) {
    publish_spec({.port_types = port_types, .max_type_value = 2000});
    expect({PM_LibPtpNumSpecInit(), PM_LibMallocSubAttrGlobalVar()}, Values(2), {});
    infos = data().pstSubAttrCB->pstSubInnerSubInfo;
    table = data().pstSubCallBack;
  }
  void expect_filled(const Types &types) {
    expect(PM_LibSubInnerSubInfoInit(), PM_OK, {});
    for (std::size_t i = 0; i < types.size(); ++i) {
      PmSubCallBackEntry expected{};
      if (types[i] != 0) {
        expected = {types[i], sub_line(types[i]).stCallBack, 0};
        expected.stCallBack.pfnGetReplaceType = nullptr;
      }
      EXPECT_TRUE(test::same(table[i], expected)) << i;
    }
  }
  u32 suffix_of(u16 type) { return PM_LibGetLogicPtpType(type, &suffix); }
  u32 info_at(u16 at) { return PM_LibGetSubInfoFromSuffix(at, &info); }
  u32 info_of(u16 type) { return PM_LibGetSubInfo(type, &info, &entry); }
  u32 entry_of(u16 type) { return PM_LibGetSubFuncFromPtpType(type, &entry); }
  // What the lookups answer about a type and about a suffix.
  Values codes(u16 type, u16 at) {
    return {PM_LibIsPtpTypeValid(type), suffix_of(type), info_of(type), entry_of(type),
            info_at(at)};
  }
  // How often the watchdog has been fed since it was last asked.
  auto feeds() { return node.watchdog.feeds() - std::exchange(fed, node.watchdog.feeds()); }

  std::uint64_t fed = 0;
  u16 suffix = 0xAAAA;
  PmSubInnerSubInfo *infos = nullptr, *info = nullptr;
  PmSubCallBackEntry *table = nullptr, *entry = nullptr;
};

TEST_F(SubLine, RegistrationsAreKeptInOrderUntilTheNextFidStart) {
  expect({add(3), add(9), add(7, 7)}, Values(3), {});
  EXPECT_EQ(registered(), (Types{3, 9, 7}));
  PmSubLineInfo expected = sub_line(7, 7);
  expected.stCallBack.pfnGetReplaceType = nullptr;
  EXPECT_TRUE(test::same(data().pstSubInfoTail->stInfo, expected));
  start_fid();
  EXPECT_EQ(registered(), Types{});
  u16 num = 0;
  expect({add(7), PM_LibCfgGetPtpTypeNum(&num)}, Values(2), {});
  EXPECT_EQ(registered(), Types{7});
  EXPECT_EQ(num, 1);
}

TEST_F(SubLine, RefusedRegistrationsLeaveTheListAlone) {
  const std::string invalid = "\r\n PM_LibRegSubLineInfo-->PM_LibCfgIsInputValid fail, ulRet = 0x";
  const std::string type = "PM_LibCfgIsInputValid fail, PTP type 7 has registered";
  // The first node that conflicts decides, not the first kind of conflict.
  expect({add(7, 100), add(9), add(7, 100), add(7, 101), add(9, 100)},
         {0, 0, PM_ERR_TYPE_REGISTERED, PM_ERR_TYPE_REGISTERED, PM_ERR_PID_CONFLICT}, {7, 7, 7, 9},
         {type, invalid + "6908b8", type, invalid + "6908b8",
          "PM_LibCfgIsInputValid fail, PID 100 has registered conflict PID of PTP type is 7",
          invalid + "6908be"});
  expect(PM_LibRegSubLineInfo(nullptr), PM_ERR_PARA, {},
         {"\r\n PM_LibCfgIsInputValid fail, input pointer is null", invalid + "689380"});
  node.memory.fail_nth(host::partition_dynamic, 1);
  expect(add(11), PM_ERR_MALLOC, {node_size, PM_ERR_MALLOC, 11},
         {"\r\n PM_LibCfgAddSubInfoNode fail, malloc memory fail",
          "\r\n PM_LibRegSubLineInfo-->PM_LibCfgAddSubInfoNode fail, ulRet = 0x689385, "
          "usPtpType = 11"});
  EXPECT_EQ(registered(), (Types{7, 9}));
  expect({PM_LibCfgAddSubInfoNodeToCB(nullptr), add(11)}, Values(2), {});
  EXPECT_EQ(registered(), (Types{7, 9, 11}));
}

TEST_F(SubLine, PidsAreRegisteredOneByOneAsFarAsTheCountGoes) {
  for (const u32 pid : {100U, PM_PID_NONE, 101U}) {
    PmSubLineInfo registration = sub_line(static_cast<u16>(pid), pid);
    registration.pfnInitFunc = reinterpret_cast<KvtPidInitFunc>(PmWord{4});
    registration.pfnMainProc = reinterpret_cast<KvtPidMsgFunc>(PmWord{8});
    EXPECT_EQ(PM_LibRegSubLineInfo(&registration), PM_OK);
  }
  Lines calls = {"KVT_RegisterPIDInfo(100, fn#1, fn#2) = 0x77 [fault]",
                 "KVT_RegisterPIDInfo(101, fn#1, fn#2) = 0"};
  for (; !calls.empty(); calls.pop_back()) {
    node.faults.fail_nth(Fn::KVT_RegisterPIDInfo, 1, 0x77);
    EXPECT_EQ(host_calls({Fn::KVT_RegisterPIDInfo}, PM_LibCfgRegSubLinePid), calls);
    expect(Values{}, {}, {0x77, 100},
           {"\r\n PM_LibCfgRegSubLinePid-->KVT_RegisterPIDInfo fail ulRet = 119, PID = 100, "
            "pfnInitFunc = 0x4, pfnMainProc = 0x8"});
    data().usPtpTypeNum = 1;
  }
  expect({PM_LibCfgRegSubLinePid(), add(101)}, Values(2), {});
}

TEST_F(SubLine, EachTableIsAllocatedOnceAndAFailureIsRetried) {
  const std::string no_table =
      "\r\n PM_LibMallocSubCallBack fail, malloc static memory fail, pstPtpDynPubData = ";
  const u32 mark = node.memory.mark();
  expect(codes(1, 0), {none, PM_ERR_DATA_INVALID, none, none, no_suffix}, {1, 1, 1, 0});
  expect({PM_LibMallocSubAttrGlobalVar(), PM_LibMallocSubCallBack(), PM_LibGetPtpMaxTypeValue()},
         {PM_ERR_SIZE_ZERO, PM_ERR_MALLOC, 0}, {0}, {no_table + "0"});
  node.memory.fail_nth(host::partition_block, 1);
  expect(
      PM_LibPtpNumSpecInit(), PM_ERR_MEM_OPER, {cb_size, PM_ERR_PARA},
      {"\r\n PM_LibMallocForSubAttrCB malloc memory fail, pointer = " + std::to_string(cb_size)});
  expect({PM_LibMallocForSubAttrCB(), PM_LibMallocForSubAttrCB(), PM_LibMallocSubAttrGlobalVar()},
         {0, 0, PM_ERR_SIZE_ZERO}, {});
  publish_spec({.port_types = 3, .max_type_value = 40});
  expect({PM_LibPtpNumSpecInit(), PM_LibGetPtpMaxTypeValue()}, {0, 40}, {});
  expect(codes(1, 0), {none, none, none, none, no_suffix}, {1, 1, 1, 3});
  node.memory.fail_nth(host::partition_block, 1);
  expect(PM_LibMallocSubAttrGlobalVar(), PM_ERR_MALLOC, {infos_size},
         {"\r\n PM_MallocSubAttrInit malloc memory fail, ulSize = " + std::to_string(infos_size)});
  node.memory.fail_nth(host::partition_static, 1);
  expect(PM_LibMallocSubAttrGlobalVar(), PM_ERR_MALLOC, {table_size, PM_ERR_MALLOC},
         {no_table + std::to_string(table_size)});
  // A table of one entry pairs with the first record only.
  create(1);
  create(3);
  EXPECT_EQ(node.memory.mark(), mark + 3);
  infos->usPtpType = 1;
  expect(codes(0, 2), Values(5), {});
  EXPECT_EQ(std::tie(suffix, entry), std::make_tuple(1, table));
  expect(info_of(0), PM_OK, {});
  EXPECT_EQ(entry, nullptr);
  EXPECT_TRUE(test::same(*info, PmSubInnerSubInfo{}));
  const auto outside = host::enter(node);
  expect(codes(0, 0), Values(5, PM_ERR_PARA), Values(5, PM_ERR_PARA));
}

TEST_F(SubLine, TheCallbackTableIsFilledInOrderAndKeepsItsSize) {
  expect({add(7), add(9)}, Values(2), {});
  create(3);
  expect_filled({7, 9, 0});
  const auto calls = host_calls({Fn::ZEL_MemFree}, PM_LibCfgReleaseMem);
  EXPECT_THAT(calls, testing::Each(testing::StartsWith("ZEL_MemFree(54, block#")));
  EXPECT_EQ(calls.size(), 2U);
  // What follows is not linked behind the released tail; what was released stays counted.
  expect({add(3), add(4), add(5), add(6), PM_LibPtpTypeNumInit()}, Values(5), {});
  EXPECT_EQ(data().pstSubAttrCB->usPtpTypeNum, 6);
  expect_filled({3, 4, 5});
  expect(codes(8, 3), {none, none, none, none, no_suffix}, {8, 8, 8, 6});
  create(1);
  EXPECT_EQ(PM_LibCfgReleaseMem(), PM_OK);
  EXPECT_EQ(registered(), (Types{4, 5, 6}));
  expect_filled({4, 4, 5});
  expect(codes(5, 1), {none, none, none, none, no_suffix}, {5, 5, 5, 1});
}

TEST_F(SubLine, TheFirstPositionOfATypeAnswers) {
  expect({add(7), add(9)}, Values(2), {});
  create(4);
  expect_filled({7, 9});
  for (PmSubInnerSubInfo *next = infos; const u16 type : Types{7, 30, 9, 7}) {
    (next++)->usPtpType = type;
  }
  expect({PM_LibGetSubInfo(7, &info, nullptr), PM_LibGetSubInfo(7, nullptr, &entry),
          PM_LibGetSubInfoFromSuffix(0, nullptr), PM_LibGetSubFuncFromPtpType(7, nullptr),
          PM_LibGetSubFunc(7, nullptr), PM_LibGetSubFuncFromPTP(17, nullptr)},
         Values(6, PM_ERR_PARA),
         {PM_ERR_PARA, PM_ERR_PARA, PM_ERR_PARA, PM_ERR_PARA, PM_ERR_PARA, 17});
  trace(PM_SWITCH_FUNCTION);
  const std::string absent = "not find the ptp type, usPtpType = ",
                    by_entry = "Enter PM_LibGetSubFuncFromPtpType, usPtpType = ";
  expect(
      {PM_LibIsPtpTypeValid(9), PM_LibIsPtpTypeValid(8)}, {0, none}, {},
      {"Enter PM_LibIsPtpTypeValid, ucPortType = 9", "Enter PM_LibIsPtpTypeValid, ucPortType = 8"});
  expect({suffix_of(7), suffix_of(2000), suffix_of(2001), PM_LibGetLogicPtpType(7, nullptr)},
         {0, none, PM_ERR_DATA_INVALID, PM_ERR_DATA_INVALID}, {2000, 2001, 7}, {absent + "2000"});
  expect(info_at(3), PM_OK, {});
  EXPECT_EQ(std::tie(suffix, info), std::make_tuple(0, infos + 3));
  // Record and entry are paired by position; only its own search asks for the entry's own type.
  expect({info_of(30), info_of(8), entry_of(30)}, {0, none, none}, {8, 30},
         {"Enter PM_LibGetSubInfo, usPtpType = 30", "Enter PM_LibGetSubInfo, usPtpType = 8",
          absent + "8", by_entry + "30", absent + "30"});
  EXPECT_EQ(std::tie(info, entry), std::make_tuple(infos + 1, table + 1));
  expect(entry_of(0), PM_OK, {}, {by_entry + "0"});
  EXPECT_EQ(entry, table + 2);
  trace(PM_SWITCH_FUNCTION, false);
  trace(PM_SWITCH_DATA);
  expect(info_at(4), no_suffix, {4},
         {"PM_LibGetSubInfoFromSuffix fail, input suffix is invalid, usSuffix = 4"});
}

TEST_F(SubLine, LongWalksFeedTheWatchdog) {
  create(1026);
  feeds();
  for (u16 num = 0; num < 513; ++num) {
    EXPECT_EQ(add(num + 100), PM_OK);
    ASSERT_EQ(feeds(), (num + 127U) / 128) << num;
  }
  EXPECT_EQ(PM_LibSubAttrInit(), PM_OK);
  EXPECT_EQ(feeds(), 2U);
  for (const u16 at : Types{510, 511, 512, 1022, 1023, 1024}) {
    infos[at].usPtpType = at;
    expect({PM_LibIsPtpTypeValid(at), info_of(at)}, Values(2), {});
    EXPECT_EQ(feeds(), 2 * (at / 512 + 1U));
    // This one feeds a position early, behind the comparison.
    EXPECT_EQ(suffix_of(at), PM_OK);
    EXPECT_EQ(feeds(), (at + 1U) / 512);
    EXPECT_EQ(suffix, at);
  }
  EXPECT_EQ(entry_of(5), none);
  EXPECT_EQ(feeds(), 3U);
  for (const u32 passes : {2U, 3U}) {
    EXPECT_EQ(PM_LibCfgReleaseMem(), PM_OK);
    EXPECT_EQ(feeds(), passes);
  }
}

}  // namespace

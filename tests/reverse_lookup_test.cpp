// From class and indexes to the PTP ID.
#include "live_pm.hpp"

namespace {

using ReverseLookup = test::LivePm;
constexpr u32 para = PM_ERR_PARA, invalid = PM_ERR_DATA_INVALID, absent = PM_ERR_PTP_NOT_EXIST;
constexpr u16 x = 0xAAAA;  // in an output: not written

TEST_F(ReverseLookup, AnswersAreCachedAndCheckedBeforeTheyAreGiven) {
  up();
  PtpDynPubData record = {100, 7, 1, 1, 7, 0, 0, 0, 1};
  put(30, record);
  put(40, record);
  record.ucExist = 2;
  put(20, record);
  const auto calls_of_lookup = [&](u32 code, u16 ptp_id) {
    u16 found = x;
    settle();
    return host_calls(
        {Fn::ZEL_HASH_Create_Table, Fn::ZEL_HASH_Add_Node, Fn::ZEL_HASH_Find_Node,
         Fn::ZEL_HASH_Delete_Node, Fn::ZEL_Free},
        [&] {
          expect({PM_LibGetPtpFromPhyIndexEx(1, 100, 7, &found), found}, {code, ptp_id}, {});
        });
  };
  const std::string block = "block#" + std::to_string(node.memory.mark() + 1);
  const std::string find = "ZEL_HASH_Find_Node(1, 158, Pm_Lib_CmpFromPhyInfo) = ";
  EXPECT_EQ(calls_of_lookup(0, 30), (Lines{"ZEL_HASH_Create_Table(368, 0) = 1", find + "null",
                                           "ZEL_HASH_Add_Node(1, " + block + ", 158, 0) = 0"}));
  const host::Block taken = node.memory.live().back();
  EXPECT_EQ(Values({taken.partition, taken.size}), Values({2, sizeof(PmPhyIndexNode)}));
  record.ucExist = 1;
  put(20, record);
  EXPECT_EQ(calls_of_lookup(0, 30), Lines{find + block});
  publish_spec({.max_ptp_id = 65000});  // the store keeps its size
  record.ucExist = 0;
  for (const u16 ptp_id : {u16{20}, u16{30}, u16{40}}) {
    put(ptp_id, record);
  }
  EXPECT_EQ(calls_of_lookup(absent, x),
            (Lines{find + block, "ZEL_HASH_Delete_Node(1, " + block + ", 158) = 0",
                   "ZEL_Free(" + block + ") = 0"}));
}

TEST_F(ReverseLookup, ASmallerMaximumHidesTheRecordsBeyondIt) {
  up();
  put(30, test::port_record(2, 3));
  settle();
  const auto scan = PM_LibGetPtpFromPhyIndexOnSrvByEnum;
  u16 id = x;
  publish_spec({.max_ptp_id = 29});
  expect({scan(0, 2, 3, &id), id}, {absent, x}, {});
  publish_spec({.max_ptp_id = 30});
  expect({scan(0, 2, 3, &id), id}, {0, 30}, {});
}

TEST_F(ReverseLookup, FailuresAreRecordedAndCacheNothing) {
  up();
  const auto srv = PM_LibGetPtpFromPhyIndexOnSrv, scan = PM_LibGetPtpFromPhyIndexOnSrvByEnum;
  const auto ex = PM_LibGetPtpFromPhyIndexEx;
  const auto port = PM_LibGetPtpFromPhyIndex;
  const auto fsp = PM_LibGetPtpFromFSP;
  u16 id = x;
  const auto failing = [&](Fn fn) {
    node.faults.fail_nth(fn, 1, 0x55);
    return &id;
  };
  expect({srv(0, 2, 3, failing(Fn::ZEL_HASH_Create_Table)), srv(0, 2, 3, &id), scan(0, 2, 3, &id)},
         Values(3, para), {2, 0, 2, 3, 0, 2, 3});
  put(30, test::port_record(2, 3));
  settle();
  expect({srv(0, 2, 3, nullptr), scan(0, 2, 3, nullptr), port(2, 3, nullptr), ex(2, 2, 3, nullptr),
          fsp(0, 2, 3, nullptr)},
         Values(5, para), {0, 2, 3, 0, 2, 3, 2, 3, 2, 2, 3, para});
  expect({ex(2, 2, 3, &id), fsp(0, 2, 3, failing(Fn::DEV_LibGetBIndexFromFrameIDSlotID)),
          fsp(0, 2, 3, failing(Fn::ZEL_MemAlloc_F)), id, port(2, 3, failing(Fn::ZEL_MemAlloc_F)),
          std::exchange(id, x), fsp(0, 2, 3, &id), id},
         {invalid, 0x55, para, x, para, 30, 0, 30}, {invalid, para, para});
  const PmPhyIndexNode cached = {{}, {1, 2, 3}, 30};
  const auto compare = [&](PmPhyIndexKey key) { return Pm_Lib_CmpFromPhyInfo(&key, &cached); };
  expect({compare({1, 2, 3}), compare({0, 2, 3}), compare({1, 3, 3}), compare({1, 2, 4}),
          Pm_Lib_CmpFromPhyInfo(nullptr, &cached), Pm_Lib_CmpFromPhyInfo(&cached.stKey, nullptr)},
         {0, 1, 1, 1, 1, 1}, {1, 1});
}

}  // namespace

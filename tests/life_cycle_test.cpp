// One instance from registration to destruction, the way the host drives it.
#include "global_data.hpp"
#include "live_pm.hpp"

namespace {
using LifeCycle = test::LivePm;

test::Values raised;  // primitive type and PTP of each call of the booked function

u32 note(u16 ptp_id, u16 prim_type, void *) {
  raised.insert(raised.end(), {prim_type, ptp_id});
  return PM_OK;
}

TEST_F(LifeCycle, AnInstanceLeavesItsTablesAndNothingElse) {
  constexpr u16 ptp = 17, last_ptp = 60'000, type = 7;
  constexpr u16 booked[] = {PM_PRIM_EXIST, PM_PRIM_LINK_UP, PM_PRIM_VS_ADDED};
  lay_chassis();
  publish_spec({.max_ptp_id = last_ptp, .port_types = 2});
  const PmSubInnerSubInfo sub_info = {0, type, 1, 0, 70, 0};
  node.ddm.preset(PM_CLASS_SUB_INFO, 0, host::view_of(sub_info));
  for (const u16 ptp_id : {ptp, last_ptp}) {
    const PtpDynPubData record = test::port_record(0, ptp_id == ptp ? 3 : 5, type);
    node.ddm.preset(PM_CLASS_DYNAMIC, ptp_id, host::view_of(record));
  }
  node.ddm.preset(PM_CLASS_STATIC, ptp, host::view_of(test::static_record(ptp, "uplink")));
  PmSubLineInfo sub_line{};
  sub_line.usPtpType = type;
  hook_sub_lines({sub_line});

  construct();
  start_fid();
  EXPECT_EQ(phase(1), PM_OK);
  for (const u16 prim_type : booked) {
    EXPECT_EQ(PM_LibRegPrimaryWordCallback(prim_type, type, note), PM_OK);
  }
  EXPECT_EQ(phase(2) | phase(8), PM_OK);
  node.run();
  EXPECT_EQ(put(ptp, test::port_record(2, 4, type, 0x4)), PM_OK);
  EXPECT_EQ(node.root.call_service(cid, "PM_SapiBookCallBookedFuncs", u16{PM_PRIM_LINK_UP}, ptp,
                                   static_cast<void *>(nullptr)),
            PM_OK);
  EXPECT_EQ(raised, (Values{PM_PRIM_EXIST, ptp, PM_PRIM_EXIST, last_ptp, PM_PRIM_VS_ADDED, ptp,
                            PM_PRIM_LINK_UP, ptp}));
  u16 found = 0;
  EXPECT_EQ(PM_LibGetPtpFromFSP(0, 0, 5, &found), PM_OK);
  EXPECT_EQ(found, last_ptp);
  for (const u16 prim_type : booked) {
    EXPECT_EQ(PM_LibUnRegPrimaryWordCallback(prim_type, type, note), PM_OK);
  }
  scope.reset();
  EXPECT_EQ(node.root.destruct(cid), PM_OK);

  std::vector<std::pair<u32, std::size_t>> left;
  for (const host::Block &block : node.memory.live()) {
    left.emplace_back(block.partition, block.size);
  }
  EXPECT_EQ(left, (decltype(left){{host::partition_dynamic, sizeof(PmSubInfoNode)},
                                  {host::partition_block, sizeof(PmSubAttrCB)},
                                  {host::partition_static, sizeof(PmBookTable)},
                                  {host::partition_block, 2 * sizeof(PmSubInnerSubInfo)},
                                  {host::partition_static, 2 * sizeof(PmSubCallBackEntry)},
                                  {host::partition_block, sizeof(PtpDynPubData *)},
                                  {host::partition_block, (last_ptp + 1) * sizeof(PtpDynPubData)},
                                  {host::partition_block, sizeof(PmStaticDBNode)},
                                  {host::partition_block, sizeof(PmPhyIndexNode)}}));
  // Before its first record a PTP has no virtual systems to tell of.
  constexpr u32 code = PM_ERR_PTP_NOT_EXIST;
  EXPECT_EQ(node.errors.values_since(), (Values{code, ptp, code, last_ptp}));
}
}  // namespace

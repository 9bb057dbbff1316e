// The data-distribution classes: subscriptions and restore handlers.
#include "global_data.hpp"
#include "live_pm.hpp"

namespace {
constexpr u32 invalid = PM_ERR_DATA_INVALID, para_error = PM_ERR_PARA;
test::Values seen;  // by booked functions: primitive, VS mask of the PTP, parameter

u32 note(u16 ptp_id, u16 prim_type, void *para) {
  u32 vs_mask = 0;
  EXPECT_EQ(PM_LibGetDynPubDataAttr(ptp_id, PM_DYN_ATTR_VS_MASK, &vs_mask), PM_OK);
  seen.insert(seen.end(), {prim_type, vs_mask, para == nullptr ? 0U : *static_cast<u8 *>(para)});
  return PM_OK;
}

struct Restore : test::LivePm {
  template <typename Record>
  u32 send(u32 class_id, const Record &record) {
    return node.ddm.send(class_id, 0x50011, host::view_of(record));
  }
};

TEST_F(Restore, ARecordOfAnotherClassOrLengthOrWithoutDataKeyOrInstanceIsRefused) {
  const u32 key = 17;
  const u8 data[256] = {1};
  const auto count = PM_LibScribeRestoreObjDelNum;
  scope.emplace(node);
  expect({count(0, 0, &key, data, 3), count(0, 0, &key, nullptr, 8), count(0, 0, &key, data, 4)},
         Values(3, para_error), {3, 4, 8, 4, para_error});
  const std::tuple<u32, u32, DdmRestoreFunc> handlers[] = {
      {PM_CLASS_SPEC, 24, PM_LibScribeRestore_Spec},
      {PM_CLASS_ATTR_CB, 16, PM_LibScribeRestore_AttrCB},
      {PM_CLASS_SUB_ATTR, 4, PM_LibScribeRestore_SubAttrCB},
      {PM_CLASS_SUB_INFO, 10, PM_LibScribeRestore_SubInnerSubInfo},
      {PM_CLASS_DYNAMIC, 19, PM_LibScribeRestore_DynamicCB},
      {PM_CLASS_STATIC, 214, PM_LibScribeRestore_StaticDB},
      {PM_CLASS_PRIM_NOTIFY, 32, PM_LibScribeRestorePrimNotify}};
  for (const auto &[id, len, restore] : handlers) {
    const bool plain = id == PM_CLASS_PRIM_NOTIFY, outside = id > PM_CLASS_SUB_ATTR;
    Values recorded = {id + 1, 0, len, id, 0, len - 1, id, 0, len + 1, id, 1, len};
    expect({restore(id + 1, 0, &key, data, len), restore(id, 0, &key, data, len - 1),
            restore(id, 0, &key, data, len + 1), restore(id, 0, &key, nullptr, len)},
           Values(4, plain ? para_error : invalid), plain ? Values(4, para_error) : recorded);
    expect(restore(id, 0, &key, data, len), outside ? para_error : 0, Values(outside, para_error));
    if (id == PM_CLASS_SUB_INFO || id == PM_CLASS_DYNAMIC) {
      expect(restore(id, 0, nullptr, data, len), invalid, {id, 0, len});
    }
  }
}

TEST_F(Restore, EveryClassIsSubscribedWhateverFailsAndItsRecordsReachTheirTables) {
  hook_sub_lines({{40, PM_PID_NONE, {}, {}, {}, {}, {}}});
  up();
  EXPECT_EQ(node.ddm.subscriptions(cid),
            (Values{0x360003, 0x360004, 0x360011, 0x360030, 0x360040, 0x360031}));
  const u8 data[24] = {5, 0, 6, 0, 7, 0, 40, 0};
  const auto spec = PM_LibScribeRestore_Spec;
  node.faults.fail_nth(Fn::memcpy_s, 1, 0x44);
  expect({spec(PM_CLASS_SPEC, 0, nullptr, data, 24), spec(PM_CLASS_SPEC, 0, nullptr, data, 24),
          PM_LibScribeRestore_AttrCB(PM_CLASS_ATTR_CB, 0, nullptr, data, 16), PM_GetPmSpec(1),
          PM_LibGetPtpMaxNum(), send(PM_CLASS_SUB_ATTR, PmSubAttrNum{9, 8})},
         {PM_ERR_MEM_OPER, 0, 0, 0x280007, 18, 0}, {0x44});
  node.memory.fail_nth(host::partition_static, 1);
  const u32 size = 3 * sizeof(PmSubCallBackEntry);
  const std::string line = "\r\n PM_LibMallocSubCallBack fail, malloc static memory fail, ";
  expect({put_type(2, 41), put_type(2, 41), put_type(3, 41)}, {PM_ERR_MEM_OPER, 0, invalid},
         {size, PM_ERR_MALLOC, PM_ERR_MALLOC, 3},
         {line + "pstPtpDynPubData = " + std::to_string(size)});
  const PmGlobalData *tables = pm::current_data();
  expect({tables->pstSubAttrCB->pstSubInnerSubInfo[2].usPtpType, tables->pstSubCallBack->usPtpType,
          PM_LibPtpNumSpecInit(), tables->pstSubAttrCB->usPtpTypeNum, PM_LibGetPtpMaxTypeValue()},
         {41, 40, 0, 9, 8}, {});
  expect(put(test::static_record(17)), PM_OK, {});
  expect(node.ddm.send(PM_CLASS_STATIC, 17, host::Bytes(214, 0xFF)), PM_OK, {0xFFFF});
  node.memory.fail_nth(host::partition_block, 1);
  expect({put(test::static_record(18)), node.faults.calls(Fn::SYN_LibModuleDataUnitModifyRecord),
          node.syn.modules(*instance)->at(5).blocks.at(0).marked[17]},
         {1, 2, true}, {18, 18, 0, 0, 18});
  expect({send(PM_CLASS_OBJ_DEL_NUM, PmSpecMsg{0x12345, 9}), PM_LibGetObjectNumInDelete()},
         {0, 0x12345}, {});
  node.faults.fail_nth(Fn::DDM_LibSubscribe, 5, 3, 2);
  expect({PM_ScribeClass(), node.faults.calls(Fn::DDM_LibSubscribe)}, {6, 12}, {6, cid});
}

TEST_F(Restore, ADynamicRecordIsWrittenBetweenItsNotifications) {
  up();
  PmProductMngt hooks{};
  hooks.pfnEventRegister = [] { return 0x66U; };
  EXPECT_EQ(PM_LibRegInstProductMngtFuncProc(&hooks), PM_OK);
  for (const u16 prim_type : {u16{3}, u16{6}, u16{13}, u16{14}}) {
    EXPECT_EQ(PM_LibRegPrimaryWordCallback(prim_type, PM_PTP_TYPE_ALL, note), PM_OK);
  }
  node.memory.fail_nth(host::partition_block, 1);
  const PtpDynPubData first = test::port_record(0, 1, 7, 3), second = test::port_record(0, 1, 7, 5);
  node.ddm.forced_batch_state = 0;
  const u32 failed = PM_ERR_MALLOC;
  expect({put(17, first), put(201, first), send(PM_CLASS_DYNAMIC, first)}, {failed, invalid, 0},
         {sizeof(void *), failed, 0x66, 0x66, 201, PM_ERR_PTP_NOT_EXIST, 17});
  node.faults.fail_nth(Fn::memcpy_s, 2, 0x44);
  expect(put(17, first), PM_ERR_MEM_OPER, {0x44});
  node.ddm.forced_batch_state = 1;
  const PmPrimNotify link_up = {6, 17, {42}}, wrong = {15, 17, {42}};
  publish_spec({.max_ptp_id = 300});
  expect({put(17, second), put(201, first), send(PM_CLASS_PRIM_NOTIFY, link_up),
          send(PM_CLASS_PRIM_NOTIFY, wrong)},
         {0, invalid, 0, 0}, {201, 15, 15, PM_ERR_PRIMTYPE_RANGE});
  EXPECT_EQ(std::exchange(seen, {}), (Values{3, 3, 0, 14, 3, 1, 13, 5, 2, 6, 5, 42}));
}
}  // namespace

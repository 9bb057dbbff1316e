// The scenes of a node's life that the failure sweep disturbs.
#include "scenarios.hpp"

namespace {

using scenes::Codes;
using scenes::host_code;
using scenes::Scene;
using scenes::Stage;
using test::Values;

constexpr u32 para = PM_ERR_PARA, invalid = PM_ERR_DATA_INVALID, absent = PM_ERR_PTP_NOT_EXIST,
              mem = PM_ERR_MEM_OPER, no_memory = PM_ERR_MALLOC, more = PM_ERR_NO_MORE,
              any = PM_PTP_TYPE_ALL;
#define ASK(stage, function, codes, ...) \
  (stage).step(#function, (codes), [&] { return function(__VA_ARGS__); })

// From registration to the last phase.
void start(Stage &s) {
  if (s.instance != nullptr) {
    s.kept = s.held();
    s.scope.reset();
    s.node.root.destruct(Stage::cid);
    s.instance = nullptr;
  }
  {
    const auto outside = host::enter(s.node);
    ASK(s, PM_LibRegisterInfo, Codes{host_code});
  }
  s.step("construction", {1, host::code_unknown, host::code_no_instance}, [&] {
    s.instance = s.node.root.construct(Stage::cid);
    return s.instance == nullptr ? s.node.root.last_code() : PM_OK;
  });
  if (s.instance == nullptr) return;
  s.scope.emplace(*s.instance);
  s.step("FID start-up", {}, [&] { return s.node.root.start_fid(*s.instance, PM_FidInitProc); });
  s.step("phase 1", {mem, no_memory, para}, [&] { return s.phase(1); });
  s.step("phase 2", {}, [&] { return s.phase(2); });
  s.step("phase 8", {host_code, host::code_unknown}, [&] { return s.phase(8); });
}

void refusals(Stage &s, const Codes &allowed) {
  for (const host::RefusedRecord &refused : s.node.ddm.refusals()) {
    s.step("record of class " + std::to_string(refused.class_id), allowed,
           [&] { return refused.code; });
  }
  s.node.ddm.clear_refusals();
}

// The records of every class, delivered as batches.
void prepare_batch(Stage &s) {
  s.lay_chassis();
  s.publish_spec(Stage::counts);
  s.construct();
  s.start_fid();
  for (const u32 phase : {1U, 2U, 8U}) {
    s.phase(phase);
  }
  for (const u16 type : {u16{7}, u16{8}}) {
    const PmSubInnerSubInfo info = {0, type, 1, 0, 70, 0};
    s.node.ddm.preset(PM_CLASS_SUB_INFO, type - 7U, host::view_of(info));
  }
  for (const u16 id : {u16{1}, u16{2}}) {
    s.node.ddm.preset(PM_CLASS_DYNAMIC, id, host::view_of(test::port_record(0, id, 7, 0x7)));
    s.node.ddm.preset(PM_CLASS_STATIC, id, host::view_of(test::static_record(id, "port")));
  }
  const PmSubAttrNum counts = {2, 40};
  s.node.ddm.preset(PM_CLASS_SUB_ATTR, 0, host::view_of(counts));
  PM_LibRegPrimaryWordCallback(PM_PRIM_EXIST, any, [](u16, u16, void *) { return PM_OK; });
}
void batch(Stage &s) {
  s.node.ddm.restart_batches(Stage::cid);
  s.node.run();
  refusals(s, {mem, no_memory, para, invalid, 1});
}

// Records one by one: virtual systems come and go, static data too, with the standby in step.
void live(Stage &s) {
  const auto put = [&](u32 class_id, u32 key, host::ByteView data, const Codes &allowed) {
    s.step("record of class " + std::to_string(class_id), allowed,
           [&] { return s.node.ddm.publish(class_id, key, data); });
  };
  const Codes dynamic = {para, mem, no_memory}, fixed = {para, 1};
  PtpDynPubData record = test::port_record(0, 1, 7, 0x6);
  put(PM_CLASS_DYNAMIC, 1, host::view_of(record), dynamic);
  record.ulVsMask = 0x18;
  put(PM_CLASS_DYNAMIC, 1, host::view_of(record), dynamic);
  record.ulVsMask = 0x8;
  put(PM_CLASS_DYNAMIC, 1, host::view_of(record), dynamic);
  put(PM_CLASS_STATIC, 9, host::view_of(test::static_record(9, "new")), fixed);
  put(PM_CLASS_STATIC, 9, host::view_of(test::static_record(9, "newer")), fixed);
  put(PM_CLASS_STATIC, 0xFFFF, host::Bytes(sizeof(PtpStaticData), 0xFF), fixed);
  const u32 deletions = 0;
  put(PM_CLASS_OBJ_DEL_NUM, 0, host::view_of(deletions), {para});
  const PmPrimNotify notify = {PM_PRIM_LINK_UP, 1, {}};
  put(PM_CLASS_PRIM_NOTIFY, 1, host::view_of(notify), {para});
  s.node.run();
  s.node.ddm.clear_refusals();
}

// Functions booked, called by every kind of event, and unbooked.
u32 obey(u16, u16, void *) {
  return PM_OK;
}
u32 refuse(u16, u16, void *) {
  return mem;
}
void bookings(Stage &s) {
  for (const PmBookFunc function : {obey, refuse}) {
    while (PM_LibUnRegPrimaryWordCallback(PM_PRIM_LINK_UP, 7, function) == PM_OK) {
    }
  }
  const Codes add = {para, no_memory}, remove = {para, invalid};
  ASK(s, PM_LibRegPrimaryWordCallback, add, PM_PRIM_LINK_UP, 7, obey);
  ASK(s, PM_LibRegPrimaryWordCallback, add, PM_PRIM_LINK_UP, 7, refuse);
  s.step("a second booking", {para, no_memory, PM_OK},
         [] { return PM_LibRegPrimaryWordCallback(PM_PRIM_LINK_UP, 7, refuse); });
  const PmDevDdmTlv link_up = {{}, sizeof(PmPrimMsg), {}, {0, PM_PRIM_LINK_UP, 1, {}, {}}};
  ASK(s, PM_LibPrimNotifyRtRestore, Codes{para}, &link_up);
  ASK(s, PM_LibEventPtpLinkUp, Codes{}, 1);
  ASK(s, PM_LibEventPtpLinkDown, Codes{}, 1);
  s.step("a published service", (Codes{para, host::code_unknown}), [&] {
    return s.node.root.call_service(Stage::cid, "PM_SapiBookCallBookedFuncs", u16{PM_PRIM_LINK_UP},
                                    u16{1}, static_cast<void *>(nullptr));
  });
  const PtpDynPubData old{};
  PM_LibEventPrimNotify(1, &old);
  s.step("a second booking's end", remove,
         [] { return PM_LibUnRegPrimaryWordCallback(PM_PRIM_LINK_UP, 7, refuse); });
  ASK(s, PM_LibUnRegPrimaryWordCallback, remove, PM_PRIM_LINK_UP, 7, obey);
}

// Questions by family.
void identity(Stage &s) {
  const Codes lost = {para}, device = {para, host_code};
  for (const u16 id : {u16{1}, u16{4}}) {
    ASK(s, PM_LibGetPhyIndexFromPTP, lost, id, s.to<u16>(), s.to<u8>(1));
    ASK(s, PM_LibGetPhyIndexFromPTPEx, lost, id, s.to<u8>(), s.to<u16>(1), s.to<u16>(2));
    ASK(s, PM_LibGetFSPFromPtp, device, id, s.to<u16>(), s.to<u8>(1), s.to<u8>(2));
  }
  ASK(s, PM_LibGetTypeFromPTP, lost, 1, s.to<u16>());
  ASK(s, PM_LibIfPtpExist, lost, 1);
  ASK(s, PM_LibIfPhyPtpExist, lost, 1);
  ASK(s, PM_LibGetVsMaskFromPtp, Codes{absent}, 2, s.to<u32>());
  ASK(s, PM_LibIfPtpInVs, (Codes{absent, PM_ERR_PTP_NOT_IN_VS}), 2, 1);
  ASK(s, PM_LibIfPtpOnlyInOneVs, (Codes{absent, PM_ERR_VS_CONDITION}), 1, 0);
  ASK(s, PM_LibIfPortBelongMultiVs, (Codes{absent, PM_ERR_VS_CONDITION}), 2);
  ASK(s, PM_LibGetPtpMngtVsID, (Codes{absent, 1}), 1, s.to<u16>());
  ASK(s, PM_LibIsPtpVisible, lost, 1);
  ASK(s, PM_LibGetPtpPhyStateFromPTP, device, 1, s.to<u8>());
}
void records(Stage &s) {
  const Codes stored = {para, absent};
  for (const u32 selector : {0U, 2U, 7U, 8U}) {
    ASK(s, PM_LibGetDynPubDataAttr, Codes{para}, 1, selector, s.to<u32>());
  }
  ASK(s, PM_LibGetAllDynDataFromPtpID, Codes{para}, 1, s.to<PtpDynPubData>());
  s.step("static record", {para}, [] {
    PtpStaticData record;  // filled with 0xFF when there is none
    const u32 ret = PM_LibStaticDataGetDataFromPTP(1, &record);
    return ret == absent ? PM_OK : ret;
  });
  ASK(s, PM_LibGetDescFromPTP, (Codes{para, absent, PM_ERR_STR_OPER}), 1, 33, s.to<char>());
  ASK(s, PM_LibGetPrivStaticDataFromPTP, (Codes{para, absent, 1}), 1, 120, s.to<u8>());
  s.step("PTP of a description", {para, absent, PM_ERR_DESC_INVALID, 1}, [] {
    u16 id = 0;
    const u32 ret = PM_LibGetPtpFromDesc("port 2", &id);
    EXPECT_TRUE(ret == PM_OK || ret == PM_ERR_DESC_INVALID || id == PM_PTP_ID_NONE);
    return ret;
  });
}
void places(Stage &s) {
  const Codes cached = {para, absent};
  // A cache that is cold, warm and stale. The answer stands even where it could not be cached.
  const auto find = [&](const char *name, auto ask) {
    s.step(name, cached, [&] {
      u16 id = 0xEEEE;
      const u32 ret = ask(&id);
      EXPECT_TRUE(ret != PM_OK || id <= Stage::counts.max_ptp_id);
      return ret;
    });
  };
  find("cold", [](u16 *id) { return PM_LibGetPtpFromPhyIndex(0, 1, id); });
  find("warm", [](u16 *id) { return PM_LibGetPtpFromPhyIndexEx(0, 0, 1, id); });
  u16 port = 12;
  PM_LibSetDynPubDataAttr(2, PM_DYN_ATTR_INDEX2, &port);
  find("new", [](u16 *id) { return PM_LibGetPtpFromPhyIndex(0, 12, id); });
  port = 2;
  PM_LibSetDynPubDataAttr(2, PM_DYN_ATTR_INDEX2, &port);
  find("stale", [](u16 *id) { return PM_LibGetPtpFromPhyIndex(0, 12, id); });
  find("scan", [](u16 *id) { return PM_LibGetPtpFromPhyIndexOnSrvByEnum(1, 33, 4, id); });
  const Codes placed = {para, absent, host_code};
  ASK(s, PM_LibGetPtpFromFSP, placed, 1, 1, 3, s.to<u16>());
  ASK(s, PM_LibGetVisiblePtpFromFSP, placed, 0, 0, 0, s.to<u16>());
}
void walks(Stage &s) {
  const Codes end = {more}, board = {host_code, PM_ERR_STR_OPER};
  const u16 none = PM_PTP_ID_NONE, all = PM_BINDEX_ALL;
  ASK(s, PM_LibGetPortNumFromBIndex, board, 0, s.to<u8>(), s.to<u8>(1), s.to<u8>(2));
  ASK(s, PM_LibGetNextPtpFromPTP, end, all, none, any, s.to<u16>());
  ASK(s, PM_LibGetNextVisiblePtpFromPTP, end, 0, 1, 7, s.to<u16>());
  ASK(s, PM_LibGetNextPtpFromVS, end, 0, all, 1, any, s.to<u16>());
  const Codes step = {para, more, host_code, invalid};
  ASK(s, PM_LibPtpIdGetNextFromPortPtp, step, all, 2, any, PM_FILTER_ALL, s.to<u16>());
  ASK(s, PM_LibGetNextPtpIdByBIndex, step, 33, 3, any, PM_FILTER_ALL, s.to<u16>());
}
void attributes(Stage &s) {
  const Codes read = {para, absent}, copied = {para, absent, mem, PM_ERR_STR_OPER};
  const u16 id = 1;
  for (const auto get :
       {PM_LibGetMtuFromPTP, PM_LibGetTxQLenFromPTP, PM_LibGetSpecificFromPTP,
        PM_LibGetCounterDiscontinuityTimeFromPTP, PM_LibGetLastChangeTickFromPTP}) {
    ASK(s, get, read, id, s.to<u32>());
  }
  for (const auto get :
       {PM_LibGetLinkStateFromPTP, PM_LibGetAdminStatusFromPTP, PM_LibGetPromiscuousModeFromPTP,
        PM_LibGetConnPresentFromPTP, PM_LibGetlinkTrapSwitchFromPTP}) {
    ASK(s, get, read, id, s.to<u8>());
  }
  for (const auto get : {PM_LibGetSpeedFromPTP, PM_LibGetActiveSpeedFromPTP}) {
    ASK(s, get, read, id, s.to<u32>(), s.to<u32>(1));
  }
  ASK(s, PM_LibGetNameFromPTP, copied, id, 33, s.to<char>());
  ASK(s, PM_LibGetPhyAddrFromPTP, copied, id, 6, s.to<u8>());
  ASK(s, PM_LibGetStatisticFromPTP, read, id, s.to<PmSubStats>());
  ASK(s, PM_LibGetAliasFromPTP, copied, id, 40, s.to<u8>());
}
void port_types(Stage &s) {
  const Codes lost = {para};
  s.step("sub-line", {para, no_memory}, [] {
    const PmSubLineInfo known = scenes::sub_line(7, 100);
    return PM_LibRegSubLineInfo(&known) == PM_ERR_TYPE_REGISTERED ? PM_OK : para;
  });
  ASK(s, PM_LibIsPtpTypeValid, lost, 8);
  ASK(s, PM_LibGetLogicPtpType, (Codes{para, invalid}), 8, s.to<u16>());
  ASK(s, PM_LibGetSubFunc, lost, 8, s.to<PmSubCallBack>());
  ASK(s, PM_LibGetCoClassFromPtpID, lost, 1, s.to<u16>());
  ASK(s, PM_LibRegCapClassMngt, Codes{host_code});
  ASK(s, PM_LibRegAttrClassMngt, Codes{host_code});
  const Codes service = {absent, para, host_code, host::code_unknown, host::code_length};
  ASK(s, PM_LibGetPtpCapability, service, 1, 5);
  s.step("attribute", service, [] {
    u8 buffer[8];
    return PM_LibGetPtpAttributeCluster(1, 5, sizeof buffer, buffer);
  });
  ASK(s, PM_LibGetPtpCapType, (Codes{para, invalid}), 8, 1, s.to<u16>());
  ASK(s, PM_LibGetPtpTypeForAttm, lost, 0xFFFFFFFF, 1, s.to<u16>());
  const PmProductMngt hooks{};
  ASK(s, PM_LibRegInstProductMngtFuncProc, (Codes{para, no_memory, host_code}), &hooks);
}

// Units of the active side extracted and restored on the standby side, with a change of sides.
void change_sides(Stage &s) {
  for (const char *text : {"one", "two"}) {
    s.step("static record", {para, 1}, [&] { return s.put(test::static_record(2, text)); });
    s.node.run();
    s.scope.reset();
    s.node.syn.failover();
    s.scope.emplace(*s.node.syn.active());
  }
  PmSynRecord unit{};
  u32 length = 0;
  const Codes out = {invalid, para, mem, host_code}, in = {para, invalid, mem};
  ASK(s, PM_LibSynExtractStaticData, out, 2, &unit, sizeof unit, &length);
  unit = {0, 5, sizeof unit.stData, 0, test::static_record(3, "three")};
  ASK(s, PM_LibSynRestoreStaticData, in, 3, &unit, sizeof unit, 0);
  std::memset(&unit.stData, 0xFF, sizeof unit.stData);
  ASK(s, PM_LibSynRestoreStaticData, in, 3, &unit, sizeof unit, 0);
}

// Requests to the owner of the PTP database, and the result of one that comes later.
u32 completed(PmFspOntid *, u32) {
  return PM_OK;
}
void remote_calls(Stage &s) {
  for (const std::set<u16> left = s.node.owner.virtual_ptps(); const u16 id : left) {
    PM_LibDelVirtualPtp(id);
  }
  const u32 u[] = {host::code_length, host::code_no_ptp, host::code_unreachable};
  const Codes owner = {host_code, u[0], u[1], host::code_null, host::code_in_deletion};
  ASK(s, PM_LibLinkEventNotify, owner, 1, 1);
  PmVirtualPtpDesc desc = {PM_PTP_CLASS_PORT, 0, 33, 7, 7};
  u16 id = PM_PTP_ID_NONE;
  if (ASK(s, PM_LibAddVirtualPtp, owner, &desc, &id) == PM_OK) {
    ASK(s, PM_LibDelVirtualPtp, owner, id);
  }
  u8 text[] = "text";
  ASK(s, PM_LibSetDescFromPTP, owner, 1, text, sizeof text - 1);
  ASK(s, PM_LibOperCheckCanDelPTP, (Codes{1, host::code_no_ptp}), 1);
  PmFspOntid key = {0, 1, 2, 3};
  char reason[] = "reason";
  const Codes request = {PM_ERR_LEN_RANGE, host_code, u[0], host::code_in_deletion};
  ASK(s, PM_LibDelObjectCfg, request, &key, reason, reinterpret_cast<PmWord>(completed));
  s.node.run();
  ASK(s, PM_LibIsObjSupportSrvCfg, Codes{PM_OK}, &key);
  while (s.node.owner.finish_deletion()) {
  }
  s.node.run();
  s.node.ddm.clear_refusals();
}

// Every command of the debug window.
void debug_window(Stage &s) {
  const std::array<u32, 4> commands[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 2, 0}, {2, 0, 0},
                                         {2, 7, 0}, {3, 2, 0}, {4, 0, 0, 1}, {5, 0, 0},
                                         {6, 0, 0}, {9, 6, 0}, {8, 0, 0}};
  for (const auto &[command, sub, para1, para2] : commands) {
    auto message = host::Framework::debug_message(command, sub, para1, para2);
    s.step("command", {22, PM_OK, host_code},
           [&] { return PM_LibMsgProcEntry(message.data(), s.instance->record.pLocalData); });
  }
}

// Failures that are traced, with every switch on.
void traced(Stage &s) {
  ASK(s, PM_LibGetMtuFromPTP, Codes{para}, 9, s.to<u32>());
  ASK(s, PM_LibGetPhyIndexFromPTP, Codes{para}, 9, s.to<u16>(), s.to<u8>(1));
  ASK(s, PM_LibGetDescFromPTP, Codes{para}, 4, 33, s.to<char>());
  ASK(s, PM_LibGetSubFunc, Codes{para}, 30, s.to<PmSubCallBack>());
  const PmPrimMsg unknown = {0, 1, 1, {}, {}};
  ASK(s, PM_PrimMsgProc, Codes{}, &unknown);
}

void prepare_start(Stage &s) {
  s.lay_chassis();
  s.publish_spec(Stage::counts);
}
void prepare(Stage &s) {
  s.full();
}
void prepare_pair(Stage &s) {
  s.full();
  s.add_standby();
}
void prepare_traced(Stage &s) {
  s.full();
  s.trace_all();
}
}  // namespace

const std::vector<scenes::Scene> scenes::all = {{"start-up", prepare_start, start},
                                                {"first batch", prepare_batch, batch},
                                                {"live records", prepare_pair, live},
                                                {"bookings", prepare, bookings},
                                                {"identity", prepare, identity},
                                                {"records", prepare, records},
                                                {"places", prepare, places},
                                                {"walks", prepare, walks},
                                                {"attributes", prepare, attributes},
                                                {"port types", prepare, port_types},
                                                {"synchronisation", prepare_pair, change_sides},
                                                {"remote calls", prepare, remote_calls},
                                                {"debug window", prepare, debug_window},
                                                {"traces", prepare_traced, traced}};

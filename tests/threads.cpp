// Two nodes of one process, each with an instance and its standby, living on a thread of their own
// at the same time: for the thread sanitizer. Every callback has to come on the thread that made
// the call.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <latch>
#include <thread>

#include "host/host.hpp"
#include "pm.h"

namespace {

constexpr u32 rounds = 40, callback_kinds = 9;
constexpr u16 ptp_num = 64, type = 7;

struct Life;
thread_local Life *living = nullptr;

void demand(bool holds, const char *what) {
  if (!holds) {
    std::printf("not so: %s\n", what);
    std::exit(1);
  }
}

struct Life {
  host::Node node;
  std::thread::id thread = std::this_thread::get_id();
  u32 seen = 0;  // kinds of callbacks, a bit for each

  // Called by every callback.
  static void here(u32 kind) {
    demand(living != nullptr && living->thread == std::this_thread::get_id() &&
               host::current_node() == &living->node,
           "a callback runs on its caller's thread");
    living->seen |= 1U << kind;
  }
};

u32 booked(u16, u16, void *) {
  return Life::here(0), PM_OK;
}
u32 completed(PmFspOntid *, u32) {
  return Life::here(1), PM_OK;
}

// The hooks of both threads are the same, as the table is the process's.
PmProductMngt hooks() {
  PmProductMngt table{};
  table.pfnZelCfg = [] {
    PmSubLineInfo info{};
    info.usPtpType = type;
    info.ulPID = PM_PID_NONE;
    info.stCallBack.pfnGetAttr = [](u16, PmSubAttr *) { return Life::here(2), PM_OK; };
    info.stCallBack.pfnGetAttrPriv = [](u16, u32, PmSubAttr *) { return Life::here(3), PM_OK; };
    info.stCallBack.pfnGetStats = [](u16, PmSubStats *) { return Life::here(4), PM_OK; };
    Life::here(5);
    return PM_LibRegSubLineInfo(&info);
  };
  table.pfnPhaseProc = [](u32) { return Life::here(6), PM_OK; };
  table.pfnEventRegister = [] { return Life::here(7), PM_OK; };
  return table;
}

void lay(host::Node &node) {
  node.chassis.add_frame(0, 4);
  node.chassis.insert(0, 1, host::Board::of("ETH64", ptp_num));
  const PmSpec spec = {0, 0, 1, 32, 99, 5};
  const PmAttrCB counts = {ptp_num, 0, 8, 2 * ptp_num, 0, 10, 0, 0};
  const PmSubAttrNum types = {1, type};
  node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(spec));
  node.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(counts));
  node.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(types));
  const PmSubInnerSubInfo info = {0, type, 1, 0, 70, 0};
  node.ddm.preset(PM_CLASS_SUB_INFO, 0, host::view_of(info));
  for (u16 id = 0; id < ptp_num; ++id) {
    const PtpDynPubData record = {1, id, 0, 1, type, 0, 0, 0, 0x2};
    PtpStaticData fixed{};
    fixed.usPtpID = id;
    std::snprintf(fixed.szDescription, sizeof fixed.szDescription, "port %u", id + 0U);
    node.ddm.preset(PM_CLASS_DYNAMIC, id, host::view_of(record));
    node.ddm.preset(PM_CLASS_STATIC, id, host::view_of(fixed));
  }
  node.owner.set_virtual_range(ptp_num, 2 * ptp_num);
}

host::Instance *start(host::Node &node, u32 cid) {
  host::Instance *instance = node.root.construct(cid);
  demand(instance != nullptr, "an instance is constructed");
  node.root.start_fid(*instance, PM_FidInitProc);
  for (const u32 phase : {1U, 2U, 8U}) {
    demand(node.root.start_phase(*instance, phase) == PM_OK, "a phase succeeds");
  }
  return instance;
}

void ask(u16 id) {
  u32 word = 0;
  u16 found = 0;
  char text[80];
  PmSubAttr attr{};
  PmSubStats stats;
  demand(PM_LibGetMtuFromPTP(id, &word) == PM_OK, "the MTU is answered");
  demand(PM_LibGetSubAttrFromPTP(id, &attr) == PM_OK, "the attributes are answered");
  demand(PM_LibGetStatisticFromPTP(id, &stats) == PM_OK, "the statistics are answered");
  demand(PM_LibGetPtpFromFSP(0, 1, static_cast<u8>(id), &found) == PM_OK && found == id,
         "a place leads to its PTP");
  demand(PM_LibGetDescFromPTP(id, sizeof text, text) == PM_OK &&
             PM_LibGetPtpFromDesc(text, &found) == PM_OK && found == id,
         "a description leads to its PTP");
  PM_LibGetNextPtpFromVS(1, PM_BINDEX_ALL, id, PM_PTP_TYPE_ALL, &found);
}

void act(host::Node &node, host::Instance &instance, u32 round) {
  const auto inside = host::enter(instance);
  const u16 id = round % ptp_num;
  demand(PM_LibRegPrimaryWordCallback(PM_PRIM_LINK_UP, type, booked) == PM_OK, "it is booked");
  const PmPrimMsg link_up = {0, PM_PRIM_LINK_UP, id, {}, {}};
  demand(PM_PrimMsgProc(&link_up) == PM_OK, "a primitive is delivered");
  demand(PM_LibUnRegPrimaryWordCallback(PM_PRIM_LINK_UP, type, booked) == PM_OK, "it is unbooked");
  const PmPtpClassFunc functions = {nullptr, nullptr, [](u16, u16 *board, u8 *port) {
                                      return Life::here(8), *board = 1, *port = 0, PM_OK;
                                    }};
  u16 board = 0, added = 0;
  u8 port = 0;
  PM_LibRegPtpClassFunc(PM_PTP_CLASS_OTHER, &functions);
  PM_LibGetPhyIndexFromPTPEnc(PM_PTP_CLASS_OTHER, id, &board, &port);
  ask(id);
  const PtpDynPubData record = {1, id, 0, 1, type, 0, 0, round, round % 2 == 0 ? 0x6U : 0x2U};
  node.ddm.publish(PM_CLASS_DYNAMIC, id, host::view_of(record));
  PmVirtualPtpDesc desc = {0, 0, 1, 1, type};
  demand(PM_LibAddVirtualPtp(&desc, &added) == PM_OK && PM_LibDelVirtualPtp(added) == PM_OK,
         "a virtual PTP comes and goes");
  u8 text[] = {'a', static_cast<u8>('a' + round % 26)};
  PM_LibSetDescFromPTP(id, text, sizeof text);
  PmFspOntid key = {0, 1, static_cast<u8>(id), round};
  PM_LibDelObjectCfg(&key, nullptr, reinterpret_cast<PmWord>(completed));
  node.owner.finish_deletion();
  for (const u32 command : {0U, 1U, 2U, 3U, 5U, 6U, 9U}) {
    node.root.debug_command(instance, command, id);
  }
  PM_LibDbgSwitchControl(1, 1, round % PM_SWITCH_NUM, round % 2);
  node.run();
}

void live(u32 cid, std::latch &together) {
  Life life;
  living = &life;
  const PmProductMngt table = hooks();
  PM_LibRegProductMngtFuncProc(&table);
  {
    const auto outside = host::enter(life.node);
    demand(PM_LibRegisterInfo() == PM_OK, "the library registers");
  }
  together.arrive_and_wait();
  lay(life.node);
  host::Instance *active = start(life.node, cid), *standby = start(life.node, cid + 1);
  life.node.syn.pair(*active, *standby);
  life.node.run();
  for (u32 round = 0; round < rounds; ++round) {
    act(life.node, *active, round);
  }
  demand(life.node.syn.compare().empty(), "the standby has the same static data");
  demand(life.seen == (1U << callback_kinds) - 1, "every kind of callback came");
  demand(life.node.misuses.empty() && life.node.watchdog.barks() == 0, "the host has no complaint");
  life.node.root.destruct(cid);
  life.node.root.destruct(cid + 1);
}

}  // namespace

int main() {
  std::latch together(2);
  std::thread first(live, 0x36, std::ref(together)), second(live, 0x46, std::ref(together));
  first.join();
  second.join();
  std::puts("two threads lived their lives");
}

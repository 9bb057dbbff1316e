// Faults, call counts and the journal, over every function of the host.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>

#include "host/host.hpp"

namespace {

using host::Answer;
using host::Fn;
using host::Node;

u32 restore_nothing(u32, u32, const void *, const void *, u32) {
  return 0;
}
u32 start_pid(u32) {
  return 0;
}
void take_message(void *) {}
u32 spec_update(const void *) {
  return 0;
}
u32 extract_unit(u32, void *, u32, u32 *) {
  return 0;
}
u32 restore_unit(u32, const void *, u32, u32) {
  return 0;
}
void reset_units() {}
u32 same(const void *, const void *) {
  return 0;
}
u32 own_type(u32, u16, u16 *type) {
  *type = 9;
  return 0;
}

struct ClassRecord {
  u32 (*get_ptp_type)(u32, u16, u16 *);
  u16 module;
  u16 value;
};

PM_PRINTF(3, 4) int print_through(char *out, size_t room, const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int length = vsnprintf_truncated_s(out, room, format, arguments);
  va_end(arguments);
  return length;
}

// A node in which one call of every function succeeds and answers something else than a fault does.
struct Rig {
  Node node;
  host::Instance *instance = node.root.add(1);
  PmWord words[3] = {};
  void *block = nullptr;
  void *second_block = nullptr;
  Handle table = 0;
  Handle handle = 0;
  RpcPara para{};
  std::array<u8, 36> message = host::Framework::debug_message(1, 0, 0, 0);

  Rig() {
    node.clock.set(7);
    node.chassis.add_frame(0, 2);
    node.chassis.insert(0, 0, host::Board::of("kind", 1));
    node.chassis.board(0, 0)->port(0).lan_switch = true;
    node.chassis.board(0, 0)->port(0).e_switch = true;
    node.rpc.serve("service", [](RpcPara &) { return u32{0}; });
    const ClassRecord record{own_type, 54, 32};
    auto scope = host::enter(*instance);
    CAP_LibRegCapMngtProc(3, &record);
    ATTR_LibRegClassMngtProc(3, &record);
    SYN_LibRegisterModuleDataSynInfo(5, 1, 0, 0, 0);
    SYN_LibRegisterSynDataBlockFix(5, 2, 2, 0, 4, 4, 0, 0, extract_unit, restore_unit, 0, 0);
    DDM_LibSubscribe(1, 9, restore_nothing);
    KVT_RegisterPIDInfo(54, start_pid, take_message);
    ROOT_LibCompHandleInit(54, 1, &handle);
    block = ZEL_MemAlloc_F(54, ZEL_kvtBlockMemPtGet(), 8, "f", 1);
    second_block = ZEL_MemAlloc_F(54, ZEL_kvtBlockMemPtGet(), 8, "f", 1);
    table = ZEL_HASH_Create_Table(4, 0);
    RPC_LibParaInit(&para, 0);
    node.debug.clear();
  }

  // Whatever a call can change. A faulted call leaves it as it is.
  std::vector<std::uint64_t> effects() const {
    const auto &memory = node.memory.use(host::partition_block);
    return {node.root.components().size(),
            node.root.publications().size(),
            instance->pids.size(),
            node.root.message_tasks().size(),
            instance->local_size,
            instance->handles.size(),
            node.ddm.subscriptions(1).size(),
            node.syn.marked(*instance),
            node.syn.modules(*instance)->size(),
            node.rpc.sent().size(),
            node.objects.log().size(),
            node.debug.total(),
            node.debug.long_calls().size(),
            node.debug.window_line,
            node.errors.total(),
            memory.requests,
            memory.blocks,
            node.hash.tables(),
            node.hash.nodes(table),
            node.watchdog.feeds(),
            node.clock.elapsed(),
            node.classes.capability_classes().size(),
            node.misuses.size()};
  }

  u32 call(Fn fn) {
    u16 u16_out = 0;
    u8 u8_out = 0;
    u8 second_u8 = 0;
    char text[32] = {};
    u32 result[RPC_RESULT_SIZE / 4] = {};
    u32 flags[2] = {1, 0};
    const RootCompRegisterInfo info{77, "x", nullptr, nullptr, nullptr, 0, 0};
    const ClassRecord record{own_type, 54, 32};
    const auto truth = [](const void *pointer) { return pointer != nullptr ? 1u : 0u; };
    // clang-format off
    switch (fn) {
      case Fn::ROOT_LibCompRegisterInfo: return ROOT_LibCompRegisterInfo(&info);
      case Fn::ROOT_LibCompLocalCreate: return truth(ROOT_LibCompLocalCreate(1, 54, 16));
      case Fn::ROOT_LibCompHandleInit: return ROOT_LibCompHandleInit(54, 1, &handle);
      case Fn::ZEL_HandleFinalize: return ZEL_HandleFinalize(handle);
      case Fn::ROOT_LibGetCurrentThis: return truth(ROOT_LibGetCurrentThis());
      case Fn::ROOT_LibGetCurrentCID: return ROOT_LibGetCurrentCID();
      case Fn::ROOT_LibProcFidPidMsg: return ROOT_LibProcFidPidMsg(1, message.data(), nullptr);
      case Fn::ROOT_LibIsPidDepend: return ROOT_LibIsPidDepend(407, &instance->record);
      case Fn::ROOT_LibSrvmPubishSapi: return ROOT_LibSrvmPubishSapi("name", 1);
      case Fn::DMS_MsgRecvIidGet: return DMS_MsgRecvIidGet(message.data());
      case Fn::DDM_RegisterSpecAppInfo: return DDM_RegisterSpecAppInfo(54, spec_update);
      case Fn::DDM_LibSubscribe: return DDM_LibSubscribe(1, 8, restore_nothing);
      case Fn::DDM_LibScribeIsClassBtFinished: return DDM_LibScribeIsClassBtFinished(9, &u8_out);
      case Fn::SYN_LibRegisterModuleDataSynInfo:
        return SYN_LibRegisterModuleDataSynInfo(6, 1, 0, 0, 0);
      case Fn::SYN_LibRegisterSynDataBlockFix:
        return SYN_LibRegisterSynDataBlockFix(5, 2, 2, 1, 4, 4, 0, 0, extract_unit,
            restore_unit, 0, 0);
      case Fn::SYN_LibRegisterModuleDataMode: return SYN_LibRegisterModuleDataMode(5, 0, 0, 0);
      case Fn::SYN_LibRegisterSetBitTableFun: return SYN_LibRegisterSetBitTableFun(5, reset_units);
      case Fn::SYN_LibIsCpuActive: return SYN_LibIsCpuActive();
      case Fn::SYN_LibModuleDataUnitModifyRecord: return SYN_LibModuleDataUnitModifyRecord(5, 0, 3);
      case Fn::RPC_LibParaInit: return RPC_LibParaInit(&para, 1);
      case Fn::RPC_LibParaSet: para.ulNum = 1; return RPC_LibParaSet(&para, 0, 1, 32, text);
      case Fn::RPC_LibSyncCall: para = {}; return RPC_LibSyncCall(0, "service", &para, result);
      case Fn::RPC_LibAyncCall: para = {}; return RPC_LibAyncCall(0, "service", &para);
      case Fn::PUB_LibAddObjAllCfg: return PUB_LibAddObjAllCfg(1, 2, 17, flags);
      case Fn::PUB_LibDelObjAllCfg: return PUB_LibDelObjAllCfg(1, 2, 17, flags);
      case Fn::DEV_GetMaxFrameNum: return DEV_GetMaxFrameNum();
      case Fn::DEV_LibIfFrameExist: return DEV_LibIfFrameExist(0);
      case Fn::DEV_LibGetFrameAttribute: return DEV_LibGetFrameAttribute(0, 5, 1, &u8_out);
      case Fn::DEV_LibIfBoardExist: return DEV_LibIfBoardExist(0);
      case Fn::DEV_LibGetBoardAttribute: return DEV_LibGetBoardAttribute(0, 0x10008, 2, &u16_out);
      case Fn::DEV_LibGetPortTypeOfBoard: return DEV_LibGetPortTypeOfBoard(0, 0, &u8_out);
      case Fn::DEV_LibGetBIndexFromFrameIDSlotID:
        return DEV_LibGetBIndexFromFrameIDSlotID(0, 1, &u16_out);
      case Fn::DEV_LibGetFrameIDSlotIDFromBIndex:
        return DEV_LibGetFrameIDSlotIDFromBIndex(1, &u16_out, &u8_out);
      case Fn::DEV_LibPrintf: DEV_LibPrintf(1, "x"); return 0;
      case Fn::DEV_LibRecLongTimeCostPrimaryWordLog:
        DEV_LibRecLongTimeCostPrimaryWordLog("f", 1, 100, 6, nullptr); return 0;
      case Fn::PTOPO_LibGetHardPhyIDFromPortId:
        return PTOPO_LibGetHardPhyIDFromPortId(0, 0, 0, &u8_out, &second_u8);
      case Fn::PTOPO_ESWITCH_IsEswitchPort: return PTOPO_ESWITCH_IsEswitchPort(0, 0, 0);
      case Fn::CAP_LibRegCapMngtProc: return CAP_LibRegCapMngtProc(4, &record);
      case Fn::CAP_LibGetCapability: return CAP_LibGetCapability(3, 17, 1);
      case Fn::ATTR_LibRegClassMngtProc: return ATTR_LibRegClassMngtProc(4, &record);
      case Fn::ATTR_LibGetAttribute: return ATTR_LibGetAttribute(3, 17, 1, text, 4);
      case Fn::DBG_xPrintfSwitch: return DBG_xPrintfSwitch(54, 0);
      case Fn::DBG_SetDbwinLineNo: DBG_SetDbwinLineNo(1); return 0;
      case Fn::xPrintf: xPrintf(54, "x"); return 0;
      case Fn::DBG_InnerPrintReltime: DBG_InnerPrintReltime(54, "x"); return 0;
      case Fn::DBG_InnerPrintInfo: DBG_InnerPrintInfo(54, "x"); return 0;
      case Fn::DBG_PrintHelpInfoLevel0: DBG_PrintHelpInfoLevel0(54, 1, "x"); return 0;
      case Fn::DBG_PrintHelpInfo: DBG_PrintHelpInfo(54, 1, 0, 0, 0, "x", 0, 0); return 0;
      case Fn::ERR_InnerRecErr: ERR_InnerRecErr("f", 1, 2); return 0;
      case Fn::ZEL_kvtStaticMemPtGet: return ZEL_kvtStaticMemPtGet();
      case Fn::ZEL_kvtBlockMemPtGet: return ZEL_kvtBlockMemPtGet();
      case Fn::ZEL_kvtDynamicMemPtGet: return ZEL_kvtDynamicMemPtGet();
      case Fn::ZEL_MemAlloc_F: return truth(ZEL_MemAlloc_F(54, 2, 4, "f", 1));
      case Fn::ZEL_MemFree: return ZEL_MemFree(54, block);
      case Fn::ZEL_Free: return ZEL_Free(second_block);
      case Fn::ZEL_HASH_Create_Table: return ZEL_HASH_Create_Table(4, 0);
      case Fn::ZEL_HASH_Add_Node: return ZEL_HASH_Add_Node(table, words, 1, 0);
      case Fn::ZEL_HASH_Find_Node: return truth(ZEL_HASH_Find_Node(table, 1, text, same));
      case Fn::ZEL_HASH_Delete_Node: return ZEL_HASH_Delete_Node(table, words, 1);
      case Fn::ZEL_MemCmp: return ZEL_MemCmp("ab", "ab", 2);
      case Fn::ZEL_StrLen: return ZEL_StrLen("abc");
      case Fn::ZEL_GetTick: return ZEL_GetTick();
      case Fn::ZEL_ClearWatchDog: ZEL_ClearWatchDog(); return 0;
      case Fn::ZEL_TaskRunClearDog: ZEL_TaskRunClearDog(20); return 0;
      case Fn::ZEL_TaskDelay: ZEL_TaskDelay(1); return 0;
      case Fn::KVT_RegisterPIDInfo: return KVT_RegisterPIDInfo(55, start_pid, take_message);
      case Fn::KVT_RegisterMsgTaskPrio: return KVT_RegisterMsgTaskPrio(1, 8);
      case Fn::KVT_Printf: KVT_Printf("x"); return 0;
      case Fn::KVT_StrNCmp: return KVT_StrNCmp("ab", "ac", 1);
      case Fn::memset_s: return static_cast<u32>(memset_s(text, sizeof text, 1, 4));
      case Fn::memcpy_s: return static_cast<u32>(memcpy_s(text, sizeof text, "abc", 4));
      case Fn::strncpy_s: return static_cast<u32>(strncpy_s(text, sizeof text, "abc", 3));
      case Fn::snprintf_truncated_s:
        return static_cast<u32>(snprintf_truncated_s(text, sizeof text, "%u", 12u));
      case Fn::vsnprintf_truncated_s:
        return static_cast<u32>(print_through(text, sizeof text, "%u", 12u));
    }
    // clang-format on
    return 0;
  }
};

bool works_without_node(Fn fn) {
  return fn == Fn::ZEL_MemCmp || fn == Fn::ZEL_StrLen || fn == Fn::KVT_StrNCmp ||
         fn == Fn::memset_s || fn == Fn::memcpy_s || fn == Fn::strncpy_s ||
         fn == Fn::snprintf_truncated_s || fn == Fn::vsnprintf_truncated_s;
}

TEST(HostFaults, every_function_fails_on_the_call_asked_for_and_then_does_nothing_else) {
  for (const auto &info : host::fn_infos) {
    SCOPED_TRACE(info.name);
    EXPECT_EQ(host::find_fn(info.name), info.fn);
    EXPECT_NE(dlsym(RTLD_DEFAULT, info.name), nullptr);
    Rig rig;
    auto scope = host::enter(*rig.instance);
    if (info.fn == Fn::ZEL_HASH_Find_Node || info.fn == Fn::ZEL_HASH_Delete_Node) {
      ASSERT_EQ(rig.call(Fn::ZEL_HASH_Add_Node), 0u);
    }
    const u32 calls = rig.node.faults.calls(info.fn);
    rig.node.faults.fail_nth(info.fn, 1);
    const auto before = rig.effects();
    const u32 faulted = rig.call(info.fn);
    EXPECT_EQ(rig.effects(), before);
    EXPECT_EQ(rig.node.faults.hits(info.fn), 1u);
    const u32 good = rig.call(info.fn);  // the fault is over
    EXPECT_EQ(rig.node.faults.calls(info.fn), calls + 2);
    if (info.answer == Answer::nothing) {
      EXPECT_NE(rig.effects(), before);
    } else {
      EXPECT_EQ(faulted, info.fault);
      EXPECT_NE(good, faulted);
    }
    rig.node.faults.fail_always(info.fn, 0x77);
    const bool answers_number = info.answer == Answer::code || info.answer == Answer::value;
    for (int i = 0; i < 3 && info.answer != Answer::nothing; ++i) {
      EXPECT_EQ(rig.call(info.fn), answers_number ? 0x77u : 0u);
    }
    rig.node.faults.clear();
    EXPECT_FALSE(rig.node.faults.armed());
  }
}

TEST(HostFaults, outside_any_node_functions_refuse_or_work_without_one) {
  for (const auto &info : host::fn_infos) {
    SCOPED_TRACE(info.name);
    Rig rig;
    const auto before = rig.effects();
    const auto calls = rig.node.faults.total_calls();
    const u32 answer = rig.call(info.fn);
    if (works_without_node(info.fn)) {
      EXPECT_NE(answer, info.fault);
    } else {
      EXPECT_EQ(answer, info.answer == Answer::code ? u32{host::code_no_node} : 0u);
    }
    EXPECT_EQ(rig.effects(), before);
    EXPECT_EQ(rig.node.faults.total_calls(), calls);
  }
}

TEST(HostFaults, a_run_of_calls_and_delays_can_be_set) {
  Node node;
  auto scope = host::enter(node);
  node.faults.fail_nth(Fn::DEV_LibIfFrameExist, 2, 5, 2);
  node.chassis.add_frame(0, 1);
  std::vector<u32> answers;
  for (int i = 0; i < 4; ++i) {
    answers.push_back(DEV_LibIfFrameExist(0));
  }
  EXPECT_EQ(answers, (std::vector<u32>{0, 5, 5, 0}));
  node.faults.delay(Fn::DEV_LibIfFrameExist, 10);
  node.faults.delay(Fn::ZEL_GetTick, 3, 2);
  DEV_LibIfFrameExist(0);
  DEV_LibIfFrameExist(0);
  EXPECT_EQ(ZEL_GetTick(), 20u);
  EXPECT_EQ(ZEL_GetTick(), 23u);
  EXPECT_EQ(ZEL_GetTick(), 23u);
}

TEST(HostJournal, shows_calls_in_order_without_addresses) {
  Node node;
  host::Instance *instance = node.root.add(3);
  node.journal.name(same, "same");
  node.journal.start();
  node.journal.leave_out({Fn::ZEL_GetTick});
  std::size_t seen = 0;
  node.journal.set_observer([&](const host::JournalEntry &) { ++seen; });
  {
    auto scope = host::enter(*instance);
    ROOT_LibGetCurrentThis();
    PmWord *words = static_cast<PmWord *>(ZEL_MemAlloc_F(54, 2, 24, "file", 12));
    const Handle table = ZEL_HASH_Create_Table(8, 0);
    ZEL_HASH_Add_Node(table, words, 3, 0);
    ZEL_GetTick();
    ZEL_HASH_Find_Node(table, 3, words, same);
    KVT_Printf("\r\n \"%s\" \xA3", "a");
    node.faults.fail_nth(Fn::DDM_LibSubscribe, 1, 0x689380);
    DDM_LibSubscribe(3, 0x360011, restore_nothing);
    ZEL_HASH_Delete_Node(table, words, 3);
    ZEL_MemFree(54, words);
    ZEL_MemFree(54, words);
  }
  EXPECT_EQ(node.journal.since(0), (std::vector<std::string>{
                                       "ROOT_LibGetCurrentThis() = instance#3",
                                       "ZEL_MemAlloc_F(54, 2, 24, \"file\", 12) = block#1",
                                       "ZEL_HASH_Create_Table(8, 0) = 1",
                                       "ZEL_HASH_Add_Node(1, block#1, 3, 0) = 0",
                                       "ZEL_HASH_Find_Node(1, 3, same) = block#1",
                                       "KVT_Printf(\"\\r\\n \\\"a\\\" \\xA3\")",
                                       "DDM_LibSubscribe(3, 0x360011, fn#1) = 0x689380 [fault]",
                                       "ZEL_HASH_Delete_Node(1, block#1, 3) = 0",
                                       "ZEL_MemFree(54, block#1) = 0",
                                       "ZEL_MemFree(54, &) = 0x4D0010",
                                   }));
  EXPECT_EQ(seen, 10u);
  node.journal.keep_only({Fn::ZEL_StrLen});
  auto scope = host::enter(*instance);
  ZEL_StrLen("abc");
  ZEL_GetTick();
  EXPECT_EQ(node.journal.since(10), std::vector<std::string>{"ZEL_StrLen(\"abc\") = 3"});
}

}  // namespace

// Every function the host offers to the library, by number: faults, counts, journal and sweeps are
// keyed by it. The list is in the order of the declarations under platform/.
#ifndef HOST_FN_HPP
#define HOST_FN_HPP

#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/platform.h"

namespace host {

// What a function answers, which is also what a fault can make it answer.
enum class Answer {
  code,     // 0 for success: a fault answers a code, 1 unless told otherwise
  pointer,  // a fault answers null
  handle,   // a fault answers handle 0
  value,    // the value itself: a fault answers the value in the list, unless told otherwise
  nothing   // a fault makes the call do nothing
};

// X(name, what it answers, what a fault answers unless told otherwise)
#define HOST_FUNCTIONS(X)                             \
  X(ROOT_LibCompRegisterInfo, code, 1)                \
  X(ROOT_LibCompLocalCreate, pointer, 0)              \
  X(ROOT_LibCompHandleInit, code, 1)                  \
  X(ZEL_HandleFinalize, code, 1)                      \
  X(ROOT_LibGetCurrentThis, pointer, 0)               \
  X(ROOT_LibGetCurrentCID, value, 0)                  \
  X(ROOT_LibProcFidPidMsg, code, 1)                   \
  X(ROOT_LibIsPidDepend, value, 0)                    \
  X(ROOT_LibSrvmPubishSapi, code, 1)                  \
  X(DMS_MsgRecvIidGet, value, 0xFFFFFFFF)             \
  X(DDM_RegisterSpecAppInfo, code, 1)                 \
  X(DDM_LibSubscribe, code, 1)                        \
  X(DDM_LibScribeIsClassBtFinished, code, 1)          \
  X(SYN_LibRegisterModuleDataSynInfo, code, 1)        \
  X(SYN_LibRegisterSynDataBlockFix, code, 1)          \
  X(SYN_LibRegisterModuleDataMode, code, 1)           \
  X(SYN_LibRegisterSetBitTableFun, code, 1)           \
  X(SYN_LibIsCpuActive, value, 0)                     \
  X(SYN_LibModuleDataUnitModifyRecord, code, 1)       \
  X(RPC_LibParaInit, code, 1)                         \
  X(RPC_LibParaSet, code, 1)                          \
  X(RPC_LibSyncCall, code, 1)                         \
  X(RPC_LibAyncCall, code, 1)                         \
  X(PUB_LibAddObjAllCfg, code, 1)                     \
  X(PUB_LibDelObjAllCfg, code, 1)                     \
  X(DEV_GetMaxFrameNum, value, 0)                     \
  X(DEV_LibIfFrameExist, code, 1)                     \
  X(DEV_LibGetFrameAttribute, code, 1)                \
  X(DEV_LibIfBoardExist, code, 1)                     \
  X(DEV_LibGetBoardAttribute, code, 1)                \
  X(DEV_LibGetPortTypeOfBoard, code, 1)               \
  X(DEV_LibGetBIndexFromFrameIDSlotID, code, 1)       \
  X(DEV_LibGetFrameIDSlotIDFromBIndex, code, 1)       \
  X(DEV_LibPrintf, nothing, 0)                        \
  X(DEV_LibRecLongTimeCostPrimaryWordLog, nothing, 0) \
  X(PTOPO_LibGetHardPhyIDFromPortId, code, 1)         \
  X(PTOPO_ESWITCH_IsEswitchPort, value, 0)            \
  X(CAP_LibRegCapMngtProc, code, 1)                   \
  X(CAP_LibGetCapability, code, 1)                    \
  X(ATTR_LibRegClassMngtProc, code, 1)                \
  X(ATTR_LibGetAttribute, code, 1)                    \
  X(DBG_xPrintfSwitch, value, 0)                      \
  X(DBG_SetDbwinLineNo, nothing, 0)                   \
  X(xPrintf, nothing, 0)                              \
  X(DBG_InnerPrintReltime, nothing, 0)                \
  X(DBG_InnerPrintInfo, nothing, 0)                   \
  X(DBG_PrintHelpInfoLevel0, nothing, 0)              \
  X(DBG_PrintHelpInfo, nothing, 0)                    \
  X(ERR_InnerRecErr, nothing, 0)                      \
  X(ZEL_kvtStaticMemPtGet, value, 0)                  \
  X(ZEL_kvtBlockMemPtGet, value, 0)                   \
  X(ZEL_kvtDynamicMemPtGet, value, 0)                 \
  X(ZEL_MemAlloc_F, pointer, 0)                       \
  X(ZEL_MemFree, code, 1)                             \
  X(ZEL_Free, code, 1)                                \
  X(ZEL_HASH_Create_Table, handle, 0)                 \
  X(ZEL_HASH_Add_Node, code, 1)                       \
  X(ZEL_HASH_Find_Node, pointer, 0)                   \
  X(ZEL_HASH_Delete_Node, code, 1)                    \
  X(ZEL_MemCmp, value, 1)                             \
  X(ZEL_StrLen, value, 0)                             \
  X(ZEL_GetTick, value, 0)                            \
  X(ZEL_ClearWatchDog, nothing, 0)                    \
  X(ZEL_TaskRunClearDog, nothing, 0)                  \
  X(ZEL_TaskDelay, nothing, 0)                        \
  X(KVT_RegisterPIDInfo, code, 1)                     \
  X(KVT_RegisterMsgTaskPrio, code, 1)                 \
  X(KVT_Printf, nothing, 0)                           \
  X(KVT_StrNCmp, value, 1)                            \
  X(memset_s, code, 1)                                \
  X(memcpy_s, code, 1)                                \
  X(strncpy_s, code, 1)                               \
  X(snprintf_truncated_s, value, 0xFFFFFFFF)          \
  X(vsnprintf_truncated_s, value, 0xFFFFFFFF)

enum class Fn : u32 {
#define HOST_FN_NAME(name, answer, fault) name,
  HOST_FUNCTIONS(HOST_FN_NAME)
#undef HOST_FN_NAME
};

struct FnInfo {
  Fn fn;
  const char *name;
  Answer answer;
  u32 fault;  // what a fault answers unless told otherwise
};

inline constexpr FnInfo fn_infos[] = {
#define HOST_FN_INFO(name, answer, fault) {Fn::name, #name, Answer::answer, fault},
    HOST_FUNCTIONS(HOST_FN_INFO)
#undef HOST_FN_INFO
};

inline constexpr std::size_t fn_count = sizeof fn_infos / sizeof fn_infos[0];

constexpr std::size_t index_of(Fn fn) {
  return static_cast<std::size_t>(fn);
}
constexpr const FnInfo &info_of(Fn fn) {
  return fn_infos[index_of(fn)];
}
constexpr const char *name_of(Fn fn) {
  return info_of(fn).name;
}

// The function of that name; none when there is no such function.
std::optional<Fn> find_fn(std::string_view name);

// Codes of the stand-in's own, answered where a service refuses a call. All are non-zero and lie
// apart from the library's codes, so that a code tells which side refused.
enum Code : u32 {
  code_fault = 1,               // a fault was armed
  code_no_node = 0x4D0001,      // called outside any node
  code_null = 0x4D0002,         // a null pointer where one is needed
  code_no_instance = 0x4D0003,  // no such instance, or none is current
  code_unknown = 0x4D0004,      // class, module, service, handle or attribute not known
  code_range = 0x4D0005,        // index or unit outside its range
  code_length = 0x4D0006,       // wrong length
  code_no_frame = 0x4D0007,     // no such frame or slot
  code_no_board = 0x4D0008,     // no board there
  code_no_port = 0x4D0009,      // the board has no such port
  code_not_wired = 0x4D000A,    // the port is not wired to the LAN switch
  code_exists = 0x4D000B,       // already there
  code_unreachable = 0x4D000C,  // the owner of a service cannot be reached
  code_kind = 0x4D000D,         // a parameter kind that this call cannot carry
  code_not_linked = 0x4D000E,   // a hash node that is not where the caller says
  code_foreign = 0x4D000F,      // a block that the host did not hand out
  code_twice = 0x4D0010,        // a block that was given back already
  code_no_ptp = 0x4D0011,       // the owner knows no such PTP
  code_in_deletion = 0x4D0012,  // the object's configuration is being deleted
  code_full = 0x4D0013,         // nothing left to hand out
  code_refused = 0x4D0014       // refused by a setting of the stand-in
};

}  // namespace host

#endif

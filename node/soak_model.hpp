// The model of a soak: what the library should answer, from plain maps and loops.
//
// It has every exported function under its own name, as a static member, and stands on a host node
// of its own beside the library's. It never calls the library and shares no code with it: what both
// answer, record, print and ask of their hosts is compared after every step.
#ifndef NODE_SOAK_MODEL_HPP
#define NODE_SOAK_MODEL_HPP

#include <cstdio>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "host/host.hpp"
#include "pm.h"

// The exported functions.
// clang-format off
#define SOAK_FUNCTIONS(X) \
  X(PM_AttrDbFunc) X(PM_FidInitProc) X(PM_GetPmSpec) X(PM_LibAddVirtualPtp) \
  X(PM_LibBookAddBookFunc) X(PM_LibBookCallBookedFuncs) X(PM_LibBookDelBookFunc) \
  X(PM_LibCfgAddSubInfoNode) X(PM_LibCfgAddSubInfoNodeToCB) X(PM_LibCfgGetPtpTypeNum) \
  X(PM_LibCfgIsInputValid) X(PM_LibCfgRegSubLinePid) X(PM_LibCfgReleaseMem) X(PM_LibCfgVarInit) \
  X(PM_LibCmpStaticDBNode) X(PM_LibConstructProc) X(PM_LibConverDbErrorCode) \
  X(PM_LibCreateStaticDBNode) X(PM_LibDbgGetPtpTypeDesc) X(PM_LibDbgPrintHelp) \
  X(PM_LibDbgPrintSubCallBackInfo) X(PM_LibDbgPrintSubLineInfo) \
  X(PM_LibDbgShowAllRegedLineSummary) X(PM_LibDbgShowOneRegedLineDetail) X(PM_LibDbgShowPTPSpec) \
  X(PM_LibDbgShowPrimFuncsByPrimType) X(PM_LibDbgShowPtpDetails) X(PM_LibDbgShowPtpFromFSP) \
  X(PM_LibDbgShowPtpFromPtpID) X(PM_LibDbgShowRegedLineInfo) X(PM_LibDbgSwitchControl) \
  X(PM_LibDebugMsgProc) X(PM_LibDelObjectCfg) X(PM_LibDelVirtualPtp) X(PM_LibDeleteStaticDBNode) \
  X(PM_LibDestructProc) X(PM_LibDotPrintf) X(PM_LibEventPrimNotify) X(PM_LibEventPtpLinkDown) \
  X(PM_LibEventPtpLinkUp) X(PM_LibFidInitProcForMC) X(PM_LibFindStaticDBNode) \
  X(PM_LibGetActiveSpeedFromPTP) X(PM_LibGetAdminStatusFromPTP) X(PM_LibGetAliasFromPTP) \
  X(PM_LibGetAllDynDataFromPtpID) X(PM_LibGetCoClassFromPtpID) \
  X(PM_LibGetCoIndexAndCotypeByFspOntid) X(PM_LibGetConnPresentFromPTP) \
  X(PM_LibGetCounterDiscontinuityTimeFromPTP) X(PM_LibGetDescFromPTP) \
  X(PM_LibGetDynPrivMemRangeFromMemID) X(PM_LibGetDynPubDataAttr) X(PM_LibGetFSPFromPtp) \
  X(PM_LibGetFspOntidByCoIndexAndCotype) X(PM_LibGetHardwarePortNum) \
  X(PM_LibGetLastChangeTickFromPTP) X(PM_LibGetLinkStateFromPTP) X(PM_LibGetLogicPtpType) \
  X(PM_LibGetMaxPtpID) X(PM_LibGetMtuFromPTP) X(PM_LibGetNameFromPTP) X(PM_LibGetNextPtpFromPTP) \
  X(PM_LibGetNextPtpFromVS) X(PM_LibGetNextPtpIdByBIndex) X(PM_LibGetNextPtpIdByPtpID) \
  X(PM_LibGetNextPtpIdInBoardByPort) X(PM_LibGetNextVisiblePtpFromPTP) \
  X(PM_LibGetObjectNumInDelete) X(PM_LibGetPhyAddrFromPTP) X(PM_LibGetPhyIndexFromPTP) \
  X(PM_LibGetPhyIndexFromPTPEnc) X(PM_LibGetPhyIndexFromPTPEx) X(PM_LibGetPmSpec) \
  X(PM_LibGetPortNumFromBIndex) X(PM_LibGetPrivStaticDataFromPTP) \
  X(PM_LibGetPromiscuousModeFromPTP) X(PM_LibGetPtpAttributeCluster) X(PM_LibGetPtpCapType) \
  X(PM_LibGetPtpCapability) X(PM_LibGetPtpCoClass) X(PM_LibGetPtpFromDesc) X(PM_LibGetPtpFromFSP) \
  X(PM_LibGetPtpFromPhyIndex) X(PM_LibGetPtpFromPhyIndexEx) X(PM_LibGetPtpFromPhyIndexOnSrv) \
  X(PM_LibGetPtpFromPhyIndexOnSrvByEnum) X(PM_LibGetPtpMaxNum) X(PM_LibGetPtpMaxTypeValue) \
  X(PM_LibGetPtpMngtVsID) X(PM_LibGetPtpPhyStateFromPTP) X(PM_LibGetPtpTypeForAttm) \
  X(PM_LibGetSpecificFromPTP) X(PM_LibGetSpeedFromPTP) X(PM_LibGetStatisticFromPTP) \
  X(PM_LibGetSubActiveSpeedFromPTP) X(PM_LibGetSubAttrFromPTP) X(PM_LibGetSubAttrFromPTPNEW) \
  X(PM_LibGetSubFunc) X(PM_LibGetSubFuncFromPTP) X(PM_LibGetSubFuncFromPtpType) \
  X(PM_LibGetSubInfo) X(PM_LibGetSubInfoFromSuffix) X(PM_LibGetSubStatsFromPTP) \
  X(PM_LibGetTxQLenFromPTP) X(PM_LibGetTypeFromPTP) X(PM_LibGetVisiblePtpFromFSP) \
  X(PM_LibGetVsMaskFromPtp) X(PM_LibGetVsNumByVsMask) X(PM_LibGetlinkTrapSwitchFromPTP) \
  X(PM_LibHelpFunCmd1) X(PM_LibHelpFunCmd10) X(PM_LibHelpFunCmd2) X(PM_LibHelpFunCmd3) \
  X(PM_LibHelpFunCmd4) X(PM_LibHelpFunCmd5) X(PM_LibHelpFunCmd6) X(PM_LibHelpFunCmd7) \
  X(PM_LibIfPhyPtpExist) X(PM_LibIfPortBelongMultiVs) X(PM_LibIfPtpExist) X(PM_LibIfPtpInVs) \
  X(PM_LibIfPtpOnlyInOneVs) X(PM_LibInitPMDbgSwitches) X(PM_LibInitPmDbWinCfg) \
  X(PM_LibIsCheckPrimaryWord) X(PM_LibIsObjSupportSrvCfg) X(PM_LibIsPrimaryNeedReturn) \
  X(PM_LibIsPtpTypeValid) X(PM_LibIsPtpVisible) X(PM_LibLibCfgGetNextSubInfoNode) \
  X(PM_LibLinkEventNotify) X(PM_LibMallocBookInit) X(PM_LibMallocForDynCB) \
  X(PM_LibMallocForSubAttrCB) X(PM_LibMallocInit) X(PM_LibMallocSubAttrGlobalVar) \
  X(PM_LibMallocSubCallBack) X(PM_LibMsgProc) X(PM_LibMsgProcEntry) \
  X(PM_LibNotifyDelObjectCfgResult) X(PM_LibOperCheckCanDelPTP) X(PM_LibPidInitProc) \
  X(PM_LibPltEventRegister) X(PM_LibPltOperCheckRegister) X(PM_LibPltRegisterPtpCapAttrInitFunc) \
  X(PM_LibPltSetInstanceDynAttributeDefaultValue) X(PM_LibPltZelCfg) X(PM_LibPrimNotifyRtRestore) \
  X(PM_LibPrimaryNotifyAfter) X(PM_LibPrimaryNotifyBefore) X(PM_LibPrimarySapiPublish) \
  X(PM_LibProcTulviIIDMsg) X(PM_LibPtpIdGetNextFromPortPtp) X(PM_LibPtpNumSpecInit) \
  X(PM_LibPtpTypeNumInit) X(PM_LibPtpVsPrimaryNotifyAfter) X(PM_LibPtpVsPrimaryNotifyBefore) \
  X(PM_LibRegAttrClassMngt) X(PM_LibRegCapClassMngt) X(PM_LibRegInstProductMngtFuncProc) \
  X(PM_LibRegPrimaryWordCallback) X(PM_LibRegProductMngtFuncProc) X(PM_LibRegPtpClassFunc) \
  X(PM_LibRegSubLineInfo) X(PM_LibRegisterInfo) X(PM_LibScribeRestoreObjDelNum) \
  X(PM_LibScribeRestorePrimNotify) X(PM_LibScribeRestore_AttrCB) X(PM_LibScribeRestore_DynamicCB) \
  X(PM_LibScribeRestore_Spec) X(PM_LibScribeRestore_StaticDB) X(PM_LibScribeRestore_SubAttrCB) \
  X(PM_LibScribeRestore_SubInnerSubInfo) X(PM_LibSetDescFromPTP) X(PM_LibSetDynPubDataAttr) \
  X(PM_LibSetObjectNumInDelete) X(PM_LibSetPmSpec) X(PM_LibShowAllHelpFunc) \
  X(PM_LibShowDebugHelp) X(PM_LibShowOneHelpFunc) X(PM_LibShowSubLineInfo) X(PM_LibSpecUpdate) \
  X(PM_LibStaticDataGetDataFromPTP) X(PM_LibSubAttrInit) X(PM_LibSubInnerSubInfoInit) \
  X(PM_LibSynExtractStaticData) X(PM_LibSynRegister) X(PM_LibSynResetAllBitTable) \
  X(PM_LibSynRestoreStaticData) X(PM_LibSynRestoreStaticDataV0) X(PM_LibUnRegPrimaryWordCallback) \
  X(PM_LibUpdateStaticDBNode) X(PM_PrimMsgProc) X(PM_SapiBookCallBookedFuncs) \
  X(PM_SapiNotifyDelObjectCfgResult) X(PM_ScribeClass) X(PM_SynSetDynPrivAttrBitTable) \
  X(Pm_Lib_CmpFromPhyInfo)
// clang-format on

namespace soak {

// One side's view of the tables that an instance keeps. A flag stands with its table.
struct Board {  // NOLINT(clang-analyzer-optin.performance.Padding)
  struct SubLine {
    PmSubLineInfo info{};
    void *block = nullptr;
  };
  struct Callbacks {
    u16 type = 0;
    PmSubCallBack slots{};
  };
  struct Booking {
    u32 id = 0;
    u16 type = 0;
    PmBookFunc function = nullptr;
    void *block = nullptr;
  };
  struct Static {
    PtpStaticData data{};
    void *block = nullptr;
  };
  struct Cached {
    u16 ptp = 0;
    void *block = nullptr;
  };
  using Place = std::tuple<u8, u16, u16>;  // class, first and second index

  u32 para = 0;
  u32 cid = 0;
  Handle handle = 0;

  std::vector<SubLine> sub_lines;
  u16 sub_line_count = 0;

  bool counted = false;  // the control block is there
  u16 type_count = 0;
  u16 max_type = 0;
  bool has_types = false;
  std::vector<PmSubInnerSubInfo> types;
  bool has_callbacks = false;
  std::vector<Callbacks> callbacks;

  bool has_bookings = false;
  std::vector<Booking> bookings[PM_PRIM_NUM];
  u32 last_booking = 0;

  bool has_anchor = false;
  bool has_store = false;
  std::vector<PtpDynPubData> dynamics;

  PmPtpClassFunc classes[PM_PTP_CLASS_NUM]{};
  u32 switches[PM_SWITCH_NUM]{};
  bool described = false;  // the switches have their texts
  bool window = false;     // the table of debug-window commands is filled

  Handle static_table = 0;
  std::map<u16, Static> statics;
  Handle cache_table = 0;
  std::map<Place, Cached> cache;

  bool has_hooks = false;
  PmProductMngt hooks{};
  u32 deleting = 0;
};

// What stands in an instance's local data: the two words of its construction come first.
struct Local {
  u32 para;
  u32 cid;
  Board *board;
};

struct Model {
// A name that is declared cannot stand in parentheses.
// NOLINTNEXTLINE(bugprone-macro-parentheses)
#define SOAK_DECLARE(name) static decltype(::name) name;
  SOAK_FUNCTIONS(SOAK_DECLARE)
#undef SOAK_DECLARE

  // What all instances of a process share.
  static PmSpec spec;
  static PmAttrCB numbers;
  static PmSubAttrNum type_numbers;
  static PmProductMngt hooks;

  // The current instance's tables.
  static Board &board();
  static void hand_over_board(void *local, std::unique_ptr<Board> board);
  // All of them are let go; there is no instance left.
  static void forget_boards();
  // Characters of a description that a record has room for.
  static u32 description_room();
  // Port types that the tables really have.
  static u32 types_there(const Board &board);
  static u32 callbacks_there(const Board &board);
  static void print_callbacks(const PmSubCallBack &slots);
};

// Records values of one source group and yields the code.
struct Recorder {
  const char *file;
  u32 operator()(u32 code, std::initializer_list<u32> values) const {
    for (const u32 value : values) {
      ERR_InnerRecErr(file, 0, value);
    }
    return code;
  }
  // The code itself, unless it is a success.
  u32 code(u32 code) const { return code == 0 ? 0 : (*this)(code, {code}); }
};
inline constexpr Recorder init_record{"frame/lib/emp/src/pm/pm_lib_init"};
inline constexpr Recorder core_record{"frame/lib/emp/src/pm/pm_lib_core_adapt"};
inline constexpr Recorder dbg_record{"frame/lib/emp/src/pm/pm_lib_dbg"};
inline constexpr Recorder sapi_record{"frame/lib/emp/src/pm/pm_lib_sapi"};

// A pointer as the traces show it, and whether it is the null one.
template <class T>
u32 shown(T *pointer) {
  return static_cast<u32>(reinterpret_cast<PmWord>(pointer));
}
template <class T>
u32 is_null(T *pointer) {
  return pointer == nullptr ? 1 : 0;
}

// What "%p" prints.
template <class T>
std::string as_pointer(T *function) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "%p", reinterpret_cast<const void *>(function));
  return text;
}

// A call of a host function whose work the model does in its own maps: counted, and failing when a
// fault says so.
bool host_fails(host::Fn fn);
// A block of a partition, cleared; null on failure.
void *take_block(u32 (*partition)(), std::size_t size);

}  // namespace soak

#endif

// Model: component, start-up, product hooks, trace printing.
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "node/soak_model.hpp"

namespace soak {

// -- Component

u32 Model::PM_LibRegisterInfo() {
  RootCompRegisterInfo info{};
  info.ulCompType = 54;
  std::memcpy(info.acName, "PM_lib", 6);
  info.pfnConstruct = PM_LibConstructProc;
  info.pfnDestruct = PM_LibDestructProc;
  info.pfnMsgProc = PM_LibMsgProcEntry;
  const u32 ret = init_record.code(ROOT_LibCompRegisterInfo(&info));
  DDM_RegisterSpecAppInfo(54, PM_LibSpecUpdate);
  return ret;
}

u32 Model::PM_LibConstructProc(u32 ulPhase, u32 ulPara, u32 ulCid, u32) {
  if (ulPhase == 1 || ulPhase == 2) {
    return 0;
  }
  if (ulPhase != 0) {
    return init_record(1, {ulPhase});
  }
  void *local = ROOT_LibCompLocalCreate(ulCid, 54, sizeof(Local));
  if (local == nullptr) {
    return init_record(1, {ulCid});
  }
  auto made = std::make_unique<Board>();
  made->para = ulPara;
  made->cid = ulCid;
  const u32 ret = ROOT_LibCompHandleInit(54, ulCid, &made->handle);
  hand_over_board(local, std::move(made));
  return ret == 0 ? 0 : init_record(1, {ret});
}

u32 Model::PM_LibDestructProc(void *pLocalData) {
  const Board *of = static_cast<const Local *>(pLocalData)->board;
  const u32 ret = ZEL_HandleFinalize(of->handle);
  return ret == 0 ? 0 : init_record(1, {ret});
}

u32 Model::PM_LibMsgProcEntry(void *pMsg, void *pLocalData) {
  if (pMsg == nullptr) {
    return 1;
  }
  const u32 iid = DMS_MsgRecvIidGet(pMsg);
  return iid > 31 ? 0 : PM_LibProcTulviIIDMsg(iid, pMsg, pLocalData);
}

u32 Model::PM_LibProcTulviIIDMsg(u32 ulIid, void *pMsg, void *pLocalData) {
  if (ulIid != 4) {
    return 22;
  }
  const Board *of = static_cast<const Local *>(pLocalData)->board;
  return ROOT_LibProcFidPidMsg(of->cid, pMsg, pLocalData);
}

// -- Start-up

u32 Model::PM_FidInitProc(u32 ulPhase) {
  const u32 fid = PM_LibGetPmSpec(4);
  if (ulPhase != 0) {
    return 0;
  }
  const char *step = "KVT_RegisterPIDInfo";
  u32 ret = KVT_RegisterPIDInfo(54, PM_LibPidInitProc, PM_LibMsgProc);
  if (ret == 0) {
    step = "KVT_RegisterMsgTaskPrio";
    ret = KVT_RegisterMsgTaskPrio(fid, 8);
  }
  if (ret == 0) {
    step = "PM_LibFidInitProcForMC";
    ret = PM_LibFidInitProcForMC();
  }
  if (ret != 0) {
    KVT_Printf("\r\n PM_LibFidInitProc-->%s fail, ulRet = 0x%x", step, ret);
    core_record(0, {ret});
  }
  return 0;
}

u32 Model::PM_LibFidInitProcForMC() {
  PM_LibCfgVarInit();
  u32 ret = PM_LibPltZelCfg();
  if (ret != 0) {
    KVT_Printf("\r\n PM_LibFidInitProcForMC-->PM_ZelCfg fail, ulRet = 0x%x", ret);
    return core_record(ret, {ret});
  }
  PM_LibCfgRegSubLinePid();
  PM_LibInitPMDbgSwitches();
  return 0;
}

u32 Model::PM_LibPidInitProc(u32 enPhase) {
  DEV_LibPrintf(0x8000, "PM_LibPidInitProc-> \t enPhase=0x%x ", enPhase);
  u32 ret = 0;
  if (enPhase == 1) {
    ret = PM_LibMallocInit();
    if (ret != 0) {
      return init_record(ret, {ret});
    }
    ret = PM_ScribeClass();
    PM_LibPrimarySapiPublish();
    DEV_LibPrintf(0x8000, "PM_LibPidInitProc-> \t PM_ScribeClass ulRet=%u ", ret);
  } else if (enPhase == 2) {
    PM_LibInitPmDbWinCfg();
  } else if (enPhase == 8) {
    ret = PM_LibSynRegister();
    if (ret != 0) {
      return init_record(ret, {ret});
    }
  }
  if (hooks.pfnPhaseProc == nullptr) {
    return 0;
  }
  ret = hooks.pfnPhaseProc(enPhase);
  return ret == 0 ? 0 : init_record(ret, {enPhase, ret});
}

u32 Model::PM_LibMallocInit() {
  const u32 ret = PM_LibPtpNumSpecInit();
  return ret != 0 ? ret : init_record.code(PM_LibMallocBookInit());
}

u32 Model::PM_LibPrimarySapiPublish() {
  const u32 cid = ROOT_LibGetCurrentThis()->ulCid;
  for (const char *name : {"PM_SapiBookCallBookedFuncs", "PM_SapiNotifyDelObjectCfgResult"}) {
    const u32 ret = ROOT_LibSrvmPubishSapi(name, cid);
    if (ret != 0) {
      sapi_record(0, {ret, cid});
    }
  }
  return 0;
}

// -- Hooks

u32 Model::PM_LibRegProductMngtFuncProc(const PmProductMngt *pstProductMngt) {
  if (pstProductMngt == nullptr) {
    return core_record(0x689380, {0});
  }
  hooks = *pstProductMngt;
  return 0;
}

u32 Model::PM_LibRegInstProductMngtFuncProc(const PmProductMngt *pstProductMngt) {
  Board &my = board();
  if (pstProductMngt == nullptr) {
    return core_record(0x689380, {0x689380});
  }
  if (!my.has_hooks) {
    my.has_hooks = take_block(ZEL_kvtBlockMemPtGet, sizeof(PmProductMngt)) != nullptr;
  }
  if (!my.has_hooks) {
    return core_record(0x689385, {0x689385});
  }
  my.hooks = *pstProductMngt;
  return 0;
}

u32 Model::PM_LibPltZelCfg() {
  return hooks.pfnZelCfg == nullptr ? 0 : hooks.pfnZelCfg();
}

u32 Model::PM_LibPltEventRegister() {
  const Board &my = board();
  if (hooks.pfnEventRegister != nullptr) {
    core_record.code(hooks.pfnEventRegister());
  }
  if (my.has_hooks && my.hooks.pfnEventRegister != nullptr) {
    return core_record.code(my.hooks.pfnEventRegister());
  }
  return 0;
}

u32 Model::PM_LibPltOperCheckRegister(PmWord ulWord1, PmWord ulWord2) {
  return hooks.pfnOperCheckRegister == nullptr ? core_record(0x689380, {0x689380})
                                               : hooks.pfnOperCheckRegister(ulWord1, ulWord2);
}

u32 Model::PM_LibPltRegisterPtpCapAttrInitFunc(PmWord ulWord1, PmWord ulWord2) {
  return hooks.pfnRegisterPtpCapAttrInitFunc == nullptr
             ? core_record(0x689380, {0x689380})
             : hooks.pfnRegisterPtpCapAttrInitFunc(ulWord1, ulWord2);
}

u32 Model::PM_LibPltSetInstanceDynAttributeDefaultValue(PmWord ulWord1, PmWord ulWord2) {
  return hooks.pfnSetInstanceDynAttributeDefaultValue == nullptr
             ? core_record(0x689380, {0x689380})
             : hooks.pfnSetInstanceDynAttributeDefaultValue(ulWord1, ulWord2);
}

u32 Model::PM_LibGetCoIndexAndCotypeByFspOntid(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3,
                                               PmWord ulWord4, PmWord ulWord5) {
  if (ulWord1 == 0 || ulWord2 == 0 || ulWord3 == 0 || ulWord4 == 0 || ulWord5 == 0) {
    return core_record(0x689383, {0});
  }
  if (hooks.pfnGetCoIndexByFspOntid == nullptr) {
    return core_record(0x689380, {0x689380});
  }
  return hooks.pfnGetCoIndexByFspOntid(ulWord1, ulWord2, ulWord3, ulWord4, ulWord5);
}

u32 Model::PM_LibGetFspOntidByCoIndexAndCotype(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3) {
  if (ulWord3 == 0) {
    return core_record(0x689383, {0x689383});
  }
  if (hooks.pfnGetFspOntidByCoIndex == nullptr) {
    return core_record(0x689380, {0x689380});
  }
  return hooks.pfnGetFspOntidByCoIndex(ulWord1, ulWord2, ulWord3);
}

// -- Trace printing

void Model::PM_LibInitPMDbgSwitches() {
  board().described = true;
  for (u32 &value : board().switches) {
    value = 0;
  }
}

void Model::PM_LibDotPrintf(u32 ulSelector, u32 ulSwitchNo, const char *pcFormat, ...) {
  if (DBG_xPrintfSwitch(ulSelector, ulSwitchNo) != 1) {
    return;
  }
  const bool on = ulSwitchNo > 3 || ulSelector > 0x6C7FFFF || board().switches[ulSwitchNo] != 0;
  if (!on) {
    return;
  }
  char text[500] = {};
  va_list arguments;
  va_start(arguments, pcFormat);
  static_cast<void>(std::vsnprintf(text, sizeof text, pcFormat, arguments));
  va_end(arguments);
  DBG_SetDbwinLineNo(0);
  xPrintf(54, "%s", text);
}

}  // namespace soak

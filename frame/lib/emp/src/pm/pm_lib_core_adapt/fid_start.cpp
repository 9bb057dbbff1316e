// The FID start-up: PIDs, the message task's priority, the product's sub-lines.
#include "diag.hpp"
#include "platform/kvt.h"
#include "pm_component.h"
#include "pm_debug_window.h"
#include "pm_hooks.h"
#include "pm_spec.h"
#include "pm_sub_line.h"

PM_SOURCE(pm_lib_core_adapt, 44);

namespace {

constexpr u32 start_phase = 0;
constexpr u32 msg_task_priority = 8;

}  // namespace

u32 PM_FidInitProc(u32 ulPhase) {
  const u32 msg_fid = PM_LibGetPmSpec(PM_SPEC_INDEX_MSG_FID);
  if (ulPhase != start_phase) {
    return PM_OK;
  }
  u32 ret = KVT_RegisterPIDInfo(PM_COMP_TYPE, PM_LibPidInitProc, PM_LibMsgProc);
  if (ret != PM_OK) {
    KVT_Printf("\r\n PM_LibFidInitProc-->KVT_RegisterPIDInfo fail, ulRet = 0x%x", ret);
    return FAIL(PM_OK, ret);
  }
  ret = KVT_RegisterMsgTaskPrio(msg_fid, msg_task_priority);
  if (ret != PM_OK) {
    KVT_Printf("\r\n PM_LibFidInitProc-->KVT_RegisterMsgTaskPrio fail, ulRet = 0x%x", ret);
    return FAIL(PM_OK, ret);
  }
  ret = PM_LibFidInitProcForMC();
  if (ret != PM_OK) {
    KVT_Printf("\r\n PM_LibFidInitProc-->PM_LibFidInitProcForMC fail, ulRet = 0x%x", ret);
    return FAIL(PM_OK, ret);
  }
  return PM_OK;
}

u32 PM_LibFidInitProcForMC(void) {
  PM_LibCfgVarInit();
  u32 ret = PM_LibPltZelCfg();
  if (ret != PM_OK) {
    KVT_Printf("\r\n PM_LibFidInitProcForMC-->PM_ZelCfg fail, ulRet = 0x%x", ret);
    return FAIL(ret);
  }
  ret = PM_LibCfgRegSubLinePid();
  if (ret != PM_OK) {
    KVT_Printf("\r\n PM_LibFidInitProcForMC-->PM_LibCfgRegSubLinePid fail, ulRet = 0x%x", ret);
    return FAIL(ret);
  }
  PM_LibInitPMDbgSwitches();
  return PM_OK;
}

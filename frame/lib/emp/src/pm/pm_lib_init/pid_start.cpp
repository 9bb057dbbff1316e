// The start-up phases of the library's PID.
#include "diag.hpp"
#include "global_data.hpp"
#include "pm_booking.h"
#include "pm_component.h"
#include "pm_debug_window.h"
#include "pm_restore.h"
#include "pm_sapi.h"
#include "pm_sub_attr.h"
#include "pm_sync.h"

PM_SOURCE(pm_lib_init, 22);

namespace {

enum PidPhase : u32 { phase_tables = 1, phase_debug_window = 2, phase_sync = 8 };

constexpr u32 trace_level = 0x8000;

// Only the tables can fail the phase: an instance without subscriptions or services still answers.
u32 start_tables() {
  const u32 ret = PM_LibMallocInit();
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  const u32 subscribed = PM_ScribeClass();
  (void)PM_LibPrimarySapiPublish();
  DEV_LibPrintf(trace_level, "PM_LibPidInitProc-> \t PM_ScribeClass ulRet=%u ", subscribed);
  return PM_OK;
}

u32 start_sync() {
  return PASS_UP(PM_LibSynRegister());
}

u32 own_work(u32 phase) {
  switch (phase) {
    case phase_tables:
      return start_tables();
    case phase_debug_window:
      PM_LibInitPmDbWinCfg();
      return PM_OK;
    case phase_sync:
      return start_sync();
    default:
      return PM_OK;
  }
}

}  // namespace

u32 PM_LibPidInitProc(u32 enPhase) {
  DEV_LibPrintf(trace_level, "PM_LibPidInitProc-> \t enPhase=0x%x ", enPhase);
  u32 ret = own_work(enPhase);
  if (ret != PM_OK) {
    return ret;
  }
  const auto hook = g_stPmProductMngt.pfnPhaseProc;
  if (hook == nullptr) {
    return PM_OK;
  }
  ret = hook(enPhase);
  return ret == PM_OK ? PM_OK : FAIL(ret, enPhase, ret);
}

u32 PM_LibMallocInit(void) {
  u32 ret = PM_LibPtpNumSpecInit();
  if (ret != PM_OK) {
    return ret;
  }
  ret = PM_LibMallocBookInit();
  return PASS_UP(ret);
}

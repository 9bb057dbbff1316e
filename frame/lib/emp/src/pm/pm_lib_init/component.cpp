// The library as a component: registration, construction, destruction, the message entry.
#include "diag.hpp"
#include "global_data.hpp"
#include "memory.hpp"
#include "platform/bounded.h"
#include "platform/ddm.h"
#include "pm_component.h"

PM_SOURCE(pm_lib_init, 1);

namespace {

constexpr char component_name[] = "PM_lib";
constexpr u32 component_failed = 1;

enum ConstructPhase : u32 { phase_create = 0, phase_config = 1, phase_run = 2 };

constexpr u32 iid_max = 31;
constexpr u32 iid_fid_pid = 4;
constexpr u32 iid_unknown = 22;

u32 create_instance(u32 para, u32 cid) {
  auto *data =
      static_cast<PmGlobalData *>(ROOT_LibCompLocalCreate(cid, PM_COMP_TYPE, sizeof(PmGlobalData)));
  if (data == nullptr) {
    return FAIL(component_failed, cid);
  }
  pm::clear(data, sizeof *data);
  data->ulConstructPara = para;
  data->ulCid = cid;

  Handle handle = 0;
  const u32 ret = ROOT_LibCompHandleInit(PM_COMP_TYPE, cid, &handle);
  data->ulCompHandle = handle;
  return ret == PM_OK ? PM_OK : FAIL(component_failed, ret);
}

}  // namespace

u32 PM_LibRegisterInfo(void) {
  RootCompRegisterInfo info;
  pm::clear(&info, sizeof info);
  info.ulCompType = PM_COMP_TYPE;
  const int copied =
      strncpy_s(info.acName, sizeof info.acName, component_name, sizeof component_name - 1);
  if (copied != 0) {
    RECORD(copied);
  }
  info.pfnConstruct = PM_LibConstructProc;
  info.pfnDestruct = PM_LibDestructProc;
  info.pfnMsgProc = PM_LibMsgProcEntry;
  const u32 ret = ROOT_LibCompRegisterInfo(&info);
  (void)DDM_RegisterSpecAppInfo(PM_COMP_TYPE, PM_LibSpecUpdate);
  return PASS_UP(ret);
}

u32 PM_LibConstructProc(u32 ulPhase, u32 ulPara, u32 ulCid, u32 /*ulReserved*/) {
  switch (ulPhase) {
    case phase_create:
      return create_instance(ulPara, ulCid);
    case phase_config:
    case phase_run:
      return PM_OK;
    default:
      return FAIL(component_failed, ulPhase);
  }
}

u32 PM_LibDestructProc(void *pLocalData) {
  if (pLocalData == nullptr) {
    return FAIL(component_failed);
  }
  const u32 ret = ZEL_HandleFinalize(static_cast<const PmGlobalData *>(pLocalData)->ulCompHandle);
  return ret == PM_OK ? PM_OK : FAIL(component_failed, ret);
}

u32 PM_LibMsgProcEntry(void *pMsg, void *pLocalData) {
  if (pMsg == nullptr) {
    return component_failed;
  }
  const u32 iid = DMS_MsgRecvIidGet(pMsg);
  return iid > iid_max ? PM_OK : PM_LibProcTulviIIDMsg(iid, pMsg, pLocalData);
}

u32 PM_LibProcTulviIIDMsg(u32 ulIid, void *pMsg, void *pLocalData) {
  if (ulIid != iid_fid_pid || pLocalData == nullptr) {
    return iid_unknown;
  }
  const u32 cid = static_cast<const PmGlobalData *>(pLocalData)->ulCid;
  return ROOT_LibProcFidPidMsg(cid, pMsg, pLocalData);
}

// The result of an object deletion, on its way from the owner to the requester.
#include "pm_object_deletion.h"

#include "diag.hpp"
#include "global_data.hpp"

PM_SOURCE(pm_lib_core_adapt, 50);

u32 PM_LibNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion, PmFspOntid *pstKey,
                                   u32 ulResult) {
  if (pfnCompletion == nullptr || pstKey == nullptr) {
    return FAIL(PM_OK, pm::is_null(pm::address(pfnCompletion)));
  }
  const PmFspOntid key = pm::load<PmFspOntid>(pstKey);
  PRINT_INFO(PM_COMP_TYPE,
             "\r\n PM_LibNotifyDelObjectCfgResult, f/s/p/ontid:%u/%u/%u/%u, ulResult:%u",
             key.usFrameID, key.ucSlotID, key.ucPortID, key.ulOntID, ulResult);
  const u32 ret = pfnCompletion(pstKey, ulResult);
  if (ret != PM_OK) {
    RECORD(ret);
  }
  return PM_OK;
}

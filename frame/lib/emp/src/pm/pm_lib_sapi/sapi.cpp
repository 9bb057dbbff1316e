// The two published services, and the link event sent to the owner of the PTP database.
#include "pm_sapi.h"

#include "diag.hpp"
#include "platform/root.h"
#include "pm_events.h"
#include "remote_call.hpp"

PM_SOURCE(pm_lib_sapi, 1);

namespace {

// The framework finds the handler of a service by the service's name: the exported function.
constexpr const char *published_services[] = {
    "PM_SapiBookCallBookedFuncs",
    "PM_SapiNotifyDelObjectCfgResult",
};

}  // namespace

u32 PM_LibPrimarySapiPublish(void) {
  const PmInstance *self = ROOT_LibGetCurrentThis();
  if (self == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 cid = self->ulCid;
  for (const char *service : published_services) {
    const u32 ret = ROOT_LibSrvmPubishSapi(service, cid);
    if (ret != PM_OK) {
      RECORD(ret, cid);
    }
  }
  return PM_OK;
}

u32 PM_SapiBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara) {
  return PM_LibBookCallBookedFuncs(usPrimType, usPtpID, pPara);
}

u32 PM_SapiNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion, PmFspOntid *pstKey,
                                    u32 ulResult) {
  return PM_LibNotifyDelObjectCfgResult(pfnCompletion, pstKey, ulResult);
}

u32 PM_LibLinkEventNotify(u16 usPtpID, u8 ucEvent) {
  return PASS_UP(
      pm::notify_owner("PM_SapiLinkEventNotify", {pm::by_value(usPtpID), pm::by_value(ucEvent)}));
}

// Deletion of objects: questions and requests to the owner of the PTP database, and the count of
// deletions under way. The result of a request is delivered in pm_lib_core_adapt.
#include "pm_object_deletion.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "platform/zel.h"
#include "remote_call.hpp"

PM_SOURCE(pm_lib_sapi, 3);

namespace {

constexpr u32 owner_not_asked = 1;

}  // namespace

u32 PM_LibGetObjectNumInDelete(void) {
  const PmGlobalData *data = pm::current_data();
  return data == nullptr ? 0 : pm::load<u32>(&data->ulObjNumInDelete);
}

u32 PM_LibSetObjectNumInDelete(u32 ulObjNum) {
  PmGlobalData *data = pm::current_data();
  if (data != nullptr) {
    pm::store(&data->ulObjNumInDelete, ulObjNum);
  }
  return PM_OK;
}

u32 PM_LibIsObjSupportSrvCfg(PmFspOntid *pstKey) {
  if (PM_LibGetObjectNumInDelete() == 0) {
    return PM_OK;
  }
  const pm::OwnerAnswer answer =
      pm::call_owner("PM_SapiIsObjSupportSrvCfg", {pm::input(pstKey, sizeof *pstKey)});
  if (answer.transport != PM_OK) {
    return FAIL(PM_OK, answer.transport);
  }
  return PASS_UP(answer.result);
}

u32 PM_LibOperCheckCanDelPTP(u16 usPtpID) {
  const pm::OwnerAnswer answer =
      pm::call_owner("PM_SapiOperCheckCanDelPTP", {pm::by_value(usPtpID)});
  return answer.transport == PM_OK ? answer.result : FAIL(owner_not_asked, answer.transport);
}

u32 PM_LibDelObjectCfg(PmFspOntid *pstKey, char *pcText, PmWord ulCompletion) {
  const u32 length = pcText == nullptr ? 0 : ZEL_StrLen(pcText);
  if (length > PM_DEL_TEXT_LEN_MAX) {
    return PM_ERR_LEN_RANGE;
  }
  const u32 cid = ROOT_LibGetCurrentCID();
  return PASS_UP(pm::outcome(pm::call_owner(
      "PM_SapiDelObjectCfg", {pm::input(pstKey, sizeof *pstKey), pm::input(pcText, length),
                              pm::by_value(cid), pm::by_value(ulCompletion)})));
}

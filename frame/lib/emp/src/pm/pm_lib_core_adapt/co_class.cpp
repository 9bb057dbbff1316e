// Co-classes from the port types' records; co-indexes of ONTs through the product's hooks.
#include "diag.hpp"
#include "global_data.hpp"
#include "pm_co_class.h"
#include "pm_identity.h"
#include "pm_sub_lookup.h"

PM_SOURCE(pm_lib_core_adapt, 24);

u32 PM_LibGetPtpCoClass(u16 usPtpType, u16 *pusCoClass) {
  if (pusCoClass == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *callback = nullptr;
  const u32 ret = PM_LibGetSubInfo(usPtpType, &info, &callback);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_DATA, "PM_GetSubInfo fail, ulRet = 0x%x, usPtpType = %u, ", ret, usPtpType);
    return FAIL(ret, ret, usPtpType);
  }
  *pusCoClass = info->usCoClass;
  return PM_OK;
}

u32 PM_LibGetCoClassFromPtpID(u16 usPtpID, u16 *pusCoClass) {
  if (pusCoClass == nullptr) {
    return FAIL(PM_ERR_DATA_INVALID, usPtpID);
  }
  u16 ptp_type = 0;
  u32 ret = PM_LibGetTypeFromPTP(usPtpID, &ptp_type);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_ERROR, "PM_GetTypeFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  u16 co_class = 0;
  ret = PM_LibGetPtpCoClass(ptp_type, &co_class);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_ERROR, "PM_GetPtpCoClass fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  *pusCoClass = co_class;
  return PM_OK;
}

u32 PM_LibGetCoIndexAndCotypeByFspOntid(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3,
                                        PmWord ulWord4, PmWord ulWord5) {
  if (ulWord1 == 0 || ulWord2 == 0 || ulWord3 == 0 || ulWord4 == 0 || ulWord5 == 0) {
    return FAIL(PM_ERR_DATA_INVALID, 0);
  }
  const auto hook = g_stPmProductMngt.pfnGetCoIndexByFspOntid;
  if (hook == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  return hook(ulWord1, ulWord2, ulWord3, ulWord4, ulWord5);
}

u32 PM_LibGetFspOntidByCoIndexAndCotype(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3) {
  if (ulWord3 == 0) {
    return FAIL(PM_ERR_DATA_INVALID);
  }
  const auto hook = g_stPmProductMngt.pfnGetFspOntidByCoIndex;
  if (hook == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  return hook(ulWord1, ulWord2, ulWord3);
}

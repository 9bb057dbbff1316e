// The callers of the four callback slots that answer for a PTP.
#include "diag.hpp"
#include "pm_attributes.h"
#include "pm_identity.h"
#include "pm_sub_lookup.h"

PM_SOURCE(pm_lib_core_adapt, 34);

u32 PM_LibGetSubAttrFromPTP(u16 usPtpID, PmSubAttr *pstAttr) {
  PmSubCallBack functions = {};
  u32 ret = PM_LibGetSubFuncFromPTP(usPtpID, &functions);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_GetSubFuncFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return FAIL(ret);
  }
  if (functions.pfnGetAttr == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_GetSubAttrFromPTP fail, pfnGetAttr is null");
    return PM_ERR_FUNC_NULL;
  }
  ret = functions.pfnGetAttr(usPtpID, pstAttr);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "pfnGetAttr fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    RECORD(ret, usPtpID);
  }
  return PM_OK;
}

u32 PM_LibGetSubAttrFromPTPNEW(u16 usPtpID, u32 ulSelector, PmSubAttr *pstAttr) {
  PmSubCallBack functions = {};
  u32 ret = PM_LibGetSubFuncFromPTP(usPtpID, &functions);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubFuncFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  if (functions.pfnGetAttrPriv == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubAttrFromPTPNEW fail, pfnGetAttrPriv is null");
    return FAIL(PM_ERR_FUNC_NULL, usPtpID, ulSelector);
  }
  ret = functions.pfnGetAttrPriv(usPtpID, ulSelector, pstAttr);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "pfnGetAttrPriv fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    RECORD(ret, usPtpID);
  }
  return PM_OK;
}

u32 PM_LibGetSubActiveSpeedFromPTP(u16 usPtpID, u32 *pulTransmit, u32 *pulReceive) {
  PmSubCallBack functions = {};
  u32 ret = PM_LibGetSubFuncFromPTP(usPtpID, &functions);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubFuncFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  if (functions.pfnGetActiveSpeed == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubActiveSpeedFromPTP fail, pfnGetActiveSpeed is null");
    return FAIL(PM_ERR_FUNC_NULL, usPtpID);
  }
  ret = functions.pfnGetActiveSpeed(usPtpID, pulTransmit, pulReceive);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "pfnGetActiveSpeed fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  return PM_OK;
}

u32 PM_LibGetSubStatsFromPTP(u16 usPtpID, PmSubStats *pstStats) {
  u16 type = 0;
  u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetTypeFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  PmSubCallBack functions = {};
  ret = PM_LibGetSubFunc(type, &functions);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubFunc fail, ulRet = 0x%x, usPtpID = %u, usPtpType = %u",
          ret, usPtpID, type);
    return FAIL(ret, ret, usPtpID);
  }
  if (functions.pfnGetStats == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubStatsFromPTP fail, pfnGetStats is null");
    return FAIL(PM_ERR_FUNC_NULL, usPtpID);
  }
  ret = functions.pfnGetStats(usPtpID, pstStats);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "pfnGetStats fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  return PM_OK;
}

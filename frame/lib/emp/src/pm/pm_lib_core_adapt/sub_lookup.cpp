// Lookups in the tables of port types. They change nothing.
#include "pm_sub_lookup.h"

#include "diag.hpp"
#include "sub_attr.hpp"

PM_SOURCE(pm_lib_core_adapt, 32);

namespace {

// Position of the first record of the port type; num when none carries it.
template <typename Record>
u32 position_of_type(const Record *records, u32 num, u16 type) {
  u32 i = 0;
  for (; i < num; ++i) {
    pm::feed_watchdog_at(i);
    if (records[i].usPtpType == type) {
      break;
    }
  }
  return i;
}

}  // namespace

u32 PM_LibGetSubInfoFromSuffix(u16 usSuffix, PmSubInnerSubInfo **ppstSubInfo) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr || ppstSubInfo == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (usSuffix >= pm::sub_info_num(data)) {
    TRACE(PM_SWITCH_DATA, "PM_LibGetSubInfoFromSuffix fail, input suffix is invalid, usSuffix = %u",
          usSuffix);
    return FAIL(PM_ERR_SUFFIX_INVALID, pm::ptp_type_num(data));
  }
  *ppstSubInfo = &pm::sub_infos(data)[usSuffix];
  return PM_OK;
}

u32 PM_LibIsPtpTypeValid(u16 usPtpType) {
  TRACE(PM_SWITCH_FUNCTION, "Enter PM_LibIsPtpTypeValid, ucPortType = %u", usPtpType);
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 num = pm::sub_info_num(data);
  for (u32 suffix = 0; suffix < num; ++suffix) {
    pm::feed_watchdog_at(suffix);
    PmSubInnerSubInfo *info = nullptr;
    const u32 ret = PM_LibGetSubInfoFromSuffix(static_cast<u16>(suffix), &info);
    if (ret != PM_OK) {
      return FAIL(ret, ret, suffix);
    }
    if (info->usPtpType == usPtpType) {
      return PM_OK;
    }
  }
  return PM_ERR_PTPTYPE_INVALID;
}

u32 PM_LibGetLogicPtpType(u16 usPtpType, u16 *pusSuffix) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (pusSuffix == nullptr || usPtpType > PM_LibGetPtpMaxTypeValue()) {
    return FAIL(PM_ERR_DATA_INVALID, usPtpType);
  }
  const u32 num = pm::sub_info_num(data);
  const PmSubInnerSubInfo *infos = pm::sub_infos(data);
  for (u32 suffix = 0; suffix < num; ++suffix) {
    if (infos[suffix].usPtpType == usPtpType) {
      *pusSuffix = static_cast<u16>(suffix);
      return PM_OK;
    }
    // This walk feeds one position early, and behind the comparison.
    pm::feed_watchdog_at(suffix + 2);
  }
  TRACE(PM_SWITCH_FUNCTION, "not find the ptp type, usPtpType = %u", usPtpType);
  return FAIL(PM_ERR_PTPTYPE_INVALID, usPtpType);
}

u32 PM_LibGetSubInfo(u16 usPtpType, PmSubInnerSubInfo **ppstSubInfo,
                     PmSubCallBackEntry **ppstCallBack) {
  TRACE(PM_SWITCH_FUNCTION, "Enter PM_LibGetSubInfo, usPtpType = %u", usPtpType);
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr || ppstSubInfo == nullptr || ppstCallBack == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 num = pm::sub_info_num(data);
  PmSubInnerSubInfo *infos = pm::sub_infos(data);
  const u32 position = position_of_type(infos, num, usPtpType);
  if (position == num) {
    TRACE(PM_SWITCH_FUNCTION, "not find the ptp type, usPtpType = %u", usPtpType);
    return FAIL(PM_ERR_PTPTYPE_INVALID, usPtpType);
  }
  *ppstSubInfo = &infos[position];
  *ppstCallBack = position < pm::sub_callback_num(data) ? &data->pstSubCallBack[position] : nullptr;
  return PM_OK;
}

u32 PM_LibGetSubFuncFromPtpType(u16 usPtpType, PmSubCallBackEntry **ppstCallBack) {
  TRACE(PM_SWITCH_FUNCTION, "Enter PM_LibGetSubFuncFromPtpType, usPtpType = %u", usPtpType);
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr || ppstCallBack == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 num = pm::sub_callback_num(data);
  PmSubCallBackEntry *table = data->pstSubCallBack;
  const u32 position = position_of_type(table, num, usPtpType);
  if (position == num) {
    TRACE(PM_SWITCH_FUNCTION, "not find the ptp type, usPtpType = %u", usPtpType);
    return FAIL(PM_ERR_PTPTYPE_INVALID, usPtpType);
  }
  *ppstCallBack = &table[position];
  return PM_OK;
}

u32 PM_LibGetSubFunc(u16 usPtpType, PmSubCallBack *pstCallBack) {
  TRACE(PM_SWITCH_FUNCTION, "Enter PM_LibGetSubFunc, usPtpType = %u", usPtpType);
  if (pstCallBack == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  PmSubCallBackEntry *entry = nullptr;
  const u32 ret = PM_LibGetSubFuncFromPtpType(usPtpType, &entry);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubInfo fail, ulRet = 0x%x, usPtpType = %u", ret,
          usPtpType);
    return FAIL(ret, ret, usPtpType);
  }
  *pstCallBack = pm::load<PmSubCallBack>(&entry->stCallBack);
  return PM_OK;
}

u32 PM_LibGetSubFuncFromPTP(u16 usPtpID, PmSubCallBack *pstCallBack) {
  if (pstCallBack == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u16 type = 0;
  u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetTypeFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  ret = PM_LibGetSubFunc(type, pstCallBack);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubFunc fail, ulRet = 0x%x, usPtpID = %u, usPtpType = %u",
          ret, usPtpID, type);
    return FAIL(ret, ret, type, usPtpID);
  }
  return PM_OK;
}

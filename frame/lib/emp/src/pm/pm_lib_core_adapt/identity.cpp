// PTP classes, and what one PTP is: where it sits, its port type, whether it exists.
#include "diag.hpp"
#include "global_data.hpp"
#include "platform/bounded.h"
#include "platform/dev.h"
#include "pm_identity.h"

PM_SOURCE(pm_lib_core_adapt, 20);

namespace {

u32 read_traced(u16 ptp_id, u32 selector, void *value) {
  const u32 ret = PM_LibGetDynPubDataAttr(ptp_id, selector, value);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetDynPubDataAttr fail, ulRet = 0x%x, usPtpID = %u", ret,
          ptp_id);
  }
  return ret;
}

PmGetPhyIndexFunc class_function(u8 ptp_class) {
  const PmGlobalData *data = pm::current_data();
  return data == nullptr ? nullptr : data->astPtpClassFunc[ptp_class].pfnGetPhyIndex;
}

}  // namespace

u32 PM_LibRegPtpClassFunc(u8 ucPtpClass, const PmPtpClassFunc *pstClassFunc) {
  if (pstClassFunc == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibRegPtpClassFunc para  error,null pointer pstClassFunc");
    return FAIL(PM_ERR_PARA);
  }
  if (ucPtpClass >= PM_PTP_CLASS_NUM) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibRegPtpClassFunc ucPtpClass error, ucPtpClass = %d",
          ucPtpClass);
    return FAIL(PM_ERR_DATA_INVALID, ucPtpClass);
  }
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  constexpr size_t size = sizeof(PmPtpClassFunc);
  (void)memcpy_s(&data->astPtpClassFunc[ucPtpClass], size, pstClassFunc, size);
  return PM_OK;
}

u32 PM_LibGetPhyIndexFromPTP(u16 usPtpID, u16 *pusBIndex, u8 *pucPort) {
  if (pusBIndex == nullptr || pucPort == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetPhyIndexFromPTP fail, usPtpID = %u, pusBIndex = %u, pucPort = %u", usPtpID,
          pm::word(pusBIndex), pm::word(pucPort));
    return FAIL(PM_ERR_PARA, usPtpID, pm::is_null(pusBIndex));
  }
  u8 ptp_class = 0;
  u32 ret = read_traced(usPtpID, PM_DYN_ATTR_PTP_CLASS, &ptp_class);
  if (ret != PM_OK) {
    return ret;
  }
  if (ptp_class != PM_PTP_CLASS_PORT) {
    ret = PM_LibGetPhyIndexFromPTPEnc(ptp_class, usPtpID, pusBIndex, pucPort);
    if (ret != PM_OK) {
      TRACE(PM_SWITCH_FUNCTION, "PM_LibGetPhyIndexFromPTPEnc fail, ulRet = 0x%x, usPtpID = %u", ret,
            usPtpID);
      return FAIL(ret, ret, usPtpID);
    }
    return PM_OK;
  }
  u16 index1 = 0;
  u16 index2 = 0;
  ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_INDEX1, &index1);
  if (ret != PM_OK) {
    return ret;
  }
  ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_INDEX2, &index2);
  if (ret != PM_OK) {
    return ret;
  }
  *pusBIndex = index1;
  *pucPort = static_cast<u8>(index2);
  return PM_OK;
}

u32 PM_LibGetPhyIndexFromPTPEnc(u8 ucPtpClass, u16 usPtpID, u16 *pusBIndex, u8 *pucPort) {
  if (ucPtpClass >= PM_PTP_CLASS_NUM) {
    TRACE(PM_SWITCH_FUNCTION, "ucPtpClass ERR,ucPtpClass = 0x%x", ucPtpClass);
    return FAIL(PM_ERR_DATA_INVALID, ucPtpClass, usPtpID);
  }
  const PmGetPhyIndexFunc get_phy_index = class_function(ucPtpClass);
  if (get_phy_index == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "GET PhyIndex func pointer is NULL_PTR, ucPtpClass = 0x%x",
          ucPtpClass);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (pusBIndex == nullptr || pucPort == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u16 board = 0;
  u8 port = 0;
  const u32 ret = get_phy_index(usPtpID, &board, &port);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION,
          "GET PypIndex func return Err,ulRet = %d, ucPtpClass = 0x%x, ptpID = %d", ret, ucPtpClass,
          usPtpID);
    return FAIL(ret, ret, ucPtpClass, usPtpID);
  }
  *pusBIndex = board;
  *pucPort = port;
  return PM_OK;
}

u32 PM_LibGetPhyIndexFromPTPEx(u16 usPtpID, u8 *pucPtpClass, u16 *pusIndex1, u16 *pusIndex2) {
  if (pucPtpClass == nullptr || pusIndex1 == nullptr || pusIndex2 == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetPhyIndexFromPTP fail, usPtpID = %u, pucPtpClass = %u, pusIndex1 = %u, "
          "pusIndex2 = %u",
          usPtpID, pm::word(pucPtpClass), pm::word(pusIndex1), pm::word(pusIndex2));
    return FAIL(PM_ERR_PARA, usPtpID, pm::is_null(pucPtpClass), pm::is_null(pusIndex1));
  }
  u8 ptp_class = 0;
  u16 index1 = 0;
  u16 index2 = 0;
  u32 ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_PTP_CLASS, &ptp_class);
  if (ret != PM_OK) {
    return ret;
  }
  ret = read_traced(usPtpID, PM_DYN_ATTR_INDEX1, &index1);
  if (ret != PM_OK) {
    return ret;
  }
  ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_INDEX2, &index2);
  if (ret != PM_OK) {
    return ret;
  }
  *pucPtpClass = ptp_class;
  *pusIndex1 = index1;
  *pusIndex2 = index2;
  return PM_OK;
}

u32 PM_LibGetFSPFromPtp(u16 usPtpID, u16 *pusFrameID, u8 *pucSlotID, u8 *pucPortID) {
  if (pusFrameID == nullptr || pucSlotID == nullptr || pucPortID == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID, pm::is_null(pusFrameID));
  }
  u16 board = 0;
  u8 port = 0;
  u32 ret = PM_LibGetPhyIndexFromPTP(usPtpID, &board, &port);
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  u16 frame = 0;
  u8 slot = 0;
  ret = DEV_LibGetFrameIDSlotIDFromBIndex(board, &frame, &slot);
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  *pusFrameID = frame;
  *pucSlotID = slot;
  *pucPortID = port;
  return PM_OK;
}

u32 PM_LibGetTypeFromPTP(u16 usPtpID, u16 *pusPtpType) {
  if (pusPtpType == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetTypeFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u16 ptp_type = 0;
  const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_PTP_TYPE, &ptp_type);
  if (ret == PM_OK) {
    *pusPtpType = ptp_type;
  }
  return ret;
}

// The reader answers 0 only for a record whose ucExist is nonzero, so its code is the answer.
u32 PM_LibIfPtpExist(u16 usPtpID) {
  u8 exist = 0;
  return PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_EXIST, &exist);
}

u32 PM_LibIfPhyPtpExist(u16 usPtpID) {
  u8 exist = 0;
  u32 ret = read_traced(usPtpID, PM_DYN_ATTR_EXIST, &exist);
  if (ret != PM_OK) {
    return ret;
  }
  u8 ptp_class = 0;
  ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_PTP_CLASS, &ptp_class);
  if (ret != PM_OK) {
    return ret;
  }
  if (ptp_class != PM_PTP_CLASS_PORT) {
    TRACE(PM_SWITCH_FUNCTION, "ucPtpClass is not  PM_PTP_CLASS_PORT, ucPtpClass = 0x%x", ptp_class);
    return FAIL(PM_ERR_FUNC_NULL, ptp_class, usPtpID);
  }
  return PM_OK;
}

// Membership in virtual systems, visibility, and the physical state of a visible port.
#include <bit>

#include "diag.hpp"
#include "platform/dev.h"
#include "pm_dynamic_data.h"
#include "pm_identity.h"
#include "pm_reverse_lookup.h"
#include "pm_virtual_system.h"

PM_SOURCE(pm_lib_core_adapt, 23);

namespace {

constexpr u32 vs_mask_all = (1U << PM_VS_NUM) - 1;
constexpr u32 vs_mask_bits = 32;
constexpr u16 vs_shared = 0;  // manages the PTPs of several virtual systems
constexpr u32 vs_none = 1;    // answer for a PTP in no virtual system
constexpr u8 ptp_invisible = 1;

constexpr u8 port_not_connected = 0;
constexpr u8 port_connected = 1;

u32 read_vs_mask(u16 ptp_id, u32 *vs_mask) {
  const u32 ret = PM_LibGetVsMaskFromPtp(ptp_id, vs_mask);
  return ret == PM_OK ? PM_OK : FAIL(ret, ret, ptp_id);
}

u8 phy_state(u16 frame, u8 slot, u8 port) {
  u8 hardware1 = 0;
  u8 hardware2 = 0;
  if (PTOPO_LibGetHardPhyIDFromPortId(frame, slot, port, &hardware1, &hardware2) == PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetPtpPhyStateFromPTP, port connects with LSW");
    return port_connected;
  }
  TRACE(PM_SWITCH_FUNCTION, "PM_LibGetPtpPhyStateFromPTP, port does not connect with LSW");
  return PTOPO_ESWITCH_IsEswitchPort(frame, slot, port) != 0 ? port_connected : port_not_connected;
}

}  // namespace

u32 PM_LibGetVsNumByVsMask(u32 ulVsMask) {
  return static_cast<u32>(std::popcount(ulVsMask & vs_mask_all));
}

u32 PM_LibGetVsMaskFromPtp(u16 usPtpID, u32 *pulVsMask) {
  if (pulVsMask == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (PM_LibIfPtpExist(usPtpID) != PM_OK) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  u32 vs_mask = 0;
  (void)PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_VS_MASK, &vs_mask);
  *pulVsMask = vs_mask;
  return PM_OK;
}

u32 PM_LibIfPtpInVs(u16 usPtpID, u32 ulVsID) {
  u32 vs_mask = 0;
  const u32 ret = PM_LibGetVsMaskFromPtp(usPtpID, &vs_mask);
  if (ret != PM_OK) {
    return ret;
  }
  const bool in_vs = ((vs_mask >> (ulVsID % vs_mask_bits)) & 1U) != 0;
  return in_vs ? PM_OK : PM_ERR_PTP_NOT_IN_VS;
}

u32 PM_LibIfPtpOnlyInOneVs(u16 usPtpID, u32 ulVsID) {
  if (ulVsID >= PM_VS_NUM) {
    return PM_ERR_DATA_INVALID;
  }
  u32 vs_mask = 0;
  const u32 ret = read_vs_mask(usPtpID, &vs_mask);
  if (ret != PM_OK) {
    return ret;
  }
  return vs_mask == 1U << ulVsID ? PM_OK : PM_ERR_VS_CONDITION;
}

u32 PM_LibIfPortBelongMultiVs(u16 usPtpID) {
  u32 vs_mask = 0;
  const u32 ret = read_vs_mask(usPtpID, &vs_mask);
  if (ret != PM_OK) {
    return ret;
  }
  return PM_LibGetVsNumByVsMask(vs_mask) > 1 ? PM_OK : PM_ERR_VS_CONDITION;
}

u32 PM_LibGetPtpMngtVsID(u16 usPtpID, u16 *pusVsID) {
  if (pusVsID == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u32 vs_mask = 0;
  const u32 ret = read_vs_mask(usPtpID, &vs_mask);
  if (ret != PM_OK) {
    return ret;
  }
  switch (PM_LibGetVsNumByVsMask(vs_mask)) {
    case 0:
      return FAIL(vs_none, usPtpID);
    case 1:
      *pusVsID = static_cast<u16>(std::countr_zero(vs_mask & vs_mask_all));
      return PM_OK;
    default:
      *pusVsID = vs_shared;
      return PM_OK;
  }
}

u32 PM_LibIsPtpVisible(u16 usPtpID) {
  u8 invisible = 0;
  const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_INVISIBLE, &invisible);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetDynPubDataAttr fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return ret;
  }
  if (invisible == ptp_invisible) {
    TRACE(PM_SWITCH_FUNCTION, "PTP is invisible");
    return PM_ERR_PTP_INVISIBLE;
  }
  return PM_OK;
}

u32 PM_LibGetVisiblePtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  u16 ptp_id = 0;
  u32 ret = PM_LibGetPtpFromFSP(usFrameID, ucSlotID, ucPortID, &ptp_id);
  if (ret != PM_OK) {
    return ret;
  }
  ret = PM_LibIsPtpVisible(ptp_id);
  if (ret == PM_OK) {
    *pusPtpID = ptp_id;
  }
  return ret;
}

u32 PM_LibGetPtpPhyStateFromPTP(u16 usPtpID, u8 *pucPhyState) {
  if (pucPhyState == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetPtpPhyStateFromPTP fail, input pointer is null, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u32 ret = PM_LibIfPhyPtpExist(usPtpID);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return FAIL(ret, ret, usPtpID);
  }
  ret = PM_LibIsPtpVisible(usPtpID);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibIsPtpVisible fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  u16 board = 0;
  u8 port = 0;
  ret = PM_LibGetPhyIndexFromPTP(usPtpID, &board, &port);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetPhyIndexFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
    return ret;
  }
  u16 frame = 0;
  u8 slot = 0;
  ret = DEV_LibGetFrameIDSlotIDFromBIndex(board, &frame, &slot);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "DEV_LibGetFrameIDSlotIDFromBIndex fail, ulRet = 0x%x, usBIndex = %u",
          ret, board);
    return ret;
  }
  *pucPhyState = phy_state(frame, slot, port);
  return PM_OK;
}

// PTPs as an object class of the host's capability and attribute services.
#include "pm_classes.h"

#include "diag.hpp"
#include "memory.hpp"
#include "platform/cap.h"
#include "pm_identity.h"
#include "pm_spec.h"
#include "pm_sub_attr.h"
#include "pm_sub_lookup.h"

PM_SOURCE(pm_lib_core_adapt, 43);

namespace {

constexpr u16 capability_class_value = 32;
constexpr u32 value_reserved = 0xFFFFFFFF;

PmClassMngtReg class_registration(u16 class_value) {
  PmClassMngtReg registration;
  pm::clear(&registration, sizeof registration);
  registration.pfnGetPtpType = PM_LibGetPtpTypeForAttm;
  registration.usModuleID = PM_COMP_TYPE;
  registration.usClassValue = class_value;
  return registration;
}

// The value is a port type; one above the highest selects the PTP's own type.
u32 select_type(u32 value, u16 ptp_id, u16 *ptp_type) {
  if (value > PM_LibGetPtpMaxTypeValue()) {
    return PM_LibGetTypeFromPTP(ptp_id, ptp_type);
  }
  *ptp_type = static_cast<u16>(value);
  return PM_OK;
}

}  // namespace

u32 PM_LibRegCapClassMngt(void) {
  const PmClassMngtReg registration = class_registration(capability_class_value);
  return PASS_UP(CAP_LibRegCapMngtProc(PM_OBJECT_CLASS, &registration));
}

u32 PM_LibRegAttrClassMngt(void) {
  const auto class_value = static_cast<u16>(PM_LibGetPmSpec(PM_SPEC_INDEX_ATTR_CLASS));
  const PmClassMngtReg registration = class_registration(class_value);
  return PASS_UP(ATTR_LibRegClassMngtProc(PM_OBJECT_CLASS, &registration));
}

u32 PM_LibGetPtpCapability(u16 usPtpID, u32 ulCapability) {
  if (ulCapability == value_reserved) {
    return FAIL(PM_ERR_DATA_INVALID, usPtpID, ulCapability);
  }
  if (PM_LibIfPtpExist(usPtpID) != PM_OK) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  return CAP_LibGetCapability(PM_OBJECT_CLASS, usPtpID, ulCapability);
}

u32 PM_LibGetPtpAttributeCluster(u16 usPtpID, u32 ulPtpAttributeValue, u16 usLen, void *pBuf) {
  if (ulPtpAttributeValue == value_reserved || usLen == 0 || pBuf == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetPtpAttributeCluster fail, input pointer is null, usPtpID = %u, "
          "ulPtpAttributeValue = %u",
          usPtpID, ulPtpAttributeValue);
    return FAIL(PM_ERR_DATA_INVALID, usPtpID, ulPtpAttributeValue);
  }
  if (PM_LibIfPtpExist(usPtpID) != PM_OK) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  return ATTR_LibGetAttribute(PM_OBJECT_CLASS, usPtpID, ulPtpAttributeValue, pBuf, usLen);
}

u32 PM_LibGetPtpCapType(u32 ulValue, u16 usPtpID, u16 *pusCapType) {
  if (pusCapType == nullptr) {
    return PM_ERR_DATA_INVALID;
  }
  u16 ptp_type = 0;
  u32 ret = select_type(ulValue, usPtpID, &ptp_type);
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  u16 suffix = 0;
  ret = PM_LibGetLogicPtpType(ptp_type, &suffix);
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  PmSubInnerSubInfo *info = nullptr;
  ret = PM_LibGetSubInfoFromSuffix(suffix, &info);
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  *pusCapType = info->usCapType;
  return PM_OK;
}

u32 PM_AttrDbFunc(void) {
  return PM_OK;
}

u32 PM_LibGetPtpTypeForAttm(u32 ulValue, u16 usPtpID, u16 *pusPtpType) {
  if (pusPtpType == nullptr) {
    return PM_ERR_DATA_INVALID;
  }
  const u32 ret = select_type(ulValue, usPtpID, pusPtpType);
  return ret == PM_OK ? PM_OK : FAIL(ret, usPtpID);
}

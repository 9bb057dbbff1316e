// Virtual PTPs and descriptions, requested from the owner of the PTP database.
#include "pm_virtual_ptp.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "pm_dynamic_data.h"
#include "remote_call.hpp"

PM_SOURCE(pm_lib_sapi, 2);

namespace {

constexpr u8 exists = 1;

template <typename Value>
u32 set_field(u16 ptp_id, u32 selector, Value value) {
  return PM_LibSetDynPubDataAttr(ptp_id, selector, &value);
}

// Every field is tried. 0, or the bits of all results together.
u32 set_dynamic_record(u16 ptp_id, const PmVirtualPtpDesc &desc) {
  u32 failures = set_field(ptp_id, PM_DYN_ATTR_INDEX1, desc.usIndex1);
  failures |= set_field(ptp_id, PM_DYN_ATTR_INDEX2, desc.usIndex2);
  failures |= set_field(ptp_id, PM_DYN_ATTR_PTP_CLASS, desc.ucPtpClass);
  failures |= set_field(ptp_id, PM_DYN_ATTR_EXIST, exists);
  failures |= set_field(ptp_id, PM_DYN_ATTR_PTP_TYPE, desc.usPtpType);
  return failures;
}

}  // namespace

u32 PM_LibAddVirtualPtp(PmVirtualPtpDesc *pstDesc, u16 *pusNewPtpID) {
  const u32 ret = pm::outcome(pm::call_owner(
      "PM_SapiAddVirtualPtp",
      {pm::input(pstDesc, sizeof *pstDesc), pm::output(pusNewPtpID, sizeof *pusNewPtpID)}));
  if (ret != PM_OK) {
    return FAIL(ret);
  }
  // The PTP exists from here on: what goes wrong locally is no failure of the creation.
  if (pstDesc == nullptr || pusNewPtpID == nullptr) {
    return FAIL(PM_OK, PM_ERR_PARA);
  }
  const u32 failures =
      set_dynamic_record(pm::load<u16>(pusNewPtpID), pm::load<PmVirtualPtpDesc>(pstDesc));
  return failures == PM_OK ? PM_OK : FAIL(PM_OK, failures);
}

u32 PM_LibDelVirtualPtp(u16 usPtpID) {
  return PASS_UP(pm::outcome(pm::call_owner("PM_SapiDelVirtualPtp", {pm::by_value(usPtpID)})));
}

u32 PM_LibSetDescFromPTP(u16 usPtpID, u8 *pucDesc, u32 ulLength) {
  return PASS_UP(pm::outcome(pm::call_owner(
      "PM_SapiSetDescFromPTP", {pm::by_value(usPtpID), pm::input(pucDesc, ulLength)})));
}

// The process-wide specification records and the limits read from them.
#include "diag.hpp"
#include "global_data.hpp"
#include "pm_spec.h"

PM_SOURCE(pm_lib_core_adapt, 1);

PmSpec g_stPmSpec;
PmAttrCB g_stPmAttrCB;
PmSubAttrNum g_stPmSubAttrCB;

namespace {

constexpr u32 spec_index_nonzero = 2;
constexpr u32 spec_index_num = sizeof(PmSpec) / sizeof(u32);
constexpr u32 spec_index_invalid = 0xFFFFFFFF;

u8 *spec_value(u32 index) {
  return reinterpret_cast<u8 *>(&g_stPmSpec) + index * sizeof(u32);
}

bool spec_value_accepted(u32 index, u32 value) {
  switch (index) {
    case spec_index_nonzero:
      return value != 0;
    case PM_SPEC_INDEX_DESC_MAX_LEN:
      return value >= 1 && value <= PM_DESC_LEN_MAX;
    default:
      return true;
  }
}

}  // namespace

u32 PM_LibSetPmSpec(u32 ulIndex, u32 ulValue) {
  if (ulIndex >= spec_index_num) {
    return FAIL(PM_ERR_STR_OPER, ulIndex);
  }
  if (!spec_value_accepted(ulIndex, ulValue)) {
    return FAIL(PM_ERR_LEN_RANGE, ulValue);
  }
  pm::store(spec_value(ulIndex), ulValue);
  return PM_OK;
}

u32 PM_GetPmSpec(u32 ulIndex) {
  if (ulIndex >= spec_index_num) {
    return FAIL(spec_index_invalid, ulIndex);
  }
  return pm::load<u32>(spec_value(ulIndex));
}

u32 PM_LibGetPmSpec(u32 ulIndex) {
  return PM_GetPmSpec(ulIndex);
}

u32 PM_LibGetPtpMaxNum(void) {
  const u32 total = static_cast<u32>(g_stPmAttrCB.usVisiblePtpNum) + g_stPmAttrCB.usOtherPtpNum +
                    g_stPmAttrCB.usVirtualPtpNum;
  return static_cast<u16>(total);
}

u16 PM_LibGetMaxPtpID(void) {
  const u16 maximum = g_stPmAttrCB.usMaxPtpID;
  return maximum == 0 || maximum == PM_PTP_ID_NONE ? u16{1} : maximum;
}

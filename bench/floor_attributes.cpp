// Live attributes by hand: from the PTP to its sub-line's callback, and the call.
#include "bench/floor_attributes.hpp"

#include "bench/floor.hpp"
#include "bench/floor_identity.hpp"

namespace floor_of {

namespace {

// The callbacks of the PTP's port type: two trace lines, one look at the watchdog, and the table.
const PmSubCallBackEntry *callbacks(u16 ptp_id) {
  u16 wanted = 0;
  if (type(ptp_id, &wanted) != 0) {
    return nullptr;
  }
  ask_switch(PM_SWITCH_FUNCTION);
  ask_switch(PM_SWITCH_FUNCTION);
  const PmGlobalData *own = data();
  const PmSubCallBackEntry *entry = own->pstSubCallBack;
  const PmSubCallBackEntry *end = entry + own->usSubCallBackNum;
  ZEL_ClearWatchDog();
  while (entry != end && entry->usPtpType != wanted) {
    ++entry;
  }
  return entry == end ? nullptr : entry;
}

}  // namespace

u32 mtu(u16 ptp_id, u32 *mtu) {
  if (exists(ptp_id) != 0) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  const PmSubCallBackEntry *entry = callbacks(ptp_id);
  if (entry == nullptr) {
    return PM_ERR_PTPTYPE_INVALID;
  }
  PmSubAttr attr = {};
  const u32 ret = entry->stCallBack.pfnGetAttrPriv(ptp_id, PM_SUB_ATTR_MTU, &attr);
  *mtu = attr.ulMtu;
  return ret;
}

u32 name(u16 ptp_id, u32 length, char *name) {
  if (exists(ptp_id) != 0) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  const PmSubCallBackEntry *entry = callbacks(ptp_id);
  if (entry == nullptr) {
    return PM_ERR_PTPTYPE_INVALID;
  }
  PmSubAttr attr = {};
  const u32 ret = entry->stCallBack.pfnGetAttr(ptp_id, &attr);
  (void)strncpy_s(name, length, attr.szName, PM_NAME_LEN);
  name[PM_NAME_LEN] = '\0';
  return ret;
}

}  // namespace floor_of

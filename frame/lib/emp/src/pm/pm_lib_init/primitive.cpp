// Entry of primitive messages, bare or wrapped by the device layer.
#include "diag.hpp"
#include "pm_booking.h"
#include "pm_events.h"

PM_SOURCE(pm_lib_init, 21);

namespace {

constexpr u32 check_type = 1;
constexpr u32 wrong_tlv_length = 1;
constexpr u32 tlv_error_level = 0x80000000;

u32 deliver(u16 prim_type, u16 ptp_id, void *para) {
  return PASS_UP(PM_LibBookCallBookedFuncs(prim_type, ptp_id, para));
}

}  // namespace

// A bare message need not be longer than its parameter: nothing behind it is read.
u32 PM_PrimMsgProc(const PmPrimMsg *pstMsg) {
  if (pstMsg == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u16 prim_type = pstMsg->usPrimaryWord;
  const u16 ptp_id = pstMsg->usPtpID;
  if (PM_LibIsCheckPrimaryWord(prim_type) == check_type) {
    return FAIL(PM_ERR_PRIM_CHECK_TYPE, prim_type);
  }
  switch (prim_type) {
    case PM_PRIM_EXIST:
    case PM_PRIM_NOT_EXIST:
    case PM_PRIM_LINK_UP:
    case PM_PRIM_LINK_DOWN:
      return deliver(prim_type, ptp_id, nullptr);
    case PM_PRIM_PARA: {
      u8 para[] = {pstMsg->aucPara[0], pstMsg->aucPara[1]};
      return deliver(prim_type, ptp_id, para);
    }
    default:
      TRACE(PM_SWITCH_ERROR,
            "PM_PrimMsgProc exception, input usPrimaryWord is invalid, usPrimaryWord  = %u",
            prim_type);
      return FAIL(PM_OK, prim_type);
  }
}

u32 PM_LibPrimNotifyRtRestore(const PmDevDdmTlv *pstDevDdmTlv) {
  if (pstDevDdmTlv == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 length = pstDevDdmTlv->ulLength;
  if (length != sizeof(PmPrimMsg)) {
    RECORD(length);
    DEV_LibPrintf(tlv_error_level, "PM_LibPrimNotifyRtRestore-> pstDevDdmTlv->ulLength=%u error !",
                  length);
    return wrong_tlv_length;
  }
  return PM_PrimMsgProc(&pstDevDdmTlv->stValue);
}

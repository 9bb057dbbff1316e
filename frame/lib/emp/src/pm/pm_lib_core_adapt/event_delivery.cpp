// Delivery of a primitive to the functions booked for it, and the link events.
#include "diag.hpp"
#include "global_data.hpp"
#include "platform/zel.h"
#include "pm_booking.h"
#include "pm_events.h"
#include "pm_identity.h"

PM_SOURCE(pm_lib_core_adapt, 41);

namespace {

constexpr u32 no_book_table = 1;
constexpr u32 watchdog_stride = 8;
constexpr u32 slow_ticks = 100;

// A primitive on its way to the booked functions.
struct Primitive {
  u16 type;
  u16 ptp_id;
  u16 ptp_type;
  void *para;
};

// An event of no particular PTP carries PM_PTP_TYPE_ALL, so only bookings for every type match it.
bool wants(const PmBookRecord &booking, const Primitive &primitive) {
  return (booking.usType == PM_PTP_TYPE_ALL || booking.usType == primitive.ptp_type) &&
         booking.pfnBookFunc != nullptr;
}

bool succeeded(u32 ret) {
  return ret == PM_OK || ret == PM_RET_NOT_CONCERNED;
}

[[gnu::cold, gnu::noinline]] void report_slow_call(const Primitive &primitive, PmBookFunc function,
                                                   u32 ticks) {
  RECORD(ticks, primitive.type, function);
  DEV_LibRecLongTimeCostPrimaryWordLog(pm_source.name, PM_LINE, ticks, primitive.type,
                                       pm::address(function));
}

u32 call_timed(const Primitive &primitive, PmBookFunc function) {
  const u32 start = ZEL_GetTick();
  const u32 ret = function(primitive.ptp_id, primitive.type, primitive.para);
  const u32 ticks = ZEL_GetTick() - start;
  if (ticks >= slow_ticks) {
    report_slow_call(primitive, function, ticks);
  }
  TRACE(PM_SWITCH_FUNCTION,
        "PM_LibBookCallBookedFuncs trace: pPrimProc=0x%p, usPrimType=%d, usPtpID=%d, usPtpType=%d, "
        "ulRet=0x%x, used Ticks=%d",
        pm::address(function), primitive.type, primitive.ptp_id, primitive.ptp_type, ret,
        static_cast<int>(ticks));
  return ret;
}

// Reports a failed call; does the failure end the walk?
[[gnu::cold, gnu::noinline]] bool failure_ends_walk(const Primitive &primitive, PmBookFunc function,
                                                    u32 ret) {
  TRACE(PM_SWITCH_FUNCTION,
        "pPrimaryWordFunc fail, Ret = %#x,Func = 0x%p, PtpID=%u, usPrimType = %u, Para = 0x%p", ret,
        pm::address(function), primitive.ptp_id, primitive.type, primitive.para);
  RECORD(primitive.type, primitive.ptp_id, ret);
  return PM_LibIsPrimaryNeedReturn(primitive.type) == PM_OK;
}

// Where a walk goes on after its list was changed during a call, which may have released the node
// it stands at, the one behind it, or both. Whichever of them is found first is still booked, or
// its address is in use for a later booking; neither: the walk ends.
[[gnu::cold, gnu::noinline]] PmBookNode *next_after_change(PmBookNode *head, const PmBookNode *node,
                                                           const PmBookNode *next) {
  for (PmBookNode *at = head; at != nullptr; at = at->pstNext) {
    if (at == node) {
      return at->pstNext;
    }
    if (at == next) {
      return at;
    }
  }
  return nullptr;
}

u32 deliver(const PmGlobalData *data, const Primitive &primitive) {
  const PmBookTable *table = data->pstBookTable;
  u32 passed = 0;
  for (PmBookNode *node = table->apstHead[primitive.type]; node != nullptr; ++passed) {
    PmBookNode *next = node->pstNext;
    if (wants(node->stRecord, primitive)) {
      const PmBookFunc function = node->stRecord.pfnBookFunc;
      const u32 change = data->aulBookChange[primitive.type];
      if (passed % watchdog_stride == 0) {
        ZEL_ClearWatchDog();
      }
      const u32 ret = call_timed(primitive, function);
      if (!succeeded(ret) && failure_ends_walk(primitive, function, ret)) {
        return ret;
      }
      if (data->aulBookChange[primitive.type] != change) {
        next = next_after_change(table->apstHead[primitive.type], node, next);
      }
    }
    node = next;
  }
  return PM_OK;
}

}  // namespace

u32 PM_LibBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara) {
  TRACE(PM_SWITCH_FUNCTION,
        "Enter PM_LibBookCallBookedFuncs, usPrimType = %d, PtpID= %u, Para = 0x%p", usPrimType,
        usPtpID, pPara);
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (data->pstBookTable == nullptr) {
    return FAIL(no_book_table, usPrimType);
  }
  u16 ptp_type = PM_PTP_TYPE_ALL;
  if (usPtpID != PM_PTP_ID_NONE) {
    const u32 ret = PM_LibGetTypeFromPTP(usPtpID, &ptp_type);
    if (ret != PM_OK) {
      TRACE(PM_SWITCH_FUNCTION, "PM_LibGetTypeFromPTP fail, Ret = %#x, PtpID = %u", ret, usPtpID);
      return FAIL(ret, ret, usPtpID);
    }
  }
  if (usPrimType >= PM_PRIM_NUM) {
    RECORD(usPrimType);
    TRACE(PM_SWITCH_FUNCTION, "PM_LibBookAddBookFunc fail, usPrimType = %u", usPrimType);
    return PM_ERR_PRIMTYPE_RANGE;
  }
  return deliver(data, {usPrimType, usPtpID, ptp_type, pPara});
}

u32 PM_LibEventPtpLinkUp(u16 usPtpID) {
  (void)PM_LibBookCallBookedFuncs(PM_PRIM_LINK_UP, usPtpID, nullptr);
  return PM_OK;
}

u32 PM_LibEventPtpLinkDown(u16 usPtpID) {
  (void)PM_LibBookCallBookedFuncs(PM_PRIM_LINK_DOWN, usPtpID, nullptr);
  return PM_OK;
}

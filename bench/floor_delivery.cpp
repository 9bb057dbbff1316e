// Delivery by hand: the list of the primitive, each function that wants the port type, timed.
#include "bench/floor_delivery.hpp"

#include "bench/floor.hpp"
#include "bench/floor_identity.hpp"

namespace floor_of {

u32 deliver(u16 prim_type, u16 ptp_id, void *para) {
  ask_switch(PM_SWITCH_FUNCTION);
  const PmBookNode *node = data()->pstBookTable->apstHead[prim_type];
  u16 wanted = 0;
  if (type(ptp_id, &wanted) != 0) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  for (u32 passed = 0; node != nullptr; node = node->pstNext, ++passed) {
    if (node->stRecord.usType != PM_PTP_TYPE_ALL && node->stRecord.usType != wanted) {
      continue;
    }
    if (passed % 8 == 0) {
      ZEL_ClearWatchDog();
    }
    const u32 start = ZEL_GetTick();
    const u32 ret = node->stRecord.pfnBookFunc(ptp_id, prim_type, para);
    const u32 ticks = ZEL_GetTick() - start;
    ask_switch(PM_SWITCH_FUNCTION);
    if (ret != 0 || ticks >= 100) {
      __builtin_trap();
    }
  }
  return 0;
}

}  // namespace floor_of

// Command 9: the functions booked for a primitive type.
#include "diag.hpp"
#include "global_data.hpp"
#include "platform/zel.h"
#include "pm_debug_window.h"

PM_SOURCE(pm_lib_dbg, 5);

namespace {

constexpr u32 pause_stride = 8;
constexpr u32 pause_ticks = 10;

// The booking at a position of the list; null behind its end or without a table.
const PmBookNode *booking_at(const PmGlobalData *data, u16 prim_type, u32 position) {
  if (data->pstBookTable == nullptr) {
    return nullptr;
  }
  const PmBookNode *node = data->pstBookTable->apstHead[prim_type];
  while (node != nullptr && position > 0) {
    node = node->pstNext;
    --position;
  }
  return node;
}

// Prints the list and yields the number of bookings printed.
u32 print_bookings(const PmGlobalData *data, u16 prim_type) {
  u32 count = 0;
  const PmBookNode *node = booking_at(data, prim_type, 0);
  while (node != nullptr) {
    if (count % pause_stride == 0) {
      ZEL_TaskDelay(pause_ticks);
      // Another task may have unbooked the node meanwhile.
      node = booking_at(data, prim_type, count);
      if (node == nullptr) {
        break;
      }
    }
    PRINT_RELTIME("\r\n PortType = %u, FunctionAddr = 0x%08x", node->stRecord.usType,
                  pm::word(node->stRecord.pfnBookFunc));
    ++count;
    node = node->pstNext;
  }
  return count;
}

}  // namespace

void PM_LibDbgShowPrimFuncsByPrimType(u32 /*ulCommand*/, u32 ulSubCmd, u32 /*ulPara1*/,
                                      u32 /*ulPara2*/) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  const u16 prim_type = static_cast<u16>(ulSubCmd);
  if (prim_type >= PM_PRIM_NUM) {
    PRINT_RELTIME("\r\n The primType is invalid!");
    return;
  }
  PRINT_RELTIME("\r\n The port types and function addresses of primType %u are:", prim_type);
  const u32 count = print_bookings(data, prim_type);
  PRINT_RELTIME("\r\n The number of primayword functions of primType %u is: %d", prim_type, count);
}

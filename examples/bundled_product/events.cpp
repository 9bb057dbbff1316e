#include "events.hpp"

#include "live_ports.hpp"
#include "platform/platform.h"
#include "sub_lines.hpp"

namespace product {
namespace {

// A PTP's name as its sub-line gives it, or "?".
struct Name {
  char text[PM_NAME_LEN + 1] = "?";

  explicit Name(u16 ptp) {
    if (PM_LibGetNameFromPTP(ptp, sizeof text, text) != PM_OK) {
      text[0] = '?';
    }
  }
};

u32 link_changed(u16 ptp, u16 primitive, void *) {
  LivePort &port = live_port(ptp);
  port.link_up = primitive == PM_PRIM_LINK_UP;
  ++port.link_changes;
  xPrintf(kComponentType, "link %s: PTP %u (%s), change %u", port.link_up ? "up" : "down",
          unsigned{ptp}, Name(ptp).text, port.link_changes);
  return PM_OK;
}

// An uplink that fails is worth a line of its own. Booked for uplinks only: the library calls it
// for no other port.
u32 uplink_down(u16 ptp, u16, void *) {
  xPrintf(kComponentType, "uplink lost: PTP %u", unsigned{ptp});
  return PM_OK;
}

// While the records are restored, every PTP comes into existence: that is no news.
u32 existence_changed(u16 ptp, u16 primitive, void *) {
  u8 finished = 0;
  if (DDM_LibScribeIsClassBtFinished(PM_CLASS_DYNAMIC, &finished) != 0 || finished == 0) {
    return PM_RET_NOT_CONCERNED;
  }
  xPrintf(kComponentType, "PTP %u %s", unsigned{ptp},
          primitive == PM_PRIM_EXIST ? "has come into existence" : "has gone");
  return PM_OK;
}

u32 virtual_system_changed(u16 ptp, u16 primitive, void *parameter) {
  // The parameter is the u16 number of the virtual system.
  const u16 virtual_system = *static_cast<const u16 *>(parameter);
  xPrintf(kComponentType, "PTP %u %s virtual system %u", unsigned{ptp},
          primitive == PM_PRIM_VS_ADDED ? "joins" : "leaves", unsigned{virtual_system});
  return PM_OK;
}

struct Booking {
  u16 primitive;
  u16 type;
  PmBookFunc function;
};

constexpr Booking kBookings[] = {{PM_PRIM_EXIST, PM_PTP_TYPE_ALL, existence_changed},
                                 {PM_PRIM_NOT_EXIST, PM_PTP_TYPE_ALL, existence_changed},
                                 {PM_PRIM_LINK_UP, PM_PTP_TYPE_ALL, link_changed},
                                 {PM_PRIM_LINK_DOWN, PM_PTP_TYPE_ALL, link_changed},
                                 {PM_PRIM_LINK_DOWN, kTypeUplink, uplink_down},
                                 {PM_PRIM_VS_ADDED, PM_PTP_TYPE_ALL, virtual_system_changed},
                                 {PM_PRIM_VS_REMOVED, PM_PTP_TYPE_ALL, virtual_system_changed}};

}  // namespace

u32 book_functions() {
  for (const Booking &booking : kBookings) {
    const u32 code =
        PM_LibRegPrimaryWordCallback(booking.primitive, booking.type, booking.function);
    if (code != PM_OK) {
      return code;
    }
  }
  return PM_OK;
}

}  // namespace product

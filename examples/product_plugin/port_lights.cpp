// A small product in C++: ports with a light. It owns one port type, knows the MTU, the speed and
// the link state of its ports, and switches a port's light when the link changes.
#include <set>

#include "platform/dbg.h"
#include "pm.h"
#include "pm_product.h"
#include "port_lights.h"

namespace {

// What the hardware would know. A real product keeps it per instance, see ROOT_LibGetCurrentCID.
std::set<u16> lights_on;

// GET_ATTR_PRIV_FUNC: one attribute of a port. The record comes cleared; fill what is asked for.
u32 get_one_attribute(u16 ptp, u32 selector, PmSubAttr *attributes) {
  switch (selector) {
    case PM_SUB_ATTR_MTU:
      attributes->ulMtu = 1'500;
      return PM_OK;
    case PM_SUB_ATTR_SPEED:
      attributes->ulReceiveSpeed = 1'000'000'000;
      attributes->ulTransmitSpeed = 1'000'000'000;
      return PM_OK;
    case PM_SUB_ATTR_LINK_STATE:
      attributes->ucLinkState = lights_on.contains(ptp) ? 1 : 0;
      return PM_OK;
    default:
      return PM_ERR_PARA;
  }
}

// Booked for link up and link down of the ports of this product's type.
u32 switch_light(u16 ptp, u16 primitive, void *) {
  const bool on = primitive == PM_PRIM_LINK_UP;
  if (on) {
    lights_on.insert(ptp);
  } else {
    lights_on.erase(ptp);
  }
  xPrintf(PORT_LIGHTS_COMPONENT, "light of PTP %u is %s", unsigned{ptp}, on ? "on" : "off");
  return PM_OK;
}

// Configuration hook: the sub-lines, in the order of the port types.
u32 register_sub_lines() {
  PmSubLineInfo sub_line{};
  sub_line.usPtpType = PORT_LIGHTS_TYPE;
  sub_line.ulPID = PM_PID_NONE;
  sub_line.stCallBack.pfnGetAttrPriv = get_one_attribute;
  return PM_LibRegSubLineInfo(&sub_line);
}

// Phase hook: from phase 1 on functions can be booked.
u32 phase(u32 number) {
  if (number != 1) {
    return PM_OK;
  }
  for (const u16 primitive : {PM_PRIM_LINK_UP, PM_PRIM_LINK_DOWN}) {
    if (const u32 code = PM_LibRegPrimaryWordCallback(primitive, PORT_LIGHTS_TYPE, switch_light)) {
      return code;
    }
  }
  return PM_OK;
}

}  // namespace

const PmProductMngt *pm_product_hooks(void) {
  static const PmProductMngt hooks = [] {
    PmProductMngt table{};
    table.pfnPhaseProc = phase;
    table.pfnZelCfg = register_sub_lines;
    return table;
  }();
  return &hooks;
}

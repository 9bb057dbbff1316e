/* A small product in C: ports with a light. It owns one port type, knows the MTU, the speed and the
 * link state of its ports, and switches a port's light when the link changes. */
#include "port_lights.h"

#include "platform/dbg.h"
#include "pm.h"
#include "pm_product.h"

/* What the hardware would know. A real product keeps it per instance, see ROOT_LibGetCurrentCID. */
static u8 light_on[PM_PTP_ID_NONE];

/* GET_ATTR_PRIV_FUNC: one attribute of a port. The record comes cleared; fill what is asked for. */
static u32 get_one_attribute(u16 ptp, u32 selector, PmSubAttr *attributes) {
  switch (selector) {
    case PM_SUB_ATTR_MTU:
      attributes->ulMtu = 1500;
      return PM_OK;
    case PM_SUB_ATTR_SPEED:
      attributes->ulReceiveSpeed = 1000000000;
      attributes->ulTransmitSpeed = 1000000000;
      return PM_OK;
    case PM_SUB_ATTR_LINK_STATE:
      attributes->ucLinkState = light_on[ptp];
      return PM_OK;
    default:
      return PM_ERR_PARA;
  }
}

/* Booked for link up and link down of the ports of this product's type. */
static u32 switch_light(u16 ptp, u16 primitive, void *parameter) {
  (void)parameter;
  light_on[ptp] = primitive == PM_PRIM_LINK_UP;
  xPrintf(PORT_LIGHTS_COMPONENT, "light of PTP %u is %s", (unsigned)ptp,
          light_on[ptp] ? "on" : "off");
  return PM_OK;
}

/* Configuration hook: the sub-lines, in the order of the port types. */
static u32 register_sub_lines(void) {
  PmSubLineInfo sub_line = {0};
  sub_line.usPtpType = PORT_LIGHTS_TYPE;
  sub_line.ulPID = PM_PID_NONE;
  sub_line.stCallBack.pfnGetAttrPriv = get_one_attribute;
  return PM_LibRegSubLineInfo(&sub_line);
}

/* Phase hook: from phase 1 on functions can be booked. */
static u32 phase(u32 number) {
  u32 code;
  if (number != 1) {
    return PM_OK;
  }
  code = PM_LibRegPrimaryWordCallback(PM_PRIM_LINK_UP, PORT_LIGHTS_TYPE, switch_light);
  if (code != PM_OK) {
    return code;
  }
  return PM_LibRegPrimaryWordCallback(PM_PRIM_LINK_DOWN, PORT_LIGHTS_TYPE, switch_light);
}

static const PmProductMngt hooks = {.pfnPhaseProc = phase, .pfnZelCfg = register_sub_lines};

const PmProductMngt *pm_product_hooks(void) {
  return &hooks;
}

#include "sub_lines.hpp"

#include <cstring>

#include "live_ports.hpp"
#include "platform/bounded.h"

namespace product {
namespace {

constexpr u32 kMegabit = 1'000'000;

// What tells the port types apart; speeds are in bits per second and must fit 32 bits.
struct Traits {
  u16 type;
  const char *name;
  u32 mtu;
  u32 transmit_speed;
  u32 receive_speed;
  u32 queue_length;
};

constexpr Traits kTraits[] = {
    {kTypeUplink, "uplink", 9'216, 4'000 * kMegabit, 4'000 * kMegabit, 4'096},
    {kTypeEthernet, "ge", 2'000, 1'000 * kMegabit, 1'000 * kMegabit, 512},
    {kTypePon, "pon", 2'000, 2'488 * kMegabit, 1'244 * kMegabit, 1'024},
    {kTypeOnt, "ont", 1'500, 1'000 * kMegabit, 100 * kMegabit, 64}};

// Null when the PTP has no type of this product.
const Traits *traits_of(u16 ptp) {
  u16 type = 0;
  if (PM_LibGetTypeFromPTP(ptp, &type) != PM_OK) {
    return nullptr;
  }
  for (const Traits &traits : kTraits) {
    if (traits.type == type) {
      return &traits;
    }
  }
  return nullptr;
}

u8 link_state_of(u16 ptp) {
  return live_port(ptp).link_up ? 1 : 0;
}

u32 get_attributes(u16 ptp, PmSubAttr *attributes) {
  const Traits *traits = traits_of(ptp);
  if (traits == nullptr) {
    return PM_ERR_PTPTYPE_INVALID;
  }
  attributes->ulMtu = traits->mtu;
  attributes->ulTransmitSpeed = traits->transmit_speed;
  attributes->ulReceiveSpeed = traits->receive_speed;
  attributes->ulTxQLen = traits->queue_length;
  // A locally administered address that tells the PTP.
  const u8 address[PM_PHY_ADDR_LEN] = {
      0x02, 0x00, 0x5E, 0x00, static_cast<u8>(ptp >> 8), static_cast<u8>(ptp & 0xFF)};
  std::memcpy(attributes->aucPhyAddr, address, sizeof address);
  attributes->ucAdminStatus = live_port(ptp).admin_up ? 1 : 2;
  attributes->ucLinkState = link_state_of(ptp);
  attributes->aulSpecific[0] = traits->type;
  attributes->aulSpecific[1] = live_port(ptp).link_changes;
  // The name field needs no terminator, so a name of 32 characters may fill it.
  char name[sizeof attributes->szName + 1];
  snprintf_truncated_s(name, sizeof name, "%s-%u", traits->name, unsigned{ptp});
  std::memcpy(attributes->szName, name, std::strlen(name));
  return PM_OK;
}

// Only what the selector asks for: this is called for single attributes, often.
u32 get_one_attribute(u16 ptp, u32 selector, PmSubAttr *attributes) {
  const Traits *traits = traits_of(ptp);
  if (traits == nullptr) {
    return PM_ERR_PTPTYPE_INVALID;
  }
  switch (selector) {
    case PM_SUB_ATTR_MTU:
      attributes->ulMtu = traits->mtu;
      return PM_OK;
    case PM_SUB_ATTR_SPEED:
      attributes->ulTransmitSpeed = traits->transmit_speed;
      attributes->ulReceiveSpeed = traits->receive_speed;
      return PM_OK;
    case PM_SUB_ATTR_LINK_STATE:
      attributes->ucLinkState = link_state_of(ptp);
      return PM_OK;
    case PM_SUB_ATTR_TXQLEN:
      attributes->ulTxQLen = traits->queue_length;
      return PM_OK;
    default:
      return PM_ERR_PARA;
  }
}

// This product's statistics begin with the number of link changes, little-endian.
u32 get_statistics(u16 ptp, PmSubStats *statistics) {
  const u32 changes = live_port(ptp).link_changes;
  for (unsigned byte = 0; byte < sizeof changes; ++byte) {
    statistics->aucData[byte] = static_cast<u8>(changes >> (8 * byte));
  }
  return PM_OK;
}

// The speed in use: none while the link is down.
u32 get_active_speed(u16 ptp, u32 *transmit, u32 *receive) {
  const Traits *traits = traits_of(ptp);
  if (traits == nullptr) {
    return PM_ERR_PTPTYPE_INVALID;
  }
  const bool up = live_port(ptp).link_up;
  *transmit = up ? traits->transmit_speed : 0;
  *receive = up ? traits->receive_speed : 0;
  return PM_OK;
}

}  // namespace

u32 register_sub_lines() {
  for (const Traits &traits : kTraits) {
    PmSubLineInfo sub_line{};
    sub_line.usPtpType = traits.type;
    sub_line.ulPID = PM_PID_NONE;
    sub_line.stCallBack.pfnGetAttr = get_attributes;
    sub_line.stCallBack.pfnGetAttrPriv = get_one_attribute;
    sub_line.stCallBack.pfnGetStats = get_statistics;
    sub_line.stCallBack.pfnGetActiveSpeed = get_active_speed;
    if (const u32 code = PM_LibRegSubLineInfo(&sub_line)) {
      return code;
    }
  }
  return PM_OK;
}

}  // namespace product

// The product's table of hooks: where the library's start-up reaches this product.
#include "events.hpp"
#include "platform/dbg.h"
#include "pm_product.h"
#include "sub_lines.hpp"

namespace product {
namespace {

// Where an ONT's PTP sits: its first index is the board, its second carries the port in the high
// and the ONT ID in the low byte.
u32 get_ont_place(u16 ptp, u16 *board, u8 *port) {
  u8 ptp_class = 0;
  u16 index1 = 0;
  u16 index2 = 0;
  if (const u32 code = PM_LibGetPhyIndexFromPTPEx(ptp, &ptp_class, &index1, &index2)) {
    return code;
  }
  *board = index1;
  *port = static_cast<u8>(index2 >> 8);
  return PM_OK;
}

u32 phase(u32 number) {
  if (number != 1) {
    return PM_OK;
  }
  PmPtpClassFunc class_functions{};
  class_functions.pfnGetPhyIndex = get_ont_place;
  if (const u32 code = PM_LibRegPtpClassFunc(PM_PTP_CLASS_OTHER, &class_functions)) {
    return code;
  }
  // The object class of the PTPs in the host's capability and attribute services.
  if (const u32 code = PM_LibRegCapClassMngt()) {
    return code;
  }
  if (const u32 code = PM_LibRegAttrClassMngt()) {
    return code;
  }
  return book_functions();
}

u32 event_register() {
  xPrintf(kComponentType, "the first dynamic record has arrived");
  return PM_OK;
}

// A co-index packs frame, slot, port and ONT ID, one byte each; the co-type is the port type.
constexpr u32 kOctet = 0xFF;

// Words: the ONTs (PmFspOntid *), their number, co-indexes out (u32 *), co-types out (u32 *), and
// how many were translated out (u32 *).
u32 co_indexes_of_onts(PmWord onts, PmWord number, PmWord co_indexes, PmWord co_types,
                       PmWord translated) {
  const auto *ont = reinterpret_cast<const PmFspOntid *>(onts);
  auto *done = reinterpret_cast<u32 *>(translated);
  for (*done = 0; *done < number; ++*done, ++ont) {
    if (ont->usFrameID > kOctet || ont->ulOntID > kOctet) {
      return PM_ERR_DATA_INVALID;
    }
    const u32 frame = ont->usFrameID;
    const u32 slot = ont->ucSlotID;
    const u32 port = ont->ucPortID;
    reinterpret_cast<u32 *>(co_indexes)[*done] =
        frame << 24 | slot << 16 | port << 8 | ont->ulOntID;
    reinterpret_cast<u32 *>(co_types)[*done] = kTypeOnt;
  }
  return PM_OK;
}

// Words: co-index, co-type, the ONT out (PmFspOntid *).
u32 ont_of_co_index(PmWord co_index, PmWord co_type, PmWord ont_out) {
  if (co_type != kTypeOnt) {
    return PM_ERR_PTPTYPE_INVALID;
  }
  PmFspOntid ont{};
  ont.usFrameID = static_cast<u16>(co_index >> 24 & kOctet);
  ont.ucSlotID = static_cast<u8>(co_index >> 16 & kOctet);
  ont.ucPortID = static_cast<u8>(co_index >> 8 & kOctet);
  ont.ulOntID = static_cast<u32>(co_index & kOctet);
  *reinterpret_cast<PmFspOntid *>(ont_out) = ont;
  return PM_OK;
}

}  // namespace
}  // namespace product

const PmProductMngt *pm_product_hooks(void) {
  static const PmProductMngt hooks = [] {
    PmProductMngt table{};
    table.pfnPhaseProc = product::phase;
    table.pfnZelCfg = product::register_sub_lines;
    table.pfnEventRegister = product::event_register;
    table.pfnGetCoIndexByFspOntid = product::co_indexes_of_onts;
    table.pfnGetFspOntidByCoIndex = product::ont_of_co_index;
    return table;
  }();
  return &hooks;
}

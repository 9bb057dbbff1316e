// What one PTP is, by hand: one load from the array of records for each field.
#include "bench/floor_identity.hpp"

#include "bench/floor.hpp"

namespace floor_of {

u32 vs_mask(u16 ptp_id, u32 *mask) {
  const PmGlobalData *own = data();
  if (!in_range(own, ptp_id)) {
    return PM_ERR_PTPID_RANGE;
  }
  const PtpDynPubData &at = records(own)[ptp_id];
  *mask = at.ulVsMask;
  return existence(at);
}

u32 exists(u16 ptp_id) {
  const PmGlobalData *own = data();
  return in_range(own, ptp_id) ? existence(records(own)[ptp_id]) : u32{PM_ERR_PTPID_RANGE};
}

u32 type(u16 ptp_id, u16 *type) {
  const PmGlobalData *own = data();
  if (!in_range(own, ptp_id)) {
    return PM_ERR_PTPID_RANGE;
  }
  const PtpDynPubData &at = records(own)[ptp_id];
  if (at.ucExist == 0) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  *type = at.usPtpType;
  return 0;
}

// The host is asked for the instance once for each of the three fields.
u32 position(u16 ptp_id, u16 *board, u8 *port) {
  const PmGlobalData *own = data();
  if (!in_range(own, ptp_id)) {
    return PM_ERR_PTPID_RANGE;
  }
  if (records(own)[ptp_id].ucExist == 0) {
    return PM_ERR_PTP_NOT_EXIST;
  }
  *board = records(data())[ptp_id].usIndex1;
  *port = static_cast<u8>(records(data())[ptp_id].usIndex2);
  return 0;
}

u32 frame_slot_port(u16 ptp_id, u16 *frame, u8 *slot, u8 *port) {
  u16 board = 0;
  const u32 ret = position(ptp_id, &board, port);
  return ret == 0 ? DEV_LibGetFrameIDSlotIDFromBIndex(board, frame, slot) : ret;
}

}  // namespace floor_of

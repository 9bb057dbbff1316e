// A walk's step by hand: the rest of the PTP's board, then the slots behind it.
#include "bench/floor_walk.hpp"

#include "bench/floor.hpp"
#include "bench/floor_identity.hpp"
#include "bench/floor_reverse.hpp"

namespace floor_of {

namespace {

void feed_watchdog(u32 number) {
  if (number % 32 == 0) {
    ZEL_ClearWatchDog();
  }
}

bool next_on_board(u16 board, u32 port, u16 *next_ptp_id) {
  u16 inner = 0;
  u16 outer = 0;
  if (DEV_LibGetBoardAttribute(board, 0x10007, sizeof inner, &inner) != 0 ||
      DEV_LibGetBoardAttribute(board, 0x10008, sizeof outer, &outer) != 0) {
    return false;
  }
  ask_switch(PM_SWITCH_FUNCTION);
  const u32 port_num = u32{inner} + outer;
  for (; port < port_num; ++port) {
    feed_watchdog(port);
    u16 ptp_id = 0;
    if (find_port(board, static_cast<u8>(port), &ptp_id) != 0) {
      continue;
    }
    PtpDynPubData record;
    (void)memset_s(&record, sizeof record, 0xFF, sizeof record);
    (void)memcpy_s(&record, sizeof record, &records(data())[ptp_id], sizeof record);
    if (record.ucPtpClass == PM_PTP_CLASS_PORT && record.usIndex1 == board) {
      *next_ptp_id = ptp_id;
      return true;
    }
  }
  return false;
}

u32 next_from(u32 frame, u32 slot, u16 *next_ptp_id) {
  const u32 frame_num = DEV_GetMaxFrameNum();
  for (; frame < frame_num; ++frame, slot = 0) {
    feed_watchdog(frame);
    u8 slot_num = 0;
    if (DEV_LibIfFrameExist(static_cast<u16>(frame)) != 0 ||
        DEV_LibGetFrameAttribute(static_cast<u16>(frame), 5, sizeof slot_num, &slot_num) != 0) {
      continue;
    }
    for (; slot < slot_num; ++slot) {
      u16 board = 0;
      if (DEV_LibGetBIndexFromFrameIDSlotID(static_cast<u16>(frame), static_cast<u8>(slot),
                                            &board) == 0 &&
          DEV_LibIfBoardExist(board) == 0 && next_on_board(board, 0, next_ptp_id)) {
        return 0;
      }
    }
  }
  ask_switch(PM_SWITCH_FUNCTION);
  return PM_ERR_NO_MORE;
}

}  // namespace

u32 next_port(u16 ptp_id, u16 *next_ptp_id) {
  if (ptp_id == PM_PTP_ID_NONE) {
    return next_from(0, 0, next_ptp_id);
  }
  u16 board = 0;
  u8 port = 0;
  // The class is read, and then the place.
  if (records(data())[ptp_id].ucPtpClass != PM_PTP_CLASS_PORT ||
      position(ptp_id, &board, &port) != 0) {
    return PM_ERR_NO_MORE;
  }
  // No board has a port behind 254.
  if (port < 254 && next_on_board(board, port + 1U, next_ptp_id)) {
    return 0;
  }
  u16 frame = 0;
  u8 slot = 0;
  (void)DEV_LibGetFrameIDSlotIDFromBIndex(board, &frame, &slot);
  return next_from(frame, slot + 1U, next_ptp_id);
}

}  // namespace floor_of

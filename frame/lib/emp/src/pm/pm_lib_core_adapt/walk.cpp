// Walks over the physical ports. Stateless: each step finds its place again from the PTP it is
// given.
#include "diag.hpp"
#include "platform/bounded.h"
#include "platform/dev.h"
#include "platform/zel.h"
#include "pm_board_ports.h"
#include "pm_dynamic_data.h"
#include "pm_identity.h"
#include "pm_reverse_lookup.h"
#include "pm_virtual_system.h"
#include "pm_walk.h"

PM_SOURCE(pm_lib_core_adapt, 22);

namespace {

constexpr u32 port_max = 254;  // a board has at most 255 ports
constexpr u32 watchdog_stride = 32;
constexpr u32 vs_walk_watchdog_ticks = 20;
// No walk visits more PTPs than there are PTP IDs. A chassis whose boards and slots do not match
// one to one could lead the walk in a circle.
constexpr u32 vs_walk_steps_max = 65536;
constexpr u32 frame_attr_slot_num = 5;

struct Wanted {
  u16 ptp_type;
  u8 filter;
};

struct Place {
  u32 frame;
  u32 slot;
};

void feed_watchdog(u32 number) {
  if (number % watchdog_stride == 0) {
    ZEL_ClearWatchDog();
  }
}

bool wanted_on_board(const PtpDynPubData &record, u16 board, Wanted wanted) {
  return record.ucPtpClass == PM_PTP_CLASS_PORT && record.usIndex1 == board &&
         (record.usPtpType == wanted.ptp_type || wanted.ptp_type == PM_PTP_TYPE_ALL) &&
         (record.ucInvisible == wanted.filter || wanted.filter == PM_FILTER_ALL);
}

// Is there a wanted PTP at the port? Only then is it written.
bool take_port(u16 board, u8 port, Wanted wanted, u16 *next_ptp_id) {
  u16 ptp_id = 0;
  if (PM_LibGetPtpFromPhyIndex(board, port, &ptp_id) != PM_OK) {
    return false;
  }
  PtpDynPubData record;
  (void)memset_s(&record, sizeof record, 0xFF, sizeof record);
  const u32 ret = PM_LibGetAllDynDataFromPtpID(ptp_id, &record);
  if (ret != PM_OK) {
    RECORD(ptp_id, ret);
    return false;
  }
  if (!wanted_on_board(record, board, wanted)) {
    return false;
  }
  *next_ptp_id = ptp_id;
  return true;
}

// The ports of a board that follow a port. Nothing follows port 254, and port 255 must not wrap
// round to the board's first port.
u32 next_after_port(u16 board, u8 port, Wanted wanted, u16 *next_ptp_id) {
  const u32 first_port = port + 1U;
  if (first_port > port_max) {
    return PM_ERR_NO_MORE;
  }
  return PM_LibGetNextPtpIdInBoardByPort(board, static_cast<u8>(first_port), wanted.ptp_type,
                                         wanted.filter, next_ptp_id);
}

u32 next_in_slot(u16 frame, u8 slot, Wanted wanted, u16 *next_ptp_id) {
  u16 board = 0;
  if (DEV_LibGetBIndexFromFrameIDSlotID(frame, slot, &board) != PM_OK ||
      DEV_LibIfBoardExist(board) != PM_OK) {
    return PM_ERR_NO_MORE;
  }
  return PM_LibGetNextPtpIdInBoardByPort(board, 0, wanted.ptp_type, wanted.filter, next_ptp_id);
}

u32 next_in_frame(u16 frame, u32 first_slot, Wanted wanted, u16 *next_ptp_id) {
  if (DEV_LibIfFrameExist(frame) != PM_OK) {
    return PM_ERR_NO_MORE;
  }
  u8 slot_num = 0;
  const u32 ret = DEV_LibGetFrameAttribute(frame, frame_attr_slot_num, sizeof slot_num, &slot_num);
  if (ret != PM_OK) {
    RECORD(ret, frame);
    return PM_ERR_NO_MORE;
  }
  for (u32 slot = first_slot; slot < slot_num; ++slot) {
    if (next_in_slot(frame, static_cast<u8>(slot), wanted, next_ptp_id) == PM_OK) {
      return PM_OK;
    }
  }
  return PM_ERR_NO_MORE;
}

// The slots from a place on. Whatever fails in a frame or slot passes it over.
u32 next_from_place(Place place, Wanted wanted, u16 *next_ptp_id) {
  const u32 frame_num = DEV_GetMaxFrameNum();
  for (; place.frame < frame_num; place = {place.frame + 1, 0}) {
    feed_watchdog(place.frame);
    if (next_in_frame(static_cast<u16>(place.frame), place.slot, wanted, next_ptp_id) == PM_OK) {
      return PM_OK;
    }
  }
  return PM_ERR_NO_MORE;
}

// Callers of the public walks learn of a failure from the records only.
u32 end_walk(u32 ret, u16 board, u16 ptp_id, u16 ptp_type) {
  if (ret != PM_ERR_NO_MORE) {
    RECORD(ret, board, ptp_id, ptp_type);
  }
  return PM_ERR_NO_MORE;
}

}  // namespace

u32 PM_LibGetNextPtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType, u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetNextPtpFromPTP fail, usBIndex = %u, usPtpID = %u, usPtpType = %u", usBIndex,
          usPtpID, usPtpType);
    return FAIL(PM_ERR_PARA, usBIndex, usPtpID, usPtpType);
  }
  const u32 ret =
      PM_LibPtpIdGetNextFromPortPtp(usBIndex, usPtpID, usPtpType, PM_FILTER_ALL, pusNextPtpID);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetNextPtpFromPTP fail, ulRet = 0x%x, usPtpID = %u, usPtpType = %u", ret, usPtpID,
          usPtpType);
    return end_walk(ret, usBIndex, usPtpID, usPtpType);
  }
  return PM_OK;
}

u32 PM_LibGetNextVisiblePtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType, u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetNextVisiblePtpFromPTP fail, usBIndex = %u, usPtpID = %u, usPtpType = %u",
          usBIndex, usPtpID, usPtpType);
    return FAIL(PM_ERR_PARA, usBIndex, usPtpID, usPtpType);
  }
  const u32 ret =
      PM_LibPtpIdGetNextFromPortPtp(usBIndex, usPtpID, usPtpType, PM_FILTER_VISIBLE, pusNextPtpID);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetNextVisiblePtpFromPTP fail, ulRet = 0x%x, usPtpID = %u, usPortType = %u", ret,
          usPtpID, usPtpType);
    return end_walk(ret, usBIndex, usPtpID, usPtpType);
  }
  return PM_OK;
}

u32 PM_LibGetNextPtpFromVS(u32 ulVsID, u16 usBIndex, u16 usPtpID, u16 usPtpType,
                           u16 *pusNextPtpID) {
  if (ulVsID == PM_VS_ID_ALL) {
    return PM_LibGetNextPtpFromPTP(usBIndex, usPtpID, usPtpType, pusNextPtpID);
  }
  if (pusNextPtpID == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (ulVsID >= PM_VS_NUM) {
    return FAIL(PM_ERR_DATA_INVALID, usPtpID);
  }
  u16 ptp_id = usPtpID;
  for (u32 step = 0; step < vs_walk_steps_max; ++step) {
    ZEL_TaskRunClearDog(vs_walk_watchdog_ticks);
    const u32 ret = PM_LibGetNextPtpFromPTP(usBIndex, ptp_id, usPtpType, &ptp_id);
    if (ret != PM_OK) {
      return ret;
    }
    if (PM_LibIfPtpInVs(ptp_id, ulVsID) == PM_OK) {
      *pusNextPtpID = ptp_id;
      return PM_OK;
    }
  }
  return PM_ERR_NO_MORE;
}

u32 PM_LibPtpIdGetNextFromPortPtp(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                  u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (usPtpID != PM_PTP_ID_NONE) {
    u8 ptp_class = 0;
    const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, PM_DYN_ATTR_PTP_CLASS, &ptp_class);
    if (ret != PM_OK) {
      return FAIL(ret, usPtpID, ret);
    }
    if (ptp_class != PM_PTP_CLASS_PORT) {
      return PM_ERR_NO_MORE;
    }
  }
  if (usBIndex == PM_BINDEX_ALL) {
    return PM_LibGetNextPtpIdByPtpID(usPtpID, usPtpType, ucFilter, pusNextPtpID);
  }
  return PM_LibGetNextPtpIdByBIndex(usBIndex, usPtpID, usPtpType, ucFilter, pusNextPtpID);
}

u32 PM_LibGetNextPtpIdByPtpID(u16 usPtpID, u16 usPtpType, u8 ucFilter, u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const Wanted wanted = {usPtpType, ucFilter};
  if (usPtpID == PM_PTP_ID_NONE) {
    return next_from_place({0, 0}, wanted, pusNextPtpID);
  }
  u16 board = 0;
  u8 port = 0;
  u32 ret = PM_LibGetPhyIndexFromPTP(usPtpID, &board, &port);
  if (ret != PM_OK) {
    return FAIL(ret, usPtpID, ret);
  }
  // Even a failure on the PTP's own board sends the walk on to the slot after it.
  if (next_after_port(board, port, wanted, pusNextPtpID) == PM_OK) {
    return PM_OK;
  }
  u16 frame = 0;
  u8 slot = 0;
  ret = DEV_LibGetFrameIDSlotIDFromBIndex(board, &frame, &slot);
  if (ret != PM_OK) {
    return FAIL(ret, usPtpID);
  }
  return next_from_place({frame, slot + 1U}, wanted, pusNextPtpID);
}

u32 PM_LibGetNextPtpIdByBIndex(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                               u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u32 ret = DEV_LibIfBoardExist(usBIndex);
  if (ret != PM_OK) {
    return ret;
  }
  if (usPtpID == PM_PTP_ID_NONE) {
    return PM_LibGetNextPtpIdInBoardByPort(usBIndex, 0, usPtpType, ucFilter, pusNextPtpID);
  }
  u16 board = 0;
  u8 port = 0;
  ret = PM_LibGetPhyIndexFromPTP(usPtpID, &board, &port);
  if (ret != PM_OK) {
    return FAIL(ret, usPtpID, ret);
  }
  if (board != usBIndex) {
    return FAIL(PM_ERR_DATA_INVALID, usPtpID);
  }
  return next_after_port(board, port, {usPtpType, ucFilter}, pusNextPtpID);
}

u32 PM_LibGetNextPtpIdInBoardByPort(u16 usBIndex, u8 ucPort, u16 usPtpType, u8 ucFilter,
                                    u16 *pusNextPtpID) {
  if (pusNextPtpID == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  u8 outer_num = 0;
  u8 inner_num = 0;
  u8 port_num = 0;
  const u32 ret = PM_LibGetHardwarePortNum(usBIndex, &outer_num, &inner_num, &port_num);
  if (ret != PM_OK) {
    return FAIL(ret, ret, usBIndex);
  }
  const Wanted wanted = {usPtpType, ucFilter};
  for (u32 port = ucPort; port < port_num; ++port) {
    feed_watchdog(port);
    if (take_port(usBIndex, static_cast<u8>(port), wanted, pusNextPtpID)) {
      return PM_OK;
    }
  }
  return PM_ERR_NO_MORE;
}

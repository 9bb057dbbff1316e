// Commands 3, 4 and 5: one PTP's static and dynamic record, and the PTP specification.
#include <algorithm>

#include "diag.hpp"
#include "global_data.hpp"
#include "platform/bounded.h"
#include "platform/dev.h"
#include "pm_debug_window.h"
#include "pm_dynamic_data.h"
#include "pm_reverse_lookup.h"
#include "pm_static_data.h"
#include "pm_sub_lookup.h"
#include "static_record.hpp"

PM_SOURCE(pm_lib_dbg, 4);

namespace {

constexpr u32 type_desc_size = 32;
constexpr u32 dump_size = 481;
constexpr u8 trap_on = 1;

struct FrameSlot {
  u16 frame;
  u8 slot;
};

FrameSlot frame_slot_of(u16 board) {
  FrameSlot place{};
  const u32 ret = DEV_LibGetFrameIDSlotIDFromBIndex(board, &place.frame, &place.slot);
  return ret == PM_OK ? place : FrameSlot{0xFFFF, 0xFF};
}

const char *visibility(const PtpStaticData &record) {
  return record.ucVisible == 0 ? "visible" : "invisible";
}

// The bytes as "xx " each, as far as the buffer goes.
void dump_bytes(const u8 *bytes, u32 count, char (&dump)[dump_size]) {
  u32 used = 0;
  for (u32 i = 0; i < count; ++i) {
    const int written = snprintf_truncated_s(dump + used, dump_size - used, "%02x ", bytes[i]);
    if (written < 0) {
      RECORD(used, dump_size);
      continue;
    }
    used += static_cast<u32>(written);
    if (used >= dump_size) {
      RECORD(used, dump_size);
      return;
    }
  }
}

void print_static_record(const PtpStaticData &record) {
  const FrameSlot place = frame_slot_of(record.usBIndex);
  char type_desc[type_desc_size] = {};
  PM_LibDbgGetPtpTypeDesc(record.usType, type_desc, sizeof type_desc);
  // The record's own description may lack a terminator.
  char description[PM_DESC_LEN_MAX + 1] = {};
  std::copy_n(record.szDescription, pm::usable_desc_len(), description);
  char private_data[dump_size] = {};
  dump_bytes(pm::private_static_data(record), PM_PRI_DATA_SIZE, private_data);

  PRINT_RELTIME("\r\n  PTP  static data:");
  PRINT_RELTIME("\r\n    PTPID          : %u", record.usPtpID);
  PRINT_RELTIME("\r\n    BIndex         : %u (Frame:%u, Slot:%u)", record.usBIndex, place.frame,
                place.slot);
  PRINT_RELTIME("\r\n    PortID         : %u", record.ucPortID);
  PRINT_RELTIME("\r\n    Type           : %u (%s)", record.usType, type_desc);
  PRINT_RELTIME("\r\n    LinkUpDownTrap : %u (%s)", record.ucLinkUpDownTrap,
                record.ucLinkUpDownTrap == trap_on ? "on" : "off");
  PRINT_RELTIME("\r\n    Visible        : %u (%s)", record.ucVisible, visibility(record));
  PRINT_RELTIME("\r\n    Description    : %s", description);
  PRINT_RELTIME("\r\n    aucPriData     : 0x %s", private_data);
  PRINT_RELTIME("\r\n    ulVsMask       : 0x%8x", record.ulVsMask);
  PRINT_RELTIME("\r\n");
}

// The text of the visibility is the static record's, beside the dynamic record's flag.
void print_dynamic_record(const PtpDynPubData &record, const char *visibility_text) {
  const FrameSlot place = frame_slot_of(record.usIndex1);
  char type_desc[type_desc_size] = {};
  PM_LibDbgGetPtpTypeDesc(record.usPtpType, type_desc, sizeof type_desc);

  PRINT_RELTIME("\r\n  PTP dynamic data:");
  PRINT_RELTIME("\r\n    ucPtpClass         : %u", record.ucPtpClass);
  PRINT_RELTIME("\r\n    usIndex1         : %u", record.usIndex1);
  PRINT_RELTIME("\r\n    usIndex2         : %u (Frame:%u, Slot:%u)", record.usIndex2, place.frame,
                place.slot);
  PRINT_RELTIME("\r\n    Type           : %u (%s)", record.usPtpType, type_desc);
  PRINT_RELTIME("\r\n    Visible        : %u (%s)", record.ucInvisible, visibility_text);
  PRINT_RELTIME("\r\n    PrivDynDataID  : %u", record.PrivDynDataID);
  PRINT_RELTIME("\r\n    LastChangeTick : %u", record.LastChangeTick);
  PRINT_RELTIME("\r\n    ulVsMask : 0x%8x", record.ulVsMask);
  PRINT_RELTIME("\r\n");
}

}  // namespace

void PM_LibDbgShowPtpFromPtpID(u32 /*ulCommand*/, u32 ulSubCmd, u32 /*ulPara1*/, u32 /*ulPara2*/) {
  PM_LibDbgShowPtpDetails(static_cast<u16>(ulSubCmd));
}

void PM_LibDbgShowPtpFromFSP(u32 /*ulCommand*/, u32 ulSubCmd, u32 ulPara1, u32 ulPara2) {
  u16 board = PM_BINDEX_ALL;
  u32 ret = DEV_LibGetBIndexFromFrameIDSlotID(static_cast<u16>(ulSubCmd), static_cast<u8>(ulPara1),
                                              &board);
  if (ret != PM_OK) {
    PRINT_RELTIME("\r\n  fail to get BIndex, error code: %#x", ret);
  }
  u16 ptp_id = 0;
  ret = PM_LibGetPtpFromPhyIndex(board, static_cast<u8>(ulPara2), &ptp_id);
  if (ret != PM_OK) {
    PRINT_RELTIME("\r\n  fail to get PTPID, error code: %#x", ret);
    return;
  }
  PM_LibDbgShowPtpDetails(ptp_id);
}

void PM_LibDbgShowPtpDetails(u16 usPtpID) {
  PtpStaticData static_record{};
  PtpDynPubData dynamic_record{};
  const u32 static_ret = PM_LibStaticDataGetDataFromPTP(usPtpID, &static_record);
  const u32 dynamic_ret = PM_LibGetAllDynDataFromPtpID(usPtpID, &dynamic_record);
  if (static_ret == PM_OK) {
    print_static_record(static_record);
  } else {
    PRINT_RELTIME("\r\n  fail to get PTP static data!");
    // A failed read may have filled it with 0xFF; the dynamic block shows such a PTP as visible.
    static_record = {};
  }
  if (dynamic_ret != PM_OK) {
    PRINT_RELTIME("\r\n  fail to get PTP dynamic data!");
    return;
  }
  print_dynamic_record(dynamic_record, visibility(static_record));
}

void PM_LibDbgGetPtpTypeDesc(u16 usPtpType, char *pcBuf, u32 ulBufLen) {
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *callback = nullptr;
  const u32 ret = PM_LibGetSubInfo(usPtpType, &info, &callback);
  const char *text = "No support Desc";
  if (ret != PM_OK) {
    PRINT_INFO(PM_COMP_TYPE, "\r\n  fails to get line registration information! error code: %#x",
               ret);
    text = "unknown type";
  }
  const u32 room = ulBufLen == 0 ? 0 : ulBufLen - 1;
  const int copied = strncpy_s(pcBuf, ulBufLen, text, room);
  if (copied != 0) {
    RECORD(copied, ret);
  }
}

void PM_LibDbgShowPTPSpec(u32 /*ulCommand*/, u32 /*ulSubCmd*/, u32 /*ulPara1*/, u32 /*ulPara2*/) {
  PRINT_RELTIME("\r\n  PTP config standard:");
  PRINT_RELTIME("\r\n  total PTP number:    %d", PM_LibGetPtpMaxNum());
  PRINT_RELTIME("\r\n  visible PTP number:  %d", g_stPmAttrCB.usVisiblePtpNum);
  PRINT_RELTIME("\r\n  virtual PTP number:  %d", g_stPmAttrCB.usVirtualPtpNum);
  PRINT_RELTIME("\r\n  size of PTP extended area :  %d", g_stPmAttrCB.usExtAreaSize);
}

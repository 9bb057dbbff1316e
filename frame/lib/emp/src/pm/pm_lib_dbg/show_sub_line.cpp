// Commands 2 and 6: the registered sub-lines and their callbacks.
#include "diag.hpp"
#include "global_data.hpp"
#include "platform/zel.h"
#include "pm_debug_window.h"
#include "pm_sub_lookup.h"
#include "sub_attr.hpp"

PM_SOURCE(pm_lib_dbg, 3);

namespace {

constexpr u32 all_types = 0;
constexpr u32 summary_watchdog_stride = 128;

void print_summary_row(u16 suffix) {
  PmSubInnerSubInfo *info = nullptr;
  if (PM_LibGetSubInfoFromSuffix(suffix, &info) != PM_OK) {
    PRINT_RELTIME("\r\n  fails to get registration parameter whose index is %d.", suffix);
    return;
  }
  PRINT_RELTIME("\r\n  0x%04x    %02x ", info->usPtpType, info->ucVisible);
}

void print_ruler() {
  xPrintf(PM_COMP_TYPE, "----------------------------------------------------");
}

}  // namespace

void PM_LibDbgShowRegedLineInfo(u32 /*ulCommand*/, u32 ulSubCmd, u32 /*ulPara1*/, u32 /*ulPara2*/) {
  if (ulSubCmd == all_types) {
    PM_LibDbgShowAllRegedLineSummary();
  } else {
    PM_LibDbgShowOneRegedLineDetail(static_cast<u16>(ulSubCmd));
  }
}

void PM_LibDbgShowAllRegedLineSummary(void) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  PRINT_RELTIME("\r\n  type number  visible flag  type description ");
  PRINT_RELTIME("\r\n  ----------    ----------    -------------");
  const u32 type_num = pm::ptp_type_num(data);
  for (u32 i = 0; i < type_num; ++i) {
    if (i % summary_watchdog_stride == 0) {
      ZEL_ClearWatchDog();
    }
    print_summary_row(static_cast<u16>(i));
  }
}

void PM_LibDbgShowOneRegedLineDetail(u16 usPtpType) {
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *callback = nullptr;
  const u32 ret = PM_LibGetSubInfo(usPtpType, &info, &callback);
  if (ret != PM_OK) {
    PRINT_RELTIME("\r\n  fail to get line registration information! error code: %#x", ret);
    return;
  }
  PM_LibDbgPrintSubLineInfo(info, callback);
}

void PM_LibDbgPrintSubLineInfo(const PmSubInnerSubInfo *pstSubInfo,
                               const PmSubCallBackEntry *pstCallBack) {
  if (pstSubInfo == nullptr) {
    return;
  }
  PRINT_RELTIME("\r\n  visible flag                   : %u", pstSubInfo->ucVisible);
  PRINT_RELTIME("\r\n  subline callback function:");
  PM_LibDbgPrintSubCallBackInfo(pstCallBack);
}

void PM_LibDbgPrintSubCallBackInfo(const PmSubCallBackEntry *pstCallBack) {
  if (pstCallBack == nullptr) {
    return;
  }
  const auto callbacks = pm::load<PmSubCallBack>(&pstCallBack->stCallBack);
  xPrintf(PM_COMP_TYPE, "\r\n    SET_ADMIN_FUNC            : 0x%p",
          pm::address(callbacks.pfnSetAdmin));
  xPrintf(PM_COMP_TYPE, "\r\n    SET_PROMISCOUS_MODE_FUNC  : 0x%p",
          pm::address(callbacks.pfnSetPromiscuousMode));
  xPrintf(PM_COMP_TYPE, "\r\n    GET_STATS_FUNC            : 0x%p",
          pm::address(callbacks.pfnGetStats));
  xPrintf(PM_COMP_TYPE, "\r\n    GET_ATTR_FUNC             : 0x%p",
          pm::address(callbacks.pfnGetAttr));
  xPrintf(PM_COMP_TYPE, "\r\n    GET_ATTR_PRIV_FUNC        : 0x%p",
          pm::address(callbacks.pfnGetAttrPriv));
  xPrintf(PM_COMP_TYPE, "\r\n    SYN_EXTRACT_FUNC          : 0x%p",
          pm::address(callbacks.pfnSynExtract));
  xPrintf(PM_COMP_TYPE, "\r\n    SYN_RESTORE_FUNC          : 0x%p",
          pm::address(callbacks.pfnSynRestore));
  xPrintf(PM_COMP_TYPE, "\r\n    GET_ACTIVE_SPEED_FUNC     : 0x%p",
          pm::address(callbacks.pfnGetActiveSpeed));
  xPrintf(PM_COMP_TYPE, "\r\n    GET_REPLACE_TYPE_FUNC     : 0x%p",
          pm::address(callbacks.pfnGetReplaceType));
}

void PM_LibShowSubLineInfo(u32 /*ulCommand*/, u32 /*ulSubCmd*/, u32 /*ulPara1*/, u32 /*ulPara2*/) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  const u32 entry_num = pm::sub_callback_num(data);
  if (entry_num == 0) {
    xPrintf(PM_COMP_TYPE, "No subline info!");
    return;
  }
  print_ruler();
  for (u32 i = 0; i < entry_num; ++i) {
    pm::feed_watchdog_at(i);
    const PmSubCallBackEntry &entry = data->pstSubCallBack[i];
    // Positions behind the registered sub-lines have type 0.
    if (entry.usPtpType == 0) {
      continue;
    }
    xPrintf(PM_COMP_TYPE, "\r\n    Subline type              : 0x%x", entry.usPtpType);
    PM_LibDbgPrintSubCallBackInfo(&entry);
    print_ruler();
  }
}

// The tables of port types as the library's other files see them.
//
// Both tables keep the size they were allocated with while the count in the control block may
// change later; a position is usable while it is below both. The functions take the data of an
// instance, never null.
#ifndef PM_SUB_ATTR_HPP
#define PM_SUB_ATTR_HPP

#include "global_data.hpp"
#include "platform/zel.h"

namespace pm {

// Feeds the task watchdog once in 512 positions of a walk over the port types, beginning with the
// first.
inline void feed_watchdog_at(u32 position) {
  constexpr u32 stride = 512;
  if (position % stride == 0) {
    ZEL_ClearWatchDog();
  }
}

// Number of port types, so of suffixes; 0 while there is no control block.
inline u16 ptp_type_num(const PmGlobalData *data) {
  return data->pstSubAttrCB == nullptr ? u16{0} : data->pstSubAttrCB->usPtpTypeNum;
}

// The port-type records by suffix; null while there are none.
inline PmSubInnerSubInfo *sub_infos(const PmGlobalData *data) {
  return data->pstSubAttrCB == nullptr ? nullptr : data->pstSubAttrCB->pstSubInnerSubInfo;
}

// How many port-type records may be used.
inline u16 sub_info_num(const PmGlobalData *data) {
  if (sub_infos(data) == nullptr) {
    return 0;
  }
  const u16 num = ptp_type_num(data);
  const u16 allocated = data->usSubInfoNum;
  return num < allocated ? num : allocated;
}

// How many entries of the callback table, pstSubCallBack, may be used.
inline u16 sub_callback_num(const PmGlobalData *data) {
  if (data->pstSubCallBack == nullptr) {
    return 0;
  }
  const u16 num = ptp_type_num(data);
  const u16 allocated = data->usSubCallBackNum;
  return num < allocated ? num : allocated;
}

// Do both tables exist?
inline bool sub_tables_exist(const PmGlobalData *data) {
  return sub_infos(data) != nullptr && data->pstSubCallBack != nullptr;
}

}  // namespace pm

#endif

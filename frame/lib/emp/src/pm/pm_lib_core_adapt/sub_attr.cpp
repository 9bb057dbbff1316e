// The control block of port types, the array of their records and the table of their callbacks:
// allocation, filling, and the release of the registration list the table is filled from.
#include "sub_attr.hpp"

#include "diag.hpp"
#include "memory.hpp"
#include "platform/kvt.h"

PM_SOURCE(pm_lib_core_adapt, 31);

u32 PM_LibMallocForSubAttrCB(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (data->pstSubAttrCB != nullptr) {
    return PM_OK;
  }
  constexpr u32 size = sizeof(PmSubAttrCB);
  void *block = ALLOCATE(ZEL_kvtBlockMemPtGet(), size);
  if (block == nullptr) {
    KVT_Printf("\r\n PM_LibMallocForSubAttrCB malloc memory fail, pointer = %d", size);
    return FAIL(PM_ERR_MALLOC, size);
  }
  data->pstSubAttrCB = static_cast<PmSubAttrCB *>(block);
  return PM_OK;
}

u32 PM_LibMallocSubAttrGlobalVar(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (data->pstSubAttrCB == nullptr) {
    return PM_ERR_SIZE_ZERO;
  }
  if (pm::sub_infos(data) == nullptr) {
    const u16 num = pm::ptp_type_num(data);
    const u32 size = num * u32{sizeof(PmSubInnerSubInfo)};
    if (size == 0) {
      return PM_ERR_SIZE_ZERO;
    }
    void *infos = ALLOCATE(ZEL_kvtBlockMemPtGet(), size);
    if (infos == nullptr) {
      KVT_Printf("\r\n PM_MallocSubAttrInit malloc memory fail, ulSize = %d", size);
      return FAIL(PM_ERR_MALLOC, size);
    }
    data->usSubInfoNum = num;
    data->pstSubAttrCB->pstSubInnerSubInfo = static_cast<PmSubInnerSubInfo *>(infos);
  }
  return PASS_UP(PM_LibMallocSubCallBack());
}

u32 PM_LibMallocSubCallBack(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (data->pstSubCallBack != nullptr) {
    return PM_OK;
  }
  const u16 num = pm::ptp_type_num(data);
  const u32 size = num * u32{sizeof(PmSubCallBackEntry)};
  void *table = size == 0 ? nullptr : ALLOCATE(ZEL_kvtStaticMemPtGet(), size);
  if (table == nullptr) {
    KVT_Printf(
        "\r\n PM_LibMallocSubCallBack fail, malloc static memory fail, pstPtpDynPubData = %d",
        size);
    return FAIL(PM_ERR_MALLOC, size);
  }
  data->usSubCallBackNum = num;
  data->pstSubCallBack = static_cast<PmSubCallBackEntry *>(table);
  return PM_OK;
}

u32 PM_LibSubAttrInit(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  PmSubCallBackEntry *table = data->pstSubCallBack;
  const u32 num = pm::sub_callback_num(data);
  PmSubInfoNode *node = nullptr;
  for (u32 i = 0; i < num && PM_LibLibCfgGetNextSubInfoNode(node, &node) == PM_OK; ++i) {
    pm::feed_watchdog_at(i);
    table[i] = {node->stInfo.usPtpType, node->stInfo.stCallBack, 0};
  }
  return PM_OK;
}

u32 PM_LibPtpTypeNumInit(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (data->pstSubAttrCB != nullptr) {
    data->pstSubAttrCB->usPtpTypeNum = data->usPtpTypeNum;
  }
  return PM_OK;
}

u32 PM_LibCfgReleaseMem(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 num = pm::ptp_type_num(data);
  for (u32 i = 0; i < num; ++i) {
    pm::feed_watchdog_at(i);
    PmSubInfoNode *node = data->pstSubInfoHead;
    if (node == nullptr) {
      continue;
    }
    data->pstSubInfoHead = node->pstNext;
    (void)ZEL_MemFree(PM_COMP_TYPE, node);
    if (data->pstSubInfoHead == nullptr) {
      break;
    }
  }
  return PM_OK;
}

u32 PM_LibPtpNumSpecInit(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (PM_LibMallocForSubAttrCB() != PM_OK) {
    return FAIL(PM_ERR_MEM_OPER, PM_ERR_PARA);
  }
  data->pstSubAttrCB->usPtpTypeNum = g_stPmSubAttrCB.usPtpTypeNum;
  data->pstSubAttrCB->usMaxPtpTypeValue = g_stPmSubAttrCB.usMaxPtpTypeValue;
  return PM_OK;
}

u32 PM_LibSubInnerSubInfoInit(void) {
  return PASS_UP(PM_LibSubAttrInit());
}

u16 PM_LibGetPtpMaxTypeValue(void) {
  const PmGlobalData *data = pm::current_data();
  return data == nullptr || data->pstSubAttrCB == nullptr ? u16{0}
                                                          : data->pstSubAttrCB->usMaxPtpTypeValue;
}

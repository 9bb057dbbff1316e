// The list of registered sub-lines, in registration order, and the registration of their PIDs.
#include "pm_sub_line.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "memory.hpp"
#include "platform/kvt.h"

PM_SOURCE(pm_lib_core_adapt, 30);

namespace {

constexpr u32 watchdog_stride = 128;

// The node behind the current one, the first behind null; null at the end.
PmSubInfoNode *next_node(PmSubInfoNode *current) {
  PmSubInfoNode *next = nullptr;
  (void)PM_LibLibCfgGetNextSubInfoNode(current, &next);
  return next;
}

bool pid_conflicts(const PmSubLineInfo &info, const PmSubLineInfo &registered) {
  return info.ulPID != PM_PID_NONE && info.ulPID == registered.ulPID;
}

}  // namespace

u32 PM_LibRegSubLineInfo(const PmSubLineInfo *pstSubLineInfo) {
  u32 ret = PM_LibCfgIsInputValid(pstSubLineInfo);
  if (ret != PM_OK) {
    KVT_Printf("\r\n PM_LibRegSubLineInfo-->PM_LibCfgIsInputValid fail, ulRet = 0x%x", ret);
    return ret;
  }
  ret = PM_LibCfgAddSubInfoNode(pstSubLineInfo);
  if (ret != PM_OK) {
    const u16 type = pstSubLineInfo->usPtpType;
    KVT_Printf(
        "\r\n PM_LibRegSubLineInfo-->PM_LibCfgAddSubInfoNode fail, ulRet = 0x%x, usPtpType = %u",
        ret, type);
    return FAIL(ret, ret, type);
  }
  return PM_OK;
}

u32 PM_LibCfgIsInputValid(const PmSubLineInfo *pstSubLineInfo) {
  if (pstSubLineInfo == nullptr) {
    KVT_Printf("\r\n PM_LibCfgIsInputValid fail, input pointer is null");
    return PM_ERR_PARA;
  }
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const PmSubLineInfo &info = *pstSubLineInfo;
  const u32 num = data->usPtpTypeNum;
  PmSubInfoNode *node = next_node(nullptr);
  for (u32 i = 0; node != nullptr && i < num; ++i, node = next_node(node)) {
    if (i % watchdog_stride == 0) {
      ZEL_ClearWatchDog();
    }
    const PmSubLineInfo &registered = node->stInfo;
    if (registered.usPtpType == info.usPtpType) {
      KVT_Printf("PM_LibCfgIsInputValid fail, PTP type %u has registered", info.usPtpType);
      return FAIL(PM_ERR_TYPE_REGISTERED, info.usPtpType);
    }
    if (pid_conflicts(info, registered)) {
      KVT_Printf("PM_LibCfgIsInputValid fail, PID %u has registered conflict PID of PTP type is %u",
                 info.ulPID, registered.usPtpType);
      return FAIL(PM_ERR_PID_CONFLICT, registered.usPtpType, info.usPtpType);
    }
  }
  return PM_OK;
}

u32 PM_LibCfgAddSubInfoNode(const PmSubLineInfo *pstSubLineInfo) {
  if (pstSubLineInfo == nullptr || pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  constexpr u32 size = sizeof(PmSubInfoNode);
  auto *node = static_cast<PmSubInfoNode *>(ALLOCATE(ZEL_kvtDynamicMemPtGet(), size));
  if (node == nullptr) {
    KVT_Printf("\r\n PM_LibCfgAddSubInfoNode fail, malloc memory fail");
    return FAIL(PM_ERR_MALLOC, size);
  }
  node->stInfo = *pstSubLineInfo;
  node->stInfo.stCallBack.pfnGetReplaceType = nullptr;
  return PM_LibCfgAddSubInfoNodeToCB(node);
}

u32 PM_LibCfgAddSubInfoNodeToCB(PmSubInfoNode *pstNode) {
  if (pstNode == nullptr) {
    return PM_OK;
  }
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  // The head alone tells whether the list is empty: its release leaves the tail and the count as
  // they were.
  if (data->pstSubInfoHead != nullptr) {
    data->pstSubInfoTail->pstNext = pstNode;
  } else {
    data->pstSubInfoHead = pstNode;
  }
  data->pstSubInfoTail = pstNode;
  ++data->usPtpTypeNum;
  return PM_OK;
}

u32 PM_LibLibCfgGetNextSubInfoNode(PmSubInfoNode *pstCurrent, PmSubInfoNode **ppstNext) {
  if (ppstNext == nullptr) {
    return PM_ERR_NO_MORE;
  }
  if (pstCurrent != nullptr) {
    *ppstNext = pstCurrent->pstNext;
  } else {
    const PmGlobalData *data = pm::current_data();
    if (data == nullptr) {
      return FAIL(PM_ERR_PARA);
    }
    *ppstNext = data->pstSubInfoHead;
  }
  return *ppstNext != nullptr ? PM_OK : PM_ERR_NO_MORE;
}

u32 PM_LibCfgGetPtpTypeNum(u16 *pusPtpTypeNum) {
  if (pusPtpTypeNum == nullptr) {
    return PM_OK;
  }
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  *pusPtpTypeNum = data->usPtpTypeNum;
  return PM_OK;
}

void PM_LibCfgVarInit(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  data->pstSubInfoHead = nullptr;
  data->pstSubInfoTail = nullptr;
  data->usPtpTypeNum = 0;
}

u32 PM_LibCfgRegSubLinePid(void) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 num = data->usPtpTypeNum;
  PmSubInfoNode *node = next_node(nullptr);
  for (u32 i = 0; node != nullptr && i < num; ++i, node = next_node(node)) {
    const PmSubLineInfo &info = node->stInfo;
    if (info.ulPID == PM_PID_NONE) {
      continue;
    }
    const u32 ret = KVT_RegisterPIDInfo(info.ulPID, info.pfnInitFunc, info.pfnMainProc);
    if (ret != PM_OK) {
      KVT_Printf(
          "\r\n PM_LibCfgRegSubLinePid-->KVT_RegisterPIDInfo fail ulRet = %u, PID = %u, "
          "pfnInitFunc = %p, pfnMainProc = %p",
          ret, info.ulPID, pm::address(info.pfnInitFunc), pm::address(info.pfnMainProc));
      RECORD(ret, info.ulPID);
    }
  }
  return PM_OK;
}

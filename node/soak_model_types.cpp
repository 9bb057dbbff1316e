// Model: sub-lines, port types and their numbering, lookups, co-classes.
#include <algorithm>

#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = core_record;

std::size_t size_of_callbacks() {
  return sizeof(u16) + sizeof(PmSubCallBack) + sizeof(u32);
}

}  // namespace

u32 Model::types_there(const Board &board) {
  return board.counted && board.has_types
             ? std::min<u32>(board.type_count, static_cast<u32>(board.types.size()))
             : 0;
}

u32 Model::callbacks_there(const Board &board) {
  return board.counted && board.has_callbacks
             ? std::min<u32>(board.type_count, static_cast<u32>(board.callbacks.size()))
             : 0;
}

// -- Registration

u32 Model::PM_LibCfgIsInputValid(const PmSubLineInfo *pstSubLineInfo) {
  if (pstSubLineInfo == nullptr) {
    KVT_Printf("\r\n PM_LibCfgIsInputValid fail, input pointer is null");
    return 0x689380;
  }
  const Board &my = board();
  for (u32 i = 0; i < my.sub_line_count && i < my.sub_lines.size(); ++i) {
    if (i % 128 == 0) {
      ZEL_ClearWatchDog();
    }
    const PmSubLineInfo &known = my.sub_lines[i].info;
    if (known.usPtpType == pstSubLineInfo->usPtpType) {
      KVT_Printf("PM_LibCfgIsInputValid fail, PTP type %u has registered", known.usPtpType);
      return record(0x6908B8, {known.usPtpType});
    }
    if (pstSubLineInfo->ulPID != 0xFFFFFFFF && pstSubLineInfo->ulPID == known.ulPID) {
      KVT_Printf("PM_LibCfgIsInputValid fail, PID %u has registered conflict PID of PTP type is %u",
                 known.ulPID, known.usPtpType);
      return record(0x6908BE, {known.usPtpType, pstSubLineInfo->usPtpType});
    }
  }
  return 0;
}

u32 Model::PM_LibCfgAddSubInfoNode(const PmSubLineInfo *pstSubLineInfo) {
  const std::size_t size = sizeof(PmSubLineInfo) + sizeof(void *);
  void *block = take_block(ZEL_kvtDynamicMemPtGet, size);
  if (block == nullptr) {
    KVT_Printf("\r\n PM_LibCfgAddSubInfoNode fail, malloc memory fail");
    return record(0x689385, {static_cast<u32>(size)});
  }
  auto *node = static_cast<PmSubInfoNode *>(block);
  node->stInfo = *pstSubLineInfo;
  node->stInfo.stCallBack.pfnGetReplaceType = nullptr;
  return PM_LibCfgAddSubInfoNodeToCB(node);
}

u32 Model::PM_LibCfgAddSubInfoNodeToCB(PmSubInfoNode *pstNode) {
  Board &my = board();
  my.sub_lines.push_back({pstNode->stInfo, pstNode});
  ++my.sub_line_count;
  return 0;
}

u32 Model::PM_LibLibCfgGetNextSubInfoNode(PmSubInfoNode *pstCurrent, PmSubInfoNode **ppstNext) {
  const auto &all = board().sub_lines;
  std::size_t at = 0;
  while (pstCurrent != nullptr && at < all.size() && all[at++].block != pstCurrent) {
  }
  *ppstNext = at < all.size() ? static_cast<PmSubInfoNode *>(all[at].block) : nullptr;
  return *ppstNext == nullptr ? 0x689384 : 0;
}

u32 Model::PM_LibRegSubLineInfo(const PmSubLineInfo *pstSubLineInfo) {
  u32 ret = PM_LibCfgIsInputValid(pstSubLineInfo);
  if (ret != 0) {
    KVT_Printf("\r\n PM_LibRegSubLineInfo-->PM_LibCfgIsInputValid fail, ulRet = 0x%x", ret);
    return ret;
  }
  ret = PM_LibCfgAddSubInfoNode(pstSubLineInfo);
  if (ret != 0) {
    KVT_Printf(
        "\r\n PM_LibRegSubLineInfo-->PM_LibCfgAddSubInfoNode fail, ulRet = 0x%x, usPtpType = %u",
        ret, pstSubLineInfo->usPtpType);
    record(ret, {ret, pstSubLineInfo->usPtpType});
  }
  return ret;
}

u32 Model::PM_LibCfgGetPtpTypeNum(u16 *pusPtpTypeNum) {
  *pusPtpTypeNum = board().sub_line_count;
  return 0;
}

void Model::PM_LibCfgVarInit() {
  board().sub_lines.clear();
  board().sub_line_count = 0;
}

u32 Model::PM_LibCfgRegSubLinePid() {
  const Board &my = board();
  for (u32 i = 0; i < my.sub_line_count && i < my.sub_lines.size(); ++i) {
    const PmSubLineInfo &info = my.sub_lines[i].info;
    if (info.ulPID == 0xFFFFFFFF) {
      continue;
    }
    const u32 ret = KVT_RegisterPIDInfo(info.ulPID, info.pfnInitFunc, info.pfnMainProc);
    if (ret != 0) {
      KVT_Printf(
          "\r\n PM_LibCfgRegSubLinePid-->KVT_RegisterPIDInfo fail ulRet = %u, PID = %u, "
          "pfnInitFunc = %s, pfnMainProc = %s",
          ret, info.ulPID, as_pointer(info.pfnInitFunc).c_str(),
          as_pointer(info.pfnMainProc).c_str());
      record(0, {ret, info.ulPID});
    }
  }
  return 0;
}

// -- Control block and tables

u32 Model::PM_LibMallocForSubAttrCB() {
  Board &my = board();
  if (my.counted) {
    return 0;
  }
  const u32 size = 2 * sizeof(u16) + sizeof(void *);
  if (take_block(ZEL_kvtBlockMemPtGet, size) == nullptr) {
    KVT_Printf("\r\n PM_LibMallocForSubAttrCB malloc memory fail, pointer = %d",
               static_cast<int>(size));
    return record(0x689385, {size});
  }
  my.counted = true;
  return 0;
}

u32 Model::PM_LibMallocSubAttrGlobalVar() {
  Board &my = board();
  if (!my.counted) {
    return 0x689389;
  }
  if (!my.has_types) {
    const u32 size = my.type_count * 10U;
    if (size == 0) {
      return 0x689389;
    }
    if (take_block(ZEL_kvtBlockMemPtGet, size) == nullptr) {
      KVT_Printf("\r\n PM_MallocSubAttrInit malloc memory fail, ulSize = %d",
                 static_cast<int>(size));
      return record(0x689385, {size});
    }
    my.has_types = true;
    my.types.assign(my.type_count, PmSubInnerSubInfo{});
  }
  return record.code(PM_LibMallocSubCallBack());
}

u32 Model::PM_LibMallocSubCallBack() {
  Board &my = board();
  if (my.has_callbacks) {
    return 0;
  }
  const auto size = static_cast<u32>(my.type_count * size_of_callbacks());
  if (size == 0 || take_block(ZEL_kvtStaticMemPtGet, size) == nullptr) {
    KVT_Printf(
        "\r\n PM_LibMallocSubCallBack fail, malloc static memory fail, pstPtpDynPubData = %d",
        static_cast<int>(size));
    return record(0x689385, {size});
  }
  my.has_callbacks = true;
  my.callbacks.assign(my.type_count, Board::Callbacks{});
  return 0;
}

u32 Model::PM_LibSubAttrInit() {
  Board &my = board();
  const u32 count = callbacks_there(my);
  for (u32 i = 0; i < count && i < my.sub_lines.size(); ++i) {
    if (i % 512 == 0) {
      ZEL_ClearWatchDog();
    }
    my.callbacks[i] = {my.sub_lines[i].info.usPtpType, my.sub_lines[i].info.stCallBack};
  }
  return 0;
}

u32 Model::PM_LibPtpTypeNumInit() {
  if (board().counted) {
    board().type_count = board().sub_line_count;
  }
  return 0;
}

u32 Model::PM_LibPtpNumSpecInit() {
  if (PM_LibMallocForSubAttrCB() != 0) {
    return record(0x68937F, {0x689380});
  }
  board().type_count = type_numbers.usPtpTypeNum;
  board().max_type = type_numbers.usMaxPtpTypeValue;
  return 0;
}

u32 Model::PM_LibSubInnerSubInfoInit() {
  return PM_LibSubAttrInit();
}

u16 Model::PM_LibGetPtpMaxTypeValue() {
  return board().counted ? board().max_type : u16{0};
}

u32 Model::PM_LibCfgReleaseMem() {
  Board &my = board();
  const u32 passes = my.counted ? my.type_count : 0;
  for (u32 i = 0; i < passes; ++i) {
    if (i % 512 == 0) {
      ZEL_ClearWatchDog();
    }
    if (my.sub_lines.empty()) {
      continue;
    }
    ZEL_MemFree(PM_COMP_TYPE, my.sub_lines.front().block);
    my.sub_lines.erase(my.sub_lines.begin());
    if (my.sub_lines.empty()) {
      break;
    }
  }
  return 0;
}

// -- Lookups

u32 Model::PM_LibGetSubInfoFromSuffix(u16 usSuffix, PmSubInnerSubInfo **ppstSubInfo) {
  Board &my = board();
  if (usSuffix >= types_there(my)) {
    PM_LibDotPrintf(0, 2, "PM_LibGetSubInfoFromSuffix fail, input suffix is invalid, usSuffix = %u",
                    usSuffix);
    return record(0x6909B4, {my.counted ? my.type_count : 0U});
  }
  *ppstSubInfo = &my.types[usSuffix];
  return 0;
}

u32 Model::PM_LibIsPtpTypeValid(u16 usPtpType) {
  PM_LibDotPrintf(0, 0, "Enter PM_LibIsPtpTypeValid, ucPortType = %u", usPtpType);
  for (u32 suffix = 0; suffix < types_there(board()); ++suffix) {
    if (suffix % 512 == 0) {
      ZEL_ClearWatchDog();
    }
    if (board().types[suffix].usPtpType == usPtpType) {
      return 0;
    }
  }
  return 0x6908C8;
}

u32 Model::PM_LibGetLogicPtpType(u16 usPtpType, u16 *pusSuffix) {
  const Board &my = board();
  if (pusSuffix == nullptr || usPtpType > PM_LibGetPtpMaxTypeValue()) {
    return record(0x689383, {usPtpType});
  }
  for (u32 suffix = 0; suffix < types_there(my); ++suffix) {
    if (my.types[suffix].usPtpType == usPtpType) {
      *pusSuffix = static_cast<u16>(suffix);
      return 0;
    }
    if ((suffix + 1) % 512 == 511) {
      ZEL_ClearWatchDog();
    }
  }
  PM_LibDotPrintf(0, 0, "not find the ptp type, usPtpType = %u", usPtpType);
  return record(0x6908C8, {usPtpType});
}

// Entry with the same position: null where the callback table is shorter. The model's own record
// has to do for the answer, as only its content is looked at.
u32 Model::PM_LibGetSubInfo(u16 usPtpType, PmSubInnerSubInfo **ppstSubInfo,
                            PmSubCallBackEntry **ppstCallBack) {
  static PmSubCallBackEntry entry;
  Board &my = board();
  PM_LibDotPrintf(0, 0, "Enter PM_LibGetSubInfo, usPtpType = %u", usPtpType);
  for (u32 i = 0; i < types_there(my); ++i) {
    if (i % 512 == 0) {
      ZEL_ClearWatchDog();
    }
    if (my.types[i].usPtpType == usPtpType) {
      *ppstSubInfo = &my.types[i];
      *ppstCallBack = nullptr;
      if (i < callbacks_there(my)) {
        entry = {my.callbacks[i].type, my.callbacks[i].slots, 0};
        *ppstCallBack = &entry;
      }
      return 0;
    }
  }
  PM_LibDotPrintf(0, 0, "not find the ptp type, usPtpType = %u", usPtpType);
  return record(0x6908C8, {usPtpType});
}

u32 Model::PM_LibGetSubFuncFromPtpType(u16 usPtpType, PmSubCallBackEntry **ppstCallBack) {
  static PmSubCallBackEntry entry;
  const Board &my = board();
  PM_LibDotPrintf(0, 0, "Enter PM_LibGetSubFuncFromPtpType, usPtpType = %u", usPtpType);
  for (u32 i = 0; i < callbacks_there(my); ++i) {
    if (i % 512 == 0) {
      ZEL_ClearWatchDog();
    }
    if (my.callbacks[i].type == usPtpType) {
      entry = {my.callbacks[i].type, my.callbacks[i].slots, 0};
      *ppstCallBack = &entry;
      return 0;
    }
  }
  PM_LibDotPrintf(0, 0, "not find the ptp type, usPtpType = %u", usPtpType);
  return record(0x6908C8, {usPtpType});
}

u32 Model::PM_LibGetSubFunc(u16 usPtpType, PmSubCallBack *pstCallBack) {
  PM_LibDotPrintf(0, 0, "Enter PM_LibGetSubFunc, usPtpType = %u", usPtpType);
  PmSubCallBackEntry *entry = nullptr;
  const u32 ret = PM_LibGetSubFuncFromPtpType(usPtpType, &entry);
  if (ret != 0 || entry == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubInfo fail, ulRet = 0x%x, usPtpType = %u", ret, usPtpType);
    return record(ret, {ret, usPtpType});
  }
  const PmSubCallBack slots = entry->stCallBack;
  *pstCallBack = slots;
  return 0;
}

u32 Model::PM_LibGetSubFuncFromPTP(u16 usPtpID, PmSubCallBack *pstCallBack) {
  u16 type = 0;
  u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetTypeFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret, usPtpID});
  }
  ret = PM_LibGetSubFunc(type, pstCallBack);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubFunc fail, ulRet = 0x%x, usPtpID = %u, usPtpType = %u", ret,
                    usPtpID, type);
    return record(ret, {ret, type, usPtpID});
  }
  return 0;
}

// -- Co-classes

u32 Model::PM_LibGetPtpCoClass(u16 usPtpType, u16 *pusCoClass) {
  if (pusCoClass == nullptr) {
    return record(0x689380, {0x689380});
  }
  PmSubInnerSubInfo *info = nullptr;
  PmSubCallBackEntry *entry = nullptr;
  const u32 ret = PM_LibGetSubInfo(usPtpType, &info, &entry);
  if (ret != 0 || info == nullptr) {
    PM_LibDotPrintf(0, 2, "PM_GetSubInfo fail, ulRet = 0x%x, usPtpType = %u, ", ret, usPtpType);
    return record(ret, {ret, usPtpType});
  }
  *pusCoClass = info->usCoClass;
  return 0;
}

u32 Model::PM_LibGetCoClassFromPtpID(u16 usPtpID, u16 *pusCoClass) {
  if (pusCoClass == nullptr) {
    return record(0x689383, {usPtpID});
  }
  u16 type = 0;
  u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_GetTypeFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  ret = PM_LibGetPtpCoClass(type, pusCoClass);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_GetPtpCoClass fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
  }
  return ret;
}

}  // namespace soak

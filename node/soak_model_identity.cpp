// Model: identity, virtual systems, reverse lookup.
#include <cstring>

#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = core_record;

void trace_attr(u32 ret, u16 ptp) {
  Model::PM_LibDotPrintf(0, 0, "PM_LibGetDynPubDataAttr fail, ulRet = 0x%x, usPtpID = %u", ret,
                         ptp);
}

}  // namespace

// -- Classes and places

u32 Model::PM_LibRegPtpClassFunc(u8 ucPtpClass, const PmPtpClassFunc *pstClassFunc) {
  if (pstClassFunc == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibRegPtpClassFunc para  error,null pointer pstClassFunc");
    return record(0x689380, {0x689380});
  }
  if (ucPtpClass > 1) {
    PM_LibDotPrintf(0, 0, "PM_LibRegPtpClassFunc ucPtpClass error, ucPtpClass = %d", ucPtpClass);
    return record(0x689383, {ucPtpClass});
  }
  board().classes[ucPtpClass] = *pstClassFunc;
  return 0;
}

u32 Model::PM_LibGetPhyIndexFromPTP(u16 usPtpID, u16 *pusBIndex, u8 *pucPort) {
  if (pusBIndex == nullptr || pucPort == nullptr) {
    PM_LibDotPrintf(0, 0,
                    "PM_LibGetPhyIndexFromPTP fail, usPtpID = %u, pusBIndex = %u, pucPort = %u",
                    usPtpID, shown(pusBIndex), shown(pucPort));
    return record(0x689380, {usPtpID, is_null(pusBIndex)});
  }
  u8 ptp_class = 0;
  u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 2, &ptp_class);
  if (ret != 0) {
    trace_attr(ret, usPtpID);
    return ret;
  }
  if (ptp_class != 0) {
    ret = PM_LibGetPhyIndexFromPTPEnc(ptp_class, usPtpID, pusBIndex, pucPort);
    if (ret != 0) {
      PM_LibDotPrintf(0, 0, "PM_LibGetPhyIndexFromPTPEnc fail, ulRet = 0x%x, usPtpID = %u", ret,
                      usPtpID);
      record(ret, {ret, usPtpID});
    }
    return ret;
  }
  u16 index1 = 0;
  u16 index2 = 0;
  PM_LibGetDynPubDataAttr(usPtpID, 0, &index1);
  PM_LibGetDynPubDataAttr(usPtpID, 1, &index2);
  *pusBIndex = index1;
  *pucPort = static_cast<u8>(index2 % 256);
  return 0;
}

u32 Model::PM_LibGetPhyIndexFromPTPEnc(u8 ucPtpClass, u16 usPtpID, u16 *pusBIndex, u8 *pucPort) {
  if (ucPtpClass > 1) {
    PM_LibDotPrintf(0, 0, "ucPtpClass ERR,ucPtpClass = 0x%x", ucPtpClass);
    return record(0x689383, {ucPtpClass, usPtpID});
  }
  const PmGetPhyIndexFunc function = board().classes[ucPtpClass].pfnGetPhyIndex;
  if (function == nullptr) {
    PM_LibDotPrintf(0, 0, "GET PhyIndex func pointer is NULL_PTR, ucPtpClass = 0x%x", ucPtpClass);
    return record(0x689380, {usPtpID});
  }
  if (pusBIndex == nullptr || pucPort == nullptr) {
    return record(0x689380, {usPtpID});
  }
  u16 index = 0;
  u8 port = 0;
  const u32 ret = function(usPtpID, &index, &port);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "GET PypIndex func return Err,ulRet = %d, ucPtpClass = 0x%x, ptpID = %d",
                    static_cast<int>(ret), ucPtpClass, usPtpID);
    return record(ret, {ret, ucPtpClass, usPtpID});
  }
  *pusBIndex = index;
  *pucPort = port;
  return 0;
}

u32 Model::PM_LibGetPhyIndexFromPTPEx(u16 usPtpID, u8 *pucPtpClass, u16 *pusIndex1,
                                      u16 *pusIndex2) {
  if (pucPtpClass == nullptr || pusIndex1 == nullptr || pusIndex2 == nullptr) {
    PM_LibDotPrintf(0, 0,
                    "PM_LibGetPhyIndexFromPTP fail, usPtpID = %u, pucPtpClass = %u, pusIndex1 = "
                    "%u, pusIndex2 = %u",
                    usPtpID, shown(pucPtpClass), shown(pusIndex1), shown(pusIndex2));
    return record(0x689380, {usPtpID, is_null(pucPtpClass), is_null(pusIndex1)});
  }
  u8 ptp_class = 0;
  u16 index1 = 0;
  u16 index2 = 0;
  // A record that cannot be read cannot be read from the first field on.
  const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 2, &ptp_class);
  if (ret != 0) {
    return ret;
  }
  PM_LibGetDynPubDataAttr(usPtpID, 0, &index1);
  PM_LibGetDynPubDataAttr(usPtpID, 1, &index2);
  *pucPtpClass = ptp_class;
  *pusIndex1 = index1;
  *pusIndex2 = index2;
  return 0;
}

u32 Model::PM_LibGetFSPFromPtp(u16 usPtpID, u16 *pusFrameID, u8 *pucSlotID, u8 *pucPortID) {
  if (pusFrameID == nullptr || pucSlotID == nullptr || pucPortID == nullptr) {
    return record(0x689380, {usPtpID, is_null(pusFrameID)});
  }
  u16 index = 0;
  u8 port = 0;
  u32 ret = PM_LibGetPhyIndexFromPTP(usPtpID, &index, &port);
  if (ret != 0) {
    return record(ret, {ret});
  }
  u16 frame = 0;
  u8 slot = 0;
  ret = DEV_LibGetFrameIDSlotIDFromBIndex(index, &frame, &slot);
  if (ret != 0) {
    return record(ret, {ret});
  }
  *pusFrameID = frame;
  *pucSlotID = slot;
  *pucPortID = port;
  return 0;
}

u32 Model::PM_LibGetTypeFromPTP(u16 usPtpID, u16 *pusPtpType) {
  if (pusPtpType == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetTypeFromPTP fail, input pointer is null, usPtpID = %u",
                    usPtpID);
    return record(0x689380, {usPtpID});
  }
  u16 type = 0;
  const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 4, &type);
  if (ret == 0) {
    *pusPtpType = type;
  }
  return ret;
}

u32 Model::PM_LibIfPtpExist(u16 usPtpID) {
  u8 exist = 0;
  return PM_LibGetDynPubDataAttr(usPtpID, 3, &exist);
}

u32 Model::PM_LibIfPhyPtpExist(u16 usPtpID) {
  u8 exist = 0;
  u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 3, &exist);
  if (ret != 0) {
    trace_attr(ret, usPtpID);
    return ret;
  }
  u8 ptp_class = 0;
  ret = PM_LibGetDynPubDataAttr(usPtpID, 2, &ptp_class);
  if (ret == 0 && ptp_class != 0) {
    PM_LibDotPrintf(0, 0, "ucPtpClass is not  PM_PTP_CLASS_PORT, ucPtpClass = 0x%x", ptp_class);
    return record(0x6908BB, {ptp_class, usPtpID});
  }
  return ret;
}

// -- Virtual systems and visibility

u32 Model::PM_LibGetVsNumByVsMask(u32 ulVsMask) {
  u32 count = 0;
  for (u32 vs = 0; vs <= 8; ++vs) {
    count += (ulVsMask >> vs) & 1;
  }
  return count;
}

u32 Model::PM_LibGetVsMaskFromPtp(u16 usPtpID, u32 *pulVsMask) {
  if (pulVsMask == nullptr) {
    return record(0x689380, {usPtpID});
  }
  if (PM_LibIfPtpExist(usPtpID) != 0) {
    return 0x6908AD;
  }
  return PM_LibGetDynPubDataAttr(usPtpID, 8, pulVsMask);
}

u32 Model::PM_LibIfPtpInVs(u16 usPtpID, u32 ulVsID) {
  u32 mask = 0;
  if (PM_LibGetVsMaskFromPtp(usPtpID, &mask) != 0) {
    return 0x6908AD;
  }
  return ((mask >> (ulVsID % 32)) & 1) == 1 ? 0 : 0x6909C7;
}

u32 Model::PM_LibIfPtpOnlyInOneVs(u16 usPtpID, u32 ulVsID) {
  if (ulVsID > 8) {
    return 0x689383;
  }
  u32 mask = 0;
  const u32 ret = PM_LibGetVsMaskFromPtp(usPtpID, &mask);
  if (ret != 0) {
    return record(ret, {ret, usPtpID});
  }
  return mask == 1U << ulVsID ? 0 : 0x68937E;
}

u32 Model::PM_LibIfPortBelongMultiVs(u16 usPtpID) {
  u32 mask = 0;
  const u32 ret = PM_LibGetVsMaskFromPtp(usPtpID, &mask);
  if (ret != 0) {
    return record(ret, {ret, usPtpID});
  }
  return PM_LibGetVsNumByVsMask(mask) > 1 ? 0 : 0x68937E;
}

u32 Model::PM_LibGetPtpMngtVsID(u16 usPtpID, u16 *pusVsID) {
  if (pusVsID == nullptr) {
    return record(0x689380, {usPtpID});
  }
  u32 mask = 0;
  const u32 ret = PM_LibGetVsMaskFromPtp(usPtpID, &mask);
  if (ret != 0) {
    return record(ret, {ret, usPtpID});
  }
  if (PM_LibGetVsNumByVsMask(mask) > 1) {
    *pusVsID = 0;
    return 0;
  }
  for (u16 vs = 0; vs <= 8; ++vs) {
    if (((mask >> vs) & 1) == 1) {
      *pusVsID = vs;
      return 0;
    }
  }
  return record(1, {usPtpID});
}

u32 Model::PM_LibIsPtpVisible(u16 usPtpID) {
  u8 invisible = 0;
  const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 5, &invisible);
  if (ret != 0) {
    trace_attr(ret, usPtpID);
    return ret;
  }
  if (invisible == 1) {
    PM_LibDotPrintf(0, 0, "PTP is invisible");
    return 0x6908D6;
  }
  return 0;
}

u32 Model::PM_LibGetVisiblePtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return record(0x689380, {0x689380});
  }
  u16 ptp = 0;
  u32 ret = PM_LibGetPtpFromFSP(usFrameID, ucSlotID, ucPortID, &ptp);
  if (ret == 0) {
    ret = PM_LibIsPtpVisible(ptp);
  }
  if (ret == 0) {
    *pusPtpID = ptp;
  }
  return ret;
}

u32 Model::PM_LibGetPtpPhyStateFromPTP(u16 usPtpID, u8 *pucPhyState) {
  if (pucPhyState == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetPtpPhyStateFromPTP fail, input pointer is null, usPtpID = %u",
                    usPtpID);
    return record(0x689380, {usPtpID});
  }
  u32 ret = PM_LibIfPhyPtpExist(usPtpID);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret, usPtpID});
  }
  ret = PM_LibIsPtpVisible(usPtpID);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibIsPtpVisible fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  u16 index = 0;
  u8 port = 0;
  PM_LibGetPhyIndexFromPTP(usPtpID, &index, &port);
  u16 frame = 0;
  u8 slot = 0;
  ret = DEV_LibGetFrameIDSlotIDFromBIndex(index, &frame, &slot);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "DEV_LibGetFrameIDSlotIDFromBIndex fail, ulRet = 0x%x, usBIndex = %u",
                    ret, index);
    return ret;
  }
  u8 hard[2];
  if (PTOPO_LibGetHardPhyIDFromPortId(frame, slot, port, &hard[0], &hard[1]) == 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetPtpPhyStateFromPTP, port connects with LSW");
    *pucPhyState = 1;
    return 0;
  }
  PM_LibDotPrintf(0, 0, "PM_LibGetPtpPhyStateFromPTP, port does not connect with LSW");
  *pucPhyState = PTOPO_ESWITCH_IsEswitchPort(frame, slot, port) != 0 ? 1 : 0;
  return 0;
}

// -- Reverse lookup

u32 Model::PM_LibGetPtpFromPhyIndexOnSrvByEnum(u8 ucPtpClass, u16 usIndex1, u16 usIndex2,
                                               u16 *pusPtpID) {
  const Board &my = board();
  if (!my.has_store || pusPtpID == nullptr) {
    return record(0x689380, {ucPtpClass, usIndex1, usIndex2});
  }
  for (u32 ptp = 0; ptp <= PM_LibGetMaxPtpID() && ptp < my.dynamics.size(); ++ptp) {
    const PtpDynPubData &data = my.dynamics[ptp];
    if (data.usIndex1 == usIndex1 && data.usIndex2 == usIndex2 && data.ucPtpClass == ucPtpClass &&
        data.ucExist == 1) {
      *pusPtpID = static_cast<u16>(ptp);
      return 0;
    }
  }
  return 0x6908AD;
}

u32 Model::PM_LibGetPtpFromPhyIndexOnSrv(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID) {
  Board &my = board();
  if (pusPtpID == nullptr) {
    return record(0x689380, {ucPtpClass, usIndex1, usIndex2});
  }
  if (my.cache_table == 0) {
    my.cache_table = ZEL_HASH_Create_Table(368, 0);
  }
  if (my.cache_table == 0) {
    return record(0x689380, {usIndex1});
  }
  const Board::Place place{ucPtpClass, usIndex1, usIndex2};
  host_fails(host::Fn::ZEL_HASH_Find_Node);
  const auto known = my.cache.find(place);
  if (known != my.cache.end()) {
    const u16 ptp = known->second.ptp;
    u8 ptp_class = 0;
    u16 index1 = 0;
    u16 index2 = 0;
    const bool read =
        (PM_LibGetDynPubDataAttr(ptp, 2, &ptp_class) | PM_LibGetDynPubDataAttr(ptp, 0, &index1) |
         PM_LibGetDynPubDataAttr(ptp, 1, &index2)) == 0;
    if (read && Board::Place{ptp_class, index1, index2} == place) {
      *pusPtpID = ptp;
      return 0;
    }
    host_fails(host::Fn::ZEL_HASH_Delete_Node);
    ZEL_Free(known->second.block);
    my.cache.erase(known);
  }
  const u32 ret = PM_LibGetPtpFromPhyIndexOnSrvByEnum(ucPtpClass, usIndex1, usIndex2, pusPtpID);
  if (ret != 0) {
    return ret;
  }
  void *block = take_block(ZEL_kvtBlockMemPtGet, 3 * sizeof(void *) + 7);
  if (block == nullptr) {
    return record(0x689380, {0x689380});
  }
  host_fails(host::Fn::ZEL_HASH_Add_Node);
  my.cache[place] = {*pusPtpID, block};
  return 0;
}

u32 Model::Pm_Lib_CmpFromPhyInfo(const void *pKey, const void *pNode) {
  if (pKey == nullptr || pNode == nullptr) {
    return record(1, {1});
  }
  return std::memcmp(pKey, &static_cast<const PmPhyIndexNode *>(pNode)->stKey, 5) == 0 ? 0 : 1;
}

u32 Model::PM_LibGetPtpFromPhyIndex(u16 usBIndex, u8 ucPort, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return record(0x689380, {usBIndex, ucPort});
  }
  return PM_LibGetPtpFromPhyIndexOnSrv(0, usBIndex, ucPort, pusPtpID);
}

u32 Model::PM_LibGetPtpFromPhyIndexEx(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return record(0x689380, {ucPtpClass, usIndex1, usIndex2});
  }
  if (ucPtpClass > 1) {
    return record(0x689383, {0x689383});
  }
  return PM_LibGetPtpFromPhyIndexOnSrv(ucPtpClass, usIndex1, usIndex2, pusPtpID);
}

u32 Model::PM_LibGetPtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return record(0x689380, {0x689380});
  }
  u16 index = 0;
  u16 ptp = 0;
  u32 ret = DEV_LibGetBIndexFromFrameIDSlotID(usFrameID, ucSlotID, &index);
  if (ret == 0) {
    ret = PM_LibGetPtpFromPhyIndex(index, ucPortID, &ptp);
  }
  if (ret == 0) {
    *pusPtpID = ptp;
  }
  return ret;
}

}  // namespace soak

// Model: attributes through sub-line callbacks.
#include <cstring>

#include "node/soak_model.hpp"

namespace soak {

namespace {

constexpr auto &record = core_record;

// What most accessors do before they read: the null check and the existence check.
bool refused(const char *null_text, bool null_given, u16 ptp, u32 &ret, u32 traced = 1) {
  if (null_given) {
    Model::PM_LibDotPrintf(0, traced, "%s, usPtpID = %u", null_text, ptp);
    ret = record(0x689380, {ptp});
    return true;
  }
  ret = Model::PM_LibIfPtpExist(ptp);
  if (ret != 0) {
    Model::PM_LibDotPrintf(0, traced, "PM_LibIfPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret,
                           ptp);
  }
  return ret != 0;
}

// The whole record of a PTP; a failure is traced on switch 1 with that text.
u32 whole(u16 ptp, PmSubAttr &attr, const char *text) {
  std::memset(&attr, 0, sizeof attr);
  const u32 ret = Model::PM_LibGetSubAttrFromPTP(ptp, &attr);
  if (ret != 0) {
    Model::PM_LibDotPrintf(0, 1, "%s fail, ulRet = 0x%x", text, ret);
  }
  return ret;
}

}  // namespace

// -- Callers of the callbacks

u32 Model::PM_LibGetSubAttrFromPTP(u16 usPtpID, PmSubAttr *pstAttr) {
  PmSubCallBack slots{};
  u32 ret = PM_LibGetSubFuncFromPTP(usPtpID, &slots);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_GetSubFuncFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret});
  }
  if (slots.pfnGetAttr == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_GetSubAttrFromPTP fail, pfnGetAttr is null");
    return 0x6908BB;
  }
  ret = slots.pfnGetAttr(usPtpID, pstAttr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "pfnGetAttr fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    record(0, {ret, usPtpID});
  }
  return 0;
}

u32 Model::PM_LibGetSubAttrFromPTPNEW(u16 usPtpID, u32 ulSelector, PmSubAttr *pstAttr) {
  PmSubCallBack slots{};
  u32 ret = PM_LibGetSubFuncFromPTP(usPtpID, &slots);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubFuncFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret, usPtpID});
  }
  if (slots.pfnGetAttrPriv == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubAttrFromPTPNEW fail, pfnGetAttrPriv is null");
    return record(0x6908BB, {usPtpID, ulSelector});
  }
  ret = slots.pfnGetAttrPriv(usPtpID, ulSelector, pstAttr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "pfnGetAttrPriv fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    record(0, {ret, usPtpID});
  }
  return 0;
}

u32 Model::PM_LibGetSubActiveSpeedFromPTP(u16 usPtpID, u32 *pulTransmit, u32 *pulReceive) {
  PmSubCallBack slots{};
  u32 ret = PM_LibGetSubFuncFromPTP(usPtpID, &slots);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubFuncFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret, usPtpID});
  }
  if (slots.pfnGetActiveSpeed == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubActiveSpeedFromPTP fail, pfnGetActiveSpeed is null");
    return record(0x6908BB, {usPtpID});
  }
  ret = slots.pfnGetActiveSpeed(usPtpID, pulTransmit, pulReceive);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "pfnGetActiveSpeed fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    record(0, {ret, usPtpID});
  }
  return ret;
}

u32 Model::PM_LibGetSubStatsFromPTP(u16 usPtpID, PmSubStats *pstStats) {
  u16 type = 0;
  u32 ret = PM_LibGetTypeFromPTP(usPtpID, &type);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetTypeFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret, usPtpID});
  }
  PmSubCallBack slots{};
  ret = PM_LibGetSubFunc(type, &slots);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubFunc fail, ulRet = 0x%x, usPtpID = %u, usPtpType = %u", ret,
                    usPtpID, type);
    return record(ret, {ret, usPtpID});
  }
  if (slots.pfnGetStats == nullptr) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubStatsFromPTP fail, pfnGetStats is null");
    return record(0x6908BB, {usPtpID});
  }
  ret = slots.pfnGetStats(usPtpID, pstStats);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "pfnGetStats fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    record(0, {ret, usPtpID});
  }
  return ret;
}

// -- One attribute at a time

u32 Model::PM_LibGetMtuFromPTP(u16 usPtpID, u32 *pulMtu) {
  u32 ret = 0;
  if (refused("PM_LibGetMtuFromPTP fail", pulMtu == nullptr, usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = PM_LibGetSubAttrFromPTPNEW(usPtpID, 0, &attr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetSubAttrFromPTPNEW fail, usPtpID = %ld", long{usPtpID});
    return ret;
  }
  *pulMtu = attr.ulMtu;
  return 0;
}

u32 Model::PM_LibGetSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive) {
  u32 ret = 0;
  if (pulTrasmit == nullptr || pulReceive == nullptr) {
    PM_LibDotPrintf(0, 1,
                    "PM_LibGetSpeedFromPTP fail, input pointer is null, usPtpID = %u, pulTrasmit "
                    "= %u, pulReceive = %u",
                    usPtpID, shown(pulTrasmit), shown(pulReceive));
    return record(0x689380, {usPtpID, is_null(pulTrasmit)});
  }
  if (refused("", false, usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = PM_LibGetSubAttrFromPTPNEW(usPtpID, 1, &attr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetSubAttrFromPTPNEW fail, ulRet = 0x%x", ret);
    return ret;
  }
  *pulTrasmit = attr.ulTransmitSpeed;
  *pulReceive = attr.ulReceiveSpeed;
  return 0;
}

u32 Model::PM_LibGetLinkStateFromPTP(u16 usPtpID, u8 *pucLinkState) {
  u32 ret = 0;
  if (refused("PM_LibGetLinkStateFromPTP fail, input pointer is null", pucLinkState == nullptr,
              usPtpID, ret, 0)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = PM_LibGetSubAttrFromPTPNEW(usPtpID, 2, &attr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_GetSubAttrFromPTP fail, ulRet = 0x%x", ret);
    return ret;
  }
  *pucLinkState = attr.ucLinkState;
  return 0;
}

u32 Model::PM_LibGetTxQLenFromPTP(u16 usPtpID, u32 *pulTxQLen) {
  u32 ret = 0;
  if (refused("PM_LibGetTxQLenFromPTP fail, input pointer is null", pulTxQLen == nullptr, usPtpID,
              ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = PM_LibGetSubAttrFromPTPNEW(usPtpID, 3, &attr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetSubAttrFromPTPNEW fail, ulRet = 0x%x", ret);
    return ret;
  }
  *pulTxQLen = attr.ulTxQLen;
  return 0;
}

u32 Model::PM_LibGetNameFromPTP(u16 usPtpID, u32 ulNameLength, char *pcName) {
  if (pcName == nullptr) {
    PM_LibDotPrintf(0, 1, "PM_GetNameFromPTP fail, usPtpID = %u", usPtpID);
    return record(0x689380, {usPtpID});
  }
  if (ulNameLength < 33) {
    PM_LibDotPrintf(0, 1, "PM_GetNameFromPTP fail ulNameLength = %u", ulNameLength);
    return 0x6908AF;
  }
  u32 ret = PM_LibIfPtpExist(usPtpID);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_IfPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  PmSubAttr attr{};
  ret = whole(usPtpID, attr, "PM_GetSubAttrFromPTP");
  if (ret != 0) {
    return ret;
  }
  // A buffer that is too large to be one is refused by the copy.
  const auto copied = static_cast<u32>(strncpy_s(pcName, ulNameLength, attr.szName, 32));
  if (copied != 0) {
    return record(0x6908BC, {copied});
  }
  pcName[32] = 0;
  return 0;
}

u32 Model::PM_LibGetPhyAddrFromPTP(u16 usPtpID, u32 ulLen, u8 *pucPhyAddr) {
  if (pucPhyAddr == nullptr) {
    PM_LibDotPrintf(0, 1, "PM_LibGetPhyAddrFromPTP fail, input pointer is null, usPtpID = %u",
                    usPtpID);
    return record(0x689380, {usPtpID});
  }
  if (ulLen != 6) {
    PM_LibDotPrintf(0, 1, "PM_LibGetPhyAddrFromPTP fail ulLen = %u", ulLen);
    return 0x6908B0;
  }
  u32 ret = 0;
  if (refused("", false, usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = PM_LibGetSubAttrFromPTP(usPtpID, &attr);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetSubAttrFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  std::memcpy(pucPhyAddr, attr.aucPhyAddr, 6);
  return 0;
}

u32 Model::PM_LibGetSpecificFromPTP(u16 usPtpID, u32 *pulSpecific) {
  u32 ret = 0;
  if (refused("PM_LibGetSpecificFromPTP fail, input pointer is null", pulSpecific == nullptr,
              usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = whole(usPtpID, attr, "Enter PM_LibGetSpecificFromPTP->PM_LibGetSubAttrFromPTP");
  if (ret == 0) {
    pulSpecific[0] = attr.aulSpecific[0];
    pulSpecific[1] = attr.aulSpecific[1];
  }
  return ret;
}

u32 Model::PM_LibGetAdminStatusFromPTP(u16 usPtpID, u8 *pucAdminStatus) {
  u32 ret = 0;
  if (refused("PM_LibGetAdminStatusFromPTP fail, input pointer is null", pucAdminStatus == nullptr,
              usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = whole(usPtpID, attr, "PM_LibGetSubAttrFromPTP");
  if (ret == 0) {
    *pucAdminStatus = attr.ucAdminStatus;
  }
  return ret;
}

u32 Model::PM_LibGetPromiscuousModeFromPTP(u16 usPtpID, u8 *pucPromiscuousMode) {
  u32 ret = 0;
  if (refused("PM_LibGetPromiscuousModeFromPTP fail, input pointer is null",
              pucPromiscuousMode == nullptr, usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = whole(usPtpID, attr, "PM_LibGetSubAttrFromPTP");
  if (ret == 0) {
    *pucPromiscuousMode = attr.ucPromiscuousMode;
  }
  return ret;
}

u32 Model::PM_LibGetCounterDiscontinuityTimeFromPTP(u16 usPtpID, u32 *pulTime) {
  u32 ret = 0;
  if (refused("PM_LibGetCounterDiscontinuityTimeFromPTP fail, input pointer is null",
              pulTime == nullptr, usPtpID, ret)) {
    return ret;
  }
  PmSubAttr attr{};
  ret = whole(usPtpID, attr, "PM_LibGetSubAttrFromPTP");
  if (ret != 0) {
    return record(ret, {usPtpID});
  }
  *pulTime = attr.ulCounterDiscontinuityTime;
  return 0;
}

u32 Model::PM_LibGetStatisticFromPTP(u16 usPtpID, PmSubStats *pstStats) {
  u32 ret = 0;
  if (refused("PM_LibGetStatisticFromPTP fail, input pointer is null", pstStats == nullptr, usPtpID,
              ret)) {
    return ret;
  }
  PmSubStats stats{};
  ret = PM_LibGetSubStatsFromPTP(usPtpID, &stats);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetSubStatsFromPTP fail, ulRet = 0x%x", ret);
    return ret;
  }
  *pstStats = stats;
  return 0;
}

u32 Model::PM_LibGetActiveSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive) {
  u32 ret = 0;
  if (pulTrasmit == nullptr || pulReceive == nullptr) {
    PM_LibDotPrintf(
        0, 0, "PM_LibGetActiveSpeedFromPTP fail, usPtpID = %u, pulTrasmit = %u, pulReceive = %u",
        usPtpID, shown(pulTrasmit), shown(pulReceive));
    return record(0x689380, {usPtpID, is_null(pulTrasmit)});
  }
  if (refused("", false, usPtpID, ret, 0)) {
    return ret;
  }
  u32 transmit = 0;
  u32 receive = 0;
  ret = PM_LibGetSubActiveSpeedFromPTP(usPtpID, &transmit, &receive);
  if (ret != 0) {
    PM_LibDotPrintf(0, 0, "PM_LibGetSubActiveSpeedFromPTP fail, ulRet = 0x%x", ret);
    return ret;
  }
  *pulTrasmit = transmit;
  *pulReceive = receive;
  return 0;
}

u32 Model::PM_LibGetConnPresentFromPTP(u16 usPtpID, u8 *pucConnPresent) {
  u32 ret = 0;
  if (refused("PM_LibGetConnPresentFromPTP fail, input pointer is null", pucConnPresent == nullptr,
              usPtpID, ret)) {
    return ret;
  }
  u8 state = 0;
  ret = PM_LibGetLinkStateFromPTP(usPtpID, &state);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetLinkStateFromPTP fail, ulRet = 0x%x", ret);
    return ret;
  }
  *pucConnPresent = state == 1 ? 1 : 2;
  return 0;
}

// -- From the library's own data

u32 Model::PM_LibGetAliasFromPTP(u16 usPtpID, u32 ulLen, u8 *pucAlias) {
  if (pucAlias == nullptr) {
    PM_LibDotPrintf(0, 1, "PM_LibGetAliasFromPTP fail, input pointer is null, usPtpID = %u",
                    usPtpID);
    return record(0x689380, {usPtpID});
  }
  return PM_LibGetDescFromPTP(usPtpID, ulLen, reinterpret_cast<char *>(pucAlias));
}

u32 Model::PM_LibGetLastChangeTickFromPTP(u16 usPtpID, u32 *pulTick) {
  if (pulTick == nullptr) {
    PM_LibDotPrintf(0, 1, "PM_LibGetLastChangeTickFromPTP fail, usPtpID = %u", usPtpID);
    return record(0x689380, {usPtpID});
  }
  u32 tick = 0;
  const u32 ret = PM_LibGetDynPubDataAttr(usPtpID, 7, &tick);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibGetDynPubDataAttr fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return ret;
  }
  *pulTick = tick;
  return 0;
}

u32 Model::PM_LibGetlinkTrapSwitchFromPTP(u16 usPtpID, u8 *pucSwitch) {
  if (pucSwitch == nullptr) {
    PM_LibDotPrintf(0, 1, "PM_LibGetlinkTrapSwitchFromPTP fail, usPtpID = %u", usPtpID);
    return record(0x689380, {usPtpID});
  }
  u32 ret = PM_LibIfPhyPtpExist(usPtpID);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, usPtpID);
    return record(ret, {ret, usPtpID});
  }
  PtpStaticData data{};
  ret = PM_LibStaticDataGetDataFromPTP(usPtpID, &data);
  if (ret != 0) {
    PM_LibDotPrintf(0, 1, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x", ret);
    return record(ret, {ret, usPtpID});
  }
  *pucSwitch = data.ucLinkUpDownTrap;
  return 0;
}

}  // namespace soak

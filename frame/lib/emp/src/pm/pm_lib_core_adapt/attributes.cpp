// The exported family of a PTP's attributes: each member checks its arguments and hands one field
// of a record to its caller.
#include "pm_attributes.h"

#include "diag.hpp"
#include "platform/bounded.h"
#include "pm_description.h"
#include "pm_dynamic_data.h"
#include "pm_identity.h"
#include "pm_static_data.h"

PM_SOURCE(pm_lib_core_adapt, 33);

namespace {

constexpr u32 name_buffer_size = PM_NAME_LEN + 1;
constexpr u8 link_connected = 1;
constexpr u8 connection_present = 1;
constexpr u8 connection_absent = 2;

struct ActiveSpeeds {
  u32 transmit;
  u32 receive;
};

// Sources: each fills a cleared record of its own kind. The callers of the callback slots are
// sources as they are.
template <typename Record>
using Source = u32 (*)(u16 ptp_id, Record *record);

template <u32 selector>
u32 selected_attr(u16 ptp_id, PmSubAttr *attr) {
  return PM_LibGetSubAttrFromPTPNEW(ptp_id, selector, attr);
}

u32 active_speeds(u16 ptp_id, ActiveSpeeds *speeds) {
  return PM_LibGetSubActiveSpeedFromPTP(ptp_id, &speeds->transmit, &speeds->receive);
}

u32 last_change_tick(u16 ptp_id, u32 *tick) {
  return PM_LibGetDynPubDataAttr(ptp_id, PM_DYN_ATTR_LAST_CHANGE_TICK, tick);
}

// What take does with a record that is handed over whole, or of which one field is.
template <typename Record>
auto whole(Record *out) {
  return [out](const Record &record) {
    *out = record;
    return PM_OK;
  };
}

template <typename Record, typename Value>
auto field(Value Record::*member, Value *out) {
  return [member, out](const Record &record) {
    *out = record.*member;
    return PM_OK;
  };
}

// The second half of a member: reads the source into a cleared record and lets take write the
// caller's outputs from it, so that a failure leaves them untouched. failed tells of a source that
// did not answer, in the member's own words.
template <typename Record, typename Failed, typename Take>
u32 read_record(u16 ptp_id, Source<Record> source, Failed failed, Take take) {
  Record record = {};
  const u32 ret = source(ptp_id, &record);
  if (ret != PM_OK) {
    failed(ret);
    return ret;
  }
  return take(record);
}

// The same for a PTP that has to exist.
template <typename Record, typename Failed, typename Take>
u32 read_existing(u16 ptp_id, u32 switch_no, Source<Record> source, Failed failed, Take take) {
  const u32 ret = PM_LibIfPtpExist(ptp_id);
  if (ret != PM_OK) {
    TRACE(switch_no, "PM_LibIfPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, ptp_id);
    return ret;
  }
  return read_record(ptp_id, source, failed, take);
}

}  // namespace

u32 PM_LibGetMtuFromPTP(u16 usPtpID, u32 *pulMtu) {
  if (pulMtu == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetMtuFromPTP fail, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [usPtpID](u32) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTPNEW fail, usPtpID = %ld",
          static_cast<long>(usPtpID));
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, selected_attr<PM_SUB_ATTR_MTU>, failed,
                       field(&PmSubAttr::ulMtu, pulMtu));
}

u32 PM_LibGetSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive) {
  if (pulTrasmit == nullptr || pulReceive == nullptr) {
    TRACE(PM_SWITCH_ERROR,
          "PM_LibGetSpeedFromPTP fail, input pointer is null, usPtpID = %u, pulTrasmit = %u, "
          "pulReceive = %u",
          usPtpID, pm::word(pulTrasmit), pm::word(pulReceive));
    return FAIL(PM_ERR_PARA, usPtpID, pm::is_null(pulTrasmit));
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTPNEW fail, ulRet = 0x%x", ret);
  };
  const auto take = [=](const PmSubAttr &attr) {
    *pulTrasmit = attr.ulTransmitSpeed;
    *pulReceive = attr.ulReceiveSpeed;
    return PM_OK;
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, selected_attr<PM_SUB_ATTR_SPEED>, failed, take);
}

u32 PM_LibGetLinkStateFromPTP(u16 usPtpID, u8 *pucLinkState) {
  if (pucLinkState == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetLinkStateFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_FUNCTION, "PM_GetSubAttrFromPTP fail, ulRet = 0x%x", ret);
  };
  return read_existing(usPtpID, PM_SWITCH_FUNCTION, selected_attr<PM_SUB_ATTR_LINK_STATE>, failed,
                       field(&PmSubAttr::ucLinkState, pucLinkState));
}

u32 PM_LibGetTxQLenFromPTP(u16 usPtpID, u32 *pulTxQLen) {
  if (pulTxQLen == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetTxQLenFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTPNEW fail, ulRet = 0x%x", ret);
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, selected_attr<PM_SUB_ATTR_TXQLEN>, failed,
                       field(&PmSubAttr::ulTxQLen, pulTxQLen));
}

u32 PM_LibGetNameFromPTP(u16 usPtpID, u32 ulNameLength, char *pcName) {
  if (pcName == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_GetNameFromPTP fail, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (ulNameLength < name_buffer_size) {
    TRACE(PM_SWITCH_ERROR, "PM_GetNameFromPTP fail ulNameLength = %u", ulNameLength);
    return PM_ERR_NAME_LEN;
  }
  const u32 exists = PM_LibIfPtpExist(usPtpID);
  if (exists != PM_OK) {
    TRACE(PM_SWITCH_ERROR, "PM_IfPtpExist fail, ulRet = 0x%x, usPtpID = %u", exists, usPtpID);
    return exists;
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_GetSubAttrFromPTP fail, ulRet = 0x%x", ret);
  };
  const auto take = [=](const PmSubAttr &attr) {
    const int ret = strncpy_s(pcName, ulNameLength, attr.szName, PM_NAME_LEN);
    if (ret != 0) {
      return FAIL(PM_ERR_STR_OPER, ret);
    }
    pcName[PM_NAME_LEN] = 0;
    return PM_OK;
  };
  return read_record(usPtpID, PM_LibGetSubAttrFromPTP, failed, take);
}

u32 PM_LibGetPhyAddrFromPTP(u16 usPtpID, u32 ulLen, u8 *pucPhyAddr) {
  if (pucPhyAddr == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetPhyAddrFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (ulLen != PM_PHY_ADDR_LEN) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetPhyAddrFromPTP fail ulLen = %u", ulLen);
    return PM_ERR_PHYADDR_LEN;
  }
  const auto failed = [usPtpID](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTP fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
  };
  const auto take = [=](const PmSubAttr &attr) {
    const int ret = memcpy_s(pucPhyAddr, ulLen, attr.aucPhyAddr, sizeof attr.aucPhyAddr);
    return ret == 0 ? PM_OK : FAIL(PM_ERR_MEM_OPER, ret);
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetSubAttrFromPTP, failed, take);
}

u32 PM_LibGetSpecificFromPTP(u16 usPtpID, u32 *pulSpecific) {
  if (pulSpecific == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSpecificFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR,
          "Enter PM_LibGetSpecificFromPTP->PM_LibGetSubAttrFromPTP fail, ulRet = 0x%x", ret);
  };
  const auto take = [=](const PmSubAttr &attr) {
    pulSpecific[0] = attr.aulSpecific[0];
    pulSpecific[1] = attr.aulSpecific[1];
    return PM_OK;
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetSubAttrFromPTP, failed, take);
}

u32 PM_LibGetAdminStatusFromPTP(u16 usPtpID, u8 *pucAdminStatus) {
  if (pucAdminStatus == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetAdminStatusFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTP fail, ulRet = 0x%x", ret);
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetSubAttrFromPTP, failed,
                       field(&PmSubAttr::ucAdminStatus, pucAdminStatus));
}

u32 PM_LibGetPromiscuousModeFromPTP(u16 usPtpID, u8 *pucPromiscuousMode) {
  if (pucPromiscuousMode == nullptr) {
    TRACE(PM_SWITCH_ERROR,
          "PM_LibGetPromiscuousModeFromPTP fail, input pointer is null, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTP fail, ulRet = 0x%x", ret);
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetSubAttrFromPTP, failed,
                       field(&PmSubAttr::ucPromiscuousMode, pucPromiscuousMode));
}

u32 PM_LibGetCounterDiscontinuityTimeFromPTP(u16 usPtpID, u32 *pulTime) {
  if (pulTime == nullptr) {
    TRACE(PM_SWITCH_ERROR,
          "PM_LibGetCounterDiscontinuityTimeFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [usPtpID](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubAttrFromPTP fail, ulRet = 0x%x", ret);
    RECORD(usPtpID);
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetSubAttrFromPTP, failed,
                       field(&PmSubAttr::ulCounterDiscontinuityTime, pulTime));
}

u32 PM_LibGetStatisticFromPTP(u16 usPtpID, PmSubStats *pstStats) {
  if (pstStats == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetStatisticFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetSubStatsFromPTP fail, ulRet = 0x%x", ret);
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetSubStatsFromPTP, failed, whole(pstStats));
}

u32 PM_LibGetActiveSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive) {
  if (pulTrasmit == nullptr || pulReceive == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetActiveSpeedFromPTP fail, usPtpID = %u, pulTrasmit = %u, pulReceive = %u",
          usPtpID, pm::word(pulTrasmit), pm::word(pulReceive));
    return FAIL(PM_ERR_PARA, usPtpID, pm::is_null(pulTrasmit));
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetSubActiveSpeedFromPTP fail, ulRet = 0x%x", ret);
  };
  const auto take = [=](const ActiveSpeeds &speeds) {
    *pulTrasmit = speeds.transmit;
    *pulReceive = speeds.receive;
    return PM_OK;
  };
  return read_existing(usPtpID, PM_SWITCH_FUNCTION, active_speeds, failed, take);
}

u32 PM_LibGetConnPresentFromPTP(u16 usPtpID, u8 *pucConnPresent) {
  if (pucConnPresent == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetConnPresentFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetLinkStateFromPTP fail, ulRet = 0x%x", ret);
  };
  const auto take = [=](u8 link_state) {
    *pucConnPresent = link_state == link_connected ? connection_present : connection_absent;
    return PM_OK;
  };
  return read_existing(usPtpID, PM_SWITCH_ERROR, PM_LibGetLinkStateFromPTP, failed, take);
}

u32 PM_LibGetAliasFromPTP(u16 usPtpID, u32 ulLen, u8 *pucAlias) {
  if (pucAlias == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetAliasFromPTP fail, input pointer is null, usPtpID = %u",
          usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  return PM_LibGetDescFromPTP(usPtpID, ulLen, reinterpret_cast<char *>(pucAlias));
}

u32 PM_LibGetLastChangeTickFromPTP(u16 usPtpID, u32 *pulTick) {
  if (pulTick == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetLastChangeTickFromPTP fail, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const auto failed = [usPtpID](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetDynPubDataAttr fail, ulRet = 0x%x, usPtpID = %u", ret,
          usPtpID);
  };
  return read_record(usPtpID, last_change_tick, failed, whole(pulTick));
}

u32 PM_LibGetlinkTrapSwitchFromPTP(u16 usPtpID, u8 *pucSwitch) {
  if (pucSwitch == nullptr) {
    TRACE(PM_SWITCH_ERROR, "PM_LibGetlinkTrapSwitchFromPTP fail, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const u32 exists = PM_LibIfPhyPtpExist(usPtpID);
  if (exists != PM_OK) {
    TRACE(PM_SWITCH_ERROR, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", exists, usPtpID);
    return FAIL(exists, exists, usPtpID);
  }
  const auto failed = [usPtpID](u32 ret) {
    TRACE(PM_SWITCH_ERROR, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x", ret);
    RECORD(ret, usPtpID);
  };
  return read_record(usPtpID, PM_LibStaticDataGetDataFromPTP, failed,
                     field(&PtpStaticData::ucLinkUpDownTrap, pucSwitch));
}

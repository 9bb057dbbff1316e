// Descriptions of PTPs and the private static data of their sub-lines.
//
// The description length as delivered decides whether a caller's buffer is large enough; only the
// part of it that a record has room for is ever copied, compared or skipped.
#include "pm_description.h"

#include "diag.hpp"
#include "platform/bounded.h"
#include "platform/kvt.h"
#include "pm_identity.h"
#include "static_record.hpp"

PM_SOURCE(pm_lib_core_adapt, 11);

namespace {

constexpr u32 copy_failed = 1;
constexpr u32 scan_watchdog_mask = 0x3FF;

// Is the PTP an existing physical port?
u32 check_physical_port(u16 ptp_id) {
  const u32 ret = PM_LibIfPhyPtpExist(ptp_id);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibIfPhyPtpExist fail, ulRet = 0x%x, usPtpID = %u", ret, ptp_id);
    return FAIL(ret, ptp_id, ret);
  }
  return PM_OK;
}

u32 read_record(u16 ptp_id, PtpStaticData *record) {
  const u32 ret = PM_LibStaticDataGetDataFromPTP(ptp_id, record);
  if (ret != PM_OK) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x, usPtpID = %u",
          ret, ptp_id);
    return FAIL(ret);
  }
  return PM_OK;
}

}  // namespace

u32 PM_LibGetDescFromPTP(u16 usPtpID, u32 ulDescLength, char *pcDesc) {
  if (pcDesc == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetDescFromPTP fail, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (PM_GetPmSpec(PM_SPEC_INDEX_DESC_MAX_LEN) >= ulDescLength) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetDescFromPTP fail, length of desc is invalid, ulDescLength = %u", ulDescLength);
    return PM_ERR_LEN;
  }
  u32 ret = check_physical_port(usPtpID);
  if (ret != PM_OK) {
    return ret;
  }
  PtpStaticData record{};
  ret = read_record(usPtpID, &record);
  if (ret != PM_OK) {
    return ret;
  }
  const u32 desc_len = pm::usable_desc_len();
  const int copied = strncpy_s(pcDesc, desc_len + 1, record.szDescription, desc_len);
  if (copied != 0) {
    return FAIL(PM_ERR_STR_OPER, copied);
  }
  pcDesc[desc_len] = '\0';
  return PM_OK;
}

u32 PM_LibGetPtpFromDesc(const char *pcDesc, u16 *pusPtpID) {
  if (pcDesc == nullptr || pusPtpID == nullptr) {
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetPtpFromDesc, pcDesc or pusPtpID is NULL_PTR");
    return FAIL(PM_ERR_PARA, pm::is_null(pcDesc), pm::is_null(pusPtpID));
  }
  const u32 desc_len = pm::usable_desc_len();
  const u32 length = ZEL_StrLen(pcDesc);
  if (length == 0 || length > desc_len) {
    // The two bytes are a full-width equals sign in the GBK code page.
    TRACE(PM_SWITCH_FUNCTION, "PM_LibGetPtpFromDesc desc is invalid, ulLenth \xA3\xBD %u", length);
    return FAIL(PM_ERR_DESC_INVALID, length);
  }
  TRACE(PM_SWITCH_FUNCTION, "Enter PM_LibGetPtpFromDesc, *pcDesc = %s", pcDesc);
  const u32 total = PM_LibGetPtpMaxNum();
  *pusPtpID = PM_PTP_ID_NONE;
  PtpStaticData record{};
  for (u32 ptp_id = 0; ptp_id < total; ++ptp_id) {
    if ((ptp_id & scan_watchdog_mask) == scan_watchdog_mask) {
      ZEL_ClearWatchDog();
    }
    // A PTP without static data ends the scan, whatever lies behind it.
    const u32 ret = PM_LibStaticDataGetDataFromPTP(static_cast<u16>(ptp_id), &record);
    if (ret != PM_OK) {
      TRACE(PM_SWITCH_FUNCTION, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x%x", ret);
      return FAIL(ret);
    }
    if (KVT_StrNCmp(record.szDescription, pcDesc, desc_len) == 0) {
      const u16 found = record.usPtpID;
      const u32 exists = check_physical_port(found);
      if (exists == PM_OK) {
        *pusPtpID = found;
      }
      return exists;
    }
  }
  return PM_ERR_PTP_NOT_EXIST;
}

u32 PM_LibGetPrivStaticDataFromPTP(u16 usPtpID, u32 ulLen, u8 *pucData) {
  if (pucData == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetPrivStaticDataFromPTP fail, input pointer is null, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  u32 ret = check_physical_port(usPtpID);
  if (ret != PM_OK) {
    return ret;
  }
  if (ulLen == 0 || ulLen > PM_PRI_DATA_SIZE) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetPrivStaticDataFromPTP fail, input length is not enough, ulLen = %u", ulLen);
    return PM_ERR_LEN_RANGE;
  }
  PtpStaticData record{};
  ret = read_record(usPtpID, &record);
  if (ret != PM_OK) {
    return ret;
  }
  const int copied = memcpy_s(pucData, ulLen, pm::private_static_data(record), ulLen);
  return copied == 0 ? PM_OK : FAIL(copy_failed, copied);
}

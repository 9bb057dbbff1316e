// Active/standby synchronisation of the static data: one unit of fixed size per PTP ID, extracted
// on the active side and restored on the standby side.
#include "pm_sync.h"

#include "diag.hpp"
#include "global_data.hpp"
#include "platform/bounded.h"
#include "platform/syn.h"
#include "static_record.hpp"

PM_SOURCE(pm_lib_init, 11);

namespace {

constexpr u32 unit_size = sizeof(PmSynRecord);
constexpr u16 data_size = sizeof(PtpStaticData);
constexpr u16 version_0 = 0;
constexpr u32 head_size = offsetof(PmSynRecord, stData);

// Arguments of the registration that the synchronisation module defines.
constexpr u32 info_para = 1;
constexpr u32 block_para_1 = 2;
constexpr u32 block_para_2 = 2;

u32 register_block() {
  const u32 unit_num = PM_LibGetMaxPtpID() + 1U;
  return SYN_LibRegisterSynDataBlockFix(PM_SYN_MODULE, block_para_1, block_para_2, 0, unit_size,
                                        unit_num, 0, 0, PM_LibSynExtractStaticData,
                                        PM_LibSynRestoreStaticData, 0, 0);
}

u32 restore_version(u16 version, u16 ptp_id, const void *record, u32 len) {
  return version == version_0 ? PM_LibSynRestoreStaticDataV0(ptp_id, record, len)
                              : PM_ERR_DATA_INVALID;
}

}  // namespace

u32 PM_LibSynRegister(void) {
  u32 ret = SYN_LibRegisterModuleDataSynInfo(PM_SYN_MODULE, info_para, 0, 0, 0);
  if (ret == PM_OK) {
    ret = register_block();
  }
  if (ret == PM_OK) {
    ret = SYN_LibRegisterModuleDataMode(PM_SYN_MODULE, 0, 0, 0);
  }
  if (ret == PM_OK) {
    ret = SYN_LibRegisterSetBitTableFun(PM_SYN_MODULE, PM_LibSynResetAllBitTable);
  }
  return PASS_UP(ret);
}

u32 PM_LibSynExtractStaticData(u32 ulUnit, void *pBuf, u32 ulBufLen, u32 *pulOutLen) {
  if (SYN_LibIsCpuActive() == 0) {
    return FAIL(PM_ERR_DATA_INVALID);
  }
  // Without an instance every PTP would seem to have no static data, and the standby would delete
  // what it has.
  if (pBuf == nullptr || pulOutLen == nullptr || pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (ulBufLen < unit_size) {
    return FAIL(PM_ERR_LEN, ulBufLen, unit_size);
  }
  const u16 max_ptp_id = PM_LibGetMaxPtpID();
  if (ulUnit > max_ptp_id) {
    return FAIL(PM_ERR_PTPID_RANGE, ulUnit, max_ptp_id);
  }
  auto *record = static_cast<PmSynRecord *>(pBuf);
  record->ucReserved = 0;
  record->ucModule = PM_SYN_MODULE;
  record->usLen = data_size;
  record->usVersion = version_0;
  const PmStaticDBNode *node = PM_LibFindStaticDBNode(static_cast<u16>(ulUnit));
  if (node != nullptr) {
    const int copied = memcpy_s(&record->stData, data_size, &node->stData, data_size);
    if (copied != 0) {
      return FAIL(PM_ERR_MEM_OPER, copied);
    }
  } else {
    record->stData = pm::absent_static_record();
  }
  *pulOutLen = unit_size;
  return PM_OK;
}

u32 PM_LibSynRestoreStaticData(u32 ulUnit, const void *pRecord, u32 ulLen, u32 /*ulReserved*/) {
  if (pRecord == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u16 max_ptp_id = PM_LibGetMaxPtpID();
  if (ulUnit > max_ptp_id) {
    return FAIL(PM_ERR_PTPID_RANGE, ulUnit, max_ptp_id);
  }
  // Any other length is judged by the version, which such a record does not have.
  if (ulLen < head_size) {
    return FAIL(PM_ERR_LEN, ulLen, unit_size);
  }
  const u16 version = static_cast<const PmSynRecord *>(pRecord)->usVersion;
  const u32 ret = restore_version(version, static_cast<u16>(ulUnit), pRecord, ulLen);
  return ret == PM_OK ? PM_OK : FAIL(ret, ret, version);
}

u32 PM_LibSynRestoreStaticDataV0(u16 usPtpID, const void *pRecord, u32 ulLen) {
  if (pRecord == nullptr || pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (ulLen < unit_size) {
    return FAIL(PM_ERR_LEN, ulLen, unit_size);
  }
  const auto *record = static_cast<const PmSynRecord *>(pRecord);
  if (record->usLen != data_size) {
    return FAIL(PM_ERR_DATA_INVALID, data_size, record->usLen);
  }
  // Only a deletion goes by the unit: the record of an absent PTP does not name it.
  return pm::is_absent_static_record(&record->stData) ? PM_LibDeleteStaticDBNode(usPtpID)
                                                      : PM_LibUpdateStaticDBNode(&record->stData);
}

void PM_LibSynResetAllBitTable(void) {}

u32 PM_SynSetDynPrivAttrBitTable(void) {
  return PM_OK;
}

// The store of dynamic public records and its accessors.
#include "diag.hpp"
#include "dynamic_store.hpp"
#include "memory.hpp"
#include "pm_dynamic_data.h"

PM_SOURCE(pm_lib_core_adapt, 3);

namespace {

struct Field {
  u8 offset;
  u8 size;
};

#define PM_FIELD(name) \
  { static_cast<u8>(offsetof(PtpDynPubData, name)), static_cast<u8>(sizeof(PtpDynPubData::name)) }

// Indexed by selector.
constexpr Field fields[] = {
    PM_FIELD(usIndex1),      PM_FIELD(usIndex2),       PM_FIELD(ucPtpClass),
    PM_FIELD(ucExist),       PM_FIELD(usPtpType),      PM_FIELD(ucInvisible),
    PM_FIELD(PrivDynDataID), PM_FIELD(LastChangeTick), PM_FIELD(ulVsMask),
};

#undef PM_FIELD

constexpr u32 readable_field_num = sizeof fields / sizeof fields[0];
constexpr u32 writable_field_num = PM_DYN_ATTR_VS_MASK;

// Constant sizes make each copy one load and one store.
void copy_field(void *to, const void *from, u32 size) {
  switch (size) {
    case sizeof(u8):
      pm::store(to, pm::load<u8>(from));
      break;
    case sizeof(u16):
      pm::store(to, pm::load<u16>(from));
      break;
    default:
      pm::store(to, pm::load<u32>(from));
      break;
  }
}

u32 existence(const PtpDynPubData &record) {
  return record.ucExist != 0 ? PM_OK : PM_ERR_PTP_NOT_EXIST;
}

}  // namespace

bool pm::dynamic_slot_exists(const PmGlobalData *data, u16 ptp_id) {
  return ptp_id <= PM_LibGetMaxPtpID() && ptp_id < data->ulDynRecordNum;
}

u32 PM_LibMallocForDynCB(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u32 record_num = PM_LibGetMaxPtpID() + 1U;
  if (data->pstPtpDynPubData == nullptr) {
    constexpr u32 size = sizeof(PtpDynPubData *);
    void *anchor = ALLOCATE(ZEL_kvtBlockMemPtGet(), size);
    if (anchor == nullptr) {
      return FAIL(PM_ERR_MALLOC, size);
    }
    data->pstPtpDynPubData = static_cast<PtpDynPubData **>(anchor);
  }
  if (*data->pstPtpDynPubData == nullptr) {
    const u32 size = record_num * u32{sizeof(PtpDynPubData)};
    void *records = ALLOCATE(ZEL_kvtBlockMemPtGet(), size);
    if (records == nullptr) {
      return FAIL(PM_ERR_MALLOC, size);
    }
    data->ulDynRecordNum = record_num;
    *data->pstPtpDynPubData = static_cast<PtpDynPubData *>(records);
  }
  return PM_OK;
}

u32 PM_LibGetDynPubDataAttr(u16 usPtpID, u32 ulSelector, void *pValue) {
  const PmGlobalData *data = pm::current_data();
  if (pValue == nullptr || data == nullptr || data->pstPtpDynPubData == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID, pm::is_null(pValue));
  }
  const PtpDynPubData *records = *data->pstPtpDynPubData;
  if (records == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (!pm::dynamic_slot_exists(data, usPtpID)) {
    return PM_ERR_PTPID_RANGE;
  }
  const PtpDynPubData &record = records[usPtpID];
  if (ulSelector < readable_field_num) {
    const Field field = fields[ulSelector];
    copy_field(pValue, reinterpret_cast<const u8 *>(&record) + field.offset, field.size);
  } else {
    RECORD(ulSelector);
  }
  return existence(record);
}

u32 PM_LibSetDynPubDataAttr(u16 usPtpID, u32 ulSelector, const void *pValue) {
  if (pValue == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const PmGlobalData *data = pm::current_data();
  PtpDynPubData *records = pm::dynamic_records(data);
  if (records == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (!pm::dynamic_slot_exists(data, usPtpID)) {
    return FAIL(PM_ERR_PTPID_RANGE, usPtpID);
  }
  if (ulSelector >= writable_field_num) {
    return FAIL(PM_OK, ulSelector);
  }
  const Field field = fields[ulSelector];
  copy_field(reinterpret_cast<u8 *>(&records[usPtpID]) + field.offset, pValue, field.size);
  return PM_OK;
}

u32 PM_LibGetAllDynDataFromPtpID(u16 usPtpID, PtpDynPubData *pstPtpDynPubData) {
  if (pstPtpDynPubData == nullptr) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetAllDynDataFromPtpID fail, input pointer is null, usPtpID = %u", usPtpID);
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  const PmGlobalData *data = pm::current_data();
  const PtpDynPubData *records = pm::dynamic_records(data);
  if (records == nullptr) {
    return FAIL(PM_ERR_PARA, usPtpID);
  }
  if (!pm::dynamic_slot_exists(data, usPtpID)) {
    TRACE(PM_SWITCH_FUNCTION,
          "PM_LibGetDynPubDataAttr fail, input PTPID is invalid, usPtpID = %u, usMaxPtpID = %u ",
          usPtpID, PM_LibGetMaxPtpID());
    return PM_ERR_PTPID_RANGE;
  }
  (void)memcpy_s(pstPtpDynPubData, sizeof *pstPtpDynPubData, &records[usPtpID],
                 sizeof(PtpDynPubData));
  return existence(*pstPtpDynPubData);
}

u32 PM_LibGetDynPrivMemRangeFromMemID(u32 ulMemID) {
  const u32 start = g_stPmAttrCB.usExtAreaSize;
  const u32 end = start + g_stPmAttrCB.usVirtualPtpNum;
  if (ulMemID < start) {
    return 1;
  }
  return ulMemID < end ? PM_OK : PM_ERR_STR_OPER;
}

u32 PM_LibConverDbErrorCode(u32 ulDbRet) {
  switch (ulDbRet) {
    case 0:
      return PM_OK;
    case 3:
    case 5:
      return PM_ERR_PTP_NOT_EXIST;
    case 4:
      return PM_ERR_DB_STATE;
    default:
      return PM_ERR_DB_FAIL;
  }
}

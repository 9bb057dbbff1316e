// The data-distribution classes: the subscriptions and the handlers that write what is delivered
// into the library's state.
#include "pm_restore.h"

#include "diag.hpp"
#include "dynamic_store.hpp"
#include "global_data.hpp"
#include "platform/bounded.h"
#include "platform/ddm.h"
#include "platform/syn.h"
#include "pm_events.h"
#include "pm_sapi.h"
#include "pm_sync.h"
#include "static_record.hpp"
#include "sub_attr.hpp"

PM_SOURCE(pm_lib_init, 12);

namespace {

constexpr u32 static_db_failed = 1;
constexpr u32 syn_block = 0;

struct Subscription {
  u32 class_id;
  DdmRestoreFunc restore;
};

// In the order in which they are made.
constexpr Subscription subscriptions[] = {
    {PM_CLASS_SUB_ATTR, PM_LibScribeRestore_SubAttrCB},
    {PM_CLASS_SUB_INFO, PM_LibScribeRestore_SubInnerSubInfo},
    {PM_CLASS_DYNAMIC, PM_LibScribeRestore_DynamicCB},
    {PM_CLASS_STATIC, PM_LibScribeRestore_StaticDB},
    {PM_CLASS_PRIM_NOTIFY, PM_LibScribeRestorePrimNotify},
    {PM_CLASS_OBJ_DEL_NUM, PM_LibScribeRestoreObjDelNum},
};

// What the data distribution delivers to a handler.
struct Delivery {
  u32 class_id;
  const void *data;
  u32 len;
};

// Is this one whole record of the class?
template <typename Record>
bool carries(const Delivery &delivery, u32 class_id) {
  return delivery.class_id == class_id && delivery.data != nullptr &&
         delivery.len == sizeof(Record);
}

u32 refuse(const Delivery &delivery) {
  return FAIL(PM_ERR_DATA_INVALID, delivery.class_id, pm::is_null(delivery.data), delivery.len);
}

// Replaces a process-wide record.
template <typename Record>
u32 take_process_record(const Delivery &delivery, u32 class_id, Record *record) {
  if (!carries<Record>(delivery, class_id)) {
    return refuse(delivery);
  }
  const int copied = memcpy_s(record, sizeof *record, delivery.data, sizeof *record);
  return copied == 0 ? PM_OK : FAIL(PM_ERR_MEM_OPER, copied);
}

u32 create_sub_tables() {
  u32 ret = PM_LibMallocSubAttrGlobalVar();
  if (ret != PM_OK) {
    return FAIL(PM_ERR_MEM_OPER, ret);
  }
  ret = PM_LibSubInnerSubInfoInit();
  return PASS_UP(ret);
}

u32 create_dynamic_store() {
  u32 ret = PM_LibMallocForDynCB();
  if (ret != PM_OK) {
    return FAIL(PM_ERR_MALLOC, ret);
  }
  ret = PM_LibPltEventRegister();
  if (ret != PM_OK) {
    RECORD(ret);
  }
  return PM_OK;
}

}  // namespace

u32 PM_ScribeClass(void) {
  const u32 cid = ROOT_LibGetCurrentCID();
  u32 sum = 0;
  for (const Subscription &subscription : subscriptions) {
    sum += DDM_LibSubscribe(cid, subscription.class_id, subscription.restore);
  }
  return sum == PM_OK ? PM_OK : FAIL(sum, sum, cid);
}

u32 PM_LibScribeRestore_SubAttrCB(u32 ulClassID, u32 /*ulReserved*/, const void * /*pKey*/,
                                  const void *pData, u32 ulLen) {
  const Delivery delivery = {ulClassID, pData, ulLen};
  if (!carries<PmSubAttrNum>(delivery, PM_CLASS_SUB_ATTR)) {
    return refuse(delivery);
  }
  g_stPmSubAttrCB = pm::load<PmSubAttrNum>(pData);
  return PM_OK;
}

u32 PM_LibScribeRestore_SubInnerSubInfo(u32 ulClassID, u32 /*ulReserved*/, const void *pKey,
                                        const void *pData, u32 ulLen) {
  const Delivery delivery = {ulClassID, pData, ulLen};
  if (pKey == nullptr || !carries<PmSubInnerSubInfo>(delivery, PM_CLASS_SUB_INFO)) {
    return refuse(delivery);
  }
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (!pm::sub_tables_exist(data)) {
    const u32 ret = create_sub_tables();
    if (ret != PM_OK) {
      return ret;
    }
  }
  const u32 suffix = pm::load<u32>(pKey);
  if (suffix >= pm::sub_info_num(data)) {
    return FAIL(PM_ERR_DATA_INVALID, suffix);
  }
  (void)memcpy_s(&pm::sub_infos(data)[suffix], sizeof(PmSubInnerSubInfo), pData,
                 sizeof(PmSubInnerSubInfo));
  return PM_OK;
}

u32 PM_LibScribeRestore_DynamicCB(u32 ulClassID, u32 /*ulReserved*/, const void *pKey,
                                  const void *pData, u32 ulLen) {
  const Delivery delivery = {ulClassID, pData, ulLen};
  if (pKey == nullptr || !carries<PtpDynPubData>(delivery, PM_CLASS_DYNAMIC)) {
    return refuse(delivery);
  }
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  if (pm::dynamic_records(data) == nullptr) {
    const u32 ret = create_dynamic_store();
    if (ret != PM_OK) {
      return ret;
    }
  }
  const u16 ptp_id = static_cast<u16>(pm::load<u32>(pKey));
  if (!pm::dynamic_slot_exists(data, ptp_id)) {
    return FAIL(PM_ERR_DATA_INVALID, ptp_id);
  }
  PM_LibPrimaryNotifyBefore(ptp_id, static_cast<const PtpDynPubData *>(pData));
  PtpDynPubData *slot = &pm::dynamic_records(data)[ptp_id];
  const PtpDynPubData old = *slot;
  const int copied = memcpy_s(slot, sizeof *slot, pData, sizeof *slot);
  if (copied != 0) {
    return FAIL(PM_ERR_MEM_OPER, copied);
  }
  PM_LibPrimaryNotifyAfter(ptp_id, &old);
  return PM_OK;
}

u32 PM_LibScribeRestore_StaticDB(u32 ulClassID, u32 /*ulReserved*/, const void * /*pKey*/,
                                 const void *pData, u32 ulLen) {
  const Delivery delivery = {ulClassID, pData, ulLen};
  if (!carries<PtpStaticData>(delivery, PM_CLASS_STATIC)) {
    return refuse(delivery);
  }
  if (pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const auto *record = static_cast<const PtpStaticData *>(pData);
  const u16 ptp_id = record->usPtpID;
  const u32 ret = pm::is_absent_static_record(record) ? PM_LibDeleteStaticDBNode(ptp_id)
                                                      : PM_LibUpdateStaticDBNode(record);
  if (ret != PM_OK) {
    return FAIL(static_db_failed, ptp_id);
  }
  (void)SYN_LibModuleDataUnitModifyRecord(PM_SYN_MODULE, syn_block, ptp_id);
  return PM_OK;
}

u32 PM_LibScribeRestorePrimNotify(u32 ulClassID, u32 /*ulReserved*/, const void * /*pKey*/,
                                  const void *pData, u32 ulLen) {
  if (!carries<PmPrimNotify>({ulClassID, pData, ulLen}, PM_CLASS_PRIM_NOTIFY) ||
      pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const auto *notify = static_cast<const PmPrimNotify *>(pData);
  const u16 prim_type = notify->usPrimType;
  // Booked functions take a plain pointer whoever raises the primitive.
  void *para = const_cast<u8 *>(notify->aucPara);
  const u32 ret = PM_LibBookCallBookedFuncs(prim_type, notify->usPtpID, para);
  if (ret != PM_OK) {
    RECORD(prim_type, ret);
  }
  return PM_OK;
}

// Any class and a longer record are taken.
u32 PM_LibScribeRestoreObjDelNum(u32 /*ulClassID*/, u32 /*ulReserved*/, const void * /*pKey*/,
                                 const void *pData, u32 ulLen) {
  constexpr u32 count_size = sizeof(u32);
  if (pData == nullptr || ulLen < count_size) {
    return FAIL(PM_ERR_PARA, ulLen, count_size);
  }
  if (pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  (void)PM_LibSetObjectNumInDelete(pm::load<u32>(pData));
  return PM_OK;
}

u32 PM_LibScribeRestore_Spec(u32 ulClassID, u32 /*ulReserved*/, const void * /*pKey*/,
                             const void *pData, u32 ulLen) {
  return take_process_record({ulClassID, pData, ulLen}, PM_CLASS_SPEC, &g_stPmSpec);
}

u32 PM_LibScribeRestore_AttrCB(u32 ulClassID, u32 /*ulReserved*/, const void * /*pKey*/,
                               const void *pData, u32 ulLen) {
  return take_process_record({ulClassID, pData, ulLen}, PM_CLASS_ATTR_CB, &g_stPmAttrCB);
}

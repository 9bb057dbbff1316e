// From class and indexes to the PTP ID: the scan over the records and the cache of its answers.
#include "diag.hpp"
#include "dynamic_store.hpp"
#include "memory.hpp"
#include "platform/dev.h"
#include "pm_reverse_lookup.h"

PM_SOURCE(pm_lib_core_adapt, 25);

namespace {

constexpr u32 cache_bucket_num = 368;
constexpr u32 not_equal = 1;

// A record's indexes, class and existence lie together at its start, so the scan compares them as
// two words and nearly always decides on the first.
struct ScanWords {
  u32 indexes;
  u16 class_and_exist;
};

static_assert(offsetof(PtpDynPubData, usIndex1) == 0 && offsetof(PtpDynPubData, usIndex2) == 2);
static_assert(offsetof(PtpDynPubData, ucExist) == offsetof(PtpDynPubData, ucPtpClass) + 1);

u32 load_indexes(const PtpDynPubData *record) {
  return pm::load<u32>(record);
}

u16 load_class_and_exist(const PtpDynPubData *record) {
  return pm::load<u16>(reinterpret_cast<const u8 *>(record) + offsetof(PtpDynPubData, ucPtpClass));
}

ScanWords scan_words(const PmPhyIndexKey &key) {
  const PtpDynPubData wanted = {key.usIndex1, key.usIndex2, key.ucPtpClass, 1, 0, 0, 0, 0, 0};
  return {load_indexes(&wanted), load_class_and_exist(&wanted)};
}

// The number of slots that carry valid PTP IDs.
u32 slot_num(const PmGlobalData *data) {
  const u32 id_num = PM_LibGetMaxPtpID() + 1U;
  return id_num < data->ulDynRecordNum ? id_num : data->ulDynRecordNum;
}

u32 bucket_of(const PmPhyIndexKey &key) {
  return (key.ucPtpClass * 23U + key.usIndex1 * 16U + key.usIndex2) % cache_bucket_num;
}

bool keys_equal(const PmPhyIndexKey &a, const PmPhyIndexKey &b) {
  return a.ucPtpClass == b.ucPtpClass && a.usIndex1 == b.usIndex1 && a.usIndex2 == b.usIndex2;
}

// Does the PTP still exist with the key? All three fields are read whatever the reads answer.
bool ptp_carries(u16 ptp_id, const PmPhyIndexKey &key) {
  u8 ptp_class = 0;
  u16 index1 = 0;
  u16 index2 = 0;
  u32 ret = PM_LibGetDynPubDataAttr(ptp_id, PM_DYN_ATTR_PTP_CLASS, &ptp_class);
  ret |= PM_LibGetDynPubDataAttr(ptp_id, PM_DYN_ATTR_INDEX1, &index1);
  ret |= PM_LibGetDynPubDataAttr(ptp_id, PM_DYN_ATTR_INDEX2, &index2);
  return ret == PM_OK && keys_equal({ptp_class, index1, index2}, key);
}

// The instance's cache, created by the first lookup; 0 when it can't be.
Handle cache_table(PmGlobalData *data) {
  if (data->ulPhyIndexHash == 0) {
    data->ulPhyIndexHash = ZEL_HASH_Create_Table(cache_bucket_num, 0);
  }
  return data->ulPhyIndexHash;
}

u32 add_to_cache(Handle table, const PmPhyIndexKey &key, u16 ptp_id) {
  void *block = ALLOCATE(ZEL_kvtBlockMemPtGet(), sizeof(PmPhyIndexNode));
  if (block == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  auto *node = static_cast<PmPhyIndexNode *>(block);
  node->stKey = key;
  node->usPtpID = ptp_id;
  (void)ZEL_HASH_Add_Node(table, node, bucket_of(key), 0);
  return PM_OK;
}

// A checked answer of the cache. A stale one is dropped and counts as none.
bool find_in_cache(Handle table, const PmPhyIndexKey &key, u16 *ptp_id) {
  const u32 bucket = bucket_of(key);
  void *found = ZEL_HASH_Find_Node(table, bucket, &key, Pm_Lib_CmpFromPhyInfo);
  if (found == nullptr) {
    return false;
  }
  const u16 cached_id = static_cast<const PmPhyIndexNode *>(found)->usPtpID;
  if (!ptp_carries(cached_id, key)) {
    (void)ZEL_HASH_Delete_Node(table, found, bucket);
    (void)ZEL_Free(found);
    return false;
  }
  *ptp_id = cached_id;
  return true;
}

}  // namespace

u32 PM_LibGetPtpFromPhyIndexOnSrv(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID) {
  PmGlobalData *data = pm::current_data();
  if (pusPtpID == nullptr || data == nullptr) {
    return FAIL(PM_ERR_PARA, ucPtpClass, usIndex1, usIndex2);
  }
  const Handle table = cache_table(data);
  if (table == 0) {
    return FAIL(PM_ERR_PARA, usIndex1);
  }
  const PmPhyIndexKey key = {ucPtpClass, usIndex1, usIndex2};
  if (find_in_cache(table, key, pusPtpID)) {
    return PM_OK;
  }
  const u32 ret = PM_LibGetPtpFromPhyIndexOnSrvByEnum(ucPtpClass, usIndex1, usIndex2, pusPtpID);
  if (ret != PM_OK) {
    return ret;
  }
  return add_to_cache(table, key, *pusPtpID);
}

u32 PM_LibGetPtpFromPhyIndexOnSrvByEnum(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID) {
  const PmGlobalData *data = pm::current_data();
  const PtpDynPubData *records = pm::dynamic_records(data);
  if (pusPtpID == nullptr || records == nullptr) {
    return FAIL(PM_ERR_PARA, ucPtpClass, usIndex1, usIndex2);
  }
  const ScanWords wanted = scan_words({ucPtpClass, usIndex1, usIndex2});
  const PtpDynPubData *end = records + slot_num(data);
  for (const PtpDynPubData *record = records; record != end; ++record) {
    if (load_indexes(record) == wanted.indexes &&
        load_class_and_exist(record) == wanted.class_and_exist) {
      *pusPtpID = static_cast<u16>(record - records);
      return PM_OK;
    }
  }
  return PM_ERR_PTP_NOT_EXIST;
}

u32 PM_LibGetPtpFromPhyIndex(u16 usBIndex, u8 ucPort, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return FAIL(PM_ERR_PARA, usBIndex, ucPort);
  }
  return PM_LibGetPtpFromPhyIndexOnSrv(PM_PTP_CLASS_PORT, usBIndex, ucPort, pusPtpID);
}

u32 PM_LibGetPtpFromPhyIndexEx(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return FAIL(PM_ERR_PARA, ucPtpClass, usIndex1, usIndex2);
  }
  if (ucPtpClass >= PM_PTP_CLASS_NUM) {
    return FAIL(PM_ERR_DATA_INVALID);
  }
  return PM_LibGetPtpFromPhyIndexOnSrv(ucPtpClass, usIndex1, usIndex2, pusPtpID);
}

u32 PM_LibGetPtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID) {
  if (pusPtpID == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  u16 board = 0;
  u32 ret = DEV_LibGetBIndexFromFrameIDSlotID(usFrameID, ucSlotID, &board);
  if (ret != PM_OK) {
    return ret;
  }
  u16 ptp_id = 0;
  ret = PM_LibGetPtpFromPhyIndex(board, ucPortID, &ptp_id);
  if (ret == PM_OK) {
    *pusPtpID = ptp_id;
  }
  return ret;
}

u32 Pm_Lib_CmpFromPhyInfo(const void *pKey, const void *pNode) {
  if (pKey == nullptr || pNode == nullptr) {
    return FAIL(not_equal);
  }
  const auto *key = static_cast<const PmPhyIndexKey *>(pKey);
  const auto *node = static_cast<const PmPhyIndexNode *>(pNode);
  return keys_equal(*key, node->stKey) ? PM_OK : not_equal;
}

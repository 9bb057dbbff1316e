// The static database: a hash table of nodes, one per PTP that has static data, created by the
// first write and never destroyed. The read access is with the other data accessors.
#include "diag.hpp"
#include "global_data.hpp"
#include "memory.hpp"
#include "pm_static_data.h"

PM_SOURCE(pm_lib_init, 10);

namespace {

constexpr u32 bucket_num = 1024;

constexpr u32 bucket_of(u16 ptp_id) {
  return ptp_id % bucket_num;
}

// The instance's table, created if need be; 0 when it can't be.
Handle table_for_writing(PmGlobalData *data) {
  if (data->ulStaticDbHash == 0) {
    data->ulStaticDbHash = ZEL_HASH_Create_Table(bucket_num, 0);
  }
  return data->ulStaticDbHash;
}

}  // namespace

u32 PM_LibCmpStaticDBNode(const void *pKey, const void *pNode) {
  if (pKey == nullptr || pNode == nullptr) {
    return 1;
  }
  return static_cast<const PmStaticDBNode *>(pNode)->stData.usPtpID == pm::load<u16>(pKey) ? 0 : 1;
}

PmStaticDBNode *PM_LibFindStaticDBNode(u16 usPtpID) {
  const PmGlobalData *data = pm::current_data();
  if (data == nullptr || data->ulStaticDbHash == 0) {
    return nullptr;
  }
  return static_cast<PmStaticDBNode *>(ZEL_HASH_Find_Node(data->ulStaticDbHash, bucket_of(usPtpID),
                                                          &usPtpID, PM_LibCmpStaticDBNode));
}

PmStaticDBNode *PM_LibCreateStaticDBNode(u16 usPtpID) {
  PmGlobalData *data = pm::current_data();
  const Handle table = data == nullptr ? 0 : table_for_writing(data);
  if (table == 0) {
    RECORD(usPtpID);
    return nullptr;
  }
  void *block = ALLOCATE(ZEL_kvtBlockMemPtGet(), sizeof(PmStaticDBNode));
  if (block == nullptr) {
    RECORD(usPtpID);
    return nullptr;
  }
  // The node is found by its record's PTP ID from the moment it is added, so the key comes first.
  auto *node = static_cast<PmStaticDBNode *>(block);
  node->stData.usPtpID = usPtpID;
  (void)ZEL_HASH_Add_Node(table, node, bucket_of(usPtpID), 0);
  return node;
}

u32 PM_LibUpdateStaticDBNode(const PtpStaticData *pstStaticData) {
  if (pstStaticData == nullptr || pm::current_data() == nullptr) {
    return FAIL(PM_ERR_PARA);
  }
  const u16 ptp_id = pstStaticData->usPtpID;
  PmStaticDBNode *node = PM_LibFindStaticDBNode(ptp_id);
  if (node == nullptr) {
    node = PM_LibCreateStaticDBNode(ptp_id);
  }
  if (node == nullptr) {
    return FAIL(PM_ERR_DATA_INVALID, ptp_id, pstStaticData->usBIndex, pstStaticData->ucPortID);
  }
  const int copied =
      memcpy_s(&node->stData, sizeof node->stData, pstStaticData, sizeof *pstStaticData);
  return copied == 0 ? PM_OK : FAIL(PM_ERR_MEM_OPER, copied);
}

u32 PM_LibDeleteStaticDBNode(u16 usPtpID) {
  const PmGlobalData *data = pm::current_data();
  PmStaticDBNode *node = PM_LibFindStaticDBNode(usPtpID);
  if (data == nullptr || node == nullptr) {
    return FAIL(PM_OK, usPtpID);
  }
  (void)ZEL_HASH_Delete_Node(data->ulStaticDbHash, node, bucket_of(usPtpID));
  (void)ZEL_Free(node);
  return PM_OK;
}

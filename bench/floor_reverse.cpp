// The reverse lookup by hand: the host's hash table and a loop that loads one word per record.
#include "bench/floor_reverse.hpp"

#include "bench/floor.hpp"

namespace floor_of {

namespace {

u32 bucket_of(const PmPhyIndexKey &key) {
  return (key.ucPtpClass * 23U + key.usIndex1 * 16U + key.usIndex2) % 368;
}

bool equal(const PmPhyIndexKey &a, const PmPhyIndexKey &b) {
  return a.ucPtpClass == b.ucPtpClass && a.usIndex1 == b.usIndex1 && a.usIndex2 == b.usIndex2;
}

u32 compare(const void *key, const void *node) {
  return equal(*static_cast<const PmPhyIndexKey *>(key),
               static_cast<const PmPhyIndexNode *>(node)->stKey)
             ? 0
             : 1;
}

// The host is asked for the instance once for each of the three fields.
bool still_there(u16 ptp_id, const PmPhyIndexKey &key) {
  const PtpDynPubData &at = records(data())[ptp_id];
  (void)data();
  (void)data();
  return at.ucExist != 0 && equal({at.ucPtpClass, at.usIndex1, at.usIndex2}, key);
}

u32 scan_records(const PmGlobalData *own, const PmPhyIndexKey &key, u16 *ptp_id) {
  const u32 wanted = u32{key.usIndex2} << 16 | key.usIndex1;
  const PtpDynPubData *all = records(own);
  const u32 num = own->ulDynRecordNum;
  for (u32 i = 0; i < num; ++i) {
    u32 indexes;
    __builtin_memcpy(&indexes, &all[i], sizeof indexes);
    if (indexes == wanted && all[i].ucPtpClass == key.ucPtpClass && all[i].ucExist == 1) {
      *ptp_id = static_cast<u16>(i);
      return 0;
    }
  }
  return PM_ERR_PTP_NOT_EXIST;
}

}  // namespace

u32 scan(u8 ptp_class, u16 index1, u16 index2, u16 *ptp_id) {
  return scan_records(data(), {ptp_class, index1, index2}, ptp_id);
}

u32 find_port(u16 board, u8 port, u16 *ptp_id) {
  const PmGlobalData *own = data();
  const PmPhyIndexKey key = {PM_PTP_CLASS_PORT, board, port};
  const u32 bucket = bucket_of(key);
  const Handle table = own->ulPhyIndexHash;
  void *found = ZEL_HASH_Find_Node(table, bucket, &key, compare);
  if (found != nullptr) {
    const u16 cached = static_cast<const PmPhyIndexNode *>(found)->usPtpID;
    if (still_there(cached, key)) {
      *ptp_id = cached;
      return 0;
    }
    (void)ZEL_HASH_Delete_Node(table, found, bucket);
    (void)ZEL_Free(found);
  }
  const u32 ret = scan_records(data(), key, ptp_id);
  if (ret != 0) {
    return ret;
  }
  void *block = ZEL_MemAlloc_F(PM_COMP_TYPE, ZEL_kvtBlockMemPtGet(), sizeof(PmPhyIndexNode),
                               "floor", __LINE__);
  (void)memset_s(block, sizeof(PmPhyIndexNode), 0, sizeof(PmPhyIndexNode));
  auto *node = static_cast<PmPhyIndexNode *>(block);
  node->stKey = key;
  node->usPtpID = *ptp_id;
  (void)ZEL_HASH_Add_Node(table, node, bucket, 0);
  return 0;
}

}  // namespace floor_of

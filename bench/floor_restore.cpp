// Restore by hand: a checked copy into the PTP's slot or node, and what the host is asked on the
// way. No function is booked, and no virtual system changes but from none to the first ones.
#include "bench/floor_restore.hpp"

#include "bench/floor.hpp"
#include "bench/floor_delivery.hpp"
#include "platform/kvt.h"

namespace floor_of {

namespace {

constexpr u32 pid = 407;

void read_current(u16 ptp_id, PtpDynPubData *current) {
  (void)memcpy_s(current, sizeof *current, &records(data())[ptp_id], sizeof *current);
}

// Does the PTP leave or enter virtual systems? Its mask and the other one are compared, and where
// they differ the PTP is asked for its membership.
u32 vs_change(u16 ptp_id, const PtpDynPubData &other) {
  if (ROOT_LibIsPidDepend(pid, ROOT_LibGetCurrentThis()) != 1) {
    return 0;
  }
  PtpDynPubData current;
  read_current(ptp_id, &current);
  if (current.ulVsMask == other.ulVsMask) {
    return 0;
  }
  if (existence(records(data())[ptp_id]) != 0) {
    ERR_InnerRecErr("floor", __LINE__, PM_ERR_PTP_NOT_EXIST);
    ERR_InnerRecErr("floor", __LINE__, ptp_id);
  } else {
    (void)data();
  }
  return current.ulVsMask & ~other.ulVsMask;
}

PmStaticDBNode *find_node(u16 ptp_id) {
  const auto compare = [](const void *key, const void *node) -> u32 {
    return static_cast<const PmStaticDBNode *>(node)->stData.usPtpID ==
                   *static_cast<const u16 *>(key)
               ? 0
               : 1;
  };
  return static_cast<PmStaticDBNode *>(
      ZEL_HASH_Find_Node(data()->ulStaticDbHash, ptp_id % 1024, &ptp_id, compare));
}

PmStaticDBNode *new_node(u16 ptp_id) {
  const Handle table = data()->ulStaticDbHash;
  void *block = ZEL_MemAlloc_F(PM_COMP_TYPE, ZEL_kvtBlockMemPtGet(), sizeof(PmStaticDBNode),
                               "floor", __LINE__);
  (void)memset_s(block, sizeof(PmStaticDBNode), 0, sizeof(PmStaticDBNode));
  (void)ZEL_HASH_Add_Node(table, block, ptp_id % 1024, 0);
  return static_cast<PmStaticDBNode *>(block);
}

bool is_absent(const PtpStaticData *record) {
  PtpStaticData absent;
  __builtin_memset(&absent, 0xFF, sizeof absent);
  return ZEL_MemCmp(record, &absent, sizeof absent) == 0;
}

void update_node(const PtpStaticData *record) {
  (void)data();
  const u16 ptp_id = record->usPtpID;
  PmStaticDBNode *node = find_node(ptp_id);
  if (node == nullptr) {
    node = new_node(ptp_id);
  }
  (void)memcpy_s(&node->stData, sizeof node->stData, record, sizeof *record);
}

}  // namespace

u32 restore_dynamic(u32 class_id, const void *key, const void *record, u32 length) {
  u32 id;
  __builtin_memcpy(&id, key, sizeof id);
  const auto ptp_id = static_cast<u16>(id);
  const PmGlobalData *own = data();
  if (class_id != 0x360011 || record == nullptr || length != sizeof(PtpDynPubData) ||
      !in_range(own, ptp_id)) {
    return PM_ERR_DATA_INVALID;
  }
  const auto &fresh = *static_cast<const PtpDynPubData *>(record);
  if (vs_change(ptp_id, fresh) != 0) {
    __builtin_trap();
  }
  PtpDynPubData *slot = &records(own)[ptp_id];
  const PtpDynPubData old = *slot;
  (void)memcpy_s(slot, sizeof *slot, record, sizeof *slot);
  (void)data();
  u8 finished = 0;
  (void)DDM_LibScribeIsClassBtFinished(0x360011, &finished);
  if (finished != 0) {
    if (vs_change(ptp_id, old) != 0) {
      __builtin_trap();
    }
    return 0;
  }
  PtpDynPubData current;
  read_current(ptp_id, &current);
  return current.ucExist != 0 ? deliver(PM_PRIM_EXIST, ptp_id, nullptr) : 0;
}

u32 restore_static(u32 class_id, const void *record, u32 length) {
  if (class_id != 0x360030 || record == nullptr || length != sizeof(PtpStaticData)) {
    return PM_ERR_DATA_INVALID;
  }
  (void)data();
  const auto *fresh = static_cast<const PtpStaticData *>(record);
  if (is_absent(fresh)) {
    __builtin_trap();
  }
  update_node(fresh);
  (void)SYN_LibModuleDataUnitModifyRecord(PM_SYN_MODULE, 0, fresh->usPtpID);
  return 0;
}

u32 extract_unit(u32 unit, void *buffer, u32 room, u32 *length) {
  if (SYN_LibIsCpuActive() == 0 || room < sizeof(PmSynRecord) ||
      !in_range(data(), static_cast<u16>(unit))) {
    return PM_ERR_PARA;
  }
  auto *record = static_cast<PmSynRecord *>(buffer);
  record->ucReserved = 0;
  record->ucModule = PM_SYN_MODULE;
  record->usLen = sizeof(PtpStaticData);
  record->usVersion = 0;
  const PmStaticDBNode *node = find_node(static_cast<u16>(unit));
  if (node == nullptr) {
    __builtin_trap();
  }
  (void)memcpy_s(&record->stData, sizeof node->stData, &node->stData, sizeof node->stData);
  *length = sizeof *record;
  return 0;
}

u32 restore_unit(u32 unit, const void *record, u32 length) {
  const auto *fresh = static_cast<const PmSynRecord *>(record);
  if (length != sizeof *fresh || fresh->usVersion != 0 ||
      !in_range(data(), static_cast<u16>(unit)) || fresh->usLen != sizeof(PtpStaticData)) {
    return PM_ERR_DATA_INVALID;
  }
  if (is_absent(&fresh->stData)) {
    __builtin_trap();
  }
  update_node(&fresh->stData);
  return 0;
}

// Descriptions are compared in the nodes, without a copy.
u32 find_description(const char *text, u32 num, u16 *ptp_id) {
  const u32 length = ZEL_StrLen(text);
  ask_switch(PM_SWITCH_FUNCTION);
  for (u32 i = 0; i < num && length != 0; ++i) {
    if ((i & 0x3FF) == 0x3FF) {
      ZEL_ClearWatchDog();
    }
    (void)data();
    const PmStaticDBNode *node = find_node(static_cast<u16>(i));
    if (node == nullptr) {
      return PM_ERR_PTP_NOT_EXIST;
    }
    if (KVT_StrNCmp(node->stData.szDescription, text, 32) == 0) {
      // An existing physical port: two reads of its record.
      (void)data();
      const PtpDynPubData &at = records(data())[i];
      *ptp_id = node->stData.usPtpID;
      return at.ucPtpClass == PM_PTP_CLASS_PORT ? existence(at) : u32{PM_ERR_FUNC_NULL};
    }
  }
  return PM_ERR_PTP_NOT_EXIST;
}

}  // namespace floor_of

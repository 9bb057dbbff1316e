// The per-instance record and the process-wide records.
//
// An instance's data is reached one way only: from the framework's current instance. Every entry
// point therefore has to run inside a framework call for that instance.
#ifndef PM_GLOBAL_DATA_HPP
#define PM_GLOBAL_DATA_HPP

#include <cstring>

#include "platform/root.h"
#include "pm_booking.h"
#include "pm_dynamic_data.h"
#include "pm_hooks.h"
#include "pm_identity.h"
#include "pm_spec.h"
#include "pm_sub_attr.h"
#include "pm_trace.h"

#pragma pack(push, 1)

struct PmBookNode {
  PmBookRecord stRecord;
  PmBookNode *pstNext;
};

struct PmBookTable {
  PmBookNode *apstHead[PM_PRIM_NUM];
};

using PmDbwinHandler = void (*)(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

struct PmDbwinCmd {
  u32 ulCommand;
  PmDbwinHandler pfnHandler;
  u32 ulReserved;
};

struct PmDbgSwitch {
  u32 ulValue;
  const char *pcDesc;
};

constexpr u32 dbwin_cmd_count = 10;

struct PmGlobalData {
  u32 ulConstructPara;
  u32 ulCid;
  u32 ulCompHandle;
  u16 usPtpTypeNum;
  PmSubInfoNode *pstSubInfoHead;
  PmSubInfoNode *pstSubInfoTail;
  PmDbwinCmd astDbwinCmd[dbwin_cmd_count];
  PmSubAttrCB *pstSubAttrCB;
  PmSubCallBackEntry *pstSubCallBack;
  PmBookTable *pstBookTable;
  PtpDynPubData **pstPtpDynPubData;
  PmPtpClassFunc astPtpClassFunc[PM_PTP_CLASS_NUM];
  PmDbgSwitch astDbgSwitch[PM_SWITCH_NUM];
  u32 ulStaticDbHash;
  u32 ulPhyIndexHash;
  PmProductMngt *pstInstProductMngt;
  u32 ulObjNumInDelete;

  // How many records the arrays above were allocated with. The counts that sized them may grow
  // later; no index beyond these is ever used.
  u32 ulDynRecordNum;
  u16 usSubInfoNum;
  u16 usSubCallBackNum;
  // Counts the changes of each booking list, so that a walk notices one made under its feet.
  u32 aulBookChange[PM_PRIM_NUM];
};

#pragma pack(pop)

PM_PIN_SIZE32(PmBookNode, 10);
PM_PIN_SIZE32(PmBookTable, 60);
PM_PIN_SIZE32(PmDbwinCmd, 12);
PM_PIN_SIZE32(PmDbgSwitch, 8);
PM_PIN_OFFSET32(PmGlobalData, ulCompHandle, 8);
PM_PIN_OFFSET32(PmGlobalData, usPtpTypeNum, 12);
PM_PIN_OFFSET32(PmGlobalData, pstSubInfoHead, 14);
PM_PIN_OFFSET32(PmGlobalData, astDbwinCmd, 22);
PM_PIN_OFFSET32(PmGlobalData, pstSubAttrCB, 142);
PM_PIN_OFFSET32(PmGlobalData, pstSubCallBack, 146);
PM_PIN_OFFSET32(PmGlobalData, pstBookTable, 150);
PM_PIN_OFFSET32(PmGlobalData, pstPtpDynPubData, 154);
PM_PIN_OFFSET32(PmGlobalData, astPtpClassFunc, 158);
PM_PIN_OFFSET32(PmGlobalData, astDbgSwitch, 182);
PM_PIN_OFFSET32(PmGlobalData, ulStaticDbHash, 214);
PM_PIN_OFFSET32(PmGlobalData, ulPhyIndexHash, 218);
PM_PIN_OFFSET32(PmGlobalData, pstInstProductMngt, 222);
PM_PIN_OFFSET32(PmGlobalData, ulObjNumInDelete, 226);
PM_PIN_OFFSET32(PmGlobalData, ulDynRecordNum, 230);

extern PmSpec g_stPmSpec;
extern PmAttrCB g_stPmAttrCB;
extern PmSubAttrNum g_stPmSubAttrCB;
extern PmProductMngt g_stPmProductMngt;

namespace pm {

// Data of the current instance; null outside one.
inline PmGlobalData *current_data() {
  const PmInstance *self = ROOT_LibGetCurrentThis();
  return self == nullptr ? nullptr : static_cast<PmGlobalData *>(self->pLocalData);
}

// One aligned or unaligned load and store of a whole value: a reader in another task sees the old
// 32-bit word or the new one.
template <typename Value>
Value load(const void *from) {
  Value value;
  std::memcpy(&value, from, sizeof value);
  return value;
}

template <typename Value>
void store(void *to, Value value) {
  std::memcpy(to, &value, sizeof value);
}

// The part of the description length that records have room for; the length as delivered may be
// anything.
inline u32 usable_desc_len() {
  return g_stPmSpec.ulDescMaxLen < PM_DESC_LEN_MAX ? g_stPmSpec.ulDescMaxLen
                                                   : static_cast<u32>(PM_DESC_LEN_MAX);
}

}  // namespace pm

#endif

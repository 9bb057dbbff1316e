/* Port types and their numbering: the per-instance control block, the records of the port types and
 * the table of their callbacks. */
#ifndef PM_SUB_ATTR_H
#define PM_SUB_ATTR_H

#include "pm_base.h"
#include "pm_sub_line.h"

PM_C_BEGIN

#pragma pack(push, 1)

/* Record of one port type, as data distribution delivers it; its index is the suffix. */
typedef struct PmSubInnerSubInfo {
  u16 usReserved;
  u16 usPtpType;
  u8 ucVisible;
  u8 ucReserved;
  u16 usCapType;
  u16 usCoClass;
} PmSubInnerSubInfo;

/* Control block of an instance's port types. */
typedef struct PmSubAttrCB {
  u16 usPtpTypeNum;      /* number of port types, so of suffixes */
  u16 usMaxPtpTypeValue; /* highest port type value */
  PmSubInnerSubInfo *pstSubInnerSubInfo;
} PmSubAttrCB;

/* Callbacks of one port type. */
typedef struct PmSubCallBackEntry {
  u16 usPtpType;
  PmSubCallBack stCallBack;
  u32 ulReserved; /* always zero */
} PmSubCallBackEntry;

#pragma pack(pop)

PM_PIN_SIZE(PmSubInnerSubInfo, 10);
PM_PIN_OFFSET(PmSubInnerSubInfo, usPtpType, 2);
PM_PIN_OFFSET(PmSubInnerSubInfo, ucVisible, 4);
PM_PIN_OFFSET(PmSubInnerSubInfo, usCapType, 6);
PM_PIN_OFFSET(PmSubInnerSubInfo, usCoClass, 8);
PM_PIN_SIZE32(PmSubAttrCB, 8);
PM_PIN_SIZE32(PmSubCallBackEntry, 42);
PM_PIN_OFFSET(PmSubCallBackEntry, stCallBack, 2);
PM_PIN_OFFSET32(PmSubCallBackEntry, ulReserved, 38);

PM_API u32 PM_LibMallocForSubAttrCB(void);
PM_API u32 PM_LibMallocSubAttrGlobalVar(void);
PM_API u32 PM_LibMallocSubCallBack(void);
PM_API u32 PM_LibSubAttrInit(void);
PM_API u32 PM_LibPtpTypeNumInit(void);
PM_API u32 PM_LibCfgReleaseMem(void);
PM_API u32 PM_LibPtpNumSpecInit(void);
PM_API u32 PM_LibSubInnerSubInfoInit(void);
PM_API u16 PM_LibGetPtpMaxTypeValue(void);

PM_C_END

#endif

/* Live attributes of a PTP, read through the callbacks of its port type's owner, and three that the
 * library answers from its own records. */
#ifndef PM_ATTRIBUTES_H
#define PM_ATTRIBUTES_H

#include "pm_base.h"

PM_C_BEGIN

enum {
  PM_PHY_ADDR_LEN = 6,
  PM_NAME_LEN = 32, /* characters of a name, which may lack a terminator */
  PM_STATS_SIZE = 104
};

/* Live attributes of a PTP, natural alignment. Zero-filled before every callback. */
typedef struct PmSubAttr {
  u32 ulMtu;
  u32 ulReceiveSpeed;
  u32 ulTransmitSpeed;
  u8 aucPhyAddr[6];
  u8 ucAdminStatus;
  u8 ucLinkState; /* 1 = connected */
  u32 ulTxQLen;
  u32 aulSpecific[2];
  char szName[32];
  u8 ucReserved;
  u8 ucPromiscuousMode;
  u32 ulCounterDiscontinuityTime;
  u32 ulReserved;
} PmSubAttr;

PM_PIN_SIZE(PmSubAttr, 76);
PM_PIN_OFFSET(PmSubAttr, aucPhyAddr, 12);
PM_PIN_OFFSET(PmSubAttr, ulTxQLen, 20);
PM_PIN_OFFSET(PmSubAttr, aulSpecific, 24);
PM_PIN_OFFSET(PmSubAttr, szName, 32);
PM_PIN_OFFSET(PmSubAttr, ucPromiscuousMode, 65);
PM_PIN_OFFSET(PmSubAttr, ulCounterDiscontinuityTime, 68);

/* Statistics of a PTP; the layout is its sub-line's business. */
typedef struct PmSubStats {
  u8 aucData[104];
} PmSubStats;

PM_PIN_SIZE(PmSubStats, 104);

/* Fields that a call of PmGetAttrPrivFunc must fill. */
enum {
  PM_SUB_ATTR_MTU = 0,        /* ulMtu */
  PM_SUB_ATTR_SPEED = 1,      /* ulReceiveSpeed, ulTransmitSpeed */
  PM_SUB_ATTR_LINK_STATE = 2, /* ucLinkState */
  PM_SUB_ATTR_TXQLEN = 3      /* ulTxQLen */
};

/* Fills the statistics. */
typedef u32 (*PmGetStatsFunc)(u16 usPtpID, PmSubStats *pstStats);
/* Fills the whole attribute record. */
typedef u32 (*PmGetAttrFunc)(u16 usPtpID, PmSubAttr *pstAttr);
/* Fills at least the fields of the selector, PM_SUB_ATTR_... */
typedef u32 (*PmGetAttrPrivFunc)(u16 usPtpID, u32 ulSelector, PmSubAttr *pstAttr);
/* Writes the active speeds. */
typedef u32 (*PmGetActiveSpeedFunc)(u16 usPtpID, u32 *pulTransmit, u32 *pulReceive);

PM_API u32 PM_LibGetSubAttrFromPTP(u16 usPtpID, PmSubAttr *pstAttr);
PM_API u32 PM_LibGetSubAttrFromPTPNEW(u16 usPtpID, u32 ulSelector, PmSubAttr *pstAttr);
PM_API u32 PM_LibGetSubActiveSpeedFromPTP(u16 usPtpID, u32 *pulTransmit, u32 *pulReceive);
PM_API u32 PM_LibGetSubStatsFromPTP(u16 usPtpID, PmSubStats *pstStats);

PM_API u32 PM_LibGetMtuFromPTP(u16 usPtpID, u32 *pulMtu);
PM_API u32 PM_LibGetSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive);
PM_API u32 PM_LibGetLinkStateFromPTP(u16 usPtpID, u8 *pucLinkState);
PM_API u32 PM_LibGetTxQLenFromPTP(u16 usPtpID, u32 *pulTxQLen);
PM_API u32 PM_LibGetNameFromPTP(u16 usPtpID, u32 ulNameLength, char *pcName);
PM_API u32 PM_LibGetPhyAddrFromPTP(u16 usPtpID, u32 ulLen, u8 *pucPhyAddr);
PM_API u32 PM_LibGetSpecificFromPTP(u16 usPtpID, u32 *pulSpecific);
PM_API u32 PM_LibGetAdminStatusFromPTP(u16 usPtpID, u8 *pucAdminStatus);
PM_API u32 PM_LibGetPromiscuousModeFromPTP(u16 usPtpID, u8 *pucPromiscuousMode);
PM_API u32 PM_LibGetCounterDiscontinuityTimeFromPTP(u16 usPtpID, u32 *pulTime);
PM_API u32 PM_LibGetStatisticFromPTP(u16 usPtpID, PmSubStats *pstStats);
PM_API u32 PM_LibGetActiveSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive);
PM_API u32 PM_LibGetConnPresentFromPTP(u16 usPtpID, u8 *pucConnPresent);
PM_API u32 PM_LibGetAliasFromPTP(u16 usPtpID, u32 ulLen, u8 *pucAlias);
PM_API u32 PM_LibGetLastChangeTickFromPTP(u16 usPtpID, u32 *pulTick);
PM_API u32 PM_LibGetlinkTrapSwitchFromPTP(u16 usPtpID, u8 *pucSwitch);

PM_C_END

#endif

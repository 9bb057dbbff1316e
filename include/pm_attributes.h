/** @file
 * Live attributes of a PTP, read through the callbacks of its port type's sub-line, and three that
 * the library answers from its own records.
 *
 * Two layers. PM_LibGetSub...FromPTP call one callback each and hand the caller's buffer to it as
 * it is. The members of the family, PM_LibGet...FromPTP, check their arguments, read through that
 * layer into a cleared record of their own and write their outputs on success only. The encodings
 * and units of the values are the product's; they pass through unchanged.
 *
 * A failing pfnGetAttr or pfnGetAttrPriv is recorded and not passed on: the members then answer 0
 * and what the callback has written, zeros where it has written nothing.
 *
 * Nothing is kept between calls. All of it may be called in any task of the process once the
 * instance's tables have arrived; the callbacks run inside the call. */
#ifndef PM_ATTRIBUTES_H
#define PM_ATTRIBUTES_H

#include "pm_base.h"

PM_C_BEGIN

enum {
  PM_PHY_ADDR_LEN = 6,
  PM_NAME_LEN = 32, /**< characters of a name, which may lack a terminator */
  PM_STATS_SIZE = 104
};

/** Live attributes of a PTP, natural alignment. Zero-filled before every callback. */
typedef struct PmSubAttr {
  u32 ulMtu;                      /**< MTU */
  u32 ulReceiveSpeed;             /**< receive speed */
  u32 ulTransmitSpeed;            /**< transmit speed */
  u8 aucPhyAddr[6];               /**< physical address */
  u8 ucAdminStatus;               /**< the sub-line's own value */
  u8 ucLinkState;                 /**< 1 = connected */
  u32 ulTxQLen;                   /**< transmit queue length */
  u32 aulSpecific[2];             /**< the product's own */
  char szName[32];                /**< may lack a terminator */
  u8 ucReserved;                  /**< not read by the library */
  u8 ucPromiscuousMode;           /**< the sub-line's own value */
  u32 ulCounterDiscontinuityTime; /**< as the sub-line counts it */
  u32 ulReserved;                 /**< not read by the library */
} PmSubAttr;

PM_PIN_SIZE(PmSubAttr, 76);
PM_PIN_OFFSET(PmSubAttr, aucPhyAddr, 12);
PM_PIN_OFFSET(PmSubAttr, ulTxQLen, 20);
PM_PIN_OFFSET(PmSubAttr, aulSpecific, 24);
PM_PIN_OFFSET(PmSubAttr, szName, 32);
PM_PIN_OFFSET(PmSubAttr, ucPromiscuousMode, 65);
PM_PIN_OFFSET(PmSubAttr, ulCounterDiscontinuityTime, 68);

/** Statistics of a PTP; the layout is its sub-line's business. */
typedef struct PmSubStats {
  u8 aucData[104]; /**< the sub-line's own layout, handed through */
} PmSubStats;

PM_PIN_SIZE(PmSubStats, 104);

/** Fields that a call of PmGetAttrPrivFunc must fill. */
enum {
  PM_SUB_ATTR_MTU = 0,        /**< ulMtu */
  PM_SUB_ATTR_SPEED = 1,      /**< ulReceiveSpeed, ulTransmitSpeed */
  PM_SUB_ATTR_LINK_STATE = 2, /**< ucLinkState */
  PM_SUB_ATTR_TXQLEN = 3      /**< ulTxQLen */
};

/* The callback slots that answer for a PTP; when each is called, and what its failure means, stands
 * with PmSubCallBack. */

/** Fills the statistics. */
typedef u32 (*PmGetStatsFunc)(u16 usPtpID, PmSubStats *pstStats);
/** Fills the whole attribute record. */
typedef u32 (*PmGetAttrFunc)(u16 usPtpID, PmSubAttr *pstAttr);
/** Fills at least the fields of the selector, PM_SUB_ATTR_... */
typedef u32 (*PmGetAttrPrivFunc)(u16 usPtpID, u32 ulSelector, PmSubAttr *pstAttr);
/** Writes the active speeds. */
typedef u32 (*PmGetActiveSpeedFunc)(u16 usPtpID, u32 *pulTransmit, u32 *pulReceive);

/**
 * Calls pfnGetAttr of the PTP's sub-line.
 *
 * @param[in]  usPtpID  PTP ID
 * @param[out] pstAttr  cleared record, handed to the callback
 * @retval 0                 called, whatever it answered
 * @retval PM_ERR_FUNC_NULL  the slot is empty
 * @return otherwise the code of PM_LibGetSubFuncFromPTP
 */
PM_API u32 PM_LibGetSubAttrFromPTP(u16 usPtpID, PmSubAttr *pstAttr);

/**
 * Calls pfnGetAttrPriv of the PTP's sub-line.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[in]  ulSelector  PM_SUB_ATTR_..., handed to the callback unchecked
 * @param[out] pstAttr     cleared record, handed to the callback
 * @retval 0                 called, whatever it answered
 * @retval PM_ERR_FUNC_NULL  the slot is empty
 * @return otherwise the code of PM_LibGetSubFuncFromPTP
 */
PM_API u32 PM_LibGetSubAttrFromPTPNEW(u16 usPtpID, u32 ulSelector, PmSubAttr *pstAttr);

/**
 * Calls pfnGetActiveSpeed of the PTP's sub-line.
 *
 * @param[in]  usPtpID      PTP ID
 * @param[out] pulTransmit  active transmit speed, handed to the callback
 * @param[out] pulReceive   active receive speed, handed to the callback
 * @retval 0                 called, and it answered 0
 * @retval PM_ERR_FUNC_NULL  the slot is empty
 * @return otherwise the code of PM_LibGetSubFuncFromPTP or of the callback
 */
PM_API u32 PM_LibGetSubActiveSpeedFromPTP(u16 usPtpID, u32 *pulTransmit, u32 *pulReceive);

/**
 * Calls pfnGetStats of the PTP's sub-line.
 *
 * @param[in]  usPtpID   PTP ID
 * @param[out] pstStats  cleared block, handed to the callback
 * @retval 0                 called, and it answered 0
 * @retval PM_ERR_FUNC_NULL  the slot is empty
 * @return otherwise the code of PM_LibGetTypeFromPTP, of PM_LibGetSubFunc or of the callback
 */
PM_API u32 PM_LibGetSubStatsFromPTP(u16 usPtpID, PmSubStats *pstStats);

/**
 * MTU of a PTP.
 *
 * @param[in]  usPtpID  PTP ID
 * @param[out] pulMtu   MTU
 * @retval 0            written
 * @retval PM_ERR_PARA  pulMtu is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTPNEW
 */
PM_API u32 PM_LibGetMtuFromPTP(u16 usPtpID, u32 *pulMtu);

/**
 * Speeds of a PTP.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[out] pulTrasmit  transmit speed
 * @param[out] pulReceive  receive speed
 * @retval 0            both written
 * @retval PM_ERR_PARA  an output is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTPNEW
 */
PM_API u32 PM_LibGetSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive);

/**
 * Link state of a PTP.
 *
 * @param[in]  usPtpID       PTP ID
 * @param[out] pucLinkState  link state; only 1 counts as connected
 * @retval 0            written
 * @retval PM_ERR_PARA  pucLinkState is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTPNEW
 */
PM_API u32 PM_LibGetLinkStateFromPTP(u16 usPtpID, u8 *pucLinkState);

/**
 * Transmit queue length of a PTP.
 *
 * @param[in]  usPtpID    PTP ID
 * @param[out] pulTxQLen  length
 * @retval 0            written
 * @retval PM_ERR_PARA  pulTxQLen is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTPNEW
 */
PM_API u32 PM_LibGetTxQLenFromPTP(u16 usPtpID, u32 *pulTxQLen);

/**
 * Name of a PTP.
 *
 * @param[in]  usPtpID       PTP ID
 * @param[in]  ulNameLength  size of pcName in bytes, at least PM_NAME_LEN + 1
 * @param[out] pcName        the name, at most PM_NAME_LEN characters, with a terminator
 * @retval 0                written
 * @retval PM_ERR_PARA      pcName is null
 * @retval PM_ERR_NAME_LEN  ulNameLength is too small
 * @retval PM_ERR_STR_OPER  the bounded copy failed
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTP
 */
PM_API u32 PM_LibGetNameFromPTP(u16 usPtpID, u32 ulNameLength, char *pcName);

/**
 * Physical address of a PTP.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[in]  ulLen       size of pucPhyAddr in bytes, PM_PHY_ADDR_LEN exactly
 * @param[out] pucPhyAddr  the address
 * @retval 0                   written
 * @retval PM_ERR_PARA         pucPhyAddr is null
 * @retval PM_ERR_PHYADDR_LEN  ulLen is not PM_PHY_ADDR_LEN
 * @retval PM_ERR_MEM_OPER     the bounded copy failed
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTP
 */
PM_API u32 PM_LibGetPhyAddrFromPTP(u16 usPtpID, u32 ulLen, u8 *pucPhyAddr);

/**
 * The product's own two words of a PTP.
 *
 * @param[in]  usPtpID      PTP ID
 * @param[out] pulSpecific  receives two words
 * @retval 0            written
 * @retval PM_ERR_PARA  pulSpecific is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTP
 */
PM_API u32 PM_LibGetSpecificFromPTP(u16 usPtpID, u32 *pulSpecific);

/**
 * Administrative status of a PTP.
 *
 * @param[in]  usPtpID         PTP ID
 * @param[out] pucAdminStatus  status
 * @retval 0            written
 * @retval PM_ERR_PARA  pucAdminStatus is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTP
 */
PM_API u32 PM_LibGetAdminStatusFromPTP(u16 usPtpID, u8 *pucAdminStatus);

/**
 * Promiscuous mode of a PTP.
 *
 * @param[in]  usPtpID             PTP ID
 * @param[out] pucPromiscuousMode  mode
 * @retval 0            written
 * @retval PM_ERR_PARA  pucPromiscuousMode is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTP
 */
PM_API u32 PM_LibGetPromiscuousModeFromPTP(u16 usPtpID, u8 *pucPromiscuousMode);

/**
 * Counter discontinuity time of a PTP.
 *
 * @param[in]  usPtpID  PTP ID
 * @param[out] pulTime  time
 * @retval 0            written
 * @retval PM_ERR_PARA  pulTime is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubAttrFromPTP
 */
PM_API u32 PM_LibGetCounterDiscontinuityTimeFromPTP(u16 usPtpID, u32 *pulTime);

/**
 * Statistics of a PTP.
 *
 * @param[in]  usPtpID   PTP ID
 * @param[out] pstStats  receives the 104 bytes
 * @retval 0            written
 * @retval PM_ERR_PARA  pstStats is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubStatsFromPTP
 */
PM_API u32 PM_LibGetStatisticFromPTP(u16 usPtpID, PmSubStats *pstStats);

/**
 * Active speeds of a PTP.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[out] pulTrasmit  active transmit speed
 * @param[out] pulReceive  active receive speed
 * @retval 0            both written
 * @retval PM_ERR_PARA  an output is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetSubActiveSpeedFromPTP
 */
PM_API u32 PM_LibGetActiveSpeedFromPTP(u16 usPtpID, u32 *pulTrasmit, u32 *pulReceive);

/**
 * Is a connection present at a PTP?
 *
 * @param[in]  usPtpID         PTP ID
 * @param[out] pucConnPresent  1 when the link state is 1, else 2
 * @retval 0            written
 * @retval PM_ERR_PARA  pucConnPresent is null
 * @return otherwise the code of PM_LibIfPtpExist or of PM_LibGetLinkStateFromPTP
 */
PM_API u32 PM_LibGetConnPresentFromPTP(u16 usPtpID, u8 *pucConnPresent);

/**
 * Description of a PTP, under its other name.
 *
 * @param[in]  usPtpID   PTP ID
 * @param[in]  ulLen     size of pucAlias in bytes, more than the description length
 * @param[out] pucAlias  the description, with a terminator
 * @retval 0            written
 * @retval PM_ERR_PARA  pucAlias is null
 * @return otherwise the code of PM_LibGetDescFromPTP, which makes all further checks
 */
PM_API u32 PM_LibGetAliasFromPTP(u16 usPtpID, u32 ulLen, u8 *pucAlias);

/**
 * Tick of the last change of a PTP, from its dynamic record.
 *
 * @param[in]  usPtpID  PTP ID
 * @param[out] pulTick  tick
 * @retval 0            written
 * @retval PM_ERR_PARA  pulTick is null
 * @return otherwise the code of PM_LibGetDynPubDataAttr
 */
PM_API u32 PM_LibGetLastChangeTickFromPTP(u16 usPtpID, u32 *pulTick);

/**
 * Link up/down trap switch of a physical port, from its static record.
 *
 * @param[in]  usPtpID    PTP ID
 * @param[out] pucSwitch  1 = on, any other value = off
 * @retval 0            written
 * @retval PM_ERR_PARA  pucSwitch is null
 * @return otherwise the code of PM_LibIfPhyPtpExist or of PM_LibStaticDataGetDataFromPTP
 */
PM_API u32 PM_LibGetlinkTrapSwitchFromPTP(u16 usPtpID, u8 *pucSwitch);

PM_C_END

#endif

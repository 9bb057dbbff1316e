/** @file
 * From a place to the PTP ID. Answers are cached; a cached answer is checked against the PTP's
 * record before it is given, so writers of the records never touch the cache. "None" is not cached:
 * asking for a place without a PTP scans all records every time. */
#ifndef PM_REVERSE_LOOKUP_H
#define PM_REVERSE_LOOKUP_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** What a cached answer is found by. */
typedef struct PmPhyIndexKey {
  u8 ucPtpClass; /**< PTP class */
  u16 usIndex1;  /**< first physical index */
  u16 usIndex2;  /**< second physical index */
} PmPhyIndexKey;

/** A cached answer; the link words belong to the host's hash table. */
typedef struct PmPhyIndexNode {
  PmWord aulLink[3];   /**< the host's hash table's own */
  PmPhyIndexKey stKey; /**< what was asked */
  u16 usPtpID;         /**< what was answered */
} PmPhyIndexNode;

#pragma pack(pop)

PM_PIN_SIZE(PmPhyIndexKey, 5);
PM_PIN_SIZE32(PmPhyIndexNode, 19);
PM_PIN_OFFSET32(PmPhyIndexNode, usPtpID, 17);

/**
 * PTP with a class and two indexes, through the cache.
 *
 * @param[in]  ucPtpClass  PTP class
 * @param[in]  usIndex1    first physical index
 * @param[in]  usIndex2    second physical index
 * @param[out] pusPtpID    PTP ID; of several the lowest
 * @retval 0                     found
 * @retval PM_ERR_PTP_NOT_EXIST  there is none
 * @retval PM_ERR_PARA           no dynamic record has arrived yet, pusPtpID is null, there is no
 *                               current instance, or the cache could not be created; also when no
 *                               memory was left for the new entry, and then the answer is written
 */
PM_API u32 PM_LibGetPtpFromPhyIndexOnSrv(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID);

/**
 * PTP with a class and two indexes, by scanning the records; a record counts when its ucExist is
 * exactly 1.
 *
 * @param[in]  ucPtpClass  PTP class
 * @param[in]  usIndex1    first physical index
 * @param[in]  usIndex2    second physical index
 * @param[out] pusPtpID    PTP ID; of several the lowest; written on success only
 * @retval 0                     found
 * @retval PM_ERR_PTP_NOT_EXIST  there is none
 * @retval PM_ERR_PARA           no dynamic record has arrived yet, pusPtpID is null, or there is no
 *                               current instance
 */
PM_API u32 PM_LibGetPtpFromPhyIndexOnSrvByEnum(u8 ucPtpClass, u16 usIndex1, u16 usIndex2,
                                               u16 *pusPtpID);

/**
 * Physical port on a board.
 *
 * @param[in]  usBIndex  board index
 * @param[in]  ucPort    port number
 * @param[out] pusPtpID  PTP ID; a record whose usIndex2 is above 255 is never found
 * @return as PM_LibGetPtpFromPhyIndexOnSrv
 */
PM_API u32 PM_LibGetPtpFromPhyIndex(u16 usBIndex, u8 ucPort, u16 *pusPtpID);

/**
 * PTP of either class.
 *
 * @param[in]  ucPtpClass  PTP class, 0 or 1
 * @param[in]  usIndex1    first physical index
 * @param[in]  usIndex2    second physical index
 * @param[out] pusPtpID    PTP ID
 * @retval PM_ERR_DATA_INVALID  the class is above 1
 * @return otherwise as PM_LibGetPtpFromPhyIndexOnSrv
 */
PM_API u32 PM_LibGetPtpFromPhyIndexEx(u8 ucPtpClass, u16 usIndex1, u16 usIndex2, u16 *pusPtpID);

/**
 * Physical port at a frame, slot and port.
 *
 * @param[in]  usFrameID  frame ID
 * @param[in]  ucSlotID   slot ID
 * @param[in]  ucPortID   port number
 * @param[out] pusPtpID   PTP ID; written on success only
 * @retval 0            found
 * @retval PM_ERR_PARA  pusPtpID is null
 * @return otherwise the code of the device layer or of PM_LibGetPtpFromPhyIndex
 */
PM_API u32 PM_LibGetPtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID);

/**
 * Compare function of the cache.
 *
 * @param pKey   PmPhyIndexKey
 * @param pNode  PmPhyIndexNode
 * @retval 0  the node carries the key
 * @retval 1  it does not, or a pointer is null
 */
PM_API u32 Pm_Lib_CmpFromPhyInfo(const void *pKey, const void *pNode);

PM_C_END

#endif

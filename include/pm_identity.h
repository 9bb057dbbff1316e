/** @file
 * From a PTP ID to its class, place and port type. Outputs are written on success only. */
#ifndef PM_IDENTITY_H
#define PM_IDENTITY_H

#include "pm_base.h"

PM_C_BEGIN

/** Reads the board index and port number of a PTP of the class; returns 0 on success. */
typedef u32 (*PmGetPhyIndexFunc)(u16 usPtpID, u16 *pusBIndex, u8 *pucPort);
/** A function that the library stores and never calls. */
typedef u32 (*PmUncalledFunc)(void);

/** What a product registers for a PTP class. Copied whole at registration. */
typedef struct PmPtpClassFunc {
  PmUncalledFunc pfnFunc0;          /**< not called by the library */
  PmUncalledFunc pfnFunc1;          /**< not called by the library */
  PmGetPhyIndexFunc pfnGetPhyIndex; /**< place of a PTP of the class */
} PmPtpClassFunc;

PM_PIN_SIZE32(PmPtpClassFunc, 12);

/**
 * Registers the functions of a PTP class with the current instance; a later registration replaces
 * them.
 *
 * @param ucPtpClass    PTP class, 0 or 1
 * @param pstClassFunc  the functions, copied
 * @retval 0                    registered
 * @retval PM_ERR_PARA          pstClassFunc is null, or no current instance
 * @retval PM_ERR_DATA_INVALID  the class is above 1
 */
PM_API u32 PM_LibRegPtpClassFunc(u8 ucPtpClass, const PmPtpClassFunc *pstClassFunc);

/**
 * Board index and port of a PTP: from its record for class 0, else through the function registered
 * for its class.
 *
 * @param[in]  usPtpID    PTP ID
 * @param[out] pusBIndex  board index
 * @param[out] pucPort    port number on the board; for class 0 the low byte of usIndex2
 * @retval 0            written
 * @retval PM_ERR_PARA  an output is null, or the class has no function
 * @return otherwise the code of the record's read (PM_LibGetDynPubDataAttr) or of the class
 * function
 */
PM_API u32 PM_LibGetPhyIndexFromPTP(u16 usPtpID, u16 *pusBIndex, u8 *pucPort);

/**
 * Board index and port of a PTP through the function registered for a class.
 *
 * @param[in]  ucPtpClass  PTP class, 0 or 1
 * @param[in]  usPtpID     PTP ID, handed to the function
 * @param[out] pusBIndex   board index
 * @param[out] pucPort     port number on the board
 * @retval 0                    written
 * @retval PM_ERR_DATA_INVALID  the class is above 1
 * @retval PM_ERR_PARA          no function is registered for the class, an output is null, or no
 *                              current instance
 * @return otherwise the function's result
 */
PM_API u32 PM_LibGetPhyIndexFromPTPEnc(u8 ucPtpClass, u16 usPtpID, u16 *pusBIndex, u8 *pucPort);

/**
 * Class and indexes of a PTP as its record holds them, whatever its class.
 *
 * @param[in]  usPtpID      PTP ID
 * @param[out] pucPtpClass  PTP class
 * @param[out] pusIndex1    first physical index
 * @param[out] pusIndex2    second physical index
 * @retval 0            written
 * @retval PM_ERR_PARA  an output is null
 * @return otherwise the code of the record's read (PM_LibGetDynPubDataAttr)
 */
PM_API u32 PM_LibGetPhyIndexFromPTPEx(u16 usPtpID, u8 *pucPtpClass, u16 *pusIndex1, u16 *pusIndex2);

/**
 * Frame, slot and port of a PTP.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[out] pusFrameID  frame ID
 * @param[out] pucSlotID   slot ID
 * @param[out] pucPortID   port number
 * @retval 0            written
 * @retval PM_ERR_PARA  an output is null
 * @return otherwise the code of PM_LibGetPhyIndexFromPTP or of the device layer
 */
PM_API u32 PM_LibGetFSPFromPtp(u16 usPtpID, u16 *pusFrameID, u8 *pucSlotID, u8 *pucPortID);

/**
 * Port type of a PTP.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[out] pusPtpType  port type
 * @retval 0            written
 * @retval PM_ERR_PARA  pusPtpType is null
 * @return otherwise the code of the record's read (PM_LibGetDynPubDataAttr)
 */
PM_API u32 PM_LibGetTypeFromPTP(u16 usPtpID, u16 *pusPtpType);

/**
 * Does the PTP exist?
 *
 * @param usPtpID  PTP ID
 * @retval 0                     yes
 * @retval PM_ERR_PTP_NOT_EXIST  no
 * @retval PM_ERR_PTPID_RANGE    usPtpID is above the maximum PTP ID or beyond the store
 * @retval PM_ERR_PARA           no dynamic record has arrived yet
 */
PM_API u32 PM_LibIfPtpExist(u16 usPtpID);

/**
 * Does the PTP exist as a physical port?
 *
 * @param usPtpID  PTP ID
 * @retval 0                 yes
 * @retval PM_ERR_FUNC_NULL  it exists and is of another class
 * @return otherwise as PM_LibIfPtpExist
 */
PM_API u32 PM_LibIfPhyPtpExist(u16 usPtpID);

PM_C_END

#endif

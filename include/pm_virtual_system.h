/** @file
 * Virtual systems, visibility and the physical state of ports.
 *
 * A PTP belongs to the virtual systems whose bits are set in its ulVsMask. There are nine; a higher
 * bit is no virtual system, but the membership test reads it and the exclusive test minds it. */
#ifndef PM_VIRTUAL_SYSTEM_H
#define PM_VIRTUAL_SYSTEM_H

#include "pm_base.h"

PM_C_BEGIN

enum { PM_VS_NUM = 9 /**< virtual systems 0 to 8 */ };

/**
 * How many virtual systems a mask names.
 *
 * @param ulVsMask  mask; bits above 8 do not count
 * @return the number, 0 to 9 (not a result code)
 */
PM_API u32 PM_LibGetVsNumByVsMask(u32 ulVsMask);

/**
 * The mask of a PTP's virtual systems, as its record holds it.
 *
 * @param[in]  usPtpID    PTP ID
 * @param[out] pulVsMask  mask; written on success only
 * @retval 0                     written
 * @retval PM_ERR_PARA           pulVsMask is null
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist, or its record can't be read
 */
PM_API u32 PM_LibGetVsMaskFromPtp(u16 usPtpID, u32 *pulVsMask);

/**
 * Does the PTP belong to the virtual system?
 *
 * @param usPtpID  PTP ID
 * @param ulVsID   virtual system; any value, taken modulo 32
 * @retval 0                     yes
 * @retval PM_ERR_PTP_NOT_IN_VS  no
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist, or its record can't be read
 */
PM_API u32 PM_LibIfPtpInVs(u16 usPtpID, u32 ulVsID);

/**
 * Does the PTP belong to the virtual system and to no other? No other bit of the mask may be set,
 * the bits above 8 included.
 *
 * @param usPtpID  PTP ID
 * @param ulVsID   virtual system 0 to 8
 * @retval 0                     yes
 * @retval PM_ERR_VS_CONDITION   no
 * @retval PM_ERR_DATA_INVALID   ulVsID is above 8
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist, or its record can't be read
 */
PM_API u32 PM_LibIfPtpOnlyInOneVs(u16 usPtpID, u32 ulVsID);

/**
 * Does the PTP belong to more than one virtual system?
 *
 * @param usPtpID  PTP ID
 * @retval 0                     yes
 * @retval PM_ERR_VS_CONDITION   no
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist, or its record can't be read
 */
PM_API u32 PM_LibIfPortBelongMultiVs(u16 usPtpID);

/**
 * The virtual system that manages a PTP: its only one, or 0 when it has several.
 *
 * @param[in]  usPtpID  PTP ID
 * @param[out] pusVsID  virtual system 0 to 8; written on success only
 * @retval 0                     written
 * @retval 1                     the PTP belongs to none
 * @retval PM_ERR_PARA           pusVsID is null
 * @retval PM_ERR_PTP_NOT_EXIST  the PTP does not exist, or its record can't be read
 */
PM_API u32 PM_LibGetPtpMngtVsID(u16 usPtpID, u16 *pusVsID);

/**
 * Is the PTP visible? Every ucInvisible other than 1 counts as visible.
 *
 * @param usPtpID  PTP ID
 * @retval 0                     yes
 * @retval PM_ERR_PTP_INVISIBLE  no
 * @return otherwise the code of the record's read (PM_LibGetDynPubDataAttr)
 */
PM_API u32 PM_LibIsPtpVisible(u16 usPtpID);

/**
 * The physical port at a frame, slot and port, if it is visible.
 *
 * @param[in]  usFrameID  frame ID
 * @param[in]  ucSlotID   slot ID
 * @param[in]  ucPortID   port number
 * @param[out] pusPtpID   PTP ID; written on success only
 * @retval 0                     found
 * @retval PM_ERR_PARA           pusPtpID is null
 * @retval PM_ERR_PTP_INVISIBLE  the port is invisible
 * @return otherwise the code of PM_LibGetPtpFromFSP or PM_LibIsPtpVisible
 */
PM_API u32 PM_LibGetVisiblePtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID);

/**
 * Is a visible physical port connected with its board's LAN switch?
 *
 * @param[in]  usPtpID      PTP ID
 * @param[out] pucPhyState  1 = connected, or an e-switch port; 0 = not connected; written on
 *                          success only
 * @retval 0                     written
 * @retval PM_ERR_PARA           pucPhyState is null
 * @retval PM_ERR_PTP_INVISIBLE  the PTP is invisible
 * @return otherwise the code of PM_LibIfPhyPtpExist, PM_LibIsPtpVisible, PM_LibGetPhyIndexFromPTP
 * or of the device layer for the frame and slot of the board
 */
PM_API u32 PM_LibGetPtpPhyStateFromPTP(u16 usPtpID, u8 *pucPhyState);

PM_C_END

#endif

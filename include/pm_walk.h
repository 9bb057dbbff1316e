/** @file
 * Walks over the physical ports in frame, slot, port order.
 *
 * A walk has no state: every call is given the PTP before and answers the next one, so it can stop
 * and go on at will. It starts from PM_PTP_ID_NONE and ends with PM_ERR_NO_MORE. Only PTPs of class
 * PM_PTP_CLASS_PORT are answered. The output is written only with a PTP that was found.
 *
 * The records are read as they are at each call: a PTP that comes or goes between two calls is seen
 * or missed by its place. Long steps feed the watchdog. */
#ifndef PM_WALK_H
#define PM_WALK_H

#include "pm_base.h"

PM_C_BEGIN

/** Visibility filter of the inner steps, compared with a record's ucInvisible. */
enum { PM_FILTER_VISIBLE = 0, PM_FILTER_INVISIBLE = 1, PM_FILTER_ALL = 2 };

enum { PM_VS_ID_ALL = 0xFFFF /**< no virtual-system filter */ };

/**
 * The next physical port, visible or not.
 *
 * @param[in]  usBIndex      board index; PM_BINDEX_ALL walks the whole chassis
 * @param[in]  usPtpID       PTP before; PM_PTP_ID_NONE starts the walk
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[out] pusNextPtpID  next PTP
 * @retval 0               found
 * @retval PM_ERR_PARA     pusNextPtpID is null
 * @retval PM_ERR_NO_MORE  end of the walk, or any failure: failures show in the error records only
 */
PM_API u32 PM_LibGetNextPtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType, u16 *pusNextPtpID);

/**
 * The next visible physical port: one whose ucInvisible is exactly 0.
 *
 * @param[in]  usBIndex      board index; PM_BINDEX_ALL walks the whole chassis
 * @param[in]  usPtpID       PTP before, itself visible or not; PM_PTP_ID_NONE starts the walk
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[out] pusNextPtpID  next PTP
 * @retval 0               found
 * @retval PM_ERR_PARA     pusNextPtpID is null
 * @retval PM_ERR_NO_MORE  end of the walk, or any failure: failures show in the error records only
 */
PM_API u32 PM_LibGetNextVisiblePtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType,
                                          u16 *pusNextPtpID);

/**
 * The next physical port of a virtual system, visible or not.
 *
 * @param[in]  ulVsID        virtual system 0 to 8; PM_VS_ID_ALL makes the call the same as
 *                           PM_LibGetNextPtpFromPTP
 * @param[in]  usBIndex      board index; PM_BINDEX_ALL walks the whole chassis
 * @param[in]  usPtpID       PTP before, of any virtual system; PM_PTP_ID_NONE starts the walk
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[out] pusNextPtpID  next PTP
 * @retval 0                    found
 * @retval PM_ERR_PARA          pusNextPtpID is null
 * @retval PM_ERR_DATA_INVALID  ulVsID is neither 0 to 8 nor PM_VS_ID_ALL
 * @retval PM_ERR_NO_MORE       end of the walk, any failure, or 65,536 ports passed without one of
 *                              the virtual system
 */
PM_API u32 PM_LibGetNextPtpFromVS(u32 ulVsID, u16 usBIndex, u16 usPtpID, u16 usPtpType,
                                  u16 *pusNextPtpID);

/**
 * The step common to the public walks: refuses to go on from a PTP that is no physical port, then
 * walks the chassis or the board.
 *
 * @param[in]  usBIndex      board index; PM_BINDEX_ALL walks the whole chassis
 * @param[in]  usPtpID       PTP before; PM_PTP_ID_NONE starts the walk
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[in]  ucFilter      PM_FILTER_...
 * @param[out] pusNextPtpID  next PTP
 * @retval 0               found
 * @retval PM_ERR_PARA     pusNextPtpID is null
 * @retval PM_ERR_NO_MORE  end of the walk, or usPtpID is of another class
 * @return otherwise the code of the record's read (PM_LibGetDynPubDataAttr), of
 * PM_LibGetNextPtpIdByPtpID or of PM_LibGetNextPtpIdByBIndex
 */
PM_API u32 PM_LibPtpIdGetNextFromPortPtp(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                         u16 *pusNextPtpID);

/**
 * The next physical port of the chassis. What fails in a frame or slot, the PTP's own board
 * included, passes that frame or slot over.
 *
 * @param[in]  usPtpID       PTP before; PM_PTP_ID_NONE starts at frame 0, slot 0
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[in]  ucFilter      PM_FILTER_...
 * @param[out] pusNextPtpID  next PTP
 * @retval 0               found
 * @retval PM_ERR_PARA     pusNextPtpID is null
 * @retval PM_ERR_NO_MORE  end of the chassis
 * @return otherwise the code of PM_LibGetPhyIndexFromPTP for usPtpID or of the device layer for the
 * frame and slot of its board
 */
PM_API u32 PM_LibGetNextPtpIdByPtpID(u16 usPtpID, u16 usPtpType, u8 ucFilter, u16 *pusNextPtpID);

/**
 * The next physical port of one board.
 *
 * @param[in]  usBIndex      board index
 * @param[in]  usPtpID       PTP before, on this board; PM_PTP_ID_NONE starts at port 0
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[in]  ucFilter      PM_FILTER_...
 * @param[out] pusNextPtpID  next PTP
 * @retval 0                    found
 * @retval PM_ERR_PARA          pusNextPtpID is null
 * @retval PM_ERR_DATA_INVALID  usPtpID sits on another board
 * @retval PM_ERR_NO_MORE       end of the board
 * @return otherwise the code of DEV_LibIfBoardExist, of PM_LibGetPhyIndexFromPTP or of
 * PM_LibGetNextPtpIdInBoardByPort
 */
PM_API u32 PM_LibGetNextPtpIdByBIndex(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                      u16 *pusNextPtpID);

/**
 * The first physical port of a board from a port number on. Feeds the watchdog at every port number
 * that is a multiple of 32.
 *
 * @param[in]  usBIndex      board index
 * @param[in]  ucPort        port number to begin with
 * @param[in]  usPtpType     port type; PM_PTP_TYPE_ALL for any
 * @param[in]  ucFilter      PM_FILTER_...
 * @param[out] pusNextPtpID  next PTP
 * @retval 0               found
 * @retval PM_ERR_PARA     pusNextPtpID is null
 * @retval PM_ERR_NO_MORE  end of the board
 * @return otherwise the code of PM_LibGetHardwarePortNum
 */
PM_API u32 PM_LibGetNextPtpIdInBoardByPort(u16 usBIndex, u8 ucPort, u16 usPtpType, u8 ucFilter,
                                           u16 *pusNextPtpID);

PM_C_END

#endif

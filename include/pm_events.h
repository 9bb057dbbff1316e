/** @file
 * Delivery of primitives to booked functions: from the host's messages, from service code and from
 * changes of the dynamic records. */
#ifndef PM_EVENTS_H
#define PM_EVENTS_H

#include "pm_base.h"
#include "pm_dynamic_data.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** A primitive message of the host. */
typedef struct PmPrimMsg {
  u16 usReserved;     /**< not read by the library */
  u16 usPrimaryWord;  /**< primitive type */
  u16 usPtpID;        /**< PTP that the primitive happened on */
  u8 aucPara[2];      /**< handed to the functions booked for PM_PRIM_PARA only */
  u8 aucReserved[20]; /**< not read by the library */
} PmPrimMsg;

/** A primitive message wrapped by the device layer. */
typedef struct PmDevDdmTlv {
  u8 aucReserved1[10]; /**< not read by the library */
  u32 ulLength;        /**< of the value, 28 */
  u8 aucReserved2[2];  /**< not read by the library */
  PmPrimMsg stValue;   /**< the primitive message */
} PmDevDdmTlv;

#pragma pack(pop)

PM_PIN_SIZE(PmPrimMsg, 28);
PM_PIN_OFFSET(PmPrimMsg, usPtpID, 4);
PM_PIN_OFFSET(PmPrimMsg, aucPara, 6);
PM_PIN_OFFSET(PmDevDdmTlv, ulLength, 10);
PM_PIN_OFFSET(PmDevDdmTlv, stValue, 16);

/**
 * Delivers a primitive message of the host to the booked functions, which have run when it returns.
 * Types 3, 4, 6 and 7 are delivered without a parameter, type 5 with the address of a copy of the
 * message's two parameter bytes.
 *
 * @param pstMsg  the message, any alignment; nothing behind the parameter is read
 * @retval 0                       delivered, or a type that has no delivery: it is traced only
 * @retval PM_ERR_PARA             pstMsg is null
 * @retval PM_ERR_PRIM_CHECK_TYPE  a check type (PM_LibIsCheckPrimaryWord)
 * @return otherwise the code of PM_LibBookCallBookedFuncs
 */
PM_API u32 PM_PrimMsgProc(const PmPrimMsg *pstMsg);

/**
 * Takes a primitive message out of the device layer's wrapping and delivers it.
 *
 * @param pstDevDdmTlv  the wrapped message, any alignment
 * @retval PM_ERR_PARA  pstDevDdmTlv is null
 * @retval 1            the length is not 28
 * @return otherwise the result of PM_PrimMsgProc
 */
PM_API u32 PM_LibPrimNotifyRtRestore(const PmDevDdmTlv *pstDevDdmTlv);

/**
 * Delivers a primitive: calls the functions booked for it, in the order of booking, in the caller's
 * task. Called are those booked for the PTP's port type and those booked for every port type. A
 * call of 100 ticks or more is reported to the host. After a failed call the delivery ends for the
 * types that PM_LibIsPrimaryNeedReturn names and goes on for all others.
 *
 * @param usPrimType  primitive type, 0 to 14
 * @param usPtpID     PTP ID; PM_PTP_ID_NONE = no particular PTP, which reaches the functions booked
 *                    for every port type only
 * @param pPara       handed to the functions; may be null
 * @retval 0                      delivered, whatever the functions of a type that goes on returned
 * @retval 1                      there is no booking table yet
 * @retval PM_ERR_PRIMTYPE_RANGE  usPrimType is above 14
 * @retval PM_ERR_PARA            no current instance
 * @return otherwise the code of the port type's lookup (PM_LibGetTypeFromPTP), nothing having been
 * called, or of the function that ended the delivery
 */
PM_API u32 PM_LibBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara);

/**
 * Delivers PM_PRIM_LINK_UP for a PTP.
 *
 * @param usPtpID  PTP ID
 * @retval 0  always
 */
PM_API u32 PM_LibEventPtpLinkUp(u16 usPtpID);

/**
 * Delivers PM_PRIM_LINK_DOWN for a PTP.
 *
 * @param usPtpID  PTP ID
 * @retval 0  always
 */
PM_API u32 PM_LibEventPtpLinkDown(u16 usPtpID);

/**
 * Delivers the existence event of a PTP whose dynamic record has been replaced. While the first
 * delivery of all records is running, PM_PRIM_EXIST if the PTP exists; later PM_PRIM_EXIST if it
 * has come into existence and PM_PRIM_NOT_EXIST if it has gone. The latter reaches nobody: the port
 * type of a PTP that does not exist can't be looked up, which is recorded.
 *
 * @param usPtpID     PTP ID
 * @param pstOldData  the record before; null raises nothing once the first delivery is finished
 *
 * Does nothing outside an instance.
 */
PM_API void PM_LibEventPrimNotify(u16 usPtpID, const PtpDynPubData *pstOldData);

/**
 * To be called before a PTP's dynamic record is replaced: PM_LibPtpVsPrimaryNotifyBefore.
 *
 * @param usPtpID     PTP ID
 * @param pstNewData  the record to come
 */
PM_API void PM_LibPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData);

/**
 * To be called after a PTP's dynamic record has been replaced. While the first delivery of all
 * records is running it delivers PM_PRIM_EXIST if the PTP exists; later it is
 * PM_LibPtpVsPrimaryNotifyAfter.
 *
 * @param usPtpID     PTP ID
 * @param pstOldData  the record before
 *
 * Does nothing outside an instance.
 */
PM_API void PM_LibPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData);

/**
 * Announces the virtual systems that a PTP is about to leave, while the store still holds the old
 * record: for each of 1 to 8, ascending, delivers PM_PRIM_VS_REMOVED and then deletes the PTP's
 * object configuration there. Does nothing in an instance that does not depend on PID 407.
 *
 * @param usPtpID     PTP ID
 * @param pstNewData  the record to come; null does nothing
 */
PM_API void PM_LibPtpVsPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData);

/**
 * Announces the virtual systems that a PTP has joined, when the store holds the new record: for
 * each of 1 to 8, ascending, adds the PTP's object configuration there and then delivers
 * PM_PRIM_VS_ADDED. A configuration that can't be added is taken back and ends the work. Does
 * nothing in an instance that does not depend on PID 407.
 *
 * @param usPtpID     PTP ID
 * @param pstOldData  the record before; null does nothing
 */
PM_API void PM_LibPtpVsPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData);

PM_C_END

#endif

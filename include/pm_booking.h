/** @file
 * Bookings: functions to be called when a primitive happens on a PTP of a port type. */
#ifndef PM_BOOKING_H
#define PM_BOOKING_H

#include "pm_base.h"

PM_C_BEGIN

/** Primitive types with a source in the library; a type is 0 to 14. */
enum {
  PM_PRIM_EXIST = 3,     /**< a PTP has come into existence */
  PM_PRIM_NOT_EXIST = 4, /**< a PTP has gone out of existence */
  PM_PRIM_PARA = 5,      /**< carries two bytes */
  PM_PRIM_LINK_UP = 6,
  PM_PRIM_LINK_DOWN = 7,
  PM_PRIM_VS_ADDED = 13,   /**< carries the u16 VS ID */
  PM_PRIM_VS_REMOVED = 14, /**< carries the u16 VS ID */
  PM_PRIM_NUM = 15
};

/** A booked function. Runs in the task that raises the primitive. 0 and PM_RET_NOT_CONCERNED are
 * success. It may book and unbook functions of other primitive types. */
typedef u32 (*PmBookFunc)(u16 usPtpID, u16 usPrimType, void *pPara);

#pragma pack(push, 1)

/** A function and the port type that it is to be called for. */
typedef struct PmBookRecord {
  u16 usType;             /**< port type; PM_PTP_TYPE_ALL = every port type */
  PmBookFunc pfnBookFunc; /**< called for PTPs of that type */
} PmBookRecord;

#pragma pack(pop)

PM_PIN_SIZE32(PmBookRecord, 6);

/**
 * Creates the instance's empty booking table. Called once, in start-up phase 1; a second call
 * replaces the table and with it every booking.
 *
 * @retval 0              created
 * @retval PM_ERR_MALLOC  no memory; a table that exists stays
 * @retval PM_ERR_PARA    no current instance
 */
PM_API u32 PM_LibMallocBookInit(void);

/**
 * Books a function behind those already booked for the primitive type. The same function may be
 * booked for several port types, and several functions for one.
 *
 * @param usPrimType  primitive type, 0 to 14
 * @param pstRecord   port type and function, copied; a null function is kept and never called
 * @retval 0                       booked
 * @retval PM_ERR_PARA             pstRecord is null, or there is no booking table yet
 * @retval PM_ERR_PRIMTYPE_RANGE   usPrimType is above 14
 * @retval PM_ERR_MALLOC           no memory
 * @retval PM_ERR_BOOK_EXIST       the function is already booked for that type and port type
 *
 * Callable from start-up phase 1 on, in a task of the instance, also from a booked function of
 * another primitive type. On failure the bookings are unchanged.
 */
PM_API u32 PM_LibBookAddBookFunc(u16 usPrimType, const PmBookRecord *pstRecord);

/**
 * Books a function: PM_LibBookAddBookFunc with the record's fields as arguments.
 *
 * @param usPrimType  primitive type, 0 to 14
 * @param usPtpType   port type; PM_PTP_TYPE_ALL = every port type
 * @param pfnFunc     the function
 * @retval PM_ERR_PARA  pfnFunc is null
 * @return otherwise as PM_LibBookAddBookFunc
 */
PM_API u32 PM_LibRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc);

/**
 * Takes a booking back; the others keep their order.
 *
 * @param usPrimType  primitive type, 0 to 14
 * @param pstRecord   port type and function, as booked
 * @retval 0                      taken back
 * @retval PM_ERR_PARA            pstRecord is null, nothing is booked for the primitive type, or
 *                                there is no booking table yet
 * @retval PM_ERR_PRIMTYPE_RANGE  usPrimType is above 14
 * @retval PM_ERR_DATA_INVALID    there is no such booking
 *
 * Callable as PM_LibBookAddBookFunc.
 */
PM_API u32 PM_LibBookDelBookFunc(u16 usPrimType, const PmBookRecord *pstRecord);

/**
 * Takes a booking back: PM_LibBookDelBookFunc with the record's fields as arguments.
 *
 * @param usPrimType  primitive type, 0 to 14
 * @param usPtpType   port type, as booked
 * @param pfnFunc     the function
 * @retval PM_ERR_PARA  pfnFunc is null
 * @return otherwise as PM_LibBookDelBookFunc
 */
PM_API u32 PM_LibUnRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc);

/**
 * Is the primitive type a check type? Service code raises these; as messages they are refused. Not
 * a result code.
 *
 * @param usPrimType  primitive type, any value
 * @retval 1  yes: types 0, 2, 8, 9, 11 and 12
 * @retval 0  no
 */
PM_API u32 PM_LibIsCheckPrimaryWord(u16 usPrimType);

/**
 * Does the first failing function end the delivery of the primitive type?
 *
 * @param usPrimType  primitive type, any value
 * @retval 0                    yes: types 0, 2, 3, 8, 9, 11 and 12
 * @retval PM_ERR_DATA_INVALID  no
 */
PM_API u32 PM_LibIsPrimaryNeedReturn(u16 usPrimType);

PM_C_END

#endif

/* Bookings: functions to be called when a primitive happens on a PTP of a port type. */
#ifndef PM_BOOKING_H
#define PM_BOOKING_H

#include "pm_base.h"

PM_C_BEGIN

/* Primitive types with a source in the library; a type is 0 to 14. */
enum {
  PM_PRIM_EXIST = 3,     /* a PTP has come into existence */
  PM_PRIM_NOT_EXIST = 4, /* a PTP has gone out of existence */
  PM_PRIM_PARA = 5,      /* carries two bytes */
  PM_PRIM_LINK_UP = 6,
  PM_PRIM_LINK_DOWN = 7,
  PM_PRIM_VS_ADDED = 13,   /* carries the u16 VS ID */
  PM_PRIM_VS_REMOVED = 14, /* carries the u16 VS ID */
  PM_PRIM_NUM = 15
};

/* A booked function. Runs in the task that raises the primitive. 0 and PM_RET_NOT_CONCERNED are
 * success. It may book and unbook functions of other primitive types. */
typedef u32 (*PmBookFunc)(u16 usPtpID, u16 usPrimType, void *pPara);

#pragma pack(push, 1)

typedef struct PmBookRecord {
  u16 usType; /* port type; PM_PTP_TYPE_ALL = every port type */
  PmBookFunc pfnBookFunc;
} PmBookRecord;

#pragma pack(pop)

PM_PIN_SIZE32(PmBookRecord, 6);

PM_API u32 PM_LibMallocBookInit(void);
PM_API u32 PM_LibBookAddBookFunc(u16 usPrimType, const PmBookRecord *pstRecord);
PM_API u32 PM_LibRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc);
PM_API u32 PM_LibBookDelBookFunc(u16 usPrimType, const PmBookRecord *pstRecord);
PM_API u32 PM_LibUnRegPrimaryWordCallback(u16 usPrimType, u16 usPtpType, PmBookFunc pfnFunc);
PM_API u32 PM_LibIsCheckPrimaryWord(u16 usPrimType);
PM_API u32 PM_LibIsPrimaryNeedReturn(u16 usPrimType);

PM_C_END

#endif

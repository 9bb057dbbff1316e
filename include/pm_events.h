/* Delivery of primitives to booked functions: from the host's messages, from service code and from
 * changes of the dynamic records. */
#ifndef PM_EVENTS_H
#define PM_EVENTS_H

#include "pm_base.h"
#include "pm_dynamic_data.h"

PM_C_BEGIN

#pragma pack(push, 1)

/* A primitive message of the host. */
typedef struct PmPrimMsg {
  u16 usReserved;
  u16 usPrimaryWord; /* primitive type */
  u16 usPtpID;
  u8 aucPara[2]; /* handed to the functions booked for PM_PRIM_PARA only */
  u8 aucReserved[20];
} PmPrimMsg;

/* A primitive message wrapped by the device layer. */
typedef struct PmDevDdmTlv {
  u8 aucReserved1[10];
  u32 ulLength; /* of the value, 28 */
  u8 aucReserved2[2];
  PmPrimMsg stValue;
} PmDevDdmTlv;

#pragma pack(pop)

PM_PIN_SIZE(PmPrimMsg, 28);
PM_PIN_OFFSET(PmPrimMsg, usPtpID, 4);
PM_PIN_OFFSET(PmPrimMsg, aucPara, 6);
PM_PIN_OFFSET(PmDevDdmTlv, ulLength, 10);
PM_PIN_OFFSET(PmDevDdmTlv, stValue, 16);

PM_API u32 PM_PrimMsgProc(const PmPrimMsg *pstMsg);
PM_API u32 PM_LibPrimNotifyRtRestore(const PmDevDdmTlv *pstDevDdmTlv);

PM_API u32 PM_LibBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara);
PM_API u32 PM_LibEventPtpLinkUp(u16 usPtpID);
PM_API u32 PM_LibEventPtpLinkDown(u16 usPtpID);

PM_API void PM_LibEventPrimNotify(u16 usPtpID, const PtpDynPubData *pstOldData);
PM_API void PM_LibPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData);
PM_API void PM_LibPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData);
PM_API void PM_LibPtpVsPrimaryNotifyBefore(u16 usPtpID, const PtpDynPubData *pstNewData);
PM_API void PM_LibPtpVsPrimaryNotifyAfter(u16 usPtpID, const PtpDynPubData *pstOldData);

PM_C_END

#endif

/* Remote services: the two that the library publishes, and calls of the owner of the PTP database
 * (virtual PTPs, descriptions, deletion of objects). */
#ifndef PM_SAPI_H
#define PM_SAPI_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/* The PTP to create as a virtual PTP. */
typedef struct PmVirtualPtpDesc {
  u8 ucPtpClass;
  u8 ucReserved;
  u16 usIndex1;
  u16 usIndex2;
  u16 usPtpType;
} PmVirtualPtpDesc;

/* An object addressed by frame, slot, port and ONT. */
typedef struct PmFspOntid {
  u16 usFrameID;
  u8 ucSlotID;
  u8 ucPortID;
  u32 ulOntID;
} PmFspOntid;

#pragma pack(pop)

PM_PIN_SIZE(PmVirtualPtpDesc, 8);
PM_PIN_OFFSET(PmVirtualPtpDesc, usPtpType, 6);
PM_PIN_SIZE(PmFspOntid, 8);
PM_PIN_OFFSET(PmFspOntid, ulOntID, 4);

/* Learns the result of a deletion. */
typedef u32 (*PmDelObjectCompletionFunc)(PmFspOntid *pstKey, u32 ulResult);

PM_API u32 PM_LibPrimarySapiPublish(void);
PM_API u32 PM_SapiBookCallBookedFuncs(u16 usPrimType, u16 usPtpID, void *pPara);
PM_API u32 PM_SapiNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion,
                                           PmFspOntid *pstKey, u32 ulResult);

PM_API u32 PM_LibLinkEventNotify(u16 usPtpID, u8 ucEvent);
PM_API u32 PM_LibAddVirtualPtp(PmVirtualPtpDesc *pstDesc, u16 *pusNewPtpID);
PM_API u32 PM_LibDelVirtualPtp(u16 usPtpID);
PM_API u32 PM_LibSetDescFromPTP(u16 usPtpID, u8 *pucDesc, u32 ulLength);

PM_API u32 PM_LibGetObjectNumInDelete(void);
PM_API u32 PM_LibSetObjectNumInDelete(u32 ulObjNum);
PM_API u32 PM_LibIsObjSupportSrvCfg(PmFspOntid *pstKey);
PM_API u32 PM_LibOperCheckCanDelPTP(u16 usPtpID);
PM_API u32 PM_LibDelObjectCfg(PmFspOntid *pstKey, char *pcText, PmWord ulCompletion);
PM_API u32 PM_LibNotifyDelObjectCfgResult(PmDelObjectCompletionFunc pfnCompletion,
                                          PmFspOntid *pstKey, u32 ulResult);

PM_C_END

#endif

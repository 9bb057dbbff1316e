/* Data-distribution classes: the subscriptions and the restore handlers. */
#ifndef PM_RESTORE_H
#define PM_RESTORE_H

#include "pm_base.h"

PM_C_BEGIN

/* Data classes. */
enum {
  PM_CLASS_SPEC = 0x360000,        /* PmSpec, not subscribed */
  PM_CLASS_ATTR_CB = 0x360001,     /* PmAttrCB, not subscribed */
  PM_CLASS_SUB_ATTR = 0x360003,    /* PmSubAttrNum */
  PM_CLASS_SUB_INFO = 0x360004,    /* PmSubInnerSubInfo; key: u32 suffix */
  PM_CLASS_DYNAMIC = 0x360011,     /* PtpDynPubData; key: u32 PTP ID */
  PM_CLASS_STATIC = 0x360030,      /* PtpStaticData */
  PM_CLASS_OBJ_DEL_NUM = 0x360031, /* u32 number of objects in deletion */
  PM_CLASS_PRIM_NOTIFY = 0x360040  /* PmPrimNotify */
};

#pragma pack(push, 1)

/* A primitive delivered as data. */
typedef struct PmPrimNotify {
  u16 usPrimType;
  u16 usPtpID;
  u8 aucPara[28]; /* its address is the parameter of the booked functions */
} PmPrimNotify;

#pragma pack(pop)

PM_PIN_SIZE(PmPrimNotify, 32);

PM_API u32 PM_ScribeClass(void);
PM_API u32 PM_LibScribeRestore_SubAttrCB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                         const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestore_SubInnerSubInfo(u32 ulClassID, u32 ulReserved, const void *pKey,
                                               const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestore_DynamicCB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                         const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestore_StaticDB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                        const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestorePrimNotify(u32 ulClassID, u32 ulReserved, const void *pKey,
                                         const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestoreObjDelNum(u32 ulClassID, u32 ulReserved, const void *pKey,
                                        const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestore_Spec(u32 ulClassID, u32 ulReserved, const void *pKey,
                                    const void *pData, u32 ulLen);
PM_API u32 PM_LibScribeRestore_AttrCB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                      const void *pData, u32 ulLen);

PM_C_END

#endif

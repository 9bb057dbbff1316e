/* PTPs as an object class of the host's capability and attribute services. */
#ifndef PM_CLASSES_H
#define PM_CLASSES_H

#include "pm_base.h"

PM_C_BEGIN

enum { PM_OBJECT_CLASS = 3 };

/* What a class hands to the two services when it registers. */
typedef struct PmClassMngtReg {
  u32 (*pfnGetPtpType)(u32 ulValue, u16 usPtpID, u16 *pusPtpType);
  u16 usModuleID;
  u16 usClassValue;
} PmClassMngtReg;

PM_PIN_SIZE32(PmClassMngtReg, 8);
PM_PIN_OFFSET32(PmClassMngtReg, usModuleID, 4);
PM_PIN_OFFSET32(PmClassMngtReg, usClassValue, 6);

PM_API u32 PM_LibRegCapClassMngt(void);
PM_API u32 PM_LibRegAttrClassMngt(void);
PM_API u32 PM_LibGetPtpCapability(u16 usPtpID, u32 ulCapability);
PM_API u32 PM_LibGetPtpAttributeCluster(u16 usPtpID, u32 ulPtpAttributeValue, u16 usLen,
                                        void *pBuf);
PM_API u32 PM_LibGetPtpCapType(u32 ulValue, u16 usPtpID, u16 *pusCapType);
PM_API u32 PM_AttrDbFunc(void);
PM_API u32 PM_LibGetPtpTypeForAttm(u32 ulValue, u16 usPtpID, u16 *pusPtpType);

PM_C_END

#endif

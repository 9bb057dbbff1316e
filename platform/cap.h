/* Capability and attribute services of managed object classes. */
#ifndef PLATFORM_CAP_H
#define PLATFORM_CAP_H

#include "platform/base.h"

PM_C_BEGIN

u32 CAP_LibRegCapMngtProc(u32 ulClass, const void *pstClassMngtReg);
u32 CAP_LibGetCapability(u32 ulClass, u32 usPtpID, u32 ulCapability);
u32 ATTR_LibRegClassMngtProc(u32 ulClass, const void *pstClassMngtReg);
u32 ATTR_LibGetAttribute(u32 ulClass, u32 usPtpID, u32 ulAttribute, void *pBuf, u16 usLen);

PM_C_END

#endif

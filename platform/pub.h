/* Object configuration per virtual system. */
#ifndef PLATFORM_PUB_H
#define PLATFORM_PUB_H

#include "platform/base.h"

PM_C_BEGIN

/* pulFlag: one u32. */
u32 PUB_LibAddObjAllCfg(u32 ulVsID, u32 ulObjType, u32 usPtpID, void *pulFlag);
/* paulFlag: two u32. */
u32 PUB_LibDelObjAllCfg(u32 ulVsID, u32 ulObjType, u32 usPtpID, void *paulFlag);

PM_C_END

#endif

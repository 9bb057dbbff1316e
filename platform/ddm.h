/* Data distribution: specification messages, subscriptions, batch state. */
#ifndef PLATFORM_DDM_H
#define PLATFORM_DDM_H

#include "platform/base.h"

PM_C_BEGIN

typedef u32 (*DdmSpecUpdateFunc)(const void *pSpecMsg);
typedef u32 (*DdmRestoreFunc)(u32 ulClassID, u32 ulReserved, const void *pKey, const void *pData,
                              u32 ulLen);

u32 DDM_RegisterSpecAppInfo(u32 ulModule, DdmSpecUpdateFunc pfnSpecUpdate);
u32 DDM_LibSubscribe(u32 ulCid, u32 ulClassID, DdmRestoreFunc pfnRestore);
/* *pucFinished: 0 = the batch of the class is still running, 1 = finished. */
u32 DDM_LibScribeIsClassBtFinished(u32 ulClassID, u8 *pucFinished);

PM_C_END

#endif

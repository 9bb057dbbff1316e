/* Active/standby synchronisation. */
#ifndef PLATFORM_SYN_H
#define PLATFORM_SYN_H

#include "platform/base.h"

PM_C_BEGIN

typedef u32 (*SynExtractFunc)(u32 ulUnit, void *pBuf, u32 ulBufLen, u32 *pulOutLen);
typedef u32 (*SynRestoreFunc)(u32 ulUnit, const void *pRecord, u32 ulLen, u32 ulReserved);

u32 SYN_LibRegisterModuleDataSynInfo(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3,
                                     u32 ulPara4);
u32 SYN_LibRegisterSynDataBlockFix(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3,
                                   u32 ulUnitSize, u32 ulUnitCount, u32 ulPara6, u32 ulPara7,
                                   SynExtractFunc pfnExtract, SynRestoreFunc pfnRestore,
                                   u32 ulPara10, u32 ulPara11);
u32 SYN_LibRegisterModuleDataMode(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3);
u32 SYN_LibRegisterSetBitTableFun(u32 ulModule, void (*pfnReset)(void));
/* 0 = this side is not active. */
u32 SYN_LibIsCpuActive(void);
/* Marks a unit as changed: the active side extracts it and ships it to the standby. */
u32 SYN_LibModuleDataUnitModifyRecord(u32 ulModule, u32 ulBlock, u32 ulUnit);

PM_C_END

#endif

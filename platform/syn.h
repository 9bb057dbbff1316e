/** @file
 * Active/standby synchronisation. */
#ifndef PLATFORM_SYN_H
#define PLATFORM_SYN_H

#include "platform/base.h"

PM_C_BEGIN

/** Writes a unit into ulBufLen bytes at pBuf and its length to *pulOutLen; returns 0 for success.
 */
typedef u32 (*SynExtractFunc)(u32 ulUnit, void *pBuf, u32 ulBufLen, u32 *pulOutLen);

/** Takes a unit of ulLen bytes; returns 0 for success. */
typedef u32 (*SynRestoreFunc)(u32 ulUnit, const void *pRecord, u32 ulLen, u32 ulReserved);

/**
 * Registers a module for active/standby synchronisation.
 *
 * @param ulModule  module number
 * @param ulPara1   for the service
 * @param ulPara2   for the service
 * @param ulPara3   for the service
 * @param ulPara4   for the service
 * @return 0, or a code that tells why not
 */
u32 SYN_LibRegisterModuleDataSynInfo(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3,
                                     u32 ulPara4);

/**
 * Registers a module's block of units of one size and the functions that take a unit out on the
 * active side and put it in on the standby side.
 *
 * @param ulModule     module number
 * @param ulPara1      for the service
 * @param ulPara2      for the service
 * @param ulPara3      for the service
 * @param ulUnitSize   bytes of a unit
 * @param ulUnitCount  number of units
 * @param ulPara6      for the service
 * @param ulPara7      for the service
 * @param pfnExtract   called on the active side for marked units
 * @param pfnRestore   called on the standby side with what was extracted
 * @param ulPara10     for the service
 * @param ulPara11     for the service
 * @return 0, or a code that tells why not
 */
u32 SYN_LibRegisterSynDataBlockFix(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3,
                                   u32 ulUnitSize, u32 ulUnitCount, u32 ulPara6, u32 ulPara7,
                                   SynExtractFunc pfnExtract, SynRestoreFunc pfnRestore,
                                   u32 ulPara10, u32 ulPara11);

/**
 * Registers how a module synchronises.
 *
 * @param ulModule  module number
 * @param ulPara1   for the service
 * @param ulPara2   for the service
 * @param ulPara3   for the service
 * @return 0, or a code that tells why not
 */
u32 SYN_LibRegisterModuleDataMode(u32 ulModule, u32 ulPara1, u32 ulPara2, u32 ulPara3);

/**
 * Registers the function that resets what the module keeps of changed units.
 *
 * @param ulModule  module number
 * @param pfnReset  the function
 * @return 0, or a code that tells why not
 */
u32 SYN_LibRegisterSetBitTableFun(u32 ulModule, void (*pfnReset)(void));

/**
 * Is this side the active one?
 *
 * @return 0 = it is not
 */
u32 SYN_LibIsCpuActive(void);

/**
 * Marks a unit as changed: the active side extracts it and ships it to the standby.
 *
 * @param ulModule  module number
 * @param ulBlock   block, 0
 * @param ulUnit    unit
 * @return 0, or a code that tells why not
 */
u32 SYN_LibModuleDataUnitModifyRecord(u32 ulModule, u32 ulBlock, u32 ulUnit);

PM_C_END

#endif

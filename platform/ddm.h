/** @file
 * Data distribution: specification messages, subscriptions, batch state. */
#ifndef PLATFORM_DDM_H
#define PLATFORM_DDM_H

#include "platform/base.h"

PM_C_BEGIN

/** Takes a specification message, a PmSpecMsg and what follows it; returns 0 when it was taken. */
typedef u32 (*DdmSpecUpdateFunc)(const void *pSpecMsg);

/** Takes a record of a data class: its key and ulLen bytes of data. Returns 0, or why it was
 * refused. */
typedef u32 (*DdmRestoreFunc)(u32 ulClassID, u32 ulReserved, const void *pKey, const void *pData,
                              u32 ulLen);

/**
 * Registers who is told specification messages.
 *
 * @param ulModule       module number
 * @param pfnSpecUpdate  the function
 * @return 0, or a code that tells why not
 */
u32 DDM_RegisterSpecAppInfo(u32 ulModule, DdmSpecUpdateFunc pfnSpecUpdate);

/**
 * Subscribes an instance to a data class. The records held are delivered as a batch, then every
 * record as it is published, all in the instance's task with the instance current.
 *
 * @param ulCid       component identifier of the instance
 * @param ulClassID   data class
 * @param pfnRestore  takes the records
 * @return 0, or a code that tells why not
 */
u32 DDM_LibSubscribe(u32 ulCid, u32 ulClassID, DdmRestoreFunc pfnRestore);

/**
 * Has the current instance received the whole batch of a class?
 *
 * @param[in]  ulClassID    data class
 * @param[out] pucFinished  0 = the batch is still running, any other value = finished
 * @return 0, or a code that tells why not
 */
u32 DDM_LibScribeIsClassBtFinished(u32 ulClassID, u8 *pucFinished);

PM_C_END

#endif

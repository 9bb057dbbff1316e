/** @file
 * Operating-system layer: PIDs, message tasks, unconditional printing. */
#ifndef PLATFORM_KVT_H
#define PLATFORM_KVT_H

#include "platform/base.h"

PM_C_BEGIN

/** Start-up function of a PID; returns 0 for success. */
typedef u32 (*KvtPidInitFunc)(u32 enPhase);

/** Message function of a PID. */
typedef void (*KvtPidMsgFunc)(void *pMsg);

/**
 * Registers a PID with its start-up function, called once per phase, and its message function.
 *
 * @param ulPid       PID
 * @param pfnInit     start-up function
 * @param pfnMsgProc  message function
 * @return 0, or a code that tells why not
 */
u32 KVT_RegisterPIDInfo(u32 ulPid, KvtPidInitFunc pfnInit, KvtPidMsgFunc pfnMsgProc);

/**
 * Sets the priority of the message task of a FID.
 *
 * @param ulFid   FID
 * @param ulPrio  priority
 * @return 0, or a code that tells why not
 */
u32 KVT_RegisterMsgTaskPrio(u32 ulFid, u32 ulPrio);

/**
 * Prints, whatever the switches say. Used for failures of start-up and registration.
 *
 * @param pcFormat  as printf's
 */
void KVT_Printf(const char *pcFormat, ...) PM_PRINTF(1, 2);

/**
 * Compares two strings.
 *
 * @param pcA    the one
 * @param pcB    the other
 * @param ulLen  characters to compare at most
 * @return 0 = equal
 */
u32 KVT_StrNCmp(const char *pcA, const char *pcB, u32 ulLen);

PM_C_END

#endif

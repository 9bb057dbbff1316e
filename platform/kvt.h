/* Operating-system layer: PIDs, message tasks, unconditional printing. */
#ifndef PLATFORM_KVT_H
#define PLATFORM_KVT_H

#include "platform/base.h"

PM_C_BEGIN

typedef u32 (*KvtPidInitFunc)(u32 enPhase);
typedef void (*KvtPidMsgFunc)(void *pMsg);

u32 KVT_RegisterPIDInfo(u32 ulPid, KvtPidInitFunc pfnInit, KvtPidMsgFunc pfnMsgProc);
u32 KVT_RegisterMsgTaskPrio(u32 ulFid, u32 ulPrio);
void KVT_Printf(const char *pcFormat, ...) PM_PRINTF(1, 2);
/* 0 = equal over at most ulLen characters. */
u32 KVT_StrNCmp(const char *pcA, const char *pcB, u32 ulLen);

PM_C_END

#endif

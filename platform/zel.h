/* Runtime layer: memory partitions, hash tables, ticks, the task watchdog. */
#ifndef PLATFORM_ZEL_H
#define PLATFORM_ZEL_H

#include "platform/base.h"

PM_C_BEGIN

/* The number of a partition, not a result code. */
u32 ZEL_kvtStaticMemPtGet(void);
u32 ZEL_kvtBlockMemPtGet(void);
u32 ZEL_kvtDynamicMemPtGet(void);
/* Null on failure; the block is not cleared. */
void *ZEL_MemAlloc_F(u32 ulModule, u32 ulPartition, u32 ulSize, const char *pcFile, u32 ulLine);
u32 ZEL_MemFree(u32 ulModule, void *pMem);
u32 ZEL_Free(void *pMem);

/* 0 on failure. The first three pointer-sized words of a node belong to the table. */
Handle ZEL_HASH_Create_Table(u32 ulBuckets, u32 ulReserved);
u32 ZEL_HASH_Add_Node(Handle ulTable, void *pNode, u32 ulBucket, u32 ulReserved);
/* A node of the bucket for which pfnCompare answers 0; null when there is none. */
void *ZEL_HASH_Find_Node(Handle ulTable, u32 ulBucket, const void *pKey,
                         u32 (*pfnCompare)(const void *pKey, const void *pNode));
u32 ZEL_HASH_Delete_Node(Handle ulTable, void *pNode, u32 ulBucket);

/* 0 = equal. */
u32 ZEL_MemCmp(const void *pA, const void *pB, u32 ulLen);
/* The length in characters, not a result code. */
u32 ZEL_StrLen(const char *pcStr);
u32 ZEL_GetTick(void);
void ZEL_ClearWatchDog(void);
void ZEL_TaskRunClearDog(u32 ulTicks);
void ZEL_TaskDelay(u32 ulTicks);

PM_C_END

#endif

/** @file
 * Runtime layer: memory partitions, hash tables, ticks, the task watchdog. */
#ifndef PLATFORM_ZEL_H
#define PLATFORM_ZEL_H

#include "platform/base.h"

PM_C_BEGIN

/**
 * The partition for tables for the life of an instance.
 *
 * @return the partition's number (not a result code), different from the two others'
 */
u32 ZEL_kvtStaticMemPtGet(void);

/**
 * The partition for records of fixed size.
 *
 * @return the partition's number (not a result code), different from the two others'
 */
u32 ZEL_kvtBlockMemPtGet(void);

/**
 * The partition for list nodes.
 *
 * @return the partition's number (not a result code), different from the two others'
 */
u32 ZEL_kvtDynamicMemPtGet(void);

/**
 * Allocates a block. It need not be cleared.
 *
 * @param ulModule     module number
 * @param ulPartition  partition
 * @param ulSize       size in bytes
 * @param pcFile       source name of the caller
 * @param ulLine       line of the caller
 * @return the block; null on failure
 */
void *ZEL_MemAlloc_F(u32 ulModule, u32 ulPartition, u32 ulSize, const char *pcFile, u32 ulLine);

/**
 * Returns a block of ZEL_MemAlloc_F.
 *
 * @param ulModule  module number that allocated it
 * @param pMem      the block
 * @return 0, or a code that tells why not
 */
u32 ZEL_MemFree(u32 ulModule, void *pMem);

/**
 * Returns a block of ZEL_MemAlloc_F, whatever its module.
 *
 * @param pMem  the block
 * @return 0, or a code that tells why not
 */
u32 ZEL_Free(void *pMem);

/**
 * Creates a hash table. The caller chooses a node's bucket, and the first three pointer-sized words
 * of a node belong to the table.
 *
 * @param ulBuckets   number of buckets
 * @param ulReserved  0
 * @return the table; 0 on failure
 */
Handle ZEL_HASH_Create_Table(u32 ulBuckets, u32 ulReserved);

/**
 * Adds a node. The table links it and copies nothing.
 *
 * @param ulTable     the table
 * @param pNode       the node
 * @param ulBucket    its bucket
 * @param ulReserved  0
 * @return 0, or a code that tells why not
 */
u32 ZEL_HASH_Add_Node(Handle ulTable, void *pNode, u32 ulBucket, u32 ulReserved);

/**
 * Finds the first node of a bucket for which pfnCompare answers 0.
 *
 * @param ulTable     the table
 * @param ulBucket    bucket
 * @param pKey        handed to pfnCompare
 * @param pfnCompare  compares a key with a node, 0 = equal
 * @return the node; null when there is none
 */
void *ZEL_HASH_Find_Node(Handle ulTable, u32 ulBucket, const void *pKey,
                         u32 (*pfnCompare)(const void *pKey, const void *pNode));

/**
 * Takes a node out. Its memory stays the caller's.
 *
 * @param ulTable   the table
 * @param pNode     the node
 * @param ulBucket  its bucket
 * @return 0, or a code that tells why not
 */
u32 ZEL_HASH_Delete_Node(Handle ulTable, void *pNode, u32 ulBucket);

/**
 * Compares memory.
 *
 * @param pA     the one
 * @param pB     the other
 * @param ulLen  bytes
 * @return 0 = equal
 */
u32 ZEL_MemCmp(const void *pA, const void *pB, u32 ulLen);

/**
 * The length of a string.
 *
 * @param pcStr  the string
 * @return characters before the terminator (not a result code)
 */
u32 ZEL_StrLen(const char *pcStr);

/**
 * The time.
 *
 * @return ticks since the start (not a result code), modulo 2^32
 */
u32 ZEL_GetTick(void);

/**
 * Tells the watchdog of the calling task that the task is alive. Called at fixed strides of long
 * walks.
 */
void ZEL_ClearWatchDog(void);

/**
 * Tells the watchdog the same, from a task that has run for long.
 *
 * @param ulTicks  how long the task may have run, in ticks
 */
void ZEL_TaskRunClearDog(u32 ulTicks);

/**
 * Lets other tasks run for a while.
 *
 * @param ulTicks  ticks
 */
void ZEL_TaskDelay(u32 ulTicks);

PM_C_END

#endif

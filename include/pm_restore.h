/** @file
 * Data-distribution classes: the subscriptions and the restore handlers.
 *
 * The library's tables are replicas. An instance subscribes once, in start-up phase 1, to six data
 * classes; from then on the data distribution delivers the records of each class to its handler, in
 * its own task and in the context of the instance, first the existing ones as a batch and then each
 * one as it changes. Two handlers more take the specification records, which normally arrive as
 * specification messages; nobody subscribes to their classes.
 *
 * Unless its comment says otherwise, a handler refuses with PM_ERR_DATA_INVALID a record of another
 * class, of another length than the record's own, without data or, where it reads the key, without
 * a key; a refused record changes nothing. Keys and data may have any alignment. Handlers that work
 * on an instance answer PM_ERR_PARA when there is no current one. */
#ifndef PM_RESTORE_H
#define PM_RESTORE_H

#include "pm_base.h"

PM_C_BEGIN

/** Data classes. */
enum {
  PM_CLASS_SPEC = 0x360000,        /**< PmSpec, not subscribed */
  PM_CLASS_ATTR_CB = 0x360001,     /**< PmAttrCB, not subscribed */
  PM_CLASS_SUB_ATTR = 0x360003,    /**< PmSubAttrNum */
  PM_CLASS_SUB_INFO = 0x360004,    /**< PmSubInnerSubInfo; key: u32 suffix */
  PM_CLASS_DYNAMIC = 0x360011,     /**< PtpDynPubData; key: u32 PTP ID */
  PM_CLASS_STATIC = 0x360030,      /**< PtpStaticData */
  PM_CLASS_OBJ_DEL_NUM = 0x360031, /**< u32 number of objects in deletion */
  PM_CLASS_PRIM_NOTIFY = 0x360040  /**< PmPrimNotify */
};

#pragma pack(push, 1)

/** A primitive delivered as data. */
typedef struct PmPrimNotify {
  u16 usPrimType; /**< primitive type */
  u16 usPtpID;    /**< PTP that it happened on */
  u8 aucPara[28]; /**< its address is the parameter of the booked functions */
} PmPrimNotify;

#pragma pack(pop)

PM_PIN_SIZE(PmPrimNotify, 32);

/**
 * Subscribes the current instance to its six classes, in the order SUB_ATTR, SUB_INFO, DYNAMIC,
 * STATIC, PRIM_NOTIFY, OBJ_DEL_NUM. Every subscription is attempted. Called once, in start-up
 * phase 1.
 *
 * @return the sum of the six results, modulo 2^32: 0 when all succeeded
 */
PM_API u32 PM_ScribeClass(void);

/**
 * Takes the port-type counts into the process-wide specification. Control blocks that exist already
 * keep theirs.
 *
 * @param ulClassID   PM_CLASS_SUB_ATTR
 * @param ulReserved  not read
 * @param pKey        not read
 * @param pData       PmSubAttrNum
 * @param ulLen       4
 * @retval 0                    taken
 * @retval PM_ERR_DATA_INVALID  refused
 */
PM_API u32 PM_LibScribeRestore_SubAttrCB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                         const void *pData, u32 ulLen);

/**
 * Takes the record of one port type. The first one allocates the tables of port types and fills
 * the callback table from the registered sub-lines; while one of the tables is missing, every later
 * one tries again.
 *
 * @param ulClassID   PM_CLASS_SUB_INFO
 * @param ulReserved  not read
 * @param pKey        u32 suffix of the port type
 * @param pData       PmSubInnerSubInfo
 * @param ulLen       10
 * @retval 0                    taken
 * @retval PM_ERR_DATA_INVALID  refused, or the suffix is beyond the table
 * @retval PM_ERR_MEM_OPER      the tables could not be allocated
 * @retval PM_ERR_PARA          no current instance
 */
PM_API u32 PM_LibScribeRestore_SubInnerSubInfo(u32 ulClassID, u32 ulReserved, const void *pKey,
                                               const void *pData, u32 ulLen);

/**
 * Takes the dynamic record of one PTP. The first one creates the store and calls the product's
 * event registration hooks. PM_LibPrimaryNotifyBefore is called with the new record before the
 * write and PM_LibPrimaryNotifyAfter with the old one after it.
 *
 * @param ulClassID   PM_CLASS_DYNAMIC
 * @param ulReserved  not read
 * @param pKey        u32 whose low 16 bits are the PTP ID
 * @param pData       PtpDynPubData
 * @param ulLen       19
 * @retval 0                    taken
 * @retval PM_ERR_DATA_INVALID  refused, or the PTP ID is above the maximum or beyond the store; the
 *                              store has been created all the same
 * @retval PM_ERR_MALLOC        the store could not be created
 * @retval PM_ERR_MEM_OPER      the copy failed; nobody is told after it
 * @retval PM_ERR_PARA          no current instance
 */
PM_API u32 PM_LibScribeRestore_DynamicCB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                         const void *pData, u32 ulLen);

/**
 * Takes the static record of one PTP and marks the PTP as changed for the standby board. A record
 * of 214 bytes of 0xFF deletes: not through its key, but under the PTP ID it carries, 0xFFFF.
 *
 * @param ulClassID   PM_CLASS_STATIC
 * @param ulReserved  not read
 * @param pKey        not read
 * @param pData       PtpStaticData
 * @param ulLen       214
 * @retval 0                    taken
 * @retval PM_ERR_DATA_INVALID  refused
 * @retval 1                    the static database could not take it; nothing is marked
 * @retval PM_ERR_PARA          no current instance
 */
PM_API u32 PM_LibScribeRestore_StaticDB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                        const void *pData, u32 ulLen);

/**
 * Calls the functions booked for a primitive, with the address of the notification's parameter area
 * as their parameter. Their failure is recorded and does not fail the delivery.
 *
 * @param ulClassID   PM_CLASS_PRIM_NOTIFY
 * @param ulReserved  not read
 * @param pKey        not read
 * @param pData       PmPrimNotify
 * @param ulLen       32
 * @retval 0            delivered
 * @retval PM_ERR_PARA  the class, the data or the length is wrong, or no current instance
 */
PM_API u32 PM_LibScribeRestorePrimNotify(u32 ulClassID, u32 ulReserved, const void *pKey,
                                         const void *pData, u32 ulLen);

/**
 * Takes the number of objects in deletion.
 *
 * @param ulClassID   PM_CLASS_OBJ_DEL_NUM; not checked
 * @param ulReserved  not read
 * @param pKey        not read
 * @param pData       u32 number; what follows is not read
 * @param ulLen       4 or more
 * @retval 0            taken
 * @retval PM_ERR_PARA  pData is null, ulLen is below 4, or no current instance
 */
PM_API u32 PM_LibScribeRestoreObjDelNum(u32 ulClassID, u32 ulReserved, const void *pKey,
                                        const void *pData, u32 ulLen);

/**
 * Takes the process-wide general specification.
 *
 * @param ulClassID   PM_CLASS_SPEC
 * @param ulReserved  not read
 * @param pKey        not read
 * @param pData       PmSpec
 * @param ulLen       24
 * @retval 0                    taken
 * @retval PM_ERR_DATA_INVALID  refused
 * @retval PM_ERR_MEM_OPER      the copy failed
 */
PM_API u32 PM_LibScribeRestore_Spec(u32 ulClassID, u32 ulReserved, const void *pKey,
                                    const void *pData, u32 ulLen);

/**
 * Takes the process-wide PTP number specification.
 *
 * @param ulClassID   PM_CLASS_ATTR_CB
 * @param ulReserved  not read
 * @param pKey        not read
 * @param pData       PmAttrCB
 * @param ulLen       16
 * @retval 0                    taken
 * @retval PM_ERR_DATA_INVALID  refused
 * @retval PM_ERR_MEM_OPER      the copy failed
 */
PM_API u32 PM_LibScribeRestore_AttrCB(u32 ulClassID, u32 ulReserved, const void *pKey,
                                      const void *pData, u32 ulLen);

PM_C_END

#endif

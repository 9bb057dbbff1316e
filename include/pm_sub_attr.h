/** @file
 * Port types and their numbering: the per-instance control block, the records of the port types and
 * the table of their callbacks.
 *
 * A port type has a value, any u16 up to a highest one, and a suffix, its dense position from 0 to
 * the number of port types minus one. Start-up phase 1 creates the control block, the first
 * port-type record to arrive creates both tables. They live as long as the instance, never move and
 * keep their size when the number of port types changes later. */
#ifndef PM_SUB_ATTR_H
#define PM_SUB_ATTR_H

#include "pm_base.h"
#include "pm_sub_line.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** Record of one port type, as data distribution delivers it; its index is the suffix. */
typedef struct PmSubInnerSubInfo {
  u16 usReserved; /**< kept as delivered */
  u16 usPtpType;  /**< port type value */
  u8 ucVisible;   /**< visible flag, shown by the debug window */
  u8 ucReserved;  /**< kept as delivered */
  u16 usCapType;  /**< capability type */
  u16 usCoClass;  /**< co-class */
} PmSubInnerSubInfo;

/** Control block of an instance's port types. */
typedef struct PmSubAttrCB {
  u16 usPtpTypeNum;                      /**< number of port types, so of suffixes */
  u16 usMaxPtpTypeValue;                 /**< highest port type value */
  PmSubInnerSubInfo *pstSubInnerSubInfo; /**< records by suffix; null until the first arrives */
} PmSubAttrCB;

/** Callbacks of one port type. Entry i is that of the i-th registered sub-line; entries for which
 * no sub-line is registered are all zero. */
typedef struct PmSubCallBackEntry {
  u16 usPtpType;            /**< port type that the callbacks serve */
  PmSubCallBack stCallBack; /**< from the registration */
  u32 ulReserved;           /**< always zero */
} PmSubCallBackEntry;

#pragma pack(pop)

PM_PIN_SIZE(PmSubInnerSubInfo, 10);
PM_PIN_OFFSET(PmSubInnerSubInfo, usPtpType, 2);
PM_PIN_OFFSET(PmSubInnerSubInfo, ucVisible, 4);
PM_PIN_OFFSET(PmSubInnerSubInfo, usCapType, 6);
PM_PIN_OFFSET(PmSubInnerSubInfo, usCoClass, 8);
PM_PIN_SIZE32(PmSubAttrCB, 8);
PM_PIN_SIZE32(PmSubCallBackEntry, 42);
PM_PIN_OFFSET(PmSubCallBackEntry, stCallBack, 2);
PM_PIN_OFFSET32(PmSubCallBackEntry, ulReserved, 38);

/**
 * Creates the control block, cleared, if the instance has none.
 *
 * @retval 0              the control block exists
 * @retval PM_ERR_MALLOC  no memory
 * @retval PM_ERR_PARA    no current instance
 */
PM_API u32 PM_LibMallocForSubAttrCB(void);

/**
 * Creates the tables of port types, cleared, where they are missing: the records, then the
 * callbacks. Called by the restore of port-type records, again after a failure.
 *
 * @retval 0                 both tables exist
 * @retval PM_ERR_SIZE_ZERO  no control block, or no records yet and no port types; nothing is
 *                           allocated
 * @retval PM_ERR_MALLOC     no memory for one of them; a table that was created stays
 * @retval PM_ERR_PARA       no current instance
 */
PM_API u32 PM_LibMallocSubAttrGlobalVar(void);

/**
 * Creates the callback table, cleared, if it is missing: one entry per port type.
 *
 * @retval 0              the table exists
 * @retval PM_ERR_MALLOC  no memory, no control block or no port types
 * @retval PM_ERR_PARA    no current instance
 */
PM_API u32 PM_LibMallocSubCallBack(void);

/**
 * Fills the callback table from the registered sub-lines, in registration order. Entries beyond
 * them stay as they are, sub-lines beyond the table are left out.
 *
 * @retval 0            done; nothing to do without table or sub-lines
 * @retval PM_ERR_PARA  no current instance
 */
PM_API u32 PM_LibSubAttrInit(void);

/**
 * Takes the number of registered sub-lines as the number of port types, for a process that numbers
 * its port types from its own registrations. The library itself never calls it. Without a control
 * block it does nothing.
 *
 * @retval 0            done
 * @retval PM_ERR_PARA  no current instance
 */
PM_API u32 PM_LibPtpTypeNumInit(void);

/**
 * Releases the registered sub-lines from the first on, at most as many as there are port types. The
 * number of registered sub-lines stays as it was; the callback table is not touched.
 *
 * @retval 0            done; nothing to do without control block or sub-lines
 * @retval PM_ERR_PARA  no current instance
 */
PM_API u32 PM_LibCfgReleaseMem(void);

/**
 * Creates the control block if it is missing and copies the process-wide port-type counts into it.
 * Called in start-up phase 1. Counts that are delivered later do not reach it.
 *
 * @retval 0                done
 * @retval PM_ERR_MEM_OPER  no memory for the control block
 * @retval PM_ERR_PARA      no current instance
 */
PM_API u32 PM_LibPtpNumSpecInit(void);

/**
 * Fills the callback table. Called by the restore of port-type records once the tables exist.
 *
 * @retval 0  done
 * @return otherwise the code of PM_LibSubAttrInit
 */
PM_API u32 PM_LibSubInnerSubInfoInit(void);

/**
 * Highest port type value of the current instance.
 *
 * @return the value; 0 without a control block
 */
PM_API u16 PM_LibGetPtpMaxTypeValue(void);

PM_C_END

#endif

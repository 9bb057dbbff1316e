/** @file
 * The PTP specification: process-wide records that size the PTP space and the port-type space. All
 * are zero when the library is loaded and are shared, unlocked, by all instances of the process. */
#ifndef PM_SPEC_H
#define PM_SPEC_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** General specification: six values addressed by an index 0 to 5. */
typedef struct PmSpec {
  u32 ulSpec0;          /**< kept as delivered */
  u32 ulSpec1;          /**< kept as delivered */
  u32 ulSpec2;          /**< kept as delivered */
  u32 ulDescMaxLen;     /**< description length in characters without the terminator, 1 to 80 */
  u32 ulMsgFid;         /**< FID of the library's message task */
  u32 ulAttrClassValue; /**< class value for the attribute service */
} PmSpec;

/** PTP number specification. */
typedef struct PmAttrCB {
  u16 usVisiblePtpNum; /**< visible PTPs */
  u16 usOtherPtpNum;   /**< all others but the virtual ones */
  u16 usVirtualPtpNum; /**< virtual PTPs */
  u16 usMaxPtpID;      /**< highest PTP ID */
  u16 usReserved1;     /**< kept as delivered */
  u16 usExtAreaSize;   /**< first identifier of private dynamic memory */
  u16 usReserved2;     /**< kept as delivered */
  u16 usReserved3;     /**< kept as delivered */
} PmAttrCB;

/** Port-type counts. */
typedef struct PmSubAttrNum {
  u16 usPtpTypeNum;      /**< number of port types */
  u16 usMaxPtpTypeValue; /**< highest port type value */
} PmSubAttrNum;

/** Head of a specification message; ulLen payload bytes follow. */
typedef struct PmSpecMsg {
  u32 ulIdentifier; /**< PM_SPEC_MSG_... */
  u32 ulLen;        /**< bytes that follow */
} PmSpecMsg;

#pragma pack(pop)

PM_PIN_SIZE(PmSpec, 24);
PM_PIN_OFFSET(PmSpec, ulDescMaxLen, 12);
PM_PIN_OFFSET(PmSpec, ulMsgFid, 16);
PM_PIN_OFFSET(PmSpec, ulAttrClassValue, 20);
PM_PIN_SIZE(PmAttrCB, 16);
PM_PIN_OFFSET(PmAttrCB, usMaxPtpID, 6);
PM_PIN_OFFSET(PmAttrCB, usExtAreaSize, 10);
PM_PIN_SIZE(PmSubAttrNum, 4);
PM_PIN_SIZE(PmSpecMsg, 8);

/** Identifiers of the specification messages. */
enum {
  PM_SPEC_MSG_SPEC = 0x6C00000,    /**< PmSpec */
  PM_SPEC_MSG_ATTR_CB = 0x6C00001, /**< PmAttrCB */
  PM_SPEC_MSG_SUB_ATTR = 0x6C00002 /**< PmSubAttrNum */
};

/** Indexes of the values of PmSpec. */
enum { PM_SPEC_INDEX_DESC_MAX_LEN = 3, PM_SPEC_INDEX_MSG_FID = 4, PM_SPEC_INDEX_ATTR_CLASS = 5 };

enum {
  PM_DESC_LEN_MAX = 80 /**< longest description that a static record has room for */
};

/**
 * Takes a specification message into the record that its identifier names. Called by the data
 * distribution in its own task.
 *
 * @param pSpecMsg  PmSpecMsg head followed by the payload, any alignment
 * @retval 0  always: an unknown identifier is ignored, a wrong length is recorded and ignored
 */
PM_API u32 PM_LibSpecUpdate(const void *pSpecMsg);

/**
 * Sets one value of the general specification.
 *
 * @param ulIndex  0 to 5
 * @param ulValue  index 2: nonzero; index 3: 1 to 80; others: any value
 * @retval 0                 stored
 * @retval PM_ERR_LEN_RANGE  the value is refused; the old one stays
 * @retval PM_ERR_STR_OPER   the index is above 5
 */
PM_API u32 PM_LibSetPmSpec(u32 ulIndex, u32 ulValue);

/**
 * One value of the general specification. The same as PM_LibGetPmSpec.
 *
 * @param ulIndex  0 to 5
 * @return the value (not a result code); 0xFFFFFFFF for an index above 5
 */
PM_API u32 PM_GetPmSpec(u32 ulIndex);

/**
 * One value of the general specification. The same as PM_GetPmSpec.
 *
 * @param ulIndex  0 to 5
 * @return the value (not a result code); 0xFFFFFFFF for an index above 5
 */
PM_API u32 PM_LibGetPmSpec(u32 ulIndex);

/**
 * The total number of PTPs: visible, virtual and other.
 *
 * @return the number (not a result code), modulo 65536
 */
PM_API u32 PM_LibGetPtpMaxNum(void);

/**
 * The highest PTP ID.
 *
 * @return 1 to 65534 (not a result code); 1 while usMaxPtpID is 0 or 0xFFFF
 */
PM_API u16 PM_LibGetMaxPtpID(void);

PM_C_END

#endif

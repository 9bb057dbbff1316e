/** @file
 * Dynamic public records: what every PTP is and where it sits. One flat array per instance, indexed
 * by PTP ID, filled by the data distribution. */
#ifndef PM_DYNAMIC_DATA_H
#define PM_DYNAMIC_DATA_H

#include "pm_base.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** Dynamic record of one PTP, as the data distribution delivers it; all zero = empty slot. */
typedef struct PtpDynPubData {
  u16 usIndex1;       /**< class 0: board index */
  u16 usIndex2;       /**< class 0: port number on the board */
  u8 ucPtpClass;      /**< PM_PTP_CLASS_... */
  u8 ucExist;         /**< nonzero = the PTP exists */
  u16 usPtpType;      /**< port type */
  u8 ucInvisible;     /**< 0 = visible, 1 = invisible */
  u16 PrivDynDataID;  /**< identifier of the PTP's private dynamic data */
  u32 LastChangeTick; /**< tick of the last change */
  u32 ulVsMask;       /**< bit n set = member of virtual system n */
} PtpDynPubData;

#pragma pack(pop)

PM_PIN_SIZE(PtpDynPubData, 19);
PM_PIN_OFFSET(PtpDynPubData, usIndex2, 2);
PM_PIN_OFFSET(PtpDynPubData, ucPtpClass, 4);
PM_PIN_OFFSET(PtpDynPubData, ucExist, 5);
PM_PIN_OFFSET(PtpDynPubData, usPtpType, 6);
PM_PIN_OFFSET(PtpDynPubData, ucInvisible, 8);
PM_PIN_OFFSET(PtpDynPubData, PrivDynDataID, 9);
PM_PIN_OFFSET(PtpDynPubData, LastChangeTick, 11);
PM_PIN_OFFSET(PtpDynPubData, ulVsMask, 15);

enum {
  PM_PTP_CLASS_PORT = 0,  /**< a physical port */
  PM_PTP_CLASS_OTHER = 1, /**< a PTP whose place only the product knows */
  PM_PTP_CLASS_NUM = 2
};

/** Selectors of the single-attribute functions, with the width of the field. */
enum {
  PM_DYN_ATTR_INDEX1 = 0,           /**< u16 */
  PM_DYN_ATTR_INDEX2 = 1,           /**< u16 */
  PM_DYN_ATTR_PTP_CLASS = 2,        /**< u8 */
  PM_DYN_ATTR_EXIST = 3,            /**< u8 */
  PM_DYN_ATTR_PTP_TYPE = 4,         /**< u16 */
  PM_DYN_ATTR_INVISIBLE = 5,        /**< u8 */
  PM_DYN_ATTR_PRIV_DYN_DATA_ID = 6, /**< u16 */
  PM_DYN_ATTR_LAST_CHANGE_TICK = 7, /**< u32 */
  PM_DYN_ATTR_VS_MASK = 8           /**< u32, cannot be written */
};

/**
 * Creates the store if it is missing: the maximum PTP ID plus one empty slots. A store that exists
 * keeps its size and contents. Called by the restore of dynamic records.
 *
 * @retval 0              the store exists
 * @retval PM_ERR_MALLOC  no memory; a later call tries again
 * @retval PM_ERR_PARA    no current instance
 */
PM_API u32 PM_LibMallocForDynCB(void);

/**
 * Reads one field of a PTP's dynamic record.
 *
 * @param[in]  usPtpID     PTP ID, 0 to the maximum PTP ID
 * @param[in]  ulSelector  field, PM_DYN_ATTR_...; any other value is recorded and copies nothing
 * @param[out] pValue      receives the field, as wide as the field
 * @retval 0                     the PTP exists
 * @retval PM_ERR_PARA           pValue is null, the store does not exist yet, or no current
 *                               instance
 * @retval PM_ERR_PTPID_RANGE    usPtpID is above the maximum or beyond the store
 * @retval PM_ERR_PTP_NOT_EXIST  the slot is empty; the slot's value has been copied all the same
 */
PM_API u32 PM_LibGetDynPubDataAttr(u16 usPtpID, u32 ulSelector, void *pValue);

/**
 * Writes one field of a PTP's dynamic record; no other field changes and nobody is notified.
 *
 * @param usPtpID     PTP ID, 0 to the maximum PTP ID
 * @param ulSelector  field, PM_DYN_ATTR_... 0 to 7; any other value is recorded and writes nothing
 * @param pValue      the value, as wide as the field
 * @retval 0                   written, or the selector is above 7
 * @retval PM_ERR_PARA         pValue is null, the store does not exist yet, or no current instance
 * @retval PM_ERR_PTPID_RANGE  usPtpID is above the maximum or beyond the store
 */
PM_API u32 PM_LibSetDynPubDataAttr(u16 usPtpID, u32 ulSelector, const void *pValue);

/**
 * Copies a PTP's whole dynamic record.
 *
 * @param[in]  usPtpID           PTP ID, 0 to the maximum PTP ID
 * @param[out] pstPtpDynPubData  receives the 19 bytes
 * @retval 0                     the PTP exists
 * @retval PM_ERR_PARA           the output is null, the store does not exist yet, or no current
 *                               instance
 * @retval PM_ERR_PTPID_RANGE    usPtpID is above the maximum or beyond the store
 * @retval PM_ERR_PTP_NOT_EXIST  the slot is empty; it has been copied all the same
 */
PM_API u32 PM_LibGetAllDynDataFromPtpID(u16 usPtpID, PtpDynPubData *pstPtpDynPubData);

/**
 * Tells where a private dynamic memory identifier lies. The range begins at usExtAreaSize of the
 * PTP number specification and is usVirtualPtpNum long.
 *
 * @param ulMemID  identifier
 * @retval 0                in the range
 * @retval 1                below it
 * @retval PM_ERR_STR_OPER  above it
 */
PM_API u32 PM_LibGetDynPrivMemRangeFromMemID(u32 ulMemID);

/**
 * Translates a database result into a result code.
 *
 * @param ulDbRet  database result
 * @retval 0                     result 0
 * @retval PM_ERR_PTP_NOT_EXIST  results 3 and 5
 * @retval PM_ERR_DB_STATE       result 4
 * @retval PM_ERR_DB_FAIL        any other result
 */
PM_API u32 PM_LibConverDbErrorCode(u32 ulDbRet);

PM_C_END

#endif

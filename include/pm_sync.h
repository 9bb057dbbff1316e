/** @file
 * Active/standby synchronisation of the static data.
 *
 * The active board's static records are copied to the standby board unit by unit; a unit is the
 * record of one PTP. A restore from the data distribution marks the PTP's unit as changed, the
 * synchronisation module has it extracted on the active side, carries the 220 bytes over, and has
 * them restored on the standby side. The module calls extract and restore in the context of the
 * instance they work on; nothing is locked. */
#ifndef PM_SYNC_H
#define PM_SYNC_H

#include "pm_base.h"
#include "pm_static_data.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** One unit: the static data of one PTP; the unit index is the PTP ID, 0 to the maximum PTP ID. The
 * restore does not read the first two bytes. */
typedef struct PmSynRecord {
  u8 ucReserved;        /**< 0 */
  u8 ucModule;          /**< PM_SYN_MODULE */
  u16 usLen;            /**< 214 */
  u16 usVersion;        /**< 0, the only version */
  PtpStaticData stData; /**< every byte 0xFF: the PTP has no static data */
} PmSynRecord;

#pragma pack(pop)

PM_PIN_SIZE(PmSynRecord, 220);
PM_PIN_OFFSET(PmSynRecord, usLen, 2);
PM_PIN_OFFSET(PmSynRecord, usVersion, 4);
PM_PIN_OFFSET(PmSynRecord, stData, 6);

enum { PM_SYN_MODULE = 5 /**< the static data at the synchronisation module */ };

/**
 * Registers the static data with the synchronisation module. Called once, in start-up phase 8: the
 * number of units is taken from the maximum PTP ID at that moment.
 *
 * @retval 0  registered
 * @return otherwise the result of the first of the four registration calls that failed; the later
 * ones are not made
 */
PM_API u32 PM_LibSynRegister(void);

/**
 * Extracts one unit on the active side. Called by the synchronisation module.
 *
 * @param[in]  ulUnit     PTP ID, 0 to the maximum PTP ID
 * @param[out] pBuf       receives a PmSynRecord, any alignment
 * @param[in]  ulBufLen   size of the buffer in bytes, at least 220
 * @param[out] pulOutLen  220; written on success only
 * @retval 0                    extracted
 * @retval PM_ERR_DATA_INVALID  this side is not active
 * @retval PM_ERR_PARA          pBuf or pulOutLen is null, or no current instance
 * @retval PM_ERR_LEN           the buffer is shorter than 220 bytes
 * @retval PM_ERR_PTPID_RANGE   ulUnit is above the maximum PTP ID
 * @retval PM_ERR_MEM_OPER      the copy failed; the buffer holds the six header bytes
 */
PM_API u32 PM_LibSynExtractStaticData(u32 ulUnit, void *pBuf, u32 ulBufLen, u32 *pulOutLen);

/**
 * Restores one unit on the standby side. Called by the synchronisation module.
 *
 * @param ulUnit      PTP ID, 0 to the maximum PTP ID
 * @param pRecord     PmSynRecord, any alignment
 * @param ulLen       length of the record in bytes
 * @param ulReserved  not read
 * @retval 0                    restored
 * @retval PM_ERR_PARA          pRecord is null
 * @retval PM_ERR_PTPID_RANGE   ulUnit is above the maximum PTP ID
 * @retval PM_ERR_LEN           the record is too short to carry a version
 * @retval PM_ERR_DATA_INVALID  the version is not 0, whatever the length
 * @return otherwise the result of PM_LibSynRestoreStaticDataV0
 */
PM_API u32 PM_LibSynRestoreStaticData(u32 ulUnit, const void *pRecord, u32 ulLen, u32 ulReserved);

/**
 * Restores a record of version 0: deletes the PTP's record if every data byte is 0xFF, else inserts
 * or replaces the record under the PTP ID that it carries itself.
 *
 * @param usPtpID  unit, the PTP whose record a deletion deletes
 * @param pRecord  PmSynRecord, any alignment
 * @param ulLen    length of the record in bytes, 220 or more
 * @retval 0                    restored
 * @retval PM_ERR_PARA          pRecord is null, or no current instance
 * @retval PM_ERR_LEN           the record is shorter than 220 bytes
 * @retval PM_ERR_DATA_INVALID  its usLen is not 214
 * @return otherwise the result of PM_LibUpdateStaticDBNode
 */
PM_API u32 PM_LibSynRestoreStaticDataV0(u16 usPtpID, const void *pRecord, u32 ulLen);

/** Reset callback of the synchronisation module. Does nothing: the library keeps no bit table. */
PM_API void PM_LibSynResetAllBitTable(void);

/**
 * Would mark private dynamic attributes for the standby; they are not synchronised.
 *
 * @retval 0  always
 */
PM_API u32 PM_SynSetDynPrivAttrBitTable(void);

PM_C_END

#endif

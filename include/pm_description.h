/** @file
 * Descriptions and private static data of PTPs, read from the static records of the current
 * instance. L below is the configured description length (PmSpec, index 3): 1 to 80 characters,
 * the terminator not counted. A greater length that was delivered all the same counts as 80, except
 * that a caller's buffer still has to be larger than it. Only existing PTPs of the port class
 * answer. */
#ifndef PM_DESCRIPTION_H
#define PM_DESCRIPTION_H

#include "pm_base.h"

PM_C_BEGIN

/**
 * Copies the description of a PTP.
 *
 * @param[in]  usPtpID       PTP ID of an existing physical port
 * @param[in]  ulDescLength  size of the buffer in bytes, at least L + 1
 * @param[out] pcDesc        receives at most L characters and a terminator, and a zero at index L
 * @retval 0                written
 * @retval PM_ERR_PARA      pcDesc is null
 * @retval PM_ERR_LEN       the buffer is not larger than L
 * @retval PM_ERR_STR_OPER  the copy failed
 * @return otherwise the code of PM_LibIfPhyPtpExist or of PM_LibStaticDataGetDataFromPTP
 */
PM_API u32 PM_LibGetDescFromPTP(u16 usPtpID, u32 ulDescLength, char *pcDesc);

/**
 * Finds the lowest PTP ID whose record carries a description, byte for byte. A linear scan that
 * copies one record per PTP, meant for configuration only. It begins at PTP ID 0 and ends at the
 * first PTP without static data: PTPs behind a gap are not found.
 *
 * @param[in]  pcDesc    description, 1 to L characters
 * @param[out] pusPtpID  PTP ID of the record; PM_PTP_ID_NONE on every failure after the arguments
 *                       were found valid
 * @retval 0                     found
 * @retval PM_ERR_PARA           an argument is null
 * @retval PM_ERR_DESC_INVALID   the description is empty or longer than L
 * @retval PM_ERR_PTP_NOT_EXIST  no PTP carries it, or the scan met a PTP without static data
 * @retval 1                     there is no static record at all yet, or the PTP counts reach
 *                               beyond the maximum PTP ID
 * @return otherwise the code of PM_LibStaticDataGetDataFromPTP, or the code of PM_LibIfPhyPtpExist
 * for the first record that carries the description; the scan does not go on behind it
 */
PM_API u32 PM_LibGetPtpFromDesc(const char *pcDesc, u16 *pusPtpID);

/**
 * Copies private static data of a PTP, which its sub-line alone understands.
 *
 * @param[in]  usPtpID  PTP ID of an existing physical port
 * @param[in]  ulLen    number of bytes wanted from the start of the data, 1 to PM_PRI_DATA_SIZE
 * @param[out] pucData  receives ulLen bytes
 * @retval 0                 written
 * @retval PM_ERR_PARA       pucData is null
 * @retval PM_ERR_LEN_RANGE  ulLen is 0 or above 120
 * @retval 1                 the copy failed
 * @return otherwise the code of PM_LibIfPhyPtpExist or of PM_LibStaticDataGetDataFromPTP
 */
PM_API u32 PM_LibGetPrivStaticDataFromPTP(u16 usPtpID, u32 ulLen, u8 *pucData);

PM_C_END

#endif

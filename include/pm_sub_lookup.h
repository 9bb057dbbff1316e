/** @file
 * Questions about port types: known or not, suffix, record, callbacks.
 *
 * Every search takes the first match in suffix order. Outputs are written on success only. A
 * pointer handed out designates the instance's own table: it stays valid as long as the instance,
 * and the caller neither frees it nor writes through it. The functions may be called in any task of
 * the process; a record that is being restored at the same moment may be seen half written. Before
 * the first port-type record has arrived no type is known and no suffix valid. */
#ifndef PM_SUB_LOOKUP_H
#define PM_SUB_LOOKUP_H

#include "pm_base.h"
#include "pm_sub_attr.h"

PM_C_BEGIN

/**
 * Record of the port type at a suffix.
 *
 * @param[in]  usSuffix     suffix, 0 to the number of port types minus one
 * @param[out] ppstSubInfo  the record
 * @retval 0                      written
 * @retval PM_ERR_SUFFIX_INVALID  no record stands at the suffix
 * @retval PM_ERR_PARA            ppstSubInfo is null, or no current instance
 */
PM_API u32 PM_LibGetSubInfoFromSuffix(u16 usSuffix, PmSubInnerSubInfo **ppstSubInfo);

/**
 * Is the value a known port type?
 *
 * @param usPtpType  port type
 * @retval 0                       yes
 * @retval PM_ERR_PTPTYPE_INVALID  no
 * @retval PM_ERR_PARA             no current instance
 * @return otherwise the code of PM_LibGetSubInfoFromSuffix
 */
PM_API u32 PM_LibIsPtpTypeValid(u16 usPtpType);

/**
 * Suffix of a port type.
 *
 * @param[in]  usPtpType  port type
 * @param[out] pusSuffix  suffix, 0 to the number of port types minus one
 * @retval 0                       written
 * @retval PM_ERR_DATA_INVALID     pusSuffix is null, or the type is above the highest value
 * @retval PM_ERR_PTPTYPE_INVALID  the type is not known
 * @retval PM_ERR_PARA             no current instance
 */
PM_API u32 PM_LibGetLogicPtpType(u16 usPtpType, u16 *pusSuffix);

/**
 * Record of a port type, and the callback entry at the same position. The entry's own type is not
 * compared.
 *
 * @param[in]  usPtpType     port type
 * @param[out] ppstSubInfo   the record
 * @param[out] ppstCallBack  the entry; null when the callback table is missing or ends before it
 * @retval 0                       written
 * @retval PM_ERR_PTPTYPE_INVALID  no record carries the type
 * @retval PM_ERR_PARA             an output is null, or no current instance
 */
PM_API u32 PM_LibGetSubInfo(u16 usPtpType, PmSubInnerSubInfo **ppstSubInfo,
                            PmSubCallBackEntry **ppstCallBack);

/**
 * Callback entry that carries a port type.
 *
 * @param[in]  usPtpType     port type; type 0 also finds an entry that no sub-line has filled
 * @param[out] ppstCallBack  the entry
 * @retval 0                       written
 * @retval PM_ERR_PTPTYPE_INVALID  no entry carries the type
 * @retval PM_ERR_PARA             ppstCallBack is null, or no current instance
 */
PM_API u32 PM_LibGetSubFuncFromPtpType(u16 usPtpType, PmSubCallBackEntry **ppstCallBack);

/**
 * Copies the callbacks of a port type.
 *
 * @param[in]  usPtpType    port type
 * @param[out] pstCallBack  receives the nine slots
 * @retval 0            written
 * @retval PM_ERR_PARA  pstCallBack is null
 * @return otherwise the code of PM_LibGetSubFuncFromPtpType
 */
PM_API u32 PM_LibGetSubFunc(u16 usPtpType, PmSubCallBack *pstCallBack);

/**
 * Copies the callbacks that serve a PTP.
 *
 * @param[in]  usPtpID      PTP ID
 * @param[out] pstCallBack  receives the nine slots
 * @retval 0            written
 * @retval PM_ERR_PARA  pstCallBack is null
 * @return otherwise the code of PM_LibGetTypeFromPTP or of PM_LibGetSubFunc
 */
PM_API u32 PM_LibGetSubFuncFromPTP(u16 usPtpID, PmSubCallBack *pstCallBack);

PM_C_END

#endif

/** @file
 * Co-classes of port types, and the product's mapping between ONTs and co-indexes. */
#ifndef PM_CO_CLASS_H
#define PM_CO_CLASS_H

#include "pm_base.h"

PM_C_BEGIN

/**
 * Co-class of a port type, from the record that the data distribution delivered for it.
 *
 * @param[in]  usPtpType   port type
 * @param[out] pusCoClass  co-class; written on success only
 * @retval 0                       written
 * @retval PM_ERR_PARA             pusCoClass is null
 * @retval PM_ERR_PTPTYPE_INVALID  the port type is not known
 * @return otherwise the code of PM_LibGetSubInfo
 */
PM_API u32 PM_LibGetPtpCoClass(u16 usPtpType, u16 *pusCoClass);

/**
 * Co-class of a PTP, which is that of its port type.
 *
 * @param[in]  usPtpID     PTP ID
 * @param[out] pusCoClass  co-class; written on success only
 * @retval 0                    written
 * @retval PM_ERR_DATA_INVALID  pusCoClass is null
 * @return otherwise the code of PM_LibGetTypeFromPTP or PM_LibGetPtpCoClass
 */
PM_API u32 PM_LibGetCoClassFromPtpID(u16 usPtpID, u16 *pusCoClass);

/**
 * Co-index and co-type of an ONT. The product's hook knows the mapping; the order and meaning of
 * the words (the ONT's coordinates, pointers to the outputs) are between it and the caller. They
 * are passed on unchanged.
 *
 * @param ulWord1  word of the hook, not 0
 * @param ulWord2  word of the hook, not 0
 * @param ulWord3  word of the hook, not 0
 * @param ulWord4  word of the hook, not 0
 * @param ulWord5  word of the hook, not 0
 * @retval PM_ERR_DATA_INVALID  a word is 0; the hook is not called
 * @retval PM_ERR_PARA          the product registered no hook
 * @return otherwise the result of pfnGetCoIndexByFspOntid
 */
PM_API u32 PM_LibGetCoIndexAndCotypeByFspOntid(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3,
                                               PmWord ulWord4, PmWord ulWord5);

/**
 * The ONT of a co-index and co-type, through the product's hook. The words are passed on unchanged.
 *
 * @param ulWord1  word of the hook, any value
 * @param ulWord2  word of the hook, any value
 * @param ulWord3  word of the hook, not 0: where it puts the ONT's coordinates
 * @retval PM_ERR_DATA_INVALID  ulWord3 is 0; the hook is not called
 * @retval PM_ERR_PARA          the product registered no hook
 * @return otherwise the result of pfnGetFspOntidByCoIndex
 */
PM_API u32 PM_LibGetFspOntidByCoIndexAndCotype(PmWord ulWord1, PmWord ulWord2, PmWord ulWord3);

PM_C_END

#endif

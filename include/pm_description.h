/* Descriptions and private static data of PTPs. */
#ifndef PM_DESCRIPTION_H
#define PM_DESCRIPTION_H

#include "pm_base.h"

PM_C_BEGIN

PM_API u32 PM_LibGetDescFromPTP(u16 usPtpID, u32 ulDescLength, char *pcDesc);
PM_API u32 PM_LibGetPtpFromDesc(const char *pcDesc, u16 *pusPtpID);
PM_API u32 PM_LibGetPrivStaticDataFromPTP(u16 usPtpID, u32 ulLen, u8 *pucData);

PM_C_END

#endif

/* Questions about port types: known or not, suffix, record, callbacks. */
#ifndef PM_SUB_LOOKUP_H
#define PM_SUB_LOOKUP_H

#include "pm_base.h"
#include "pm_sub_attr.h"

PM_C_BEGIN

PM_API u32 PM_LibGetSubInfoFromSuffix(u16 usSuffix, PmSubInnerSubInfo **ppstSubInfo);
PM_API u32 PM_LibIsPtpTypeValid(u16 usPtpType);
PM_API u32 PM_LibGetLogicPtpType(u16 usPtpType, u16 *pusSuffix);
PM_API u32 PM_LibGetSubInfo(u16 usPtpType, PmSubInnerSubInfo **ppstSubInfo,
                            PmSubCallBackEntry **ppstCallBack);
PM_API u32 PM_LibGetSubFuncFromPtpType(u16 usPtpType, PmSubCallBackEntry **ppstCallBack);
PM_API u32 PM_LibGetSubFunc(u16 usPtpType, PmSubCallBack *pstCallBack);
PM_API u32 PM_LibGetSubFuncFromPTP(u16 usPtpID, PmSubCallBack *pstCallBack);

PM_C_END

#endif

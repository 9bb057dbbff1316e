/* Virtual systems, visibility and the physical state of ports. */
#ifndef PM_VIRTUAL_SYSTEM_H
#define PM_VIRTUAL_SYSTEM_H

#include "pm_base.h"

PM_C_BEGIN

enum { PM_VS_NUM = 9 /* virtual systems 0 to 8 */ };

PM_API u32 PM_LibGetVsNumByVsMask(u32 ulVsMask);
PM_API u32 PM_LibGetVsMaskFromPtp(u16 usPtpID, u32 *pulVsMask);
PM_API u32 PM_LibIfPtpInVs(u16 usPtpID, u32 ulVsID);
PM_API u32 PM_LibIfPtpOnlyInOneVs(u16 usPtpID, u32 ulVsID);
PM_API u32 PM_LibIfPortBelongMultiVs(u16 usPtpID);
PM_API u32 PM_LibGetPtpMngtVsID(u16 usPtpID, u16 *pusVsID);
PM_API u32 PM_LibIsPtpVisible(u16 usPtpID);
PM_API u32 PM_LibGetVisiblePtpFromFSP(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u16 *pusPtpID);
PM_API u32 PM_LibGetPtpPhyStateFromPTP(u16 usPtpID, u8 *pucPhyState);

PM_C_END

#endif

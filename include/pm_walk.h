/* Walks over the physical ports in frame, slot, port order. */
#ifndef PM_WALK_H
#define PM_WALK_H

#include "pm_base.h"

PM_C_BEGIN

/* Visibility filter of the inner steps. */
enum { PM_FILTER_VISIBLE = 0, PM_FILTER_INVISIBLE = 1, PM_FILTER_ALL = 2 };

enum { PM_VS_ID_ALL = 0xFFFF /* no virtual-system filter */ };

PM_API u32 PM_LibGetNextPtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType, u16 *pusNextPtpID);
PM_API u32 PM_LibGetNextVisiblePtpFromPTP(u16 usBIndex, u16 usPtpID, u16 usPtpType,
                                          u16 *pusNextPtpID);
PM_API u32 PM_LibGetNextPtpFromVS(u32 ulVsID, u16 usBIndex, u16 usPtpID, u16 usPtpType,
                                  u16 *pusNextPtpID);
PM_API u32 PM_LibPtpIdGetNextFromPortPtp(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                         u16 *pusNextPtpID);
PM_API u32 PM_LibGetNextPtpIdByPtpID(u16 usPtpID, u16 usPtpType, u8 ucFilter, u16 *pusNextPtpID);
PM_API u32 PM_LibGetNextPtpIdByBIndex(u16 usBIndex, u16 usPtpID, u16 usPtpType, u8 ucFilter,
                                      u16 *pusNextPtpID);
PM_API u32 PM_LibGetNextPtpIdInBoardByPort(u16 usBIndex, u8 ucPort, u16 usPtpType, u8 ucFilter,
                                           u16 *pusNextPtpID);

PM_C_END

#endif

/* Device layer (frames, boards, ports) and port topology. */
#ifndef PLATFORM_DEV_H
#define PLATFORM_DEV_H

#include "platform/base.h"

PM_C_BEGIN

/* The number of frames, not a result code. */
u16 DEV_GetMaxFrameNum(void);
/* 0 = the frame exists. */
u32 DEV_LibIfFrameExist(u16 usFrameID);
u32 DEV_LibGetFrameAttribute(u16 usFrameID, u32 ulAttr, u32 ulLen, void *pOut);
/* 0 = the board exists. */
u32 DEV_LibIfBoardExist(u16 usBIndex);
u32 DEV_LibGetBoardAttribute(u16 usBIndex, u32 ulAttr, u32 ulLen, void *pOut);
u32 DEV_LibGetPortTypeOfBoard(u16 usBIndex, u8 ucPort, u8 *pucType);
u32 DEV_LibGetBIndexFromFrameIDSlotID(u16 usFrameID, u8 ucSlotID, u16 *pusBIndex);
u32 DEV_LibGetFrameIDSlotIDFromBIndex(u16 usBIndex, u16 *pusFrameID, u8 *pucSlotID);
void DEV_LibPrintf(u32 ulLevel, const char *pcFormat, ...) PM_PRINTF(2, 3);
void DEV_LibRecLongTimeCostPrimaryWordLog(const char *pcFile, u32 ulLine, u32 ulTicks,
                                          u32 ulPrimType, const void *pfnFunc);
/* 0 = the port is wired to the board's LAN switch. */
u32 PTOPO_LibGetHardPhyIDFromPortId(u16 usFrameID, u8 ucSlotID, u8 ucPortID, u8 *pucHard1,
                                    u8 *pucHard2);
/* Nonzero = the port is an e-switch port. */
u32 PTOPO_ESWITCH_IsEswitchPort(u16 usFrameID, u8 ucSlotID, u8 ucPortID);

PM_C_END

#endif

/* The operator's debug window: eight numbered commands with up to three parameters. */
#ifndef PM_DEBUG_WINDOW_H
#define PM_DEBUG_WINDOW_H

#include "pm_base.h"
#include "pm_sub_attr.h"

PM_C_BEGIN

#pragma pack(push, 1)

/* A debug-window message. */
typedef struct PmDbwinMsg {
  u32 ulHeader0;
  u32 ulMsgType; /* PM_DBWIN_MSG_TYPE */
  u8 aucHeader[12];
  u32 ulCommand;
  u32 ulSubCmd;
  u32 ulPara1;
  u32 ulPara2;
} PmDbwinMsg;

#pragma pack(pop)

PM_PIN_SIZE(PmDbwinMsg, 36);
PM_PIN_OFFSET(PmDbwinMsg, ulCommand, 20);

enum { PM_DBWIN_MSG_TYPE = 0x4C };

PM_API void PM_LibInitPmDbWinCfg(void);
PM_API void PM_LibMsgProc(void *pMsg);
PM_API void PM_LibDebugMsgProc(const void *pMsg);

PM_API void PM_LibDbgPrintHelp(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibDbgShowRegedLineInfo(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibDbgShowPtpFromPtpID(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibDbgShowPtpFromFSP(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibDbgShowPTPSpec(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibShowSubLineInfo(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibDbgShowPrimFuncsByPrimType(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

PM_API void PM_LibShowDebugHelp(u32 ulLevel, u32 ulCommand, u32 ulPara1, u32 ulPara2);
PM_API void PM_LibShowAllHelpFunc(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibShowOneHelpFunc(u32 ulCommand, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd1(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd2(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd3(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd4(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd5(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd6(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd7(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
PM_API void PM_LibHelpFunCmd10(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);

PM_API void PM_LibDbgShowAllRegedLineSummary(void);
PM_API void PM_LibDbgShowOneRegedLineDetail(u16 usPtpType);
PM_API void PM_LibDbgShowPtpDetails(u16 usPtpID);
PM_API void PM_LibDbgGetPtpTypeDesc(u16 usPtpType, char *pcBuf, u32 ulBufLen);
PM_API void PM_LibDbgPrintSubLineInfo(const PmSubInnerSubInfo *pstSubInfo,
                                      const PmSubCallBackEntry *pstCallBack);
PM_API void PM_LibDbgPrintSubCallBackInfo(const PmSubCallBackEntry *pstCallBack);

PM_C_END

#endif

/* Debug output and the error recorder. */
#ifndef PLATFORM_DBG_H
#define PLATFORM_DBG_H

#include "platform/base.h"

PM_C_BEGIN

/* The place that the debug printers name for the next line; written before the line is printed. */
typedef struct DbgPrintInfo {
  const char *pcFile;
  u32 ulLine;
} DbgPrintInfo;

extern DbgPrintInfo g_stDbgPrintInfo;

/* Exactly 1 = printing is allowed. */
u32 DBG_xPrintfSwitch(u32 ulSelector, u32 ulSwitchNo);
void DBG_SetDbwinLineNo(u32 ulLine);
void xPrintf(u32 ulCompType, const char *pcFormat, ...) PM_PRINTF(2, 3);
void DBG_InnerPrintReltime(u32 ulCompType, const char *pcFormat, ...) PM_PRINTF(2, 3);
void DBG_InnerPrintInfo(u32 ulCompTypeOrLevel, const char *pcFormat, ...) PM_PRINTF(2, 3);
void DBG_PrintHelpInfoLevel0(u32 ulCompType, u32 ulCommand, const char *pcText);
void DBG_PrintHelpInfo(u32 ulCompType, u32 ulCommand, u32 ulLevel, u32 ulSubCmd, u32 ulPara1,
                       const char *pcText, u32 ulPara2, u32 ulPara3);
/* Keeps one error: where it happened and one value. */
void ERR_InnerRecErr(const char *pcFile, u32 ulLine, u32 ulValue);

PM_C_END

#endif

/** @file
 * Debug output and the error recorder. */
#ifndef PLATFORM_DBG_H
#define PLATFORM_DBG_H

#include "platform/base.h"

PM_C_BEGIN

/** The place that the debug printers name for the next line; written before the line is printed. */
typedef struct DbgPrintInfo {
  const char *pcFile; /**< source name */
  u32 ulLine;         /**< line */
} DbgPrintInfo;

/** Kept by the host, written by whoever prints next. */
extern DbgPrintInfo g_stDbgPrintInfo;

/**
 * May trace lines of a switch be printed? Asked before every trace line, also of a switch that the
 * library itself has off.
 *
 * @param ulSelector  who prints
 * @param ulSwitchNo  switch number
 * @return exactly 1 if they may
 */
u32 DBG_xPrintfSwitch(u32 ulSelector, u32 ulSwitchNo);

/**
 * Tells the line from which the next trace line is printed.
 *
 * @param ulLine  line
 */
void DBG_SetDbwinLineNo(u32 ulLine);

/**
 * Prints on the debug window.
 *
 * @param ulCompType  component type
 * @param pcFormat    as printf's
 */
void xPrintf(u32 ulCompType, const char *pcFormat, ...) PM_PRINTF(2, 3);

/**
 * Prints on the debug window at once, from the place in g_stDbgPrintInfo.
 *
 * @param ulCompType  component type
 * @param pcFormat    as printf's
 */
void DBG_InnerPrintReltime(u32 ulCompType, const char *pcFormat, ...) PM_PRINTF(2, 3);

/**
 * Prints on the debug window, from the place in g_stDbgPrintInfo.
 *
 * @param ulCompTypeOrLevel  component type, or level of the message
 * @param pcFormat           as printf's
 */
void DBG_InnerPrintInfo(u32 ulCompTypeOrLevel, const char *pcFormat, ...) PM_PRINTF(2, 3);

/**
 * Prints a command's summary line of the help.
 *
 * @param ulCompType  component type
 * @param ulCommand   command number
 * @param pcText      the text
 */
void DBG_PrintHelpInfoLevel0(u32 ulCompType, u32 ulCommand, const char *pcText);

/**
 * Prints a detail line of a command's help.
 *
 * @param ulCompType  component type
 * @param ulCommand   command number
 * @param ulLevel     level of the help
 * @param ulSubCmd    sub-command that the line is about
 * @param ulPara1     0
 * @param pcText      the text
 * @param ulPara2     0
 * @param ulPara3     0
 */
void DBG_PrintHelpInfo(u32 ulCompType, u32 ulCommand, u32 ulLevel, u32 ulSubCmd, u32 ulPara1,
                       const char *pcText, u32 ulPara2, u32 ulPara3);

/**
 * Keeps one error: where it happened and one value.
 *
 * @param pcFile   source name
 * @param ulLine   line
 * @param ulValue  the value
 */
void ERR_InnerRecErr(const char *pcFile, u32 ulLine, u32 ulValue);

PM_C_END

#endif

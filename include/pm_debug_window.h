/** @file
 * The operator's debug window: eight numbered commands with up to three parameters. */
#ifndef PM_DEBUG_WINDOW_H
#define PM_DEBUG_WINDOW_H

#include "pm_base.h"
#include "pm_sub_attr.h"

PM_C_BEGIN

#pragma pack(push, 1)

/** A debug-window message. */
typedef struct PmDbwinMsg {
  u32 ulHeader0;    /**< not read by the library */
  u32 ulMsgType;    /**< PM_DBWIN_MSG_TYPE */
  u8 aucHeader[12]; /**< not read by the library */
  u32 ulCommand;    /**< command number */
  u32 ulSubCmd;     /**< first parameter */
  u32 ulPara1;      /**< second parameter */
  u32 ulPara2;      /**< third parameter */
} PmDbwinMsg;

#pragma pack(pop)

PM_PIN_SIZE(PmDbwinMsg, 36);
PM_PIN_OFFSET(PmDbwinMsg, ulCommand, 20);

enum { PM_DBWIN_MSG_TYPE = 0x4C };

/** Levels of the help functions; every other level prints what PM_HELP_DETAIL prints. */
enum {
  PM_HELP_SUMMARY = 0, /**< the summary line of a command */
  PM_HELP_DETAIL = 1,  /**< its detail lines, one per sub-command; only command 1 has any */
  PM_HELP_ALL = 255    /**< both */
};

/** Fills the current instance's command table. Called once, in start-up phase 2. */
PM_API void PM_LibInitPmDbWinCfg(void);

/**
 * Message function of the library's PID: hands debug-window messages on and drops all others.
 *
 * @param pMsg  a host message of at least 8 bytes, a PmDbwinMsg if its type says so, any alignment;
 *              null is recorded
 */
PM_API void PM_LibMsgProc(void *pMsg);

/**
 * Runs the command of a debug-window message. A number without a command, and every number before
 * start-up phase 2, is answered with a line that says so.
 *
 * @param pMsg  PmDbwinMsg, any alignment; null: nothing happens
 */
PM_API void PM_LibDebugMsgProc(const void *pMsg);

/*
 * The commands. Each prints its answer on the debug output; a failed lookup is a line of the
 * answer. All but command 1, PM_LibDbgSwitchControl in pm_trace.h, only read the library's data.
 * They run in the task that receives the message and do not lock what they read.
 */

/**
 * Command 0: the help of all commands.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   not used
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibDbgPrintHelp(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/**
 * Command 2: the port types known, or one of them with its callbacks.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   0 = a list of all; any other value: the port type, its low 16 bits
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibDbgShowRegedLineInfo(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/**
 * Command 3: a PTP by its ID.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   PTP ID, the low 16 bits
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibDbgShowPtpFromPtpID(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/**
 * Command 4: a physical port by its place.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   frame ID, the low 16 bits
 * @param ulPara1    slot ID, the low 8 bits
 * @param ulPara2    port number, the low 8 bits
 */
PM_API void PM_LibDbgShowPtpFromFSP(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/**
 * Command 5: the PTP number specification.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   not used
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibDbgShowPTPSpec(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/**
 * Command 6: the callbacks of every registered sub-line.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   not used
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibShowSubLineInfo(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/**
 * Command 9: the functions booked for a primitive type, in booking order. Pauses for 10 ticks
 * before every eighth, the first included.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   primitive type 0 to 14, the low 16 bits
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibDbgShowPrimFuncsByPrimType(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

/*
 * Help texts.
 */

/**
 * The help of all commands or of one.
 *
 * @param ulLevel    PM_HELP_SUMMARY or PM_HELP_ALL: all commands at that level; any other value:
 *                   the details of one command
 * @param ulCommand  that command's number
 * @param ulPara1    not used
 * @param ulPara2    not used
 */
PM_API void PM_LibShowDebugHelp(u32 ulLevel, u32 ulCommand, u32 ulPara1, u32 ulPara2);

/**
 * The help of the eight commands in the order of their numbers.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibShowAllHelpFunc(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);

/**
 * The details of one command; nothing for a number without a command.
 *
 * @param ulCommand  command number
 * @param ulPara1    not used
 * @param ulPara2    not used
 * @param ulPara3    not used
 */
PM_API void PM_LibShowOneHelpFunc(u32 ulCommand, u32 ulPara1, u32 ulPara2, u32 ulPara3);

/**
 * The help of command 0. The seven functions that follow are those of commands 1 to 6 and 9: the
 * number in a name is the command's plus one.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd1(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 1; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd2(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 2; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd3(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 3; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd4(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 4; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd5(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 5; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd6(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 6; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd7(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);
/**
 * The help of command 9; see PM_LibHelpFunCmd1.
 *
 * @param ulLevel  PM_HELP_...
 * @param ulPara1  not used
 * @param ulPara2  not used
 * @param ulPara3  not used
 */
PM_API void PM_LibHelpFunCmd10(u32 ulLevel, u32 ulPara1, u32 ulPara2, u32 ulPara3);

/*
 * Pieces of the answers.
 */

/** The list of all port types: value and visible flag of each, in suffix order. */
PM_API void PM_LibDbgShowAllRegedLineSummary(void);

/**
 * One port type: its visible flag and its callbacks.
 *
 * @param usPtpType  port type
 */
PM_API void PM_LibDbgShowOneRegedLineDetail(u16 usPtpType);

/**
 * One PTP: its static record, then its dynamic record.
 *
 * @param usPtpID  PTP ID
 */
PM_API void PM_LibDbgShowPtpDetails(u16 usPtpID);

/**
 * Description of a port type as the PTP display shows it: "No support Desc" for a known type,
 * "unknown type" for any other, which is also answered with a line of its own.
 *
 * @param[in]  usPtpType  port type
 * @param[out] pcBuf      receives the text, cut to fit and terminated; when nothing can be copied
 *                        (null, or no room for the terminator) that is recorded
 * @param[in]  ulBufLen   size of the buffer in bytes
 */
PM_API void PM_LibDbgGetPtpTypeDesc(u16 usPtpType, char *pcBuf, u32 ulBufLen);

/**
 * Prints the visible flag and the callbacks of a port type.
 *
 * @param pstSubInfo   its record; null: nothing is printed
 * @param pstCallBack  its callback entry; null: no callbacks are printed
 */
PM_API void PM_LibDbgPrintSubLineInfo(const PmSubInnerSubInfo *pstSubInfo,
                                      const PmSubCallBackEntry *pstCallBack);

/**
 * Prints the nine callbacks of a port type, in slot order.
 *
 * @param pstCallBack  its callback entry; null: nothing is printed
 */
PM_API void PM_LibDbgPrintSubCallBackInfo(const PmSubCallBackEntry *pstCallBack);

PM_C_END

#endif

/** @file
 * The four trace switches and the one conditional printer. */
#ifndef PM_TRACE_H
#define PM_TRACE_H

#include "pm_base.h"

PM_C_BEGIN

/** Trace switches; all are off after start-up. */
enum {
  PM_SWITCH_FUNCTION = 0, /**< function trace and failures of lower-level lookups */
  PM_SWITCH_ERROR = 1,    /**< failures of exported functions */
  PM_SWITCH_DATA = 2,     /**< data modification supervision */
  PM_SWITCH_SYNC = 3,     /**< synchronisation and smooth information */
  PM_SWITCH_NUM = 4
};

/**
 * Sets the four trace switches of the current instance off and gives them their descriptions.
 * Called once, at the end of the FID start-up. Does nothing outside an instance.
 */
PM_API void PM_LibInitPMDbgSwitches(void);

/**
 * Prints one line on the debug output if the host and the trace switch allow it. The decision comes
 * before the formatting; output longer than 499 characters is cut.
 *
 * @param ulSelector  above 0x6C7FFFF the line is printed whatever the switch says; the library
 *                    itself passes 0
 * @param ulSwitchNo  trace switch 0 to 3, PM_SWITCH_...; a greater number has no switch and prints
 *                    whenever the host allows it
 * @param pcFormat    printf format
 *
 * Callable in any task; outside an instance switches 0 to 3 count as off.
 */
PM_API void PM_LibDotPrintf(u32 ulSelector, u32 ulSwitchNo, const char *pcFormat, ...)
    PM_PRINTF(3, 4);

/**
 * Debug-window command 1: displays the trace switches or sets one.
 *
 * @param ulCommand  command number, not used
 * @param ulSubCmd   0 = display all, 1 = set one; any other value prints an error line
 * @param ulPara1    number of the switch to set, 0 to 3; a greater one prints an error line
 * @param ulPara2    value to set: 0 = off, any other value = on
 */
PM_API void PM_LibDbgSwitchControl(u32 ulCommand, u32 ulSubCmd, u32 ulPara1, u32 ulPara2);

PM_C_END

#endif

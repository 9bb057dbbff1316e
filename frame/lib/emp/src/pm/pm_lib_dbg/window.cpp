// The debug window's command table and the dispatch of its messages.
#include "diag.hpp"
#include "global_data.hpp"
#include "pm_debug_window.h"

PM_SOURCE(pm_lib_dbg, 1);

namespace {

// A command's number is also its entry in the table; there are no commands 7 and 8.
constexpr PmDbwinCmd commands[] = {
    {0, PM_LibDbgPrintHelp, 0},         {1, PM_LibDbgSwitchControl, 0},
    {2, PM_LibDbgShowRegedLineInfo, 0}, {3, PM_LibDbgShowPtpFromPtpID, 0},
    {4, PM_LibDbgShowPtpFromFSP, 0},    {5, PM_LibDbgShowPTPSpec, 0},
    {6, PM_LibShowSubLineInfo, 0},      {9, PM_LibDbgShowPrimFuncsByPrimType, 0},
};

// An entry without a handler is one that was never filled, whatever its number says.
bool serves(const PmDbwinCmd &entry, u32 command) {
  return entry.pfnHandler != nullptr && entry.ulCommand == command;
}

}  // namespace

void PM_LibInitPmDbWinCfg(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  for (const PmDbwinCmd &command : commands) {
    data->astDbwinCmd[command.ulCommand] = command;
  }
}

void PM_LibDebugMsgProc(const void *pMsg) {
  const PmGlobalData *data = pm::current_data();
  if (pMsg == nullptr || data == nullptr) {
    return;
  }
  const PmDbwinMsg msg = pm::load<PmDbwinMsg>(pMsg);
  for (const PmDbwinCmd &entry : data->astDbwinCmd) {
    if (serves(entry, msg.ulCommand)) {
      entry.pfnHandler(msg.ulCommand, msg.ulSubCmd, msg.ulPara1, msg.ulPara2);
      return;
    }
  }
  PRINT_RELTIME("\r\n  unknown DBWIN command: %#x", msg.ulCommand);
}

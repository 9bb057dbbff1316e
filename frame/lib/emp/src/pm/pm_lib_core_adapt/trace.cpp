// The trace switches' state and the conditional printer. Command 1, which sets them, is with the
// debug window.
#include <cstdarg>

#include "diag.hpp"
#include "global_data.hpp"
#include "memory.hpp"
#include "platform/bounded.h"

PM_SOURCE(pm_lib_core_adapt, 2);

namespace {

constexpr const char *switch_descriptions[PM_SWITCH_NUM] = {
    "Function trace switch",
    "General error switch",
    "Data modification supervision switch",
    "Synchronization and smooth information switch",
};

constexpr u32 selector_unconditional = 0x6C7FFFF;  // selectors above it ignore the switch
constexpr u32 print_allowed = 1;
constexpr int format_failed = -1;
constexpr u32 line_size = 500;

bool switch_on(u32 switch_no) {
  const PmGlobalData *data = pm::current_data();
  return data != nullptr && pm::load<u32>(&data->astDbgSwitch[switch_no]) != 0;
}

bool prints(u32 selector, u32 switch_no) {
  if (DBG_xPrintfSwitch(selector, switch_no) != print_allowed) {
    return false;
  }
  return switch_no >= PM_SWITCH_NUM || selector > selector_unconditional || switch_on(switch_no);
}

}  // namespace

void PM_LibInitPMDbgSwitches(void) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  for (u32 i = 0; i < PM_SWITCH_NUM; ++i) {
    data->astDbgSwitch[i] = {0, switch_descriptions[i]};
  }
}

void PM_LibDotPrintf(u32 ulSelector, u32 ulSwitchNo, const char *pcFormat, ...) {
  if (!prints(ulSelector, ulSwitchNo)) {
    return;
  }
  char line[line_size];
  pm::clear(line, sizeof line);
  va_list args;
  va_start(args, pcFormat);
  const int length = vsnprintf_truncated_s(line, sizeof line, pcFormat, args);
  va_end(args);
  DBG_SetDbwinLineNo(PM_LINE);
  xPrintf(PM_COMP_TYPE, "%s", line);
  if (length == format_failed) {
    RECORD(ulSwitchNo);
  }
}

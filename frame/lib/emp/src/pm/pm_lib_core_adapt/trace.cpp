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

constexpr int format_failed = -1;
constexpr u32 line_size = 500;

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
  if (!pm::trace_on(ulSelector, ulSwitchNo)) {
    return;
  }
  va_list args;
  va_start(args, pcFormat);
  pm::print_trace_list(ulSwitchNo, pcFormat, args);
  va_end(args);
}

void pm::print_trace(u32 switch_no, const char *format, ...) {
  va_list args;
  va_start(args, format);
  print_trace_list(switch_no, format, args);
  va_end(args);
}

void pm::print_trace_list(u32 switch_no, const char *format, va_list args) {
  char line[line_size];
  pm::clear(line, sizeof line);
  const int length = vsnprintf_truncated_s(line, sizeof line, format, args);
  DBG_SetDbwinLineNo(PM_LINE);
  xPrintf(PM_COMP_TYPE, "%s", line);
  if (length == format_failed) {
    RECORD(switch_no);
  }
}

// Where failures are recorded and lines are traced: the only caller of the host's error recorder.
//
// Every source file names its recorded source and a line base of its own once, near its top:
//
//   PM_SOURCE(pm_lib_init, 3);
//
// The recorded source is the file's folder and the recorded line is 1000 * 3 + __LINE__, so a
// recorded (source, line) pair leads back to one statement.
#ifndef PM_DIAG_HPP
#define PM_DIAG_HPP

#include <type_traits>

#include "global_data.hpp"
#include "platform/dbg.h"
#include "platform/dev.h"
#include "pm_result.h"
#include "pm_trace.h"

namespace pm {

// A file's name for the recorder.
struct Source {
  const char *name;
  u32 line_base;
};

// What is recorded of a value: an integer as it is, a pointer as its low 32 bits.
template <typename Value>
constexpr u32 recorded(Value value) {
  if constexpr (std::is_null_pointer_v<Value>) {
    return 0;
  } else if constexpr (std::is_pointer_v<Value>) {
    return static_cast<u32>(reinterpret_cast<PmWord>(value));
  } else {
    return static_cast<u32>(value);
  }
}

template <typename... Values>
[[gnu::cold, gnu::noinline]] void record(const char *name, u32 line, Values... values) {
  (ERR_InnerRecErr(name, line, recorded(values)), ...);
}

template <typename... Values>
[[nodiscard, gnu::cold, gnu::noinline]] u32 fail(const char *name, u32 line, u32 code,
                                                 Values... values) {
  if constexpr (sizeof...(values) == 0) {
    record(name, line, code);
  } else {
    record(name, line, values...);
  }
  return code;
}

[[nodiscard]] inline u32 pass_up(const char *name, u32 line, u32 ret) {
  return ret == PM_OK ? PM_OK : fail(name, line, ret);
}

// A word as the traces print it with %u or %x: pointers by their low 32 bits.
template <typename Value>
constexpr u32 word(Value value) {
  return recorded(value);
}

// The value recorded for "was this pointer the null one": 1 or 0.
inline u32 is_null(const void *pointer) {
  return pointer == nullptr ? 1 : 0;
}

// A function pointer as the host's %p and pointer arguments take it.
template <typename Result, typename... Arguments>
const void *address(Result (*function)(Arguments...)) {
  return reinterpret_cast<const void *>(function);
}

// Does a line of this selector and switch go out? Asks the host, and then the instance's switch.
inline bool trace_on(u32 selector, u32 switch_no) {
  constexpr u32 print_allowed = 1;
  constexpr u32 selector_unconditional = 0x6C7FFFF;  // selectors above it ignore the switch
  if (DBG_xPrintfSwitch(selector, switch_no) != print_allowed) {
    return false;
  }
  if (switch_no >= PM_SWITCH_NUM || selector > selector_unconditional) {
    return true;
  }
  const PmGlobalData *data = current_data();
  return data != nullptr && load<u32>(&data->astDbgSwitch[switch_no]) != 0;
}

// Prints a line whose switch has been found on.
[[gnu::cold]] void print_trace(u32 switch_no, const char *format, ...) PM_PRINTF(2, 3);
[[gnu::cold]] void print_trace_list(u32 switch_no, const char *format, va_list args)
    PM_PRINTF(2, 0);

inline void set_print_position(const char *name, u32 line) {
  g_stDbgPrintInfo.pcFile = name;
  g_stDbgPrintInfo.ulLine = line;
}

}  // namespace pm

#define PM_SOURCE(group, number)                                                     \
  namespace {                                                                        \
  constexpr pm::Source pm_source = {"frame/lib/emp/src/pm/" #group, (number)*1000U}; \
  }                                                                                  \
  static_assert((number) > 0, "a line base")

#define PM_LINE (pm_source.line_base + static_cast<u32>(__LINE__))

// Records values at this place, one record each, in order.
#define RECORD(...) pm::record(pm_source.name, PM_LINE, __VA_ARGS__)

// Records values at this place and yields the code: return FAIL(code, value, ...); without values
// the code itself is recorded.
#define FAIL(...) pm::fail(pm_source.name, PM_LINE, __VA_ARGS__)

// Yields a result; one that is no success is recorded at this place.
#define PASS_UP(ret) pm::pass_up(pm_source.name, PM_LINE, (ret))

// Prints a line if the trace switch is on. Asked here and not in PM_LibDotPrintf, so that a switch
// that is off costs neither the call nor the passing of its arguments.
#define TRACE(switch_no, ...) \
  (pm::trace_on(0, (switch_no)) ? pm::print_trace((switch_no), __VA_ARGS__) : void())

// Prints a line of a debug-window answer, with and without the relative time.
#define PRINT_RELTIME(...)                          \
  (pm::set_print_position(pm_source.name, PM_LINE), \
   DBG_InnerPrintReltime(PM_COMP_TYPE, __VA_ARGS__))
#define PRINT_INFO(type_or_level, ...)              \
  (pm::set_print_position(pm_source.name, PM_LINE), \
   DBG_InnerPrintInfo((type_or_level), __VA_ARGS__))

#endif

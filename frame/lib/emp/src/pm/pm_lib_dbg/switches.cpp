// Command 1: displays and sets the trace switches.
#include "diag.hpp"
#include "global_data.hpp"
#include "pm_trace.h"

PM_SOURCE(pm_lib_dbg, 2);

namespace {

enum SwitchSubCommand : u32 { sub_display = 0, sub_set = 1 };

void print_switch(const PmDbgSwitch *switches, u32 switch_no) {
  // Without a description the FID start-up has not come as far as the switches.
  const char *desc = switches[switch_no].pcDesc;
  PRINT_RELTIME("\r\n  0x%-8x 0x%-8x  %s", switch_no, pm::load<u32>(&switches[switch_no]),
                desc == nullptr ? "" : desc);
}

void display_switches(const PmDbgSwitch *switches) {
  PRINT_RELTIME("\r\n  Dot Controlling switch info of PM module:");
  PRINT_RELTIME("\r\n  Switch No.    Switch value  Switch desc");
  for (u32 i = 0; i < PM_SWITCH_NUM; ++i) {
    print_switch(switches, i);
  }
  PRINT_RELTIME(
      "\r\n\r\n  use ulSubCmd=0x01, ulPara1=Switch No., ulPara2=Switch value, Switch modified "
      "value");
}

void set_switch(PmDbgSwitch *switches, u32 switch_no, u32 value) {
  if (switch_no >= PM_SWITCH_NUM) {
    PRINT_INFO(PM_COMP_TYPE, "\r\n  Switch No. is error");
    return;
  }
  pm::store(&switches[switch_no], value);
  PRINT_RELTIME("\r\n  Set switch Successful:");
  PRINT_RELTIME("\r\n  Swtich No.    Switch value  Switch desc");
  print_switch(switches, switch_no);
}

}  // namespace

void PM_LibDbgSwitchControl(u32 /*ulCommand*/, u32 ulSubCmd, u32 ulPara1, u32 ulPara2) {
  PmGlobalData *data = pm::current_data();
  if (data == nullptr) {
    return;
  }
  switch (ulSubCmd) {
    case sub_display:
      display_switches(data->astDbgSwitch);
      break;
    case sub_set:
      set_switch(data->astDbgSwitch, ulPara1, ulPara2);
      break;
    default:
      PRINT_RELTIME("\r\n Unknown error: 0x%x", ulSubCmd);
      break;
  }
}

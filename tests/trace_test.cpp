// The trace switches and the conditional printer.
#include "live_pm.hpp"

namespace {
struct Trace : test::LivePm {
  void prints(u32 selector, u32 switch_no, bool printed) {
    PM_LibDotPrintf(selector, switch_no, "%s %u", "line", 5U);
    expect(0, 0, {}, Lines(printed, "line 5"));
  }
};

TEST_F(Trace, ALineIsPrintedWhenTheHostAndItsSwitchAllowItAndCutToItsLength) {
  up();
  for (u32 on = 0; on < PM_SWITCH_NUM; ++on) {
    PM_LibInitPMDbgSwitches();
    PM_LibDbgSwitchControl(1, 1, on, 2);
    settle();
    for (u32 asked = 0; asked < PM_SWITCH_NUM; ++asked) {
      prints(0x6C7FFFF, asked, asked == on);
      prints(0x6C80000, asked, true);
    }
  }
  for (const u32 answer : {2U, 0U, 1U}) {
    node.debug.print_switch = answer;
    prints(0, 3, answer == 1);
    prints(0xFFFFFFFF, 4, answer == 1);
  }
  const auto print = [] { PM_LibDotPrintf(9, PM_SWITCH_SYNC, "%s", "text"); };
  EXPECT_EQ(host_calls({Fn::DBG_xPrintfSwitch, Fn::vsnprintf_truncated_s, Fn::xPrintf}, print),
            (Lines{"DBG_xPrintfSwitch(9, 3) = 1", "vsnprintf_truncated_s(500, \"%s\") = 4",
                   "xPrintf(54, \"text\")"}));
  expect(node.debug.window_line / 1000, 2, {}, {"text"});
  PM_LibDotPrintf(0, PM_SWITCH_SYNC, "%s", std::string(500, 'x').c_str());
  expect(0, 0, {}, {std::string(499, 'x')});
  node.faults.fail_nth(Fn::vsnprintf_truncated_s, 1);
  PM_LibDotPrintf(0, PM_SWITCH_SYNC, "text");
  expect(0, 0, {PM_SWITCH_SYNC}, {""});
  scope.emplace(node);
  prints(0, 3, false);
  prints(0, 4, true);
}
}  // namespace

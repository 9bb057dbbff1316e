// The debug window, driven by real messages. A transcript in tests/golden is a script of commands,
// "> command sub-command para1 para2", each followed by the host calls that answer it in their
// order: printed lines with their print position, pauses and questions to the device layer.
#include <algorithm>
#include <bit>
#include <fstream>
#include <iomanip>
#include <sstream>

#include "global_data.hpp"
#include "live_pm.hpp"

namespace {

using host::Fn;

// Functions are printed and not called: any address will do that is the same in every build.
const PmWord addresses[] = {0x1001, 0x1002, 0x1003, 0x1004, 0x1005, 0x1006, 0x1007, 0x1008, 0x1009};
const auto callbacks = std::bit_cast<PmSubCallBack>(addresses);
PmBookFunc booked_func(u32 number) {
  return std::bit_cast<PmBookFunc>(PmWord{0x9ABC0000U + number});
}

// The print position of a line, which is then made useless for the next one.
std::string take_position(Fn fn) {
  const DbgPrintInfo position = std::exchange(g_stDbgPrintInfo, {"nowhere", 0});
  const bool placed = fn == Fn::DBG_InnerPrintReltime || fn == Fn::DBG_InnerPrintInfo;
  return !placed ? "" : position.ulLine == 0 ? " nowhere" : std::string(" at ") + position.pcFile;
}

class DebugWindow : public test::LivePm {
 protected:
  std::function<void()> on_delay = [] {};

  // Sends a transcript's command, from an odd address.
  void send(const std::string &line) {
    std::istringstream words(line.substr(1));
    u32 number[4] = {};
    words >> std::setbase(0) >> number[0] >> number[1] >> number[2] >> number[3];
    const auto message = host::Framework::debug_message(number[0], number[1], number[2], number[3]);
    std::vector<u8> bytes(message.size() + 1);
    std::copy(message.begin(), message.end(), &bytes[1]);
    EXPECT_EQ(node.root.send_message(*instance, &bytes[1]), PM_OK);
  }

  void play(const std::string &transcript) {
    std::ifstream file(PM_SOURCE_DIR "/tests/golden/" + transcript + ".txt");
    ASSERT_TRUE(file) << transcript;
    Lines expected, actual;
    node.journal.keep_only({Fn::DBG_InnerPrintReltime, Fn::DBG_InnerPrintInfo, Fn::xPrintf,
                            Fn::DBG_PrintHelpInfoLevel0, Fn::DBG_PrintHelpInfo, Fn::ZEL_TaskDelay,
                            Fn::DEV_LibGetBIndexFromFrameIDSlotID,
                            Fn::DEV_LibGetFrameIDSlotIDFromBIndex});
    node.journal.set_observer([&](const host::JournalEntry &entry) {
      actual.push_back(entry.text() + take_position(entry.fn));
      if (entry.fn == Fn::ZEL_TaskDelay) {
        on_delay();
      }
    });
    node.journal.start();
    for (std::string line; std::getline(file, line);) {
      expected.push_back(line);
      if (line.starts_with("> ")) {
        actual.push_back(line);
        send(line);
      }
    }
    node.journal.stop();
    expected.push_back("the end");
    actual.push_back("the end");
    const auto [want, got] = std::ranges::mismatch(expected, actual);
    EXPECT_TRUE(want == expected.end())
        << transcript << ".txt, line " << want - expected.begin() + 1 << "\n  expected: " << *want
        << "\n  got:      " << *got;
  }

  // Port types 7 and 0x21 with a sub-line, 40 without.
  void up_with_sub_lines(const test::Counts &counts = {}) {
    hook_sub_lines({{7, PM_PID_NONE, {}, nullptr, nullptr, {}, callbacks},
                    {0x21, PM_PID_NONE, {}, nullptr, nullptr, {}, {}}});
    up(counts);
    put_type(0, 7);
    put_type(1, 0x21, 0, 0, 0);
    put_type(2, 40, 0, 0, 0x1F);
  }

  void put_both(PtpStaticData fixed, const PtpDynPubData &record) {
    // The private data follows 32 characters of description and their terminator.
    for (u32 i = 0; i < PM_PRI_DATA_SIZE; ++i) {
      reinterpret_cast<u8 *>(&fixed)[46 + i] = static_cast<u8>(0x90 + i);
    }
    put(fixed);
    put(fixed.usPtpID, record);
  }
};

TEST_F(DebugWindow, FullNodeShowsWhatItHas) {
  up_with_sub_lines({.other = 3});
  put_both({17, 2, 5, 1, 7, 0, 0x12, "uplink to core", {}},
           {2, 5, 0, 1, 7, 0, 50000, 4000000000, 0x103});
  put_both({18, 900, 5, 2, 99, 3, 0x12, "uplink to core", {}},
           {900, 261, 0, 1, 99, 1, 50000, 4000000000, 0x103});
  put_both({20, 33, 4, 0, 7, 1, 0x12, "uplink to core", {}}, {});
  put(21, {PM_BINDEX_ALL, 6, 1, 1, 7, 1, 0, 0, 1});
  put(23, {PM_BINDEX_ALL, 6, 0, 1, 7, 1, 0, 0, 1});
  for (u32 i = 0; i < 10; ++i) {
    PM_LibRegPrimaryWordCallback(6, i == 4 ? u16{PM_PTP_TYPE_ALL} : u16{7}, booked_func(i));
  }
  for (const char *transcript :
       {"help", "unknown", "switches", "sub_lines", "ptp", "ptp_invisible", "ptp_without_dynamic",
        "ptp_without_static", "ptp_absent", "place", "spec", "bookings"}) {
    play(transcript);
  }
  // The ninth of ten bookings goes during the second pause, the only one during the third.
  PM_LibRegPrimaryWordCallback(13, 7, booked_func(8));
  on_delay = [pauses = 0]() mutable {
    if (++pauses > 1) {
      PM_LibUnRegPrimaryWordCallback(pauses == 2 ? 6 : 13, 7, booked_func(8));
    }
  };
  play("bookings_going");
}

TEST_F(DebugWindow, NodeThatHasNothingAnswersEveryCommand) {
  publish_spec();
  PmProductMngt hooks{};
  hooks.pfnZelCfg = [] { return u32{1}; };  // so that the start-up never gets to the switches
  PM_LibRegProductMngtFuncProc(&hooks);
  construct();
  start_fid();
  play("before_phase_2");
  PM_LibInitPmDbWinCfg();
  EXPECT_EQ(pm::load<PmGlobalData>(instance->local_data.get()).astDbwinCmd[9].ulCommand + 0, 9U);
  play("before_phase_1");
  phase(1);
  play("sub_lines_undelivered");
  publish_spec({.port_types = 0});
  PM_LibPtpNumSpecInit();
  play("empty_node");
}

TEST_F(DebugWindow, NoMoreOfARecordIsShownThanItHas) {
  up({.desc_len = 0xFFFFFFFF});
  PtpStaticData record = test::static_record(30);
  std::fill(std::begin(record.szDescription), std::end(record.szDescription), 'd');
  std::fill(std::begin(record.aucPriData), std::end(record.aucPriData), u8{0xFE});
  put(record);
  play("ptp_long");
  node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(PmSpec{}));
  play("ptp_no_description");
  // The second byte cannot be appended: recorded and left out.
  node.faults.fail_nth(Fn::snprintf_truncated_s, 2);
  play("ptp_dump_gap");
  EXPECT_THAT(node.errors.values_since(), testing::IsSupersetOf({3U, 481U}));
}

TEST_F(DebugWindow, LongListsFeedTheWatchdog) {
  up_with_sub_lines({.port_types = 514});
  const auto shape_of = [&](u32 command) {
    std::string shape;
    for (const auto &call :
         host_calls({Fn::DBG_InnerPrintReltime, Fn::xPrintf, Fn::ZEL_ClearWatchDog},
                    [&] { node.root.debug_command(*instance, command); })) {
      shape += call[0];
    }
    return shape;
  };
  const std::string rows = "Z" + std::string(128, 'D');
  EXPECT_EQ(shape_of(2), "DD" + rows + rows + rows + rows + "ZDD");
  EXPECT_EQ(shape_of(6), "xZ" + std::string(22, 'x') + "Z");
}

TEST_F(DebugWindow, HelpFunctionsPrintWhatTheirLevelAsksFor) {
  construct();
  const auto calls = [&](std::initializer_list<void (*)(u32, u32, u32, u32)> helps, u32 para1,
                         u32 para2 = 0) {
    return host_calls({Fn::DBG_PrintHelpInfoLevel0, Fn::DBG_PrintHelpInfo}, [&] {
      for (const auto help : helps) {
        help(para1, para2, 0, 0);
      }
    });
  };
  const Lines all = calls({PM_LibDbgPrintHelp}, 0);  // as in the transcript
  const Lines details(all.begin() + 2, all.begin() + 4);
  Lines summaries = all;
  summaries.erase(summaries.begin() + 2, summaries.begin() + 4);
  for (const auto &[level, printed] : {std::pair{0U, summaries}, {255U, all}, {254U, details}}) {
    EXPECT_EQ(printed, calls({PM_LibShowAllHelpFunc}, level));
    EXPECT_EQ(printed,
              calls({PM_LibHelpFunCmd1, PM_LibHelpFunCmd2, PM_LibHelpFunCmd3, PM_LibHelpFunCmd4,
                     PM_LibHelpFunCmd5, PM_LibHelpFunCmd6, PM_LibHelpFunCmd7, PM_LibHelpFunCmd10},
                    level));
    for (u32 command = 0; command < 12; ++command) {
      EXPECT_EQ(calls({PM_LibShowDebugHelp}, level, command),
                level != 254 || command == 1 ? printed : Lines{});
    }
  }
}

TEST_F(DebugWindow, PiecesOfAnAnswerTakeWhatIsMissing) {
  up_with_sub_lines();
  char text[40] = "untouched";
  expect((PM_LibDbgGetPtpTypeDesc(99, text, 0), 0), 0, {99, 1, PM_ERR_PTPTYPE_INVALID},
         {"\r\n  fails to get line registration information! error code: 0x6908c8"});
  EXPECT_STREQ(text, "untouched");
  expect((PM_LibDbgGetPtpTypeDesc(7, text, 5), 0), 0, {});
  EXPECT_STREQ(text, "No s");
  const PmSubInnerSubInfo info = {0, 7, 5, 0, 0, 0};
  const PmSubCallBackEntry entry = {7, callbacks, 0};
  const auto mark = node.debug.total();
  PM_LibDbgPrintSubCallBackInfo(nullptr);
  PM_LibDbgPrintSubLineInfo(nullptr, &entry);
  PM_LibDbgPrintSubLineInfo(&info, nullptr);
  EXPECT_EQ(node.debug.total(), mark + 2);
  // No registered sub-line has the last callback.
  PM_LibDbgPrintSubCallBackInfo(&entry);
  EXPECT_EQ(node.debug.lines().back().text, "\r\n    GET_REPLACE_TYPE_FUNC     : 0x0x1009");
}

TEST_F(DebugWindow, OtherMessagesAreDropped) {
  up();
  expect((PM_LibMsgProc(nullptr), 0), 0, {PM_ERR_PARA});
  EXPECT_EQ(node.errors.since().back().file, "frame/lib/emp/src/pm/pm_lib_init");
  expect((PM_LibDebugMsgProc(nullptr), 0), 0, {});
  // A message whose second word tells another type need not have more than that word.
  for (const u32 type : {0x4BU, 0x14CU, 0x4C000000U}) {
    std::vector<u32> words = {0x4C, type};
    expect((PM_LibMsgProc(words.data()), 0), 0, {});
  }
  scope.emplace(node);
  PM_LibInitPmDbWinCfg();
  PM_LibDebugMsgProc(host::Framework::debug_message(0, 0, 0, 0).data());
  PM_LibDbgSwitchControl(1, 0, 0, 0);
  PM_LibDbgShowAllRegedLineSummary();
  PM_LibShowSubLineInfo(6, 0, 0, 0);
  PM_LibDbgShowPrimFuncsByPrimType(9, 6, 0, 0);
  expect(0, 0, {});
}

}  // namespace

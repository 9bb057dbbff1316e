// A node with one running instance of the library, and what a test needs to state a case in a few
// lines: the call, its code, the values it recorded and the lines it printed.
#ifndef TESTS_LIVE_PM_HPP
#define TESTS_LIVE_PM_HPP

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <concepts>
#include <cstring>
#include <functional>
#include <optional>
#include <source_location>
#include <string>
#include <vector>

#include "host/host.hpp"
#include "pm.h"

namespace test {

using Values = std::vector<u32>;
using Lines = std::vector<std::string>;

struct Counts {
  u16 max_ptp_id = 200;
  u16 visible = 100;
  u16 other = 0;
  u16 virtual_ptps = 20;
  u16 ext_area = 10;
  u16 port_types = 3;
  u16 max_type_value = 40;
  u32 desc_len = 32;
};

// An existing class-0 record.
inline PtpDynPubData port_record(u16 board, u16 port, u16 type = 7, u32 vs_mask = 1) {
  PtpDynPubData record{};
  record.usIndex1 = board;
  record.usIndex2 = port;
  record.ucPtpClass = PM_PTP_CLASS_PORT;
  record.ucExist = 1;
  record.usPtpType = type;
  record.ulVsMask = vs_mask;
  return record;
}

inline PtpStaticData static_record(u16 ptp_id, const std::string &description = "") {
  PtpStaticData record{};
  record.usPtpID = ptp_id;
  description.copy(record.szDescription, sizeof record.szDescription - 1);
  return record;
}

template <typename Record>
bool same(const Record &a, const Record &b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

// Start-up is done in steps, so that a test can stop before any of them; up() does them all. The
// chassis has two frames of four slots; boards of 8 outer and 1 inner ports are in slots 0 and 2 of
// frame 0 (board indexes 0, 2) and slot 1 of frame 1 (board index 33).
class LivePm : public testing::Test {
 public:
  using Fn = host::Fn;
  using Values = test::Values;
  using Lines = test::Lines;
  static constexpr u32 cid = 0x36;

  host::Node node;
  host::Instance *instance = nullptr;
  std::optional<host::Scope> scope;

  void lay_chassis() {
    node.chassis.add_frame(0, 4);
    node.chassis.add_frame(1, 4);
    node.chassis.insert(0, 0, host::Board::of("ETH8", 8, 1));
    node.chassis.insert(0, 2, host::Board::of("ETH8", 8, 1));
    node.chassis.insert(1, 1, host::Board::of("ETH8", 8, 1));
  }

  void publish_spec(const Counts &counts = {}) {
    PmSpec spec{};
    spec.ulDescMaxLen = counts.desc_len;
    spec.ulMsgFid = 99;
    spec.ulAttrClassValue = 0x12345;
    PmAttrCB attr{};
    attr.usVisiblePtpNum = counts.visible;
    attr.usOtherPtpNum = counts.other;
    attr.usVirtualPtpNum = counts.virtual_ptps;
    attr.usMaxPtpID = counts.max_ptp_id;
    attr.usExtAreaSize = counts.ext_area;
    const PmSubAttrNum sub = {counts.port_types, counts.max_type_value};
    node.ddm.publish_spec(PM_SPEC_MSG_SPEC, host::view_of(spec));
    node.ddm.publish_spec(PM_SPEC_MSG_ATTR_CB, host::view_of(attr));
    node.ddm.publish_spec(PM_SPEC_MSG_SUB_ATTR, host::view_of(sub));
  }

  void construct() {
    {
      const auto outside = host::enter(node);
      ASSERT_EQ(PM_LibRegisterInfo(), PM_OK);
    }
    instance = node.root.construct(cid);
    ASSERT_NE(instance, nullptr);
    scope.emplace(*instance);
  }

  void start_fid() {
    ASSERT_EQ(node.root.start_fid(*instance, PM_FidInitProc), PM_OK);
    settle();
  }
  u32 phase(u32 number) { return node.root.start_phase(*instance, number); }

  void up(const Counts &counts = {}) {
    lay_chassis();
    publish_spec(counts);
    construct();
    start_fid();
    for (const u32 number : {1U, 2U, 8U}) {
      ASSERT_EQ(phase(number), PM_OK);
    }
    node.run();
    settle();
  }

  // Registers a process-wide hook table whose configuration hook registers these sub-lines.
  void hook_sub_lines(std::vector<PmSubLineInfo> sub_lines) {
    pending_sub_lines() = std::move(sub_lines);
    PmProductMngt hooks{};
    hooks.pfnZelCfg = [] {
      u32 ret = PM_OK;
      for (const PmSubLineInfo &info : pending_sub_lines()) {
        ret |= PM_LibRegSubLineInfo(&info);
      }
      return ret;
    };
    ASSERT_EQ(PM_LibRegProductMngtFuncProc(&hooks), PM_OK);
  }

  // Records as the data owner sends them.
  u32 put(u16 ptp_id, const PtpDynPubData &record) {
    return node.ddm.publish(PM_CLASS_DYNAMIC, ptp_id, host::view_of(record));
  }
  u32 put(const PtpStaticData &record) {
    return node.ddm.publish(PM_CLASS_STATIC, record.usPtpID, host::view_of(record));
  }
  u32 put_type(u32 suffix, u16 type, u16 cap_type = 0, u16 co_class = 0, u8 visible = 1) {
    const PmSubInnerSubInfo info = {0, type, visible, 0, cap_type, co_class};
    return node.ddm.publish(PM_CLASS_SUB_INFO, suffix, host::view_of(info));
  }

  void trace(u32 switch_no, bool on = true) {
    PM_LibDbgSwitchControl(1, 1, switch_no, on ? 1 : 0);
    settle();
  }
  void trace_all() {
    for (u32 i = 0; i < PM_SWITCH_NUM; ++i) {
      trace(i);
    }
  }

  // Calls, and compares the code, the values recorded meanwhile and the lines printed meanwhile.
  template <std::invocable Call>
  void expect(Call call, u32 code, const Values &recorded, const Lines &printed = {},
              std::source_location at = std::source_location::current()) {
    settle();
    expect(call(), code, recorded, printed, at);
  }
  // The same of a call that has been made, with what has been recorded and printed since the
  // expectation before.
  void expect(u32 answer, u32 code, const Values &recorded, const Lines &printed = {},
              std::source_location at = std::source_location::current()) {
    expect(Values{answer}, Values{code}, recorded, printed, at);
  }
  // The same of calls that have been made one after another.
  void expect(const Values &answers, const Values &codes, const Values &recorded,
              const Lines &printed = {},
              std::source_location at = std::source_location::current()) {
    const testing::ScopedTrace trace(at.file_name(), static_cast<int>(at.line()), "expect");
    EXPECT_EQ(answers, codes);
    EXPECT_EQ(node.errors.values_since(settled_errors_), recorded);
    EXPECT_EQ(node.debug.since(settled_lines_), printed);
    settle();
  }
  // What has been recorded and printed up to now belongs to no expectation.
  void settle() {
    settled_errors_ = node.errors.total();
    settled_lines_ = node.debug.total();
  }

  // Calls, and tells as the journal does which of these host functions it called; every one if none
  // is named.
  template <typename Call>
  Lines host_calls(std::initializer_list<host::Fn> functions, Call call) {
    node.journal.keep_only(functions);
    node.journal.start();
    const auto mark = node.journal.total();
    call();
    node.journal.stop();
    return node.journal.since(mark);
  }

  // The host's own verdict on the library: no misuse, no bark, no damaged block.
  void TearDown() override {
    for (const host::Misuse &misuse : node.misuses) {
      ADD_FAILURE() << host::name_of(misuse.kind) << ": " << misuse.text;
    }
    EXPECT_EQ(node.memory.check(), 0U);
    EXPECT_EQ(node.watchdog.barks(), 0U);
  }

 private:
  static std::vector<PmSubLineInfo> &pending_sub_lines() {
    static std::vector<PmSubLineInfo> sub_lines;
    return sub_lines;
  }

  std::uint64_t settled_errors_ = 0;
  std::uint64_t settled_lines_ = 0;
};

}  // namespace test

#endif

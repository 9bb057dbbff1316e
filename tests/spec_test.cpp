// The specification: its messages, its single values and the limits that are read from it.
#include <numeric>

#include "global_data.hpp"
#include "live_pm.hpp"

namespace {
constexpr auto set = PM_LibSetPmSpec;
constexpr auto get = PM_GetPmSpec;

struct Spec : test::LivePm {
  void SetUp() override { construct(); }
  // A message whose payload bytes count from 0.
  void takes(u32 identifier, u32 size, const Values &recorded) {
    host::Bytes message(8 + size);
    std::iota(message.begin() + 8, message.end(), u8{0});
    pm::store(message.data(), identifier);
    pm::store(message.data() + 4, size);
    expect(PM_LibSpecUpdate(message.data()), PM_OK, recorded);
  }
  void expect_values(const Values &values) {
    expect({get(0), get(1), get(2), get(3), get(4), PM_LibGetPmSpec(5), PM_LibGetPtpMaxNum(),
            PM_LibGetMaxPtpID(), PM_LibSpecUpdate(nullptr), PM_LibPtpNumSpecInit(),
            PM_LibGetPtpMaxTypeValue(), pm::current_data()->pstSubAttrCB->usPtpTypeNum},
           values, {});
  }
};

TEST_F(Spec, AMessageFillsTheRecordItNamesIfItHasItsLength) {
  publish_spec();
  const std::pair<u32, u32> messages[] = {{0x6C00000, 24}, {0x6C00001, 16}, {0x6C00002, 4}};
  for (const auto &[id, size] : messages) {
    takes(id, size - 1, {size - 1, id});
    takes(id, size + 1, {size + 1, id});
    node.faults.fail_nth(Fn::memcpy_s, 1, 0x44);
    takes(id, size, {0x44, id});
  }
  takes(0x6BFFFFF, 24, {});
  takes(0x6C00003, 4, {});
  expect_values({0, 0, 0, 32, 99, 0x12345, 120, 200, 0, 0, 40, 3});
  for (const auto &[id, size] : messages) {
    takes(id, size, {});
  }
  expect_values({0x03020100, 0x07060504, 0x0B0A0908, 0x0F0E0D0C, 0x13121110, 0x17161514, 0x0906,
                 0x0706, 0, 0, 0x0302, 0x0100});
  for (const u16 given : {u16{0}, u16{1}, u16{2}, u16{0xFFFE}, u16{0xFFFF}}) {
    publish_spec({.max_ptp_id = given, .visible = 0xFFFF, .other = 1, .virtual_ptps = 0});
    expect({PM_LibGetPtpMaxNum(), PM_LibGetMaxPtpID()}, {0, given % 0xFFFF == 0 ? 1U : given}, {});
  }
}

TEST_F(Spec, ASingleValueIsStoredUnlessItsIndexOrRangeIsWrong) {
  expect({set(0, 0), set(1, 7), set(2, 1), set(3, 1), set(4, 0), set(5, 9)}, Values(6, PM_OK), {});
  expect({get(0), get(1), get(2), get(3), get(4), get(5)}, {0, 7, 1, 1, 0, 9}, {});
  const u32 refused = PM_ERR_LEN_RANGE, none = 0xFFFFFFFF;
  expect({set(3, 80), set(2, 0), set(3, 0), set(3, 81), set(6, 1), get(2), get(3), get(6),
          PM_LibGetPmSpec(7)},
         {0, refused, refused, refused, PM_ERR_STR_OPER, 1, 80, none, none}, {0, 0, 81, 6, 6, 7});
}
}  // namespace

// Active/standby synchronisation of the static data.
#include "live_pm.hpp"

namespace {
constexpr auto extract_to = PM_LibSynExtractStaticData;
constexpr u32 invalid = PM_ERR_DATA_INVALID, para = PM_ERR_PARA;

struct Sync : test::LivePm {
  void SetUp() override {
    up();
    put(known);
  }
  u32 extract(u32 unit, u32 room = 220) { return extract_to(unit, &buffer, room, &length); }
  u32 restore(u32 unit, u32 len = 220) { return PM_LibSynRestoreStaticData(unit, &record, len, 9); }
  static bool has(u16 ptp_id) { return PM_LibFindStaticDBNode(ptp_id) != nullptr; }
  const PtpStaticData known = test::static_record(17, "known");
  PmSynRecord record = {7, 7, 214, 0, test::static_record(18, "new")}, buffer = {9, 9, 9, 9, {}};
  u32 length = 0;
};

TEST_F(Sync, RegistrationMakesItsFourCallsUntilOneFails) {
  const auto functions = {Fn::SYN_LibRegisterModuleDataSynInfo, Fn::SYN_LibRegisterSynDataBlockFix,
                          Fn::SYN_LibRegisterModuleDataMode, Fn::SYN_LibRegisterSetBitTableFun};
  Lines calls = {"SYN_LibRegisterModuleDataSynInfo(5, 1, 0, 0, 0) = 0",
                 "SYN_LibRegisterSynDataBlockFix(5, 2, 2, 0, 220, 201, 0, 0, "
                 "PM_LibSynExtractStaticData, PM_LibSynRestoreStaticData, 0, 0) = 0",
                 "SYN_LibRegisterModuleDataMode(5, 0, 0, 0) = 0",
                 "SYN_LibRegisterSetBitTableFun(5, PM_LibSynResetAllBitTable) = 0"};
  EXPECT_EQ(host_calls(functions, [&] { expect(PM_LibSynRegister(), PM_OK, {}); }), calls);
  for (; !calls.empty(); calls.pop_back()) {
    node.faults.fail_nth(functions.begin()[calls.size() - 1], 1, 7);
    calls.back() += "x7 [fault]";
    EXPECT_EQ(host_calls(functions, [&] { expect(PM_LibSynRegister(), 7, {7}); }), calls);
  }
}

TEST_F(Sync, AUnitOfTheActiveSideCarriesTheRecordOrOnes) {
  PmSynRecord expected = {0, 5, 214, 0, known};
  expect({extract(17), std::exchange(length, 0), test::same(buffer, expected)}, {0, 220, 1}, {});
  std::memset(&expected.stData, 0xFF, sizeof expected.stData);
  expect({extract(200), std::exchange(length, 0), test::same(buffer, expected)}, {0, 220, 1}, {});
  node.faults.fail_nth(Fn::memcpy_s, 1, 0x44);
  expect({extract(17), extract(201), extract(201, 219), extract_to(17, nullptr, 0, &length),
          extract_to(17, &buffer, 0, nullptr), length},
         {PM_ERR_MEM_OPER, PM_ERR_PTPID_RANGE, PM_ERR_LEN, para, para, 0},
         {0x44, 201, 200, 219, 220, para, para});
  instance->active = false;
  expect(extract_to(17, nullptr, 0, nullptr), invalid, {invalid});
}

TEST_F(Sync, AUnitIsRestoredUnderItsOwnIdAndDeletedUnderItsIndexOrRefused) {
  node.memory.fail_nth(host::partition_block, 1);
  expect({restore(18), restore(18, 5), restore(18, 219)}, {invalid, PM_ERR_LEN, PM_ERR_LEN},
         {18, 18, 0, 0, invalid, 0, 5, 220, 219, 220, PM_ERR_LEN, 0});
  record.usLen = 213;
  expect(restore(18), invalid, {214, 213, invalid, 0});
  record.usVersion = 1;
  expect({restore(18, 6), restore(201, 5), PM_LibSynRestoreStaticData(201, nullptr, 0, 0),
          PM_LibSynRestoreStaticDataV0(9, nullptr, 0), PM_SynSetDynPrivAttrBitTable()},
         {invalid, PM_ERR_PTPID_RANGE, para, para, 0}, {invalid, 1, 201, 200, para, 9});
  expect({has(17), has(18), extract(19)}, {true, false, PM_OK}, {});
  record = {7, 7, 214, 0, test::static_record(18)};
  expect({restore(200), has(18), has(200)}, {PM_OK, true, false}, {});
  record = buffer;
  expect({restore(17), has(17), has(18)}, {PM_OK, false, true}, {});
}
}  // namespace

// The store of dynamic public records and its accessors.
#include "live_pm.hpp"

namespace {
constexpr auto get = PM_LibGetDynPubDataAttr;
constexpr auto set = PM_LibSetDynPubDataAttr;
constexpr auto create = PM_LibMallocForDynCB;
constexpr auto get_all = PM_LibGetAllDynDataFromPtpID;
constexpr auto range = PM_LibGetDynPrivMemRangeFromMemID;
constexpr auto db_code = PM_LibConverDbErrorCode;
constexpr u32 para = PM_ERR_PARA, beyond = PM_ERR_PTPID_RANGE, absent = PM_ERR_PTP_NOT_EXIST;

struct DynamicData : test::LivePm {
  void SetUp() override {
    up();
    trace(PM_SWITCH_FUNCTION);
  }
  PtpDynPubData all{};
  u32 val = 0xAAAAAAAA;
};

TEST_F(DynamicData, AStoreThatLacksMemoryIsCompletedLaterAndBoundsItsReaders) {
  expect({get(201, 0, &val), get(17, 0, nullptr)}, {para, para}, {201, 0, 17, 1});
  node.memory.fail_nth(host::partition_block, 1);
  expect(create(), PM_ERR_MALLOC, {sizeof(void *)});
  node.memory.fail_nth(host::partition_block, 2);
  expect(create(), PM_ERR_MALLOC, {201 * 19});
  expect({get(201, 0, &val), set(17, 0, &val), get_all(18, &all)}, Values(3, para), {201, 17, 18});
  expect({create(), get(200, 9, &val), get_all(200, &all), set(200, PM_DYN_ATTR_EXIST, "\1")},
         {0, absent, absent, 0}, {9});
  publish_spec({.max_ptp_id = 300});
  expect({create(), get(200, 0, &val), get(201, 0, &val), set(201, 0, &val)},
         {0, 0, beyond, beyond}, {201});
  publish_spec({.max_ptp_id = 199});
  expect({get(200, 9, &val), get(200, 9, nullptr), set(200, 9, &val), set(200, 9, nullptr),
          get_all(200, &all), get_all(200, nullptr)},
         {beyond, para, beyond, para, beyond, para}, {200, 1, 200, 200, 200},
         {"PM_LibGetDynPubDataAttr fail, input PTPID is invalid, usPtpID = 200, usMaxPtpID = 199 ",
          "PM_LibGetAllDynDataFromPtpID fail, input pointer is null, usPtpID = 200"});
}

TEST_F(DynamicData, EachFieldIsReadAndWrittenWithItsWidthAndNoOther) {
  EXPECT_EQ(create(), PM_OK);
  const u32 sizes[] = {2, 2, 1, 1, 2, 1, 2, 4, 4, 0};
  PtpDynPubData expected{};
  u8 *field = reinterpret_cast<u8 *>(&expected);
  for (u32 selector = 0; selector < 10; field += sizes[selector++]) {
    const u32 given = 0x81828384 + selector * 0x04040404;
    const bool writable = selector < PM_DYN_ATTR_VS_MASK;
    const u32 code = selector < PM_DYN_ATTR_EXIST ? absent : PM_OK;
    expect(set(17, selector, &given), PM_OK, Values(!writable, selector));
    std::memcpy(field, &given, writable ? sizes[selector] : 0);
    u32 read = val = 0xAAAAAAAA;
    std::memcpy(&read, field, sizes[selector]);
    expect({get(17, selector, &val), get_all(17, &all), val, test::same(all, expected)},
           {code, code, read, true}, Values(selector == 9, selector));
  }
}

TEST_F(DynamicData, MemoryIdentifiersAndDatabaseResultsAreTranslated) {
  publish_spec({.virtual_ptps = 0xFFFF, .ext_area = 0xFFF0});
  expect({range(0xFFEF), range(0xFFF0), range(0x1FFEE), range(0x1FFEF)}, {1, 0, 0, 0x6908BC}, {});
  const u32 fail = PM_ERR_DB_FAIL;
  expect({db_code(0), db_code(1), db_code(2), db_code(3), db_code(4), db_code(5), db_code(6)},
         {PM_OK, fail, fail, absent, PM_ERR_DB_STATE, absent, fail}, {});
}
}  // namespace

// The static database: writing, deleting and reading records.
#include "live_pm.hpp"

namespace {
constexpr auto remove_node = PM_LibDeleteStaticDBNode;

struct StaticData : test::LivePm {
  void SetUp() override {
    up({.max_ptp_id = 1285});
    trace(PM_SWITCH_FUNCTION);
  }
  u32 update() { return PM_LibUpdateStaticDBNode(&record); }
  // Reads into a buffer that is filled with 0xAA.
  void reads(u16 ptp_id, u32 code, const Values &recorded, host::ByteView expected,
             const Lines &lines = {}) {
    host::Bytes found(214, 0xAA);
    auto *output = reinterpret_cast<PtpStaticData *>(found.data());
    expect(PM_LibStaticDataGetDataFromPTP(ptp_id, output), code, recorded, lines);
    EXPECT_THAT(found, testing::ElementsAreArray(expected));
  }
  PtpStaticData record = test::static_record(261, "near");
};

TEST_F(StaticData, RecordsOfOneBucketAreToldApartReplacedInPlaceAndReleasedOnce) {
  const PtpStaticData near = record;
  const std::size_t before = node.memory.use(host::partition_block).bytes;
  const Lines calls = host_calls({Fn::ZEL_HASH_Create_Table, Fn::ZEL_HASH_Add_Node}, [&] {
    expect({remove_node(261), update()}, {0, 0}, {261});
    record.usPtpID = 1285;
    EXPECT_EQ(update(), PM_OK);
    std::memset(&record.usBIndex, 0xEE, sizeof record - sizeof record.usPtpID);
    EXPECT_EQ(update(), PM_OK);
  });
  const auto added = testing::HasSubstr(", 261, 0) = ");
  EXPECT_THAT(calls, testing::ElementsAre(testing::HasSubstr("(1024, 0) = "), added, added));
  reads(261, PM_OK, {}, host::view_of(near));
  reads(1285, PM_OK, {}, host::view_of(record));
  expect({remove_node(1285), remove_node(1285)}, {0, 0}, {1285});
  EXPECT_EQ(node.memory.use(host::partition_block).bytes - before, 3 * sizeof(void *) + 214);
  reads(1285, PM_ERR_PTP_NOT_EXIST, {3, 1285}, host::Bytes(214, 0xFF),
        {"DB_Query fail, usDbRet = 3, usPtpID = 1285"});
}

TEST_F(StaticData, ARecordThatCannotBeStoredIsRefusedAndOnePastTheMaximumCannotBeRead) {
  reads(1285, 1, {1285}, host::Bytes(214, 0xAA));
  node.faults.fail_nth(Fn::ZEL_HASH_Create_Table, 1);
  node.memory.fail_nth(host::partition_block, 1);
  record.usBIndex = 9;
  expect({update(), update()}, Values(2, PM_ERR_DATA_INVALID), {261, 261, 9, 0, 261, 261, 9, 0});
  node.faults.fail_nth(Fn::memcpy_s, 1, 0x44);
  expect(update(), PM_ERR_MEM_OPER, {0x44});
  reads(261, PM_OK, {}, host::view_of(test::static_record(261)));
  record.usPtpID = 1286;
  EXPECT_EQ(update(), PM_OK);
  reads(1286, 1, {1286}, host::Bytes(214, 0xAA));
  expect({PM_LibUpdateStaticDBNode(nullptr), PM_LibStaticDataGetDataFromPTP(6, nullptr)},
         {PM_ERR_PARA, PM_ERR_PARA}, {PM_ERR_PARA, 6});
  const PmStaticDBNode *stored = PM_LibFindStaticDBNode(1286);
  const auto compare = PM_LibCmpStaticDBNode;
  expect({compare(&stored->stData, stored), compare(nullptr, stored), compare(stored, nullptr)},
         {0, 1, 1}, {});
}
}  // namespace

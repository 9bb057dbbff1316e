// Descriptions of PTPs and the private static data of their sub-lines.
#include <numeric>

#include "live_pm.hpp"

namespace {
constexpr auto get_desc = PM_LibGetDescFromPTP;
constexpr auto get_private = PM_LibGetPrivStaticDataFromPTP;
constexpr auto find = PM_LibGetPtpFromDesc;
constexpr u32 absent = PM_ERR_PTP_NOT_EXIST, no_port = PM_ERR_FUNC_NULL;
const std::string full(32, 'd'), no_data = "DB_Query fail, usDbRet = 3, usPtpID = 4";

// PTPs 0 to 5, of which 1 is no port and 4 has no static data.
struct Description : test::LivePm {
  void SetUp() override {
    up();
    const std::string descs[] = {full + "private", "logical", "up", "up", "", "u"};
    for (u16 ptp_id = 0; ptp_id < 6; ++ptp_id) {
      put(ptp_id, test::port_record(0, 1));
      put(test::static_record(ptp_id, descs[ptp_id]));
    }
    EXPECT_EQ(PM_LibSetDynPubDataAttr(1, PM_DYN_ATTR_PTP_CLASS, "\1"), PM_OK);
    EXPECT_EQ(PM_LibDeleteStaticDBNode(4), PM_OK);
    trace(PM_SWITCH_FUNCTION);
  }
  void finds(const std::string &desc, u16 ptp_id, u32 code, const Values &values,
             Lines lines = {}) {
    lines.insert(lines.begin(), "Enter PM_LibGetPtpFromDesc, *pcDesc = " + desc);
    expect({find(desc.c_str(), &found), std::exchange(found, 7)}, {code, ptp_id}, values, lines);
  }
  std::string buffer = std::string(34, 'x');
  char *text = buffer.data();
  u8 data[121];
  u16 found = 7;
};

TEST_F(Description, APortsDescriptionIsReadUpToItsLengthAndPrivateDataBehindIt) {
  const std::string desc = "PM_LibGetDescFromPTP fail, ";
  const std::string priv = "PM_LibGetPrivStaticDataFromPTP fail, input ";
  expect({get_desc(1, 0, nullptr), get_desc(1, 32, text), get_private(1, 0, nullptr),
          get_private(2, 0, data), get_private(2, 121, data)},
         {PM_ERR_PARA, PM_ERR_LEN, PM_ERR_PARA, PM_ERR_LEN_RANGE, PM_ERR_LEN_RANGE}, {1, 1},
         {desc + "usPtpID = 1", desc + "length of desc is invalid, ulDescLength = 32",
          priv + "pointer is null, usPtpID = 1", priv + "length is not enough, ulLen = 0",
          priv + "length is not enough, ulLen = 121"});
  expect(get_desc(4, 33, text), absent, {3, 4, absent},
         {no_data, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x6908ad, usPtpID = 4"});
  trace(PM_SWITCH_FUNCTION, false);
  expect({get_private(4, 1, data), get_private(1, 0, data), get_desc(1, 33, text)},
         {absent, no_port, no_port}, {3, 4, absent, 1, 1, 1, no_port, 1, 1, 1, no_port});
  node.faults.fail_nth(Fn::memcpy_s, 1, 0x44);
  node.faults.fail_nth(Fn::strncpy_s, 1, 0x55);
  expect({get_private(2, 1, data), get_desc(2, 33, text)}, {1, PM_ERR_STR_OPER}, {0x44, 0x55});
  EXPECT_EQ(buffer, std::string(34, 'x'));
  expect(get_desc(2, 33, text), PM_OK, {});
  EXPECT_EQ(buffer, std::string("up\0", 3) + std::string(29, 'x') + std::string("\0x", 2));
  expect(get_desc(0, 100, text), PM_OK, {});
  EXPECT_EQ(buffer, full + std::string("\0x", 2));
  u8 bytes[sizeof(PtpStaticData)] = {2};
  std::iota(bytes + 9, std::end(bytes), u8{9});
  node.ddm.publish(PM_CLASS_STATIC, 2, bytes);
  // A length beyond the record's room, as data distribution may deliver it, counts as 80.
  for (const u32 desc_len : {32U, 80U, 0xFFFFFFFFU}) {
    publish_spec({.desc_len = desc_len});
    data[119] = 0xAA;
    expect({get_private(2, 119, data), data[119], get_private(2, 120, data)}, {0, 0xAA, 0}, {});
    EXPECT_EQ(std::memcmp(data, bytes + 14 + std::min(desc_len, 80U), 120), 0);
  }
  EXPECT_EQ(get_desc(2, 0xFFFFFFFF, text), PM_ERR_LEN);
  EXPECT_EQ(find(std::string(81, 'd').c_str(), &found), PM_ERR_DESC_INVALID);
}

TEST_F(Description, TheLowestPortThatCarriesADescriptionIsFoundBeforeTheFirstGap) {
  finds("up", 2, PM_OK, {});
  finds(full, 0, PM_OK, {});
  finds("logical", PM_PTP_ID_NONE, no_port, {1, 1, 1, no_port},
        {"ucPtpClass is not  PM_PTP_CLASS_PORT, ucPtpClass = 0x1",
         "PM_LibIfPhyPtpExist fail, ulRet = 0x6908bb, usPtpID = 1"});
  finds("u", PM_PTP_ID_NONE, absent, {3, 4, absent},
        {no_data, "PM_LibStaticDataGetDataFromPTP fail, ulRet = 0x6908ad"});
  const std::string refused = "PM_LibGetPtpFromDesc desc is invalid, ulLenth \xA3\xBD ";
  const std::string null_line = "PM_LibGetPtpFromDesc, pcDesc or pusPtpID is NULL_PTR";
  expect({find("", &found), find((full + "d").c_str(), &found), find(nullptr, &found),
          find("up", nullptr), found},
         {PM_ERR_DESC_INVALID, PM_ERR_DESC_INVALID, PM_ERR_PARA, PM_ERR_PARA, 7},
         {0, 33, 1, 0, 0, 1}, {refused + "0", refused + "33", null_line, null_line});
  for (u16 ptp_id = 4; ptp_id < 1024; ++ptp_id) {
    put(test::static_record(ptp_id));
  }
  for (const u32 total : {0U, 2U, 1023U, 1024U}) {
    publish_spec({.max_ptp_id = 2000, .visible = static_cast<u16>(total), .virtual_ptps = 0});
    const auto feeds = node.watchdog.feeds();
    finds(total < 3 ? "up" : "none", PM_PTP_ID_NONE, absent, {});
    EXPECT_EQ(node.watchdog.feeds() - feeds, total / 1024);
  }
}
}  // namespace

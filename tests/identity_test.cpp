// What one PTP is: its place, class, type, virtual systems, visibility and co-class.
#include "live_pm.hpp"

namespace {

using test::port_record;
constexpr u32 para = PM_ERR_PARA, invalid = PM_ERR_DATA_INVALID, absent = PM_ERR_PTP_NOT_EXIST;
constexpr u32 not_phy = PM_ERR_FUNC_NULL, hidden = PM_ERR_PTP_INVISIBLE;
constexpr u8 x = 0xAA;  // in an output: not written

class Identity : public test::LivePm {
 protected:
  // PTP 17 has class 0, 18 class 1; 20 does not exist.
  void SetUp() override {
    up();
    put(17, port_record(2, 0x0105));
    put(18, {2, 0x0105, 1, 1, 7, 0, 0, 0, 1});
    trace(PM_SWITCH_FUNCTION);
  }
  // Asks for place, type and existence of a PTP and compares codes and outputs.
  void expect_all(u16 id, const std::vector<Values> &expected, const Values &recorded,
                  const Lines &lines = {}) {
    u16 board = x, frame = x, index1 = x, index2 = x, type = x;
    u8 port = x, slot = x, last = x, ptp_class = x;
    const std::vector<Values> answers = {
        {PM_LibGetPhyIndexFromPTP(id, &board, &port), board, port},
        {PM_LibGetFSPFromPtp(id, &frame, &slot, &last), frame, slot, last},
        {PM_LibGetPhyIndexFromPTPEx(id, &ptp_class, &index1, &index2), ptp_class, index1, index2},
        {PM_LibGetTypeFromPTP(id, &type), type, PM_LibIfPtpExist(id), PM_LibIfPhyPtpExist(id)}};
    EXPECT_EQ(answers, expected);
    expect(0, 0, recorded, lines);
  }
};

TEST_F(Identity, APortIsFoundByItsRecordAndOtherClassesByTheirFunction) {
  expect_all(17, {{0, 2, 5}, {0, 0, 2, 5}, {0, 0, 2, 0x0105}, {0, 7, 0, 0}}, {});
  const PmPtpClassFunc functions = {nullptr, nullptr, [](u16 ptp_id, u16 *board, u8 *port) {
                                      *board = 33;
                                      *port = 6;
                                      return ptp_id == 18 ? 0U : 0x77U;
                                    }};
  const auto reg = PM_LibRegPtpClassFunc;
  expect({reg(0, nullptr), reg(2, &functions), reg(0, &functions)}, {para, invalid, 0}, {para, 2},
         {"PM_LibRegPtpClassFunc para  error,null pointer pstClassFunc",
          "PM_LibRegPtpClassFunc ucPtpClass error, ucPtpClass = 2"});
  const std::string none = "GET PhyIndex func pointer is NULL_PTR, ucPtpClass = 0x1";
  const std::string failed = "PM_LibGetPhyIndexFromPTPEnc fail, ulRet = 0x689380, usPtpID = 18";
  const std::string not_port = "ucPtpClass is not  PM_PTP_CLASS_PORT, ucPtpClass = 0x1";
  expect_all(18, {{para, x, x}, {para, x, x, x}, {0, 1, 2, 0x0105}, {0, 7, 0, not_phy}},
             {18, para, 18, 18, para, 18, para, 1, 18}, {none, failed, none, failed, not_port});
  EXPECT_EQ(reg(1, &functions), PM_OK);
  expect_all(18, {{0, 33, 6}, {0, 1, 1, 6}, {0, 1, 2, 0x0105}, {0, 7, 0, not_phy}}, {1, 18},
             {not_port});
  u16 board = x;
  u8 port = x;
  const auto enc = PM_LibGetPhyIndexFromPTPEnc;
  expect({enc(1, 18, nullptr, &port), enc(1, 18, &board, nullptr), board, port}, {para, para, x, x},
         {18, 18});
  expect({enc(1, 19, &board, &port), board, port, enc(2, 18, &board, &port)}, {0x77, x, x, invalid},
         {0x77, 1, 19, 2, 18},
         {"GET PypIndex func return Err,ulRet = 119, ucPtpClass = 0x1, ptpID = 19",
          "ucPtpClass ERR,ucPtpClass = 0x2"});
}

TEST_F(Identity, CodesOfFailuresArePassedUpAndSomeArePrinted) {
  const std::string read = "PM_LibGetDynPubDataAttr fail, ulRet = 0x";
  for (const auto &[id, c, line] : {std::tuple{u16{20}, absent, read + "6908ad, usPtpID = 20"},
                                    {201, PM_ERR_PTPID_RANGE, read + "6908c2, usPtpID = 201"}}) {
    expect_all(id, {{c, x, x}, {c, x, x, x}, {c, x, x, x}, {c, x, c, c}}, {c}, Lines(3, line));
  }
  const auto map = PM_LibGetPhyIndexFromPTP;
  const auto raw = PM_LibGetPhyIndexFromPTPEx;
  const auto fsp = PM_LibGetFSPFromPtp;
  u16 w = x;
  u8 b = x;
  node.faults.fail_nth(Fn::DEV_LibGetFrameIDSlotIDFromBIndex, 1, 0x55);
  expect({fsp(17, &w, &b, &b), w, b}, {0x55, x, x}, {0x55});
  const std::string null = "PM_LibGetPhyIndexFromPTP fail, usPtpID = 17, ";
  expect(
      {map(17, nullptr, nullptr), raw(17, nullptr, nullptr, nullptr),
       PM_LibGetTypeFromPTP(17, nullptr)},
      {para, para, para}, {17, 1, 17, 1, 1, 17},
      {null + "pusBIndex = 0, pucPort = 0", null + "pucPtpClass = 0, pusIndex1 = 0, pusIndex2 = 0",
       "PM_LibGetTypeFromPTP fail, input pointer is null, usPtpID = 17"});
  trace(PM_SWITCH_FUNCTION, false);
  expect({map(17, &w, nullptr), raw(17, nullptr, &w, &w), raw(17, &b, nullptr, &w),
          raw(17, &b, &w, nullptr), fsp(17, nullptr, &b, &b), fsp(17, &w, nullptr, &b),
          fsp(17, &w, &b, nullptr)},
         Values(7, para), {17, 0, 17, 1, 0, 17, 0, 1, 17, 0, 0, 17, 1, 17, 0, 17, 0});
}

TEST_F(Identity, MembershipInVirtualSystemsIsReadFromTheMask) {
  const u32 no = PM_ERR_VS_CONDITION, out = PM_ERR_PTP_NOT_IN_VS;
  u32 mask = x;
  u16 manager = x;
  const std::array<u32, 3> cases[] = {{0x200, 0, x}, {0x10, 1, 4},  {0x210, 1, 4},
                                      {0xA, 2, 0},   {0x100, 1, 8}, {0x1FF, 9, 0}};
  for (const auto &[vs_mask, num, managed_by] : cases) {
    put(17, port_record(0, 0, 7, vs_mask));
    settle();
    expect({PM_LibGetVsNumByVsMask(vs_mask), PM_LibGetVsMaskFromPtp(17, &mask), mask,
            PM_LibGetPtpMngtVsID(17, &manager), manager, PM_LibIfPtpOnlyInOneVs(17, 4),
            PM_LibIfPtpInVs(17, 33), PM_LibIfPortBelongMultiVs(17)},
           {num, 0, vs_mask, num == 0 ? 1U : 0U, managed_by, vs_mask == 0x10 ? 0 : no,
            (vs_mask & 2) != 0 ? 0 : out, num > 1 ? 0 : no},
           num == 0 ? Values{17} : Values{});
  }
  expect({PM_LibGetVsMaskFromPtp(201, &mask), PM_LibIfPtpInVs(201, 0),
          PM_LibIfPtpOnlyInOneVs(201, 8), PM_LibIfPtpOnlyInOneVs(201, 9),
          PM_LibIfPortBelongMultiVs(201), PM_LibGetPtpMngtVsID(201, &manager), mask, manager,
          PM_LibGetVsMaskFromPtp(17, nullptr), PM_LibGetPtpMngtVsID(17, nullptr)},
         {absent, absent, absent, invalid, absent, absent, 0x1FF, 0, para, para},
         {absent, 201, absent, 201, absent, 201, 17, 17});
}

TEST_F(Identity, OnlyVisiblePortsAreFoundAndAskedForTheirLanSwitch) {
  host::Board &board = *node.chassis.board(1, 1);
  board.port(4).lan_switch = board.port(5).e_switch = true;
  put(4, port_record(33, 4));
  put(5, {33, 5, 0, 1, 7, 2, 0, 0, 1});
  put(6, port_record(33, 6));
  put(7, {33, 7, 0, 1, 7, 1, 0, 0, 1});
  settle();
  u16 id = x;
  expect({PM_LibIsPtpVisible(7), PM_LibGetVisiblePtpFromFSP(1, 1, 7, &id),
          PM_LibGetVisiblePtpFromFSP(1, 1, 8, &id), PM_LibGetVisiblePtpFromFSP(1, 1, 5, nullptr),
          id, PM_LibIsPtpVisible(5), PM_LibGetVisiblePtpFromFSP(1, 1, 5, &id), id},
         {hidden, hidden, absent, para, x, 0, 0, 5}, {para}, Lines(2, "PTP is invisible"));
  const auto ask = PM_LibGetPtpPhyStateFromPTP;
  u8 wired = x, switched = x, neither = x, none = x;
  const std::string not_wired = "PM_LibGetPtpPhyStateFromPTP, port does not connect with LSW";
  expect({ask(4, &wired), wired, ask(5, &switched), switched, ask(6, &neither), neither},
         {0, 1, 0, 1, 0, 0}, {},
         {"PM_LibGetPtpPhyStateFromPTP, port connects with LSW", not_wired, not_wired});
  expect({ask(20, &none), ask(7, &none), ask(4, nullptr)}, {absent, hidden, para}, {absent, 20, 4},
         {"PM_LibGetDynPubDataAttr fail, ulRet = 0x6908ad, usPtpID = 20",
          "PM_LibIfPhyPtpExist fail, ulRet = 0x6908ad, usPtpID = 20", "PTP is invisible",
          "PM_LibIsPtpVisible fail, ulRet = 0x6908d6, usPtpID = 7",
          "PM_LibGetPtpPhyStateFromPTP fail, input pointer is null, usPtpID = 4"});
  node.faults.fail_nth(Fn::DEV_LibGetFrameIDSlotIDFromBIndex, 1, 0x55);
  expect({ask(4, &none), none}, {0x55, x}, {},
         {"DEV_LibGetFrameIDSlotIDFromBIndex fail, ulRet = 0x55, usBIndex = 33"});
}

TEST_F(Identity, CoClassesComeFromTheTypesRecordAndCoIndexesFromTheHooks) {
  trace(PM_SWITCH_FUNCTION, false);
  put_type(0, 8, 0x60, 0x70);
  put(18, port_record(0, 1, 8));
  const u32 unknown = PM_ERR_PTPTYPE_INVALID;
  const auto of_type = PM_LibGetPtpCoClass;
  const auto of_ptp = PM_LibGetCoClassFromPtpID;
  u16 n = x;
  trace(PM_SWITCH_DATA);
  expect({of_type(7, &n), n, of_type(8, nullptr), of_type(8, &n), std::exchange(n, x)},
         {unknown, x, para, 0, 0x70}, {7, unknown, 7, para},
         {"PM_GetSubInfo fail, ulRet = 0x6908c8, usPtpType = 7, "});
  trace(PM_SWITCH_DATA, false);
  trace(PM_SWITCH_ERROR);
  expect({of_ptp(17, &n), of_ptp(20, &n), n, of_ptp(18, nullptr), of_ptp(18, &n), n},
         {unknown, absent, x, invalid, 0, 0x70}, {7, unknown, 7, 18},
         {"PM_GetPtpCoClass fail, ulRet = 0x6908c8, usPtpID = 17",
          "PM_GetTypeFromPTP fail, ulRet = 0x6908ad, usPtpID = 20"});
  const auto to_index = PM_LibGetCoIndexAndCotypeByFspOntid;
  const auto to_ont = PM_LibGetFspOntidByCoIndexAndCotype;
  expect({to_index(1, 2, 3, 4, 5), to_ont(1, 2, 3)}, {para, para}, {para, para});
  PmProductMngt hooks{};
  hooks.pfnGetCoIndexByFspOntid = [](PmWord a, PmWord b, PmWord c, PmWord d, PmWord e) {
    return static_cast<u32>(a * 10000 + b * 1000 + c * 100 + d * 10 + e);
  };
  hooks.pfnGetFspOntidByCoIndex = [](PmWord a, PmWord b, PmWord c) {
    return static_cast<u32>(a * 100 + b * 10 + c);
  };
  ASSERT_EQ(PM_LibRegProductMngtFuncProc(&hooks), PM_OK);
  expect({to_index(1, 2, 3, 4, 5), to_index(0, 2, 3, 4, 5), to_index(1, 0, 3, 4, 5),
          to_index(1, 2, 0, 4, 5), to_index(1, 2, 3, 0, 5), to_index(1, 2, 3, 4, 0)},
         {12345, invalid, invalid, invalid, invalid, invalid}, Values(5, 0));
  expect({to_ont(1, 2, 3), to_ont(0, 0, 3), to_ont(1, 2, 0)}, {123, 3, invalid}, {invalid});
}

}  // namespace

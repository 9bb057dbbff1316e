// The ports of a board, single steps over them, and whole walks against a model.
#include <dlfcn.h>

#include <map>
#include <random>

#include "live_pm.hpp"

namespace {

using test::port_record;
constexpr u16 start = PM_PTP_ID_NONE, all = PM_BINDEX_ALL, any = PM_PTP_TYPE_ALL;
constexpr u8 x = 0xAA, none = x;  // in an output: not written
constexpr u32 absent = PM_ERR_PTP_NOT_EXIST, para = PM_ERR_PARA, more = PM_ERR_NO_MORE;

std::optional<u8> slot_said;  // of every board, if set

}  // namespace

// The host's function, which a test can make say something else.
extern "C" [[gnu::visibility("default")]] u32 DEV_LibGetFrameIDSlotIDFromBIndex(u16 usBIndex,
                                                                                u16 *pusFrameID,
                                                                                u8 *pucSlotID) {
  static const auto host = reinterpret_cast<decltype(&DEV_LibGetFrameIDSlotIDFromBIndex)>(
      dlsym(RTLD_NEXT, "DEV_LibGetFrameIDSlotIDFromBIndex"));
  const u32 ret = host(usBIndex, pusFrameID, pucSlotID);
  *pucSlotID = slot_said.value_or(*pucSlotID);
  return ret;
}

namespace {

class Walk : public test::LivePm {
 protected:
  // PTPs 16, 17, 18 on the fixture's boards 0, 2, 33, and 19 of another class; 20 does not exist.
  void SetUp() override {
    up();
    node.chassis.insert(0, 1, host::Board::of("X", 3, 252));
    put(16, port_record(0, 8));
    put(17, port_record(2, 8));
    put(18, port_record(33, 8));
    put(19, {2, 8, 1, 1, 7, 0, 0, 0, 1});
    settle();
  }
  void fail(Fn fn, u32 n = 1) { node.faults.fail_nth(fn, n, 0x55); }
  static Values count(u32 (*ask)(u16, u8 *, u8 *, u8 *)) {
    u8 outer = x, inner = x, sum = x;
    return {ask(1, &outer, &inner, &sum), outer, inner, sum};
  }
  // A step in which a host function is made to fail: by default one that no walk calls.
  Values step(u16 board, u16 ptp_id, Fn failing = Fn::ZEL_TaskDelay) {
    next = x;
    fail(failing);
    return {PM_LibPtpIdGetNextFromPortPtp(board, ptp_id, any, PM_FILTER_ALL, &next), next};
  }
  Values board_step(u16 board, u8 port) {
    next = x;
    return {PM_LibGetNextPtpIdInBoardByPort(board, port, any, PM_FILTER_ALL, &next), next};
  }
  u16 next = x;
};

TEST_F(Walk, BoardsHaveAtMost255PortsAndUsableOnesHaveAType) {
  host::Board &board = *node.chassis.board(0, 1);
  board.port(2).type = board.port(4).type = host::port_type_none;
  const auto hardware = PM_LibGetHardwarePortNum, usable = PM_LibGetPortNumFromBIndex;
  u8 n = x;
  expect({hardware(1, nullptr, &n, &n), hardware(1, &n, nullptr, &n), hardware(1, &n, &n, nullptr)},
         Values(3, para), Values(3, para));
  expect({usable(1, nullptr, &n, &n), usable(1, &n, nullptr, &n), usable(1, &n, &n, nullptr)},
         Values(3, para), {1, 1, 0, 1, 0, 1, 1, 0, 0});
  expect({hardware(1, nullptr, &n, &n), hardware(1, &n, nullptr, &n), hardware(1, &n, &n, nullptr)},
         Values(3, para), Values(3, para));
  trace(PM_SWITCH_ERROR);
  expect(usable(1, nullptr, nullptr, nullptr), para, {1, 1, 1},
         {"PM_GetPortNumFromBIndex fail, input pointer is null, usBIndex = 1, pucOutPortNum = 0x0, "
          "pucInnerPortNum = 0x0, pucSumNum = 0x0"});
  fail(Fn::DEV_LibGetBoardAttribute);
  expect(count(usable), {0x55, x, x, x}, {0x55, 1, 0x55, 1},
         {"PM_GetHardwarePortNum Get VisibleNum fail, ulRet = 0x55, usBIndex = 1"});
  for (const u32 port : {0U, 2U, 3U, 254U}) {
    fail(Fn::DEV_LibGetPortTypeOfBoard, port + 1);
    expect(count(usable), {0x55, x, x, x}, {0x55, 1, port},
           {std::string("DEV_GetPortTypeOfBoard ") + (port < 3 ? "Get InvisibleNum " : "") +
            "fail, ulRet = 0x55, usBIndex = 1, ucLoop = " + std::to_string(port)});
  }
  trace(PM_SWITCH_ERROR, false);
  trace(PM_SWITCH_FUNCTION);
  expect(count(usable), {0, 2, 251, 253}, {},
         {"PM_LibGetHardwarePortNum result: *pucOutPortNum = 3, *pucInnerPortNum = 252, "
          "*pucSumNum = 255",
          "PM_GetPortNumFromBIndex result: *pucOutPortNum = 2, *pucInnerPortNum = 251, "
          "*pucSumNum = 253"});
  for (const u32 attribute : {1U, 2U}) {
    fail(Fn::DEV_LibGetBoardAttribute, attribute);
    expect(count(hardware), {0x55, x, x, x}, {0x55, 1},
           {"DEV_LibGetBoardAttribute fail, get inner port num fail, ulRet = 0x55, usBIndex = 1"});
  }
  const std::string text = "PM_LibGetHardwarePortNum fail, ";
  node.chassis.insert(0, 1, host::Board::of("X", 200, 56));
  expect(count(hardware), {PM_ERR_STR_OPER, x, x, x}, {200, 56},
         {text + "total num is invalid, Total = 256"});
  node.chassis.insert(0, 1, host::Board::of("X", 65535, 3));
  expect(count(hardware), {PM_ERR_STR_OPER, x, x, x}, {2, 65535, 3},
         {text + "usTotalPortNum = 2, pucOutPortNum = 65535, usInnerPortNum = 3"});
}

TEST_F(Walk, FeedsTheWatchdogAndEndsInACircle) {
  const auto feeds = [&](auto call) { return host_calls({Fn::ZEL_ClearWatchDog}, call).size(); };
  EXPECT_EQ(feeds([&] { board_step(1, 0); }), 8U);
  node.chassis.set_frame_count(65);
  EXPECT_EQ(feeds([&] { step(all, 18); }), 2U);
  // The two slots behind board 33 and none beyond them.
  const auto boards = host_calls({Fn::DEV_LibGetBIndexFromFrameIDSlotID}, [&] { step(all, 18); });
  EXPECT_EQ(boards.size(), 2U);
  node.chassis.map(0, 1, 0);
  node.chassis.map(0, 0, 0);  // board 0 is in two slots and leads back to the first
  const Lines calls = host_calls({Fn::ZEL_TaskRunClearDog}, [&] {
    expect({PM_LibGetNextPtpFromVS(8, all, start, any, &next), next}, {more, x}, {});
  });
  EXPECT_EQ(calls, Lines(65536, "ZEL_TaskRunClearDog(20)"));
}

TEST_F(Walk, FailuresPassPlacesOverOrEndTheWalk) {
  expect(step(all, start, Fn::DEV_LibIfFrameExist), {0, 18}, {});
  expect(step(all, start, Fn::DEV_LibGetFrameAttribute), {0, 18}, {0x55, 0});
  expect(step(all, start, Fn::DEV_LibGetBIndexFromFrameIDSlotID), {0, 17}, {});
  expect(step(all, start, Fn::DEV_LibIfBoardExist), {0, 17}, {});
  expect(step(all, 16, Fn::DEV_LibGetBoardAttribute), {0, 17}, {0x55, 0, 0x55, 0});
  expect(step(all, 17, Fn::DEV_LibGetFrameIDSlotIDFromBIndex), {0x55, x}, {17});
  expect(step(2, start), {0, 17}, {});
  fail(Fn::ROOT_LibGetCurrentThis, 6);  // to read the record
  expect(board_step(2, 8), {more, x}, {17, 17, para});
  expect(step(all, 20), {absent, x}, {20, absent});
  expect(step(2, 16), {PM_ERR_DATA_INVALID, x}, {16});
  expect(step(3, 16), {host::code_no_board, x}, {});
  // No port follows the last two numbers, and the board is not asked for it.
  for (u16 id = 53; id < 56; ++id) {
    put(id, port_record(1, id + 200));
  }
  settle();
  expect(step(1, 53), {0, 54}, {});
  expect(step(1, 54, Fn::DEV_LibGetBoardAttribute), {more, x}, {});
  expect(step(1, 55, Fn::DEV_LibGetBoardAttribute), {more, x}, {});
  // Nor does a slot follow the last number.
  node.faults.clear();
  slot_said = 255;
  expect(step(all, 18), {more, x}, {});
  slot_said.reset();
}

TEST_F(Walk, CallersLearnOfFailuresFromTheRecordsOnly) {
  trace(PM_SWITCH_FUNCTION);
  for (const bool visible : {false, true}) {
    const auto walk = visible ? PM_LibGetNextVisiblePtpFromPTP : PM_LibGetNextPtpFromPTP;
    const std::string name = visible ? "PM_LibGetNextVisiblePtpFromPTP" : "PM_LibGetNextPtpFromPTP";
    const std::string type = visible ? "usPortType = 7" : "usPtpType = 7";
    expect({walk(2, 20, 7, &next), walk(2, 19, 7, &next), walk(2, 20, 7, nullptr), next},
           {more, more, para, x}, {20, absent, absent, 2, 20, 7, 2, 20, 7},
           {name + " fail, ulRet = 0x6908ad, usPtpID = 20, " + type,
            name + " fail, ulRet = 0x689384, usPtpID = 19, " + type,
            name + " fail, usBIndex = 2, usPtpID = 20, usPtpType = 7"});
  }
  expect({PM_LibGetNextPtpFromVS(9, 2, 20, 7, &next), PM_LibGetNextPtpFromVS(0, 2, 20, 7, nullptr),
          PM_LibPtpIdGetNextFromPortPtp(2, 17, 7, 2, nullptr),
          PM_LibGetNextPtpIdByPtpID(17, 7, 2, nullptr),
          PM_LibGetNextPtpIdByBIndex(2, 17, 7, 2, nullptr),
          PM_LibGetNextPtpIdInBoardByPort(2, 8, 7, 2, nullptr)},
         {PM_ERR_DATA_INVALID, para, para, para, para, para}, {20, 20, 17, 17, 17, para});
}

using Place = std::tuple<u8, u16, u16>;  // class, board and port: in this order walks go

class RandomWalk : public test::LivePm {
 protected:
  u16 below(u32 end) { return static_cast<u16>(random() % end); }
  Place any_place() {
    return {below(8) == 0 ? 1 : 0, 32 * below(4) + below(4), below(10) + 0x100 * (below(9) / 8)};
  }
  // A board or PTP comes or goes. There is no frame 2, and no place with two PTPs.
  void change() {
    const Place place = any_place();
    const auto [ptp_class, board, port] = place;
    const u16 ptp_id = below(101);
    if (below(6) != 0) {
      std::erase_if(ptps, [&](const auto &ptp) { return ptp.second == ptp_id; });
      PtpDynPubData &record = records[ptp_id] = port_record(board, port, below(3), 1U << below(9));
      record.ucPtpClass = ptp_class;
      record.ucInvisible = below(3) == 0 ? 1 : 0;
      record.ucExist = ptps.try_emplace(place, ptp_id).second ? 1 : 0;
      ASSERT_EQ(put(ptp_id, record), PM_OK);
    } else {
      const u8 slot = board % 32;
      below(3) == 0
          ? node.chassis.remove(board / 32, slot)
          : node.chassis.insert(board / 32, slot, host::Board::of("X", below(8), below(4)));
    }
  }
  u16 follow(u16 ptp_id, u16 type, bool visible, u32 vs) const {
    auto ptp = ptps.begin();
    if (ptp_id != start) {
      const PtpDynPubData &before = records[ptp_id];
      if (before.ucExist == 0 || before.ucPtpClass != 0 || before.usIndex1 / 32 == 2) {
        return none;
      }
      const u16 board = before.usIndex1;
      ptp = ptps.upper_bound({0, board, before.usIndex2 % 0x100});
    }
    for (; ptp != ptps.end(); ++ptp) {
      const auto [ptp_class, index, port] = ptp->first;
      const host::Board *board = node.chassis.board(index);
      const PtpDynPubData &record = records[ptp->second];
      if (ptp_class == 0 && board != nullptr && port < board->outer_ports + board->inner_ports &&
          (type == any || type == record.usPtpType) && (!visible || record.ucInvisible == 0) &&
          (vs == PM_VS_ID_ALL || record.ulVsMask == 1U << vs)) {
        return ptp->second;
      }
    }
    return none;
  }

  std::mt19937 random;
  std::map<Place, u16> ptps;
  std::array<PtpDynPubData, 101> records{};
};

TEST_F(RandomWalk, GoesWhereTheModelGoes) {
  const char *given = std::getenv("PM_TEST_SEED");
  const u32 seed = given == nullptr ? std::random_device{}() : static_cast<u32>(std::stoul(given));
  std::printf("PM_TEST_SEED=%u\n", seed);
  random.seed(seed);
  up({.max_ptp_id = 100});
  node.chassis.add_frame(3, 4);
  for (u32 walk = 0; walk < 200; ++walk) {
    const bool visible = below(3) == 0;
    const u16 type = below(3) == 0 ? below(3) : any;
    const u32 vs = visible || below(2) == 0 ? u32{PM_VS_ID_ALL} : below(9);
    u16 ptp_id = start, next = start;
    for (u32 step = 0; step < 200 && next != none; ++step, ptp_id = next) {
      for (u32 i = step == 0 ? 20 : below(3) * (walk % 2); i > 0; --i) {
        change();
      }
      const Place place = any_place();
      u16 found = none;
      next = none;
      const u32 found_ret =
          std::apply(PM_LibGetPtpFromPhyIndexEx, std::tuple_cat(place, std::tuple(&found)));
      const u32 ret = visible ? PM_LibGetNextVisiblePtpFromPTP(all, ptp_id, type, &next)
                              : PM_LibGetNextPtpFromVS(vs, all, ptp_id, type, &next);
      ASSERT_EQ(found, ptps.contains(place) ? ptps[place] : none);
      ASSERT_EQ(found_ret, found == none ? absent : PM_OK);
      ASSERT_EQ(next, follow(ptp_id, type, visible, vs));
      ASSERT_EQ(ret, next == none ? more : PM_OK);
    }
  }
}

}  // namespace

// Kinds of steps that only ask: attributes, walks, board ports, classes, the debug window.
#include "node/soak_actions.hpp"

namespace soak {

namespace {

using namespace draw;

void window(Stage &stage, const u32 *a) {
  if (stage.instance() != nullptr) {
    stage.say("answer",
              {stage.node().root.debug_command(*stage.instance(), a[0], a[1], a[2], a[3])});
  }
}

// A framework message that need not be one for the debug window.
void message(Stage &stage, const u32 *a) {
  if (stage.instance() == nullptr) {
    return;
  }
  constexpr u32 identifiers[] = {4, 4, 4, 31, 32, 3, 0x10004};
  constexpr u32 types[] = {0x4C, 0x4C, 0x4D, 0};
  auto bytes = host::Framework::debug_message(5, 0, 0, 0);
  const u32 head[] = {identifiers[a[0] % std::size(identifiers)], types[a[1] % std::size(types)]};
  std::memcpy(bytes.data(), head, sizeof head);
  stage.say("answer", {stage.node().root.send_message(*stage.instance(),
                                                      a[2] == 1 ? nullptr : bytes.data())});
}

template <class P>
void show_help(Stage & /*stage*/, const u32 *a) {
  constexpr u32 levels[] = {0, 1, 255, 7};
  constexpr void (*functions[])(u32, u32, u32, u32) = {
      P::PM_LibHelpFunCmd1, P::PM_LibHelpFunCmd2, P::PM_LibHelpFunCmd3, P::PM_LibHelpFunCmd4,
      P::PM_LibHelpFunCmd5, P::PM_LibHelpFunCmd6, P::PM_LibHelpFunCmd7, P::PM_LibHelpFunCmd10};
  const u32 level = levels[a[0] % std::size(levels)];
  functions[a[1] % std::size(functions)](level, 0, 0, 0);
  P::PM_LibShowDebugHelp(level, a[1] % 12, 0, 0);
}

// A whole walk from its start, as products do it.
template <class P>
void walk(Stage &stage, const u32 *a) {
  u16 ptp = 0xFFFF;
  u32 ret = 0;
  for (u32 i = 0; i < 100 && ret == 0; ++i) {
    u16 next = 0;
    const auto board = static_cast<u16>(a[1]);
    const auto type = static_cast<u16>(a[2]);
    ret = a[0] == 0   ? P::PM_LibGetNextVisiblePtpFromPTP(board, ptp, type, &next)
          : a[0] == 1 ? P::PM_LibGetNextPtpFromVS(a[3], board, ptp, type, &next)
                      : P::PM_LibGetNextPtpFromPTP(board, ptp, type, &next);
    stage.say("next", {ret, next});
    ptp = next;
  }
}

template <class P>
void compare_keys(Stage &stage, const u32 *a) {
  PmPhyIndexNode node{};
  node.stKey = {static_cast<u8>(a[0] & 1), static_cast<u16>(a[1]), static_cast<u16>(a[2])};
  const PmPhyIndexKey key{0, 0, 7};
  stage.say("answer",
            {P::Pm_Lib_CmpFromPhyInfo(a[3] == 1 ? nullptr : &key, a[4] == 1 ? nullptr : &node)});
  PmStaticDBNode of{};
  of.stData.usPtpID = static_cast<u16>(a[1]);
  const auto ptp = static_cast<u16>(a[2]);
  stage.say("answer", {P::PM_LibCmpStaticDBNode(&ptp, &of)});
}

template <class P>
void trace(Stage & /*stage*/, const u32 *a) {
  const std::string text(480 + a[2] % 40, 'x');
  P::PM_LibDotPrintf(a[1] == 1   ? 0x6C80000
                     : a[1] == 2 ? 0x6C7FFFF
                                 : 0,
                     a[0] % 6, "%s", text.c_str());
}

}  // namespace

std::vector<Op> live_questions() {
  return {
      SOAK_ASK(3, PM_LibGetSubAttrFromPTP, ptp, there),
      SOAK_ASK(3, PM_LibGetSubAttrFromPTPNEW, ptp, few, there),
      SOAK_ASK(3, PM_LibGetSubActiveSpeedFromPTP, ptp, there, there),
      SOAK_ASK(3, PM_LibGetSubStatsFromPTP, ptp, there),
      SOAK_ASK(3, PM_LibGetMtuFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetSpeedFromPTP, ptp, null, null),
      SOAK_ASK(3, PM_LibGetLinkStateFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetTxQLenFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetNameFromPTP, ptp, length, null),
      SOAK_ASK(3, PM_LibGetPhyAddrFromPTP, ptp, length, null),
      SOAK_ASK(3, PM_LibGetSpecificFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetAdminStatusFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetPromiscuousModeFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetCounterDiscontinuityTimeFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetStatisticFromPTP, ptp, null),
      SOAK_ASK(3, PM_LibGetActiveSpeedFromPTP, ptp, null, null),
      SOAK_ASK(4, PM_LibGetConnPresentFromPTP, ptp, null),
      SOAK_ASK(2, PM_LibGetAliasFromPTP, ptp, length, null),
      SOAK_ASK(3, PM_LibGetLastChangeTickFromPTP, ptp, null),
      SOAK_ASK(4, PM_LibGetlinkTrapSwitchFromPTP, ptp, null),
      SOAK_ASK(2, PM_LibGetPtpCapability, ptp, any),
      SOAK_ASK(2, PM_LibGetPtpAttributeCluster, ptp, any, few, null),
      SOAK_ASK(4, PM_LibGetPtpCapType, type, ptp, null),
      SOAK_ASK(3, PM_LibGetPtpTypeForAttm, type, ptp, null),
      SOAK_ASK(1, PM_AttrDbFunc),
  };
}

std::vector<Op> walk_questions() {
  return {
      SOAK_ASK(3, PM_LibGetHardwarePortNum, board, draw::null, draw::null, draw::null),
      SOAK_ASK(3, PM_LibGetPortNumFromBIndex, board, null, null, null),
      SOAK_ASK(5, PM_LibGetNextPtpFromPTP, walk_board, ptp, type, null),
      SOAK_ASK(4, PM_LibGetNextVisiblePtpFromPTP, walk_board, ptp, type, null),
      SOAK_ASK(4, PM_LibGetNextPtpFromVS, vs, walk_board, ptp, type, null),
      SOAK_ASK(2, PM_LibPtpIdGetNextFromPortPtp, walk_board, ptp, type, filter, draw::null),
      SOAK_ASK(2, PM_LibGetNextPtpIdByPtpID, ptp, type, filter, there),
      SOAK_ASK(2, PM_LibGetNextPtpIdByBIndex, board, ptp, type, filter, there),
      SOAK_ASK(2, PM_LibGetNextPtpIdInBoardByPort, board, port, type, filter, there),
      SOAK_BOTH(1, "walk", walk, few, walk_board, type, vs),
      SOAK_BOTH(2, "compare-keys", compare_keys, few, few, draw::port, null, null),
      SOAK_SAME(8, "window", window, command, ptp, slot, port),
      SOAK_SAME(2, "message", message, byte, few, null),
      SOAK_BOTH(1, "help", show_help, few, byte),
      SOAK_BOTH(1, "trace", trace, byte, few, byte),
      SOAK_ASK(1, PM_SynSetDynPrivAttrBitTable),
      SOAK_ASK(1, PM_LibGetObjectNumInDelete),
  };
}

}  // namespace soak

#include "node/soak_draw.hpp"

#include <iterator>
#include <map>

namespace soak {

namespace {

std::uint64_t mixed(std::uint64_t value) {
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
  return value ^ (value >> 31);
}

}  // namespace

// Mixed, so that neighbouring seeds do not walk through the same numbers.
Random::Random(std::uint64_t seed) : state_(mixed(seed + 0x1234567)) {}

u32 Random::next() {
  state_ += 0x9E3779B97F4A7C15ULL;
  return static_cast<u32>(mixed(state_) >> 16);
}

namespace draw {

namespace {

constexpr host::Fn kFaulty[] = {
    host::Fn::ZEL_MemAlloc_F,
    host::Fn::ZEL_HASH_Create_Table,
    host::Fn::DDM_LibScribeIsClassBtFinished,
    host::Fn::DDM_LibSubscribe,
    host::Fn::ROOT_LibIsPidDepend,
    host::Fn::ROOT_LibSrvmPubishSapi,
    host::Fn::ROOT_LibCompRegisterInfo,
    host::Fn::ROOT_LibCompLocalCreate,
    host::Fn::ROOT_LibCompHandleInit,
    host::Fn::ZEL_HandleFinalize,
    host::Fn::SYN_LibRegisterModuleDataSynInfo,
    host::Fn::SYN_LibRegisterSynDataBlockFix,
    host::Fn::SYN_LibRegisterModuleDataMode,
    host::Fn::SYN_LibRegisterSetBitTableFun,
    host::Fn::SYN_LibIsCpuActive,
    host::Fn::SYN_LibModuleDataUnitModifyRecord,
    host::Fn::RPC_LibSyncCall,
    host::Fn::RPC_LibAyncCall,
    host::Fn::PUB_LibAddObjAllCfg,
    host::Fn::PUB_LibDelObjAllCfg,
    host::Fn::DEV_GetMaxFrameNum,
    host::Fn::DEV_LibIfFrameExist,
    host::Fn::DEV_LibGetFrameAttribute,
    host::Fn::DEV_LibIfBoardExist,
    host::Fn::DEV_LibGetBoardAttribute,
    host::Fn::DEV_LibGetPortTypeOfBoard,
    host::Fn::DEV_LibGetBIndexFromFrameIDSlotID,
    host::Fn::DEV_LibGetFrameIDSlotIDFromBIndex,
    host::Fn::PTOPO_LibGetHardPhyIDFromPortId,
    host::Fn::CAP_LibRegCapMngtProc,
    host::Fn::CAP_LibGetCapability,
    host::Fn::ATTR_LibRegClassMngtProc,
    host::Fn::ATTR_LibGetAttribute,
    host::Fn::DBG_xPrintfSwitch,
    host::Fn::KVT_RegisterPIDInfo,
    host::Fn::KVT_RegisterMsgTaskPrio,
};

constexpr u32 kTextLengths[] = {6, 0, 1, 8, 16, 31, 32, 33, 40, 63, 64, 79, 80, 81, 120, 5};

}  // namespace

host::Fn faulty_function(u32 number) {
  return kFaulty[number % std::size(kFaulty)];
}

u32 number_of(host::Fn faulty) {
  u32 number = 0;
  while (kFaulty[number] != faulty) {
    ++number;
  }
  return number;
}

const char *caller_of(host::Fn faulty, Random &random) {
  static const std::multimap<host::Fn, const char *> callers = {
      {host::Fn::ZEL_MemAlloc_F, "book"},
      {host::Fn::ZEL_MemAlloc_F, "static"},
      {host::Fn::ZEL_MemAlloc_F, "sub-line"},
      {host::Fn::ZEL_MemAlloc_F, "PM_LibGetPtpFromPhyIndex"},
      {host::Fn::DDM_LibScribeIsClassBtFinished, "dynamic"},
      {host::Fn::DDM_LibScribeIsClassBtFinished, "notify"},
      {host::Fn::DDM_LibSubscribe, "start-phase"},
      {host::Fn::ROOT_LibIsPidDepend, "dynamic"},
      {host::Fn::ROOT_LibSrvmPubishSapi, "start-phase"},
      {host::Fn::ROOT_LibCompRegisterInfo, "enrol"},
      {host::Fn::SYN_LibIsCpuActive, "extract"},
      {host::Fn::RPC_LibSyncCall, "delete-virtual"},
      {host::Fn::RPC_LibSyncCall, "add-virtual"},
      {host::Fn::RPC_LibSyncCall, "object-free"},
      {host::Fn::RPC_LibSyncCall, "PM_LibOperCheckCanDelPTP"},
      {host::Fn::RPC_LibAyncCall, "PM_LibLinkEventNotify"},
      {host::Fn::PUB_LibAddObjAllCfg, "dynamic"},
      {host::Fn::PUB_LibDelObjAllCfg, "dynamic"},
      {host::Fn::DEV_GetMaxFrameNum, "walk"},
      {host::Fn::DEV_LibIfFrameExist, "walk"},
      {host::Fn::DEV_LibGetFrameAttribute, "walk"},
      {host::Fn::DEV_LibIfBoardExist, "walk"},
      {host::Fn::DEV_LibGetBoardAttribute, "PM_LibGetHardwarePortNum"},
      {host::Fn::DEV_LibGetBoardAttribute, "PM_LibGetPortNumFromBIndex"},
      {host::Fn::DEV_LibGetPortTypeOfBoard, "PM_LibGetPortNumFromBIndex"},
      {host::Fn::DEV_LibGetBIndexFromFrameIDSlotID, "PM_LibGetPtpFromFSP"},
      {host::Fn::DEV_LibGetFrameIDSlotIDFromBIndex, "PM_LibGetFSPFromPtp"},
      {host::Fn::DEV_LibGetFrameIDSlotIDFromBIndex, "PM_LibGetNextPtpIdByPtpID"},
      {host::Fn::PTOPO_LibGetHardPhyIDFromPortId, "PM_LibGetPtpPhyStateFromPTP"},
      {host::Fn::CAP_LibRegCapMngtProc, "PM_LibRegCapClassMngt"},
      {host::Fn::CAP_LibGetCapability, "PM_LibGetPtpCapability"},
      {host::Fn::ATTR_LibRegClassMngtProc, "PM_LibRegAttrClassMngt"},
      {host::Fn::ATTR_LibGetAttribute, "PM_LibGetPtpAttributeCluster"},
      {host::Fn::KVT_RegisterPIDInfo, "start-fid"},
      {host::Fn::KVT_RegisterPIDInfo, "PM_LibCfgRegSubLinePid"},
      {host::Fn::KVT_RegisterMsgTaskPrio, "start-fid"}};
  const auto [first, last] = callers.equal_range(faulty);
  const auto known = static_cast<u32>(std::distance(first, last));
  return known == 0 ? nullptr : std::next(first, static_cast<long>(random.below(known)))->second;
}

std::string text_of(u32 number) {
  return std::string(kTextLengths[number % std::size(kTextLengths)],
                     static_cast<char>('a' + number / std::size(kTextLengths) % 3));
}

u32 draw_ptp(Random &random) {
  const u32 way = random.below(16);
  if (way < 11) {
    return random.below(24);
  }
  if (way < 13) {
    return random.below(64);
  }
  if (way == 13) {
    return 1'024 + random.below(24);
  }
  constexpr u32 edges[] = {63, 64, 65, 199, 200, 201, 1'099, 1'100, 1'101, 0xFFFE, 0xFFFF, 1, 2};
  return way == 14 ? random.of(edges) : random.below(0x10000);
}

u32 draw_board(Random &random) {
  constexpr u32 usual[] = {0, 0, 2, 2, 33, 33, 35, 1, 3, 32, 34, 4, 64, 0xFFFF};
  return random.one_in(24) ? random.below(0x10000) : random.of(usual);
}

u32 draw_walk_board(Random &random) {
  return random.one_in(2) ? 0xFFFF : draw_board(random);
}

u32 draw_port(Random &random) {
  constexpr u32 edges[] = {31, 32, 33, 35, 36, 255, 254, 200, 100};
  return random.one_in(6) ? random.of(edges) : random.below(10);
}

u32 draw_index2(Random &random) {
  return random.one_in(12) ? 0x100 + random.below(16) : draw_port(random);
}

u32 draw_frame(Random &random) {
  return random.one_in(12) ? random.below(0x10000) : random.below(3);
}

u32 draw_slot(Random &random) {
  return random.one_in(12) ? random.below(256) : random.below(5);
}

u32 draw_type(Random &random) {
  constexpr u32 usual[] = {7, 7, 7, 9, 9, 12, 12, 40, 3, 41, 0, 1, 0xFFFF};
  return random.one_in(20) ? random.below(0x10000) : random.of(usual);
}

u32 draw_ptp_class(Random &random) {
  constexpr u32 usual[] = {0, 0, 0, 0, 0, 0, 1, 1, 2, 255};
  return random.of(usual);
}

u32 draw_exist(Random &random) {
  constexpr u32 usual[] = {1, 1, 1, 1, 1, 1, 1, 0, 0, 2};
  return random.of(usual);
}

u32 draw_invisible(Random &random) {
  constexpr u32 usual[] = {0, 0, 0, 1, 1, 2, 255};
  return random.of(usual);
}

u32 draw_filter(Random &random) {
  constexpr u32 usual[] = {0, 1, 2, 2, 3};
  return random.of(usual);
}

u32 draw_vs(Random &random) {
  constexpr u32 edges[] = {8, 9, 31, 32, 33, 0xFFFF, 0xFFFFFFFF};
  return random.one_in(6) ? random.of(edges) : random.below(9);
}

u32 draw_mask(Random &random) {
  constexpr u32 usual[] = {0, 1, 2, 6, 10, 0x10, 0x100, 0x1FE, 0x1FF, 0x200, 0x201, 0x80000001};
  return random.one_in(3) ? random.next() & 0x3FF : random.of(usual);
}

u32 draw_selector(Random &random) {
  return random.one_in(12) ? random.next() : random.below(11);
}

u32 draw_prim(Random &random) {
  return random.one_in(16) ? random.below(0x10000) : random.below(16);
}

u32 draw_function(Random &random) {
  return random.one_in(12) ? 0 : 1 + random.below(Product::kFunctions);
}

u32 draw_suffix(Random &random) {
  constexpr u32 edges[] = {511, 512, 513, 599, 600, 0xFFFF};
  return random.one_in(8) ? random.of(edges) : random.below(7);
}

u32 draw_null(Random &random) {
  return random.one_in(20) ? 1 : 0;
}

u32 draw_there(Random & /*random*/) {
  return 0;
}

u32 draw_length(Random &random) {
  constexpr u32 edges[] = {0, 1, 5, 6, 7, 31, 32, 33, 34, 119, 120, 121, 255};
  return random.one_in(24) ? random.next() : random.of(edges);
}

u32 draw_desc_length(Random &random) {
  constexpr u32 usual[] = {1, 32, 32, 32, 64, 80, 80, 0, 5, 81, 100, 0xFFFFFFFF};
  return random.of(usual);
}

u32 draw_spec_index(Random &random) {
  return random.one_in(8) ? random.next() : random.below(8);
}

u32 draw_any(Random &random) {
  if (random.one_in(16)) {
    return 0xFFFFFFFF;
  }
  return random.one_in(2) ? random.below(32) : random.next();
}

u32 draw_byte(Random &random) {
  return random.below(256);
}

u32 draw_desc(Random &random) {
  return random.one_in(2) ? 0 : random.below(48);
}

u32 draw_answer(Random &random) {
  constexpr u32 usual[] = {0, 0, 0, 0, 0x689388, 0x68937F, 7, 0x689387, 0xFFFFFFFF};
  return random.of(usual);
}

u32 draw_ticks(Random &random) {
  constexpr u32 usual[] = {0, 0, 0, 1, 99, 100, 101, 150};
  return random.of(usual);
}

u32 draw_deed(Random &random) {
  return random.one_in(3) ? random.below(4) : 0;
}

u32 draw_yes(Random &random) {
  return random.below(2);
}

u32 draw_few(Random &random) {
  return random.below(4);
}

u32 draw_bits(Random &random) {
  return random.one_in(2) ? 0xFFFF : random.next() & 0xFFFF;
}

u32 draw_pid(Random &random) {
  return random.one_in(3) ? 0xFFFFFFFF : 100 + random.below(6);
}

u32 draw_count(Random &random) {
  constexpr u32 usual[] = {0, 1, 10, 24, 30, 60, 0xFFFF};
  return random.of(usual);
}

u32 draw_max_ptp(Random &random) {
  constexpr u32 usual[] = {64, 64, 200, 200, 1'100, 24, 0, 0xFFFF, 1};
  return random.of(usual);
}

u32 draw_types(Random &random) {
  constexpr u32 usual[] = {4, 4, 5, 6, 3, 600, 1, 0};
  return random.of(usual);
}

u32 draw_max_type(Random &random) {
  constexpr u32 usual[] = {40, 40, 41, 12, 0xFFFF, 0};
  return random.of(usual);
}

u32 draw_command(Random &random) {
  return random.one_in(12) ? random.next() : random.below(12);
}

u32 draw_fault(Random &random) {
  return random.below(std::size(kFaulty));
}

u32 draw_nth(Random &random) {
  return 1 + (random.one_in(2) ? 0 : random.below(5));
}

u32 draw_word(Random &random) {
  return random.one_in(8) ? 0 : random.below(1'000);
}

}  // namespace draw

}  // namespace soak
